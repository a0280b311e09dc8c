#include "platform/foundation/files/PathString.h"

#include <QByteArray>

#include <algorithm>

namespace tljira {

namespace {

constexpr qsizetype LongestFileName = 255;

/// A path of slashes only becomes "/".
QStringView withoutTrailingSlashes(QStringView path)
{
    while (path.size() > 1 && path.endsWith(u'/'))
        path.chop(1);
    return path;
}

/// Length of a leading "scheme://", 0 for a path.
qsizetype addressPrefixLength(const QString& path)
{
    const qsizetype colon = path.indexOf(QLatin1String("://"));
    const auto isSchemeCharacter = [](QChar c) {
        return (c.unicode() < 128 && c.isLetterOrNumber()) || c == u'+' || c == u'-' || c == u'.';
    };
    const QStringView scheme = QStringView(path).left(std::max<qsizetype>(colon, 0));
    const bool isScheme =
        !scheme.isEmpty() && scheme.front().isLetter() && std::all_of(scheme.begin(), scheme.end(), isSchemeCharacter);
    return isScheme ? colon + 3 : 0;
}

/// Where the extension's point stands, -1 without one. A point at the beginning makes a hidden file, not an extension.
qsizetype extensionPoint(QStringView trimmed)
{
    const qsizetype start = trimmed.lastIndexOf(u'/') + 1;
    const qsizetype point = trimmed.lastIndexOf(u'.');
    return point > start && trimmed.mid(start) != u".." ? point : -1;
}

/// At most `limit` bytes of UTF-8, cut between two characters.
QString shortened(const QString& text, qsizetype limit)
{
    QByteArray bytes = text.toUtf8();
    if (bytes.size() > limit) {
        const auto continuesCharacter = [](char byte) { return (byte & 0xC0) == 0x80; };
        qsizetype end = limit;
        while (end > 0 && continuesCharacter(bytes[end]))
            --end;
        bytes.truncate(end);
    }
    return QString::fromUtf8(bytes);
}

} // namespace

QString appendingPathComponent(const QString& path, const QString& component)
{
    const qsizetype kept = addressPrefixLength(path);
    const QString joined = path.isEmpty() ? component : path + u'/' + component;
    QString result = joined.left(kept);
    for (const QChar c : QStringView(joined).mid(kept)) {
        if (c != u'/' || !result.endsWith(u'/'))
            result += c;
    }
    return withoutTrailingSlashes(result).toString();
}

QString appendingPathExtension(const QString& path, const QString& extension)
{
    const QStringView trimmed = withoutTrailingSlashes(path);
    if (trimmed.isEmpty() || trimmed == u'/')
        return path;
    return trimmed.toString() + u'.' + extension;
}

QString deletingPathExtension(const QString& path)
{
    const QStringView trimmed = withoutTrailingSlashes(path);
    const qsizetype point = extensionPoint(trimmed);
    return (point < 0 ? trimmed : trimmed.left(point)).toString();
}

QString pathExtension(const QString& path)
{
    const QStringView trimmed = withoutTrailingSlashes(path);
    const qsizetype point = extensionPoint(trimmed);
    return point < 0 ? QString() : trimmed.mid(point + 1).toString();
}

QString deletingLastPathComponent(const QString& path)
{
    const QStringView trimmed = withoutTrailingSlashes(path);
    const qsizetype slash = trimmed.lastIndexOf(u'/');
    return withoutTrailingSlashes(trimmed.left(slash == 0 ? 1 : std::max<qsizetype>(slash, 0))).toString();
}

QString lastPathComponent(const QString& path)
{
    const QStringView trimmed = withoutTrailingSlashes(path);
    return trimmed == u'/' ? trimmed.toString() : trimmed.mid(trimmed.lastIndexOf(u'/') + 1).toString();
}

QString fileNameFromUntrustedText(const QString& name)
{
    QString safe = name;
    // With them "gpj.exe" reads "exe.jpg".
    safe.removeIf([](QChar c) { return (c >= u'\u202A' && c <= u'\u202E') || (c >= u'\u2066' && c <= u'\u2069'); });
    for (QChar& c : safe) {
        if (c == u'/' || c.category() == QChar::Other_Control)
            c = u'_';
    }
    if (safe.isEmpty() || safe == u"." || safe == u"..")
        return QStringLiteral("_");

    const qsizetype point = extensionPoint(safe);
    const QString ending = point < 0 ? QString() : safe.mid(point);
    const qsizetype room = LongestFileName - ending.toUtf8().size();
    if (room <= 0)
        return shortened(safe, LongestFileName);
    return shortened(safe.chopped(ending.size()), room) + ending;
}

} // namespace tljira
