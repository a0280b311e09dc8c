#include "tests/framework/plugin/RoundTrip.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>

// A host without the framework, and what it finds where the plug-in should be.

namespace {

using testing::HasSubstr;
using testing::Not;
using tests::runPluginHost;
using tests::writeFile;

const QString pluginFile = QStringLiteral("/libTLJiraControllerPlugin.so");

TEST(PluginTest, isLoadedByAHostThatLinksNothingOfIt)
{
    const auto needed =
        tests::runProgram(QStringLiteral("readelf"), {QStringLiteral("-d"), QStringLiteral(PLUGIN_HOST)});
    ASSERT_EQ(needed.status, 0);
    EXPECT_THAT(needed.output, HasSubstr("libQt6Widgets"));
    EXPECT_THAT(needed.output, Not(HasSubstr("TLJiraController")));
    EXPECT_THAT(needed.output, Not(HasSubstr("libcurl")));
}

TEST(PluginTest, bringsADocumentToTheServerAndBack)
{
    tests::expectRoundTrip(QStringLiteral(PLUGIN_FOLDER));
}

TEST(PluginTest, whereItIsMissingTheHostSaysWhereItWasLookedForAndGoesOn)
{
    const QTemporaryDir folder;
    const QTemporaryDir other;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_PLUGIN_PATH"), other.path());
    const auto host = runPluginHost({folder.path()}, environment);
    EXPECT_EQ(host.status, 0);
    EXPECT_THAT(host.output, testing::StartsWith("The Jira plug-in is not installed: TLJiraControllerPlugin was "
                                                 "looked for in " +
                                                 folder.path().toStdString() + ", " + other.path().toStdString() +
                                                 "/tljiracontroller, "));
}

TEST(PluginTest, whereItIsBrokenTheHostSaysSoAndGoesOn)
{
    const QTemporaryDir folder;
    writeFile(folder.path() + pluginFile, "no library");
    const auto host = runPluginHost({folder.path()});
    EXPECT_EQ(host.status, 0);
    EXPECT_THAT(host.output, testing::StartsWith("The Jira plug-in " + (folder.path() + pluginFile).toStdString() +
                                                 " cannot be loaded: "));
}

TEST(PluginTest, whereAnotherPluginLiesTheHostSaysSoAndGoesOn)
{
    const QTemporaryDir folder;
    ASSERT_TRUE(QFile::copy(QStringLiteral(OTHER_PLUGIN), folder.path() + pluginFile));
    const auto host = runPluginHost({folder.path()});
    EXPECT_EQ(host.status, 0);
    EXPECT_EQ(host.output, (folder.path() + pluginFile).toStdString() +
                               " is no Jira plug-in for this program: it is org.example.Other/2.0, needed is "
                               "org.tljiracontroller.TLJiraControllerInterface/1.0.\n");
}

TEST(PluginTest, whereItIsTooOldTheHostSaysSoAndGoesOn)
{
    const QTemporaryDir folder;
    ASSERT_TRUE(QFile::copy(QStringLiteral(OLD_PLUGIN), folder.path() + pluginFile));
    const auto host = runPluginHost({folder.path()});
    EXPECT_EQ(host.status, 0);
    EXPECT_EQ(host.output, "The Jira plug-in " + (folder.path() + pluginFile).toStdString() +
                               " is too old for this program: version 0, needed is 1.\n");
}

} // namespace
