#include "framework/plugin/JobCalls.h"

#include "tests/kit/LoneDocument.h"

#include <QFileInfo>

#include <gmock/gmock.h>

namespace {

using Outcome = TLJiraJobs::Outcome;

class JobCallsTest : public testing::Test
{
protected:
    TLJiraJobs::Options optionsOf(const QVariantMap& named)
    {
        problem.clear();
        return JobCalls::options(named, problem);
    }

    QString problem;
};

TEST_F(JobCallsTest, knowEachOption)
{
    EXPECT_EQ(optionsOf({}), TLJiraJobs::NoOptions);
    EXPECT_EQ(optionsOf({{QStringLiteral("closeWhenDone"), true}}), TLJiraJobs::CloseWhenDone);
    EXPECT_EQ(optionsOf({{QStringLiteral("uploadOutlivesWindow"), true}}), TLJiraJobs::UploadOutlivesWindow);
    EXPECT_EQ(optionsOf({{QStringLiteral("closeWhenDone"), false}}), TLJiraJobs::NoOptions);
    EXPECT_EQ(optionsOf({{QStringLiteral("closeWhenDone"), true}, {QStringLiteral("uploadOutlivesWindow"), true}}),
              TLJiraJobs::CloseWhenDone | TLJiraJobs::UploadOutlivesWindow);
    EXPECT_EQ(problem, QString());
}

TEST_F(JobCallsTest, sayWhichOptionTheyDoNotKnow)
{
    optionsOf({{QStringLiteral("closeWhenDone"), true}, {QStringLiteral("colour"), true}});
    EXPECT_EQ(problem, QStringLiteral("This Jira plug-in has no option “colour”."));
}

TEST_F(JobCallsTest, takeNothingButTrueOrFalse)
{
    for (const QVariant& value : {QVariant(1), QVariant(QStringLiteral("yes")), QVariant()}) {
        optionsOf({{QStringLiteral("closeWhenDone"), value}});
        EXPECT_EQ(problem, QStringLiteral("The option “closeWhenDone” is either true or false."));
    }
}

TEST_F(JobCallsTest, tellAllOfAResult)
{
    TLJiraJobs::Result result;
    result.outcome = Outcome::Done;
    result.issueKey = QStringLiteral("ABC-1");
    result.attachmentId = QStringLiteral("10000");
    result.attachmentName = QStringLiteral("plan.tessaloom");
    result.size = qint64(5) << 30;
    result.path = QStringLiteral("/there/plan.tessaloom");
    const QVariantMap expected{
        {QStringLiteral("outcome"), QStringLiteral("done")},
        {QStringLiteral("error"), QString()},
        {QStringLiteral("errorDomain"), QString()},
        {QStringLiteral("errorCode"), qint64(0)},
        {QStringLiteral("serverSentence"), QString()},
        {QStringLiteral("issueKey"), QStringLiteral("ABC-1")},
        {QStringLiteral("attachmentId"), QStringLiteral("10000")},
        {QStringLiteral("attachmentName"), QStringLiteral("plan.tessaloom")},
        {QStringLiteral("size"), qint64(5) << 30},
        {QStringLiteral("path"), QStringLiteral("/there/plan.tessaloom")},
    };

    EXPECT_EQ(JobCalls::map(result), expected);
}

TEST_F(JobCallsTest, tellWhyAJobFailed)
{
    TLJiraJobs::Result result;
    result.outcome = Outcome::Failed;
    result.error = tljira::makeError(QStringLiteral("domain"), 404, QStringLiteral("There is none."));
    result.serverSentence = QStringLiteral("Issue Does Not Exist");
    const QVariantMap map = JobCalls::map(result);

    EXPECT_EQ(map.value(QStringLiteral("outcome")), QStringLiteral("failed"));
    EXPECT_EQ(map.value(QStringLiteral("error")), QStringLiteral("There is none."));
    EXPECT_EQ(map.value(QStringLiteral("errorDomain")), QStringLiteral("domain"));
    EXPECT_EQ(map.value(QStringLiteral("errorCode")), qint64(404));
    EXPECT_EQ(map.value(QStringLiteral("serverSentence")), QStringLiteral("Issue Does Not Exist"));
}

TEST_F(JobCallsTest, tellOfACancel)
{
    EXPECT_EQ(JobCalls::map({}).value(QStringLiteral("outcome")), QStringLiteral("cancelled"));
}

TEST_F(JobCallsTest, removeWhatWasHandedOverOnceAnUploadWasTried)
{
    const tests::LoneDocument file;
    TLJiraJobs::Result result;
    JobCalls::removeHandedOver(file.path(), result);
    EXPECT_TRUE(QFileInfo::exists(file.path()));

    result.issueKey = QStringLiteral("ABC-1");
    JobCalls::removeHandedOver(file.path(), result);
    EXPECT_FALSE(QFileInfo::exists(QFileInfo(file.path()).path()));
}

} // namespace
