#include "tests/states/InSight.h"

#include <QApplication>

namespace tests {

namespace {

QRect inWindow(const QWidget* view)
{
    return {view->mapTo(view->window(), QPoint()), view->size()};
}

bool isInLineWith(const QRect& one, const QRect& other)
{
    const auto holdsMiddle = [](const QRect& line, const QRect& inside) {
        return inside.center().y() >= line.top() && inside.center().y() <= line.bottom();
    };
    return holdsMiddle(one, other) || holdsMiddle(other, one);
}

/// What of the view its window has room for: it may be scrolled out, wholly or in part.
QRect shownPart(const QWidget& view)
{
    QRect shown = inWindow(&view);
    for (const QWidget* around = &view; !around->isWindow();) {
        around = around->parentWidget();
        shown &= inWindow(around);
    }
    return shown;
}

bool isStop(const QWidget* view)
{
    return (view->focusPolicy() & Qt::TabFocus) && !view->focusProxy() && isInSight(view);
}

/// The child of `around` that the view stands in, or is.
const QWidget* partOf(const QWidget* around, const QWidget* view)
{
    while (view->parentWidget() != around)
        view = view->parentWidget();
    return view;
}

} // namespace

bool isInSight(const QWidget* view)
{
    if (!view || !view->isVisible() || !view->isEnabled())
        return false;
    const QRect shown = shownPart(*view);
    if (shown.isEmpty())
        return false;
    const QWidget* there = view->window()->childAt(shown.center());
    return there == view || view->isAncestorOf(there);
}

bool hasKeyboard(const QWidget* view)
{
    return view && QApplication::focusWidget() == view && view->isVisible() && view->isEnabled() &&
           view->window()->isActiveWindow();
}

QList<QWidget*> stopsOfTab(const QWidget* view)
{
    QList<QWidget*> stops;
    for (QWidget* each : view->window()->findChildren<QWidget*>()) {
        if (!each->isWindow() && each->window() == view->window() && isStop(each))
            stops.append(each);
    }
    return stops;
}

bool isReadBefore(const QWidget* first, const QWidget* second)
{
    if (first->isAncestorOf(second) || second->isAncestorOf(first))
        return first->isAncestorOf(second);
    // What belongs together is read as a whole.
    const QWidget* around = first->parentWidget();
    while (!around->isAncestorOf(second))
        around = around->parentWidget();
    const QRect one = inWindow(partOf(around, first));
    const QRect other = inWindow(partOf(around, second));
    if (!isInLineWith(one, other))
        return one.top() < other.top();
    return first->isRightToLeft() ? one.right() > other.right() : one.left() < other.left();
}

} // namespace tests
