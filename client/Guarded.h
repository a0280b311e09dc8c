#pragma once

#include <mutex>
#include <utility>

namespace client {

/// A value that one thread may replace while another reads it. What it held before is let go outside the lock, since
/// that may run code of others.
template <typename T>
class Guarded
{
public:
    Guarded() = default;
    explicit Guarded(T value)
        : m_value(std::move(value))
    {
    }

    T get() const
    {
        const std::lock_guard lock(m_mutex);
        return m_value;
    }

    void set(T value)
    {
        const std::lock_guard lock(m_mutex);
        std::swap(m_value, value);
    }

private:
    mutable std::mutex m_mutex;
    T m_value{};
};

} // namespace client
