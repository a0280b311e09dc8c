#pragma once

#include "client/tasks/TLJiraTask.h"
#include "framework/TLJiraJobs.h"

#include <QVariantMap>

/// Jobs in the words of hosts that know no C++.
namespace JobCalls {

/// What a host chose, by the options' names. Answers what is wrong with that in `problem`, empty if nothing is.
TLJiraJobs::Options options(const QVariantMap& named, QString& problem);

/// The fields by their names; the outcome is "done", "cancelled" or "failed".
QVariantMap map(const TLJiraJobs::Result& result);

/// The same with a list of the documents under "documents".
QVariantMap map(const TLJiraTask::Result& result, const JAIssueObject::Attachments& documents);

/// The same with who is signed in under "userName", "displayName" and "email".
QVariantMap map(const TLJiraTask::Result& result, const std::shared_ptr<const JAUser>& user);

/// The job is over for which the host has handed the file over: the folder that holds it goes, unless the user never
/// pressed Upload.
void removeHandedOver(const QString& path, const TLJiraJobs::Result& result);

} // namespace JobCalls
