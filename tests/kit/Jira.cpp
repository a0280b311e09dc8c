#include "tests/kit/Jira.h"

#include "platform/foundation/loading/URLSessionConfiguration.h"

namespace tests {

const QString Jira::address = QStringLiteral("http://jira.example.test/");
const QString Jira::otherAddress = QStringLiteral("http://other.example.test/");
const QString Jira::deadAddress = QStringLiteral("http://dead.example.test/");

Jira::Jira(const standin::Options& options)
    : standin::Server(options)
{
    standin::User anna;
    anna.name = user;
    anna.password = password;
    anna.displayName = "Anna Lindqvist";
    anna.email = email;
    anna.apiToken = apiToken;
    anna.accessToken = accessToken;
    addUser(anna);
    addIssue(issue);
    routeTo(port());
}

void Jira::routeTo(int port)
{
    tljira::URLSessionConfiguration::setDefaultRoutes({QStringLiteral("jira.example.test:80:127.0.0.1:%1").arg(port),
                                                       QStringLiteral("jira.example.test:8080:127.0.0.1:%1").arg(port),
                                                       QStringLiteral("other.example.test:80:127.0.0.1:%1").arg(port),
                                                       QStringLiteral("dead.example.test:80:127.0.0.1:1")});
}

} // namespace tests
