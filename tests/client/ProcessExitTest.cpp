#include "platform/foundation/files/FileManager.h"
#include "platform/foundation/settings/UserDefaults.h"
#include "tests/client/ClientTest.h"

#include <QDir>
#include <QProcess>

namespace {

using standin::Fault;
using standin::Match;
using standin::Point;

/// A host may end at any moment, while requests are under way.
class ProcessExitTest : public tests::ClientTest, public testing::WithParamInterface<const char*>
{
};

TEST_P(ProcessExitTest, isQuietAndLosesNothing)
{
    server.misbehave(Match::on("/large"),
                     Fault().status(200, std::string(4 << 20, 'x')).hold(Point::responseBody(3 << 20)));
    server.misbehave(Match::on("POST", "*"), Fault().hold(Point::responseHead(0)));
    server.misbehave(Match(), Fault().hold(Point::responseHead(0)));

    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    QDir().mkpath(path("temporary"));
    environment.insert(QStringLiteral("TMPDIR"), path("temporary"));
    environment.insert(QStringLiteral("HOME"), folder.path());
    environment.insert(QStringLiteral("QT_LOGGING_RULES"), QStringLiteral("platform.log=false"));
    QProcess probe;
    probe.setProcessEnvironment(environment);
    probe.start(QStringLiteral(EXIT_PROBE), {QString::number(server.port()), QString::fromLatin1(GetParam()),
                                             QStringLiteral("session-of-") + QString::fromLatin1(GetParam())});
    ASSERT_TRUE(probe.waitForFinished(60000));
    EXPECT_EQ(probe.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(probe.exitCode(), 0);
    EXPECT_EQ(probe.readAllStandardError(), QByteArray());

    tljira::UserDefaults::standardUserDefaults().synchronize();
    EXPECT_EQ(JALoginObject::restoreSession(),
              QStringLiteral("JSESSIONID=session-of-%1").arg(QLatin1String(GetParam())));
    EXPECT_EQ(JAController::init()->jiraHost(), QStringLiteral("http://jira.example.test/"));
    EXPECT_EQ(tljira::FileManager::filesBelowPath(path("temporary")), QStringList());
    EXPECT_FALSE(QFile::exists(path("saved")));
    EXPECT_TRUE(tests::waitUntil([this] { return server.openConnectionCount() == 0; }));
}

INSTANTIATE_TEST_SUITE_P(InMidTransfer, ProcessExitTest,
                         testing::Values("upload", "upload-from-pool", "download", "download-exit-in-callback",
                                         "request-return-at-once", "request-exit-at-once", "stuck-operation", "look-up",
                                         "upload-from-silent-disk"));

} // namespace
