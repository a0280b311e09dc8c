#include "platform/console/Terminal.h"

#include <gtest/gtest.h>

#include <unistd.h>

namespace {

TEST(Terminal, hidesNothingWhereThereIsNone)
{
    // A session of its own has no terminal; only a child may leave the session that it was started in.
    EXPECT_EXIT(
        {
            ::setsid();
            const tljira::console::Terminal terminal;
            terminal.write("nobody sees this");
            ::_exit(terminal.hideTyping() ? 1 : 42);
        },
        testing::ExitedWithCode(42), "");
}

} // namespace
