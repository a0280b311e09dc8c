#pragma once

#include "platform/foundation/Export.h"
#include "platform/foundation/loading/URLSessionConfiguration.h"
#include "platform/foundation/loading/URLSessionDelegate.h"
#include "platform/foundation/loading/URLSessionTask.h"

#include <memory>

namespace tljira {

/// Makes tasks and carries them out on one network thread of its own. Completions and delegate calls arrive on the main
/// thread, in order.
///
/// - A status of 400 or more is an answer like any other.
/// - Redirects are followed up to 20 times; 301 and 302 turn POST into GET, 303 turns everything into GET, 307 and 308
///   repeat the body. A "Cookie" or "Authorization" field of the request stays with the host it was meant for. Where
///   one leads from https to http, a request that has such a field or a body ends with an error, and others leave
///   without the jar's cookies.
/// - A "Cookie" field of the request and the jar's cookies leave in one header line, a pair that is in both only once.
/// - A body that is shorter than announced, or whose encoding is cut short, is an error. So is one that is to be held
///   in memory and has more than 64 MiB, or 4 MiB for a picture, and a head of more than 256 KiB.
/// - The authorities that may vouch for a server are the system's, or those in the file and the folder that the
///   environment names as SSL_CERT_FILE and SSL_CERT_DIR.
/// - Errors: URLErrorDomain for the transport; CocoaErrorDomain where a file of the body or of a download fails.
class TL_EXPORT URLSession : public std::enable_shared_from_this<URLSession>
{
public:
    /// The delegate is kept alive by tasks under way alone, until their ends have been told.
    static std::shared_ptr<URLSession> sessionWithConfiguration(const URLSessionConfiguration& configuration,
                                                                std::weak_ptr<URLSessionDelegate> delegate);

    /// Drops every task without a further call; waits for the network thread, but for no name server or file to read.
    ~URLSession();

    /// The task does nothing before `resume`. The completion runs once, on the main thread, before the delegate's
    /// didCompleteWithError.
    std::shared_ptr<URLSessionDataTask> dataTaskWithRequest(const URLRequest& request,
                                                            URLSessionDataTask::Completion completion);
    /// The task does nothing before `resume`. The delegate gets the file in didFinishDownloadingToURL.
    std::shared_ptr<URLSessionDownloadTask> downloadTaskWithRequest(const URLRequest& request);

    /// As it was when the session was made.
    const URLSessionConfiguration& configuration() const;

private:
    friend class URLSessionTask;

    URLSession(const URLSessionConfiguration& configuration, std::weak_ptr<URLSessionDelegate> delegate);

    // On behalf of a task, which holds its lock.
    void start(const std::shared_ptr<URLSessionTask>& task);
    void cancel(const URLSessionTask& task);
    void endUnstarted(const std::shared_ptr<URLSessionTask>& task);

    struct Parts;
    const std::unique_ptr<Parts> m_parts;
};

} // namespace tljira
