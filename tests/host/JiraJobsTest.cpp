#include "host/JiraJobs.h"
#include "framework/TLJiraController.h"
#include "tests/kit/LogCapture.h"
#include "tests/kit/Printers.h"
#include "tests/kit/WaitUntil.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <gmock/gmock.h>

using tessaloom::JiraJobs;

namespace {

std::shared_ptr<TLJiraUpload> newestUpload()
{
    return std::dynamic_pointer_cast<TLJiraUpload>(JAController::sharedInstance()->delegate());
}

QString copyOf(const TLJiraUpload& upload)
{
    return upload.path().value_or(QString());
}

QByteArray bytesOf(const QString& path)
{
    QFile file(path);
    return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray("(no file)");
}

TEST(JiraJobs, handsOverACopyAloneInAFolder)
{
    JiraJobs jira;

    EXPECT_EQ(jira.upload(QStringLiteral("plan.tessaloom"), "wool"), std::nullopt);

    const auto upload = newestUpload();
    EXPECT_EQ(upload->name(), QStringLiteral("plan.tessaloom"));
    EXPECT_EQ(bytesOf(copyOf(*upload)), QByteArray("wool"));
    EXPECT_EQ(QFileInfo(copyOf(*upload)).dir().entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
              QStringList(QStringLiteral("plan.tessaloom")));
    EXPECT_TRUE(upload->window()->isVisible());
}

TEST(JiraJobs, uploadsWhatTheDocumentIsNowWhenAskedAgain)
{
    JiraJobs jira;
    jira.upload(QStringLiteral("plan.tessaloom"), "wool");
    const auto first = newestUpload();
    jira.upload(QStringLiteral("plan.tessaloom"), "silk");
    const auto second = newestUpload();

    EXPECT_NE(first, second);
    EXPECT_FALSE(first->window()->isVisible());
    EXPECT_EQ(bytesOf(copyOf(*second)), QByteArray("silk"));
}

TEST(JiraJobs, keepsTheWindowThatIsStillSending)
{
    JiraJobs jira;
    jira.upload(QStringLiteral("plan.tessaloom"), "wool");
    const auto first = newestUpload();
    first->bodyViewController()->taskTextField()->setText(QStringLiteral("LOOM-1"));
    first->bodyViewController()->uploadFileAction();

    jira.upload(QStringLiteral("plan.tessaloom"), "silk");

    EXPECT_EQ(newestUpload(), first);
    EXPECT_TRUE(first->window()->isVisible());
}

TEST(JiraJobs, opensAnotherWindowWhenTheUploadHasEndedAndStillSaysSo)
{
    JiraJobs jira;
    jira.upload(QStringLiteral("plan.tessaloom"), "wool");
    const auto first = newestUpload();
    first->bodyViewController()->taskTextField()->setText(QStringLiteral("LOOM-1"));
    first->bodyViewController()->uploadFileAction();
    first->window()->beginSheet(first->bodyViewController()->jaUploadingWindow()->window(), {});
    ASSERT_TRUE(tests::waitUntil([&] { return !first->bodyViewController()->isUploading(); }));

    jira.upload(QStringLiteral("plan.tessaloom"), "silk");

    EXPECT_NE(newestUpload(), first);
    EXPECT_FALSE(first->window()->isVisible());
}

TEST(JiraJobs, leavesNoCopyBehind)
{
    QString copy;
    {
        JiraJobs jira;
        jira.upload(QStringLiteral("plan.tessaloom"), "wool");
        copy = copyOf(*newestUpload());
    }

    EXPECT_FALSE(QFileInfo::exists(QFileInfo(copy).path()));
}

TEST(JiraJobs, removesTheCopyThatWasNotSentWhenItMakesAnother)
{
    JiraJobs jira;
    jira.upload(QStringLiteral("plan.tessaloom"), "wool");
    const QString first = copyOf(*newestUpload());
    newestUpload()->jaLoginWindow()->cancelButton()->click();
    ASSERT_TRUE(QFileInfo::exists(first));

    jira.upload(QStringLiteral("plan.tessaloom"), "silk");

    EXPECT_FALSE(QFileInfo::exists(QFileInfo(first).path()));
    EXPECT_EQ(bytesOf(copyOf(*newestUpload())), QByteArray("silk"));
}

TEST(JiraJobs, saysWhyThereIsNoCopyAndOpensNoWindow)
{
    JiraJobs jira;

    EXPECT_EQ(jira.upload(QString(300, QLatin1Char('a')), "wool"), QStringLiteral("File name too long"));
    EXPECT_EQ(newestUpload(), nullptr);
}

TEST(JiraJobs, closesTheWindowAtItsCancelButtons)
{
    JiraJobs jira;
    jira.upload(QStringLiteral("plan.tessaloom"), "wool");
    const auto upload = newestUpload();

    upload->jaLoginWindow()->cancelButton()->click();
    EXPECT_FALSE(upload->window()->isVisible());

    upload->showWindow();
    upload->bodyViewController()->cancelButton()->click();
    EXPECT_FALSE(upload->window()->isVisible());
}

TEST(JiraJobs, answersNothingWhenTheDownloadWindowIsClosed)
{
    JiraJobs jira;
    QMetaObject::invokeMethod(
        qApp, [] { tljira::Application::modalWindow()->close(); }, Qt::QueuedConnection);

    EXPECT_EQ(jira.download(QDir::temp()), std::nullopt);
}

TEST(JiraJobs, answersNothingWhenTheDownloadWindowIsCancelled)
{
    JiraJobs jira;
    QMetaObject::invokeMethod(
        qApp,
        [] {
            const auto entry =
                std::dynamic_pointer_cast<JMWindowController>(JAController::sharedInstance()->delegate());
            entry->jaLoginWindow()->cancelButton()->click();
        },
        Qt::QueuedConnection);

    EXPECT_EQ(jira.download(QDir::temp()), std::nullopt);
}

TEST(JiraJobs, tellsTheOlderWindowOfTheDocumentAndItsPages)
{
    tests::LogCapture log;
    JiraJobs jira;

    jira.showClassic(QStringLiteral("/home/anna/plan.tessaloom"), {QStringLiteral("warp"), QStringLiteral("weft")});

    EXPECT_EQ(JAController::sharedInstance()->pathFile(), QStringLiteral("/home/anna/plan.tessaloom"));
    EXPECT_THAT(log.lines(), testing::IsSupersetOf({QStringLiteral("self.tmpFile: QObject"), QStringLiteral("warp"),
                                                    QStringLiteral("weft")}));
}

} // namespace
