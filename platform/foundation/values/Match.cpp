#include "platform/foundation/values/Match.h"

namespace tljira {

QRegularExpressionMatch match(const QRegularExpression& expression, const QString& text, qsizetype offset)
{
    const auto check =
        offset == 0 ? QRegularExpression::NoMatchOption : QRegularExpression::DontCheckSubjectStringMatchOption;
    QRegularExpressionMatch found = expression.match(text, offset, QRegularExpression::NormalMatch, check);
    if (!found.isValid() && text.isValidUtf16())
        qBadAlloc();
    return found;
}

} // namespace tljira
