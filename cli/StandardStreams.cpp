#include "cli/StandardStreams.h"

#include <QLoggingCategory>

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace cli {

namespace {

std::optional<int> writeAll(int descriptor, QByteArrayView bytes)
{
    while (!bytes.isEmpty()) {
        const auto written = ::write(descriptor, bytes.data(), static_cast<std::size_t>(bytes.size()));
        if (written >= 0)
            bytes = bytes.sliced(written);
        else if (errno != EINTR)
            return errno;
    }
    return std::nullopt;
}

void dropMessage(QtMsgType type, const QMessageLogContext&, const QString& message)
{
    if (type == QtFatalMsg)
        writeError(message.toUtf8() + '\n');
}

void showMessage(QtMsgType, const QMessageLogContext&, const QString& message)
{
    writeError(message.toUtf8() + '\n');
}

} // namespace

void prepareStandardStreams()
{
    std::signal(SIGPIPE, SIG_IGN);
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (::fcntl(descriptor, F_GETFD) < 0)
            ::open("/dev/null", O_RDWR);
    }
    showLog(false);
}

std::optional<QString> writeOutput(const QByteArray& bytes)
{
    const auto reason = writeAll(STDOUT_FILENO, bytes);
    return reason ? std::optional(qt_error_string(*reason)) : std::nullopt;
}

void writeError(const QByteArray& bytes)
{
    writeAll(STDERR_FILENO, bytes);
}

bool isErrorTerminal()
{
    return ::isatty(STDERR_FILENO) == 1;
}

int terminalColumns()
{
    winsize size = {};
    const bool isKnown = ::ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 1;
    return isKnown ? size.ws_col : 80;
}

void showLog(bool isShown)
{
    qInstallMessageHandler(isShown ? showMessage : dropMessage);
    // The rule spares what nobody sees its formatting.
    QLoggingCategory::setFilterRules(isShown ? QString() : QStringLiteral("*=false"));
}

} // namespace cli
