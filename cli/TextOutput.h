#pragma once

#include "records/JAIssueObject.h"

#include <QByteArray>

#include <utility>
#include <vector>

/// What the commands print for people. Nothing in it can move a terminal's cursor.
namespace cli {

/// One line for each pair that has a value, the values below one another.
QByteArray textOfPairs(const std::vector<std::pair<QString, std::optional<QString>>>& pairs);

/// One line for each attachment, in columns: id, size in bytes, date and time in the user's time zone, name. "-" stands
/// for what is not known.
QByteArray textOfAttachments(const JAIssueObject::Attachments& attachments);

} // namespace cli
