#include "tests/states/InSight.h"
#include "tests/wayland/WaylandTest.h"

#include <QApplication>
#include <QFile>
#include <QTimer>
#include <QWindow>

namespace {

using namespace tests;
using standin::Fault;
using standin::Match;
using standin::Point;

constexpr int manyRepeats = 20;

class JobsOnWaylandTest : public WaylandTest
{
protected:
    JAUploadBodyViewController& panel() const { return *scene.upload()->bodyViewController(); }
    JAUploadingWindow& sheet() const { return *panel().jaUploadingWindow(); }
    bool isSheetUp() const { return scene.upload()->window()->attachedSheet() == sheet().window(); }
    bool isDone() const { return sheet().sizeLabel() && sheet().sizeLabel()->text() == QStringLiteral("DONE"); }
    std::size_t uploads() const { return server.requests("*/attachments").size(); }

    JAListAttachedFilesWindow& list() const { return *scene.download()->bodyViewController()->jaListAttachedWindow(); }
};

TEST_F(JobsOnWaylandTest, showsADialogOfTheHostsWindow)
{
    EXPECT_FALSE(swayWindow(host.windowTitle()).isFloating);
    scene.loginForm();
    expectInFront();

    EXPECT_TRUE(seen().isFloating);
    EXPECT_TRUE(QRect(0, 0, 1280, 1024).contains(seen().frame));
    EXPECT_EQ(scene.window()->widget()->windowHandle()->transientParent(), host.windowHandle());
    picture(QStringLiteral("form"));
}

TEST_F(JobsOnWaylandTest, takesAWrongPasswordAndThenTheRightOne)
{
    scene.loginRefused();
    const auto form = scene.upload()->jaLoginWindow();
    EXPECT_EQ(form->passwordTextField()->selectedText(), QStringLiteral("wrong"));
    picture(QStringLiteral("refused"));

    hands.write(QStringLiteral("secret"));
    hands.press(Qt::Key_Return);
    ASSERT_TRUE(waitUntil([this] { return hasKeyboard(panel().taskTextField()); }));
    expectInFront();
    picture(QStringLiteral("accepted"));
}

TEST_F(JobsOnWaylandTest, sendsTheDocument)
{
    scene.uploadDone();
    EXPECT_EQ(uploads(), 1U);
    picture(QStringLiteral("done"));

    hands.press(Qt::Key_Return);
    EXPECT_TRUE(waitUntil([this] { return !isSheetUp() && hasKeyboard(panel().taskTextField()); }));
}

TEST_F(JobsOnWaylandTest, sendsItWithThePointer)
{
    scene.uploadPanel();
    hands.write(QStringLiteral("ABC-1"));
    hands.click(panel().uploadFileButton());
    ASSERT_TRUE(waitUntil([this] { return isDone(); }));
    hands.click(sheet().cancelButton());
    EXPECT_TRUE(waitUntil([this] { return !isSheetUp(); }));
    EXPECT_EQ(uploads(), 1U);
}

TEST_F(JobsOnWaylandTest, sendsItOnceWhileReturnIsHeld)
{
    scene.uploadPanel();
    hands.write(QStringLiteral("ABC-1"));
    hands.holdUntil(Qt::Key_Return, manyRepeats, [this] { return isDone(); });

    EXPECT_TRUE(isSheetUp());
    EXPECT_TRUE(isDone());
    EXPECT_EQ(uploads(), 1U);
    EXPECT_EQ(hostField.text(), QString());
}

TEST_F(JobsOnWaylandTest, isCancelledWithEscape)
{
    scene.uploading();
    picture(QStringLiteral("underWay"));
    hands.press(Qt::Key_Escape);

    ASSERT_TRUE(waitUntil([this] { return !isSheetUp() && !panel().isUploading(); }));
    EXPECT_TRUE(waitUntil([this] { return hasKeyboard(panel().taskTextField()); }));
    expectInFront();
}

TEST_F(JobsOnWaylandTest, fetchesADocument)
{
    scene.downloadDone();
    picture(QStringLiteral("done"));

    hands.press(Qt::Key_Return);
    ASSERT_TRUE(waitUntil([this] { return !scene.window()->isVisible(); }));
    QFile file(scene.download()->bodyViewController()->path().value_or(QString()));
    ASSERT_TRUE(file.open(QFile::ReadOnly));
    EXPECT_THAT(file.readAll().toStdString(), testing::AnyOf("the plan", "another"));
    expectFreeHost();
}

TEST_F(JobsOnWaylandTest, logsOutAndInAgain)
{
    scene.uploadPanel();
    const auto header = scene.upload()->headViewController();
    const auto form = scene.upload()->jaLoginWindow();
    for (int turn = 0; turn < 3; ++turn) {
        scene.goTo(header->view()->findChild<QPushButton*>(QStringLiteral("logoutButton")));
        hands.press(Qt::Key_Space);
        ASSERT_TRUE(waitUntil([&] { return form->view()->isAncestorOf(QApplication::focusWidget()); }));
        expectInFront();
        scene.fillIn(*form, "secret");
        hands.press(Qt::Key_Return);
        ASSERT_TRUE(waitUntil([this] { return hasKeyboard(panel().taskTextField()); }));
        expectInFront();
        EXPECT_TRUE(QRect(0, 0, 1280, 1024).contains(seen().frame));
    }
    picture(QStringLiteral("atTheEnd"));
}

TEST_F(JobsOnWaylandTest, comesBackWhenItIsCoveredAndAskedForAgain)
{
    scene.uploadPanel();
    QWidget another;
    another.setWindowTitle(QStringLiteral("Another"));
    QLineEdit field(&another);
    another.show();
    ASSERT_TRUE(waitUntil([&] { return hasKeyboard(&field); }));
    // A program may take the keyboard elsewhere when its user has done something in it.
    hands.write(QStringLiteral("x"));

    scene.upload()->showWindow();
    EXPECT_TRUE(waitUntil([this] { return scene.window()->isKeyWindow(); }));
    expectInFront();
}

TEST_F(JobsOnWaylandTest, quitsWithASheetUp)
{
    bool isAsked = false;
    QTimer::singleShot(1, [&] {
        scene.uploading();
        isAsked = true;
        QApplication::quit();
    });
    // Only a refused request needs it.
    QTimer::singleShot(std::chrono::minutes(2), [] { QApplication::exit(EXIT_FAILURE); });
    EXPECT_EQ(QApplication::exec(), EXIT_SUCCESS);
    EXPECT_TRUE(isAsked);
}

} // namespace
