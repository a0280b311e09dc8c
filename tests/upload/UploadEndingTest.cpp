#include "tests/kit/HeldGlobalQueue.h"
#include "tests/upload/UploadTest.h"
#include "upload/UploadCompanion.h"

#include <QApplication>
#include <QFileInfo>
#include <QProcess>
#include <QtTest/QTest>

#include <future>

namespace {

using namespace tests;
using namespace testing;

/// What ends an upload, or its panel, before its time.
class UploadEndingTest : public UploadTest
{
protected:
    UploadEndingTest() { panel->setNewPathFile(large.path(), LoneDocument::name()); }

    void startHeldUpload()
    {
        holdUploadsAfter(1 << 20);
        upload();
        waitForHeldExchange();
    }

    bool isFolderGone() const { return !QFileInfo::exists(large.folder()); }

    /// More than the buffers between client and server hold, so that a held upload cannot end.
    static constexpr int largeSize = 32 << 20;
    LoneDocument large{QByteArray(largeSize, 'x')};
};

TEST_F(UploadEndingTest, cancelsUnderWay)
{
    startHeldUpload();
    ui::click(sheet()->cancelButton());

    EXPECT_EQ(window->attachedSheet(), nullptr);
    EXPECT_FALSE(ui::isShown(panel->shadow()));
    EXPECT_TRUE(panel->taskTextField()->isEnabled());
    ASSERT_TRUE(waitUntil([this] { return hasFailed(); }));
    EXPECT_EQ(sheet()->errorMessage()->text(), QStringLiteral("cancelled"));
    EXPECT_TRUE(isFolderGone());
    server.release();
    EXPECT_TRUE(waitUntil([this] { return server.requests("*/attachments").at(0).finished; }));
    EXPECT_FALSE(server.requests("*/attachments").at(0).bodyComplete);
    EXPECT_TRUE(server.attachments("ABC-1").empty());
}

TEST_F(UploadEndingTest, cancelsBeforeTheUploadHasReallyBegun)
{
    HeldGlobalQueue slowDisk;
    holdUploadsAfter(1 << 20);
    // Qt's painting uses the threads of that pool, too.
    window->widget()->setUpdatesEnabled(false);
    upload();
    ui::click(sheet()->cancelButton());
    ASSERT_EQ(window->attachedSheet(), nullptr);
    slowDisk.letGo();

    ASSERT_TRUE(waitUntil([this] { return hasFailed(); }));
    EXPECT_EQ(sheet()->errorMessage()->text(), QStringLiteral("cancelled"));
    EXPECT_TRUE(isFolderGone());
    EXPECT_TRUE(server.attachments("ABC-1").empty());
}

/// Has no file before it is told to go on.
class SlowProvider : public UploadCompanion
{
public:
    std::optional<qint64> documentSize() const override { return std::nullopt; }
    Provider uploadBegins(const QString&) override
    {
        return [goesOn = m_goesOn] {
            goesOn.wait();
            return File{};
        };
    }
    void uploadEnded(const Ending&) override {}

    void goOn() { m_goOn.set_value(); }

private:
    std::promise<void> m_goOn;
    const std::shared_future<void> m_goesOn = m_goOn.get_future().share();
};

TEST_F(UploadEndingTest, cancelsNothingThatAnotherWindowHasBegunWhileItWaitedForItsFile)
{
    server.addIssue("ABC-2");
    const auto provider = std::make_shared<SlowProvider>();
    UploadCompanion::join(*panel, provider);
    upload();
    ui::click(sheet()->cancelButton());
    holdUploadsAfter(1 << 20);
    std::optional<std::optional<tljira::Error>> end;
    client->uploadFileInIssue(large.path(), LoneDocument::name(), QStringLiteral("ABC-2"),
                              [&end](const auto& error) { end = error; }, {});
    waitForHeldExchange();
    provider->goOn();
    ASSERT_TRUE(waitUntil([this] { return hasFailed(); }));
    drainMainQueue();
    server.release();

    ASSERT_TRUE(waitUntil([&end] { return end.has_value(); }));
    EXPECT_EQ(*end, std::nullopt);
    EXPECT_EQ(server.attachments("ABC-2").size(), 1U);
    EXPECT_TRUE(server.attachments("ABC-1").empty());
}

TEST_F(UploadEndingTest, cancelsNothingAfterASuccess)
{
    upload();
    ASSERT_EQ(outcome(), QStringLiteral("DONE"));
    ui::click(sheet()->cancelButton());
    drainMainQueue();

    EXPECT_FALSE(hasFailed());
    EXPECT_EQ(server.attachments("ABC-1").size(), 1U);
    EXPECT_EQ(log.lines().filter(QStringLiteral("before delete src")).size(), 1);
}

TEST_F(UploadEndingTest, uploadsAgainAfterACancel)
{
    startHeldUpload();
    ui::click(sheet()->cancelButton());
    ASSERT_TRUE(waitUntil([this] { return hasFailed(); }));

    server.behave();
    panel->setNewPathFile(document.path(), LoneDocument::name());
    upload();

    EXPECT_EQ(outcome(), QStringLiteral("DONE"));
    EXPECT_EQ(server.attachments("ABC-1").size(), 1U);
}

/// A second document is uploaded before the end of the first upload is known.
class TwoUploadsTest : public UploadEndingTest
{
protected:
    void uploadAnother()
    {
        panel->setNewPathFile(document.path(), LoneDocument::name());
        upload();
    }

    bool isAnotherThere() const { return QFileInfo::exists(document.path()); }

    void expectAnotherArrived()
    {
        const auto there = server.attachments("ABC-1");
        ASSERT_FALSE(there.empty());
        EXPECT_EQ(server.content(there.back().id), "contents of the document\n");
        EXPECT_TRUE(waitUntil([this] { return !panel->isUploading(); }));
        EXPECT_FALSE(isAnotherThere());
    }
};

TEST_F(TwoUploadsTest, anUploadThatIsCancelledTakesNothingFromTheNext)
{
    startHeldUpload();
    ui::click(sheet()->cancelButton());
    server.behave();
    holdUploadsAfter(1);
    uploadAnother();
    ASSERT_TRUE(waitUntil([this] {
        EXPECT_TRUE(panel->isUploading());
        return server.requests("*/attachments").size() == 2 && server.heldCount() > 0;
    }));
    drainMainQueue();

    EXPECT_TRUE(isFolderGone());
    EXPECT_TRUE(isAnotherThere());
    EXPECT_TRUE(panel->isUploading());
    EXPECT_FALSE(hasFailed());
    EXPECT_EQ(sheet()->cancelButton()->text(), QStringLiteral("Cancel"));
    // What was held may have been the first one, which its server has not given up yet.
    EXPECT_TRUE(waitUntil([this] {
        server.release();
        return isDone() || hasFailed();
    }));
    EXPECT_EQ(outcome(), QStringLiteral("DONE"));
    expectAnotherArrived();
}

TEST_F(TwoUploadsTest, anUploadThatIsStillGoingEndsBeforeTheNextBegins)
{
    startHeldUpload();
    window->close();
    window->makeKeyAndOrderFront();
    uploadAnother();
    drainMainQueue();
    EXPECT_EQ(server.requests("*/attachments").size(), 1U);
    server.behave();
    server.release();

    ASSERT_TRUE(waitUntil([this] { return server.attachments("ABC-1").size() == 2; }));
    EXPECT_EQ(server.attachments("ABC-1").at(0).size, largeSize);
    expectAnotherArrived();
    EXPECT_TRUE(isFolderGone());
}

TEST_F(TwoUploadsTest, theSheetIsThatOfTheNextOneOnceTheFirstHasEnded)
{
    startHeldUpload();
    window->close();
    window->makeKeyAndOrderFront();
    uploadAnother();
    HeldGlobalQueue slowDisk;
    server.behave();
    server.release();
    ASSERT_TRUE(waitUntil([this] { return server.attachments("ABC-1").size() == 1; }));
    const auto isFirstShown = [this] { return sheet()->sizeLabel()->text().endsWith(QStringLiteral(" mb")); };
    ASSERT_TRUE(waitUntil([&] { return !isFirstShown(); }));

    EXPECT_EQ(sheet()->sizeLabel()->text(), QStringLiteral("size is calculated"));
    EXPECT_EQ(sheet()->cancelButton()->text(), QStringLiteral("Cancel"));
    slowDisk.letGo();
    ASSERT_TRUE(waitUntil([this] { return server.attachments("ABC-1").size() == 2; }));
    expectAnotherArrived();
}

TEST_F(TwoUploadsTest, anEndThatIsReportedTwiceTakesNothingFromTheNext)
{
    server.misbehave(standin::Match::on("POST", "*/attachments").once(),
                     standin::Fault()
                         .status(502, "<html>Bad gateway</html>", "text/html")
                         .hold(standin::Point::requestBody(1 << 20)));
    upload();
    waitForHeldExchange();
    window->close();
    window->makeKeyAndOrderFront();
    uploadAnother();
    server.release();

    ASSERT_TRUE(waitUntil([this] { return server.attachments("ABC-1").size() == 1; }));
    expectAnotherArrived();
    EXPECT_EQ(log.lines().filter(QStringLiteral("before delete src")).size(), 3);
}

TEST_F(TwoUploadsTest, aCancelWhileTheNextWaitsBeginsNothing)
{
    startHeldUpload();
    ui::click(sheet()->cancelButton());
    uploadAnother();
    ui::click(sheet()->cancelButton());
    ASSERT_TRUE(waitUntil([this] { return !panel->isUploading(); }));
    drainMainQueue();

    EXPECT_EQ(server.requests("*/attachments").size(), 1U);
    EXPECT_TRUE(isAnotherThere());
    EXPECT_EQ(sheet()->errorMessage()->text(), QStringLiteral("cancelled"));
}

TEST_F(TwoUploadsTest, whatWaitsIsWhatThePanelShowedWhenTheButtonWasPressed)
{
    startHeldUpload();
    ui::click(sheet()->cancelButton());
    uploadAnother();
    server.behave();
    panel->setNewPathFile(QStringLiteral("/no/such/file"), QStringLiteral("Other"));
    ASSERT_TRUE(waitUntil([this] { return server.attachments("ABC-1").size() == 1; }));

    expectAnotherArrived();
    EXPECT_EQ(server.attachments("ABC-1").at(0).fileName, LoneDocument::name().toStdString());
}

// The keyboard.

TEST_F(UploadEndingTest, leavesTheKeyboardToTheKeyFieldWhenTheSheetHasEnded)
{
    upload();
    ASSERT_EQ(outcome(), QStringLiteral("DONE"));
    ui::click(sheet()->cancelButton());

    EXPECT_EQ(window->widget()->focusWidget(), panel->taskTextField());
}

TEST_F(UploadEndingTest, aDoubledReturnDoesNotCancel)
{
    holdUploadsAfter(1 << 20);
    ui::type(panel->taskTextField(), QStringLiteral("ABC-1"));
    QTest::keyClick(panel->taskTextField(), Qt::Key_Return);
    ASSERT_TRUE(isSheetUp());
    drainMainQueue();
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space})
        QTest::keyClick(QApplication::focusWidget(), key);
    waitForHeldExchange();

    EXPECT_TRUE(isSheetUp());
    server.release();
    EXPECT_EQ(outcome(), QStringLiteral("DONE"));
    EXPECT_EQ(server.attachments("ABC-1").size(), 1U);
}

TEST_F(UploadEndingTest, escapeCancelsUnderWayAndReturnClosesAfterTheEnd)
{
    holdUploadsAfter(1 << 20);
    upload();
    waitForHeldExchange();
    drainMainQueue();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    ASSERT_TRUE(waitUntil([this] { return !isSheetUp() && hasFailed(); }));

    server.behave();
    panel->setNewPathFile(document.path(), LoneDocument::name());
    upload();
    ASSERT_EQ(outcome(), QStringLiteral("DONE"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    EXPECT_TRUE(waitUntil([this] { return !isSheetUp(); }));
}

TEST_F(UploadEndingTest, goesOnWhenTheWindowCloses)
{
    startHeldUpload();
    window->close();

    EXPECT_EQ(window->attachedSheet(), nullptr);
    EXPECT_FALSE(window->isVisible());
    server.release();
    ASSERT_TRUE(waitUntil([this] { return isDone(); }));
    EXPECT_TRUE(isFolderGone());
    ASSERT_EQ(server.attachments("ABC-1").size(), 1U);
    EXPECT_EQ(server.attachments("ABC-1").at(0).size, largeSize);
}

TEST_F(UploadEndingTest, goesOnWhenThePanelIsLetGo)
{
    startHeldUpload();
    const std::weak_ptr<JAUploadBodyViewController> letGo = panel;
    window.reset();
    panel.reset();
    drainMainQueue();
    EXPECT_FALSE(letGo.expired());
    server.release();

    EXPECT_TRUE(waitUntil([this] { return isFolderGone(); }));
    EXPECT_EQ(server.attachments("ABC-1").size(), 1U);
}

TEST_F(UploadEndingTest, letsThePanelGoOnceTheUploadHasEnded)
{
    upload();
    ASSERT_EQ(outcome(), QStringLiteral("DONE"));
    const std::weak_ptr<JAUploadBodyViewController> letGo = panel;
    window.reset();
    panel.reset();

    EXPECT_TRUE(waitUntil([&letGo] { return letGo.expired(); }));
    client->uploadCallBack()(1, 2);
    drainMainQueue();
}

class QuitUnderWayTest : public UploadEndingTest, public WithParamInterface<const char*>
{
};

TEST_P(QuitUnderWayTest, leavesTheHostWithoutACrash)
{
    holdUploadsAfter(1 << 20);
    QProcess host;
    host.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    host.start(QStringLiteral(UPLOAD_HOST), {QString::number(server.port()), large.path(), QLatin1String(GetParam())});
    ASSERT_TRUE(waitUntil([this] { return server.heldCount() == 1; }));
    host.write("quit\n");
    ASSERT_TRUE(waitUntil([&host] { return host.state() == QProcess::NotRunning; }));

    EXPECT_EQ(host.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(host.exitCode(), 0);
    EXPECT_TRUE(server.attachments("ABC-1").empty());
}

INSTANTIATE_TEST_SUITE_P(Ways, QuitUnderWayTest, Values("quit", "exit"),
                         [](const auto& way) { return std::string(way.param); });

} // namespace
