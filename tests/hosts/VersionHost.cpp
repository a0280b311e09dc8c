// A host that makes do with a plug-in of an older version, and says what it has got:
//
//     version_host FOLDER OLDEST

#include "framework/plugin/TLJiraControllerLoader.h"

#include <QApplication>

#include <cstdio>

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    const TLJiraControllerLoader jira({arguments.value(1)}, arguments.value(2).toInt());
    if (!jira.errorString().isEmpty())
        std::printf("%s\n", qPrintable(jira.errorString()));
    if (jira.plugin()) {
        const bool isAttached = jira.plugin()->attach(QStringLiteral("plan"), QStringLiteral("/copy"));
        std::printf("version %d attaches %s fetches %s\n", jira.plugin()->interfaceVersion(), isAttached ? "yes" : "no",
                    qPrintable(jira.plugin()->fetch()));
    }
    std::puts(jira.object() ? "has calls by their names" : "has no calls by their names");
    return 0;
}
