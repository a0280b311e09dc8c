#include "cli/PrivateFolder.h"

#include "platform/foundation/FileManager.h"
#include "platform/foundation/PathString.h"

#include <QFile>
#include <QUuid>

namespace cli {

PrivateFolder::~PrivateFolder()
{
    if (!m_path.isEmpty())
        tljira::FileManager::removeItemAtPath(m_path);
}

std::optional<tljira::Error> PrivateFolder::create(const QString& parent)
{
    const QString name = QStringLiteral(".tljira-") + QUuid::createUuid().toString(QUuid::Id128);
    const QString path = tljira::appendingPathComponent(parent, name);
    if (const auto error = tljira::FileManager::createDirectoryAtPath(path, false))
        return error;
    m_path = path;
    QFile::setPermissions(m_path, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    return std::nullopt;
}

QString PrivateFolder::pathOf(const QString& name) const
{
    return tljira::appendingPathComponent(m_path, name);
}

} // namespace cli
