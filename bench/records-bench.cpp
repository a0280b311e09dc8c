#include "bench/IssueAnswer.h"
#include "platform/foundation/values/JSON.h"
#include "records/JAIssueObject.h"

#include <QLoggingCategory>

#include <benchmark/benchmark.h>

namespace {

void parsing(benchmark::State& state)
{
    const QByteArray answer = bench::issueAnswer(static_cast<int>(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(tljira::decodeJSON(answer));
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void bytesToRecords(benchmark::State& state)
{
    QLoggingCategory::setFilterRules(QStringLiteral("platform.log=false"));
    const QByteArray answer = bench::issueAnswer(static_cast<int>(state.range(0)));
    for (auto _ : state)
        benchmark::DoNotOptimize(JAIssueObject::initWithDictionary(tljira::decodeJSON(answer)->toObject()));
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

} // namespace

BENCHMARK(parsing)->Arg(20)->Arg(10'000);
BENCHMARK(bytesToRecords)->Arg(20)->Arg(10'000);
BENCHMARK_MAIN();
