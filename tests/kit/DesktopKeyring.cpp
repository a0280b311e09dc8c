#include "tests/kit/DesktopKeyring.h"

#include "tests/kit/WaitUntil.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QStandardPaths>

#include <csignal>
#include <cstdio>
#include <sys/prctl.h>

namespace tests {

namespace {

constexpr int startTimeout = 60'000;
const QString serviceName = QStringLiteral("org.freedesktop.secrets");

constexpr char configuration[] = "<busconfig>\n"
                                 "  <type>session</type>\n"
                                 "  <listen>unix:path=%1/bus</listen>\n"
                                 "  <auth>EXTERNAL</auth>\n"
                                 "  <policy context=\"default\">\n"
                                 "    <allow send_destination=\"*\" eavesdrop=\"true\"/>\n"
                                 "    <allow eavesdrop=\"true\"/>\n"
                                 "    <allow own=\"*\"/>\n"
                                 "  </policy>\n"
                                 "</busconfig>\n";

void complain(const QString& reason)
{
    std::fprintf(stderr, "%s\n", qPrintable(reason));
}

/// Empty where it is not installed.
QString programNamed(const char* name)
{
    const QString program = QStandardPaths::findExecutable(QLatin1String(name));
    if (program.isEmpty())
        complain(
            QStringLiteral("%1 is needed and is not installed (see scripts/packages.txt)").arg(QLatin1String(name)));
    return program;
}

void endWithThisProcess(QProcess& process)
{
    process.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
}

void end(QProcess& process)
{
    if (process.state() == QProcess::NotRunning)
        return;
    process.kill();
    process.waitForFinished(startTimeout);
}

QByteArray outputOf(const char* name, const QStringList& arguments)
{
    QProcess process;
    process.start(programNamed(name), arguments);
    process.waitForFinished(startTimeout);
    return process.readAllStandardOutput();
}

} // namespace

DesktopKeyring::DesktopKeyring()
{
    QCoreApplication::addLibraryPath(QStringLiteral(QT_PLUGINS));
    QFile file(m_folder.filePath(QStringLiteral("bus.conf")));
    const QByteArray text = QString::fromLatin1(configuration).arg(m_folder.path()).toUtf8();
    if (!file.open(QFile::WriteOnly) || file.write(text) != text.size() || !file.flush() || !startBus())
        return;
    qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=" + m_folder.filePath(QStringLiteral("bus")).toUtf8());
    // Its socket goes there, and not among those of the person who runs the test.
    qputenv("XDG_RUNTIME_DIR", m_folder.path().toUtf8());
}

DesktopKeyring::~DesktopKeyring()
{
    QDBusConnection::disconnectFromBus(m_folder.path());
    end(m_daemon);
    end(m_bus);
}

bool DesktopKeyring::startBus()
{
    endWithThisProcess(m_bus);
    m_bus.start(programNamed("dbus-daemon"),
                {QStringLiteral("--config-file=%1").arg(m_folder.filePath(QStringLiteral("bus.conf"))),
                 QStringLiteral("--nofork"), QStringLiteral("--print-address=1")});
    // It says where it is once it can be reached.
    QByteArray address;
    while (!address.endsWith('\n') && m_bus.waitForReadyRead(startTimeout))
        address += m_bus.readAllStandardOutput();
    return address.endsWith('\n');
}

bool DesktopKeyring::start()
{
    endWithThisProcess(m_daemon);
    m_daemon.start(programNamed("gnome-keyring-daemon"),
                   {QStringLiteral("--foreground"), QStringLiteral("--components=secrets"), QStringLiteral("--unlock"),
                    QStringLiteral("--control-directory=%1").arg(m_folder.filePath(QStringLiteral("control")))});
    m_daemon.write("the keyring's password");
    m_daemon.closeWriteChannel();
    auto bus = QDBusConnection::connectToBus(
        QStringLiteral("unix:path=%1").arg(m_folder.filePath(QStringLiteral("bus"))), m_folder.path());
    return bus.isConnected() && waitUntil([&bus] { return bus.interface()->isServiceRegistered(serviceName).value(); });
}

bool DesktopKeyring::lock() const
{
    auto call =
        QDBusMessage::createMethodCall(serviceName, QStringLiteral("/org/freedesktop/secrets"),
                                       QStringLiteral("org.freedesktop.Secret.Service"), QStringLiteral("Lock"));
    const QDBusObjectPath keyring(QStringLiteral("/org/freedesktop/secrets/aliases/default"));
    call << QVariant::fromValue(QList<QDBusObjectPath>{keyring});
    const QDBusMessage answer = QDBusConnection(m_folder.path()).call(call);
    return answer.type() == QDBusMessage::ReplyMessage;
}

void DesktopKeyring::hold() const
{
    ::kill(static_cast<pid_t>(m_daemon.processId()), SIGSTOP);
}

void DesktopKeyring::release() const
{
    ::kill(static_cast<pid_t>(m_daemon.processId()), SIGCONT);
}

void DesktopKeyring::stop()
{
    end(m_daemon);
}

qsizetype DesktopKeyring::callers() const
{
    const auto* const bus = QDBusConnection(m_folder.path()).interface();
    return bus->registeredServiceNames().value().filter(QRegularExpression(QStringLiteral("^:"))).size();
}

QByteArray DesktopKeyring::textOf(const QString& application)
{
    return outputOf("secret-tool", {QStringLiteral("lookup"), QStringLiteral("server"), application});
}

QByteArray DesktopKeyring::secretOf(const QString& application)
{
    const QJsonObject entry = QJsonDocument::fromJson(textOf(application)).object();
    const QString token =
        entry.value(QStringLiteral("signInToken")).toObject().value(QStringLiteral("token")).toString();
    return (token.isEmpty() ? entry.value(QStringLiteral("kSessionValue")).toString() : token).toUtf8();
}

bool DesktopKeyring::hasTextOf(const QString& application)
{
    return outputOf("secret-tool",
                    {QStringLiteral("search"), QStringLiteral("--all"), QStringLiteral("server"), application})
        .contains("label = ");
}

} // namespace tests
