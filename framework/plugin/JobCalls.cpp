#include "framework/plugin/JobCalls.h"

#include "platform/foundation/files/FileManager.h"
#include "upload/DocumentFolder.h"

namespace {

const QMap<QString, TLJiraJobs::Option>& knownOptions()
{
    static const QMap<QString, TLJiraJobs::Option> all = {
        {QStringLiteral("closeWhenDone"), TLJiraJobs::CloseWhenDone},
        {QStringLiteral("uploadOutlivesWindow"), TLJiraJobs::UploadOutlivesWindow},
    };
    return all;
}

QString nameOf(TLJiraJobs::Outcome outcome)
{
    switch (outcome) {
    case TLJiraJobs::Outcome::Done:
        return QStringLiteral("done");
    case TLJiraJobs::Outcome::Cancelled:
        return QStringLiteral("cancelled");
    case TLJiraJobs::Outcome::Failed:
        break;
    }
    return QStringLiteral("failed");
}

} // namespace

TLJiraJobs::Options JobCalls::options(const QVariantMap& named, QString& problem)
{
    TLJiraJobs::Options options = TLJiraJobs::NoOptions;
    for (auto choice = named.begin(); choice != named.end(); ++choice) {
        if (!knownOptions().contains(choice.key()))
            problem = QStringLiteral("This Jira plug-in has no option “%1”.").arg(choice.key());
        else if (choice.value().metaType() != QMetaType::fromType<bool>())
            problem = QStringLiteral("The option “%1” is either true or false.").arg(choice.key());
        else
            options.setFlag(knownOptions().value(choice.key()), choice.value().toBool());
    }
    return options;
}

QVariantMap JobCalls::map(const TLJiraJobs::Result& result)
{
    QVariantMap map{
        {QStringLiteral("outcome"), nameOf(result.outcome)},
        {QStringLiteral("serverSentence"), result.serverSentence},
        {QStringLiteral("issueKey"), result.issueKey},
        {QStringLiteral("attachmentId"), result.attachmentId},
        {QStringLiteral("attachmentName"), result.attachmentName},
        {QStringLiteral("size"), result.size},
        {QStringLiteral("path"), result.path},
        {QStringLiteral("error"), QString()},
        {QStringLiteral("errorDomain"), QString()},
        {QStringLiteral("errorCode"), qint64(0)},
    };
    if (result.error) {
        map[QStringLiteral("error")] = result.error->localizedDescription();
        map[QStringLiteral("errorDomain")] = result.error->domain;
        map[QStringLiteral("errorCode")] = result.error->code;
    }
    return map;
}

QVariantMap JobCalls::map(const TLJiraTask::Result& result, const JAIssueObject::Attachments& documents)
{
    QVariantList list;
    for (const auto& document : documents) {
        list.append(QVariantMap{
            {QStringLiteral("attachmentId"), document->ID().value_or(QString())},
            {QStringLiteral("attachmentName"), document->name().value_or(QString())},
            {QStringLiteral("size"), document->size()},
            {QStringLiteral("date"), document->date().value_or(QDateTime())},
        });
    }
    QVariantMap all = map(result);
    all.insert(QStringLiteral("documents"), list);
    return all;
}

QVariantMap JobCalls::map(const TLJiraTask::Result& result, const std::shared_ptr<const JAUser>& user)
{
    QVariantMap all = map(result);
    all.insert(QStringLiteral("userName"), user ? user->name().value_or(QString()) : QString());
    all.insert(QStringLiteral("displayName"), user ? user->displayName().value_or(QString()) : QString());
    all.insert(QStringLiteral("email"), user ? user->email().value_or(QString()) : QString());
    return all;
}

void JobCalls::removeHandedOver(const QString& path, const TLJiraJobs::Result& result)
{
    const bool wasTried = !result.issueKey.isEmpty();
    if (const auto folder = wasTried ? folderToRemove(path) : std::nullopt)
        tljira::FileManager::removeItemAtPath(*folder);
}
