#include "tests/wayland/WaylandHands.h"

#include "tests/kit/WaitUntil.h"
#include "tests/states/InSight.h"
#include "tests/wayland/Seat.h"
#include "tests/wayland/SwayTree.h"

#include <QApplication>
#include <QKeyEvent>
#include <QWidget>

#include <gtest/gtest.h>

#include <linux/input-event-codes.h>

#include <map>

namespace tests {

namespace {

struct Stroke
{
    unsigned key;
    Qt::KeyboardModifiers modifiers;
};

constexpr unsigned letterKeys[] = {KEY_A, KEY_B, KEY_C, KEY_D, KEY_E, KEY_F, KEY_G, KEY_H, KEY_I,
                                   KEY_J, KEY_K, KEY_L, KEY_M, KEY_N, KEY_O, KEY_P, KEY_Q, KEY_R,
                                   KEY_S, KEY_T, KEY_U, KEY_V, KEY_W, KEY_X, KEY_Y, KEY_Z};

Stroke strokeFor(QChar character)
{
    static const std::map<char, Stroke> others{{'-', {KEY_MINUS, {}}},
                                               {'.', {KEY_DOT, {}}},
                                               {'/', {KEY_SLASH, {}}},
                                               {':', {KEY_SEMICOLON, Qt::ShiftModifier}},
                                               {'0', {KEY_0, {}}}};
    const char latin = character.toLatin1();
    if (latin >= 'a' && latin <= 'z')
        return {letterKeys[latin - 'a'], {}};
    if (latin >= 'A' && latin <= 'Z')
        return {letterKeys[latin - 'A'], Qt::ShiftModifier};
    if (latin >= '1' && latin <= '9')
        return {KEY_1 + static_cast<unsigned>(latin - '1'), {}};
    return others.at(latin);
}

unsigned numberOf(Qt::Key key)
{
    static const std::map<Qt::Key, unsigned> others{
        {Qt::Key_Return, KEY_ENTER}, {Qt::Key_Enter, KEY_KPENTER}, {Qt::Key_Escape, KEY_ESC}, {Qt::Key_Tab, KEY_TAB},
        {Qt::Key_Backtab, KEY_TAB},  {Qt::Key_Space, KEY_SPACE},   {Qt::Key_Down, KEY_DOWN},  {Qt::Key_Up, KEY_UP},
    };
    return key >= Qt::Key_A && key <= Qt::Key_Z ? letterKeys[key - Qt::Key_A] : others.at(key);
}

} // namespace

// Before all that may keep an event from others.
void WaylandHands::watch()
{
    qApp->removeEventFilter(this);
    qApp->installEventFilter(this);
}

bool WaylandHands::eventFilter(QObject* receiver, QEvent* event)
{
    if (receiver->isWindowType()) {
        m_presses += event->type() == QEvent::ShortcutOverride;
        m_releases += event->type() == QEvent::KeyRelease && !static_cast<QKeyEvent*>(event)->isAutoRepeat();
        m_clicks += event->type() == QEvent::MouseButtonRelease;
    }
    return false;
}

void WaylandHands::strike(unsigned key, Qt::KeyboardModifiers modifiers)
{
    watch();
    const int before = m_releases;
    if (modifiers)
        Seat::instance().setModifiers(modifiers);
    Seat::instance().keyDown(key);
    Seat::instance().keyUp(key);
    // Where the press closed the window, nobody may be there for the release.
    waitUntil([&] { return m_releases > before; }, std::chrono::seconds(2));
    if (modifiers)
        Seat::instance().setModifiers({});
    drainMainQueue();
}

void WaylandHands::press(Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    strike(numberOf(key), modifiers);
}

void WaylandHands::write(const QString& text)
{
    for (const QChar character : text) {
        const Stroke stroke = strokeFor(character);
        strike(stroke.key, stroke.modifiers);
    }
}

void WaylandHands::holdUntil(Qt::Key key, int repeats, const std::function<bool()>& condition)
{
    watch();
    Seat::instance().keyDown(numberOf(key));
    EXPECT_TRUE(waitUntil(condition));
    watch();
    const int before = m_presses;
    EXPECT_TRUE(waitUntil([&] { return m_presses >= before + repeats; }));
    Seat::instance().keyUp(numberOf(key));
    drainMainQueue();
}

void WaylandHands::click(QWidget* view)
{
    ASSERT_TRUE(waitUntil([view] { return isInSight(view); })) << view->objectName().toStdString();
    watch();
    const int before = m_clicks;
    const QPoint place = view->mapTo(view->window(), view->rect().center());
    Seat::instance().movePointer(swayWindow(view->window()->windowTitle()).content.topLeft() + place);
    Seat::instance().pressButton();
    EXPECT_TRUE(waitUntil([&] { return m_clicks > before; })) << view->objectName().toStdString();
    drainMainQueue();
}

} // namespace tests
