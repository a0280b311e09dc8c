#include "host/EditorWindow.h"
#include "constants/JAConstants.h"
#include "framework/TLJiraController.h"
#include "platform/foundation/files/TemporaryDirectory.h"
#include "platform/foundation/settings/UserDefaults.h"
#include "standin/Server.h"
#include "tests/kit/LogCapture.h"
#include "tests/kit/Printers.h"
#include "tests/kit/SmallDisk.h"
#include "tests/kit/Ui.h"
#include "tests/kit/WaitUntil.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QFileInfo>
#include <QLineEdit>
#include <QMenuBar>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <gmock/gmock.h>

using tessaloom::EditorWindow;

namespace {

/// Deals with the next dialog of this kind once it is up.
template <class Dialog>
void whenUp(std::function<void(Dialog&)> handle)
{
    QTimer::singleShot(1, [handle] {
        if (auto* dialog = qobject_cast<Dialog*>(QApplication::activeModalWidget()))
            handle(*dialog);
        else
            whenUp<Dialog>(handle);
    });
}

class EditorWindowTest : public testing::Test
{
protected:
    EditorWindowTest() { editor.QMainWindow::show(); }

    QString pathOf(const char* name) const { return folder.filePath(QLatin1String(name)); }

    QString makeFile(const char* name, const QByteArray& bytes) const
    {
        QFile file(pathOf(name));
        EXPECT_TRUE(file.open(QFile::WriteOnly));
        file.write(bytes);
        return file.fileName();
    }

    static QByteArray bytesOf(const QString& path)
    {
        QFile file(path);
        return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray("(no file)");
    }

    void typeAtEnd(const QString& text)
    {
        editor.textEdit()->moveCursor(QTextCursor::End);
        QTest::keyClicks(editor.textEdit(), text);
    }

    void answerNextQuestion(QMessageBox::StandardButton answer)
    {
        whenUp<QMessageBox>([this, answer](QMessageBox& box) {
            question = box.text();
            reason = box.informativeText();
            QTest::mouseClick(box.button(answer), Qt::LeftButton);
        });
    }

    QTemporaryDir folder;
    EditorWindow editor;
    QString question;
    QString reason;
};

TEST_F(EditorWindowTest, beginsWithAnUntitledDocument)
{
    EXPECT_EQ(editor.documentName(), QStringLiteral("Untitled.tessaloom"));
    EXPECT_EQ(editor.documentBytes(), QByteArray());
    EXPECT_FALSE(editor.isWindowModified());
}

TEST_F(EditorWindowTest, opensADocumentAndSaysSoInItsTitle)
{
    EXPECT_TRUE(editor.open(makeFile("plan.tessaloom", "wool\n")));

    EXPECT_EQ(editor.textEdit()->toPlainText(), QStringLiteral("wool\n"));
    EXPECT_EQ(editor.windowTitle(), QStringLiteral("plan.tessaloom[*] – Tessaloom"));
    EXPECT_FALSE(editor.isWindowModified());
}

TEST_F(EditorWindowTest, marksAChangeUntilItIsSaved)
{
    const QString path = makeFile("plan.tessaloom", "wool");
    editor.open(path);

    typeAtEnd(QStringLiteral(" and silk"));
    EXPECT_TRUE(editor.isWindowModified());
    EXPECT_EQ(bytesOf(path), QByteArray("wool"));

    EXPECT_TRUE(editor.save());
    EXPECT_FALSE(editor.isWindowModified());
    EXPECT_EQ(bytesOf(path), QByteArray("wool and silk"));
}

TEST_F(EditorWindowTest, savesTheLineEndsAndNoBreakSpacesThatItFound)
{
    const QByteArray bytes = "60\xC2\xA0\r\nwide";
    const QString path = makeFile("plan.tessaloom", bytes);
    editor.open(path);

    typeAtEnd(QStringLiteral("r"));
    editor.save();

    EXPECT_EQ(bytesOf(path), bytes + "r");
}

TEST_F(EditorWindowTest, followsALinkToTheFileItSaves)
{
    const QString path = makeFile("plan.tessaloom", "wool");
    ASSERT_TRUE(QFile::link(path, pathOf("link.tessaloom")));
    editor.open(pathOf("link.tessaloom"));

    typeAtEnd(QStringLiteral("ly"));
    editor.save();

    EXPECT_TRUE(QFileInfo(pathOf("link.tessaloom")).isSymLink());
    EXPECT_EQ(bytesOf(path), QByteArray("woolly"));
}

TEST_F(EditorWindowTest, saysWhatCannotBeSavedAndKeepsTheChange)
{
    const QString path = makeFile("plan.tessaloom", "wool");
    editor.open(path);
    typeAtEnd(QStringLiteral("ly"));
    ASSERT_TRUE(QDir(folder.path()).removeRecursively());

    answerNextQuestion(QMessageBox::Ok);
    EXPECT_FALSE(editor.save());

    EXPECT_EQ(question, QStringLiteral("“plan.tessaloom” cannot be saved."));
    EXPECT_TRUE(editor.isWindowModified());
    EXPECT_EQ(editor.documentBytes(), QByteArray("woolly"));
}

TEST_F(EditorWindowTest, keepsTheSavedFileWhereTheDiskIsFull)
{
    const tests::SmallDisk disk(folder.filePath(QStringLiteral("disk")), 64);
    if (!disk.isThere())
        GTEST_SKIP() << "this system lets nobody mount a small disk";
    const QString path = makeFile("disk/plan.tessaloom", "wool");
    editor.open(path);
    typeAtEnd(QStringLiteral("ly"));
    QFile filling(pathOf("disk/filling"));
    ASSERT_TRUE(filling.open(QFile::WriteOnly | QFile::Unbuffered));
    while (filling.write(QByteArray(4096, 'w')) > 0) {
    }

    answerNextQuestion(QMessageBox::Ok);
    EXPECT_FALSE(editor.save());

    EXPECT_EQ(question, QStringLiteral("“plan.tessaloom” cannot be saved."));
    EXPECT_EQ(reason, QStringLiteral("No space left on device"));
    EXPECT_TRUE(editor.isWindowModified());
    EXPECT_EQ(bytesOf(path), QByteArray("wool"));
    EXPECT_TRUE(filling.remove());
    EXPECT_TRUE(editor.save());
    EXPECT_EQ(bytesOf(path), QByteArray("woolly"));
}

TEST_F(EditorWindowTest, refusesAFileThatItCouldNotSaveUnchanged)
{
    editor.open(makeFile("plan.tessaloom", "wool"));

    answerNextQuestion(QMessageBox::Ok);
    EXPECT_FALSE(editor.open(makeFile("picture.tessaloom", "\xFF\xD8\xFF")));

    EXPECT_EQ(question, QStringLiteral("“picture.tessaloom” cannot be opened."));
    EXPECT_EQ(editor.documentName(), QStringLiteral("plan.tessaloom"));
    EXPECT_EQ(editor.documentBytes(), QByteArray("wool"));
}

TEST_F(EditorWindowTest, saysThatAFileIsNotThere)
{
    answerNextQuestion(QMessageBox::Ok);
    EXPECT_FALSE(editor.open(pathOf("none.tessaloom")));

    EXPECT_EQ(question, QStringLiteral("“none.tessaloom” cannot be opened."));
}

TEST_F(EditorWindowTest, asksBeforeItClosesAChangedDocument)
{
    const QString path = makeFile("plan.tessaloom", "wool");
    editor.open(path);
    typeAtEnd(QStringLiteral("ly"));

    answerNextQuestion(QMessageBox::Cancel);
    EXPECT_FALSE(editor.close());
    EXPECT_EQ(question, QStringLiteral("Save the changes to “plan.tessaloom”?"));
    EXPECT_TRUE(editor.isVisible());

    answerNextQuestion(QMessageBox::Discard);
    EXPECT_TRUE(editor.close());
    EXPECT_EQ(bytesOf(path), QByteArray("wool"));
}

TEST_F(EditorWindowTest, savesOnClosingWhereThatIsTheAnswer)
{
    const QString path = makeFile("plan.tessaloom", "wool");
    editor.open(path);
    typeAtEnd(QStringLiteral("ly"));

    answerNextQuestion(QMessageBox::Save);
    EXPECT_TRUE(editor.close());

    EXPECT_EQ(bytesOf(path), QByteArray("woolly"));
}

TEST_F(EditorWindowTest, closesAnUnchangedDocumentWithoutAsking)
{
    editor.open(makeFile("plan.tessaloom", "wool"));

    EXPECT_TRUE(editor.close());
}

TEST_F(EditorWindowTest, asksBeforeAnotherDocumentTakesThePlaceOfAChangedOne)
{
    editor.open(makeFile("plan.tessaloom", "wool"));
    typeAtEnd(QStringLiteral("ly"));

    answerNextQuestion(QMessageBox::Cancel);
    EXPECT_FALSE(editor.open(makeFile("other.tessaloom", "silk")));

    EXPECT_EQ(editor.documentName(), QStringLiteral("plan.tessaloom"));
    EXPECT_EQ(editor.documentBytes(), QByteArray("woolly"));
}

TEST_F(EditorWindowTest, asksWhereToSaveANewDocument)
{
    typeAtEnd(QStringLiteral("silk"));

    whenUp<QFileDialog>([this](QFileDialog& dialog) {
        dialog.findChild<QLineEdit*>()->setText(pathOf("new"));
        QTest::mouseClick(dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Save), Qt::LeftButton);
    });
    EXPECT_TRUE(editor.save());

    EXPECT_EQ(bytesOf(pathOf("new.tessaloom")), QByteArray("silk"));
    EXPECT_EQ(editor.documentName(), QStringLiteral("new.tessaloom"));
}

TEST_F(EditorWindowTest, opensACopyAsADocumentThatIsSavedNowhereYet)
{
    const QString path = makeFile("plan.tessaloom.tessaloom", "wool");

    EXPECT_TRUE(editor.openAsNew(path, QStringLiteral("plan.tessaloom")));

    EXPECT_EQ(editor.documentName(), QStringLiteral("plan.tessaloom"));
    EXPECT_EQ(editor.documentPath(), QString());
    EXPECT_TRUE(editor.isWindowModified());
}

/// An editor with a server, and a user who is logged in.
class EditorWindowWithJira : public testing::Test
{
protected:
    EditorWindowWithJira()
    {
        const QString route = QStringLiteral("jira.example.test:80:127.0.0.1:%1").arg(server.port());
        tljira::URLSessionConfiguration::setDefaultRoutes({route});
        tljira::UserDefaults::standardUserDefaults().setObject(true, kClearCache);
        server.addUser("anna", "secret");
        server.addIssue("ABC-1");
        client = JAController::sharedInstance();
    }

    void SetUp() override
    {
        client->setHost(QStringLiteral("http://jira.example.test"));
        bool isLoggedIn = false;
        client->login(QStringLiteral("anna"), QStringLiteral("secret"),
                      [&](const auto& session, const auto&) { isLoggedIn = session != nullptr; });
        ASSERT_TRUE(tests::waitUntil([&] { return isLoggedIn; }));
        editor.QMainWindow::show();
    }

    void choose(const QString& text)
    {
        const QList<QAction*> actions = editor.menuBar()->actions().first()->menu()->actions();
        const auto found = std::find_if(actions.begin(), actions.end(), [&](const QAction* action) {
            return action->text().remove(QLatin1Char('&')) == text;
        });
        ASSERT_NE(found, actions.end());
        (*found)->trigger();
    }

    template <class Entry>
    std::shared_ptr<Entry> newest() const
    {
        return std::dynamic_pointer_cast<Entry>(client->delegate());
    }

    tests::LogCapture log;
    standin::Server server;
    std::shared_ptr<JAController> client;
    EditorWindow editor;
};

TEST_F(EditorWindowWithJira, attachesWhatIsInTheWindowAndSaysSo)
{
    QTest::keyClicks(editor.textEdit(), QStringLiteral("silk"));
    choose(QStringLiteral("Upload to Jira…"));
    const auto upload = newest<TLJiraUpload>();
    ASSERT_NE(upload, nullptr);
    const auto panel = upload->bodyViewController();
    ASSERT_TRUE(tests::waitUntil([&] { return tests::ui::isOnScreen(panel->uploadView()); }));
    tests::ui::type(panel->taskTextField(), QStringLiteral("ABC-1"));
    tests::ui::click(panel->uploadFileButton());
    ASSERT_TRUE(tests::waitUntil([&] { return !panel->isUploading(); }));
    upload->window()->widget()->close();

    ASSERT_TRUE(tests::waitUntil([&] {
        return editor.statusBar()->currentMessage() == QStringLiteral("“Untitled.tessaloom” is attached to ABC-1.");
    }));
    ASSERT_EQ(server.attachments("ABC-1").size(), 1U);
    EXPECT_EQ(server.content(server.attachments("ABC-1")[0].id), "silk");
}

TEST_F(EditorWindowWithJira, opensWhatWasFetchedAndLeavesNoFile)
{
    server.addAttachment("ABC-1", {.fileName = "plan.tessaloom", .bytes = "wool"});
    choose(QStringLiteral("Open from Jira…"));
    const auto entry = newest<JMWindowController>();
    ASSERT_NE(entry, nullptr);
    const auto panel = entry->bodyViewController();
    ASSERT_TRUE(tests::waitUntil([&] { return tests::ui::isOnScreen(panel->getAttachButton()); }));
    tests::ui::type(panel->issueKeyTextField(), QStringLiteral("ABC-1"));
    tests::ui::click(panel->getAttachButton());
    const auto list = panel->jaListAttachedWindow();
    const auto cell = [&] { return dynamic_cast<JAAttachedCell*>(list->tableView()->cellAtRow(0)); };
    ASSERT_TRUE(tests::waitUntil([&] { return cell() && tests::ui::isOnScreen(cell()->downloadButton()); }));
    tests::ui::click(cell()->downloadButton());
    ASSERT_TRUE(tests::waitUntil([&] { return list->isDone(); }));
    tests::ui::press(entry->window()->widget(), Qt::Key_Escape);

    ASSERT_TRUE(tests::waitUntil([&] { return editor.documentBytes() == QByteArray("wool"); }));
    EXPECT_EQ(editor.documentName(), QStringLiteral("plan.tessaloom"));
    EXPECT_EQ(editor.documentPath(), QString());
    EXPECT_TRUE(editor.isWindowModified());
    EXPECT_EQ(QDir(tljira::temporaryDirectory()).entryList({QStringLiteral("Fetched-*")}), QStringList());
}

TEST_F(EditorWindowWithJira, tellsTheOlderWindowOfTheDocumentAndItsPages)
{
    editor.textEdit()->setPlainText(QStringLiteral("warp\fweft"));
    choose(QStringLiteral("Jira (classic)…"));

    EXPECT_EQ(client->pathFile(), QString());
    EXPECT_THAT(log.lines(), testing::IsSupersetOf({QStringLiteral("self.tmpFile: QObject"), QStringLiteral("warp"),
                                                    QStringLiteral("weft")}));
}

} // namespace
