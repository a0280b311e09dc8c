#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace standin {

/// A place in an exchange: after this many bytes of one of its three streams. Bytes are counted as they are on the
/// wire, so for a response body after chunking and compression (inside TLS, where that is used). A place that an
/// exchange never reaches has no effect. The head of the request has to be read in full to know which faults apply; for
/// what is to happen before that see Server::resetConnections.
struct Point
{
    enum class Stream { requestBody, responseHead, responseBody };
    Stream stream = Stream::responseHead;
    std::int64_t bytes = 0;

    static Point requestBody(std::int64_t bytes) { return {Stream::requestBody, bytes}; }
    static Point responseHead(std::int64_t bytes) { return {Stream::responseHead, bytes}; }
    static Point responseBody(std::int64_t bytes) { return {Stream::responseBody, bytes}; }
};

/// What happens at a point.
struct Stop
{
    enum class Action {
        close, ///< closes the connection as an ending process would
        reset, ///< sends RST
        hold,  ///< nothing moves until Server::release, or until the client goes away
        delay, ///< goes on after a while
    };
    Point point = {};
    Action action = Action::close;
    std::chrono::milliseconds duration = {};
};

/// One way to misbehave, put together from parts that combine freely:
///
///     Fault().status(503, "busy").delay(200ms, Point::responseHead(0))
///     Fault().gzip(8)                                // the proper answer, compressed, its last 8 bytes missing
///     Fault().status(413, page, "text/html").beforeBody().reset(Point::requestBody(65536))
///
/// Whatever is not mentioned stays as the proper answer has it.
class Fault
{
public:
    using Milliseconds = std::chrono::milliseconds;

    /// Answers this instead of what the request asks for; the request has no effect on users, sessions and files.
    Fault& status(int code, std::string body = {}, std::string contentType = "text/plain");
    /// Sends exactly these bytes instead of a response, then closes.
    Fault& raw(std::string bytes);
    /// Adds a response header, or replaces the one of that name.
    Fault& header(std::string name, std::string value);
    /// Adds headers X-Filler-1, X-Filler-2, … of 1 KiB each until they are this many bytes.
    Fault& fillerHeaders(std::int64_t bytes);
    /// Redirects to exactly this Location.
    Fault& redirect(std::string location, int code = 302);
    /// Redirects every matching request to its own address.
    Fault& redirectToItself(int code = 302);
    /// 429 with Retry-After and the X-RateLimit headers.
    Fault& tooManyRequests(int retryAfterSeconds);

    /// Sends the answer as soon as the request's head has been read; the body is read and dropped afterwards. Answers
    /// with status() if given, otherwise what a request without a body would get.
    Fault& beforeBody();

    /// Content-Length says this many bytes more (or, negative, less) than there are; the connection is closed
    /// afterwards.
    Fault& announce(std::int64_t difference);
    /// No Content-Length: the body ends where the connection does.
    Fault& withoutLength();
    /// Sends the body in chunks of this size, and leaves out the last `missing` bytes of it as it is on the wire; the
    /// last chunk itself is five bytes. The connection is closed when something is missing.
    Fault& chunked(std::int64_t missing = 0, std::size_t chunkBytes = 4096);
    /// Compresses the body, whatever the request accepts, and leaves out the last `missing` bytes of the result. The
    /// length announced is what is sent: only the compressed stream itself is cut short.
    Fault& gzip(std::int64_t missing = 0);

    /// Sends the response body in pieces of `bytes`, one each `interval`.
    Fault& drip(std::size_t bytes, Milliseconds interval);
    /// Reads the request body in pieces of `bytes`, one each `interval`.
    Fault& sip(std::size_t bytes, Milliseconds interval);

    Fault& close(Point point);
    Fault& reset(Point point);
    Fault& hold(Point point);
    Fault& delay(Milliseconds duration, Point point = Point::responseHead(0));

    struct Answer
    {
        int code = 200;
        std::string body = {};
        std::string contentType = {};
    };
    struct Pace
    {
        std::size_t bytes = 0;
        Milliseconds interval = {};
    };
    struct Chunks
    {
        std::int64_t missing = 0;
        std::size_t bytes = 0;
    };

    const std::optional<Answer>& answer() const { return m_answer; }
    const std::optional<std::string>& rawBytes() const { return m_raw; }
    const std::vector<std::pair<std::string, std::string>>& headers() const { return m_headers; }
    bool redirectsToItself() const { return m_redirectsToItself; }
    bool answersBeforeBody() const { return m_beforeBody; }
    bool hidesLength() const { return m_withoutLength; }
    const std::optional<std::int64_t>& announced() const { return m_announce; }
    const std::optional<Chunks>& chunks() const { return m_chunks; }
    const std::optional<std::int64_t>& gzipMissing() const { return m_gzip; }
    const std::optional<Pace>& dripPace() const { return m_drip; }
    const std::optional<Pace>& sipPace() const { return m_sip; }
    const std::vector<Stop>& stops() const { return m_stops; }

private:
    std::optional<Answer> m_answer;
    std::optional<std::string> m_raw;
    std::vector<std::pair<std::string, std::string>> m_headers;
    bool m_redirectsToItself = false;
    bool m_beforeBody = false;
    bool m_withoutLength = false;
    std::optional<std::int64_t> m_announce;
    std::optional<Chunks> m_chunks;
    std::optional<std::int64_t> m_gzip;
    std::optional<Pace> m_drip;
    std::optional<Pace> m_sip;
    std::vector<Stop> m_stops;
};

/// Which requests a fault is for.
struct Match
{
    std::string method = {}; ///< empty: any
    std::string path = "*";  ///< "*" stands for any run of characters, "/" included; the query is not looked at
    std::int64_t times = -1; ///< how many matching requests; negative: all of them
    std::int64_t skip = 0;   ///< how many matching requests are served properly before that

    static Match next(std::int64_t requests = 1) { return {.times = requests}; }
    static Match on(std::string path) { return {.path = std::move(path)}; }
    static Match on(std::string method, std::string path)
    {
        return {.method = std::move(method), .path = std::move(path)};
    }
    Match once() const { return limited(1); }
    Match limited(std::int64_t requests) const
    {
        Match match = *this;
        match.times = requests;
        return match;
    }
    Match after(std::int64_t requests) const
    {
        Match match = *this;
        match.skip = requests;
        return match;
    }
};

} // namespace standin
