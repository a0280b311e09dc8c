#include "tests/framework/jobs/JobsTest.h"
#include "tests/kit/SmallDisk.h"

#include <QDir>
#include <QProcess>

namespace {

using namespace tests;
using standin::Fault;
using standin::Match;
using testing::IsEmpty;
using testing::SizeIs;

/// What becomes of a job, and of its files, when its process ends.
class JobsProcessTest : public JobsTest
{
protected:
    QStringList arguments(const QString& job) const { return {QString::number(server.port()), job}; }

    /// What it says, once it has ended.
    std::string outputOf(const QString& job) const
    {
        QProcess process;
        process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        process.start(QStringLiteral(JOBS_HOST), arguments(job));
        EXPECT_TRUE(waitUntil([&] { return process.state() == QProcess::NotRunning; }));
        return process.readAllStandardOutput().toStdString();
    }

    static QStringList copies() { return foldersNamed(QStringLiteral("Upload-")); }
};

TEST_F(JobsProcessTest, endsOnceAndLeavesNothingWhenItQuitsInMidTransfer)
{
    server.misbehave(Match::on("POST", "*/attachments"), Fault().hold(standin::Point::requestBody(1 << 19)));

    EXPECT_EQ(outputOf(QStringLiteral("quit")), "cancelled \n");
    EXPECT_THAT(copies(), IsEmpty());
}

TEST_F(JobsProcessTest, endsOnceAndLeavesNothingWhenTheApplicationGoesWithoutQuitting)
{
    server.misbehave(Match::on("POST", "*/attachments"), Fault().hold(standin::Point::requestBody(1 << 19)));

    EXPECT_EQ(outputOf(QStringLiteral("leave")), "cancelled \n");
    EXPECT_THAT(copies(), IsEmpty());
}

TEST_F(JobsProcessTest, whatAKilledOneLeftGoesWithTheNextStart)
{
    EXPECT_EQ(outputOf(QStringLiteral("crash")), "");
    ASSERT_THAT(copies(), SizeIs(1));

    open();
    ASSERT_TRUE(waitUntil([] { return copies().isEmpty(); }));
}

TEST_F(JobsProcessTest, aCopyThatAnotherProcessIsWritingStays)
{
#if defined(__SANITIZE_THREAD__)
    GTEST_SKIP()
        << "Qt lends the memory of a thread to the process that it starts, and this sanitizer then loses sight "
           "of what that thread locks";
#endif
    // It is written by this one.
    open({QStringLiteral("plan.tessaloom"), [this](QIODevice& device) {
              QProcess other;
              other.start(QStringLiteral(JOBS_HOST), arguments(QStringLiteral("attach")));
              EXPECT_TRUE(waitUntil([&] { return other.state() == QProcess::NotRunning; }));
              EXPECT_EQ(other.readAllStandardOutput(), QByteArray("done \n"));
              EXPECT_THAT(copies(), SizeIs(1));
              return device.write("wool") == 4;
          }});
    pressUpload();
    ASSERT_TRUE(waitForAttempt());

    EXPECT_THAT(attached(), testing::ElementsAre(std::string(1 << 20, 'w'), "wool"));
}

TEST_F(JobsProcessTest, aFullDiskSendsNothing)
{
    const SmallDisk disk(QDir::tempPath(), 256);
    if (!disk.isThere())
        GTEST_SKIP() << "this system lets nobody mount a small disk";
    QProcess process;
    process.start(QStringLiteral(JOBS_HOST), arguments(QStringLiteral("attach")));
    ASSERT_TRUE(waitUntil([&] { return process.state() == QProcess::NotRunning; }));

    EXPECT_EQ(process.readAllStandardOutput(),
              QByteArray("failed The document could not be copied: No space left on device\n"));
    EXPECT_EQ(server.requests("/rest/api/2/issue/ABC-1/attachments").size(), 0U);
}

} // namespace
