#pragma once

#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

namespace tests {

/// While it lives, this process can open nothing.
class NoDescriptors
{
public:
    NoDescriptors()
    {
        getrlimit(RLIMIT_NOFILE, &m_before);
        // The lowest one that is free.
        const int free = open("/", O_RDONLY);
        close(free);
        const rlimit limit{static_cast<rlim_t>(free), m_before.rlim_max};
        setrlimit(RLIMIT_NOFILE, &limit);
    }
    ~NoDescriptors() { setrlimit(RLIMIT_NOFILE, &m_before); }
    NoDescriptors(const NoDescriptors&) = delete;
    NoDescriptors& operator=(const NoDescriptors&) = delete;

private:
    rlimit m_before{};
};

} // namespace tests
