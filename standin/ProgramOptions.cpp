#include "standin/ProgramOptions.h"

#include <QCommandLineParser>

#include <algorithm>
#include <optional>

namespace standin {

namespace {

class Parser
{
public:
    Parser();

    ProgramOptions read(const QStringList& arguments);
    QString help() { return m_parser.helpText() + QLatin1Char('\n') + QString::fromStdString(FaultSpec::help()); }

private:
    void readServer();
    void readUsers();
    void readTokens();
    void readToken(const QString& value, std::string User::*kind);
    void readIssues();
    void readSynthetics();
    void readFaults();
    void completeDefaults();
    void fail(const QString& message);

    QCommandLineOption m_port{QStringLiteral("port"), QStringLiteral("Listen on this port; 0, any free one."),
                              QStringLiteral("N"), QStringLiteral("0")};
    QCommandLineOption m_user{QStringLiteral("user"), QStringLiteral("A user."), QStringLiteral("NAME:PASSWORD")};
    QCommandLineOption m_issue{QStringLiteral("issue"), QStringLiteral("An issue."), QStringLiteral("KEY")};
    QCommandLineOption m_attach{QStringLiteral("attach"), QStringLiteral("An attachment with the bytes of a file."),
                                QStringLiteral("KEY:FILE")};
    QCommandLineOption m_synthetic{
        QStringLiteral("synthetic"),
        QStringLiteral("An attachment whose bytes are made while they are sent. SIZE may end in K, M or G."),
        QStringLiteral("KEY:NAME:SIZE")};
    QCommandLineOption m_base{
        QStringLiteral("base"),
        QStringLiteral("What links in answers begin with, instead of what the request was sent to."),
        QStringLiteral("URL")};
    QCommandLineOption m_contextPath{QStringLiteral("context-path"),
                                     QStringLiteral("Where Jira's resources start, /jira for instance."),
                                     QStringLiteral("PATH")};
    QCommandLineOption m_cloud{
        QStringLiteral("cloud"),
        QStringLiteral(
            "Be a Jira Cloud: no sessions, API tokens with e-mail addresses (NAME@example.test) only, account IDs.")};
    QCommandLineOption m_contentsBase{
        QStringLiteral("contents-base"),
        QStringLiteral("Send who asks for a file to this address of the server, where the bytes are."),
        QStringLiteral("URL")};
    QCommandLineOption m_apiToken{QStringLiteral("api-token"),
                                  QStringLiteral("A user's token for Authorization: Basic."),
                                  QStringLiteral("NAME:TOKEN")};
    QCommandLineOption m_accessToken{QStringLiteral("access-token"),
                                     QStringLiteral("A user's token for Authorization: Bearer."),
                                     QStringLiteral("NAME:TOKEN")};
    QCommandLineOption m_sink{QStringLiteral("sink"), QStringLiteral("Count uploaded bytes and drop them.")};
    QCommandLineOption m_maximum{QStringLiteral("maximum-size"), QStringLiteral("Refuse larger files."),
                                 QStringLiteral("BYTES"), QStringLiteral("0")};
    QCommandLineOption m_tls{QStringLiteral("tls"), QStringLiteral("Serve https: selfsigned or expired."),
                             QStringLiteral("KIND")};
    QCommandLineOption m_certificate{QStringLiteral("certificate"),
                                     QStringLiteral("Write the certificate to this file."), QStringLiteral("FILE")};
    QCommandLineOption m_fault{QStringLiteral("fault"), QStringLiteral("Misbehave; see below."),
                               QStringLiteral("PATTERN=SPEC")};
    QCommandLineOption m_verbose{QStringLiteral("verbose"), QStringLiteral("Print a line for each request.")};
    QCommandLineOption m_help{{QStringLiteral("h"), QStringLiteral("help")}, QStringLiteral("Print this.")};
    QCommandLineParser m_parser;
    ProgramOptions m_result;
};

/// The text before and behind the first colon; both empty when there is none.
std::pair<QString, QString> halves(const QString& text)
{
    const auto colon = text.indexOf(QLatin1Char(':'));
    if (colon <= 0)
        return {};
    return {text.left(colon), text.mid(colon + 1)};
}

std::optional<std::int64_t> byteCount(QString text)
{
    std::int64_t unit = 1;
    const std::pair<char, std::int64_t> units[] = {{'K', 1 << 10}, {'M', 1 << 20}, {'G', 1 << 30}};
    for (const auto& [letter, bytes] : units) {
        if (text.endsWith(QLatin1Char(letter))) {
            unit = bytes;
            text.chop(1);
        }
    }
    bool isNumber = false;
    const std::int64_t number = text.toLongLong(&isNumber);
    const bool isUsable = isNumber && number >= 0 && number <= INT64_MAX / unit;
    return isUsable ? std::optional(number * unit) : std::nullopt;
}

Parser::Parser()
{
    m_parser.setApplicationDescription(
        QStringLiteral("A Jira on the loopback interface, for demonstrations and tests."));
    m_parser.addOptions({m_port, m_user, m_issue, m_attach, m_synthetic, m_base, m_contextPath, m_cloud, m_contentsBase,
                         m_apiToken, m_accessToken, m_sink, m_maximum, m_tls, m_certificate, m_fault, m_verbose,
                         m_help});
}

ProgramOptions Parser::read(const QStringList& arguments)
{
    if (!m_parser.parse(arguments))
        fail(m_parser.errorText());
    if (!m_parser.positionalArguments().isEmpty())
        fail(QStringLiteral("Unexpected argument '%1'.").arg(m_parser.positionalArguments().constFirst()));
    m_result.wantsHelp = m_parser.isSet(m_help);
    m_result.isVerbose = m_parser.isSet(m_verbose);
    m_result.certificateFile = m_parser.value(m_certificate).toStdString();
    readServer();
    readUsers();
    readIssues();
    readSynthetics();
    readFaults();
    completeDefaults();
    readTokens();
    return m_result;
}

/// Keeps the first thing that is wrong.
void Parser::fail(const QString& message)
{
    if (m_result.error.empty())
        m_result.error = message.toStdString();
}

void Parser::readServer()
{
    if (m_parser.isSet(m_sink))
        m_result.server = Options::forMeasuring();
    m_result.server.baseUrl = m_parser.value(m_base).toStdString();
    m_result.server.isCloud = m_parser.isSet(m_cloud);
    m_result.server.contentsBase = m_parser.value(m_contentsBase).toStdString();
    m_result.server.contextPath = m_parser.value(m_contextPath).toStdString();
    if (m_parser.isSet(m_contextPath) && !m_parser.value(m_contextPath).startsWith(QLatin1Char('/')))
        fail(QStringLiteral("'%1' does not begin with a slash.").arg(m_parser.value(m_contextPath)));
    bool isPort = false;
    m_result.server.port = m_parser.value(m_port).toUShort(&isPort);
    if (!isPort)
        fail(QStringLiteral("'%1' is no port.").arg(m_parser.value(m_port)));
    if (const auto maximum = byteCount(m_parser.value(m_maximum)))
        m_result.server.maximumFileSize = *maximum;
    else
        fail(QStringLiteral("'%1' is no size.").arg(m_parser.value(m_maximum)));
    const auto tls = m_parser.value(m_tls);
    if (tls == QStringLiteral("selfsigned"))
        m_result.server.tls = Tls::selfSigned;
    else if (tls == QStringLiteral("expired"))
        m_result.server.tls = Tls::expired;
    else if (m_parser.isSet(m_tls))
        fail(QStringLiteral("'%1' is no kind of certificate.").arg(tls));
}

void Parser::readUsers()
{
    for (const auto& value : m_parser.values(m_user)) {
        const auto [name, password] = halves(value);
        if (name.isEmpty())
            fail(QStringLiteral("'%1' is not NAME:PASSWORD.").arg(value));
        m_result.users.push_back({.name = name.toStdString(), .password = password.toStdString()});
    }
}

void Parser::readTokens()
{
    for (const auto& value : m_parser.values(m_apiToken))
        readToken(value, &User::apiToken);
    for (const auto& value : m_parser.values(m_accessToken))
        readToken(value, &User::accessToken);
}

void Parser::readToken(const QString& value, std::string User::*kind)
{
    const auto [name, token] = halves(value);
    const auto user = std::find_if(m_result.users.begin(), m_result.users.end(),
                                   [name = name.toStdString()](const User& each) { return each.name == name; });
    if (token.isEmpty())
        fail(QStringLiteral("'%1' is not NAME:TOKEN.").arg(value));
    else if (user == m_result.users.end())
        fail(QStringLiteral("There is no user '%1' for a token.").arg(name));
    else
        (*user).*kind = token.toStdString();
}

void Parser::readIssues()
{
    for (const auto& key : m_parser.values(m_issue))
        m_result.issues.push_back(key.toStdString());
    for (const auto& value : m_parser.values(m_attach)) {
        const auto [key, path] = halves(value);
        if (path.isEmpty())
            fail(QStringLiteral("'%1' is not KEY:FILE.").arg(value));
        m_result.files.push_back({key.toStdString(), path.toStdString()});
    }
}

void Parser::readSynthetics()
{
    for (const auto& value : m_parser.values(m_synthetic)) {
        const auto [key, rest] = halves(value);
        const auto colon = rest.lastIndexOf(QLatin1Char(':'));
        const auto size = byteCount(rest.mid(colon + 1));
        if (colon <= 0 || !size) {
            fail(QStringLiteral("'%1' is not KEY:NAME:SIZE.").arg(value));
            continue;
        }
        m_result.synthetics.push_back({key.toStdString(), rest.left(colon).toStdString(), *size});
    }
}

void Parser::readFaults()
{
    for (const auto& value : m_parser.values(m_fault)) {
        if (const auto spec = FaultSpec::parse(value.toStdString()))
            m_result.faults.push_back(*spec);
        else
            fail(QStringLiteral("'%1' is no fault.").arg(value));
    }
}

void Parser::completeDefaults()
{
    if (m_result.users.empty())
        m_result.users.push_back({.name = "demo", .password = "demo", .displayName = "Demo User"});
    auto& issues = m_result.issues;
    const auto add = [&issues](const std::string& key) {
        if (std::find(issues.begin(), issues.end(), key) == issues.end())
            issues.push_back(key);
    };
    for (const auto& file : m_result.files)
        add(file.issueKey);
    for (const auto& synthetic : m_result.synthetics)
        add(synthetic.issueKey);
    if (issues.empty())
        issues.push_back("DEMO-1");
}

} // namespace

ProgramOptions ProgramOptions::parse(const QStringList& arguments)
{
    return Parser().read(arguments);
}

QString ProgramOptions::help()
{
    return Parser().help();
}

} // namespace standin
