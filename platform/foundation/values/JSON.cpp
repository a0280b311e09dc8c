#include "platform/foundation/values/JSON.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <algorithm>

namespace tljira {

namespace {

bool isBlank(char c)
{
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

/// QJsonDocument takes only objects and arrays at the top level. Inside an array of one a scalar passes too; text that
/// would close that array early or add a second element is found by what comes out.
std::optional<QJsonValue> decodeScalar(const QByteArray& bytes)
{
    const QJsonDocument document = QJsonDocument::fromJson('[' + bytes + ']');
    const QJsonArray array = document.array();
    return document.isArray() && array.size() == 1 ? std::optional<QJsonValue>(array.first()) : std::nullopt;
}

} // namespace

std::optional<QJsonValue> decodeJSON(const QByteArray& bytes)
{
    constexpr QByteArrayView byteOrderMark("\xef\xbb\xbf");
    const QByteArray text = bytes.startsWith(byteOrderMark) ? bytes.mid(byteOrderMark.size()) : bytes;

    const auto first = std::find_if_not(text.begin(), text.end(), isBlank);
    if (first == text.end())
        return std::nullopt;
    if (*first != '{' && *first != '[')
        return decodeScalar(text);

    const QJsonDocument document = QJsonDocument::fromJson(text);
    if (document.isObject())
        return document.object();
    return document.isArray() ? std::optional<QJsonValue>(document.array()) : std::nullopt;
}

QByteArray encodeJSON(const QJsonObject& object)
{
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

} // namespace tljira
