#include "client/JAControllerState.h"
#include "client/KeyringLogin.h"
#include "constants/JAConstants.h"
#include "platform/foundation/files/PathString.h"
#include "platform/foundation/loading/HTTPCookieStorage.h"
#include "platform/foundation/values/JSON.h"
#include "records/SavedLogin.h"
#include "records/ServerAddress.h"
#include "records/TLJiraOptions.h"

namespace {

const QLatin1String schemeEnd("://");

tljira::URLSessionConfiguration configurationChosen()
{
    const TLJiraOptions options = TLJiraOptions::inUse();
    auto configuration = tljira::URLSessionConfiguration::defaultSessionConfiguration();
    configuration.routes = options.routes + configuration.routes;
    if (!options.userAgent.isEmpty())
        configuration.userAgent = options.userAgent;
    configuration.proxy = options.proxy;
    configuration.authorities = options.authorities.place;
    configuration.trustsSystemAuthorities = !options.authorities.replaceSystem;
    return configuration;
}

} // namespace

const std::shared_ptr<JAController>& JAController::sharedInstance()
{
    // Never destroyed: requests may be under way, and callers may come, until the last moment of the process.
    static const auto* const instance = new std::shared_ptr<JAController>(init());
    return *instance;
}

std::shared_ptr<JAController> JAController::init()
{
    const std::shared_ptr<JAController> newClient(new JAController);

    auto configuration = configurationChosen();
    configuration.HTTPShouldSetCookies = true;
    configuration.HTTPCookieStorage = client::cookieStorage();
    configuration.HTTPCookieAcceptPolicy = tljira::HTTPCookieAcceptPolicy::Always;
    newClient->setSession(tljira::URLSession::sessionWithConfiguration(configuration, newClient));
    return newClient;
}

JAController::JAController()
    : m_state(std::make_unique<State>())
{
    setJiraHost(records::savedLogin().stringForKey(kJiraURL).value_or(kJiraURL));
}

JAController::~JAController() = default;

std::optional<QString> JAController::jiraHost() const
{
    const std::optional<QString> address = m_state->jiraHost.get();
    if (!address)
        return std::nullopt;
    return records::baseOf(*address);
}

void JAController::setHost(const std::optional<QString>& host)
{
    records::savedLogin().setObject(host ? std::optional<QJsonValue>(*host) : std::nullopt, kJiraURL);
    setJiraHost(host);
}

std::optional<QString> JAController::url(const QString& path) const
{
    const std::optional<QString> base = jiraHost();
    if (!base)
        return std::nullopt;
    // Joined behind the scheme: joining paths would make one "/" of the two that follow it.
    const qsizetype hostStart = base->indexOf(schemeEnd) + schemeEnd.size();
    QString host = base->mid(hostStart);
    host.chop(1);
    if (host.contains(u':') && TLJiraOptions::inUse().address == TLJiraOptions::Address::SchemeAndHost)
        host = u'[' + host + u']';
    return base->left(hostStart) + tljira::appendingPathComponent(host + u'/', path);
}

std::optional<QJsonValue> JAController::jsonSerialization(const std::optional<QByteArray>& data)
{
    return data ? tljira::decodeJSON(*data) : std::nullopt;
}
