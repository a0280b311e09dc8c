#include "tests/framework/plugin/RoundTrip.h"

#include "standin/Server.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace tests {

Outcome PluginHost::run(const QStringList& arguments) const
{
    return runProgram(program, firstArguments + arguments, environment);
}

void writeFile(const QString& path, const std::string& bytes)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QFile::WriteOnly));
    ASSERT_EQ(file.write(bytes.data(), static_cast<qint64>(bytes.size())), static_cast<qint64>(bytes.size()));
}

Outcome PluginHost::expectRoundTrip(const QString& folder) const
{
    standin::Server server;
    server.addUser("anna", "secret");
    server.addIssue("ABC-1");
    const std::string document = standin::Server::pattern(3, 300000);
    const QTemporaryDir work;
    const QTemporaryDir kept;
    writeFile(work.filePath(QStringLiteral("copy")), document);
    const QString fetched = kept.filePath(QStringLiteral("fetched"));

    const auto host = run({folder, QStringLiteral("jira.example.test:80:127.0.0.1:%1").arg(server.port()),
                           work.filePath(QStringLiteral("copy")), fetched,
                           isLogEnabled ? QStringLiteral("log") : QStringLiteral("no-log")});

    EXPECT_EQ(host.output, says);
    EXPECT_EQ(host.status, 0) << host.error;
    const auto stored = server.attachments("ABC-1");
    EXPECT_EQ(stored.size(), 1u);
    for (const auto& attachment : stored) {
        EXPECT_EQ(attachment.fileName, "plan.tessaloom");
        EXPECT_TRUE(server.content(attachment.id) == document);
    }
    QFile result(fetched);
    EXPECT_TRUE(result.open(QFile::ReadOnly));
    EXPECT_TRUE(result.readAll().toStdString() == document);
    EXPECT_EQ(QDir(work.path()).exists(), !handsOver);
    return host;
}

} // namespace tests
