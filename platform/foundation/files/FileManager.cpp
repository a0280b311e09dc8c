#include "platform/foundation/files/FileManager.h"

#include "platform/foundation/files/CopyItem.h"
#include "platform/foundation/files/PathString.h"
#include "platform/foundation/os/ExclusiveRename.h"

#include <QFile>
#include <QUuid>

#include <filesystem>
#include <functional>

namespace tljira::FileManager {

namespace {

namespace fs = std::filesystem;

/// A text with a NUL inside names nothing; cut there, it might name something else.
fs::path native(const QString& path)
{
    return path.contains(QChar::Null) ? fs::path() : fs::path(QFile::encodeName(path).toStdString());
}

FileError codeOf(std::error_code reason)
{
    static const std::pair<std::errc, FileError> codes[] = {
        {std::errc::no_such_file_or_directory, FileError::NoSuchFile},
        {std::errc::not_a_directory, FileError::NoSuchFile},
        {std::errc::permission_denied, FileError::WriteNoPermission},
        {std::errc::operation_not_permitted, FileError::WriteNoPermission},
        {std::errc::file_exists, FileError::WriteFileExists},
        {std::errc::no_space_on_device, FileError::WriteOutOfSpace},
        {std::errc::read_only_file_system, FileError::WriteVolumeReadOnly},
    };
    for (const auto& [condition, code] : codes) {
        if (reason == condition)
            return code;
    }
#ifdef EDQUOT
    if (reason.value() == EDQUOT)
        return FileError::WriteOutOfSpace;
#endif
    return FileError::WriteUnknown;
}

/// `failure` is the beginning that all reasons share: “x” couldn’t be removed.
QString because(const QString& failure, FileError code, const QString& name)
{
    switch (code) {
    case FileError::WriteNoPermission:
        return failure + QStringLiteral(" because you don’t have permission to access %1.").arg(name);
    case FileError::WriteOutOfSpace:
        return failure + QStringLiteral(" because there isn’t enough space.");
    case FileError::WriteVolumeReadOnly:
        return failure + QStringLiteral(" because the volume is read only.");
    default:
        return failure + u'.';
    }
}

QString quoted(const QString& path)
{
    return u'“' + lastPathComponent(path) + u'”';
}

Error removeError(const QString& path, std::error_code reason)
{
    const FileError code = codeOf(reason);
    return makeFileError(
        code, because(QStringLiteral("%1 couldn’t be removed").arg(quoted(path)), code, QStringLiteral("it")));
}

Error moveError(const QString& source, const QString& destination, std::error_code reason)
{
    const FileError code = codeOf(reason);
    const QString folder = quoted(deletingLastPathComponent(destination));
    const QString failure = QStringLiteral("%1 couldn’t be moved to %2").arg(quoted(source), folder);
    if (code == FileError::NoSuchFile)
        return makeFileError(code, failure + QStringLiteral(" because either the former doesn’t exist, or the folder "
                                                            "containing the latter doesn’t exist."));
    if (code == FileError::WriteFileExists)
        return makeFileError(code, failure + QStringLiteral(" because an item with the same name already exists."));
    return makeFileError(code, because(failure, code, folder));
}

Error createError(const QString& path, std::error_code reason)
{
    const FileError code = codeOf(reason);
    const QString folder = quoted(deletingLastPathComponent(path));
    const QString failure = QStringLiteral("The folder %1 couldn’t be created in %2").arg(quoted(path), folder);
    if (code == FileError::NoSuchFile)
        return makeFileError(code, failure + QStringLiteral(" because the latter doesn’t exist."));
    if (code == FileError::WriteFileExists)
        return makeFileError(code, failure + QStringLiteral(" because an item with the same name already exists."));
    return makeFileError(code, because(failure, code, folder));
}

/// Copies beside the destination first, so that the name only ever stands for the complete item.
std::error_code moveAcrossFileSystems(const fs::path& source, const fs::path& destination)
{
    const std::string name = ".moving-" + QUuid::createUuid().toString(QUuid::WithoutBraces).toStdString();
    const fs::path partial = destination.parent_path() / name;
    std::error_code failure = copyItem(source, partial);
    if (!failure)
        failure = os::renameExclusively(partial, destination);
    std::error_code ignored;
    if (failure)
        fs::remove_all(partial, ignored);
    else
        fs::remove_all(source, failure);
    return failure;
}

} // namespace

std::optional<Error> removeItemAtPath(const QString& path)
{
    std::error_code failure;
    const auto removed = fs::remove_all(native(path), failure);
    if (!failure && removed == 0)
        failure = std::make_error_code(std::errc::no_such_file_or_directory);
    return failure ? std::optional(removeError(path, failure)) : std::nullopt;
}

std::optional<Error> moveItemAtPath(const QString& source, const QString& destination)
{
    std::error_code failure = os::renameExclusively(native(source), native(destination));
    if (failure == std::errc::cross_device_link)
        failure = moveAcrossFileSystems(native(source), native(destination));
    return failure ? std::optional(moveError(source, destination, failure)) : std::nullopt;
}

std::optional<Error> createDirectoryAtPath(const QString& path, bool withIntermediateDirectories)
{
    std::error_code failure;
    const fs::path folder = native(path);
    if (withIntermediateDirectories)
        fs::create_directories(folder, failure);
    else if (!fs::create_directory(folder, failure) && !failure)
        failure = std::make_error_code(std::errc::file_exists);

    std::error_code ignored;
    if (failure && fs::exists(folder, ignored))
        failure = std::make_error_code(std::errc::file_exists);
    return failure ? std::optional(createError(path, failure)) : std::nullopt;
}

bool fileExistsAtPath(const QString& path)
{
    std::error_code ignored;
    return fs::exists(native(path), ignored);
}

QStringList filesBelowPath(const QString& folder)
{
    QStringList files;
    const fs::path root = native(folder);
    std::error_code failure;
    fs::recursive_directory_iterator entry(root, fs::directory_options::skip_permission_denied, failure);
    for (; !failure && entry != fs::recursive_directory_iterator(); entry.increment(failure)) {
        std::error_code ignored;
        if (entry->exists(ignored) && !entry->is_directory(ignored))
            files << QFile::decodeName(QByteArray::fromStdString(entry->path().lexically_relative(root).string()));
    }
    return files;
}

} // namespace tljira::FileManager
