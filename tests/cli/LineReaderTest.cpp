#include "cli/LineReader.h"

#include "tests/kit/Printers.h"

#include <gtest/gtest.h>

#include <array>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace {

using namespace Qt::StringLiterals;
using Kind = cli::InputLine::Kind;

class Pipe
{
public:
    Pipe() { EXPECT_EQ(::pipe(m_ends.data()), 0); }
    ~Pipe()
    {
        ::close(m_ends[0]);
        close();
    }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;

    int readEnd() const { return m_ends[0]; }
    void write(const QByteArray& bytes) const
    {
        EXPECT_EQ(::write(m_ends[1], bytes.constData(), static_cast<std::size_t>(bytes.size())), bytes.size());
    }
    void close()
    {
        if (m_ends[1] >= 0)
            ::close(m_ends[1]);
        m_ends[1] = -1;
    }

private:
    std::array<int, 2> m_ends = {-1, -1};
};

class LineReader : public testing::Test
{
protected:
    cli::InputLine read() const { return cli::readLine(tljira::console::Input(input.readEnd()), interrupts); }

    Pipe input;
    tljira::console::InterruptSignal interrupts;
};

TEST_F(LineReader, readsLineByLine)
{
    input.write("first pass wörd \nsecond\r\n\n");
    for (const QString& text : {u"first pass wörd "_s, u"second"_s, u""_s}) {
        const cli::InputLine line = read();
        EXPECT_EQ(line.kind, Kind::Line);
        EXPECT_EQ(line.text, text);
    }
}

TEST_F(LineReader, readsNoByteBeyondTheLine)
{
    input.write("line\nrest");
    EXPECT_EQ(read().text, u"line"_s);
    std::array<char, 10> rest = {};
    EXPECT_EQ(::read(input.readEnd(), rest.data(), rest.size()), 4);
}

TEST_F(LineReader, takesALineWithoutItsEnd)
{
    input.write("last");
    input.close();
    EXPECT_EQ(read().text, u"last"_s);
    EXPECT_EQ(read().kind, Kind::NoLine);
}

TEST_F(LineReader, refusesALineThatDoesNotEnd)
{
    input.write(QByteArray(5000, 'x'));
    EXPECT_EQ(read().kind, Kind::TooLong);
}

TEST_F(LineReader, isInterruptedWithoutTakingTheSignal)
{
    ::raise(SIGINT);
    EXPECT_EQ(read().kind, Kind::Interrupted);
    EXPECT_EQ(read().kind, Kind::Interrupted);
}

TEST_F(LineReader, takesNothingFromAnInputThatFails)
{
    const int folder = ::open("/", O_RDONLY | O_DIRECTORY);
    EXPECT_EQ(cli::readLine(tljira::console::Input(folder), interrupts).kind, Kind::Unreadable);
    ::close(folder);
}

} // namespace
