// Areas and slope lengths of spans, routes and webs.

#include "support/Networks.h"

#include <gmock/gmock.h>

#include <cmath>

namespace {

using support::Network;

class Areas : public testing::Test {
protected:
    // Upstream first: B and C into A, A into M. "1" on the web: each span holds its own area.
    Network m_net{"W: M = n-o, m-n; A>M = a-m; B>A = b-a; C>A = c2-a, c1-c2; V: X = x-y"};

    void SetUp() override { m_net.Set(L"wbareasetflg", {{"W", L"1"}}); }

    void AddArea(const char* span, const wchar_t* hectares)
    {
        m_net.manager.CreateAreaSet(m_net[span], support::values({{L"asarea", hectares}}));
    }
    // `m_area` has what the call left.
    bool SpanArea(long span) { return m_net.manager.GetSpanArea(span, m_area); }
    bool RouteArea(const char* route) { return m_net.manager.GetRouteArea(m_net[route], m_area); }
    bool AreaUpstream(const char* route, bool flag) { return m_net.manager.GetRouteAreaT(m_net[route], m_area, flag); }

    bool SlopeLength(long span, double& length)
    {
        return m_net.manager.GetSpanSyakyori(static_cast<unsigned long>(span), length);
    }

    double m_area = 77;
};

// ---- where areas stand ----

TEST_F(Areas, TheFlagOfASpanIsThatOfItsWeb)
{
    m_net.Set(L"wbareasetflg", {{"W", L"2"}});
    EXPECT_EQ(m_net.manager.GetWbareasetflg(m_net["a-m"]), 2);
    EXPECT_EQ(m_net.manager.GetWbareasetflg(m_net["x-y"]), 0);
}

TEST_F(Areas, WithoutAWebTheFlagIsZero)
{
    m_net.AddSpan("x", "a", 9999);
    EXPECT_EQ(m_net.manager.GetWbareasetflg(m_net["x-a"]), 0);
    EXPECT_EQ(m_net.manager.GetWbareasetflg(0), 0);
    EXPECT_EQ(m_net.manager.GetWbareasetflg(m_net["M"]), 0);
}

// ---- one span ----

TEST_F(Areas, TheAreaOfASpanIsTheSumOfItsRecords)
{
    AddArea("a-m", L"1.25");
    AddArea("b-a", L"100");
    AddArea("a-m", L"0.5");
    EXPECT_TRUE(SpanArea(m_net["a-m"]));
    EXPECT_DOUBLE_EQ(m_area, 1.75);
}

TEST_F(Areas, ASpanWithoutRecordsHasNoArea)
{
    EXPECT_FALSE(SpanArea(m_net["a-m"]));
    EXPECT_EQ(m_area, 0.0);
}

TEST_F(Areas, ARecordOfNoAreaCounts)
{
    m_net.manager.CreateAreaSet(m_net["a-m"], {});
    EXPECT_TRUE(SpanArea(m_net["a-m"]));
    EXPECT_EQ(m_area, 0.0);
}

TEST_F(Areas, ASpanThatIsSaidToHaveNoAreaHasZero)
{
    AddArea("a-m", L"1.25");
    m_net.Set(L"spnoarea", {{"a-m", L"1"}, {"b-a", L"1"}});
    EXPECT_TRUE(SpanArea(m_net["a-m"]));
    EXPECT_EQ(m_area, 0.0);
    m_area = 77;
    EXPECT_TRUE(SpanArea(m_net["b-a"])) << "no record is needed then";
    EXPECT_EQ(m_area, 0.0);
    m_net.Set(L"spnoarea", {{"a-m", L"0"}});
    EXPECT_TRUE(SpanArea(m_net["a-m"]));
    EXPECT_DOUBLE_EQ(m_area, 1.25);
}

TEST_F(Areas, AnUnknownSpanHasNoArea)
{
    EXPECT_FALSE(SpanArea(0));
    EXPECT_EQ(m_area, 0.0);
    m_area = 77;
    EXPECT_FALSE(SpanArea(m_net["M"]));
    EXPECT_EQ(m_area, 0.0);
}

// ---- one route ----

TEST_F(Areas, TheAreaOfARouteIsTheSumOverItsSpans)
{
    AddArea("c1-c2", L"1");
    AddArea("c2-a", L"2");
    AddArea("b-a", L"100");
    EXPECT_TRUE(RouteArea("C"));
    EXPECT_DOUBLE_EQ(m_area, 3);
}

TEST_F(Areas, OneSpanWithAnAreaIsEnoughForARoute)
{
    AddArea("c2-a", L"2");
    EXPECT_TRUE(RouteArea("C"));
    EXPECT_DOUBLE_EQ(m_area, 2);
    m_area = 77;
    EXPECT_FALSE(RouteArea("B"));
    EXPECT_EQ(m_area, 0.0);
}

TEST_F(Areas, WithFlagZeroTheUppermostSpanHoldsTheAreaOfTheRoute)
{
    m_net.Set(L"wbareasetflg", {{"W", L"0"}});
    AddArea("c1-c2", L"1");
    AddArea("c2-a", L"2");
    EXPECT_TRUE(RouteArea("C"));
    EXPECT_DOUBLE_EQ(m_area, 1);
}

TEST_F(Areas, WithFlagZeroAnAreaOfALowerSpanDoesNotCount)
{
    m_net.Set(L"wbareasetflg", {{"W", L"0"}});
    AddArea("c2-a", L"2");
    EXPECT_FALSE(RouteArea("C"));
    EXPECT_EQ(m_area, 0.0);
}

TEST_F(Areas, ARouteWithoutSpansHasNoArea)
{
    m_net.Add("W: E");
    EXPECT_FALSE(RouteArea("E"));
    EXPECT_EQ(m_area, 0.0);
    m_area = 77;
    EXPECT_FALSE(m_net.manager.GetRouteArea(0, m_area));
    EXPECT_EQ(m_area, 0.0);
}

// ---- a web ----

TEST_F(Areas, TheAreaOfAWebIsAddedToWhatIsThere)
{
    AddArea("c1-c2", L"1");
    AddArea("a-m", L"2");
    AddArea("x-y", L"100");
    EXPECT_TRUE(m_net.manager.GetWebArea(m_net["W"], m_area));
    EXPECT_DOUBLE_EQ(m_area, 80);
}

TEST_F(Areas, AWebWithoutAnyAreaAddsNothing)
{
    AddArea("x-y", L"100");
    m_net.Add("E:");
    EXPECT_FALSE(m_net.manager.GetWebArea(m_net["W"], m_area));
    EXPECT_FALSE(m_net.manager.GetWebArea(m_net["E"], m_area));
    EXPECT_FALSE(m_net.manager.GetWebArea(0, m_area));
    EXPECT_EQ(m_area, 77);
}

// ---- everything upstream ----

TEST_F(Areas, TheAreaUpstreamLeavesTheRoutesOwnOut)
{
    AddArea("m-n", L"1000");
    AddArea("a-m", L"100");
    AddArea("b-a", L"10");
    AddArea("c1-c2", L"1");
    AddArea("c2-a", L"2");
    for (const bool flag : {true, false}) {
        EXPECT_TRUE(AreaUpstream("M", flag));
        EXPECT_DOUBLE_EQ(m_area, 113);
        EXPECT_TRUE(AreaUpstream("A", flag));
        EXPECT_DOUBLE_EQ(m_area, 13);
    }
}

TEST_F(Areas, WithFlagZeroTheUppermostSpansUpstreamCount)
{
    m_net.Set(L"wbareasetflg", {{"W", L"0"}});
    AddArea("a-m", L"100");
    AddArea("b-a", L"10");
    AddArea("c1-c2", L"1");
    AddArea("c2-a", L"2");
    EXPECT_TRUE(AreaUpstream("A", false));
    EXPECT_DOUBLE_EQ(m_area, 11);
}

TEST_F(Areas, WithoutAnAreaOfItsOwnARouteHasNoneUpstream)
{
    AddArea("b-a", L"10");
    EXPECT_FALSE(AreaUpstream("A", true));
    EXPECT_EQ(m_area, 0.0);
    m_area = 77;
    EXPECT_FALSE(AreaUpstream("A", false));
    EXPECT_EQ(m_area, 0.0);
}

TEST_F(Areas, AHeadRouteGivesTheOppositeOfTheFlag)
{
    AddArea("b-a", L"10");
    EXPECT_FALSE(AreaUpstream("B", true));
    EXPECT_EQ(m_area, 0.0);
    m_area = 77;
    EXPECT_TRUE(AreaUpstream("B", false));
    EXPECT_EQ(m_area, 0.0);
}

TEST_F(Areas, NoAreaUpstreamIsFalseWhateverTheFlag)
{
    AddArea("a-m", L"100");
    EXPECT_FALSE(AreaUpstream("A", true));
    EXPECT_FALSE(AreaUpstream("A", false));
    EXPECT_EQ(m_area, 0.0);
}

TEST_F(Areas, RoutesOfOtherWebsAreNotUpstream)
{
    AddArea("b-a", L"10");
    AddArea("x-y", L"5");
    m_net.Route("X").SetConnectId(static_cast<unsigned long>(m_net["B"]));
    EXPECT_FALSE(AreaUpstream("B", true));
    EXPECT_TRUE(AreaUpstream("B", false));
    EXPECT_EQ(m_area, 0.0);
}

// ---- along the slope ----

TEST_F(Areas, TheLengthAlongTheSlopeIsThatOfTheHypotenuse)
{
    m_net.Set(L"splength", {{"a-m", L"4"}});
    m_net.Set(L"uppercentinv", {{"a-m", L"7.5"}});
    m_net.Set(L"lowercentinv", {{"a-m", L"4.5"}});
    double length = 77;
    EXPECT_TRUE(SlopeLength(m_net["a-m"], length));
    EXPECT_DOUBLE_EQ(length, 5);
}

TEST_F(Areas, ASpanThatRisesIsAsLongAsOneThatFalls)
{
    m_net.Set(L"splength", {{"a-m", L"4"}});
    m_net.Set(L"lowercentinv", {{"a-m", L"3"}});
    double length = 77;
    EXPECT_TRUE(SlopeLength(m_net["a-m"], length));
    EXPECT_DOUBLE_EQ(length, 5);
}

TEST_F(Areas, ASpanOfNoLengthHasNoneAlongTheSlope)
{
    m_net.Set(L"uppercentinv", {{"a-m", L"7.5"}, {"b-a", L"7.5"}});
    m_net.Set(L"splength", {{"b-a", L"0.000009"}});
    double length = 77;
    EXPECT_TRUE(SlopeLength(m_net["a-m"], length));
    EXPECT_EQ(length, 0.0);
    length = 77;
    EXPECT_TRUE(SlopeLength(m_net["b-a"], length));
    EXPECT_EQ(length, 0.0);
    m_net.Set(L"splength", {{"b-a", L"0.00002"}});
    EXPECT_TRUE(SlopeLength(m_net["b-a"], length));
    EXPECT_DOUBLE_EQ(length, std::sqrt(0.00002 * 0.00002 + 7.5 * 7.5));
}

TEST_F(Areas, AnUnknownSpanHasNoSlope)
{
    double length = 77;
    EXPECT_FALSE(SlopeLength(0, length));
    EXPECT_FALSE(SlopeLength(m_net["M"], length));
}

} // namespace
