#pragma once

#include "TLJiraControllerInterface.h"

#include <QCoreApplication>
#include <QJsonObject>
#include <QPluginLoader>

/// Finds and loads the framework's plug-in:
///
///     TLJiraControllerLoader jira;
///     if (jira.plugin())
///         jira.plugin()->attach(name, path);
///     else
///         showMessage(jira.errorString());
///
/// Needs the application object.
class TLJiraControllerLoader
{
public:
    /// Looks for TLJiraControllerPlugin in these folders, then in "tljiracontroller" below each of
    /// QCoreApplication::libraryPaths(). The first file of that name counts.
    explicit TLJiraControllerLoader(const QStringList& folders = {})
    {
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

    /// Why there is none, in a sentence for the user; empty when there is one.
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
        else if (plugin->interfaceVersion() < TLJiraControllerInterface::version)
            m_errorString = QStringLiteral("The Jira plug-in %1 is too old for this program: version %2, needed is %3.")
                                .arg(loader.fileName())
                                .arg(plugin->interfaceVersion())
                                .arg(TLJiraControllerInterface::version);
        else
            m_plugin = plugin;
    }

    TLJiraControllerInterface* m_plugin = nullptr;
    QString m_errorString;
};
