// Both jobs by their windows, where the login lies in the desktop's keyring.

#include "records/KeyringEntry.h"
#include "records/SavedLogin.h"
#include "shell/JALoginWindow.h"
#include "tests/framework/jobs/JobsTest.h"
#include "tests/kit/WithKeyring.h"

namespace {

using namespace tests;

const QString application = QStringLiteral("tests");

class KeyringJobsTest : public WithKeyring, public JobsTest
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(keyring.start());
        host->show();
    }

    void logInBy(JALoginWindow& form)
    {
        ASSERT_TRUE(waitUntil([&] { return ui::isOnScreen(form.loginButton()); }));
        ui::type(form.hostTextField(), address);
        ui::type(form.emailTextField(), QLatin1String(GetParam().user));
        ui::type(form.passwordTextField(), QLatin1String(GetParam().secret));
        ui::click(form.loginButton());
    }
    /// What this process knows of the login goes; keyring and settings stay.
    static void beginNextRun() { records::setSecretsInMemory({}); }

    /// The session's value or the token.
    void expectInTheKeyringAlone(const QByteArray& secret) const
    {
        EXPECT_EQ(DesktopKeyring::secretOf(application), secret);
        EXPECT_TRUE(records::savedLogin().synchronize());
        EXPECT_THAT(filesWith(QByteArrayList{secret, secret.toBase64()} + GetParam().formsOfToken()),
                    testing::IsEmpty());
        for (const QByteArray& form : GetParam().formsOfToken())
            EXPECT_FALSE(log.lines().join(u'\n').toUtf8().contains(form)) << form.toStdString();
    }
    void expectRequestsOfThisWay() const
    {
        ASSERT_FALSE(server.requests().empty());
        for (const auto& request : server.requests()) {
            EXPECT_EQ(request.header("Authorization"), GetParam().authorization()) << request.target;
            EXPECT_EQ(request.headerCount("Cookie"), GetParam().isByToken ? 0 : 1) << request.target;
        }
    }
};

INSTANTIATE_TEST_SUITE_P(By, KeyringJobsTest, testing::ValuesIn(signInWays()), testing::PrintToStringParamName());

TEST_P(KeyringJobsTest, attachAndFetchWithWhatItHas)
{
    ASSERT_TRUE(attach({QStringLiteral("plan.tessaloom"), bytes}));
    logInBy(*upload->jaLoginWindow());
    ASSERT_TRUE(waitUntil([this] { return ui::isOnScreen(panel().uploadView()); }));
    const QByteArray secret = DesktopKeyring::secretOf(application);
    ASSERT_FALSE(secret.isEmpty());
    pressUpload();
    ASSERT_TRUE(waitForAttempt());
    closeSheet();
    closeByTitleBar(*upload);
    ASSERT_TRUE(waitForEnd());
    EXPECT_EQ(ends[0].outcome, Outcome::Done);
    expectInTheKeyringAlone(secret);

    beginNextRun();
    server.forgetRequests();
    fetchFirst();
    EXPECT_EQ(ends[1].outcome, Outcome::Done);
    EXPECT_EQ(contentsOf(ends[1].path), bytes);
    expectRequestsOfThisWay();
    expectInTheKeyringAlone(secret);
}

} // namespace
