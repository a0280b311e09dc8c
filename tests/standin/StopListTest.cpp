#include "standin/StopList.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

using namespace standin;

constexpr auto never = std::numeric_limits<std::int64_t>::max();

TEST(StopList, putsTheResponseBodyBehindTheHead)
{
    const auto list = StopList::forResponse(Fault().close(Point::responseBody(5)).hold(Point::responseHead(3)), 100);
    EXPECT_EQ(list.distance(0), 3);
    EXPECT_EQ(list.distance(3), 102);
    EXPECT_EQ(list.distance(105), never);
    ASSERT_EQ(list.at(105).size(), 1U);
    EXPECT_EQ(list.at(105).front().action, Stop::Action::close);
    EXPECT_TRUE(list.at(104).empty());
}

TEST(StopList, aPlaceBehindTheHeadIsNotInTheBody)
{
    const auto list = StopList::forResponse(Fault().close(Point::responseHead(101)), 100);
    EXPECT_EQ(list.distance(0), never);
}

TEST(StopList, keepsTheDirectionsApart)
{
    const auto fault = Fault().reset(Point::requestBody(0)).reset(Point::responseHead(1));
    EXPECT_EQ(StopList::forRequest(fault).at(0).size(), 1U);
    EXPECT_EQ(StopList::forRequest(fault).distance(0), never);
    EXPECT_TRUE(StopList::forResponse(fault, 10).at(0).empty());
}

TEST(StopList, severalStopsAtAPlaceStayInTheirOrder)
{
    using namespace std::chrono_literals;
    const auto stops =
        StopList::forRequest(Fault().delay(5ms, Point::requestBody(7)).close(Point::requestBody(7))).at(7);
    ASSERT_EQ(stops.size(), 2U);
    EXPECT_EQ(stops[0].action, Stop::Action::delay);
    EXPECT_EQ(stops[0].duration, 5ms);
    EXPECT_EQ(stops[1].action, Stop::Action::close);
}

} // namespace
