#pragma once

#include "platform/foundation/loading/URLSession.h"
#include "standin/Server.h"
#include "tests/kit/LogCapture.h"
#include "tests/kit/Printers.h"
#include "tests/kit/WaitUntil.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace tests {

/// A session, a server to talk to, and what the session tells of its tasks as `events`, in order.
class SessionTest : public testing::Test, public tljira::URLSessionDelegate
{
protected:
    explicit SessionTest(const standin::Options& options = {})
        : server(options)
        , session(tljira::URLSession::sessionWithConfiguration(
              tljira::URLSessionConfiguration::defaultSessionConfiguration(),
              std::shared_ptr<tljira::URLSessionDelegate>(anchor, this)))
    {
    }

    /// The next requests go through a session of this configuration.
    void use(const tljira::URLSessionConfiguration& configuration)
    {
        session = tljira::URLSession::sessionWithConfiguration(
            configuration, std::shared_ptr<tljira::URLSessionDelegate>(anchor, this));
        events.clear();
    }

    tljira::URLRequest requestFor(const char* path, double timeout = 60) const
    {
        return tljira::URLRequest(QString::fromStdString(server.url()) + QString::fromUtf8(path),
                                  tljira::URLRequestCachePolicy::UseProtocolCachePolicy, timeout);
    }

    std::shared_ptr<tljira::URLSessionDataTask> dataTask(const tljira::URLRequest& request)
    {
        return session->dataTaskWithRequest(
            request, [this](const auto& newBody, const auto& newResponse, const auto& newError) {
                body = newBody ? newBody->bytes() : std::nullopt;
                response = newResponse;
                error = newError;
                events.push_back(newResponse ? std::to_string(newResponse->statusCode) : "no response");
            });
    }

    /// Starts the request and runs until the session has told of its end.
    void run(const tljira::URLRequest& request)
    {
        const std::size_t before = ends;
        dataTask(request)->resume();
        EXPECT_TRUE(waitUntil([&] { return ends > before; }));
        drainMainQueue();
    }

    void didSendBodyData(const std::shared_ptr<tljira::URLSessionTask>&, qint64 bytesSent, qint64 totalBytesSent,
                         qint64 totalBytesExpectedToSend) override
    {
        sentIncrements += bytesSent;
        sent.emplace_back(totalBytesSent, totalBytesExpectedToSend);
    }
    void didWriteData(const std::shared_ptr<tljira::URLSessionDownloadTask>&, qint64 bytesWritten,
                      qint64 totalBytesWritten, qint64 totalBytesExpectedToWrite) override
    {
        writtenIncrements += bytesWritten;
        written.emplace_back(totalBytesWritten, totalBytesExpectedToWrite);
    }
    void didFinishDownloadingToURL(const std::shared_ptr<tljira::URLSessionDownloadTask>&,
                                   const QString& newLocation) override
    {
        location = newLocation;
        events.push_back("file");
    }
    void didCompleteWithError(const std::shared_ptr<tljira::URLSessionTask>&,
                              const std::optional<tljira::Error>& newError) override
    {
        ++ends;
        error = newError;
        events.push_back(newError ? "end " + std::to_string(newError->code) : "end");
    }

    LogCapture log;
    standin::Server server;
    const std::shared_ptr<int> anchor = std::make_shared<int>(0);
    std::shared_ptr<tljira::URLSession> session;

    std::vector<std::string> events;
    std::size_t ends = 0;
    std::optional<QByteArray> body;
    std::optional<tljira::HTTPURLResponse> response;
    std::optional<tljira::Error> error;
    std::vector<std::pair<qint64, qint64>> sent;
    std::vector<std::pair<qint64, qint64>> written;
    qint64 sentIncrements = 0;
    qint64 writtenIncrements = 0;
    QString location;
};

} // namespace tests
