#include "download/SecondClick.h"

#include <QEvent>
#include <QWidget>

void SecondClick::keepFrom(QWidget* control)
{
    if (control)
        new SecondClick(control);
}

SecondClick::SecondClick(QWidget* control)
    : QObject(control)
{
    control->installEventFilter(this);
}

bool SecondClick::eventFilter(QObject*, QEvent* event)
{
    switch (event->type()) {
    case QEvent::MouseButtonPress:
        m_hadFirst = true;
        return false;
    case QEvent::Hide:
        m_hadFirst = false;
        return false;
    case QEvent::MouseButtonDblClick:
        return !m_hadFirst;
    default:
        return false;
    }
}
