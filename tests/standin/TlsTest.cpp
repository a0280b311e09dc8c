#include "standin/Server.h"

#include <curl/curl.h>
#include <gtest/gtest.h>

#include <memory>

namespace {

using namespace standin;

struct Outcome
{
    CURLcode code = CURLE_OK;
    std::string body = {};
    std::string redirect = {};
};

/// Fetches a page, trusting `certificate` alone.
Outcome fetch(const Server& server, const std::string& certificate, const std::string& path = "login.jsp")
{
    const std::unique_ptr<CURL, decltype(&curl_easy_cleanup)> easy(curl_easy_init(), curl_easy_cleanup);
    Outcome outcome;
    const auto url = server.url() + path;
    curl_easy_setopt(easy.get(), CURLOPT_URL, url.c_str());
    curl_easy_setopt(easy.get(), CURLOPT_PROXY, "");
    curl_blob blob{.data = const_cast<char*>(certificate.data()), .len = certificate.size(), .flags = CURL_BLOB_COPY};
    if (!certificate.empty())
        curl_easy_setopt(easy.get(), CURLOPT_CAINFO_BLOB, &blob);
    using Write = std::size_t (*)(char*, std::size_t, std::size_t, void*);
    const Write write = [](char* bytes, std::size_t, std::size_t count, void* body) {
        static_cast<std::string*>(body)->append(bytes, count);
        return count;
    };
    curl_easy_setopt(easy.get(), CURLOPT_WRITEFUNCTION, write);
    curl_easy_setopt(easy.get(), CURLOPT_WRITEDATA, &outcome.body);
    outcome.code = curl_easy_perform(easy.get());
    const char* redirect = nullptr;
    if (curl_easy_getinfo(easy.get(), CURLINFO_REDIRECT_URL, &redirect) == CURLE_OK && redirect != nullptr)
        outcome.redirect = redirect;
    return outcome;
}

TEST(Tls, aSelfSignedCertificateIsRefusedByDefault)
{
    const Server server({.tls = Tls::selfSigned});
    EXPECT_EQ(fetch(server, {}).code, CURLE_PEER_FAILED_VERIFICATION);
}

TEST(Tls, aSelfSignedCertificateCanBeTrusted)
{
    const Server server({.tls = Tls::selfSigned});
    EXPECT_EQ(server.url().substr(0, 18), "https://127.0.0.1:");
    const auto outcome = fetch(server, server.certificate());
    EXPECT_EQ(outcome.code, CURLE_OK);
    EXPECT_NE(outcome.body.find("os_password"), std::string::npos);
}

TEST(Tls, anExpiredCertificateIsRefusedEvenWhenTrusted)
{
    const Server server({.tls = Tls::expired});
    EXPECT_EQ(fetch(server, server.certificate()).code, CURLE_PEER_FAILED_VERIFICATION);
}

TEST(Tls, eachServerHasACertificateOfItsOwn)
{
    const Server one({.tls = Tls::selfSigned});
    const Server two({.tls = Tls::selfSigned});
    EXPECT_NE(one.certificate(), two.certificate());
    EXPECT_NE(fetch(one, two.certificate()).code, CURLE_OK);
}

TEST(Tls, aBodyWithoutALengthEndsProperly)
{
    Server server({.tls = Tls::selfSigned});
    server.misbehave(Match::next(), Fault().withoutLength());
    EXPECT_EQ(fetch(server, server.certificate()).code, CURLE_OK);
}

TEST(Tls, aConnectionCutInTheBodyIsNoticed)
{
    Server server({.tls = Tls::selfSigned});
    server.misbehave(Match::next(), Fault().reset(Point::responseBody(5)));
    EXPECT_NE(fetch(server, server.certificate()).code, CURLE_OK);
}

TEST(Tls, linksAreHttps)
{
    const Server server({.tls = Tls::selfSigned});
    const auto outcome = fetch(server, server.certificate(), "secure/attachment/1/a");
    EXPECT_EQ(outcome.redirect.substr(0, server.url().size()), server.url());
}

} // namespace
