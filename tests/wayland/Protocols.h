#pragma once

#include <wayland-client.h>

/// The requests of two protocols of compositors by which a program stands for a keyboard and a pointer
/// (virtual-keyboard-unstable-v1 and wlr-virtual-pointer-unstable-v1), by their numbers.
namespace tests::protocols {

extern const wl_interface keyboardManager;
extern const wl_interface keyboard;
extern const wl_interface pointerManager;
extern const wl_interface pointer;

namespace keyboardManagerRequest {
constexpr unsigned createKeyboard = 0;
}
namespace keyboardRequest {
constexpr unsigned keymap = 0;
constexpr unsigned key = 1;
constexpr unsigned modifiers = 2;
} // namespace keyboardRequest
namespace pointerManagerRequest {
constexpr unsigned createPointer = 0;
}
namespace pointerRequest {
constexpr unsigned motionAbsolute = 1;
constexpr unsigned button = 2;
constexpr unsigned frame = 4;
} // namespace pointerRequest

} // namespace tests::protocols
