// Finding the outlet of a web and moving it; divide nodes.

#include "support/Networks.h"

#include <gmock/gmock.h>

#include <string>

namespace {

using support::Ids;
using support::Network;

// ---- finding ----

std::string FlowEnd(const Network& net, const char* web)
{
    long node = 0;
    return net.manager.GetFlowEndNodeId(net[web], node) ? "true: " + net.NameOf(node) : "false:";
}

std::string FlowEndList(const Network& net, const char* web, const char* before = "")
{
    return net.After(before, [&](auto& out) { return net.manager.GetFlowEndNodeIdList(net[web], out); });
}

TEST(FlowEnds, TheFlowEndIsWhereASpanEndsAndNoneStarts)
{
    const Network net("W: A>M = a-m; M = m-o; N = n-o; V: X = o-y");
    EXPECT_EQ(FlowEnd(net, "W"), "true: o");
    EXPECT_EQ(FlowEnd(net, "V"), "true: y");
    EXPECT_EQ(FlowEndList(net, "W"), "true: o");
}

TEST(FlowEnds, OfTwoFlowEndsTheOneFirstMetIsToldAndTheListHasBoth)
{
    const Network net("W: M = m-o; N = n-p; A = a-o");
    EXPECT_EQ(FlowEnd(net, "W"), "true: o");
    EXPECT_EQ(FlowEndList(net, "W"), "true: o p");
    EXPECT_EQ(FlowEndList(net, "W", "m"), "true: m o p");
}

TEST(FlowEnds, AFlowEndThatTheListHoldsIsNotListedAgain)
{
    const Network net("W: M = m-o; N = n-p");
    EXPECT_EQ(FlowEndList(net, "W", "p"), "true: p o");
}

TEST(FlowEnds, AWebWithoutSpansHasNoFlowEnd)
{
    const Network net("W: M; V: X = x-y");
    EXPECT_EQ(FlowEnd(net, "W"), "false:");
    EXPECT_EQ(FlowEndList(net, "W"), "false:");
}

TEST(FlowEnds, ARingHasNoFlowEndAndItsListIsTrue)
{
    const Network net("W: R = a-b-c-a");
    EXPECT_EQ(FlowEnd(net, "W"), "false:");
    EXPECT_EQ(FlowEndList(net, "W"), "true:");
}

// ---- routes whose direction is settled ----

class FixedRoutes : public testing::Test {
protected:
    Network m_net{"W: A; B; C; D>A; V: X; E:"};

    std::string Fixed(const char* web, const char* before = "") const
    {
        return m_net.After(before, [&](auto& out) { return m_net.manager.GetFlowEndFixedRoute(m_net[web], out); });
    }
};

TEST_F(FixedRoutes, AreThoseAtTheFlowEndByOrder)
{
    m_net.Set(L"rtstate", {{"A", L"1"}, {"B", L"2"}, {"C", L"1"}, {"D", L"1"}, {"X", L"1"}});
    m_net.Set(L"order", {{"A", L"4"}, {"B", L"3"}, {"C", L"2"}, {"D", L"1"}});
    EXPECT_EQ(Fixed("W"), "true: C A");
    EXPECT_EQ(Fixed("W", "X"), "true: X C A");
}

TEST_F(FixedRoutes, NoneOfTheRoutesIsFalse)
{
    m_net.Set(L"rtstate", {{"D", L"1"}});
    EXPECT_EQ(Fixed("W", "X"), "false: X");
}

TEST_F(FixedRoutes, AWebWithoutRoutesIsTrue)
{
    EXPECT_EQ(Fixed("E"), "true:");
    EXPECT_EQ(Fixed("E", "X"), "true: X");
}

// ---- moving the outlet to the upper end of a route ----

// A chain: A into B, B at the flow end o. C joins B at its top as A does, T joins A, D ends at o as well.
class MovedFlowEnd : public testing::Test {
protected:
    Network m_net{"W: B = b1-b2-o; A>B = a1-a2-b1; C>B = c-b1; T>A = t-a1; D = d-o; V: X = x-y"};
    support::OpenManager& m_manager = m_net.manager;

    bool Move(const char* route, const wchar_t* name)
    {
        Ids unused = m_net.List("X");
        const bool result = m_manager.ReSetFlowEndNode(m_net[route], name, unused);
        EXPECT_EQ(m_net.Names(unused), "X");
        return result;
    }
    // "true: rewired A B / reversed B"; both lists hold something before.
    std::string MoveTo(const char* route, const char* node, const wchar_t* name)
    {
        Ids rewired = m_net.List("X"), reversed = m_net.List("X");
        const bool result = m_manager.ReSetFlowEndNodeByNode(m_net[route], m_net[node], name, rewired, reversed);
        return std::string(result ? "true" : "false") + ": rewired " + m_net.Names(rewired) + " / reversed " +
               m_net.Names(reversed);
    }
    std::wstring ConnectNumbers(const char* routes) const { return m_net.Get(L"connectnum", routes); }
    std::wstring States(const char* routes) const { return m_net.Get(L"rtstate", routes); }
};

TEST_F(MovedFlowEnd, NothingHappensToARouteAtTheFlowEnd)
{
    m_net.Set(L"connectnum", {{"B", L"old"}});
    EXPECT_TRUE(Move("B", L"new"));
    EXPECT_EQ(ConnectNumbers("B"), L"old");
    EXPECT_EQ(States("B"), L"-");
    EXPECT_EQ(m_net.Ends("b1-b2 b2-o"), "b1-b2 b2-o");
    EXPECT_EQ(m_net.Connects("A B C T D"), "B 0 B A 0");
    EXPECT_EQ(m_net.Get(L"floworder", "A B C T D"), L"- - - - -");
}

TEST_F(MovedFlowEnd, TheRoutesOnTheWayAreTurnedAndHungTheOtherWay)
{
    EXPECT_TRUE(Move("A", L"X"));
    EXPECT_EQ(m_net.Connects("A B"), "0 A");
    EXPECT_EQ(ConnectNumbers("A B"), L"X A");
    EXPECT_EQ(States("A B"), L"1 1");
    EXPECT_EQ(m_net.Ends("a1-a2 a2-b1 b1-b2 b2-o"), "a2-a1 b1-a2 b2-b1 o-b2");
    EXPECT_EQ(m_net.Get(L"spno", "a2-b1 a1-a2 b2-o b1-b2"), L"1 2 1 2");
}

TEST_F(MovedFlowEnd, ARouteThatJoinedTheTopOfThatBelowJoinsTheRouteInstead)
{
    EXPECT_TRUE(Move("A", L"X"));
    EXPECT_EQ(m_net.Connects("C"), "A");
    EXPECT_EQ(ConnectNumbers("C"), L"A");
    EXPECT_EQ(States("C"), L"1");
    EXPECT_EQ(m_net.Ends("c-b1"), "c-b1");
}

TEST_F(MovedFlowEnd, TributariesOfTheRouteAreAtTheNewFlowEnd)
{
    EXPECT_TRUE(Move("A", L"X"));
    EXPECT_EQ(m_net.Connects("T"), "0");
    EXPECT_EQ(ConnectNumbers("T"), L"X");
    EXPECT_EQ(States("T"), L"1");
    EXPECT_EQ(m_net.Ends("t-a1"), "t-a1");
}

TEST_F(MovedFlowEnd, OtherRoutesAtTheOldFlowEndJoinTheLastRouteOnTheWay)
{
    EXPECT_TRUE(Move("A", L"X"));
    EXPECT_EQ(m_net.Connects("D"), "B");
    EXPECT_EQ(ConnectNumbers("D"), L"B");
    EXPECT_EQ(States("D"), L"1");
    EXPECT_EQ(m_net.Ends("d-o"), "d-o");
}

TEST_F(MovedFlowEnd, EveryRouteAtAFlowEndIsHungOnTheLastOneWhereverItEnds)
{
    m_net.Add("W: F = f-p");
    EXPECT_TRUE(Move("A", L"X"));
    EXPECT_EQ(m_net.Connects("F"), "B");
}

TEST_F(MovedFlowEnd, RoutesFurtherUpKeepTheirConnectRoute)
{
    m_net.Add("W: U>T = u-t; K>C = k-c");
    EXPECT_TRUE(Move("A", L"X"));
    EXPECT_EQ(m_net.Connects("U K"), "T C");
    EXPECT_EQ(ConnectNumbers("U K"), L"- -");
    EXPECT_EQ(States("U K"), L"- -");
}

TEST_F(MovedFlowEnd, RoutesOfOtherWebsAreNotRewired)
{
    m_net.Route("X").SetConnectId(static_cast<unsigned long>(m_net["A"]));
    m_net.Add("V: Y");
    EXPECT_TRUE(Move("A", L"X"));
    EXPECT_EQ(m_net.Connects("X Y"), "A 0");
}

TEST_F(MovedFlowEnd, TheFlowOrderIsNumberedAnewFromTheFlowEnd)
{
    m_net.Set(L"floworder", {{"A", L"8"}, {"T", L"5"}, {"B", L"3"}, {"C", L"4"}, {"D", L"7"}});
    EXPECT_TRUE(Move("A", L"X"));
    EXPECT_EQ(m_net.Get(L"floworder", "T A B C D"), L"2 3 2 3 1");
}

TEST_F(MovedFlowEnd, ALongerWayIsTurnedWhole)
{
    EXPECT_TRUE(Move("T", L"X"));
    EXPECT_EQ(m_net.Connects("T A B C D"), "0 T A A B");
    EXPECT_EQ(ConnectNumbers("T A B C D"), L"X T A A B");
    EXPECT_EQ(m_net.Ends("t-a1 a1-a2 b2-o c-b1"), "a1-t a2-a1 o-b2 c-b1");
    EXPECT_EQ(FlowEnd(m_net, "W"), "true: t");
}

TEST_F(MovedFlowEnd, AnUnknownRouteChangesNothing)
{
    Ids unused;
    m_manager.ReSetFlowEndNode(9999, L"X", unused);
    m_manager.ReSetFlowEndNode(0, L"X", unused);
    EXPECT_EQ(m_net.Connects("A B C T D"), "B 0 B A 0");
    EXPECT_EQ(m_net.Get(L"floworder", "A B C T D"), L"- - - - -");
}

TEST_F(MovedFlowEnd, ARingOfRoutesEnds)
{
    m_net.Add("U: P>Q = p-q; Q>P = q-p");
    Ids unused;
    EXPECT_TRUE(m_manager.ReSetFlowEndNode(m_net["P"], L"X", unused));
    EXPECT_EQ(m_net.Connects("P Q"), "0 P");
    EXPECT_EQ(m_net.Ends("p-q q-p"), "q-p p-q");
}

// ---- moving it to either end ----

TEST_F(MovedFlowEnd, ByTheUpperNodeTheRouteIsTurnedAndReported)
{
    EXPECT_EQ(MoveTo("A", "a1", L"X"), "true: rewired A B T C D / reversed B A");
    EXPECT_EQ(m_net.Connects("A B C T D"), "0 A A 0 B");
    EXPECT_EQ(ConnectNumbers("A B C T D"), L"X A A X B");
    EXPECT_EQ(States("A B C T D"), L"1 1 1 1 1");
    EXPECT_EQ(m_net.Ends("a1-a2 a2-b1 b1-b2 b2-o c-b1 t-a1 d-o"), "a2-a1 b1-a2 b2-b1 o-b2 c-b1 t-a1 d-o");
}

TEST_F(MovedFlowEnd, ByTheLowestNodeTheRouteItselfIsNotTurned)
{
    EXPECT_EQ(MoveTo("A", "b1", L"X"), "true: rewired A B T C D / reversed B");
    EXPECT_EQ(m_net.Ends("a1-a2 a2-b1 b1-b2 b2-o"), "a1-a2 a2-b1 b2-b1 o-b2");
    EXPECT_EQ(m_net.Connects("A B C D"), "0 A A B");
    EXPECT_EQ(ConnectNumbers("A B C D"), L"X A A B");
}

TEST_F(MovedFlowEnd, ByTheLowestNodeTributariesOfTheRouteGoToTheFlowEndAsWell)
{
    MoveTo("A", "b1", L"X");
    EXPECT_EQ(m_net.Connects("T"), "0");
    EXPECT_EQ(ConnectNumbers("T"), L"X");
}

TEST_F(MovedFlowEnd, TheLastRouteTurnedIsReportedFirst)
{
    EXPECT_EQ(MoveTo("T", "t", L"X"), "true: rewired T A B C D / reversed B A T");
    EXPECT_EQ(m_net.Connects("T A B C D"), "0 T A A B");
}

TEST_F(MovedFlowEnd, NothingHappensWhenTheNodeIsTheFlowEndOfTheRouteAlready)
{
    m_net.Set(L"connectnum", {{"B", L"old"}});
    EXPECT_EQ(MoveTo("B", "o", L"X"), "true: rewired B / reversed ");
    EXPECT_EQ(ConnectNumbers("B"), L"old");
    EXPECT_EQ(m_net.Connects("A B C T D"), "B 0 B A 0");
    EXPECT_EQ(m_net.Get(L"floworder", "A B C T D"), L"- - - - -");
}

TEST_F(MovedFlowEnd, ARouteAtTheFlowEndIsTurnedForItsOtherEnd)
{
    EXPECT_EQ(MoveTo("B", "b1", L"X"), "true: rewired B A C D / reversed B");
    EXPECT_EQ(m_net.Connects("B A C D T"), "0 0 0 B A");
    EXPECT_EQ(ConnectNumbers("B A C D T"), L"X X X B -");
    EXPECT_EQ(m_net.Ends("b1-b2 b2-o"), "b2-b1 o-b2");
}

TEST_F(MovedFlowEnd, RoutesAtAnotherFlowEndAreMetAndLeftAlone)
{
    m_net.Add("W: F = f-p");
    m_net.Set(L"connectnum", {{"F", L"old"}});
    EXPECT_EQ(MoveTo("A", "a1", L"X"), "true: rewired A B T C D F / reversed B A");
    EXPECT_EQ(m_net.Connects("F"), "0");
    EXPECT_EQ(ConnectNumbers("F"), L"old");
    EXPECT_EQ(States("F D"), L"- 1");
}

TEST_F(MovedFlowEnd, ByNodeTheFlowOrderIsNumberedAnew)
{
    m_net.Set(L"floworder", {{"A", L"8"}, {"T", L"5"}, {"B", L"3"}, {"C", L"4"}, {"D", L"7"}});
    MoveTo("A", "a1", L"X");
    EXPECT_EQ(m_net.Get(L"floworder", "T A B C D"), L"2 3 2 3 1");
}

TEST_F(MovedFlowEnd, ByNodeAWayThatDoesNotReachTheFlowEndIsRefused)
{
    m_net.Route("B").SetConnectId(static_cast<unsigned long>(m_net["X"]));
    EXPECT_EQ(MoveTo("A", "a1", L"X"), "false: rewired A B / reversed ");
    EXPECT_EQ(m_net.Connects("A B"), "B X");
    EXPECT_EQ(m_net.Ends("a1-a2 b1-b2"), "a1-a2 b1-b2");
}

TEST_F(MovedFlowEnd, ByNodeARingOfRoutesIsRefused)
{
    m_net.Add("U: P>Q = p-q; Q>P = q-p");
    EXPECT_EQ(MoveTo("P", "p", L"X"), "false: rewired P Q / reversed ");
    EXPECT_EQ(m_net.Connects("P Q"), "Q P");
}

TEST_F(MovedFlowEnd, ByNodeALastRouteWithoutALowestNodeIsRefused)
{
    m_net.Add("U: Q; P>Q = p-q");
    EXPECT_EQ(MoveTo("P", "p", L"X"), "false: rewired P Q / reversed ");
    EXPECT_EQ(m_net.Connects("P Q"), "Q 0");
}

TEST_F(MovedFlowEnd, ByNodeARouteWithoutALowestNodeFailsHalfWay)
{
    m_net.Add("W: F");
    Ids rewired, reversed;
    EXPECT_FALSE(m_manager.ReSetFlowEndNodeByNode(m_net["A"], m_net["a1"], L"X", rewired, reversed));
    EXPECT_EQ(m_net.Connects("A B"), "0 A");
    EXPECT_EQ(m_net.Names(reversed), "B A");
}

TEST_F(MovedFlowEnd, ByNodeARouteThatIsARingFailsBeforeItIsTurned)
{
    m_net.Add("U: Q = q-r; P>Q = p-q-p");
    Ids rewired, reversed;
    EXPECT_FALSE(m_manager.ReSetFlowEndNodeByNode(m_net["P"], m_net["p"], L"X", rewired, reversed));
    EXPECT_EQ(m_net.Connects("P Q"), "Q 0");
    EXPECT_EQ(m_net.Ends("p-q q-r"), "p-q q-r");
}

TEST_F(MovedFlowEnd, ByNodeAnUnknownRouteIsRefusedWithBothListsEmpty)
{
    Ids rewired = m_net.List("X"), reversed = m_net.List("X");
    EXPECT_FALSE(m_manager.ReSetFlowEndNodeByNode(9999, m_net["a1"], L"X", rewired, reversed));
    EXPECT_TRUE(rewired.IsEmpty());
    EXPECT_TRUE(reversed.IsEmpty());
}

// ---- numbering the flow order ----

class FlowOrder : public testing::Test {
protected:
    Network m_net;
    std::wstring Renumbered(const char* web, long connectId, const char* routes)
    {
        m_net.manager.ReSetRouteSortOrder(m_net[web], connectId);
        return m_net.Get(L"floworder", routes);
    }
};

TEST_F(FlowOrder, OfASingleRouteIsOne)
{
    m_net.Add("W: M; V: X");
    m_net.Set(L"floworder", {{"M", L"7"}});
    EXPECT_EQ(Renumbered("W", 0, "M X"), L"1 -");
}

TEST_F(FlowOrder, OfSeveralRoutesStartsAtTwo)
{
    m_net.Add("W: A; B; C");
    m_net.Set(L"floworder", {{"A", L"5"}, {"B", L"1"}, {"C", L"9"}});
    EXPECT_EQ(Renumbered("W", 0, "A B C"), L"3 2 4");
}

TEST_F(FlowOrder, OfRoutesWithEqualNumbersGoesByTheExchangeSort)
{
    m_net.Add("W: A; B; C");
    m_net.Set(L"floworder", {{"A", L"5"}, {"B", L"5"}, {"C", L"1"}});
    EXPECT_EQ(Renumbered("W", 0, "A B C"), L"4 3 2");
}

TEST_F(FlowOrder, IsNumberedAllTheWayUp)
{
    m_net.Add("W: M; A>M; B>M; C>B; D>C; E>C; N");
    m_net.Set(L"floworder", {{"A", L"2"}, {"B", L"1"}, {"D", L"8"}, {"E", L"7"}});
    EXPECT_EQ(Renumbered("W", 0, "M N A B C D E"), L"2 3 3 2 1 3 2");
}

TEST_F(FlowOrder, BelowOneRouteLeavesTheRest)
{
    m_net.Add("W: M; A>M; B>M; C>B; D>B");
    m_net.Set(L"floworder", {{"A", L"9"}, {"B", L"8"}});
    EXPECT_EQ(Renumbered("W", m_net["B"], "M A B C D"), L"- 9 8 2 3");
    EXPECT_EQ(Renumbered("W", m_net["C"], "M A B C D"), L"- 9 8 2 3");
}

TEST_F(FlowOrder, OfOtherWebsStays)
{
    m_net.Add("W: M; V: X>M; Y; W: A>X");
    EXPECT_EQ(Renumbered("W", 0, "M X Y A"), L"1 - - -");
}

TEST_F(FlowOrder, OnARingIsNumberedOnce)
{
    m_net.Add("W: A>C; B>A; C>B");
    EXPECT_EQ(Renumbered("W", m_net["A"], "A B C"), L"1 1 1");
}

// ---- divide nodes ----

class DivideNodes : public testing::Test {
protected:
    Network m_net{"W: R = a-b-c-d"};
};

TEST_F(DivideNodes, TheNumberTellsWhatANodeIs)
{
    struct Case {
        const wchar_t *number, *owner;
        bool isDivide;
        long expected; // 77 for untouched, 0 for the node itself
    };
    const Case cases[] = {{L"0", L"5", false, 77},
                          {L"1", L"5", true, 0},
                          {L"2", L"5", true, 5},
                          {L"3", L"5", false, 77},
                          {L"-1", L"5", false, 77}};
    for (const Case& tested : cases) {
        m_net.Set(L"divno", {{"a", tested.number}});
        m_net.Set(L"divownerid", {{"a", tested.owner}});
        long owner = 77;
        EXPECT_EQ(m_net.manager.IsDivideNode(m_net["a"], owner), tested.isDivide) << tested.number;
        EXPECT_EQ(owner, tested.expected == 0 ? m_net["a"] : tested.expected) << tested.number;
    }
}

TEST_F(DivideNodes, ANodeWithoutANumberAndAnUnknownNodeAreNone)
{
    long owner = 77;
    EXPECT_FALSE(m_net.manager.IsDivideNode(m_net["a"], owner));
    EXPECT_FALSE(m_net.manager.IsDivideNode(0, owner));
    EXPECT_FALSE(m_net.manager.IsDivideNode(m_net["R"], owner));
    EXPECT_EQ(owner, 77);
}

TEST_F(DivideNodes, MembersAreFreedAndTheOwnerStays)
{
    const std::wstring owner = std::to_wstring(m_net["a"]);
    m_net.Set(L"divno", {{"a", L"1"}, {"b", L"2"}, {"c", L"2"}, {"d", L"2"}});
    m_net.Set(L"divownerid", {{"b", owner.c_str()}, {"c", L"9999"}, {"d", owner.c_str()}});
    EXPECT_EQ(m_net.After("c", [&](auto& out) { return m_net.manager.ReleaseDivideNode(m_net["a"], out); }),
              "true: c b d");
    EXPECT_EQ(m_net.Get(L"divno", "a b c d"), L"1 0 2 0");
    EXPECT_EQ(m_net.Get(L"divownerid", "a b c d"), L"- 0 9999 0");
}

TEST_F(DivideNodes, TheReleaseResultTellsWhetherTheListHoldsAnything)
{
    EXPECT_EQ(m_net.After("", [&](auto& out) { return m_net.manager.ReleaseDivideNode(m_net["a"], out); }), "false:");
    EXPECT_EQ(m_net.After("c", [&](auto& out) { return m_net.manager.ReleaseDivideNode(m_net["a"], out); }), "true: c");
}

// ---- names ----

TEST(FlowEndNames, AreFreeUnlessARouteOfTheWebHasExactlyThatNumber)
{
    Network net("W: A; B; V: X; E:");
    net.Set(L"routenum", {{"A", L"a"}, {"B", L"12"}, {"X", L"x"}});
    const auto isFree = [&](const char* web, const wchar_t* name) {
        return net.manager.CheckDuplicateFlowEndName(net[web], name);
    };
    EXPECT_FALSE(isFree("W", L"a"));
    EXPECT_FALSE(isFree("W", L"12"));
    EXPECT_TRUE(isFree("W", L"A"));
    EXPECT_TRUE(isFree("W", L"1"));
    EXPECT_TRUE(isFree("W", L"x"));
    EXPECT_TRUE(isFree("E", L"a"));
}

} // namespace
