#include "download/DownloadCompanion.h"

#include <algorithm>
#include <vector>

namespace {

struct Pair
{
    const JAListAttachedFilesWindow* list = nullptr;
    std::weak_ptr<DownloadCompanion> companion;
};

std::vector<Pair>& pairs()
{
    static std::vector<Pair> all;
    return all;
}

} // namespace

DownloadCompanion::~DownloadCompanion() = default;

void DownloadCompanion::join(const JAListAttachedFilesWindow& list, const std::weak_ptr<DownloadCompanion>& companion)
{
    std::erase_if(pairs(), [&](const Pair& pair) { return pair.companion.expired() || pair.list == &list; });
    pairs().push_back({&list, companion});
}

std::shared_ptr<DownloadCompanion> DownloadCompanion::of(const JAListAttachedFilesWindow& list)
{
    const auto found =
        std::find_if(pairs().begin(), pairs().end(), [&](const Pair& pair) { return pair.list == &list; });
    return found == pairs().end() ? nullptr : found->companion.lock();
}
