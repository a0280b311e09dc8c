#include "framework/TLJiraController.h"
#include "host/tour/Scenes.h"
#include "host/tour/Stage.h"
#include "host/tour/User.h"

#include <QApplication>
#include <QFileDialog>

namespace tessaloom::tour {

namespace {

std::shared_ptr<platform::Window> windowTitled(const QString& title)
{
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        const auto window = platform::Window::windowOf(widget);
        if (window && window->isVisible() && window->title() == title)
            return window;
    }
    return nullptr;
}

} // namespace

Step classicTour(Stage& stage)
{
    stage.journal.scene(QStringLiteral("The older window"));
    co_await stage.chooseInFileMenu(QStringLiteral("Jira (classic)…"));
    stage.journal.expect(QStringLiteral("it comes up"), windowTitled(QStringLiteral("Jira")) != nullptr);
    co_return;
}

} // namespace tessaloom::tour
