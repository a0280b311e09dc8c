#include "tests/wayland/Compositor.h"

#include "tests/wayland/Seat.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QStandardPaths>
#include <QThread>

#include <sys/prctl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <csignal>
#include <grp.h>

namespace tests {

namespace {

constexpr int startTimeout = 60'000;
/// Nobody: sway refuses to run as root.
constexpr uid_t somebody = 65534;

// A window that is a dialog floats, others fill the screen: so it shows which is which. One that asks for the keyboard
// gets it, as on desktops that are not made of tiles.
constexpr char configuration[] = "output HEADLESS-1 resolution 1280x1024 position 0 0\n"
                                 "xwayland disable\n"
                                 "focus_follows_mouse no\n"
                                 "focus_on_window_activation focus\n"
                                 "default_border normal\n"
                                 "default_floating_border normal\n";

bool isRoot()
{
    return geteuid() == 0;
}

void beSomebody()
{
    if (isRoot() && (setgroups(0, nullptr) != 0 || setgid(somebody) != 0 || setuid(somebody) != 0))
        _exit(EXIT_FAILURE);
    prctl(PR_SET_PDEATHSIG, SIGKILL);
}

QProcessEnvironment environmentIn(const QString& folder)
{
    QProcessEnvironment environment;
    environment.insert(QStringLiteral("PATH"), qEnvironmentVariable("PATH"));
    environment.insert(QStringLiteral("HOME"), folder);
    environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), folder);
    environment.insert(QStringLiteral("WLR_BACKENDS"), QStringLiteral("headless"));
    environment.insert(QStringLiteral("WLR_RENDERER"), QStringLiteral("pixman"));
    environment.insert(QStringLiteral("WLR_LIBINPUT_NO_DEVICES"), QStringLiteral("1"));
    return environment;
}

} // namespace

Compositor::Compositor()
{
    if (start() && waitForSockets()) {
        qputenv("WAYLAND_DISPLAY", socket(QStringLiteral("wayland-?")).toUtf8());
        qputenv("SWAYSOCK", socket(QStringLiteral("sway-ipc.*")).toUtf8());
        qputenv("QT_QPA_PLATFORM", "wayland");
        for (const char* variable : {"DISPLAY", "QT_QPA_PLATFORMTHEME", "XDG_CURRENT_DESKTOP", "SESSION_MANAGER"})
            qunsetenv(variable);
        // There before the windows: they come to know of a keyboard that is plugged in later only in a while.
        Seat::instance();
    }
}

Compositor::~Compositor()
{
    if (m_sway.state() == QProcess::NotRunning)
        return;
    m_sway.terminate();
    if (!m_sway.waitForFinished(startTimeout))
        m_sway.kill();
}

bool Compositor::start()
{
    const QString program = QStandardPaths::findExecutable(QStringLiteral("sway"));
    if (program.isEmpty()) {
        m_error = QStringLiteral("sway is needed and is not installed (see scripts/packages.txt)");
        return false;
    }
    QFile file(m_folder.filePath(QStringLiteral("config")));
    if (!file.open(QFile::WriteOnly) || file.write(configuration) < 0 || !file.flush()) {
        m_error = QStringLiteral("cannot write %1").arg(file.fileName());
        return false;
    }
    if (isRoot() && (chown(qPrintable(m_folder.path()), somebody, somebody) != 0 ||
                     chmod(qPrintable(file.fileName()), 0644) != 0)) {
        m_error = QStringLiteral("cannot hand over %1").arg(m_folder.path());
        return false;
    }
    m_sway.setProcessEnvironment(environmentIn(m_folder.path()));
    m_sway.setChildProcessModifier(beSomebody);
    m_sway.setStandardOutputFile(QProcess::nullDevice());
    m_sway.start(program, {QStringLiteral("-c"), file.fileName()});
    return true;
}

bool Compositor::waitForSockets()
{
    QElapsedTimer elapsed;
    elapsed.start();
    while (socket(QStringLiteral("wayland-?")).isEmpty() || socket(QStringLiteral("sway-ipc.*")).isEmpty()) {
        if (elapsed.elapsed() > startTimeout || m_sway.waitForFinished(1)) {
            m_error = QStringLiteral("sway does not start: %1").arg(QString::fromUtf8(m_sway.readAllStandardError()));
            return false;
        }
        QThread::msleep(5);
    }
    return true;
}

QString Compositor::socket(const QString& pattern) const
{
    const QDir folder(m_folder.path());
    const QStringList found = folder.entryList({pattern}, QDir::System);
    return found.isEmpty() ? QString() : folder.filePath(found.constFirst());
}

} // namespace tests
