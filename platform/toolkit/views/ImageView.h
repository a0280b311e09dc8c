#pragma once

#include "platform/foundation/Export.h"

#include <QByteArray>
#include <QImage>
#include <QPixmap>
#include <QWidget>

namespace tljira {

/// Shows a picture, whole, in its own proportions, as large as the view and as sharp as the screen allows. In Designer:
/// a QWidget promoted to tljira::ImageView.
class TL_EXPORT ImageView : public QWidget
{
    Q_OBJECT

public:
    /// Without a picture; draws nothing.
    explicit ImageView(QWidget* parent = nullptr);

    /// Null when there is no picture.
    const QImage& image() const { return m_image; }
    /// Shows the picture from the next drawing on; a null image clears the view.
    void setImage(const QImage& image);

    /// The picture that these bytes are, scaled down while it is read so that it fits a square of `side` pixels; a null
    /// image if they are none. Of an animation it is the first picture. Only PNG, JPEG, GIF, BMP and WebP are taken
    /// (the last where Qt's plug-in for it is installed), of at most 4 MiB and 4,096 by 4,096 pixels, so that no server
    /// can fill the memory. From any thread; a picture of that size may take seconds.
    static QImage decode(const QByteArray& bytes, int side);

protected:
    /// Qt's own.
    void paintEvent(QPaintEvent* event) override;

private:
    QImage m_image;
    /// The image at the size it was last drawn.
    QPixmap m_scaled;
};

} // namespace tljira
