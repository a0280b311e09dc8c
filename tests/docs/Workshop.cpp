#include "tests/docs/Workshop.h"

#include <QDir>
#include <QFile>

#include <gtest/gtest.h>

namespace tests::docs {

namespace {

QProcessEnvironment cleanEnvironment(const QString& home)
{
    QProcessEnvironment environment;
    const auto set = [&](const char* name, const QString& value) {
        environment.insert(QString::fromLatin1(name), value);
    };
    set("HOME", home);
    set("TMPDIR", home + QStringLiteral("/tmp"));
    set("XDG_RUNTIME_DIR", home + QStringLiteral("/tmp"));
    set("PATH", QStringLiteral("/usr/local/bin:/usr/bin:/bin"));
    set("LC_ALL", QStringLiteral("C.UTF-8"));
    set("TZ", QStringLiteral("UTC"));
    set("QT_QPA_PLATFORM", QStringLiteral("offscreen"));
    set("PKG_CONFIG_PATH", QStringLiteral(INSTALLED_LIBRARIES "/pkgconfig"));
    set("LD_LIBRARY_PATH", QStringLiteral(INSTALLED_LIBRARIES));
    return environment;
}

/// The commands of the documents, as functions. "make install" takes the build as it is. The stand-in speaks no https
/// that this machine would trust.
const char* const commands = R"(
make() {
    case " $* " in
        *" install "*) command make -C "$PROJECT_FOLDER" -o all BUILD="$BUILD_FOLDER" DESTDIR="$HOME/root" "$@" >/dev/null ;;
        *) command make -n -C "$PROJECT_FOLDER" "$@" >/dev/null ;;
    esac
}
tljira() {
    local words=() word route=(--connect-to "$ROUTE")
    for word in "$@"; do
        [[ $word != --connect-to ]] || route=()
        word=${word/#jira.example.com:443:127.0.0.1:8443/$ROUTE}
        words+=("${word/#https:\/\/jira.example.com/http://jira.example.com}")
    done
    "$INSTALLATION/bin/tljira" "${route[@]}" "${words[@]}"
}
tessaloom() { build/release/host/tessaloom --connect-to "$ROUTE" "$@"; }
)";

} // namespace

Workshop::Workshop()
{
    for (const char* folder : {"tmp", "plans", "build"})
        QDir(m_home.path()).mkdir(QString::fromLatin1(folder));
    // As a runtime folder has to be.
    QFile::setPermissions(path(QStringLiteral("tmp")), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    QFile::link(QStringLiteral(BUILD_FOLDER), path(QStringLiteral("build/release")));
    write(QStringLiteral("plan.tessaloom"), QStringLiteral("warp and weft, blue\n"));
    write(QStringLiteral("password.txt"), QStringLiteral("correct horse\n"));
    write(QStringLiteral("token.txt"), QStringLiteral("battery-staple\n"));
    startServer();
}

Workshop::~Workshop()
{
    m_server.kill();
    m_server.waitForFinished();
}

void Workshop::startServer()
{
    m_server.start(QStringLiteral(STANDIN_PROGRAM),
                   {QStringLiteral("--user"), QStringLiteral("anna:correct horse"), QStringLiteral("--access-token"),
                    QStringLiteral("anna:battery-staple"), QStringLiteral("--issue"), QStringLiteral("DEMO-1")});
    while (!m_server.canReadLine() && m_server.waitForReadyRead(60000)) {
    }
    const QString line = QString::fromUtf8(m_server.readLine()).trimmed();
    m_port = line.section(u':', 2).section(u'/', 0, 0);
    EXPECT_GT(m_port.toInt(), 0) << line.toStdString();
}

QString Workshop::route() const
{
    return QStringLiteral("jira.example.com:80:127.0.0.1:") + m_port;
}

void Workshop::write(const QString& name, const QString& text) const
{
    const QByteArray bytes = text.toUtf8();
    QDir().mkpath(QFileInfo(path(name)).path());
    QFile file(path(name));
    EXPECT_TRUE(file.open(QFile::WriteOnly) && file.write(bytes) == bytes.size()) << name.toStdString();
}

void Workshop::writeFilesOf(const Document& document) const
{
    for (const Block& block : document.blocks) {
        if (!block.fileName().isEmpty())
            write(block.fileName(), block.text);
    }
}

Outcome Workshop::run(const QString& program, const QStringList& arguments, const QString& folder) const
{
    QProcess process;
    QProcessEnvironment environment = cleanEnvironment(m_home.path());
    environment.insert(QStringLiteral("ROUTE"), route());
    environment.insert(QStringLiteral("INSTALLATION"), QStringLiteral(INSTALLATION));
    environment.insert(QStringLiteral("BUILD_FOLDER"), QStringLiteral(BUILD_FOLDER));
    environment.insert(QStringLiteral("PROJECT_FOLDER"), QStringLiteral(PROJECT_FOLDER));
    process.setProcessEnvironment(environment);
    process.setWorkingDirectory(folder.isEmpty() ? m_home.path() : folder);
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.setStandardInputFile(QProcess::nullDevice());
    process.start(program, arguments);
    if (!process.waitForFinished(800000) || process.exitStatus() != QProcess::NormalExit)
        return {-1, QString::fromUtf8(process.readAll()) + process.errorString()};
    return {process.exitCode(), QString::fromUtf8(process.readAll())};
}

Outcome Workshop::shell(const QString& lines) const
{
    return run(QStringLiteral("bash"), {QStringLiteral("-euo"), QStringLiteral("pipefail"), QStringLiteral("-c"),
                                        QString::fromLatin1(commands) + lines});
}

} // namespace tests::docs
