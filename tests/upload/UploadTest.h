#pragma once

#include "tests/kit/JiraTest.h"
#include "upload/JAUploadBodyViewController.h"

namespace tests {

/// The upload panel in a window of its own, with a document and a session.
class UploadTest : public JiraTest
{
protected:
    explicit UploadTest(const standin::Options& options = {});

    void SetUp() override;

    /// Types the key and presses the button.
    void upload(const QString& key = QStringLiteral("ABC-1"));
    /// The server reads this many bytes of the upload and then waits.
    void holdUploadsAfter(std::int64_t bytes);

    const std::shared_ptr<JAUploadingWindow>& sheet() const { return m_sheet; }
    bool isSheetUp() const;
    bool isDone() const { return m_sheet->sizeLabel()->text() == QStringLiteral("DONE"); }
    bool hasFailed() const { return ui::isShown(m_sheet->errorView()); }
    /// "DONE", the error's text, or nothing when neither came in time.
    QString outcome();

    LoneDocument document;
    std::shared_ptr<JAUploadBodyViewController> panel;
    std::shared_ptr<tljira::Window> window;

private:
    std::shared_ptr<JAUploadingWindow> m_sheet;
};

} // namespace tests
