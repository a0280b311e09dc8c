#pragma once

#include <csignal>
#include <sys/resource.h>

namespace tests {

/// A limit on the size of files stands for the disk's: a write takes what there is room for, and the next one fails.
class RoomFor
{
public:
    explicit RoomFor(rlim_t bytes)
    {
        signal(SIGXFSZ, SIG_IGN);
        getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit limit{bytes, m_before.rlim_max};
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~RoomFor() { setrlimit(RLIMIT_FSIZE, &m_before); }
    RoomFor(const RoomFor&) = delete;
    RoomFor& operator=(const RoomFor&) = delete;

private:
    rlimit m_before{};
};

} // namespace tests
