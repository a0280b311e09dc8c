#pragma once

#include "standin/Fault.h"

#include <optional>
#include <string>
#include <string_view>

namespace standin {

/// A fault as it is written on the command line, PATTERN=PART,PART,…
struct FaultSpec
{
    Match match = {};
    Fault fault = {};

    /// nullopt when it cannot be understood.
    static std::optional<FaultSpec> parse(std::string_view text);
    /// The parts there are, a line each.
    static std::string help();
};

} // namespace standin
