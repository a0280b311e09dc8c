// How long it takes from a cancel until its task has ended, in each phase of a request, one line each: the median of as
// many runs as the argument says, in seconds, and the phase.

#include "platform/foundation/loading/URLSession.h"
#include "standin/Server.h"

#include <QCoreApplication>
#include <QTemporaryFile>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <dlfcn.h>
#include <functional>
#include <netdb.h>
#include <netinet/in.h>
#include <stdexcept>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <unistd.h>

namespace {

using standin::Fault;
using standin::Match;
using standin::Point;

constexpr char silentHost[] = "unanswered.example.test";
constexpr qint64 fileSize = 64 << 20;

/// Look-ups and reads that never end, and how many have begun.
std::atomic<int> stuckCalls = 0;
std::atomic<ino_t> silentFile = 0;

[[noreturn]] void getStuck()
{
    ++stuckCalls;
    while (true)
        pause();
}

} // namespace

// Exported, so that the libraries of this program call these in place of the system's.

extern "C" [[gnu::visibility("default")]] int getaddrinfo(const char* host, const char* service, const addrinfo* hints,
                                                          addrinfo** result)
{
    if (host && std::string(host) == silentHost)
        getStuck();
    static const auto real = reinterpret_cast<decltype(&getaddrinfo)>(dlsym(RTLD_NEXT, "getaddrinfo"));
    return real(host, service, hints, result);
}

namespace {

bool isSilent(int file, off_t position)
{
    struct stat status = {};
    return silentFile != 0 && fstat(file, &status) == 0 && status.st_ino == silentFile && position >= fileSize / 2;
}

} // namespace

extern "C" [[gnu::visibility("default")]] ssize_t read(int file, void* buffer, size_t size)
{
    if (isSilent(file, lseek(file, 0, SEEK_CUR)))
        getStuck();
    return syscall(SYS_read, file, buffer, size);
}

/// Asked for what lies in memory alone.
extern "C" [[gnu::visibility("default")]] ssize_t preadv2(int file, const iovec* pieces, int count, off_t position,
                                                          int flags)
{
    if (isSilent(file, position)) {
        errno = EAGAIN;
        return -1;
    }
    return syscall(SYS_preadv2, file, pieces, count, position, 0L, flags);
}

namespace {

/// A port whose queue is full: who connects to it waits.
class FullPort
{
public:
    FullPort()
    {
        m_address.sin_family = AF_INET;
        m_address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t length = sizeof m_address;
        const int listener = socket(AF_INET, SOCK_STREAM, 0);
        if (bind(listener, reinterpret_cast<sockaddr*>(&m_address), length) != 0 || listen(listener, 0) != 0 ||
            getsockname(listener, reinterpret_cast<sockaddr*>(&m_address), &length) != 0)
            throw std::runtime_error("cannot listen");
        for (int i = 0; i < 4; ++i)
            connect(socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK, 0), reinterpret_cast<sockaddr*>(&m_address), length);
    }

    QString url() const { return QStringLiteral("http://127.0.0.1:%1/").arg(ntohs(m_address.sin_port)); }

private:
    sockaddr_in m_address = {};
};

class CancelTimes : public tljira::URLSessionDelegate
{
public:
    explicit CancelTimes(int runs)
        : m_runs(runs)
    {
    }

    void measureAll()
    {
        measure(
            "look-up", [] { return requestTo(QStringLiteral("http://%1/").arg(QLatin1String(silentHost))); },
            [] { return stuckCalls > 0; });
        const FullPort port;
        measure(
            "connection", [&] { return requestTo(port.url()); }, pause);
        for (const auto& [phase, point] : {std::pair("body of the request", Point::requestBody(fileSize / 2)),
                                           {"wait for the answer", Point::responseHead(0)},
                                           {"head of the answer", Point::responseHead(20)},
                                           {"body of the answer", Point::responseBody(fileSize / 2)}}) {
            m_server.misbehave(Match(), Fault().status(200, std::string(fileSize, 'x')).hold(point));
            measure(
                phase, [this] { return upload(); }, [this] { return m_server.heldCount() == 1; });
            m_server.behave();
        }
        makeFileSilent();
        measure(
            "read of a silent disk", [this] { return upload(); }, [] { return stuckCalls > 0; });
    }

    void didCompleteWithError(const std::shared_ptr<tljira::URLSessionTask>&,
                              const std::optional<tljira::Error>& error) override
    {
        if (!error || error->code != static_cast<qint64>(tljira::URLError::Cancelled))
            throw std::runtime_error("a request ended by itself");
        m_hasEnded = true;
    }

private:
    using Clock = std::chrono::steady_clock;

    static tljira::URLRequest requestTo(const QString& url) { return tljira::URLRequest(url); }

    tljira::URLRequest upload()
    {
        if (!m_file.isOpen() && !(m_file.open() && m_file.resize(fileSize)))
            throw std::runtime_error("cannot make a file");
        tljira::URLRequest request = requestTo(QString::fromStdString(m_server.url()) + QStringLiteral("x"));
        request.HTTPMethod = QStringLiteral("POST");
        request.HTTPBody = tljira::Data::contentsOfFile(m_file.fileName());
        return request;
    }

    void makeFileSilent()
    {
        struct stat status = {};
        if (stat(m_file.fileName().toLocal8Bit().constData(), &status) == 0)
            silentFile = status.st_ino;
    }

    /// Where nothing tells that a phase has begun.
    static bool pause()
    {
        const auto end = Clock::now() + std::chrono::milliseconds(50);
        while (Clock::now() < end)
            QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
        return true;
    }

    void measure(const char* phase, const std::function<tljira::URLRequest()>& request,
                 const std::function<bool()>& hasBegun)
    {
        std::vector<double> times;
        for (int run = 0; run < m_runs; ++run) {
            stuckCalls = 0;
            m_hasEnded = false;
            const auto task = m_session->dataTaskWithRequest(request(), nullptr);
            task->resume();
            while (!hasBegun())
                QCoreApplication::processEvents();
            const auto start = Clock::now();
            task->cancel();
            while (!m_hasEnded)
                QCoreApplication::processEvents();
            times.push_back(std::chrono::duration<double>(Clock::now() - start).count());
            m_server.release();
            while (m_server.heldCount() > 0)
                QCoreApplication::processEvents();
        }
        std::ranges::sort(times);
        std::printf("%.6f %s\n", times.at(times.size() / 2), phase);
        std::fflush(stdout);
    }

    const int m_runs;
    standin::Server m_server{standin::Options::forMeasuring()};
    QTemporaryFile m_file;
    const std::shared_ptr<int> m_anchor = std::make_shared<int>(0);
    const std::shared_ptr<tljira::URLSession> m_session =
        tljira::URLSession::sessionWithConfiguration(tljira::URLSessionConfiguration::defaultSessionConfiguration(),
                                                     std::shared_ptr<tljira::URLSessionDelegate>(m_anchor, this));
    bool m_hasEnded = false;
};

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("cancel-times"));
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 2)
        return 2;
    CancelTimes(arguments[1].toInt()).measureAll();
    return 0;
}
