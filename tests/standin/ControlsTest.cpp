#include "standin/Controls.h"

#include <gtest/gtest.h>

namespace {

using namespace standin;

/// The status of the fault that applies, 0 for none.
int taken(Controls& controls, const std::string& path, const std::string& method = "GET")
{
    const auto fault = controls.take(method, path);
    return fault.answer() ? fault.answer()->code : 0;
}

TEST(Controls, theNextRequestsAreCounted)
{
    Controls controls;
    controls.add(Match::next(2), Fault().status(500));
    EXPECT_EQ(taken(controls, "/a"), 500);
    EXPECT_EQ(taken(controls, "/b"), 500);
    EXPECT_EQ(taken(controls, "/c"), 0);
}

TEST(Controls, aPathAndAMethodAreMatched)
{
    Controls controls;
    controls.add(Match::on("POST", "/rest/*"), Fault().status(500));
    EXPECT_EQ(taken(controls, "/rest/x", "GET"), 0);
    EXPECT_EQ(taken(controls, "/secure", "POST"), 0);
    EXPECT_EQ(taken(controls, "/rest/x", "POST"), 500);
    EXPECT_EQ(taken(controls, "/rest/x", "POST"), 500);
}

TEST(Controls, theOldestFaultThatIsLeftApplies)
{
    Controls controls;
    controls.add(Match::on("/a").once(), Fault().status(501));
    controls.add(Match::on("*"), Fault().status(502));
    EXPECT_EQ(taken(controls, "/a"), 501);
    EXPECT_EQ(taken(controls, "/a"), 502);
}

TEST(Controls, matchingRequestsCanBeSkipped)
{
    Controls controls;
    controls.add(Match::on("/a").after(1).once(), Fault().status(500));
    EXPECT_EQ(taken(controls, "/a"), 0);
    EXPECT_EQ(taken(controls, "/b"), 0);
    EXPECT_EQ(taken(controls, "/a"), 500);
    EXPECT_EQ(taken(controls, "/a"), 0);
}

TEST(Controls, clearingForgetsAllFaults)
{
    Controls controls;
    controls.add(Match::on("*"), Fault().status(500));
    controls.clear();
    EXPECT_EQ(taken(controls, "/a"), 0);
}

TEST(Controls, releasingFreesOnlyWhatIsHeldNow)
{
    Controls controls;
    const auto first = controls.hold();
    EXPECT_TRUE(controls.isHeld(first));
    controls.releaseAll();
    EXPECT_FALSE(controls.isHeld(first));
    const auto second = controls.hold();
    EXPECT_TRUE(controls.isHeld(second));
    EXPECT_EQ(controls.heldCount(), 1U);
    controls.leave(second);
    EXPECT_EQ(controls.heldCount(), 0U);
}

TEST(Controls, connectionResetsAreCounted)
{
    Controls controls;
    EXPECT_FALSE(controls.takeConnectionReset());
    controls.resetConnections(1);
    EXPECT_TRUE(controls.takeConnectionReset());
    EXPECT_FALSE(controls.takeConnectionReset());
}

} // namespace
