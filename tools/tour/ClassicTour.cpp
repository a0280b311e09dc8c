#include "framework/TLJiraController.h"
#include "tools/tour/Scenes.h"
#include "tools/tour/Stage.h"
#include "tools/tour/User.h"

#include <QApplication>
#include <QFileDialog>

namespace tessaloom::tour {

namespace {

/// The host keeps its controller to itself, so what stands in the window is found as somebody at the screen finds it.
class Visit
{
public:
    Visit(Stage& stage, std::shared_ptr<tljira::Window> window)
        : m_stage(stage)
        , m_window(std::move(window))
    {
    }

    Step logIn();
    Step uploadArea();
    Step downloadArea();

private:
    template <class View>
    View* view(const char* name) const
    {
        return m_window->widget()->findChild<View*>(QLatin1String(name));
    }
    template <class View>
    View* sheetView(const char* name) const
    {
        return m_window->attachedSheet()->widget()->findChild<View*>(QLatin1String(name));
    }

    Step chooseFile();
    Step type(QLineEdit* field, const char* text);

    Stage& m_stage;
    std::shared_ptr<tljira::Window> m_window;
};

std::shared_ptr<tljira::Window> windowWith(const char* viewName)
{
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        const auto* view = widget->isVisible() ? widget->findChild<QWidget*>(QLatin1String(viewName)) : nullptr;
        if (view)
            return tljira::Window::windowOf(view);
    }
    return nullptr;
}

Step Visit::type(QLineEdit* field, const char* text)
{
    co_await user::type(field, QLatin1String(text));
}

Step Visit::logIn()
{
    m_stage.journal.expect(QStringLiteral("nobody is logged in as far as it knows"),
                           !view<QWidget>("okSessionView")->isVisible());
    co_await m_stage.picture(QStringLiteral("classic"), m_window);
    co_await user::click(Stage::button(m_window->widget(), "loginAction"));
    co_await m_stage.until(QStringLiteral("Log In opens a sheet"),
                           [&] { return m_window->attachedSheet() != nullptr; });
    co_await type(sheetView<QLineEdit>("hostTextField"), Stage::address);
    co_await type(sheetView<QLineEdit>("emailTextField"), Stage::user);
    co_await type(sheetView<QLineEdit>("passwordTextField"), Stage::password);
    co_await m_stage.picture(QStringLiteral("classic-login"), m_window);
    co_await user::press(m_window->attachedSheet()->widget(), Qt::Key_Return);
    co_await m_stage.until(QStringLiteral("Return logs in and closes it"),
                           [&] { return m_window->attachedSheet() == nullptr; });
    auto* const avatar = view<tljira::ImageView>("avatarImage");
    co_await m_stage.until(QStringLiteral("the header shows the avatar"), [&] { return !avatar->image().isNull(); });
    m_stage.journal.expectText(QStringLiteral("and the user"), view<QLabel>("displayNameLabel")->text(),
                               QStringLiteral("Anna Lindqvist"));
}

Step Visit::chooseFile()
{
    co_await user::click(view<QPushButton>("openFileButton"));
    co_await m_stage.until(QStringLiteral("Choose opens a file panel"),
                           [] { return qobject_cast<QFileDialog*>(QApplication::activeModalWidget()) != nullptr; });
    auto* const dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
    auto* const field = dialog ? dialog->findChild<QLineEdit*>() : nullptr;
    m_stage.journal.expect(QStringLiteral("one of Qt's own, whatever the desktop has"),
                           field && QApplication::testAttribute(Qt::AA_DontUseNativeDialogs));
    if (!field)
        co_return;
    co_await user::type(field, m_stage.documentPath());
    co_await user::press(dialog, Qt::Key_Return);
    co_await m_stage.until(QStringLiteral("it closes"), [] { return !QApplication::activeModalWidget(); });
}

Step Visit::uploadArea()
{
    m_stage.journal.scene(QStringLiteral("Its upload area, which only takes note of a file"));
    co_await chooseFile();
    co_await m_stage.until(QStringLiteral("the area names the file"),
                           [this] { return view<QLabel>("pathLabel")->text() == m_stage.documentPath(); });
    co_await m_stage.picture(QStringLiteral("classic-file-chosen"), m_window);

    const auto requestsBefore = m_stage.server.requestCount();
    co_await user::click(view<QPushButton>("uploadButton"));
    co_await m_stage.until(QStringLiteral("Upload shows that it is busy"),
                           [&] { return view<QWidget>("uploadView")->isVisible(); });
    co_await m_stage.untilQuiet();
    m_stage.journal.expect(QStringLiteral("and sends nothing"), m_stage.server.requestCount() == requestsBefore);
}

Step Visit::downloadArea()
{
    m_stage.journal.scene(QStringLiteral("Its download area, which lists everything"));
    co_await type(view<QLineEdit>("keyDownloadTextField"), "LOOM-7");
    co_await m_stage.picture(QStringLiteral("classic-areas"), m_window);
    co_await user::click(Stage::button(m_window->widget(), "getListAttachedFilesAction"));
    co_await m_stage.until(QStringLiteral("the list comes up"), [&] { return m_window->attachedSheet() != nullptr; });
    auto* const table = sheetView<tljira::TableView>("tableView");
    co_await m_stage.until(QStringLiteral("with files of every kind"), [&] { return table->numberOfRows() == 3; });
    auto* const first = dynamic_cast<JAAttachedCell*>(table->cellAtRow(0));
    m_stage.journal.expectText(QStringLiteral("in the server's order, first"), first->titleLabel()->text(),
                               QStringLiteral("sampler.tessaloom"));
    co_await m_stage.picture(QStringLiteral("classic-list"), m_window);
    co_await user::press(m_window->attachedSheet()->widget(), Qt::Key_Escape);
    co_await m_stage.until(QStringLiteral("Escape closes it"), [&] { return m_window->attachedSheet() == nullptr; });
}

} // namespace

Step classicTour(Stage& stage)
{
    stage.journal.scene(QStringLiteral("The older window"));
    co_await stage.chooseInFileMenu(QStringLiteral("Jira (classic)…"));
    const auto window = windowWith("keyDownloadTextField");
    if (!stage.journal.expect(QStringLiteral("it comes up"), window != nullptr))
        co_return;
    Visit visit(stage, window);
    co_await visit.logIn();
    co_await visit.uploadArea();
    co_await visit.downloadArea();
    co_await user::closeWindow(window->widget());
    co_await stage.until(QStringLiteral("the window closes"), [&] { return !window->isVisible(); });
}

} // namespace tessaloom::tour
