#include "platform/foundation/values/URL.h"

#include <algorithm>

namespace tljira {

namespace {

bool cannotStandInAddress(QChar c)
{
    return c.isSpace() || c.category() == QChar::Other_Control || c == u'"';
}

bool isLetter(QChar c)
{
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z');
}

bool isSchemeCharacter(QChar c)
{
    return isLetter(c) || (c >= u'0' && c <= u'9') || c == u'+' || c == u'-' || c == u'.';
}

/// The part between "//" and the path, query or fragment.
QStringView authorityOf(QStringView text)
{
    if (!text.startsWith(u"//"))
        return {};
    const QStringView rest = text.mid(2);
    const auto end =
        std::find_if(rest.begin(), rest.end(), [](QChar c) { return c == u'/' || c == u'?' || c == u'#'; });
    return rest.left(end - rest.begin());
}

QStringView hostOf(QStringView authority)
{
    const QStringView place = authority.mid(authority.lastIndexOf(u'@') + 1);
    if (place.startsWith(u'['))
        return place.mid(1, std::max<qsizetype>(place.indexOf(u']') - 1, 0));
    const qsizetype colon = place.indexOf(u':');
    return colon < 0 ? place : place.left(colon);
}

} // namespace

std::optional<URL> URL::parse(const QString& text)
{
    if (text.isEmpty() || std::any_of(text.begin(), text.end(), cannotStandInAddress))
        return std::nullopt;

    URL url;
    QStringView rest = text;
    const qsizetype colon = rest.indexOf(u':');
    const QStringView scheme = rest.left(std::max<qsizetype>(colon, 0));
    if (!scheme.isEmpty() && isLetter(scheme.front()) && std::all_of(scheme.begin(), scheme.end(), isSchemeCharacter)) {
        url.scheme = scheme.toString();
        rest = rest.mid(colon + 1);
    }
    if (const QStringView host = hostOf(authorityOf(rest)); !host.isEmpty())
        url.host = host.toString();
    return url;
}

} // namespace tljira
