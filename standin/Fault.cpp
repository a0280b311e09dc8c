#include "standin/Fault.h"

namespace standin {

Fault& Fault::status(int code, std::string body, std::string contentType)
{
    m_answer = Answer{code, std::move(body), std::move(contentType)};
    return *this;
}

Fault& Fault::raw(std::string bytes)
{
    m_raw = std::move(bytes);
    return *this;
}

Fault& Fault::header(std::string name, std::string value)
{
    m_headers.emplace_back(std::move(name), std::move(value));
    return *this;
}

Fault& Fault::fillerHeaders(std::int64_t bytes)
{
    constexpr std::int64_t lineBytes = 1024;
    constexpr std::int64_t punctuation = 4; // colon, blank and the line end
    for (std::int64_t line = 1; bytes > 0; ++line, bytes -= lineBytes) {
        const std::string name = "X-Filler-" + std::to_string(line);
        const auto valueBytes = lineBytes - punctuation - static_cast<std::int64_t>(name.size());
        m_headers.emplace_back(name, std::string(static_cast<std::size_t>(valueBytes), 'x'));
    }
    return *this;
}

Fault& Fault::redirect(std::string location, int code)
{
    return status(code).header("Location", std::move(location));
}

Fault& Fault::redirectToItself(int code)
{
    m_redirectsToItself = true;
    return status(code);
}

Fault& Fault::tooManyRequests(int retryAfterSeconds)
{
    return status(429, R"({"message":"Rate limit exceeded."})", "application/json;charset=UTF-8")
        .header("Retry-After", std::to_string(retryAfterSeconds))
        .header("X-RateLimit-Limit", "10")
        .header("X-RateLimit-Remaining", "0")
        .header("X-RateLimit-FillRate", "1")
        .header("X-RateLimit-Interval-Seconds", std::to_string(retryAfterSeconds));
}

Fault& Fault::beforeBody()
{
    m_beforeBody = true;
    return *this;
}

Fault& Fault::announce(std::int64_t difference)
{
    m_announce = difference;
    return *this;
}

Fault& Fault::withoutLength()
{
    m_withoutLength = true;
    return *this;
}

Fault& Fault::chunked(std::int64_t missing, std::size_t chunkBytes)
{
    m_chunks = Chunks{missing, chunkBytes};
    return *this;
}

Fault& Fault::gzip(std::int64_t missing)
{
    m_gzip = missing;
    return *this;
}

Fault& Fault::drip(std::size_t bytes, Milliseconds interval)
{
    m_drip = Pace{bytes, interval};
    return *this;
}

Fault& Fault::sip(std::size_t bytes, Milliseconds interval)
{
    m_sip = Pace{bytes, interval};
    return *this;
}

Fault& Fault::close(Point point)
{
    m_stops.push_back({point, Stop::Action::close, {}});
    return *this;
}

Fault& Fault::reset(Point point)
{
    m_stops.push_back({point, Stop::Action::reset, {}});
    return *this;
}

Fault& Fault::hold(Point point)
{
    m_stops.push_back({point, Stop::Action::hold, {}});
    return *this;
}

Fault& Fault::delay(Milliseconds duration, Point point)
{
    m_stops.push_back({point, Stop::Action::delay, duration});
    return *this;
}

} // namespace standin
