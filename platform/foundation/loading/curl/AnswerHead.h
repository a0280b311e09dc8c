#pragma once

#include "platform/foundation/loading/HTTPURLResponse.h"

#include <QByteArray>
#include <QByteArrayView>

namespace tljira {

/// Collects the lines of an answer's head as they arrive.
class AnswerHead
{
public:
    /// False when the head grows beyond all reason.
    bool appendLine(QByteArrayView line);

    bool isTooLarge() const { return m_size > largestSize; }
    bool isComplete() const { return m_isComplete; }
    bool setsCookies() const { return m_setsCookies; }
    QByteArray valueOf(const char* field) const;

    /// The fields; status, address and length are libcurl's to say.
    const std::vector<std::pair<QString, QString>>& fields() const { return m_fields; }

private:
    /// Below libcurl's own bound, at which it only tells that the connection is lost.
    static constexpr qint64 largestSize = qint64(256) * 1024;

    std::vector<std::pair<QString, QString>> m_fields;
    qint64 m_size = 0;
    bool m_isComplete = false;
    bool m_setsCookies = false;
};

} // namespace tljira
