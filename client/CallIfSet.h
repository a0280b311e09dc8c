#pragma once

#include <functional>
#include <utility>

namespace client {

/// A caller that wants to hear nothing hands in an empty callback.
template <typename... Parameters, typename... Arguments>
void callIfSet(const std::function<void(Parameters...)>& callBack, Arguments&&... arguments)
{
    if (callBack)
        callBack(std::forward<Arguments>(arguments)...);
}

} // namespace client
