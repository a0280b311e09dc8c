#pragma once

#include "tests/torture/Verdict.h"

#include <map>
#include <set>

namespace torture {

/// One way in which calls of a function fail.
struct Refusal
{
    Function function;
    std::int32_t error;
    bool lasts;
};

const std::vector<Refusal>& refusals();
QString nameOf(const Refusal& refusal);

/// One run: the nth call of a function fails while an errand is done.
struct Case
{
    Errand::Kind errand;
    Refusal refusal;
    std::uint32_t call;
};

using Counts = std::array<int, endCount>;

/// What came out, by errand and function.
class Tally
{
public:
    void add(const Case& what, const Verdict& verdict);
    /// A call for which there was no time.
    void leaveOut(const Case& what) { m_sampled.insert(what.refusal.function); }

    /// Of what not every call was refused.
    const std::set<Function>& sampled() const { return m_sampled; }
    Counts counts(Errand::Kind errand, Function function) const;
    Counts total() const;
    int runs() const;
    int forbidden() const;
    /// Each different thing that must never be, with how often it came and an example.
    void printForbidden() const;
    /// What the tool said, for a reader who knows whether it is true.
    void printLines() const;

private:
    std::map<std::pair<Errand::Kind, Function>, Counts> m_counts;
    std::map<QString, std::pair<int, QString>> m_forbidden;
    std::map<QString, int> m_lines;
    std::set<Function> m_sampled;
};

struct Extent
{
    /// Every so many calls one is refused.
    std::uint32_t every = 1;
    /// 0: as many as there are.
    int mostRuns = 0;
    std::chrono::seconds longest{0};
    /// Empty: all.
    QString errand = {};
    QString function = {};
    bool isVerbose = false;
    bool isInWindows = false;
};

/// Runs the tool again and again, each time with another call that fails.
Tally torment(const Extent& extent, const QString& otherVolume);

} // namespace torture
