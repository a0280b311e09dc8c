#include "platform/toolkit/windows/SheetEdge.h"

#include <QEvent>
#include <QPainter>

namespace tljira {

SheetEdge::SheetEdge(QWidget* window)
    : QWidget(window)
{
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFocusPolicy(Qt::NoFocus);
    setGeometry(window->rect());
    window->installEventFilter(this);
}

bool SheetEdge::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Resize)
        setGeometry(parentWidget()->rect());
    return QWidget::eventFilter(watched, event);
}

void SheetEdge::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    QColor line = palette().color(QPalette::WindowText);
    line.setAlphaF(0.35F);
    painter.setPen(QPen(line, 1));
    painter.drawRect(rect().toRectF().adjusted(0.5, 0.5, -0.5, -0.5));
}

} // namespace tljira
