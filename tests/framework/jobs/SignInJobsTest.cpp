// Both jobs by their windows, in every way to sign in.

#include "platform/foundation/settings/UserDefaults.h"
#include "platform/toolkit/views/View.h"
#include "records/TLJiraOptions.h"
#include "shell/JAHeadViewController.h"
#include "shell/JALoginWindow.h"
#include "tests/framework/jobs/JobsTest.h"

#include <QDirIterator>
#include <QStandardPaths>

namespace {

using namespace tests;
using Options = TLJiraOptions;
using testing::HasSubstr;

constexpr char plain[] = "http://jira.example.test/";
constexpr char whole[] = "http://jira.example.test:8080/jira";

struct Way
{
    const char* name;
    Options chosen;
    const char* address;
    const char* user;
    const char* secret;
    standin::Options server;

    bool isByToken() const { return chosen.signIn == Options::SignIn::Token; }
    std::string authorization() const
    {
        const QByteArray pair = QByteArray(user) + ':' + secret;
        if (!isByToken())
            return {};
        return user[0] ? "Basic " + pair.toBase64().toStdString() : std::string("Bearer ") + secret;
    }
};

std::ostream& operator<<(std::ostream& out, const Way& way)
{
    return out << way.name;
}

class SignInJobsTest : public testing::WithParamInterface<Way>, public JobsTest
{
protected:
    SignInJobsTest()
        : JobsTest(GetParam().server)
    {
        TLJiraOptions::use(GetParam().chosen);
    }
    ~SignInJobsTest() override
    {
        TLJiraOptions::use({});
        expectTheTokenInItsStoreOnly();
    }
    void SetUp() override { host->show(); }

    static void logInBy(JALoginWindow& form)
    {
        ASSERT_TRUE(waitUntil([&] { return ui::isOnScreen(form.loginButton()); }));
        ui::type(form.hostTextField(), QLatin1String(GetParam().address));
        ui::type(form.emailTextField(), QLatin1String(GetParam().user));
        ui::type(form.passwordTextField(), QLatin1String(GetParam().secret));
        ui::click(form.loginButton());
    }

    void expectHeader(const JAHeadViewController& header) const
    {
        const auto* label = tljira::findView<QLabel>(header.okSessionView(), "serverLabel");
        ASSERT_TRUE(waitUntil([&] { return header.displayNameLabel()->text() == QStringLiteral("Anna Lindqvist"); }));
        EXPECT_TRUE(label->text().endsWith(
            QString::fromUtf8(GetParam().address == whole ? "jira.example.test:8080/jira" : "jira.example.test")))
            << label->text().toStdString();
    }

    void attachOne()
    {
        ASSERT_TRUE(attach({QStringLiteral("plan.tessaloom"), bytes}));
        logInBy(*upload->jaLoginWindow());
        ASSERT_TRUE(waitUntil([this] { return ui::isOnScreen(panel().uploadView()); }));
        expectHeader(*upload->headViewController());
        pressUpload();
        ASSERT_TRUE(waitForAttempt());
        EXPECT_EQ(sheet().sizeLabel()->text(), QStringLiteral("DONE"));
        closeSheet();
    }

    void expectRequestsOfThisWay() const
    {
        const bool isWhole = GetParam().address == whole;
        for (const auto& request : server.requests()) {
            if (request.header("Host") == "other.example.test") {
                EXPECT_EQ(request.headerCount("Authorization") + request.headerCount("Cookie"), 0) << request.target;
                continue;
            }
            EXPECT_EQ(request.header("Host"), isWhole ? "jira.example.test:8080" : "jira.example.test");
            EXPECT_EQ(request.target.starts_with("/jira/"), isWhole) << request.target;
            EXPECT_EQ(request.header("Authorization"), GetParam().authorization()) << request.target;
            EXPECT_EQ(request.headerCount("Cookie"), GetParam().isByToken() || request.method == "POST" ? 0 : 1)
                << request.method << request.target;
        }
    }

    void expectTheTokenInItsStoreOnly() const
    {
        if (!GetParam().isByToken())
            return;
        // The store is not being written any more.
        EXPECT_TRUE(tljira::UserDefaults::standardUserDefaults().synchronize());
        const QByteArray secret = GetParam().secret;
        for (const QByteArray& form :
             {secret, secret.toBase64(), QByteArray::fromStdString(GetParam().authorization())}) {
            for (const QString& line : log.lines())
                EXPECT_FALSE(line.toUtf8().contains(form)) << line.toStdString();
            for (const auto place : {QStandardPaths::AppDataLocation, QStandardPaths::AppConfigLocation}) {
                QDirIterator entryOfFolder(QStandardPaths::writableLocation(place), QDir::Files,
                                           QDirIterator::Subdirectories);
                while (entryOfFolder.hasNext()) {
                    const QString file = entryOfFolder.next();
                    EXPECT_TRUE(file.endsWith(QStringLiteral("/userdefaults.json")) ||
                                !contentsOf(file).value_or(QByteArray()).contains(form))
                        << file.toStdString();
                }
            }
        }
    }
};

const Options wholeAddress{.address = Options::Address::Whole};
const Options token{.signIn = Options::SignIn::Token};
const Options both{.address = Options::Address::Whole, .signIn = Options::SignIn::Token};

INSTANTIATE_TEST_SUITE_P(
    All, SignInJobsTest,
    testing::Values(Way{"defaults", {}, plain, Jira::user, Jira::password, {}},
                    Way{"wholeAddress", wholeAddress, whole, Jira::user, Jira::password, {.contextPath = "/jira"}},
                    Way{"basic", token, plain, Jira::email, Jira::apiToken, {}},
                    Way{"bearer", token, plain, "", Jira::accessToken, {}},
                    Way{"basicAtWholeAddress", both, whole, Jira::email, Jira::apiToken, {.contextPath = "/jira"}},
                    Way{"bearerAtWholeAddress", both, whole, "", Jira::accessToken, {.contextPath = "/jira"}},
                    Way{"cloud",
                        token,
                        plain,
                        Jira::email,
                        Jira::apiToken,
                        {.isCloud = true, .contentsBase = "http://other.example.test"}}),
    testing::PrintToStringParamName());

TEST_P(SignInJobsTest, attachesAndFetches)
{
    attachOne();
    closeByTitleBar(*upload);
    ASSERT_TRUE(waitForEnd());
    EXPECT_EQ(ends[0].outcome, Outcome::Done);
    ASSERT_EQ(attached(), std::vector<std::string>{bytes.toStdString()});

    // Without another login.
    fetchFirst();
    EXPECT_EQ(ends[1].outcome, Outcome::Done);
    EXPECT_EQ(contentsOf(ends[1].path), bytes);
    std::size_t logins = 0;
    for (const auto& request : server.requests())
        logins += request.method == "POST" && request.path.ends_with("/auth/1/session");
    EXPECT_EQ(logins, GetParam().isByToken() ? 0U : 1U);
    // The first request of a login by password is a POST, and so is the upload, which has the session.
    server.forgetRequests();
    ASSERT_TRUE(fetch());
    ASSERT_TRUE(waitUntil([this] { return ui::isOnScreen(fetchPanel().getAttachButton()); }));
    drainMainQueue();
    EXPECT_FALSE(server.requests().empty());
    expectRequestsOfThisWay();
    closeByTitleBar(*entry);
}

TEST_P(SignInJobsTest, logsOut)
{
    attachOne();
    server.forgetRequests();
    ui::click(tljira::findView<QPushButton>(upload->headViewController()->view(), "logoutButton"));
    ASSERT_TRUE(waitUntil([this] { return ui::isOnScreen(upload->jaLoginWindow()->loginButton()); }));
    EXPECT_EQ(server.requests().size(), GetParam().isByToken() ? 0U : 1U);
    expectRequestsOfThisWay();
    EXPECT_EQ(client->jiraHost(), std::nullopt);
    client->setHost(QLatin1String(GetParam().address));
    std::optional<bool> isGood;
    client->updateSession([&](const auto& session, const auto&) { isGood = session != nullptr; });
    ASSERT_TRUE(waitUntil([&] { return isGood.has_value(); }));
    EXPECT_FALSE(*isGood);
}

TEST_P(SignInJobsTest, tellsOfARefusalAndLetsTheUserTryAgain)
{
    ASSERT_TRUE(attach({QStringLiteral("plan.tessaloom"), bytes}));
    const auto form = upload->jaLoginWindow();
    ASSERT_TRUE(waitUntil([&] { return ui::isOnScreen(form->loginButton()); }));
    ui::type(form->hostTextField(), QLatin1String(GetParam().address));
    ui::type(form->emailTextField(), QLatin1String(GetParam().user));
    ui::type(form->passwordTextField(), QStringLiteral("wrong"));
    ui::click(form->loginButton());
    ASSERT_TRUE(waitUntil([&] { return ui::isOnScreen(form->errorLabel()); }));
    EXPECT_EQ(form->errorLabel()->text(), GetParam().isByToken()
                                              ? QStringLiteral("The server does not accept this token.")
                                              : QStringLiteral("Incorrect login or password"));
    EXPECT_TRUE(form->passwordTextField()->hasFocus());
    logInBy(*form);
    ASSERT_TRUE(waitUntil([this] { return ui::isOnScreen(panel().uploadView()); }));
    closeByTitleBar(*upload);
}

} // namespace
