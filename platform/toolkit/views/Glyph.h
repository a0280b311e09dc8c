#pragma once

#include <QColor>
#include <QRectF>
#include <QString>
#include <QWidget>

class QPainter;

namespace tljira {

/// A small picture that goes with a text: as high as its font asks for, in its colour, sharp at every scale. In
/// Designer: a QWidget promoted to tljira::Glyph with the dynamic properties `glyph` (one of "warning", "tick",
/// "document", "person") and, for other than one line's height, `lines`. Screen readers have the text and leave it out.
class Glyph : public QWidget
{
    Q_OBJECT
    Q_PROPERTY(QString glyph READ glyph WRITE setGlyph)
    Q_PROPERTY(double lines READ lines WRITE setLines)

public:
    /// Without a picture; takes its room all the same.
    explicit Glyph(QWidget* parent = nullptr);

    QString glyph() const { return m_glyph; }
    void setGlyph(const QString& name);

    /// Its height, in lines of its font.
    double lines() const { return m_lines; }
    void setLines(double lines);

    /// The picture by itself, in a square.
    static void paint(QPainter& painter, QStringView name, const QRectF& square, const QColor& color);

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    QString m_glyph;
    double m_lines = 1;
};

} // namespace tljira
