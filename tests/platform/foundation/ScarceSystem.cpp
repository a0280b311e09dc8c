#include "tests/platform/foundation/ScarceSystem.h"

#include <curl/curl.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <dlfcn.h>
#include <pthread.h>

namespace {

std::array<std::atomic<bool>, 8> refused = {};

std::atomic<bool>& isRefused(tests::Resource resource)
{
    return refused.at(static_cast<std::size_t>(resource));
}

template <typename Function>
Function real(Function, const char* name)
{
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

} // namespace

// Exported, so that the libraries of this program call this in place of the system's.
extern "C" [[gnu::visibility("default")]] int pthread_create(pthread_t* thread, const pthread_attr_t* attributes,
                                                             void* (*start)(void*), void* argument) noexcept
{
    if (isRefused(tests::Resource::Threads))
        return EAGAIN;
    static const auto create = real(&pthread_create, "pthread_create");
    return create(thread, attributes, start, argument);
}

extern "C" CURLcode curl_global_init(long flags)
{
    return isRefused(tests::Resource::Curl) ? CURLE_FAILED_INIT : real(&curl_global_init, "curl_global_init")(flags);
}

extern "C" CURL* curl_easy_init()
{
    return isRefused(tests::Resource::EasyHandles) ? nullptr : real(&curl_easy_init, "curl_easy_init")();
}

extern "C" CURLM* curl_multi_init()
{
    return isRefused(tests::Resource::MultiHandles) ? nullptr : real(&curl_multi_init, "curl_multi_init")();
}

extern "C" CURLSH* curl_share_init()
{
    return isRefused(tests::Resource::ShareHandles) ? nullptr : real(&curl_share_init, "curl_share_init")();
}

extern "C" CURLU* curl_url()
{
    return isRefused(tests::Resource::Addresses) ? nullptr : real(&curl_url, "curl_url")();
}

extern "C" CURLMcode curl_multi_wakeup(CURLM* multi)
{
    return isRefused(tests::Resource::WakeUps) ? CURLM_WAKEUP_FAILURE
                                               : real(&curl_multi_wakeup, "curl_multi_wakeup")(multi);
}

extern "C" CURLMcode curl_multi_poll(CURLM* multi, curl_waitfd* extra, unsigned count, int timeout, int* ready)
{
    return isRefused(tests::Resource::Polls)
               ? CURLM_UNRECOVERABLE_POLL
               : real(&curl_multi_poll, "curl_multi_poll")(multi, extra, count, timeout, ready);
}

namespace tests {

Scarcity::Scarcity(Resource resource)
    : m_resource(resource)
{
    isRefused(m_resource) = true;
}

Scarcity::~Scarcity()
{
    isRefused(m_resource) = false;
}

} // namespace tests
