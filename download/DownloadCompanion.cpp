#include "download/DownloadCompanion.h"

#include "client/Companions.h"

using Companions = client::Companions<JAListAttachedFilesWindow, DownloadCompanion>;

DownloadCompanion::~DownloadCompanion() = default;

void DownloadCompanion::join(const JAListAttachedFilesWindow& list, const std::weak_ptr<DownloadCompanion>& companion)
{
    Companions::join(list, companion);
}

std::shared_ptr<DownloadCompanion> DownloadCompanion::of(const JAListAttachedFilesWindow& list)
{
    return Companions::of(list);
}
