#include "platform/foundation/values/JSON.h"
#include "records/Documents.h"
#include "records/JAIssueObject.h"
#include "tests/fuzz/Fuzz.h"

#include <algorithm>

namespace {

void requireSameValues(const QJsonObject& object)
{
    const auto again = tljira::decodeJSON(tljira::encodeJSON(object));
    fuzz::require(again && again->toObject() == object, "what was read can be written and read again");
}

} // namespace

/// The answer to a request for an issue.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const auto value = tljira::decodeJSON(QByteArray(reinterpret_cast<const char*>(data), qsizetype(size)));
    if (!value || !value->isObject())
        return 0;
    if (!fuzz::hasByteOrderMark(fuzz::bytesOf(data, size)))
        requireSameValues(value->toObject());
    const auto issue = JAIssueObject::initWithDictionary(value->toObject());
    const auto documents = documentsAmong(issue->attachments());
    const auto newestFirst = documentsNewestFirst(issue->attachments());
    fuzz::require(std::ranges::is_permutation(documents, newestFirst), "sorting loses no document");
    for (std::size_t i = 1; i < newestFirst.size(); ++i)
        fuzz::require(!isNewer(*newestFirst[i], *newestFirst[i - 1]), "no document stands behind an older one");
    for (const auto& attachment : issue->attachments()) {
        fuzz::require(attachment != nullptr, "no attachment is null");
        fuzz::require(!attachment->date() || attachment->time(), "a date comes from a text");
    }
    return 0;
}
