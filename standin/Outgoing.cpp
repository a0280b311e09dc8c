#include "standin/Outgoing.h"

#include "standin/Text.h"

#include <zlib.h>

#include <algorithm>
#include <cstdio>

namespace standin {

namespace {

void setHeader(Response& response, const std::string& name, const std::string& value)
{
    std::erase_if(response.headers, [&name](const auto& header) { return equalsIgnoringCase(header.first, name); });
    response.headers.emplace_back(name, value);
}

std::string gzipped(const std::string& bytes)
{
    constexpr int gzipWindow = 15 + 16;
    z_stream stream = {};
    deflateInit2(&stream, Z_DEFAULT_COMPRESSION, Z_DEFLATED, gzipWindow, 8, Z_DEFAULT_STRATEGY);
    std::string result(deflateBound(&stream, static_cast<uLong>(bytes.size())), '\0');
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(bytes.data()));
    stream.avail_in = static_cast<uInt>(bytes.size());
    stream.next_out = reinterpret_cast<Bytef*>(result.data());
    stream.avail_out = static_cast<uInt>(result.size());
    deflate(&stream, Z_FINISH);
    result.resize(stream.total_out);
    deflateEnd(&stream);
    return result;
}

std::string inChunks(const std::string& bytes, std::size_t chunkBytes)
{
    std::string framed;
    for (std::size_t offset = 0; offset < bytes.size(); offset += chunkBytes) {
        const auto piece = std::min(chunkBytes, bytes.size() - offset);
        char size[32];
        std::snprintf(size, sizeof size, "%zx\r\n", piece);
        framed.append(size).append(bytes, offset, piece).append("\r\n");
    }
    return framed + "0\r\n\r\n";
}

std::string withoutLast(std::string bytes, std::int64_t missing)
{
    bytes.resize(bytes.size() - std::min(bytes.size(), static_cast<std::size_t>(missing)));
    return bytes;
}

bool canHaveBody(int status)
{
    return status >= 200 && status != 204 && status != 304;
}

/// Applies what a fault says about compression and framing; true when the connection has to end behind the body.
bool frameBody(Response& response, const Fault& fault)
{
    bool closes = false;
    if (fault.gzipMissing()) {
        response.body = contentOfBytes(withoutLast(gzipped(allBytes(*response.body)), *fault.gzipMissing()));
        setHeader(response, "Content-Encoding", "gzip");
    }
    if (fault.chunks()) {
        const auto framed = inChunks(allBytes(*response.body), std::max<std::size_t>(fault.chunks()->bytes, 1));
        response.body = contentOfBytes(withoutLast(framed, fault.chunks()->missing));
        setHeader(response, "Transfer-Encoding", "chunked");
        return fault.chunks()->missing > 0;
    }
    if (fault.hidesLength()) {
        setHeader(response, "Connection", "close");
        return true;
    }
    auto length = response.body->size();
    if (fault.announced()) {
        length = std::max<std::int64_t>(0, length + *fault.announced());
        closes = true;
    }
    if (canHaveBody(response.status))
        setHeader(response, "Content-Length", std::to_string(length));
    return closes;
}

std::string headText(const Response& response)
{
    std::string text = "HTTP/1.1 " + std::to_string(response.status) + " " + reasonPhrase(response.status) + "\r\n";
    for (const auto& [name, value] : response.headers)
        text.append(name).append(": ").append(value).append("\r\n");
    return text + "\r\n";
}

} // namespace

Outgoing Outgoing::frame(Response response, const RequestHead& request, const Fault& fault)
{
    if (fault.rawBytes())
        return {.status = response.status, .head = *fault.rawBytes(), .body = contentOfBytes({}), .closes = true};
    if (!response.body || !canHaveBody(response.status))
        response.body = contentOfBytes({});
    Outgoing outgoing{.status = response.status};
    outgoing.closes = frameBody(response, fault) || !request.keepsConnection();
    if (!request.keepsConnection())
        setHeader(response, "Connection", "close");
    for (const auto& [name, value] : fault.headers())
        setHeader(response, name, value);
    outgoing.head = headText(response);
    outgoing.body = request.method() == "HEAD" ? contentOfBytes({}) : response.body;
    return outgoing;
}

Response faultResponse(const Fault& fault, const RequestHead& request)
{
    Response response = Response::empty(0);
    if (fault.answer()) {
        response = fault.answer()->contentType.empty()
                       ? Response::empty(fault.answer()->code)
                       : Response::bytes(fault.answer()->code, fault.answer()->body, fault.answer()->contentType);
        if (!response.body)
            response.body = contentOfBytes(fault.answer()->body);
    }
    if (fault.redirectsToItself())
        setHeader(response, "Location", request.target());
    return response;
}

} // namespace standin
