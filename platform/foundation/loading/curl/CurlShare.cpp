#include "platform/foundation/loading/curl/CurlShare.h"

#include <curl/mprintf.h>

#include <new>

namespace tljira {

namespace {

/// For want of memory libcurl answers as if there were no cookies, and those on the disk would be taken for removed.
void proveMemory()
{
    // Both of what a list of cookies is made with.
    char* const text = curl_maprintf("%s", "memory");
    curl_slist* const list = text ? curl_slist_append(nullptr, text) : nullptr;
    curl_free(text);
    if (!list)
        throw std::bad_alloc();
    curl_slist_free_all(list);
}

} // namespace

bool startCurl()
{
    static std::mutex mutex;
    static bool isStarted = false;
    const std::lock_guard lock(mutex);
    isStarted = isStarted || curl_global_init(CURL_GLOBAL_ALL) == CURLE_OK;
    return isStarted;
}

CurlShare::CurlShare()
{
    startCurl();
    m_easy = curl_easy_init();
    m_share = curl_share_init();
    if (!isUsable())
        return;
    curl_lock_function lock = [](CURL*, curl_lock_data, curl_lock_access, void* mutex) {
        static_cast<std::mutex*>(mutex)->lock();
    };
    curl_unlock_function unlock = [](CURL*, curl_lock_data, void* mutex) { static_cast<std::mutex*>(mutex)->unlock(); };
    curl_share_setopt(m_share, CURLSHOPT_LOCKFUNC, lock);
    curl_share_setopt(m_share, CURLSHOPT_UNLOCKFUNC, unlock);
    curl_share_setopt(m_share, CURLSHOPT_USERDATA, &m_dataMutex);
    curl_share_setopt(m_share, CURLSHOPT_SHARE, CURL_LOCK_DATA_COOKIE);
    curl_easy_setopt(m_easy, CURLOPT_SHARE, m_share);
    curl_easy_setopt(m_easy, CURLOPT_COOKIEFILE, "");
}

CurlShare::~CurlShare()
{
    curl_easy_cleanup(m_easy);
    curl_share_cleanup(m_share);
}

void CurlShare::reset(CURL* easy)
{
    // libcurl 7.88 forgets this list without freeing it.
    curl_easy_setopt(easy, CURLOPT_COOKIEFILE, nullptr);
    curl_easy_reset(easy);
}

std::vector<HTTPCookie> CurlShare::cookiesOf(CURL* easy)
{
    curl_slist* lines = nullptr;
    curl_easy_getinfo(easy, CURLINFO_COOKIELIST, &lines);
    if (!lines) {
        proveMemory();
        curl_easy_getinfo(easy, CURLINFO_COOKIELIST, &lines);
    }
    std::vector<HTTPCookie> cookies;
    for (const curl_slist* line = lines; line; line = line->next) {
        if (const auto cookie = HTTPCookie::fromNetscapeLine(line->data))
            cookies.push_back(*cookie);
    }
    curl_slist_free_all(lines);
    return cookies;
}

std::vector<HTTPCookie> CurlShare::cookies() const
{
    const std::lock_guard lock(m_easyMutex);
    return isUsable() ? cookiesOf(m_easy) : std::vector<HTTPCookie>();
}

void CurlShare::setCookie(const HTTPCookie& cookie)
{
    const std::lock_guard lock(m_easyMutex);
    if (isUsable())
        curl_easy_setopt(m_easy, CURLOPT_COOKIELIST, cookie.netscapeLine().constData());
}

void CurlShare::deleteAllCookies()
{
    const std::lock_guard lock(m_easyMutex);
    if (isUsable())
        curl_easy_setopt(m_easy, CURLOPT_COOKIELIST, "ALL");
}

} // namespace tljira
