#pragma once

#include <ostream>

namespace tests {

/// What the system and libcurl give to this program, as far as a test does not refuse it.
enum class Resource { Threads, Curl, EasyHandles, MultiHandles, ShareHandles, Addresses, WakeUps, Polls };

inline void PrintTo(Resource resource, std::ostream* stream)
{
    constexpr const char* names[] = {"threads",       "curl",      "easy handles", "multi handles",
                                     "share handles", "addresses", "wake-ups",     "polls"};
    *stream << names[static_cast<int>(resource)];
}

/// As long as it lives, nobody gets any.
class Scarcity
{
public:
    explicit Scarcity(Resource resource);
    ~Scarcity();
    Scarcity(const Scarcity&) = delete;
    Scarcity& operator=(const Scarcity&) = delete;

private:
    const Resource m_resource;
};

} // namespace tests
