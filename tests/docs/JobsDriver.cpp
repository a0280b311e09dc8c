// A host that has the functions of the README, and a user that does the jobs in the windows:
//
//     host ROUTE
//
// It attaches a document twice, with a wrong key at first, fetches it twice, and says what came of it.

#include "HostUser.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLoggingCategory>

#include <cstdio>
#include <cstdlib>

void attach(const QString& name, const QByteArray& bytes, QWidget* window);
void fetch(QWidget* window, const std::function<void(const QString& path)>& open);
void keepTheLogQuiet();

namespace {

/// Sends it, and says what the sheet shows at the end.
void pressUpload(JAUploadBodyViewController& body, const QString& key)
{
    waitFor("the upload panel", [&] { return isUsable(body.taskTextField()); });
    body.taskTextField()->setText(key);
    body.uploadFileButton()->click();
    waitFor("the end of the upload", [&] { return !body.isUploading(); });
    const auto sheet = body.jaUploadingWindow();
    std::printf("upload to %s: %s\n", qPrintable(key),
                sheet->errorView()->isVisible() ? "an error" : qPrintable(sheet->sizeLabel()->text()));
    sheet->cancelButton()->click();
}

void attachAsUser(QWidget& window)
{
    attach(QStringLiteral("plan.tessaloom"), "silk", &window);
    const auto upload = openWindow<TLJiraUpload>();
    logIn(*upload->jaLoginWindow());
    pressUpload(*upload->bodyViewController(), QStringLiteral("DEMO-99"));
    pressUpload(*upload->bodyViewController(), QStringLiteral("DEMO-1"));
    upload->window()->close();
}

QString fetchAsUser(QWidget& window)
{
    QString document;
    fetch(&window, [&document](const QString& path) { document = path; });
    const auto entry = openWindow<JMWindowController>();
    const auto body = entry->bodyViewController();
    waitFor("the download panel", [&] { return isUsable(body->getAttachButton()); });
    body->issueKeyTextField()->setText(QStringLiteral("DEMO-1"));
    body->getAttachButton()->click();
    const auto list = body->jaListAttachedWindow();
    const auto cell = [&] { return dynamic_cast<JAAttachedCell*>(list->tableView()->cellAtRow(0)); };
    waitFor("the first row", [&] { return cell() && isUsable(cell()->downloadButton()); });
    cell()->downloadButton()->click();
    waitFor("the end of the download", [&] { return list->isDone(); });
    list->cancalAction(nullptr);
    waitFor("the document", [&] { return !document.isEmpty(); });
    return document;
}

void tellOf(const QString& document)
{
    QFile file(document);
    const QByteArray bytes = file.open(QFile::ReadOnly) ? file.readAll() : QByteArray("nothing");
    std::printf("fetched %s: %s\n", qPrintable(QFileInfo(document).fileName()), bytes.constData());
}

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("docs-host"));
    QApplication::setQuitOnLastWindowClosed(false);
    tljira::URLSessionConfiguration::setDefaultRoutes({QString::fromLocal8Bit(argv[1])});
    keepTheLogQuiet();
    QWidget window;
    window.show();
    attachAsUser(window);
    const QString first = fetchAsUser(window);
    const QString second = fetchAsUser(window);
    for (const QString& document : {first, second}) {
        tellOf(document);
        QFileInfo(document).dir().removeRecursively();
    }
    return 0;
}
