// The windows of a host that chose the desktop's keyring.

#include "client/KeyringLogin.h"
#include "platform/toolkit/views/View.h"
#include "records/SavedLogin.h"
#include "tests/kit/WithKeyring.h"
#include "tests/shell/TLJiraUploadTest.h"

#include <QLocale>

namespace {

using namespace Qt::StringLiterals;
using namespace tests;
using testing::IsEmpty;

const QString application = u"tests"_s;

class KeyringWindowsTest : public WithKeyring, public TLJiraUploadTest
{
protected:
    void startKeyring() { ASSERT_TRUE(keyring.start()); }

    void openTheForm()
    {
        open();
        ASSERT_TRUE(waitForLoginForm());
    }
    JALoginWindow& form() const { return *entry->jaLoginWindow(); }
    void fillIn() const
    {
        ui::type(form().hostTextField(), address);
        ui::type(form().emailTextField(), QLatin1String(GetParam().user));
        ui::type(form().passwordTextField(), QLatin1String(GetParam().secret));
    }
    void logInHere()
    {
        openTheForm();
        fillIn();
        ui::click(form().loginButton());
        ASSERT_TRUE(waitForBody());
        // The last that the header asks for.
        ASSERT_TRUE(waitUntil([this] { return !entry->headViewController()->avatarImage()->image().isNull(); }));
        forgetThePast();
    }
    /// What this process knows goes, its windows first; keyring and settings stay.
    void beginNextRun()
    {
        entry->window()->close();
        drainMainQueue();
        records::setSecretsInMemory({});
        forgetThePast();
    }
    bool waitForError() const
    {
        return waitUntil([this] { return ui::isOnScreen(form().errorLabel()) && !errorText().isEmpty(); });
    }
    QString errorText() const { return form().errorLabel()->text(); }
    void pressLogOut() const
    {
        ui::click(tljira::findView<QPushButton>(entry->headViewController()->view(), "logoutButton"));
    }
    bool isLookingForSession() const
    {
        return ui::isOnScreen(tljira::findView<QLabel>(entry->view(), "connectingLabel"));
    }
};

INSTANTIATE_TEST_SUITE_P(By, KeyringWindowsTest, testing::ValuesIn(signInWays()), testing::PrintToStringParamName());

TEST_P(KeyringWindowsTest, bringTheLoginIntoTheKeyringAlone)
{
    startKeyring();
    logInHere();
    const QByteArray secret = DesktopKeyring::secretOf(application);
    ASSERT_FALSE(secret.isEmpty());
    EXPECT_TRUE(records::savedLogin().synchronize());
    EXPECT_THAT(filesWith({secret, secret.toBase64(), GetParam().secret}), IsEmpty());
}

TEST_P(KeyringWindowsTest, findTheLoginOfAnEarlierRun)
{
    startKeyring();
    logInHere();
    beginNextRun();
    keyring.hold();
    open();
    drainMainQueue();
    EXPECT_TRUE(isLookingForSession());
    EXPECT_THAT(server.requests(), IsEmpty());
    keyring.release();
    EXPECT_TRUE(waitForBody());
}

TEST_P(KeyringWindowsTest, sayThatNoKeyringRuns)
{
    openTheForm();
    fillIn();
    ui::click(form().loginButton());
    ASSERT_TRUE(waitForError());
    EXPECT_TRUE(errorText().startsWith(u"The desktop’s keyring cannot be reached. Is one running?"_s));
    EXPECT_TRUE(form().loginButton()->isEnabled());
    EXPECT_TRUE(ui::isOnScreen(form().view()));
    EXPECT_TRUE(records::savedLogin().synchronize());
    EXPECT_THAT(filesWith({GetParam().secret}), IsEmpty());
}

TEST_P(KeyringWindowsTest, sayThatTheKeyringIsLockedAndLogInWhenItIsNot)
{
    startKeyring();
    logInHere();
    beginNextRun();
    ASSERT_TRUE(keyring.lock());
    openTheForm();
    ASSERT_TRUE(waitForError());
    EXPECT_EQ(errorText(), u"The desktop’s keyring is locked, or your login is no longer in it."_s);
    EXPECT_THAT(server.requests(), IsEmpty());
    fillIn();
    ui::click(form().loginButton());
    ASSERT_TRUE(
        waitUntil([this] { return errorText() == u"The desktop’s keyring is locked. Unlock it and try again."; }));
    keyring.stop();
    startKeyring();
    ui::click(form().loginButton());
    EXPECT_TRUE(waitForBody());
}

TEST_P(KeyringWindowsTest, sayItInTheUsersLanguage)
{
    QLocale::setDefault(QLocale(u"de"_s));
    openTheForm();
    fillIn();
    ui::click(form().loginButton());
    ASSERT_TRUE(waitForError());
    EXPECT_TRUE(errorText().startsWith(u"Der Schlüsselbund des Desktops ist nicht erreichbar. Läuft einer?"_s))
        << errorText().toStdString();
}

TEST_P(KeyringWindowsTest, sayThatALockedKeyringGoesOnHoldingTheLogin)
{
    startKeyring();
    logInHere();
    ASSERT_TRUE(keyring.lock());
    pressLogOut();
    ASSERT_TRUE(waitForError());
    EXPECT_EQ(errorText(), u"Your login is still in the desktop’s keyring. Is that running and unlocked?"_s);
}

TEST_P(KeyringWindowsTest, tellTheDelegateThatALogoutHasNotWorked)
{
    struct Delegate : JAControllerDelegate
    {
        void jaValidSession() override {}
        void jaInvalidSession() override {}
        void jaControlleLogoutCompletion(bool success, const std::optional<tljira::Error>&) override { told = success; }
        std::optional<bool> told;
    };
    const auto delegate = std::make_shared<Delegate>();
    startKeyring();
    logInHere();
    ASSERT_TRUE(keyring.lock());
    client->setDelegate(delegate);
    pressLogOut();
    ASSERT_TRUE(waitUntil([&] { return delegate->told.has_value(); }));
    EXPECT_FALSE(*delegate->told);
}

TEST_P(KeyringWindowsTest, removeTheLoginFromTheKeyring)
{
    startKeyring();
    logInHere();
    pressLogOut();
    ASSERT_TRUE(waitForLoginForm());
    ASSERT_TRUE(waitUntil([] { return !client::isLoginInKeyring() && !DesktopKeyring::hasTextOf(application); }));
    drainMainQueue();
    EXPECT_FALSE(ui::isOnScreen(form().errorLabel()));
}

TEST_P(KeyringWindowsTest, mayBeClosedWhileTheKeyringAsks)
{
    startKeyring();
    logInHere();
    beginNextRun();
    keyring.hold();
    open();
    ui::click(tljira::findView<QPushButton>(tljira::findView<QWidget>(entry->view(), "waitingView"), "cancelButton"));
    ASSERT_TRUE(waitUntil([this] { return !entry->window()->isVisible(); }));
    entry.reset();
    keyring.release();
    open();
    EXPECT_TRUE(waitForBody());
}

TEST_P(KeyringWindowsTest, logInThoughTheyAreClosedWhileTheKeyringAsks)
{
    startKeyring();
    openTheForm();
    entry->closeOnCancel();
    fillIn();
    keyring.hold();
    ui::click(form().loginButton());
    ASSERT_TRUE(waitUntil([this] { return server.requestCount() > 0; }));
    drainMainQueue();
    EXPECT_FALSE(form().loginButton()->isEnabled());
    ui::click(form().cancelButton());
    ASSERT_TRUE(waitUntil([this] { return !entry->window()->isVisible(); }));
    keyring.release();
    ASSERT_TRUE(waitUntil([] { return client::isLoginInKeyring(); }));
    open();
    EXPECT_TRUE(waitForBody());
}

} // namespace
