#include "client/KeyringLogin.h"
#include "constants/JAConstants.h"
#include "records/SavedLogin.h"
#include "tests/client/tasks/TaskTest.h"
#include "tests/kit/WithKeyring.h"

namespace {

using namespace Qt::StringLiterals;
using namespace tests;

const QString application = u"tests"_s;

/// Jobs without windows of a host that chose the desktop's keyring.
class KeyringTaskTest : public WithKeyring, public TaskTest
{
protected:
    void SetUp() override { ASSERT_TRUE(keyring.start()); }

    std::shared_ptr<TLJiraTask> signInAt(const QString& address)
    {
        return TLJiraTask::signIn(address, QLatin1String(GetParam().user), QLatin1String(GetParam().secret),
                                  remember());
    }
    void signInHere()
    {
        signInAt(Jira::address);
        ASSERT_TRUE(waitForEnds());
        ASSERT_EQ(ends[0].outcome, Outcome::Done);
        ends.clear();
        ASSERT_TRUE(waitForNoConnection());
        server.forgetRequests();
    }
    /// What this process knows goes; keyring and settings stay.
    static void beginNextRun() { records::setSecretsInMemory({}); }
    QString reason() const { return ends.at(0).error ? ends[0].error->localizedDescription() : QString(); }
    static std::optional<QString> savedAddress() { return records::savedLogin().stringForKey(kJiraURL); }
};

INSTANTIATE_TEST_SUITE_P(By, KeyringTaskTest, testing::ValuesIn(signInWays()), testing::PrintToStringParamName());

TEST_P(KeyringTaskTest, doTheirWorkWithWhatAnEarlierRunLeftThere)
{
    signInHere();
    const QByteArray secret = DesktopKeyring::secretOf(application);
    beginNextRun();
    attach("warp");
    ASSERT_TRUE(waitForEnds());
    EXPECT_EQ(ends[0].outcome, Outcome::Done);
    beginNextRun();
    list();
    ASSERT_TRUE(waitForEnds(2));
    ASSERT_EQ(listed.size(), 1U);
    beginNextRun();
    TLJiraTask::fetch(u"ABC-1"_s, listed[0]->ID().value_or(QString()), remember());
    ASSERT_TRUE(waitForEnds(3));
    EXPECT_EQ(contentsOf(ends[2].path), QByteArray("warp"));
    beginNextRun();
    TLJiraTask::askWhoIsSignedIn([this](const Result& result, const auto& who) {
        ends.push_back(result);
        user = who;
    });
    ASSERT_TRUE(waitForEnds(4));
    EXPECT_NE(user, nullptr);
    EXPECT_TRUE(records::savedLogin().synchronize());
    EXPECT_THAT(filesWith({secret, GetParam().secret}), testing::IsEmpty());
}

TEST_P(KeyringTaskTest, callTheHostsWriterBeforeTheyAskTheKeyring)
{
    signInHere();
    beginNextRun();
    keyring.hold();
    bool isWritten = false;
    const auto writer = [&isWritten](QIODevice& device) {
        isWritten = true;
        return device.write("weft") == 4;
    };
    TLJiraTask::attach({u"plan.tessaloom"_s, writer}, u"ABC-1"_s, remember());
    EXPECT_TRUE(isWritten);
    drainMainQueue();
    EXPECT_THAT(server.requests(), testing::IsEmpty());
    keyring.release();
    ASSERT_TRUE(waitForEnds());
    EXPECT_EQ(ends[0].outcome, Outcome::Done);
}

TEST_P(KeyringTaskTest, failWhereItIsLocked)
{
    signInHere();
    beginNextRun();
    ASSERT_TRUE(keyring.lock());
    list();
    ASSERT_TRUE(waitForEnds());
    EXPECT_EQ(ends[0].outcome, Outcome::Failed);
    EXPECT_EQ(reason(), u"The desktop’s keyring is locked, or your login is no longer in it."_s);
    EXPECT_THAT(server.requests(), testing::IsEmpty());
}

TEST_P(KeyringTaskTest, signNobodyInWithoutOne)
{
    signInHere();
    keyring.stop();
    signInAt(Jira::otherAddress);
    ASSERT_TRUE(waitForEnds());
    EXPECT_EQ(ends[0].outcome, Outcome::Failed);
    EXPECT_TRUE(reason().startsWith(u"The desktop’s keyring cannot be reached. Is one running?"_s))
        << reason().toStdString();
    EXPECT_EQ(savedAddress(), Jira::address);
    EXPECT_TRUE(client::isLoginInKeyring());
    list();
    ASSERT_TRUE(waitForEnds(2));
    EXPECT_EQ(ends[1].outcome, Outcome::Done);
}

TEST_P(KeyringTaskTest, areCancelledWhileItAsksItsUser)
{
    signInHere();
    beginNextRun();
    keyring.hold();
    const auto task = list();
    drainMainQueue();
    EXPECT_THAT(ends, testing::IsEmpty());
    task->cancel();
    ASSERT_TRUE(waitForEnds());
    EXPECT_EQ(ends[0].outcome, Outcome::Cancelled);
    keyring.release();
    list();
    ASSERT_TRUE(waitForEnds(2));
    EXPECT_EQ(ends[1].outcome, Outcome::Done);
}

TEST_P(KeyringTaskTest, signInThoughTheyAreCancelledWhenTheServerHasAccepted)
{
    signInHere();
    keyring.hold();
    log.clear();
    const auto task = signInAt(Jira::otherAddress);
    const auto isAnswered = [this] { return log.lines().filter(u"200"_s).size() > 0; };
    ASSERT_TRUE(waitUntil(isAnswered));
    drainMainQueue();
    task->cancel();
    ASSERT_TRUE(waitForEnds());
    EXPECT_EQ(ends[0].outcome, Outcome::Cancelled);
    EXPECT_EQ(savedAddress(), Jira::address);
    keyring.release();
    ASSERT_TRUE(waitUntil([] { return savedAddress() == Jira::otherAddress; }));
    list();
    ASSERT_TRUE(waitForEnds(2));
    EXPECT_EQ(ends[1].outcome, Outcome::Done);
    EXPECT_EQ(server.lastRequest().header("Host"), "other.example.test");
    EXPECT_TRUE(DesktopKeyring::textOf(application).contains("other.example.test"));
}

} // namespace
