#include "tests/torture/preload/Calls.h"

// The C library's own are called by the names that it keeps for the purpose: to look them up would take memory.
extern "C" void* __libc_malloc(std::size_t size);
extern "C" void* __libc_calloc(std::size_t count, std::size_t size);
extern "C" void* __libc_realloc(void* memory, std::size_t size);
extern "C" void* __libc_memalign(std::size_t alignment, std::size_t size);

using torture::Function;
using torture::isRefused;

STAND_IN(void*, malloc, std::size_t size)
{
    return isRefused(Function::Malloc) ? nullptr : __libc_malloc(size);
}

STAND_IN(void*, calloc, std::size_t count, std::size_t size)
{
    return isRefused(Function::Calloc) ? nullptr : __libc_calloc(count, size);
}

STAND_IN(void*, realloc, void* memory, std::size_t size)
{
    return isRefused(Function::Realloc) ? nullptr : __libc_realloc(memory, size);
}

STAND_IN(void*, aligned_alloc, std::size_t alignment, std::size_t size)
{
    return isRefused(Function::Malloc) ? nullptr : __libc_memalign(alignment, size);
}
