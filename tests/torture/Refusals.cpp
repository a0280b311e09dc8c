#include "tests/torture/Refusals.h"

#include <QElapsedTimer>
#include <QMutex>
#include <QThread>

#include <algorithm>
#include <bit>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <functional>
#include <numeric>
#include <stdexcept>

namespace torture {

namespace {

using namespace Qt::StringLiterals;

struct Stream
{
    Errand::Kind errand;
    Refusal refusal;
    std::vector<std::uint32_t> calls;
};

/// The calls that are refused, in an order of which every beginning is an even sample: by turns through ever finer
/// grids.
std::vector<std::uint32_t> sample(std::uint32_t calls, std::uint32_t every)
{
    const std::size_t size = (calls + every - 1) / every;
    std::vector<std::uint32_t> chosen;
    std::vector<bool> isChosen(size);
    for (std::size_t step = std::bit_ceil(size); step > 0; step /= 2) {
        for (std::size_t index = 0; index < size; index += step) {
            if (!isChosen[index])
                chosen.push_back(static_cast<std::uint32_t>(index) * every + 1);
            isChosen[index] = true;
        }
    }
    return chosen;
}

/// One after the other from each stream, so that a function that is rarely called is not forgotten beside malloc.
std::vector<Case> interleaved(const std::vector<Stream>& streams)
{
    std::vector<Case> cases;
    const auto longest = std::ranges::max(streams, {}, [](const Stream& stream) { return stream.calls.size(); });
    for (std::size_t round = 0; round < longest.calls.size(); ++round) {
        for (const Stream& stream : streams) {
            if (round < stream.calls.size())
                cases.push_back({stream.errand, stream.refusal, stream.calls[round]});
        }
    }
    return cases;
}

/// What the windows' toolkit does not survive, whoever uses it: its event loop belongs to the host, its painting waits
/// for threads that it did not get, and its fonts for memory.
bool belongsToToolkit(Function function)
{
    return function == Function::Poll || function == Function::Pipe || function == Function::Thread ||
           function == Function::Malloc || function == Function::Calloc || function == Function::Realloc;
}

/// One that does errands, in a place of its own.
class Worker
{
public:
    explicit Worker(const QString& otherVolume)
        : m_place(otherVolume)
        , m_program(m_place.root())
    {
    }

    /// How the errand goes when nothing is refused.
    const Run& reference(Errand::Kind kind)
    {
        const auto found = m_references.find(kind);
        if (found != m_references.end())
            return found->second;
        Errand errand(kind, m_place);
        errand.prepare();
        const Run run = m_program.run(errand.command());
        Run itself = run;
        const Verdict verdict = judge(run, {}, errand, m_place, itself);
        if (verdict.end != End::Right)
            throw std::runtime_error(
                (Errand::name(kind) + u": "_s + nameOf(verdict.end) + u": "_s + verdict.detail).toStdString());
        return m_references.emplace(kind, run).first->second;
    }

    Verdict work(const Case& what)
    {
        const Run& reference = this->reference(what.errand);
        Errand errand(what.errand, m_place);
        errand.prepare();
        const Orders orders = {.function = what.refusal.function,
                               .call = what.call,
                               .lasts = what.refusal.lasts,
                               .error = what.refusal.error};
        Run expected = reference;
        if (what.errand == Errand::Kind::Attachments)
            expected.output = attachmentsOutput();
        return judge(m_program.run(errand.command(), orders), orders, errand, m_place, expected);
    }

private:
    /// The attachment has a new number each time.
    QByteArray attachmentsOutput()
    {
        const auto attachments = m_place.server.attachments(Place::issue);
        return QByteArray::number(static_cast<qlonglong>(attachments.at(0).id)) +
               QByteArray("  1500000  2026-03-01 09:30:00  plan.tessaloom\n");
    }

    Place m_place;
    Program m_program;
    std::map<Errand::Kind, Run> m_references;
};

std::vector<Case> casesOf(const Extent& extent, Worker& worker, bool hasOtherVolume)
{
    std::vector<Stream> streams;
    for (const Errand::Kind kind : Errand::kinds(extent.isInWindows)) {
        if ((!extent.errand.isEmpty() && extent.errand != Errand::name(kind)) ||
            (kind == Errand::Kind::DownloadAcross && !hasOtherVolume))
            continue;
        const Run& reference = worker.reference(kind);
        for (const Refusal& refusal : refusals()) {
            if (extent.isInWindows && belongsToToolkit(refusal.function))
                continue;
            const auto index = static_cast<std::size_t>(refusal.function);
            const auto name = functionNames.at(index);
            if (extent.function.isEmpty() || extent.function.toStdString() == name)
                streams.push_back({kind, refusal, sample(reference.calls.at(index), extent.every)});
        }
    }
    return interleaved(streams);
}

QString textOf(const Case& what)
{
    return Errand::name(what.errand) + u", "_s + nameOf(what.refusal) + QStringLiteral(", call %1").arg(what.call);
}

} // namespace

const std::vector<Refusal>& refusals()
{
    static const std::vector<Refusal> refusals = [] {
        std::vector<Refusal> both;
        const auto add = [&both](Function function, std::int32_t error) {
            both.push_back({function, error, false});
            both.push_back({function, error, true});
        };
        add(Function::Open, EMFILE);
        add(Function::Open, EACCES);
        add(Function::Read, EIO);
        add(Function::Read, halfDone);
        add(Function::Write, ENOSPC);
        add(Function::Write, halfDone);
        add(Function::Close, EIO);
        add(Function::Sync, EIO);
        add(Function::Rename, EACCES);
        add(Function::Remove, EBUSY);
        add(Function::MakeFolder, ENOSPC);
        add(Function::Stat, EACCES);
        add(Function::Link, EPERM);
        add(Function::Permissions, EPERM);
        add(Function::Lock, ENOLCK);
        add(Function::ReadFolder, EIO);
        add(Function::Socket, EMFILE);
        add(Function::Connect, ECONNREFUSED);
        add(Function::Send, ECONNRESET);
        add(Function::Send, halfDone);
        add(Function::Receive, ECONNRESET);
        add(Function::Receive, halfDone);
        add(Function::Poll, ENOMEM);
        add(Function::Pipe, EMFILE);
        add(Function::Thread, EAGAIN);
        add(Function::Malloc, ENOMEM);
        add(Function::Calloc, ENOMEM);
        add(Function::Realloc, ENOMEM);
        return both;
    }();
    return refusals;
}

QString nameOf(const Refusal& refusal)
{
    const auto name = functionNames.at(static_cast<std::size_t>(refusal.function));
    const QString reason =
        refusal.error == halfDone ? QStringLiteral("half done") : QLatin1String(strerrorname_np(refusal.error));
    return QString::fromUtf8(name.data(), static_cast<qsizetype>(name.size())) + u' ' + reason +
           (refusal.lasts ? QStringLiteral(" from then on") : QStringLiteral(" once"));
}

void Tally::add(const Case& what, const Verdict& verdict)
{
    ++m_counts[{what.errand, what.refusal.function}][static_cast<std::size_t>(verdict.end)];
    const QString where = Errand::name(what.errand) + u", "_s + nameOf(what.refusal);
    if (!isAllowed(verdict.end)) {
        auto& [times, example] = m_forbidden[nameOf(verdict.end) + u": "_s + where];
        ++times;
        if (times <= 3)
            example += QStringLiteral("\n    call %1: ").arg(what.call) + verdict.detail;
    }
    if (verdict.end == End::Told)
        ++m_lines[where + u": "_s + verdict.detail];
}

Counts Tally::counts(Errand::Kind errand, Function function) const
{
    const auto found = m_counts.find({errand, function});
    return found == m_counts.end() ? Counts() : found->second;
}

Counts Tally::total() const
{
    Counts sum = {};
    for (const auto& [key, counts] : m_counts)
        std::ranges::transform(sum, counts, sum.begin(), std::plus());
    return sum;
}

int Tally::runs() const
{
    const Counts sum = total();
    return std::accumulate(sum.begin(), sum.end(), 0);
}

int Tally::forbidden() const
{
    const Counts sum = total();
    return std::accumulate(sum.begin() + static_cast<std::size_t>(End::Wrong), sum.end(), 0);
}

void Tally::printForbidden() const
{
    for (const auto& [what, found] : m_forbidden)
        std::printf("%d × %s%s\n", found.first, qUtf8Printable(what), qUtf8Printable(found.second));
}

void Tally::printLines() const
{
    for (const auto& [line, times] : m_lines)
        std::printf("%d × %s\n", times, qUtf8Printable(line));
}

Tally torment(const Extent& extent, const QString& otherVolume)
{
    Tally tally;
    std::vector<Case> cases;
    {
        Worker first(otherVolume.isEmpty() ? QString() : otherVolume + QStringLiteral("/0"));
        cases = casesOf(extent, first, !otherVolume.isEmpty());
    }
    const std::size_t most = extent.mostRuns > 0 ? static_cast<std::size_t>(extent.mostRuns) : cases.size();
    const std::size_t count = std::min(most, cases.size());
    std::printf("%zu runs of %zu\n", count, cases.size());
    std::fflush(stdout);

    QElapsedTimer time;
    time.start();
    QMutex mutex;
    std::size_t nextCase = 0;
    const auto work = [&](int number) {
        Worker worker(otherVolume.isEmpty() ? QString() : otherVolume + QStringLiteral("/%1").arg(number));
        for (;;) {
            Case what = {};
            {
                const QMutexLocker lock(&mutex);
                const bool isOver = extent.longest.count() > 0 && time.elapsed() > 1000 * extent.longest.count();
                if (nextCase == count || isOver)
                    return;
                what = cases[nextCase++];
            }
            const Verdict verdict = worker.work(what);
            const QMutexLocker lock(&mutex);
            tally.add(what, verdict);
            if (extent.isVerbose || !isAllowed(verdict.end)) {
                std::printf("%s: %s: %s\n", qUtf8Printable(nameOf(verdict.end)), qUtf8Printable(textOf(what)),
                            qUtf8Printable(verdict.detail));
                std::fflush(stdout);
            }
        }
    };
    std::vector<std::unique_ptr<QThread>> threads;
    for (int number = 1; number <= std::max(1, QThread::idealThreadCount()); ++number) {
        threads.emplace_back(QThread::create(work, number));
        threads.back()->start();
    }
    for (const auto& thread : threads)
        thread->wait();
    std::for_each(cases.begin() + static_cast<std::ptrdiff_t>(nextCase), cases.end(),
                  [&tally](const Case& what) { tally.leaveOut(what); });
    return tally;
}

} // namespace torture
