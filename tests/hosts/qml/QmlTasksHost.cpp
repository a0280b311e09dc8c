// A host in QML with an interface of its own. It loads the plug-in and says what came of the jobs:
//
//     qml_tasks_host FOLDER ROUTE DOCUMENT FETCHED

#include "framework/plugin/TLJiraControllerLoader.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QQmlApplicationEngine>
#include <QQmlContext>
#include <QTimer>

#include <cstdio>
#include <cstdlib>

namespace {

/// What the engine's signals lead to.
class Ear : public QObject
{
    Q_OBJECT

public:
    explicit Ear(const QString& fetched)
        : m_fetched(fetched)
    {
    }

public Q_SLOTS:
    void hear(const QString& line) { std::printf("%s\n", line.toUtf8().constData()); }
    void take(const QString& path)
    {
        const bool isTaken = QFile::rename(path, m_fetched) && QDir().rmdir(QFileInfo(path).path());
        QApplication::exit(isTaken ? 0 : 1);
    }

private:
    const QString m_fetched;
};

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("plugin_host"));
    const QStringList arguments = QApplication::arguments();
    QTimer::singleShot(110'000, [] { std::abort(); }); // A user who gives up.

    const TLJiraControllerLoader jira({arguments.value(1)});
    if (!jira.object()) {
        std::printf("%s\n", qPrintable(jira.errorString()));
        return 1;
    }
    QQmlApplicationEngine engine;
    engine.rootContext()->setContextProperty(QStringLiteral("jira"), jira.object());
    engine.setInitialProperties(
        {{QStringLiteral("route"), arguments.value(2)}, {QStringLiteral("document"), arguments.value(3)}});
    engine.load(QUrl::fromLocalFile(QStringLiteral(QML_FILE)));
    QObject* const window = engine.rootObjects().value(0);
    if (!window)
        return 1;
    Ear ear(arguments.value(4));
    QObject::connect(window, SIGNAL(said(QString)), &ear, SLOT(hear(QString)));
    QObject::connect(window, SIGNAL(arrived(QString)), &ear, SLOT(take(QString)));
    return QApplication::exec();
}

#include "QmlTasksHost.moc"
