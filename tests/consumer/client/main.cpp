// Attaches a document to an issue and fetches it again, without windows:
//
//     client-consumer ROUTE DOCUMENT FETCHED

#include <TLJiraController/TLJiraControllerClient.h>

#include <QCoreApplication>
#include <QFile>
#include <QTimer>

#include <cstdio>

namespace {

const QString issueKey = QStringLiteral("ABC-1");

void end(const std::optional<tljira::Error>& error)
{
    if (error)
        std::fprintf(stderr, "%s\n", qPrintable(error->localizedDescription()));
    QCoreApplication::exit(error ? 1 : 0);
}

void fetch(const JAIssueObject& issue, const QString& place)
{
    const auto download = [place](qint64, qint64, const std::optional<tljira::Error>& error, bool isFinished) {
        // Once this call has returned the file is at its place.
        if (error || isFinished)
            QTimer::singleShot(0, [error] { end(error); });
    };
    JAController::sharedInstance()->downloadFile(issue.attachments().back()->downloadLink(), download, place);
}

void upload(const QString& document, const QString& place)
{
    const auto client = JAController::sharedInstance();
    const auto sent = [client, place](const std::optional<tljira::Error>& error) {
        if (error)
            return end(error);
        client->getIssueObject(issueKey, [place](const auto& issue, const auto& problem) {
            if (problem)
                return end(problem);
            fetch(*issue, place);
        });
    };
    client->uploadFileInIssue(document, QStringLiteral("plan.tessaloom"), issueKey, sent, {});
}

} // namespace

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("client-consumer"));
    const QStringList arguments = QCoreApplication::arguments();
    tljira::URLSessionConfiguration::setDefaultRoutes({arguments.value(1)});

    const auto client = JAController::sharedInstance();
    client->setHost(QStringLiteral("http://jira.example.test"));
    client->login(QStringLiteral("anna"), QStringLiteral("secret"), [&](const auto& session, const auto& error) {
        if (!session)
            return end(error);
        upload(arguments.value(2), arguments.value(3));
    });
    return QCoreApplication::exec();
}
