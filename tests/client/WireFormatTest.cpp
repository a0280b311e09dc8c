#include "records/SavedToken.h"
#include "records/TLJiraOptions.h"
#include "tests/client/ClientTest.h"

namespace {

using standin::Fault;
using standin::Match;

/// What leaves the client of a host that chose nothing, compared byte for byte with fixtures/*.http. In those,
/// ${USER_AGENT} stands for the session's own.
class WireFormatTest : public tests::ClientTest
{
protected:
    void SetUp() override
    {
        ASSERT_EQ(TLJiraOptions::inUse(), TLJiraOptions());
        saveSession("JSESSIONID", "6E3487971234567896704A9EB4AE501F");
        server.misbehave(Match(), Fault().status(200, "[]", "application/json"));
    }

    QByteArray fixture(const char* name) const
    {
        const QString file = QStringLiteral(TESTS_SOURCE_DIR "/fixtures/%1.http").arg(QString::fromLatin1(name));
        const auto bytes = tests::contentsOf(file);
        EXPECT_TRUE(bytes) << file.toStdString();
        return bytes.value_or(QByteArray())
            .replace("${USER_AGENT}", client->session()->configuration().userAgent.toUtf8());
    }

    QByteArray sent() const
    {
        const auto requests = server.requests();
        EXPECT_EQ(requests.size(), 1u);
        return requests.empty() ? QByteArray() : QByteArray::fromStdString(requests[0].head + requests[0].body);
    }

    QByteArray sentForUploadOf(const std::optional<QString>& file, const char* name)
    {
        client->uploadFileInIssue(file, QString::fromUtf8(name), QStringLiteral("ABC-1"), completionCallBack(),
                                  nullptr);
        EXPECT_TRUE(waitForEvents(1));
        return sent();
    }
};

TEST_F(WireFormatTest, ofALogin)
{
    client->login(QStringLiteral("anna"), QStringLiteral("ge\"heim ü"), loginCallBack());
    ASSERT_TRUE(waitForEvents(2));
    EXPECT_EQ(sent(), fixture("login"));
}

TEST_F(WireFormatTest, ofALoginWithoutASavedSession)
{
    JALoginObject::resetSession();
    client->login(QStringLiteral("anna"), QStringLiteral("secret"), loginCallBack());
    ASSERT_TRUE(waitForEvents(2));
    EXPECT_EQ(sent(), fixture("login-first"));
}

TEST_F(WireFormatTest, ofAClientWithATokenThatIsNotAskedFor)
{
    records::saveToken({QStringLiteral("http://jira.example.test:80"), QStringLiteral("anna"), QStringLiteral("T")});
    client->login(QStringLiteral("anna"), QStringLiteral("secret"), loginCallBack());
    ASSERT_TRUE(waitForEvents(2));
    EXPECT_EQ(sent(), fixture("login-first"));
}

TEST_F(WireFormatTest, ofACheckOfTheSession)
{
    client->updateSession(loginCallBack());
    ASSERT_TRUE(waitForEvents(2));
    EXPECT_EQ(sent(), fixture("session-check"));
}

TEST_F(WireFormatTest, ofALogout)
{
    client->logout(completionCallBack());
    ASSERT_TRUE(waitForEvents(2));
    EXPECT_EQ(sent(), fixture("logout"));
}

TEST_F(WireFormatTest, ofTheCurrentUser)
{
    client->getCurrentUser(userCallBack());
    ASSERT_TRUE(waitForEvents(1));
    EXPECT_EQ(sent(), fixture("current-user"));
}

TEST_F(WireFormatTest, ofAnIssue)
{
    client->getIssueObject(QStringLiteral("ABC-1"), issueCallBack());
    ASSERT_TRUE(waitForEvents(1));
    EXPECT_EQ(sent(), fixture("issue"));
}

TEST_F(WireFormatTest, ofAnUpload)
{
    const QString file = writeFile("source", "first line\nsecond line\r\n--no boundary\n");
    EXPECT_EQ(sentForUploadOf(file, "a.bin"), fixture("upload"));
}

TEST_F(WireFormatTest, ofAnUploadOfNoBytes)
{
    EXPECT_EQ(sentForUploadOf(writeFile("source", ""), "a.bin"), fixture("upload-empty-file"));
}

TEST_F(WireFormatTest, ofAnUploadOfOneByte)
{
    EXPECT_EQ(sentForUploadOf(writeFile("source", "B"), "a.bin"), fixture("upload-one-byte"));
}

TEST_F(WireFormatTest, ofAnUploadOfAFileThatIsMissing)
{
    EXPECT_EQ(sentForUploadOf(path("missing"), "a.bin"), fixture("upload-without-file"));
}

TEST_F(WireFormatTest, ofAnUploadWithoutAPath)
{
    EXPECT_EQ(sentForUploadOf(std::nullopt, "a.bin"), fixture("upload-without-file"));
}

TEST_F(WireFormatTest, ofAnUploadUnderANameWithBlanks)
{
    EXPECT_EQ(sentForUploadOf(writeFile("source", "B"), "My Plan 2.tessaloom"), fixture("upload-name-blanks"));
}

TEST_F(WireFormatTest, ofAnUploadUnderANameWithASemicolon)
{
    EXPECT_EQ(sentForUploadOf(writeFile("source", "B"), "a;b.bin"), fixture("upload-name-semicolon"));
}

TEST_F(WireFormatTest, ofAnUploadUnderANameWithQuotes)
{
    EXPECT_EQ(sentForUploadOf(writeFile("source", "B"), "the \"new\" plan.bin"), fixture("upload-name-quotes"));
}

TEST_F(WireFormatTest, ofAnUploadUnderANameOfOtherScripts)
{
    EXPECT_EQ(sentForUploadOf(writeFile("source", "B"), "Größe 計画.tessaloom"), fixture("upload-name-unicode"));
}

TEST_F(WireFormatTest, ofADownload)
{
    client->downloadFile(QStringLiteral("http://jira.example.test/secure/attachment/10013/My%20Plan+2.tessaloom"),
                         downloadCallBack(), path("saved"));
    ASSERT_TRUE(waitForEvents(1));
    EXPECT_EQ(sent(), fixture("download"));
}

} // namespace
