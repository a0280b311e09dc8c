#include "bench/Bench.h"
#include "bench/Comparison.h"
#include "bench/IssueAnswer.h"
#include "platform/foundation/values/JSON.h"
#include "records/CreatedDate.h"
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

/// The dates alone.
Row dateRow(int runs)
{
    const QString text = QStringLiteral("2017-10-16T10:06:29.399+02:00");
    int read = 0;
    const auto secondsOfAll = [&](auto readOne) {
        return secondsOf([&] {
            for (int i = 0; i < attachments; ++i)
                read += readOne();
        });
    };
    const Comparison comparison = compare(
        runs, [&] { return secondsOfAll([&] { return records::createdDate(text).has_value(); }); },
        [&] { return secondsOfAll([&] { return QDateTime::fromString(text, Qt::ISODateWithMs).isValid(); }); });
    const double ours = comparison.ours / attachments;
    const double peer = comparison.peer / attachments;
    return {"its date (QDateTime::fromString, which is less strict)",
            seconds(ours),
            seconds(peer),
            times(comparison.ratio),
            "stated",
            read > 0};
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
