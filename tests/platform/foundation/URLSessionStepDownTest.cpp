#include "tests/platform/foundation/SessionTest.h"

#include <QFile>
#include <QTemporaryDir>

namespace {

using standin::Fault;
using standin::Match;
using testing::ElementsAre;

/// A server over TLS sends requests on to the other one, which everybody on the way can listen to.
class URLSessionStepDownTest : public tests::SessionTest
{
protected:
    URLSessionStepDownTest()
    {
        QFile file(folder.filePath(QStringLiteral("own.pem")));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(QByteArray::fromStdString(secure.certificate()));
        qputenv("SSL_CERT_FILE", file.fileName().toUtf8());
        server.misbehave(Match(), Fault().status(200, "arrived"));
    }
    ~URLSessionStepDownTest() override { qunsetenv("SSL_CERT_FILE"); }

    void redirect(int status)
    {
        events.clear();
        server.forgetRequests();
        secure.behave();
        secure.misbehave(Match(),
                         Fault().redirect("http://localhost:" + std::to_string(server.port()) + "/plain", status));
    }
    tljira::URLRequest secureRequest(const char* method) const
    {
        tljira::URLRequest request(QStringLiteral("https://localhost:%1/first").arg(secure.port()));
        request.HTTPMethod = QString::fromLatin1(method);
        return request;
    }
    void expectRefusal(const tljira::URLRequest& request)
    {
        run(request);
        EXPECT_THAT(events, ElementsAre("no response", "end -1022"));
        EXPECT_EQ(error.value_or(tljira::Error()).localizedDescription(),
                  QStringLiteral("The server sends this request on from https to http, where others can read it. "
                                 "Nothing was sent there."));
        EXPECT_TRUE(server.requests().empty());
    }

    standin::Server secure{{.tls = standin::Tls::selfSigned}};
    QTemporaryDir folder;
};

TEST_F(URLSessionStepDownTest, isRefusedForABody)
{
    for (const int status : {301, 302, 303, 307, 308}) {
        SCOPED_TRACE(status);
        redirect(status);
        tljira::URLRequest request = secureRequest("POST");
        request.HTTPBody = tljira::Data("password");
        expectRefusal(request);
    }
}

TEST_F(URLSessionStepDownTest, isRefusedForABodyThatAnEarlierRedirectDropped)
{
    redirect(302);
    secure.behave();
    secure.misbehave(Match::on("/first"), Fault().redirect("/second", 303));
    secure.misbehave(Match(), Fault().redirect("http://localhost:" + std::to_string(server.port()) + "/plain"));
    tljira::URLRequest request = secureRequest("POST");
    request.HTTPBody = tljira::Data("password");
    expectRefusal(request);
}

TEST_F(URLSessionStepDownTest, isRefusedForCredentials)
{
    for (const char* field : {"Cookie", "authorization"}) {
        SCOPED_TRACE(field);
        redirect(302);
        tljira::URLRequest request = secureRequest("GET");
        request.setValue(QStringLiteral("secret"), QString::fromLatin1(field));
        expectRefusal(request);
    }
}

TEST_F(URLSessionStepDownTest, isFollowedWithNothingToLoseAndWithoutTheJar)
{
    secure.misbehave(Match::next(), Fault().status(200, "").header("Set-Cookie", "own=1; Path=/"));
    run(secureRequest("GET"));
    redirect(307);
    run(secureRequest("GET"));
    EXPECT_THAT(events, ElementsAre("200", "end"));
    EXPECT_EQ(secure.lastRequest().header("Cookie"), "own=1");
    ASSERT_EQ(server.requests().size(), 1U);
    EXPECT_EQ(server.lastRequest().headerCount("Cookie"), 0);
}

TEST_F(URLSessionStepDownTest, isNoneFromPlainToPlain)
{
    server.behave();
    server.misbehave(Match::on("/first"), Fault().redirect("/second", 307));
    server.misbehave(Match(), Fault().status(200, "arrived"));
    tljira::URLRequest request = requestFor("first");
    request.HTTPMethod = QStringLiteral("POST");
    request.HTTPBody = tljira::Data("body");
    run(request);
    EXPECT_EQ(server.lastRequest().body, "body");
}

} // namespace
