#pragma once

#include <QByteArray>
#include <QJsonObject>
#include <QJsonValue>

#include <optional>

namespace tljira {

/// The value that `bytes` hold, at the top level too a text, number, boolean or null. Nothing when they are no JSON in
/// UTF-8: empty, cut short, with text left over, or nested deeper than the parser follows.
std::optional<QJsonValue> decodeJSON(const QByteArray& bytes);

/// Without blanks or line ends.
QByteArray encodeJSON(const QJsonObject& object);

} // namespace tljira
