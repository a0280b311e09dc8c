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

QStringView placeOf(QStringView authority)
{
    return authority.mid(authority.lastIndexOf(u'@') + 1);
}

QStringView hostOf(QStringView place)
{
    if (place.startsWith(u'['))
        return place.mid(1, std::max<qsizetype>(place.indexOf(u']') - 1, 0));
    const qsizetype colon = place.indexOf(u':');
    return colon < 0 ? place : place.left(colon);
}

QStringView portOf(QStringView place)
{
    const qsizetype colon = place.indexOf(u':', std::max<qsizetype>(place.indexOf(u']'), 0));
    return colon < 0 ? QStringView() : place.mid(colon + 1);
}

QStringView pathOf(QStringView text)
{
    const auto end = std::find_if(text.begin(), text.end(), [](QChar c) { return c == u'?' || c == u'#'; });
    return text.left(end - text.begin());
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
    const QStringView authority = authorityOf(rest);
    const QStringView place = placeOf(authority);
    if (const QStringView host = hostOf(place); !host.isEmpty())
        url.host = host.toString();
    if (const QStringView port = portOf(place); !port.isEmpty())
        url.port = port.toString();
    url.path = pathOf(rest.mid(rest.startsWith(u"//") ? authority.size() + 2 : 0)).toString();
    return url;
}

} // namespace tljira
