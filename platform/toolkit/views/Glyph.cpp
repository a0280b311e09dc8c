#include "platform/toolkit/views/Glyph.h"

#include <QEvent>
#include <QPainter>
#include <QPainterPath>

namespace tljira {

namespace {

// All are drawn on a square of 24 by 24.
constexpr double side = 24;

void drawWarning(QPainter& painter, const QColor& color)
{
    QPainterPath triangle(QPointF(12, 3.2));
    triangle.lineTo(22.2, 20.8);
    triangle.lineTo(1.8, 20.8);
    triangle.closeSubpath();
    painter.drawPath(triangle);
    painter.drawLine(QPointF(12, 9.6), QPointF(12, 14.6));
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawEllipse(QPointF(12, 17.8), 1.25, 1.25);
}

void drawTick(QPainter& painter)
{
    QPainterPath tick(QPointF(3.5, 12.8));
    tick.lineTo(9.2, 18.5);
    tick.lineTo(20.5, 5.8);
    painter.drawPath(tick);
}

void drawDocument(QPainter& painter)
{
    QPainterPath sheet(QPointF(4, 1.4));
    sheet.lineTo(14.6, 1.4);
    sheet.lineTo(20, 6.8);
    sheet.lineTo(20, 22.6);
    sheet.lineTo(4, 22.6);
    sheet.closeSubpath();
    sheet.moveTo(14.6, 1.4);
    sheet.lineTo(14.6, 6.8);
    sheet.lineTo(20, 6.8);
    painter.drawPath(sheet);
    for (const double y : {11.4, 15.0, 18.6})
        painter.drawLine(QPointF(7.5, y), QPointF(y > 18 ? 13 : 16.5, y));
}

void drawPerson(QPainter& painter, const QColor& color)
{
    QPainterPath disc;
    disc.addEllipse(QPointF(12, 12), 12, 12);
    QPainterPath person;
    person.addEllipse(QPointF(12, 9.4), 4.4, 4.4);
    person.addEllipse(QPointF(12, 24), 8.6, 8);
    QColor shade = color;
    shade.setAlphaF(0.18F);
    painter.fillPath(disc, shade);
    shade.setAlphaF(0.75F);
    painter.fillPath(person.intersected(disc), shade);
}

} // namespace

Glyph::Glyph(QWidget* parent)
    : QWidget(parent)
{
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setAttribute(Qt::WA_TransparentForMouseEvents);
}

void Glyph::setGlyph(const QString& name)
{
    m_glyph = name;
    update();
}

void Glyph::setLines(double lines)
{
    m_lines = lines;
    updateGeometry();
}

QSize Glyph::sizeHint() const
{
    const int height = qRound(m_lines * fontMetrics().height());
    return {height, height};
}

void Glyph::paint(QPainter& painter, QStringView name, const QRectF& square, const QColor& color)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(square.topLeft());
    painter.scale(square.width() / side, square.height() / side);
    // Never thinner than a pixel and a half, however small the picture.
    const double thickness = std::max(1.8, 1.5 * side / std::max(square.width(), 1.0));
    painter.setPen(QPen(color, thickness, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    if (name == u"warning")
        drawWarning(painter, color);
    else if (name == u"tick")
        drawTick(painter);
    else if (name == u"document")
        drawDocument(painter);
    else if (name == u"person")
        drawPerson(painter, color);
    painter.restore();
}

void Glyph::paintEvent(QPaintEvent*)
{
    const double shorter = std::min(width(), height());
    QRectF square(0, 0, shorter, shorter);
    square.moveCenter(rect().toRectF().center());
    QPainter painter(this);
    paint(painter, m_glyph, square, palette().color(foregroundRole()));
}

void Glyph::changeEvent(QEvent* event)
{
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        updateGeometry();
}

} // namespace tljira
