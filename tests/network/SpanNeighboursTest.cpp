// What joins a span or a node, and the lines up and down from a span.

#include "support/Networks.h"

#include <gmock/gmock.h>

namespace {

using support::Ids;
using support::Network;
using support::Spans;

template <class Query> std::string Found(const Network& net, Query&& query)
{
    long id = 0;
    return query(id) ? "true: " + net.NameOf(id) : "false:";
}

// ---- downstream ----

std::string LowerSpan(const Network& net, const char* span)
{
    return Found(net, [&](long& id) { return net.manager.GetLowerSpan(net[span], id); });
}

std::string LineDown(const Network& net, const char* span, const char* before = "")
{
    return net.After(before, [&](CList<long, long>& out) { net.manager.GetLowerSpanObjectList(net[span], out); });
}

std::string WayDown(const Network& net, const char* from, const char* to, const char* before = "")
{
    return net.After(before, [&](auto& out) { return net.manager.GetLowerSpanObjectList(net[from], net[to], out); });
}

// The object form; frees the copies.
std::string LineOfObjects(const Network& net, const char* span)
{
    Spans spans;
    net.manager.GetLowerSpanObjectList(net[span], spans);
    const std::string names = net.Names(spans);
    while (spans.GetCount() > 1)
        delete spans.RemoveTail();
    return names;
}

TEST(SpanNeighbours, TheSpanBelowStartsWhereThisOneEnds)
{
    const Network net("W: M = b-c-d; A>M = a-b");
    EXPECT_EQ(LowerSpan(net, "b-c"), "true: c-d");
    EXPECT_EQ(LowerSpan(net, "c-d"), "false:");
}

TEST(SpanNeighbours, TheSpanBelowMayBelongToAnotherRoute)
{
    const Network net("W: M = b-c-d; A>M = a-b");
    EXPECT_EQ(LowerSpan(net, "a-b"), "true: b-c");
}

TEST(SpanNeighbours, OfTwoSpansBelowTheFirstInTheTableCarriesTheFlowOn)
{
    const Network net("W: S = b-x; R = a-b-y");
    EXPECT_EQ(LowerSpan(net, "a-b"), "true: b-x");
}

TEST(SpanNeighbours, AnUnknownSpanHasNoSpanBelow)
{
    const Network net("W: R = a-b");
    long id = 0;
    EXPECT_FALSE(net.manager.GetLowerSpan(0, id));
    EXPECT_FALSE(net.manager.GetLowerSpan(-5, id));
    EXPECT_FALSE(net.manager.GetLowerSpan(net["R"], id));
}

TEST(SpanNeighbours, TheLineDownBeginsWithTheSpanAndGoesThroughAllRoutes)
{
    const Network net("W: M = c-d, b-c; A>M = a-b; B>M = e-b");
    EXPECT_EQ(LineDown(net, "a-b"), "a-b b-c c-d");
    EXPECT_EQ(LineDown(net, "a-b", "e-b"), "e-b a-b b-c c-d");
    EXPECT_EQ(LineDown(net, "c-d"), "c-d");
    EXPECT_EQ(LineOfObjects(net, "a-b"), "a-b b-c c-d");
}

TEST(SpanNeighbours, TheFirstObjectOfTheLineIsTheLiveOneAndTheOthersAreTheCallersCopies)
{
    Network net("W: R = a-b-c-d");
    net.Set(L"splength", {{"b-c", L"12"}});
    Spans spans;
    spans.AddTail(&net.Span("c-d"));
    net.manager.GetLowerSpanObjectList(net["a-b"], spans);
    ASSERT_EQ(net.Names(spans), "c-d a-b b-c c-d");
    const std::unique_ptr<CSpan> last(spans.RemoveTail());
    const std::unique_ptr<CSpan> middle(spans.RemoveTail());
    EXPECT_EQ(spans.GetTail(), &net.Span("a-b"));
    EXPECT_NE(middle.get(), &net.Span("b-c"));
    EXPECT_NE(last.get(), &net.Span("c-d"));
    EXPECT_EQ(middle->GetSubAttribute(L"splength"), L"12");
    EXPECT_EQ(static_cast<long>(middle->GetRouteId()), net["R"]);
    EXPECT_EQ(static_cast<long>(middle->GetUpperNodeId()), net["b"]);
    middle->WriteSubAttribute(L"splength", L"13");
    EXPECT_EQ(net.Get(L"splength", "b-c"), L"12");
}

TEST(SpanNeighbours, TheLineDownEndsWhereItComesBackToItsStart)
{
    const Network net("W: R = a-b-c-a; S = x-x");
    EXPECT_EQ(LineDown(net, "b-c"), "b-c c-a a-b");
    EXPECT_EQ(LineOfObjects(net, "b-c"), "b-c c-a a-b");
    EXPECT_EQ(LineDown(net, "x-x"), "x-x");
    EXPECT_EQ(LineOfObjects(net, "x-x"), "x-x");
}

TEST(SpanNeighbours, TheLineDownEndsWhereItComesBackToASpanOfTheLine)
{
    const Network net("W: R = a-b-c-d, d-b");
    EXPECT_EQ(LineDown(net, "a-b"), "a-b b-c c-d d-b");
    EXPECT_EQ(LineOfObjects(net, "a-b"), "a-b b-c c-d d-b");
}

TEST(SpanNeighbours, AnUnknownSpanHasNoLine)
{
    const Network net("W: R = a-b");
    Ids ids = net.List("a-b");
    net.manager.GetLowerSpanObjectList(net["R"], ids);
    EXPECT_EQ(net.Names(ids), "a-b");
    Spans spans;
    net.manager.GetLowerSpanObjectList(0, spans);
    EXPECT_TRUE(spans.IsEmpty());
}

TEST(SpanNeighbours, TheWayDownHasBothEnds)
{
    const Network net("W: M = c-d-e, b-c; A>M = a-b; B>M = f-b");
    EXPECT_EQ(WayDown(net, "a-b", "c-d"), "true: a-b b-c c-d");
    EXPECT_EQ(WayDown(net, "a-b", "c-d", "f-b"), "true: f-b a-b b-c c-d");
    EXPECT_EQ(WayDown(net, "c-d", "c-d", "f-b"), "true: f-b c-d");
}

TEST(SpanNeighbours, ThereIsNoWayDownToASpanUpstream)
{
    const Network net("W: R = a-b-c-d");
    EXPECT_EQ(WayDown(net, "c-d", "a-b", "b-c"), "false: b-c");
}

TEST(SpanNeighbours, ThereIsNoWayDownToASpanBesideTheLine)
{
    const Network net("W: M = b-c; A>M = a-b; B>M = e-b");
    EXPECT_EQ(WayDown(net, "a-b", "e-b"), "false:");
}

TEST(SpanNeighbours, ThereIsNoWayDownFromAnUnknownSpan)
{
    const Network net("W: R = a-b");
    Ids ids = net.List("a-b");
    EXPECT_FALSE(net.manager.GetLowerSpanObjectList(0, net["a-b"], ids));
    EXPECT_FALSE(net.manager.GetLowerSpanObjectList(net["R"], net["a-b"], ids));
    EXPECT_FALSE(net.manager.GetLowerSpanObjectList(net["a-b"], 0, ids));
    EXPECT_EQ(net.Names(ids), "a-b");
}

TEST(SpanNeighbours, OnARingTheWayDownReachesEverySpanAndEnds)
{
    const Network net("W: R = a-b-c-a; S = x-y");
    EXPECT_EQ(WayDown(net, "b-c", "a-b"), "true: b-c c-a a-b");
    EXPECT_EQ(WayDown(net, "b-c", "x-y"), "false:");
}

// ---- what flows in ----

std::string FlowIn(const Network& net, const char* web, const char* span, const char* before = "")
{
    return net.After(before, [&](auto& out) { return net.manager.GetFlowInSpanToSpan(net[web], net[span], out); });
}

TEST(SpanNeighbours, SpansOfTheWebThatEndAtTheUpperNodeFlowIn)
{
    const Network net("W: A = a-j; M = j-o; B = b-j; V: N = n-j; U: X = x-y");
    EXPECT_EQ(FlowIn(net, "W", "j-o"), "true: a-j b-j");
    EXPECT_EQ(FlowIn(net, "V", "j-o"), "true: n-j");
    EXPECT_EQ(FlowIn(net, "W", "j-o", "x-y"), "true: x-y a-j b-j");
    EXPECT_EQ(FlowIn(net, "W", "a-j"), "false:");
}

TEST(SpanNeighbours, NothingFlowsInFromAWebOtherThanTheSpans)
{
    const Network net("W: A = a-j; M = j-o; V: N = n-p");
    EXPECT_EQ(FlowIn(net, "V", "j-o"), "false:");
}

TEST(SpanNeighbours, TheFlowInResultTellsWhetherTheListHoldsAnything)
{
    const Network net("W: R = a-b; S = x-y");
    EXPECT_EQ(FlowIn(net, "W", "a-b", "x-y"), "true: x-y");
}

TEST(SpanNeighbours, TheArrayOfInflowsIsEmptiedAndHoldsThoseOfAllWebs)
{
    const Network net("W: A = a-j; M = j-o; V: N = n-j; W: B = b-j");
    const auto inflows = [&](long span) {
        return net.AfterFor<CArray<const CSpan*>>(
            "j-o", [&](auto& out) { return net.manager.GetFlowInSpanToSpan(span, out); });
    };
    EXPECT_EQ(inflows(net["j-o"]), "3: a-j n-j b-j");
    EXPECT_EQ(inflows(net["a-j"]), "0:");
    EXPECT_EQ(inflows(0), "0:");
    EXPECT_EQ(inflows(net["M"]), "0:");
}

std::string UpperSpans(const Network& net, const char* span, bool sort)
{
    return net.After("o-p", [&](auto& out) { return net.manager.GetUpperSpan(net[span], sort, out); });
}

TEST(SpanNeighbours, UpperSpansReplaceWhatTheListHolds)
{
    Network net("W: M = j-o-p; A = a-j; B = b-j; V: C = c-j");
    net.Set(L"lowercentinv", {{"a-j", L"1.5"}, {"b-j", L"3"}, {"c-j", L"2"}});
    EXPECT_EQ(UpperSpans(net, "j-o", false), "3: a-j b-j c-j");
    EXPECT_EQ(UpperSpans(net, "a-j", false), "0:");
    EXPECT_EQ(UpperSpans(net, "a-j", true), "0:");
}

TEST(SpanNeighbours, SortedUpperSpansFallByTheirLowerLevel)
{
    Network net("W: M = j-o-p; A = a-j; B = b-j; C = c-j");
    net.Set(L"lowercentinv", {{"a-j", L"-1.5"}, {"b-j", L"3"}, {"c-j", L"2"}});
    EXPECT_EQ(UpperSpans(net, "j-o", true), "3: b-j c-j a-j");
}

TEST(SpanNeighbours, UpperSpansOfNearlyEqualLevelStayInTableOrder)
{
    Network net("W: M = j-o-p; A = a-j; B = b-j");
    net.Set(L"lowercentinv", {{"a-j", L"3"}, {"b-j", L"3.000009"}});
    EXPECT_EQ(UpperSpans(net, "j-o", true), "2: a-j b-j");
    net.Set(L"lowercentinv", {{"b-j", L"3.00002"}});
    EXPECT_EQ(UpperSpans(net, "j-o", true), "2: b-j a-j");
}

// ---- the main line upstream ----

std::string LineUp(const Network& net, const char* span, const char* web = "W", const char* before = "")
{
    return net.After(before, [&](auto& out) { net.manager.GetUpperSpanObjectList(net[web], net[span], out); });
}

TEST(SpanNeighbours, TheMainLineFollowsTheHighestInflowAndLeavesTheSpanItselfOut)
{
    Network net("W: M = j-o; A = a-j; B = k-j; C = c-k; D = d-k");
    net.Set(L"lowercentinv", {{"a-j", L"1"}, {"k-j", L"2"}, {"c-k", L"6"}, {"d-k", L"5"}});
    EXPECT_EQ(LineUp(net, "j-o"), "k-j c-k");
    EXPECT_EQ(LineUp(net, "j-o", "W", "j-o"), "j-o k-j c-k");
    EXPECT_EQ(LineUp(net, "c-k"), "");
}

TEST(SpanNeighbours, OfInflowsLessThanTheToleranceApartTheMainLineFollowsTheFirst)
{
    Network net("W: M = j-o; A = a-j; B = b-j");
    net.Set(L"lowercentinv", {{"a-j", L"1"}, {"b-j", L"1.000009"}});
    EXPECT_EQ(LineUp(net, "j-o"), "a-j");
}

TEST(SpanNeighbours, AnInflowWithoutALevelCountsAsZero)
{
    Network net("W: M = j-o; A = a-j; B = b-j");
    net.Set(L"lowercentinv", {{"a-j", L"-1"}});
    EXPECT_EQ(LineUp(net, "j-o"), "b-j");
}

TEST(SpanNeighbours, TheMainLineStaysInTheWeb)
{
    Network net("W: M = j-o; A = a-j; V: B = b-j");
    net.Set(L"lowercentinv", {{"a-j", L"1"}, {"b-j", L"2"}});
    EXPECT_EQ(LineUp(net, "j-o"), "a-j");
    EXPECT_EQ(LineUp(net, "j-o", "V"), "b-j");
}

TEST(SpanNeighbours, TheMainLineEndsOnARing)
{
    Network net("W: R = a-b-c-a; S = x-x");
    EXPECT_EQ(LineUp(net, "a-b"), "c-a b-c");
    EXPECT_EQ(LineUp(net, "x-x"), "");
}

TEST(SpanNeighbours, TheMainLineEndsWhereItComesBackToOneOfItsSpans)
{
    Network net("W: M = a-o; R = a-b-a; T = x-a");
    net.Set(L"lowercentinv", {{"b-a", L"9"}, {"x-a", L"1"}});
    EXPECT_EQ(LineUp(net, "a-o"), "b-a a-b");
}

TEST(SpanNeighbours, AnUnknownSpanHasNoMainLine)
{
    const Network net("W: R = a-b-c");
    Ids ids;
    net.manager.GetUpperSpanObjectList(net["W"], 0, ids);
    net.manager.GetUpperSpanObjectList(net["W"], net["R"], ids);
    net.manager.GetUpperSpanObjectList(0, net["b-c"], ids);
    EXPECT_TRUE(ids.IsEmpty());
}

// ---- at a node ----

std::string Touching(const Network& net, long node, const char* before = "")
{
    return net.After(before, [&](auto& out) { return net.manager.GetConnectALlSpanToNode(node, out); });
}

TEST(SpanNeighbours, SpansThatTouchANodeStandInTableOrder)
{
    const Network net("W: M = j-o; A = a-j; S = x-x; V: B = b-j; F = n");
    EXPECT_EQ(Touching(net, net["j"]), "true: j-o a-j b-j");
    EXPECT_EQ(Touching(net, net["j"], "x-x"), "true: x-x j-o a-j b-j");
    EXPECT_EQ(Touching(net, net["x"]), "true: x-x");
    EXPECT_EQ(Touching(net, net["o"]), "true: j-o");
}

TEST(SpanNeighbours, ANodeMayHaveNoSpans)
{
    const Network net("W: M = j-o; F = n");
    EXPECT_EQ(Touching(net, net["n"]), "false:");
    EXPECT_EQ(Touching(net, 0), "false:");
    EXPECT_EQ(Touching(net, net["j-o"]), "false:");
}

TEST(SpanNeighbours, TheSpanOfARouteAtANodeIsTheFirstInTheTable)
{
    const Network net("W: R = a-b, a-c, d-c, b-c; S = a-x, x-c");
    const auto starting = [&](const char* node, const char* route) {
        return Found(net, [&](long& id) { return net.manager.GetSpanConnectUpperNode(net[node], net[route], id); });
    };
    const auto ending = [&](const char* node, const char* route) {
        return Found(net, [&](long& id) { return net.manager.GetSpanConnectLowerNode(net[node], net[route], id); });
    };
    EXPECT_EQ(starting("a", "R"), "true: a-b");
    EXPECT_EQ(starting("a", "S"), "true: a-x");
    EXPECT_EQ(starting("c", "R"), "false:");
    EXPECT_EQ(starting("d", "S"), "false:");
    EXPECT_EQ(ending("c", "R"), "true: a-c");
    EXPECT_EQ(ending("c", "S"), "true: x-c");
    EXPECT_EQ(ending("a", "R"), "false:");
    EXPECT_EQ(ending("b", "S"), "false:");
}

TEST(SpanNeighbours, TheSpanOfAListAtANodeIsTheFirstInTheList)
{
    const Network net("W: R = a-b, a-c, d-c, b-c; S = a-x, x-c");
    const Ids all = net.List("b-c a-x d-c a-c a-b");
    const Ids none;
    const auto starting = [&](const char* node, const Ids& spans) {
        return Found(net, [&](long& id) { return net.manager.GetSpanConnectUpperNode(net[node], spans, id); });
    };
    const auto ending = [&](const char* node, const Ids& spans) {
        return Found(net, [&](long& id) { return net.manager.GetSpanConnectLowerNode(net[node], spans, id); });
    };
    EXPECT_EQ(starting("a", all), "true: a-x");
    EXPECT_EQ(ending("c", all), "true: b-c");
    EXPECT_EQ(starting("x", all), "false:");
    EXPECT_EQ(starting("a", none), "false:");
    EXPECT_EQ(ending("c", none), "false:");
    EXPECT_EQ(starting("a", Ids{0, net["R"], net["a-c"]}), "true: a-c");
}

TEST(SpanNeighbours, SpansOfAListThatEndAtANodeFlowIn)
{
    const Network net("W: R = a-j, b-j, j-o, c-j");
    const Ids spans = net.List("c-j j-o a-j");
    const auto flowIn = [&](const char* node, const char* before) {
        return net.After(before, [&](auto& out) { return net.manager.GetFlowInSpanToNode(net[node], spans, out); });
    };
    EXPECT_EQ(flowIn("j", ""), "true: c-j a-j");
    EXPECT_EQ(flowIn("j", "b-j"), "true: b-j c-j a-j");
    EXPECT_EQ(flowIn("b", ""), "false:");
    EXPECT_EQ(flowIn("b", "b-j"), "true: b-j");
}

TEST(SpanNeighbours, ASpanOfAListConnectsToANodeWithEitherEnd)
{
    const Network net("W: R = a-b-c; S = x-y");
    const Ids spans = net.List("a-b x-y");
    for (const char* node : {"a", "b", "x", "y"})
        EXPECT_TRUE(net.manager.IsConnectSpanToNode(net[node], spans)) << node;
    EXPECT_FALSE(net.manager.IsConnectSpanToNode(net["c"], spans));
    EXPECT_FALSE(net.manager.IsConnectSpanToNode(net["a"], Ids()));
    EXPECT_FALSE(net.manager.IsConnectSpanToNode(0, Ids{0}));
}

TEST(SpanNeighbours, SpansAreMappedToTheirNodes)
{
    const Network net("W: R = a-j, b-j, j-o");
    const Ids spans = net.List("j-o b-j a-j b-j");
    EXPECT_EQ(net.After("a", [&](auto& out) { return net.manager.GetAllLowerNodeFromSpan(spans, out); }),
              "true: a o j j j");
    EXPECT_EQ(net.After("a", [&](auto& out) { return net.manager.GetAllUpperNodeFromSpan(spans, out); }),
              "true: a j b a b");
}

TEST(SpanNeighbours, NoSpansAreMappedToNoNodes)
{
    const Network net("W: R = a-j");
    for (const Ids& spans : {Ids(), Ids{0, net["R"]}}) {
        EXPECT_EQ(net.After("", [&](auto& out) { return net.manager.GetAllLowerNodeFromSpan(spans, out); }), "true:");
        EXPECT_EQ(net.After("", [&](auto& out) { return net.manager.GetAllUpperNodeFromSpan(spans, out); }), "true:");
    }
}

// ---- nodes at one place ----

struct Place {
    const wchar_t *x, *y, *z;
    bool isEqual;
};

TEST(SpanNeighbours, NodesStandAtOnePlaceWhenLessThanTheToleranceApart)
{
    const Place places[] = {
        {L"0", L"0", L"0", true},
        {L"0.00000000009", L"0", L"0", true},
        {L"0.0000000001", L"0", L"0", false},
        {L"0", L"-0.0000000001", L"0", false},
        {L"0", L"0", L"1", false},
        {L"0.00000000005", L"0.00000000005", L"0.00000000005", true},
        {L"0.00000000006", L"0.00000000006", L"0.00000000006", false},
    };
    for (const Place& place : places) {
        Network net("W: R = a-b");
        net.Set(L"cx", {{"b", place.x}});
        net.Set(L"cy", {{"b", place.y}});
        net.Set(L"cz", {{"b", place.z}});
        EXPECT_EQ(net.manager.IsEqualCoordNode(net["a"], net["b"]), place.isEqual) << place.x << place.y << place.z;
        EXPECT_EQ(net.manager.IsEqualCoordNode(net["b"], net["a"]), place.isEqual);
    }
}

TEST(SpanNeighbours, AnUnknownNodeStandsNowhere)
{
    const Network net("W: R = a-b");
    EXPECT_FALSE(net.manager.IsEqualCoordNode(net["a"], 0));
    EXPECT_FALSE(net.manager.IsEqualCoordNode(0, net["a"]));
    EXPECT_FALSE(net.manager.IsEqualCoordNode(net["a"], net["R"]));
}

class OverlapOfFlowEnds : public testing::Test {
protected:
    Network m_net{"W: M = m-w; V: N = n-v; U: K = k-u"};

    void SetUp() override
    {
        m_net.Set(L"cx", {{"w", L"5"}, {"v", L"5"}, {"u", L"6"}, {"m", L"1"}, {"n", L"5"}, {"k", L"5"}});
        m_net.Set(L"order", {{"W", L"1"}, {"V", L"2"}, {"U", L"3"}});
    }
    std::string Overlap(const char* before = "") const
    {
        return m_net.After(
            before, [&](auto& out) { return m_net.manager.GetOverlapNodeFromOtherWebs(m_net["W"], m_net["w"], out); });
    }
};

TEST_F(OverlapOfFlowEnds, FlowEndsOfOtherWebsAtTheSamePlaceAreFound)
{
    EXPECT_EQ(Overlap(), "true: v");
    EXPECT_EQ(Overlap("m"), "true: m v");
}

TEST_F(OverlapOfFlowEnds, TheyStandInTheOrderOfTheWebs)
{
    m_net.Set(L"cx", {{"u", L"5"}});
    EXPECT_EQ(Overlap(), "true: v u");
    m_net.Set(L"order", {{"U", L"0"}});
    EXPECT_EQ(Overlap(), "true: u v");
}

TEST_F(OverlapOfFlowEnds, EachRouteThatEndsThereListsTheNode)
{
    m_net.Add("V: N2 = n2-v");
    EXPECT_EQ(Overlap(), "true: v v");
}

TEST_F(OverlapOfFlowEnds, NoneAtThePlaceIsFalse)
{
    m_net.Set(L"cx", {{"v", L"4"}});
    EXPECT_EQ(Overlap("m"), "false: m");
}

TEST_F(OverlapOfFlowEnds, AWebWithoutRoutesEndsTheSearch)
{
    m_net.AddWeb("T");
    m_net.Set(L"order", {{"T", L"4"}});
    EXPECT_EQ(Overlap("m"), "false: m");
}

TEST_F(OverlapOfFlowEnds, ALowRouteWithoutALowestNodeEndsTheSearch)
{
    m_net.Add("U: E");
    EXPECT_EQ(Overlap("m"), "false: m");
}

TEST_F(OverlapOfFlowEnds, OneWebAloneHasNoOverlap)
{
    Network net("W: M = m-w");
    EXPECT_EQ(
        net.After("m", [&](auto& out) { return net.manager.GetOverlapNodeFromOtherWebs(net["W"], net["w"], out); }),
        "false: m");
}

// ---- inflow of an interceptor ----

class InflowSpan : public testing::Test {
protected:
    Network m_net{"W: A = a-j; B = b-j; M = j-o"};

    std::string LowestSpan()
    {
        const long id = m_net.manager.CreateIcpInq(m_net["o"], {})->GetId32();
        m_net.manager.GetIcpInqObjectOriginal(id)->WriteSubAttributeInt(L"icinnodeid", static_cast<int>(m_net["j"]));
        return m_net.NameOf(m_net.manager.GetIcpinqLowinvSpanID(id));
    }
};

TEST_F(InflowSpan, TheLowestSpanWithASectionAtTheInflowNodeIsTaken)
{
    m_net.Set(L"spsecrecname", {{"a-j", L"VU1"}, {"b-j", L"VU2"}, {"j-o", L"VU3"}});
    m_net.Set(L"lowercentinv", {{"a-j", L"2"}, {"b-j", L"1"}, {"j-o", L"3"}});
    EXPECT_EQ(LowestSpan(), "b-j");
    m_net.Set(L"lowercentinv", {{"j-o", L"-3"}});
    EXPECT_EQ(LowestSpan(), "j-o");
}

TEST_F(InflowSpan, SpansWithoutASectionDoNotCount)
{
    m_net.Set(L"spsecrecname", {{"a-j", L"VU1"}, {"b-j", L""}});
    m_net.Set(L"lowercentinv", {{"a-j", L"2"}, {"b-j", L"1"}, {"j-o", L"0"}});
    EXPECT_EQ(LowestSpan(), "a-j");
}

TEST_F(InflowSpan, OfEqualLevelsTheFirstInTheTableIsTaken)
{
    m_net.Set(L"spsecrecname", {{"a-j", L"VU1"}, {"b-j", L"VU2"}, {"j-o", L"VU3"}});
    m_net.Set(L"lowercentinv", {{"a-j", L"2"}, {"b-j", L"1"}, {"j-o", L"1"}});
    EXPECT_EQ(LowestSpan(), "b-j");
}

TEST_F(InflowSpan, ARecordWithoutTheAttributeIsAtTheNodeThatItHangsOn)
{
    m_net.Set(L"spsecrecname", {{"a-j", L"VU1"}, {"b-j", L"VU2"}});
    m_net.Set(L"lowercentinv", {{"a-j", L"1"}, {"b-j", L"2"}});
    const long id = m_net.manager.CreateIcpInq(m_net["j"], {})->GetId32();
    EXPECT_EQ(m_net.NameOf(m_net.manager.GetIcpinqLowinvSpanID(id)), "a-j");
}

TEST_F(InflowSpan, WithoutAnySectionThereIsNone)
{
    EXPECT_EQ(LowestSpan(), "0");
    EXPECT_EQ(m_net.manager.GetIcpinqLowinvSpanID(0), 0);
    EXPECT_EQ(m_net.manager.GetIcpinqLowinvSpanID(m_net["j"]), 0);
}

} // namespace
