#include "bench/Bench.h"
#include "bench/windows/WindowCases.h"
#include "client/JAController.h"
#include "constants/JAConstants.h"
#include "platform/foundation/loading/URLSessionConfiguration.h"
#include "platform/foundation/settings/UserDefaults.h"
#include "standin/Server.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QLoggingCategory>
#include <QProcess>
#include <QSaveFile>
#include <QTemporaryDir>

#include <cstdio>
#include <stdexcept>

namespace bench {

std::string Bench::route() const
{
    return "jira.example.test:80:127.0.0.1:" + std::to_string(server.port());
}

std::string Bench::address(const std::string& path) const
{
    return server.url() + path;
}

} // namespace bench

namespace {

/// The tool's own folders, so that the measured processes neither see nor touch those of whoever measures.
void moveInto(const QTemporaryDir& folder)
{
    for (const char* variable : {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "TMPDIR"})
        qputenv(variable, folder.path().toUtf8());
}

void logIn(const bench::Bench& bench)
{
    QProcess tool;
    tool.start(QStringLiteral(TLJIRA_PATH), {QStringLiteral("--connect-to"), QString::fromStdString(bench.route()),
                                             QStringLiteral("login"), QStringLiteral("http://jira.example.test/"),
                                             QStringLiteral("demo"), QStringLiteral("--password-stdin")});
    tool.write("demo\n");
    tool.closeWriteChannel();
    if (!tool.waitForFinished(-1) || tool.exitCode() != 0)
        throw std::runtime_error("cannot log in: " + tool.readAllStandardError().toStdString());
}

void prepare(standin::Server& server)
{
    server.addUser("demo", "demo");
    server.addIssue("SINK-1");
    server.addIssue("SOURCE-1");
    server.addIssue("SMALL-1");
    server.addIssue("WIDE-1");
    server.addIssue("LARGE-1");
    for (int i = 0; i < 3; ++i) {
        standin::NewAttachment attachment;
        attachment.fileName = "plan " + std::to_string(i) + ".tessaloom";
        attachment.bytes = "x";
        server.addAttachment("SMALL-1", attachment);
    }
}

/// The windows run in this process: they take up this session instead of asking for one.
void openSessionForWindows(const bench::Bench& bench)
{
    QLoggingCategory::setFilterRules(QStringLiteral("platform.log=false"));
    tljira::URLSessionConfiguration::setDefaultRoutes({QString::fromStdString(bench.route())});
    // The first upload window of all would log out.
    tljira::UserDefaults::standardUserDefaults().setObject(true, kClearCache);
    JAController::sharedInstance()->setHost(QStringLiteral("http://jira.example.test/"));
    const QString cookie = QString::fromStdString(bench.cookie);
    JALoginObject::initWithDictionary({{kSession, QJsonObject{{kSessionName, cookie.section(u'=', 0, 0)},
                                                              {kSessionValue, cookie.section(u'=', 1)}}}});
}

int run(const QCommandLineParser& options)
{
    const QTemporaryDir folder;
    moveInto(folder);
    standin::Server server(standin::Options::forMeasuring());
    prepare(server);
    const int mebibytes = options.value(QStringLiteral("size")).toInt();
    const bench::Bench bench{server, folder.path().toStdString(), "JSESSIONID=" + server.openSession("demo"),
                             options.value(QStringLiteral("runs")).toInt(), mebibytes * 1024LL * 1024};
    logIn(bench);

    std::vector<bench::Row> rows = bench::transferCases(bench);
    rows.push_back(bench::lookUpCase(bench));
    for (const bench::Row& row : bench::cancelCases(bench))
        rows.push_back(row);
    for (const bench::Row& row : bench::interruptCases(bench))
        rows.push_back(row);
    for (const bench::Row& row : bench::issueCase(bench))
        rows.push_back(row);

    openSessionForWindows(bench);
    for (const bench::Row& row : bench::uploadWindowCases(bench))
        rows.push_back(row);
    for (const bench::Row& row : bench::listWindowCases(bench))
        rows.push_back(row);
    rows.push_back(bench::pictureCase(bench));

    const std::string report = bench::report(rows, bench.runs);
    std::fputs(report.c_str(), stdout);
    const QString path = options.value(QStringLiteral("write"));
    if (path.isEmpty())
        return 0;
    QSaveFile file(path);
    const auto size = static_cast<qint64>(report.size());
    // On a full disk commit() may not notice that its own flush failed.
    const bool isSaved =
        file.open(QIODevice::WriteOnly) && file.write(report.data(), size) == size && file.flush() && file.commit();
    if (!isSaved)
        std::fprintf(stderr, "%s: %s\n", qPrintable(path), qPrintable(file.errorString()));
    return isSaved ? 0 : 1;
}

} // namespace

int main(int argc, char** argv)
{
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    QCommandLineParser options;
    options.setApplicationDescription(QStringLiteral("Measures tljira and the client beside their peers."));
    options.addHelpOption();
    options.addOptions(
        {{QStringLiteral("runs"), QStringLiteral("Counted runs of each."), QStringLiteral("number"),
          QStringLiteral("5")},
         {QStringLiteral("size"),
          QStringLiteral("MiB of the large file; memory is also looked at for four times that."),
          QStringLiteral("number"), QStringLiteral("1024")},
         {QStringLiteral("write"), QStringLiteral("Writes the table to a file, too."), QStringLiteral("file")}});
    options.process(application);
    try {
        return run(options);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}
