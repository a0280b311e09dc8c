#include "framework/plugin/TLJiraControllerPlugin.h"

#include "client/tasks/FileDocument.h"
#include "framework/plugin/JobCalls.h"
#include "framework/plugin/OptionCalls.h"
#include "platform/foundation/LogSwitch.h"
#include "platform/foundation/loading/URLSessionConfiguration.h"

bool TLJiraControllerPlugin::attach(const QString& name, const QString& path)
{
    m_hasBegun = true;
    const auto removeFile = [path](const TLJiraJobs::Result& result) { JobCalls::removeHandedOver(path, result); };
    return TLJiraJobs::attach(client::FileDocument::of(name, path), nullptr, removeFile);
}

QString TLJiraControllerPlugin::fetch()
{
    m_hasBegun = true;
    const auto result = TLJiraJobs::fetchAndWait(nullptr);
    return result ? result->path : QString();
}

void TLJiraControllerPlugin::setRoutes(const QStringList& routes)
{
    tljira::URLSessionConfiguration::setDefaultRoutes(routes);
}

void TLJiraControllerPlugin::setLogEnabled(bool enabled)
{
    tljira::setLogEnabled(enabled);
}

QString TLJiraControllerPlugin::setOptions(const QVariantMap& options)
{
    if (m_hasBegun)
        return QStringLiteral("Options are chosen before the first job.");
    // Lines may come from any thread.
    const auto tell = [this](const QString& line) {
        QMetaObject::invokeMethod(
            this, [this, line] { Q_EMIT logged(line); }, Qt::QueuedConnection);
    };
    QString problem;
    const TLJiraOptions chosen = OptionCalls::options(options, tell, problem);
    if (problem.isEmpty())
        TLJiraOptions::use(chosen);
    return problem;
}

/// The number of a job that is about to begin.
int TLJiraControllerPlugin::nextJob()
{
    m_hasBegun = true;
    return ++m_newestJob;
}

int TLJiraControllerPlugin::attachBytes(const QString& name, const QByteArray& bytes, QObject* parent,
                                        const QVariantMap& options)
{
    return attachDocument({name, bytes}, parent, options);
}

int TLJiraControllerPlugin::attachFile(const QString& name, const QString& path, QObject* parent,
                                       const QVariantMap& options)
{
    return attachDocument(client::FileDocument::of(name, path), parent, options);
}

int TLJiraControllerPlugin::attachDocument(const TLJiraJobs::Document& document, QObject* parent,
                                           const QVariantMap& options)
{
    QString problem;
    const auto chosen = JobCalls::options(options, problem);
    if (!problem.isEmpty())
        return refuse(problem);
    const int job = nextJob();
    return TLJiraJobs::attach(document, parent, telling(job), chosen) ? job : 0;
}

int TLJiraControllerPlugin::fetchDocument(QObject* parent, const QVariantMap& options)
{
    QString problem;
    const auto chosen = JobCalls::options(options, problem);
    if (!problem.isEmpty())
        return refuse(problem);
    const int job = nextJob();
    return TLJiraJobs::fetch(parent, telling(job), chosen) ? job : 0;
}

/// A job that fails before it has a window.
int TLJiraControllerPlugin::refuse(const QString& reason)
{
    TLJiraJobs::Result result;
    result.outcome = TLJiraJobs::Outcome::Failed;
    result.error = tljira::makeError(QStringLiteral("TLJiraControllerPlugin"), 0, reason);
    const int job = ++m_newestJob;
    QMetaObject::invokeMethod(
        this, [tell = telling(job), result] { tell(result); }, Qt::QueuedConnection);
    return job;
}

TLJiraJobs::Ended TLJiraControllerPlugin::telling(int job)
{
    return [this, job](const TLJiraJobs::Result& result) { Q_EMIT ended(job, JobCalls::map(result)); };
}
