#pragma once

#include "framework/TLJiraJobs.h"
#include "shell/JMWindowController.h"
#include "shell/TLJiraUpload.h"
#include "tests/kit/Files.h"
#include "tests/kit/JiraTest.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace tests {

/// A host with a window, and its user, who is logged in and does the jobs.
class JobsTest : public JiraTest
{
protected:
    using Outcome = TLJiraJobs::Outcome;
    using Result = TLJiraJobs::Result;

    explicit JobsTest(const standin::Options& options = {});
    ~JobsTest() override;
    void SetUp() override;

    /// Remembers how a job ended.
    TLJiraJobs::Ended remember();
    bool waitForEnd(std::size_t count = 1);

    // Attaching.
    bool attach(const TLJiraJobs::Document& document, TLJiraJobs::Options options = TLJiraJobs::NoOptions);
    /// Opens the window and waits until it can be used.
    void open(const TLJiraJobs::Document& document, TLJiraJobs::Options options = TLJiraJobs::NoOptions);
    void open(TLJiraJobs::Options options = TLJiraJobs::NoOptions);
    JAUploadBodyViewController& panel() const { return *upload->bodyViewController(); }
    JAUploadingWindow& sheet() const { return *panel().jaUploadingWindow(); }
    void pressUpload(const QString& key = QStringLiteral("ABC-1"));
    bool waitForAttempt() const;
    void closeSheet() const;
    /// Opens, presses, and waits until the server holds the upload.
    void openAndHold(TLJiraJobs::Options options = TLJiraJobs::NoOptions);
    void holdUploads();
    /// What has arrived at the issue, in its order.
    std::vector<std::string> attached(const std::string& key = "ABC-1") const;
    /// Of all uploads that arrived whole, also of those that were refused: the body has these bytes.
    int uploadsWith(const std::string& bytes) const;

    // Fetching.
    bool fetch(TLJiraJobs::Options options = TLJiraJobs::NoOptions);
    JADownloadBodyViewController& fetchPanel() const { return *entry->bodyViewController(); }
    JAListAttachedFilesWindow& list() const { return *fetchPanel().jaListAttachedWindow(); }
    void openList();
    void pressDownload() const;
    bool waitForDownload() const;
    void leaveList() const;
    /// All of it.
    void fetchFirst();

    /// Of the private temporary folder, those that begin so.
    static QStringList foldersNamed(const QString& prefix);

    const QByteArray bytes = "warp and weft\n";
    /// More than what lies in the system's hands while a server does not read.
    const QByteArray heldBytes = QByteArray(16 << 20, 'w');
    std::unique_ptr<QWidget> host;
    std::shared_ptr<TLJiraUpload> upload;
    std::shared_ptr<JMWindowController> entry;
    std::vector<Result> ends;
};

/// Runs a window of the framework modally that is none of a job, as a host may, and takes these steps meanwhile.
/// Answers whether it went on running until its user closed it after them.
bool runsOnDuring(const std::function<void()>& steps);

/// As its user closes it, with the title bar's button.
void closeByTitleBar(const tljira::WindowController& controller);

} // namespace tests
