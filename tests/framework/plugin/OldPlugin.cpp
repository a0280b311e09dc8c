#include "tests/hosts/version1/TLJiraControllerInterface.h"

#include <QObject>

/// A plug-in of version 1: nobody may call what came later.
class OldPlugin : public QObject, public TLJiraControllerInterface
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID TLJiraControllerInterface_iid)
    Q_INTERFACES(TLJiraControllerInterface)

public:
    int interfaceVersion() const override { return version; }
    bool attach(const QString& name, const QString& path) override { return name + path == u"plan/copy"; }
    QString fetch() override { return QStringLiteral("/fetched/plan"); }
    void setRoutes(const QStringList&) override {}
};

#include "OldPlugin.moc"
