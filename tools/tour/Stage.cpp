#include "tools/tour/Stage.h"

#include "framework/TLJiraController.h"
#include "tools/tour/User.h"

#include <QAction>
#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMenuBar>

namespace tessaloom::tour {

namespace {

/// Small buffers, so that what the server holds back shows early in the progress.
standin::Options serverOptions()
{
    standin::Options options;
    options.socketBufferBytes = 64 * 1024;
    return options;
}

QByteArray longDocument()
{
    constexpr qsizetype size = 8 << 20;
    QByteArray text = "Harbour blanket, row by row\n\n";
    for (int row = 1; text.size() < size; ++row) {
        text += "row " + QByteArray::number(row).rightJustified(6) + "  ";
        for (int end = 0; end < 28; ++end)
            text += (row + end) % 4 == 0 ? " ##" : " ··";
        text += '\n';
    }
    text.truncate(size - 1);
    // Not in the middle of a character.
    while (static_cast<signed char>(text.back()) < 0)
        text.chop(1);
    return text + '\n';
}

std::string dayInMarch(int day)
{
    return (day < 10 ? "2026-03-0" : "2026-03-") + std::to_string(day) + "T10:06:29.399+0100";
}

QAction* actionNamed(const QMenuBar& bar, const QString& text)
{
    for (QAction* menu : bar.actions()) {
        for (QAction* action : menu->menu()->actions()) {
            if (action->text().remove(QLatin1Char('&')) == text)
                return action;
        }
    }
    return nullptr;
}

} // namespace

PrivateFolders::PrivateFolders()
{
    for (const char* variable : {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME", "TMPDIR"}) {
        const QString folder = path(QLatin1String(variable));
        QDir().mkpath(folder);
        qputenv(variable, QFile::encodeName(folder));
    }
}

Stage::Stage(const QString& albumFolder)
    : album(albumFolder)
    , server(serverOptions())
{
    const QString route = QStringLiteral("jira.example.test:80:127.0.0.1:%1").arg(server.port());
    tljira::URLSessionConfiguration::setDefaultRoutes({route});
    fillServer();
    makeDocument();
}

void Stage::fillServer()
{
    server.addUser({.name = user, .password = password, .displayName = "Anna Lindqvist", .email = "anna@example.test"});
    server.addIssue("LOOM-7");
    server.addIssue("LOOM-8");
    server.addIssue("LOOM-9");
    server.addAttachment("LOOM-7", {.fileName = "sampler.tessaloom", .bytes = "a sampler\n", .created = dayInMarch(3)});
    server.addAttachment("LOOM-7", {.fileName = "yarn.png", .bytes = "no document", .created = dayInMarch(9)});
    server.addAttachment(
        "LOOM-7",
        {.fileName = "twill and herringbone.tessaloom", .created = dayInMarch(11), .syntheticSize = 24 << 20});
    server.addAttachment("LOOM-8", {.fileName = "loom.jpg", .bytes = "no document", .created = dayInMarch(1)});
    server.addAttachment("LOOM-9",
                         {.fileName = "a name that is far too long for one line of the list, second version of the "
                                      "third draft with all corrections.tessaloom",
                          .bytes = "long\n",
                          .created = dayInMarch(5)});
}

void Stage::makeDocument()
{
    const QString folder = folders.path(QStringLiteral("HOME/Documents"));
    QDir().mkpath(folder);
    m_documentPath = folder + QStringLiteral("/harbour blanket.tessaloom");
    m_documentBytes = longDocument();
    QFile file(m_documentPath);
    if (!file.open(QFile::WriteOnly) || file.write(m_documentBytes) != m_documentBytes.size())
        journal.expect(QStringLiteral("the document can be written"), false);
}

QString Stage::documentName() const
{
    return QFileInfo(m_documentPath).fileName();
}

Step Stage::chooseInFileMenu(QString text)
{
    journal.note(QStringLiteral("choose File, %1").arg(text));
    co_await user::choose(editor.menuBar(), actionNamed(*editor.menuBar(), text));
}

Step Stage::until(QString what, std::function<bool()> condition)
{
    const bool holds = co_await Until(std::move(condition));
    if (journal.expect(what, holds))
        co_return;
    journal.note(QStringLiteral("         the tour ends here"));
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (window->isVisible())
            album.add(QStringLiteral("the-end"), *window);
    }
    QApplication::exit();
    co_await std::suspend_always();
}

Step Stage::untilQuiet()
{
    for (int turn = 0; turn < 10; ++turn)
        co_await InNextTurn();
    co_await until(QStringLiteral("the server has answered everything"),
                   [this] { return server.finishedRequestCount() + server.heldCount() == server.requestCount(); });
    for (int turn = 0; turn < 10; ++turn)
        co_await InNextTurn();
}

Step Stage::picture(QString what, std::shared_ptr<tljira::Window> window)
{
    // Windows grow and shrink smoothly, and sheets slide in.
    const auto hasItsSize = [](const tljira::Window& each) {
        return each.widget()->frameGeometry().size() == each.frame().size().toSize();
    };
    co_await Until([&] {
        const auto sheet = window->attachedSheet();
        const QString moving = sheet ? QStringLiteral("sheetSlide") : QStringLiteral("sheetCover");
        return !window->widget()->findChild<QWidget*>(moving) && hasItsSize(sheet ? *sheet : *window);
    });
    const QString file = album.add(what, *window);
    journal.expect(QStringLiteral("picture %1").arg(file), !file.isEmpty());
}

Step Stage::picture(QString what, QWidget* window)
{
    co_await InNextTurn();
    const QString file = album.add(what, *window);
    journal.expect(QStringLiteral("picture %1").arg(file), !file.isEmpty());
}

Step Stage::sendLogin(std::shared_ptr<JALoginWindow> form, QString secret)
{
    journal.note(QStringLiteral("type the address, the name and a password, and press Log In"));
    co_await user::type(form->hostTextField(), QLatin1String(address));
    co_await user::type(form->emailTextField(), QLatin1String(user));
    co_await user::type(form->passwordTextField(), secret);
    co_await user::click(form->loginButton());
}

QPushButton* Stage::button(const QWidget* view, const char* action)
{
    for (auto* each : view->findChildren<QPushButton*>()) {
        if (each->isVisible() && each->property("action").toString() == QLatin1String(action))
            return each;
    }
    return nullptr;
}

} // namespace tessaloom::tour
