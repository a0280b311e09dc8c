#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace standin {

bool equalsIgnoringCase(std::string_view a, std::string_view b);
std::string_view trimmed(std::string_view text);
std::vector<std::string_view> split(std::string_view text, char separator);

std::string percentDecoded(std::string_view text);
/// Encodes everything but the unreserved characters of RFC 3986.
std::string percentEncoded(std::string_view text);

/// "*" in the pattern stands for any run of characters.
bool matchesPattern(std::string_view pattern, std::string_view text);

} // namespace standin
