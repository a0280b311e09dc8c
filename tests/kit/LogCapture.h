#pragma once

#include <QStringList>

namespace tests {

/// Keeps the lines of the platform log from being shown while it lives, and hands them to the test. One at a time.
class LogCapture
{
public:
    LogCapture();
    ~LogCapture();
    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;

    /// Oldest first, of all threads.
    QStringList lines() const;
    void clear();
};

} // namespace tests
