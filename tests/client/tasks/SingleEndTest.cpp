#include "client/tasks/SingleEnd.h"

#include "tests/kit/WaitUntil.h"

#include <QCoreApplication>

#include <gmock/gmock.h>

#include <string>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class Job : public client::SingleEnd
{
public:
    explicit Job(std::vector<std::string>& events)
        : m_events(events)
    {
    }
    ~Job() override { m_events.push_back("gone"); }

    using SingleEnd::endNow;
    using SingleEnd::finish;
    using SingleEnd::giveUp;
    using SingleEnd::keep;

private:
    void stop() override
    {
        // What it breaks off may end at once.
        EXPECT_TRUE(isOver());
        m_events.push_back("stopped");
    }
    void tell() override { m_events.push_back("told"); }

    std::vector<std::string>& m_events;
};

class SingleEndTest : public testing::Test
{
protected:
    /// Nobody but itself holds it.
    Job& begin()
    {
        const auto job = std::make_shared<Job>(events);
        job->keep();
        return *job;
    }

    std::vector<std::string> events;
};

TEST_F(SingleEndTest, isKeptUntilItHasBeenTold)
{
    Job& job = begin();
    EXPECT_THAT(events, IsEmpty());
    EXPECT_FALSE(job.isOver());
    job.finish();
    EXPECT_TRUE(job.isOver());
    EXPECT_THAT(events, IsEmpty());

    tests::drainMainQueue();
    EXPECT_THAT(events, ElementsAre("told", "gone"));
}

TEST_F(SingleEndTest, isToldOnceHoweverOftenItIsSettled)
{
    const auto job = std::make_shared<Job>(events);
    job->keep();
    job->finish();
    job->finish();
    job->giveUp();
    tests::drainMainQueue();
    job->finish();
    job->endNow();
    tests::drainMainQueue();

    EXPECT_THAT(events, ElementsAre("stopped", "told", "stopped"));
}

TEST_F(SingleEndTest, isStoppedAtOnceAndToldLaterWhenItIsGivenUp)
{
    Job& job = begin();
    job.giveUp();
    EXPECT_TRUE(job.isOver());
    EXPECT_THAT(events, ElementsAre("stopped"));

    tests::drainMainQueue();
    EXPECT_THAT(events, ElementsAre("stopped", "told", "gone"));
}

TEST_F(SingleEndTest, isToldBeforeTheCallReturnsWhereItEndsNow)
{
    begin().endNow();
    EXPECT_THAT(events, ElementsAre("stopped", "told"));

    tests::drainMainQueue();
    EXPECT_THAT(events, ElementsAre("stopped", "told", "gone"));
}

TEST_F(SingleEndTest, endsWithTheApplicationAlsoWhereItsEndIsOnItsWay)
{
    begin();
    begin().finish();
    QMetaObject::invokeMethod(qApp, &QCoreApplication::quit, Qt::QueuedConnection);
    QCoreApplication::exec();
    tests::drainMainQueue();

    EXPECT_EQ(std::count(events.begin(), events.end(), "told"), 2);
    EXPECT_EQ(std::count(events.begin(), events.end(), "gone"), 2);
}

} // namespace
