#include "cli/DownloadCommand.h"

#include "cli/AttachmentSelection.h"
#include "cli/IssueQuestion.h"
#include "platform/foundation/MainQueue.h"

#include <QFileInfo>

#include <filesystem>

namespace cli {

DownloadCommand::DownloadCommand(const Arguments& arguments, const Environment& environment)
    : m_client(environment.client)
    , m_key(arguments.operands.at(0))
    , m_nameOrID(arguments.operands.at(1))
    , m_to(arguments.destination)
    , m_showsProgress(environment.showsProgress)
{
}

void DownloadCommand::start(const Completion& completion)
{
    m_completion = completion;
    askForIssue(*m_client, m_key, [this](const auto& issue, const Outcome& failure) {
        if (issue)
            choose(*issue);
        else
            m_completion(failure);
    });
}

void DownloadCommand::choose(const JAIssueObject& issue)
{
    m_attachment = findAttachment(issue.attachments(), m_nameOrID);
    if (!m_attachment) {
        m_completion(Outcome::failed(QStringLiteral("%1 has no attachment “%2”.").arg(m_key, m_nameOrID)));
        return;
    }
    m_destination = downloadDestination(m_to, m_attachment->name().value_or(QString()));
    m_place.emplace(m_destination);
    if (const auto error = m_place->prepare())
        m_completion(Outcome::failed(error));
    else
        fetch();
}

void DownloadCommand::fetch()
{
    m_progress.emplace(m_showsProgress);
    m_isUnderWay = true;
    m_client->downloadFile(
        m_attachment->downloadLink(),
        [this](qint64, qint64 bytesSoFar, const auto& error, bool isFinished) {
            follow(bytesSoFar, error, isFinished);
        },
        m_place->receivingPath());
}

void DownloadCommand::follow(qint64 bytesSoFar, const std::optional<tljira::Error>& error, bool isFinished)
{
    if (error) {
        m_isUnderWay = false;
        m_progress.reset();
        m_completion(m_hasTooMuch ? tooMuch() : Outcome::failed(error));
    } else if (isFinished) {
        m_isUnderWay = false;
        // The client puts the file in place when this call has returned.
        tljira::MainQueue::instance().addOperation([this] { examine(); });
    } else if (bytesSoFar > m_attachment->size()) {
        m_hasTooMuch = true;
        m_client->cancelDownload();
    } else {
        m_progress->update(bytesSoFar, m_attachment->size());
    }
}

Outcome DownloadCommand::tooMuch() const
{
    return Outcome::failed(QStringLiteral("The server sent more than the %1 bytes that “%2” has.")
                               .arg(m_attachment->size())
                               .arg(m_attachment->name().value_or(m_nameOrID)));
}

std::optional<Outcome> DownloadCommand::problemOfReceived() const
{
    const QString path = m_place->receivingPath();
    const QString name = m_attachment->name().value_or(m_nameOrID);
    std::error_code isUnknown;
    const auto size = static_cast<qint64>(std::filesystem::file_size(QFile::encodeName(path).toStdString(), isUnknown));
    if (isUnknown)
        return Outcome::failed(
            QStringLiteral("“%1” has arrived but couldn’t be saved in “%2”.").arg(name, QFileInfo(path).path()));
    if (size > m_attachment->size())
        return tooMuch();
    if (size == m_attachment->size())
        return std::nullopt;
    return Outcome::failed(QStringLiteral("The server sent %1 bytes for “%2” instead of %3.")
                               .arg(size)
                               .arg(name)
                               .arg(m_attachment->size()));
}

void DownloadCommand::examine()
{
    if (const auto problem = problemOfReceived()) {
        m_progress.reset();
        m_completion(*problem);
        return;
    }
    m_progress->finish();
    m_progress.reset();
    m_place->settle([this](const auto& error) {
        m_completion(error ? Outcome::failed(error) : Outcome::done(m_destination.toUtf8() + '\n'));
    });
}

bool DownloadCommand::cancel()
{
    m_client->cancelDownload();
    return m_isUnderWay;
}

} // namespace cli
