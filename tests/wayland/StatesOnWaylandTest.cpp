#include "tests/wayland/WaylandTest.h"

namespace {

using namespace tests;

/// Each state of each window on a compositor.
class StatesOnWaylandTest : public WaylandTest, public testing::WithParamInterface<State>
{
};

INSTANTIATE_TEST_SUITE_P(States, StatesOnWaylandTest, testing::ValuesIn(allStates()),
                         [](const auto& test) { return test.param.name; });

TEST_P(StatesOnWaylandTest, isReachedWithKeysAndClosed)
{
    (scene.*GetParam().reach)();
    picture(QStringLiteral("asItIs"));
    expectInFront();
    EXPECT_TRUE(seen().isFloating);
    closeAndExpectFreeHost();
    server.release();
}

} // namespace
