#include "platform/foundation/files/ScratchFolder.h"

#include "platform/foundation/files/FileManager.h"
#include "platform/foundation/files/PathString.h"

#include <QDir>
#include <QFile>
#include <QUuid>

namespace tljira {

ScratchFolder::~ScratchFolder()
{
    if (m_path.isEmpty())
        return;
    // What is known need not be looked up, for which there may be no descriptor left.
    for (const QString& name : std::as_const(m_names))
        QFile::remove(pathOf(name));
    if (!QDir().rmdir(m_path))
        FileManager::removeItemAtPath(m_path);
}

std::optional<Error> ScratchFolder::create(const QString& parent, const QString& prefix)
{
    m_parent = parent;
    m_identifier = QUuid::createUuid().toString(QUuid::Id128);
    const QString path = appendingPathComponent(parent, prefix + m_identifier);
    if (const auto error = FileManager::createDirectoryAtPath(path, false))
        return error;
    m_path = path;
    QFile::setPermissions(path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    static_cast<void>(m_sign.lockExisting(QFile::encodeName(path).toStdString()));
    return std::nullopt;
}

std::optional<Error> ScratchFolder::rename(const QString& prefix)
{
    const QString path = appendingPathComponent(m_parent, prefix + m_identifier);
    const auto error = FileManager::moveItemAtPath(m_path, path);
    if (!error)
        m_path = path;
    return error;
}

QString ScratchFolder::pathOf(const QString& name) const
{
    if (!m_names.contains(name))
        m_names << name;
    return appendingPathComponent(m_path, name);
}

} // namespace tljira
