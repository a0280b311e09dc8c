#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace standin {

/// A header's value and its parameters, split as widespread Java servers split them, which is not quite what the RFCs
/// say: an unquoted value runs to the next separator with outer blanks trimmed, a quotation mark anywhere in a value
/// starts text in which separators do not count, and one that is never closed swallows the rest. Backslashes stay in
/// the value.
class HeaderParameters
{
public:
    explicit HeaderParameters(std::string_view text);

    /// Names are lower case. A parameter that is there without a value is an empty text; of several the last one
    /// counts.
    std::optional<std::string> value(std::string_view name) const;

private:
    std::vector<std::pair<std::string, std::string>> m_parameters;
};

/// The headers of one part of a form.
struct PartHeader
{
    std::string fieldName = {};
    std::optional<std::string> fileName = {}; ///< UTF-8
    std::string contentType = {};

    static PartHeader parse(std::string_view lines);
};

} // namespace standin
