#pragma once

#include "platform/foundation/loading/HTTPCookie.h"

#include <curl/curl.h>

#include <mutex>
#include <vector>

namespace tljira {

/// Starts libcurl once for the process; every owner of a handle calls it first. False when it does not start, as
/// without memory; the next call tries again.
bool startCurl();

/// libcurl's cookie engine in a form that all transfers share. From any thread.
class CurlShare
{
public:
    CurlShare();
    ~CurlShare();
    CurlShare(const CurlShare&) = delete;
    CurlShare& operator=(const CurlShare&) = delete;

    CURLSH* handle() const { return m_share; }
    /// False when there was no memory for it. It then holds no cookies and takes up none.
    bool isUsable() const { return m_easy && m_share; }

    std::vector<HTTPCookie> cookies() const;
    void setCookie(const HTTPCookie& cookie);
    void deleteAllCookies();

    /// Makes a transfer's handle as good as new.
    static void reset(CURL* easy);
    /// The cookies of the engine that a transfer takes part in.
    static std::vector<HTTPCookie> cookiesOf(CURL* easy);

private:
    CURL* m_easy;
    CURLSH* m_share;
    /// Around the use of m_easy.
    mutable std::mutex m_easyMutex;
    /// libcurl's own, for the data that transfers share.
    std::mutex m_dataMutex;
};

} // namespace tljira
