// A host whose application object is of the kind that it is told:
//
//     application_host none|core|gui|widgets FOLDER
//
// It looks for the plug-in in the folder and says what came of it.

#include "framework/plugin/TLJiraControllerLoader.h"

#include <QApplication>

#include <cstdio>
#include <memory>
#include <string_view>

namespace {

std::unique_ptr<QCoreApplication> application(std::string_view kind, int& argc, char** argv)
{
    if (kind == "core")
        return std::make_unique<QCoreApplication>(argc, argv);
    if (kind == "gui")
        return std::make_unique<QGuiApplication>(argc, argv);
    if (kind == "widgets")
        return std::make_unique<QApplication>(argc, argv);
    return nullptr;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc < 3)
        return 2;
    const auto object = application(argv[1], argc, argv);
    const TLJiraControllerLoader jira({QString::fromLocal8Bit(argv[2])});
    std::puts(jira.plugin() ? "loaded" : qPrintable(jira.errorString()));
    return 0;
}
