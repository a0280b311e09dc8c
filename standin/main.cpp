#include "standin/ProgramOptions.h"
#include "standin/Server.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

#include <csignal>
#include <cstdio>
#include <system_error>

namespace {

void fill(standin::Server& server, const standin::ProgramOptions& options)
{
    for (const auto& user : options.users)
        server.addUser(user);
    for (const auto& issue : options.issues)
        server.addIssue(issue);
    for (const auto& synthetic : options.synthetics)
        server.addAttachment(synthetic.issueKey, {.fileName = synthetic.fileName, .syntheticSize = synthetic.size});
    for (const auto& fault : options.faults)
        server.misbehave(fault.match, fault.fault);
}

bool attachFiles(standin::Server& server, const standin::ProgramOptions& options)
{
    for (const auto& [key, path] : options.files) {
        QFile file(QString::fromStdString(path));
        if (!file.open(QIODevice::ReadOnly)) {
            std::fprintf(stderr, "tljira-standin: %s: %s\n", path.c_str(), qPrintable(file.errorString()));
            return false;
        }
        server.addAttachment(
            key, {.fileName = QFileInfo(file).fileName().toStdString(), .bytes = file.readAll().toStdString()});
    }
    return true;
}

bool writeCertificate(const standin::Server& server, const std::string& path)
{
    if (path.empty())
        return true;
    QFile file(QString::fromStdString(path));
    const auto pem = QByteArray::fromStdString(server.certificate());
    const bool isWritten = file.open(QIODevice::WriteOnly) && file.write(pem) == pem.size() && file.flush();
    if (!isWritten)
        std::fprintf(stderr, "tljira-standin: %s: %s\n", path.c_str(), qPrintable(file.errorString()));
    return isWritten;
}

void print(const standin::RecordedRequest& request)
{
    std::printf("%s %s %d, %lld bytes in, %lld bytes out, connection %lld\n", request.method.c_str(),
                request.target.c_str(), request.status, static_cast<long long>(request.bodyLength),
                static_cast<long long>(request.sentBodyBytes), static_cast<long long>(request.connection));
    std::fflush(stdout);
}

int serve(const standin::ProgramOptions& options)
{
    // Blocked before the server's thread starts, so that only sigwait sees them.
    sigset_t endings;
    sigemptyset(&endings);
    sigaddset(&endings, SIGINT);
    sigaddset(&endings, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &endings, nullptr);

    standin::Server server(options.server);
    fill(server, options);
    if (!attachFiles(server, options) || !writeCertificate(server, options.certificateFile))
        return 1;
    // Whoever reads the address may be very fast.
    if (options.isVerbose)
        server.onFinished(print);
    std::printf("listening on %s\n", server.url().c_str());
    std::fflush(stdout);
    int signal = 0;
    sigwait(&endings, &signal);
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const auto options = standin::ProgramOptions::parse(QCoreApplication::arguments());
    if (options.wantsHelp) {
        std::fputs(qPrintable(standin::ProgramOptions::help()), stdout);
        return 0;
    }
    if (!options.error.empty()) {
        std::fprintf(stderr, "tljira-standin: %s\n", options.error.c_str());
        return 2;
    }
    try {
        return serve(options);
    } catch (const std::system_error& error) {
        std::fprintf(stderr, "tljira-standin: %s\n", error.what());
        return 1;
    }
}
