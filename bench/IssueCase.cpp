#include "bench/Bench.h"
#include "bench/Comparison.h"
#include "bench/IssueAnswer.h"
#include "platform/foundation/JSON.h"
#include "records/JAIssueObject.h"

#include <QLoggingCategory>

#include <chrono>

namespace bench {

namespace {

constexpr int attachments = 10'000;

double secondsOf(const std::function<void()>& work)
{
    const auto begin = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
}

} // namespace

std::vector<Row> issueCase(const Bench& bench)
{
    QLoggingCategory::setFilterRules(QStringLiteral("platform.log=false"));
    const QByteArray answer = issueAnswer(attachments);
    std::size_t made = 0;
    const Comparison comparison = compare(
        bench.runs,
        [&] {
            return secondsOf([&] {
                const auto issue = JAIssueObject::initWithDictionary(platform::decodeJSON(answer)->toObject());
                made = issue->attachments().size();
            });
        },
        [&] {
            return secondsOf([&] { made = static_cast<std::size_t>(platform::decodeJSON(answer)->toObject().size()); });
        });
    const double ours = comparison.ours / attachments;
    const double parsing = comparison.peer / attachments;
    return {{"issue answer with 10,000 attachments, bytes to records, each (parsing alone)", seconds(ours),
             seconds(parsing), times(comparison.ratio), "records cost no more than parsing: at most 2.00",
             comparison.ratio <= 2.0}};
}

} // namespace bench
