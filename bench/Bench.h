#pragma once

#include "bench/Report.h"

#include <string>
#include <vector>

namespace standin {
class Server;
}

namespace bench {

/// What the cases share: a stand-in that keeps nothing, a session with it, and a folder for files.
struct Bench
{
    standin::Server& server;
    std::string folder;
    /// The session's cookie, as name=value.
    std::string cookie;
    int runs;
    /// Bytes of the large file; the largest is four times as long.
    long long large;

    std::string route() const;
    std::string address(const std::string& path) const;
};

std::vector<Row> transferCases(const Bench& bench);
Row lookUpCase(const Bench& bench);
std::vector<Row> cancelCases(const Bench& bench);
std::vector<Row> interruptCases(const Bench& bench);
std::vector<Row> issueCase(const Bench& bench);

} // namespace bench
