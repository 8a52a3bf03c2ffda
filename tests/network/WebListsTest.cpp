// The routes, spans and nodes of a whole web.

#include "support/Networks.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <memory>

namespace {

using support::Ids;
using support::Network;
using support::Nodes;
using support::Routes;
using support::Spans;

using SpansByNode = CMap<long, long&, CList<long, long>*, CList<long, long>*>;

// ---- spans of a web ----

std::string SpanIds(const Network& net, const char* web, const char* before = "")
{
    return net.After(before, [&](auto& out) { return net.manager.GetSpanFromWeb(net[web], out); });
}

std::string SpanObjects(const Network& net, const char* web, const char* before = "")
{
    return net.AfterFor<Spans>(before, [&](auto& out) { return net.manager.GetSpanFromWeb(net[web], out); });
}

TEST(WebLists, TheSpansOfAWebStandInTableOrder)
{
    const Network net("W: M = j-o; A = a-j; V: N = n-p; W: M = o-q");
    EXPECT_EQ(SpanIds(net, "W"), "true: j-o a-j o-q");
    EXPECT_EQ(SpanIds(net, "V", "a-j"), "true: a-j n-p");
    EXPECT_EQ(SpanObjects(net, "W"), "true: j-o a-j o-q");
    EXPECT_EQ(SpanObjects(net, "V", "a-j"), "true: a-j n-p");
}

TEST(WebLists, TheSpanObjectsAreTheLiveOnes)
{
    const Network net("W: M = j-o");
    Spans spans;
    ASSERT_TRUE(net.manager.GetSpanFromWeb(net["W"], spans));
    EXPECT_EQ(spans.GetHead(), &net.Span("j-o"));
}

TEST(WebLists, TheSpanListOfAWebWithoutSpansIsTrueWhenItHeldSomething)
{
    const Network net("W: M; V: N = n-p");
    EXPECT_EQ(SpanIds(net, "W"), "false:");
    EXPECT_EQ(SpanIds(net, "W", "n-p"), "true: n-p");
    EXPECT_EQ(SpanObjects(net, "W"), "false:");
    EXPECT_EQ(SpanObjects(net, "W", "n-p"), "true: n-p");
}

TEST(WebLists, ASpanWithoutARouteEndsTheSpanList)
{
    Network net("W: M = a-b");
    net.AddSpan("b", "a", 9999);
    net.Add("W: M = b-c");
    EXPECT_EQ(SpanIds(net, "W"), "false: a-b");
    EXPECT_EQ(SpanObjects(net, "W"), "false: a-b");
}

TEST(WebLists, AllSpansOfTheDesign)
{
    Network net("W: M = a-b; V: N = n-p");
    net.AddSpan("p", "a", 0);
    EXPECT_EQ(net.After("n-p", [&](CList<long, long>& out) { net.manager.GetSpanFormProject(out); }),
              "n-p a-b n-p p-a");
}

// ---- ids ----

TEST(WebLists, RouteIdsAndSpanIdsStandInTableOrder)
{
    const Network net("W: B>A = x-b; V: C = c-d; W: A = b-c, a-b");
    EXPECT_EQ(net.After("C", [&](auto& out) { return net.manager.GetRouteIdList(net["W"], out); }), "true: C B A");
    EXPECT_EQ(net.After("c-d", [&](auto& out) { return net.manager.GetSpanIdList(net["A"], out); }),
              "true: c-d b-c a-b");
}

TEST(WebLists, RouteIdsAreTrueWhenTheListHoldsAnythingAndThereIsARoute)
{
    const Network net("W: M = a-b; V:");
    EXPECT_EQ(net.After("", [&](auto& out) { return net.manager.GetRouteIdList(net["V"], out); }), "false:");
    EXPECT_EQ(net.After("M", [&](auto& out) { return net.manager.GetRouteIdList(net["V"], out); }), "true: M");
    const Network empty("W:");
    EXPECT_EQ(empty.After("W", [&](auto& out) { return empty.manager.GetRouteIdList(empty["W"], out); }), "false: W");
}

TEST(WebLists, SpanIdsAreTrueWhenTheListHoldsAnythingAndThereIsASpan)
{
    const Network net("W: M = a-b; N");
    EXPECT_EQ(net.After("", [&](auto& out) { return net.manager.GetSpanIdList(net["N"], out); }), "false:");
    EXPECT_EQ(net.After("a-b", [&](auto& out) { return net.manager.GetSpanIdList(net["N"], out); }), "true: a-b");
    const Network empty("W: N");
    EXPECT_EQ(empty.After("N", [&](auto& out) { return empty.manager.GetSpanIdList(empty["N"], out); }), "false: N");
}

std::string NodeIds(const Network& net, const char* web, const char* before = "")
{
    return net.After(before, [&](auto& out) { return net.manager.GetNodeIdList(net[web], out); });
}

TEST(WebLists, NodeIdsAreTheUpperNodesWithRepeatsThenTheOtherLowerNodesOnce)
{
    const Network net("W: M = j-o; N = j-p; A = a-j; B = b-o; V: C = c-d");
    EXPECT_EQ(NodeIds(net, "W"), "true: j j a b o p");
    EXPECT_EQ(NodeIds(net, "V"), "true: c d");
}

TEST(WebLists, ALowerNodeThatTheListHoldsIsNotListedAgain)
{
    const Network net("W: M = j-o");
    EXPECT_EQ(NodeIds(net, "W", "o"), "true: o j");
    EXPECT_EQ(NodeIds(net, "W", "j"), "true: j j o");
}

TEST(WebLists, AWebWithoutSpansHasNoNodes)
{
    const Network net("W: M; V: N = a-b");
    EXPECT_EQ(NodeIds(net, "W", "a"), "false: a");
}

// ---- route objects ----

std::string RouteObjects(const Network& net, bool rising, bool sorted, const char* before = "")
{
    return net.AfterFor<Routes>(
        before, [&](auto& out) { return net.manager.GetRouteObjectListFromWeb(net["W"], out, rising, sorted); });
}

class RoutesOfWeb : public testing::Test {
protected:
    Network m_net{"W: A; B; V: X; W: C"};
    void SetUp() override { m_net.Set(L"order", {{"A", L"3"}, {"B", L"10"}, {"C", L"2"}, {"X", L"1"}}); }
};

TEST_F(RoutesOfWeb, RiseByOrderBehindWhatTheListHolds)
{
    EXPECT_EQ(RouteObjects(m_net, true, true, "X"), "true: X C A B");
}

TEST_F(RoutesOfWeb, FallByOrderAheadOfWhatTheListHolds)
{
    EXPECT_EQ(RouteObjects(m_net, false, true, "X"), "true: B A C X");
}

TEST_F(RoutesOfWeb, StandInTableOrderWhenNotSorted)
{
    EXPECT_EQ(RouteObjects(m_net, true, false, "X"), "true: X A B C");
    EXPECT_EQ(RouteObjects(m_net, false, false, "X"), "true: X A B C");
}

TEST_F(RoutesOfWeb, AreTheLiveObjects)
{
    Routes routes;
    ASSERT_TRUE(m_net.manager.GetRouteObjectListFromWeb(m_net["V"], routes, true, true));
    EXPECT_EQ(routes.GetHead(), &m_net.Route("X"));
}

TEST_F(RoutesOfWeb, MayBeNone)
{
    const Network net("W: ; V: X");
    for (const bool sorted : {true, false}) {
        EXPECT_EQ(RouteObjects(net, true, sorted, "X"), "false: X");
        EXPECT_EQ(RouteObjects(net, false, sorted, "X"), "false: X");
    }
}

template <class Array> std::string RouteArray(const Network& net, const char* web)
{
    return net.AfterFor<Array>("X", [&](Array& out) { return net.manager.GetRouteObjectArrayFromWeb(net[web], out); });
}

TEST_F(RoutesOfWeb, FillAnEmptiedArrayInTableOrder)
{
    m_net.Add("E:");
    EXPECT_EQ(RouteArray<CArray<CRoute*>>(m_net, "W"), "3: A B C");
    EXPECT_EQ(RouteArray<CArray<const CRoute*>>(m_net, "W"), "3: A B C");
    EXPECT_EQ(RouteArray<CArray<CRoute*>>(m_net, "E"), "0:");
    EXPECT_EQ(RouteArray<CArray<const CRoute*>>(m_net, "E"), "0:");
}

// ---- span objects route by route ----

class SpansOfWeb : public testing::Test {
protected:
    Network m_net{"W: A>M = a-b-m; V: X = x-y; W: M = m-n, n-o; B>M = c-m"};

    std::string Live(const char* before = "") const
    {
        return m_net.AfterFor<Spans>(
            before, [&](auto& out) { return m_net.manager.GetSpanObjectListFromWeb(m_net["W"], out); });
    }
};

TEST_F(SpansOfWeb, GoRouteByRouteInOrderAndUpEachRoute)
{
    m_net.Set(L"order", {{"A", L"2"}, {"M", L"3"}, {"B", L"1"}});
    EXPECT_EQ(Live(), "true: c-m b-m a-b n-o m-n");
    EXPECT_EQ(Live("x-y"), "true: x-y c-m b-m a-b n-o m-n");
}

TEST_F(SpansOfWeb, AreTheLiveObjects)
{
    Spans spans;
    ASSERT_TRUE(m_net.manager.GetSpanObjectListFromWeb(m_net["V"], spans));
    EXPECT_EQ(spans.GetHead(), &m_net.Span("x-y"));
}

TEST_F(SpansOfWeb, AreNotListedWhenARouteFails)
{
    m_net.Add("W: R = r-s-r");
    EXPECT_EQ(Live("x-y"), "false: x-y");
}

TEST_F(SpansOfWeb, AreNotListedWhenARouteHasNone)
{
    m_net.Add("W: E");
    EXPECT_EQ(Live("x-y"), "false: x-y");
}

TEST_F(SpansOfWeb, NeedARoute)
{
    m_net.Add("E:");
    EXPECT_EQ(m_net.AfterFor<Spans>("x-y",
                                    [&](auto& out) { return m_net.manager.GetSpanObjectListFromWeb(m_net["E"], out); }),
              "false: x-y");
    EXPECT_EQ(m_net.AfterFor<Spans>(
                  "x-y", [&](auto& out) { return m_net.manager.GetSpanObjectListFromWebCopy(m_net["E"], out); }),
              "false: x-y");
}

TEST_F(SpansOfWeb, CopiesGoFromTheFlowEndUpTheTreeByFlowOrder)
{
    m_net.Set(L"order", {{"A", L"2"}, {"M", L"3"}, {"B", L"1"}});
    m_net.Set(L"floworder", {{"A", L"2"}, {"M", L"1"}, {"B", L"3"}});
    Spans copies;
    ASSERT_TRUE(m_net.manager.GetSpanObjectListFromWebCopy(m_net["W"], copies));
    EXPECT_EQ(m_net.Names(copies), "n-o m-n b-m a-b c-m");
    for (CSpan* copy : copies)
        delete copy;
}

TEST_F(SpansOfWeb, CopiesAreTheCallersAndStandBehindWhatTheListHolds)
{
    m_net.Set(L"splength", {{"x-y", L"12"}});
    Spans copies;
    copies.AddTail(&m_net.Span("c-m"));
    ASSERT_TRUE(m_net.manager.GetSpanObjectListFromWebCopy(m_net["V"], copies));
    ASSERT_EQ(m_net.Names(copies), "c-m x-y");
    const std::unique_ptr<CSpan> copy(copies.GetTail());
    EXPECT_NE(copy.get(), &m_net.Span("x-y"));
    EXPECT_EQ(copy->GetSubAttribute(L"splength"), L"12");
    EXPECT_EQ(static_cast<long>(copy->GetLowerNodeId()), m_net["y"]);
    copy->WriteSubAttribute(L"splength", L"13");
    EXPECT_EQ(m_net.Get(L"splength", "x-y"), L"12");
}

// ---- node objects ----

class NodesOfWeb : public testing::Test {
protected:
    Network m_net{"W: A>M = a-b-m; V: X = x-y; W: M = m-n, n-o; B>M = c-m; D = d-o"};

    std::string Listed(const char* web, bool sorted, const char* before = "") const
    {
        return m_net.AfterFor<Nodes>(
            before, [&](auto& out) { return m_net.manager.GetNodeObjectListFromWeb(m_net[web], out, sorted); });
    }
};

TEST_F(NodesOfWeb, GoFromTheFlowEndUpTheTreeWhenSorted)
{
    m_net.Set(L"floworder", {{"M", L"1"}, {"D", L"2"}, {"A", L"2"}, {"B", L"1"}});
    EXPECT_EQ(Listed("W", true), "true: o n m c b a d");
    EXPECT_EQ(Listed("V", true, "o"), "true: o y x");
}

TEST_F(NodesOfWeb, AreEachListedOnceWhenNotSorted)
{
    Nodes nodes;
    nodes.AddTail(&m_net.Node("x"));
    ASSERT_TRUE(m_net.manager.GetNodeObjectListFromWeb(m_net["W"], nodes, false));
    EXPECT_EQ(nodes.GetHead(), &m_net.Node("x"));
    std::vector<long> ids = support::idsOfObjects(nodes);
    ids.erase(ids.begin());
    std::sort(ids.begin(), ids.end());
    std::vector<long> expected = support::toVector(m_net.List("a b m n o c d"));
    std::sort(expected.begin(), expected.end());
    EXPECT_EQ(ids, expected);
}

TEST_F(NodesOfWeb, GoRouteByRouteInTableOrderWhenNotSorted)
{
    Nodes nodes;
    ASSERT_TRUE(m_net.manager.GetNodeObjectListFromWeb(m_net["W"], nodes, false));
    const std::string names = m_net.Names(nodes);
    EXPECT_LT(names.find('a'), names.find('n'));
    EXPECT_LT(names.find('n'), names.find('c'));
    EXPECT_LT(names.find('c'), names.find('d'));
}

TEST_F(NodesOfWeb, NeedARouteWhenNotSorted)
{
    m_net.Add("E:");
    EXPECT_EQ(Listed("E", false, "x"), "false: x");
}

// ---- the map by lower node ----

class SpansByLowerNode : public testing::Test {
protected:
    SpansByNode m_map;

    ~SpansByLowerNode() override
    {
        for (auto& [node, spans] : m_map)
            delete spans;
    }
    std::string At(const Network& net, const char* node)
    {
        long id = net[node];
        CList<long, long>* spans = nullptr;
        return m_map.Lookup(id, spans) ? net.Names(*spans) : "none";
    }
};

TEST_F(SpansByLowerNode, HoldsTheSpansRouteByRouteAndThenInTableOrder)
{
    const Network net("W: A; B; V: X = x-j; W: B = b-j; A = a-j, c-j, j-o");
    ASSERT_TRUE(net.manager.CreateMapLowNodeSpan(net["W"], m_map));
    EXPECT_EQ(m_map.GetCount(), 2);
    EXPECT_EQ(At(net, "j"), "a-j c-j b-j");
    EXPECT_EQ(At(net, "o"), "j-o");
}

TEST_F(SpansByLowerNode, IsSizedToTheSpansOfTheDesign)
{
    const Network net("W: A = a-b-c-d; V: X = x-y-z");
    ASSERT_TRUE(net.manager.CreateMapLowNodeSpan(net["W"], m_map));
    EXPECT_EQ(m_map.GetHashTableSize(), 5u);
}

TEST_F(SpansByLowerNode, AddsToAListThatIsThere)
{
    const Network net("W: A = a-j; V: X = x-j");
    ASSERT_TRUE(net.manager.CreateMapLowNodeSpan(net["W"], m_map));
    ASSERT_TRUE(net.manager.CreateMapLowNodeSpan(net["V"], m_map));
    EXPECT_EQ(At(net, "j"), "a-j x-j");
}

TEST_F(SpansByLowerNode, IsFalseWithoutRoutesAndWithoutSpans)
{
    const Network net("W: ; V: X = x-j; U: E");
    EXPECT_FALSE(net.manager.CreateMapLowNodeSpan(net["W"], m_map));
    EXPECT_FALSE(net.manager.CreateMapLowNodeSpan(net["U"], m_map));
    EXPECT_EQ(m_map.GetCount(), 0);
    const Network noSpans("W: E");
    EXPECT_FALSE(noSpans.manager.CreateMapLowNodeSpan(noSpans["W"], m_map));
}

// ---- numbers ----

TEST(WebLists, SpansWithoutALiveRouteDoNotCount)
{
    Network net("W: M = a-b-c; V: N = n-p; W: K = k-b");
    net.AddSpan("a", "k", 0);
    net.AddSpan("b", "k", 9999);
    EXPECT_EQ(net.manager.GetSpanNumInWeb(net["W"]), 3);
    EXPECT_EQ(net.manager.GetSpanNumInWeb(net["V"]), 1);
    EXPECT_EQ(net.manager.GetSpanNumInWeb(0), 0);
}

TEST(WebLists, RoutesAreCounted)
{
    const Network net("W: M = a-b-c; V: N; W: K; E:");
    EXPECT_EQ(net.manager.GetRouteNumInWeb(net["W"]), 2);
    EXPECT_EQ(net.manager.GetRouteNumInWeb(net["V"]), 1);
    EXPECT_EQ(net.manager.GetRouteNumInWeb(net["E"]), 0);
    EXPECT_EQ(net.manager.GetRouteNumInWeb(0), 0);
}

} // namespace
