#include "upload/UploadCompanion.h"

#include <algorithm>
#include <vector>

namespace {

struct Pair
{
    const JAUploadBodyViewController* panel = nullptr;
    std::weak_ptr<UploadCompanion> companion;
};

std::vector<Pair>& pairs()
{
    static std::vector<Pair> all;
    return all;
}

} // namespace

UploadCompanion::~UploadCompanion() = default;

void UploadCompanion::join(const JAUploadBodyViewController& panel, const std::weak_ptr<UploadCompanion>& companion)
{
    std::erase_if(pairs(), [&](const Pair& pair) { return pair.companion.expired() || pair.panel == &panel; });
    pairs().push_back({&panel, companion});
}

std::shared_ptr<UploadCompanion> UploadCompanion::of(const JAUploadBodyViewController& panel)
{
    const auto found =
        std::find_if(pairs().begin(), pairs().end(), [&](const Pair& pair) { return pair.panel == &panel; });
    return found == pairs().end() ? nullptr : found->companion.lock();
}
