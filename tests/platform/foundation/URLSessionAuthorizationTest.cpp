#include "tests/platform/foundation/SessionTest.h"

#include <QFile>
#include <QTemporaryDir>

namespace {

using standin::Fault;
using standin::Match;

/// What redirects make of a request to http://localhost/ that has an "Authorization".
class URLSessionAuthorizationTest : public tests::SessionTest
{
protected:
    URLSessionAuthorizationTest()
    {
        QFile file(folder.filePath(QStringLiteral("own.pem")));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(QByteArray::fromStdString(secure.certificate()));
        qputenv("SSL_CERT_FILE", file.fileName().toUtf8());

        auto configuration = tljira::URLSessionConfiguration::defaultSessionConfiguration();
        for (const char* place : {"localhost:80", "localhost:81", "other.example.test:80"})
            configuration.routes << QStringLiteral("%1:127.0.0.1:%2").arg(QLatin1String(place)).arg(server.port());
        configuration.routes << QStringLiteral("localhost:443:127.0.0.1:%1").arg(secure.port());
        session = tljira::URLSession::sessionWithConfiguration(
            configuration, std::shared_ptr<tljira::URLSessionDelegate>(anchor, this));
        for (standin::Server* each : {&server, &secure})
            each->misbehave(Match::on("/second"), Fault().status(200, "arrived"));
    }
    ~URLSessionAuthorizationTest() override { qunsetenv("SSL_CERT_FILE"); }

    /// "Authorization" and "Cookie" of the request that arrived behind a redirect to `address`.
    std::string carriedTo(const std::string& address)
    {
        server.forgetRequests();
        secure.forgetRequests();
        server.misbehave(Match::on("/first").once(), Fault().redirect(address, 302));
        tljira::URLRequest request(QStringLiteral("http://localhost/first"));
        request.setValue(QStringLiteral("Bearer T"), QStringLiteral("Authorization"));
        request.setValue(QStringLiteral("a=b"), QStringLiteral("Cookie"));
        run(request);
        EXPECT_EQ(body, QByteArray("arrived")) << address;
        const auto last = secure.requests().empty() ? server.lastRequest() : secure.lastRequest();
        return last.header("Authorization") + "|" + last.header("Cookie");
    }

    standin::Server secure{{.tls = standin::Tls::selfSigned}};
    QTemporaryDir folder;
};

TEST_F(URLSessionAuthorizationTest, staysWithSchemeHostAndPort)
{
    EXPECT_EQ(carriedTo("/second"), "Bearer T|a=b");
    EXPECT_EQ(carriedTo("http://LOCALHOST:80/second"), "Bearer T|a=b");
    EXPECT_EQ(carriedTo("http://localhost:81/second"), "|");
    EXPECT_EQ(carriedTo("http://other.example.test/second"), "|");
    // The user that the address itself names.
    EXPECT_EQ(carriedTo("http://localhost@other.example.test/second"), "Basic bG9jYWxob3N0Og==|");
}

TEST_F(URLSessionAuthorizationTest, doesNotStepUpAsASessionDoes)
{
    EXPECT_EQ(carriedTo("https://localhost/second"), "|a=b");
}

TEST_F(URLSessionAuthorizationTest, doesNotComeBackOnceItWasLeftBehind)
{
    server.misbehave(Match::on("/elsewhere"), Fault().redirect("http://localhost/second", 302));
    EXPECT_EQ(carriedTo("http://other.example.test/elsewhere"), "|");
}

} // namespace
