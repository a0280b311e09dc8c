#pragma once

#include "client/JAController.h"

#include <QString>

namespace client {

/// What users call the server that the shared client speaks to, "jira.example.com"; empty while there is none.
inline QString serverName()
{
    // SCHEME://HOST/, the host without brackets even where it is a number.
    const QString address = JAController::sharedInstance()->jiraHost().value_or(QString());
    const QString host = address.section(QStringLiteral("://"), 1).chopped(address.isEmpty() ? 0 : 1);
    return host == u"(null)" ? QString() : host;
}

} // namespace client
