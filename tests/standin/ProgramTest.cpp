#include "tests/standin/JiraFixture.h"

#include <gmock/gmock.h>

#include <QProcess>
#include <QTemporaryFile>
#include <QUrl>

#include <csignal>

namespace standin_tests {

namespace {

using testing::HasSubstr;
using testing::StartsWith;

class Program : public testing::Test
{
protected:
    void start(const QStringList& arguments)
    {
        process.start(QStringLiteral(STANDIN_PROGRAM), arguments);
        const auto line = readLine();
        ASSERT_THAT(line, StartsWith("listening on http"));
        port = static_cast<std::uint16_t>(QUrl(QString::fromStdString(line.substr(13))).port());
    }
    /// Waits for a whole line of output.
    std::string readLine()
    {
        while (!process.canReadLine() && process.waitForReadyRead(60000)) {
        }
        return process.readLine().trimmed().toStdString();
    }
    Reply exchange(const std::string& bytes)
    {
        RawClient client(port);
        client.send(bytes);
        return client.reply();
    }
    int statusAfter(int signal)
    {
        ::kill(static_cast<pid_t>(process.processId()), signal);
        return process.waitForFinished(60000) && process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    }

    QProcess process;
    std::uint16_t port = 0;
};

TEST_F(Program, servesADemonstrationUntilItIsTerminated)
{
    start({QStringLiteral("--verbose")});
    const auto body = R"({"username":"demo","password":"demo"})";
    const auto login = exchange(requestBytes("POST", sessionPath, "Content-Type: application/json\r\n", body));
    EXPECT_EQ(login.status, 200);
    EXPECT_EQ(readLine(), "POST /rest/auth/1/session 200, 37 bytes in, " + std::to_string(login.body.size()) +
                              " bytes out, connection 1");
    EXPECT_EQ(statusAfter(SIGTERM), 0);
}

TEST_F(Program, endsWhenInterrupted)
{
    start({});
    EXPECT_EQ(statusAfter(SIGINT), 0);
}

TEST_F(Program, servesFilesAndMisbehaves)
{
    QTemporaryFile file;
    ASSERT_TRUE(file.open());
    file.write("bytes");
    file.flush();
    start({QStringLiteral("--user"), QStringLiteral("anna:secret"), QStringLiteral("--attach"),
           QStringLiteral("A-1:") + file.fileName(), QStringLiteral("--fault"),
           QStringLiteral("/login.jsp=status:418")});
    EXPECT_EQ(exchange(requestBytes("GET", "/login.jsp")).status, 418);
    const auto body = R"({"username":"anna","password":"secret"})";
    const auto login = exchange(requestBytes("POST", sessionPath, "Content-Type: application/json\r\n", body));
    const auto cookie = "Cookie: " + login.header("Set-Cookie") + "\r\n";
    EXPECT_EQ(exchange(requestBytes("GET", "/secure/attachment/10000/x", cookie)).body, "bytes");
    EXPECT_EQ(statusAfter(SIGTERM), 0);
}

TEST_F(Program, printsItsHelp)
{
    process.start(QStringLiteral(STANDIN_PROGRAM), {QStringLiteral("--help")});
    ASSERT_TRUE(process.waitForFinished(60000));
    EXPECT_EQ(process.exitCode(), 0);
    EXPECT_THAT(process.readAllStandardOutput().toStdString(), HasSubstr("--fault <PATTERN=SPEC>"));
}

TEST_F(Program, refusesWrongUsage)
{
    process.start(QStringLiteral(STANDIN_PROGRAM), {QStringLiteral("--port"), QStringLiteral("x")});
    ASSERT_TRUE(process.waitForFinished(60000));
    EXPECT_EQ(process.exitCode(), 2);
    EXPECT_EQ(process.readAllStandardError().toStdString(), "tljira-standin: 'x' is no port.\n");
}

TEST_F(Program, saysWhenAFileCannotBeRead)
{
    process.start(QStringLiteral(STANDIN_PROGRAM), {QStringLiteral("--attach"), QStringLiteral("A-1:/nowhere/x")});
    ASSERT_TRUE(process.waitForFinished(60000));
    EXPECT_EQ(process.exitCode(), 1);
    EXPECT_THAT(process.readAllStandardError().toStdString(), StartsWith("tljira-standin: /nowhere/x: "));
}

} // namespace

} // namespace standin_tests
