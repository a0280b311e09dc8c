#pragma once

#include <QDateTime>
#include <QString>

#include <optional>

namespace records {

/// A point in time as Jira writes it, "2017-03-14T10:22:33.123+0100", in UTC and to the millisecond. Strict: month,
/// day, hour and minute have two digits, seconds one or two, the fraction one to nine, and there must be a zone, which
/// may also be "+01:00", "+01", "Z", "GMT" or "GMT+1". What does not fit to the last character, blanks around it aside,
/// or is on no calendar gives nothing. From any thread.
std::optional<QDateTime> createdDate(const QString& text);

} // namespace records
