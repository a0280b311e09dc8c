#include "tests/standin/JiraFixture.h"

#include <gmock/gmock.h>

#include <zlib.h>

namespace standin_tests {

namespace {

using testing::HasSubstr;
using testing::MatchesRegex;
using testing::StartsWith;

std::string text(const QJsonObject& object, const char* name)
{
    return object[QLatin1String(name)].toString().toStdString();
}

class Resources : public JiraFixture
{
protected:
    QJsonObject issue() { return jsonObject(getAsAnna("/rest/api/2/issue/DEMO-1")); }
    QJsonArray attachments() { return issue()[QStringLiteral("fields")][QStringLiteral("attachment")].toArray(); }
};

TEST_F(Resources, myselfHasEverythingARealServerTells)
{
    const auto reply = getAsAnna("/rest/api/2/myself");
    EXPECT_EQ(reply.status, 200);
    const auto user = jsonObject(reply);
    EXPECT_EQ(text(user, "self"), "http://jira.example.test/rest/api/2/user?username=anna");
    EXPECT_EQ(text(user, "key"), "anna");
    EXPECT_EQ(text(user, "name"), "anna");
    EXPECT_EQ(text(user, "emailAddress"), "anna@example.test");
    EXPECT_EQ(text(user, "displayName"), "Anna Björk");
    EXPECT_TRUE(user[QStringLiteral("active")].toBool());
    for (const char* name : {"timeZone", "locale", "expand"})
        EXPECT_NE(text(user, name), "") << name;
    EXPECT_TRUE(user[QStringLiteral("groups")].isObject());
    EXPECT_TRUE(user[QStringLiteral("applicationRoles")].isObject());
    EXPECT_EQ(user[QStringLiteral("avatarUrls")].toObject().keys(),
              (QStringList{QStringLiteral("16x16"), QStringLiteral("24x24"), QStringLiteral("32x32"),
                           QStringLiteral("48x48")}));
}

TEST_F(Resources, myselfNeedsALogin)
{
    EXPECT_EQ(get("/rest/api/2/myself").status, 401);
}

TEST_F(Resources, aUsersFieldsCanBeOverridden)
{
    server.addUser({.name = "anna",
                    .password = "secret",
                    .json = {.set = {{QStringLiteral("displayName"), 5}}, .without = {"avatarUrls"}}});
    const auto user = jsonObject(getAsAnna("/rest/api/2/myself"));
    EXPECT_EQ(user[QStringLiteral("displayName")].toInt(), 5);
    EXPECT_FALSE(user.contains(QStringLiteral("avatarUrls")));
}

TEST_F(Resources, anIssueHasItsKeyAndFields)
{
    const auto shown = issue();
    EXPECT_EQ(text(shown, "key"), "DEMO-1");
    EXPECT_EQ(text(shown, "id"), "10000");
    EXPECT_EQ(text(shown, "self"), "http://jira.example.test/rest/api/2/issue/10000");
    EXPECT_EQ(shown[QStringLiteral("fields")][QStringLiteral("summary")].toString().toStdString(), "Summary of DEMO-1");
    EXPECT_TRUE(shown[QStringLiteral("fields")][QStringLiteral("attachment")].isArray());
    EXPECT_TRUE(attachments().isEmpty());
}

TEST_F(Resources, anUnknownIssueIsNotFound)
{
    const auto reply = getAsAnna("/rest/api/2/issue/DEMO-2");
    EXPECT_EQ(reply.status, 404);
    EXPECT_EQ(reply.body, R"({"errorMessages":["Issue Does Not Exist"],"errors":{}})");
}

TEST_F(Resources, aHiddenIssueIsRefusedAsEachVersionDoes)
{
    for (const int status : {401, 403, 404}) {
        server.hideIssue("DEMO-1", status);
        const auto reply = getAsAnna("/rest/api/2/issue/DEMO-1");
        EXPECT_EQ(reply.status, status);
        EXPECT_EQ(firstError(reply), "You do not have the permission to see the specified issue.");
        EXPECT_EQ(upload("name=file; filename=a", "x").status, status);
    }
    server.hideIssue("DEMO-1", 0);
    EXPECT_EQ(getAsAnna("/rest/api/2/issue/DEMO-1").status, 200);
}

TEST_F(Resources, anAttachmentHasEverythingARealServerTells)
{
    server.addAttachment("DEMO-1",
                         {.fileName = "foo.pdf", .bytes = "12345", .created = "2017-10-16T10:06:29.399+0200"});
    const auto shown = attachments().at(0).toObject();
    EXPECT_EQ(text(shown, "self"), "http://jira.example.test/rest/api/2/attachment/10000");
    EXPECT_EQ(text(shown, "id"), "10000");
    EXPECT_EQ(text(shown, "filename"), "foo.pdf");
    EXPECT_EQ(text(shown, "created"), "2017-10-16T10:06:29.399+0200");
    EXPECT_EQ(shown[QStringLiteral("size")].toInt(), 5);
    EXPECT_EQ(text(shown, "mimeType"), "application/pdf");
    EXPECT_EQ(text(shown, "content"), "http://jira.example.test/secure/attachment/10000/foo.pdf");
    EXPECT_EQ(shown[QStringLiteral("author")].toObject().keys(),
              (QStringList{QStringLiteral("active"), QStringLiteral("avatarUrls"), QStringLiteral("displayName"),
                           QStringLiteral("emailAddress"), QStringLiteral("key"), QStringLiteral("name"),
                           QStringLiteral("self"), QStringLiteral("timeZone")}));
}

TEST_F(Resources, attachmentsComeInTheirOrderWithRisingIds)
{
    EXPECT_EQ(server.addAttachment("DEMO-1", {.fileName = "b"}), 10000);
    EXPECT_EQ(server.addAttachment("DEMO-1", {.fileName = "a"}), 10001);
    EXPECT_EQ(server.addAttachment("DEMO-2", {.fileName = "c"}), 0);
    const auto shown = attachments();
    ASSERT_EQ(shown.size(), 2);
    EXPECT_EQ(text(shown[0].toObject(), "filename"), "b");
    EXPECT_EQ(text(shown[1].toObject(), "id"), "10001");
}

TEST_F(Resources, anAttachmentsFieldsCanBeOverridden)
{
    server.addAttachment(
        "DEMO-1",
        {.fileName = "a", .json = {.set = {{QStringLiteral("size"), QStringLiteral("big")}}, .without = {"created"}}});
    const auto shown = attachments().at(0).toObject();
    EXPECT_EQ(text(shown, "size"), "big");
    EXPECT_FALSE(shown.contains(QStringLiteral("created")));
}

TEST_F(Resources, anIssuesFieldsCanBeOverridden)
{
    server.addIssue({.key = "DEMO-1",
                     .json = {.without = {"id"}},
                     .fields = {.set = {{QStringLiteral("attachment"), QJsonObject()}}}});
    EXPECT_FALSE(issue().contains(QStringLiteral("id")));
    EXPECT_TRUE(issue()[QStringLiteral("fields")][QStringLiteral("attachment")].isObject());
}

TEST_F(Resources, aFileComesBackByteForByte)
{
    const auto bytes = standin::Server::pattern(3, 3000000);
    server.addAttachment("DEMO-1", {.fileName = "a ä.pdf", .bytes = bytes});
    const auto reply = getAsAnna("/secure/attachment/10000/a%20%C3%A4.pdf");
    EXPECT_EQ(reply.status, 200);
    EXPECT_EQ(reply.header("Content-Type"), "application/pdf");
    EXPECT_EQ(reply.header("Content-Disposition"), "attachment; filename*=UTF-8''a%20%C3%A4.pdf");
    EXPECT_TRUE(reply.body == bytes);
}

TEST_F(Resources, aSyntheticFileIsThePattern)
{
    const std::int64_t size = 2500001;
    server.addAttachment("DEMO-1", {.fileName = "a", .syntheticSize = size});
    EXPECT_EQ(attachments().at(0)[QStringLiteral("size")].toInt(), size);
    EXPECT_TRUE(getAsAnna("/secure/attachment/10000/a").body == standin::Server::pattern(0, size));
}

TEST_F(Resources, anUnknownFileIsNotFound)
{
    for (const char* path : {"/secure/attachment/10000/a", "/secure/attachment/x/a", "/secure/attachment/10000"})
        EXPECT_EQ(getAsAnna(path).status, 404) << path;
    server.addAttachment("DEMO-1", {.fileName = "a"});
    server.removeAttachment(10000);
    EXPECT_EQ(getAsAnna("/secure/attachment/10000/a").status, 404);
    EXPECT_TRUE(attachments().isEmpty());
}

TEST_F(Resources, aFileWithoutASessionLeadsToTheLoginPage)
{
    server.addAttachment("DEMO-1", {.fileName = "a"});
    for (const char* cookie : {"", "Cookie: JSESSIONID=stale\r\n"}) {
        const auto reply = get("/secure/attachment/10000/a", cookie);
        EXPECT_EQ(reply.status, 302);
        EXPECT_THAT(reply.header("Location"), StartsWith("http://jira.example.test/login.jsp?"));
    }
    const auto page = get("/login.jsp?x=y");
    EXPECT_EQ(page.status, 200);
    EXPECT_EQ(page.header("Content-Type"), "text/html;charset=UTF-8");
    EXPECT_THAT(page.body, HasSubstr("os_password"));
}

/// The whole number at `offset` in a PNG.
std::uint32_t bigEndian(const std::string& bytes, std::size_t offset)
{
    std::uint32_t number = 0;
    for (std::size_t i = 0; i < 4; ++i)
        number = number << 8 | static_cast<unsigned char>(bytes.at(offset + i));
    return number;
}

TEST_F(Resources, anAvatarIsAPngOfTheSizeAskedFor)
{
    const std::pair<const char*, std::uint32_t> sizes[] = {
        {"avatarId=1", 48}, {"size=medium&avatarId=1", 32}, {"size=small", 24}, {"size=xsmall", 16}};
    for (const auto& [query, size] : sizes) {
        const auto reply = get(std::string("/secure/useravatar?") + query);
        EXPECT_EQ(reply.status, 200);
        EXPECT_EQ(reply.header("Content-Type"), "image/png");
        ASSERT_EQ(reply.body.substr(0, 16), std::string("\x89PNG\r\n\x1a\n\0\0\0\rIHDR", 16));
        EXPECT_EQ(bigEndian(reply.body, 16), size);
        EXPECT_EQ(bigEndian(reply.body, 20), size);
    }
}

TEST_F(Resources, anAvatarsPixelsCanBeDecoded)
{
    const auto png = get("/secure/useravatar").body;
    constexpr std::size_t dataChunk = 33;
    const auto length = bigEndian(png, dataChunk);
    ASSERT_EQ(png.substr(dataChunk + 4, 4), "IDAT");
    const auto* chunk = reinterpret_cast<const Bytef*>(png.data()) + dataChunk + 4;
    EXPECT_EQ(crc32(0, chunk, length + 4), bigEndian(png, dataChunk + 8 + length));
    std::string pixels(48 * (48 * 3 + 1), '\0');
    uLongf size = pixels.size();
    ASSERT_EQ(uncompress(reinterpret_cast<Bytef*>(pixels.data()), &size, chunk + 4, length), Z_OK);
    EXPECT_EQ(size, pixels.size());
}

TEST_F(Resources, anUnknownPathIsNotFoundInJson)
{
    for (const char* path : {"/", "/rest/api/2/nothing", "/secure/other"}) {
        const auto reply = get(path);
        EXPECT_EQ(reply.status, 404) << path;
        EXPECT_THAT(firstError(reply), HasSubstr(path));
    }
}

TEST_F(Resources, anotherMethodIsNotAllowed)
{
    EXPECT_EQ(exchange(requestBytes("PUT", "/rest/api/2/issue/DEMO-1", cookieOfAnna(), "{}")).status, 405);
    EXPECT_EQ(exchange(requestBytes("PATCH", sessionPath, cookieOfAnna(), "{}")).status, 405);
}

TEST_F(Resources, headAnswersLikeGetWithoutTheBody)
{
    RawClient client(server.port());
    client.send(requestBytes("HEAD", "/login.jsp", "Connection: close\r\n"));
    const auto bytes = client.readAll();
    EXPECT_THAT(bytes, HasSubstr("Content-Length: " + std::to_string(get("/login.jsp").body.size()) + "\r\n"));
    EXPECT_EQ(bytes.substr(bytes.size() - 4), "\r\n\r\n");
}

class ResourcesUnderABase : public JiraFixture
{
protected:
    ResourcesUnderABase()
        : JiraFixture({.baseUrl = "https://jira.example.test:8443/jira/",
                       .numericIds = true,
                       .blanksAsPlus = true,
                       .loginPageForFiles = true})
    {
        server.addAttachment("DEMO-1", {.fileName = "a b.pdf", .bytes = "x"});
    }
};

TEST_F(ResourcesUnderABase, linksBeginWithTheBase)
{
    const QJsonValue fields = jsonObject(getAsAnna("/jira/rest/api/2/issue/DEMO-1"))[QStringLiteral("fields")];
    const auto shown = fields[QStringLiteral("attachment")][0].toObject();
    EXPECT_EQ(text(shown, "content"), "https://jira.example.test:8443/jira/secure/attachment/10000/a+b.pdf");
    EXPECT_EQ(shown[QStringLiteral("id")], QJsonValue(10000));
}

TEST_F(ResourcesUnderABase, resourcesLieBelowItsPath)
{
    EXPECT_EQ(getAsAnna("/jira/secure/attachment/10000/a+b.pdf").body, "x");
    EXPECT_EQ(getAsAnna("/rest/api/2/myself").status, 404);
}

TEST_F(ResourcesUnderABase, aFileWithoutASessionCanBeTheLoginPage)
{
    const auto reply = get("/jira/secure/attachment/10000/a+b.pdf");
    EXPECT_EQ(reply.status, 200);
    EXPECT_EQ(reply.header("Content-Type"), "text/html;charset=UTF-8");
}

} // namespace

} // namespace standin_tests
