#pragma once

#include "client/JAController.h"
#include "download/JAListAttachedFilesWindow.h"
#include "standin/Server.h"
#include "tests/support/LogCapture.h"
#include "tests/support/Printers.h"
#include "tests/support/WaitUntil.h"

#include <gmock/gmock.h>

namespace tests {

/// Lets everybody in this process reach the server as http://jira.example.test/.
void routeToServer(int port);

/// The shared client and the server that it is logged in to, where issue ABC-1 is known.
class DownloadTest : public testing::Test
{
protected:
    explicit DownloadTest(const standin::Options& options = {});

    void SetUp() override;

    /// Adds a file to ABC-1 and answers its record.
    std::shared_ptr<const JAAttachmentObject> attach(const standin::NewAttachment& attachment);
    void waitForHeldAnswer();

    LogCapture log;
    standin::Server server;
    std::shared_ptr<JAController> client;
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

void click(QAbstractButton* button);
/// The visible button that Escape stands for.
QPushButton* closeButton(const tljira::Window& window);

std::optional<QByteArray> contentsOf(const QString& path);
void writeFile(const QString& path, const QByteArray& bytes);

} // namespace tests
