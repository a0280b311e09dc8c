#include "platform/foundation/values/DatePattern.h"

#include <algorithm>
#include <limits>

namespace tljira {

namespace {

constexpr qsizetype Unlimited = std::numeric_limits<qsizetype>::max();
constexpr qsizetype LongestFraction = 9;

bool isFieldLetter(QChar c)
{
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z');
}

qsizetype runLength(QStringView text)
{
    const auto end = std::find_if(text.begin(), text.end(), [&](QChar c) { return c != text.front(); });
    return end - text.begin();
}

} // namespace

DatePattern::DatePattern(const QString& pattern)
{
    bool isQuoted = false;
    for (QStringView rest = pattern; !rest.isEmpty();) {
        const QChar c = rest.front();
        if (c == u'\'' && !rest.startsWith(u"''")) {
            isQuoted = !isQuoted;
            rest = rest.mid(1);
        } else if (isQuoted || !isFieldLetter(c)) {
            m_pieces.push_back({c});
            rest = rest.mid(c == u'\'' ? 2 : 1);
        } else {
            const qsizetype count = runLength(rest);
            if (!isNumber(c, count))
                return;
            rest = rest.mid(count);
            const bool isFollowedByNumber =
                !rest.isEmpty() && isFieldLetter(rest.front()) && isNumber(rest.front(), runLength(rest));
            m_pieces.push_back(number(c, count, isFollowedByNumber));
        }
    }
}

bool DatePattern::isNumber(QChar letter, qsizetype count)
{
    if (letter == u'M' || letter == u'L')
        return count <= 2;
    return QStringView(u"yudDHhKkmsS").contains(letter);
}

DatePattern::Piece DatePattern::number(QChar letter, qsizetype count, bool isFollowedByNumber)
{
    if (isFollowedByNumber)
        return {QChar(), count, count, true};
    if (letter == u'S')
        return {QChar(), 1, LongestFraction};
    if (letter == u'y' || letter == u'u' || letter == u'D')
        return {QChar(), 1, Unlimited};
    return {QChar(), count, std::max<qsizetype>(count, 2)};
}

bool DatePattern::take(const Piece& piece, QStringView& rest)
{
    qsizetype length = 0;
    if (!piece.literal.isNull())
        length = rest.startsWith(piece.literal) ? 1 : 0;
    else
        length = std::find_if_not(rest.begin(), rest.end(), [](QChar c) { return c.isDigit(); }) - rest.begin();
    if (piece.isFollowedByNumber)
        length = std::min(length, piece.longest);
    rest = rest.mid(length);
    return length >= piece.shortest && length <= piece.longest;
}

bool DatePattern::fits(QStringView text) const
{
    const bool takesAll =
        std::all_of(m_pieces.begin(), m_pieces.end(), [&](const Piece& piece) { return take(piece, text); });
    return takesAll && (text.isEmpty() || !text.front().isSpace());
}

} // namespace tljira
