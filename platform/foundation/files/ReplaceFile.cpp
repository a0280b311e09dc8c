#include "platform/foundation/files/ReplaceFile.h"

#include "platform/foundation/os/DiskSync.h"
#include "platform/foundation/os/FileLock.h"

#include <QRandomGenerator>
#include <QString>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <memory>
#include <string_view>

namespace tljira {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view EndingCharacters = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789";
constexpr qsizetype EndingLength = 6;

struct Closing
{
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, Closing>;

std::error_code lastError()
{
    return {errno, std::generic_category()};
}

fs::path nameBeside(const fs::path& path)
{
    std::string ending = ".";
    for (qsizetype count = 0; count < EndingLength; ++count)
        ending += EndingCharacters[QRandomGenerator::global()->bounded(quint32(EndingCharacters.size()))];
    return path.string() + ending;
}

std::error_code writeAll(File file, const fs::path& path, const QByteArray& bytes)
{
    // Every write is to show its own error, not that of a buffer which is emptied later.
    std::setvbuf(file.get(), nullptr, _IONBF, 0);
    std::error_code failure;
    // Before the first byte.
    fs::permissions(path, fs::perms::owner_read | fs::perms::owner_write, failure);
    const auto size = static_cast<std::size_t>(bytes.size());
    if (!failure && std::fwrite(bytes.constData(), 1, size, file.get()) != size)
        failure = lastError();
    if (!failure)
        failure = os::syncToDisk(file.get());
    // Some disks tell only now that they are full.
    if (std::fclose(file.release()) != 0 && !failure)
        failure = lastError();
    return failure;
}

} // namespace

std::error_code replaceFile(const fs::path& path, const QByteArray& bytes)
{
    const os::FolderSync folder(path.parent_path());
    if (folder.error())
        return folder.error();
    const fs::path beside = nameBeside(path);
    File file(std::fopen(beside.string().c_str(), "wbx"));
    if (!file)
        return lastError();
    // Tells those who clear away what dead processes left that this one lives; it does without where there are no
    // locks.
    os::FileLock sign;
    static_cast<void>(sign.lockExisting(beside));

    std::error_code failure = writeAll(std::move(file), beside, bytes);
    if (!failure)
        fs::rename(beside, path, failure);
    if (!failure)
        return folder.wait();
    std::error_code ignored;
    fs::remove(beside, ignored);
    return failure;
}

bool isNameBesideFile(const QString& candidate, const QString& name)
{
    const QString ending = candidate.mid(name.size());
    return candidate.startsWith(name + u'.') && ending.size() == EndingLength + 1 &&
           std::all_of(ending.begin() + 1, ending.end(), [](QChar c) {
               return c.unicode() < 128 &&
                      EndingCharacters.find(static_cast<char>(c.unicode())) != std::string_view::npos;
           });
}

} // namespace tljira
