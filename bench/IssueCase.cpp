#include "bench/Bench.h"
#include "bench/Comparison.h"
#include "bench/IssueAnswer.h"
#include "platform/foundation/values/DateFormatter.h"
#include "platform/foundation/values/JSON.h"
#include "records/JAIssueObject.h"

#include <QLoggingCategory>

#include <chrono>

namespace bench {

namespace {

constexpr int attachments = 10'000;
/// Making one takes far longer than using it.
constexpr int formatters = attachments / 100;

double secondsOf(const std::function<void()>& work)
{
    const auto begin = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
}

/// The dates alone, with the formatter that all attachments share and with one for each.
Row dateRow(int runs)
{
    const QString pattern = QStringLiteral("yyyy-MM-dd'T'HH:mm:s.SSSZZZ");
    const QString text = QStringLiteral("2017-10-16T10:06:29.399+0200");
    const tljira::DateFormatter shared = tljira::DateFormatter::withPattern(pattern);
    int read = 0;
    const Comparison comparison = compare(
        runs,
        [&] {
            return secondsOf([&] {
                for (int i = 0; i < attachments; ++i)
                    read += shared.dateFromString(text).has_value();
            });
        },
        [&] {
            return secondsOf([&] {
                for (int i = 0; i < formatters; ++i)
                    read += tljira::DateFormatter::withPattern(pattern).dateFromString(text).has_value();
            });
        });
    const double ours = comparison.ours / attachments;
    const double peer = comparison.peer / formatters;
    return {"its date, one formatter for all (one formatter each)",
            seconds(ours),
            seconds(peer),
            times(ours / peer),
            "below 1.00",
            ours < peer};
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
                const auto issue = JAIssueObject::initWithDictionary(tljira::decodeJSON(answer)->toObject());
                made = issue->attachments().size();
            });
        },
        [&] {
            return secondsOf([&] { made = static_cast<std::size_t>(tljira::decodeJSON(answer)->toObject().size()); });
        });
    const double ours = comparison.ours / attachments;
    const double parsing = comparison.peer / attachments;
    return {{"issue answer with 10,000 attachments, bytes to records, each (parsing alone)", seconds(ours),
             seconds(parsing), times(comparison.ratio), "stated", true},
            dateRow(bench.runs)};
}

} // namespace bench
