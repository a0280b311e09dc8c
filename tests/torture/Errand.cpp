#include "tests/torture/Errand.h"

#include <QDirIterator>
#include <QFileInfo>
#include <QJsonDocument>

namespace torture {

namespace {

const QString newAddress = QStringLiteral("http://jira.example.test/");
const QString oldAddress = QStringLiteral("http://old.example.test/");

QString textOf(const std::optional<QJsonObject>& settings)
{
    return settings ? QString::fromUtf8(QJsonDocument(*settings).toJson(QJsonDocument::Compact))
                    : QStringLiteral("not readable");
}

} // namespace

const std::vector<Errand::Kind>& Errand::kinds(bool inWindows)
{
    static const std::vector<Kind> windowKinds = {Kind::Attach, Kind::Fetch};
    static const std::vector<Kind> kinds = {Kind::Login,    Kind::Session,        Kind::Upload, Kind::Attachments,
                                            Kind::Download, Kind::DownloadAcross, Kind::Logout};
    return inWindows ? windowKinds : kinds;
}

QString Errand::name(Kind kind)
{
    switch (kind) {
    case Kind::Login:
        return QStringLiteral("login");
    case Kind::Session:
        return QStringLiteral("session");
    case Kind::Upload:
        return QStringLiteral("upload");
    case Kind::Attachments:
        return QStringLiteral("attachments");
    case Kind::Download:
        return QStringLiteral("download");
    case Kind::DownloadAcross:
        return QStringLiteral("download across");
    case Kind::Logout:
        return QStringLiteral("logout");
    case Kind::Attach:
        return QStringLiteral("attach in its window");
    case Kind::Fetch:
        return QStringLiteral("fetch in its window");
    }
    return {};
}

Errand::Errand(Kind kind, Place& place)
    : m_kind(kind)
    , m_place(place)
{
}

void Errand::prepare()
{
    if (m_kind == Kind::Login) {
        m_session = QLatin1String(Place::oldSession);
        m_place.reset(oldAddress, m_session);
        return;
    }
    if (m_session.isEmpty() || m_kind == Kind::Logout) {
        m_place.server.expireSessions();
        m_session = QString::fromStdString(m_place.server.openSession("anna"));
    }
    m_place.reset(newAddress, m_session);
    if (m_kind == Kind::Attachments || m_kind == Kind::Download || m_kind == Kind::DownloadAcross ||
        m_kind == Kind::Fetch) {
        m_place.server.addAttachment(Place::issue, {.fileName = Place::documentName,
                                                    .bytes = m_place.documentBytes().toStdString(),
                                                    .created = "2026-03-01T09:30:00.000+0000"});
    }
}

Command Errand::command() const
{
    const QString issue = QLatin1String(Place::issue);
    const QString document = QLatin1String(Place::documentName);
    const bool isAttach = m_kind == Kind::Attach;
    if (isAttach || m_kind == Kind::Fetch) {
        QProcessEnvironment environment = m_place.environment();
        environment.insert(QStringLiteral("TORTURE_WAITS"), QStringLiteral("1"));
        const QString job = isAttach ? QStringLiteral("attach") : QStringLiteral("fetch");
        return {QStringLiteral(TORTURE_WINDOW),
                {QString::number(m_place.server.port()), job, m_place.document()},
                environment,
                m_place.work(),
                {}};
    }
    Command command = {QStringLiteral(TLJIRA_PATH), m_place.route(), m_place.environment(), m_place.work(), {}};
    QStringList& words = command.arguments;
    switch (m_kind) {
    case Kind::Login:
        words << QStringList{QStringLiteral("login"), newAddress, QStringLiteral("anna"),
                             QStringLiteral("--password-stdin")};
        command.input = m_place.passwordFile();
        break;
    case Kind::Session:
    case Kind::Logout:
        words << name(m_kind);
        break;
    case Kind::Upload:
        words << QStringList{QStringLiteral("upload"), issue, m_place.document()};
        break;
    case Kind::Attachments:
        // Without the IDs, which are new each time.
        words << QStringList{QStringLiteral("attachments"), issue};
        break;
    case Kind::Download:
        words << QStringList{QStringLiteral("download"), issue, document};
        break;
    case Kind::DownloadAcross:
        words << QStringList{QStringLiteral("download"), issue, document, QStringLiteral("--to"),
                             m_place.otherVolume()};
        break;
    case Kind::Attach:
    case Kind::Fetch:
        break;
    }
    return command;
}

QString Errand::destination() const
{
    const QString document = QLatin1String(Place::documentName);
    if (m_kind == Kind::Download)
        return m_place.work() + u'/' + document;
    return m_kind == Kind::DownloadAcross ? m_place.otherVolume() + u'/' + document : QString();
}

Errand::Finding Errand::find() const
{
    switch (m_kind) {
    case Kind::Login:
        return findLogin();
    case Kind::Logout:
        return findLogout();
    case Kind::Session:
    case Kind::Attachments:
        break;
    case Kind::Fetch:
        if (const auto finding = findFetched(); finding.effect != Effect::None)
            return finding;
        break;
    case Kind::Upload:
    case Kind::Attach:
        if (const auto finding = findUpload(); finding.effect != Effect::None)
            return finding;
        break;
    case Kind::Download:
    case Kind::DownloadAcross:
        if (const auto finding = findDownload(); finding.effect != Effect::None)
            return finding;
        break;
    }
    return findNoChange();
}

Errand::Finding Errand::findNoChange() const
{
    if (m_place.settings() != Place::settingsOf(newAddress, m_session))
        return {Effect::Damage, QStringLiteral("settings: ") + textOf(m_place.settings())};
    if (m_place.cookies() != Place::oldCookies())
        return {Effect::Damage, QStringLiteral("cookies: ") + QString::fromUtf8(m_place.cookies())};
    return {};
}

Errand::Finding Errand::findLogin() const
{
    const auto settings = m_place.settings();
    const QByteArray cookies = m_place.cookies();
    const bool hasNewCookies = Place::areNewCookies(cookies);
    if (!hasNewCookies && cookies != Place::oldCookies())
        return {Effect::Damage, QStringLiteral("cookies: ") + QString::fromUtf8(cookies)};
    if (settings == Place::settingsOf(oldAddress, QLatin1String(Place::oldSession)))
        return {Effect::None};
    if (settings != Place::settingsOf(newAddress, QLatin1String(Place::newSession)))
        return {Effect::Damage, QStringLiteral("settings: ") + textOf(settings)};
    // Cookies come first, since they are of no use without the session.
    return hasNewCookies ? Finding{Effect::Whole} : Finding{Effect::WholeWithoutCookies};
}

Errand::Finding Errand::findUpload() const
{
    const auto attachments = m_place.server.attachments(Place::issue);
    if (attachments.empty())
        return {};
    if (attachments.size() > 1)
        return {Effect::PartialFile, QStringLiteral("attached twice")};
    const auto content = m_place.server.content(attachments[0].id);
    if (attachments[0].fileName != Place::documentName || content != m_place.documentBytes().toStdString())
        return {Effect::PartialFile, QStringLiteral("%1 bytes attached").arg(attachments[0].size)};
    const Finding rest = findNoChange();
    return rest.effect == Effect::None ? Finding{Effect::Whole} : rest;
}

Errand::Finding Errand::findDownload() const
{
    if (!QFileInfo::exists(destination()))
        return {};
    const QByteArray bytes = bytesOf(destination());
    if (bytes != m_place.documentBytes())
        return {Effect::PartialFile, QStringLiteral("%1 bytes fetched").arg(bytes.size())};
    const Finding rest = findNoChange();
    return rest.effect == Effect::None ? Finding{Effect::Whole} : rest;
}

/// The host says itself whether it has the document. Wherever one lies under its name, it is whole.
Errand::Finding Errand::findFetched() const
{
    QDirIterator file(m_place.root() + QStringLiteral("/tmp"), {QLatin1String(Place::documentName) + u'*'}, QDir::Files,
                      QDirIterator::Subdirectories);
    while (file.hasNext()) {
        const QByteArray bytes = bytesOf(file.next());
        if (bytes != m_place.documentBytes())
            return {Effect::PartialFile, QStringLiteral("%1 bytes in %2").arg(bytes.size()).arg(file.filePath())};
    }
    return {};
}

Errand::Finding Errand::findLogout() const
{
    const auto settings = m_place.settings();
    const bool hasAddress = settings == Place::settingsOf(newAddress, m_session);
    if (!hasAddress && settings != Place::settingsOf({}, m_session))
        return {Effect::Damage, QStringLiteral("settings: ") + textOf(settings)};
    const QByteArray cookies = m_place.cookies();
    const bool hasCookies = cookies == Place::oldCookies();
    if (!hasCookies && cookies != "# Netscape HTTP Cookie File\n")
        return {Effect::Damage, QStringLiteral("cookies: ") + QString::fromUtf8(cookies)};
    const bool hasSession = m_place.server.sessionCount() > 0;
    if (!hasAddress && !hasCookies && !hasSession)
        return {Effect::Whole};
    QStringList left;
    if (hasAddress)
        left << QStringLiteral("address");
    if (hasCookies)
        left << QStringLiteral("cookies");
    if (hasSession)
        left << QStringLiteral("session");
    return {Effect::Part, QStringLiteral("still there: ") + left.join(QStringLiteral(", "))};
}

} // namespace torture
