#include "standin/MultipartParser.h"
#include "tests/fuzz/Fuzz.h"

#include <algorithm>
#include <string>

namespace {

/// All that the parser says of a form, as one text.
std::string story(std::string_view form, unsigned seed, std::size_t longest)
{
    std::string told;
    bool isInPart = false;
    standin::MultipartParser parser("b", {[&](const standin::PartHeader& header) {
                                              fuzz::require(!isInPart, "a part ends before the next begins");
                                              isInPart = true;
                                              told += "part " + header.fieldName + " " + header.fileName.value_or("-") +
                                                      " " + header.contentType + "\n";
                                          },
                                          [&](std::string_view bytes) {
                                              fuzz::require(isInPart, "bytes belong to a part");
                                              told += bytes;
                                          },
                                          [&] {
                                              fuzz::require(isInPart, "a part ends once");
                                              isInPart = false;
                                              told += "\nend\n";
                                          }});
    fuzz::inPieces(form, seed, longest, [&](std::string_view piece) { parser.feed(piece); });
    fuzz::require(!parser.isComplete() || !isInPart, "a complete form has no open part");
    if (parser.isComplete())
        told += "complete";
    if (parser.hasFailed())
        told += "failed";
    return told;
}

} // namespace

/// A form with the boundary "b", of which the first byte chooses how it comes apart on the wire.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size < 1)
        return 0;
    const std::string_view form(reinterpret_cast<const char*>(data + 1), size - 1);
    fuzz::require(story(form, 0, std::max<std::size_t>(form.size(), 1)) == story(form, data[0], 1 + data[0] / 16),
                  "how a form comes apart makes no difference");
    return 0;
}
