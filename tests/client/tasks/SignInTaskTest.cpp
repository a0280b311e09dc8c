#include "tests/client/tasks/TaskTest.h"

#include "client/JAController.h"
#include "client/TransferListener.h"
#include "constants/JAConstants.h"
#include "records/SavedLogin.h"
#include "tests/client/RecordingDelegate.h"

#include <QCoreApplication>

namespace {

using namespace tests;
using standin::Fault;
using standin::Match;
using standin::Point;
using testing::HasSubstr;
using testing::IsEmpty;

constexpr char sessionPath[] = "/rest/auth/1/session";

std::optional<QJsonValue> savedServer()
{
    return records::savedLogin().objectForKey(kJiraURL);
}

/// Signing in without a window. Nobody is signed in at the start.
class SignInTaskTest : public TaskTest
{
protected:
    void SetUp() override {}

    void signInAndWait()
    {
        TaskTest::SetUp();
        ASSERT_NE(JALoginObject::restoreSession(), std::nullopt);
    }

    void expectFailure()
    {
        ASSERT_TRUE(waitForEnds());
        EXPECT_EQ(ends[0].outcome, Outcome::Failed);
        ASSERT_TRUE(ends[0].error.has_value());
    }
};

TEST_F(SignInTaskTest, opensASessionForAllThatFollows)
{
    const auto task = signIn(QStringLiteral(" http://jira.example.test "));
    EXPECT_THAT(ends, IsEmpty());
    EXPECT_EQ(savedServer(), std::nullopt);

    ASSERT_TRUE(waitForEnds());
    EXPECT_EQ(ends[0].outcome, Outcome::Done);
    EXPECT_EQ(ends[0].error, std::nullopt);
    EXPECT_EQ(savedServer(), QJsonValue(QStringLiteral("http://jira.example.test")));
    EXPECT_EQ(JAController::sharedInstance()->jiraHost(), Jira::address);
    EXPECT_EQ(server.sessionCount(), 1U);
    list();
    ASSERT_TRUE(waitForEnds(2));
    EXPECT_EQ(ends[1].outcome, Outcome::Done);
}

TEST_F(SignInTaskTest, hasLetGoOfThePasswordWhenItTellsItsEnd)
{
    QString password = QStringLiteral("sec") + QStringLiteral("ret");
    std::optional<bool> isItsOwnersAlone;
    const auto task = TLJiraTask::signIn(Jira::address, QLatin1String(Jira::user), password,
                                         [&](const Result&) { isItsOwnersAlone = password.isDetached(); });
    EXPECT_FALSE(password.isDetached());
    ASSERT_TRUE(waitUntil([&] { return isItsOwnersAlone.has_value(); }));
    EXPECT_TRUE(*isItsOwnersAlone);
}

TEST_F(SignInTaskTest, isSeenByAWindowThatIsOpen)
{
    std::vector<std::string> events;
    const auto delegate = std::make_shared<RecordingDelegate>(events);
    JAController::sharedInstance()->setDelegate(delegate);
    signIn(Jira::address);
    ASSERT_TRUE(waitForEnds());

    EXPECT_TRUE(waitUntil([&] { return events == std::vector<std::string>{"valid"}; }));
    EXPECT_NE(JAController::sharedInstance()->jaSession(), nullptr);
    JAController::sharedInstance()->setDelegate(nullptr);
}

TEST_F(SignInTaskTest, isNotUndoneByTheFirstWindow)
{
    signIn(Jira::address);
    ASSERT_TRUE(waitForEnds());

    EXPECT_TRUE(records::savedLogin().boolForKey(kClearCache));
}

TEST_F(SignInTaskTest, failsWithAWrongPassword)
{
    signIn(Jira::address, QStringLiteral("wrong"));

    expectFailure();
    EXPECT_EQ(ends[0].error->code, 401);
    EXPECT_NE(ends[0].serverSentence, QString());
    EXPECT_EQ(savedServer(), std::nullopt);
    EXPECT_EQ(JALoginObject::restoreSession(), std::nullopt);
    EXPECT_FALSE(records::savedLogin().boolForKey(kClearCache));
}

TEST_F(SignInTaskTest, failsWithoutAServer)
{
    signIn(QStringLiteral("jira"));

    expectFailure();
    EXPECT_EQ(ends[0].error->localizedDescription(), QStringLiteral("unsupported URL"));
}

TEST_F(SignInTaskTest, failsWhereAPageComesInPlaceOfASession)
{
    server.misbehave(Match::on(sessionPath), Fault().status(200, "<html>log in</html>", "text/html"));
    signIn(Jira::address);

    expectFailure();
    EXPECT_EQ(ends[0].error->localizedDescription(), QStringLiteral("The server’s answer opens no session."));
    EXPECT_EQ(savedServer(), std::nullopt);
}

TEST_F(SignInTaskTest, failsWhereTheServerOpensHalfASession)
{
    for (const char* half : {R"({"session":{"name":"JSESSIONID"}})", R"({"session":{"value":"ABCDEF"}})"}) {
        ends.clear();
        server.misbehave(Match::on(sessionPath).once(), Fault().status(200, half, "application/json"));
        signIn(Jira::address);

        expectFailure();
        EXPECT_EQ(ends[0].error->localizedDescription(), QStringLiteral("The server’s answer opens no session."));
        EXPECT_EQ(savedServer(), std::nullopt) << half;
    }
}

TEST_F(SignInTaskTest, thatFailsLeavesWhatWasSaved)
{
    signInAndWait();
    const auto session = JALoginObject::restoreSession();
    signIn(Jira::otherAddress, QStringLiteral("wrong"));

    expectFailure();
    EXPECT_EQ(JALoginObject::restoreSession(), session);
    EXPECT_EQ(savedServer(), QJsonValue(Jira::address));
    EXPECT_EQ(JAController::sharedInstance()->jiraHost(), Jira::address);
}

TEST_F(SignInTaskTest, showsNoOtherServerTheSession)
{
    signInAndWait();
    const std::string session = JALoginObject::restoreSession().value_or(QString()).toStdString();
    signIn(Jira::otherAddress);

    ASSERT_TRUE(waitForEnds());
    EXPECT_EQ(ends[0].outcome, Outcome::Done);
    ASSERT_EQ(server.requests(sessionPath).size(), 1U);
    EXPECT_THAT(server.lastRequest().head, HasSubstr("other.example.test"));
    EXPECT_THAT(server.lastRequest().head, testing::Not(HasSubstr(session)));
    EXPECT_NE(JALoginObject::restoreSession().value_or(QString()).toStdString(), session);
}

TEST_F(SignInTaskTest, showsItsOwnServerTheSession)
{
    signInAndWait();
    const std::string session = JALoginObject::restoreSession().value_or(QString()).toStdString();
    signIn(Jira::address);

    ASSERT_TRUE(waitForEnds());
    EXPECT_THAT(server.requests(sessionPath).at(0).header("cookie"), HasSubstr(session));
}

TEST_F(SignInTaskTest, isCancelledWhileTheServerThinks)
{
    server.misbehave(Match::on(sessionPath), Fault().hold(Point::responseHead(0)));
    const auto task = signIn(Jira::address);
    ASSERT_TRUE(waitForHeld());
    task->cancel();

    ASSERT_TRUE(waitForEnds());
    EXPECT_EQ(ends[0].outcome, Outcome::Cancelled);
    server.release();
    ASSERT_TRUE(waitForNoConnection());
    drainMainQueue();
    EXPECT_EQ(JALoginObject::restoreSession(), std::nullopt);
    EXPECT_EQ(savedServer(), std::nullopt);
}

/// Lets its user cancel a job when the answer is there, before anybody has looked at it.
class CancelAtAnswer : public client::TransferListener
{
public:
    void taskEnded(const tljira::URLSessionTask&, const std::optional<tljira::Error>&) override
    {
        if (task)
            task->cancel();
    }

    std::shared_ptr<TLJiraTask> task;
};

TEST_F(SignInTaskTest, isNotHalfUndoneWhereItIsCancelledWhenTheServerHasAccepted)
{
    signInAndWait();
    const auto session = JALoginObject::restoreSession();
    const auto impatient = std::make_shared<CancelAtAnswer>();
    client::TransferListener::add(impatient);
    impatient->task = signIn(Jira::otherAddress);

    ASSERT_TRUE(waitForEnds());
    EXPECT_EQ(ends[0].outcome, Outcome::Cancelled);
    impatient->task = nullptr;
    EXPECT_NE(JALoginObject::restoreSession(), session);
    EXPECT_EQ(savedServer(), QJsonValue(Jira::otherAddress));
    EXPECT_EQ(JAController::sharedInstance()->jiraHost(), Jira::otherAddress);
    list();
    ASSERT_TRUE(waitForEnds(2));
    EXPECT_EQ(ends[1].outcome, Outcome::Done);
    EXPECT_EQ(server.lastRequest().header("Host"), "other.example.test");
}

TEST_F(SignInTaskTest, savesNothingWhereItIsCancelledWhenTheServerHasRefused)
{
    signInAndWait();
    const auto session = JALoginObject::restoreSession();
    const auto impatient = std::make_shared<CancelAtAnswer>();
    client::TransferListener::add(impatient);
    for (const auto& answer :
         {Fault().status(200, "<html>log in</html>", "text/html"), Fault().status(401, "{}", "application/json")}) {
        ends.clear();
        server.misbehave(Match::on(sessionPath).once(), answer);
        impatient->task = signIn(Jira::otherAddress);

        ASSERT_TRUE(waitForEnds());
        impatient->task = nullptr;
        EXPECT_EQ(ends[0].outcome, Outcome::Cancelled);
        EXPECT_EQ(JALoginObject::restoreSession(), session);
        EXPECT_EQ(savedServer(), QJsonValue(Jira::address));
    }
}

// Who is signed in.

class UserTaskTest : public SignInTaskTest
{
protected:
    std::shared_ptr<TLJiraTask> ask()
    {
        return TLJiraTask::askWhoIsSignedIn([this](const Result& result, const auto& who) {
            ends.push_back(result);
            user = who;
        });
    }
};

TEST_F(UserTaskTest, tellsWhoIsSignedIn)
{
    signInAndWait();
    ask();
    EXPECT_THAT(ends, IsEmpty());

    ASSERT_TRUE(waitForEnds());
    EXPECT_EQ(ends[0].outcome, Outcome::Done);
    ASSERT_NE(user, nullptr);
    EXPECT_EQ(user->displayName(), QStringLiteral("Anna Lindqvist"));
}

TEST_F(UserTaskTest, failsWhereTheSessionIsNoLongerGood)
{
    signInAndWait();
    server.expireSessions();
    ask();

    expectFailure();
    EXPECT_EQ(ends[0].error->code, 401);
    EXPECT_EQ(user, nullptr);
}

TEST_F(UserTaskTest, failsWhereNobodyHasEverSignedIn)
{
    ask();

    expectFailure();
    EXPECT_EQ(server.requests().size(), 0U);
}

TEST_F(UserTaskTest, failsWhereAPageComesInPlaceOfAUser)
{
    signInAndWait();
    server.misbehave(Match(), Fault().status(200, "<html>log in</html>", "text/html"));
    ask();

    expectFailure();
    EXPECT_EQ(ends[0].error->localizedDescription(), QStringLiteral("The server’s answer names no user."));
}

TEST_F(UserTaskTest, takesAnyOfTheNamesForAUser)
{
    signInAndWait();
    for (const char* name : {"name", "key", "displayName"}) {
        user = nullptr;
        server.misbehave(Match::next(),
                         Fault().status(200, std::string("{\"") + name + "\": \"anna\"}", "application/json"));
        ask();
        ASSERT_TRUE(waitForEnds(ends.size() + 1));
        EXPECT_EQ(ends.back().outcome, Outcome::Done) << name;
        EXPECT_NE(user, nullptr) << name;
    }
}

TEST_F(UserTaskTest, isCancelledWhileTheServerThinks)
{
    signInAndWait();
    server.misbehave(Match(), Fault().hold(Point::responseHead(0)));
    const auto task = ask();
    ASSERT_TRUE(waitForHeld());
    task->cancel();

    ASSERT_TRUE(waitForEnds());
    EXPECT_EQ(ends[0].outcome, Outcome::Cancelled);
    EXPECT_EQ(user, nullptr);
    EXPECT_TRUE(waitForNoConnection());
}

TEST_F(UserTaskTest, namesNobodyWhereItIsCancelledWhenTheAnswerIsThere)
{
    signInAndWait();
    const auto impatient = std::make_shared<CancelAtAnswer>();
    client::TransferListener::add(impatient);
    impatient->task = ask();

    ASSERT_TRUE(waitForEnds());
    impatient->task = nullptr;
    EXPECT_EQ(ends[0].outcome, Outcome::Cancelled);
    EXPECT_EQ(user, nullptr);
}

// The documents of an issue.

class ListTaskTest : public TaskTest
{
};

TEST_F(ListTaskTest, bringsTheDocumentsNewestFirst)
{
    server.addAttachment("ABC-1",
                         {.fileName = "old.tessaloom", .bytes = "1", .created = "2017-03-14T10:22:33.000+0000"});
    server.addAttachment("ABC-1", {.fileName = "notes.txt", .bytes = "12"});
    server.addAttachment("ABC-1",
                         {.fileName = "new.tessaloom", .bytes = "123", .created = "2018-03-14T10:22:33.000+0000"});
    list();
    EXPECT_THAT(ends, IsEmpty());

    ASSERT_TRUE(waitForEnds());
    EXPECT_EQ(ends[0].outcome, Outcome::Done);
    EXPECT_EQ(ends[0].issueKey, QStringLiteral("ABC-1"));
    ASSERT_EQ(listed.size(), 2U);
    EXPECT_EQ(listed[0]->name(), QStringLiteral("new.tessaloom"));
    EXPECT_EQ(listed[0]->size(), 3);
    EXPECT_EQ(listed[1]->name(), QStringLiteral("old.tessaloom"));
}

TEST_F(ListTaskTest, isEmptyForAnIssueWithoutDocuments)
{
    list();

    ASSERT_TRUE(waitForEnds());
    EXPECT_EQ(ends[0].outcome, Outcome::Done);
    EXPECT_THAT(listed, IsEmpty());
}

TEST_F(ListTaskTest, failsWithTheServersSentence)
{
    list(QStringLiteral("NO-1"));

    ASSERT_TRUE(waitForEnds());
    EXPECT_EQ(ends[0].outcome, Outcome::Failed);
    EXPECT_EQ(ends[0].error->code, 404);
    EXPECT_EQ(ends[0].serverSentence, QStringLiteral("Issue Does Not Exist"));
}

TEST_F(ListTaskTest, takesAPageForNoList)
{
    server.misbehave(Match::on("*/issue/*"), Fault().status(200, "<html>log in</html>", "text/html"));
    list();

    ASSERT_TRUE(waitForEnds());
    EXPECT_EQ(ends[0].outcome, Outcome::Failed);
}

TEST_F(ListTaskTest, isCancelledWhileTheServerThinks)
{
    store("plan.tessaloom", "wool");
    server.misbehave(Match::on("*/issue/*"), Fault().hold(Point::responseHead(0)));
    const auto task = list();
    ASSERT_TRUE(waitForHeld());
    task->cancel();

    ASSERT_TRUE(waitForEnds());
    EXPECT_EQ(ends[0].outcome, Outcome::Cancelled);
    EXPECT_THAT(listed, IsEmpty());
    EXPECT_TRUE(waitForNoConnection());
}

TEST_F(ListTaskTest, namesNoDocumentsWhereItIsCancelledWhenTheAnswerIsThere)
{
    store("plan.tessaloom", "wool");
    const auto impatient = std::make_shared<CancelAtAnswer>();
    client::TransferListener::add(impatient);
    impatient->task = list();

    ASSERT_TRUE(waitForEnds());
    impatient->task = nullptr;
    EXPECT_EQ(ends[0].outcome, Outcome::Cancelled);
    EXPECT_THAT(listed, IsEmpty());
}

TEST_F(ListTaskTest, hasLetGoOfTheServerWhenItTellsItsEnd)
{
    server.misbehave(Match::on("*/issue/*"), Fault().hold(Point::responseHead(0)));
    std::optional<bool> hasLetGo;
    // A host may ask its user something here, which runs the event loop.
    const auto task = TLJiraTask::list(QStringLiteral("ABC-1"),
                                       [&](const Result&, const auto&) { hasLetGo = waitForNoConnection(); });
    ASSERT_TRUE(waitForHeld());
    task->cancel();

    ASSERT_TRUE(waitUntil([&] { return hasLetGo.has_value(); }));
    EXPECT_TRUE(*hasLetGo);
}

} // namespace
