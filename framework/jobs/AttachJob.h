#pragma once

#include "client/TransferListener.h"
#include "framework/jobs/ClosingWatch.h"
#include "framework/jobs/Job.h"
#include "shell/TLJiraUpload.h"
#include "upload/UploadCompanion.h"

namespace jobs {

/// The window for attaching, and what becomes of the attempts in it.
class AttachJob : public Job, public UploadCompanion, public client::TransferListener
{
public:
    /// False where an earlier job comes to the front instead.
    static bool begin(const TLJiraJobs::Document& document, const Order& order);

    std::optional<qint64> documentSize() const override;
    Provider uploadBegins(const QString& key) override;
    void uploadEnded(const Ending& ending) override;

    void uploadAnswered(const QString& path, const std::optional<QJsonValue>& answer) override;

protected:
    TLJiraJobs::Result result() const override;
    std::shared_ptr<tljira::Window> window() const override;
    void closeWindow() override;
    void closeAfterDone() override;

private:
    AttachJob(const TLJiraJobs::Document& document, const Order& order);

    void open();
    bool isUploading() const;
    bool makesRoom();
    void windowCloses();

    const TLJiraJobs::Document m_document;
    std::shared_ptr<TLJiraUpload> m_entry;
    std::shared_ptr<ClosingWatch> m_watch;
    bool m_isClosed = false;
    /// What the server said of the file at that path.
    QString m_answeredPath;
    std::optional<QJsonValue> m_answer;
    TLJiraJobs::Result m_result;
};

} // namespace jobs
