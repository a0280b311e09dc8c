#pragma once

#include "tests/torture/Refusals.h"

namespace torture {

/// What power cuts did to one errand.
struct CutCounts
{
    int cuts = 0;   ///< one behind each change
    int states = 0; ///< different ones, of all that may stand on the disk then
    int asBefore = 0;
    int asAfter = 0;
    int between = 0;    ///< a logout that had forgotten one thing and not yet another
    int incomplete = 0; ///< a download whose bytes have not all reached the disk that its name is on
    int lost = 0;       ///< states that may be there after the errand has ended well, and are not as after it
    int forbidden = 0;
};

using CutTally = std::map<Errand::Kind, CutCounts>;

/// Cuts the power behind each change of the file system, and looks at every state in which the disk may be then; some
/// of them are given to a next run.
CutTally cutPower(const Extent& extent, const QString& otherVolume);

} // namespace torture
