#pragma once

#include "cli/Outcome.h"

#include <functional>

namespace cli {

/// One thing that the tool can do, from its start to its outcome.
class Command
{
public:
    /// The first call decides; later ones mean nothing.
    using Completion = std::function<void(const Outcome&)>;

    virtual ~Command() = default;

    /// Begins, with the event loop running. The completion may come within this call.
    virtual void start(const Completion& completion) = 0;

    /// Breaks off a transfer that is under way. True when the completion follows as soon as the transfer has let go of
    /// its files; false when there is nothing to wait for.
    virtual bool cancel() { return false; }
};

} // namespace cli
