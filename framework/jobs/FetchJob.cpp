#include "framework/jobs/FetchJob.h"

#include "client/JAController.h"
#include "client/tasks/FetchedFile.h"
#include "client/tasks/TransferResult.h"
#include "framework/jobs/JobTexts.h"
#include "platform/toolkit/windows/Application.h"
#include "platform/toolkit/windows/WindowParts.h"

#include <QFileInfo>
#include <QLocale>

namespace jobs {

namespace FetchedFile = client::FetchedFile;

namespace {

std::weak_ptr<FetchJob>& newest()
{
    static std::weak_ptr<FetchJob> job;
    return job;
}

} // namespace

FetchJob::FetchJob(const Order& order)
    : Job(order)
{
}

std::shared_ptr<FetchJob> FetchJob::begin(const Order& order)
{
    if (const auto earlier = newest().lock(); earlier && !earlier->isOver()) {
        earlier->m_entry->showWindow();
        return nullptr;
    }
    const std::shared_ptr<FetchJob> job(new FetchJob(order));
    newest() = job;
    job->Job::begin();
    job->open();
    return job;
}

void FetchJob::open()
{
    const auto self = std::static_pointer_cast<FetchJob>(shared_from_this());
    m_entry = JMWindowController::init();
    const auto window = m_entry->window();
    m_watch = std::make_shared<ClosingWatch>(window->delegate(), [this] { finish(); });
    window->setDelegate(m_watch);
    tljira::WindowParts::of(*window).host.setPart(parent());
    m_entry->closeOnCancel();
    DownloadCompanion::join(*list(), self);
    client::TransferListener::add(self);
}

std::shared_ptr<JAListAttachedFilesWindow> FetchJob::list() const
{
    return m_entry->bodyViewController()->jaListAttachedWindow();
}

void FetchJob::show()
{
    m_entry->showWindow();
}

void FetchJob::run()
{
    const auto self = shared_from_this();
    // Any other window of the framework that closes ends the run.
    while (!isOver() && tljira::Application::runModalForWindow(m_entry->window()) != tljira::ModalResponse::Abort) {
    }
    endNow();
}

void FetchJob::downloadBegan(const JAAttachmentObject& attachment,
                             const std::shared_ptr<tljira::URLSessionDownloadTask>& task)
{
    m_task = task;
    m_name = attachment.name().value_or(QString());
    m_expectedSize = attachment.size();
    m_begun = {};
    m_begun.issueKey = list()->issueKey().value_or(QString());
    m_begun.attachmentId = attachment.ID().value_or(QString());
    m_begun.attachmentName = m_name;
    if (!m_result.isDone()) {
        m_result = {};
        m_result.issueKey = m_begun.issueKey;
    }
}

void FetchJob::downloadArrived(const tljira::URLSessionTask& task, const QString& path)
{
    if (&task != m_task.get())
        return;
    const qint64 size = QFileInfo(path).size();
    // The folder where it lies is emptied by the next download of any program.
    const FetchedFile::Place place = FetchedFile::take(path, m_name);
    if (place.problem) {
        taskEnded(task, client::writeError(JobTexts::notKept().arg(*place.problem)));
        return;
    }
    if (size != m_expectedSize) {
        const QString text =
            JobTexts::notTheDocument().arg(QLocale().toString(size), QLocale().toString(m_expectedSize));
        const tljira::Error error = client::notTheDocument(place.path, text);
        FetchedFile::remove(place.path);
        taskEnded(task, error);
        return;
    }
    if (!m_result.path.isEmpty())
        FetchedFile::remove(m_result.path);
    m_result = m_begun;
    m_result.outcome = TLJiraJobs::Outcome::Done;
    m_result.size = size;
    m_result.path = place.path;
    m_task = nullptr;
    if (has(TLJiraJobs::CloseWhenDone))
        closeSoon();
}

void FetchJob::taskEnded(const tljira::URLSessionTask& task, const std::optional<tljira::Error>& error)
{
    if (&task != m_task.get() || !error)
        return;
    m_task = nullptr;
    if (m_result.isDone())
        return;
    m_result = client::failure(*error);
    m_result.issueKey = m_begun.issueKey;
}

void FetchJob::closeWindow()
{
    m_entry->window()->widget()->close();
}

void FetchJob::closeAfterDone()
{
    if (!m_task && list()->window()->sheetParent())
        list()->cancalAction(nullptr);
}

std::shared_ptr<tljira::Window> FetchJob::window() const
{
    return m_entry->window();
}

TLJiraJobs::Result FetchJob::result() const
{
    return m_result;
}

} // namespace jobs
