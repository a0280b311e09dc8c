#pragma once

#include <string>
#include <vector>

namespace bench {

/// One line of the table: what was measured, ours, the peer's, and the bound that is aimed at.
struct Row
{
    std::string what;
    std::string ours;
    std::string peer;
    std::string ratio;
    std::string aim;
    bool isMet = true;
};

/// The table in Markdown, with the machine and the peers' versions above it.
std::string report(const std::vector<Row>& rows, int runs);

std::string seconds(double value);
std::string mebibytes(double bytes);
std::string times(double ratio);

} // namespace bench
