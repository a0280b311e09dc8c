#include "standin/MimeType.h"

#include "standin/Text.h"

#include <utility>

namespace standin {

std::string mimeTypeOf(std::string_view fileName)
{
    static const std::pair<std::string_view, std::string_view> types[] = {
        {"txt", "text/plain"},      {"html", "text/html"}, {"json", "application/json"},
        {"pdf", "application/pdf"}, {"png", "image/png"},  {"jpg", "image/jpeg"},
        {"zip", "application/zip"}, {"xml", "text/xml"},   {"csv", "text/csv"},
    };
    const auto dot = fileName.rfind('.');
    const auto extension = dot == std::string_view::npos ? std::string_view() : fileName.substr(dot + 1);
    for (const auto& [ending, type] : types) {
        if (equalsIgnoringCase(ending, extension))
            return std::string(type);
    }
    return "application/octet-stream";
}

} // namespace standin
