#include "tests/platform/foundation/SessionTest.h"

namespace {

using standin::Fault;
using standin::Match;
using testing::ElementsAre;

class URLSessionRedirectTest : public tests::SessionTest
{
protected:
    standin::RecordedRequest redirected(int status, const char* method)
    {
        server.behave();
        server.misbehave(Match::on("/first"), Fault().redirect("/second", status));
        server.misbehave(Match(), Fault().status(200, "arrived"));
        tljira::URLRequest request = requestFor("first");
        request.HTTPMethod = QString::fromLatin1(method);
        if (request.HTTPMethod != u"GET") {
            request.setValue(QStringLiteral("text/plain"), QStringLiteral("Content-Type"));
            request.HTTPBody = tljira::Data("body");
        }
        run(request);
        EXPECT_EQ(body, QByteArray("arrived"));
        return server.lastRequest();
    }
};

TEST_F(URLSessionRedirectTest, turnsAPostIntoAGetWithoutABody)
{
    for (const int status : {301, 302, 303}) {
        const auto request = redirected(status, "POST");
        EXPECT_EQ(request.method, "GET") << status;
        EXPECT_EQ(request.target, "/second");
        EXPECT_EQ(request.body, "");
        EXPECT_EQ(request.headerCount("Content-Length"), 0);
        EXPECT_EQ(request.headerCount("Content-Type"), 0);
    }
}

TEST_F(URLSessionRedirectTest, saysNothingOfALostBodyAtLaterAddresses)
{
    server.misbehave(Match::on("/first"), Fault().redirect("/second", 302));
    server.misbehave(Match::on("/second"), Fault().redirect("/third", 303));
    server.misbehave(Match(), Fault().status(200, "arrived"));
    tljira::URLRequest request = requestFor("first");
    request.HTTPMethod = QStringLiteral("POST");
    request.setValue(QStringLiteral("text/plain"), QStringLiteral("Content-Type"));
    request.HTTPBody = tljira::Data("body");
    run(request);
    EXPECT_EQ(server.lastRequest().target, "/third");
    EXPECT_EQ(server.lastRequest().headerCount("Content-Type"), 0);
}

TEST_F(URLSessionRedirectTest, repeatsMethodAndBody)
{
    for (const int status : {307, 308}) {
        const auto request = redirected(status, "POST");
        EXPECT_EQ(request.method, "POST") << status;
        EXPECT_EQ(request.body, "body");
        EXPECT_EQ(request.header("Content-Type"), "text/plain");
    }
    EXPECT_EQ(redirected(302, "PUT").method, "PUT");
    EXPECT_EQ(redirected(303, "PUT").method, "GET");
}

TEST_F(URLSessionRedirectTest, followsTwentyAndNoMore)
{
    server.misbehave(Match::on("/first").limited(20), Fault().redirectToItself());
    server.misbehave(Match(), Fault().status(200, "arrived"));
    run(requestFor("first"));
    EXPECT_THAT(events, ElementsAre("200", "end"));
    EXPECT_EQ(server.requestCount(), 21u);

    events.clear();
    server.behave();
    server.misbehave(Match(), Fault().redirectToItself());
    run(requestFor("first"));
    EXPECT_THAT(events, ElementsAre("no response", "end -1007"));
}

TEST_F(URLSessionRedirectTest, neverLeavesForAFile)
{
    server.misbehave(Match(), Fault().redirect("file:///etc/hostname"));
    run(requestFor("first"));
    EXPECT_THAT(events, ElementsAre("no response", "end -1002"));
    EXPECT_EQ(body, std::nullopt);
}

} // namespace
