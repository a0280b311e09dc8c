#include "tests/framework/jobs/JobsTest.h"

#include "client/tasks/FileDocument.h"
#include "platform/foundation/files/TemporaryDirectory.h"
#include "tests/kit/HeldSystem.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>
#include <QWindow>

#include <stdexcept>

namespace {

using namespace tests;
using standin::Fault;
using standin::Match;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

const QString name = QStringLiteral("plan.tessaloom");

class AttachTest : public JobsTest
{
protected:
    QString errorInWindow() const { return sheet().errorMessage()->text(); }
    QString adviceInWindow() const { return sheet().errorView()->findChild<QLabel*>(QStringLiteral("advice"))->text(); }
};

TEST_F(AttachTest, sendsTheDocumentAndTellsWhatTheServerMadeOfIt)
{
    open();
    pressUpload();
    ASSERT_TRUE(waitForAttempt());
    EXPECT_EQ(sheet().sizeLabel()->text(), QStringLiteral("DONE"));
    EXPECT_THAT(ends, IsEmpty());
    closeSheet();
    closeByTitleBar(*upload);

    ASSERT_TRUE(waitForEnd());
    EXPECT_EQ(ends[0].outcome, Outcome::Done);
    EXPECT_EQ(ends[0].error, std::nullopt);
    EXPECT_EQ(ends[0].issueKey, QStringLiteral("ABC-1"));
    EXPECT_EQ(ends[0].attachmentId.toStdString(), std::to_string(server.attachments("ABC-1").at(0).id));
    EXPECT_EQ(ends[0].attachmentName, name);
    EXPECT_EQ(ends[0].size, bytes.size());
    EXPECT_EQ(ends[0].path, QString());
    EXPECT_THAT(attached(), ElementsAre(bytes.toStdString()));
}

TEST_F(AttachTest, isADialogOfTheParentsWindow)
{
    auto* const view = new QWidget(host.get());
    QWidget other;
    other.show();
    ASSERT_TRUE(TLJiraJobs::attach({name, bytes}, view));
    upload = std::dynamic_pointer_cast<TLJiraUpload>(client->delegate());

    EXPECT_EQ(upload->window()->widget()->windowHandle()->transientParent(), host->windowHandle());
    closeByTitleBar(*upload);
    drainMainQueue();
}

TEST_F(AttachTest, showsTheNameAndTheSizeBeforeAnythingIsSent)
{
    open();

    EXPECT_EQ(panel().pathLabel()->text(), name);
    auto* const size = panel().uploadView()->findChild<QLabel*>(QStringLiteral("documentSize"));
    EXPECT_TRUE(ui::isOnScreen(size));
    EXPECT_EQ(size->text(), QStringLiteral("14 bytes"));
    EXPECT_THAT(foldersNamed(QStringLiteral("Upload-")), IsEmpty());
}

TEST_F(AttachTest, aCorrectedKeySendsTheSameBytes)
{
    open();
    pressUpload(QStringLiteral("NO-1"));
    ASSERT_TRUE(waitForAttempt());
    EXPECT_TRUE(ui::isOnScreen(sheet().errorView()));
    EXPECT_EQ(adviceInWindow(), QStringLiteral("Check the issue key, then press Upload again."));
    closeSheet();
    EXPECT_TRUE(ui::isOnScreen(panel().pathLabel()));
    EXPECT_EQ(panel().cancelButton()->text(), QStringLiteral("Cancel"));
    pressUpload();
    ASSERT_TRUE(waitForAttempt());
    closeSheet();
    closeByTitleBar(*upload);

    ASSERT_TRUE(waitForEnd());
    EXPECT_EQ(uploadsWith(bytes.toStdString()), 2);
    EXPECT_THAT(attached(), ElementsAre(bytes.toStdString()));
    EXPECT_EQ(ends[0].outcome, Outcome::Done);
    EXPECT_EQ(ends[0].issueKey, QStringLiteral("ABC-1"));
}

TEST_F(AttachTest, eachPressHasACopyOfItsOwn)
{
    std::vector<QString> files;
    open({name, [&files, this](QIODevice& device) {
              files.push_back(dynamic_cast<QFile&>(device).fileName());
              return device.write(bytes + QByteArray::number(qint64(files.size()))) > 0;
          }});
    for (int press = 0; press < 2; ++press) {
        pressUpload();
        ASSERT_TRUE(waitForAttempt());
        closeSheet();
    }

    ASSERT_EQ(files.size(), 2U);
    EXPECT_NE(QFileInfo(files[0]).path(), QFileInfo(files[1]).path());
    EXPECT_THAT(attached(), ElementsAre(bytes.toStdString() + "1", bytes.toStdString() + "2"));
    EXPECT_THAT(foldersNamed(QStringLiteral("Upload-")), IsEmpty());
}

TEST_F(AttachTest, aCopyIsAloneInAFolderThatNobodyElseEnters)
{
    QStringList beside;
    QFile::Permissions permissions;
    QString parent;
    open({name, [&](QIODevice& device) {
              const QFileInfo folder(QFileInfo(dynamic_cast<QFile&>(device).fileName()).path());
              beside = QDir(folder.filePath()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden);
              permissions = folder.permissions();
              parent = folder.path();
              return true;
          }});
    pressUpload();
    ASSERT_TRUE(waitForAttempt());

    EXPECT_EQ(beside, QStringList(QStringLiteral("document")));
    EXPECT_EQ(permissions & ~(QFile::ReadUser | QFile::WriteUser | QFile::ExeUser),
              QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    EXPECT_EQ(parent, tljira::temporaryDirectory());
}

TEST_F(AttachTest, aRetryAfterACancelSendsTheSameBytes)
{
    server.misbehave(Match::on("POST", "*/attachments").once(), Fault().hold(standin::Point::requestBody(65536)));
    const QByteArray large(1 << 20, 'w');
    open({name, large});
    pressUpload();
    ASSERT_TRUE(waitUntil([this] { return server.heldCount() == 1; }));
    ui::click(sheet().cancelButton());
    pressUpload();
    ASSERT_TRUE(waitForAttempt());
    closeSheet();
    closeByTitleBar(*upload);

    ASSERT_TRUE(waitForEnd());
    EXPECT_EQ(ends[0].outcome, Outcome::Done);
    EXPECT_THAT(attached(), ElementsAre(large.toStdString()));
}

TEST_F(AttachTest, aRetryAfterAFailureSendsTheSameBytes)
{
    server.misbehave(Match::on("POST", "*/attachments").once(), Fault().close(standin::Point::requestBody(8)));
    open();
    pressUpload();
    ASSERT_TRUE(waitForAttempt());
    EXPECT_EQ(adviceInWindow(), QStringLiteral("Check the connection, then press Upload again."));
    closeSheet();
    pressUpload();
    ASSERT_TRUE(waitForAttempt());

    EXPECT_EQ(sheet().sizeLabel()->text(), QStringLiteral("DONE"));
    EXPECT_THAT(attached(), ElementsAre(bytes.toStdString()));
}

TEST_F(AttachTest, touchesNoFileOfTheHost)
{
    const LoneDocument own;
    open({name, [&own](QIODevice& device) {
              const auto contents = contentsOf(own.path());
              return contents && device.write(*contents) == contents->size();
          }});
    pressUpload();
    ASSERT_TRUE(waitForAttempt());
    closeSheet();
    closeByTitleBar(*upload);
    ASSERT_TRUE(waitForEnd());

    EXPECT_EQ(contentsOf(own.path()), QByteArray("contents of the document\n"));
    EXPECT_THAT(attached(), ElementsAre("contents of the document\n"));
}

TEST_F(AttachTest, aSlowFileOfTheHostHoldsUpNoWindow)
{
    const LoneDocument own;
    open(client::FileDocument::of(name, own.path()));
    const HeldFile held(own.path(), 0);
    pressUpload();
    // As the window can be used.
    ASSERT_TRUE(waitUntil([] { return HeldFile::waiting() == 1; }));
    ui::click(sheet().cancelButton());
    EXPECT_TRUE(waitUntil([this] { return panel().taskTextField()->isEnabled(); }));

    HeldFile::release();
    ASSERT_TRUE(waitForAttempt());
    EXPECT_THAT(attached(), IsEmpty());
    pressUpload();
    ASSERT_TRUE(waitForAttempt());
    EXPECT_THAT(attached(), ElementsAre("contents of the document\n"));
}

TEST_F(AttachTest, aWriterThatFailsSendsNothingAndTheWindowSaysSo)
{
    bool isReady = false;
    open({name, [&](QIODevice& device) { return device.write(bytes) > 0 && isReady; }});
    pressUpload();
    ASSERT_TRUE(waitForAttempt());

    EXPECT_TRUE(ui::isOnScreen(sheet().errorView()));
    EXPECT_EQ(errorInWindow(), QStringLiteral("The document could not be copied: The program could not write it."));
    EXPECT_EQ(adviceInWindow(), QStringLiteral("Nothing was sent. Press Upload to try again."));
    EXPECT_EQ(server.requests("/rest/api/2/issue/ABC-1/attachments").size(), 0U);
    EXPECT_THAT(foldersNamed(QStringLiteral("Upload-")), IsEmpty());

    closeSheet();
    isReady = true;
    pressUpload();
    ASSERT_TRUE(waitForAttempt());
    EXPECT_THAT(attached(), ElementsAre(bytes.toStdString()));
}

TEST_F(AttachTest, aWriterThatThrowsSendsNothingAndTheWindowSaysWhy)
{
    open({name, [](QIODevice&) -> bool { throw std::runtime_error("the loom is jammed"); }});
    pressUpload();
    ASSERT_TRUE(waitForAttempt());

    EXPECT_EQ(errorInWindow(), QStringLiteral("The document could not be copied: the loom is jammed"));
    EXPECT_EQ(server.requests("/rest/api/2/issue/ABC-1/attachments").size(), 0U);
    closeSheet();
    closeByTitleBar(*upload);
    ASSERT_TRUE(waitForEnd());
    EXPECT_EQ(ends[0].outcome, Outcome::Failed);
    ASSERT_TRUE(ends[0].error.has_value());
    EXPECT_THAT(ends[0].error->localizedDescription().toStdString(), HasSubstr("the loom is jammed"));
    EXPECT_EQ(ends[0].issueKey, QStringLiteral("ABC-1"));
}

TEST_F(AttachTest, aWriterThatThrowsNoExceptionOfTheLibraryIsOneThatFails)
{
    open({name, [](QIODevice&) -> bool { throw 7; }});
    pressUpload();
    ASSERT_TRUE(waitForAttempt());

    EXPECT_EQ(errorInWindow(), QStringLiteral("The document could not be copied: The program could not write it."));
}

TEST_F(AttachTest, aCopyThatCannotBeMadeSendsNothing)
{
    open();
    const QString noFolder = QDir::homePath() + QStringLiteral("/file");
    writeFile(noFolder, "not a folder");
    qputenv("TMPDIR", QFile::encodeName(noFolder));
    pressUpload();
    ASSERT_TRUE(waitForAttempt());

    EXPECT_THAT(errorInWindow().toStdString(), testing::StartsWith("The document could not be copied: "));
    EXPECT_EQ(server.requests("/rest/api/2/issue/ABC-1/attachments").size(), 0U);
}

TEST_F(AttachTest, aNameThatWouldBreakTheFormSendsNothing)
{
    for (const QString& broken :
         {QStringLiteral("plan\r\nX-Header: b"), QStringLiteral("plan\n"), QStringLiteral(" ")}) {
        open({broken, bytes});
        pressUpload();
        ASSERT_TRUE(waitForAttempt());
        EXPECT_EQ(errorInWindow(), QStringLiteral("“%1” cannot be an attachment’s name.").arg(broken));
        EXPECT_EQ(adviceInWindow(), QStringLiteral("Give the document another name, then attach it again."));
        closeByTitleBar(*upload);
    }
    ASSERT_TRUE(waitForEnd(3));
    EXPECT_EQ(ends[0].outcome, Outcome::Failed);
    EXPECT_EQ(ends[0].issueKey, QStringLiteral("ABC-1"));
    EXPECT_EQ(server.requests("/rest/api/2/issue/ABC-1/attachments").size(), 0U);
}

TEST_F(AttachTest, anEmptyDocumentIsSentAsOne)
{
    open({name, QByteArray()});
    pressUpload();
    ASSERT_TRUE(waitForAttempt());

    EXPECT_THAT(attached(), ElementsAre(""));
}

TEST_F(AttachTest, withoutAKeyNothingIsSent)
{
    open();
    ui::click(panel().uploadFileButton());

    EXPECT_FALSE(panel().isUploading());
    closeByTitleBar(*upload);
    ASSERT_TRUE(waitForEnd());
    EXPECT_EQ(ends[0].outcome, Outcome::Cancelled);
    EXPECT_EQ(ends[0].issueKey, QString());
}

TEST_F(AttachTest, comesToTheFrontWhileItIsUploading)
{
    openAndHold();
    const auto first = upload;
    first->window()->widget()->showMinimized();

    EXPECT_FALSE(attach({name, "silk"}));
    EXPECT_EQ(client->delegate(), first);
    EXPECT_TRUE(first->window()->isVisible());
    EXPECT_FALSE(first->window()->widget()->isMinimized());
    closeByTitleBar(*first);
    ASSERT_TRUE(waitForEnd());
}

TEST_F(AttachTest, makesRoomForAnotherDocumentWhileItDoesNothing)
{
    open();
    const auto first = upload;
    open({name, "silk"});

    EXPECT_NE(upload, first);
    EXPECT_FALSE(first->window()->isVisible());
    ASSERT_TRUE(waitForEnd());
    EXPECT_EQ(ends[0].outcome, Outcome::Cancelled);
    pressUpload();
    ASSERT_TRUE(waitForAttempt());
    EXPECT_THAT(attached(), ElementsAre("silk"));
}

TEST_F(AttachTest, whatTheUserCancelledBeforeTheCopyWasMadeIsNotSent)
{
    open({name, [this](QIODevice& device) {
              // The user is faster than the program.
              drainMainQueue();
              ui::click(sheet().cancelButton());
              return device.write(bytes) == bytes.size();
          }});
    pressUpload();
    ASSERT_TRUE(waitForAttempt());
    closeByTitleBar(*upload);
    ASSERT_TRUE(waitForEnd());

    EXPECT_EQ(server.requests("/rest/api/2/issue/ABC-1/attachments").size(), 0U);
    EXPECT_EQ(ends[0].outcome, Outcome::Cancelled);
    EXPECT_EQ(ends[0].error, std::nullopt);
}

} // namespace
