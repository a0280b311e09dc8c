// upload_host PORT FILE quit|exit: logs in at the server, uploads the file to ABC-1 through the real panel and, at a
// line on its standard input, quits once, or leaves the process, whatever is going on.

#include "client/JAController.h"
#include "platform/foundation/loading/URLSessionConfiguration.h"
#include "platform/toolkit/nib/FrameworkBundle.h"
#include "upload/JAUploadBodyViewController.h"

#include <QApplication>
#include <QSocketNotifier>

#include <cstdlib>

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    tljira::URLSessionConfiguration::setDefaultRoutes(
        {QStringLiteral("jira.example.test:80:127.0.0.1:") + arguments.at(1)});

    const auto panel = JAUploadBodyViewController::initWithNibName(QStringLiteral("JAUploadBodyViewController"),
                                                                   tljira::frameworkBundle());
    const auto window = tljira::Window::create(QStringLiteral("Upload"), panel->view());
    window->makeKeyAndOrderFront();
    panel->setNewPathFile(arguments.at(2), QStringLiteral("Plan.tessaloom"));
    panel->taskTextField()->setText(QStringLiteral("ABC-1"));

    const auto& client = JAController::sharedInstance();
    client->setHost(QStringLiteral("http://jira.example.test/"));
    client->login(QStringLiteral("anna"), QStringLiteral("secret"),
                  [&panel](const auto&, const auto&) { panel->uploadFileButton()->click(); });

    QSocketNotifier input(0, QSocketNotifier::Read);
    QObject::connect(&input, &QSocketNotifier::activated, [&arguments, &input] {
        input.setEnabled(false);
        if (arguments.at(3) == QStringLiteral("exit"))
            std::exit(0); // NOLINT(concurrency-mt-unsafe)
        QApplication::quit();
    });
    return QApplication::exec();
}
