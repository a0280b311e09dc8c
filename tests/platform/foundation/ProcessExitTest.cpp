#include "tests/kit/Printers.h"

#include <QProcess>
#include <gtest/gtest.h>

namespace {

QString outputOf(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.start(program, arguments);
    EXPECT_TRUE(process.waitForFinished(60000));
    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(process.exitCode(), 0);
    return QString::fromUtf8(process.readAllStandardOutput());
}

QString orderOf(const QString& scene)
{
    return outputOf(QStringLiteral(PROCESS_END), {scene});
}

TEST(ProcessExit, comesBeforeAnyVariableIsDestroyedWhenTheApplicationHasEnded)
{
    EXPECT_EQ(orderOf(QStringLiteral("return")),
              QStringLiteral("given last\ngiven first\nlater variable\nearlier variable\n"));
}

TEST(ProcessExit, comesBeforeEarlierVariablesAreDestroyedWhenTheApplicationLives)
{
    const QString order = QStringLiteral("later variable\ngiven last\ngiven first\nearlier variable\n");
    EXPECT_EQ(orderOf(QStringLiteral("exit")), order);
    EXPECT_EQ(orderOf(QStringLiteral("without application")), order);
}

TEST(ProcessExit, letsNothingBeginAfterItInAnApplicationThatEndsLater)
{
    EXPECT_EQ(orderOf(QStringLiteral("late application")), QStringLiteral("nothing began\n"));
}

TEST(ProcessExit, isNoneOfAChildProcessThatAForkHasMade)
{
    // In the child, what only its parent's threads know of looks lost.
    qputenv("LSAN_OPTIONS", qgetenv("LSAN_OPTIONS") + ":detect_leaks=0");
    qputenv("ASAN_OPTIONS", qgetenv("ASAN_OPTIONS") + ":detect_leaks=0");
    EXPECT_EQ(orderOf(QStringLiteral("fork")), QStringLiteral("child 7\nparent\n"));
}

TEST(ProcessExit, dropsWhatOperationsAskOfTheMainThreadWhenARunningApplicationHasLoadedThem)
{
    EXPECT_EQ(outputOf(QStringLiteral(LATE_LOADING), {}), QStringLiteral("released\n"));
}

} // namespace
