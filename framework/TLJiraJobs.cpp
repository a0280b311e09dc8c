#include "framework/TLJiraJobs.h"

#include "framework/jobs/AttachJob.h"
#include "framework/jobs/FetchJob.h"

bool TLJiraJobs::attach(const Document& document, QObject* parent, const Ended& ended, Options options)
{
    return jobs::AttachJob::begin(document, {parent, ended, options});
}

bool TLJiraJobs::fetch(QObject* parent, const Ended& ended, Options options)
{
    const auto job = jobs::FetchJob::begin({parent, ended, options});
    if (job)
        job->show();
    return job != nullptr;
}

std::optional<TLJiraJobs::Result> TLJiraJobs::fetchAndWait(QObject* parent, Options options)
{
    std::optional<Result> result;
    if (const auto job = jobs::FetchJob::begin({parent, [&result](const Result& end) { result = end; }, options}))
        job->run();
    return result;
}
