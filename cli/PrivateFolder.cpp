#include "cli/PrivateFolder.h"

#include "platform/foundation/files/FileManager.h"
#include "platform/foundation/files/Leftovers.h"
#include "platform/foundation/files/PathString.h"

#include <QDir>
#include <QFile>
#include <QUuid>

namespace cli {

namespace {

const QLatin1String namePrefix(".tljira-");

} // namespace

PrivateFolder::~PrivateFolder()
{
    if (m_path.isEmpty())
        return;
    // What is known need not be looked up, for which there may be no descriptor left.
    for (const QString& name : std::as_const(m_names))
        QFile::remove(pathOf(name));
    if (!QDir().rmdir(m_path))
        tljira::FileManager::removeItemAtPath(m_path);
}

void PrivateFolder::removeLeftovers(const QString& parent)
{
    tljira::removeLeftovers(parent, [](const QString& name) { return name.startsWith(namePrefix); });
}

std::optional<tljira::Error> PrivateFolder::create(const QString& parent)
{
    const QString name = namePrefix + QUuid::createUuid().toString(QUuid::Id128);
    const QString path = tljira::appendingPathComponent(parent, name);
    if (const auto error = tljira::FileManager::createDirectoryAtPath(path, false))
        return error;
    m_path = path;
    static_cast<void>(m_sign.lockExisting(QFile::encodeName(path).toStdString()));
    QFile::setPermissions(m_path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    return std::nullopt;
}

QString PrivateFolder::pathOf(const QString& name) const
{
    if (!m_names.contains(name))
        m_names << name;
    return tljira::appendingPathComponent(m_path, name);
}

} // namespace cli
