#pragma once

#include <QJsonValue>
#include <QString>

#include <optional>

/// What the records take from one value of an answer.
namespace records {

/// Nothing for a value of another type.
std::optional<QString> text(const QJsonValue& value);
/// The digits of a number, too.
std::optional<QString> textOrNumber(const QJsonValue& value);

/// Without its fraction; 0 for a value of another type, the lowest integer for a number that 64 bits do not hold.
qint64 integer(const QJsonValue& value);

} // namespace records
