#include "cli/UploadCommand.h"

#include "client/IssueKey.h"
#include "client/tasks/AttachmentName.h"
#include "platform/foundation/files/PathString.h"
#include "platform/foundation/values/Data.h"

#include <QFileInfo>

namespace cli {

namespace {

/// The client sends an empty form for a file that it cannot read, and the server's answer to that says little.
std::optional<QString> problemOfFile(const QString& path)
{
    // Opening something else than a file could wait for ever.
    const QFileInfo info(path);
    if (info.exists() && !info.isFile())
        return QStringLiteral("“%1” is not a file.").arg(path);
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return QStringLiteral("“%1” couldn’t be opened: %2.").arg(path, file.errorString());
    if (!tljira::Data::contentsOfFile(path))
        return QStringLiteral("“%1” couldn’t be read.").arg(path);
    return std::nullopt;
}

} // namespace

QString UploadCommand::attachmentName(const Arguments& arguments)
{
    return arguments.name.value_or(tljira::lastPathComponent(arguments.operands.at(1)));
}

std::optional<QString> UploadCommand::problemOfName(const QString& name)
{
    if (client::canBeAttachmentName(name))
        return std::nullopt;
    return QStringLiteral("“%1” cannot be an attachment’s name; see --name.").arg(name);
}

UploadCommand::UploadCommand(const Arguments& arguments, const Environment& environment)
    : m_client(environment.client)
    , m_key(arguments.operands.at(0))
    , m_path(arguments.operands.at(1))
    , m_name(attachmentName(arguments))
    , m_showsProgress(environment.showsProgress)
{
}

void UploadCommand::start(const Completion& completion)
{
    if (const auto problem = problemOfFile(m_path)) {
        completion(Outcome::failed(*problem));
        return;
    }
    m_progress.emplace(m_showsProgress);
    m_client->uploadFileInIssue(
        m_path, m_name, client::escapedKey(m_key), [this, completion](const auto& error) { end(error, completion); },
        [this](qint64 sent, qint64 expected) {
            if (m_progress)
                m_progress->update(sent, expected);
        });
}

void UploadCommand::end(const std::optional<tljira::Error>& error, const Completion& completion)
{
    if (!error && m_progress)
        m_progress->finish();
    m_progress.reset();
    completion(error ? Outcome::failed(error) : Outcome::done());
}

bool UploadCommand::cancel()
{
    m_client->cancelUpload();
    return m_progress.has_value();
}

} // namespace cli
