#include "upload/UploadCompanion.h"

#include "client/Companions.h"

using Companions = client::Companions<JAUploadBodyViewController, UploadCompanion>;

UploadCompanion::~UploadCompanion() = default;

void UploadCompanion::join(const JAUploadBodyViewController& panel, const std::weak_ptr<UploadCompanion>& companion)
{
    Companions::join(panel, companion);
}

std::shared_ptr<UploadCompanion> UploadCompanion::of(const JAUploadBodyViewController& panel)
{
    return Companions::of(panel);
}
