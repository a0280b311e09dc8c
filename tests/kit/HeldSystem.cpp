#include "tests/kit/HeldSystem.h"

#include <QFile>
#include <QFileInfo>

#include <atomic>
#include <cerrno>
#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <cstring>
#include <dlfcn.h>
#include <mutex>
#include <netdb.h>
#include <optional>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <unistd.h>

namespace {

/// Calls that wait until they are let go.
class Gate
{
public:
    explicit Gate(const char* what)
        : m_what(what)
    {
    }

    void close()
    {
        const std::lock_guard lock(m_mutex);
        m_isClosed = true;
    }

    void open()
    {
        const std::lock_guard lock(m_mutex);
        m_isClosed = false;
        m_opened.notify_all();
    }

    void pass()
    {
        std::unique_lock lock(m_mutex);
        ++m_waiting;
        const bool isOpen = m_opened.wait_for(lock, std::chrono::seconds(30), [this] { return !m_isClosed; });
        --m_waiting;
        if (isOpen)
            return;
        m_isClosed = false;
        m_opened.notify_all();
        std::fprintf(stderr, "%s was waited for\n", m_what);
    }

    int waiting()
    {
        const std::lock_guard lock(m_mutex);
        return m_waiting;
    }

private:
    const char* m_what;
    std::mutex m_mutex;
    std::condition_variable m_opened;
    bool m_isClosed = false;
    int m_waiting = 0;
};

struct MarkedFile
{
    dev_t device;
    ino_t inode;
    off_t from;
};

// Never destroyed: threads that nobody waits for may still come by when the process ends.
Gate& lookUps = *new Gate("a look-up");
Gate& reads = *new Gate("a read");
Gate& writes = *new Gate("a write");
std::atomic<bool> isWatchingDownloads = false;
std::atomic<qint64> takenOfDownloads = 0;
std::mutex& marksMutex = *new std::mutex;
std::string& markedHost = *new std::string;
std::optional<MarkedFile> markedFile;
std::optional<MarkedFile> coldFile;

bool isHeld(const char* host)
{
    const std::lock_guard lock(marksMutex);
    return host && !markedHost.empty() && markedHost == host;
}

/// The caller holds the mutex.
bool isMarked(const std::optional<MarkedFile>& mark, int file, off_t position)
{
    struct stat status = {};
    return mark && fstat(file, &status) == 0 && status.st_dev == mark->device && status.st_ino == mark->inode &&
           position >= mark->from;
}

bool isHeld(int file)
{
    const std::lock_guard lock(marksMutex);
    return isMarked(markedFile, file, lseek(file, 0, SEEK_CUR));
}

bool isOutOfMemory(int file, off_t position)
{
    const std::lock_guard lock(marksMutex);
    return isMarked(markedFile, file, position) || isMarked(coldFile, file, position);
}

std::optional<MarkedFile> markOf(const QString& path, qint64 from)
{
    struct stat status = {};
    if (stat(QFile::encodeName(path).constData(), &status) != 0)
        return std::nullopt;
    return MarkedFile{status.st_dev, status.st_ino, from};
}

bool isDownload(int file)
{
    const QFileInfo link(QStringLiteral("/proc/self/fd/%1").arg(file));
    return QFileInfo(link.symLinkTarget()).fileName().startsWith(QLatin1String("Download_"));
}

} // namespace

// Exported, so that the libraries of this program call these in place of the system's.

extern "C" [[gnu::visibility("default")]] int getaddrinfo(const char* host, const char* service, const addrinfo* hints,
                                                          addrinfo** result)
{
    if (isHeld(host)) {
        lookUps.pass();
        return EAI_NONAME;
    }
    static const auto real = reinterpret_cast<decltype(&getaddrinfo)>(dlsym(RTLD_NEXT, "getaddrinfo"));
    return real(host, service, hints, result);
}

extern "C" [[gnu::visibility("default")]] ssize_t read(int file, void* buffer, size_t size)
{
    if (isHeld(file))
        reads.pass();
    return syscall(SYS_read, file, buffer, size);
}

/// Asked for what lies in memory alone: every file does, on whatever file system, that is neither held nor cold.
extern "C" [[gnu::visibility("default")]] ssize_t preadv2(int file, const iovec* pieces, int count, off_t position,
                                                          int flags)
{
    if ((flags & RWF_NOWAIT) == 0)
        return syscall(SYS_preadv2, file, pieces, count, position, 0L, flags);
    if (!isOutOfMemory(file, position))
        return preadv(file, pieces, count, position);
    errno = EAGAIN;
    return -1;
}

extern "C" [[gnu::visibility("default")]] ssize_t write(int file, const void* bytes, size_t size)
{
    const bool isHeld = isWatchingDownloads && isDownload(file);
    if (isHeld)
        writes.pass();
    const ssize_t taken = syscall(SYS_write, file, bytes, size);
    if (isHeld && taken > 0)
        takenOfDownloads += taken;
    return taken;
}

namespace tests {

HeldLookUp::HeldLookUp(const std::string& host)
{
    const std::lock_guard lock(marksMutex);
    markedHost = host;
    lookUps.close();
}

HeldLookUp::~HeldLookUp()
{
    const std::lock_guard lock(marksMutex);
    markedHost.clear();
    lookUps.open();
}

int HeldLookUp::waiting()
{
    return lookUps.waiting();
}

HeldFile::HeldFile(const QString& path, qint64 from)
{
    const std::lock_guard lock(marksMutex);
    markedFile = markOf(path, from);
    if (markedFile)
        reads.close();
}

HeldFile::~HeldFile()
{
    release();
}

int HeldFile::waiting()
{
    return reads.waiting();
}

void HeldFile::release()
{
    const std::lock_guard lock(marksMutex);
    markedFile.reset();
    reads.open();
}

ColdFile::ColdFile(const QString& path, qint64 from)
{
    const std::lock_guard lock(marksMutex);
    coldFile = markOf(path, from);
}

ColdFile::~ColdFile()
{
    const std::lock_guard lock(marksMutex);
    coldFile.reset();
}

HeldDownloads::HeldDownloads()
{
    writes.close();
    isWatchingDownloads = true;
}

HeldDownloads::~HeldDownloads()
{
    isWatchingDownloads = false;
    writes.open();
}

int HeldDownloads::waiting()
{
    return writes.waiting();
}

void HeldDownloads::release()
{
    takenOfDownloads = 0;
    writes.open();
}

qint64 HeldDownloads::takenSinceRelease()
{
    return takenOfDownloads;
}

} // namespace tests
