#include "tests/screenreader/AccessBus.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>

#include <sys/prctl.h>

#include <csignal>

namespace tests {

namespace {

constexpr int startTimeout = 60'000;

constexpr char configuration[] = "<busconfig>\n"
                                 "  <type>session</type>\n"
                                 "  <listen>unix:path=%1/bus</listen>\n"
                                 "  <servicedir>%1/services</servicedir>\n"
                                 "  <auth>EXTERNAL</auth>\n"
                                 "  <policy context=\"default\">\n"
                                 "    <allow send_destination=\"*\" eavesdrop=\"true\"/>\n"
                                 "    <allow eavesdrop=\"true\"/>\n"
                                 "    <allow own=\"*\"/>\n"
                                 "  </policy>\n"
                                 "</busconfig>\n";

QString missing(const char* what)
{
    return QStringLiteral("%1 is needed and is not installed (see scripts/packages.txt)").arg(QLatin1String(what));
}

} // namespace

AccessBus::AccessBus()
{
    if (!configure() || !start())
        return;
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=" + m_folder.filePath(QStringLiteral("bus")).toUtf8());
    qunsetenv("AT_SPI_BUS_ADDRESS");
    // Otherwise windows wait for the desktop to say that somebody listens.
    qputenv("QT_LINUX_ACCESSIBILITY_ALWAYS_ON", "1");
}

AccessBus::~AccessBus()
{
    if (m_bus.state() == QProcess::NotRunning)
        return;
    m_bus.terminate();
    if (!m_bus.waitForFinished(startTimeout))
        m_bus.kill();
}

// Of all that the machine could start, this bus starts the one service that is wanted here.
bool AccessBus::configure()
{
    const QString service = QStandardPaths::locate(QStandardPaths::GenericDataLocation,
                                                   QStringLiteral("dbus-1/services/org.a11y.Bus.service"));
    if (service.isEmpty()) {
        m_error = missing("at-spi2-core");
        return false;
    }
    const QString services = m_folder.filePath(QStringLiteral("services"));
    QFile file(m_folder.filePath(QStringLiteral("bus.conf")));
    const QByteArray text = QString::fromLatin1(configuration).arg(m_folder.path()).toUtf8();
    if (!QDir().mkpath(services) || !QFile::copy(service, services + QStringLiteral("/org.a11y.Bus.service")) ||
        !file.open(QFile::WriteOnly) || file.write(text) != text.size() || !file.flush()) {
        m_error = QStringLiteral("cannot write below %1").arg(m_folder.path());
        return false;
    }
    return true;
}

bool AccessBus::start()
{
    const QString program = QStandardPaths::findExecutable(QStringLiteral("dbus-daemon"));
    if (program.isEmpty()) {
        m_error = missing("dbus-daemon");
        return false;
    }
    // The second bus puts its socket there; that of the person who runs the test is not to be touched.
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("XDG_RUNTIME_DIR"), m_folder.path());
    m_bus.setProcessEnvironment(environment);
    m_bus.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
    m_bus.start(program, {QStringLiteral("--config-file=%1").arg(m_folder.filePath(QStringLiteral("bus.conf"))),
                          QStringLiteral("--nofork"), QStringLiteral("--print-address=1")});
    // It says where it is once it can be reached.
    QByteArray address;
    while (!address.endsWith('\n') && m_bus.waitForReadyRead(startTimeout))
        address += m_bus.readAllStandardOutput();
    if (address.endsWith('\n'))
        return true;
    m_error = QStringLiteral("dbus-daemon does not start: %1").arg(QString::fromUtf8(m_bus.readAllStandardError()));
    return false;
}

} // namespace tests
