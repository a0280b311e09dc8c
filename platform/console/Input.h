#pragma once

#include "platform/console/InterruptSignal.h"

namespace tljira::console {

/// Bytes that are typed or come through a pipe, one at a time, so that those behind a line are left for whoever reads
/// next.
class Input
{
public:
    enum class Result { Byte, End, Failed, Interrupted };

    /// Of the process.
    static Input standardInput();

    /// `descriptor` is a file number of the C runtime and stays its owner's. An interrupt ends the wait for a byte and
    /// still waits to be handled then.
    explicit Input(int descriptor)
        : m_descriptor(descriptor)
    {
    }

    Result read(char& byte, const InterruptSignal& interrupts) const;

private:
    int m_descriptor;
};

} // namespace tljira::console
