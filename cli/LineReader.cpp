#include "cli/LineReader.h"

#include <array>
#include <cerrno>
#include <poll.h>
#include <unistd.h>

namespace cli {

namespace {

constexpr qsizetype longestLine = 4096;

enum class Wake { Input, Interrupt };

Wake waitForInput(int descriptor, int interruptDescriptor)
{
    std::array<pollfd, 2> descriptors = {pollfd{interruptDescriptor, POLLIN, 0}, pollfd{descriptor, POLLIN, 0}};
    while (::poll(descriptors.data(), descriptors.size(), -1) < 0 && errno == EINTR) {
    }
    return (descriptors[0].revents & POLLIN) != 0 ? Wake::Interrupt : Wake::Input;
}

/// False at the end of the input, and when it cannot be read.
bool readByte(int descriptor, char& byte)
{
    ssize_t count = 0;
    do
        count = ::read(descriptor, &byte, 1);
    while (count < 0 && errno == EINTR);
    return count == 1;
}

InputLine lineOf(QByteArray bytes)
{
    if (bytes.endsWith('\r'))
        bytes.chop(1);
    return {InputLine::Kind::Line, QString::fromUtf8(bytes)};
}

} // namespace

InputLine readLine(int descriptor, int interruptDescriptor)
{
    QByteArray bytes;
    while (bytes.size() <= longestLine) {
        if (waitForInput(descriptor, interruptDescriptor) == Wake::Interrupt)
            return {InputLine::Kind::Interrupted, {}};
        char byte = 0;
        if (!readByte(descriptor, byte))
            return bytes.isEmpty() ? InputLine() : lineOf(bytes);
        if (byte == '\n')
            return lineOf(bytes);
        bytes += byte;
    }
    return {InputLine::Kind::TooLong, {}};
}

} // namespace cli
