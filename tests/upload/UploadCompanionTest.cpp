#include "upload/UploadCompanion.h"

#include "platform/toolkit/views/View.h"
#include "tests/kit/GermanUser.h"
#include "tests/upload/UploadTest.h"

#include <QFileInfo>

namespace {

using namespace tests;
using namespace testing;

/// Provides what it is told to, and keeps what it hears.
class Companion : public UploadCompanion
{
public:
    std::optional<qint64> documentSize() const override { return size; }
    Provider uploadBegins(const QString& key) override
    {
        begun.append(key);
        return [file = file] { return file; };
    }
    void uploadEnded(const Ending& ending) override { ended.push_back(ending); }

    qint64 size = 3 << 20;
    File file;
    QStringList begun;
    std::vector<Ending> ended;
};

/// The panel as a window of jobs has it: with a companion, which provides a copy.
class UploadCompanionTest : public UploadTest
{
protected:
    UploadCompanionTest()
    {
        companion->file.path = copy.path();
        UploadCompanion::join(*panel, companion);
        panel->setNewPathFile(std::nullopt, LoneDocument::name());
    }

    template <class View>
    View* part(const char* name) const
    {
        return tljira::findView<View>(panel->view(), name);
    }
    QString advice() const { return tljira::findView<QLabel>(sheet()->errorView(), "advice")->text(); }
    bool hasEnded() const { return !companion->ended.empty(); }

    const LoneDocument copy;
    const std::shared_ptr<Companion> companion = std::make_shared<Companion>();
};

TEST_F(UploadCompanionTest, knowsTheSizeOfTheDocument)
{
    EXPECT_EQ(part<QLabel>("documentSize")->text(), QStringLiteral("3.0 MB"));
    EXPECT_TRUE(ui::isOnScreen(part<QLabel>("documentSize")));
}

TEST_F(UploadCompanionTest, knowsTheSizeOfTheNextDocumentToo)
{
    upload();
    ASSERT_EQ(outcome(), QStringLiteral("DONE"));
    ui::click(sheet()->cancelButton());
    ASSERT_TRUE(ui::isOnScreen(part<QWidget>("attachedLine")));
    companion->size = 5 << 20;
    panel->setNewPathFile(std::nullopt, LoneDocument::name());

    EXPECT_EQ(part<QLabel>("documentSize")->text(), QStringLiteral("5.0 MB"));
    EXPECT_TRUE(ui::isOnScreen(part<QLabel>("documentSize")));
}

TEST_F(UploadCompanionTest, providesTheFileAndHearsOfTheSuccess)
{
    upload();

    EXPECT_EQ(outcome(), QStringLiteral("DONE"));
    ASSERT_TRUE(waitUntil([this] { return hasEnded(); }));
    EXPECT_EQ(companion->begun, QStringList(QStringLiteral("ABC-1")));
    EXPECT_EQ(companion->ended.at(0).key, QStringLiteral("ABC-1"));
    EXPECT_EQ(companion->ended.at(0).path, copy.path());
    EXPECT_EQ(companion->ended.at(0).error, std::nullopt);
    EXPECT_EQ(server.attachments("ABC-1").size(), 1U);
    EXPECT_TRUE(QFileInfo::exists(copy.path()));
}

TEST_F(UploadCompanionTest, hearsTheFirstOfTwoErrorsOnce)
{
    server.misbehave(standin::Match::on("POST", "*/attachments"),
                     standin::Fault().status(502, "<html>Bad gateway</html>", "text/html"));
    upload();

    ASSERT_TRUE(waitUntil([this] { return isDone() && hasEnded(); }));
    drainMainQueue();
    ASSERT_EQ(companion->ended.size(), 1U);
    ASSERT_TRUE(companion->ended.at(0).error.has_value());
    EXPECT_EQ(companion->ended.at(0).error->code, 502);
}

TEST_F(UploadCompanionTest, saysWhyThereIsNoFileAndNothingIsSent)
{
    const QString why = QStringLiteral("No such name.");
    companion->file = {std::nullopt, tljira::makeFileError(tljira::FileError::WriteInvalidFileName, why), nullptr};
    upload();

    EXPECT_EQ(outcome(), why);
    EXPECT_EQ(advice(), QStringLiteral("Give the document another name, then attach it again."));
    ASSERT_TRUE(waitUntil([this] { return hasEnded(); }));
    EXPECT_EQ(companion->ended.at(0).error->localizedDescription(), why);
    EXPECT_EQ(companion->ended.at(0).path, std::nullopt);
    EXPECT_TRUE(server.requests("*/attachments").empty());
}

TEST_F(UploadCompanionTest, keepsTheDocumentForAnotherTry)
{
    upload(QStringLiteral("NO-1"));

    ASSERT_TRUE(waitUntil([this] { return hasFailed(); }));
    EXPECT_EQ(advice(), QStringLiteral("Check the issue key, then press Upload again."));
    ui::click(sheet()->cancelButton());
    EXPECT_TRUE(ui::isOnScreen(panel->pathLabel()));
    EXPECT_EQ(part<QLabel>("documentSize")->text(), QStringLiteral("3.0 MB"));
    upload();
    EXPECT_EQ(outcome(), QStringLiteral("DONE"));
}

class GermanCompanionTest : GermanUser, public UploadCompanionTest
{
};

TEST_F(GermanCompanionTest, isToldInTheUsersLanguageHowToTryAgain)
{
    upload(QStringLiteral("NO-1"));

    ASSERT_TRUE(waitUntil([this] { return hasFailed(); }));
    EXPECT_EQ(advice(),
              QStringLiteral("Prüfen Sie den Vorgangsschlüssel und drücken Sie dann noch einmal auf Hochladen."));
}

} // namespace
