// A host of its own, whose user is logged in:
//
//     jobs_host PORT JOB
//
// JOB is one of
//
//     attach      sends 1 MB and says how that ended
//     quit        quits in the middle of that
//     leave       lets the application object go in the middle of that, without an event loop that could quit
//     crash       is killed while it writes the copy

#include "client/JAController.h"
#include "constants/JAConstants.h"
#include "framework/TLJiraJobs.h"
#include "platform/foundation/settings/UserDefaults.h"
#include "shell/TLJiraUpload.h"
#include "tests/kit/Jira.h"
#include "tests/kit/WaitUntil.h"

#include <QApplication>

#include <csignal>
#include <cstdio>

namespace {

constexpr int size = 1 << 20;

bool logIn()
{
    const auto client = JAController::sharedInstance();
    client->setHost(tests::Jira::address);
    bool isLoggedIn = false;
    client->login(QString::fromLatin1(tests::Jira::user), QString::fromLatin1(tests::Jira::password),
                  [&](const auto& session, const auto&) { isLoggedIn = session != nullptr; });
    return tests::waitUntil([&] { return isLoggedIn; });
}

void tellEnd(const TLJiraJobs::Result& result)
{
    const char* const names[] = {"done", "cancelled", "failed"};
    std::printf("%s %s\n", names[static_cast<int>(result.outcome)],
                result.error ? qUtf8Printable(result.error->localizedDescription()) : "");
    std::fflush(stdout);
}

bool writeAndDie(QIODevice& device)
{
    device.write("half");
    std::raise(SIGKILL);
    return false;
}

bool press(JAUploadBodyViewController& panel)
{
    if (!tests::waitUntil([&] { return panel.taskTextField()->isVisible(); }))
        return false;
    panel.taskTextField()->setText(QStringLiteral("ABC-1"));
    panel.uploadFileButton()->click();
    return true;
}

int work(const QString& job)
{
    const TLJiraJobs::Document bytes(QStringLiteral("plan.tessaloom"), QByteArray(size, 'w'));
    const TLJiraJobs::Document deadly(QStringLiteral("plan.tessaloom"), writeAndDie);
    TLJiraJobs::attach(job == u"crash" ? deadly : bytes, nullptr, tellEnd);
    const auto upload = std::dynamic_pointer_cast<TLJiraUpload>(JAController::sharedInstance()->delegate());
    JAUploadBodyViewController& panel = *upload->bodyViewController();
    if (!press(panel))
        return 1;
    if (job == u"attach") {
        tests::waitUntil([&] { return !panel.isUploading(); });
        upload->window()->close();
        tests::drainMainQueue();
        return 0;
    }
    const auto isHalfSent = [&] { return panel.jaUploadingWindow()->uploadingProgressBar()->value() > 1; };
    if (!tests::waitUntil(isHalfSent))
        return 1;
    if (job == u"quit") {
        QMetaObject::invokeMethod(qApp, &QApplication::quit, Qt::QueuedConnection);
        return QApplication::exec();
    }
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("tests"));
    const QStringList arguments = QApplication::arguments();
    tests::Jira::routeTo(arguments.value(1).toInt());
    tljira::UserDefaults::standardUserDefaults().setObject(true, kClearCache);
    return logIn() ? work(arguments.value(2)) : 1;
}
