#include "tests/cli/CommandTest.h"

namespace {

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using standin::Fault;
using standin::Match;
using standin::Point;
using testing::HasSubstr;
using testing::Not;
using tests::words;

class Terminal : public tests::CommandTest
{
protected:
    void releaseWhenHeld()
    {
        ASSERT_TRUE(tests::waitUntil([this] { return server.heldCount() == 1; }));
        server.release();
    }

    static constexpr char prompt[] = "Password of anna at jira.example.test: ";
};

TEST_F(Terminal, asksForThePasswordWithoutShowingIt)
{
    const auto tool = startOnTerminal(words("login http://jira.example.test/ anna"));
    ASSERT_TRUE(tool->waitFor(prompt));
    EXPECT_FALSE(tool->echoes());
    tool->type("secret\n");
    EXPECT_EQ(tool->status(), 0);
    EXPECT_EQ(tool->shown(), QByteArray(prompt) + "\r\n");
    EXPECT_TRUE(tool->echoes());
    EXPECT_EQ(run(words("session")).status, 0);
}

TEST_F(Terminal, showsTypingAgainAfterAnInterruptAtThePrompt)
{
    const auto tool = startOnTerminal(words("login http://jira.example.test/ anna"));
    ASSERT_TRUE(tool->waitFor(prompt));
    tool->type("sec\x03");
    EXPECT_EQ(tool->status(), 130);
    EXPECT_TRUE(tool->echoes());
    EXPECT_EQ(server.requestCount(), 0U);
}

TEST_F(Terminal, takesTheEndOfInputForNoPassword)
{
    const auto tool = startOnTerminal(words("login http://jira.example.test/ anna"));
    ASSERT_TRUE(tool->waitFor(prompt));
    tool->type("\x04");
    EXPECT_EQ(tool->status(), 1);
    EXPECT_EQ(tool->shown(), QByteArray(prompt) + "\r\nNo password was given.\r\n");
    EXPECT_TRUE(tool->echoes());
}

TEST_F(Terminal, showsHowFarADownloadIs)
{
    logIn();
    attachSynthetic("plan", 4'000'000);
    server.misbehave(Match::on("/secure/attachment/*"), Fault().hold(Point::responseBody(2'000'000)));
    const auto tool = startOnTerminal(words("download ABC-1 plan"));
    EXPECT_TRUE(tool->waitFor("B/s  "));
    releaseWhenHeld();
    EXPECT_EQ(tool->status(), 0);
    EXPECT_THAT(tool->shown().toStdString(), HasSubstr("\r100% [#########################] 4.0 MB of 4.0 MB  "));
    EXPECT_TRUE(tool->shown().endsWith("/plan\r\n")) << tool->shown().toStdString();
}

TEST_F(Terminal, showsHowFarAnUploadIs)
{
    logIn();
    writeFile(u"plan"_s, QByteArray(20'000'000, 'x'));
    server.misbehave(Match::on("POST", "*/attachments"), Fault().hold(Point::requestBody(10'000'000)));
    const auto tool = startOnTerminal(words("upload ABC-1 plan"));
    ASSERT_TRUE(tool->waitFor(" MB of 20.0 MB  "));
    releaseWhenHeld();
    EXPECT_EQ(tool->status(), 0);
    EXPECT_THAT(tool->shown().toStdString(), HasSubstr("\r100% [#########################] 20.0 MB of 20.0 MB  "));
    EXPECT_TRUE(tool->shown().endsWith("\r\n"));
}

TEST_F(Terminal, removesTheBarOfATransferThatFails)
{
    logIn();
    attachSynthetic("plan", 4'000'000);
    server.misbehave(Match::on("/secure/attachment/*"),
                     Fault().hold(Point::responseBody(2'000'000)).close(Point::responseBody(2'000'000)));
    const auto tool = startOnTerminal(words("download ABC-1 plan"));
    ASSERT_TRUE(tool->waitFor(" of 4.0 MB "));
    releaseWhenHeld();
    EXPECT_EQ(tool->status(), 1);
    EXPECT_TRUE(tool->shown().endsWith('\r' + QByteArray(79, ' ') + "\rThe network connection was lost.\r\n"))
        << tool->shown().toStdString();
}

TEST_F(Terminal, fitsTheBarIntoItsWidth)
{
    logIn();
    attachSynthetic("plan", 4'000'000);
    server.misbehave(Match::on("/secure/attachment/*"), Fault().hold(Point::responseBody(2'000'000)));
    const auto tool = startOnTerminal(words("download ABC-1 plan"), 40);
    ASSERT_TRUE(tool->waitFor(" of 4.0 MB "));
    releaseWhenHeld();
    EXPECT_EQ(tool->status(), 0);
    for (const QByteArray& line : tool->shown().split('\n').first().split('\r'))
        EXPECT_LE(line.size(), 39) << line.toStdString();
}

TEST_F(Terminal, showsTheLogInPlaceOfTheBar)
{
    logIn();
    attachSynthetic("plan", 4'000'000);
    const auto tool = startOnTerminal(words("download ABC-1 plan --verbose"));
    EXPECT_EQ(tool->status(), 0);
    EXPECT_THAT(tool->shown().toStdString(), HasSubstr("didFinishDownloadingToURL: "));
    EXPECT_THAT(tool->shown().toStdString(), Not(HasSubstr("% ")));
}

} // namespace
