#include "tests/torture/Place.h"

#include "tests/kit/OldFiles.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QJsonDocument>
#include <QRegularExpression>
#include <QThread>

#include <stdexcept>

namespace torture {

namespace {

constexpr auto Everything = QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot;
/// A few reads and writes of any program.
constexpr std::int64_t documentSize = 1'500'000;

standin::Options options()
{
    standin::Options options;
    options.recordedBodyBytes = 0;
    options.recordedRequests = 10;
    return options;
}

void write(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    if (!QDir().mkpath(QFileInfo(path).path()) || !file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        throw std::runtime_error("cannot write " + path.toStdString());
}

void empty(const QString& folder)
{
    for (const QFileInfo& item : QDir(folder).entryInfoList(Everything)) {
        if (item.isDir() && !item.isSymLink())
            QDir(item.filePath()).removeRecursively();
        else
            QFile::remove(item.filePath());
    }
    QDir().mkpath(folder);
}

} // namespace

QByteArray bytesOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

Place::Place(const QString& otherVolume)
    : server(options())
    , m_otherVolume(otherVolume)
    , m_bytes(QByteArray::fromStdString(standin::Server::pattern(0, documentSize)))
{
    server.addUser("anna", password);
    server.addIssue(issue);
    write(passwordFile(), QByteArray(password) + '\n');
    write(document(), m_bytes);
    const std::string answer = QByteArray(R"({"session":{"name":"JSESSIONID","value":")" + QByteArray(newSession) +
                                          R"("},"loginInfo":{"failedLoginCount":0,"loginCount":1}})")
                                   .toStdString();
    // The value of the session is known beforehand then.
    server.misbehave(standin::Match::on("POST", "*/session"),
                     standin::Fault()
                         .status(200, answer, "application/json")
                         .header("Set-Cookie", "remember=new; Path=/; Expires=Fri, 01 Jan 2100 00:00:00 GMT"));
}

QJsonObject Place::settingsOf(const QString& address, const QString& session)
{
    QJsonObject settings = {{QStringLiteral("kSessionName"), QStringLiteral("JSESSIONID")},
                            {QStringLiteral("kSessionValue"), session},
                            {QStringLiteral("kClearCach0"), true},
                            {QStringLiteral("of another program"), QStringLiteral("kept")}};
    if (!address.isEmpty())
        settings.insert(QStringLiteral("jiraUrl"), address);
    return settings;
}

QByteArray Place::oldCookies()
{
    return "# Netscape HTTP Cookie File\nold.example.test\tFALSE\t/\tFALSE\t4102444800\tremember\told\n";
}

bool Place::areNewCookies(const QByteArray& cookies)
{
    // Later versions of libcurl let no cookie last for more than 400 days.
    static const QRegularExpression newCookie(
        QStringLiteral("\\Ajira\\.example\\.test\tFALSE\t/\tFALSE\t[0-9]{10}\tremember\tnew\n\\z"));
    return cookies.startsWith(oldCookies()) &&
           newCookie.match(QString::fromUtf8(cookies.mid(oldCookies().size()))).hasMatch();
}

void Place::reset(const QString& address, const QString& session)
{
    awaitServer();
    for (const char* folder : {"config", "data", "tmp", "work", "home"})
        empty(m_home.filePath(QLatin1String(folder)));
    if (!m_otherVolume.isEmpty())
        empty(m_otherVolume);
    write(settingsPath(), QJsonDocument(settingsOf(address, session)).toJson());
    write(cookiesPath(), oldCookies());
    for (const auto& attachment : server.attachments(issue))
        server.removeAttachment(attachment.id);
}

void Place::awaitServer() const
{
    for (int tries = 0; tries < 10'000 && server.openConnectionCount() > 0; ++tries)
        QThread::msleep(1);
}

QProcessEnvironment Place::environment() const
{
    QProcessEnvironment environment;
    const auto set = [&](const char* name, const QString& value) { environment.insert(QLatin1String(name), value); };
    set("PATH", qEnvironmentVariable("PATH"));
    set("HOME", m_home.filePath(QStringLiteral("home")));
    set("XDG_CONFIG_HOME", m_home.filePath(QStringLiteral("config")));
    set("XDG_DATA_HOME", m_home.filePath(QStringLiteral("data")));
    set("TMPDIR", m_home.filePath(QStringLiteral("tmp")));
    // Not what is looked at.
    set("XDG_CACHE_HOME", m_home.filePath(QStringLiteral("cache")));
    set("XDG_RUNTIME_DIR", m_home.path());
    set("LC_ALL", QStringLiteral("C.UTF-8"));
    set("TZ", QStringLiteral("UTC"));
    return environment;
}

QStringList Place::route() const
{
    return {QStringLiteral("--connect-to"), QStringLiteral("jira.example.test:80:127.0.0.1:%1").arg(server.port())};
}

std::optional<QJsonObject> Place::settings() const
{
    const QJsonDocument document = QJsonDocument::fromJson(bytesOf(settingsPath()));
    return document.isObject() ? std::optional(document.object()) : std::nullopt;
}

QByteArray Place::cookies() const
{
    return bytesOf(cookiesPath());
}

QStringList Place::leftovers(const QString& expected) const
{
    QStringList known = {settingsPath(), settingsPath() + QStringLiteral(".lock"), cookiesPath(),
                         cookiesPath() + QStringLiteral(".lock"), expected};
    QStringList left;
    QStringList folders = {m_home.filePath(QStringLiteral("config")), m_home.filePath(QStringLiteral("data")),
                           m_home.filePath(QStringLiteral("tmp")), work(), m_home.filePath(QStringLiteral("home"))};
    if (!m_otherVolume.isEmpty())
        folders << m_otherVolume;
    // The folder that all programs of the user share.
    const QString shared = m_home.filePath(QStringLiteral("tmp/TLJiraController-"));
    for (const QString& folder : std::as_const(folders)) {
        QDirIterator item(folder, Everything, QDirIterator::Subdirectories);
        while (item.hasNext()) {
            const QString path = item.next();
            bool isNumber = false;
            path.mid(shared.size()).toInt(&isNumber);
            const bool isOwnFolder = item.fileInfo().isDir() &&
                                     (path.endsWith(QLatin1String("/tljira")) || (path.startsWith(shared) && isNumber));
            if (!isOwnFolder && !known.contains(path))
                left << path;
        }
    }
    return left;
}

void Place::ageLeftovers() const
{
    for (const QString& path : leftovers())
        tests::makeOlder(path, std::chrono::hours(25));
}

} // namespace torture
