#include "shell/JMWindowController.h"
#include "shell/TLJiraUpload.h"
#include "tests/desktop/DesktopTest.h"

#include <QApplication>
#include <QTimer>

namespace {

using namespace tests;
using standin::Fault;
using standin::Match;
using standin::Point;

class EndingOnDesktopTest : public DesktopTest
{
protected:
    void openUpload()
    {
        upload = TLJiraUpload::initWithName(LoneDocument::name(), document.path());
        upload->showWindow();
    }

    void goToKey()
    {
        logIn();
        openUpload();
        ASSERT_TRUE(waitUntil([this] { return hasKeyboard(upload->bodyViewController()->taskTextField()); }));
    }

    void beginUpload()
    {
        goToKey();
        user.write(QStringLiteral("ABC-1"));
        user.press("Return");
    }

    void beginHeldUpload()
    {
        server.misbehave(Match::on("POST", "*/attachments"), Fault().hold(Point::requestBody(1 << 20)));
        beginUpload();
        waitForHeldExchange();
    }

    void openList()
    {
        logIn();
        server.addAttachment("ABC-1", {.fileName = "plan.tessaloom", .bytes = "the plan"});
        download = JMWindowController::init();
        download->showWindow();
        const auto panel = download->bodyViewController();
        ASSERT_TRUE(waitUntil([&] { return hasKeyboard(panel->issueKeyTextField()); }));
        user.write(QStringLiteral("ABC-1"));
        user.press("Return");
        list = panel->jaListAttachedWindow();
        ASSERT_TRUE(
            waitUntil([this] { return list->wrapperTableView()->isVisible() && list->tableView()->cellAtRow(0); }));
    }

    void beginDownload()
    {
        openList();
        user.click(qobject_cast<JAAttachedCell*>(list->tableView()->cellAtRow(0))->downloadButton());
    }

    LoneDocument document{QByteArray(8 << 20, 'x')};
    std::shared_ptr<TLJiraUpload> upload;
    std::shared_ptr<JMWindowController> download;
    std::shared_ptr<JAListAttachedFilesWindow> list;
};

// The close button of the title bar.

TEST_F(EndingOnDesktopTest, closesTheLoginForm)
{
    openUpload();
    ASSERT_TRUE(waitUntil([this] { return hasKeyboard(upload->jaLoginWindow()->hostTextField()); }));
    closeAndExpectFreeHost(upload->window());
}

TEST_F(EndingOnDesktopTest, closesThePanel)
{
    goToKey();
    closeAndExpectFreeHost(upload->window());
}

TEST_F(EndingOnDesktopTest, closesDuringAnUpload)
{
    beginHeldUpload();
    closeAndExpectFreeHost(upload->window());
    server.release();
    EXPECT_TRUE(waitUntil([this] { return !upload->bodyViewController()->isUploading(); }));
}

TEST_F(EndingOnDesktopTest, closesAfterAnUpload)
{
    beginUpload();
    const auto sheet = upload->bodyViewController()->jaUploadingWindow();
    ASSERT_TRUE(waitUntil([&] { return sheet->sizeLabel()->text() == QStringLiteral("DONE"); }));
    closeAndExpectFreeHost(upload->window());
}

TEST_F(EndingOnDesktopTest, closesAList)
{
    openList();
    closeAndExpectFreeHost(download->window());
}

TEST_F(EndingOnDesktopTest, closesDuringADownload)
{
    server.misbehave(Match::on("*/secure/attachment/*"), Fault().hold(Point::responseBody(3)));
    beginDownload();
    ASSERT_TRUE(waitUntil([this] { return server.heldCount() == 1; }));
    closeAndExpectFreeHost(download->window());
}

TEST_F(EndingOnDesktopTest, closesAfterADownload)
{
    beginDownload();
    ASSERT_TRUE(waitUntil([this] { return list->isDone(); }));
    closeAndExpectFreeHost(download->window());
}

// The end of the program, asked for once.

class QuitOnDesktopTest : public EndingOnDesktopTest
{
protected:
    /// Runs the host's event loop; `state` is what the user does before the program is asked to end.
    static void quitIn(const std::function<void()>& state)
    {
        bool isAsked = false;
        QTimer::singleShot(1, [&] {
            state();
            isAsked = true;
            QApplication::quit();
        });
        // Only a refused request needs it.
        QTimer::singleShot(std::chrono::minutes(2), [] { QApplication::exit(EXIT_FAILURE); });
        EXPECT_EQ(QApplication::exec(), EXIT_SUCCESS);
        EXPECT_TRUE(isAsked);
    }
};

TEST_F(QuitOnDesktopTest, quitsWithAPanel)
{
    quitIn([this] { goToKey(); });
}

TEST_F(QuitOnDesktopTest, quitsDuringAnUpload)
{
    quitIn([this] { beginHeldUpload(); });
}

TEST_F(QuitOnDesktopTest, quitsWithAList)
{
    quitIn([this] { openList(); });
}

} // namespace
