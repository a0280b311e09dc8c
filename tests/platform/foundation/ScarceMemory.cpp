#include "tests/platform/foundation/ScarceMemory.h"

#include <cstdlib>
#include <new>

namespace {

/// 0: none is refused.
thread_local int callsUntilRefusal = 0;

} // namespace

void* operator new(std::size_t size)
{
    if (callsUntilRefusal > 0 && --callsUntilRefusal == 0)
        throw std::bad_alloc();
    if (void* memory = std::malloc(size > 0 ? size : 1))
        return memory;
    throw std::bad_alloc();
}

void operator delete(void* memory) noexcept
{
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept
{
    std::free(memory);
}

namespace tests {

ScarceMemory::ScarceMemory(int call)
{
    callsUntilRefusal = call;
}

ScarceMemory::~ScarceMemory()
{
    callsUntilRefusal = 0;
}

} // namespace tests
