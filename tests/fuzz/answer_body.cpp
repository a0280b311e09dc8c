#include "platform/foundation/loading/curl/AnswerBody.h"
#include "tests/fuzz/Fuzz.h"

#include <algorithm>
#include <iterator>
#include <optional>

namespace {

constexpr const char* encodings[] = {"", "gzip", "x-gzip", "deflate", "UTF-8", "identity"};

/// What is kept of the body; nothing when it is refused.
std::optional<QByteArray> bodyOf(std::string_view bytes, const char* encoding, unsigned seed, std::size_t longest)
{
    tljira::AnswerBody body(tljira::AnswerBody::Destination::Memory);
    body.setContentEncoding(encoding);
    // Of a picture the least is kept, so that a bomb goes off soon.
    body.setContentType("image/png");
    bool isFine = true;
    fuzz::inPieces(bytes, seed, longest,
                   [&](std::string_view piece) { isFine = isFine && body.append(piece.data(), piece.size()); });
    isFine = isFine && body.finish();
    fuzz::require(isFine != body.error().has_value(), "a body that is refused says why, and no other does");
    fuzz::require(body.size() <= 4 << 20, "no more is kept in memory than allowed");
    if (!isFine)
        return std::nullopt;
    const qint64 size = body.size();
    const bool isPacked = body.isPacked();
    const std::optional<QByteArray> kept = body.takeData().bytes();
    fuzz::require(kept && kept->size() == size, "as much is kept as was counted");
    fuzz::require(isPacked || *kept == QByteArrayView(bytes.data(), qsizetype(bytes.size())),
                  "what is not packed is kept as it came");
    return kept;
}

} // namespace

/// The body of an answer, of which the first byte chooses the encoding and the second how it comes apart on the wire.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size < 2)
        return 0;
    const char* encoding = encodings[data[0] % std::size(encodings)];
    const std::string_view bytes(reinterpret_cast<const char*>(data + 2), size - 2);
    const auto whole = bodyOf(bytes, encoding, 0, std::max<std::size_t>(bytes.size(), 1));
    const auto apart = bodyOf(bytes, encoding, data[1], 1 + data[1] / 8);
    fuzz::require(whole == apart, "how a body comes apart makes no difference");
    return 0;
}
