// A host with a download panel: fetches the attachment NAME of ABC-1 from the server at PORT under the saved session.
//
//     download_host PORT NAME         until the download has ended; prints "DONE" or the error, and the path
//     download_host PORT NAME quit    quits in the middle

#include "download/JADownloadBodyViewController.h"
#include "platform/toolkit/nib/FrameworkBundle.h"
#include "tests/download/DownloadTest.h"

#include <QApplication>

#include <cstdio>

namespace {

qint64 rowNamed(const JAListAttachedFilesWindow& list, const QString& name)
{
    return tests::shownTitles(list).indexOf(name);
}

bool hasEnded(const JAListAttachedFilesWindow& list)
{
    return list.isDone() || !list.downloadError()->text().isEmpty();
}

bool isUnderWay(const JAListAttachedFilesWindow& list)
{
    return list.downloadPercent()->text().endsWith(u'%');
}

void print(const JAListAttachedFilesWindow& list)
{
    const QString text = list.isDone() ? list.downloadPercent()->text() : list.downloadError()->text();
    std::printf("%s\n%s\n", qUtf8Printable(text), qUtf8Printable(list.path().value_or(QString())));
}

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("tests"));
    const QStringList arguments = QApplication::arguments();
    tests::Jira::routeTo(arguments.value(1).toInt());
    const QString name = arguments.value(2);
    const bool quits = arguments.size() > 3;

    const auto panel = JADownloadBodyViewController::initWithNibName(QStringLiteral("JADownloadBodyViewController"),
                                                                     tljira::frameworkBundle());
    const auto window = tests::shownWindow(panel->view());
    panel->issueKeyTextField()->setText(QStringLiteral("ABC-1"));
    panel->getAttachButton()->click();
    const JAListAttachedFilesWindow& list = *panel->jaListAttachedWindow();
    if (!tests::waitUntil([&] { return rowNamed(list, name) >= 0; }))
        return 1;
    tests::cellAtRow(list, rowNamed(list, name))->downloadButton()->click();
    if (!tests::waitUntil([&] { return quits ? isUnderWay(list) : hasEnded(list); }))
        return 2;
    if (quits) {
        QMetaObject::invokeMethod(
            &application, [] { QCoreApplication::exit(0); }, Qt::QueuedConnection);
        return QApplication::exec();
    }
    tests::drainMainQueue();
    print(list);
    return 0;
}
