#include "constants/JAConstants.h"
#include "tests/client/ClientTest.h"

namespace {

using standin::Fault;
using standin::Match;
using standin::Point;
using testing::ElementsAre;
using namespace std::chrono_literals;

/// What callers of a request hear when server or network misbehave.
class JAControllerFaultsTest : public tests::ClientTest
{
protected:
    static constexpr char lost[] = "no response, NSURLErrorDomain -1005";

    void get(const Fault& fault)
    {
        events.clear();
        server.behave();
        server.misbehave(Match(), fault);
        client->sendGetRequest(client->url(kCurrentUserPath), requestCallBack());
        EXPECT_TRUE(waitForEvents(1));
    }
};

TEST_F(JAControllerFaultsTest, aConnectionThatIsRefused)
{
    auto configuration = client->session()->configuration();
    configuration.routes.append(QStringLiteral("localhost:80:127.0.0.1:1"));
    client->setSession(tljira::URLSession::sessionWithConfiguration(configuration, client));
    client->setJiraHost(QStringLiteral("http://localhost"));
    client->sendGetRequest(client->url(kCurrentUserPath), requestCallBack());
    ASSERT_TRUE(waitForEvents(1));
    EXPECT_THAT(events, ElementsAre("no response, NSURLErrorDomain -1004"));
    EXPECT_EQ(error->localizedDescription(), QStringLiteral("Could not connect to the server."));
}

TEST_F(JAControllerFaultsTest, aHostThatIsUnknown)
{
    client->setJiraHost(QStringLiteral("http://jira.invalid"));
    client->sendGetRequest(client->url(kCurrentUserPath), requestCallBack());
    ASSERT_TRUE(waitForEvents(1));
    EXPECT_THAT(events, ElementsAre("no response, NSURLErrorDomain -1003"));
    EXPECT_EQ(error->localizedDescription(),
              QStringLiteral("A server with the specified hostname could not be found."));
}

TEST_F(JAControllerFaultsTest, aConnectionThatIsResetBeforeARequestIsRead)
{
    server.resetConnections(1);
    client->sendGetRequest(client->url(kCurrentUserPath), requestCallBack());
    ASSERT_TRUE(waitForEvents(1));
    // Whether the connection is seen to stand before it goes is a matter of luck.
    EXPECT_THAT(events, ElementsAre(testing::AnyOf(lost, "no response, NSURLErrorDomain -1004")));
    EXPECT_EQ(body, std::nullopt);
}

TEST_F(JAControllerFaultsTest, aConnectionThatEndsBeforeTheHeadOrInIt)
{
    for (const int bytes : {0, 1, 20}) {
        get(Fault().status(200, "{}").reset(Point::responseHead(bytes)));
        EXPECT_THAT(events, ElementsAre(lost)) << bytes;
        get(Fault().status(200, "{}").close(Point::responseHead(bytes)));
        EXPECT_THAT(events, ElementsAre(lost)) << bytes;
    }
}

TEST_F(JAControllerFaultsTest, aConnectionThatEndsInTheBody)
{
    for (const int bytes : {0, 1, 500}) {
        get(Fault().status(200, std::string(1000, 'x')).reset(Point::responseBody(bytes)));
        EXPECT_THAT(events, ElementsAre(lost)) << bytes;
        get(Fault().status(200, std::string(1000, 'x')).close(Point::responseBody(bytes)));
        EXPECT_THAT(events, ElementsAre(lost)) << bytes;
        EXPECT_EQ(body, std::nullopt);
    }
}

TEST_F(JAControllerFaultsTest, aBodyThatIsShorterThanAnnounced)
{
    get(Fault().status(200, "{}").announce(1));
    EXPECT_THAT(events, ElementsAre(lost));
}

TEST_F(JAControllerFaultsTest, aBodyThatIsLongerThanAnnounced)
{
    get(Fault().status(200, "{} and more").announce(-9));
    EXPECT_THAT(events, ElementsAre("200, no error"));
    EXPECT_EQ(body, QByteArray("{}"));
}

TEST_F(JAControllerFaultsTest, aBodyThatEndsWithTheConnection)
{
    get(Fault().status(200, "{\"a\": 1}").withoutLength());
    EXPECT_THAT(events, ElementsAre("200, no error"));
    EXPECT_EQ(body, QByteArray("{\"a\": 1}"));
}

TEST_F(JAControllerFaultsTest, aBodyInChunksWholeOrCutShort)
{
    get(Fault().status(200, std::string(1000, 'x')).chunked(0, 100));
    EXPECT_THAT(events, ElementsAre("200, no error"));
    EXPECT_EQ(body, QByteArray(1000, 'x'));
    for (const int missing : {5, 6, 300}) {
        get(Fault().status(200, std::string(1000, 'x')).chunked(missing, 100));
        EXPECT_THAT(events, ElementsAre(lost)) << missing;
    }
}

TEST_F(JAControllerFaultsTest, aBodyInGzipWholeOrCutShort)
{
    get(Fault().status(200, std::string(100000, 'x')).gzip());
    EXPECT_THAT(events, ElementsAre("200, no error"));
    EXPECT_EQ(body, QByteArray(100000, 'x'));
    for (const int missing : {1, 8, 20}) {
        get(Fault().status(200, std::string(100000, 'x')).gzip(missing));
        EXPECT_THAT(events, ElementsAre("no response, NSURLErrorDomain -1016")) << missing;
    }
}

TEST_F(JAControllerFaultsTest, anAnswerThatIsNoHTTP)
{
    get(Fault().raw("This is not the protocol you are looking for.\r\n\r\n"));
    EXPECT_THAT(events, ElementsAre("no response, NSURLErrorDomain -1017"));
}

TEST_F(JAControllerFaultsTest, anAnswerThatDripsButNeverStops)
{
    get(Fault().status(200, std::string(100, 'x')).drip(1, 2ms));
    EXPECT_THAT(events, ElementsAre("200, no error"));
    EXPECT_EQ(body, QByteArray(100, 'x'));
}

TEST_F(JAControllerFaultsTest, aHeadOfManyKilobytesIsRead)
{
    get(Fault().status(200, "{}").fillerHeaders(128 << 10));
    EXPECT_THAT(events, ElementsAre("200, no error"));
    EXPECT_EQ(body, QByteArray("{}"));
    EXPECT_EQ(response->valueForHTTPHeaderField(QStringLiteral("X-Filler-100")).value_or(QString()).size(), 1024 - 16);
}

TEST_F(JAControllerFaultsTest, aHeadOfAMegabyteIsRefusedOnceAndHarmsNoOtherRequest)
{
    get(Fault().status(200, "{}").fillerHeaders(1 << 20));
    EXPECT_THAT(events, ElementsAre(testing::StartsWith("no response, NSURLErrorDomain ")));
    EXPECT_EQ(body, std::nullopt);
    EXPECT_EQ(server.requestCount(), 1u);
    get(Fault().status(200, "{}"));
    EXPECT_THAT(events, ElementsAre("200, no error"));
    EXPECT_EQ(server.requestCount(), 2u);
}

TEST_F(JAControllerFaultsTest, aHeadThatIsTooLargeIsCalledThat)
{
    const auto expectRefusal = [this](const Fault& fault) {
        const std::size_t before = server.requestCount();
        get(fault);
        EXPECT_THAT(events, ElementsAre("no response, NSURLErrorDomain -1103"));
        EXPECT_EQ(error.value_or(tljira::Error()).localizedDescription(),
                  QStringLiteral("The head of the server’s answer is too large."));
        EXPECT_EQ(server.requestCount(), before + 1);
    };
    expectRefusal(Fault().status(200, "{}").fillerHeaders(257 << 10));
    expectRefusal(Fault().status(200, "{}").fillerHeaders(1 << 20));
    expectRefusal(Fault().status(200, "{}").header("X-Long", std::string(200 << 10, 'x')));
    expectRefusal(Fault().status(200, "{}").header("X-Long", std::string(1 << 20, 'x')));
}

TEST_F(JAControllerFaultsTest, anAnswerLargerThanMemoryShouldHoldIsCalledThat)
{
    get(Fault().status(200, std::string((64 << 20) + 1, ' '), "application/json").gzip());
    EXPECT_THAT(events, ElementsAre("no response, NSURLErrorDomain -1103"));
    EXPECT_EQ(error.value_or(tljira::Error()).localizedDescription(),
              QStringLiteral("The server’s answer is larger than 64 MiB."));
    get(Fault().status(200, std::string((4 << 20) + 1, ' '), "image/png"));
    EXPECT_THAT(events, ElementsAre("no response, NSURLErrorDomain -1103"));
    get(Fault().status(200, std::string(64 << 20, ' '), "application/json"));
    EXPECT_THAT(events, ElementsAre("200, no error"));
}

TEST_F(JAControllerFaultsTest, anEncodingThatIsNoneChangesNothing)
{
    for (const char* encoding : {"UTF-8", "none"}) {
        get(Fault().status(200, "{}", "application/json").header("Content-Encoding", encoding));
        EXPECT_THAT(events, ElementsAre("200, no error")) << encoding;
        EXPECT_EQ(body, QByteArray("{}"));
    }
}

TEST_F(JAControllerFaultsTest, loginWhoseAnswerBreaksOffTellsOnlyTheCaller)
{
    server.misbehave(Match(), Fault().reset(Point::responseBody(10)));
    client->login(QStringLiteral("anna"), QStringLiteral("secret"), loginCallBack());
    ASSERT_TRUE(waitForEvents(1));
    EXPECT_THAT(events, ElementsAre("nil, NSURLErrorDomain -1005"));
    EXPECT_EQ(JALoginObject::restoreSession(), std::nullopt);
    EXPECT_EQ(client->jaSession(), nullptr);
}

TEST_F(JAControllerFaultsTest, checkOfTheSessionWhoseAnswerBreaksOffIsInvalid)
{
    logIn();
    server.misbehave(Match(), Fault().close(Point::responseHead(30)));
    client->updateSession(loginCallBack());
    ASSERT_TRUE(waitForEvents(2));
    EXPECT_THAT(events, ElementsAre("invalid", "nil, NSURLErrorDomain -1005"));
}

TEST_F(JAControllerFaultsTest, logoutWhoseAnswerBreaksOffTellsTheCallerTwice)
{
    logIn();
    server.misbehave(Match(), Fault().reset(Point::responseHead(0)));
    client->logout(completionCallBack());
    ASSERT_TRUE(waitForEvents(3));
    EXPECT_THAT(events, ElementsAre("NSURLErrorDomain -1005", "invalid", "invalid sessioin 0"));
}

TEST_F(JAControllerFaultsTest, issueWithWrongTypesUnderEveryKeyHasRecordsOfNothing)
{
    for (const char* value : {"null", "true", "7", "\"text\"", "[]", "{}"}) {
        const std::string text(value);
        std::string attachment = "{";
        for (const char* key : {"id", "filename", "created", "size", "content"})
            attachment += std::string(attachment.size() > 1 ? "," : "") + "\"" + key + "\":" + text;
        events.clear();
        server.behave();
        server.misbehave(Match(), Fault().status(200, R"({"fields": {"attachment": [)" + attachment + "}]}}"));
        client->getIssueObject(QStringLiteral("ABC-1"), issueCallBack());
        ASSERT_TRUE(waitForEvents(1));
        EXPECT_THAT(events, ElementsAre("issue, no error"));
        ASSERT_EQ(issue->attachments().size(), 1u);
        EXPECT_EQ(issue->attachments()[0]->date(), std::nullopt);
        EXPECT_EQ(issue->attachments()[0]->name().has_value(), text == "\"text\"");
    }
}

} // namespace
