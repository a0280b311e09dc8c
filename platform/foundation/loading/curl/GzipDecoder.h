#pragma once

#include <functional>
#include <memory>

namespace tljira {

/// Unpacks a body that a server sent with the encoding "gzip". libcurl's own decoder takes a stream that was cut short
/// for a complete one; this one can tell.
class GzipDecoder
{
public:
    using Output = std::function<bool(const char* bytes, std::size_t count)>;

    GzipDecoder();
    ~GzipDecoder();

    /// False when the bytes are no gzip or `output` answered false.
    bool decode(const char* bytes, std::size_t count, const Output& output);

    /// Whether the stream ended where a gzip stream ends. An empty body counts as complete.
    bool isComplete() const;

private:
    struct Stream;
    std::unique_ptr<Stream> m_stream;
};

} // namespace tljira
