#include "client/tasks/FileDocument.h"
#include "framework/plugin/JobCalls.h"
#include "framework/plugin/TLJiraControllerPlugin.h"

// Jobs without windows.

/// What a host has unloaded tells nothing more; its jobs go on.
auto TLJiraControllerPlugin::ending(int job)
{
    return [self = QPointer(this), job](const auto&... told) {
        if (self)
            self->endTask(job, JobCalls::map(told...));
    };
}

int TLJiraControllerPlugin::signIn(const QString& server, const QString& user, const QString& password)
{
    const int job = nextJob();
    m_tasks[job] = TLJiraTask::signIn(server, user, password, ending(job));
    return job;
}

int TLJiraControllerPlugin::askWhoIsSignedIn()
{
    const int job = nextJob();
    m_tasks[job] = TLJiraTask::askWhoIsSignedIn(ending(job));
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
    m_tasks[job] = TLJiraTask::attach(document, issueKey, ending(job), following(job));
    return job;
}

int TLJiraControllerPlugin::listDocuments(const QString& issueKey)
{
    const int job = nextJob();
    m_tasks[job] = TLJiraTask::list(issueKey, ending(job));
    return job;
}

int TLJiraControllerPlugin::fetchAttachment(const QString& issueKey, const QString& attachmentId)
{
    const int job = nextJob();
    m_tasks[job] = TLJiraTask::fetch(issueKey, attachmentId, ending(job), following(job));
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
    return [self = QPointer(this), job](qint64 bytes, qint64 ofBytes) {
        if (self)
            Q_EMIT self->progress(job, bytes, ofBytes);
    };
}

/// An end never comes inside the call that began the job: the number is there.
void TLJiraControllerPlugin::endTask(int job, const QVariantMap& result)
{
    m_tasks.erase(job);
    Q_EMIT ended(job, result);
}
