#include "host/HostOptions.h"

#include <QCommandLineParser>

namespace tessaloom {

namespace {

const QString connectToOption = QStringLiteral("connect-to");
const QString wholeAddressOption = QStringLiteral("whole-address");
const QString tokenOption = QStringLiteral("token");
const QString keyringOption = QStringLiteral("keyring");
const QString documentsOption = QStringLiteral("documents");
const QString statusOption = QStringLiteral("status");
const QString darkOption = QStringLiteral("dark");
const QString helpOption = QStringLiteral("help");

void describe(QCommandLineParser& parser)
{
    parser.setApplicationDescription(QStringLiteral("A small editor that exchanges its documents with Jira."));
    parser.addOptions({
        {connectToOption, QStringLiteral("Reach the first host and port at the second; may be repeated."),
         QStringLiteral("HOST:PORT:ADDR:PORT")},
        {wholeAddressOption, QStringLiteral("Let port and path of the server's address count.")},
        {tokenOption, QStringLiteral("Log in with an API token instead of a password.")},
        {keyringOption, QStringLiteral("Keep the login in the desktop's keyring, and in no file.")},
        {documentsOption, QStringLiteral("List attachments with this extension, or \"all\"; may be repeated."),
         QStringLiteral("EXTENSION")},
        {statusOption, QStringLiteral("Show this in the status line."), QStringLiteral("TEXT")},
        {darkOption, QStringLiteral("Use dark colours.")},
        {{QStringLiteral("h"), helpOption}, QStringLiteral("Print this.")},
    });
    parser.addPositionalArgument(QStringLiteral("FILE"), QStringLiteral("The document to open."),
                                 QStringLiteral("[FILE]"));
}

TLJiraOptions choicesOf(const QCommandLineParser& parser)
{
    TLJiraOptions choices;
    if (parser.isSet(wholeAddressOption))
        choices.address = TLJiraOptions::Address::Whole;
    if (parser.isSet(tokenOption))
        choices.signIn = TLJiraOptions::SignIn::Token;
    if (parser.isSet(keyringOption))
        choices.secrets = TLJiraOptions::Secrets::Keyring;
    const QStringList extensions = parser.values(documentsOption);
    if (!extensions.isEmpty())
        choices.documents.clear();
    if (extensions.contains(QStringLiteral("all")))
        return choices;
    for (const QString& extension : extensions)
        choices.documents.push_back({extension});
    return choices;
}

QString problemOf(const HostOptions& options, const QStringList& files)
{
    for (const QString& route : options.routes) {
        if (!tljira::URLSessionConfiguration::isRoute(route))
            return QStringLiteral("'%1' is not HOST:PORT:ADDR:PORT.").arg(route);
    }
    if (files.size() > 1)
        return QStringLiteral("Unexpected argument '%1'.").arg(files.at(1));
    return {};
}

} // namespace

HostOptions HostOptions::parse(const QStringList& arguments)
{
    QCommandLineParser parser;
    describe(parser);
    HostOptions options;
    if (!parser.parse(arguments)) {
        options.error = parser.errorText();
        return options;
    }
    options.routes = parser.values(connectToOption);
    options.choices = choicesOf(parser);
    options.status = parser.value(statusOption);
    options.isDark = parser.isSet(darkOption);
    options.file = parser.positionalArguments().value(0);
    options.error = problemOf(options, parser.positionalArguments());
    return options;
}

QString HostOptions::help()
{
    QCommandLineParser parser;
    describe(parser);
    return parser.helpText() + u'\n';
}

} // namespace tessaloom
