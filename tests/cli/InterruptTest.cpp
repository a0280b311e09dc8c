#include "tests/cli/CommandTest.h"

#include <csignal>

namespace {

using namespace Qt::StringLiterals;
using standin::Fault;
using standin::Match;
using standin::Point;
using tests::ToolRun;
using tests::words;

class Interrupt : public tests::CommandTest
{
protected:
    Interrupt()
    {
        logIn();
        attachSynthetic("plan", 64 << 20);
    }

    bool waitUntilHeld() const
    {
        return tests::waitUntil([this] { return server.heldCount() == 1; });
    }
    void expectNothingLeft() const
    {
        EXPECT_EQ(workItems(), QStringList());
        EXPECT_EQ(temporaryFiles(), QStringList());
    }
    static void expectSilence(ToolRun& tool)
    {
        EXPECT_EQ(tool.output(), "");
        EXPECT_EQ(tool.error(), "");
    }
};

TEST_F(Interrupt, cancelsADownloadAndLeavesNoFile)
{
    server.misbehave(Match::on("/secure/attachment/*"), Fault().hold(Point::responseBody(16 << 20)));
    const auto tool = start(words("download ABC-1 plan"));
    ASSERT_TRUE(waitUntilHeld());
    EXPECT_EQ(temporaryFiles().size(), 1);
    EXPECT_EQ(workItems().size(), 1);
    tool->sendSignal(SIGINT);
    EXPECT_EQ(tool->status(), 130);
    expectSilence(*tool);
    expectNothingLeft();
}

TEST_F(Interrupt, cancelsAnUpload)
{
    writeFile(u"file"_s, QByteArray(64 << 20, 'x'));
    server.misbehave(Match::on("POST", "*/attachments"), Fault().hold(Point::requestBody(1 << 20)));
    const auto tool = start(words("upload ABC-1 file"));
    ASSERT_TRUE(waitUntilHeld());
    tool->sendSignal(SIGINT);
    EXPECT_EQ(tool->status(), 130);
    expectSilence(*tool);
    EXPECT_EQ(server.attachments("ABC-1").size(), 1U);
    EXPECT_EQ(workItems(), QStringList{u"file"_s});
    EXPECT_EQ(temporaryFiles(), QStringList());
}

TEST_F(Interrupt, endsALoginAndKeepsTheSessionThatThereIs)
{
    const QString settings = environment.value(u"XDG_CONFIG_HOME"_s) + u"/tljira/userdefaults.json"_s;
    const QByteArray before = readFile(settings);
    ASSERT_TRUE(before.contains("jira.example.test"));
    server.misbehave(Match::on("POST", "*/session"), Fault().hold(Point::responseBody(10)));
    const auto tool = start(words("login http://other.example.test/ anna --password-stdin"));
    tool->sendInput("secret\n");
    ASSERT_TRUE(waitUntilHeld());
    tool->sendSignal(SIGINT);
    EXPECT_EQ(tool->status(), 130);
    expectSilence(*tool);
    EXPECT_EQ(readFile(settings), before);
    EXPECT_EQ(run(words("whoami")).status, 0);
}

TEST_F(Interrupt, endsALookUpAtOnce)
{
    server.misbehave(Match::on("/rest/api/2/issue/*"), Fault().hold(Point::responseHead(0)));
    const auto tool = start(words("attachments ABC-1"));
    ASSERT_TRUE(waitUntilHeld());
    tool->sendSignal(SIGINT);
    EXPECT_EQ(tool->status(), 130);
    expectSilence(*tool);
}

TEST_F(Interrupt, endsALookUpWhoseAnswerComesWithoutEnd)
{
    using namespace std::chrono_literals;
    for (const Fault& fault :
         {Fault().status(200, std::string(60 << 20, '[')).drip(64 << 10, 10ms),
          Fault().status(200, "{}").header("X-Long", std::string(90 << 10, 'x')).hold(Point::responseHead(80 << 10))}) {
        server.misbehave(Match::on("/rest/api/2/issue/*").once(), fault);
        const auto before = server.requestCount();
        const auto tool = start(words("attachments ABC-1"));
        ASSERT_TRUE(tests::waitUntil([&] { return server.requestCount() > before; }));
        tool->sendSignal(SIGINT);
        EXPECT_EQ(tool->status(), 130);
        expectSilence(*tool);
    }
}

TEST_F(Interrupt, endsADownloadInItsLookUp)
{
    server.misbehave(Match::on("/rest/api/2/issue/*"), Fault().hold(Point::responseHead(0)));
    const auto tool = start(words("download ABC-1 plan"));
    ASSERT_TRUE(waitUntilHeld());
    tool->sendSignal(SIGINT);
    EXPECT_EQ(tool->status(), 130);
    expectNothingLeft();
}

TEST_F(Interrupt, ofOtherKindsCleansUpToo)
{
    server.misbehave(Match::on("/secure/attachment/*"), Fault().hold(Point::responseBody(1 << 20)));
    for (const int signal : {SIGTERM, SIGHUP}) {
        const auto tool = start(words("download ABC-1 plan"));
        ASSERT_TRUE(waitUntilHeld());
        tool->sendSignal(signal);
        EXPECT_EQ(tool->status(), 128 + signal);
        expectNothingLeft();
        ASSERT_TRUE(tests::waitUntil([this] { return server.heldCount() == 0; }));
    }
}

TEST_F(Interrupt, byManySignalsLeavesNoFileInTheDestination)
{
    server.misbehave(Match::on("/secure/attachment/*"), Fault().hold(Point::responseBody(1 << 20)));
    const auto tool = start(words("download ABC-1 plan"));
    ASSERT_TRUE(waitUntilHeld());
    for (int count = 0; count < 20; ++count)
        tool->sendSignal(SIGINT);
    EXPECT_EQ(tool->status(), 130);
    EXPECT_EQ(workItems(), QStringList());
}

} // namespace
