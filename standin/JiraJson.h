#pragma once

#include "standin/Jira.h"

#include <QJsonObject>

#include <string>

namespace standin {

/// The JSON of the REST resources. `base` is what links begin with, without a slash at the end.

QJsonObject userJson(const User& user, const std::string& base, const Options& options);
/// A user as GET myself shows it.
QJsonObject ownUserJson(const User& user, const std::string& base, const Options& options);
QJsonObject attachmentJson(const AttachmentState& attachment, const std::string& base, const Options& options);
QJsonObject issueJson(const IssueState& issue, const std::string& base, const Options& options);
QJsonObject loginInfoJson(const LoginHistory& history, const Options& options);

/// Where an attachment's bytes are.
std::string contentLink(const StoredAttachment& attachment, const std::string& base, const Options& options);

} // namespace standin
