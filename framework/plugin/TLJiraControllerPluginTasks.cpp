#include "client/tasks/FileDocument.h"
#include "framework/plugin/JobCalls.h"
#include "framework/plugin/TLJiraControllerPlugin.h"

// Jobs without windows.

int TLJiraControllerPlugin::signIn(const QString& server, const QString& user, const QString& password)
{
    const int job = nextJob();
    m_tasks[job] = TLJiraTask::signIn(
        server, user, password, [this, job](const TLJiraTask::Result& result) { endTask(job, JobCalls::map(result)); });
    return job;
}

int TLJiraControllerPlugin::askWhoIsSignedIn()
{
    const int job = nextJob();
    m_tasks[job] = TLJiraTask::askWhoIsSignedIn(
        [this, job](const TLJiraTask::Result& result, const auto& user) { endTask(job, JobCalls::map(result, user)); });
    return job;
}

int TLJiraControllerPlugin::attachBytesTo(const QString& issueKey, const QString& name, const QByteArray& bytes)
{
    return attachTo(issueKey, {name, bytes});
}

int TLJiraControllerPlugin::attachFileTo(const QString& issueKey, const QString& name, const QString& path)
{
    return attachTo(issueKey, client::FileDocument::of(name, path));
}

int TLJiraControllerPlugin::attachTo(const QString& issueKey, const TLJiraTask::Document& document)
{
    const int job = nextJob();
    m_tasks[job] = TLJiraTask::attach(
        document, issueKey, [this, job](const TLJiraTask::Result& result) { endTask(job, JobCalls::map(result)); },
        following(job));
    return job;
}

int TLJiraControllerPlugin::listDocuments(const QString& issueKey)
{
    const int job = nextJob();
    m_tasks[job] = TLJiraTask::list(issueKey, [this, job](const TLJiraTask::Result& result, const auto& documents) {
        endTask(job, JobCalls::map(result, documents));
    });
    return job;
}

int TLJiraControllerPlugin::fetchAttachment(const QString& issueKey, const QString& attachmentId)
{
    const int job = nextJob();
    m_tasks[job] = TLJiraTask::fetch(
        issueKey, attachmentId, [this, job](const TLJiraTask::Result& result) { endTask(job, JobCalls::map(result)); },
        following(job));
    return job;
}

bool TLJiraControllerPlugin::cancel(int job)
{
    const auto found = m_tasks.find(job);
    if (found == m_tasks.end() || found->second->isOver())
        return false;
    found->second->cancel();
    return true;
}

TLJiraTask::Progress TLJiraControllerPlugin::following(int job)
{
    return [this, job](qint64 bytes, qint64 ofBytes) { Q_EMIT progress(job, bytes, ofBytes); };
}

/// An end never comes inside the call that began the job: the number is there.
void TLJiraControllerPlugin::endTask(int job, const QVariantMap& result)
{
    m_tasks.erase(job);
    Q_EMIT ended(job, result);
}
