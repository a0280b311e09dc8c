#include "platform/console/StandardStreams.h"

#include "tests/kit/Printers.h"

#include <gtest/gtest.h>

#include <array>
#include <fcntl.h>
#include <thread>
#include <unistd.h>

namespace {

using namespace Qt::StringLiterals;

TEST(StandardStreams, makeAnErrorOfAReaderThatHasGone)
{
    std::array<int, 2> ends = {-1, -1};
    ASSERT_EQ(::pipe(ends.data()), 0);
    const int before = ::dup(STDOUT_FILENO);
    ::close(ends[0]);
    ::dup2(ends[1], STDOUT_FILENO);
    tljira::console::prepareStandardStreams();
    const auto problem = tljira::console::writeOutput("text");
    ::dup2(before, STDOUT_FILENO);
    EXPECT_EQ(problem, u"Broken pipe"_s);
    EXPECT_EQ(tljira::console::writeOutput({}), std::nullopt);
}

TEST(StandardStreams, waitForAReaderWhoIsSlowAlsoWhereWritingDoesNotWait)
{
    std::array<int, 2> ends = {-1, -1};
    ASSERT_EQ(::pipe(ends.data()), 0);
    ASSERT_EQ(::fcntl(ends[1], F_SETFL, O_NONBLOCK), 0);
    const int before = ::dup(STDOUT_FILENO);
    ::dup2(ends[1], STDOUT_FILENO);
    ::close(ends[1]);
    const QByteArray text(300'000, 'x');
    QByteArray read;
    std::thread reader([&] {
        std::array<char, 4096> bytes = {};
        for (ssize_t count = 1; count > 0 && read.size() < text.size(); read.append(bytes.data(), count))
            count = ::read(ends[0], bytes.data(), bytes.size());
    });
    const auto problem = tljira::console::writeOutput(text);
    ::dup2(before, STDOUT_FILENO);
    reader.join();
    ::close(ends[0]);
    EXPECT_EQ(problem, std::nullopt);
    EXPECT_EQ(read, text);
}

TEST(StandardStreams, putEmptyOnesInThePlaceOfClosedOnes)
{
    const int before = ::dup(STDIN_FILENO);
    ::close(STDIN_FILENO);
    tljira::console::prepareStandardStreams();
    char byte = 0;
    EXPECT_EQ(::read(STDIN_FILENO, &byte, 1), 0);
    ::dup2(before, STDIN_FILENO);
}

TEST(StandardStreams, areEightyColumnsWideWhereNoTerminalIs)
{
    std::array<int, 2> ends = {-1, -1};
    ASSERT_EQ(::pipe(ends.data()), 0);
    const int before = ::dup(STDERR_FILENO);
    ::dup2(ends[1], STDERR_FILENO);
    const bool isTerminal = tljira::console::isErrorTerminal();
    const int columns = tljira::console::terminalColumns();
    ::dup2(before, STDERR_FILENO);
    EXPECT_FALSE(isTerminal);
    EXPECT_EQ(columns, 80);
}

} // namespace
