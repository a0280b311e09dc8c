#include "tests/desktop/XServer.h"

#include <algorithm>
#include <cstdlib>
#include <iostream>

#include <X11/XKBlib.h>
#include <X11/Xatom.h>
#include <X11/Xlib.h>
#include <X11/extensions/XTest.h>
#include <X11/keysym.h>

namespace tests {

namespace {

Display* displayOf(void* pointer)
{
    return static_cast<Display*>(pointer);
}

KeyCode keyCode(void* display, KeySym symbol)
{
    const KeyCode code = XKeysymToKeycode(displayOf(display), symbol);
    if (code == 0) {
        std::cerr << "the keyboard of the screen has no key " << XKeysymToString(symbol) << '\n';
        std::abort();
    }
    return code;
}

/// A property of the root window that lists windows; the last one, or none.
Window lastWindowIn(void* display, const char* name)
{
    Atom type = 0;
    int format = 0;
    unsigned long count = 0;
    unsigned long rest = 0;
    unsigned char* data = nullptr;
    const Atom property = XInternAtom(displayOf(display), name, False);
    const int result = XGetWindowProperty(displayOf(display), DefaultRootWindow(displayOf(display)), property, 0, 1024,
                                          False, XA_WINDOW, &type, &format, &count, &rest, &data);
    const Window last =
        result == Success && type == XA_WINDOW && count > 0 ? reinterpret_cast<Window*>(data)[count - 1] : 0;
    if (data)
        XFree(data);
    return last;
}

bool hasProperty(void* display, Window window, Atom property)
{
    int count = 0;
    Atom* const all = XListProperties(displayOf(display), window, &count);
    const bool isThere = std::find(all, all + count, property) != all + count;
    if (all)
        XFree(all);
    return isThere;
}

} // namespace

XServer& XServer::instance()
{
    static XServer server;
    return server;
}

XServer::XServer()
    : m_display(XOpenDisplay(nullptr))
{
    int ignored = 0;
    if (!m_display || !XTestQueryExtension(displayOf(m_display), &ignored, &ignored, &ignored, &ignored)) {
        std::cerr << "the screen cannot be reached, or takes no keys from a program\n";
        std::abort();
    }
    setRepeating(false);
}

bool XServer::hasWindowManager()
{
    if (lastWindowIn(m_display, "_NET_SUPPORTING_WM_CHECK") == 0)
        return false;
    Display* const display = displayOf(m_display);
    if (m_question == 0)
        m_question = XCreateSimpleWindow(display, DefaultRootWindow(display), 0, 0, 1, 1, 0, 0, 0);
    const Atom answer = XInternAtom(display, "_NET_FRAME_EXTENTS", False);
    if (hasProperty(m_display, m_question, answer))
        return true;
    ask(m_question, "_NET_REQUEST_FRAME_EXTENTS", {});
    return false;
}

void XServer::keyDown(const char* name)
{
    // In milliseconds: no finger presses a key again within the one in which it let go, but a held key's repeats do.
    constexpr unsigned long delay = 2;
    XTestFakeKeyEvent(displayOf(m_display), keyCode(m_display, XStringToKeysym(name)), True, delay);
    XFlush(displayOf(m_display));
}

void XServer::keyUp(const char* name)
{
    XTestFakeKeyEvent(displayOf(m_display), keyCode(m_display, XStringToKeysym(name)), False, CurrentTime);
    XFlush(displayOf(m_display));
}

void XServer::setRepeating(bool isRepeating)
{
    if (isRepeating)
        XAutoRepeatOn(displayOf(m_display));
    else
        XAutoRepeatOff(displayOf(m_display));
    XSync(displayOf(m_display), False);
}

void XServer::type(QChar character)
{
    // Latin characters are their own symbols.
    const KeyCode code = keyCode(m_display, character.unicode());
    const bool isShifted = XkbKeycodeToKeysym(displayOf(m_display), code, 0, 0) != character.unicode();
    if (isShifted)
        keyDown("Shift_L");
    XTestFakeKeyEvent(displayOf(m_display), code, True, CurrentTime);
    XTestFakeKeyEvent(displayOf(m_display), code, False, CurrentTime);
    if (isShifted)
        keyUp("Shift_L");
    XFlush(displayOf(m_display));
}

void XServer::movePointer(const QPoint& position)
{
    XTestFakeMotionEvent(displayOf(m_display), -1, position.x(), position.y(), CurrentTime);
    XSync(displayOf(m_display), False);
}

void XServer::pressButton()
{
    XTestFakeButtonEvent(displayOf(m_display), Button1, True, CurrentTime);
    XTestFakeButtonEvent(displayOf(m_display), Button1, False, CurrentTime);
    XSync(displayOf(m_display), False);
}

void XServer::minimise(WId window)
{
    XIconifyWindow(displayOf(m_display), window, DefaultScreen(displayOf(m_display)));
    XFlush(displayOf(m_display));
}

void XServer::activate(WId window)
{
    // As a pager, which is never refused for what its user is doing.
    constexpr long fromPager = 2;
    ask(window, "_NET_ACTIVE_WINDOW", {fromPager, CurrentTime});
}

void XServer::setMaximised(WId window, bool isMaximised)
{
    const auto atom = [this](const char* name) {
        return static_cast<long>(XInternAtom(displayOf(m_display), name, False));
    };
    ask(window, "_NET_WM_STATE",
        {isMaximised ? 1 : 0, atom("_NET_WM_STATE_MAXIMIZED_VERT"), atom("_NET_WM_STATE_MAXIMIZED_HORZ"), 2});
}

void XServer::place(WId window, const QPoint& corner, const QSize& size)
{
    // All four values hold, and they come from a pager.
    constexpr long what = NorthWestGravity | 0xf << 8 | 2 << 12;
    ask(window, "_NET_MOVERESIZE_WINDOW", {what, corner.x(), corner.y(), size.width(), size.height()});
}

void XServer::ask(WId window, const char* message, const std::array<long, 5>& values)
{
    Display* const display = displayOf(m_display);
    XEvent event{};
    event.xclient.type = ClientMessage;
    event.xclient.window = window;
    event.xclient.message_type = XInternAtom(display, message, False);
    event.xclient.format = 32;
    std::copy(values.begin(), values.end(), event.xclient.data.l);
    XSendEvent(display, DefaultRootWindow(display), False, SubstructureNotifyMask | SubstructureRedirectMask, &event);
    XSync(display, False);
}

bool XServer::mayBeMaximised(WId window) const
{
    // Of the hints' five numbers the first says which of the others hold, the second what may be done.
    constexpr unsigned long functionsHold = 1;
    constexpr unsigned long everything = 1;
    constexpr unsigned long maximise = 1 << 4;
    Atom type = 0;
    int format = 0;
    unsigned long count = 0;
    unsigned long rest = 0;
    unsigned char* data = nullptr;
    const Atom hints = XInternAtom(displayOf(m_display), "_MOTIF_WM_HINTS", False);
    XGetWindowProperty(displayOf(m_display), window, hints, 0, 5, False, AnyPropertyType, &type, &format, &count, &rest,
                       &data);
    const auto* numbers = reinterpret_cast<const unsigned long*>(data);
    const bool isRestricted = numbers && count >= 2 && (numbers[0] & functionsHold) && !(numbers[1] & everything);
    const bool mayBe = !isRestricted || (numbers[1] & maximise);
    if (data)
        XFree(data);
    return mayBe;
}

WId XServer::frontWindow() const
{
    return lastWindowIn(m_display, "_NET_CLIENT_LIST_STACKING");
}

} // namespace tests
