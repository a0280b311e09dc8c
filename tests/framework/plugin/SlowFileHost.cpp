// A host whose document lies in a file that gives nothing for now: a pipe that nobody has opened for writing. It says
// that it goes on, then has the pipe written, and says how the job ended:
//
//     slow_file_host FOLDER PIPE

#include <TLJiraControllerLoader.h>

#include <QApplication>
#include <QFile>
#include <QSignalSpy>
#include <QVariantMap>

#include <cstdio>
#include <thread>
#include <unistd.h>

int main(int argc, char** argv)
{
    ::alarm(120); // Of a host that stands still.
    const QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("slow_file_host"));
    const QString pipe = QApplication::arguments().value(2);

    const TLJiraControllerLoader jira({QApplication::arguments().value(1)});
    QSignalSpy ends(jira.object(), SIGNAL(ended(int, QVariantMap)));
    int job = 0;
    QMetaObject::invokeMethod(jira.object(), "attachFileTo", Q_RETURN_ARG(int, job),
                              Q_ARG(QString, QStringLiteral("ABC-1")), Q_ARG(QString, QStringLiteral("plan")),
                              Q_ARG(QString, pipe));
    std::puts(job > 0 ? "goes on" : "has no job");

    std::thread writer([&pipe] {
        QFile file(pipe);
        file.open(QFile::WriteOnly);
        file.write("warp");
    });
    while (ends.isEmpty() && ends.wait(60000)) {
    }
    writer.join();
    std::puts(qPrintable(ends.value(0).value(1).toMap().value(QStringLiteral("outcome")).toString()));
    return 0;
}
