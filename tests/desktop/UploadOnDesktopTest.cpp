#include "shell/TLJiraUpload.h"
#include "tests/desktop/DesktopTest.h"
#include "tests/desktop/XServer.h"

#include <QFileInfo>

namespace {

using namespace tests;
using standin::Fault;
using standin::Match;
using standin::Point;

/// A second and a half at the rate of the server.
constexpr int manyRepeats = 25;

class UploadOnDesktopTest : public DesktopTest
{
protected:
    void SetUp() override
    {
        logIn();
        entry = TLJiraUpload::initWithName(LoneDocument::name(), document.path());
        entry->showWindow();
        panel = entry->bodyViewController();
        sheet = panel->jaUploadingWindow();
        ASSERT_TRUE(waitUntil([this] { return hasKeyboard(panel->taskTextField()); }));
        forgetThePast();
    }

    void holdUploads()
    {
        server.misbehave(Match::on("POST", "*/attachments"), Fault().hold(Point::requestBody(1 << 20)));
    }

    bool isSheetUp() const { return entry->window()->attachedSheet() == sheet->window(); }
    bool isDone() const { return sheet->sizeLabel() && sheet->sizeLabel()->text() == QStringLiteral("DONE"); }
    std::size_t uploads() const { return server.requests("*/attachments").size(); }

    LoneDocument document{QByteArray(8 << 20, 'x')};
    std::shared_ptr<TLJiraUpload> entry;
    std::shared_ptr<JAUploadBodyViewController> panel;
    std::shared_ptr<JAUploadingWindow> sheet;
};

TEST_F(UploadOnDesktopTest, sendsTheDocument)
{
    picture(QStringLiteral("panel"));
    user.write(QStringLiteral("ABC-1"));
    user.press("Return");
    ASSERT_TRUE(waitUntil([this] { return isDone() && hasKeyboard(sheet->cancelButton()); }));
    picture(QStringLiteral("done"));
    EXPECT_EQ(server.attachments("ABC-1").size(), 1U);
    EXPECT_FALSE(QFileInfo::exists(document.folder()));

    user.press("Return");
    EXPECT_TRUE(waitUntil([this] { return !isSheetUp() && hasKeyboard(panel->taskTextField()); }));
    EXPECT_EQ(uploads(), 1U);
}

TEST_F(UploadOnDesktopTest, sendsItOnceWhileReturnIsHeld)
{
    holdUploads();
    user.write(QStringLiteral("ABC-1"));
    user.hold("Return", manyRepeats);
    waitForHeldExchange();
    EXPECT_TRUE(isSheetUp());
    EXPECT_TRUE(isInFront(entry->window()->widget()));
    picture(QStringLiteral("underWay"));
    server.release();
    ASSERT_TRUE(waitUntil([this] { return isDone(); }));
    EXPECT_EQ(uploads(), 1U);
    ASSERT_EQ(server.attachments("ABC-1").size(), 1U);
    EXPECT_EQ(server.attachments("ABC-1").at(0).size, 8 << 20);
}

TEST_F(UploadOnDesktopTest, staysDoneWhileReturnIsHeldThroughAQuickUpload)
{
    user.write(QStringLiteral("ABC-1"));
    user.holdUntil("Return", manyRepeats, [this] { return isDone(); });
    EXPECT_TRUE(isSheetUp());
    EXPECT_TRUE(isDone());
    EXPECT_EQ(uploads(), 1U);
    EXPECT_EQ(hostField.text(), QString());
}

TEST_F(UploadOnDesktopTest, isCancelledWithEscapeAndBeginsAgain)
{
    holdUploads();
    user.write(QStringLiteral("ABC-1"));
    user.press("Return");
    waitForHeldExchange();
    user.press("Escape");
    ASSERT_TRUE(waitUntil([this] { return !isSheetUp() && !panel->isUploading(); }));
    ASSERT_TRUE(waitUntil([this] { return hasKeyboard(panel->taskTextField()); }));
    EXPECT_TRUE(server.attachments("ABC-1").empty());

    server.behave();
    const LoneDocument another;
    panel->setNewPathFile(another.path(), LoneDocument::name());
    user.press("Return");
    ASSERT_TRUE(waitUntil([this] { return isDone(); }));
    EXPECT_EQ(server.attachments("ABC-1").size(), 1U);
}

TEST_F(UploadOnDesktopTest, showsWhatTheServerRefuses)
{
    server.allowAttachments(false);
    user.write(QStringLiteral("ABC-1"));
    user.press("Return");
    ASSERT_TRUE(waitUntil([this] { return ui::isOnScreen(sheet->errorView()) && hasKeyboard(sheet->cancelButton()); }));
    picture(QStringLiteral("error"));
}

TEST_F(UploadOnDesktopTest, comesBackWhenItIsMinimisedAndAskedForAgain)
{
    holdUploads();
    user.write(QStringLiteral("ABC-1"));
    user.press("Return");
    waitForHeldExchange();
    QWidget* window = entry->window()->widget();
    XServer::instance().minimise(window->winId());
    ASSERT_TRUE(waitUntil([&] { return window->isMinimized() && !window->windowHandle()->isExposed(); }));
    entry->showWindow();
    EXPECT_TRUE(waitUntil([&] { return isInFront(window); }));
    EXPECT_TRUE(isSheetUp());
    picture(QStringLiteral("back"));
}

TEST_F(UploadOnDesktopTest, comesBackWhenItIsCoveredAndAskedForAgain)
{
    QWidget* window = entry->window()->widget();
    // Not the one that it is a dialog of: that always lies below it.
    QWidget another;
    another.setGeometry(frameOf(window).adjusted(-50, -50, 50, 50));
    another.show();
    another.activateWindow();
    ASSERT_TRUE(waitUntil([&] { return isInFront(&another); }));
    entry->showWindow();
    EXPECT_TRUE(waitUntil([&] { return isInFront(window) && hasKeyboard(panel->taskTextField()); }));
}

} // namespace
