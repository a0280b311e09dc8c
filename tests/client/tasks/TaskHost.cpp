// A program without windows whose application object goes in the middle of an upload, without an event loop that could
// quit:
//
//     task_host PORT

#include "client/tasks/TLJiraTask.h"
#include "tests/kit/Jira.h"
#include "tests/kit/WaitUntil.h"

#include <QCoreApplication>
#include <QStringList>

#include <cstdio>

namespace {

void tell(const TLJiraTask::Result& result)
{
    const char* const names[] = {"done", "cancelled", "failed"};
    std::printf("%s\n", names[static_cast<int>(result.outcome)]);
    std::fflush(stdout);
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("tests"));
    tests::Jira::routeTo(QCoreApplication::arguments().value(1).toInt());
    const auto signIn = TLJiraTask::signIn(tests::Jira::address, QString::fromLatin1(tests::Jira::user),
                                           QString::fromLatin1(tests::Jira::password), tell);
    if (!tests::waitUntil([&] { return signIn->isOver(); }))
        return 1;
    tests::drainMainQueue();
    bool hasBegun = false;
    TLJiraTask::attach({QStringLiteral("plan.tessaloom"), QByteArray(1 << 20, 'w')}, QStringLiteral("ABC-1"), tell,
                       [&](qint64, qint64) { hasBegun = true; });
    return tests::waitUntil([&] { return hasBegun; }) ? 0 : 1;
}
