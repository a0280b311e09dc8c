#pragma once

#include "platform/foundation/loading/URLRequest.h"
#include "platform/foundation/loading/URLSessionConfiguration.h"
#include "platform/foundation/loading/curl/AnswerBody.h"
#include "platform/foundation/loading/curl/AnswerHead.h"
#include "platform/foundation/loading/curl/BodySource.h"
#include "platform/foundation/loading/curl/CookieJar.h"
#include "platform/foundation/loading/curl/Proxy.h"
#include "platform/foundation/loading/curl/TransferObserver.h"

#include <curl/curl.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <memory>

namespace tljira {

/// One request on its way through libcurl, redirects included: each of them is a hop with a fresh set of options on the
/// same handle, so that it is decided here, and not in libcurl, what a further host gets to see. Lives on the network
/// thread once started.
class Transfer
{
public:
    using Clock = std::chrono::steady_clock;

    /// Without a jar the transfer takes part in no cookies but those of the request.
    Transfer(URLRequest request, const URLSessionConfiguration& configuration, std::shared_ptr<CookieJar> jar,
             AnswerBody::Destination destination, std::shared_ptr<TransferObserver> observer);
    ~Transfer();
    Transfer(const Transfer&) = delete;
    Transfer& operator=(const Transfer&) = delete;

    /// What a body calls, on another thread, when `resumeBody` or a new question whether it `mustAwaitBody` is due.
    void setBodyCallBack(std::function<void()> callBack) { m_bodyCallBack = std::move(callBack); }

    /// Sets the handle up for the hop that is next. False when that cannot be; the transfer has then ended.
    bool prepareHop(CURL* easy);

    /// There is more of the body for libcurl, which had come to its end.
    void resumeBody();

    /// Whether `finishHop` must wait, because nobody knows yet whether the body was sent as its file was.
    bool mustAwaitBody(CURLcode code);

    /// libcurl is done with the hop. True when another one must follow; otherwise the transfer has ended.
    bool finishHop(CURLcode code);

    /// Makes libcurl let go of the transfer at its next byte, so that a fast answer does not delay a cancel that is on
    /// its way. From any thread.
    void giveUp() { m_isGivenUp = true; }

    /// Ends the transfer with an error from outside, before it had a handle or once that is out of libcurl's hands.
    void abort(const Error& error);

    /// Forgets what has arrived, a file included.
    void discardBody() { m_body.reset(); }

    /// When the transfer counts as stalled unless a byte moves before.
    Clock::time_point deadline() const { return m_lastMove + m_timeout; }
    /// When progress that was held back is to be reported; never, if there is none.
    Clock::time_point reportDue() const;
    void reportIfDue();
    bool awaitsHead() const { return !m_head.isComplete(); }
    void noteMove() { m_lastMove = Clock::now(); }

private:
    struct HeaderList
    {
        ~HeaderList() { curl_slist_free_all(lines); }
        void append(const QByteArray& line) { lines = curl_slist_append(lines, line.constData()); }
        curl_slist* lines = nullptr;
    };

    static std::size_t readBody(char* buffer, std::size_t size, std::size_t count, void* transfer);
    static std::size_t takeHeadLine(char* bytes, std::size_t size, std::size_t count, void* transfer);
    static std::size_t takeBody(char* bytes, std::size_t size, std::size_t count, void* transfer);
    static int takeProgress(void* transfer, curl_off_t downloadTotal, curl_off_t downloaded, curl_off_t uploadTotal,
                            curl_off_t uploaded);

    std::optional<Error> checkAddress();
    std::optional<Error> checkConfiguration();
    bool usesJar() const;
    void setMethodAndBody();
    void setHeaders();
    void setCookies(const QString& explicitCookies);
    void setConnection();
    void setCallbacks();

    bool isRedirect() const;
    std::optional<Error> followRedirect();
    std::optional<Error> errorOf(CURLcode code);
    bool isHeadTooLarge(CURLcode code) const;
    bool isConfidential() const;
    HTTPURLResponse response() const;
    void reportProgress(bool isLast);
    void end(TransferResult result);

    URLRequest m_request;
    const URLSessionConfiguration m_configuration;
    const std::shared_ptr<CookieJar> m_jar;
    const AnswerBody::Destination m_destination;
    const std::shared_ptr<TransferObserver> m_observer;
    const Proxy m_proxy;
    const Clock::duration m_timeout;

    CURL* m_easy = nullptr;
    std::unique_ptr<HeaderList> m_headers;
    std::unique_ptr<HeaderList> m_routes;
    std::atomic<bool> m_isGivenUp = false;
    std::function<void()> m_bodyCallBack;
    std::unique_ptr<BodySource> m_source;
    bool m_isSourceAwaited = false;
    AnswerHead m_head;
    std::unique_ptr<AnswerBody> m_body;
    int m_redirects = 0;
    bool m_mayCarryCredentials = true;
    /// An "Authorization" is meant for one place alone: a step up from http to https leads to another.
    bool m_mayCarryAuthorization = true;
    bool m_hasLostBody = false;
    /// From https to http, where no cookie of a jar is to be seen either.
    bool m_hasSteppedDown = false;

    Clock::time_point m_lastMove = Clock::now();
    Clock::time_point m_lastReport;
    bool m_hasUnreported = false;
    TransferProgress m_progress;
    qint64 m_reportedSent = 0;
    curl_off_t m_downloaded = 0;
};

} // namespace tljira
