#include "tests/client/tasks/TaskTest.h"

#include "platform/foundation/files/TemporaryDirectory.h"

#include <QDir>

namespace tests {

TaskTest::~TaskTest()
{
    server.behave();
    drainMainQueue();
}

void TaskTest::SetUp()
{
    signIn(Jira::address);
    ASSERT_TRUE(waitForEnds());
    ASSERT_EQ(ends[0].outcome, Outcome::Done);
    ends.clear();
    // The client that signed in has gone, and its connection with it.
    ASSERT_TRUE(waitForNoConnection());
    server.forgetRequests();
}

TLJiraTask::Ended TaskTest::remember()
{
    return [this](const Result& result) { ends.push_back(result); };
}

TLJiraTask::Progress TaskTest::follow()
{
    return [this](qint64 bytes, qint64 ofBytes) { steps.emplace_back(bytes, ofBytes); };
}

bool TaskTest::waitForEnds(std::size_t count)
{
    const bool came = waitUntil([&] { return ends.size() >= count; });
    drainMainQueue();
    return came && ends.size() == count;
}

std::shared_ptr<TLJiraTask> TaskTest::signIn(const QString& address, const QString& password)
{
    return TLJiraTask::signIn(address, QString::fromLatin1(Jira::user), password, remember());
}

std::shared_ptr<TLJiraTask> TaskTest::attach(const QByteArray& bytes, const QString& key)
{
    return TLJiraTask::attach({QStringLiteral("plan.tessaloom"), bytes}, key, remember(), follow());
}

std::shared_ptr<TLJiraTask> TaskTest::fetch(std::int64_t id, const QString& key)
{
    return TLJiraTask::fetch(key, QString::number(id), remember(), follow());
}

std::shared_ptr<TLJiraTask> TaskTest::list(const QString& key)
{
    return TLJiraTask::list(key, [this](const Result& result, const auto& documents) {
        ends.push_back(result);
        listed = documents;
    });
}

std::int64_t TaskTest::store(const std::string& name, const std::string& contents, const std::string& key)
{
    return server.addAttachment(key, {.fileName = name, .bytes = contents});
}

std::vector<std::string> TaskTest::attached(const std::string& key) const
{
    std::vector<std::string> contents;
    for (const auto& attachment : server.attachments(key))
        contents.push_back(server.content(attachment.id).value_or("(none)"));
    return contents;
}

QStringList TaskTest::temporaryItems()
{
    return QDir(tljira::temporaryDirectory()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden);
}

bool TaskTest::waitForHeld(std::size_t count) const
{
    return waitUntil([&] { return server.heldCount() == count; });
}

bool TaskTest::waitForNoConnection() const
{
    return waitUntil([this] { return server.openConnectionCount() == 0; });
}

} // namespace tests
