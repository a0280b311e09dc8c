#pragma once

#include "standin/Fault.h"

#include <cstdint>
#include <vector>

namespace standin {

/// The stops along one direction of an exchange, at absolute positions.
class StopList
{
public:
    static StopList forRequest(const Fault& fault);
    /// Positions count through the head and on through the body.
    static StopList forResponse(const Fault& fault, std::int64_t headBytes);

    /// How many bytes can move from `position` before the next stop; the largest number when there is none ahead.
    std::int64_t distance(std::int64_t position) const;
    std::vector<Stop> at(std::int64_t position) const;

private:
    struct Entry
    {
        std::int64_t position;
        Stop stop;
    };
    std::vector<Entry> m_entries;
};

} // namespace standin
