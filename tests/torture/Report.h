#pragma once

#include "tests/torture/Kills.h"

namespace torture {

/// The results of a campaign, for docs/reliability.md.
class Report
{
public:
    explicit Report(const Tally& tally)
        : m_tally(tally)
    {
    }

    QString table() const;
    /// The whole section, with its date.
    QString text(const Extent& extent) const;

private:
    const Tally& m_tally;
};

QString textOfKills(const KillTally& atChanges, const KillTally& atMoments);

/// Replaces what stands between the comments "<!-- NAME -->" and "<!-- end of NAME -->" of a document. False when it
/// has no such place or cannot be written; standard error says so.
bool replaceSection(const QString& document, const QString& name, const QString& text);

} // namespace torture
