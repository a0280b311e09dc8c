#pragma once

#include "tests/torture/Board.h"

#include <dlfcn.h>

namespace torture {

/// What becomes of a call.
enum class Fate { Done, Refused, Halved };

/// Counts the call. When it is refused errno is set.
Fate fateOf(Function function, const char* path);
Fate fateOf(Function function, int descriptor);

inline bool isRefused(Function function, const char* path)
{
    return fateOf(function, path) == Fate::Refused;
}

inline bool isRefused(Function function, int descriptor = -1)
{
    return fateOf(function, descriptor) == Fate::Refused;
}

/// How much of a transfer is made.
template <typename Size>
Size share(Fate fate, Size size)
{
    return fate == Fate::Halved && size > 1 ? size / 2 : size;
}

/// The next library's function of that name.
template <typename Signature>
Signature* next(const char* name)
{
    return reinterpret_cast<Signature*>(dlsym(RTLD_NEXT, name));
}

/// Null before main(), and when there are no orders.
Board* board();

} // namespace torture

/// Begins the definition of what stands in for a function of the C library. The names differ within C++, where the
/// headers have declared the true one already.
#define STAND_IN(result, name, ...)                                                                                    \
    extern "C" [[gnu::visibility("default")]] result standIn_##name(__VA_ARGS__) asm(#name);                           \
    extern "C" result standIn_##name(__VA_ARGS__)

/// Calls the true one.
#define PASS_ON(name, ...)                                                                                             \
    ([&] {                                                                                                             \
        static auto* const real = torture::next<decltype(standIn_##name)>(#name);                                      \
        return real(__VA_ARGS__);                                                                                      \
    }())
