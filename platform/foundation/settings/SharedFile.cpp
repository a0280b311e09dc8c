#include "platform/foundation/settings/SharedFile.h"

#include "platform/foundation/Log.h"
#include "platform/foundation/files/FileManager.h"
#include "platform/foundation/files/Leftovers.h"
#include "platform/foundation/files/ReplaceFile.h"
#include "platform/foundation/os/FileLock.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <filesystem>
#include <thread>

namespace tljira {

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

/// How long another write may leave the same time behind, in milliseconds. The coarsest file systems in use step by two
/// seconds, and are known by their full seconds; the others step by a few milliseconds.
qint64 doubtedAge(qint64 time)
{
    return time % 1000 == 0 ? 2000 : 50;
}

constexpr QFile::Permissions UserFolder = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner;

fs::path native(const QString& path)
{
    return QFile::encodeName(path).toStdString();
}

QString textOf(std::error_code error)
{
    return QString::fromLocal8Bit(error.message().c_str());
}

/// Some file systems of the network have no locks at all. A file there goes without.
bool knowsNoLocks(std::error_code error)
{
    return error == std::errc::operation_not_supported || error == std::errc::function_not_supported ||
           error == std::errc::no_lock_available || error == std::errc::invalid_argument;
}

/// A link to the file stays one.
QString placeOf(const QString& path)
{
    const QFileInfo info(path);
    const QString target = info.isSymLink() ? info.canonicalFilePath() : QString();
    return target.isEmpty() ? path : target;
}

/// False when there is none for sure.
bool makeFolder(const QString& folder)
{
    const auto isFolder = [&folder] {
        std::error_code unknown;
        const fs::file_type type = fs::status(native(folder), unknown).type();
        return type == fs::file_type::directory || type == fs::file_type::none;
    };
    if (isFolder())
        return true;
    QDir().mkpath(QFileInfo(folder).path());
    QDir().mkdir(folder, UserFolder);
    return isFolder();
}

} // namespace

SharedFile::SharedFile(QString path)
    : m_path(std::move(path))
{
}

std::optional<QByteArray> SharedFile::read() const
{
    QFile file(m_path);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    QByteArray bytes = file.readAll();
    return file.error() == QFile::NoError ? std::optional(std::move(bytes)) : std::nullopt;
}

/// Asked before every request, so it takes one look at the disk each for time and size, and no time zone.
SharedFile::Stamp SharedFile::stamp() const
{
    const fs::path path = native(m_path);
    std::error_code isAbsent;
    const auto changed = fs::last_write_time(path, isAbsent);
    if (isAbsent)
        return {-1, 0, true};
    const auto age = std::chrono::abs(fs::file_time_type::clock::now() - changed);
    const qint64 time = std::chrono::duration_cast<std::chrono::milliseconds>(changed.time_since_epoch()).count();
    const auto size = static_cast<qint64>(fs::file_size(path, isAbsent));
    return {size, time, age > std::chrono::milliseconds(doubtedAge(time))};
}

bool SharedFile::isAbsent() const
{
    std::error_code ignored;
    return fs::status(native(m_path), ignored).type() == fs::file_type::not_found;
}

void SharedFile::doubt()
{
    const std::lock_guard lock(m_mutex);
    m_seen = Stamp();
}

bool SharedFile::hasChanged()
{
    const std::lock_guard lock(m_mutex);
    const Stamp before = std::exchange(m_seen, stamp());
    return !before.isSettled || before.size != m_seen.size || before.time != m_seen.time;
}

QString SharedFile::reasonWhenLocked()
{
    return QStringLiteral("another process keeps it locked");
}

QString SharedFile::reasonWhenUnread()
{
    return QStringLiteral("its present content cannot be read");
}

std::optional<QString> SharedFile::rewrite(const Change& change, std::chrono::milliseconds patience)
{
    const std::optional<QString> failure = rewriteLocked(change, patience);
    if (failure)
        log(u"%@ could not be written: %@", m_path, *failure);
    return failure;
}

/// The same pauses as a rewrite takes, which is milliseconds.
std::optional<QString> SharedFile::acquire(os::FileLock& lock, std::chrono::milliseconds patience)
{
    const Clock::time_point end = Clock::now() + patience;
    const fs::path path = native(m_path + QStringLiteral(".lock"));
    std::error_code error = lock.lockFile(path);
    for (auto pause = std::chrono::milliseconds(1); error == std::errc::operation_would_block;
         pause = std::min(2 * pause, std::chrono::milliseconds(8))) {
        m_isWaiting = m_mayWait && Clock::now() < end;
        if (!m_isWaiting)
            return reasonWhenLocked();
        std::this_thread::sleep_for(pause);
        error = lock.lockFile(path);
    }
    m_isWaiting = false;
    if (!error || knowsNoLocks(error))
        return std::nullopt;
    return QStringLiteral("its lock cannot be taken: %1").arg(textOf(error));
}

/// What went wrong, nothing when all went well.
std::optional<QString> SharedFile::rewriteLocked(const Change& change, std::chrono::milliseconds patience)
{
    const QString folder = QFileInfo(m_path).path();
    if (!makeFolder(folder))
        return QStringLiteral("its folder cannot be made");
    os::FileLock lock;
    if (const auto failure = acquire(lock, patience))
        return failure;

    const std::optional<QByteArray> present = read();
    if (!present && !isAbsent())
        return reasonWhenUnread();
    const std::optional<QByteArray> bytes = change(present);
    if (!bytes || bytes == present)
        return std::nullopt;

    const std::error_code error = replaceFile(native(placeOf(m_path)), *bytes);
    const std::lock_guard guard(m_mutex);
    m_seen = error ? Stamp() : stamp();
    return error ? std::optional(textOf(error)) : std::nullopt;
}

void SharedFile::removeLeftovers() const
{
    const QFileInfo place(placeOf(m_path));
    tljira::removeLeftovers(place.path(), [name = place.fileName()](const QString& candidate) {
        return isNameBesideFile(candidate, name);
    });
}

bool SharedFile::setAside() const
{
    for (int number = 1;; ++number) {
        const QString place = m_path + QStringLiteral(".damaged-%1").arg(number);
        const std::optional<Error> error = FileManager::moveItemAtPath(m_path, place);
        if (error && error->code == static_cast<qint64>(FileError::WriteFileExists))
            continue;
        if (error)
            log(u"%@ is damaged and cannot be set aside: %@", m_path, *error);
        else
            log(u"%@ is damaged and was set aside as %@", m_path, place);
        return !error;
    }
}

} // namespace tljira
