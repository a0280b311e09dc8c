#pragma once

#include "bench/MeasuredProcess.h"

#include <functional>
#include <vector>

namespace bench {

double median(std::vector<double> values);

/// Two things measured in turn, ours and the peer's, so that a change of the machine's speed meets both.
struct Comparison
{
    double ours = 0;  ///< median, seconds
    double peer = 0;  ///< median, seconds
    double ratio = 0; ///< median of the pairs' ratios
};

/// Each function does one run and answers its seconds. One pair is run first and not counted.
Comparison compare(int runs, const std::function<double()>& ours, const std::function<double()>& peer);

Comparison compareProcesses(int runs, const std::vector<std::string>& ours, const std::vector<std::string>& peer);

} // namespace bench
