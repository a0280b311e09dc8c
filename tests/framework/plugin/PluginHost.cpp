// A host that was built without the framework. It loads the plug-in, does both jobs as a user would, and says what it
// sees:
//
//     plugin_host FOLDER ROUTE DOCUMENT FETCHED log|no-log

#include "framework/plugin/TLJiraControllerLoader.h"

#include <QApplication>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <vector>

namespace {

/// Null as long as the user does not see it.
template <class View>
View* seen(const char* name)
{
    for (const QWidget* window : QApplication::topLevelWidgets()) {
        for (View* view : window->findChildren<View*>(QString::fromLatin1(name))) {
            if (view->isVisible() && view->isEnabled())
                return view;
        }
    }
    return nullptr;
}

bool click(const char* name)
{
    auto* const button = seen<QPushButton>(name);
    if (button)
        button->click();
    return button != nullptr;
}

bool logIn()
{
    if (!seen<QPushButton>("loginButton"))
        return false;
    seen<QLineEdit>("hostTextField")->setText(QStringLiteral("http://jira.example.test"));
    seen<QLineEdit>("emailTextField")->setText(QStringLiteral("anna"));
    seen<QLineEdit>("passwordTextField")->setText(QStringLiteral("secret"));
    return click("loginButton");
}

bool enterKey(const char* field, const char* button)
{
    if (!seen<QLineEdit>(field) || !seen<QPushButton>(button))
        return false;
    seen<QLineEdit>(field)->setText(QStringLiteral("ABC-1"));
    return click(button);
}

/// Closes the sheet in which this label says that all is done; other windows have a button of that name, too.
bool closeWhenDone(const char* label)
{
    const auto* const text = seen<QLabel>(label);
    if (!text || text->text() != QStringLiteral("DONE"))
        return false;
    text->window()->findChild<QPushButton*>(QStringLiteral("cancelButton"))->click();
    return true;
}

/// What the user does, each step as soon as it can be done.
class User : public QObject
{
public:
    explicit User(std::vector<std::function<bool()>> steps)
        : m_steps(std::move(steps))
    {
        m_timer.callOnTimeout(this, [this] {
            if (m_next < m_steps.size() && m_steps[m_next]())
                ++m_next;
        });
        m_timer.start(5);
    }

private:
    std::vector<std::function<bool()>> m_steps;
    std::size_t m_next = 0;
    QTimer m_timer;
};

void attach(TLJiraControllerInterface& jira, const QString& document)
{
    const User user({logIn,
                     [&] {
                         if (!enterKey("taskTextField", "uploadFileButton"))
                             return false;
                         if (jira.attach(QStringLiteral("other"), QStringLiteral("/other")))
                             std::puts("a second document did not wait for the first");
                         return true;
                     },
                     [] { return closeWhenDone("sizeLabel"); },
                     [] {
                         QApplication::exit();
                         return true;
                     }});
    if (jira.attach(QStringLiteral("plan.tessaloom"), document))
        QApplication::exec();
}

QString fetch(TLJiraControllerInterface& jira)
{
    const User user({[] { return enterKey("issueKeyTextField", "getAttachButton"); },
                     [] { return click("downloadButton"); }, [] { return closeWhenDone("downloadPercent"); }});
    return jira.fetch();
}

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("plugin_host"));
    QApplication::setQuitOnLastWindowClosed(false);
    const QStringList arguments = QApplication::arguments();
    QTimer::singleShot(60000, [] { std::abort(); }); // A user who gives up.

    const TLJiraControllerLoader jira({arguments.value(1)});
    if (!jira.plugin()) {
        std::printf("%s\n", qPrintable(jira.errorString()));
        QTimer::singleShot(0, [] { QApplication::exit(); });
        return QApplication::exec();
    }
    jira.plugin()->setRoutes({arguments.value(2)});
    jira.plugin()->setLogEnabled(arguments.value(5) == QStringLiteral("log"));
    attach(*jira.plugin(), arguments.value(3));
    const QString fetched = fetch(*jira.plugin());
    std::printf("fetched %s\n", qPrintable(fetched.section(u'/', -1)));
    return QFile::copy(fetched, arguments.value(4)) ? 0 : 1;
}
