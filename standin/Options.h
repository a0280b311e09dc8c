#pragma once

#include <cstdint>
#include <string>

namespace standin {

enum class Tls {
    none,
    selfSigned, ///< valid today, for "localhost" and 127.0.0.1, signed by nobody but itself
    expired,    ///< the same, but its last day was years ago
};

enum class Storage {
    keep, ///< uploaded files can be fetched again: small ones are in memory, others in a nameless temporary file
    sink, ///< uploaded bytes are counted (and digested) and dropped; fetching such a file answers 404
};

enum class Digest {
    none,
    crc32,  ///< eight hexadecimal digits
    sha256, ///< sixty-four hexadecimal digits
};

/// How a server is set up. Everything has a default that suits a test; what can change while it runs is in Server.
struct Options
{
    /// 0 takes any free port. The address is always 127.0.0.1.
    std::uint16_t port = 0;
    Tls tls = Tls::none;

    Storage storage = Storage::keep;
    /// What is computed over request bodies and over uploaded files.
    Digest digest = Digest::sha256;

    /// What "self" and "content" links begin with. Empty: the scheme and the Host header of each request. A path in it
    /// is where the server's resources start ("http://h/jira" serves /jira/rest/api/2/myself).
    std::string baseUrl = {};
    /// Where the server's resources start below each host, "/jira" for instance, if `baseUrl` is empty; links begin
    /// there too, and cookies belong there.
    std::string contextPath = {};

    /// As Jira Cloud does: nobody gets or has a session, API tokens go with e-mail addresses, access tokens are none,
    /// and users have an account ID in place of key and name.
    bool isCloud = false;
    /// Another host by which the server can be reached, "http://localhost:8080" for instance. Who asks for a file is
    /// sent there, and gets the bytes only without a sign-in. Empty: files come from where they are asked for.
    std::string contentsBase = {};

    /// A file above this many bytes is refused with 404 after it was read; 0 is no limit.
    std::int64_t maximumFileSize = 0;
    /// Wrong passwords in a row after which a user has to solve a captcha.
    int triesBeforeCaptcha = 3;
    /// The status of an XSRF refusal; some versions say 403, some 404.
    int xsrfStatus = 403;

    bool numericIds = false;    ///< attachment ids as JSON numbers instead of texts
    bool blanksAsPlus = false;  ///< blanks in content links as "+" instead of "%20"
    bool htmlWhenStale = false; ///< a REST call with a stale cookie gets its 401 as text/html
    bool loginPageForFiles =
        false;                  ///< a file asked for without a session: the login page with 200 instead of a redirect
    bool emailAddresses = true; ///< users are shown with their e-mail address
    bool loginTimes = true;     ///< login answers carry the two times once there is something to say

    std::int64_t recordedBodyBytes = 1 << 20; ///< how much of each request body is kept in its record
    std::size_t recordedRequests = 10000;     ///< older records are dropped

    /// Size of the kernel's socket buffers, 0 for the system's own. A small one makes a held upload stop early.
    int socketBufferBytes = 0;

    /// For measuring: uploads are only counted, and nothing is digested or kept of bodies.
    static Options forMeasuring()
    {
        Options options;
        options.storage = Storage::sink;
        options.digest = Digest::none;
        options.recordedBodyBytes = 0;
        return options;
    }
};

} // namespace standin
