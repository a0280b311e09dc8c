#include "bench/Bench.h"
#include "bench/Comparison.h"

#include <fstream>

namespace bench {

namespace {

constexpr int lookUps = 2000;

/// curl fetches all addresses of a configuration file over one connection.
std::string configurationOfPeer(const Bench& bench)
{
    const std::string path = bench.folder + "/look-ups.curl";
    std::ofstream file(path);
    file << "silent\nfail\ncookie = \"" << bench.cookie << "\"\n";
    for (int i = 0; i < lookUps; ++i)
        file << "url = \"" << bench.address("rest/api/2/issue/SMALL-1") << "\"\noutput = \"/dev/null\"\n";
    return path;
}

} // namespace

Row lookUpCase(const Bench& bench)
{
    const Comparison comparison =
        compareProcesses(bench.runs, {LOOK_UPS_PATH, bench.route(), std::to_string(lookUps), bench.cookie},
                         {"curl", "-K", configurationOfPeer(bench)});
    return {"2,000 issue look-ups in a row, one process (one curl process)",
            seconds(comparison.ours),
            seconds(comparison.peer),
            times(comparison.ratio),
            "stated",
            true};
}

} // namespace bench
