#include "cli/JSONOutput.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace cli {

namespace {

QJsonValue orNull(const std::optional<QString>& text)
{
    return text ? QJsonValue(*text) : QJsonValue();
}

QJsonValue orNull(const std::optional<QDateTime>& date)
{
    return date ? QJsonValue(date->toUTC().toString(Qt::ISODateWithMs)) : QJsonValue();
}

QByteArray line(const QJsonDocument& document)
{
    return document.toJson(QJsonDocument::Compact) + '\n';
}

QJsonObject objectOf(const JAAttachmentObject& attachment)
{
    return {
        {QStringLiteral("id"), orNull(attachment.ID())},
        {QStringLiteral("name"), orNull(attachment.name())},
        {QStringLiteral("size"), attachment.size()},
        {QStringLiteral("created"), orNull(attachment.time())},
        {QStringLiteral("date"), orNull(attachment.date())},
        {QStringLiteral("content"), orNull(attachment.downloadLink())},
    };
}

} // namespace

QByteArray jsonOf(const JAUser& user)
{
    return line(QJsonDocument(QJsonObject{
        {QStringLiteral("name"), orNull(user.name())},
        {QStringLiteral("displayName"), orNull(user.displayName())},
        {QStringLiteral("email"), orNull(user.email())},
        {QStringLiteral("key"), orNull(user.key())},
        {QStringLiteral("timeZone"), orNull(user.timeZone())},
        {QStringLiteral("avatarUrl"), orNull(user.avatarUrl())},
    }));
}

QByteArray jsonOf(const JALoginObject& session, const std::optional<QString>& server)
{
    return line(QJsonDocument(QJsonObject{
        {QStringLiteral("valid"), true},
        {QStringLiteral("server"), orNull(server)},
        {QStringLiteral("loginCount"), session.loginCount()},
        {QStringLiteral("failedLoginCount"), session.failedLoginCount()},
        {QStringLiteral("previousLoginTime"), orNull(session.previousLoginTime())},
        {QStringLiteral("lastFailedLoginTime"), orNull(session.lastFailedLoginTime())},
    }));
}

QByteArray jsonOfToken(const std::optional<QString>& server)
{
    return line(QJsonDocument(QJsonObject{
        {QStringLiteral("valid"), true},
        {QStringLiteral("server"), orNull(server)},
        {QStringLiteral("loginCount"), QJsonValue()},
        {QStringLiteral("failedLoginCount"), QJsonValue()},
        {QStringLiteral("previousLoginTime"), QJsonValue()},
        {QStringLiteral("lastFailedLoginTime"), QJsonValue()},
    }));
}

QByteArray jsonOf(const JAIssueObject::Attachments& attachments)
{
    QJsonArray array;
    for (const auto& attachment : attachments)
        array.append(objectOf(*attachment));
    return line(QJsonDocument(array));
}

} // namespace cli
