#include "standin/FaultSpec.h"

#include "standin/Text.h"

#include <charconv>
#include <functional>
#include <map>

namespace standin {

namespace {

template <typename Number>
std::optional<Number> number(std::string_view text)
{
    if (text.starts_with('+'))
        text.remove_prefix(1);
    Number value = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    const bool isWhole = result.ec == std::errc() && result.ptr == text.data() + text.size();
    return isWhole ? std::optional(value) : std::nullopt;
}

/// What stands before and behind the separator; nothing behind when it is missing.
std::pair<std::string_view, std::string_view> cut(std::string_view text, char separator)
{
    const auto at = text.find(separator);
    if (at == std::string_view::npos)
        return {text, {}};
    return {text.substr(0, at), text.substr(at + 1)};
}

std::optional<Point> point(std::string_view text)
{
    const auto [stream, count] = cut(text, ':');
    const auto bytes = number<std::int64_t>(count);
    if (!bytes || *bytes < 0)
        return std::nullopt;
    if (stream == "request")
        return Point::requestBody(*bytes);
    if (stream == "head")
        return Point::responseHead(*bytes);
    if (stream == "body")
        return Point::responseBody(*bytes);
    return std::nullopt;
}

/// Collects the parts of one specification; each function answers whether it understood its argument.
class Builder
{
public:
    bool add(std::string_view part);
    FaultSpec finish();

    void setBody(std::string_view body) { m_body = body; }

private:
    using Number = std::int64_t;
    using Function = std::function<bool(Builder&, std::string_view)>;
    static const std::map<std::string, Function, std::less<>>& functions();

    template <typename Apply>
    static Function withNumber(Apply apply, Number least = 0)
    {
        return [apply, least](Builder& builder, std::string_view text) {
            const auto value = number<Number>(text);
            if (!value || *value < least)
                return false;
            apply(builder, *value);
            return true;
        };
    }
    template <typename Apply>
    static Function withPace(Apply apply)
    {
        return [apply](Builder& builder, std::string_view text) {
            const auto [bytes, interval] = cut(text, '/');
            const auto count = number<std::size_t>(bytes);
            const auto milliseconds = number<int>(interval);
            if (!count || *count == 0 || !milliseconds || *milliseconds < 0)
                return false;
            apply(builder, *count, std::chrono::milliseconds(*milliseconds));
            return true;
        };
    }
    bool addStop(std::string_view action, std::string_view place);
    bool addHeader(std::string_view text);

    FaultSpec m_spec;
    std::optional<int> m_status;
    std::string m_type = "text/plain";
    std::string m_body;
};

const std::map<std::string, Builder::Function, std::less<>>& Builder::functions()
{
    static const std::map<std::string, Function, std::less<>> table = {
        {"status", withNumber([](Builder& b, Number n) { b.m_status = static_cast<int>(n); }, 100)},
        {"type", [](Builder& b, std::string_view text) { return !(b.m_type = text).empty(); }},
        {"header", [](Builder& b, std::string_view text) { return b.addHeader(text); }},
        {"headers", withNumber([](Builder& b, Number n) { b.m_spec.fault.fillerHeaders(n); })},
        {"redirect",
         [](Builder& b, std::string_view text) { return b.m_spec.fault.redirect(std::string(text)), true; }},
        {"loop", [](Builder& b, std::string_view) { return b.m_spec.fault.redirectToItself(), true; }},
        {"ratelimit", withNumber([](Builder& b, Number n) { b.m_spec.fault.tooManyRequests(static_cast<int>(n)); })},
        {"early", [](Builder& b, std::string_view) { return b.m_spec.fault.beforeBody(), true; }},
        {"announce", withNumber([](Builder& b, Number n) { b.m_spec.fault.announce(n); }, INT64_MIN)},
        {"nolength", [](Builder& b, std::string_view) { return b.m_spec.fault.withoutLength(), true; }},
        {"chunked", withNumber([](Builder& b, Number n) { b.m_spec.fault.chunked(n); })},
        {"gzip", withNumber([](Builder& b, Number n) { b.m_spec.fault.gzip(n); })},
        {"drip", withPace([](Builder& b, std::size_t n, auto pause) { b.m_spec.fault.drip(n, pause); })},
        {"sip", withPace([](Builder& b, std::size_t n, auto pause) { b.m_spec.fault.sip(n, pause); })},
        {"times", withNumber([](Builder& b, Number n) { b.m_spec.match.times = n; })},
        {"skip", withNumber([](Builder& b, Number n) { b.m_spec.match.skip = n; })},
        {"method", [](Builder& b, std::string_view text) { return !(b.m_spec.match.method = text).empty(); }},
    };
    return table;
}

bool Builder::add(std::string_view part)
{
    const auto name = part.substr(0, part.find_first_of(":@"));
    if (name == "close" || name == "reset" || name == "hold" || name == "delay") {
        const auto [action, place] = cut(part, '@');
        return addStop(action, place);
    }
    const auto argument = cut(part, ':').second;
    const auto found = functions().find(name);
    if (found == functions().end())
        return false;
    const bool isOptional = name == "gzip" || name == "chunked";
    return found->second(*this, isOptional && argument.empty() ? "0" : argument);
}

bool Builder::addStop(std::string_view action, std::string_view place)
{
    const auto where = point(place);
    if (!where)
        return false;
    const auto [name, argument] = cut(action, ':');
    if (name == "close")
        m_spec.fault.close(*where);
    else if (name == "reset")
        m_spec.fault.reset(*where);
    else if (name == "hold")
        m_spec.fault.hold(*where);
    else if (const auto milliseconds = number<int>(argument); name == "delay" && milliseconds)
        m_spec.fault.delay(std::chrono::milliseconds(*milliseconds), *where);
    else
        return false;
    return true;
}

bool Builder::addHeader(std::string_view text)
{
    const auto [name, value] = cut(text, '=');
    m_spec.fault.header(std::string(name), std::string(value));
    return !name.empty();
}

FaultSpec Builder::finish()
{
    if (m_status)
        m_spec.fault.status(*m_status, m_body, m_type);
    return m_spec;
}

} // namespace

std::optional<FaultSpec> FaultSpec::parse(std::string_view text)
{
    auto [pattern, parts] = cut(text, '=');
    Builder builder;
    if (pattern.empty() || parts.empty())
        return std::nullopt;
    while (!parts.empty()) {
        if (parts.starts_with("text:")) {
            builder.setBody(parts.substr(5));
            break;
        }
        const auto [part, rest] = cut(parts, ',');
        if (!builder.add(part))
            return std::nullopt;
        parts = rest;
    }
    auto spec = builder.finish();
    spec.match.path = pattern;
    return spec;
}

std::string FaultSpec::help()
{
    return R"(A fault is PATTERN=PART,PART,... where "*" in the pattern stands for any run of characters of the path:
  status:CODE  type:MIME  text:BODY     answer this (text takes all that follows)
  header:NAME=VALUE  headers:BYTES      one more header; fillers of so many bytes
  redirect:URL  loop                    redirect there; to the request's own address
  ratelimit:SECONDS                     429 with Retry-After
  early                                 answer before the body is read
  announce:N  nolength                  Content-Length off by N bytes; none at all
  chunked[:N]  gzip[:N]                 in chunks; compressed; the last N bytes missing
  drip:BYTES/MS  sip:BYTES/MS           send the answer, read the request that slowly
  close@PLACE  reset@PLACE  hold@PLACE  delay:MS@PLACE
                                        PLACE is request:N, head:N or body:N, after so many bytes of the request's body,
                                        the answer's head or the answer's body
  times:N  skip:N  method:NAME          only N requests; not the first N; only that method
)";
}

} // namespace standin
