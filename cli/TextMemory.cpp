#include "cli/TextMemory.h"

#include <unicode/uclean.h>

#include <cstdlib>

namespace cli {

namespace {

void* orEnd(void* memory)
{
    if (!memory)
        std::abort();
    return memory;
}

void* allocate(const void*, std::size_t size)
{
    return orEnd(std::malloc(size));
}

void* reallocate(const void*, void* memory, std::size_t size)
{
    return orEnd(std::realloc(memory, size));
}

void release(const void*, void* memory)
{
    std::free(memory);
}

} // namespace

void endWithoutTextMemory()
{
    UErrorCode status = U_ZERO_ERROR;
    u_setMemoryFunctions(nullptr, allocate, reallocate, release, &status);
}

} // namespace cli
