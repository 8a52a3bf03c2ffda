// New routes with their first span. Routes that grow or shrink afterwards: RouteGrowthTest.cpp.

#include "support/Dump.h"
#include "support/Networks.h"

#include <gmock/gmock.h>

namespace {

using support::dropDefaults;
using support::dump;
using support::Ids;
using support::Network;
using support::setDefaults;
using support::values;

// A new route named by its number, whose new nodes are named n1, n2, ... in the order of their making.
CRoute* NewRoute(Network& net, const wchar_t* number, long webId, long connectId)
{
    CSpan* span = nullptr;
    CRoute* const route = net.manager.CreateRouteSpanNode(webId, connectId, values({{L"routenum", number}}), span);
    if (span) net.Name(span->GetId32(), "span");
    net.NameNew();
    return route;
}

TEST(RouteConstruction, TheFirstRouteOfAWebMakesItsFlowEnd)
{
    Network net("W:");
    CRoute* const route = NewRoute(net, L"M", net["W"], 0);
    ASSERT_NE(route, nullptr);
    EXPECT_EQ(net.NameOf(route->GetId32()), "M");
    EXPECT_EQ(net.AllNodes(), "n1 n2");
    EXPECT_EQ(net.Shape(), "W: M = n2-n1") << "the flow end is made first";
    long flowEnd = 0;
    EXPECT_TRUE(net.manager.GetFlowEndNodeId(net["W"], flowEnd));
    EXPECT_EQ(net.NameOf(flowEnd), "n1");
}

TEST(RouteConstruction, AnotherRouteAtTheFlowEndSharesIt)
{
    Network net("W: M = m-out");
    NewRoute(net, L"N", net["W"], 0);
    EXPECT_EQ(net.AllNodes(), "m out n1");
    EXPECT_EQ(net.Shape(), "W: M = m-out; N = n1-out");
}

TEST(RouteConstruction, ATributaryFlowsIntoTheTopOfItsConnectRoute)
{
    Network net("W: M = m-x-out");
    CRoute* const route = NewRoute(net, L"A", net["W"], net["M"]);
    ASSERT_NE(route, nullptr);
    EXPECT_EQ(net.Shape(), "W: M = m-x x-out; A>M = n1-m");
}

TEST(RouteConstruction, TheNewSpanComesBackWithTheRoute)
{
    Network net("W: M = m-out");
    CSpan* span = nullptr;
    const CRoute* const route = net.manager.CreateRouteSpanNode(net["W"], net["M"], {}, span);
    ASSERT_NE(route, nullptr);
    ASSERT_NE(span, nullptr);
    EXPECT_EQ(span, net.manager.GetSpanObjectOriginal(span->GetId32()));
    EXPECT_EQ(span->GetRouteId(), route->GetObjectId());
}

TEST(RouteConstruction, TheFirstSpanIsNumberedInRouteAndWeb)
{
    for (const bool tributary : {false, true}) {
        Network net("W: M = m-x-out; N = y-out; V: X = a-b");
        net.manager.CreateProject(values({{L"defsv", L"sanitary"}}));
        NewRoute(net, L"A", net["W"], tributary ? net["M"] : 0);
        EXPECT_EQ(net.Get(L"spno", "span"), L"1");
        EXPECT_EQ(net.Get(L"order", "span n1 A"), L"4 4 -");
        EXPECT_EQ(net.Get(L"calcstylename", "span"), L"sanitary");
    }
}

TEST(RouteConstruction, ANewFlowEndIsNotNumbered)
{
    Network net("W:");
    NewRoute(net, L"M", net["W"], 0);
    EXPECT_EQ(net.Get(L"order", "n1 n2 span"), L"- 1 1");
}

TEST(RouteConstruction, TheRouteTakesTheCallersAttributesAndTheSpanNone)
{
    Network net("W:");
    setDefaults(L"route", {{L"rtstate", L"0"}});
    setDefaults(L"span", {{L"splength", L"30"}});
    NewRoute(net, L"M", net["W"], 0);
    EXPECT_EQ(net.Get(L"rtstate", "M"), L"0");
    EXPECT_EQ(net.Get(L"routenum", "M span"), L"M -");
    EXPECT_EQ(net.Get(L"splength", "span"), L"30");
}

TEST(RouteConstruction, TheFirstSpanHasAnAreaRecord)
{
    Network net("W: M = m-out");
    for (const long connectId : {0L, net["M"]}) {
        CSpan* span = nullptr;
        ASSERT_NE(net.manager.CreateRouteSpanNode(net["W"], connectId, {}, span), nullptr);
        Ids areas;
        EXPECT_TRUE(net.manager.GetAreaSetIdList(span->GetId32(), areas));
        EXPECT_EQ(areas.GetCount(), 1);
    }
}

TEST(RouteConstruction, AConnectRouteWithoutSpansGivesNoRouteAndMakesNothing)
{
    Network net("W: M");
    const std::string before = dump(net.manager);
    EXPECT_EQ(NewRoute(net, L"A", net["W"], net["M"]), nullptr);
    EXPECT_EQ(dump(net.manager), before);
}

TEST(RouteConstruction, ATributaryOfARingGivesNoRoute)
{
    Network net("W: M = a-b-c-a");
    EXPECT_EQ(NewRoute(net, L"A", net["W"], net["M"]), nullptr);
    EXPECT_EQ(net.Shape(), "W: M = a-b b-c c-a");
}

// What the steps before the failing one leave, as ids run out.
TEST(RouteConstruction, AFailedRouteAtTheFlowEndLeavesTheStepsBefore)
{
    const struct {
        long ids;
        const char* nodes;
        const char* shape;
        int areas;
    } cases[] = {
        {0, "", "W:", 0},
        {1, "n1", "W:", 0},
        {2, "n1 n2", "W:", 0},
        {3, "n1 n2", "W: | 0 = n2-n1", 0},
        {4, "n1 n2", "W: | 0 = n2-n1", 1},
    };
    for (const auto& row : cases) {
        Network net("W:");
        net.manager.LeaveIds(row.ids);
        EXPECT_EQ(NewRoute(net, L"M", net["W"], 0), nullptr) << row.ids;
        EXPECT_EQ(net.AllNodes(), row.nodes) << row.ids;
        EXPECT_EQ(net.Shape(), row.shape) << row.ids;
        EXPECT_EQ(net.manager.GetAreaSetDb().GetCount(), row.areas) << row.ids;
    }
}

TEST(RouteConstruction, AFailedTributaryLeavesItsSpanInTheConnectRoute)
{
    const struct {
        long ids;
        const char* nodes;
        const char* shape;
    } cases[] = {
        {0, "m out", "W: M = m-out"},
        {1, "m out n1", "W: M = m-out"},
        {2, "m out n1", "W: M = m-out n1-m"},
        {3, "m out n1", "W: M = m-out n1-m"},
    };
    for (const auto& row : cases) {
        Network net("W: M = m-out");
        net.manager.LeaveIds(row.ids);
        EXPECT_EQ(NewRoute(net, L"A", net["W"], net["M"]), nullptr) << row.ids;
        EXPECT_EQ(net.AllNodes(), row.nodes) << row.ids;
        EXPECT_EQ(net.Shape(), row.shape) << row.ids;
    }
}

TEST(RouteConstruction, ARouteWithoutDefaultsLeavesTheSpanWithItsInterimRoute)
{
    Network net("W: M = m-out");
    dropDefaults(L"route");
    EXPECT_EQ(NewRoute(net, L"A", net["W"], net["M"]), nullptr);
    EXPECT_EQ(net.Shape(), "W: M = m-out n1-m; R1>M =") << "the route stays in its table";
    EXPECT_EQ(net.Get(L"routenum", "R1"), L"-");
    EXPECT_EQ(NewRoute(net, L"N", net["W"], 0), nullptr);
    EXPECT_EQ(net.Shape(), "W: M = m-out n1-m; R1>M =; R2 = | 0 = n2-out");
}

TEST(RouteConstruction, TheInterimSpanOfAFailedRouteHasNoPlaceInTheRoute)
{
    Network net("W: M = m-out");
    net.manager.LeaveIds(3);
    EXPECT_EQ(NewRoute(net, L"N", net["W"], 0), nullptr);
    const CSpan* const span = net.manager.GetSpanObjectOriginal(2147483545);
    ASSERT_NE(span, nullptr);
    EXPECT_EQ(span->GetRouteId(), 0u);
    EXPECT_FALSE(span->IsSubAttribute(L"spno"));
    EXPECT_EQ(net.Get(L"order", "n1"), L"2") << "the node was numbered before";
}

} // namespace
