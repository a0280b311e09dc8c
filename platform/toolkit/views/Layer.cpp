#include "platform/toolkit/views/Layer.h"

#include "platform/toolkit/windows/WindowFocus.h"

#include <QEvent>
#include <QPainter>
#include <QPainterPath>

#include <algorithm>

namespace tljira {

Layer::Layer(QWidget* view)
    : QObject(view)
{
    view->installEventFilter(this);
}

Layer* Layer::layerOf(const QWidget* view)
{
    return view ? view->findChild<Layer*>(QString(), Qt::FindDirectChildrenOnly) : nullptr;
}

Layer* Layer::wantLayer(QWidget* view)
{
    Layer* layer = layerOf(view);
    return layer || !view ? layer : new Layer(view);
}

void Layer::setBackgroundColor(const std::optional<QColor>& color)
{
    m_backgroundColor = color;
    update();
}

void Layer::setBorderColor(const std::optional<QColor>& color)
{
    m_borderColor = color;
    update();
}

void Layer::setCornerRadius(double radius)
{
    m_cornerRadius = std::max(radius, 0.0);
    update();
}

void Layer::setBorderWidth(double width)
{
    m_borderWidth = std::max(width, 0.0);
    update();
}

void Layer::setIsShade(bool isShade)
{
    m_isShade = isShade;
    update();
}

void Layer::update()
{
    static_cast<QWidget*>(parent())->update();
}

// Ahead of the view's own painting, which therefore lands on top of it.
bool Layer::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Paint)
        paint(static_cast<QWidget*>(watched));
    return QObject::eventFilter(watched, event);
}

void Layer::paint(QWidget* view) const
{
    if (m_isShade && WindowFocus::isCovered(view))
        return;
    QPainter painter(view);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF bounds = view->rect();
    if (m_backgroundColor) {
        QPainterPath shape;
        shape.addRoundedRect(bounds, m_cornerRadius, m_cornerRadius);
        painter.fillPath(shape, *m_backgroundColor);
    }
    if (m_borderColor && m_borderWidth > 0) {
        const double inset = m_borderWidth / 2;
        const double radius = std::max(m_cornerRadius - inset, 0.0);
        painter.setPen(QPen(*m_borderColor, m_borderWidth, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
        painter.drawRoundedRect(bounds.adjusted(inset, inset, -inset, -inset), radius, radius);
    }
}

} // namespace tljira
