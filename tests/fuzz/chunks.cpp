#include "standin/ChunkedDecoder.h"
#include "tests/fuzz/Fuzz.h"

#include <algorithm>
#include <string>

namespace {

std::string payload(std::string_view bytes, unsigned seed, std::size_t longest)
{
    standin::ChunkedDecoder decoder;
    std::string all;
    fuzz::inPieces(bytes, seed, longest, [&](std::string_view piece) {
        const std::size_t used = decoder.feed(piece, [&](std::string_view part) { all += part; });
        fuzz::require(used <= piece.size(), "no more is used than came");
        fuzz::require(used == piece.size() || decoder.isDone() || decoder.hasFailed(),
                      "only what follows the last chunk is left");
    });
    fuzz::require(all.size() <= bytes.size(), "chunks hold no more than came");
    return all + (decoder.isDone() ? " done" : "") + (decoder.hasFailed() ? " failed" : "");
}

} // namespace

/// A body in chunks, of which the first byte chooses how it comes apart on the wire.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size < 1)
        return 0;
    const std::string_view bytes(reinterpret_cast<const char*>(data + 1), size - 1);
    fuzz::require(payload(bytes, 0, std::max<std::size_t>(bytes.size(), 1)) ==
                      payload(bytes, data[0], 1 + data[0] / 16),
                  "how chunks come apart makes no difference");
    return 0;
}
