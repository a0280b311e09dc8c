#include "shell/JAWindowController.h"
#include "shell/TLJiraUpload.h"
#include "tests/desktop/DesktopHands.h"
#include "tests/desktop/DesktopTest.h"
#include "tests/states/Animations.h"
#include "tests/states/Scene.h"

#include <QApplication>
#include <QScreen>

namespace {

using namespace tests;

class LoginOnDesktopTest : public DesktopTest
{
};

TEST_F(LoginOnDesktopTest, takesAWrongPasswordAndThenTheRightOne)
{
    const LoneDocument document;
    const auto entry = TLJiraUpload::initWithName(LoneDocument::name(), document.path());
    entry->showWindow();
    const auto form = entry->jaLoginWindow();
    ASSERT_TRUE(waitUntil([&] { return hasKeyboard(form->hostTextField()); }));
    picture(QStringLiteral("form"));
    user.type(form->hostTextField(), address);
    user.press("Tab");
    user.write(QStringLiteral("anna"));
    user.press("Tab");
    user.write(QStringLiteral("wrong"));
    user.press("Return");
    ASSERT_TRUE(waitUntil([&] { return !form->errorLabel()->text().isEmpty() && form->loginButton()->isEnabled(); }));
    ASSERT_TRUE(waitUntil([&] { return hasKeyboard(form->passwordTextField()); }));
    EXPECT_EQ(form->passwordTextField()->selectedText(), QStringLiteral("wrong"));
    picture(QStringLiteral("refused"));

    user.write(QStringLiteral("secret"));
    EXPECT_EQ(form->hostTextField()->text(), address);
    user.press("Return");
    ASSERT_TRUE(waitUntil([&] { return hasKeyboard(entry->bodyViewController()->taskTextField()); }));
    ASSERT_TRUE(waitUntil([&] { return !entry->headViewController()->avatarImage()->image().isNull(); }));
    picture(QStringLiteral("accepted"));
}

TEST_F(LoginOnDesktopTest, keepsItsTitleBarOnTheScreenHoweverOftenItsUserLogsOut)
{
    constexpr int times = 20;
    DesktopHands hands(user);
    Scene scene(hands, server, {});
    scene.loginForm();
    const auto entry = scene.upload();
    const QWidget* window = entry->window()->widget();
    const auto isTitleBarOnScreen = [&] {
        const QRect frame = frameOf(window);
        const QRect screen = window->screen()->geometry();
        return frame.top() < window->geometry().top() && screen.contains(frame.topLeft()) &&
               screen.contains(frame.topRight());
    };
    auto* const logOut = entry->headViewController()->view()->findChild<QPushButton*>(QStringLiteral("logoutButton"));
    for (int turn = 1; turn <= times && !HasFailure(); ++turn) {
        SCOPED_TRACE(turn);
        scene.fillIn(*entry->jaLoginWindow(), "secret");
        user.press("Return");
        ASSERT_TRUE(waitUntil([&] { return hasKeyboard(entry->bodyViewController()->taskTextField()); }));
        waitForAnimations();
        EXPECT_TRUE(waitUntil(isTitleBarOnScreen));
        scene.goTo(logOut);
        user.press("space");
        ASSERT_TRUE(
            waitUntil([&] { return entry->jaLoginWindow()->view()->isAncestorOf(QApplication::focusWidget()); }));
        waitForAnimations();
        EXPECT_TRUE(waitUntil(isTitleBarOnScreen));
    }
    picture(QStringLiteral("atTheEnd"));
    closeAndExpectFreeHost(entry->window());
}

/// The header of the older window offers a login in a sheet.
class HeaderSheetTest : public DesktopTest
{
protected:
    void SetUp() override
    {
        client->setHost(address);
        entry->showWindow();
        form = entry->headViewController()->jaLoginWindow();
        user.click(loginButton());
        // The address is known.
        ASSERT_TRUE(waitUntil([this] { return hasKeyboard(form->emailTextField()); }));
        ASSERT_EQ(form->hostTextField()->text(), address);
    }

    QPushButton* loginButton() const
    {
        return entry->headViewController()->view()->findChild<QPushButton*>(QStringLiteral("loginButton"));
    }

    void expectLeft()
    {
        EXPECT_TRUE(waitUntil([this] { return entry->window()->attachedSheet() == nullptr; }));
        drainMainQueue();
        EXPECT_TRUE(entry->window()->isVisible());
        user.click(loginButton());
        EXPECT_TRUE(waitUntil([this] { return form->view()->isAncestorOf(QApplication::focusWidget()); }));
    }

    const std::shared_ptr<JAWindowController> entry = JAWindowController::init();
    std::shared_ptr<JALoginWindow> form;
};

TEST_F(HeaderSheetTest, isLeftWithCancel)
{
    picture(QStringLiteral("up"));
    user.click(form->cancelButton());
    expectLeft();
}

TEST_F(HeaderSheetTest, isLeftWithEscape)
{
    user.press("Escape");
    expectLeft();
}

TEST_F(HeaderSheetTest, goesWithItsWindow)
{
    closeAndExpectFreeHost(entry->window());
}

TEST_F(HeaderSheetTest, logsIn)
{
    user.type(form->hostTextField(), address);
    user.type(form->emailTextField(), QStringLiteral("anna"));
    user.type(form->passwordTextField(), QStringLiteral("secret"));
    user.press("Return");
    const auto header = entry->headViewController();
    ASSERT_TRUE(waitUntil([&] { return header->nameLabel()->text() == QStringLiteral("anna"); }));
    EXPECT_EQ(entry->window()->attachedSheet(), nullptr);
    EXPECT_FALSE(ui::isOnScreen(loginButton()));
    picture(QStringLiteral("done"));
}

} // namespace
