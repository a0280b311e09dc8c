#include <QObject>
#include <QtPlugin>

/// A plug-in of another kind.
class OtherPlugin : public QObject
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "tests.OtherPlugin")
};

#include "OtherPlugin.moc"
