// A host in QML. It loads the plug-in, its user does both jobs, and it says what came of them:
//
//     qml_host FOLDER ROUTE DOCUMENT FETCHED

#include "framework/plugin/TLJiraControllerLoader.h"
#include "tests/hosts/User.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QQmlApplicationEngine>
#include <QQmlContext>
#include <QQuickItem>
#include <QQuickWindow>

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
    void hear(const QString& line) { std::printf("%s\n", qPrintable(line)); }
    void take(const QString& path)
    {
        std::printf("fetched %s\n", qPrintable(QFileInfo(path).fileName()));
        const bool isTaken = QFile::rename(path, m_fetched) && QDir().rmdir(QFileInfo(path).path());
        QApplication::exit(isTaken ? 0 : 1);
    }

private:
    const QString m_fetched;
};

bool clickAttach(QQuickWindow& window)
{
    const auto* const button = window.findChild<QQuickItem*>(QStringLiteral("attachButton"));
    if (!button || !window.isExposed())
        return false;
    const QPointF middle = button->mapToScene(QPointF(button->width() / 2, button->height() / 2));
    QTest::mouseClick(&window, Qt::LeftButton, {}, middle.toPoint());
    return true;
}

/// Once this button is there.
bool tellOwner(const QQuickWindow& window, const char* name)
{
    const auto* const button = user::seen<QPushButton>(name);
    if (!button)
        return false;
    const bool isDialog = button->window()->windowHandle()->transientParent() == &window;
    std::puts(isDialog ? "a dialog of the host" : "a dialog of nobody");
    return true;
}

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("plugin_host"));
    QApplication::setQuitOnLastWindowClosed(false);
    const QStringList arguments = QApplication::arguments();
    QTimer::singleShot(110'000, [] { std::abort(); }); // A user who gives up.

    const TLJiraControllerLoader jira({arguments.value(1)});
    if (!jira.object()) {
        std::printf("%s\n", qPrintable(jira.errorString()));
        return 1;
    }
    jira.plugin()->setLogEnabled(false);
    jira.plugin()->setRoutes({arguments.value(2)});
    QQmlApplicationEngine engine;
    engine.rootContext()->setContextProperty(QStringLiteral("jira"), jira.object());
    engine.setInitialProperties({{QStringLiteral("document"), arguments.value(3)}});
    engine.load(QUrl::fromLocalFile(QStringLiteral(QML_FILE)));
    auto* const window = qobject_cast<QQuickWindow*>(engine.rootObjects().value(0));
    if (!window)
        return 1;
    QWidget other; // In front, and no parent.
    other.show();
    Ear ear(arguments.value(4));
    QObject::connect(window, SIGNAL(said(QString)), &ear, SLOT(hear(QString)));
    QObject::connect(window, SIGNAL(arrived(QString)), &ear, SLOT(take(QString)));
    const user::User user({[&] { return clickAttach(*window); }, [&] { return tellOwner(*window, "loginButton"); },
                           user::logIn, [] { return user::enterKey("taskTextField", "uploadFileButton"); },
                           [&] { return tellOwner(*window, "getAttachButton"); },
                           [] { return user::enterKey("issueKeyTextField", "getAttachButton"); },
                           [] { return user::click("downloadButton"); }});
    return QApplication::exec();
}

#include "QmlHost.moc"
