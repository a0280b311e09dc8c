#include "platform/toolkit/views/MessageLine.h"

#include "platform/toolkit/views/Glyph.h"
#include "platform/toolkit/views/PaletteColors.h"
#include "platform/toolkit/views/TextRole.h"

#include <QEvent>
#include <QPainter>

namespace tljira {

namespace {

constexpr double cornerRadius = 5;

MessageLine* lineAround(QWidget* view)
{
    for (QWidget* step = view; step; step = step->parentWidget()) {
        if (auto* line = qobject_cast<MessageLine*>(step))
            return line;
    }
    return nullptr;
}

} // namespace

MessageLine::MessageLine(QWidget* parent)
    : AlertView(parent)
{
    setKind(QStringLiteral("error"));
    hide();
}

void MessageLine::setKind(const QString& kind)
{
    m_kind = kind;
    TextRole::apply(this, kind);
    makeRoomForIcon();
    update();
}

void MessageLine::show(QLabel* label, const QString& text)
{
    if (!label)
        return;
    label->setText(text);
    MessageLine* line = lineAround(label);
    if (!line)
        return;
    const bool wasVisible = line->isVisible();
    line->setHidden(text.isEmpty());
    if (wasVisible)
        line->announce();
}

bool MessageLine::isError() const
{
    return m_kind == u"error";
}

int MessageLine::iconSide() const
{
    return fontMetrics().ascent();
}

int MessageLine::padding() const
{
    return isError() ? 8 : 0;
}

void MessageLine::makeRoomForIcon()
{
    const int icon = padding() + iconSide() + 8;
    const bool isMirrored = layoutDirection() == Qt::RightToLeft;
    setContentsMargins(isMirrored ? padding() : icon, padding(), isMirrored ? icon : padding(), padding());
}

bool MessageLine::event(QEvent* event)
{
    const bool handled = AlertView::event(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::LayoutDirectionChange)
        makeRoomForIcon();
    return handled;
}

void MessageLine::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (isError()) {
        painter.setPen(Qt::NoPen);
        painter.setBrush(errorBackground(parentWidget() ? parentWidget()->palette() : palette()));
        painter.drawRoundedRect(rect(), cornerRadius, cornerRadius);
    }
    const int side = iconSide();
    const int left = layoutDirection() == Qt::RightToLeft ? width() - padding() - side : padding();
    const int top = padding() + (fontMetrics().height() - side) / 2;
    Glyph::paint(painter, isError() ? u"warning" : u"tick", QRectF(left, top, side, side),
                 palette().color(foregroundRole()));
}

} // namespace tljira
