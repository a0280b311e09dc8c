#include "platform/foundation/GlobalQueue.h"
#include "platform/foundation/ProcessExit.h"
#include "platform/foundation/loading/URLSession.h"
#include "platform/foundation/settings/UserDefaults.h"

#include <QCoreApplication>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <semaphore>
#include <sys/wait.h>
#include <unistd.h>

// What happens when a process ends, told on the standard output.

namespace {

using tljira::GlobalQueue;
using tljira::whenProcessExits;

struct Told
{
    explicit Told(const char* name)
        : m_name(name)
    {
    }
    ~Told() { std::puts(m_name); }

private:
    const char* m_name;
};

void makeVariablesAndAsk()
{
    static const Told earlier("earlier variable");
    whenProcessExits([] { std::puts("given first"); });
    whenProcessExits([] { std::puts("given last"); });
    static const Told later("later variable");
}

std::ptrdiff_t threadCount()
{
    const std::filesystem::directory_iterator threads("/proc/self/task");
    return std::distance(begin(threads), end(threads));
}

void beginRequest()
{
    static auto& session = *new auto(tljira::URLSession::sessionWithConfiguration({}, {}));
    static auto& tasks = *new std::vector<std::shared_ptr<tljira::URLSessionDataTask>>;
    session = tljira::URLSession::sessionWithConfiguration({}, {});
    tasks.push_back(
        session->dataTaskWithRequest(tljira::URLRequest(QStringLiteral("http://127.0.0.1:1/")), [](const auto&...) {}));
    tasks.back()->resume();
}

/// Asks for more in its destructor, when everything has been stopped.
struct AsksTooLate
{
    ~AsksTooLate()
    {
        static auto& never = *new std::counting_semaphore<1>(0);
        const auto threads = threadCount();
        GlobalQueue::instance().addOperation([] { never.acquire(); });
        beginRequest();
        std::puts(threadCount() == threads ? "nothing began" : "something began");
    }
};

/// An application object that is a variable ends after what was asked of the exit since it was made.
int endApplicationLast(int argc, char** argv)
{
    static const AsksTooLate late;
    static const QCoreApplication application(argc, argv);
    GlobalQueue::instance().addOperation([] {});
    beginRequest();
    return 0;
}

int forkAndExit(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    whenProcessExits([] { std::puts("parent"); });
    beginRequest();
    tljira::UserDefaults::standardUserDefaults().setObject(1, QStringLiteral("key"));
    GlobalQueue::instance().addOperation([] {});
    std::fflush(stdout);
    const pid_t child = fork();
    if (child == 0) {
        alarm(30);
        std::exit(7);
    }
    int status = 0;
    waitpid(child, &status, 0);
    std::printf("child %d\n", WIFEXITED(status) ? WEXITSTATUS(status) : -1);
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    const char* const scene = argc > 1 ? argv[1] : "";
    if (std::strcmp(scene, "late application") == 0)
        return endApplicationLast(argc, argv);
    if (std::strcmp(scene, "fork") == 0)
        return forkAndExit(argc, argv);
    if (std::strcmp(scene, "without application") == 0) {
        makeVariablesAndAsk();
        return 0;
    }
    const QCoreApplication application(argc, argv);
    makeVariablesAndAsk();
    if (std::strcmp(scene, "exit") == 0)
        std::exit(0);
    return 0;
}
