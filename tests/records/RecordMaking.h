#pragma once

#include "records/JAIssueObject.h"

#include <QJsonArray>
#include <QJsonObject>

namespace tests {

/// The attachments as they come from a server's answer.
inline JAIssueObject::Attachments attachments(const QJsonArray& array)
{
    const QJsonObject fields = {{QStringLiteral("attachment"), array}};
    return JAIssueObject::initWithDictionary({{QStringLiteral("fields"), fields}})->attachments();
}

inline QJsonObject attachment(const QString& id, const QString& name, const QString& created, qint64 size = 1)
{
    return {{QStringLiteral("id"), id},
            {QStringLiteral("filename"), name},
            {QStringLiteral("created"), created},
            {QStringLiteral("size"), size},
            {QStringLiteral("content"), QStringLiteral("http://h/") + id}};
}

} // namespace tests
