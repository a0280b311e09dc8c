#include "cli/ServerAddress.h"

#include "client/JAController.h"
#include "platform/foundation/values/URL.h"
#include "records/ServerAddress.h"

namespace cli {

namespace {

bool isHypertext(const QString& scheme)
{
    return scheme.compare(QLatin1String("http"), Qt::CaseInsensitive) == 0 ||
           scheme.compare(QLatin1String("https"), Qt::CaseInsensitive) == 0;
}

bool isPort(const QString& text)
{
    bool isNumber = false;
    const ushort number = text.toUShort(&isNumber);
    return isNumber && number > 0 && text == QString::number(number);
}

} // namespace

std::optional<QString> problemOfServerAddress(const QString& address)
{
    const auto url = tljira::URL::parse(address);
    if (!url || !url->scheme || !url->host || url->host->isEmpty() || !isHypertext(*url->scheme))
        return QStringLiteral("“%1” is no address of a server, such as https://jira.example.com.").arg(address);
    if (url->port && !isPort(*url->port))
        return QStringLiteral("“%1” is no port of a server, such as 8443.").arg(*url->port);
    return std::nullopt;
}

QString serverName(const QString& address)
{
    const auto url = tljira::URL::parse(address);
    if (!url || !url->scheme || !url->host)
        return address;
    return records::baseOf(address).mid(url->scheme->size() + 3).chopped(1);
}

bool hasServer(const JAController& client)
{
    const auto address = client.jiraHost();
    const auto url = address ? tljira::URL::parse(*address) : std::nullopt;
    return url && url->scheme;
}

} // namespace cli
