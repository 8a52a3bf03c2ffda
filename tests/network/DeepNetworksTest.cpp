// Very long lines and very many branches: nothing runs out of stack, and nothing takes for ever, as a walk whose time
// grows with the square of the network would.

#include "support/Networks.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <memory>
#include <numeric>
#include <type_traits>

namespace {

using support::ConstSpans;
using support::Ids;
using support::Nodes;
using support::Routes;
using support::Spans;
using support::toVector;

using IdsByConnectId = CMap<long, long&, CList<long, long>*, CList<long, long>*>;

constexpr int kLength = 200'000;
constexpr int kRays = 100'000;
constexpr int kChangedLength = 50'000; // of networks that one test alone has

// What a call puts into an empty list. The result of the call must be true.
template <class Call> std::vector<long> Listed(Call&& call)
{
    Ids list;
    if constexpr (std::is_void_v<std::invoke_result_t<Call, CList<long, long>&>>)
        call(list);
    else
        EXPECT_TRUE(call(list));
    return toVector(list);
}

std::vector<long> Reversed(std::vector<long> ids)
{
    std::reverse(ids.begin(), ids.end());
    return ids;
}

struct DeepNetwork {
    support::DefaultsForAllTags defaults;
    support::OpenManager manager;
    long web = manager.CreateWeb(0, {})->GetId32();

    long Node() { return manager.CreateNode({})->GetId32(); }
    long Route(long connectId) { return manager.CreateRoute(web, connectId, {})->GetId32(); }
    long Span(long upper, long lower, long route)
    {
        CSpan* const span = manager.CreateSpanNoarea(upper, lower, route, {});
        span->WriteSubAttribute(L"splength", L"2");
        return span->GetId32();
    }
};

// For tests that only look: one network for all of them.
template <class Network> class SharedNetwork : public testing::Test {
protected:
    static void SetUpTestSuite() { s_network = std::make_unique<const Network>(); }
    static void TearDownTestSuite() { s_network.reset(); }

    static inline std::unique_ptr<const Network> s_network;
    const support::OpenManager& manager = s_network->manager;
    const long web = s_network->web;
};

// ---- one route of many spans ----

struct LongRouteNetwork : DeepNetwork {
    explicit LongRouteNetwork(int length = kLength)
    {
        nodes.push_back(Node());
        for (std::size_t i = 0; i < static_cast<std::size_t>(length); ++i) {
            nodes.push_back(Node());
            spans.push_back(Span(nodes[i], nodes.back(), route));
        }
    }

    long route = Route(0);
    std::vector<long> nodes; // from the top down
    std::vector<long> spans;
};

class LongRoute : public SharedNetwork<LongRouteNetwork> {
protected:
    const long route = s_network->route;
    const std::vector<long>& nodes = s_network->nodes;
    const std::vector<long>& spans = s_network->spans;
};

class ChangedLongRoute : public testing::Test, protected LongRouteNetwork {
protected:
    ChangedLongRoute() : LongRouteNetwork(kChangedLength) {}
};

TEST_F(LongRoute, ItsSpansAreSorted)
{
    const auto sorted = [&](bool lowestFirst) {
        return Listed([&](auto& out) { return manager.GetSortSpanInRoute(route, out, lowestFirst); });
    };
    EXPECT_TRUE(sorted(false) == spans);
    EXPECT_TRUE(sorted(true) == Reversed(spans));
    Spans spanObjects;
    EXPECT_TRUE(manager.GetSortSpanInRoute(route, spanObjects, false));
    EXPECT_TRUE(support::idsOfObjects(spanObjects) == spans);
    ConstSpans constSpans;
    EXPECT_TRUE(manager.GetSortSpanInRoute(route, constSpans, false));
    EXPECT_TRUE(manager.GetSpanObjectListFromRoute(route, true, constSpans, true));
    EXPECT_EQ(constSpans.GetCount(), 2 * kLength);
}

TEST_F(LongRoute, ItsNodesAreSorted)
{
    std::vector<long> uppers = nodes;
    uppers.pop_back();
    EXPECT_TRUE(Listed([&](auto& out) { return manager.GetSortUpNodeInRoute(route, out); }) == uppers);
    Spans spanObjects;
    Nodes nodeObjects;
    EXPECT_TRUE(manager.GetSortSpanNodeInRoute(route, spanObjects, nodeObjects));
    EXPECT_TRUE(support::idsOfObjects(nodeObjects) == Reversed(nodes));
}

TEST_F(LongRoute, ItsEndsAndLengthAreFound)
{
    long id = 0;
    EXPECT_TRUE(manager.GetMostLowerNodeId(route, id));
    EXPECT_EQ(id, nodes.back());
    EXPECT_TRUE(manager.GetMostUpperNodeId(route, id));
    EXPECT_EQ(id, nodes.front());
    EXPECT_TRUE(manager.GetLastSpanFromRoute(route, id));
    EXPECT_EQ(id, spans.back());
    EXPECT_TRUE(manager.IsFirstSpanAndGetSecondSpan(spans.front(), id));
    EXPECT_EQ(id, spans[1]);
    double length = 0;
    EXPECT_TRUE(manager.GetRouteLength(route, length));
    EXPECT_DOUBLE_EQ(length, 2.0 * kLength);
    EXPECT_TRUE(manager.GetFlowEndNodeId(web, id));
    EXPECT_EQ(id, nodes.back());
}

TEST_F(LongRoute, TheLineDownIsFollowed)
{
    EXPECT_TRUE(Listed([&](CList<long, long>& out) { manager.GetLowerSpanObjectList(spans.front(), out); }) == spans);
    EXPECT_TRUE(Listed([&](auto& out) { return manager.GetLowerSpanObjectList(spans.front(), spans.back(), out); }) ==
                spans);
    Spans spanObjects;
    manager.GetLowerSpanObjectList(spans.front(), spanObjects);
    EXPECT_EQ(spanObjects.GetCount(), kLength);
    while (spanObjects.GetCount() > 1)
        delete spanObjects.RemoveTail();
}

TEST_F(LongRoute, TheLineUpIsFollowed)
{
    std::vector<long> above = Reversed(spans);
    above.erase(above.begin());
    EXPECT_TRUE(Listed([&](CList<long, long>& out) { manager.GetUpperSpanObjectList(web, spans.back(), out); }) ==
                above);
}

TEST_F(LongRoute, TheListsOfItsWebAreMade)
{
    EXPECT_TRUE(Listed([&](auto& out) { return manager.GetNodeIdList(web, out); }) == nodes);
    EXPECT_TRUE(Listed([&](auto& out) { return manager.GetSpanFromWeb(web, out); }) == spans);
    EXPECT_EQ(Listed([&](auto& out) { return manager.GetFlowEndNodeIdList(web, out); }), std::vector{nodes.back()});
    EXPECT_EQ(Listed([&](auto& out) { return manager.GetMostUpperRouteByNode(web, out); }), std::vector{route});
    Nodes sorted, unsorted;
    EXPECT_TRUE(manager.GetNodeObjectListFromWeb(web, sorted, true));
    EXPECT_EQ(sorted.GetCount(), kLength + 1);
    EXPECT_TRUE(manager.GetNodeObjectListFromWeb(web, unsorted, false));
    EXPECT_EQ(unsorted.GetCount(), kLength + 1);
    Spans spanObjects;
    EXPECT_TRUE(manager.GetSpanObjectListFromWeb(web, spanObjects));
    EXPECT_EQ(spanObjects.GetCount(), kLength);
}

TEST_F(ChangedLongRoute, ItIsTurnedRound)
{
    manager.ReverseSpanInRoute(route);
    EXPECT_EQ(manager.GetSpanObjectOriginal(spans.back())->GetSubAttributeInt(L"spno", 0), 1);
    EXPECT_EQ(manager.GetSpanObjectOriginal(spans.front())->GetSubAttributeInt(L"spno", 0), kChangedLength);
    CStringArray before, now;
    manager.UpdateManHoleNumSameRouteNum(route, before, now, true);
    EXPECT_EQ(now.GetSize(), kChangedLength);
}

TEST_F(ChangedLongRoute, TheRunningDistanceIsWritten)
{
    EXPECT_TRUE(manager.SetSpanMaxExtend(web));
    EXPECT_EQ(manager.GetSpanObjectOriginal(spans.back())->GetSubAttribute(L"splent"), L"100000.0000000000000");
}

// ---- many routes in a line ----

struct LongLineNetwork : DeepNetwork {
    explicit LongLineNetwork(int length = kLength)
    {
        nodes.push_back(Node());
        for (std::size_t i = 0; i < static_cast<std::size_t>(length); ++i) {
            routes.push_back(Route(routes.empty() ? 0 : routes.back()));
            nodes.push_back(Node());
            spans.push_back(Span(nodes.back(), nodes[i], routes.back()));
        }
    }

    std::vector<long> nodes, routes, spans; // from the flow end up
};

class LongLine : public SharedNetwork<LongLineNetwork> {
protected:
    std::vector<long> Above() const { return {routes.begin() + 1, routes.end()}; }

    const std::vector<long>& nodes = s_network->nodes;
    const std::vector<long>& routes = s_network->routes;
    const std::vector<long>& spans = s_network->spans;
};

class ChangedLongLine : public testing::Test, protected LongLineNetwork {
protected:
    ChangedLongLine() : LongLineNetwork(kChangedLength) {}
};

TEST_F(LongLine, EverythingUpstreamIsListed)
{
    const Ids all(routes);
    EXPECT_TRUE(Listed([&](CList<long, long>& out) { manager.GetConnectRouteUpperAll(routes.front(), all, out); }) ==
                Reversed(Above()));
    EXPECT_TRUE(Listed([&](CList<long, long>& out) {
                    manager.GetConnectRouteUpperAllByOrder(routes.front(), all, out);
                }) == Above());
    IdsByConnectId map;
    std::vector<std::unique_ptr<CList<long, long>>> lists;
    for (std::size_t i = 1; i < routes.size(); ++i) {
        lists.push_back(std::make_unique<CList<long, long>>());
        lists.back()->AddTail(routes[i]);
        long key = routes[i - 1];
        map[key] = lists.back().get();
    }
    EXPECT_TRUE(Listed([&](CList<long, long>& out) { manager.GetConnectRouteUpperAll(routes.front(), map, out); }) ==
                Reversed(Above()));
}

TEST_F(LongLine, EverythingUpstreamIsListedByFlowOrder)
{
    Routes routeObjects;
    manager.GetConnectRouteSortOrder(web, 0, routeObjects);
    EXPECT_TRUE(support::idsOfObjects(routeObjects) == routes);
}

TEST_F(LongLine, EverythingUpstreamIsTakenFromAnArray)
{
    for (const bool sort : {false, true}) {
        CArray<CRoute*> routeObjects, out;
        manager.GetRouteObjectArrayFromWeb(web, routeObjects);
        EXPECT_EQ(manager.GetConnectRoute(routeObjects, routes.front(), true, sort, out), kLength - 1);
        EXPECT_TRUE(support::idsOfObjects(out) == Above());
        EXPECT_EQ(routeObjects.GetSize(), 1);
    }
}

TEST_F(LongLine, EverythingDownstreamIsListed)
{
    const Ids all(routes);
    std::vector<long> below = Reversed(routes);
    EXPECT_TRUE(Listed([&](auto& out) {
                    return manager.GetRouteIdListFromTo(routes.back(), routes.front(), web, out);
                }) == below);
    below.erase(below.begin());
    EXPECT_TRUE(Listed([&](CList<long, long>& out) { manager.GetConnectRouteLowerAll(routes.back(), all, out); }) ==
                below);
}

TEST_F(LongLine, ItsEndsAreFound)
{
    const Ids all(routes);
    EXPECT_EQ(Listed([&](auto& out) { return manager.GetLowRouteId(all, out); }), std::vector{routes.front()});
    EXPECT_EQ(Listed([&](auto& out) { return manager.GetUpperRouteId(all, out); }), std::vector{routes.back()});
    EXPECT_EQ(Listed([&](auto& out) { return manager.GetMostUpperNode(web, out); }), std::vector{nodes.back()});
}

TEST_F(LongLine, ItsMainLinesAreFollowed)
{
    EXPECT_TRUE(Listed([&](CList<long, long>& out) { manager.GetUpperRouteObjectList(routes.front(), out); }) ==
                Above());
    EXPECT_TRUE(Listed([&](auto& out) { return manager.GetRouteBySphst(web, out); }) == routes);
    EXPECT_TRUE(Listed([&](auto& out) { return manager.GetRouteBySphdt(web, out); }) == routes);
}

TEST_F(ChangedLongLine, ItGoesToAnotherWeb)
{
    const long other = manager.CreateWeb(0, {})->GetId32();
    manager.SetUpperRouteObject(routes.front(), other);
    EXPECT_EQ(manager.GetRouteNumInWeb(other), kChangedLength - 1);
    EXPECT_TRUE(manager.ChangeConnectRoute(routes[1], 0, 0, web));
    EXPECT_EQ(manager.GetRouteNumInWeb(web), kChangedLength);
}

TEST_F(ChangedLongLine, ItsFlowOrderIsNumbered)
{
    manager.ReSetRouteSortOrder(web, 0);
    for (const long id : routes)
        ASSERT_EQ(manager.GetRouteObjectOriginal(id)->GetSubAttribute(L"floworder"), L"1");
}

TEST_F(ChangedLongLine, ItsOutletIsMoved)
{
    Ids unused;
    ASSERT_TRUE(manager.ReSetFlowEndNode(routes.back(), L"X", unused));
    long end = 0;
    EXPECT_TRUE(manager.GetFlowEndNodeId(web, end));
    EXPECT_EQ(end, nodes.back());
    EXPECT_EQ(static_cast<long>(manager.GetRouteObjectOriginal(routes.front())->GetConnectId()), routes[1]);
    Ids rewired, reversed;
    ASSERT_TRUE(manager.ReSetFlowEndNodeByNode(routes.front(), nodes.front(), L"X", rewired, reversed));
    EXPECT_TRUE(toVector(rewired) == routes);
    EXPECT_TRUE(toVector(reversed) == Reversed(routes));
}

TEST_F(LongLine, ItIsSortedByBranches)
{
    const Ids all(routes);
    EXPECT_TRUE(Listed([&](auto& out) { return manager.SortRouteBranchUpper(all, out); }) == Reversed(routes));
    EXPECT_TRUE(Listed([&](auto& out) { return manager.SortRouteBranchLower(all, out); }) == routes);
    EXPECT_TRUE(Listed([&](auto& out) { return manager.SortRouteMaxExtendUpper(all, out); }) == Reversed(routes));
    EXPECT_TRUE(Listed([&](auto& out) { return manager.SortRouteMaxExtendLower(all, out); }) == routes);
}

TEST_F(ChangedLongLine, ItsRunningDistanceIsWritten)
{
    EXPECT_TRUE(manager.SetSpanMaxExtend(web));
    EXPECT_EQ(manager.GetSpanObjectOriginal(spans.front())->GetSubAttribute(L"splent"), L"100000.0000000000000");
}

TEST_F(ChangedLongLine, ItsAreasAreSummed)
{
    for (const long span : spans)
        manager.CreateAreaSet(span, support::values({{L"asarea", L"0.5"}}));
    double area = 0;
    EXPECT_TRUE(manager.GetRouteAreaT(routes.front(), area, true));
    EXPECT_DOUBLE_EQ(area, 0.5 * (kChangedLength - 1));
    area = 0;
    EXPECT_TRUE(manager.GetWebArea(web, area));
    EXPECT_DOUBLE_EQ(area, 0.5 * kChangedLength);
}

TEST_F(LongLine, ItsSpansAndNodesAreListedRouteByRoute)
{
    Spans spanObjects;
    EXPECT_TRUE(manager.GetSpanObjectListFromWeb(web, spanObjects));
    EXPECT_EQ(spanObjects.GetCount(), kLength);
    Nodes nodeObjects;
    EXPECT_TRUE(manager.GetNodeObjectListFromWeb(web, nodeObjects, true));
    EXPECT_TRUE(support::idsOfObjects(nodeObjects) == nodes);
    Spans copies;
    EXPECT_TRUE(manager.GetSpanObjectListFromWebCopy(web, copies));
    EXPECT_EQ(copies.GetCount(), kLength);
    for (CSpan* span : copies)
        delete span;
}

TEST_F(ChangedLongLine, ARingOfThatLengthEnds)
{
    const Ids all(routes);
    manager.GetRouteObjectOriginal(routes.front())->SetConnectId(static_cast<unsigned long>(routes.back()));
    manager.GetSpanObjectOriginal(spans.front())->SetLowerNodeId(static_cast<unsigned long>(nodes.back()));
    EXPECT_EQ(Listed([&](CList<long, long>& out) { manager.GetConnectRouteUpperAll(routes[7], all, out); }).size(),
              routes.size() - 1);
    EXPECT_EQ(Listed([&](CList<long, long>& out) { manager.GetConnectRouteLowerAll(routes[7], all, out); }).size(),
              routes.size() - 1);
    EXPECT_EQ(Listed([&](CList<long, long>& out) { manager.GetLowerSpanObjectList(spans[7], out); }).size(),
              spans.size());
    EXPECT_EQ(Listed([&](CList<long, long>& out) { manager.GetUpperSpanObjectList(web, spans[7], out); }).size(),
              spans.size() - 1);
}

// ---- many routes at one node ----

// Flow orders and levels are scattered, and many are equal.
struct StarNetwork : DeepNetwork {
    explicit StarNetwork(int rays = kRays)
    {
        for (int i = 0; i < rays; ++i) {
            routes.push_back(Route(trunk));
            const int scattered = static_cast<int>(i * 7919LL % 50'000);
            manager.GetRouteObjectOriginal(routes.back())->WriteSubAttributeInt(L"floworder", scattered);
            spans.push_back(Span(Node(), centre, routes.back()));
            manager.GetSpanObjectOriginal(spans.back())->WriteSubAttributeInt(L"lowercentinv", scattered);
        }
    }
    int FlowOrder(long route) const
    {
        return manager.GetRouteObjectOriginal(route)->GetSubAttributeInt(L"floworder", 0);
    }
    int Level(long span) const { return manager.GetSpanObjectOriginal(span)->GetSubAttributeInt(L"lowercentinv", 0); }

    const long centre = Node();
    const long trunk = Route(0);
    const long trunkSpan = Span(centre, Node(), trunk);
    std::vector<long> routes, spans;
};

template <class Key> bool Rises(const std::vector<long>& ids, Key&& key)
{
    return std::is_sorted(ids.begin(), ids.end(), [&](long a, long b) { return key(a) < key(b); });
}

class Star : public SharedNetwork<StarNetwork> {
protected:
    static int FlowOrder(long id) { return s_network->FlowOrder(id); }
    static int Level(long id) { return s_network->Level(id); }

    const long centre = s_network->centre;
    const long trunk = s_network->trunk;
    const long trunkSpan = s_network->trunkSpan;
    const std::vector<long>& routes = s_network->routes;
    const std::vector<long>& spans = s_network->spans;
};

class ChangedStar : public testing::Test, protected StarNetwork {
protected:
    ChangedStar() : StarNetwork(kChangedLength) {}
};

TEST_F(Star, TheSpansAtTheNodeAreListed)
{
    EXPECT_TRUE(Listed([&](auto& out) { return manager.GetFlowInSpanToSpan(web, trunkSpan, out); }) == spans);
    EXPECT_EQ(Listed([&](auto& out) { return manager.GetConnectALlSpanToNode(centre, out); }).size(), spans.size() + 1);
    const Ids all(spans);
    EXPECT_TRUE(Listed([&](auto& out) { return manager.GetFlowInSpanToNode(centre, all, out); }) == spans);
}

TEST_F(Star, TheSpansAtTheNodeAreSortedByLevel)
{
    const std::vector<long> sorted =
        Listed([&](auto& out) { return manager.GetUpperSpan(trunkSpan, true, out) == kRays; });
    EXPECT_TRUE(Rises(Reversed(sorted), [&](long id) { return Level(id); }));
    const std::vector<long> line =
        Listed([&](CList<long, long>& out) { manager.GetUpperSpanObjectList(web, trunkSpan, out); });
    ASSERT_EQ(line.size(), 1u);
    EXPECT_EQ(line.front(), sorted.front());
}

TEST_F(Star, EachRayFlowsIntoTheTrunk)
{
    for (const long span : spans) {
        long below = 0;
        ASSERT_TRUE(manager.GetLowerSpan(span, below));
        ASSERT_EQ(below, trunkSpan);
    }
}

TEST_F(Star, TheTributariesAreSortedByFlowOrder)
{
    const Ids all(routes);
    const auto flowOrder = [&](long id) { return FlowOrder(id); };
    EXPECT_TRUE(Rises(Listed([&](auto& out) { return manager.GetNextRouteId(trunk, all, out); }), flowOrder));
    EXPECT_TRUE(Rises(Listed([&](auto& out) { return manager.GetNextRouteIdAll(trunk, out); }), flowOrder));
    Routes routeObjects;
    manager.GetConnectRouteSortOrder(web, trunk, routeObjects);
    EXPECT_EQ(routeObjects.GetCount(), kRays);
    EXPECT_TRUE(Rises(support::idsOfObjects(routeObjects), flowOrder));
}

TEST_F(ChangedStar, TheFlowOrderIsNumbered)
{
    manager.ReSetRouteSortOrder(web, 0);
    std::vector<int> numbers;
    for (const long id : routes)
        numbers.push_back(FlowOrder(id));
    std::sort(numbers.begin(), numbers.end());
    std::vector<int> expected(routes.size());
    std::iota(expected.begin(), expected.end(), 2);
    EXPECT_TRUE(numbers == expected);
}

TEST_F(Star, EveryRayIsALineOfItsOwnInTheBranchSorts)
{
    std::vector<long> in = routes;
    in.push_back(trunk);
    const Ids all(in);
    const std::vector<long> upper = Listed([&](auto& out) { return manager.SortRouteBranchUpper(all, out); });
    ASSERT_EQ(upper.size(), in.size());
    EXPECT_EQ(upper.back(), trunk);
    EXPECT_TRUE(Listed([&](auto& out) { return manager.SortRouteBranchLower(all, out); }) == Reversed(upper));
    const std::vector<long> extend = Listed([&](auto& out) { return manager.SortRouteMaxExtendUpper(all, out); });
    ASSERT_EQ(extend.size(), in.size());
    EXPECT_EQ(extend[1], trunk);
    const std::vector<long> lower = Listed([&](auto& out) { return manager.SortRouteMaxExtendLower(all, out); });
    ASSERT_EQ(lower.size(), in.size());
    EXPECT_EQ(lower.front(), trunk);
}

TEST_F(ChangedStar, TheRunningDistanceIsWritten)
{
    EXPECT_TRUE(manager.SetSpanMaxExtend(web));
    EXPECT_EQ(manager.GetSpanObjectOriginal(spans.back())->GetSubAttribute(L"splent"), L"2.0000000000000");
}

TEST_F(ChangedStar, TheOutletMovesToARay)
{
    Ids unused;
    ASSERT_TRUE(manager.ReSetFlowEndNode(routes[5], L"X", unused));
    Ids found;
    EXPECT_EQ(manager.GetConnectRouteAll(routes[5], found), kChangedLength);
}

TEST_F(Star, TheRoutesAreSortedByTheirKeys)
{
    Ids flow(routes), order(routes), levels(spans);
    manager.SortFlowOrder(flow);
    EXPECT_TRUE(Rises(toVector(flow), [&](long id) { return FlowOrder(id); }));
    manager.SortOrderRoute(order, -1, -1);
    EXPECT_EQ(order.GetCount(), kRays);
    manager.SortOrderSpanLowercentinv(levels);
    EXPECT_TRUE(Rises(Reversed(toVector(levels)), [&](long id) { return Level(id); }));
}

} // namespace
