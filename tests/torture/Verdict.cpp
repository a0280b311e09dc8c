#include "tests/torture/Verdict.h"

#include <QDir>

#include <csignal>

namespace torture {

namespace {

using Effect = Errand::Effect;

bool isAllocation(Function function)
{
    return function == Function::Malloc || function == Function::Calloc || function == Function::Realloc;
}

bool holdsSecret(const QByteArray& text, const Place& place)
{
    const auto settings = place.settings();
    const QByteArray session =
        settings ? settings->value(QStringLiteral("kSessionValue")).toString().toUtf8() : QByteArray();
    return text.contains(Place::password) || text.contains(Place::oldSession) || text.contains(Place::newSession) ||
           (!session.isEmpty() && text.contains(session));
}

QString quoted(const QByteArray& text)
{
    return QString::fromUtf8(text).replace(u'\n', QStringLiteral("⏎"));
}

/// Without those that Qt prints past its message handler: for each time that it could not wait, and for a pipe that it
/// did not get.
QByteArray withoutQtsLines(const QByteArray& error)
{
    QByteArrayList lines = error.split('\n');
    lines.removeIf(
        [](const QByteArray& line) { return line.startsWith("qt_safe_poll: ") || line.startsWith("QThreadPipe: "); });
    return lines.join('\n');
}

/// It leaves nothing that stays, or says itself what it has.
bool isReadOnly(Errand::Kind kind)
{
    return kind == Errand::Kind::Session || kind == Errand::Kind::Attachments || kind == Errand::Kind::Fetch;
}

bool isInWindows(Errand::Kind kind)
{
    return kind == Errand::Kind::Attach || kind == Errand::Kind::Fetch;
}

/// A run that says it has done what it was to do.
Verdict judgeDone(const Run& run, const Errand& errand, const Errand::Finding& found, const Run& reference)
{
    const Effect wanted = isReadOnly(errand.kind()) ? Effect::None : Effect::Whole;
    if (found.effect != wanted)
        return {End::Wrong, QStringLiteral("status 0, but not done. ") + found.detail};
    if (run.output != reference.output)
        return {End::Wrong, QStringLiteral("status 0, but printed ") + quoted(run.output)};
    if (!run.error.isEmpty() && !isInWindows(errand.kind()))
        return {End::Untold, QStringLiteral("status 0, and says ") + quoted(run.error)};
    return {End::Right};
}

/// A run that says it has failed.
Verdict judgeFailed(const Run& run, const Orders& orders, const Errand& errand, const Errand::Finding& found)
{
    const bool isOneLine = run.error.endsWith('\n') && run.error.count('\n') == 1 && run.error.size() > 1;
    if (!isOneLine && !run.wasErrorSilenced)
        return {End::Untold, QStringLiteral("status 1, and says ") + quoted(run.error)};
    const bool isAboutOutput = run.error.startsWith("The result couldn’t be written") || run.wasOutputSilenced;
    if (!run.output.isEmpty() && !isAboutOutput)
        return {End::Wrong, QStringLiteral("status 1, but printed ") + quoted(run.output)};
    // An upload may have arrived although its answer got lost, and a logout goes as far as it can. What a disk refuses
    // for good to keep for certain may be there all the same.
    const bool mayBeDone = errand.kind() == Errand::Kind::Upload || errand.kind() == Errand::Kind::Logout ||
                           (orders.function == Function::Sync && orders.lasts);
    if (found.effect == Effect::Whole && !mayBeDone && !isAboutOutput)
        return {End::Wrong, QStringLiteral("it is done, but the tool says ") + quoted(run.error)};
    return {End::Told, QString::fromUtf8(run.error).trimmed()};
}

/// A host that says how its user sees it.
Verdict judgeWindow(const Run& run, const Errand::Finding& found, const Errand& errand, const Run& reference)
{
    if (run.status == 0)
        return judgeDone(run, errand, found, reference);
    const bool isTold = run.status == 1 && run.output.size() > 1;
    return {isTold ? End::Told : End::Wrong, quoted(run.output)};
}

Verdict judgeEnd(const Run& run, const Orders& orders, const Errand& errand, const Errand::Finding& found,
                 const Run& reference)
{
    const bool isKilled = (orders.killAtChange > 0 || orders.killAfter.count() > 0) && run.signal == SIGKILL;
    // Where Qt does not look at malloc's answer, it stumbles over it; GLib ends the process by a trap.
    const bool isAbort = run.signal == SIGABRT || run.signal == SIGTRAP || run.signal == SIGSEGV;
    if (isKilled)
        return {End::Killed};
    if (run.signal != 0 && isAbort && isAllocation(orders.function))
        return {End::Aborted};
    if (run.signal != 0)
        return {End::Crashed, QStringLiteral("signal %1, says %2").arg(run.signal).arg(quoted(run.error))};
    if (isInWindows(errand.kind()))
        return judgeWindow(run, found, errand, reference);
    if (run.status == 0)
        return judgeDone(run, errand, found, reference);
    if (run.status == 1)
        return judgeFailed(run, orders, errand, found);
    return {End::Untold, QStringLiteral("status %1, says %2").arg(run.status).arg(quoted(run.error))};
}

/// What could not be removed stays.
bool mayBeLeft(const QString& path, const Run& run, const Orders& orders)
{
    const QString refused = QString::fromUtf8(run.firstRefused);
    return orders.function == Function::Remove && !refused.isEmpty() &&
           (orders.lasts || path.startsWith(refused) || refused.startsWith(path) || !refused.startsWith(u'/'));
}

} // namespace

QString nameOf(End end)
{
    static const std::array names = {"right",   "told", "aborted",      "killed", "wrong result", "not told",
                                     "crashed", "hung", "partial file", "damage", "secret shown", "leftover"};
    return QLatin1String(names.at(static_cast<std::size_t>(end)));
}

Verdict judge(const Run& whole, const Orders& orders, const Errand& errand, const Place& place, const Run& reference)
{
    Run run = whole;
    if (orders.function == Function::Poll || orders.function == Function::Pipe)
        run.error = withoutQtsLines(run.error);
    if (run.hasHung)
        return {End::Hung, quoted(run.error)};
    if (holdsSecret(run.output + run.error, place))
        return {End::Secret, quoted(run.output + run.error)};
    Errand::Finding found = errand.find();
    if (found.effect == Effect::WholeWithoutCookies) {
        found = isAllocation(orders.function)
                    ? Errand::Finding{Effect::Whole}
                    : Errand::Finding{Effect::Damage, QStringLiteral("a login without cookies")};
    }
    if (found.effect == Effect::PartialFile)
        return {End::PartialFile, found.detail};
    if (found.effect == Effect::Damage)
        return {End::Damage, found.detail + QStringLiteral(" · says ") + quoted(run.error)};
    Verdict verdict = judgeEnd(run, orders, errand, found, reference);
    const bool cleansUp = verdict.end == End::Right || verdict.end == End::Told;
    QStringList left = cleansUp ? place.leftovers(errand.destination()) : QStringList();
    left.removeIf([&](const QString& path) { return mayBeLeft(path, run, orders); });
    // What was fetched belongs to the host, and downloads have a folder.
    if (errand.kind() == Errand::Kind::Fetch) {
        left.removeIf([&](const QString& path) {
            const QDir folder(path);
            const QString downloads = QStringLiteral("com.tessalooom.JAController");
            return path.contains(u'/' + downloads) || folder.exists(downloads) ||
                   !folder.entryList({QStringLiteral("Fetched-*")}).isEmpty() ||
                   (verdict.end == End::Right && path.contains(QLatin1String("/Fetched-")));
        });
    }
    if (!left.isEmpty()) {
        verdict = {End::Leftover,
                   left.join(u' ') + QStringLiteral(" · status %1, says ").arg(run.status) + quoted(run.error)};
    }
    return verdict;
}

} // namespace torture
