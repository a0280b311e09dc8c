#include "platform/foundation/settings/BackgroundWriter.h"

#include "tests/kit/WaitUntil.h"

#include <gtest/gtest.h>

#include <atomic>
#include <semaphore>

namespace {

using tljira::BackgroundWriter;

class BackgroundWriterTest : public testing::Test
{
protected:
    /// Work that ends when the test lets it.
    void work(bool mustWrite)
    {
        hadToWrite = mustWrite;
        ++begun;
        mayEnd.acquire();
        thread = std::this_thread::get_id();
        ++done;
    }

    BackgroundWriter::Owner owner()
    {
        return {[this](bool mustWrite) { work(mustWrite); }, [this] { return isHeldUp.load(); },
                [this] { hasStoppedWaiting = true; }};
    }

    std::counting_semaphore<100> mayEnd{0};
    std::atomic<int> begun = 0;
    std::atomic<int> done = 0;
    std::atomic<bool> hadToWrite = false;
    std::atomic<bool> isHeldUp = false;
    std::atomic<bool> hasStoppedWaiting = false;
    std::atomic<std::thread::id> thread;
};

TEST_F(BackgroundWriterTest, worksOnAThreadOfItsOwnOnceForManyRequests)
{
    BackgroundWriter writer(owner());
    writer.ask();
    ASSERT_TRUE(tests::waitUntil([this] { return begun == 1; }));
    for (int count = 0; count < 10; ++count)
        writer.ask();
    // One for the first, one for the ten, one for the finish, one for the writer's own end.
    mayEnd.release(4);
    EXPECT_TRUE(writer.finish());
    EXPECT_LE(begun, 3);
    EXPECT_EQ(begun, done);
    EXPECT_NE(thread.load(), std::this_thread::get_id());
}

TEST_F(BackgroundWriterTest, waitsForAReaderNoLongerThanItSays)
{
    BackgroundWriter writer(owner());
    writer.look(std::chrono::milliseconds(1));
    ASSERT_TRUE(tests::waitUntil([this] { return begun == 1; }));
    EXPECT_EQ(done, 0);
    // There is work already.
    writer.look(std::chrono::hours(1));
    EXPECT_EQ(done, 0);
    EXPECT_FALSE(hadToWrite);
    mayEnd.release(2);
    EXPECT_TRUE(writer.finish());
    EXPECT_TRUE(hadToWrite);
    mayEnd.release(1);
    writer.look(std::chrono::hours(1));
    EXPECT_EQ(done, 3);
    mayEnd.release(1);
}

TEST_F(BackgroundWriterTest, finishGivesUpWhenOthersHoldTheWorkUp)
{
    BackgroundWriter writer(owner());
    isHeldUp = true;
    EXPECT_FALSE(writer.finish());
    EXPECT_EQ(done, 0);
    isHeldUp = false;
    mayEnd.release(3);
    EXPECT_TRUE(writer.finish());
}

TEST_F(BackgroundWriterTest, doesWhatWasAskedForBeforeItEnds)
{
    mayEnd.release(2);
    {
        BackgroundWriter writer(owner());
        writer.ask();
    }
    EXPECT_GE(done, 1);
    EXPECT_TRUE(hasStoppedWaiting);
}

TEST_F(BackgroundWriterTest, thatWasNeverAskedDoesNothing)
{
    BackgroundWriter{owner()};
    EXPECT_EQ(begun, 0);
}

} // namespace
