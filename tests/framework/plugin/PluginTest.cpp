#include "standin/Server.h"
#include "tests/support/RunProgram.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>

// A host without the framework, and what it finds where the plug-in should be.

namespace {

using testing::HasSubstr;
using testing::Not;

const QString pluginFile = QStringLiteral("/libTLJiraControllerPlugin.so");

tests::Outcome runHost(const QStringList& arguments)
{
    return tests::runProgram(QStringLiteral(PLUGIN_HOST), arguments);
}

void write(const QString& path, const std::string& bytes)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QFile::WriteOnly));
    ASSERT_EQ(file.write(bytes.data(), static_cast<qint64>(bytes.size())), static_cast<qint64>(bytes.size()));
}

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
    standin::Server server;
    server.addUser("alice", "secret");
    server.addIssue("ABC-1");
    const std::string document = standin::Server::pattern(3, 300000);
    const QTemporaryDir work;
    const QTemporaryDir kept;
    write(work.filePath(QStringLiteral("copy")), document);
    const QString fetched = kept.filePath(QStringLiteral("fetched"));

    const auto host =
        runHost({QStringLiteral(PLUGIN_FOLDER), QStringLiteral("jira.example.test:80:127.0.0.1:%1").arg(server.port()),
                 work.filePath(QStringLiteral("copy")), fetched});

    EXPECT_EQ(host.output, "fetched plan.tessaloom.tessaloom\n");
    EXPECT_EQ(host.status, 0);
    const auto stored = server.attachments("ABC-1");
    ASSERT_EQ(stored.size(), 1u);
    EXPECT_EQ(stored[0].fileName, "plan.tessaloom");
    EXPECT_TRUE(server.content(stored[0].id) == document);
    QFile result(fetched);
    ASSERT_TRUE(result.open(QFile::ReadOnly));
    EXPECT_TRUE(result.readAll().toStdString() == document);
    EXPECT_FALSE(QDir(work.path()).exists());
}

TEST(PluginTest, whereItIsMissingTheHostSaysSoAndGoesOn)
{
    const QTemporaryDir folder;
    const auto host = runHost({folder.path()});
    EXPECT_EQ(host.status, 0);
    EXPECT_THAT(host.output, testing::StartsWith("The Jira plug-in is not installed: there is no "
                                                 "TLJiraControllerPlugin in " +
                                                 folder.path().toStdString() + ", "));
}

TEST(PluginTest, whereItIsBrokenTheHostSaysSoAndGoesOn)
{
    const QTemporaryDir folder;
    write(folder.path() + pluginFile, "no library");
    const auto host = runHost({folder.path()});
    EXPECT_EQ(host.status, 0);
    EXPECT_THAT(host.output, testing::StartsWith("The Jira plug-in " + (folder.path() + pluginFile).toStdString() +
                                                 " cannot be loaded: "));
}

TEST(PluginTest, whereAnotherPluginLiesTheHostSaysSoAndGoesOn)
{
    const QTemporaryDir folder;
    ASSERT_TRUE(QFile::copy(QStringLiteral(OTHER_PLUGIN), folder.path() + pluginFile));
    const auto host = runHost({folder.path()});
    EXPECT_EQ(host.status, 0);
    EXPECT_EQ(host.output, (folder.path() + pluginFile).toStdString() +
                               " is no Jira plug-in for this program: it is org.example.Other/2.0, needed is "
                               "org.tljiracontroller.TLJiraControllerInterface/1.0.\n");
}

TEST(PluginTest, whereItIsTooOldTheHostSaysSoAndGoesOn)
{
    const QTemporaryDir folder;
    ASSERT_TRUE(QFile::copy(QStringLiteral(OLD_PLUGIN), folder.path() + pluginFile));
    const auto host = runHost({folder.path()});
    EXPECT_EQ(host.status, 0);
    EXPECT_EQ(host.output, "The Jira plug-in " + (folder.path() + pluginFile).toStdString() +
                               " is too old for this program: version 0, needed is 1.\n");
}

} // namespace
