#include "standin/StopList.h"

#include <algorithm>
#include <limits>

namespace standin {

StopList StopList::forRequest(const Fault& fault)
{
    StopList list;
    for (const auto& stop : fault.stops()) {
        if (stop.point.stream == Point::Stream::requestBody)
            list.m_entries.push_back({stop.point.bytes, stop});
    }
    return list;
}

StopList StopList::forResponse(const Fault& fault, std::int64_t headBytes)
{
    StopList list;
    for (const auto& stop : fault.stops()) {
        if (stop.point.stream == Point::Stream::responseBody)
            list.m_entries.push_back({headBytes + stop.point.bytes, stop});
        else if (stop.point.stream == Point::Stream::responseHead && stop.point.bytes <= headBytes)
            list.m_entries.push_back({stop.point.bytes, stop});
    }
    return list;
}

std::int64_t StopList::distance(std::int64_t position) const
{
    auto nearest = std::numeric_limits<std::int64_t>::max();
    for (const auto& entry : m_entries) {
        if (entry.position > position)
            nearest = std::min(nearest, entry.position - position);
    }
    return nearest;
}

std::vector<Stop> StopList::at(std::int64_t position) const
{
    std::vector<Stop> stops;
    for (const auto& entry : m_entries) {
        if (entry.position == position)
            stops.push_back(entry.stop);
    }
    return stops;
}

} // namespace standin
