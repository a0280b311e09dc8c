#include "tests/shell/TLJiraUploadTest.h"

#include "constants/JAConstants.h"
#include "platform/foundation/loading/HTTPCookieStorage.h"
#include "platform/foundation/settings/UserDefaults.h"

#include <QFileInfo>
#include <QStandardPaths>
#include <QtTest/QTest>

namespace {

using namespace tests;
using namespace testing;

const QStringList annasNames{QStringLiteral("anna"), QStringLiteral("Anna Lindqvist"),
                             QStringLiteral("anna@example.test")};

TEST_F(TLJiraUploadTest, isNamedForItsJob)
{
    open();

    EXPECT_EQ(entry->window()->title(), QStringLiteral("Upload to Jira"));
}

TEST_F(TLJiraUploadTest, findsEverythingInItsInterfaceFiles)
{
    open();

    EXPECT_EQ(entry->interfaceProblems(), QStringList());
    EXPECT_EQ(entry->bodyViewController()->interfaceProblems(), QStringList());
    EXPECT_EQ(entry->headViewController()->interfaceProblems(), QStringList());
    EXPECT_EQ(entry->jaLoginWindow()->interfaceProblems(), QStringList());
}

TEST_F(TLJiraUploadTest, keepsNameAndPathOfTheDocument)
{
    entry = TLJiraUpload::initWithName(QStringLiteral("Name"), QStringLiteral("/a/path"));
    const auto other = TLJiraUpload::init();

    EXPECT_NE(entry, other);
    EXPECT_EQ(entry->name(), QStringLiteral("Name"));
    EXPECT_EQ(entry->path(), QStringLiteral("/a/path"));
    EXPECT_EQ(other->name(), std::nullopt);
    EXPECT_EQ(other->path(), std::nullopt);
}

TEST_F(TLJiraUploadTest, takesOverTheClientWithoutLoadingItsWindow)
{
    client->setPathFile(QStringLiteral("/another"));
    entry = TLJiraUpload::init();

    EXPECT_EQ(client->pathFile(), QString());
    EXPECT_EQ(client->delegate(), entry);
    EXPECT_FALSE(entry->isWindowLoaded());
    EXPECT_NE(entry->headViewController(), nullptr);
    EXPECT_NE(entry->jaLoginWindow(), nullptr);
    ASSERT_EQ(log.lines().size(), 1);
    EXPECT_EQ(log.lines().at(0), QStringLiteral("?? ") +
                                     describe(std::static_pointer_cast<tljira::NibOwner>(entry->bodyViewController())));
    EXPECT_THAT(log.lines().at(0).toStdString(), StartsWith("?? <JAUploadBodyViewController: 0x"));
}

TEST_F(TLJiraUploadTest, logsOutAtTheFirstRunOnly)
{
    auto& defaults = tljira::UserDefaults::standardUserDefaults();
    defaults.removeObjectForKey(kClearCache);
    logIn();
    const auto session = JALoginObject::restoreSession();
    entry = TLJiraUpload::initWithName(std::nullopt, std::nullopt);

    EXPECT_TRUE(defaults.boolForKey(QStringLiteral("kClearCach0")));
    EXPECT_EQ(client->jiraHost(), std::nullopt);
    EXPECT_EQ(JALoginObject::restoreSession(), session);
    ASSERT_TRUE(waitUntil([this] { return server.requests().size() == 1; }));
    EXPECT_EQ(server.lastRequest().method, "DELETE");

    client->setHost(address);
    entry = TLJiraUpload::initWithName(std::nullopt, std::nullopt);
    drainMainQueue();
    EXPECT_EQ(client->jiraHost(), address);
    EXPECT_EQ(server.requests().size(), 1U);
}

TEST_F(TLJiraUploadTest, doesNotTakeSettingsThatCannotBeReadForAFirstRun)
{
    auto& defaults = tljira::UserDefaults::standardUserDefaults();
    defaults.removeObjectForKey(kClearCache);
    defaults.setObject(1, QStringLiteral("another"));
    ASSERT_TRUE(defaults.synchronize());
    const QString path =
        QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation) + QStringLiteral("/userdefaults.json");
    ASSERT_TRUE(QFile::remove(path));
    // It leads to itself.
    ASSERT_TRUE(QFile::link(path, path));
    ASSERT_TRUE(waitUntil([&] {
        EXPECT_FALSE(defaults.boolForKey(kClearCache));
        return defaults.failure().has_value();
    }));
    client->setJiraHost(Jira::address);
    entry = TLJiraUpload::init();
    EXPECT_NE(client->jiraHost(), std::nullopt);
    EXPECT_FALSE(defaults.boolForKey(kClearCache));
}

TEST_F(TLJiraUploadTest, takesTheClientOverAfterTheFirstRunsLogoutAndBeforeItMakesItsBody)
{
    struct Seen
    {
        bool isMarked = false;
        std::optional<QString> host = QStringLiteral("not looked");
        std::optional<QString> pathFile;
        std::size_t cookies = 99;
        QStringList lines = {QStringLiteral("not looked")};
    };
    /// Looks around when another delegate takes its place.
    class Parting : public JAControllerDelegate
    {
    public:
        Parting(Seen& seen, const LogCapture& log)
            : m_seen(seen)
            , m_log(log)
        {
        }
        ~Parting() override
        {
            m_seen = {tljira::UserDefaults::standardUserDefaults().boolForKey(kClearCache),
                      JAController::sharedInstance()->jiraHost(), JAController::sharedInstance()->pathFile(),
                      tljira::HTTPCookieStorage::sharedHTTPCookieStorage()->cookies().size(), m_log.lines()};
        }
        void jaValidSession() override {}
        void jaInvalidSession() override {}

    private:
        Seen& m_seen;
        const LogCapture& m_log;
    };
    tljira::UserDefaults::standardUserDefaults().removeObjectForKey(kClearCache);
    logIn();
    ASSERT_FALSE(tljira::HTTPCookieStorage::sharedHTTPCookieStorage()->cookies().empty());
    client->setPathFile(QStringLiteral("/another"));
    Seen seen;
    client->setDelegate(std::make_shared<Parting>(seen, log));
    log.clear();
    entry = TLJiraUpload::init();

    EXPECT_TRUE(seen.isMarked);
    EXPECT_EQ(seen.host, std::nullopt);
    EXPECT_EQ(seen.cookies, 0U);
    EXPECT_EQ(seen.pathFile, QString());
    EXPECT_THAT(seen.lines, IsEmpty());
    EXPECT_THAT(log.lines(), ElementsAre(testing::Truly([](const QString& line) {
                    return line.startsWith(QStringLiteral("?? <JAUploadBodyViewController: 0x"));
                })));
}

TEST_F(TLJiraUploadTest, asksForALoginWithoutASession)
{
    open();
    EXPECT_FALSE(ui::isOnScreen(entry->jaLoginWindow()->view()));
    EXPECT_FALSE(ui::isOnScreen(entry->bodyViewController()->view()));

    ASSERT_TRUE(waitForLoginForm());
    EXPECT_FALSE(ui::isOnScreen(entry->bodyViewController()->view()));
    EXPECT_EQ(names(), QStringList({QString(), QString(), QString()}));
    EXPECT_EQ(entry->window()->widget()->focusWidget(), entry->jaLoginWindow()->hostTextField());
}

TEST_F(TLJiraUploadTest, goesToWorkWithASavedSession)
{
    logIn();
    open();

    ASSERT_TRUE(waitForBody());
    EXPECT_FALSE(ui::isOnScreen(entry->jaLoginWindow()->view()));
    EXPECT_EQ(entry->bodyViewController()->pathLabel()->text(), LoneDocument::name());
    EXPECT_EQ(entry->bodyViewController()->filePath(), document.path());
    EXPECT_EQ(entry->window()->widget()->focusWidget(), entry->bodyViewController()->taskTextField());
    ASSERT_TRUE(waitUntil([this] { return names() == annasNames; }));
}

TEST_F(TLJiraUploadTest, asksForALoginWhenTheSavedSessionIsStale)
{
    logIn();
    server.expireSessions();
    open();

    EXPECT_TRUE(waitForLoginForm());
}

TEST_F(TLJiraUploadTest, asksForALoginWhenTheServerIsDown)
{
    logIn();
    client->setHost(deadAddress);
    open();

    ASSERT_TRUE(waitForLoginForm());
    drainMainQueue();
    EXPECT_FALSE(ui::isOnScreen(entry->jaLoginWindow()->errorLabel()));
    EXPECT_EQ(entry->jaLoginWindow()->errorLabel()->text(), QString());
}

TEST_F(TLJiraUploadTest, uploadsAfterARefusedAndAnAcceptedLogin)
{
    open();
    ASSERT_TRUE(waitForLoginForm());
    logInThroughTheForm(QStringLiteral("wrong"));
    EXPECT_EQ(entry->jaLoginWindow()->errorLabel()->text(), QStringLiteral("Incorrect login or password"));
    EXPECT_TRUE(ui::isOnScreen(entry->jaLoginWindow()->view()));

    logInThroughTheForm();
    ASSERT_TRUE(waitForBody());
    EXPECT_EQ(entry->jaLoginWindow()->errorLabel()->text(), QStringLiteral("Incorrect login or password"));

    const auto body = entry->bodyViewController();
    ui::type(body->taskTextField(), QStringLiteral("ABC-1"));
    ui::press(entry->window()->widget(), Qt::Key_Return);
    ASSERT_TRUE(
        waitUntil([&body] { return body->jaUploadingWindow()->sizeLabel()->text() == QStringLiteral("DONE"); }));
    ASSERT_EQ(server.attachments("ABC-1").size(), 1U);
    EXPECT_EQ(server.content(server.attachments("ABC-1").at(0).id), "contents of the document\n");
    EXPECT_FALSE(QFileInfo::exists(document.folder()));
}

TEST_F(TLJiraUploadTest, takesThePasswordAgainAfterARefusal)
{
    open();
    ASSERT_TRUE(waitForLoginForm());
    logInThroughTheForm(QStringLiteral("wrong"));
    drainMainQueue();
    const auto form = entry->jaLoginWindow();
    ASSERT_EQ(entry->window()->widget()->focusWidget(), form->passwordTextField());
    EXPECT_EQ(form->passwordTextField()->selectedText(), QStringLiteral("wrong"));

    QTest::keyClicks(entry->window()->widget()->focusWidget(), QStringLiteral("secret"));
    ui::press(entry->window()->widget(), Qt::Key_Return);
    EXPECT_TRUE(waitForBody());
    EXPECT_EQ(form->hostTextField()->text(), address);
}

TEST_F(TLJiraUploadTest, keepsTheHeaderThroughALogout)
{
    logIn();
    open();
    const auto header = entry->headViewController();
    ASSERT_TRUE(waitUntil([&] { return names() == annasNames && !header->avatarImage()->image().isNull(); }));
    ui::click(entry->window()->widget()->findChild<QPushButton*>(QStringLiteral("logoutButton")));

    ASSERT_TRUE(waitForLoginForm());
    EXPECT_EQ(names(), annasNames);
    EXPECT_FALSE(header->avatarImage()->image().isNull());
}

TEST_F(TLJiraUploadTest, endsTheSheetThatItsWindowIsAtCancel)
{
    const auto host = tljira::Window::create(QStringLiteral("Host"), nullptr);
    std::vector<int> codes;
    host->makeKeyAndOrderFront();
    entry = TLJiraUpload::initWithName(LoneDocument::name(), document.path());
    host->beginSheet(entry->window(), [&codes](int code) { codes.push_back(code); });
    ASSERT_TRUE(waitForLoginForm());
    ui::click(entry->jaLoginWindow()->cancelButton());

    EXPECT_THAT(codes, ElementsAre(0));
}

TEST_F(TLJiraUploadTest, staysOpenAtCancelWhereItsWindowIsNoSheet)
{
    open();
    ASSERT_TRUE(waitForLoginForm());
    ui::click(entry->jaLoginWindow()->cancelButton());

    EXPECT_TRUE(entry->window()->isVisible());
}

TEST_F(TLJiraUploadTest, closesAtEitherCancelButtonWhenAskedTo)
{
    open();
    entry->closeOnCancel();
    ASSERT_TRUE(waitForLoginForm());
    ui::click(entry->jaLoginWindow()->cancelButton());
    EXPECT_FALSE(entry->window()->isVisible());

    entry->showWindow();
    logIn();
    ASSERT_TRUE(waitForBody());
    ui::click(entry->bodyViewController()->cancelButton());
    EXPECT_FALSE(entry->window()->isVisible());
}

TEST_F(TLJiraUploadTest, endsItsSheetOnceAtCancelAlsoWhenAskedToClose)
{
    const auto host = tljira::Window::create(QStringLiteral("Host"), nullptr);
    std::vector<int> codes;
    host->makeKeyAndOrderFront();
    entry = TLJiraUpload::initWithName(LoneDocument::name(), document.path());
    entry->closeOnCancel();
    host->beginSheet(entry->window(), [&codes](int code) { codes.push_back(code); });
    ASSERT_TRUE(waitForLoginForm());
    ui::click(entry->jaLoginWindow()->cancelButton());

    EXPECT_THAT(codes, ElementsAre(0));
    EXPECT_THAT(log.lines(), testing::Not(testing::Contains(QStringLiteral("JAWindowController windowWillClose"))));
}

TEST_F(TLJiraUploadTest, finishesAnUploadWhoseSessionIsLostMeanwhile)
{
    logIn();
    open();
    ASSERT_TRUE(waitForBody());
    server.misbehave(standin::Match::on("POST", "*/attachments"),
                     standin::Fault().hold(standin::Point::requestBody(1)));
    const auto body = entry->bodyViewController();
    ui::type(body->taskTextField(), QStringLiteral("ABC-1"));
    ui::click(body->uploadFileButton());
    waitForHeldExchange();
    server.expireSessions();
    client->updateSession({});
    ASSERT_TRUE(waitForLoginForm());
    EXPECT_EQ(entry->window()->attachedSheet(), body->jaUploadingWindow()->window());
    server.release();

    ASSERT_TRUE(
        waitUntil([&body] { return body->jaUploadingWindow()->sizeLabel()->text() == QStringLiteral("DONE"); }));
    ui::click(body->jaUploadingWindow()->cancelButton());
    EXPECT_EQ(entry->window()->attachedSheet(), nullptr);
    EXPECT_TRUE(ui::isOnScreen(entry->jaLoginWindow()->view()));
}

TEST_F(TLJiraUploadTest, leavesTheSessionToTheControllerThatCameLast)
{
    logIn();
    open();
    ASSERT_TRUE(waitForBody());
    const auto first = entry;
    open();
    ASSERT_TRUE(waitForBody());
    server.expireSessions();
    client->updateSession({});

    ASSERT_TRUE(waitForLoginForm());
    EXPECT_TRUE(ui::isOnScreen(first->bodyViewController()->uploadView()));
    EXPECT_FALSE(ui::isOnScreen(first->jaLoginWindow()->view()));
}

TEST_F(TLJiraUploadTest, goesWhenAnotherControllerHasTakenOver)
{
    logIn();
    open();
    ASSERT_TRUE(waitForBody());
    ASSERT_TRUE(waitUntil([this] { return !entry->headViewController()->avatarImage()->image().isNull(); }));
    const std::weak_ptr<TLJiraUpload> first = entry;
    open();
    ASSERT_TRUE(waitForBody());

    EXPECT_TRUE(waitUntil([&first] { return first.expired(); }));
}

} // namespace
