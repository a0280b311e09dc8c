#include "platform/console/Input.h"

#include "platform/console/SignalPipe.h"

#include <cerrno>
#include <poll.h>
#include <unistd.h>

namespace tljira::console {

namespace {

bool isInterrupted(int descriptor, int interruptDescriptor)
{
    std::array<pollfd, 2> descriptors = {pollfd{interruptDescriptor, POLLIN, 0}, pollfd{descriptor, POLLIN, 0}};
    while (::poll(descriptors.data(), descriptors.size(), -1) < 0 && errno == EINTR) {
    }
    return (descriptors[0].revents & POLLIN) != 0;
}

} // namespace

Input Input::standardInput()
{
    return Input(STDIN_FILENO);
}

Input::Result Input::read(char& byte, const InterruptSignal& interrupts) const
{
    if (isInterrupted(m_descriptor, interrupts.m_pipe->readEnd()))
        return Result::Interrupted;
    ssize_t count = 0;
    do
        count = ::read(m_descriptor, &byte, 1);
    while (count < 0 && errno == EINTR);
    if (count < 0)
        return Result::Failed;
    return count == 1 ? Result::Byte : Result::End;
}

} // namespace tljira::console
