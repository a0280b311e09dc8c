#include "cli/DownloadPlace.h"

#include "platform/foundation/MainQueue.h"
#include "platform/foundation/files/FileManager.h"
#include "platform/foundation/files/Leftovers.h"
#include "platform/foundation/files/PathString.h"
#include "platform/foundation/files/TemporaryDirectory.h"

#include <QDir>
#include <QFileInfo>

#include <filesystem>
#include <system_error>
#include <thread>

namespace cli {

namespace {

/// Beside the user's own files, hidden.
constexpr QLatin1String scratchPrefix(".tljira-");

tljira::Error savingError(tljira::FileError code, const QString& destination, const QString& reason)
{
    const QString folder = tljira::deletingLastPathComponent(destination);
    return tljira::makeFileError(
        code, QStringLiteral("“%1” couldn’t be saved in “%2” because %3.")
                  .arg(tljira::lastPathComponent(destination), tljira::lastPathComponent(folder), reason));
}

/// Links that lead nowhere included.
bool isTaken(const QString& path)
{
    const QFileInfo info(path);
    return info.exists() || info.isSymLink();
}

std::optional<QString> problemOfFolder(const QString& folder)
{
    std::error_code unknown;
    const auto type = std::filesystem::status(QFile::encodeName(folder).toStdString(), unknown).type();
    if (type == std::filesystem::file_type::directory)
        return std::nullopt;
    if (type == std::filesystem::file_type::none)
        return QStringLiteral("the folder cannot be looked at: %1").arg(QString::fromStdString(unknown.message()));
    return QStringLiteral("there is no such folder");
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
    const QString name = tljira::fileNameFromUntrustedText(attachmentName);
    if (!to)
        return tljira::appendingPathComponent(QDir::currentPath(), name);
    const QFileInfo info(*to);
    if (info.isDir())
        return tljira::appendingPathComponent(info.canonicalFilePath(), name);
    const QString path = info.absoluteFilePath();
    return info.filePath().endsWith(u'/') ? tljira::appendingPathComponent(path, name) : path;
}

DownloadPlace::DownloadPlace(const QString& destination)
    : m_destination(destination)
    , m_name(tljira::lastPathComponent(destination))
{
}

void DownloadPlace::removeLeftovers(const QString& folder)
{
    tljira::removeLeftovers(folder, [](const QString& name) { return name.startsWith(scratchPrefix); });
}

std::optional<tljira::Error> DownloadPlace::prepare()
{
    if (isTaken(m_destination))
        return savingError(tljira::FileError::WriteFileExists, m_destination,
                           QStringLiteral("an item with the same name already exists"));
    const QString folder = tljira::deletingLastPathComponent(m_destination);
    if (const auto problem = problemOfFolder(folder))
        return savingError(tljira::FileError::NoSuchFile, m_destination, *problem);
    removeLeftovers(folder);
    if (const auto error = m_beside.create(folder, scratchPrefix))
        return error;
    return m_receiving.create(tljira::temporaryDirectory(), scratchPrefix);
}

void DownloadPlace::settle(const Completion& completion)
{
    const std::weak_ptr<const bool> life = m_life;
    const QString from = receivingPath();
    const QString to = m_beside.pathOf(m_name);
    const auto move = [this, life, from, to, completion] {
        const auto error = tljira::FileManager::moveItemAtPath(from, to);
        tljira::MainQueue::instance().addOperation([this, life, error, completion] {
            if (!life.expired())
                completion(error ? withoutFolderBeside(*error) : publish());
        });
    };
    try {
        std::thread(move).detach();
    } catch (const std::system_error&) {
        // Ctrl-C waits then.
        move();
    }
}

/// The error of a move, naming the folder that the user gave instead of the temporary one beside it.
tljira::Error DownloadPlace::withoutFolderBeside(const tljira::Error& error) const
{
    const auto nameOfFolder = [](const QString& path) {
        return tljira::lastPathComponent(tljira::deletingLastPathComponent(path));
    };
    const QString text =
        error.localizedDescription().replace(nameOfFolder(m_beside.pathOf(m_name)), nameOfFolder(m_destination));
    return tljira::makeError(error.domain, error.code, text);
}

std::optional<tljira::Error> DownloadPlace::publish() const
{
    const QString complete = m_beside.pathOf(m_name);
    // The name may be as long as a name can be.
    const QString probe = m_name == u"new" ? QStringLiteral("other") : QStringLiteral("new");
    setUsualPermissions(complete, m_beside.pathOf(probe));
    return tljira::FileManager::moveItemAtPath(complete, m_destination);
}

} // namespace cli
