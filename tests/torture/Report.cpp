#include "tests/torture/Report.h"

#include <QDate>
#include <QFile>

#include <algorithm>
#include <cstdio>

namespace torture {

namespace {

QString cell(const Counts& counts)
{
    const auto of = [&counts](End end) { return counts[static_cast<std::size_t>(end)]; };
    int forbidden = 0;
    for (auto index = static_cast<std::size_t>(End::Wrong); index < endCount; ++index)
        forbidden += counts[index];
    QString text = QStringLiteral("%1 · %2").arg(of(End::Right)).arg(of(End::Told));
    if (of(End::Aborted) > 0)
        text += QStringLiteral(" · %1").arg(of(End::Aborted));
    if (forbidden > 0)
        text += QStringLiteral(" · **%1**").arg(forbidden);
    return of(End::Right) + of(End::Told) + of(End::Aborted) + forbidden == 0 ? QStringLiteral("–") : text;
}

QString sampleOf(const Extent& extent, const std::set<Function>& sampled)
{
    const QString calls =
        extent.every > 1 ? QStringLiteral("one call of %1").arg(extent.every) : QStringLiteral("every call");
    if (sampled.empty())
        return calls;
    QStringList names;
    for (const Function function : sampled)
        names.append(QString::fromUtf8(functionNames[static_cast<std::size_t>(function)].data()));
    return calls + QStringLiteral(", but of %1 an even sample,").arg(names.join(QStringLiteral(", ")));
}

} // namespace

QString Report::table() const
{
    QString text = QStringLiteral("| call that fails |");
    QString line = QStringLiteral("|---|");
    for (const Errand::Kind kind : Errand::kinds(m_extent.isInWindows)) {
        text += u' ' + Errand::name(kind) + QStringLiteral(" |");
        line += QStringLiteral("---|");
    }
    text += u'\n' + line + u'\n';
    for (std::size_t index = 0; index < functionCount; ++index) {
        const auto isUntouched = [&](Errand::Kind kind) {
            return m_tally.counts(kind, static_cast<Function>(index)) == Counts();
        };
        if (std::ranges::all_of(Errand::kinds(m_extent.isInWindows), isUntouched))
            continue;
        text += QStringLiteral("| ") + QString::fromUtf8(functionNames[index].data()) + QStringLiteral(" |");
        for (const Errand::Kind kind : Errand::kinds(m_extent.isInWindows))
            text += u' ' + cell(m_tally.counts(kind, static_cast<Function>(index))) + QStringLiteral(" |");
        text += u'\n';
    }
    return text;
}

QString Report::text() const
{
    const Counts total = m_tally.total();
    const auto of = [&total](End end) { return total[static_cast<std::size_t>(end)]; };
    const QString howMany = sampleOf(m_extent, m_tally.sampled());
    return QStringLiteral("Measured on %1, %2 refused: %3 runs, of which %4 did what they were to do, %5 failed with "
                          "one line that "
                          "says why, %6 ended for want of memory, and %7 did anything else.\n\n")
               .arg(QDate::currentDate().toString(Qt::ISODate), howMany)
               .arg(m_tally.runs())
               .arg(of(End::Right))
               .arg(of(End::Told))
               .arg(of(End::Aborted))
               .arg(m_tally.forbidden()) +
           table();
}

QString textOfCuts(const CutTally& tally)
{
    QString text =
        QStringLiteral("Measured on %1.\n\n| command | cuts | states of the disk | as before | as after | between | "
                       "incomplete | of these, after its end not as after | anything else |\n"
                       "|---|---|---|---|---|---|---|---|---|\n")
            .arg(QDate::currentDate().toString(Qt::ISODate));
    for (const auto& [kind, counts] : tally) {
        text += QStringLiteral("| %1 |").arg(Errand::name(kind));
        for (const int count : {counts.cuts, counts.states, counts.asBefore, counts.asAfter, counts.between,
                                counts.incomplete, counts.lost, counts.forbidden})
            text += QStringLiteral(" %1 |").arg(count);
        text += u'\n';
    }
    return text;
}

QString textOfKills(const KillTally& atChanges, const KillTally& atMoments)
{
    QString text =
        QStringLiteral(
            "Measured on %1.\n\n| command | killed | times | as before | as after | between | anything else |\n"
            "|---|---|---|---|---|---|---|\n")
            .arg(QDate::currentDate().toString(Qt::ISODate));
    const auto add = [&text](const KillTally& tally, const QString& how) {
        for (const auto& [kind, counts] : tally) {
            text += QStringLiteral("| %1 | %2 | %3 | %4 | %5 | %6 | %7 |\n")
                        .arg(Errand::name(kind), how.contains(u'%') ? how.arg(counts.changes) : how)
                        .arg(counts.kills)
                        .arg(counts.asBefore)
                        .arg(counts.asAfter)
                        .arg(counts.between)
                        .arg(counts.forbidden);
        }
    };
    add(atChanges, QStringLiteral("at its changes, of which there are %1"));
    add(atMoments, QStringLiteral("at random moments"));
    return text;
}

bool replaceSection(const QString& document, const QString& name, const QString& text)
{
    QFile file(document);
    const QString begin = QStringLiteral("<!-- %1 -->\n").arg(name);
    const QString end = QStringLiteral("<!-- end of %1 -->").arg(name);
    QString whole = file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
    file.close();
    const auto from = whole.indexOf(begin);
    const auto to = whole.indexOf(end);
    if (from < 0 || to < from) {
        std::fprintf(stderr, "%s has no place for %s.\n", qUtf8Printable(document), qUtf8Printable(name));
        return false;
    }
    whole.replace(from + begin.size(), to - from - begin.size(), u'\n' + text + u'\n');
    if (file.open(QIODevice::WriteOnly | QIODevice::Truncate) && file.write(whole.toUtf8()) >= 0 && file.flush())
        return true;
    std::fprintf(stderr, "%s cannot be written.\n", qUtf8Printable(document));
    return false;
}

} // namespace torture
