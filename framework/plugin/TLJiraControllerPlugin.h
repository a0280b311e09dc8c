#pragma once

#include "framework/plugin/TLJiraControllerInterface.h"

#include <QObject>

/// The framework behind the interface for hosts that load it at run time.
class TLJiraControllerPlugin : public QObject, public TLJiraControllerInterface
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID TLJiraControllerInterface_iid)
    Q_INTERFACES(TLJiraControllerInterface)

public:
    int interfaceVersion() const override { return version; }
    bool attach(const QString& name, const QString& path) override;
    QString fetch() override;
    void setRoutes(const QStringList& routes) override;
    void setLogEnabled(bool enabled) override;
};
