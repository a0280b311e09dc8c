#pragma once

namespace tests {

/// While it lives, the call of this number that waits for the disk (fsync) fails with an input/output error.
class FailingSync
{
public:
    explicit FailingSync(int number);
    ~FailingSync();
    FailingSync(const FailingSync&) = delete;
    FailingSync& operator=(const FailingSync&) = delete;
};

} // namespace tests
