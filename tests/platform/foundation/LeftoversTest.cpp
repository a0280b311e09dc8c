#include "platform/foundation/files/Leftovers.h"

#include "platform/foundation/os/FileLock.h"
#include "tests/kit/LogCapture.h"
#include "tests/kit/OldFiles.h"
#include "tests/kit/Printers.h"

#include <QDir>
#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <unistd.h>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using namespace std::chrono_literals;

class LeftoversTest : public testing::Test
{
protected:
    QString path(const char* name) const { return m_folder.filePath(QLatin1String(name)); }

    void makeFile(const char* name, std::chrono::minutes age) const
    {
        QFile file(path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.close();
        tests::makeOlder(path(name), age);
    }

    QStringList remaining() const
    {
        tljira::removeLeftovers(m_folder.path(), [](const QString& name) { return name.startsWith(u"left"); });
        return QDir(m_folder.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    }

    const tests::LogCapture log;
    QTemporaryDir m_folder;
};

TEST_F(LeftoversTest, goAfterADayWhenTheyAreOurs)
{
    makeFile("left-old", 24h + 1min);
    makeFile("left-new", 23h);
    makeFile("other-old", 100h);
    EXPECT_THAT(remaining(), ElementsAre(QStringLiteral("left-new"), QStringLiteral("other-old")));
}

TEST_F(LeftoversTest, goAtOnceWhereOnlyTheLockCounts)
{
    makeFile("left-new", 0h);
    makeFile("left-locked", 0h);
    tljira::os::FileLock owner;
    ASSERT_FALSE(owner.lockExisting(path("left-locked").toStdString()));
    tljira::removeLeftovers(
        m_folder.path(), [](const QString& name) { return name.startsWith(u"left"); }, 0h);
    EXPECT_EQ(QDir(m_folder.path()).entryList(QDir::Files), QStringList(QStringLiteral("left-locked")));
}

TEST_F(LeftoversTest, stayWhileTheirOwnerLives)
{
    makeFile("left", 100h);
    tljira::os::FileLock owner;
    ASSERT_FALSE(owner.lockExisting(path("left").toStdString()));
    EXPECT_THAT(remaining(), ElementsAre(QStringLiteral("left")));
    owner.unlock();
    EXPECT_THAT(remaining(), IsEmpty());
}

TEST_F(LeftoversTest, ofFoldersGoWithAllInThemUnlessSomethingIsNew)
{
    ASSERT_TRUE(QDir().mkpath(path("left/sub")));
    makeFile("left/sub/file", 1min);
    tests::makeOlder(path("left"), 25h);
    makeFile("left/sub/file", 1min);
    tests::makeOlder(path("left/sub"), 25h);
    makeFile("left/sub/file", 1h);
    EXPECT_THAT(remaining(), ElementsAre(QStringLiteral("left")));
    tests::makeOlder(path("left"), 25h);
    EXPECT_THAT(remaining(), IsEmpty());
}

TEST_F(LeftoversTest, ofFoldersStayWhileTheirOwnerLives)
{
    ASSERT_TRUE(QDir().mkpath(path("left/sub")));
    tests::makeOlder(path("left"), 25h);
    tljira::os::FileLock owner;
    ASSERT_FALSE(owner.lockExisting(path("left").toStdString()));
    EXPECT_THAT(remaining(), ElementsAre(QStringLiteral("left")));
}

TEST_F(LeftoversTest, areNeverLinksNorWhatTheyLeadTo)
{
    makeFile("other", 100h);
    ASSERT_TRUE(QFile::link(path("other"), path("left-link")));
    EXPECT_THAT(remaining(), ElementsAre(QStringLiteral("left-link"), QStringLiteral("other")));
}

TEST_F(LeftoversTest, ofOthersStay)
{
    if (geteuid() != 0)
        GTEST_SKIP() << "only root can give a file away";
    makeFile("left", 100h);
    ASSERT_EQ(chown(QFile::encodeName(path("left")).constData(), 12345, 12345), 0);
    EXPECT_THAT(remaining(), ElementsAre(QStringLiteral("left")));
}

TEST_F(LeftoversTest, ofAFolderThatIsNotThereAreNone)
{
    tljira::removeLeftovers(path("missing"), [](const QString&) { return true; });
    EXPECT_THAT(remaining(), IsEmpty());
}

} // namespace
