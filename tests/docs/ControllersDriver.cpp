// A host that has the functions of docs/integration.md for the controllers, and a user that does the jobs in the
// windows:
//
//     host ROUTE FOLDER quiet|loud
//
// What is fetched comes into the folder. Without the README's call for silence, "loud", only a document is attached.

#include "HostUser.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLoggingCategory>
#include <QTimer>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>

[[nodiscard]] std::shared_ptr<TLJiraUpload> attach(const QString& name, const QByteArray& bytes);
std::optional<QString> fetch(const QDir& folder);
void keepTheLogQuiet();

namespace {

std::shared_ptr<TLJiraUpload> attached(const QByteArray& bytes)
{
    auto upload = attach(QStringLiteral("plan.tessaloom"), bytes);
    if (!upload)
        std::exit(1);
    return upload;
}

QString folderOfCopy(const TLJiraUpload& upload)
{
    return QFileInfo(upload.path().value_or(QString())).path();
}

void tellWhetherGone(const char* what, const QString& folder)
{
    std::printf("%s is %s\n", what, QFileInfo::exists(folder) ? "still there" : "gone");
}

void pressUpload(const TLJiraUpload& upload)
{
    const auto body = upload.bodyViewController();
    waitFor("the upload panel", [&] { return isUsable(body->taskTextField()); });
    body->taskTextField()->setText(QStringLiteral("DEMO-1"));
    body->uploadFileButton()->click();
}

/// With the panel alone, which is all that is left where the host has let go of the window.
void waitForTheEnd(const JAUploadBodyViewController& body)
{
    const auto sheet = body.jaUploadingWindow();
    waitFor("the end of the upload", [&] { return sheet->cancelButton()->text() == QStringLiteral("Close"); });
    std::printf("upload: %s\n", qPrintable(sheet->sizeLabel()->text()));
    sheet->cancelButton()->click();
}

void attachAsUser()
{
    const auto upload = attached("wool");
    logIn(*upload->jaLoginWindow());
    pressUpload(*upload);
    waitForTheEnd(*upload->bodyViewController());
    tellWhetherGone("the copy", folderOfCopy(*upload));
    upload->window()->close();
}

void cancelAsUser()
{
    auto upload = attached("wool");
    const QString folder = folderOfCopy(*upload);
    waitFor("the upload panel", [&] { return isUsable(upload->bodyViewController()->cancelButton()); });
    upload->bodyViewController()->cancelButton()->click();
    waitFor("the end of the window", [&] { return !upload->window()->isVisible(); });
    upload.reset();
    tellWhetherGone("the copy that was not sent", folder);
}

void letGoOfTheUploadUnderWay()
{
    auto upload = attached("silk");
    const auto body = upload->bodyViewController();
    pressUpload(*upload);
    upload.reset();
    waitForTheEnd(*body);
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
    const auto cell = [&] { return dynamic_cast<JAAttachedCell*>(list->tableView()->cellAtRow(0)); };
    waitFor("the first row", [&] { return cell() && isUsable(cell()->downloadButton()); });
    cell()->downloadButton()->click();
    waitFor("the end of the download",
            [&] { return list->isDone() && QFile::exists(list->path().value_or(QString())); });
    list->cancalAction(nullptr);
}

/// Where it came to, and what is in it.
void tellOf(const std::optional<QString>& document)
{
    QFile file(document.value_or(QString()));
    const QByteArray bytes = file.open(QFile::ReadOnly) ? file.readAll() : QByteArray("nothing");
    std::printf("fetched %s: %s\n", qPrintable(QFileInfo(file.fileName()).fileName()), bytes.constData());
}

void runAllJobs(const QString& folder)
{
    attachAsUser();
    cancelAsUser();
    letGoOfTheUploadUnderWay();
    std::vector<std::optional<QString>> documents;
    for (int time = 0; time < 2; ++time) {
        QTimer::singleShot(0, qApp, fetchAsUser);
        documents.push_back(fetch(QDir(folder)));
    }
    for (const auto& document : documents)
        tellOf(document);
}

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("docs-host"));
    QApplication::setQuitOnLastWindowClosed(false);
    tljira::URLSessionConfiguration::setDefaultRoutes({QString::fromLocal8Bit(argv[1])});
    if (std::strcmp(argv[3], "loud") == 0) {
        attachAsUser();
        return 0;
    }

    const QLoggingCategory own("host.own", QtInfoMsg);
    QLoggingCategory::setFilterRules(QStringLiteral("host.own.debug=true"));
    keepTheLogQuiet();
    if (own.isDebugEnabled())
        std::puts("the host's own rules hold");
    runAllJobs(QString::fromLocal8Bit(argv[2]));
    return 0;
}
