#include "platform/foundation/loading/curl/GzipDecoder.h"

#include <zlib.h>

#include <array>

namespace tljira {

struct GzipDecoder::Stream
{
    z_stream zlib{};
    bool isBetweenMembers = true;
    std::array<char, std::size_t(64) * 1024> output{};
};

GzipDecoder::GzipDecoder()
    : m_stream(std::make_unique<Stream>())
{
    constexpr int gzipOnly = 16;
    inflateInit2(&m_stream->zlib, gzipOnly + MAX_WBITS);
}

GzipDecoder::~GzipDecoder()
{
    inflateEnd(&m_stream->zlib);
}

bool GzipDecoder::decode(const char* bytes, std::size_t count, const Output& output)
{
    z_stream& zlib = m_stream->zlib;
    zlib.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(bytes));
    zlib.avail_in = static_cast<uInt>(count);
    do {
        if (m_stream->isBetweenMembers && zlib.avail_in > 0) {
            inflateReset(&zlib);
            m_stream->isBetweenMembers = false;
        }
        zlib.next_out = reinterpret_cast<Bytef*>(m_stream->output.data());
        zlib.avail_out = static_cast<uInt>(m_stream->output.size());
        const int status = inflate(&zlib, Z_NO_FLUSH);
        if (status != Z_OK && status != Z_STREAM_END && status != Z_BUF_ERROR)
            return false;
        m_stream->isBetweenMembers = m_stream->isBetweenMembers || status == Z_STREAM_END;
        const std::size_t decoded = m_stream->output.size() - zlib.avail_out;
        if (decoded > 0 && !output(m_stream->output.data(), decoded))
            return false;
    } while (zlib.avail_in > 0 || zlib.avail_out == 0);
    return true;
}

bool GzipDecoder::isComplete() const
{
    return m_stream->isBetweenMembers;
}

} // namespace tljira
