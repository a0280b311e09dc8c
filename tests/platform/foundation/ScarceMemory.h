#pragma once

namespace tests {

/// As long as it lives, this thread's call of operator new of this number, from 1 on, throws std::bad_alloc.
class ScarceMemory
{
public:
    explicit ScarceMemory(int call);
    ~ScarceMemory();
    ScarceMemory(const ScarceMemory&) = delete;
    ScarceMemory& operator=(const ScarceMemory&) = delete;
};

} // namespace tests
