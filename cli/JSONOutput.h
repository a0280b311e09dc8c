#pragma once

#include "records/JAIssueObject.h"
#include "records/JALoginObject.h"
#include "records/JAUser.h"

#include <QByteArray>

/// What the commands print for --json: one value on one line. What a record lacks is null.
namespace cli {

QByteArray jsonOf(const JAUser& user);
/// Of a session that is good. Its value, which is as good as a password, is left out.
QByteArray jsonOf(const JALoginObject& session, const std::optional<QString>& server);
/// Of a token that is good: the same object, and the server counts no logins.
QByteArray jsonOfToken(const std::optional<QString>& server);
QByteArray jsonOf(const JAIssueObject::Attachments& attachments);

} // namespace cli
