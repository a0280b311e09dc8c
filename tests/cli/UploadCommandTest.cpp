#include "tests/cli/CommandTest.h"

#include <QDir>

namespace {

using namespace Qt::StringLiterals;
using standin::Fault;
using standin::Match;
using standin::Point;
using tests::words;

class UploadCommand : public tests::CommandTest
{
protected:
    UploadCommand()
    {
        logIn();
        writeFile(u"plan.tessaloom"_s, bytes);
    }

    void answerUpload(int status, const std::string& body)
    {
        server.misbehave(Match::on("POST", "*/attachments"), Fault().status(status, body, "application/json"));
    }

    const QByteArray bytes = QByteArray("a document\r\n--\0\xff", 15).repeated(10000);
};

TEST_F(UploadCommand, attachesTheFileUnderItsName)
{
    EXPECT_EQ(run(words("upload ABC-1 plan.tessaloom")), Result({0, {}, {}}));
    const auto attachments = server.attachments("ABC-1");
    ASSERT_EQ(attachments.size(), 1U);
    EXPECT_EQ(attachments[0].fileName, "plan.tessaloom");
    EXPECT_EQ(server.content(attachments[0].id), bytes.toStdString());
    EXPECT_EQ(readFile(u"plan.tessaloom"_s), bytes);
}

TEST_F(UploadCommand, takesAnotherName)
{
    EXPECT_EQ(run({u"upload"_s, u"ABC-1"_s, path(u"plan.tessaloom"_s), u"--name"_s, u"Größer Plan.tessaloom"_s}),
              Result({0, {}, {}}));
    ASSERT_EQ(server.attachments("ABC-1").size(), 1U);
    EXPECT_EQ(server.attachments("ABC-1")[0].fileName, "Größer Plan.tessaloom");
}

TEST_F(UploadCommand, attachesAnEmptyFile)
{
    writeFile(u"empty"_s, {});
    EXPECT_EQ(run(words("upload ABC-1 empty")), Result({0, {}, {}}));
    ASSERT_EQ(server.attachments("ABC-1").size(), 1U);
    EXPECT_EQ(server.attachments("ABC-1")[0].size, 0);
}

TEST_F(UploadCommand, failsWhenTheAnswerIsNotJSON)
{
    answerUpload(200, "<html>Log in</html>");
    EXPECT_EQ(run(words("upload ABC-1 plan.tessaloom")),
              Result({1, {}, "The operation couldn’t be completed. (Fatal error error 200.)\n"}));
}

TEST_F(UploadCommand, failsWhenTheAnswerIsEmpty)
{
    answerUpload(200, "");
    EXPECT_EQ(run(words("upload ABC-1 plan.tessaloom")),
              Result({1, {}, "The operation couldn’t be completed. (Fatal error error 200.)\n"}));
}

TEST_F(UploadCommand, failsWithTheServersReasonOnOneHarmlessLine)
{
    answerUpload(403, R"({"error":"not\nallowed \u001b[2J"})");
    EXPECT_EQ(run(words("upload ABC-1 plan.tessaloom")),
              Result({1, {}, "The operation couldn’t be completed. (not allowed ?[2J error 403.)\n"}));
}

TEST_F(UploadCommand, failsForAnUnknownIssue)
{
    EXPECT_EQ(run(words("upload NO-1 plan.tessaloom")),
              Result({1, {}, "The operation couldn’t be completed. ((null) error 404.)\n"}));
}

TEST_F(UploadCommand, failsWhenTheConnectionIsLost)
{
    server.misbehave(Match::on("POST", "*/attachments"), Fault().reset(Point::requestBody(65536)));
    EXPECT_EQ(run(words("upload ABC-1 plan.tessaloom")), Result({1, {}, "The network connection was lost.\n"}));
    EXPECT_TRUE(server.attachments("ABC-1").empty());
}

TEST_F(UploadCommand, sendsNothingForWhatIsNoReadableFile)
{
    const auto requestsBefore = server.requestCount();
    ASSERT_TRUE(QDir(path({})).mkdir(u"folder"_s));
    EXPECT_EQ(run(words("upload ABC-1 missing")),
              Result({1, {}, "“missing” couldn’t be opened: No such file or directory.\n"}));
    EXPECT_EQ(run(words("upload ABC-1 folder")), Result({1, {}, "“folder” is not a file.\n"}));
    EXPECT_EQ(run(words("upload ABC-1 /dev/null")), Result({1, {}, "“/dev/null” is not a file.\n"}));
    EXPECT_EQ(server.requestCount(), requestsBefore);
}

} // namespace
