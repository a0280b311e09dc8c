#pragma once

#include "download/JAListAttachedFilesWindow.h"
#include "tests/kit/Files.h"
#include "tests/kit/JiraTest.h"

namespace tests {

/// The shared client, logged in.
class DownloadTest : public JiraTest
{
protected:
    explicit DownloadTest(const standin::Options& options = {});

    void SetUp() override;

    /// Adds a file to ABC-1 and answers its record.
    std::shared_ptr<const JAAttachmentObject> attach(const standin::NewAttachment& attachment);
};

/// A record as the server would send it.
std::shared_ptr<const JAAttachmentObject> attachment(const QJsonObject& json);
std::shared_ptr<const JAAttachmentObject> attachmentNamed(const QString& name);
JAListAttachedFilesWindow::Attachments attachmentsNamed(const QStringList& names);

/// A window for panels and sheets, on screen.
std::shared_ptr<tljira::Window> shownWindow(QWidget* content = nullptr);

QStringList names(const JAListAttachedFilesWindow::Attachments& attachments);
/// The titles of the rows that the table shows, from its first row on.
QStringList shownTitles(const JAListAttachedFilesWindow& list);
JAAttachedCell* cellAtRow(const JAListAttachedFilesWindow& list, qint64 row);

/// The visible button that Escape stands for.
QPushButton* closeButton(const tljira::Window& window);

} // namespace tests
