#include "framework/TLJiraController.h"
#include "host/DarkPalette.h"
#include "host/EditorWindow.h"
#include "host/HostOptions.h"

#include <QApplication>
#include <QStyleFactory>

#include <algorithm>
#include <cstdio>
#include <string_view>

using namespace tessaloom;

namespace {

int edit(const HostOptions& options)
{
    tljira::URLSessionConfiguration::setDefaultRoutes(options.routes);
    TLJiraOptions::use(options.choices);
    EditorWindow editor;
    editor.setStatus(options.status);
    editor.QMainWindow::show();
    if (!options.file.isEmpty())
        editor.open(options.file);
    return QApplication::exec();
}

bool isHelpWanted(int argc, char** argv)
{
    return std::any_of(argv + 1, argv + argc,
                       [](std::string_view argument) { return argument == "--help" || argument == "-h"; });
}

} // namespace

int main(int argc, char** argv)
{
    if (isHelpWanted(argc, argv)) {
        const QCoreApplication application(argc, argv); // A QApplication would ask for a display.
        std::fputs(qPrintable(HostOptions::help()), stdout);
        return 0;
    }
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("tessaloom"));
    QApplication::setApplicationDisplayName(QStringLiteral("Tessaloom"));

    const HostOptions options = HostOptions::parse(QApplication::arguments());
    if (!options.error.isEmpty()) {
        std::fprintf(stderr, "tessaloom: %s\n", qPrintable(options.error));
        return 2;
    }
    if (options.isDark) {
        QApplication::setStyle(QStringLiteral("Fusion"));
        QApplication::setPalette(darkPalette());
    }
    return edit(options);
}
