#pragma once

#include "standin/Fault.h"

#include <cstddef>
#include <cstdint>
#include <mutex>
#include <set>
#include <string>
#include <vector>

namespace standin {

/// What a test has asked for: the faults to come and the exchanges that are held. Safe to use from any thread.
class Controls
{
public:
    void add(Match match, Fault fault);
    void clear();
    /// The fault for this request, used up by one; a fault that does nothing when none applies.
    Fault take(const std::string& method, const std::string& path);

    void resetConnections(int connections);
    bool takeConnectionReset();

    std::int64_t hold();
    bool isHeld(std::int64_t ticket) const;
    void leave(std::int64_t ticket);
    void releaseAll();
    std::size_t heldCount() const;

private:
    struct Entry
    {
        Match match;
        Fault fault;
    };

    mutable std::mutex m_mutex;
    std::vector<Entry> m_faults;
    int m_connectionResets = 0;
    std::set<std::int64_t> m_held;
    std::int64_t m_lastTicket = 0;
};

} // namespace standin
