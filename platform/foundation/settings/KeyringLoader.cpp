#include "platform/foundation/settings/KeyringLoader.h"

#include "platform/foundation/os/CodeFile.h"
#include "platform/foundation/settings/KeyringService.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QJsonObject>
#include <QPluginLoader>

namespace tljira {

namespace {

QStringList folders()
{
    QStringList found;
    if (const QString code = os::fileOfThisCode(); !code.isEmpty())
        found.append(QFileInfo(code).absolutePath() + QStringLiteral("/" TL_PLUGIN_FOLDER));
    for (const QString& folder : QCoreApplication::libraryPaths())
        found.append(folder + QStringLiteral("/tljiracontroller"));
    found.removeDuplicates();
    return found;
}

} // namespace

KeyringService* KeyringLoader::service()
{
    if (m_service)
        return m_service;
    const QString name = QStringLiteral("TLJiraControllerKeyring");
    const QStringList places = folders();
    m_failure = QStringLiteral("%1 was looked for in %2").arg(name, places.join(QStringLiteral(", ")));
    for (const QString& place : places) {
        m_service = load(place + u'/' + name);
        if (m_service)
            break;
    }
    return m_service;
}

KeyringService* KeyringLoader::load(const QString& path)
{
    QPluginLoader loader(path);
    if (loader.fileName().isEmpty())
        return nullptr;
    const QString kind = loader.metaData().value(QStringLiteral("IID")).toString();
    if (!kind.isEmpty() && kind != QStringLiteral(TLJIRA_KEYRING_SERVICE)) {
        m_failure = QStringLiteral("%1 belongs to another version").arg(loader.fileName());
        return nullptr;
    }
    auto* const service = qobject_cast<KeyringService*>(loader.instance());
    if (!service)
        m_failure = loader.errorString();
    return service;
}

} // namespace tljira
