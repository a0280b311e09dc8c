#include "records/ServerAddress.h"

#include "platform/foundation/values/Format.h"
#include "platform/foundation/values/Match.h"
#include "platform/foundation/values/URL.h"
#include "records/TLJiraOptions.h"

namespace records {

namespace {

/// `host:8443/jira`, from scheme to query.
QString placeOf(const tljira::URL& url)
{
    const QString host = url.host->contains(u':') ? u'[' + *url.host + u']' : *url.host;
    const QString port = url.port ? u':' + *url.port : QString();
    const QStringList folders = url.path.split(u'/', Qt::SkipEmptyParts);
    return (QStringList{host + port} + folders).join(u'/');
}

} // namespace

QString baseOf(const QString& address)
{
    const std::optional<tljira::URL> parsed = tljira::URL::parse(address);
    const tljira::URL url = parsed ? *parsed : tljira::URL();
    const bool isWhole = url.host && TLJiraOptions::inUse().address == TLJiraOptions::Address::Whole;
    return tljira::format(QStringLiteral("%@://%@/"), url.scheme, isWhole ? placeOf(url) : url.host);
}

std::optional<QString> originOf(const QString& address)
{
    // Neither a user nor an escaped character nor a backslash: readers do not agree where a host with these ends.
    // Never destroyed: other threads may ask while the process exits.
    static const auto& pattern = *new QRegularExpression(
        QStringLiteral(R"(\A(https?)://([\p{L}\p{M}\p{N}._-]++|\[[0-9a-f:.]+\])(?::([0-9]{1,5}))?(?:[/?#].*)?\z)"),
        QRegularExpression::CaseInsensitiveOption | QRegularExpression::DotMatchesEverythingOption);
    const auto match = tljira::match(pattern, address);
    if (!match.hasMatch())
        return std::nullopt;
    const QString scheme = match.captured(1).toLower();
    const QString port = match.captured(3);
    const int number = port.isEmpty() ? (scheme == u"https" ? 443 : 80) : port.toInt();
    return QStringLiteral("%1://%2:%3").arg(scheme, match.captured(2).toLower(), QString::number(number));
}

} // namespace records
