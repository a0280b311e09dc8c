#include "tests/kit/JiraTest.h"

namespace tests {

JiraTest::JiraTest(const standin::Options& options)
    : server(options)
    , client(JAController::sharedInstance())
{
}

void JiraTest::logIn()
{
    client->setHost(Jira::address);
    std::optional<bool> isAccepted;
    client->login(QString::fromLatin1(Jira::user), QString::fromLatin1(Jira::password),
                  [&isAccepted](const auto& session, const auto&) { isAccepted = session != nullptr; });
    ASSERT_TRUE(waitUntil([&] { return isAccepted.has_value(); }));
    ASSERT_TRUE(*isAccepted);
    forgetThePast();
}

void JiraTest::forgetThePast()
{
    drainMainQueue();
    log.clear();
    server.forgetRequests();
}

void JiraTest::waitForHeldExchange()
{
    ASSERT_TRUE(waitUntil([this] { return server.heldCount() == 1; }));
}

} // namespace tests
