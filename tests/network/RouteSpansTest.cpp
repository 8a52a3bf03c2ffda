// The order of spans along a route, worked out from their nodes; the ends and the length of a route.

#include "support/Networks.h"

#include <gmock/gmock.h>

namespace {

using support::ConstSpans;
using support::Network;
using support::Nodes;
using support::Spans;

constexpr bool kLowestFirst = true;
constexpr bool kTopFirst = false;

// "true: b" for a node or span that was found, else "false:".
template <class Query> std::string Found(const Network& net, Query&& query)
{
    long id = 0;
    return query(id) ? "true: " + net.NameOf(id) : "false:";
}

std::string LowestNode(const Network& net, const char* route)
{
    return Found(net, [&](long& id) { return net.manager.GetMostLowerNodeId(net[route], id); });
}

std::string TopNode(const Network& net, const char* route)
{
    return Found(net, [&](long& id) { return net.manager.GetMostUpperNodeId(net[route], id); });
}

std::string LastSpan(const Network& net, const char* route)
{
    return Found(net, [&](long& id) { return net.manager.GetLastSpanFromRoute(net[route], id); });
}

std::string Sorted(const Network& net, const char* route, bool lowestFirst, const char* before = "")
{
    return net.After(before, [&](auto& out) { return net.manager.GetSortSpanInRoute(net[route], out, lowestFirst); });
}

std::string SortedObjects(const Network& net, const char* route, bool lowestFirst, const char* before = "")
{
    return net.AfterFor<Spans>(before,
                               [&](auto& out) { return net.manager.GetSortSpanInRoute(net[route], out, lowestFirst); });
}

std::string SortedStrictly(const Network& net, const char* route, bool lowestFirst, const char* before = "")
{
    return net.AfterFor<ConstSpans>(
        before, [&](auto& out) { return net.manager.GetSortSpanInRoute(net[route], out, lowestFirst); });
}

std::string UpperNodes(const Network& net, const char* route, const char* before = "")
{
    return net.After(before, [&](auto& out) { return net.manager.GetSortUpNodeInRoute(net[route], out); });
}

// "true: <spans> / <nodes>"
std::string SpansAndNodes(const Network& net, const char* route, Spans& spans, Nodes& nodes)
{
    const bool result = net.manager.GetSortSpanNodeInRoute(net[route], spans, nodes);
    return (result ? "true: " : "false: ") + net.Names(spans) + " / " + net.Names(nodes);
}

// ---- ends ----

TEST(RouteSpans, TheEndsOfARouteOfOneSpanAreItsNodes)
{
    const Network net("W: R = a-b");
    EXPECT_EQ(LowestNode(net, "R"), "true: b");
    EXPECT_EQ(TopNode(net, "R"), "true: a");
    EXPECT_EQ(LastSpan(net, "R"), "true: a-b");
}

TEST(RouteSpans, TheEndsDoNotDependOnTheOrderOfTheTable)
{
    const Network net("W: R = b-c, c-d, a-b");
    EXPECT_EQ(LowestNode(net, "R"), "true: d");
    EXPECT_EQ(TopNode(net, "R"), "true: a");
    EXPECT_EQ(LastSpan(net, "R"), "true: c-d");
}

TEST(RouteSpans, TheEndsAreThoseWithinTheRoute)
{
    const Network net("W: M = c-d; A>M = b-c; B>A = a-b");
    EXPECT_EQ(LowestNode(net, "A"), "true: c");
    EXPECT_EQ(TopNode(net, "A"), "true: b");
}

TEST(RouteSpans, OfTwoEndsTheOneThatComesFirstInTheTableCounts)
{
    const Network net("W: R = c-d, a-b");
    EXPECT_EQ(LowestNode(net, "R"), "true: d");
    EXPECT_EQ(TopNode(net, "R"), "true: c");
    EXPECT_EQ(LastSpan(net, "R"), "true: c-d");
}

TEST(RouteSpans, TheLastSpanIsTheFirstOneThatEndsAtTheLowestNode)
{
    const Network net("W: R = b-c, a-c");
    EXPECT_EQ(LastSpan(net, "R"), "true: b-c");
}

TEST(RouteSpans, ARingHasNoEnds)
{
    const Network net("W: R = a-b-c-a");
    EXPECT_EQ(LowestNode(net, "R"), "false:");
    EXPECT_EQ(TopNode(net, "R"), "false:");
    EXPECT_EQ(LastSpan(net, "R"), "false:");
}

TEST(RouteSpans, ARingWithAWayInHasATopAndNoLowestNode)
{
    const Network net("W: R = a-b, b-c, c-b");
    EXPECT_EQ(LowestNode(net, "R"), "false:");
    EXPECT_EQ(TopNode(net, "R"), "true: a");
    EXPECT_EQ(LastSpan(net, "R"), "false:");
}

TEST(RouteSpans, ARingWithAWayOutHasALowestNodeAndNoTop)
{
    const Network net("W: R = a-b, b-a, b-c");
    EXPECT_EQ(LowestNode(net, "R"), "true: c");
    EXPECT_EQ(TopNode(net, "R"), "false:");
}

TEST(RouteSpans, ARouteWithoutSpansHasNoEnds)
{
    const Network net("W: E; R = a-b");
    EXPECT_EQ(LowestNode(net, "E"), "false:");
    EXPECT_EQ(TopNode(net, "E"), "false:");
    EXPECT_EQ(LastSpan(net, "E"), "false:");
    long id = 0;
    EXPECT_FALSE(net.manager.GetMostLowerNodeId(0, id));
    EXPECT_FALSE(net.manager.GetMostUpperNodeId(-1, id));
    EXPECT_FALSE(net.manager.GetLastSpanFromRoute(net["a"], id));
}

// ---- the walk ----

TEST(RouteSpans, SpansAreSortedFromEitherEnd)
{
    const Network net("W: R = b-c, c-d, a-b");
    EXPECT_EQ(Sorted(net, "R", kLowestFirst), "true: c-d b-c a-b");
    EXPECT_EQ(Sorted(net, "R", kTopFirst), "true: a-b b-c c-d");
    EXPECT_EQ(SortedObjects(net, "R", kLowestFirst), "true: c-d b-c a-b");
    EXPECT_EQ(SortedObjects(net, "R", kTopFirst), "true: a-b b-c c-d");
    EXPECT_EQ(SortedStrictly(net, "R", kLowestFirst), "true: c-d b-c a-b");
    EXPECT_EQ(SortedStrictly(net, "R", kTopFirst), "true: a-b b-c c-d");
}

TEST(RouteSpans, LowestFirstTheSpansStandBehindWhatTheListHolds)
{
    const Network net("W: R = a-b-c; S = x-y");
    EXPECT_EQ(Sorted(net, "R", kLowestFirst, "x-y"), "true: x-y b-c a-b");
    EXPECT_EQ(SortedObjects(net, "R", kLowestFirst, "x-y"), "true: x-y b-c a-b");
}

TEST(RouteSpans, TopFirstTheSpansStandAheadOfWhatTheListHolds)
{
    const Network net("W: R = a-b-c; S = x-y");
    EXPECT_EQ(Sorted(net, "R", kTopFirst, "x-y"), "true: a-b b-c x-y");
    EXPECT_EQ(SortedObjects(net, "R", kTopFirst, "x-y"), "true: a-b b-c x-y");
}

TEST(RouteSpans, TheStrictFormAppendsInBothDirections)
{
    const Network net("W: R = a-b-c; S = x-y");
    EXPECT_EQ(SortedStrictly(net, "R", kLowestFirst, "x-y"), "true: x-y b-c a-b");
    EXPECT_EQ(SortedStrictly(net, "R", kTopFirst, "x-y"), "true: x-y a-b b-c");
}

TEST(RouteSpans, TheObjectFormsGiveTheLiveSpans)
{
    const Network net("W: R = a-b");
    Spans spans;
    ASSERT_TRUE(net.manager.GetSortSpanInRoute(net["R"], spans, kLowestFirst));
    EXPECT_EQ(spans.GetHead(), &net.Span("a-b"));
    ConstSpans constSpans;
    ASSERT_TRUE(net.manager.GetSortSpanInRoute(net["R"], constSpans, kTopFirst));
    EXPECT_EQ(constSpans.GetHead(), &net.Span("a-b"));
}

TEST(RouteSpans, OnABrokenChainTheSpanBeforeTheGapIsTakenAgain)
{
    const Network net("W: R = b-c, x-y, a-b; S = a-b, c-d");
    EXPECT_EQ(Sorted(net, "R", kLowestFirst), "true: b-c a-b a-b");
    EXPECT_EQ(Sorted(net, "R", kTopFirst), "true: a-b a-b b-c");
    EXPECT_EQ(SortedObjects(net, "R", kLowestFirst), "true: b-c a-b a-b");
    EXPECT_EQ(SortedObjects(net, "R", kTopFirst), "true: a-b a-b b-c");
}

TEST(RouteSpans, TheStrictFormRefusesABrokenChain)
{
    const Network net("W: R = b-c, x-y, a-b");
    EXPECT_EQ(SortedStrictly(net, "R", kLowestFirst, "x-y"), "false: x-y");
    EXPECT_EQ(SortedStrictly(net, "R", kTopFirst, "x-y"), "false: x-y");
}

TEST(RouteSpans, OfTwoSpansThatEndAtANodeTheLaterOneIsWalked)
{
    const Network net("W: R = a-c, b-c, c-d");
    EXPECT_EQ(Sorted(net, "R", kLowestFirst), "true: c-d b-c b-c");
    EXPECT_EQ(SortedObjects(net, "R", kLowestFirst), "true: c-d b-c b-c");
}

TEST(RouteSpans, ARingIsNotSorted)
{
    const Network net("W: R = a-b-c-a; S = x-y");
    for (const bool lowestFirst : {kLowestFirst, kTopFirst}) {
        EXPECT_EQ(Sorted(net, "R", lowestFirst, "x-y"), "false: x-y");
        EXPECT_EQ(SortedObjects(net, "R", lowestFirst, "x-y"), "false: x-y");
        EXPECT_EQ(SortedStrictly(net, "R", lowestFirst, "x-y"), "false: x-y");
    }
}

TEST(RouteSpans, TheStrictFormWalksDownFromTheTopEvenWhenThereIsNoLowestNode)
{
    const Network net("W: R = a-b, b-c, c-b");
    EXPECT_EQ(SortedStrictly(net, "R", kTopFirst), "true: a-b b-c c-b");
    EXPECT_EQ(SortedStrictly(net, "R", kLowestFirst), "false:");
    EXPECT_EQ(Sorted(net, "R", kTopFirst), "false:");
    EXPECT_EQ(SortedObjects(net, "R", kTopFirst), "false:");
}

TEST(RouteSpans, ALoopUpstreamIsWalkedAsOftenAsThereAreSpans)
{
    const Network net("W: R = a-b, b-a, b-c");
    EXPECT_EQ(Sorted(net, "R", kLowestFirst), "true: b-c a-b b-a");
    EXPECT_EQ(SortedStrictly(net, "R", kLowestFirst), "true: b-c a-b b-a");
    EXPECT_EQ(SortedStrictly(net, "R", kTopFirst), "false:");
}

TEST(RouteSpans, ARouteWithoutSpansIsNotSorted)
{
    const Network net("W: E; S = x-y");
    EXPECT_EQ(Sorted(net, "E", kLowestFirst, "x-y"), "false: x-y");
    EXPECT_EQ(SortedObjects(net, "E", kTopFirst, "x-y"), "false: x-y");
    EXPECT_EQ(SortedStrictly(net, "E", kTopFirst, "x-y"), "false: x-y");
    support::Ids ids;
    EXPECT_FALSE(net.manager.GetSortSpanInRoute(0, ids, kLowestFirst));
}

// ---- nodes along a route ----

TEST(RouteSpans, UpperNodesRunFromTheTopDownWithoutTheLowestNode)
{
    const Network net("W: R = b-c, c-d, a-b; S = x-y");
    EXPECT_EQ(UpperNodes(net, "R"), "true: a b c");
    EXPECT_EQ(UpperNodes(net, "S"), "true: x");
    EXPECT_EQ(UpperNodes(net, "R", "y"), "true: y a b c");
}

TEST(RouteSpans, OnABrokenChainTheLowerNodeOfTheSpanBeforeTheGapIsRepeated)
{
    const Network net("W: R = a-b, c-d, e-f");
    EXPECT_EQ(UpperNodes(net, "R"), "true: a b b");
}

TEST(RouteSpans, UpperNodesNeedATop)
{
    const Network net("W: R = a-b, b-c, c-b; S = x-y-x; E");
    EXPECT_EQ(UpperNodes(net, "R"), "true: a b c");
    EXPECT_EQ(UpperNodes(net, "S", "a"), "false: a");
    EXPECT_EQ(UpperNodes(net, "E", "a"), "false: a");
}

TEST(RouteSpans, SpansAndNodesRunUpFromTheLowestNode)
{
    const Network net("W: R = b-c, c-d, a-b");
    Spans spans;
    Nodes nodes;
    EXPECT_EQ(SpansAndNodes(net, "R", spans, nodes), "true: c-d b-c a-b / d c b a");
    EXPECT_EQ(spans.GetHead(), &net.Span("c-d"));
    EXPECT_EQ(nodes.GetHead(), &net.Node("d"));
}

TEST(RouteSpans, RoutesThatMeetAtTheirLowestNodeListItOnce)
{
    const Network net("W: R = a-x; S = b-x");
    Spans spans;
    Nodes nodes;
    SpansAndNodes(net, "R", spans, nodes);
    EXPECT_EQ(SpansAndNodes(net, "S", spans, nodes), "true: a-x b-x / x a b");
}

TEST(RouteSpans, UpperNodesAreListedAgainThoughTheListHasThem)
{
    const Network net("W: R = a-b-c");
    Spans spans;
    Nodes nodes;
    nodes.AddTail(&net.Node("b"));
    EXPECT_EQ(SpansAndNodes(net, "R", spans, nodes), "true: b-c a-b / b c b a");
}

TEST(RouteSpans, OnABrokenChainSpanAndUpperNodeAreRepeated)
{
    const Network net("W: R = a-b, c-d");
    Spans spans;
    Nodes nodes;
    EXPECT_EQ(SpansAndNodes(net, "R", spans, nodes), "true: a-b a-b / b a a");
}

TEST(RouteSpans, NothingIsListedForARingOrARouteWithoutSpans)
{
    const Network net("W: R = a-b-a; E");
    Spans spans;
    Nodes nodes;
    EXPECT_EQ(SpansAndNodes(net, "R", spans, nodes), "false:  / ");
    EXPECT_EQ(SpansAndNodes(net, "E", spans, nodes), "false:  / ");
}

// ---- span lists of a route ----

template <class List> std::string SpansOf(const Network& net, const char* route, bool lowestFirst, bool sorted)
{
    return net.AfterFor<List>(
        "x-y", [&](List& out) { return net.manager.GetSpanObjectListFromRoute(net[route], lowestFirst, out, sorted); });
}

TEST(RouteSpans, SpanObjectsAreSortedWhenAsked)
{
    const Network net("W: R = b-c, c-d, a-b; S = x-y");
    EXPECT_EQ(SpansOf<ConstSpans>(net, "R", kLowestFirst, true), "true: x-y c-d b-c a-b");
    EXPECT_EQ(SpansOf<ConstSpans>(net, "R", kTopFirst, true), "true: x-y a-b b-c c-d");
    EXPECT_EQ(SpansOf<Spans>(net, "R", kLowestFirst, true), "true: x-y c-d b-c a-b");
    EXPECT_EQ(SpansOf<Spans>(net, "R", kTopFirst, true), "true: x-y a-b b-c c-d");
}

TEST(RouteSpans, UnsortedSpanObjectsStandInTableOrderWhateverEndIsWanted)
{
    const Network net("W: R = b-c, c-d, a-b; S = x-y");
    for (const bool lowestFirst : {kLowestFirst, kTopFirst}) {
        EXPECT_EQ(SpansOf<ConstSpans>(net, "R", lowestFirst, false), "true: x-y b-c c-d a-b");
        EXPECT_EQ(SpansOf<Spans>(net, "R", lowestFirst, false), "true: x-y b-c c-d a-b");
    }
}

TEST(RouteSpans, SpanObjectsOfADamagedRouteAreOnlyThereUnsorted)
{
    const Network net("W: R = a-b, c-d; S = x-y; E");
    EXPECT_EQ(SpansOf<ConstSpans>(net, "R", kLowestFirst, true), "false: x-y");
    EXPECT_EQ(SpansOf<Spans>(net, "R", kTopFirst, true), "false: x-y");
    EXPECT_EQ(SpansOf<ConstSpans>(net, "R", kTopFirst, false), "true: x-y a-b c-d");
    EXPECT_EQ(SpansOf<ConstSpans>(net, "E", kTopFirst, false), "false: x-y");
    EXPECT_EQ(SpansOf<Spans>(net, "E", kTopFirst, false), "false: x-y");
    EXPECT_EQ(SpansOf<ConstSpans>(net, "E", kTopFirst, true), "false: x-y");
}

TEST(RouteSpans, TheArrayIsEmptiedAndFilledInTableOrder)
{
    const Network net("W: R = b-c, c-d, a-b; S = x-y; E");
    const auto filled = [&](const char* route) {
        return net.AfterFor<CArray<CSpan*>>(
            "x-y", [&](auto& out) { return net.manager.GetSpanObjectArrayFromRoute(net[route], out); });
    };
    EXPECT_EQ(filled("R"), "3: b-c c-d a-b");
    EXPECT_EQ(filled("E"), "0:");
}

// ---- numbers ----

TEST(RouteSpans, SpansAreCounted)
{
    const Network net("W: R = a-b-c-a; S = x-y; E");
    EXPECT_EQ(net.manager.GetSpanNumInRoute(net["R"]), 3);
    EXPECT_EQ(net.manager.GetSpanNumInRoute(net["S"]), 1);
    EXPECT_EQ(net.manager.GetSpanNumInRoute(net["E"]), 0);
    EXPECT_EQ(net.manager.GetSpanNumInRoute(0), 0);
}

TEST(RouteSpans, TheLengthIsTheSumOverTheSpans)
{
    Network net("W: R = a-b-c-d; S = x-y");
    net.Set(L"splength", {{"a-b", L"12.5"}, {"c-d", L"0.25"}, {"x-y", L"100"}});
    double length = 77;
    EXPECT_TRUE(net.manager.GetRouteLength(net["R"], length));
    EXPECT_DOUBLE_EQ(length, 12.75);
}

TEST(RouteSpans, ARouteWithoutSpansHasNoLength)
{
    const Network net("W: E; R = a-b");
    double length = 77;
    EXPECT_FALSE(net.manager.GetRouteLength(net["E"], length));
    EXPECT_EQ(length, 0.0);
    length = 77;
    EXPECT_FALSE(net.manager.GetRouteLength(0, length));
    EXPECT_EQ(length, 0.0);
}

// ---- the uppermost span ----

TEST(RouteSpans, TheOnlySpanOfARouteIsTheFirstAndLeavesTheSecondUntouched)
{
    const Network net("W: R = a-b");
    long second = 77;
    EXPECT_TRUE(net.manager.IsFirstSpanAndGetSecondSpan(net["a-b"], second));
    EXPECT_EQ(second, 77);
}

TEST(RouteSpans, TheUppermostSpanTellsTheNextOneDown)
{
    const Network net("W: R = b-c, c-d, a-b");
    long second = 77;
    EXPECT_TRUE(net.manager.IsFirstSpanAndGetSecondSpan(net["a-b"], second));
    EXPECT_EQ(net.NameOf(second), "b-c");
}

TEST(RouteSpans, OtherSpansAreNotTheFirst)
{
    const Network net("W: R = b-c, c-d, a-b; S = x-y-x; T = e-a");
    long second = 77;
    for (const char* span : {"b-c", "c-d", "x-y", "y-x"})
        EXPECT_FALSE(net.manager.IsFirstSpanAndGetSecondSpan(net[span], second)) << span;
    EXPECT_FALSE(net.manager.IsFirstSpanAndGetSecondSpan(0, second));
    EXPECT_FALSE(net.manager.IsFirstSpanAndGetSecondSpan(net["R"], second));
    EXPECT_EQ(second, 77);
}

} // namespace
