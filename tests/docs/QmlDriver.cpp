// Loads the QML of the documents with their function that offers the plug-in, and plays the user, who attaches a
// document and fetches it:
//
//     host ROUTE Main.qml

#include "tests/hosts/User.h"

#include <TLJiraController/TLJiraControllerLoader.h>

#include <QSignalSpy>
#include <QtQml/QQmlApplicationEngine>
#include <QtQuick/QQuickItem>
#include <QtQuick/QQuickWindow>

#include <cstdio>
#include <cstdlib>

QString offerJira(QQmlEngine& engine);

namespace {

bool click(QQuickWindow& window, const char* name)
{
    const auto* const item = window.findChild<QQuickItem*>(QString::fromLatin1(name));
    if (!item || !window.isExposed())
        return false;
    const QPointF middle = item->mapToScene(QPointF(item->width() / 2, item->height() / 2));
    QTest::mouseClick(&window, Qt::LeftButton, {}, middle.toPoint());
    return true;
}

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("editor"));
    QApplication::setQuitOnLastWindowClosed(false);
    QTimer::singleShot(110'000, [] { std::abort(); }); // A user who gives up.
    const TLJiraControllerLoader jira;
    QQmlApplicationEngine engine;
    if (const QString problem = offerJira(engine); !problem.isEmpty()) {
        std::puts(qPrintable(problem));
        return 1;
    }
    jira.plugin()->setRoutes({QApplication::arguments().value(1)});
    engine.load(QUrl::fromLocalFile(QApplication::arguments().value(2)));
    auto* const window = qobject_cast<QQuickWindow*>(engine.rootObjects().value(0));
    if (!window)
        return 1;
    const QSignalSpy ends(jira.object(), SIGNAL(ended(int, QVariantMap)));
    const auto key = QStringLiteral("DEMO-1");
    const user::User user(
        {[&] { return click(*window, "attach"); },
         [] { return user::logInAt(QStringLiteral("http://jira.example.com"), QStringLiteral("correct horse")); },
         [&] { return user::enterKey("taskTextField", "uploadFileButton", key); }, [&] { return ends.count() == 1; },
         [&] { return click(*window, "fetch"); },
         [&] { return user::enterKey("issueKeyTextField", "getAttachButton", key); },
         [] { return user::click("downloadButton"); },
         [&] {
             if (ends.count() == 2)
                 QApplication::exit();
             return ends.count() == 2;
         }});
    return QApplication::exec();
}
