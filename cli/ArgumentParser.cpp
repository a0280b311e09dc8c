#include "cli/ArgumentParser.h"

#include "cli/CommandTable.h"
#include "platform/foundation/loading/URLSessionConfiguration.h"

namespace cli {

namespace {

const QString connectTo = QStringLiteral("connect-to");
const QString proxy = QStringLiteral("proxy");
const QString cacert = QStringLiteral("cacert");
const QString userAgent = QStringLiteral("user-agent");
const QString json = QStringLiteral("json");
const QString all = QStringLiteral("all");
const QString documents = QStringLiteral("documents");
const QString name = QStringLiteral("name");
const QString to = QStringLiteral("to");
const QString passwordStdin = QStringLiteral("password-stdin");
const QString token = QStringLiteral("token");
const QString tokenStdin = QStringLiteral("token-stdin");
const QString keyring = QStringLiteral("keyring");
const QString verbose = QStringLiteral("verbose");
const QString version = QStringLiteral("version");
const QString help = QStringLiteral("help");
/// Those that only some commands take.
const QStringList commandOptions = {json, all, documents, name, to, passwordStdin, token, tokenStdin, keyring};

std::optional<QString> problemOfRoutes(const QStringList& routes)
{
    for (const QString& route : routes) {
        if (!tljira::URLSessionConfiguration::isRoute(route))
            return QStringLiteral("“%1” is not of the form HOST:PORT:ADDR:PORT.").arg(route);
    }
    return std::nullopt;
}

std::optional<QString> problemOfOperands(const CommandDescription& command, const QStringList& operands)
{
    if (operands.size() < command.operands.size() - command.optionalOperands)
        return QStringLiteral("%1 needs %2.").arg(command.name, command.operands.at(operands.size()));
    if (operands.size() > command.operands.size())
        return QStringLiteral("“%1” is one word too many for %2.")
            .arg(operands.at(command.operands.size()), command.name);
    return std::nullopt;
}

} // namespace

ArgumentParser::ArgumentParser()
{
    const QString someValue = QStringLiteral("value");
    for (const QString& flag : {json, all, passwordStdin, token, tokenStdin, keyring, verbose, version})
        m_parser.addOption({flag, {}});
    for (const QString& option : {connectTo, proxy, cacert, userAgent, documents, name, to})
        m_parser.addOption({option, {}, someValue});
    m_parser.addOption({{QStringLiteral("h"), help}, {}});
}

std::optional<Arguments> ArgumentParser::parse(const QStringList& words)
{
    if (!m_parser.parse(words)) {
        m_error = m_parser.errorText();
        return std::nullopt;
    }
    Arguments arguments = readOptions();
    if (arguments.request == Arguments::Request::Command) {
        if (const auto reason = problem(arguments)) {
            m_error = *reason;
            return std::nullopt;
        }
    }
    return arguments;
}

Arguments ArgumentParser::readOptions() const
{
    Arguments arguments;
    if (m_parser.isSet(help))
        arguments.request = Arguments::Request::Help;
    else if (m_parser.isSet(version))
        arguments.request = Arguments::Request::Version;
    arguments.operands = m_parser.positionalArguments();
    if (!arguments.operands.isEmpty())
        arguments.command = arguments.operands.takeFirst();
    arguments.routes = m_parser.values(connectTo);
    arguments.proxy = value(proxy);
    arguments.authorities = value(cacert);
    arguments.userAgent = value(userAgent);
    arguments.isVerbose = m_parser.isSet(verbose);
    arguments.wantsJSON = m_parser.isSet(json);
    arguments.wantsAll = m_parser.isSet(all);
    arguments.takesPasswordFromStandardInput = m_parser.isSet(passwordStdin);
    arguments.takesTokenFromStandardInput = m_parser.isSet(tokenStdin);
    arguments.wantsToken = m_parser.isSet(token) || arguments.takesTokenFromStandardInput;
    arguments.wantsKeyring = m_parser.isSet(keyring);
    arguments.documents = m_parser.values(documents);
    arguments.name = value(name);
    arguments.destination = value(to);
    return arguments;
}

std::optional<QString> ArgumentParser::value(const QString& option) const
{
    return m_parser.isSet(option) ? std::optional(m_parser.value(option)) : std::nullopt;
}

std::optional<QString> ArgumentParser::problem(const Arguments& arguments) const
{
    if (arguments.command.isEmpty())
        return QStringLiteral("No command is given.");
    const CommandDescription* const command = findCommand(arguments.command);
    if (!command)
        return QStringLiteral("“%1” is no command.").arg(arguments.command);
    if (const auto reason = problemOfRoutes(arguments.routes))
        return reason;
    if (const auto reason = problemOfOptions(*command))
        return reason;
    if (const auto reason = problemOfOperands(*command, arguments.operands))
        return reason;
    return command->problem(arguments);
}

std::optional<QString> ArgumentParser::problemOfOptions(const CommandDescription& command) const
{
    for (const QString& option : commandOptions) {
        if (m_parser.isSet(option) && !command.options.contains(option))
            return QStringLiteral("%1 takes no --%2.").arg(command.name, option);
    }
    return std::nullopt;
}

} // namespace cli
