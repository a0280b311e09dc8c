#include "bench/Comparison.h"

#include <algorithm>

namespace bench {

double median(std::vector<double> values)
{
    std::ranges::sort(values);
    const std::size_t middle = values.size() / 2;
    return values.size() % 2 == 1 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

Comparison compare(int runs, const std::function<double()>& ours, const std::function<double()>& peer)
{
    ours();
    peer();
    std::vector<double> oursSeconds, peerSeconds, ratios;
    for (int run = 0; run < runs; ++run) {
        oursSeconds.push_back(ours());
        peerSeconds.push_back(peer());
        ratios.push_back(oursSeconds.back() / peerSeconds.back());
    }
    return {median(oursSeconds), median(peerSeconds), median(ratios)};
}

Comparison compareProcesses(int runs, const std::vector<std::string>& ours, const std::vector<std::string>& peer)
{
    return compare(
        runs, [&] { return measureProcess(ours).seconds; }, [&] { return measureProcess(peer).seconds; });
}

} // namespace bench
