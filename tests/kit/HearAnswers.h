#pragma once

#include "client/JAController.h"
#include "tests/kit/Jira.h"
#include "tests/kit/WaitUntil.h"

#include <gtest/gtest.h>

namespace tests {

/// Asks the server one question more, and returns with its answer: until then the server has heard what was asked
/// before, and the client what was answered before.
inline void hearAnswers(JAController& client)
{
    bool isAnswered = false;
    client.sendGetRequest(Jira::address, [&](const auto&, const auto&, const auto&) { isAnswered = true; });
    ASSERT_TRUE(waitUntil([&] { return isAnswered; }));
    drainMainQueue();
}

} // namespace tests
