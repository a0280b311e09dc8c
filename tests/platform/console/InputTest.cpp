#include "platform/console/Input.h"

#include <gtest/gtest.h>

#include <array>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace {

using tljira::console::Input;

class InputTest : public testing::Test
{
protected:
    InputTest() { EXPECT_EQ(::pipe(ends.data()), 0); }
    ~InputTest() override
    {
        ::close(ends[0]);
        ::close(ends[1]);
    }
    Input::Result read() { return Input(ends[0]).read(byte, interrupts); }

    tljira::console::InterruptSignal interrupts;
    std::array<int, 2> ends = {-1, -1};
    char byte = 0;
};

TEST_F(InputTest, givesByteAfterByteUpToTheEnd)
{
    ASSERT_EQ(::write(ends[1], "ab", 2), 2);
    ::close(ends[1]);
    ends[1] = -1;
    EXPECT_EQ(read(), Input::Result::Byte);
    EXPECT_EQ(byte, 'a');
    EXPECT_EQ(read(), Input::Result::Byte);
    EXPECT_EQ(byte, 'b');
    EXPECT_EQ(read(), Input::Result::End);
}

TEST_F(InputTest, putsAnInterruptBeforeTheBytesAndLeavesItPending)
{
    ASSERT_EQ(::write(ends[1], "a", 1), 1);
    ::raise(SIGINT);
    EXPECT_EQ(read(), Input::Result::Interrupted);
    EXPECT_TRUE(interrupts.isPending());
    EXPECT_EQ(byte, 0);
}

TEST_F(InputTest, hasFailedWhereNothingCanBeRead)
{
    const int folder = ::open("/", O_RDONLY | O_DIRECTORY);
    EXPECT_EQ(Input(folder).read(byte, interrupts), Input::Result::Failed);
    ::close(folder);
}

} // namespace
