#include "client/JAController.h"
#include "platform/foundation/loading/URLSessionConfiguration.h"

#include <QCoreApplication>
#include <QLoggingCategory>

#include <cstdio>

namespace {

/// Asks for the next issue when the last one came.
void lookUp(int left)
{
    if (left == 0) {
        QCoreApplication::exit(0);
        return;
    }
    JAController::sharedInstance()->getIssueObject(
        QStringLiteral("SMALL-1"), [left](const auto& issue, const auto& error) {
            if (!issue) {
                std::fprintf(stderr, "%s\n", error ? qUtf8Printable(error->localizedDescription()) : "no issue");
                QCoreApplication::exit(1);
                return;
            }
            lookUp(left - 1);
        });
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("look-ups"));
    QLoggingCategory::setFilterRules(QStringLiteral("platform.log=false"));
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 4)
        return 2;
    const QString sessionValue = arguments[3].section(u'=', 1);
    tljira::URLSessionConfiguration::setDefaultRoutes({arguments[1]});
    JAController::sharedInstance()->setHost(QStringLiteral("http://jira.example.test/"));
    JALoginObject::initWithDictionary(
        {{QStringLiteral("session"), QJsonObject{{QStringLiteral("name"), QStringLiteral("JSESSIONID")},
                                                 {QStringLiteral("value"), sessionValue}}}});
    lookUp(arguments[2].toInt());
    return QCoreApplication::exec();
}
