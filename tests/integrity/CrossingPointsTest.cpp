// What a crossing point lies on: its route, its crossing and its span.

#include "integrity/RecordsOnRoutes.h"

#include <gmock/gmock.h>

namespace {

using support::Network;
using support::values;

using Pairs = std::initializer_list<std::pair<const wchar_t*, const wchar_t*>>;

class CrossingPoints : public testing::Test {
protected:
    Network m_net{"W: R = b-c, a-b, c-d; S = g-h-g; V: T = e-f"};
    CObjectManager& m_manager = m_net.manager;

    void SetUp() override
    {
        m_net.Set(L"splength", {{"a-b", L"4"}, {"b-c", L"8"}, {"c-d", L"16"}});
        m_net.Name(m_manager.CreateInters({})->GetId32(), "X");
    }
    long Point(const char* first, const char* second, Pairs entered = {})
    {
        return m_manager.CreateIntPos(m_net[first], m_net[second], values(entered))->GetId32();
    }
    // "true: route crossing span".
    std::string Found(long pointId)
    {
        long route = -1;
        long crossing = -1;
        long span = -1;
        const bool isFound = m_manager.GetIdFromIntpos(pointId, &route, &crossing, &span);
        return (isFound ? "true: " : "false: ") + m_net.Names({route, crossing, span});
    }
};

TEST_F(CrossingPoints, AnUnknownPointGivesZeros)
{
    for (const long unknown : {0L, -1L, 99999L, m_net["R"]})
        EXPECT_EQ(Found(unknown), "false: 0 0 0");
    EXPECT_FALSE(m_manager.GetIdFromIntpos(99999, nullptr, nullptr, nullptr));
}

TEST_F(CrossingPoints, WithoutARouteNothingIsFound)
{
    EXPECT_EQ(Found(Point("X", "e-f", {{L"ipspanid", L"1"}})), "false: 0 0 0");
}

TEST_F(CrossingPoints, TheRouteMayBeEitherId)
{
    EXPECT_EQ(Found(Point("R", "X")), "true: R X a-b");
    EXPECT_EQ(Found(Point("X", "R")), "true: R X a-b");
}

TEST_F(CrossingPoints, OfTwoRoutesTheFirstCounts)
{
    EXPECT_EQ(Found(Point("R", "T")), "true: R 0 a-b");
    EXPECT_EQ(Found(Point("T", "R")), "true: T 0 e-f");
}

TEST_F(CrossingPoints, EachResultMayBeLeftOut)
{
    const long point = Point("R", "X");
    long id = -1;
    EXPECT_TRUE(m_manager.GetIdFromIntpos(point, &id, nullptr, nullptr));
    EXPECT_EQ(m_net.NameOf(id), "R");
    EXPECT_TRUE(m_manager.GetIdFromIntpos(point, nullptr, &id, nullptr));
    EXPECT_EQ(m_net.NameOf(id), "X");
    EXPECT_TRUE(m_manager.GetIdFromIntpos(point, nullptr, nullptr, &id));
    EXPECT_EQ(m_net.NameOf(id), "a-b");
}

// Whatever could fail about the span does not count.
TEST_F(CrossingPoints, WithoutTheSpanTheSearchEndsAtTheRoute)
{
    const long point = Point("R", "X", {{L"ipspannum", L"-5"}});
    long route = 0;
    long crossing = 0;
    EXPECT_TRUE(m_manager.GetIdFromIntpos(point, &route, &crossing, nullptr));
    EXPECT_EQ(m_net.Names({route, crossing}), "R X");
}

TEST_F(CrossingPoints, APlacedPointHasItsSpan)
{
    const long point = Point("R", "e-f", {{L"ipindist", L"99"}});
    m_manager.GetIntPosObjectOriginal(point)->WriteSubAttributeInt(L"ipspanid", static_cast<int>(m_net["c-d"]));
    EXPECT_EQ(Found(point), "true: R 0 c-d");
}

TEST_F(CrossingPoints, APointThatIsNotPlacedHasTheCrossedSpan)
{
    EXPECT_EQ(Found(Point("R", "e-f", {{L"ipindist", L"99"}})), "true: R 0 e-f");
    EXPECT_EQ(Found(Point("e-f", "R")), "true: R 0 e-f");
}

TEST_F(CrossingPoints, OtherwiseTheSpanFollowsFromTheDistance)
{
    EXPECT_EQ(Found(Point("R", "X", {{L"ipindist", L"5"}})), "true: R X b-c");
    EXPECT_EQ(Found(Point("R", "X", {{L"ipindist", L"5"}, {L"ipdistdir", L"1"}})), "true: R X c-d");
    EXPECT_EQ(Found(Point("R", "X", {{L"ipindist", L"29"}})), "false: R X 0");
}

TEST_F(CrossingPoints, OrFromTheSpanNumber)
{
    EXPECT_EQ(Found(Point("R", "X", {{L"ipspannum", L"1"}})), "true: R X a-b");
    EXPECT_EQ(Found(Point("R", "X", {{L"ipspannum", L"3"}, {L"ipindist", L"99"}})), "true: R X c-d");
    EXPECT_EQ(Found(Point("R", "X", {{L"ipspannum", L"4"}})), "false: R X 0");
    EXPECT_EQ(Found(Point("R", "X", {{L"ipspannum", L"-1"}})), "false: R X 0");
}

TEST_F(CrossingPoints, ByNumberARouteWithoutOrderHasNoSpan)
{
    EXPECT_EQ(Found(Point("S", "X", {{L"ipspannum", L"1"}})), "true: S X 0");
}

TEST_F(CrossingPoints, ByDistanceARouteWithoutOrderIsAnInvalidArgument)
{
    EXPECT_THROW(Found(Point("S", "X")), CInvalidArgException);
}

TEST_F(CrossingPoints, AnObjectThatIsNoCrossingIsLeftOut)
{
    EXPECT_EQ(Found(Point("R", "a")), "true: R 0 a-b");
    const long gone = m_manager.CreateIntPos(m_net["R"], 99999, {})->GetId32();
    EXPECT_EQ(Found(gone), "true: R 0 a-b");
}

} // namespace
