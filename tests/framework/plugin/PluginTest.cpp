#include "tests/framework/plugin/RoundTrip.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <sys/stat.h>

// A host without the framework, and what it finds where the plug-in should be.

namespace {

using testing::HasSubstr;
using testing::Not;
using tests::PluginHost;
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
    PluginHost().expectRoundTrip(QStringLiteral(PLUGIN_FOLDER));
}

TEST(PluginTest, doesSoInAHostThatHasTheNamesOfItsConstantsForItself)
{
    PluginHost crowded;
    crowded.program = QStringLiteral(OWN_NAMES_HOST);
    crowded.expectRoundTrip(QStringLiteral(PLUGIN_FOLDER));
    const auto names = tests::runProgram(QStringLiteral("nm"),
                                         {QStringLiteral("-D"), QStringLiteral("--defined-only"), crowded.program});
    EXPECT_THAT(names.output, HasSubstr(" kKey\n"));
}

TEST(PluginTest, writesNoLogOnceItIsToldSoWhateverTheUsersRulesAre)
{
    PluginHost host;
    host.environment.insert(QStringLiteral("QT_LOGGING_RULES"), QStringLiteral("*.info=true"));
    host.environment.insert(QStringLiteral("QT_MESSAGE_PATTERN"), QStringLiteral("%{category}: %{message}"));
    const std::string loud = host.expectRoundTrip(QStringLiteral(PLUGIN_FOLDER)).error;
    EXPECT_THAT(loud, HasSubstr("platform.log: "));
    EXPECT_THAT(loud, HasSubstr("secret"));

    host.isLogEnabled = false;
    const std::string quiet = host.expectRoundTrip(QStringLiteral(PLUGIN_FOLDER)).error;
    EXPECT_THAT(quiet, Not(HasSubstr("platform.log: ")));
    EXPECT_THAT(quiet, Not(HasSubstr("secret")));
}

class PluginInAnotherApplication : public testing::TestWithParam<const char*>
{
};

TEST_P(PluginInAnotherApplication, isRefusedInWords)
{
    const auto host =
        tests::runProgram(QStringLiteral(APPLICATION_HOST), {QLatin1String(GetParam()), QStringLiteral(PLUGIN_FOLDER)});
    EXPECT_EQ(host.output, "The Jira plug-in opens windows: it needs a program with a QApplication.\n");
    EXPECT_EQ(host.status, 0) << host.error;
}

INSTANTIATE_TEST_SUITE_P(Kinds, PluginInAnotherApplication, testing::Values("none", "core", "gui"));

TEST(PluginTest, isLoadedInAnApplicationWithWidgets)
{
    const auto host =
        tests::runProgram(QStringLiteral(APPLICATION_HOST), {QStringLiteral("widgets"), QStringLiteral(PLUGIN_FOLDER)});
    EXPECT_EQ(host.output, "loaded\n");
    EXPECT_EQ(host.status, 0) << host.error;
}

TEST(PluginTest, holdsUpNobodyWhoseFileIsReadSlowly)
{
    const QTemporaryDir folder;
    const QString pipe = folder.filePath(QStringLiteral("pipe"));
    ASSERT_EQ(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
    const auto host = tests::runProgram(QStringLiteral(SLOW_FILE_HOST), {QStringLiteral(PLUGIN_FOLDER), pipe});
    // Nobody is signed in.
    EXPECT_EQ(host.output, "goes on\nfailed\n");
    EXPECT_EQ(host.status, 0) << host.error;
}

TEST(PluginTest, mayBeUnloadedWithAJobUnderWay)
{
    const QTemporaryDir folder;
    const QString plugin = QStringLiteral(PLUGIN_FOLDER) + pluginFile;
    const QString copy = folder.path() + pluginFile;
    ASSERT_TRUE(QFile::copy(plugin, copy));
    const auto host = tests::runProgram(QStringLiteral(UNLOADING_HOST), {plugin, copy});
    // Nobody is signed in.
    EXPECT_EQ(host.output, "unloaded\nfailed\n");
    EXPECT_EQ(host.status, 0) << host.error;
}

TEST(PluginTest, whereItIsMissingTheHostSaysWhereItWasLookedForAndGoesOn)
{
    const QTemporaryDir folder;
    const QTemporaryDir other;
    PluginHost lost;
    lost.environment.insert(QStringLiteral("QT_PLUGIN_PATH"), other.path());
    const auto host = lost.run({folder.path()});
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
    const auto host = PluginHost().run({folder.path()});
    EXPECT_EQ(host.status, 0);
    EXPECT_THAT(host.output, testing::StartsWith("The Jira plug-in " + (folder.path() + pluginFile).toStdString() +
                                                 " cannot be loaded: "));
}

TEST(PluginTest, whereAnotherPluginLiesTheHostSaysSoAndGoesOn)
{
    const QTemporaryDir folder;
    ASSERT_TRUE(QFile::copy(QStringLiteral(OTHER_PLUGIN), folder.path() + pluginFile));
    const auto host = PluginHost().run({folder.path()});
    EXPECT_EQ(host.status, 0);
    EXPECT_EQ(host.output, (folder.path() + pluginFile).toStdString() +
                               " is no Jira plug-in for this program: it is org.example.Other/2.0, needed is "
                               "org.tljiracontroller.TLJiraControllerInterface/1.0.\n");
}

TEST(PluginTest, whereItIsTooOldTheHostSaysSoAndGoesOn)
{
    const QTemporaryDir folder;
    ASSERT_TRUE(QFile::copy(QStringLiteral(OLD_PLUGIN), folder.path() + pluginFile));
    const auto host = PluginHost().run({folder.path()});
    EXPECT_EQ(host.status, 0);
    EXPECT_EQ(host.output, "The Jira plug-in " + (folder.path() + pluginFile).toStdString() +
                               " is too old for this program: version 1, needed is 2.\n");
}

} // namespace
