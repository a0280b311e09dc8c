#include "platform/toolkit/windows/PressedKeys.h"

#include <QApplication>

#include <algorithm>
#include <utility>

namespace tljira {

namespace {

bool pressesButtons(int key)
{
    return key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Space;
}

} // namespace

const PressedKeys::Press* PressedKeys::find(int key) const
{
    const auto found =
        std::find_if(m_presses.begin(), m_presses.end(), [key](const Press& each) { return each.key == key; });
    return found == m_presses.end() ? nullptr : &*found;
}

PressedKeys::Press* PressedKeys::find(int key)
{
    return const_cast<Press*>(std::as_const(*this).find(key));
}

PressedKeys::Press& PressedKeys::press(const QKeyEvent& event)
{
    Press* const last = find(event.key());
    const bool isHeld = last && !last->isDown && last->releaseTime != 0 && last->releaseTime == event.timestamp();
    Press next = isHeld ? *last : Press();
    next.key = event.key();
    next.isAnnounced = event.type() == QEvent::ShortcutOverride;
    next.isDown = true;
    next.releaseTime = 0;
    if (isHeld) {
        next.isRepeated = true;
        next.isStale = last->wasStale || last->wasBeforeChange;
        return *last = next;
    }
    next.since.start();
    if (!last)
        return m_presses.emplace_back(next);
    next.isStale = last->wasBeforeChange && pressesButtons(next.key) &&
                   last->since.elapsed() < QApplication::doubleClickInterval();
    return *last = next;
}

bool PressedKeys::note(const QKeyEvent& event)
{
    Press* const found = find(event.key());
    if (event.isAutoRepeat())
        return found && found->isStale;
    if (event.type() == QEvent::KeyRelease)
        return found && release(*found, event);
    if (event.type() == QEvent::KeyPress && found && found->isAnnounced) {
        found->isAnnounced = false;
        return found->isStale;
    }
    return press(event).isStale;
}

bool PressedKeys::release(Press& press, const QKeyEvent& event)
{
    press.wasStale = press.isStale;
    press.releaseTime = event.timestamp();
    press.isDown = press.isStale = false;
    return press.wasStale;
}

bool PressedKeys::isRepeat(const QKeyEvent& event) const
{
    const Press* const found = find(event.key());
    return event.isAutoRepeat() || (found && found->isDown && found->isRepeated);
}

void PressedKeys::screenChanged()
{
    for (Press& each : m_presses) {
        each.isStale = each.isStale || each.isDown;
        each.wasBeforeChange = true;
    }
}

} // namespace tljira
