#include "client/tasks/FetchTask.h"

#include "client/CallIfSet.h"
#include "client/tasks/FetchedFile.h"
#include "client/tasks/TaskTexts.h"
#include "client/tasks/TransferResult.h"
#include "platform/foundation/files/FileManager.h"
#include "platform/foundation/files/PathString.h"
#include "platform/foundation/files/TemporaryDirectory.h"

#include <QFileInfo>
#include <QUuid>

#include <algorithm>
#include <utility>

namespace client {

FetchTask::FetchTask(const QString& issueKey, const QString& attachmentId, const TLJiraTask::Ended& ended,
                     const TLJiraTask::Progress& progress)
    : IssueTask(issueKey)
    , m_attachmentId(attachmentId)
    , m_ended(ended)
    , m_progress(progress)
{
}

void FetchTask::issueArrived(const JAIssueObject& issue)
{
    const auto& all = issue.attachments();
    const auto found = std::find_if(all.begin(), all.end(),
                                    [this](const auto& attachment) { return attachment->ID() == m_attachmentId; });
    if (found == all.end()) {
        failWith(QStringLiteral("%1 has no attachment “%2”.").arg(issueKey(), m_attachmentId));
        return;
    }
    m_attachment = *found;
    whenSignedIn([this] { download(); });
}

void FetchTask::download()
{
    TransferListener::add(weakFrom(this));
    // Where the file lies for the moment in which it is looked at; nobody else's file can be there. By such a name a
    // later run knows what a killed one has left.
    const QString name = QStringLiteral("Download_%1.tmp").arg(QUuid::createUuid().toString(QUuid::Id128));
    m_place = tljira::appendingPathComponent(tljira::temporaryDirectory(), name);
    client().downloadFile(
        m_attachment->downloadLink(),
        [weak = weakFrom(this)](qint64, qint64 bytes, const auto& error, bool isFinished) {
            const auto self = weak.lock();
            if (self && !self->isOver() && !error && !isFinished && bytes > 0)
                self->advance(bytes);
        },
        m_place);
}

void FetchTask::advance(qint64 bytes)
{
    const qint64 size = m_attachment->size();
    if (bytes > size) {
        failWith(QStringLiteral("The server sent more than the %1 bytes that the document has.").arg(size));
        stop();
        return;
    }
    callIfSet(m_progress, bytes, size);
}

void FetchTask::downloadArrived(const tljira::URLSessionTask&, const QString& path)
{
    if (path != m_place)
        return;
    if (!isOver())
        take();
    tljira::FileManager::removeItemAtPath(m_place);
}

void FetchTask::take()
{
    if (!QFileInfo::exists(m_place)) {
        fail(writeError(QString::fromLatin1(texts::notKept).arg(m_place)));
        return;
    }
    const qint64 size = QFileInfo(m_place).size();
    if (size != m_attachment->size()) {
        const QString text = QString::fromLatin1(texts::notTheDocument).arg(size).arg(m_attachment->size());
        fail(notTheDocument(m_place, text));
        return;
    }
    const QString name = m_attachment->name().value_or(QString());
    const FetchedFile::Place place = FetchedFile::take(m_place, name);
    if (place.problem) {
        fail(writeError(QString::fromLatin1(texts::notKept).arg(*place.problem)));
        return;
    }
    TLJiraResult done;
    done.outcome = TLJiraResult::Outcome::Done;
    done.attachmentId = m_attachmentId;
    done.attachmentName = name;
    done.size = size;
    done.path = place.path;
    end(done);
}

void FetchTask::taskEnded(const tljira::URLSessionTask& task, const std::optional<tljira::Error>& error)
{
    if (error && !isOver() && &task == client().downloadTask().get())
        fail(*error);
}

void FetchTask::tellHost()
{
    m_progress = nullptr;
    callIfSet(std::exchange(m_ended, nullptr), result());
}

} // namespace client
