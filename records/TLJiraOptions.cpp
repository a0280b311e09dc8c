#include "records/TLJiraOptions.h"

#include <mutex>

namespace {

struct Chosen
{
    std::mutex mutex;
    TLJiraOptions options;
};

Chosen& chosen()
{
    // Never destroyed: requests may be made until the last moment of the process.
    static auto& instance = *new Chosen;
    return instance;
}

} // namespace

void TLJiraOptions::use(const TLJiraOptions& options)
{
    const std::lock_guard lock(chosen().mutex);
    chosen().options = options;
}

TLJiraOptions TLJiraOptions::inUse()
{
    const std::lock_guard lock(chosen().mutex);
    return chosen().options;
}
