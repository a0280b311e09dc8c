#include "cli/ServerAddress.h"

#include "client/JAController.h"
#include "platform/foundation/values/URL.h"

#include <QUrl>

namespace cli {

namespace {

int standardPort(const QString& scheme)
{
    return scheme.compare(QLatin1String("http"), Qt::CaseInsensitive) == 0 ? 80 : 443;
}

bool isHypertext(const QString& scheme)
{
    return scheme.compare(QLatin1String("http"), Qt::CaseInsensitive) == 0 ||
           scheme.compare(QLatin1String("https"), Qt::CaseInsensitive) == 0;
}

} // namespace

std::optional<QString> problemOfServerAddress(const QString& address)
{
    const auto url = tljira::URL::parse(address);
    if (!url || !url->scheme || !url->host || url->host->isEmpty() || !isHypertext(*url->scheme))
        return QStringLiteral("“%1” is no address of a server, such as https://jira.example.com.").arg(address);
    const int standard = standardPort(*url->scheme);
    if (QUrl(address).port(standard) != standard)
        return QStringLiteral("The server’s address cannot have a port: use --connect-to %1:%2:ADDR:PORT.")
            .arg(*url->host)
            .arg(standard);
    return std::nullopt;
}

bool hasServer(const JAController& client)
{
    const auto address = client.jiraHost();
    const auto url = address ? tljira::URL::parse(*address) : std::nullopt;
    return url && url->scheme;
}

} // namespace cli
