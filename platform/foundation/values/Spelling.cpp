#include "platform/foundation/values/Spelling.h"

#include <QByteArray>
#include <QList>

#include <algorithm>

namespace tljira {

namespace {

bool startsWith(QStringView text, const QString& beginning)
{
    return text.startsWith(beginning, Qt::CaseInsensitive);
}

QString hex(char32_t number, int digits)
{
    return QString::number(number, 16).rightJustified(digits, u'0');
}

/// "%C3%BC"
QString percentEncoded(const QString& character)
{
    QString text;
    for (const char byte : character.toUtf8())
        text += u'%' + hex(static_cast<unsigned char>(byte), 2);
    return text;
}

/// "\u00fc"
QString escaped(const QString& character)
{
    QString text;
    for (const QChar unit : character)
        text += QStringLiteral("\\u") + hex(unit.unicode(), 4);
    return text;
}

/// Behind a backslash.
QChar shortEscape(char32_t character)
{
    switch (character) {
    case U'\n':
        return u'n';
    case U'\r':
        return u'r';
    case U'\t':
        return u't';
    case U'"':
    case U'\'':
    case U'\\':
    case U'/':
        return QChar(static_cast<char16_t>(character));
    default:
        return {};
    }
}

QString nameInHTML(char32_t character)
{
    switch (character) {
    case U'&':
        return QStringLiteral("&amp;");
    case U'<':
        return QStringLiteral("&lt;");
    case U'>':
        return QStringLiteral("&gt;");
    case U'"':
        return QStringLiteral("&quot;");
    case U'\'':
        return QStringLiteral("&apos;");
    default:
        return {};
    }
}

/// "&#252;" or "&#xFC;", with any number of zeros in front.
qsizetype lengthOfReference(char32_t character, QStringView text)
{
    if (!text.startsWith(u"&#"))
        return 0;
    const qsizetype end = text.left(16).indexOf(u';');
    const bool isHex = text.mid(2, 1).compare(u"x", Qt::CaseInsensitive) == 0;
    const QStringView digits = end < 0 ? QStringView() : text.mid(isHex ? 3 : 2, end - (isHex ? 3 : 2));
    bool isNumber = false;
    const uint number = digits.toUInt(&isNumber, isHex ? 16 : 10);
    return isNumber && number == character ? end + 1 : 0;
}

/// Of the character at the beginning of `text`, however it is written; 0 if another one stands there.
qsizetype lengthOf(char32_t character, QStringView text)
{
    const QString itself = QString::fromUcs4(&character, 1);
    if (text.startsWith(u'%') || text.startsWith(u'\\')) {
        for (const QString& coded : {percentEncoded(itself), escaped(itself)}) {
            if (startsWith(text, coded))
                return coded.size();
        }
        const QChar escape = shortEscape(character);
        if (!escape.isNull() && text.size() > 1 && text[0] == u'\\' && text[1] == escape)
            return 2;
    }
    if (text.startsWith(u'&')) {
        const QString name = nameInHTML(character);
        if (!name.isEmpty() && startsWith(text, name))
            return name.size();
        if (const qsizetype length = lengthOfReference(character, text))
            return length;
    }
    if (character == U' ' && text.startsWith(u'+'))
        return 1;
    return text.startsWith(itself) ? itself.size() : 0;
}

bool isCode(QChar character)
{
    return character == u'%' || character == u'\\' || character == u'&' || character == u'+';
}

} // namespace

qsizetype spellingOf(const QString& word, QStringView text, qsizetype start)
{
    if (word.isEmpty() || start >= text.size() || (text[start] != word[0] && !isCode(text[start])))
        return 0;
    const QStringView rest = text.mid(start);
    if (rest.startsWith(word))
        return word.size();
    qsizetype length = 0;
    for (const char32_t character : word.toUcs4()) {
        const qsizetype step = lengthOf(character, rest.mid(length));
        if (step == 0)
            return 0;
        length += step;
    }
    return length;
}

} // namespace tljira
