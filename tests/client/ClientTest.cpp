#include "tests/client/ClientTest.h"

namespace tests {

namespace {

template <typename Record>
std::string outcome(const char* kind, const std::shared_ptr<Record>& record, const std::optional<tljira::Error>& error)
{
    return (record ? kind : std::string("nil")) + ", " + shortText(error);
}

} // namespace

std::string shortText(const std::optional<tljira::Error>& error)
{
    return error ? error->domain.toStdString() + " " + std::to_string(error->code) : "no error";
}

ClientTest::ClientTest(const standin::Options& options)
    : server(options)
{
    client = JAController::init();
    client->setJiraHost(QStringLiteral("http://jira.example.test"));
    client->setDelegate(delegate);
}

void ClientTest::logIn()
{
    bool isDone = false;
    client->login(QStringLiteral("anna"), QStringLiteral("secret"),
                  [&isDone](const auto& newSession, const auto& loginError) {
                      EXPECT_NE(newSession, nullptr) << shortText(loginError);
                      isDone = true;
                  });
    ASSERT_TRUE(waitUntil([&] { return isDone; }));
    events.clear();
    log.clear();
    server.forgetRequests();
}

void ClientTest::saveSession(const char* name, const char* value)
{
    const QJsonObject pair{{QStringLiteral("name"), QString::fromUtf8(name)},
                           {QStringLiteral("value"), QString::fromUtf8(value)}};
    JALoginObject::initWithDictionary({{QStringLiteral("session"), pair}});
}

QString ClientTest::writeFile(const char* name, const QByteArray& bytes) const
{
    tests::writeFile(path(name), bytes);
    return path(name);
}

bool ClientTest::waitForEvents(std::size_t count)
{
    const bool arrived = waitUntil([&] { return events.size() >= count; });
    drainMainQueue();
    return arrived;
}

bool ClientTest::waitForEnds(qsizetype count)
{
    const bool ended = waitUntil([&] { return log.lines().filter(QStringLiteral("Error task: ")).size() >= count; });
    drainMainQueue();
    return ended;
}

JAController::RequestCallBack ClientTest::requestCallBack()
{
    return [this](const auto& newBody, const auto& newError, const auto& newResponse) {
        body = newBody;
        error = newError;
        response = newResponse;
        events.push_back((response ? std::to_string(response->statusCode) : "no response") + ", " + shortText(error));
    };
}

JAController::LoginCallBack ClientTest::loginCallBack()
{
    return [this](const auto& newSession, const auto& newError) {
        session = newSession;
        error = newError;
        events.push_back(outcome("session", session, error));
    };
}

JAController::UserCallBack ClientTest::userCallBack()
{
    return [this](const auto& newUser, const auto& newError) {
        user = newUser;
        error = newError;
        events.push_back(outcome("user", user, error));
    };
}

JAController::IssueCallBack ClientTest::issueCallBack()
{
    return [this](const auto& newIssue, const auto& newError) {
        issue = newIssue;
        error = newError;
        events.push_back(outcome("issue", issue, error));
    };
}

JAController::CompletionCallBack ClientTest::completionCallBack()
{
    return [this](const auto& newError) {
        error = newError;
        events.push_back(shortText(error));
    };
}

JAController::DownloadCallBack ClientTest::downloadCallBack()
{
    return [this](qint64 count1, qint64 count2, const auto& newError, bool finished) {
        if (!finished && (count1 != 0 || count2 != 0))
            return;
        error = newError;
        events.push_back("(" + std::to_string(count1) + ", " + std::to_string(count2) + ", " + shortText(error) +
                         (finished ? ", YES)" : ", NO)"));
    };
}

} // namespace tests
