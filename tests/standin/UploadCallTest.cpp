#include "tests/standin/JiraFixture.h"

#include <gmock/gmock.h>

namespace standin_tests {

namespace {

class Upload : public JiraFixture
{
protected:
    Reply uploadWith(const std::string& headers, const std::string& body = formBody("name=file; filename=a", "x"))
    {
        return exchange(requestBytes("POST", attachmentsPath, cookieOfAnna() + headers, body));
    }
    std::string storedName() { return server.attachments("DEMO-1").at(0).fileName; }
};

constexpr const char* token = "X-Atlassian-Token: no-check\r\n";

TEST_F(Upload, anAcceptedFileIsAnsweredWithAnArray)
{
    const auto reply = upload("name=\"file\"; filename=\"a b.txt\"", "12345");
    EXPECT_EQ(reply.status, 200);
    const auto answer = jsonArray(reply);
    ASSERT_EQ(answer.size(), 1);
    EXPECT_EQ(answer[0][QStringLiteral("filename")].toString().toStdString(), "a b.txt");
    EXPECT_EQ(answer[0][QStringLiteral("id")].toString().toStdString(), "10000");
    EXPECT_EQ(answer[0][QStringLiteral("size")].toInt(), 5);
    EXPECT_EQ(answer[0][QStringLiteral("mimeType")].toString().toStdString(), "text/plain");
    EXPECT_EQ(answer[0][QStringLiteral("author")][QStringLiteral("name")].toString().toStdString(), "anna");
    EXPECT_EQ(answer[0][QStringLiteral("content")].toString().toStdString(),
              "http://jira.example.test/secure/attachment/10000/a%20b.txt");
}

TEST_F(Upload, aFileIsKeptAndServedBack)
{
    const auto bytes = standin::Server::pattern(11, 4000000) + "\r\n--frontie";
    EXPECT_EQ(upload("name=file; filename=a", bytes).status, 200);
    const auto stored = server.attachments("DEMO-1");
    ASSERT_EQ(stored.size(), 1U);
    EXPECT_EQ(stored[0].size, static_cast<std::int64_t>(bytes.size()));
    EXPECT_TRUE(server.content(stored[0].id) == bytes);
    EXPECT_TRUE(getAsAnna("/secure/attachment/10000/a").body == bytes);
}

TEST_F(Upload, anEmptyFileIsAccepted)
{
    EXPECT_EQ(upload("name=file; filename=a", "").status, 200);
    EXPECT_EQ(server.content(10000), "");
    EXPECT_EQ(server.attachments("DEMO-1")[0].digest,
              "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
}

TEST_F(Upload, severalFilesAreAnsweredTogether)
{
    const auto first = formBody("name=file; filename=a", "1");
    const auto body = first.substr(0, first.rfind("--frontier--")) + formBody("name=file; filename=b", "22");
    EXPECT_EQ(jsonArray(uploadWith(std::string(token) + formType, body)).size(), 2);
    EXPECT_EQ(server.content(10001), "22");
}

TEST_F(Upload, unquotedNamesAreAccepted)
{
    EXPECT_EQ(upload("name=file; filename=My Plan.tessaloom", "x").status, 200);
    EXPECT_EQ(storedName(), "My Plan.tessaloom");
}

TEST_F(Upload, anUnquotedNameIsCutAtASemicolon)
{
    upload("name=file; filename= My;Plan.tessaloom", "x");
    EXPECT_EQ(storedName(), "My");
}

TEST_F(Upload, aStrayQuotationMarkSwallowsWhatFollows)
{
    upload("name=file; filename=My\"Plan.tessaloom; more", "x");
    EXPECT_EQ(storedName(), "My\"Plan.tessaloom; more");
}

TEST_F(Upload, rawUtf8IsReadAsUtf8)
{
    upload("name=file; filename=Übersicht 図.tessaloom", "x");
    EXPECT_EQ(storedName(), "Übersicht 図.tessaloom");
}

TEST_F(Upload, aNameIsNeverAPath)
{
    upload("name=file; filename=../../etc/passwd", "x");
    EXPECT_EQ(storedName(), "../../etc/passwd");
    EXPECT_EQ(jsonArray(getAsAnna("/secure/attachment/10000/x")).size(), 0);
    EXPECT_EQ(getAsAnna("/secure/attachment/10000/..%2F..%2Fetc%2Fpasswd").body, "x");
}

TEST_F(Upload, theTokenHeaderIsNeeded)
{
    const auto reply = uploadWith(formType);
    EXPECT_EQ(reply.status, 403);
    EXPECT_EQ(reply.header("Content-Type"), "text/plain;charset=UTF-8");
    EXPECT_EQ(reply.body, "XSRF check failed");
    EXPECT_EQ(uploadWith(std::string("X-Atlassian-Token: yes\r\n") + formType).status, 403);
    EXPECT_TRUE(server.attachments("DEMO-1").empty());
}

TEST_F(Upload, bothSpellingsOfTheTokenAreAccepted)
{
    EXPECT_EQ(uploadWith(std::string("X-Atlassian-Token: nocheck\r\n") + formType).status, 200);
    EXPECT_EQ(uploadWith(std::string("x-atlassian-token: no-check\r\n") + formType).status, 200);
}

TEST_F(Upload, aBrowsersUserAgentIsRefused)
{
    const auto reply = uploadWith(std::string(token) + formType + "User-Agent: Mozilla/5.0 (X11)\r\n");
    EXPECT_EQ(reply.status, 403);
    EXPECT_EQ(reply.body, "XSRF check failed");
    EXPECT_EQ(uploadWith(std::string(token) + formType + "User-Agent: tool/1.0\r\n").status, 200);
}

TEST_F(Upload, anUnknownIssueIsNotFound)
{
    const auto reply = exchange(requestBytes("POST", "/rest/api/2/issue/NO-1/attachments", uploadHeaders(),
                                             formBody("name=file; filename=a", "x")));
    EXPECT_EQ(reply.status, 404);
    EXPECT_EQ(firstError(reply), "Issue Does Not Exist");
}

TEST_F(Upload, attachmentsCanBeDisabled)
{
    server.allowAttachments(false);
    const auto reply = upload("name=file; filename=a", "x");
    EXPECT_EQ(reply.status, 403);
    EXPECT_NE(firstError(reply), "");
    server.allowAttachments(true);
    EXPECT_EQ(upload("name=file; filename=a", "x").status, 200);
}

TEST_F(Upload, aBodyThatEndsEarlyIsAnError)
{
    const auto body = formBody("name=file; filename=a", "12345");
    for (const auto length : {body.size() - 5, body.size() - 18, std::size_t{20}}) {
        EXPECT_EQ(uploadWith(std::string(token) + formType, body.substr(0, length)).status, 500) << length;
    }
    EXPECT_TRUE(server.attachments("DEMO-1").empty());
}

TEST_F(Upload, aFileWithoutANameIsAnError)
{
    EXPECT_EQ(upload("name=file", "x").status, 500);
    EXPECT_EQ(upload("name=file; filename=", "x").status, 500);
    EXPECT_EQ(upload("name=file; filename=\"\"", "x").status, 500);
}

TEST_F(Upload, aFieldOfAnotherNameIsNoFile)
{
    EXPECT_EQ(upload("name=document; filename=a", "x").status, 500);
    EXPECT_TRUE(server.attachments("DEMO-1").empty());
}

TEST_F(Upload, anotherContentTypeIsRefused)
{
    EXPECT_EQ(uploadWith(std::string(token) + "Content-Type: application/octet-stream\r\n").status, 415);
    EXPECT_EQ(uploadWith(token).status, 415);
}

TEST_F(Upload, aMissingBoundaryIsAnError)
{
    EXPECT_EQ(uploadWith(std::string(token) + "Content-Type: multipart/form-data\r\n").status, 500);
    EXPECT_EQ(uploadWith(std::string(token) + "Content-Type: multipart/form-data; boundary=other\r\n").status, 500);
}

TEST_F(Upload, aQuotedBoundaryIsUnderstood)
{
    EXPECT_EQ(uploadWith(std::string(token) + "Content-Type: multipart/form-data; boundary=\"frontier\"\r\n").status,
              200);
}

TEST_F(Upload, aChunkedBodyIsAccepted)
{
    const auto body = formBody("name=file; filename=a", "12345");
    char size[16];
    std::snprintf(size, sizeof size, "%zx\r\n", body.size());
    const auto reply =
        exchange(requestBytes("POST", attachmentsPath, uploadHeaders() + "Transfer-Encoding: chunked\r\n") + size +
                 body + "\r\n0\r\n\r\n");
    EXPECT_EQ(reply.status, 200);
    EXPECT_EQ(server.content(10000), "12345");
}

TEST_F(Upload, aClientThatWaitsForPermissionGetsIt)
{
    const auto body = formBody("name=file; filename=a", "12345");
    RawClient client(server.port());
    client.send(requestBytes("POST", attachmentsPath,
                             uploadHeaders() +
                                 "Expect: 100-continue\r\nContent-Length: " + std::to_string(body.size()) + "\r\n"));
    EXPECT_EQ(client.read(25), "HTTP/1.1 100 Continue\r\n\r\n");
    client.send(body);
    EXPECT_EQ(client.reply().status, 200);
}

class LimitedUpload : public JiraFixture
{
protected:
    LimitedUpload()
        : JiraFixture({.storage = standin::Storage::sink,
                       .digest = standin::Digest::crc32,
                       .maximumFileSize = 9,
                       .xsrfStatus = 404})
    {
    }
};

TEST_F(LimitedUpload, aFileThatIsTooLargeIsRefusedWithItsLimit)
{
    const auto reply = upload("name=file; filename=a", "1234567890");
    EXPECT_EQ(reply.status, 404);
    EXPECT_EQ(firstError(reply), "The field file exceeds its maximum permitted size of 9 bytes.");
    EXPECT_TRUE(server.attachments("DEMO-1").empty());
}

TEST_F(LimitedUpload, aFileOfExactlyTheLimitIsAccepted)
{
    EXPECT_EQ(upload("name=file; filename=a", "123456789").status, 200);
    EXPECT_EQ(server.attachments("DEMO-1")[0].digest, "cbf43926");
}

TEST_F(LimitedUpload, whatWentDownTheSinkIsGone)
{
    upload("name=file; filename=a", "123456789");
    EXPECT_EQ(server.attachments("DEMO-1")[0].size, 9);
    EXPECT_EQ(server.content(10000), std::nullopt);
    EXPECT_EQ(getAsAnna("/secure/attachment/10000/a").status, 404);
}

TEST_F(LimitedUpload, theXsrfRefusalCanBeANotFound)
{
    const auto reply = exchange(requestBytes("POST", attachmentsPath, cookieOfAnna() + formType, "x"));
    EXPECT_EQ(reply.status, 404);
    EXPECT_EQ(reply.body, "XSRF check failed");
}

} // namespace

} // namespace standin_tests
