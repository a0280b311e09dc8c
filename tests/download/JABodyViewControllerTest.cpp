#include "download/JABodyViewController.h"

#include "platform/toolkit/views/Layer.h"
#include "platform/toolkit/views/View.h"
#include "platform/toolkit/windows/Alert.h"
#include "platform/toolkit/windows/OpenPanel.h"
#include "tests/download/DownloadTest.h"
#include "tests/kit/HearAnswers.h"

#include <QApplication>
#include <QFileDialog>
#include <QMessageBox>
#include <QTemporaryDir>
#include <QTimer>
#include <QtTest/QTest>

namespace {

using standin::Fault;
using standin::Match;
using standin::Point;
using testing::ElementsAre;
using testing::IsEmpty;
using tests::shownTitles;

class JABodyViewControllerTest : public tests::DownloadTest
{
protected:
    void SetUp() override
    {
        DownloadTest::SetUp();
        client->setPathFile(QStringLiteral("/documents/plan.tessaloom"));
        panel = JABodyViewController::initWithNibName(QStringLiteral("JABodyViewController"), std::nullopt);
        window = tests::shownWindow(panel->view());
        tests::drainMainQueue();
        log.clear();
    }

    const JAListAttachedFilesWindow& list() const { return *panel->jaListAttachedWindow(); }
    QString help() const { return tljira::text(QPointer(tljira::findView<QLabel>(panel->view(), "downloadHelp"))); }

    void add(const char* issue, const char* name)
    {
        server.addAttachment(issue, {.fileName = name, .bytes = "bytes", .created = "2017-03-14T10:22:33.123+0100"});
    }

    QPushButton* lookUpButton() const
    {
        return panel->view()->findChild<QPushButton*>(QStringLiteral("getListAttachedFilesButton"));
    }

    void press(const QString& key)
    {
        panel->keyDownloadTextField()->clear();
        QTest::keyClicks(panel->keyDownloadTextField(), key);
        tests::ui::click(lookUpButton());
    }

    void lookUp(const QString& key)
    {
        press(key);
        ASSERT_TRUE(tests::waitUntil([this] { return panel->jaListAttachedWindow()->window()->isVisible(); }));
        tests::drainMainQueue();
    }

    void close() { tests::ui::click(tests::closeButton(*panel->jaListAttachedWindow()->window())); }

    std::shared_ptr<JABodyViewController> panel;
    std::shared_ptr<tljira::Window> window;
};

TEST_F(JABodyViewControllerTest, findsEverythingInItsInterfaceFile)
{
    EXPECT_THAT(panel->interfaceProblems(), IsEmpty());
}

TEST_F(JABodyViewControllerTest, holdsItsViewsInTheirAreas)
{
    EXPECT_EQ(tljira::subviews(panel->containerView()), QList<QWidget*>({panel->uploadView(), panel->checkFileView()}));
    EXPECT_EQ(tljira::subviews(panel->downloadWrapper()),
              QList<QWidget*>({panel->checkDownloadFiles(), panel->receivingAttachmentsView()}));
    EXPECT_EQ(panel->checkFileView()->geometry(), panel->containerView()->rect());
    EXPECT_EQ(panel->checkDownloadFiles()->geometry(), panel->downloadWrapper()->rect());
}

TEST_F(JABodyViewControllerTest, showsTheFirstViewOfEitherArea)
{
    EXPECT_TRUE(panel->checkFileView()->isVisible());
    EXPECT_FALSE(panel->uploadView()->isVisible());
    EXPECT_TRUE(panel->checkDownloadFiles()->isVisible());
    EXPECT_FALSE(panel->receivingAttachmentsView()->isVisible());
    EXPECT_TRUE(panel->spinerView()->isAnimating());
}

TEST_F(JABodyViewControllerTest, showsOneViewOfAnAreaAtATime)
{
    panel->setDownloadActualView(panel->receivingAttachmentsView());
    EXPECT_TRUE(panel->receivingAttachmentsView()->isVisible());
    EXPECT_FALSE(panel->checkDownloadFiles()->isVisible());
    panel->setDownloadActualView(panel->checkDownloadFiles());
    EXPECT_FALSE(panel->receivingAttachmentsView()->isVisible());
    EXPECT_TRUE(panel->checkDownloadFiles()->isVisible());
    EXPECT_TRUE(panel->checkFileView()->isVisible());
}

TEST_F(JABodyViewControllerTest, standsOnATranslucentBlack)
{
    const auto* layer = tljira::Layer::layerOf(panel->view());
    ASSERT_NE(layer, nullptr);
    ASSERT_TRUE(layer->backgroundColor().has_value());
    EXPECT_EQ(layer->backgroundColor()->rgb(), QColor(Qt::black).rgb());
    EXPECT_NEAR(layer->backgroundColor()->alphaF(), 0.4, 0.001);
}

TEST_F(JABodyViewControllerTest, beginsWithTheClientsFile)
{
    EXPECT_EQ(panel->pathFile(), QStringLiteral("/documents/plan.tessaloom"));
    EXPECT_EQ(panel->pathLabel()->text(), QStringLiteral("/documents/plan.tessaloom"));
}

TEST_F(JABodyViewControllerTest, showsNoPathWhereTheClientHasNone)
{
    client->setPathFile(std::nullopt);
    const auto other = JABodyViewController::initWithNibName(QStringLiteral("JABodyViewController"), std::nullopt);
    other->view();
    EXPECT_EQ(other->pathFile(), std::nullopt);
    EXPECT_EQ(other->pathLabel()->text(), QString());
}

// The file.

TEST_F(JABodyViewControllerTest, theTwoSettersOfThePathDiffer)
{
    panel->setPathFile(QStringLiteral("/other"));
    EXPECT_EQ(panel->pathFile(), QStringLiteral("/other"));
    EXPECT_EQ(panel->pathLabel()->text(), QStringLiteral("/documents/plan.tessaloom"));
    EXPECT_EQ(client->pathFile(), QStringLiteral("/documents/plan.tessaloom"));

    panel->setPathfile(QStringLiteral("/third"));
    EXPECT_EQ(panel->pathFile(), QStringLiteral("/third"));
    EXPECT_EQ(panel->pathLabel()->text(), QStringLiteral("/third"));
    EXPECT_EQ(client->pathFile(), QStringLiteral("/third"));
}

TEST_F(JABodyViewControllerTest, takesTheFileThatIsChosen)
{
    const QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("chosen file.tessaloom"));
    tests::writeFile(file, "bytes");
    tljira::OpenPanel::observeDialogs([&](QFileDialog& dialog) {
        EXPECT_EQ(dialog.fileMode(), QFileDialog::ExistingFile);
        dialog.selectFile(file);
        static_cast<QDialog&>(dialog).accept();
    });
    tests::ui::click(panel->openFileButton());
    EXPECT_EQ(panel->pathFile(), file);
    EXPECT_EQ(panel->pathLabel()->text(), file);
    EXPECT_EQ(client->pathFile(), file);
    EXPECT_THAT(log.lines(), ElementsAre(file));
}

TEST_F(JABodyViewControllerTest, keepsItsFileWhenTheOpenPanelIsDismissed)
{
    tljira::OpenPanel::observeDialogs([](QFileDialog& dialog) { dialog.reject(); });
    tests::ui::click(panel->openFileButton());
    EXPECT_EQ(panel->pathFile(), QStringLiteral("/documents/plan.tessaloom"));
    EXPECT_EQ(panel->pathLabel()->text(), QStringLiteral("/documents/plan.tessaloom"));
    EXPECT_THAT(log.lines(), IsEmpty());
}

TEST_F(JABodyViewControllerTest, theUploadButtonShowsTheUploadingViewAndSendsNothing)
{
    tests::ui::click(panel->uploadButton());
    tests::drainMainQueue();
    EXPECT_TRUE(panel->uploadView()->isVisible());
    EXPECT_FALSE(panel->checkFileView()->isVisible());
    EXPECT_EQ(panel->uploadView()->geometry(), panel->containerView()->rect());
    EXPECT_EQ(client->upladTask(), nullptr);
    tests::hearAnswers(*client);
    EXPECT_EQ(server.requests().size(), 1U);
}

// The session.

TEST_F(JABodyViewControllerTest, onlyTheUploadButtonDependsOnTheSession)
{
    panel->jaInvalidSession();
    EXPECT_FALSE(panel->uploadButton()->isEnabled());
    for (const QWidget* control : std::initializer_list<QWidget*>{panel->keyTextField(), panel->openFileButton(),
                                                                  panel->keyDownloadTextField(), lookUpButton()})
        EXPECT_TRUE(control->isEnabled()) << control->objectName().toStdString();
    add("ABC-1", "a.png");
    lookUp(QStringLiteral("ABC-1"));
    EXPECT_THAT(shownTitles(list()), ElementsAre(QStringLiteral("a.png")));
    panel->jaValidSession();
    EXPECT_TRUE(panel->uploadButton()->isEnabled());
}

// The attachments.

TEST_F(JABodyViewControllerTest, listsEveryAttachmentInTheServersOrder)
{
    for (const char* name : {"b.png", "a.tessaloom", "notes", "c.TESSALOOM"})
        add("ABC-1", name);
    lookUp(QStringLiteral("ABC-1"));
    EXPECT_THAT(shownTitles(list()), ElementsAre(QStringLiteral("b.png"), QStringLiteral("a.tessaloom"),
                                                 QStringLiteral("notes"), QStringLiteral("c.TESSALOOM")));
    EXPECT_EQ(window->attachedSheet(), panel->jaListAttachedWindow()->window());
}

TEST_F(JABodyViewControllerTest, showsTheEmptyViewForAnIssueWithoutAttachments)
{
    lookUp(QStringLiteral("ABC-1"));
    ASSERT_TRUE(tests::waitUntil([this] { return list().noDataView()->isVisible(); }));
}

TEST_F(JABodyViewControllerTest, aSecondLookUpKeepsTheRowsOfTheFirst)
{
    add("ABC-1", "first.png");
    server.addIssue("ABC-2");
    add("ABC-2", "second.png");
    add("ABC-2", "third.png");
    lookUp(QStringLiteral("ABC-1"));
    close();
    log.clear();
    lookUp(QStringLiteral("ABC-2"));
    EXPECT_THAT(shownTitles(list()), ElementsAre(QStringLiteral("first.png")));
    EXPECT_EQ(list().attachments().size(), 2U);
    panel->jaListAttachedWindow()->reload();
    EXPECT_THAT(shownTitles(list()), ElementsAre(QStringLiteral("second.png"), QStringLiteral("third.png")));
}

TEST_F(JABodyViewControllerTest, doesNothingWhenTheSheetEndsAfterADownload)
{
    add("ABC-1", "a.png");
    lookUp(QStringLiteral("ABC-1"));
    tests::ui::click(tests::cellAtRow(list(), 0)->downloadButton());
    ASSERT_TRUE(tests::waitUntil([this] { return list().isDone(); }));
    close();
    tests::drainMainQueue();
    EXPECT_TRUE(window->isVisible());
    EXPECT_EQ(panel->pathFile(), QStringLiteral("/documents/plan.tessaloom"));
}

TEST_F(JABodyViewControllerTest, asksForTheKeyAsItIsTyped)
{
    press(QStringLiteral(" abc-1 "));
    ASSERT_TRUE(tests::waitUntil([this] {
        return server.finishedRequestCount() == server.requestCount() && !server.requests("*/issue/*").empty();
    }));
    EXPECT_EQ(server.lastRequest().path, "/rest/api/2/issue/%20abc-1%20");
}

TEST_F(JABodyViewControllerTest, saysNothingOfALookUpInVain)
{
    server.misbehave(Match::on("*/issue/DOWN-1"), Fault().close(Point::responseHead(0)));
    for (const char* key : {"NO-1", "", "DOWN-1"}) {
        const auto before = server.finishedRequestCount();
        const QString usual = help();
        press(QString::fromUtf8(key));
        EXPECT_EQ(help() == usual, *key == '\0');
        ASSERT_TRUE(tests::waitUntil([&] { return server.finishedRequestCount() > before; }));
        tests::hearAnswers(*client);
        ASSERT_TRUE(tests::waitUntil([&] { return help() == usual; }));
        EXPECT_EQ(window->attachedSheet(), nullptr) << key;
        EXPECT_TRUE(panel->checkDownloadFiles()->isVisible());
        EXPECT_THAT(panel->jaListAttachedWindow()->attachments(), IsEmpty());
    }
}

TEST_F(JABodyViewControllerTest, saysWhileALookUpRunsThatItLooks)
{
    const QString before = help();
    server.misbehave(Match::on("*/issue/*").once(), Fault().hold(Point::responseHead(0)));
    press(QStringLiteral("NO-1"));
    EXPECT_EQ(help(), QStringLiteral("Looking for the issue… The list opens when it is found."));
    waitForHeldExchange();
    server.release();
    EXPECT_TRUE(tests::waitUntil([&] { return help() == before; }));
}

TEST_F(JABodyViewControllerTest, theListNamesNoIssueAndTheButtonCloses)
{
    add("ABC-1", "a.png");
    lookUp(QStringLiteral("ABC-1"));
    EXPECT_FALSE(tljira::findView<QLabel>(list().view(), "listTitle")->isVisible());
    tests::ui::click(tests::cellAtRow(list(), 0)->downloadButton());
    ASSERT_TRUE(tests::waitUntil([this] { return list().isDone(); }));
    EXPECT_EQ(tests::closeButton(*panel->jaListAttachedWindow()->window())->text(), QStringLiteral("Close"));
}

// Errors.

TEST_F(JABodyViewControllerTest, showsAnErrorInAnAlert)
{
    QStringList texts;
    tljira::Alert::observeDialogs([&](QMessageBox& box) {
        texts = {box.text(), box.informativeText()};
        EXPECT_EQ(box.icon(), QMessageBox::Warning);
        box.accept();
    });
    panel->errorMessage(QStringLiteral("It did not work."));
    EXPECT_THAT(texts, ElementsAre(QStringLiteral("Error"), QStringLiteral("It did not work.")));
}

TEST_F(JABodyViewControllerTest, saysThatItDoesNotSendFiles)
{
    const auto* help = panel->view()->findChild<QLabel*>(QStringLiteral("uploadHelp"));
    ASSERT_TRUE(help && help->isVisible());
    EXPECT_EQ(help->text(), QStringLiteral("This window does not send files"));
    EXPECT_TRUE(panel->containerView()->isAncestorOf(help));
}

TEST_F(JABodyViewControllerTest, pressesTheButtonOfTheAreaThatTheKeyboardIsInAtReturn)
{
    const auto standsOut = [this](const char* name) {
        return tljira::findView<QPushButton>(panel->view(), name)->isDefault();
    };
    tests::ui::type(panel->keyDownloadTextField(), QStringLiteral("ABC-1"));
    EXPECT_TRUE(standsOut("getListAttachedFilesButton"));
    EXPECT_FALSE(standsOut("uploadButton"));
    tests::ui::type(panel->keyTextField(), QStringLiteral("ABC-2"));
    EXPECT_TRUE(standsOut("uploadButton"));
    EXPECT_FALSE(standsOut("getListAttachedFilesButton"));
    tests::ui::press(window->widget(), Qt::Key_Return);
    tests::drainMainQueue();
    EXPECT_TRUE(panel->uploadView()->isVisible());
    tests::hearAnswers(*client);
    EXPECT_EQ(server.requests().size(), 1U);

    tests::ui::type(panel->keyDownloadTextField(), QStringLiteral("ABC-1"));
    tests::ui::press(window->widget(), Qt::Key_Return);
    EXPECT_TRUE(tests::waitUntil([this] { return panel->jaListAttachedWindow()->window()->isVisible(); }));
}

TEST_F(JABodyViewControllerTest, keepsTheButtonOfReturnWhileTheKeyboardIsElsewhere)
{
    const auto isUploadChosen = [this] { return panel->uploadButton()->isDefault() && !lookUpButton()->isDefault(); };
    tests::ui::type(panel->keyTextField(), QStringLiteral("ABC-2"));
    ASSERT_TRUE(isUploadChosen());
    panel->keyTextField()->clearFocus();
    ASSERT_EQ(QApplication::focusWidget(), nullptr);
    EXPECT_TRUE(isUploadChosen());
    auto* elsewhere = new QLineEdit;
    const auto other = tests::shownWindow(elsewhere);
    ASSERT_TRUE(tests::waitUntil([&] {
        elsewhere->setFocus();
        return elsewhere->hasFocus();
    }));
    EXPECT_TRUE(isUploadChosen());
}

TEST_F(JABodyViewControllerTest, showsNothingOfALookUpBeforeItsViewIsThere)
{
    const auto other = JABodyViewController::initWithNibName(QStringLiteral("JABodyViewController"), std::nullopt);
    server.misbehave(Match::on("*/issue*"), Fault().status(200, R"({"key": "ABC-1", "fields": {}})"));
    other->getListAttachedFilesAction();
    ASSERT_TRUE(tests::waitUntil([this] { return !server.requests("*/issue*").empty(); }));
    tests::hearAnswers(*client);
    EXPECT_EQ(other->jaListAttachedWindow(), nullptr);
}

} // namespace
