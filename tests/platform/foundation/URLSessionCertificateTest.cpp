#include "tests/platform/foundation/SessionTest.h"

#include <netinet/in.h>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>

namespace {

using testing::ElementsAre;

/// A server whose certificate nobody vouches for gets no byte of a request.
class URLSessionCertificateTest : public tests::SessionTest, public testing::WithParamInterface<standin::Tls>
{
protected:
    URLSessionCertificateTest()
        : SessionTest(optionsFor(GetParam()))
    {
    }

    static standin::Options optionsFor(standin::Tls tls)
    {
        standin::Options options;
        options.tls = tls;
        return options;
    }
};

TEST_P(URLSessionCertificateTest, FailsTheRequest)
{
    const QString address = QStringLiteral("https://localhost:%1/").arg(server.port());
    run(tljira::URLRequest(address));
    EXPECT_THAT(events, ElementsAre("no response", "end -1202"));
    EXPECT_EQ(error->localizedDescription(),
              QStringLiteral("The certificate for this server is invalid. You might be connecting to a server that is "
                             "pretending to be “localhost” which could put your confidential information at risk."));
    EXPECT_EQ(server.requestCount(), 0u);
}

TEST_P(URLSessionCertificateTest, FailsTheDownload)
{
    const QString address = QStringLiteral("https://localhost:%1/").arg(server.port());
    session->downloadTaskWithRequest(tljira::URLRequest(address))->resume();
    ASSERT_TRUE(tests::waitUntil([this] { return ends == 1; }));
    EXPECT_THAT(events, ElementsAre("end -1202"));
    EXPECT_EQ(server.requestCount(), 0u);
}

INSTANTIATE_TEST_SUITE_P(OfNoAuthority, URLSessionCertificateTest,
                         testing::Values(standin::Tls::selfSigned, standin::Tls::expired));

/// Answers whatever the first connection says with plain text.
class PlainServer
{
public:
    PlainServer()
    {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        socklen_t size = sizeof address;
        EXPECT_EQ(bind(m_listener, reinterpret_cast<sockaddr*>(&address), size), 0);
        EXPECT_EQ(listen(m_listener, 1), 0);
        EXPECT_EQ(getsockname(m_listener, reinterpret_cast<sockaddr*>(&address), &size), 0);
        m_port = ntohs(address.sin_port);
        m_thread = std::thread([this] {
            const int connection = accept(m_listener, nullptr, nullptr);
            const std::string text = "HTTP/1.1 400 Bad Request\r\n\r\n";
            EXPECT_EQ(write(connection, text.data(), text.size()), static_cast<ssize_t>(text.size()));
            char rest[4096];
            while (read(connection, rest, sizeof rest) > 0)
                ;
            close(connection);
        });
    }
    ~PlainServer()
    {
        m_thread.join();
        close(m_listener);
    }

    int port() const { return m_port; }

private:
    const int m_listener = socket(AF_INET, SOCK_STREAM, 0);
    int m_port = 0;
    std::thread m_thread;
};

class URLSessionPlainServerTest : public tests::SessionTest
{
};

TEST_F(URLSessionPlainServerTest, FailsARequestThatWantsASecureConnection)
{
    const PlainServer plain;
    run(tljira::URLRequest(QStringLiteral("https://localhost:%1/").arg(plain.port())));
    EXPECT_THAT(events, ElementsAre("no response", "end -1200"));
    EXPECT_EQ(error->localizedDescription(),
              QStringLiteral("An SSL error has occurred and a secure connection to the server cannot be made."));
}

} // namespace
