#include "upload/JAUploadBodyViewController.h"

#include "platform/toolkit/nib/FrameworkBundle.h"
#include "platform/toolkit/nib/ViewClasses.h"
#include "platform/toolkit/views/Layer.h"
#include "platform/toolkit/views/View.h"
#include "platform/toolkit/windows/Alert.h"
#include "platform/toolkit/windows/AlertView.h"
#include "platform/toolkit/windows/OpenPanel.h"
#include "tests/kit/GermanUser.h"
#include "tests/kit/HeldGlobalQueue.h"
#include "tests/upload/UploadTest.h"

#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QMessageBox>
#include <QtTest/QTest>

namespace {

using namespace tests;
using namespace testing;

class JAUploadBodyViewControllerTest : public UploadTest
{
};

TEST_F(JAUploadBodyViewControllerTest, findsEverythingInItsInterfaceFile)
{
    EXPECT_EQ(panel->interfaceProblems(), QStringList());
}

TEST_F(JAUploadBodyViewControllerTest, opensUsableWithTheDocumentAndTheKeyField)
{
    EXPECT_TRUE(panel->uploadFileButton()->isEnabled());
    EXPECT_TRUE(panel->taskTextField()->isEnabled());
    EXPECT_FALSE(ui::isShown(panel->shadow()));
    EXPECT_TRUE(ui::isShown(panel->uploadView()));
    EXPECT_FALSE(ui::isShown(panel->checkFileView()));
    EXPECT_EQ(panel->taskTextField()->text(), QString());
}

TEST_F(JAUploadBodyViewControllerTest, givesItsButtonAnEdgeWhateverTheInterfaceFileSays)
{
    tljira::observeLoadedViews([](QWidget* view) {
        if (auto* button = qobject_cast<QPushButton*>(view))
            button->setFlat(true);
    });
    const auto other = JAUploadBodyViewController::initWithNibName(QStringLiteral("JAUploadBodyViewController"),
                                                                   tljira::frameworkBundle());
    ASSERT_NE(other->view(), nullptr);

    EXPECT_TRUE(other->cancelButton()->isFlat());
    EXPECT_FALSE(other->uploadFileButton()->isFlat());
}

TEST_F(JAUploadBodyViewControllerTest, showsTheNameOfTheDocumentNotItsPath)
{
    panel->setNewPathFile(QStringLiteral("/a/b/c.tessaloom"), QStringLiteral("Shown.tessaloom"));

    EXPECT_EQ(panel->filePath(), QStringLiteral("/a/b/c.tessaloom"));
    EXPECT_EQ(panel->fileName(), QStringLiteral("Shown.tessaloom"));
    EXPECT_EQ(panel->pathLabel()->text(), QStringLiteral("Shown.tessaloom"));
}

TEST_F(JAUploadBodyViewControllerTest, showsNothingForNoDocument)
{
    panel->setNewPathFile(std::nullopt, std::nullopt);

    EXPECT_EQ(panel->filePath(), std::nullopt);
    EXPECT_EQ(panel->fileName(), std::nullopt);
    EXPECT_EQ(panel->pathLabel()->text(), QString());
}

TEST_F(JAUploadBodyViewControllerTest, showsOneOfItsTwoViews)
{
    panel->setUploadActualView(panel->checkFileView());
    EXPECT_TRUE(ui::isShown(panel->checkFileView()));
    EXPECT_FALSE(ui::isShown(panel->uploadView()));

    panel->setUploadActualView(panel->uploadView());
    EXPECT_FALSE(ui::isShown(panel->checkFileView()));
    EXPECT_TRUE(ui::isShown(panel->uploadView()));
}

TEST_F(JAUploadBodyViewControllerTest, dimsThePanelWhileTheSessionIsInvalid)
{
    panel->jaInvalidSession();

    EXPECT_FALSE(panel->uploadFileButton()->isEnabled());
    EXPECT_FALSE(panel->taskTextField()->isEnabled());
    EXPECT_TRUE(ui::isShown(panel->shadow()));
    drainMainQueue();
    EXPECT_EQ(panel->shadow()->geometry(), panel->view()->rect());

    panel->jaValidSession();

    EXPECT_TRUE(panel->uploadFileButton()->isEnabled());
    EXPECT_TRUE(panel->taskTextField()->isEnabled());
    EXPECT_FALSE(ui::isShown(panel->shadow()));
}

TEST_F(JAUploadBodyViewControllerTest, dimsWithBlackAtFourTenths)
{
    const auto* layer = tljira::Layer::layerOf(panel->shadow());

    ASSERT_NE(layer, nullptr);
    ASSERT_TRUE(layer->backgroundColor().has_value());
    EXPECT_EQ(layer->backgroundColor()->rgb(), qRgb(0, 0, 0));
    EXPECT_NEAR(layer->backgroundColor()->alphaF(), 0.4, 0.001);
}

TEST_F(JAUploadBodyViewControllerTest, dimsOnTopOfEverythingButNotBesideASheet)
{
    EXPECT_EQ(tljira::subviews(panel->view()).last(), panel->shadow());
    EXPECT_TRUE(tljira::Layer::layerOf(panel->shadow())->isShade());
}

TEST_F(JAUploadBodyViewControllerTest, keepsTheShadowOverAllOfThePanel)
{
    panel->jaInvalidSession();
    window->widget()->resize(window->widget()->size() + QSize(80, 50));
    drainMainQueue();

    EXPECT_EQ(panel->shadow()->geometry(), panel->view()->rect());
}

/// Answers the open dialog with a path, or cancels it without one.
void answerOpenPanel(const QString& path)
{
    tljira::OpenPanel::observeDialogs([path](QFileDialog& dialog) {
        EXPECT_EQ(dialog.fileMode(), QFileDialog::ExistingFile);
        if (path.isEmpty()) {
            dialog.reject();
            return;
        }
        dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->setText(path);
        dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Open)->click();
    });
}

TEST_F(JAUploadBodyViewControllerTest, takesTheFileThatTheUserOpens)
{
    const LoneDocument other;
    panel->setUploadActualView(panel->checkFileView());
    answerOpenPanel(other.path());
    ui::click(panel->openFileButton());

    EXPECT_EQ(panel->filePath(), other.path());
    EXPECT_EQ(panel->fileName(), QStringLiteral("plan.tessaloom"));
    EXPECT_EQ(panel->pathLabel()->text(), QStringLiteral("plan.tessaloom"));
    EXPECT_EQ(log.lines(), QStringList(other.path()));
}

TEST_F(JAUploadBodyViewControllerTest, keepsTheDocumentWhenOpeningIsCancelled)
{
    panel->setUploadActualView(panel->checkFileView());
    answerOpenPanel(QString());
    ui::click(panel->openFileButton());

    EXPECT_EQ(panel->filePath(), document.path());
    EXPECT_EQ(panel->fileName(), LoneDocument::name());
    EXPECT_EQ(log.lines(), QStringList());
}

TEST_F(JAUploadBodyViewControllerTest, endsTheSheetThatItsWindowIs)
{
    const auto host = tljira::Window::create(QStringLiteral("Host"), nullptr);
    std::vector<int> codes;
    window->orderOut();
    host->makeKeyAndOrderFront();
    host->beginSheet(window, [&codes](int code) { codes.push_back(code); });
    ui::click(panel->cancelButton());

    EXPECT_THAT(codes, ElementsAre(tljira::ModalResponse::Stop));
}

TEST_F(JAUploadBodyViewControllerTest, cancelsNothingInAWindowThatIsNoSheet)
{
    ui::click(panel->cancelButton());

    EXPECT_TRUE(window->isVisible());
}

TEST_F(JAUploadBodyViewControllerTest, comesBackFromTheSheetWhereTheHostHasTakenTheKeyFieldAway)
{
    upload();
    ASSERT_EQ(outcome(), QStringLiteral("DONE"));
    delete panel->taskTextField();
    ui::click(sheet()->cancelButton());

    EXPECT_EQ(window->attachedSheet(), nullptr);
    EXPECT_FALSE(ui::isShown(panel->shadow()));
}

/// Hears when the window loses the keyboard.
class KeyboardListener : public tljira::WindowDelegate
{
public:
    explicit KeyboardListener(std::function<void()> lost)
        : m_lost(std::move(lost))
    {
    }
    void windowDidResignKey(tljira::Window&) override { m_lost(); }

private:
    const std::function<void()> m_lost;
};

TEST_F(JAUploadBodyViewControllerTest, isUploadingWhenTheSheetTakesTheKeyboard)
{
    std::vector<bool> answers;
    const auto listener = std::make_shared<KeyboardListener>([&] { answers.push_back(panel->isUploading()); });
    window->setDelegate(listener);
    upload();

    EXPECT_THAT(answers, ElementsAre(true));
    EXPECT_EQ(outcome(), QStringLiteral("DONE"));
}

TEST_F(JAUploadBodyViewControllerTest, showsAlerts)
{
    QString title;
    QString message;
    tljira::Alert::observeDialogs([&](QMessageBox& box) {
        title = box.text();
        message = box.informativeText();
        EXPECT_EQ(box.icon(), QMessageBox::Warning);
        box.accept();
    });
    panel->alert(QStringLiteral("Title"), QStringLiteral("What happened"));

    EXPECT_EQ(title, QStringLiteral("Title"));
    EXPECT_EQ(message, QStringLiteral("What happened"));
}

TEST_F(JAUploadBodyViewControllerTest, listsTheFilesBelowAFolder)
{
    const QDir folder(document.folder());
    ASSERT_TRUE(folder.mkpath(QStringLiteral("inner/empty")));
    QFile inner(folder.filePath(QStringLiteral("inner/page")));
    ASSERT_TRUE(inner.open(QIODevice::WriteOnly));

    const QStringList paths = panel->getRelativePath(folder.path());

    EXPECT_THAT(std::vector<QString>(paths.begin(), paths.end()),
                UnorderedElementsAre(QStringLiteral("plan.tessaloom"), QStringLiteral("inner/page")));
    EXPECT_EQ(panel->getRelativePath(QStringLiteral("/no/such/folder")), QStringList());
}

TEST_F(JAUploadBodyViewControllerTest, walksWithTheTabKeyFromTheKeyToTheButtons)
{
    panel->taskTextField()->setFocus();
    QTest::keyClick(panel->taskTextField(), Qt::Key_Tab);
    EXPECT_EQ(window->widget()->focusWidget(), panel->cancelButton());
    QTest::keyClick(panel->cancelButton(), Qt::Key_Tab);
    EXPECT_EQ(window->widget()->focusWidget(), panel->uploadFileButton());
}

/// What the panel says of the document.
class DocumentStateTest : public UploadTest
{
protected:
    template <class View>
    View* part(const char* name) const
    {
        return tljira::findView<View>(panel->view(), name);
    }
    bool isOnScreen(const char* name) const { return ui::isOnScreen(part<QWidget>(name)); }
    QString textOf(const char* name) const { return part<QLabel>(name)->text(); }

    void succeed()
    {
        upload();
        ASSERT_TRUE(waitUntil([this] { return isDone(); }));
        ui::click(sheet()->cancelButton());
    }
    void fail()
    {
        upload(QStringLiteral("NO-1"));
        ASSERT_TRUE(waitUntil([this] { return hasFailed(); }));
        ui::click(sheet()->cancelButton());
    }
    /// Until the document that is looked for has been found or not.
    static void waitForDisk()
    {
        {
            const HeldGlobalQueue allThatWasAskedBefore;
        }
        drainMainQueue();
    }
};

TEST_F(DocumentStateTest, hasAnIconAndASize)
{
    EXPECT_TRUE(isOnScreen("documentIcon"));
    EXPECT_TRUE(waitUntil([this] { return textOf("documentSize") == QStringLiteral("25 bytes"); }));
    const LoneDocument large(QByteArray(8 << 20, 'x'));
    panel->setNewPathFile(large.path(), LoneDocument::name());
    EXPECT_TRUE(waitUntil([this] { return textOf("documentSize") == QStringLiteral("8.0 MB"); }));
}

TEST_F(DocumentStateTest, isLookedAtOnAnotherThread)
{
    ASSERT_TRUE(waitUntil([this] { return !textOf("documentSize").isEmpty(); }));
    const LoneDocument large(QByteArray(8 << 20, 'x'));
    HeldGlobalQueue slowDisk;
    panel->setNewPathFile(large.path(), LoneDocument::name());
    drainMainQueue();
    EXPECT_EQ(textOf("documentSize"), QStringLiteral("25 bytes"));
    slowDisk.letGo();
    EXPECT_TRUE(waitUntil([this] { return textOf("documentSize") == QStringLiteral("8.0 MB"); }));
}

TEST_F(DocumentStateTest, isKnownToBeAttachedAfterASuccess)
{
    EXPECT_EQ(panel->cancelButton()->text(), QStringLiteral("Cancel"));
    succeed();

    EXPECT_TRUE(isOnScreen("attachedLine"));
    EXPECT_EQ(textOf("attachedLabel"), QStringLiteral("Attached to ABC-1"));
    EXPECT_TRUE(isOnScreen("documentIcon"));
    EXPECT_FALSE(isOnScreen("documentSize"));
    EXPECT_FALSE(isOnScreen("goneLine"));
    EXPECT_EQ(panel->cancelButton()->text(), QStringLiteral("Close"));
    EXPECT_EQ(panel->cancelButton()->accessibleName(), QStringLiteral("Close"));
    EXPECT_EQ(panel->cancelButton()->shortcut(), QKeySequence(Qt::Key_Escape));
}

TEST_F(DocumentStateTest, isGoneAfterAFailureInThePlaceOfItsName)
{
    EXPECT_FALSE(isOnScreen("goneLine"));
    fail();

    ASSERT_TRUE(waitUntil([this] { return isOnScreen("goneLine"); }));
    EXPECT_EQ(textOf("goneLabel"),
              QStringLiteral("The document is gone. Close this window and attach the document again."));
    EXPECT_FALSE(ui::isOnScreen(panel->pathLabel()));
    EXPECT_FALSE(isOnScreen("documentIcon"));
    EXPECT_FALSE(isOnScreen("documentSize"));
    EXPECT_EQ(panel->pathLabel()->text(), LoneDocument::name());
    EXPECT_EQ(panel->cancelButton()->text(), QStringLiteral("Close"));
    EXPECT_TRUE(panel->uploadFileButton()->isEnabled());
}

TEST_F(DocumentStateTest, isToldToBeGoneOnce)
{
    int announced = 0;
    QObject::connect(part<tljira::AlertView>("goneLine"), &tljira::AlertView::announced, [&announced] { ++announced; });
    fail();
    EXPECT_TRUE(waitUntil([&announced] { return announced == 1; }));
    fail();
    waitForDisk();

    EXPECT_TRUE(isOnScreen("goneLine"));
    EXPECT_EQ(announced, 1);
}

TEST_F(DocumentStateTest, remainsAttachedWhenItCannotBeSentAgain)
{
    succeed();
    fail();
    waitForDisk();

    EXPECT_TRUE(isOnScreen("attachedLine"));
    EXPECT_EQ(textOf("attachedLabel"), QStringLiteral("Attached to ABC-1"));
    EXPECT_FALSE(isOnScreen("goneLine"));
}

TEST_F(DocumentStateTest, isNotAttachedByTheEndOfAnotherOne)
{
    const LoneDocument another("another one");
    holdUploadsAfter(0);
    upload();
    waitForHeldExchange();
    panel->setNewPathFile(another.path(), LoneDocument::name());
    server.release();
    ASSERT_TRUE(waitUntil([this] { return isDone(); }));
    ui::click(sheet()->cancelButton());

    EXPECT_FALSE(isOnScreen("attachedLine"));
    EXPECT_EQ(panel->cancelButton()->text(), QStringLiteral("Cancel"));
}

TEST_F(DocumentStateTest, isNotGoneWhereThereWasNone)
{
    panel->setNewPathFile(std::nullopt, std::nullopt);
    waitForDisk();

    EXPECT_FALSE(isOnScreen("goneLine"));
    EXPECT_EQ(panel->cancelButton()->text(), QStringLiteral("Cancel"));
}

TEST_F(DocumentStateTest, makesTheWindowGrowWhereItsNameNeedsMoreRoom)
{
    fail();
    ASSERT_TRUE(waitUntil([this] { return isOnScreen("goneLine"); }));
    waitForDisk();
    QFont large = panel->pathLabel()->font();
    large.setPointSize(80);
    panel->pathLabel()->setFont(large);
    const int before = window->widget()->height();
    const LoneDocument another;
    panel->setNewPathFile(another.path(), LoneDocument::name());

    EXPECT_EQ(window->widget()->height(), before) << "it jumps";
    EXPECT_TRUE(waitUntil([&] { return window->widget()->height() > before; }));
    EXPECT_TRUE(waitUntil([&] { return panel->pathLabel()->height() >= panel->pathLabel()->sizeHint().height(); }));
}

class GermanUploadTest : tests::GermanUser, public DocumentStateTest
{
protected:
    QString sheetText(const char* name) const
    {
        return tljira::text(QPointer(tljira::findView<QLabel>(sheet()->window()->widget(), name)));
    }
};

TEST_F(GermanUploadTest, isToldInTheUsersLanguage)
{
    server.misbehave(standin::Match::on("POST", "*/attachments"),
                     standin::Fault().hold(standin::Point::responseHead(0)));
    upload();
    waitForHeldExchange();
    EXPECT_EQ(sheetText("uploadingTitle"), QStringLiteral("Wird hochgeladen"));
    EXPECT_EQ(sheetText("documentLabel"), LoneDocument::name() + QStringLiteral(" an ABC-1"));
    EXPECT_TRUE(waitUntil([&] { return sheetText("rateLabel") == QStringLiteral("Warten auf den Server\u00a0…"); }))
        << sheetText("rateLabel").toStdString();
    EXPECT_EQ(sheet()->cancelButton()->text(), QStringLiteral("Abbrechen"));
    server.release();
    ASSERT_TRUE(waitUntil([this] { return isDone(); }));
    EXPECT_EQ(sheetText("uploadingTitle"), QStringLiteral("Hochgeladen"));
    EXPECT_EQ(sheetText("doneLabel"), QStringLiteral("An ABC-1 angehängt"));
    EXPECT_EQ(sheet()->cancelButton()->text(), QStringLiteral("Schließen"));
    ui::click(sheet()->cancelButton());
    EXPECT_EQ(textOf("attachedLabel"), QStringLiteral("An ABC-1 angehängt"));
    EXPECT_EQ(panel->cancelButton()->text(), QStringLiteral("Schließen"));
}

TEST_F(GermanUploadTest, thatFailsIsToldInTheUsersLanguage)
{
    upload(QStringLiteral("NO-1"));
    ASSERT_TRUE(waitUntil([this] { return hasFailed(); }));
    EXPECT_TRUE(sheetText("serverSentence").startsWith(QStringLiteral("jira.example.test meldet: „")))
        << sheetText("serverSentence").toStdString();
    EXPECT_EQ(sheetText("advice"),
              QStringLiteral("Hängen Sie das Dokument erneut an, und prüfen Sie den Vorgangsschlüssel."));
    ui::click(sheet()->cancelButton());
    ASSERT_TRUE(waitUntil([this] { return isOnScreen("goneLine"); }));
    EXPECT_EQ(textOf("goneLabel"), QStringLiteral("Das Dokument ist nicht mehr da. Schließen Sie dieses Fenster und "
                                                  "hängen Sie das Dokument erneut an."));
}

TEST_F(DocumentStateTest, isThereAgainWithAnotherDocument)
{
    fail();
    ASSERT_TRUE(waitUntil([this] { return isOnScreen("goneLine"); }));
    const LoneDocument another;
    panel->setNewPathFile(another.path(), LoneDocument::name());

    EXPECT_FALSE(isOnScreen("goneLine"));
    EXPECT_TRUE(ui::isOnScreen(panel->pathLabel()));
    EXPECT_EQ(panel->cancelButton()->text(), QStringLiteral("Cancel"));
}

/// The second report of such an end is a success.
TEST_F(DocumentStateTest, isNotAttachedAfterAnAnswerThatIsNoJson)
{
    server.misbehave(standin::Match::on("POST", "*/attachments"),
                     standin::Fault().status(502, "<html>Bad gateway</html>", "text/html"));
    upload();
    ASSERT_TRUE(waitUntil([this] { return isDone(); }));
    ASSERT_TRUE(waitUntil([this] { return part<QWidget>("goneLine")->isVisible(); }));

    EXPECT_FALSE(isOnScreen("attachedLine"));
}

TEST_F(DocumentStateTest, hasHelpForTheKey)
{
    const QString words = QStringLiteral("The key stands in the issue's address, for example ABC-123");
    EXPECT_TRUE(isOnScreen("taskHelp"));
    EXPECT_EQ(textOf("taskHelp"), words);
    EXPECT_EQ(panel->taskTextField()->accessibleDescription(), words);
}

TEST_F(DocumentStateTest, isNamedInTheSheetAndTheSheetIsAsWideAsThePanelAllows)
{
    window->setFrame(QRectF(50, 50, 700, 400), false);
    holdUploadsAfter(1);
    upload();
    EXPECT_EQ(tljira::findView<QLabel>(sheet()->uploadingView(), "documentLabel")->text(),
              LoneDocument::name() + QStringLiteral(" to ABC-1"));
    EXPECT_EQ(sheet()->window()->contentView()->width(), panel->view()->width() - 40);
    waitForHeldExchange();
    server.release();
    EXPECT_EQ(outcome(), QStringLiteral("DONE"));
}

} // namespace
