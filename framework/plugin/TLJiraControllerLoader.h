#pragma once

#include "TLJiraControllerInterface.h"

#include <QCoreApplication>
#include <QJsonObject>
#include <QPluginLoader>

/// Finds and loads the framework's plug-in:
///
///     TLJiraControllerLoader jira;
///     if (jira.plugin())
///         jira.plugin()->attach(name, copy);
///     else
///         showMessage(jira.errorString());
///
/// Loads nothing in a program whose application object is no QApplication, or is not there yet.
class TLJiraControllerLoader
{
public:
    /// Looks for TLJiraControllerPlugin in these folders, then in "tljiracontroller" below each of
    /// QCoreApplication::libraryPaths(). The first file of that name counts.
    ///
    /// A host that can do without the newer calls says from which version on it takes the plug-in as `oldest`. It looks
    /// at `interfaceVersion()` before it makes a call that came later.
    explicit TLJiraControllerLoader(const QStringList& folders = {}, int oldest = TLJiraControllerInterface::version)
        : m_oldest(oldest)
    {
        // By name: this header asks for no more than Qt Core.
        const QCoreApplication* const application = QCoreApplication::instance();
        if (!application || !application->inherits("QApplication")) {
            m_errorString = QStringLiteral("The Jira plug-in opens windows: it needs a program with a QApplication.");
            return;
        }
        const QString name = QStringLiteral("TLJiraControllerPlugin");
        QStringList places = folders;
        for (const QString& folder : QCoreApplication::libraryPaths())
            places.append(folder + QStringLiteral("/tljiracontroller"));
        for (const QString& place : places) {
            QPluginLoader loader(place + u'/' + name);
            if (!loader.fileName().isEmpty()) {
                load(loader);
                return;
            }
        }
        m_errorString = QStringLiteral("The Jira plug-in is not installed: %1 was looked for in %2.")
                            .arg(name, places.join(QStringLiteral(", ")));
    }

    /// Null when there is none that can be used.
    TLJiraControllerInterface* plugin() const { return m_plugin; }

    /// The same plug-in as an object with calls by their names and a signal (see TLJiraControllerInterface). Null when
    /// there is none, or one of version 1, which has none of them.
    QObject* object() const { return m_object; }

    /// Why one of the two is null, in a sentence for the user; empty when neither is.
    QString errorString() const { return m_errorString; }

private:
    void load(QPluginLoader& loader)
    {
        const QString iid = loader.metaData().value(QStringLiteral("IID")).toString();
        if (!iid.isEmpty() && iid != QStringLiteral(TLJiraControllerInterface_iid)) {
            m_errorString = QStringLiteral("%1 is no Jira plug-in for this program: it is %2, needed is %3.")
                                .arg(loader.fileName(), iid, QStringLiteral(TLJiraControllerInterface_iid));
            return;
        }
        auto* const plugin = qobject_cast<TLJiraControllerInterface*>(loader.instance());
        if (!plugin)
            m_errorString =
                QStringLiteral("The Jira plug-in %1 cannot be loaded: %2").arg(loader.fileName(), loader.errorString());
        else if (plugin->interfaceVersion() < m_oldest)
            m_errorString = tooOld(loader, *plugin, m_oldest);
        else
            take(loader, plugin);
    }

    void take(QPluginLoader& loader, TLJiraControllerInterface* plugin)
    {
        constexpr int firstWithCalls = 2;
        m_plugin = plugin;
        if (loader.instance()->metaObject()->indexOfSignal("ended(int,QVariantMap)") >= 0)
            m_object = loader.instance();
        else
            m_errorString = tooOld(loader, *plugin, firstWithCalls);
    }

    static QString tooOld(const QPluginLoader& loader, const TLJiraControllerInterface& plugin, int needed)
    {
        return QStringLiteral("The Jira plug-in %1 is too old for this program: version %2, needed is %3.")
            .arg(loader.fileName())
            .arg(plugin.interfaceVersion())
            .arg(needed);
    }

    const int m_oldest;
    TLJiraControllerInterface* m_plugin = nullptr;
    QObject* m_object = nullptr;
    QString m_errorString;
};
