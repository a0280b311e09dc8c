#include "tests/desktop/Desktop.h"

#include "tests/desktop/XServer.h"

#include <QStandardPaths>
#include <QThread>

#include <chrono>

#include <sys/prctl.h>

#include <csignal>

namespace tests {

namespace {

constexpr int startTimeout = 60'000;

void endsWithThisProcess(QProcess& process)
{
    process.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
}

QString missing(const char* program)
{
    return QStringLiteral("%1 is needed and is not installed (see scripts/packages.txt)")
        .arg(QString::fromLatin1(program));
}

void end(QProcess& process)
{
    if (process.state() == QProcess::NotRunning)
        return;
    process.terminate();
    if (!process.waitForFinished(startTimeout))
        process.kill();
}

} // namespace

Desktop::Desktop()
{
    endsWithThisProcess(m_screen);
    endsWithThisProcess(m_windowManager);
    if (startScreen())
        startWindowManager();
}

Desktop::~Desktop()
{
    end(m_windowManager);
    end(m_screen);
}

bool Desktop::startScreen()
{
    const QString program = QStandardPaths::findExecutable(QStringLiteral("Xvfb"));
    if (program.isEmpty()) {
        m_error = missing("Xvfb");
        return false;
    }
    // It takes a free number and says which once it can be reached.
    m_screen.start(program, {QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-screen"),
                             QStringLiteral("0"), QStringLiteral("1280x1024x24"), QStringLiteral("-nolisten"),
                             QStringLiteral("tcp"), QStringLiteral("-noreset")});
    QByteArray number;
    while (!number.endsWith('\n') && m_screen.waitForReadyRead(startTimeout))
        number += m_screen.readAllStandardOutput();
    if (!number.endsWith('\n')) {
        m_error = QStringLiteral("Xvfb does not start: %1").arg(QString::fromUtf8(m_screen.readAllStandardError()));
        return false;
    }
    qputenv("DISPLAY", ":" + number.trimmed());
    qputenv("QT_QPA_PLATFORM", "xcb");
    for (const char* variable : {"WAYLAND_DISPLAY", "QT_QPA_PLATFORMTHEME", "XDG_CURRENT_DESKTOP", "SESSION_MANAGER"})
        qunsetenv(variable);
    return true;
}

bool Desktop::startWindowManager()
{
    const QString program = QStandardPaths::findExecutable(QStringLiteral("openbox"));
    if (program.isEmpty()) {
        m_error = missing("openbox");
        return false;
    }
    m_windowManager.setStandardOutputFile(QProcess::nullDevice());
    m_windowManager.setStandardErrorFile(QProcess::nullDevice());
    m_windowManager.start(program, {QStringLiteral("--sm-disable")});
    const auto begin = std::chrono::steady_clock::now();
    while (!XServer::instance().hasWindowManager()) {
        const bool isLate = std::chrono::steady_clock::now() - begin > std::chrono::milliseconds(startTimeout);
        if (isLate || m_windowManager.waitForFinished(1)) {
            m_error = QStringLiteral("openbox does not start");
            return false;
        }
        QThread::msleep(5);
    }
    return true;
}

} // namespace tests
