#include "tests/desktop/DesktopHands.h"

#include "tests/desktop/XServer.h"
#include "tests/kit/WaitUntil.h"

#include <map>
#include <string>

namespace tests {

namespace {

std::string nameOf(Qt::Key key)
{
    static const std::map<Qt::Key, const char*> names{
        {Qt::Key_Return, "Return"}, {Qt::Key_Enter, "KP_Enter"}, {Qt::Key_Escape, "Escape"}, {Qt::Key_Tab, "Tab"},
        {Qt::Key_Backtab, "Tab"},   {Qt::Key_Space, "space"},    {Qt::Key_Down, "Down"},     {Qt::Key_Up, "Up"},
    };
    const auto found = names.find(key);
    return found != names.end() ? found->second : std::string(1, static_cast<char>(key - Qt::Key_A + 'a'));
}

} // namespace

void DesktopHands::press(Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    const auto holdModifiers = [modifiers](void (XServer::*act)(const char*)) {
        if (modifiers & Qt::AltModifier)
            (XServer::instance().*act)("Alt_L");
        if (modifiers & Qt::ShiftModifier)
            (XServer::instance().*act)("Shift_L");
    };
    holdModifiers(&XServer::keyDown);
    m_user.press(nameOf(key).c_str());
    holdModifiers(&XServer::keyUp);
    drainMainQueue();
}

} // namespace tests
