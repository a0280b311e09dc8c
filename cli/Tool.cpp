#include "cli/Tool.h"

#include "cli/ArgumentParser.h"
#include "cli/AttachmentsCommand.h"
#include "cli/DownloadPlace.h"
#include "cli/Help.h"
#include "cli/LogOutput.h"
#include "cli/SavedInKeyring.h"
#include "cli/ServerAddress.h"
#include "cli/TerminalText.h"
#include "client/KeyringLogin.h"
#include "platform/console/StandardStreams.h"
#include "platform/foundation/MainQueue.h"
#include "platform/foundation/files/TemporaryDirectory.h"
#include "records/SavedLogin.h"
#include "records/SavedToken.h"
#include "records/TLJiraOptions.h"

#include <QTimer>

namespace cli {

using tljira::console::writeError;

namespace {

constexpr auto longestSleep = std::chrono::seconds(1);

bool isTokenSaved()
{
    const auto kind = savedInKeyring();
    return kind ? *kind == u"token" : records::savedToken().has_value();
}

/// A login says how it signs in, and where that is saved; what comes later goes by what it saved.
void chooseOptions(const Arguments& arguments)
{
    TLJiraOptions options{.address = TLJiraOptions::Address::Whole};
    options.documents = AttachmentsCommand::documentKinds(arguments.documents);
    options.userAgent = arguments.userAgent.value_or(QString());
    options.proxy = arguments.proxy;
    options.authorities = {arguments.authorities.value_or(QString()), arguments.authorities.has_value()};
    TLJiraOptions::use(options);
    const bool isLogin = arguments.command == u"login";
    if (isLogin ? arguments.wantsToken : isTokenSaved())
        options.signIn = TLJiraOptions::SignIn::Token;
    if (isLogin ? arguments.wantsKeyring : savedInKeyring().has_value())
        options.secrets = TLJiraOptions::Secrets::Keyring;
    TLJiraOptions::use(options);
}

Outcome withoutServer()
{
    if (const auto reason = records::savedLogin().failure())
        return Outcome::failed(QStringLiteral("The saved login couldn’t be read: %1.").arg(*reason));
    return Outcome::failed(QStringLiteral("No server is set: use tljira login SERVER USER first."));
}

} // namespace

Tool::Tool(tljira::console::InterruptSignal& interrupts)
    : m_interrupts(interrupts)
{
}

int Tool::run(const QStringList& words)
{
    ArgumentParser parser;
    const auto arguments = parser.parse(words);
    if (arguments)
        return report(perform(*arguments));
    return report({ExitStatus::WrongUsage, {}, parser.error() + QStringLiteral(" See tljira --help.")});
}

Outcome Tool::perform(const Arguments& arguments)
{
    switch (arguments.request) {
    case Arguments::Request::Help:
        return Outcome::done(helpText());
    case Arguments::Request::Version:
        return Outcome::done(versionText());
    case Arguments::Request::Command:
        break;
    }
    return performCommand(arguments);
}

Outcome Tool::performCommand(const Arguments& arguments)
{
    showLog(arguments.isVerbose);
    tljira::URLSessionConfiguration::setDefaultRoutes(arguments.routes);
    chooseOptions(arguments);
    DownloadPlace::removeLeftovers(tljira::temporaryDirectory());
    const Environment environment = {JAController::sharedInstance(), m_interrupts,
                                     tljira::console::isErrorTerminal() && !arguments.isVerbose};
    const CommandDescription& description = *findCommand(arguments.command);
    // A keyring that was locked may have kept what the last logout was to remove.
    const bool isLogoutAgain = !description.needsLogin && savedInKeyring();
    if (description.needsServer && !hasServer(*environment.client) && !isLogoutAgain)
        return withoutServer();

    m_interrupts.setHandler([this](int signalNumber) { interrupt(signalNumber); });
    m_command = description.make(arguments, environment);
    tljira::MainQueue::instance().addOperation([this, needsLogin = description.needsLogin] { start(needsLogin); });
    // Another thread wakes the event loop through a descriptor, which may fail.
    QTimer pulse;
    pulse.start(longestSleep);
    m_loop.exec();
    // Takes the command's private folders with it.
    m_command.reset();
    return m_interruptedStatus ? Outcome{*m_interruptedStatus, {}, {}} : *m_outcome;
}

void Tool::start(bool needsLogin)
{
    const auto ended = [this](const Outcome& outcome) { end(outcome); };
    if (!needsLogin || !client::isLoginUnread()) {
        m_command->start(ended);
        return;
    }
    client::readLogin([this, ended](const auto& error) {
        if (error)
            ended(Outcome::failed(error));
        else
            m_command->start(ended);
    });
}

/// The first signal lets a transfer clean up, another one does not wait for it.
void Tool::interrupt(int signalNumber)
{
    const bool isFirst = !m_interruptedStatus;
    if (isFirst)
        m_interruptedStatus = ExitStatus::SignalBase + signalNumber;
    if (!isFirst || !m_command->cancel())
        m_loop.quit();
}

void Tool::end(const Outcome& outcome)
{
    if (!m_outcome)
        m_outcome = outcome;
    m_loop.quit();
}

int Tool::report(const Outcome& outcome)
{
    if (!outcome.reason.isEmpty())
        writeError(harmlessLine(outcome.reason).toUtf8() + '\n');
    const auto problem = tljira::console::writeOutput(outcome.output);
    if (!problem)
        return outcome.status;
    writeError(QStringLiteral("The result couldn’t be written: %1.\n").arg(*problem).toUtf8());
    return ExitStatus::Failed;
}

} // namespace cli
