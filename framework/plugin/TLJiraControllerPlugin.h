#pragma once

#include "client/tasks/TLJiraTask.h"
#include "framework/TLJiraJobs.h"
#include "framework/plugin/TLJiraControllerInterface.h"

#include <QByteArray>
#include <QObject>
#include <QPointer>
#include <QVariantMap>

#include <map>
#include <memory>

/// The framework behind the interface for hosts that load it at run time.
class TLJiraControllerPlugin : public QObject, public TLJiraControllerInterface
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID TLJiraControllerInterface_iid)
    Q_INTERFACES(TLJiraControllerInterface)

public:
    TLJiraControllerPlugin();
    /// The host has unloaded it, or the process ends.
    ~TLJiraControllerPlugin() override;

    Q_INVOKABLE int interfaceVersion() const override { return version; }
    bool attach(const QString& name, const QString& path) override;
    QString fetch() override;
    Q_INVOKABLE void setRoutes(const QStringList& routes) override;
    Q_INVOKABLE void setLogEnabled(bool enabled) override;

    // The interface's header says what these do.
    Q_INVOKABLE int attachBytes(const QString& name, const QByteArray& bytes, QObject* parent,
                                const QVariantMap& options);
    Q_INVOKABLE int attachFile(const QString& name, const QString& path, QObject* parent, const QVariantMap& options);
    Q_INVOKABLE int fetchDocument(QObject* parent, const QVariantMap& options);
    Q_INVOKABLE QString setOptions(const QVariantMap& options);

    Q_INVOKABLE int signIn(const QString& server, const QString& user, const QString& password);
    Q_INVOKABLE int askWhoIsSignedIn();
    Q_INVOKABLE int attachBytesTo(const QString& issueKey, const QString& name, const QByteArray& bytes);
    Q_INVOKABLE int attachFileTo(const QString& issueKey, const QString& name, const QString& path);
    Q_INVOKABLE int listDocuments(const QString& issueKey);
    Q_INVOKABLE int fetchAttachment(const QString& issueKey, const QString& attachmentId);
    Q_INVOKABLE bool cancel(int job);

Q_SIGNALS:
    void ended(int job, const QVariantMap& result);
    void progress(int job, qint64 bytes, qint64 ofBytes);
    void logged(const QString& line);

private:
    int nextJob();
    int attachTo(const QString& issueKey, const TLJiraTask::Document& document);
    auto ending(int job);
    TLJiraTask::Progress following(int job);
    void endTask(int job, const QVariantMap& result);
    int attachDocument(const TLJiraJobs::Document& document, QObject* parent, const QVariantMap& options);
    int refuse(const QString& reason);
    TLJiraJobs::Ended telling(int job);

    class LogReceiver;
    const std::shared_ptr<LogReceiver> m_logReceiver;
    int m_newestJob = 0;
    /// Choices come too late.
    bool m_hasBegun = false;
    /// Those without windows that have not ended.
    std::map<int, std::shared_ptr<TLJiraTask>> m_tasks;
};
