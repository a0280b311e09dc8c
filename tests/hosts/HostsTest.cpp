#include "tests/framework/plugin/RoundTrip.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>

// Hosts in other languages, and hosts and plug-ins of other versions.

namespace {

using tests::PluginHost;

const QString pluginFile = QStringLiteral("/libTLJiraControllerPlugin.so");
const QString pluginFolder = QStringLiteral(PLUGIN_FOLDER);

/// What a host says whose user attaches a document of 300000 bytes and fetches it again.
constexpr char saysOfBothJobs[] = "attaching: a job of its own\n"
                                  "a dialog of the host\n"
                                  "done plan.tessaloom ABC-1 300000\n"
                                  "asking again: 0\n"
                                  "the end of another job: This Jira plug-in has no option “colour”.\n"
                                  "a dialog of the host\n"
                                  "fetched plan.tessaloom\n";

/// What a host says that chooses options, signs in, asks who that is, attaches, cancels, lists and fetches without a
/// window. Truth and lists are written in each language's own way.
std::string saysOfAllTasks(const std::string& yes, const std::string& no, const std::string& nothing)
{
    return "refused: This Jira plug-in has no option “colour”.\n"
           "refused: The option “address” is “schemeAndHost” or “whole”.\n"
           "chosen: " +
           yes +
           "\n"
           "signed in: done\n"
           "too late: Options are chosen before the first job.\n"
           "who: anna anna\n"
           "attached: done plan.tessaloom 300000 " +
           yes +
           "\n"
           "cancel: " +
           yes + ' ' + no + ' ' + no +
           "\n"
           "cancelled: cancelled\n"
           "failed: failed 404 " +
           nothing +
           "\n"
           "listed: plan.tessaloom 300000 " +
           yes +
           "\n"
           "fetched: plan.tessaloom " +
           yes +
           "\n"
           "log: " +
           yes + ' ' + yes + ' ' + no + "\n";
}

PluginHost hostInAnotherLanguage(const std::string& says = saysOfBothJobs)
{
    PluginHost host;
    host.says = says;
    host.handsOver = false;
    host.environment.insert(QStringLiteral("QT_QUICK_BACKEND"), QStringLiteral("software"));
    return host;
}

/// Beside what Qt has to say of the machine and of its offscreen platform.
std::string complaints(const tests::Outcome& outcome)
{
    QStringList all = tests::lines(outcome.error);
    all.removeIf([](const QString& line) {
        return line.startsWith(QStringLiteral("This plugin does not support")) ||
               line.startsWith(QStringLiteral("QStandardPaths: XDG_RUNTIME_DIR"));
    });
    return all.join(u'\n').toStdString();
}

TEST(HostsTest, inPythonBringsADocumentToTheServerAndBack)
{
    PluginHost host = hostInAnotherLanguage();
    host.program = QStringLiteral(PYTHON);
    host.firstArguments = QStringList{QStringLiteral(PYTHON_HOST)};
    EXPECT_EQ(complaints(host.expectRoundTrip(pluginFolder)), "");
}

TEST(HostsTest, inQmlBringsADocumentToTheServerAndBack)
{
    PluginHost host = hostInAnotherLanguage();
    host.program = QStringLiteral(QML_HOST);
    EXPECT_EQ(complaints(host.expectRoundTrip(pluginFolder)), "");
}

TEST(HostsTest, inPythonDoesEveryJobWithoutAWindow)
{
    PluginHost host = hostInAnotherLanguage(saysOfAllTasks("True", "False", "[]"));
    host.program = QStringLiteral(PYTHON);
    host.firstArguments = QStringList{QStringLiteral(PYTHON_TASKS_HOST)};
    EXPECT_EQ(complaints(host.expectRoundTrip(pluginFolder)), "");
}

TEST(HostsTest, inQmlDoesEveryJobWithoutAWindow)
{
    PluginHost host = hostInAnotherLanguage(saysOfAllTasks("true", "false", "0"));
    host.program = QStringLiteral(QML_TASKS_HOST);
    EXPECT_EQ(complaints(host.expectRoundTrip(pluginFolder)), "");
}

TEST(HostsTest, ofVersion1BringsADocumentToTheServerAndBack)
{
    PluginHost host;
    host.program = QStringLiteral(HOST_OF_VERSION_1);
    host.expectRoundTrip(pluginFolder);
}

/// A host of today, and a plug-in of version 1.
class PluginOfVersion1 : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_TRUE(QFile::copy(QStringLiteral(PLUGIN_OF_VERSION_1), m_folder.path() + pluginFile));
    }

    std::string saysHostOf(const char* oldest) const
    {
        const auto outcome =
            tests::runProgram(QStringLiteral(VERSION_HOST), {m_folder.path(), QString::fromLatin1(oldest)});
        EXPECT_EQ(outcome.status, 0) << outcome.error;
        return outcome.output;
    }

    std::string tooOld() const
    {
        return "The Jira plug-in " + (m_folder.path() + pluginFile).toStdString() +
               " is too old for this program: version 1, needed is 2.\n";
    }

private:
    const QTemporaryDir m_folder;
};

TEST_F(PluginOfVersion1, servesAHostThatMakesDoWithIt)
{
    EXPECT_EQ(saysHostOf("1"),
              tooOld() + "version 1 attaches yes fetches /fetched/plan\nhas no calls by their names\n");
}

TEST_F(PluginOfVersion1, isRefusedInWordsByAHostThatNeedsMore)
{
    EXPECT_EQ(saysHostOf("2"), tooOld() + "has no calls by their names\n");
}

} // namespace
