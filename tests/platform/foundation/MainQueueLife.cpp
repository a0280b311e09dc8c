#include "platform/foundation/MainQueue.h"

#include <QCoreApplication>
#include <QTimer>

#include <atomic>
#include <cstdio>
#include <cstring>
#include <memory>
#include <thread>

// What the main queue does around the life of the application object, told on the standard output.

namespace {

using tljira::MainQueue;

void say(const char* line)
{
    std::puts(line);
}

int runUntilIdle(int& argc, char** argv)
{
    QCoreApplication application(argc, argv);
    MainQueue::instance().addOperation([] { QCoreApplication::quit(); });
    return QCoreApplication::exec();
}

int addBeforeApplication(int argc, char** argv)
{
    MainQueue::instance().addOperation([] { say("first"); });
    std::thread([] { MainQueue::instance().addOperation([] { say("second"); }); }).join();
    say("application");
    return runUntilIdle(argc, argv);
}

int leaveQueued(int argc, char** argv)
{
    const auto token = std::make_shared<int>();
    {
        QCoreApplication application(argc, argv);
        MainQueue::instance().addOperation([token] { say("ran"); });
    }
    say(token.use_count() == 1 ? "released" : "kept");
    return 0;
}

int makeTwoApplications(int argc, char** argv)
{
    runUntilIdle(argc, argv);
    MainQueue::instance().addOperation([] { say("in the second"); });
    return runUntilIdle(argc, argv);
}

/// The process exits while another thread goes on adding.
int exitWhileAdding(int argc, char** argv)
{
    static std::atomic<int> added = 0;
    QCoreApplication application(argc, argv);
    std::thread([] {
        for (;;) {
            MainQueue::instance().addOperation([] {});
            ++added;
            std::this_thread::yield();
        }
    }).detach();
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [] {
        if (added > 1000)
            QCoreApplication::quit();
    });
    timer.start(0);
    QCoreApplication::exec();
    say("exiting");
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    const char* const scene = argc > 1 ? argv[1] : "";
    if (std::strcmp(scene, "before") == 0)
        return addBeforeApplication(argc, argv);
    if (std::strcmp(scene, "queued") == 0)
        return leaveQueued(argc, argv);
    if (std::strcmp(scene, "twice") == 0)
        return makeTwoApplications(argc, argv);
    if (std::strcmp(scene, "exit") == 0)
        return exitWhileAdding(argc, argv);
    return 2;
}
