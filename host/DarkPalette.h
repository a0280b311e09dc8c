#pragma once

#include <QPalette>

namespace tessaloom {

/// Light text on dark grey, for desktops that do not say what they prefer.
QPalette darkPalette();

} // namespace tessaloom
