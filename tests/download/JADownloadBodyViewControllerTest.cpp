#include "download/JADownloadBodyViewController.h"

#include "platform/toolkit/nib/FrameworkBundle.h"
#include "platform/toolkit/views/View.h"
#include "platform/toolkit/windows/Application.h"
#include "platform/toolkit/windows/WindowDelegate.h"
#include "records/TLJiraOptions.h"
#include "tests/download/DownloadTest.h"
#include "tests/kit/GermanUser.h"
#include "tests/kit/HearAnswers.h"

#include <QApplication>
#include <QTimer>
#include <QtTest/QTest>

namespace {

using standin::Fault;
using standin::Match;
using standin::Point;
using testing::ElementsAre;
using testing::IsEmpty;
using tests::shownTitles;

constexpr char early[] = "2017-03-14T10:22:33.123+0100";
constexpr char late[] = "2018-03-14T10:22:33.123+0100";

class JADownloadBodyViewControllerTest : public tests::DownloadTest
{
protected:
    void SetUp() override
    {
        DownloadTest::SetUp();
        panel = JADownloadBodyViewController::initWithNibName(QStringLiteral("JADownloadBodyViewController"),
                                                              tljira::frameworkBundle());
        window = tests::shownWindow(panel->view());
        tests::drainMainQueue();
        log.clear();
    }

    const JAListAttachedFilesWindow& list() const { return *panel->jaListAttachedWindow(); }
    bool isSheetUp() const { return window->attachedSheet() != nullptr; }

    void add(const std::string& name, const std::string& created)
    {
        server.addAttachment("ABC-1", {.fileName = name, .bytes = "the plan", .created = created});
    }

    void typeKey(const QString& key) { tests::ui::type(panel->issueKeyTextField(), key); }

    void press() { tests::ui::click(panel->getAttachButton()); }

    /// Looks the issue up and waits for the list or the empty view.
    void lookUp(const QString& key = QStringLiteral("ABC-1"))
    {
        typeKey(key);
        press();
        ASSERT_TRUE(
            tests::waitUntil([this] { return isSheetUp() && panel->jaListAttachedWindow()->window()->isVisible(); }));
        tests::drainMainQueue();
    }

    /// Looks something up, which says so unless there is no key; returns when there is an answer.
    void askFor(const QString& key)
    {
        const auto before = server.finishedRequestCount();
        typeKey(key);
        press();
        EXPECT_EQ(help(), key.isEmpty() ? usualHelp : busyHelp);
        ASSERT_TRUE(tests::waitUntil([&] { return server.finishedRequestCount() > before; }));
        tests::hearAnswers(*client);
    }

    /// Looks something up that fails in whatever way.
    void lookUpInVain(const QString& key)
    {
        askFor(key);
        // It may be asked for twice, on another connection.
        ASSERT_TRUE(tests::waitUntil([this] { return help() == usualHelp; }));
        expectSilence();
    }

    void expectSilence()
    {
        tests::drainMainQueue();
        EXPECT_FALSE(isSheetUp());
        EXPECT_FALSE(panel->jaListAttachedWindow()->window()->isVisible());
        EXPECT_TRUE(panel->getAttachButton()->isEnabled());
        EXPECT_EQ(panel->path(), std::nullopt);
        EXPECT_THAT(panel->jaListAttachedWindow()->attachments(), IsEmpty());
        EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    }

    void download(qint64 row = 0)
    {
        tests::ui::click(tests::cellAtRow(list(), row)->downloadButton());
        ASSERT_TRUE(tests::waitUntil([this] { return list().isDone(); }));
        tests::drainMainQueue();
    }

    void close() { tests::ui::click(tests::closeButton(*panel->jaListAttachedWindow()->window())); }

    QString help() const { return tljira::text(QPointer(tljira::findView<QLabel>(panel->view(), "issueKeyHelp"))); }
    QLabel* listLabel(const char* name) const { return tljira::findView<QLabel>(list().view(), name); }
    QPushButton* cancelButton() const { return tljira::findView<QPushButton>(panel->view(), "cancelButton"); }

    const QString usualHelp = QStringLiteral("The key stands in the issue's address, for example ABC-123");
    const QString busyHelp = QStringLiteral("Looking for the issue… The list opens when it is found.");
    std::shared_ptr<JADownloadBodyViewController> panel;
    std::shared_ptr<tljira::Window> window;
};

TEST_F(JADownloadBodyViewControllerTest, findsEverythingInItsInterfaceFile)
{
    EXPECT_THAT(panel->interfaceProblems(), IsEmpty());
    EXPECT_TRUE(panel->getAttachButton()->isDefault());
}

// What a look-up shows.

TEST_F(JADownloadBodyViewControllerTest, saysInThePressThatItLooks)
{
    EXPECT_EQ(help(), usualHelp);
    server.misbehave(Match::on("*/issue/*").once(), Fault().hold(Point::responseHead(0)));
    typeKey(QStringLiteral("ABC-1"));
    press();
    EXPECT_EQ(help(), busyHelp);
    waitForHeldExchange();
    EXPECT_EQ(help(), busyHelp);
    server.release();
    ASSERT_TRUE(tests::waitUntil([this] { return isSheetUp(); }));
    EXPECT_EQ(help(), usualHelp);
}

TEST_F(JADownloadBodyViewControllerTest, saysThatItLooksUntilTheLastOfTwoHasEnded)
{
    server.misbehave(Match::on("*/issue/NO-1").once(), Fault().hold(Point::responseHead(0)));
    typeKey(QStringLiteral("NO-1"));
    press();
    waitForHeldExchange();
    askFor(QStringLiteral("NO-2"));
    expectSilence();
    EXPECT_EQ(help(), busyHelp);
    server.release();
    EXPECT_TRUE(tests::waitUntil([this] { return help() == usualHelp; }));
}

TEST_F(JADownloadBodyViewControllerTest, looksAsBeforeAfterALookUpInVain)
{
    lookUpInVain(QStringLiteral("NO-1"));
    EXPECT_EQ(help(), usualHelp);
}

TEST_F(JADownloadBodyViewControllerTest, saysNothingWhileItAsksForAnEmptyKey)
{
    server.misbehave(Match::on("*/issue").once(), Fault().hold(Point::responseHead(0)));
    press();
    EXPECT_EQ(help(), usualHelp);
    waitForHeldExchange();
    EXPECT_EQ(help(), usualHelp);
}

TEST_F(JADownloadBodyViewControllerTest, theListNamesTheIssue)
{
    add("a.tessaloom", early);
    lookUp();
    EXPECT_TRUE(listLabel("listTitle")->isVisible());
    EXPECT_EQ(listLabel("listTitle")->text(), QStringLiteral("Documents of ABC-1"));
}

class GermanDownloadPanelTest : tests::GermanUser, public JADownloadBodyViewControllerTest
{
};

TEST_F(GermanDownloadPanelTest, looksAndListsInTheUsersLanguage)
{
    add("a.tessaloom", early);
    server.misbehave(Match::on("*/issue/*").once(), Fault().hold(Point::responseHead(0)));
    typeKey(QStringLiteral("ABC-1"));
    press();
    EXPECT_EQ(help(), QStringLiteral("Der Vorgang wird gesucht\u00a0… Die Liste öffnet sich, wenn er gefunden ist."));
    waitForHeldExchange();
    server.release();
    ASSERT_TRUE(tests::waitUntil([this] { return isSheetUp() && tests::cellAtRow(list(), 0) != nullptr; }));
    EXPECT_EQ(listLabel("listTitle")->text(), QStringLiteral("Dokumente zu ABC-1"));
    EXPECT_EQ(tests::cellAtRow(list(), 0)->downloadButton()->accessibleName(),
              QStringLiteral("a.tessaloom herunterladen"));
}

TEST_F(JADownloadBodyViewControllerTest, theEmptyViewNamesTheIssue)
{
    server.addIssue("ABC-2");
    add("a.tessaloom", early);
    lookUp();
    close();
    lookUp(QStringLiteral("ABC-2"));
    EXPECT_EQ(listLabel("noDataLabel")->text(), QStringLiteral("ABC-2 has no documents of this program"));
}

TEST_F(JADownloadBodyViewControllerTest, theListIsOfAttachmentsWhereTheHostTakesAllForDocuments)
{
    TLJiraOptions::use({.documents = {}});
    server.addIssue("ABC-2");
    add("a.png", late);
    add("a.tessaloom", early);
    lookUp();
    EXPECT_EQ(listLabel("listTitle")->text(), QStringLiteral("Attachments of ABC-1"));
    EXPECT_THAT(shownTitles(list()), ElementsAre(QStringLiteral("a.png"), QStringLiteral("a.tessaloom")));
    close();
    lookUp(QStringLiteral("ABC-2"));
    EXPECT_EQ(listLabel("noDataLabel")->text(), QStringLiteral("ABC-2 has no attachments"));
    TLJiraOptions::use({});
}

TEST_F(JADownloadBodyViewControllerTest, whatIsDownloadedHasTheNameOfItsOwnKind)
{
    TLJiraOptions::use({.documents = {{QStringLiteral("odt")}, {QStringLiteral("ods")}}});
    add("plan.ods", early);
    lookUp();
    download();
    EXPECT_EQ(list().path().value_or(QString()).section(u'/', -1), QStringLiteral("plan.ods"));
    TLJiraOptions::use({});
}

TEST_F(JADownloadBodyViewControllerTest, theButtonOpensWhatWasDownloaded)
{
    add("a.tessaloom", early);
    lookUp();
    download();
    auto* button = tests::closeButton(*panel->jaListAttachedWindow()->window());
    EXPECT_EQ(button->text(), QStringLiteral("Open"));
    EXPECT_EQ(button->accessibleName(), QStringLiteral("Open"));
    EXPECT_TRUE(button->isDefault());
    QTest::keyClick(button, Qt::Key_Return);
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(tests::contentsOf(panel->path().value_or(QString())), QByteArray("the plan"));
}

// Cancel.

TEST_F(JADownloadBodyViewControllerTest, cancelClosesTheWindow)
{
    tests::ui::click(cancelButton());
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(panel->path(), std::nullopt);
}

TEST_F(JADownloadBodyViewControllerTest, escapeCancels)
{
    QTest::keyClick(panel->issueKeyTextField(), Qt::Key_Escape);
    EXPECT_TRUE(tests::waitUntil([this] { return !window->isVisible(); }));
}

TEST_F(JADownloadBodyViewControllerTest, cancelEndsTheSheetThatItsWindowIs)
{
    window->orderOut();
    const auto host = tests::shownWindow();
    std::optional<int> code;
    host->beginSheet(window, [&code](int returnCode) { code = returnCode; });
    tests::drainMainQueue();
    tests::ui::click(cancelButton());
    EXPECT_EQ(code, tljira::ModalResponse::Cancel);
    EXPECT_TRUE(host->isVisible());
}

// Covering.

TEST_F(JADownloadBodyViewControllerTest, isUsableFromTheStart)
{
    EXPECT_FALSE(panel->shadow()->isVisible());
    EXPECT_TRUE(panel->getAttachButton()->isEnabled());
    EXPECT_TRUE(panel->issueKeyTextField()->isEnabled());
    EXPECT_EQ(panel->path(), std::nullopt);
}

class WithoutSessionTest : public tests::DownloadTest
{
protected:
    /// Nobody logs in.
    void SetUp() override {}
};

TEST_F(WithoutSessionTest, isUsableFromTheStartAlsoWithoutASession)
{
    ASSERT_EQ(client->jaSession(), nullptr);
    const auto panel = JADownloadBodyViewController::initWithNibName(QStringLiteral("JADownloadBodyViewController"),
                                                                     tljira::frameworkBundle());
    const auto window = tests::shownWindow(panel->view());
    tests::drainMainQueue();
    EXPECT_FALSE(panel->shadow()->isVisible());
    EXPECT_TRUE(panel->getAttachButton()->isEnabled());
    EXPECT_TRUE(panel->issueKeyTextField()->isEnabled());

    QTest::keyClicks(panel->issueKeyTextField(), QStringLiteral("ABC-1"));
    tests::ui::click(panel->getAttachButton());
    EXPECT_TRUE(tests::waitUntil([this] { return server.requests("*/issue/*").size() == 1; }));
}

TEST_F(JADownloadBodyViewControllerTest, isCoveredWhileTheSessionIsInvalid)
{
    panel->jaInvalidSession();
    tests::drainMainQueue();
    EXPECT_TRUE(panel->shadow()->isVisible());
    EXPECT_EQ(panel->shadow()->geometry(), panel->view()->rect());
    EXPECT_FALSE(panel->getAttachButton()->isEnabled());
    EXPECT_FALSE(panel->issueKeyTextField()->isEnabled());

    panel->jaValidSession();
    EXPECT_FALSE(panel->shadow()->isVisible());
    EXPECT_TRUE(panel->getAttachButton()->isEnabled());
    EXPECT_TRUE(panel->issueKeyTextField()->isEnabled());
}

TEST_F(JADownloadBodyViewControllerTest, theCoverTakesTheMouse)
{
    panel->jaInvalidSession();
    tests::drainMainQueue();
    const QPoint onField = panel->issueKeyTextField()->mapTo(panel->view(), QPoint(5, 5));
    EXPECT_EQ(panel->view()->childAt(onField), panel->shadow());
}

// What is listed.

TEST_F(JADownloadBodyViewControllerTest, listsTheDocumentsNewestFirst)
{
    add("a.tessaloom", early);
    add("b.png", late);
    add("c.tessaloom", late);
    lookUp();
    EXPECT_THAT(shownTitles(list()), ElementsAre(QStringLiteral("c.tessaloom"), QStringLiteral("a.tessaloom")));
    EXPECT_TRUE(list().wrapperTableView()->isVisible());
    EXPECT_EQ(panel->jaListAttachedWindow()->window()->frame().height(), 350);
}

TEST_F(JADownloadBodyViewControllerTest, returnLooksUpToo)
{
    add("a.tessaloom", early);
    typeKey(QStringLiteral("ABC-1"));
    QTest::keyClick(panel->issueKeyTextField(), Qt::Key_Return);
    ASSERT_TRUE(tests::waitUntil([this] { return isSheetUp(); }));
    EXPECT_EQ(server.requests("*/issue/*").size(), 1U);
}

TEST_F(JADownloadBodyViewControllerTest, keepsNamesWithExactlyTheExtensionOfDocuments)
{
    const auto kept = [](const QStringList& names) {
        return tests::names(JADownloadBodyViewController::filteredAttachments(tests::attachmentsNamed(names)));
    };
    EXPECT_THAT(
        kept({QStringLiteral("plan.tessaloom"), QStringLiteral("plan.TESSALOOM"),
              QStringLiteral("plan.tessaloompacket"), QStringLiteral("plan.tessaloom.zip"), QStringLiteral("tessaloom"),
              QStringLiteral(".tessaloom"), QStringLiteral("plan"), QStringLiteral("plan."), QString(),
              QStringLiteral("a.b.tessaloom"), QStringLiteral("plan.tessaloom/")}),
        ElementsAre(QStringLiteral("plan.tessaloom"), QStringLiteral("a.b.tessaloom"),
                    QStringLiteral("plan.tessaloom/")));
}

TEST_F(JADownloadBodyViewControllerTest, dropsAttachmentsWithoutAName)
{
    const JADownloadBodyViewController::Attachments attachments = {
        tests::attachment({}), tests::attachmentNamed(QStringLiteral("a.tessaloom"))};
    EXPECT_EQ(JADownloadBodyViewController::filteredAttachments(attachments),
              JADownloadBodyViewController::Attachments{attachments[1]});
    EXPECT_EQ(attachments.size(), 2U);
}

TEST_F(JADownloadBodyViewControllerTest, listsDocumentsWithoutADateLastInTheServersOrder)
{
    add("none1.tessaloom", "yesterday");
    add("early.tessaloom", early);
    add("none2.tessaloom", "2017-13-14T10:22:33.123+0100");
    add("late.tessaloom", late);
    lookUp();
    EXPECT_THAT(shownTitles(list()), ElementsAre(QStringLiteral("late.tessaloom"), QStringLiteral("early.tessaloom"),
                                                 QStringLiteral("none1.tessaloom"), QStringLiteral("none2.tessaloom")));
}

TEST_F(JADownloadBodyViewControllerTest, keepsTheServersOrderAmongEqualDates)
{
    // Many: few would keep their order in a sort that promises none.
    constexpr int count = 100;
    QStringList expected;
    for (int number = 0; number < count; ++number) {
        const QString name = QStringLiteral("%1.tessaloom").arg(number * 37 % count);
        add(name.toStdString(), number % 2 ? late : early);
        expected.insert(number % 2 ? number / 2 : number, name);
    }
    lookUp();
    EXPECT_EQ(tests::names(list().attachments()), expected);
}

TEST_F(JADownloadBodyViewControllerTest, showsTheEmptyViewWithoutDocuments)
{
    add("A.Tessaloom", early);
    lookUp();
    EXPECT_TRUE(list().noDataView()->isVisible());
    EXPECT_FALSE(list().wrapperTableView()->isVisible());
    EXPECT_EQ(panel->jaListAttachedWindow()->window()->frame().height(), 200);
}

TEST_F(JADownloadBodyViewControllerTest, anotherLookUpShowsTheOtherIssue)
{
    add("a.tessaloom", early);
    server.addIssue("ABC-2");
    server.addAttachment("ABC-2", {.fileName = "z.tessaloom", .bytes = "z"});
    lookUp();
    close();
    lookUp(QStringLiteral("ABC-2"));
    EXPECT_THAT(shownTitles(list()), ElementsAre(QStringLiteral("z.tessaloom")));
}

// Look-ups in vain.

TEST_F(JADownloadBodyViewControllerTest, saysNothingOfAnUnknownKey)
{
    lookUpInVain(QStringLiteral("NO-1"));
}

TEST_F(JADownloadBodyViewControllerTest, asksForAnEmptyKeyAndSaysNothing)
{
    lookUpInVain(QString());
    EXPECT_EQ(server.requests("/rest/api/2/issue").size(), 1U);
}

TEST_F(JADownloadBodyViewControllerTest, sendsKeysAsTheyAreTyped)
{
    lookUpInVain(QStringLiteral("abc-1/../x"));
    EXPECT_EQ(server.requests("*/issue/*").size(), 1U);
}

TEST_F(JADownloadBodyViewControllerTest, saysNothingOfAKeyWithBlanks)
{
    lookUpInVain(QStringLiteral(" ABC 1 "));
    EXPECT_EQ(server.requests("/rest/api/2/issue/%20ABC%201%20").size(), 1U);
}

TEST_F(JADownloadBodyViewControllerTest, saysNothingWithoutASession)
{
    server.expireSessions();
    lookUpInVain(QStringLiteral("ABC-1"));
}

TEST_F(JADownloadBodyViewControllerTest, saysNothingOfANetworkError)
{
    server.misbehave(Match::on("*/issue/*"), Fault().close(Point::responseHead(0)));
    lookUpInVain(QStringLiteral("ABC-1"));
}

TEST_F(JADownloadBodyViewControllerTest, saysNothingOfAnAnswerThatIsCutShort)
{
    add("a.tessaloom", early);
    server.misbehave(Match::on("*/issue/*"), Fault().close(Point::responseBody(20)));
    lookUpInVain(QStringLiteral("ABC-1"));
}

TEST_F(JADownloadBodyViewControllerTest, staysUsableDuringALookUp)
{
    server.misbehave(Match::on("*/issue/*").once(), Fault().hold(Point::responseHead(0)));
    typeKey(QStringLiteral("ABC-1"));
    press();
    waitForHeldExchange();
    EXPECT_TRUE(panel->getAttachButton()->isEnabled());
    EXPECT_TRUE(panel->issueKeyTextField()->isEnabled());
    EXPECT_FALSE(isSheetUp());
}

TEST_F(JADownloadBodyViewControllerTest, aSecondLookUpBeforeTheFirstAnswerTakesOverTheSheet)
{
    add("a.tessaloom", early);
    server.addIssue("ABC-2");
    server.addAttachment("ABC-2", {.fileName = "z.tessaloom", .bytes = "z"});
    server.misbehave(Match::on("*/issue/*").limited(2), Fault().hold(Point::responseHead(0)));
    typeKey(QStringLiteral("ABC-1"));
    press();
    waitForHeldExchange();
    typeKey(QStringLiteral("ABC-2"));
    press();
    ASSERT_TRUE(tests::waitUntil([this] { return server.heldCount() == 2; }));
    server.release();
    const auto countLines = [this] { return log.lines().filter(QStringLiteral("self.attachments.count")).size(); };
    ASSERT_TRUE(tests::waitUntil([&] { return countLines() == 2; }));
    tests::drainMainQueue();
    EXPECT_TRUE(isSheetUp());
    EXPECT_EQ(shownTitles(list()), tests::names(list().attachments()));
    close();
    tests::drainMainQueue();
    EXPECT_FALSE(isSheetUp());
    EXPECT_TRUE(window->isVisible());
}

TEST_F(JADownloadBodyViewControllerTest, showsNothingOfALookUpBeforeItsViewIsThere)
{
    const auto other = JADownloadBodyViewController::initWithNibName(QStringLiteral("JADownloadBodyViewController"),
                                                                     tljira::frameworkBundle());
    server.misbehave(Match::on("*/issue*"), Fault().status(200, R"({"key": "ABC-1", "fields": {}})"));
    other->getAttachAction();
    ASSERT_TRUE(tests::waitUntil([this] { return !server.requests("*/issue*").empty(); }));
    tests::hearAnswers(*client);
    EXPECT_EQ(other->jaListAttachedWindow(), nullptr);
}

// The end of the sheet.

TEST_F(JADownloadBodyViewControllerTest, staysOpenWhenNothingWasDownloaded)
{
    add("a.tessaloom", early);
    lookUp();
    close();
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(panel->path(), std::nullopt);
    EXPECT_TRUE(panel->getAttachButton()->isEnabled());
}

TEST_F(JADownloadBodyViewControllerTest, closesItsWindowAfterADownload)
{
    add("a.tessaloom", early);
    lookUp();
    download();
    EXPECT_EQ(panel->path(), std::nullopt);
    EXPECT_TRUE(window->isVisible());
    close();
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(panel->path(), list().path());
    EXPECT_EQ(tests::contentsOf(panel->path().value_or(QString())), QByteArray("the plan"));
}

TEST_F(JADownloadBodyViewControllerTest, tellsTheDelegateOfItsWindowThatItCloses)
{
    class Listener : public tljira::WindowDelegate
    {
    public:
        void windowWillClose(tljira::Window&) override { ++closings; }
        int closings = 0;
    };
    const auto listener = std::make_shared<Listener>();
    window->setDelegate(listener);
    add("a.tessaloom", early);
    lookUp();
    download();
    EXPECT_EQ(listener->closings, 0);
    close();
    EXPECT_EQ(listener->closings, 1);
}

TEST_F(JADownloadBodyViewControllerTest, endsTheModalRunAfterADownload)
{
    add("a.tessaloom", early);
    window->orderOut();
    // The run is that of a window whose sheet the panel's window is: a run ends by itself when its own window closes.
    const auto host = tests::shownWindow();
    // Not 0: events that are posted already would not be handed out while one of them waits for the others.
    QTimer::singleShot(1, [&] {
        host->beginSheet(window, nullptr);
        lookUp();
        download();
        close();
        tljira::Application::stopModal(99); // does nothing when the run is stopped already
    });
    EXPECT_EQ(tljira::Application::runModalForWindow(host), tljira::ModalResponse::Stop);
    EXPECT_NE(panel->path(), std::nullopt);
    EXPECT_FALSE(window->isVisible());
    EXPECT_TRUE(host->isVisible());
}

TEST_F(JADownloadBodyViewControllerTest, namesTheUnfinishedFileOfACancelledDownload)
{
    add("a.tessaloom", early);
    lookUp();
    server.misbehave(Match::on("*/secure/*").once(), Fault().hold(Point::responseBody(3)));
    tests::ui::click(tests::cellAtRow(list(), 0)->downloadButton());
    waitForHeldExchange();
    close();
    EXPECT_TRUE(window->isVisible());
    EXPECT_TRUE(panel->path().value_or(QString()).endsWith(QStringLiteral("/a.tessaloom.tessaloom")));
    EXPECT_EQ(tests::contentsOf(*panel->path()), std::nullopt);
}

TEST_F(JADownloadBodyViewControllerTest, namesTheFileOfAFailedDownload)
{
    add("a.tessaloom", early);
    lookUp();
    server.misbehave(Match::on("*/secure/*").once(), Fault().close(Point::responseBody(3)));
    tests::ui::click(tests::cellAtRow(list(), 0)->downloadButton());
    ASSERT_TRUE(tests::waitUntil([this] { return !list().downloadError()->text().isEmpty(); }));
    close();
    EXPECT_TRUE(window->isVisible());
    EXPECT_TRUE(panel->path().value_or(QString()).endsWith(QStringLiteral("/a.tessaloom.tessaloom")));
}

TEST_F(JADownloadBodyViewControllerTest, aLaterSheetBringsBackThePathOfTheEarlierDownload)
{
    add("a.tessaloom", early);
    lookUp();
    download();
    close();
    const auto path = panel->path();
    panel->setPath(std::nullopt);
    window->makeKeyAndOrderFront();
    lookUp();
    close();
    EXPECT_EQ(panel->path(), path);
    EXPECT_FALSE(window->isVisible());
}

// Ends from outside.

TEST_F(JADownloadBodyViewControllerTest, anAnswerAfterTheWindowClosedShowsNothing)
{
    add("a.tessaloom", early);
    server.misbehave(Match::on("*/issue/*").once(), Fault().hold(Point::responseHead(0)));
    typeKey(QStringLiteral("ABC-1"));
    press();
    waitForHeldExchange();
    window->close();
    server.release();
    ASSERT_TRUE(tests::waitUntil([this] { return !list().attachments().empty(); }));
    tests::drainMainQueue();
    EXPECT_FALSE(panel->jaListAttachedWindow()->window()->isVisible());
}

TEST_F(JADownloadBodyViewControllerTest, anAnswerAfterTheHostLetGoIsQuiet)
{
    add("a.tessaloom", early);
    server.misbehave(Match::on("*/issue/*").once(), Fault().hold(Point::responseHead(0)));
    typeKey(QStringLiteral("ABC-1"));
    press();
    waitForHeldExchange();
    const std::weak_ptr<JADownloadBodyViewController> weak = panel;
    window->close();
    window.reset();
    panel.reset();
    server.release();
    EXPECT_TRUE(tests::waitUntil([&] { return weak.expired(); }));
}

TEST_F(JADownloadBodyViewControllerTest, theWindowClosesInTheMiddleOfADownload)
{
    server.addAttachment("ABC-1", {.fileName = "a.tessaloom", .syntheticSize = 1'000'000});
    lookUp();
    server.misbehave(Match::on("*/secure/*").once(), Fault().hold(Point::responseBody(500'000)));
    tests::ui::click(tests::cellAtRow(list(), 0)->downloadButton());
    waitForHeldExchange();
    window->close();
    EXPECT_FALSE(panel->jaListAttachedWindow()->window()->isVisible());
    EXPECT_EQ(panel->path(), list().path());
    server.release();
    ASSERT_TRUE(tests::waitUntil([this] { return list().isDone(); }));
    tests::drainMainQueue();
    EXPECT_EQ(tests::contentsOf(*panel->path()).value_or(QByteArray()).size(), 1'000'000);
}

} // namespace
