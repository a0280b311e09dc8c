#include "standin/Text.h"

#include <algorithm>
#include <cctype>

namespace standin {

namespace {

char lower(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool isUnreserved(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' || c == '.' ||
           c == '_' || c == '~';
}

int hexDigit(char c)
{
    if (c >= '0' && c <= '9')
        return c - '0';
    if (lower(c) >= 'a' && lower(c) <= 'f')
        return lower(c) - 'a' + 10;
    return -1;
}

constexpr std::string_view digits = "0123456789abcdef";

} // namespace

bool equalsIgnoringCase(std::string_view a, std::string_view b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](char x, char y) { return lower(x) == lower(y); });
}

std::string_view trimmed(std::string_view text)
{
    const auto first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

std::vector<std::string_view> split(std::string_view text, char separator)
{
    std::vector<std::string_view> parts;
    for (;;) {
        const auto end = text.find(separator);
        parts.push_back(text.substr(0, end));
        if (end == std::string_view::npos)
            return parts;
        text.remove_prefix(end + 1);
    }
}

std::string percentDecoded(std::string_view text)
{
    std::string decoded;
    decoded.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool isEscape =
            text[i] == '%' && i + 2 < text.size() && hexDigit(text[i + 1]) >= 0 && hexDigit(text[i + 2]) >= 0;
        if (isEscape) {
            decoded += static_cast<char>(hexDigit(text[i + 1]) * 16 + hexDigit(text[i + 2]));
            i += 2;
        } else {
            decoded += text[i];
        }
    }
    return decoded;
}

std::string percentEncoded(std::string_view text)
{
    std::string encoded;
    for (const char c : text) {
        if (isUnreserved(c)) {
            encoded += c;
            continue;
        }
        const auto byte = static_cast<unsigned char>(c);
        encoded += '%';
        encoded += static_cast<char>(std::toupper(digits[byte >> 4]));
        encoded += static_cast<char>(std::toupper(digits[byte & 15]));
    }
    return encoded;
}

bool matchesPattern(std::string_view pattern, std::string_view text)
{
    const auto star = pattern.find('*');
    if (star == std::string_view::npos)
        return pattern == text;
    if (!text.starts_with(pattern.substr(0, star)))
        return false;
    const auto rest = pattern.substr(star + 1);
    for (std::size_t start = star; start <= text.size(); ++start) {
        if (matchesPattern(rest, text.substr(start)))
            return true;
    }
    return false;
}

std::string hexadecimal(std::string_view bytes)
{
    std::string text;
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        text += digits[byte >> 4];
        text += digits[byte & 15];
    }
    return text;
}

} // namespace standin
