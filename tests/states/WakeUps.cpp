#include "tests/states/WakeUps.h"

#include <QCoreApplication>
#include <QEventLoop>

#include <filesystem>
#include <fstream>
#include <map>
#include <thread>

#include <unistd.h>

namespace tests {

namespace {

/// By the system's own count.
struct Activity
{
    long long nanosecondsRun = 0;
    long long timesAsleep = 0; ///< and so, but for the last time, woken up
};

using Activities = std::map<std::string, Activity>;

/// What stands behind the name in a file of lines like "Name:\tvalue".
std::string valueIn(const std::filesystem::path& file, const std::string& name)
{
    std::ifstream lines(file);
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with(name + ":"))
            return line.substr(line.find_first_not_of(" \t", name.size() + 1));
    }
    return {};
}

/// Of all threads but the one that asks.
Activities activities()
{
    Activities all;
    const std::string own = std::to_string(gettid());
    for (const auto& thread : std::filesystem::directory_iterator("/proc/self/task")) {
        if (thread.path().filename() == own)
            continue;
        Activity activity;
        std::ifstream(thread.path() / "schedstat") >> activity.nanosecondsRun;
        const std::string sleeps = valueIn(thread.path() / "status", "voluntary_ctxt_switches");
        // It may have ended since the folder was read.
        if (sleeps.empty())
            continue;
        activity.timesAsleep = std::stoll(sleeps);
        all[valueIn(thread.path() / "status", "Name") + " " + thread.path().filename().string()] = activity;
    }
    return all;
}

std::string whoRan(const Activities& before, const Activities& after)
{
    std::string text;
    for (const auto& [thread, now] : after) {
        const auto earlier = before.find(thread);
        const Activity then = earlier == before.end() ? Activity() : earlier->second;
        const long long microseconds = (now.nanosecondsRun - then.nanosecondsRun) / 1000;
        const long long sleeps = now.timesAsleep - then.timesAsleep;
        if (microseconds > 0 || sleeps > 0)
            text += thread + " ran for " + std::to_string(microseconds) + " µs and fell asleep " +
                    std::to_string(sleeps) + " times\n";
    }
    return text;
}

} // namespace

std::string whoRunsWhileIdle(std::chrono::milliseconds span, int tries)
{
    std::string answer = "nothing was looked at";
    QEventLoop loop;
    std::thread watch([&] {
        for (int i = 0; i < tries && !answer.empty(); ++i) {
            const Activities before = activities();
            std::this_thread::sleep_for(span);
            answer = whoRan(before, activities());
        }
        QMetaObject::invokeMethod(&loop, &QEventLoop::quit, Qt::QueuedConnection);
    });
    loop.exec();
    watch.join();
    return answer;
}

} // namespace tests
