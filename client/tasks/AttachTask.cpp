#include "client/tasks/AttachTask.h"

#include "client/CallIfSet.h"
#include "client/IssueKey.h"
#include "client/tasks/AttachmentName.h"
#include "client/tasks/DocumentCopy.h"
#include "client/tasks/FileDocument.h"
#include "client/tasks/TaskTexts.h"
#include "client/tasks/TransferResult.h"
#include "platform/foundation/GlobalQueue.h"
#include "platform/foundation/MainQueue.h"

#include <utility>

namespace client {

AttachTask::AttachTask(const TLJiraDocument& document, const QString& issueKey, const TLJiraTask::Ended& ended,
                       const TLJiraTask::Progress& progress)
    : Task(issueKey)
    , m_document(document)
    , m_ended(ended)
    , m_progress(progress)
{
}

void AttachTask::start()
{
    if (lacksKey())
        return;
    if (!canBeAttachmentName(m_document.name)) {
        fail(tljira::makeFileError(tljira::FileError::WriteInvalidFileName,
                                   QString::fromUtf8(texts::notAName).arg(m_document.name)));
        return;
    }
    TransferListener::add(weakFrom(this));
    DocumentCopy::tidyOnce();
    // The host's code runs on the main thread, the disk is waited for on another.
    if (!FileDocument::isWrittenByHost(m_document)) {
        copyLater();
        return;
    }
    const auto copy = std::make_shared<DocumentCopy>();
    copied(copy, copy->write(m_document));
}

void AttachTask::copyLater()
{
    tljira::GlobalQueue::instance().addOperation([weak = weakFrom(this), document = m_document] {
        const auto copy = std::make_shared<DocumentCopy>();
        const auto problem = copy->write(document);
        tljira::MainQueue::instance().addOperation([weak, copy, problem] {
            if (const auto self = weak.lock())
                self->copied(copy, problem);
        });
    });
}

/// The copy goes with the last who holds it: by then it has been opened.
void AttachTask::copied(const std::shared_ptr<DocumentCopy>& copy, const std::optional<QString>& problem)
{
    m_document.bytes = {};
    if (isOver())
        return;
    if (problem) {
        const QString reason = problem->isEmpty() ? QString::fromLatin1(texts::notWritten) : *problem;
        fail(writeError(QString::fromLatin1(texts::noCopy).arg(reason)));
    } else {
        whenSignedIn([this, copy] { send(copy->path()); });
    }
}

void AttachTask::send(const QString& path)
{
    m_path = path;
    client().uploadFileInIssue(
        path, m_document.name, escapedKey(issueKey()),
        [weak = weakFrom(this)](const auto& error) {
            const auto self = weak.lock();
            if (!self)
                return;
            // The first that is reported counts.
            if (error)
                self->fail(*error);
            else
                self->end(attached(self->issueKey(), self->m_answer));
        },
        [weak = weakFrom(this)](qint64 bytes, qint64 ofBytes) {
            const auto self = weak.lock();
            if (self && !self->isOver())
                callIfSet(self->m_progress, bytes, ofBytes);
        });
}

void AttachTask::uploadAnswered(const QString& path, const std::optional<QJsonValue>& answer)
{
    if (path == m_path)
        m_answer = answer;
}

void AttachTask::tellHost()
{
    m_progress = nullptr;
    m_document.writer = nullptr;
    callIfSet(std::exchange(m_ended, nullptr), result());
}

} // namespace client
