#pragma once

#include "tests/torture/Kills.h"
#include "tests/torture/PowerCuts.h"

namespace torture {

/// The results of a campaign, for docs/reliability.md.
class Report
{
public:
    Report(const Tally& tally, const Extent& extent)
        : m_tally(tally)
        , m_extent(extent)
    {
    }

    QString table() const;
    /// The whole section, with its date.
    QString text() const;

private:
    const Tally& m_tally;
    const Extent& m_extent;
};

QString textOfCuts(const CutTally& tally);
QString textOfKills(const KillTally& atChanges, const KillTally& atMoments);

/// Replaces what stands between the comments "<!-- NAME -->" and "<!-- end of NAME -->" of a document. False when it
/// has no such place or cannot be written; standard error says so.
bool replaceSection(const QString& document, const QString& name, const QString& text);

} // namespace torture
