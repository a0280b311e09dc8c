#include "platform/foundation/SharedFile.h"

#include "platform/foundation/FileManager.h"
#include "platform/foundation/Log.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QLockFile>
#include <QSaveFile>
#include <QThread>

#include <chrono>
#include <filesystem>

namespace tljira {

namespace {

constexpr qint64 LongestWaitForLock = 5000;

/// How long another write may leave the same time behind, in milliseconds. The coarsest file systems in use step by two
/// seconds, and are known by their full seconds; the others step by a few milliseconds.
qint64 doubtedAge(qint64 time)
{
    return time % 1000 == 0 ? 2000 : 50;
}

constexpr QFile::Permissions UserFile = QFile::ReadOwner | QFile::WriteOwner;
constexpr QFile::Permissions UserFolder = UserFile | QFile::ExeOwner;

/// What went wrong, an empty text when nothing did. QLockFile's own waiting doubles its pauses up to seconds; a rewrite
/// takes milliseconds.
QString acquire(QLockFile& lock)
{
    QElapsedTimer waiting;
    waiting.start();
    while (!lock.tryLock(0)) {
        if (lock.error() == QLockFile::PermissionError)
            return QStringLiteral("its folder cannot be written");
        if (lock.error() != QLockFile::LockFailedError)
            return QStringLiteral("there is no room in its folder");
        if (waiting.elapsed() > LongestWaitForLock)
            return QStringLiteral("it cannot be locked");
        QThread::msleep(1);
    }
    return {};
}

void makeFolder(const QString& folder)
{
    if (QFileInfo::exists(folder))
        return;
    QDir().mkpath(QFileInfo(folder).path());
    QDir().mkdir(folder, UserFolder);
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
    namespace fs = std::filesystem;
    const fs::path path(QFile::encodeName(m_path).toStdString());
    std::error_code isAbsent;
    const auto changed = fs::last_write_time(path, isAbsent);
    if (isAbsent)
        return {-1, 0, true};
    const auto age = std::chrono::abs(fs::file_time_type::clock::now() - changed);
    const qint64 time = std::chrono::duration_cast<std::chrono::milliseconds>(changed.time_since_epoch()).count();
    const auto size = static_cast<qint64>(fs::file_size(path, isAbsent));
    return {size, time, age > std::chrono::milliseconds(doubtedAge(time))};
}

bool SharedFile::hasChanged()
{
    const std::lock_guard lock(m_mutex);
    const Stamp before = std::exchange(m_seen, stamp());
    return !before.isSettled || before.size != m_seen.size || before.time != m_seen.time;
}

bool SharedFile::rewrite(const Change& change)
{
    const QString failure = rewriteLocked(change);
    if (!failure.isEmpty())
        log(u"%@ could not be written: %@", m_path, failure);
    return failure.isEmpty();
}

/// What went wrong, an empty text when nothing did.
QString SharedFile::rewriteLocked(const Change& change)
{
    const QString folder = QFileInfo(m_path).path();
    makeFolder(folder);
    if (!QFileInfo(folder).isDir())
        return QStringLiteral("its folder cannot be made");
    QLockFile lock(m_path + QStringLiteral(".lock"));
    const QString failure = acquire(lock);
    if (!failure.isEmpty())
        return failure;

    const std::optional<QByteArray> present = read();
    if (!present && QFileInfo::exists(m_path))
        return QStringLiteral("its present content cannot be read");
    const QByteArray bytes = change(present);

    QSaveFile file(m_path);
    const bool isWritten =
        file.open(QIODevice::WriteOnly) && file.setPermissions(UserFile) && file.write(bytes) == bytes.size();
    if (!isWritten || !file.commit())
        return file.errorString();
    const std::lock_guard guard(m_mutex);
    m_seen = stamp();
    return {};
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
