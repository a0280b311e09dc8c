#include "tests/torture/Kills.h"

#include <QFile>

#include <csignal>
#include <cstdio>
#include <random>

namespace torture {

namespace {

constexpr int mostRunsForAKill = 20;

using Effect = Errand::Effect;

/// Kills errands in one place, and looks at what is left.
class Killer
{
public:
    Killer(Errand::Kind kind, const QString& otherVolume)
        : m_place(otherVolume)
        , m_program(m_place.root())
        , m_errand(kind, m_place)
        , m_isInWindows(kind == Errand::Kind::Attach || kind == Errand::Kind::Fetch)
    {
        m_errand.prepare();
        m_reference = m_program.run(m_errand.command());
        m_counts.changes = static_cast<int>(m_reference.changes);
    }

    const Run& reference() const { return m_reference; }
    const KillCounts& counts() const { return m_counts; }

    void kill(const Orders& orders)
    {
        m_errand.prepare();
        const Run run = m_program.run(m_errand.command(), orders);
        // It was faster this time.
        if (run.signal != SIGKILL)
            return;
        ++m_counts.kills;
        m_place.awaitServer();
        const Errand::Finding found = m_errand.find();
        const QString problem = problemOf(found);
        if (problem.isEmpty())
            return;
        ++m_counts.forbidden;
        std::printf("%s, killed at change %u%s, after %lld µs: %s\n", qUtf8Printable(Errand::name(m_errand.kind())),
                    orders.killAtChange, orders.killHalfway ? " halfway" : "",
                    static_cast<long long>(orders.killAfter.count()), qUtf8Printable(problem));
        std::fflush(stdout);
    }

private:
    QString problemOf(const Errand::Finding& found)
    {
        switch (found.effect) {
        case Effect::None:
            ++m_counts.asBefore;
            break;
        case Effect::Whole:
            ++m_counts.asAfter;
            break;
        case Effect::Part:
            ++m_counts.between;
            break;
        case Effect::WholeWithoutCookies:
            return QStringLiteral("a login without cookies");
        case Effect::PartialFile:
        case Effect::Damage:
            return found.detail;
        }
        if (const QString problem = runAgain(); !problem.isEmpty())
            return QStringLiteral("the next run: ") + problem;
        return runAfterADay();
    }

    /// The next run finds what the killed one left.
    QString runAgain()
    {
        if (!m_errand.destination().isEmpty())
            QFile::remove(m_errand.destination());
        for (const auto& attachment : m_place.server.attachments(Place::issue)) {
            if (m_errand.kind() == Errand::Kind::Upload || m_errand.kind() == Errand::Kind::Attach)
                m_place.server.removeAttachment(attachment.id);
        }
        // There is nobody to log out any more.
        const bool isLogout = m_errand.kind() == Errand::Kind::Logout;
        const Errand next(isLogout ? Errand::Kind::Login : m_errand.kind(), m_place);
        const Run run = m_program.run(isLogout ? next.command() : m_errand.command());
        if (run.status != 0 || (!run.error.isEmpty() && !m_isInWindows))
            return QStringLiteral("status %1, says %2").arg(run.status).arg(QString::fromUtf8(run.error));
        if (isLogout) {
            const bool isLoggedIn = m_place.settings() == Place::settingsOf(QStringLiteral("http://jira.example.test/"),
                                                                            QLatin1String(Place::newSession));
            return isLoggedIn ? QString() : QStringLiteral("saved no login");
        }
        const Errand::Finding found = m_errand.find();
        const bool leavesNothing = m_errand.kind() == Errand::Kind::Session || m_errand.kind() == Errand::Kind::Fetch;
        const bool isDone = found.effect == (leavesNothing ? Effect::None : Effect::Whole);
        return isDone ? QString() : QStringLiteral("did not do it. ") + found.detail;
    }

    /// What is old enough goes, if not with the first run, which does not wait for that.
    QString runAfterADay()
    {
        m_place.ageLeftovers();
        for (int run = 0; run < 20 && !leftovers().isEmpty(); ++run)
            runAgain();
        const QStringList left = leftovers();
        return left.isEmpty() ? QString() : QStringLiteral("left for good: ") + left.join(u' ');
    }

    QStringList leftovers() const
    {
        QStringList left = m_place.leftovers(m_errand.destination());
        // What windows fetched belongs to the host, and downloads have a folder.
        left.removeIf([this](const QString& path) {
            return m_isInWindows && (path.contains(QLatin1String("/Fetched-")) ||
                                     path.contains(QLatin1String("/com.tessalooom.JAController")));
        });
        return left;
    }

    Place m_place;
    Program m_program;
    Errand m_errand;
    const bool m_isInWindows;
    Run m_reference;
    KillCounts m_counts;
};

std::vector<Errand::Kind> kindsOf(const Extent& extent, const QString& otherVolume)
{
    std::vector<Errand::Kind> kinds = Errand::kinds(extent.isInWindows);
    std::erase_if(kinds, [&](Errand::Kind kind) {
        return (kind == Errand::Kind::DownloadAcross && otherVolume.isEmpty()) || kind == Errand::Kind::Attachments ||
               (!extent.errand.isEmpty() && extent.errand != Errand::name(kind));
    });
    return kinds;
}

} // namespace

KillTally killAtChanges(const Extent& extent, const QString& otherVolume)
{
    KillTally tally;
    for (const Errand::Kind kind : kindsOf(extent, otherVolume)) {
        Killer killer(kind, otherVolume);
        for (std::uint32_t change = 1; change <= killer.reference().changes; change += extent.every) {
            killer.kill({.killAtChange = change});
            killer.kill({.killAtChange = change, .killHalfway = true});
        }
        tally[kind] = killer.counts();
    }
    return tally;
}

KillTally killAtMoments(const Extent& extent, int kills, const QString& otherVolume)
{
    KillTally tally;
    const auto kinds = kindsOf(extent, otherVolume);
    std::mt19937 random(std::random_device{}());
    for (std::size_t index = 0; index < kinds.size(); ++index) {
        Killer killer(kinds[index], otherVolume);
        std::uniform_int_distribution<long> moment(1, killer.reference().time.count());
        const int share = static_cast<int>((static_cast<std::size_t>(kills) + index) / kinds.size());
        // Some have ended before their moment.
        for (int run = 0; run < share * mostRunsForAKill && killer.counts().kills < share; ++run)
            killer.kill({.killAfter = std::chrono::microseconds(moment(random))});
        tally[kinds[index]] = killer.counts();
    }
    return tally;
}

} // namespace torture
