#include "standin/Text.h"

#include <QByteArray>
#include <QLatin1String>

namespace standin {

namespace {

int hexDigit(char c)
{
    if (c >= '0' && c <= '9')
        return c - '0';
    if (c >= 'a' && c <= 'f')
        return c - 'a' + 10;
    return c >= 'A' && c <= 'F' ? c - 'A' + 10 : -1;
}

} // namespace

bool equalsIgnoringCase(std::string_view a, std::string_view b)
{
    return QLatin1String(a.data(), static_cast<qsizetype>(a.size()))
               .compare(QLatin1String(b.data(), static_cast<qsizetype>(b.size())), Qt::CaseInsensitive) == 0;
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

/// Qt would make other bytes of an escape that is broken.
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
    return QByteArray(text.data(), static_cast<qsizetype>(text.size())).toPercentEncoding().toStdString();
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

} // namespace standin
