#pragma once

#include "client/TransferListener.h"
#include "download/DownloadCompanion.h"
#include "framework/jobs/ClosingWatch.h"
#include "framework/jobs/Job.h"
#include "shell/JMWindowController.h"

namespace jobs {

/// The window for fetching, and what becomes of the downloads in it.
class FetchJob : public Job, public DownloadCompanion, public client::TransferListener
{
public:
    /// Null where an earlier job comes to the front instead. The window is still to be shown or run.
    static std::shared_ptr<FetchJob> begin(const Order& order);

    void show();
    /// Returns when the job has ended.
    void run();

    void downloadBegan(const JAAttachmentObject& attachment,
                       const std::shared_ptr<tljira::URLSessionDownloadTask>& task) override;
    void downloadArrived(const tljira::URLSessionTask& task, const QString& path) override;
    void taskEnded(const tljira::URLSessionTask& task, const std::optional<tljira::Error>& error) override;

protected:
    TLJiraJobs::Result result() const override;
    std::shared_ptr<tljira::Window> window() const override;
    void closeWindow() override;
    void closeAfterDone() override;

private:
    explicit FetchJob(const Order& order);

    void open();
    std::shared_ptr<JAListAttachedFilesWindow> list() const;

    std::shared_ptr<JMWindowController> m_entry;
    std::shared_ptr<ClosingWatch> m_watch;
    std::shared_ptr<tljira::URLSessionDownloadTask> m_task;
    /// Of the newest download, as the issue has it.
    QString m_name;
    qint64 m_expectedSize = 0;
    TLJiraJobs::Result m_begun;
    TLJiraJobs::Result m_result;
};

} // namespace jobs
