#include "platform/foundation/Log.h"

namespace tljira {

const QLoggingCategory& logCategory()
{
    // Never destroyed: threads may still log while the process exits.
    static const QLoggingCategory& category = *new QLoggingCategory("platform.log", QtInfoMsg);
    return category;
}

void writeLog(const QString& line)
{
    qCInfo(logCategory).noquote().nospace() << line;
}

} // namespace tljira
