#include "framework/plugin/TLJiraControllerPlugin.h"

#include "client/tasks/FileDocument.h"
#include "framework/plugin/JobCalls.h"
#include "framework/plugin/OptionCalls.h"
#include "platform/foundation/LogSwitch.h"
#include "platform/foundation/loading/URLSessionConfiguration.h"

/// Hands lines of the log, which may come from any thread, to a plug-in that the host may unload.
class TLJiraControllerPlugin::LogReceiver
{
public:
    explicit LogReceiver(TLJiraControllerPlugin* plugin)
        : m_plugin(plugin)
    {
    }

    void take(const QString& line)
    {
        const std::lock_guard lock(m_mutex);
        if (m_plugin)
            QMetaObject::invokeMethod(
                m_plugin, [plugin = m_plugin, line] { Q_EMIT plugin->logged(line); }, Qt::QueuedConnection);
    }

    void forget()
    {
        const std::lock_guard lock(m_mutex);
        m_plugin = nullptr;
    }

private:
    std::mutex m_mutex;
    TLJiraControllerPlugin* m_plugin;
};

TLJiraControllerPlugin::TLJiraControllerPlugin()
    : m_logReceiver(std::make_shared<LogReceiver>(this))
{
}

TLJiraControllerPlugin::~TLJiraControllerPlugin()
{
    m_logReceiver->forget();
}

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
    const auto tell = [receiver = m_logReceiver](const QString& line) { receiver->take(line); };
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
    return [self = QPointer(this), job](const TLJiraJobs::Result& result) {
        if (self)
            Q_EMIT self->ended(job, JobCalls::map(result));
    };
}
