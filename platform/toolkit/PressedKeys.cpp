#include "platform/toolkit/PressedKeys.h"

#include <QApplication>

#include <algorithm>

namespace tljira {

namespace {

bool pressesButtons(int key)
{
    return key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Space;
}

} // namespace

PressedKeys::Press& PressedKeys::press(const QKeyEvent& event)
{
    const int key = event.key();
    const auto found =
        std::find_if(m_presses.begin(), m_presses.end(), [&](const Press& each) { return each.key == key; });
    Press next;
    next.key = key;
    next.isAnnounced = event.type() == QEvent::ShortcutOverride;
    next.since.start();
    if (found == m_presses.end())
        return m_presses.emplace_back(next);
    next.isStale =
        found->wasBeforeChange && pressesButtons(key) && found->since.elapsed() < QApplication::doubleClickInterval();
    return *found = next;
}

bool PressedKeys::note(const QKeyEvent& event)
{
    const auto found =
        std::find_if(m_presses.begin(), m_presses.end(), [&](const Press& each) { return each.key == event.key(); });
    if (event.isAutoRepeat())
        return found != m_presses.end() && found->isStale;
    if (event.type() == QEvent::KeyRelease) {
        const bool isStale = found != m_presses.end() && found->isStale;
        if (found != m_presses.end())
            found->isDown = found->isStale = false;
        return isStale;
    }
    if (event.type() == QEvent::KeyPress && found != m_presses.end() && found->isAnnounced) {
        found->isAnnounced = false;
        return found->isStale;
    }
    return press(event).isStale;
}

void PressedKeys::screenChanged()
{
    for (Press& each : m_presses) {
        each.isStale = each.isStale || each.isDown;
        each.wasBeforeChange = true;
    }
}

} // namespace tljira
