// What the login form says of a host's choices.

#include "platform/toolkit/nib/ViewClasses.h"
#include "platform/toolkit/views/View.h"
#include "records/TLJiraOptions.h"
#include "shell/JALoginWindow.h"
#include "tests/kit/JiraTest.h"

namespace {

using namespace tests;

class SignInFormTest : public JiraTest
{
protected:
    ~SignInFormTest() override { TLJiraOptions::use({}); }

    void open(const TLJiraOptions& options)
    {
        TLJiraOptions::use(options);
        form = JALoginWindow::init();
        form->window()->makeKeyAndOrderFront();
    }
    QLabel* label(const char* name) const { return tljira::findView<QLabel>(form->view(), name); }

    std::shared_ptr<JALoginWindow> form;
};

TEST_F(SignInFormTest, saysWhatItAlwaysSaysWithoutAChoice)
{
    open({});
    EXPECT_EQ(label("hostHelp")->text(), QStringLiteral("Of the address, scheme and host count"));
    EXPECT_EQ(label("passwordCaption")->text(), QStringLiteral("&Password"));
    EXPECT_EQ(form->passwordTextField()->accessibleName(), QStringLiteral("Password"));
    EXPECT_EQ(form->passwordTextField()->accessibleDescription(), QString());
    EXPECT_FALSE(ui::isShown(label("tokenHelp")));
}

TEST_F(SignInFormTest, wantsTheWholeAddress)
{
    open({.address = TLJiraOptions::Address::Whole});
    EXPECT_EQ(label("hostHelp")->text(), QStringLiteral("With port and path, if it has them"));
    EXPECT_EQ(form->hostTextField()->accessibleDescription(), label("hostHelp")->text());
    EXPECT_EQ(label("passwordCaption")->text(), QStringLiteral("&Password"));
    EXPECT_FALSE(ui::isShown(label("tokenHelp")));
}

TEST_F(SignInFormTest, wantsATokenAndSaysWhereItsUserMakesOne)
{
    open({.signIn = TLJiraOptions::SignIn::Token});
    EXPECT_EQ(label("hostHelp")->text(), QStringLiteral("Of the address, scheme and host count"));
    EXPECT_EQ(label("passwordCaption")->text(), QStringLiteral("API &token"));
    EXPECT_EQ(label("passwordCaption")->buddy(), form->passwordTextField());
    EXPECT_EQ(form->passwordTextField()->accessibleName(), QStringLiteral("API token"));
    EXPECT_EQ(form->passwordTextField()->echoMode(), QLineEdit::Password);
    ASSERT_TRUE(ui::isShown(label("tokenHelp")));
    EXPECT_TRUE(label("tokenHelp")->text().contains(QStringLiteral("id.atlassian.com")));
    EXPECT_EQ(form->passwordTextField()->accessibleDescription(), label("tokenHelp")->text());
}

TEST_F(SignInFormTest, doesWithoutAPlaceForTheToken)
{
    tljira::observeLoadedViews([](QWidget* view) {
        if (view->objectName() == QStringLiteral("passwordTextField"))
            view->setObjectName(QStringLiteral("anotherField"));
    });
    open({.signIn = TLJiraOptions::SignIn::Token});
    EXPECT_EQ(form->passwordTextField(), nullptr);
    EXPECT_TRUE(ui::isShown(label("tokenHelp")));
}

TEST_F(SignInFormTest, tellsOfATokenThatIsNoneWithoutAskingTheServer)
{
    open({.signIn = TLJiraOptions::SignIn::Token});
    ui::type(form->hostTextField(), Jira::address);
    ui::type(form->passwordTextField(), QStringLiteral("two words"));
    ui::click(form->loginButton());
    ASSERT_TRUE(waitUntil([this] { return ui::isOnScreen(form->errorLabel()); }));
    EXPECT_EQ(form->errorLabel()->text(),
              QStringLiteral("This is no token: it has blanks, line breaks or other characters that no token has."));
    EXPECT_TRUE(form->loginButton()->isEnabled());
    EXPECT_TRUE(form->passwordTextField()->hasFocus());
    EXPECT_EQ(server.requestCount(), 0U);
}

TEST_F(SignInFormTest, asksForTheTokenThatIsMissing)
{
    open({.signIn = TLJiraOptions::SignIn::Token});
    ui::type(form->hostTextField(), Jira::address);
    ui::press(form->window()->widget(), Qt::Key_Return);
    ASSERT_TRUE(waitUntil([this] { return ui::isOnScreen(form->errorLabel()); }));
    EXPECT_EQ(form->errorLabel()->text(), QStringLiteral("No token was given."));
    EXPECT_EQ(form->window()->widget()->focusWidget(), form->passwordTextField());
    EXPECT_EQ(server.requestCount(), 0U);
}

TEST_F(SignInFormTest, saysItInTheUsersLanguage)
{
    QLocale::setDefault(QLocale(QStringLiteral("de")));
    open({.address = TLJiraOptions::Address::Whole, .signIn = TLJiraOptions::SignIn::Token});
    EXPECT_EQ(label("hostHelp")->text(), QStringLiteral("Mit Port und Pfad, wenn sie dazugehören"));
    EXPECT_EQ(label("passwordCaption")->text(), QStringLiteral("API-&Token"));
    ui::type(form->hostTextField(), Jira::address);
    ui::type(form->passwordTextField(), QStringLiteral("wrong"));
    ui::click(form->loginButton());
    ASSERT_TRUE(waitUntil([this] { return ui::isOnScreen(form->errorLabel()); }));
    EXPECT_EQ(form->errorLabel()->text(), QStringLiteral("Der Server nimmt dieses Token nicht an."));
}

} // namespace
