#include <QObject>
#include <QStringList>
#include <QtPlugin>

/// The interface as it was in version 1: nobody may call what came later.
class TLJiraControllerInterface
{
public:
    virtual ~TLJiraControllerInterface() = default;
    virtual int interfaceVersion() const = 0;
    virtual bool attach(const QString& name, const QString& path) = 0;
    virtual QString fetch() = 0;
    virtual void setRoutes(const QStringList& routes) = 0;
};

#define TLJiraControllerInterface_iid "org.tljiracontroller.TLJiraControllerInterface/1.0"
Q_DECLARE_INTERFACE(TLJiraControllerInterface, TLJiraControllerInterface_iid)

class OldPlugin : public QObject, public TLJiraControllerInterface
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID TLJiraControllerInterface_iid)
    Q_INTERFACES(TLJiraControllerInterface)

public:
    int interfaceVersion() const override { return 1; }
    bool attach(const QString&, const QString&) override { return false; }
    QString fetch() override { return {}; }
    void setRoutes(const QStringList&) override {}
};

#include "OldPlugin.moc"
