#include "standin/Controls.h"

#include "standin/Text.h"

namespace standin {

void Controls::add(Match match, Fault fault)
{
    const std::lock_guard lock(m_mutex);
    m_faults.push_back({std::move(match), std::move(fault)});
}

void Controls::clear()
{
    const std::lock_guard lock(m_mutex);
    m_faults.clear();
}

Fault Controls::take(const std::string& method, const std::string& path)
{
    const std::lock_guard lock(m_mutex);
    for (auto& [match, fault] : m_faults) {
        const bool matches = (match.method.empty() || match.method == method) && matchesPattern(match.path, path);
        if (!matches || match.times == 0)
            continue;
        if (match.skip > 0) {
            --match.skip;
            continue;
        }
        if (match.times > 0)
            --match.times;
        return fault;
    }
    return {};
}

void Controls::resetConnections(int connections)
{
    const std::lock_guard lock(m_mutex);
    m_connectionResets = connections;
}

bool Controls::takeConnectionReset()
{
    const std::lock_guard lock(m_mutex);
    if (m_connectionResets <= 0)
        return false;
    --m_connectionResets;
    return true;
}

std::int64_t Controls::hold()
{
    const std::lock_guard lock(m_mutex);
    m_held.insert(++m_lastTicket);
    return m_lastTicket;
}

bool Controls::isHeld(std::int64_t ticket) const
{
    const std::lock_guard lock(m_mutex);
    return m_held.contains(ticket);
}

void Controls::leave(std::int64_t ticket)
{
    const std::lock_guard lock(m_mutex);
    m_held.erase(ticket);
}

void Controls::releaseAll()
{
    const std::lock_guard lock(m_mutex);
    m_held.clear();
}

std::size_t Controls::heldCount() const
{
    const std::lock_guard lock(m_mutex);
    return m_held.size();
}

} // namespace standin
