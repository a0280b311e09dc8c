// A host that was built without the framework. It loads the plug-in, does both jobs as a user would, and says what it
// sees:
//
//     plugin_host FOLDER ROUTE DOCUMENT FETCHED log|no-log

#include "tests/hosts/User.h"

#include <TLJiraControllerLoader.h>

#include <QApplication>
#include <QFile>
#include <QTimer>

#include <cstdio>
#include <cstdlib>

namespace {

using user::click;
using user::closeWhenDone;
using user::enterKey;
using user::User;

/// Versions of the interface before the second have no such call.
template <class Plugin>
void setLogEnabled(Plugin& jira, bool isEnabled)
{
    if constexpr (requires { jira.setLogEnabled(isEnabled); })
        jira.setLogEnabled(isEnabled);
}

void attach(TLJiraControllerInterface& jira, const QString& document)
{
    const User user({user::logIn,
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
    QTimer::singleShot(110'000, [] { std::abort(); }); // A user who gives up.

    const TLJiraControllerLoader jira({arguments.value(1)});
    if (!jira.plugin()) {
        std::printf("%s\n", qPrintable(jira.errorString()));
        QTimer::singleShot(0, [] { QApplication::exit(); });
        return QApplication::exec();
    }
    jira.plugin()->setRoutes({arguments.value(2)});
    setLogEnabled(*jira.plugin(), arguments.value(5) == QStringLiteral("log"));
    attach(*jira.plugin(), arguments.value(3));
    const QString fetched = fetch(*jira.plugin());
    std::printf("fetched %s\n", qPrintable(fetched.section(u'/', -1)));
    return QFile::copy(fetched, arguments.value(4)) ? 0 : 1;
}
