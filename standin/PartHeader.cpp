#include "standin/PartHeader.h"

#include "standin/Text.h"

#include <QString>

#include <algorithm>

namespace standin {

namespace {

std::string_view takeName(std::string_view& rest)
{
    const auto end = std::min(rest.find_first_of("=;"), rest.size());
    const auto name = rest.substr(0, end);
    rest.remove_prefix(end);
    return trimmed(name);
}

std::string_view takeValue(std::string_view& rest)
{
    bool isQuoted = false;
    bool isEscaped = false;
    std::size_t end = 0;
    for (; end < rest.size() && (isQuoted || rest[end] != ';'); ++end) {
        if (rest[end] == '"' && !isEscaped)
            isQuoted = !isQuoted;
        isEscaped = !isEscaped && rest[end] == '\\';
    }
    auto value = trimmed(rest.substr(0, end));
    rest.remove_prefix(end);
    if (value.size() >= 2 && value.front() == '"' && value.back() == '"')
        value = value.substr(1, value.size() - 2);
    return value;
}

std::string lowerCase(std::string_view text)
{
    std::string lower(text);
    std::transform(lower.begin(), lower.end(), lower.begin(),
                   [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c; });
    return lower;
}

/// Bytes that are no UTF-8 become replacement characters, as they do for the real server.
std::string validUtf8(const std::string& bytes)
{
    return QString::fromUtf8(bytes.data(), static_cast<qsizetype>(bytes.size())).toStdString();
}

} // namespace

HeaderParameters::HeaderParameters(std::string_view text)
{
    while (!text.empty()) {
        const auto name = lowerCase(takeName(text));
        std::string value;
        if (text.starts_with('=')) {
            text.remove_prefix(1);
            value = takeValue(text);
        }
        if (text.starts_with(';'))
            text.remove_prefix(1);
        if (!name.empty())
            m_parameters.emplace_back(name, std::move(value));
    }
}

std::optional<std::string> HeaderParameters::value(std::string_view name) const
{
    const auto found =
        std::find_if(m_parameters.rbegin(), m_parameters.rend(), [name](const auto& p) { return p.first == name; });
    return found == m_parameters.rend() ? std::nullopt : std::optional(found->second);
}

PartHeader PartHeader::parse(std::string_view lines)
{
    PartHeader part;
    for (auto line : split(lines, '\n')) {
        if (line.ends_with('\r'))
            line.remove_suffix(1);
        const auto colon = line.find(':');
        if (colon == std::string_view::npos)
            continue;
        const auto value = trimmed(line.substr(colon + 1));
        if (equalsIgnoringCase(line.substr(0, colon), "Content-Type"))
            part.contentType = value;
        if (!equalsIgnoringCase(line.substr(0, colon), "Content-Disposition"))
            continue;
        const HeaderParameters parameters(value);
        part.fieldName = parameters.value("name").value_or(std::string());
        if (const auto name = parameters.value("filename"))
            part.fileName = validUtf8(*name);
    }
    return part;
}

} // namespace standin
