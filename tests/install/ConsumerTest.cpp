#include "standin/Server.h"
#include "tests/kit/RunProgram.h"

#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>

// Programs that were built from nothing but an installation.

namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

QString consumer(const char* path)
{
    return QStringLiteral(CONSUMERS_BUILT "/") + QLatin1String(path);
}

/// 300 kB that no text is.
std::string document()
{
    return standin::Server::pattern(7, 300000);
}

class Consumer : public testing::TestWithParam<const char*>
{
};

TEST_P(Consumer, bringsADocumentToTheServerAndBack)
{
    standin::Server server;
    server.addUser("anna", "secret");
    server.addIssue("ABC-1");
    const QTemporaryDir work;
    QFile file(work.filePath(QStringLiteral("document.tessaloom")));
    ASSERT_TRUE(file.open(QFile::WriteOnly));
    file.write(QByteArray::fromStdString(document()));
    file.close();
    const QTemporaryDir fetchedFolder;
    const QString fetched = fetchedFolder.filePath(QStringLiteral("fetched"));

    const auto route = QStringLiteral("jira.example.test:80:127.0.0.1:%1").arg(server.port());
    const auto outcome = tests::runProgram(consumer(GetParam()), {route, file.fileName(), fetched});

    EXPECT_EQ(outcome.status, 0) << outcome.error;
    const auto stored = server.attachments("ABC-1");
    ASSERT_EQ(stored.size(), 1U);
    EXPECT_EQ(stored[0].fileName, "plan.tessaloom");
    EXPECT_TRUE(server.content(stored[0].id) == document());
    QFile result(fetched);
    ASSERT_TRUE(result.open(QFile::ReadOnly));
    EXPECT_TRUE(result.readAll().toStdString() == document());
}

INSTANTIATE_TEST_SUITE_P(BuiltInEitherWay, Consumer,
                         testing::Values("client/client-consumer", "host/host-consumer", "host/own-names-consumer",
                                         "pkg-config/client-consumer", "pkg-config/host-consumer"));

TEST(ClientConsumer, isLinkedWithNoWindows)
{
    for (const char* program : {"client/client-consumer", "pkg-config/client-consumer"}) {
        const auto needed = tests::runProgram(QStringLiteral("ldd"), {consumer(program)});
        EXPECT_THAT(needed.output, HasSubstr("libTLJiraControllerClient.so.1 => " INSTALL_PREFIX));
        for (const char* unwanted : {"libQt6Gui", "libQt6Widgets", "libTLJiraController.so", "not found"})
            EXPECT_THAT(needed.output, Not(HasSubstr(unwanted)));
    }
}

TEST(OlderWindow, showsTheFrameworksPanelThatTheHostEmbeds)
{
    const auto outcome = tests::runProgram(consumer("host/older-consumer"), {});
    EXPECT_EQ(outcome.status, 0) << outcome.error;
    EXPECT_THAT(outcome.output, Not(HasSubstr("problem")));
    EXPECT_THAT(outcome.output, HasSubstr("button getListAttachedFilesButton\n"));
    EXPECT_THAT(outcome.output, HasSubstr("label pathLabel: /nowhere/plan.tessaloom\n"));
    EXPECT_THAT(outcome.output, Not(HasSubstr("houseLabel")));
}

TEST(OlderWindow, showsThePanelThatTheHostHasDesignedAnew)
{
    const auto outcome = tests::runProgram(consumer("host/redesigned-consumer"), {});
    EXPECT_EQ(outcome.status, 0) << outcome.error;
    EXPECT_THAT(outcome.output, Not(HasSubstr("problem")));
    EXPECT_THAT(outcome.output, HasSubstr("label houseLabel: Documents of our house\n"));
    EXPECT_THAT(outcome.output, HasSubstr("button listButton\n"));
    EXPECT_THAT(outcome.output, HasSubstr("label pathLabel: /nowhere/plan.tessaloom\n"));
    EXPECT_THAT(outcome.output, Not(HasSubstr("getListAttachedFilesButton")));
}

} // namespace
