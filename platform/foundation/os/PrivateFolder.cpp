#include "platform/foundation/os/PrivateFolder.h"

#include <QFile>

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tljira::os {

QString userIdentifier()
{
    return QString::number(geteuid());
}

bool belongsToUser(const std::filesystem::path& path)
{
    struct stat status = {};
    return lstat(path.c_str(), &status) == 0 && status.st_uid == geteuid();
}

bool ensurePrivateFolder(const QString& path)
{
    const QByteArray name = QFile::encodeName(path);
    if (mkdir(name.constData(), S_IRWXU) != 0 && errno != EEXIST)
        return false;

    // Asked through the descriptor, so that nobody can put another folder in its place between the question and chmod.
    const int folder = open(name.constData(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    if (folder < 0)
        return false;
    struct stat status = {};
    bool isPrivate = fstat(folder, &status) == 0 && status.st_uid == geteuid();
    if (isPrivate && (status.st_mode & (S_IRWXU | S_IRWXG | S_IRWXO)) != S_IRWXU)
        isPrivate = fchmod(folder, S_IRWXU) == 0;
    close(folder);
    return isPrivate;
}

} // namespace tljira::os
