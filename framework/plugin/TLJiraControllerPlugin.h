#pragma once

#include "framework/TLJiraJobs.h"
#include "framework/plugin/TLJiraControllerInterface.h"

#include <QByteArray>
#include <QObject>
#include <QVariantMap>

/// The framework behind the interface for hosts that load it at run time.
class TLJiraControllerPlugin : public QObject, public TLJiraControllerInterface
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID TLJiraControllerInterface_iid)
    Q_INTERFACES(TLJiraControllerInterface)

public:
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

Q_SIGNALS:
    void ended(int job, const QVariantMap& result);

private:
    int attachDocument(const TLJiraJobs::Document& document, QObject* parent, const QVariantMap& options);
    int refuse(const QString& reason);
    TLJiraJobs::Ended telling(int job);

    int m_newestJob = 0;
};
