// Routes deleted alone, with their tributaries set free, with everything upstream, and by a list.

#include "network/RecordsOfNetwork.h"
#include "support/Dump.h"

#include <gmock/gmock.h>

namespace {

using support::addNodeRecords;
using support::addRouteRecords;
using support::addSpanRecords;
using support::dump;
using support::Network;
using support::recordCounts;
using support::values;

// ---- DeleteRouteObject ----

TEST(RouteDeletion, TributariesGoOnToTheConnectRoute)
{
    Network net("W: M = m-out; A>M = a-x-m; B>A = b-a; C>A = c-a; D>B = d-b");
    EXPECT_TRUE(net.manager.DeleteRouteObject(net["A"], false));
    EXPECT_EQ(net.Shape(), "W: M = m-out; B>M = b-m; C>M = c-m; D>B = d-b");
    EXPECT_EQ(net.AllNodes(), "m out b c d");
}

TEST(RouteDeletion, TributariesOfARouteAtTheFlowEndGoThere)
{
    Network net("W: M = m-x-out; A>M = a-m");
    EXPECT_TRUE(net.manager.DeleteRouteObject(net["M"], false));
    EXPECT_EQ(net.Shape(), "W: A = a-out");
}

TEST(RouteDeletion, TheConnectNumberOfATributaryStays)
{
    Network net("W: M = m-out; A>M = a-m; B>A = b-a");
    net.Set(L"connectnum", {{"B", L"A"}});
    EXPECT_TRUE(net.manager.DeleteRouteObject(net["A"], false));
    EXPECT_EQ(net.Get(L"connectnum", "B"), L"A");
}

TEST(RouteDeletion, TheLastRouteOfAWebTakesTheFlowEndAlong)
{
    Network net("W: M = a-b-c");
    EXPECT_TRUE(net.manager.DeleteRouteObject(net["M"], false));
    EXPECT_EQ(net.Shape(), "W:");
    EXPECT_EQ(net.AllNodes(), "");
}

TEST(RouteDeletion, ARouteWithoutSpansIsNotDeleted)
{
    Network net("W: M = m-out; A>M; B>A = b-m");
    addRouteRecords(net, "A");
    const std::string before = dump(net.manager);
    EXPECT_FALSE(net.manager.DeleteRouteObject(net["A"], false));
    EXPECT_EQ(dump(net.manager), before);
}

TEST(RouteDeletion, ARouteWithoutSpansIsDeletedWhenTheyAreSaidToBeGone)
{
    Network net("W: M = m-out; A>M; B>A = b-m");
    EXPECT_TRUE(net.manager.DeleteRouteObject(net["A"], true));
    EXPECT_EQ(net.Shape(), "W: M = m-out; B>M = b-m");
}

TEST(RouteDeletion, SpansThatAreSaidToBeGoneAreNotLookedAt)
{
    Network net("W: M = m-out; A>M = a-m");
    addSpanRecords(net, "a-m");
    EXPECT_TRUE(net.manager.DeleteRouteObject(net["A"], true));
    EXPECT_EQ(net.Shape(), "W: M = m-out | A = a-m");
    EXPECT_EQ(net.AllNodes(), "m out a");
    EXPECT_EQ(net.manager.GetAreaSetDb().GetCount(), 1);
}

TEST(RouteDeletion, ADeletedRouteTakesItsRecordsAlongButItsAreaOutflows)
{
    for (const bool spansGone : {false, true}) {
        Network net("W: M = m-out; A>M = a-m");
        addRouteRecords(net, "A");
        EXPECT_EQ(recordCounts(net), "AreaInq 1, AreaOutq 1, FixInq 1, GlChange 1, Inters 1, IntPos 1, Lateral 1, "
                                     "MountInq 1, Outq 1, Calcfig 1, Drawfig 1, Sheetfig 1, Inareaset 1, Outareaset 1, "
                                     "Vjoint 1");
        EXPECT_TRUE(net.manager.DeleteRouteObject(net["A"], spansGone));
        EXPECT_EQ(recordCounts(net), "AreaOutq 1, Calcfig 1, Drawfig 1, Sheetfig 1, Outareaset 1");
    }
}

TEST(RouteDeletion, RecordsOfOtherRoutesStay)
{
    Network net("W: M = m-out; A>M = a-m");
    addRouteRecords(net, "M");
    const std::string before = recordCounts(net);
    EXPECT_TRUE(net.manager.DeleteRouteObject(net["A"], false));
    EXPECT_EQ(recordCounts(net), before);
}

TEST(RouteDeletion, ADeletedRouteTakesTheRecordsOfItsSpansAndNodesAlong)
{
    Network net("W: M = m-out; A>M = a-m");
    addSpanRecords(net, "a-m");
    addNodeRecords(net, "a");
    addNodeRecords(net, "m");
    EXPECT_TRUE(net.manager.DeleteRouteObject(net["A"], false));
    EXPECT_EQ(recordCounts(net), "IcpInq 1, Calcfig 1, Drawfig 1, Sheetfig 1, Nodeunit 1");
}

TEST(RouteDeletion, ASpanThatCannotBeDeletedEndsTheDeletion)
{
    Network net("W: M = a-b-c-d");
    net.manager.DeleteNodeObject(net["b"]);
    EXPECT_FALSE(net.manager.DeleteRouteObject(net["M"], false));
    EXPECT_EQ(net.Shape(), "W: M = c-d") << "the spans go in table order until b is missed";
}

// ---- DeleteRouteObjectConnectEnd ----

TEST(RouteDeletion, CutOffTributariesBecomeRoutesAtTheFlowEnd)
{
    Network net("W: M = m-out; A>M = a-m; B>A = b-a; C>A = c-a");
    net.Set(L"wbendrname", {{"W", L"outfall"}});
    net.Set(L"connectnum", {{"A", L"M"}, {"B", L"A"}});
    EXPECT_TRUE(net.manager.DeleteRouteObjectConnectEnd(net["A"]));
    EXPECT_EQ(net.Shape(), "W: M = m-out; B = b-m; C = c-m");
    EXPECT_EQ(net.Get(L"connectnum", "M B C"), L"- outfall outfall");
}

TEST(RouteDeletion, AWebWithoutEndNameEmptiesTheConnectNumber)
{
    Network net("W: M = m-out; A>M = a-m");
    net.Set(L"connectnum", {{"A", L"M"}});
    EXPECT_TRUE(net.manager.DeleteRouteObjectConnectEnd(net["M"]));
    EXPECT_EQ(net.Shape(), "W: A = a-out");
    EXPECT_EQ(net.Get(L"connectnum", "A"), L"");
}

TEST(RouteDeletion, CuttingOffNeedsSpans)
{
    Network net("W: M = m-out; A>M; B>A = b-m");
    net.Set(L"wbendrname", {{"W", L"outfall"}});
    const std::string before = dump(net.manager);
    EXPECT_FALSE(net.manager.DeleteRouteObjectConnectEnd(net["A"]));
    EXPECT_EQ(dump(net.manager), before);
}

TEST(RouteDeletion, CuttingOffTakesTheRecordsOfTheRouteAlongButItsAreaOutflows)
{
    Network net("W: M = m-out; A>M = a-m");
    addRouteRecords(net, "A");
    EXPECT_TRUE(net.manager.DeleteRouteObjectConnectEnd(net["A"]));
    EXPECT_EQ(recordCounts(net), "AreaOutq 1, Calcfig 1, Drawfig 1, Sheetfig 1, Outareaset 1");
}

// ---- DeleteRouteObjectUpperAll ----

TEST(RouteDeletion, EverythingUpstreamGoesAlong)
{
    for (const bool flag : {false, true}) {
        Network net("W: M = m-out; A>M = a-m; B>A = b-a; C>B = c-b; D>M = d-m");
        EXPECT_TRUE(net.manager.DeleteRouteObjectUpperAll(net["A"], flag));
        EXPECT_EQ(net.Shape(), "W: M = m-out; D>M = d-m");
        EXPECT_EQ(net.AllNodes(), "m out a b c d") << "the nodes of the spans stay";
    }
}

TEST(RouteDeletion, TheOnlyRouteAtTheFlowEndEmptiesTheWeb)
{
    Network net("W: M = m-x-out; A>M = a-m; B>A = b-a");
    EXPECT_TRUE(net.manager.DeleteRouteObjectUpperAll(net["M"], false));
    EXPECT_EQ(net.Shape(), "W:");
    EXPECT_EQ(net.AllNodes(), "m x a b") << "the flow end alone is gone";
}

TEST(RouteDeletion, TheFlowEndStaysForAnotherRoute)
{
    Network net("W: M = m-out; N = n-out; A>M = a-m");
    EXPECT_TRUE(net.manager.DeleteRouteObjectUpperAll(net["M"], false));
    EXPECT_EQ(net.Shape(), "W: N = n-out");
    EXPECT_EQ(net.AllNodes(), "m out n a");
}

TEST(RouteDeletion, ARingOfRoutesUpstreamEnds)
{
    Network net("W: M = m-out; A>B = a-b; B>A = b-a");
    EXPECT_TRUE(net.manager.DeleteRouteObjectUpperAll(net["A"], false));
    EXPECT_EQ(net.Shape(), "W: M = m-out");
}

// ---- DeleteRouteObjectListAll ----

TEST(RouteDeletion, TheListedRoutesGoWithoutAnyRelinking)
{
    Network net("W: M = m-out; A>M = a-m; B>A = b-a");
    EXPECT_TRUE(net.manager.DeleteRouteObjectListAll(net["W"], net.List("A")));
    EXPECT_EQ(net.Shape(), "W: M = m-out; B>A = b-a") << "B keeps its stale connect id and its lowest node";
    EXPECT_EQ(net.AllNodes(), "m out a b");
}

TEST(RouteDeletion, AListOfAllRoutesTakesTheFlowEndAlong)
{
    Network net("W: M = m-out; A>M = a-m");
    addNodeRecords(net, "out");
    addNodeRecords(net, "m");
    EXPECT_TRUE(net.manager.DeleteRouteObjectListAll(net["W"], net.List("A M")));
    EXPECT_EQ(net.Shape(), "W:");
    EXPECT_EQ(net.AllNodes(), "m a");
    EXPECT_EQ(recordCounts(net), "IcpInq 1, Calcfig 1, Drawfig 1, Sheetfig 1, Nodeunit 1")
        << "what hangs on the nodes that stay stays";
}

TEST(RouteDeletion, AListTakesTheRecordsOfTheSpansAlong)
{
    Network net("W: M = m-out; A>M = a-m");
    addSpanRecords(net, "a-m");
    addSpanRecords(net, "m-out");
    EXPECT_TRUE(net.manager.DeleteRouteObjectListAll(net["W"], net.List("A")));
    EXPECT_EQ(recordCounts(net), "AreaSet 1, Areatset 1, Calcfig 1, Drawfig 1, Sheetfig 1, Spdxfin 1, Drawbelttx 1");
    support::Ids ids;
    EXPECT_TRUE(net.manager.GetAreaSetIdList(net["m-out"], ids));
    EXPECT_TRUE(net.manager.GetAreatsetIdList(net["m-out"], ids));
    EXPECT_TRUE(net.manager.GetSpdxfinIdList(net["m-out"], ids));
    EXPECT_TRUE(net.manager.GetDrawbelttxIdList(net["m-out"], ids));
}

TEST(RouteDeletion, AListTakesAllRecordsOfTheRoutesAlong)
{
    Network net("W: M = m-out; A>M = a-m; B>M = b-m");
    addRouteRecords(net, "A");
    addRouteRecords(net, "B");
    EXPECT_TRUE(net.manager.DeleteRouteObjectListAll(net["W"], net.List("A B")));
    EXPECT_EQ(recordCounts(net), "Calcfig 1, Drawfig 1, Sheetfig 1") << "area outflows included";
}

TEST(RouteDeletion, AListLeavesTheRecordsOfOtherRoutes)
{
    Network net("W: M = m-out; A>M = a-m");
    addRouteRecords(net, "M");
    const std::string before = recordCounts(net);
    EXPECT_TRUE(net.manager.DeleteRouteObjectListAll(net["W"], net.List("A")));
    EXPECT_EQ(recordCounts(net), before);
}

TEST(RouteDeletion, AListTakesTheCrossingAlongOnlyWhenThePositionNamesItSecond)
{
    Network net("W: M = m-out; A>M = a-m");
    const long first = net.manager.CreateInters({})->GetId32();
    const long second = net.manager.CreateInters({})->GetId32();
    net.manager.CreateIntPos(first, net["A"], {});
    net.manager.CreateIntPos(net["A"], second, {});
    EXPECT_TRUE(net.manager.DeleteRouteObjectListAll(net["W"], net.List("A")));
    EXPECT_TRUE(net.manager.GetIntPosDb().IsEmpty());
    EXPECT_NE(net.manager.GetIntersObjectOriginal(first), nullptr);
    EXPECT_EQ(net.manager.GetIntersObjectOriginal(second), nullptr);
}

TEST(RouteDeletion, ACrossingOfSeveralListedRoutesGoesOnce)
{
    Network net("W: M = m-out; A>M = a-m; B>M = b-m");
    const long crossing = net.manager.CreateInters({})->GetId32();
    net.manager.CreateIntPos(net["A"], crossing, {});
    net.manager.CreateIntPos(net["B"], crossing, {});
    EXPECT_TRUE(net.manager.DeleteRouteObjectListAll(net["W"], net.List("A B")));
    EXPECT_TRUE(net.manager.GetIntersDb().IsEmpty());
    EXPECT_TRUE(net.manager.GetIntPosDb().IsEmpty());
}

TEST(RouteDeletion, AWebWithoutFlowEndDeletesNoList)
{
    Network net("W: M = a-b-c-a; N");
    addRouteRecords(net, "N");
    const std::string before = dump(net.manager);
    EXPECT_FALSE(net.manager.DeleteRouteObjectListAll(net["W"], net.List("M N")));
    EXPECT_EQ(dump(net.manager), before);
}

TEST(RouteDeletion, ARouteWithoutSpansGoesWithTheList)
{
    Network net("W: M = m-out; A>M");
    addRouteRecords(net, "A");
    EXPECT_TRUE(net.manager.DeleteRouteObjectListAll(net["W"], net.List("A")));
    EXPECT_EQ(net.Shape(), "W: M = m-out");
    EXPECT_EQ(recordCounts(net), "Calcfig 1, Drawfig 1, Sheetfig 1");
}

TEST(RouteDeletion, AnEmptyListDeletesNothing)
{
    Network net("W: M = m-out");
    const std::string before = dump(net.manager);
    EXPECT_TRUE(net.manager.DeleteRouteObjectListAll(net["W"], support::Ids()));
    EXPECT_EQ(dump(net.manager), before);
}

TEST(RouteDeletion, UnknownIdsInAListAreSkipped)
{
    Network net("W: M = m-out; A>M = a-m");
    support::Ids routes{0, -1, 999, net["m"], net["A"], net["A"]};
    EXPECT_TRUE(net.manager.DeleteRouteObjectListAll(net["W"], routes));
    EXPECT_EQ(net.Shape(), "W: M = m-out");
    EXPECT_EQ(net.AllNodes(), "m out a");
}

TEST(RouteDeletion, AnAbortBringsDeletedRoutesBack)
{
    Network net("W: M = m-out; A>M = a-m; B>A = b-a");
    for (const char* route : {"M", "A", "B"})
        addRouteRecords(net, route);
    addSpanRecords(net, "a-m");
    const std::string before = dump(net.manager);
    net.manager.BeginTransaction();
    EXPECT_TRUE(net.manager.DeleteRouteObjectConnectEnd(net["A"]));
    EXPECT_TRUE(net.manager.DeleteRouteObject(net["B"], false));
    EXPECT_TRUE(net.manager.DeleteRouteObjectUpperAll(net["M"], false));
    net.manager.AbortTransaction();
    EXPECT_EQ(dump(net.manager), before);
}

} // namespace
