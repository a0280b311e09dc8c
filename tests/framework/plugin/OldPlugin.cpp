#include "framework/plugin/TLJiraControllerInterface.h"

#include <QObject>

/// Built with a header from before the first version.
class OldPlugin : public QObject, public TLJiraControllerInterface
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID TLJiraControllerInterface_iid)
    Q_INTERFACES(TLJiraControllerInterface)

public:
    int interfaceVersion() const override { return 0; }
    bool attach(const QString&, const QString&) override { return false; }
    QString fetch() override { return {}; }
    void setRoutes(const QStringList&) override {}
};

#include "OldPlugin.moc"
