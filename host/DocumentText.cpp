#include "host/DocumentText.h"

#include <QStringDecoder>

#include <algorithm>

namespace tessaloom {

namespace {

constexpr char byteOrderMark[] = "\xEF\xBB\xBF";
constexpr qsizetype byteOrderMarkLength = 3;

/// Characters that QTextDocument does not keep as they are.
bool isChangedByEditor(QChar character)
{
    switch (character.unicode()) {
    case 0x0000:
    case u'\r':
    case 0x2028:
    case 0x2029:
    case 0xFDD0:
    case 0xFDD1:
        return true;
    default:
        return false;
    }
}

} // namespace

std::optional<DocumentText> DocumentText::fromBytes(const QByteArray& bytes)
{
    DocumentText document;
    document.hasByteOrderMark = bytes.startsWith(byteOrderMark);
    document.hasCarriageReturns = bytes.contains("\r\n");

    QStringDecoder decode(QStringDecoder::Utf8,
                          QStringDecoder::Flag::Stateless | QStringDecoder::Flag::ConvertInitialBom);
    document.text = decode(bytes.sliced(document.hasByteOrderMark ? byteOrderMarkLength : 0));
    document.text.replace(QLatin1String("\r\n"), QLatin1String("\n"));

    const bool isChanged = std::any_of(document.text.cbegin(), document.text.cend(), isChangedByEditor);
    if (isChanged || document.toBytes() != bytes)
        return std::nullopt;
    return document;
}

QByteArray DocumentText::toBytes() const
{
    QString lines = text;
    if (hasCarriageReturns)
        lines.replace(QLatin1Char('\n'), QLatin1String("\r\n"));
    return (hasByteOrderMark ? QByteArray(byteOrderMark) : QByteArray()) + lines.toUtf8();
}

} // namespace tessaloom
