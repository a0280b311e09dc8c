// A host that has the two jobs of the README, and a user that does them in the windows.

#include <TLJiraController/TLJiraController.h>

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QTimer>

#include <cstdio>
#include <cstdlib>
#include <functional>

std::shared_ptr<TLJiraUpload> attach(const QString& name, const QByteArray& bytes);
std::optional<QString> fetch();

namespace {

void waitFor(const char* what, const std::function<bool()>& condition)
{
    QElapsedTimer time;
    time.start();
    while (!condition()) {
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 50);
        if (time.elapsed() > 60'000) {
            std::printf("waited in vain for %s\n", what);
            std::exit(1);
        }
    }
}

template <typename Controller>
std::shared_ptr<Controller> openWindow()
{
    return std::dynamic_pointer_cast<Controller>(JAController::sharedInstance()->delegate());
}

bool isUsable(const QWidget* control)
{
    return control && control->isVisible() && control->isEnabled();
}

void logIn(JALoginWindow& form)
{
    waitFor("the login form", [&] { return isUsable(form.loginButton()); });
    form.hostTextField()->setText(QStringLiteral("http://jira.example.com"));
    form.emailTextField()->setText(QStringLiteral("anna"));
    form.passwordTextField()->setText(QStringLiteral("correct horse"));
    form.loginButton()->click();
}

void attachAsUser()
{
    const auto upload = attach(QStringLiteral("plan.tessaloom"), "wool");
    if (!upload)
        std::exit(1);
    logIn(*upload->jaLoginWindow());
    const auto body = upload->bodyViewController();
    waitFor("the upload panel", [&] { return isUsable(body->taskTextField()); });
    body->taskTextField()->setText(QStringLiteral("DEMO-1"));
    body->uploadFileButton()->click();
    const auto sheet = body->jaUploadingWindow();
    waitFor("the end of the upload", [&] { return sheet->cancelButton()->text() == QStringLiteral("Close"); });
    std::printf("upload: %s\n", qPrintable(sheet->sizeLabel()->text()));
    if (!QFileInfo::exists(QFileInfo(upload->path().value_or(QString())).path()))
        std::puts("the copy is gone");
    sheet->cancelButton()->click();
    upload->window()->close();
}

void fetchAsUser()
{
    const auto window = openWindow<JMWindowController>();
    const auto body = window->bodyViewController();
    waitFor("the download panel", [&] { return isUsable(body->getAttachButton()); });
    body->issueKeyTextField()->setText(QStringLiteral("DEMO-1"));
    body->getAttachButton()->click();
    const auto list = body->jaListAttachedWindow();
    waitFor("the list", [&] { return list->tableView()->isVisible() && !list->attachments().empty(); });
    QPushButton row;
    row.setProperty("tag", 0);
    list->downloadAction(&row);
    waitFor("the end of the download", [&] { return list->isDone(); });
    list->cancalAction(nullptr);
}

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("docs-host"));
    QApplication::setQuitOnLastWindowClosed(false);
    tljira::URLSessionConfiguration::setDefaultRoutes({QString::fromLocal8Bit(argv[1])});

    attachAsUser();
    QTimer::singleShot(0, &application, fetchAsUser);
    const std::optional<QString> document = fetch();
    if (!document)
        return 1;
    QFile file(*document);
    const QByteArray bytes = file.open(QFile::ReadOnly) ? file.readAll() : QByteArray("nothing");
    std::printf("fetched %s: %s\n", qPrintable(QFileInfo(*document).fileName()), bytes.constData());
    return 0;
}
