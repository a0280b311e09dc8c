#include "tests/wayland/Seat.h"

#include "tests/wayland/Compositor.h"
#include "tests/wayland/Protocols.h"

#include <linux/input-event-codes.h>
#include <sys/mman.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <iostream>

namespace tests {

namespace {

/// An American keyboard; the files that are included belong to the desktop.
constexpr char keymap[] = "xkb_keymap {\n"
                          "xkb_keycodes { include \"evdev+aliases(qwerty)\" };\n"
                          "xkb_types { include \"complete\" };\n"
                          "xkb_compat { include \"complete\" };\n"
                          "xkb_symbols { include \"pc+us+inet(evdev)\" };\n"
                          "};\n";

/// The bits of the first, the third and the fourth modifier of that keyboard.
unsigned bitsOf(Qt::KeyboardModifiers modifiers)
{
    return (modifiers & Qt::ShiftModifier ? 1U : 0U) | (modifiers & Qt::ControlModifier ? 4U : 0U) |
           (modifiers & Qt::AltModifier ? 8U : 0U);
}

[[noreturn]] void giveUp(const char* why)
{
    std::cerr << why << '\n';
    std::abort();
}

template <class... Values>
void send(wl_proxy* receiver, unsigned request, Values... values)
{
    wl_proxy_marshal_flags(receiver, request, nullptr, wl_proxy_get_version(receiver), 0, values...);
}

template <class... Values>
wl_proxy* make(wl_proxy* receiver, unsigned request, const wl_interface& kind, Values... values)
{
    return wl_proxy_marshal_flags(receiver, request, &kind, wl_proxy_get_version(receiver), 0, values...);
}

} // namespace

Seat& Seat::instance()
{
    static Seat seat;
    return seat;
}

Seat::Seat()
    : m_display(wl_display_connect(nullptr))
{
    if (!m_display)
        giveUp("the compositor cannot be reached");
    static const wl_registry_listener listener = {[](void* self, wl_registry*, unsigned name, const char* interface,
                                                     unsigned) { static_cast<Seat*>(self)->found(name, interface); },
                                                  [](void*, wl_registry*, unsigned) {}};
    m_registry = reinterpret_cast<wl_proxy*>(wl_display_get_registry(m_display));
    wl_registry_add_listener(reinterpret_cast<wl_registry*>(m_registry), &listener, this);
    wl_display_roundtrip(m_display);
    if (!m_seat || !m_keyboards || !m_pointers)
        giveUp("the compositor takes no keys or pointer from a program");
    using namespace protocols;
    m_keyboard = make(m_keyboards, keyboardManagerRequest::createKeyboard, keyboard, m_seat, nullptr);
    m_pointer = make(m_pointers, pointerManagerRequest::createPointer, pointer, m_seat, nullptr);
    sendKeymap();
}

void Seat::found(unsigned name, const char* interface)
{
    const auto take = [&](wl_proxy*& global, const wl_interface& kind) {
        if (std::strcmp(interface, kind.name) == 0)
            global =
                static_cast<wl_proxy*>(wl_registry_bind(reinterpret_cast<wl_registry*>(m_registry), name, &kind, 1));
    };
    take(m_seat, wl_seat_interface);
    take(m_keyboards, protocols::keyboardManager);
    take(m_pointers, protocols::pointerManager);
}

void Seat::sendKeymap()
{
    const int file = memfd_create("keymap", 0);
    // With the zero at its end.
    if (file < 0 || write(file, keymap, sizeof keymap) != static_cast<ssize_t>(sizeof keymap))
        giveUp("cannot write a keymap");
    send(m_keyboard, protocols::keyboardRequest::keymap, WL_KEYBOARD_KEYMAP_FORMAT_XKB_V1, file,
         static_cast<unsigned>(sizeof keymap));
    sync();
    close(file);
}

void Seat::sync()
{
    if (wl_display_roundtrip(m_display) < 0)
        giveUp("the compositor is gone, or did not like what it was asked for");
}

void Seat::keyDown(unsigned key)
{
    send(m_keyboard, protocols::keyboardRequest::key, ++m_time, key, WL_KEYBOARD_KEY_STATE_PRESSED);
    sync();
}

void Seat::keyUp(unsigned key)
{
    send(m_keyboard, protocols::keyboardRequest::key, ++m_time, key, WL_KEYBOARD_KEY_STATE_RELEASED);
    sync();
}

void Seat::setModifiers(Qt::KeyboardModifiers modifiers)
{
    send(m_keyboard, protocols::keyboardRequest::modifiers, bitsOf(modifiers), 0U, 0U, 0U);
    sync();
}

void Seat::movePointer(const QPoint& position)
{
    send(m_pointer, protocols::pointerRequest::motionAbsolute, ++m_time, static_cast<unsigned>(position.x()),
         static_cast<unsigned>(position.y()), static_cast<unsigned>(Compositor::width),
         static_cast<unsigned>(Compositor::height));
    send(m_pointer, protocols::pointerRequest::frame);
    sync();
}

void Seat::pressButton()
{
    for (const unsigned state : {WL_POINTER_BUTTON_STATE_PRESSED, WL_POINTER_BUTTON_STATE_RELEASED}) {
        send(m_pointer, protocols::pointerRequest::button, ++m_time, static_cast<unsigned>(BTN_LEFT), state);
        send(m_pointer, protocols::pointerRequest::frame);
    }
    sync();
}

} // namespace tests
