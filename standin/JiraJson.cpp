#include "standin/JiraJson.h"

#include "standin/Text.h"

#include <QJsonArray>

namespace standin {

namespace {

QString text(const std::string& utf8)
{
    return QString::fromStdString(utf8);
}

QJsonObject overridden(QJsonObject object, const Override& change)
{
    for (auto member = change.set.begin(); member != change.set.end(); ++member)
        object.insert(member.key(), member.value());
    for (const auto& name : change.without)
        object.remove(text(name));
    return object;
}

QJsonObject avatarUrls(const std::string& base)
{
    const auto url = [&base](const char* size) { return text(base + "/secure/useravatar?" + size + "avatarId=10122"); };
    return {{QStringLiteral("48x48"), url("")},
            {QStringLiteral("24x24"), url("size=small&")},
            {QStringLiteral("16x16"), url("size=xsmall&")},
            {QStringLiteral("32x32"), url("size=medium&")}};
}

QJsonObject plainUserJson(const User& user, const std::string& base, const Options& options)
{
    QJsonObject object{{QStringLiteral("self"), text(base + "/rest/api/2/user?username=" + percentEncoded(user.name))},
                       {QStringLiteral("key"), text(user.name)},
                       {QStringLiteral("name"), text(user.name)},
                       {QStringLiteral("avatarUrls"), avatarUrls(base)},
                       {QStringLiteral("displayName"), text(user.displayName)},
                       {QStringLiteral("active"), true},
                       {QStringLiteral("timeZone"), QStringLiteral("Europe/Berlin")}};
    if (options.isCloud) {
        object.remove(QStringLiteral("key"));
        object.remove(QStringLiteral("name"));
        object.insert(QStringLiteral("accountId"), text("5b10ac8d82e05b22cc7d4ef5:" + user.name));
        object.insert(QStringLiteral("self"), text(base + "/rest/api/2/user?accountId=" + percentEncoded(user.name)));
    }
    if (options.emailAddresses)
        object.insert(QStringLiteral("emailAddress"), text(user.email));
    return object;
}

} // namespace

QJsonObject userJson(const User& user, const std::string& base, const Options& options)
{
    return overridden(plainUserJson(user, base, options), user.json);
}

QJsonObject ownUserJson(const User& user, const std::string& base, const Options& options)
{
    auto object = plainUserJson(user, base, options);
    const QJsonObject one{{QStringLiteral("size"), 1}, {QStringLiteral("items"), QJsonArray()}};
    object.insert(QStringLiteral("locale"), QStringLiteral("en_US"));
    object.insert(QStringLiteral("groups"), one);
    object.insert(QStringLiteral("applicationRoles"), one);
    object.insert(QStringLiteral("expand"), QStringLiteral("groups,applicationRoles"));
    return overridden(object, user.json);
}

QJsonObject attachmentJson(const AttachmentState& attachment, const std::string& base, const Options& options)
{
    const auto& record = attachment.record;
    const auto id = QString::number(record.id);
    const QJsonObject object{
        {QStringLiteral("self"), text(base + "/rest/api/2/attachment/") + id},
        {QStringLiteral("id"), options.numericIds ? QJsonValue(qint64(record.id)) : QJsonValue(id)},
        {QStringLiteral("filename"), text(record.fileName)},
        {QStringLiteral("author"), userJson(attachment.author, base, options)},
        {QStringLiteral("created"), text(record.created)},
        {QStringLiteral("size"), qint64(record.size)},
        {QStringLiteral("mimeType"), text(record.mimeType)},
        {QStringLiteral("content"), text(contentLink(record, base, options))}};
    return overridden(object, attachment.json);
}

QJsonObject issueJson(const IssueState& state, const std::string& base, const Options& options)
{
    QJsonArray attachments;
    for (const auto& attachment : state.attachments)
        attachments.append(attachmentJson(attachment, base, options));
    const auto& key = state.issue.key;
    const QJsonObject fields{
        {QStringLiteral("summary"), text(state.issue.summary)},
        {QStringLiteral("project"), QJsonObject{{QStringLiteral("key"), text(key.substr(0, key.find('-')))}}},
        {QStringLiteral("attachment"), attachments}};
    const auto id = QString::number(state.id);
    const QJsonObject object{
        {QStringLiteral("expand"), QStringLiteral("renderedFields,names,schema,operations,editmeta,changelog")},
        {QStringLiteral("id"), id},
        {QStringLiteral("self"), text(base + "/rest/api/2/issue/") + id},
        {QStringLiteral("key"), text(key)},
        {QStringLiteral("fields"), overridden(fields, state.issue.fields)}};
    return overridden(object, state.issue.json);
}

QJsonObject loginInfoJson(const LoginHistory& history, const Options& options)
{
    QJsonObject info{{QStringLiteral("failedLoginCount"), history.failedCount},
                     {QStringLiteral("loginCount"), history.count}};
    if (options.loginTimes && !history.lastFailed.empty())
        info.insert(QStringLiteral("lastFailedLoginTime"), text(history.lastFailed));
    if (options.loginTimes && !history.previous.empty())
        info.insert(QStringLiteral("previousLoginTime"), text(history.previous));
    return info;
}

std::string contentLink(const StoredAttachment& attachment, const std::string& base, const Options& options)
{
    if (options.isCloud)
        return base + "/rest/api/2/attachment/content/" + std::to_string(attachment.id);
    std::string name = percentEncoded(attachment.fileName);
    if (options.blanksAsPlus) {
        for (auto at = name.find("%20"); at != std::string::npos; at = name.find("%20", at))
            name.replace(at, 3, "+");
    }
    return base + "/secure/attachment/" + std::to_string(attachment.id) + "/" + name;
}

} // namespace standin
