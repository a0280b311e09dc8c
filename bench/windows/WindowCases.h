#pragma once

#include "bench/Bench.h"

namespace bench {

std::vector<Row> uploadWindowCases(const Bench& bench);
std::vector<Row> listWindowCases(const Bench& bench);
Row pictureCase(const Bench& bench);

} // namespace bench
