#pragma once

#include <QString>

#include <vector>

namespace tljira {

/// The shape that a Unicode date pattern asks of a text's numbers. ICU's strict mode checks the values, yet takes
/// "2017-3-14" for "yyyy-MM-dd", blanks before a number, and fractions so long that it makes nonsense of them.
class DatePattern
{
public:
    explicit DatePattern(const QString& pattern);

    /// Whether `text` is made like the pattern up to the first field that is no number, a zone or a month's name say.
    bool fits(QStringView text) const;

private:
    /// A character that stands for itself, or a run of digits.
    struct Piece
    {
        QChar literal;
        qsizetype shortest = 1;
        qsizetype longest = 1;
        bool isFollowedByNumber = false;
    };

    static bool isNumber(QChar letter, qsizetype count);
    static Piece number(QChar letter, qsizetype count, bool isFollowedByNumber);
    static bool take(const Piece& piece, QStringView& rest);

    std::vector<Piece> m_pieces;
};

} // namespace tljira
