#pragma once

#include <string>
#include <string_view>

namespace standin {

/// Guessed from the end of the name.
std::string mimeTypeOf(std::string_view fileName);

} // namespace standin
