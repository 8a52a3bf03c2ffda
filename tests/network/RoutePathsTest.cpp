// Ways through the tree of routes, the ends of a set of routes, and main lines.

#include "support/Networks.h"

#include <gmock/gmock.h>

namespace {

using support::Ids;
using support::Network;

// ---- from one route to another ----

class RouteWay : public testing::Test {
protected:
    Network m_net{"W: B>A; A>M; V: X; W: M; D>M; C>A; E:"};
    support::OpenManager& m_manager = m_net.manager;

    std::string Way(const char* from, const char* to, const char* web = "W", const char* before = "") const
    {
        return m_net.After(
            before, [&](auto& out) { return m_manager.GetRouteIdListFromTo(m_net[from], m_net[to], m_net[web], out); });
    }
};

TEST_F(RouteWay, RunsDownstreamWithBothEnds)
{
    EXPECT_EQ(Way("B", "M"), "true: B A M");
    EXPECT_EQ(Way("B", "A", "W", "X"), "true: X B A");
}

TEST_F(RouteWay, FromARouteToItselfIsTheRouteWhateverTheWeb)
{
    EXPECT_EQ(Way("B", "B", "W", "X"), "true: X B");
    EXPECT_EQ(Way("B", "B", "V"), "true: B");
    EXPECT_EQ(Way("B", "B", "E"), "true: B");
}

TEST_F(RouteWay, ThereIsNoneToARouteUpstream)
{
    EXPECT_EQ(Way("M", "B", "W", "X"), "false: X");
    EXPECT_EQ(Way("A", "B", "W", "X"), "false: X");
}

TEST_F(RouteWay, ThereIsNoneToARouteBesideIt)
{
    EXPECT_EQ(Way("B", "D"), "false:");
    EXPECT_EQ(Way("B", "X"), "false:");
}

TEST_F(RouteWay, ThereIsNoneThroughAnotherWeb)
{
    EXPECT_EQ(Way("B", "M", "V"), "false:");
    EXPECT_EQ(Way("B", "M", "E", "X"), "false: X");
}

TEST_F(RouteWay, OnARingItReachesEveryRouteAndEnds)
{
    m_net.Route("M").SetConnectId(static_cast<unsigned long>(m_net["B"]));
    EXPECT_EQ(Way("M", "A"), "true: M B A");
    EXPECT_EQ(Way("M", "D"), "false:");
}

// ---- the ends of a set ----

class EndsOfASet : public testing::Test {
protected:
    Network m_net{"W: B>A; A>M; V: X; W: M; D>M; C>A; N"};
    support::OpenManager& m_manager = m_net.manager;

    std::string Low(const char* set, const char* before = "") const
    {
        const Ids list = m_net.List(set);
        return m_net.After(before, [&](auto& out) { return m_manager.GetLowRouteId(list, out); });
    }
    std::string Heads(const char* set, const char* before = "") const
    {
        const Ids list = m_net.List(set);
        return m_net.After(before, [&](auto& out) { return m_manager.GetUpperRouteId(list, out); });
    }
};

TEST_F(EndsOfASet, TheLowestRoutesOfAWebAreThoseAtTheFlowEndByFlowOrder)
{
    m_net.Set(L"floworder", {{"M", L"3"}, {"N", L"2"}, {"A", L"1"}});
    EXPECT_EQ(Low("M A B C D N"), "true: N M");
    EXPECT_EQ(Low("M A B C D N", "X"), "true: X N M");
}

TEST_F(EndsOfASet, TheLowestRoutesOfASetFlowOutOfIt)
{
    m_net.Set(L"floworder", {{"A", L"3"}, {"B", L"1"}, {"C", L"1"}, {"D", L"2"}});
    EXPECT_EQ(Low("A B C D"), "true: D A");
    EXPECT_EQ(Low("B D C"), "true: B C D");
}

TEST_F(EndsOfASet, AnEmptySetHasNoEnds)
{
    EXPECT_EQ(Low("", "X"), "false: X");
    EXPECT_EQ(Heads("", "X"), "false: X");
}

TEST_F(EndsOfASet, HeadRoutesStandInTheOrderOfTheSet)
{
    m_net.Set(L"floworder", {{"C", L"9"}, {"D", L"8"}, {"B", L"7"}});
    EXPECT_EQ(Heads("C D M A B"), "true: C D B");
    EXPECT_EQ(Heads("M A", "X"), "true: X A");
}

TEST_F(EndsOfASet, ARouteIsAHeadWhenNothingOfTheSetFlowsIntoIt)
{
    EXPECT_EQ(Heads("M D"), "true: D");
    EXPECT_EQ(Heads("A M"), "true: A");
    EXPECT_EQ(Heads("M B"), "true: M B");
}

TEST_F(EndsOfASet, OneRouteIsItsOwnHead)
{
    EXPECT_EQ(Heads("M"), "true: M");
    EXPECT_EQ(Heads("A"), "true: A");
    EXPECT_EQ(Low("A"), "true: A");
}

TEST_F(EndsOfASet, ARingHasNoHeadsAndTheResultIsStillTrue)
{
    m_net.Route("M").SetConnectId(static_cast<unsigned long>(m_net["B"]));
    EXPECT_EQ(Heads("M A B", "X"), "true: X");
}

TEST_F(EndsOfASet, UnknownRoutesAloneGiveNoHeads)
{
    Ids out;
    EXPECT_FALSE(m_manager.GetUpperRouteId(Ids{0, 9999, m_net["W"]}, out));
}

// ---- top nodes of a web ----

class Tops : public testing::Test {
protected:
    Network m_net{"W: B>M = b1-m, b2-b1; V: X = x-y; W: M = m-n-o; A>M = a-m; E:"};
    support::OpenManager& m_manager = m_net.manager;

    std::string Nodes(const char* web, const char* before = "") const
    {
        return m_net.After(before, [&](auto& out) { return m_manager.GetMostUpperNode(m_net[web], out); });
    }
    std::string ByNode(const char* web, const char* before = "") const
    {
        return m_net.After(before, [&](auto& out) { return m_manager.GetMostUpperRouteByNode(m_net[web], out); });
    }
};

TEST_F(Tops, TheTopNodesOfAWebAreThoseOfItsHeadRoutes)
{
    EXPECT_EQ(Nodes("W"), "true: b2 a");
    EXPECT_EQ(Nodes("W", "x"), "true: x b2 a");
    EXPECT_EQ(Nodes("V"), "true: x");
}

TEST_F(Tops, AHeadRouteWithoutATopGivesNone)
{
    m_net.Add("W: C>M");
    EXPECT_EQ(Nodes("W", "x"), "false: x");
}

TEST_F(Tops, ARouteBelowNeedsNoTop)
{
    m_net.Add("W: F; G>F = g-h");
    EXPECT_EQ(Nodes("W"), "true: b2 a g");
}

TEST_F(Tops, AWebWithoutRoutesHasNone)
{
    EXPECT_EQ(Nodes("E", "x"), "false: x");
}

TEST_F(Tops, TheRoutesOfTopSpansStandInSpanOrder)
{
    EXPECT_EQ(ByNode("W"), "true: B A");
    EXPECT_EQ(ByNode("V"), "true: X");
}

TEST_F(Tops, ASpanIntoWhichAnotherWebFlowsIsNoTop)
{
    m_net.Add("V: X = y-a");
    EXPECT_EQ(ByNode("W"), "true: B");
}

TEST_F(Tops, ARouteWithTwoTopSpansStandsTwice)
{
    m_net.Add("W: C = c1-k, c2-k");
    EXPECT_EQ(ByNode("W"), "true: B A C C");
}

TEST_F(Tops, TheRouteResultTellsWhetherTheListHoldsAnything)
{
    EXPECT_EQ(ByNode("E"), "false:");
    EXPECT_EQ(ByNode("E", "X"), "true: X");
    const Network ring("W: R = a-b-c-a");
    EXPECT_EQ(ring.After("", [&](auto& out) { return ring.manager.GetMostUpperRouteByNode(ring["W"], out); }),
              "false:");
}

// ---- main lines ----

class MainLine : public testing::Test {
protected:
    Network m_net{"W: M = m-n-o; A>M = a-m; B>M = b2-b1-m; C>B = c-b2; D>B = d-b2; V: X = x-y; F"};
    support::OpenManager& m_manager = m_net.manager;

    std::string Above(const char* route, const char* before = "") const
    {
        return m_net.After(before,
                           [&](CList<long, long>& out) { m_manager.GetUpperRouteObjectList(m_net[route], out); });
    }
    std::string BySphst(const char* web, const char* before = "") const
    {
        return m_net.After(before, [&](auto& out) { return m_manager.GetRouteBySphst(m_net[web], out); });
    }
    std::string BySphdt(const char* web, const char* before = "") const
    {
        return m_net.After(before, [&](auto& out) { return m_manager.GetRouteBySphdt(m_net[web], out); });
    }
};

TEST_F(MainLine, AboveARouteListsTheOtherRoutesOnceAlongTheHighestInflows)
{
    m_net.Set(L"lowercentinv", {{"a-m", L"1"}, {"b1-m", L"2"}, {"c-b2", L"3"}, {"d-b2", L"4"}});
    EXPECT_EQ(Above("M"), "B D");
    EXPECT_EQ(Above("M", "X"), "X B D");
    EXPECT_EQ(Above("B"), "D");
    EXPECT_EQ(Above("C"), "");
}

TEST_F(MainLine, AboveARouteLeavesOutWhatTheListHolds)
{
    m_net.Set(L"lowercentinv", {{"b1-m", L"2"}, {"d-b2", L"4"}});
    EXPECT_EQ(Above("M", "D X"), "D X B");
}

TEST_F(MainLine, AboveARouteStaysInItsWeb)
{
    m_net.Add("V: X = y-m");
    m_net.Set(L"lowercentinv", {{"b1-m", L"2"}, {"y-m", L"9"}});
    EXPECT_EQ(Above("B"), "C");
    EXPECT_EQ(Above("M"), "B C");
}

TEST_F(MainLine, AboveARouteWithoutALowestSpanIsNothing)
{
    m_net.Add("V: R = r-s-r");
    EXPECT_EQ(Above("F", "X"), "X");
    EXPECT_EQ(Above("R", "X"), "X");
    Ids out;
    m_manager.GetUpperRouteObjectList(0, out);
    EXPECT_TRUE(out.IsEmpty());
}

TEST_F(MainLine, AboveARouteEndsOnARingOfSpans)
{
    const Network net("W: M = k-o; A = j-k; B = k-j");
    EXPECT_EQ(net.After("", [&](CList<long, long>& out) { net.manager.GetUpperRouteObjectList(net["M"], out); }),
              "A B");
}

TEST_F(MainLine, ByASpanValueFollowsTheGreatestValueOfTheLowestSpans)
{
    m_net.Set(L"sphst", {{"n-o", L"1"}, {"a-m", L"2"}, {"b1-m", L"2.5"}, {"b2-b1", L"0"}, {"c-b2", L"8"}});
    m_net.Set(L"sphfdt", {{"n-o", L"1"}, {"a-m", L"2"}, {"b1-m", L"1.5"}, {"b2-b1", L"9"}, {"c-b2", L"8"}});
    EXPECT_EQ(BySphst("W"), "true: M B C");
    EXPECT_EQ(BySphdt("W"), "true: M A");
    EXPECT_EQ(BySphst("W", "X"), "true: X M B C");
    EXPECT_EQ(BySphdt("W", "X"), "true: X M A");
}

TEST_F(MainLine, ByASpanValueOfEqualOnesFollowsTheFirstByFlowOrder)
{
    for (const wchar_t* key : {L"sphst", L"sphfdt"})
        m_net.Set(key, {{"n-o", L"1"}, {"a-m", L"2"}, {"b1-m", L"2"}, {"c-b2", L"5"}, {"d-b2", L"5"}});
    m_net.Set(L"floworder", {{"A", L"2"}, {"B", L"1"}, {"C", L"2"}, {"D", L"1"}});
    EXPECT_EQ(BySphst("W"), "true: M B D");
    EXPECT_EQ(BySphdt("W"), "true: M B D");
}

TEST_F(MainLine, ByASpanValueTakesNegativeValuesAsTheyAre)
{
    for (const wchar_t* key : {L"sphst", L"sphfdt"})
        m_net.Set(key, {{"n-o", L"-7"}, {"a-m", L"-3"}, {"b1-m", L"-4"}});
    EXPECT_EQ(BySphst("W"), "true: M A");
    EXPECT_EQ(BySphdt("W"), "true: M A");
}

TEST_F(MainLine, ByASpanValueStartsAtTheBestOfSeveralFlowEnds)
{
    m_net.Add("W: N = p-q; P>N = r-p");
    for (const wchar_t* key : {L"sphst", L"sphfdt"})
        m_net.Set(key, {{"n-o", L"1"}, {"p-q", L"2"}});
    EXPECT_EQ(BySphst("W"), "true: N P");
    EXPECT_EQ(BySphdt("W"), "true: N P");
}

TEST_F(MainLine, ByASpanValueIsFalseAtARouteWithoutALowestSpan)
{
    m_net.Add("W: G>M");
    EXPECT_EQ(BySphst("W", "X"), "false: X M");
    EXPECT_EQ(BySphdt("W", "X"), "false: X M");
    m_net.Add("U: G2");
    EXPECT_EQ(BySphst("U", "X"), "false: X");
    EXPECT_EQ(BySphdt("U", "X"), "false: X");
}

TEST_F(MainLine, ByASpanValueNeedsRoutes)
{
    m_net.Add("E:");
    EXPECT_EQ(BySphst("E", "X"), "false: X");
    EXPECT_EQ(BySphdt("E", "X"), "false: X");
}

TEST_F(MainLine, ByASpanValueIsEmptyWhenNoRouteIsAtTheFlowEnd)
{
    m_net.Add("U: P>Q = p-q; Q>P = q-p");
    EXPECT_EQ(BySphst("U", "X"), "true: X");
    EXPECT_EQ(BySphdt("U", "X"), "true: X");
}

// ---- where two webs meet ----

class OverlapOfWebs : public testing::Test {
protected:
    Network m_net{"W: M = m-o; A>M = a-m; B>M = b-m; V: N = n-v; K = k-v2; E:"};
    support::OpenManager& m_manager = m_net.manager;

    void SetUp() override
    {
        m_net.Set(L"cx", {{"m", L"1"}, {"o", L"2"}, {"a", L"5"}, {"b", L"6"}, {"n", L"7"}, {"v", L"5"}, {"v2", L"6"}});
    }
    // "true: <spans> / <nodes>"; both lists hold something before.
    std::string Overlap(const char* web, const char* nodes) const
    {
        const Ids given = m_net.List(nodes);
        Ids outNodes = m_net.List("k");
        const std::string spans = m_net.After(
            "n-v", [&](auto& out) { return m_manager.GetOverlapRouteFromWebs(m_net[web], given, out, outNodes); });
        return spans + " / " + m_net.Names(outNodes);
    }
};

TEST_F(OverlapOfWebs, SpansThatStartWhereANodeStandsAreListedWithTheNode)
{
    EXPECT_EQ(Overlap("W", "v"), "true: n-v a-m / v");
    EXPECT_EQ(Overlap("W", "v2 n v"), "true: n-v b-m a-m / v2 v");
}

TEST_F(OverlapOfWebs, EachNodeListsEachSpan)
{
    m_net.Set(L"cx", {{"b", L"5"}, {"v2", L"5"}});
    EXPECT_EQ(Overlap("W", "v v2"), "true: n-v a-m b-m a-m b-m / v v v2 v2");
}

TEST_F(OverlapOfWebs, SpansThatStartAtAGivenNodeAreLeftOut)
{
    EXPECT_EQ(Overlap("W", "v a"), "false: n-v / ");
    EXPECT_EQ(Overlap("W", "a"), "false: n-v / ");
}

TEST_F(OverlapOfWebs, WhereSpansEndDoesNotCount)
{
    m_net.Set(L"cx", {{"o", L"8"}, {"v", L"8"}});
    EXPECT_EQ(Overlap("W", "v"), "false: n-v / ");
}

TEST_F(OverlapOfWebs, WithoutNodesThereIsNone)
{
    EXPECT_EQ(Overlap("W", ""), "false: n-v / ");
}

TEST_F(OverlapOfWebs, AWebWithoutSpansHasNoneAndTheNodesAreEmptiedAllTheSame)
{
    EXPECT_EQ(Overlap("E", "v"), "false: n-v / ");
}

} // namespace
