#pragma once

#include <QPixmap>
#include <QPointer>
#include <QVariantAnimation>
#include <QWidget>

namespace tljira {

/// What lies between a sheet and the window that it is drawn in: dims the window, keeps the mouse from it, and draws
/// the sheet's shadow. Lets the sheet slide in and out where the desktop allows animation; the sheet itself is in its
/// place meanwhile, so that it can be used at once.
class SheetCover : public QWidget
{
public:
    SheetCover(QWidget* window, QWidget* sheet);
    ~SheetCover() override;

    /// Fills the window and lies directly below the sheet.
    void fit();

    void slideIn();

    /// The sheet is about to go. What is left of it on screen is a picture that nothing can be done with; it removes
    /// itself.
    void slideOut();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    class Slide;

    bool start(qreal from, qreal to);
    void setProgress(qreal progress);
    QRect sheetRect() const;
    /// What the window shows there below this.
    QPixmap pictureBelow(const QRect& area) const;
    void paintShade(QPainter& painter) const;
    void paintShadow(QPainter& painter, const QRect& sheet) const;

    QPointer<QWidget> m_sheet;
    QPointer<Slide> m_slide;
    QPixmap m_picture; ///< of the sheet, once it goes
    QRect m_pictureRect;
    QVariantAnimation m_animation;
    qreal m_progress = 1;
};

} // namespace tljira
