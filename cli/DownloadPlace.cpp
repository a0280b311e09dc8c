#include "cli/DownloadPlace.h"

#include "platform/foundation/FileManager.h"
#include "platform/foundation/MainQueue.h"
#include "platform/foundation/PathString.h"
#include "platform/foundation/TemporaryDirectory.h"

#include <QDir>
#include <QFileInfo>

#include <thread>

namespace cli {

namespace {

platform::Error savingError(platform::FileError code, const QString& destination, const QString& reason)
{
    const QString folder = platform::deletingLastPathComponent(destination);
    return platform::makeError(
        QLatin1String(platform::CocoaErrorDomain), static_cast<qint64>(code),
        QStringLiteral("“%1” couldn’t be saved in “%2” because %3.")
            .arg(platform::lastPathComponent(destination), platform::lastPathComponent(folder), reason));
}

/// Links that lead nowhere included.
bool isTaken(const QString& path)
{
    const QFileInfo info(path);
    return info.exists() || info.isSymLink();
}

/// The transport keeps its files from everybody else; what the user asked for gets what a new file at `probe` gets.
void setUsualPermissions(const QString& path, const QString& probe)
{
    QFile ordinary(probe);
    if (!ordinary.open(QIODevice::WriteOnly | QIODevice::NewOnly))
        return;
    // What the current user may do is no property of the file: Qt would make it one.
    constexpr QFile::Permissions ofCurrentUser = QFile::ReadUser | QFile::WriteUser | QFile::ExeUser;
    QFile::setPermissions(path, ordinary.permissions() & ~ofCurrentUser);
    ordinary.remove();
}

} // namespace

QString downloadDestination(const std::optional<QString>& to, const QString& attachmentName)
{
    const QString name = platform::fileNameFromUntrustedText(attachmentName);
    const QFileInfo info(to.value_or(QDir::currentPath()));
    if (info.isDir())
        return platform::appendingPathComponent(info.canonicalFilePath(), name);
    const QString path = info.absoluteFilePath();
    return info.filePath().endsWith(u'/') ? platform::appendingPathComponent(path, name) : path;
}

DownloadPlace::DownloadPlace(const QString& destination)
    : m_destination(destination)
    , m_name(platform::lastPathComponent(destination))
{
}

std::optional<platform::Error> DownloadPlace::prepare()
{
    if (isTaken(m_destination))
        return savingError(platform::FileError::WriteFileExists, m_destination,
                           QStringLiteral("an item with the same name already exists"));
    const QString folder = platform::deletingLastPathComponent(m_destination);
    if (!QFileInfo(folder).isDir())
        return savingError(platform::FileError::NoSuchFile, m_destination, QStringLiteral("there is no such folder"));
    if (const auto error = m_beside.create(folder))
        return error;
    return m_receiving.create(platform::temporaryDirectory());
}

void DownloadPlace::settle(const Completion& completion)
{
    const std::weak_ptr<const bool> life = m_life;
    const QString from = receivingPath();
    const QString to = m_beside.pathOf(m_name);
    std::thread([this, life, from, to, completion] {
        const auto error = platform::FileManager::moveItemAtPath(from, to);
        platform::MainQueue::instance().addOperation([this, life, error, completion] {
            if (!life.expired())
                completion(error ? withoutFolderBeside(*error) : publish());
        });
    }).detach();
}

/// Of the folder in which the file comes to completion the user has never heard.
platform::Error DownloadPlace::withoutFolderBeside(const platform::Error& error) const
{
    const auto nameOfFolder = [](const QString& path) {
        return platform::lastPathComponent(platform::deletingLastPathComponent(path));
    };
    const QString text =
        error.localizedDescription().replace(nameOfFolder(m_beside.pathOf(m_name)), nameOfFolder(m_destination));
    return platform::makeError(error.domain, error.code, text);
}

std::optional<platform::Error> DownloadPlace::publish() const
{
    const QString complete = m_beside.pathOf(m_name);
    setUsualPermissions(complete, complete + QStringLiteral(".new"));
    return platform::FileManager::moveItemAtPath(complete, m_destination);
}

} // namespace cli
