#include "cli/TerminalText.h"

namespace cli {

namespace {

bool isDangerous(QChar c)
{
    switch (c.category()) {
    case QChar::Other_Control:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
        return true;
    case QChar::Other_Format: {
        // Joiners and the soft hyphen, also of this category, belong to writing.
        const QChar::Direction direction = c.direction();
        return direction != QChar::DirBN;
    }
    default:
        return false;
    }
}

} // namespace

QString harmless(const QString& text)
{
    QString shown = text;
    for (QChar& c : shown) {
        if (isDangerous(c))
            c = u'?';
    }
    return shown;
}

QString harmlessLine(const QString& text)
{
    return harmless(text.simplified());
}

} // namespace cli
