#include <QObject>
#include <QtPlugin>

/// For some other purpose.
class OtherPlugin : public QObject
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "org.example.Other/2.0")
};

#include "OtherPlugin.moc"
