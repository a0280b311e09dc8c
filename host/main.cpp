#include "framework/TLJiraController.h"
#include "host/DarkPalette.h"
#include "host/EditorWindow.h"
#include "host/HostOptions.h"
#include "host/JiraJobs.h"
#include "host/tour/Tour.h"

#include <QApplication>
#include <QStyleFactory>

#include <cstdio>

using namespace tessaloom;

namespace {

int edit(const HostOptions& options)
{
    platform::URLSessionConfiguration::setDefaultRoutes(options.routes);
    JiraJobs jira;
    EditorWindow editor(jira);
    editor.setStatus(options.status);
    editor.QMainWindow::show();
    if (!options.file.isEmpty())
        editor.open(options.file);
    return QApplication::exec();
}

} // namespace

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("tessaloom"));
    QApplication::setApplicationDisplayName(QStringLiteral("Tessaloom"));

    const HostOptions options = HostOptions::parse(QApplication::arguments());
    if (options.wantsHelp) {
        std::fputs(qPrintable(HostOptions::help()), stdout);
        return 0;
    }
    if (!options.error.isEmpty()) {
        std::fprintf(stderr, "tessaloom: %s\n", qPrintable(options.error));
        return 2;
    }
    if (options.isDark) {
        QApplication::setStyle(QStringLiteral("Fusion"));
        QApplication::setPalette(darkPalette());
    }
    return options.tourFolder.isEmpty() ? edit(options) : tour::run(options.tourFolder);
}
