#include "framework/jobs/AttachJob.h"

#include "client/tasks/AttachmentName.h"
#include "client/tasks/DocumentCopy.h"
#include "client/tasks/FileDocument.h"
#include "client/tasks/TransferResult.h"
#include "framework/jobs/CloseFilter.h"
#include "framework/jobs/JobTexts.h"
#include "platform/toolkit/windows/WindowParts.h"

namespace jobs {

namespace {

std::weak_ptr<AttachJob>& newest()
{
    static std::weak_ptr<AttachJob> job;
    return job;
}

/// What the window says where there is no copy.
struct Texts
{
    const QString noCopy = JobTexts::noCopy();
    const QString notWritten = JobTexts::notWritten();
};

UploadCompanion::File fileOf(const std::shared_ptr<client::DocumentCopy>& copy, const std::optional<QString>& problem,
                             const Texts& texts)
{
    if (!problem)
        return {copy->path(), std::nullopt, copy};
    const QString reason = problem->isEmpty() ? texts.notWritten : *problem;
    return {std::nullopt, client::writeError(texts.noCopy.arg(reason)), nullptr};
}

} // namespace

AttachJob::AttachJob(const TLJiraJobs::Document& document, const Order& order)
    : Job(order)
    , m_document(document)
{
}

bool AttachJob::begin(const TLJiraJobs::Document& document, const Order& order)
{
    if (const auto earlier = newest().lock(); earlier && !earlier->makesRoom())
        return false;
    const std::shared_ptr<AttachJob> job(new AttachJob(document, order));
    newest() = job;
    job->Job::begin();
    job->open();
    return true;
}

void AttachJob::open()
{
    const auto self = std::static_pointer_cast<AttachJob>(shared_from_this());
    m_entry = TLJiraUpload::initWithName(m_document.name, std::nullopt);
    UploadCompanion::join(*m_entry->bodyViewController(), self);
    client::TransferListener::add(self);
    const auto window = m_entry->window();
    m_watch = std::make_shared<ClosingWatch>(window->delegate(), [this] { windowCloses(); });
    window->setDelegate(m_watch);
    if (has(TLJiraJobs::UploadOutlivesWindow)) {
        const auto hidesInstead = [weak = std::weak_ptr(self)] {
            const auto job = weak.lock();
            return job && !job->isOver() && job->isUploading();
        };
        window->widget()->installEventFilter(new CloseFilter(window->widget(), hidesInstead));
    }
    tljira::WindowParts::of(*window).host.setPart(parent());
    m_entry->closeOnCancel();
    m_entry->showWindow();
}

bool AttachJob::isUploading() const
{
    return m_entry->bodyViewController()->isUploading();
}

bool AttachJob::makesRoom()
{
    if (isOver() || m_isClosed)
        return true;
    if (isUploading()) {
        m_entry->showWindow();
        return false;
    }
    m_entry->window()->close();
    return true;
}

std::optional<qint64> AttachJob::documentSize() const
{
    return m_document.writer ? std::nullopt : std::optional<qint64>(m_document.bytes.size());
}

UploadCompanion::Provider AttachJob::uploadBegins(const QString& key)
{
    stayOpen();
    if (!m_result.isDone()) {
        m_result = {};
        m_result.issueKey = key;
    }
    if (!client::canBeAttachmentName(m_document.name)) {
        const auto error =
            tljira::makeFileError(tljira::FileError::WriteInvalidFileName, JobTexts::notAName().arg(m_document.name));
        return [error] { return File{std::nullopt, error, nullptr}; };
    }
    const auto copy = std::make_shared<client::DocumentCopy>();
    const Texts texts;
    // The host's code runs on the main thread, the disk is waited for on another.
    if (client::FileDocument::isWrittenByHost(m_document))
        return [file = fileOf(copy, copy->write(m_document), texts)] { return file; };
    return [copy, texts, document = m_document] { return fileOf(copy, copy->write(document), texts); };
}

void AttachJob::uploadAnswered(const QString& path, const std::optional<QJsonValue>& answer)
{
    m_answeredPath = path;
    m_answer = answer;
}

void AttachJob::uploadEnded(const Ending& ending)
{
    if (isOver())
        return;
    if (!ending.error) {
        m_result = client::attached(ending.key, ending.path == m_answeredPath ? m_answer : std::nullopt);
    } else if (!m_result.isDone()) {
        m_result = client::failure(*ending.error);
        m_result.issueKey = ending.key;
    }
    if (isUploading())
        return;
    if (m_isClosed)
        finish();
    else if (!m_entry->window()->isVisible())
        m_entry->window()->close();
    else if (!ending.error && has(TLJiraJobs::CloseWhenDone))
        closeSoon();
}

void AttachJob::windowCloses()
{
    m_isClosed = true;
    if (!isUploading())
        finish();
}

// A window that is hidden has no Cancel that could be pressed.
void AttachJob::closeWindow()
{
    if (isUploading())
        m_entry->bodyViewController()->jaUploadingWindow()->cancelAction();
    m_entry->window()->widget()->close();
}

void AttachJob::closeAfterDone()
{
    m_entry->window()->close();
}

std::shared_ptr<tljira::Window> AttachJob::window() const
{
    return m_entry->window();
}

TLJiraJobs::Result AttachJob::result() const
{
    return m_result;
}

} // namespace jobs
