#include "client/tasks/TransferResult.h"

#include "client/ServerSentence.h"
#include "platform/foundation/Secrets.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QVariant>

namespace client {

namespace {

/// Longer texts are no sentence for a user.
constexpr qint64 longestAnswer = 65536;

} // namespace

TLJiraResult failure(const tljira::Error& error)
{
    using Outcome = TLJiraResult::Outcome;
    TLJiraResult result;
    const bool isCancelled = error.domain == QLatin1String(tljira::URLErrorDomain) &&
                             error.code == static_cast<qint64>(tljira::URLError::Cancelled);
    result.outcome = isCancelled ? Outcome::Cancelled : Outcome::Failed;
    if (!isCancelled) {
        result.error = error;
        result.serverSentence = serverSentence(error);
    }
    return result;
}

TLJiraResult attached(const QString& issueKey, const std::optional<QJsonValue>& answer)
{
    const QJsonObject attachment = answer.value_or(QJsonValue()).toArray().first().toObject();
    TLJiraResult result;
    result.outcome = TLJiraResult::Outcome::Done;
    result.issueKey = issueKey;
    result.attachmentId = attachment.value(QLatin1String("id")).toVariant().toString();
    result.attachmentName = attachment.value(QLatin1String("filename")).toString();
    result.size = attachment.value(QLatin1String("size")).toInteger();
    return result;
}

tljira::Error notTheDocument(const QString& path, const QString& text)
{
    QFile file(path);
    QJsonObject answer;
    if (file.size() <= longestAnswer && file.open(QFile::ReadOnly))
        answer = tljira::withoutTokens(QJsonDocument::fromJson(file.readAll()).object()).toObject();
    auto error = tljira::makeError(QLatin1String(tljira::URLErrorDomain),
                                   static_cast<qint64>(tljira::URLError::CannotParseResponse), text);
    const QJsonObject own = error.userInfo.value_or(QJsonValue()).toObject();
    for (auto field = own.begin(); field != own.end(); ++field)
        answer.insert(field.key(), field.value());
    error.userInfo = answer;
    return error;
}

tljira::Error writeError(const QString& text)
{
    return tljira::makeFileError(tljira::FileError::WriteUnknown, text);
}

} // namespace client
