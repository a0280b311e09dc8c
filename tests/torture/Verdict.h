#pragma once

#include "tests/torture/Errand.h"

namespace torture {

/// How a run of the program ended, as its user would see it.
enum class End {
    Right,
    Told,    ///< exit status 1 and one line that says what went wrong
    Aborted, ///< for want of memory
    Killed,  ///< as ordered, and everything is as before or as after
    // What must never be.
    Wrong,  ///< exit status 0, and it is not done; or the line says that it is not, and it is
    Untold, ///< another exit status, or no line, or several
    Crashed,
    Hung,
    PartialFile,
    Damage, ///< to settings or cookies
    Secret, ///< in an output
    Leftover,
    Count
};

inline constexpr auto endCount = static_cast<std::size_t>(End::Count);

QString nameOf(End end);
inline bool isAllowed(End end)
{
    return end < End::Wrong;
}

struct Verdict
{
    End end = End::Right;
    QString detail = {};
};

/// `reference` is the run in which nothing was refused.
Verdict judge(const Run& run, const Orders& orders, const Errand& errand, const Place& place, const Run& reference);

} // namespace torture
