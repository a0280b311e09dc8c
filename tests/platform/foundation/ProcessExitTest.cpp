#include "tests/kit/Printers.h"

#include <QProcess>
#include <gtest/gtest.h>

namespace {

QString orderOf(const QString& scene)
{
    QProcess process;
    process.start(QStringLiteral(PROCESS_EXIT_ORDER), {scene});
    EXPECT_TRUE(process.waitForFinished(60000));
    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(process.exitCode(), 0);
    return QString::fromUtf8(process.readAllStandardOutput());
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

} // namespace
