#pragma once

#include "tests/torture/Refusals.h"

namespace torture {

/// What kills did to one errand.
struct KillCounts
{
    int changes = 0; ///< that the errand makes to the file system
    int kills = 0;
    int asBefore = 0;
    int asAfter = 0;
    int between = 0; ///< a logout that had forgotten one thing and not yet another
    int forbidden = 0;
};

using KillTally = std::map<Errand::Kind, KillCounts>;

/// SIGKILL before every change of the file system, and in the middle of every write; then the next run. `extent.every`
/// leaves some out.
KillTally killAtChanges(const Extent& extent, const QString& otherVolume);
/// SIGKILL at so many random moments.
KillTally killAtMoments(const Extent& extent, int kills, const QString& otherVolume);

} // namespace torture
