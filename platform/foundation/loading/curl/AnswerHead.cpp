#include "platform/foundation/loading/curl/AnswerHead.h"

namespace tljira {

bool AnswerHead::appendLine(QByteArrayView line)
{
    m_size += line.size();
    if (isTooLarge())
        return false;
    const QByteArrayView text = line.trimmed();
    // Interim answers (1xx) come with heads of their own, and a chunked body may be followed by more fields.
    if (text.startsWith("HTTP/")) {
        m_fields.clear();
        m_isComplete = false;
        return true;
    }
    if (text.isEmpty()) {
        m_isComplete = true;
        return true;
    }
    const qsizetype colon = text.indexOf(':');
    if (colon <= 0)
        return true;
    m_fields.emplace_back(QString::fromUtf8(text.first(colon).trimmed()),
                          QString::fromUtf8(text.sliced(colon + 1).trimmed()));
    m_setsCookies = m_setsCookies || m_fields.back().first.compare(u"Set-Cookie", Qt::CaseInsensitive) == 0;
    return true;
}

QByteArray AnswerHead::valueOf(const char* field) const
{
    for (const auto& [name, value] : m_fields) {
        if (name.compare(QLatin1String(field), Qt::CaseInsensitive) == 0)
            return value.toUtf8();
    }
    return {};
}

} // namespace tljira
