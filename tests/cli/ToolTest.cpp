#include "tests/cli/CommandTest.h"

#include <QDir>
#include <QFile>

#include <array>
#include <unistd.h>

namespace {

using namespace Qt::StringLiterals;
using testing::HasSubstr;
using tests::words;

class Tool : public tests::CommandTest
{
};

TEST_F(Tool, printsHelpAndVersion)
{
    const Result help = run(words("--help"));
    EXPECT_EQ(help.status, 0);
    EXPECT_TRUE(help.output.startsWith("Usage: tljira [OPTION]... COMMAND\n"));
    EXPECT_EQ(help.error, "");
    EXPECT_EQ(run(words("--version")), Result({0, "tljira 1.0.0\n", {}}));
}

TEST_F(Tool, answersWrongUsageWithTwoAndOneLine)
{
    EXPECT_EQ(run({}), Result({2, {}, "No command is given. See tljira --help.\n"}));
    EXPECT_EQ(run(words("steal")), Result({2, {}, "“steal” is no command. See tljira --help.\n"}));
    EXPECT_EQ(run(words("upload ABC-1")), Result({2, {}, "upload needs FILE. See tljira --help.\n"}));
    EXPECT_EQ(run(words("whoami --frob")), Result({2, {}, "Unknown option 'frob'. See tljira --help.\n"}));
    EXPECT_EQ(run(words("--connect-to x whoami")),
              Result({2, {}, "“x” is not of the form HOST:PORT:ADDR:PORT. See tljira --help.\n"}));
}

TEST_F(Tool, takesItsRouteBehindTheCommandToo)
{
    logIn();
    const QString route = u"jira.example.test:80:127.0.0.1:%1"_s.arg(server.port());
    tests::ToolRun tool({u"whoami"_s, u"--connect-to"_s, route}, environment, path({}));
    EXPECT_EQ(tool.status(), 0);
}

TEST_F(Tool, isSilentUnlessVerbose)
{
    logIn();
    writeFile(u"plan"_s, "bytes");
    EXPECT_EQ(run(words("upload ABC-1 plan")), Result({0, {}, {}}));
    const Result verbose = run(words("upload ABC-1 plan --verbose"));
    EXPECT_EQ(verbose.status, 0);
    EXPECT_EQ(verbose.output, "");
    EXPECT_TRUE(verbose.error.startsWith("uploadFileInIssue path file: plan\n")) << verbose.error.toStdString();
}

TEST_F(Tool, showsWithTheLogWhatTheServerSaysOfAFailure)
{
    logIn();
    const Result result = run(words("attachments NO-1 --verbose"));
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.error.toStdString(), HasSubstr("Issue Does Not Exist"));
}

TEST_F(Tool, saysNothingOfItsOwnInAnyLocale)
{
    environment.insert(u"LC_ALL"_s, u"C"_s);
    environment.insert(u"QT_LOGGING_RULES"_s, u"*=true"_s);
    logIn();
    EXPECT_EQ(run(words("attachments ABC-1 --json")), Result({0, "[]\n", {}}));
}

TEST_F(Tool, survivesAReaderThatHasGoneAway)
{
    QProcess tool;
    tool.setChildProcessModifier([] {
        std::array<int, 2> ends = {-1, -1};
        if (::pipe(ends.data()) == 0) {
            ::close(ends[0]);
            ::dup2(ends[1], STDOUT_FILENO);
            ::close(ends[1]);
        }
    });
    tool.start(tests::toolPath(), words("--help"));
    ASSERT_TRUE(tool.waitForFinished());
    EXPECT_EQ(tool.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(tool.exitCode(), 1);
    EXPECT_EQ(tool.readAllStandardError(), "The result couldn’t be written: Broken pipe.\n");
}

TEST_F(Tool, failsWhenItsResultCannotBeWritten)
{
    QProcess tool;
    tool.setStandardOutputFile(u"/dev/full"_s);
    tool.start(tests::toolPath(), words("--help"));
    ASSERT_TRUE(tool.waitForFinished());
    EXPECT_EQ(tool.exitCode(), 1);
    EXPECT_EQ(tool.readAllStandardError(), "The result couldn’t be written: No space left on device.\n");
}

TEST_F(Tool, startsAfreshWithADamagedSettingsFile)
{
    logIn();
    const QString settings = environment.value(u"XDG_CONFIG_HOME"_s) + u"/tljira/userdefaults.json"_s;
    {
        QFile file(settings);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("{\"jiraUrl\":");
    }
    EXPECT_EQ(run(words("whoami")), Result({1, {}, "No server is set: use tljira login SERVER USER first.\n"}));
    logIn();
    EXPECT_EQ(run(words("whoami")).status, 0);
}

TEST_F(Tool, doesNotTakeSettingsThatCannotBeReadForNone)
{
    const QString folder = environment.value(u"XDG_CONFIG_HOME"_s) + u"/tljira"_s;
    ASSERT_TRUE(QDir().mkpath(folder));
    // It leads to itself.
    ASSERT_TRUE(QFile::link(folder + u"/userdefaults.json"_s, folder + u"/userdefaults.json"_s));
    EXPECT_EQ(run(words("session")),
              Result({1, {}, "The saved login couldn’t be read: its present content cannot be read.\n"}));
}

TEST_F(Tool, leavesNoFolderOfItsOwnBehind)
{
    logIn();
    const QString temporary = environment.value(u"TMPDIR"_s);
    const QString shared = u"TLJiraController-%1"_s.arg(geteuid());
    ASSERT_TRUE(QDir(temporary).removeRecursively());
    ASSERT_TRUE(QDir().mkpath(temporary));
    ASSERT_TRUE(QFile(temporary + u'/' + shared).open(QIODevice::WriteOnly));
    EXPECT_EQ(run(words("session")).status, 0);
    EXPECT_EQ(QDir(temporary).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot), QStringList(shared));
}

} // namespace
