// Ends while a request of the shared client is under way.
//
//     client_exit_probe PORT WAY SESSION
//
// The server at 127.0.0.1:PORT is reached as http://jira.example.test/, SESSION is saved first, and WAY tells which
// request it is and how the process ends.

#include "client/JAController.h"
#include "platform/foundation/GlobalQueue.h"
#include "platform/foundation/MainQueue.h"
#include "tests/kit/HeldSystem.h"

#include <QCoreApplication>
#include <QSemaphore>
#include <QStringList>
#include <QTimer>

#include <cstdlib>

/// Where who looks for leaks finds what is held on purpose. Seen from everywhere, so that no optimisation removes it.
const void* heldToTheEnd = nullptr;

namespace {

void saveSession(const QString& value)
{
    const QJsonObject pair{{QStringLiteral("name"), QStringLiteral("JSESSIONID")}, {QStringLiteral("value"), value}};
    JALoginObject::initWithDictionary({{QStringLiteral("session"), pair}});
}

void upload()
{
    JAController::sharedInstance()->uploadFileInIssue(QCoreApplication::applicationFilePath(), QStringLiteral("a.bin"),
                                                      QStringLiteral("ABC-1"), nullptr,
                                                      [](qint64, qint64) { QCoreApplication::exit(0); });
}

void download(const std::function<void()>& end)
{
    JAController::sharedInstance()->downloadFile(
        QStringLiteral("http://jira.example.test/large"), [end](qint64, qint64, const auto&, bool) { end(); },
        qEnvironmentVariable("HOME") + QStringLiteral("/saved"));
}

/// As on a disk that never answers.
void getStuck()
{
    tljira::GlobalQueue::instance().addOperation([] {
        tljira::MainQueue::instance().addOperation([] { QCoreApplication::exit(0); });
        QSemaphore never;
        never.acquire();
    });
}

void exitWhen(const std::function<bool()>& condition)
{
    auto* timer = new QTimer(QCoreApplication::instance());
    QObject::connect(timer, &QTimer::timeout, timer, [condition] {
        if (condition())
            QCoreApplication::exit(0);
    });
    timer->start(1);
}

/// With a name server that is silent to the very end.
void lookUp()
{
    heldToTheEnd = new tests::HeldLookUp("unanswered.example.test");
    JAController::sharedInstance()->sendGetRequest(QStringLiteral("http://unanswered.example.test/"), nullptr);
    exitWhen([] { return tests::HeldLookUp::waiting() == 1; });
}

/// With a disk that is silent to the very end.
void uploadFromSilentDisk()
{
    const QString path = QCoreApplication::applicationFilePath();
    heldToTheEnd = new tests::HeldFile(path, 4096);
    JAController::sharedInstance()->uploadFileInIssue(path, QStringLiteral("a.bin"), QStringLiteral("ABC-1"), nullptr,
                                                      nullptr);
    exitWhen([] { return tests::HeldFile::waiting() == 1; });
}

void start(const QString& way)
{
    if (way == u"upload")
        upload();
    else if (way == u"upload-from-pool")
        tljira::GlobalQueue::instance().addOperation(upload);
    else if (way == u"stuck-operation")
        getStuck();
    else if (way == u"upload-from-silent-disk")
        uploadFromSilentDisk();
    else if (way == u"look-up")
        lookUp();
    else if (way == u"download")
        download([] { QCoreApplication::exit(0); });
    else if (way == u"download-exit-in-callback")
        download([] { std::exit(0); });
    else if (way == u"request-return-at-once")
        QTimer::singleShot(0, [] { QCoreApplication::exit(0); });
    else if (way == u"request-exit-at-once")
        QTimer::singleShot(0, [] { std::exit(0); });
    JAController::sharedInstance()->getCurrentUser(nullptr);
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("tests"));
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 4)
        return 2;
    tljira::URLSessionConfiguration::setDefaultRoutes(
        {QStringLiteral("jira.example.test:80:127.0.0.1:") + arguments[1]});
    JAController::sharedInstance()->setHost(QStringLiteral("http://jira.example.test"));
    saveSession(arguments[3]);
    start(arguments[2]);
    return QCoreApplication::exec();
}
