#include "framework/TLJiraController.h"
#include "platform/foundation/files/TemporaryDirectory.h"
#include "tools/tour/Scenes.h"
#include "tools/tour/Stage.h"
#include "tools/tour/User.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLabel>
#include <QPlainTextEdit>

#include <algorithm>

namespace tessaloom::tour {

namespace {

using standin::Fault;
using standin::Match;
using standin::Point;

constexpr std::int64_t heldAfter = 2 << 20;

std::shared_ptr<TLJiraUpload> newestUpload()
{
    return std::dynamic_pointer_cast<TLJiraUpload>(JAController::sharedInstance()->delegate());
}

QByteArray bytesOf(const QString& path)
{
    QFile file(path);
    return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
}

void expectOwnFileUntouched(Stage& stage)
{
    stage.journal.expect(QStringLiteral("the user's own file is as it was"),
                         bytesOf(stage.documentPath()) == stage.documentBytes());
}

void expectCopyGone(Stage& stage)
{
    const QDir temporary(tljira::temporaryDirectory());
    stage.journal.expect(QStringLiteral("the copy and its folder are gone"),
                         temporary.entryList({QStringLiteral("Upload-*")}, QDir::Dirs).isEmpty());
    expectOwnFileUntouched(stage);
}

Step refusedLogin(Stage& stage, TLJiraUpload& upload)
{
    stage.journal.scene(QStringLiteral("A login with a wrong password"));
    const auto form = upload.jaLoginWindow();
    co_await stage.until(QStringLiteral("the login form is shown"),
                         [&] { return form->view() && form->view()->isVisible(); });
    co_await stage.picture(QStringLiteral("login-form"), upload.window());

    co_await stage.sendLogin(form, QStringLiteral("wrong horse"));
    co_await stage.until(QStringLiteral("an error is shown"), [&] { return !form->errorLabel()->text().isEmpty(); });
    stage.journal.expectText(QStringLiteral("it says"), form->errorLabel()->text(),
                             QStringLiteral("Incorrect login or password"));
    co_await stage.untilQuiet();
    stage.journal.expect(QStringLiteral("the form is still there, and the button works again"),
                         form->view()->isVisible() && form->loginButton()->isEnabled());
    stage.journal.expect(QStringLiteral("the server has opened no session"), stage.server.sessionCount() == 0);
    co_await stage.picture(QStringLiteral("login-refused"), upload.window());
}

Step acceptedLogin(Stage& stage, TLJiraUpload& upload)
{
    stage.journal.scene(QStringLiteral("A login with the right password"));
    const auto form = upload.jaLoginWindow();
    stage.server.misbehave(Match::on("POST", "/rest/auth/1/session").once(), Fault().hold(Point::responseHead(0)));
    co_await stage.sendLogin(form, QLatin1String(Stage::password));
    co_await stage.until(QStringLiteral("the server has been asked"), [&] { return stage.server.heldCount() == 1; });
    stage.journal.expect(QStringLiteral("the form shows that it is waiting"),
                         form->spiner()->isVisible() && !form->loginButton()->isEnabled());
    co_await stage.picture(QStringLiteral("logging-in"), upload.window());

    stage.server.release();
    const auto header = upload.headViewController();
    co_await stage.until(QStringLiteral("header and panel are shown"),
                         [&] { return upload.downloadViewContainer()->isVisible(); });
    co_await stage.until(QStringLiteral("the header shows the avatar"),
                         [&] { return !header->avatarImage()->image().isNull(); });
    stage.journal.expectText(QStringLiteral("the header names the user"), header->displayNameLabel()->text(),
                             QStringLiteral("Anna Lindqvist"));
    stage.journal.expectText(QStringLiteral("and the e-mail address"), header->emailLabel()->text(),
                             QStringLiteral("anna@example.test"));
    stage.journal.expectText(QStringLiteral("the panel names the document"),
                             upload.bodyViewController()->pathLabel()->text(), stage.documentName());
    co_await stage.picture(QStringLiteral("upload-panel"), upload.window());
}

Step emptyKey(Stage& stage, TLJiraUpload& upload)
{
    stage.journal.scene(QStringLiteral("An upload without an issue key"));
    const auto requestsBefore = stage.server.requestCount();
    co_await user::click(upload.bodyViewController()->uploadFileButton());
    co_await stage.untilQuiet();
    stage.journal.expect(QStringLiteral("nothing happens"),
                         !upload.window()->attachedSheet() && stage.server.requestCount() == requestsBefore);
}

/// Ends with the server holding the upload in the middle.
Step startUpload(Stage& stage, TLJiraUpload& upload)
{
    const auto panel = upload.bodyViewController();
    stage.journal.note(QStringLiteral("type the key LOOM-9 and press Upload"));
    co_await user::type(panel->taskTextField(), QStringLiteral("LOOM-9"));
    co_await user::click(panel->uploadFileButton());
    co_await stage.until(QStringLiteral("the progress sheet is up"),
                         [&] { return upload.window()->attachedSheet() != nullptr; });
}

Step upload(Stage& stage, TLJiraUpload& upload)
{
    stage.journal.scene(QStringLiteral("An upload"));
    const auto panel = upload.bodyViewController();
    const auto sheet = panel->jaUploadingWindow();
    stage.server.misbehave(Match::on("POST", "*/attachments").once(), Fault().hold(Point::requestBody(heldAfter)));
    co_await startUpload(stage, upload);
    co_await stage.until(QStringLiteral("the progress shows a part"),
                         [&] { return stage.server.heldCount() == 1 && sheet->uploadingProgressBar()->value() > 20; });
    co_await stage.untilQuiet();
    stage.journal.expect(QStringLiteral("but not all of it"), sheet->uploadingProgressBar()->value() < 100);
    stage.journal.expect(QStringLiteral("the size says how much of 8.00 mb"),
                         sheet->sizeLabel()->text().endsWith(QLatin1String(" / 8.00 mb")));
    stage.journal.expect(QStringLiteral("the panel below is dimmed"),
                         panel->shadow()->isVisible() && !panel->taskTextField()->isEnabled());
    co_await stage.picture(QStringLiteral("uploading"), upload.window());

    stage.server.release();
    co_await stage.until(QStringLiteral("the sheet says \"DONE\""),
                         [&] { return sheet->sizeLabel()->text() == QLatin1String("DONE"); });
    co_await stage.picture(QStringLiteral("upload-done"), upload.window());

    const auto stored = stage.server.attachments("LOOM-9");
    stage.journal.expect(QStringLiteral("the issue has one attachment more"), stored.size() == 2);
    stage.journal.expectText(QStringLiteral("called"), QString::fromStdString(stored.back().fileName),
                             stage.documentName());
    stage.journal.expect(QStringLiteral("with exactly the document's bytes"),
                         stage.server.content(stored.back().id).value_or("") == stage.documentBytes().toStdString());
    expectCopyGone(stage);

    co_await user::click(Stage::button(sheet->window()->widget(), "cancelAction"));
    co_await stage.until(QStringLiteral("the sheet closes"), [&] { return !upload.window()->attachedSheet(); });
    stage.journal.expect(QStringLiteral("the panel can be used again"),
                         !panel->shadow()->isVisible() && panel->taskTextField()->isEnabled());
}

Step failingUpload(Stage& stage, TLJiraUpload& upload)
{
    stage.journal.scene(QStringLiteral("An upload whose connection breaks"));
    const auto sheet = upload.bodyViewController()->jaUploadingWindow();
    const auto attachmentsBefore = stage.server.attachments("LOOM-9").size();
    // Not only once: a connection that was in use before and breaks is tried again.
    stage.server.misbehave(Match::on("POST", "*/attachments"), Fault().reset(Point::requestBody(heldAfter)));
    co_await startUpload(stage, upload);
    co_await stage.until(QStringLiteral("the sheet shows an error"), [&] { return sheet->errorView()->isVisible(); });
    stage.server.behave();
    stage.journal.expectText(QStringLiteral("it says"), sheet->errorMessage()->text(),
                             QStringLiteral("The network connection was lost."));
    stage.journal.expect(QStringLiteral("the issue has no attachment more"),
                         stage.server.attachments("LOOM-9").size() == attachmentsBefore);
    expectCopyGone(stage);
    co_await stage.picture(QStringLiteral("upload-failed"), upload.window());
    co_await user::press(sheet->window()->widget(), Qt::Key_Escape);
    co_await stage.until(QStringLiteral("Escape closes the sheet"), [&] { return !upload.window()->attachedSheet(); });
}

Step logout(Stage& stage, TLJiraUpload& upload)
{
    stage.journal.scene(QStringLiteral("Logging out"));
    co_await user::click(Stage::button(upload.headView(), "logOutAction"));
    co_await stage.until(QStringLiteral("the login form is shown"),
                         [&] { return upload.jaLoginWindow()->view()->isVisible(); });
    co_await stage.untilQuiet();
    stage.journal.expect(QStringLiteral("the server has closed the session"), stage.server.sessionCount() == 0);
    co_await stage.picture(QStringLiteral("logged-out"), upload.window());

    co_await user::click(upload.jaLoginWindow()->cancelButton());
    co_await stage.until(QStringLiteral("Cancel closes the window"), [&] { return !upload.window()->isVisible(); });
}

/// A server that takes its time with each answer.
Step slowSessionCheck(Stage& stage)
{
    stage.journal.scene(QStringLiteral("A window whose server is slow"));
    stage.server.misbehave(Match::on("GET", "/rest/auth/1/session").once(), Fault().hold(Point::responseHead(0)));
    co_await stage.chooseInFileMenu(QStringLiteral("Upload to Jira…"));
    const auto window = newestUpload();
    co_await stage.until(QStringLiteral("the server has been asked"), [&] { return stage.server.heldCount() == 1; });
    const auto labels = window->window()->widget()->findChildren<QLabel*>();
    stage.journal.expect(QStringLiteral("the window says what it waits for"),
                         std::any_of(labels.begin(), labels.end(), [](const QLabel* label) {
                             return label->isVisible() && label->text().contains(QLatin1String("jira.example.test"));
                         }));
    co_await stage.picture(QStringLiteral("session-check"), window->window());

    stage.server.misbehave(Match::on("GET", "/rest/auth/1/user*").once(), Fault().hold(Point::responseHead(0)));
    stage.server.misbehave(Match::on("GET", "/rest/api/2/myself").once(), Fault().hold(Point::responseHead(0)));
    stage.server.release();
    co_await stage.until(QStringLiteral("the session is still good"),
                         [&] { return window->downloadViewContainer()->isVisible(); });
    co_await stage.until(QStringLiteral("the user is being looked up"), [&] { return stage.server.heldCount() == 1; });
    co_await stage.picture(QStringLiteral("user-look-up"), window->window());
    stage.server.release();
    co_await stage.untilQuiet();
    stage.server.behave();
}

Step editing(Stage& stage)
{
    stage.journal.scene(QStringLiteral("A document in the editor"));
    stage.editor.QMainWindow::show();
    stage.journal.expect(QStringLiteral("the editor opens it"), stage.editor.open(stage.documentPath()));
    stage.journal.expect(QStringLiteral("and would save it unchanged"),
                         stage.editor.documentBytes() == stage.documentBytes());
    co_await stage.picture(QStringLiteral("editor"), &stage.editor);
}

} // namespace

Step uploadTour(Stage& stage)
{
    co_await editing(stage);
    co_await stage.chooseInFileMenu(QStringLiteral("Upload to Jira…"));
    {
        const auto window = newestUpload();
        co_await refusedLogin(stage, *window);
        co_await acceptedLogin(stage, *window);
        co_await emptyKey(stage, *window);
        co_await upload(stage, *window);
    }
    co_await slowSessionCheck(stage);
    const auto window = newestUpload();
    co_await failingUpload(stage, *window);
    co_await logout(stage, *window);
    expectOwnFileUntouched(stage);
}

} // namespace tessaloom::tour
