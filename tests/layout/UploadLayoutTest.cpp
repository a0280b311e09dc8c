// Every state of the windows in which a document is attached, in every look.

#include "tests/layout/LookTest.h"
#include "tests/shell/TLJiraUploadTest.h"

#include "platform/toolkit/views/View.h"
#include "records/TLJiraOptions.h"
#include "shell/JAWindowController.h"

#include <QScrollArea>

namespace {

using namespace tests;
using standin::Fault;
using standin::Match;
using standin::Point;

/// Defines showRate(), which only a real upload that takes its time can bring about. The names of private members may
/// be used where a template is instantiated explicitly.
template <auto Member>
struct Rate
{
    friend void showRate(JAUploadingWindow& sheet, const QString& words) { (sheet.*Member)(words); }
};
template struct Rate<&JAUploadingWindow::showRate>;
void showRate(JAUploadingWindow& sheet, const QString& words);

class UploadLayoutTest : public LookTest<TLJiraUploadTest>
{
protected:
    /// The entry window with its panel, for a new document.
    void openPanel()
    {
        logIn();
        document.emplace(QByteArray(5 << 20, 'x'));
        entry = TLJiraUpload::initWithName(QString::fromUtf8(GetParam().document), document->path());
        entry->showWindow();
        ASSERT_TRUE(waitForBody());
        const auto* name = entry->headViewController()->displayNameLabel();
        ASSERT_TRUE(waitUntil([&] { return name->text() == QString::fromUtf8(GetParam().person); }));
    }

    void startUpload(const QString& key)
    {
        ui::type(entry->bodyViewController()->taskTextField(), key);
        ui::click(entry->bodyViewController()->uploadFileButton());
    }

    void walkThroughPanel()
    {
        server.misbehave(Match::on("/rest/api/2/myself"), Fault().hold(Point::responseHead(0)));
        logIn();
        open();
        ASSERT_TRUE(waitForBody());
        ASSERT_TRUE(waitUntil([this] { return server.heldCount() > 0; }));
        look("looking-up", *entry->window());
        server.behave();
        server.release();
        entry->window()->close();

        openPanel();
        look("panel", *entry->window());
        server.misbehave(Match::on("POST", "*/attachments"), Fault().hold(Point::requestBody(1 << 20)));
        startUpload(QStringLiteral("ABC-1"));
        waitForHeldExchange();
        const auto sheet = entry->bodyViewController()->jaUploadingWindow();
        // As long as they get.
        sheet->setUploadingState(60, QStringLiteral(" 1234.5 / 2469.13 mb"));
        sheet->setSent(1, 2);
        showRate(*sheet, QStringLiteral("60 % · 123.4 MB/s · about 59 min left"));
        look("uploading", *sheet->window());
        sheet->setSent(8000 << 10, 8000 << 10);
        look("waiting", *sheet->window());
        server.behave();
        server.release();
        ASSERT_TRUE(waitUntil([&] { return sheet->sizeLabel()->text() == QStringLiteral("DONE"); }));
        look("done", *sheet->window());
        ui::click(sheet->cancelButton());
        look("attached", *entry->window());
        entry->window()->close();
    }

    void walkThroughFailure()
    {
        openPanel();
        startUpload(QStringLiteral("NO-1"));
        const auto sheet = entry->bodyViewController()->jaUploadingWindow();
        ASSERT_TRUE(waitUntil([&] { return ui::isShown(sheet->errorView()); }));
        look("failed", *sheet->window());
        const auto* scroll = tljira::findView<QScrollArea>(sheet->errorView(), "errorScroll");
        EXPECT_GE(scroll->viewport()->height(), scroll->widget()->height());
        ui::click(sheet->cancelButton());
        const auto* gone = tljira::findView<QLabel>(entry->bodyViewController()->view(), "goneLabel");
        ASSERT_TRUE(waitUntil([&] { return ui::isOnScreen(gone); }));
        look("gone", *entry->window());
        entry->window()->close();
    }

    std::optional<LoneDocument> document;
};

TEST_P(UploadLayoutTest, hasRoomForEverythingWhileItLooksForTheSession)
{
    walkInAllSizes([this] {
        logIn();
        server.misbehave(Match::on("GET", "/rest/auth/1/session"), Fault().hold(Point::responseHead(0)));
        open();
        waitForHeldExchange();
        look("session", *entry->window());
        server.behave();
        server.release();
        ASSERT_TRUE(waitForBody());
        entry->window()->close();
    });
}

TEST_P(UploadLayoutTest, hasRoomForEverythingInTheLoginForm)
{
    walkInAllSizes([this] {
        client->setHost(std::nullopt);
        open();
        ASSERT_TRUE(waitForLoginForm());
        look("login", *entry->window());
        logInThroughTheForm(QStringLiteral("wrong"));
        look("refused", *entry->window());
        server.misbehave(Match::on("POST", "/rest/auth/1/session"), Fault().hold(Point::responseHead(0)));
        ui::click(entry->jaLoginWindow()->loginButton());
        waitForHeldExchange();
        look("logging-in", *entry->window());
        server.behave();
        server.release();
        ASSERT_TRUE(waitUntil([this] { return entry->jaLoginWindow()->loginButton()->isEnabled(); }));
        entry->window()->close();
    });
}

TEST_P(UploadLayoutTest, hasRoomForEverythingInTheFormForTokens)
{
    walkInAllSizes([this] {
        TLJiraOptions::use({.address = TLJiraOptions::Address::Whole, .signIn = TLJiraOptions::SignIn::Token});
        client->setHost(std::nullopt);
        open();
        ASSERT_TRUE(waitForLoginForm());
        look("token", *entry->window());
        server.misbehave(Match::on("*/myself"), Fault().status(403, "{}", "application/json"));
        const auto form = entry->jaLoginWindow();
        ui::type(form->hostTextField(), QStringLiteral("http://jira.example.test:8080/jira"));
        ui::type(form->passwordTextField(), QString::fromLatin1(Jira::accessToken));
        ui::click(form->loginButton());
        ASSERT_TRUE(waitUntil([&] { return !form->errorLabel()->text().isEmpty(); }));
        look("token-refused", *entry->window());
        server.behave();
        entry->window()->close();
        TLJiraOptions::use({});
    });
}

TEST_P(UploadLayoutTest, hasRoomForEverythingInThePanelAndItsSheet)
{
    walkInAllSizes([this] { walkThroughPanel(); });
}

TEST_P(UploadLayoutTest, hasRoomForEverythingInAFailedUpload)
{
    walkInAllSizes([this] { walkThroughFailure(); });
}

TEST_P(UploadLayoutTest, hasRoomForEverythingInTheOlderWindow)
{
    walkInAllSizes([this] {
        const auto older = JAWindowController::initWithPath(QStringLiteral("/home/anna/plan.tessaloom"));
        older->showWindow();
        look("older", *older->window());
        ui::click(older->bodyViewController()->uploadButton());
        look("older-uploading", *older->window());
        ui::click(tljira::findView<QPushButton>(older->headViewController()->view(), "loginButton"));
        look("older-login", *older->headViewController()->jaLoginWindow()->window());
        older->window()->close();
    });
}

INSTANTIATE_TEST_SUITE_P(looks, UploadLayoutTest, testing::ValuesIn(allLooks()),
                         [](const auto& test) { return test.param.name; });

} // namespace
