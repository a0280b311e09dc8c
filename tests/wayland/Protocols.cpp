#include "tests/wayland/Protocols.h"

namespace tests::protocols {

namespace {

const wl_interface* untyped[] = {nullptr, nullptr, nullptr, nullptr, nullptr};
const wl_interface* newKeyboard[] = {&wl_seat_interface, &keyboard};
const wl_interface* newPointer[] = {&wl_seat_interface, &pointer};

const wl_message keyboardRequests[] = {
    {"keymap", "uhu", untyped},
    {"key", "uuu", untyped},
    {"modifiers", "uuuu", untyped},
    {"destroy", "", untyped},
};
const wl_message keyboardManagerRequests[] = {
    {"create_virtual_keyboard", "on", newKeyboard},
};
const wl_message pointerRequests[] = {
    {"motion", "uff", untyped}, {"motion_absolute", "uuuuu", untyped},
    {"button", "uuu", untyped}, {"axis", "uuf", untyped},
    {"frame", "", untyped},
};
const wl_message pointerManagerRequests[] = {
    {"create_virtual_pointer", "?on", newPointer},
};

} // namespace

const wl_interface keyboard = {"zwp_virtual_keyboard_v1", 1, 4, keyboardRequests, 0, nullptr};
const wl_interface keyboardManager = {"zwp_virtual_keyboard_manager_v1", 1, 1, keyboardManagerRequests, 0, nullptr};
const wl_interface pointer = {"zwlr_virtual_pointer_v1", 1, 5, pointerRequests, 0, nullptr};
const wl_interface pointerManager = {"zwlr_virtual_pointer_manager_v1", 1, 1, pointerManagerRequests, 0, nullptr};

} // namespace tests::protocols
