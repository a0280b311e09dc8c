#include "constants/JAConstants.h"
#include "platform/foundation/settings/UserDefaults.h"
#include "tests/states/Animations.h"
#include "tests/states/Scene.h"
#include "tests/states/WakeUps.h"
#include "tests/states/WindowHands.h"

#include <QApplication>
#include <QTimer>

namespace {

using namespace tests;
using namespace std::chrono_literals;

/// The states in which nothing happens until the user does something. In the others a sign that something is under way
/// moves.
std::vector<State> statesAtRest()
{
    std::vector<State> states;
    for (const State& state : allStates()) {
        const QByteArray name = state.name;
        if (name != "sessionCheck" && name != "olderWindow" && name != "olderLoginSheet" &&
            !name.endsWith("UnderWay") && !name.endsWith("loading"))
            states.push_back(state);
    }
    return states;
}

/// A machine whose programs wake up for nothing soon has an empty battery.
class IdleInStatesTest : public JiraTest, public testing::WithParamInterface<State>
{
protected:
    IdleInStatesTest()
    {
        QApplication::setDoubleClickInterval(0);
        // The caret of a field blinks because the user's desktop wants it to, not the framework.
        QApplication::setCursorFlashTime(0);
        tljira::UserDefaults::standardUserDefaults().setObject(true, kClearCache);
    }

    /// A timer is seen whose times lie closer together than this.
    static std::chrono::seconds span()
    {
        return std::chrono::seconds(std::max(3, qEnvironmentVariableIntValue("TLJIRA_IDLE_SECONDS")));
    }

    WindowHands hands;
    Scene scene{hands, server, [this] { logIn(); }};
};

INSTANTIATE_TEST_SUITE_P(States, IdleInStatesTest, testing::ValuesIn(statesAtRest()),
                         [](const auto& test) { return test.param.name; });

TEST_P(IdleInStatesTest, wakesNothingUp)
{
    (scene.*GetParam().reach)();
    waitForAnimations();
    EXPECT_EQ(whoRunsWhileIdle(span(), 20), "");
}

/// In one of ten spans, since a busy machine may let a thread wait for longer than one.
bool isSomethingSeen()
{
    for (int span = 0; span < 10; ++span) {
        if (!whoRunsWhileIdle(1s, 1).empty())
            return true;
    }
    return false;
}

TEST(WakeUps, areSeen)
{
    QTimer timer;
    timer.start(100ms);
    EXPECT_TRUE(isSomethingSeen());
    // Nor is it rest when there is always something more to do.
    timer.start(0ms);
    EXPECT_TRUE(isSomethingSeen());
    timer.stop();
    EXPECT_EQ(whoRunsWhileIdle(1s, 30), "");
}

} // namespace
