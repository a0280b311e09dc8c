#pragma once

#include "client/JAController.h"
#include "tests/client/RecordingDelegate.h"
#include "tests/kit/Files.h"
#include "tests/kit/Jira.h"
#include "tests/kit/LogCapture.h"
#include "tests/kit/Printers.h"
#include "tests/kit/WaitUntil.h"

#include <QTemporaryDir>

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace tests {

/// A client and the server that it reaches. What the client tells its callers is collected as `events`, in order.
class ClientTest : public testing::Test
{
protected:
    explicit ClientTest(const standin::Options& options = {});

    /// A session for the client, through the front door; leaves no events.
    void logIn();
    /// A session that the server never heard of, for requests whose bytes are compared.
    void saveSession(const char* name, const char* value);

    QString path(const char* name) const { return folder.filePath(QString::fromUtf8(name)); }
    QString writeFile(const char* name, const QByteArray& bytes) const;

    bool waitForEvents(std::size_t count);
    /// Until so many tasks have ended since the test or `logIn`, for those whose end is told to nobody.
    bool waitForEnds(qsizetype count);

    JAController::RequestCallBack requestCallBack();
    JAController::LoginCallBack loginCallBack();
    JAController::UserCallBack userCallBack();
    JAController::IssueCallBack issueCallBack();
    JAController::CompletionCallBack completionCallBack();
    /// Without the calls for parts of the file.
    JAController::DownloadCallBack downloadCallBack();

    LogCapture log;
    QTemporaryDir folder;
    Jira server;
    std::shared_ptr<JAController> client;
    std::vector<std::string> events;
    std::shared_ptr<RecordingDelegate> delegate = std::make_shared<RecordingDelegate>(events);

    /// What the last callback of a kind brought.
    std::optional<QByteArray> body;
    std::optional<tljira::HTTPURLResponse> response;
    std::optional<tljira::Error> error;
    std::shared_ptr<const JALoginObject> session;
    std::shared_ptr<const JAUser> user;
    std::shared_ptr<const JAIssueObject> issue;
};

/// "DOMAIN CODE", or "no error".
std::string shortText(const std::optional<tljira::Error>& error);

} // namespace tests
