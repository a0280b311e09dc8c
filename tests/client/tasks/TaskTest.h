#pragma once

#include "client/tasks/TLJiraTask.h"
#include "tests/kit/Files.h"
#include "tests/kit/Jira.h"
#include "tests/kit/LogCapture.h"
#include "tests/kit/Printers.h"
#include "tests/kit/WaitUntil.h"

#include <gmock/gmock.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace tests {

/// A program without windows, whose user is signed in.
class TaskTest : public testing::Test
{
protected:
    using Outcome = TLJiraTask::Outcome;
    using Result = TLJiraTask::Result;

    ~TaskTest() override;
    void SetUp() override;

    /// Remembers how a job ended.
    TLJiraTask::Ended remember();
    /// Remembers how far it came.
    TLJiraTask::Progress follow();
    /// False when there are more.
    bool waitForEnds(std::size_t count = 1);

    std::shared_ptr<TLJiraTask> signIn(const QString& server, const QString& password = QStringLiteral("secret"));
    std::shared_ptr<TLJiraTask> attach(const QByteArray& bytes, const QString& key = QStringLiteral("ABC-1"));
    std::shared_ptr<TLJiraTask> fetch(std::int64_t id, const QString& key = QStringLiteral("ABC-1"));
    std::shared_ptr<TLJiraTask> list(const QString& key = QStringLiteral("ABC-1"));

    std::int64_t store(const std::string& name, const std::string& contents, const std::string& key = "ABC-1");
    /// What has arrived at the issue, in its order.
    std::vector<std::string> attached(const std::string& key = "ABC-1") const;
    /// What the private temporary folder holds.
    static QStringList temporaryItems();
    bool waitForHeld(std::size_t count = 1) const;
    /// The client has let go of the server.
    bool waitForNoConnection() const;

    LogCapture log;
    Jira server;
    std::vector<Result> ends;
    std::vector<std::pair<qint64, qint64>> steps;
    JAIssueObject::Attachments listed;
    std::shared_ptr<const JAUser> user;
};

} // namespace tests
