#include "platform/foundation/loading/curl/AnswerHead.h"
#include "tests/fuzz/Fuzz.h"

#include <QList>

namespace {

void requireOneLine(const QString& text)
{
    fuzz::require(!text.contains(u'\n'), "a field of a head is on one line");
}

} // namespace

/// The lines of the head of an answer.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    tljira::AnswerHead head;
    const QByteArray bytes = fuzz::bytesOf(data, size);
    std::size_t lines = 0;
    for (const QByteArray& line : bytes.split('\n')) {
        ++lines;
        const bool isTaken = head.appendLine(line + '\n');
        fuzz::require(isTaken != head.isTooLarge(), "a head is refused when it is too large, and only then");
        if (!isTaken)
            break;
    }
    fuzz::require(head.fields().size() <= lines, "a line is one field at most");
    for (const auto& [name, value] : head.fields()) {
        requireOneLine(name);
        requireOneLine(value);
    }
    fuzz::require(!head.valueOf("Content-Type").contains('\n'), "a value is on one line");
    return 0;
}
