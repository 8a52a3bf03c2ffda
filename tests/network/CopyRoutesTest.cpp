// Copies of routes, alone and with everything upstream.

#include "network/RecordsOfNetwork.h"
#include "support/Dump.h"

#include <gmock/gmock.h>

namespace {

using support::addRouteRecords;
using support::dump;
using support::Ids;
using support::Network;
using support::recordCounts;
using support::values;

// A network whose spans can be copied: each has an area record. Copies are named after their sources.
class CopyableNetwork : public Network {
public:
    explicit CopyableNetwork(std::string_view text) : Network(text)
    {
        AddAreas();
        MarkNodes();
    }
};

// ---- CopyRouteObject ----

TEST(CopyRoutes, ARouteCopiedToTheFlowEndHasAFlowEndOfItsOwn)
{
    CopyableNetwork net("W: M = a-b-c-d");
    long id = 0;
    EXPECT_TRUE(net.manager.CopyRouteObject(net["M"], 0, id));
    net.NameNew();
    EXPECT_EQ(net.NameOf(id), "M'");
    EXPECT_EQ(net.Shape(), "W: M = a-b b-c c-d; M' = c'-d' b'-c' a'-b'") << "made from the lowest span up";
    EXPECT_EQ(net.AllNodes(), "a b c d c' d' b' a'");
}

TEST(CopyRoutes, ARouteCopiedOntoAnotherEndsAtItsTop)
{
    CopyableNetwork net("W: M = m-x-out; A>M = a-b-c-m");
    long id = 0;
    EXPECT_TRUE(net.manager.CopyRouteObject(net["A"], net["M"], id));
    net.NameNew();
    EXPECT_EQ(net.Shape(), "W: M = m-x x-out; A>M = a-b b-c c-m; A'>M = c'-m b'-c' a'-b'");
    EXPECT_EQ(net.AllNodes(), "m x out a b c c' b' a'") << "three nodes for three spans";
}

TEST(CopyRoutes, ARouteCanBeCopiedOntoARouteElsewhere)
{
    CopyableNetwork net("W: M = m-out; A>M = a-m; V: X = x-y");
    long id = 0;
    EXPECT_TRUE(net.manager.CopyRouteObject(net["A"], net["X"], id));
    net.NameNew();
    EXPECT_EQ(net.Shape(), "W: M = m-out; A>M = a-m; A'>X = a'-x | V: X = x-y") << "the web stays the source's";
}

TEST(CopyRoutes, ARouteCanBeCopiedOntoItself)
{
    CopyableNetwork net("W: M = m-out");
    long id = 0;
    EXPECT_TRUE(net.manager.CopyRouteObject(net["M"], net["M"], id));
    net.NameNew();
    EXPECT_EQ(net.Shape(), "W: M = m-out; M'>M = m'-m");
}

TEST(CopyRoutes, ACopiedRouteHasTheSameAttributes)
{
    CopyableNetwork net("W: M = m-x-out; A>M = a-m");
    net.Set(L"connectnum", {{"A", L"M"}});
    net.Set(L"floworder", {{"A", L"4"}});
    net.Set(L"spno", {{"a-m", L"1"}});
    long id = 0;
    EXPECT_TRUE(net.manager.CopyRouteObject(net["A"], 0, id));
    net.NameNew();
    EXPECT_EQ(net.Get(L"connectnum", "A'"), L"M");
    EXPECT_EQ(net.Get(L"floworder", "A'"), L"4");
    EXPECT_EQ(net.Get(L"routenum", "A'"), L"A");
    Ids spans;
    EXPECT_TRUE(net.manager.GetSpanIdList(id, spans));
    EXPECT_EQ(net.manager.GetSpanObjectOriginal(spans.GetHead())->GetSubAttribute(L"spno"), L"1");
}

TEST(CopyRoutes, TheRouteGetsItsIdAfterItsSpans)
{
    CopyableNetwork net("W: M = a-b");
    const long last = net.manager.GetCurrentObjectId();
    long id = 0;
    EXPECT_TRUE(net.manager.CopyRouteObject(net["M"], 0, id));
    EXPECT_EQ(id, last + 5); // two nodes, span, area record, route
}

TEST(CopyRoutes, WhatHangsOnARouteIsNotCopied)
{
    CopyableNetwork net("W: M = m-out");
    addRouteRecords(net, "M");
    const std::string before = recordCounts(net);
    ASSERT_THAT(before, testing::HasSubstr("AreaSet 1"));
    long id = 0;
    EXPECT_TRUE(net.manager.CopyRouteObject(net["M"], 0, id));
    std::string expected = before;
    expected.replace(expected.find("AreaSet 1"), 9, "AreaSet 2");
    EXPECT_EQ(recordCounts(net), expected);
}

TEST(CopyRoutes, ARouteWithoutSpansIsNotCopied)
{
    CopyableNetwork net("W: M = m-out; A>M");
    const std::string before = dump(net.manager);
    long id = 0;
    EXPECT_FALSE(net.manager.CopyRouteObject(net["A"], 0, id));
    EXPECT_FALSE(net.manager.CopyRouteObject(net["A"], net["M"], id));
    EXPECT_EQ(dump(net.manager), before);
}

TEST(CopyRoutes, NothingIsCopiedOntoARouteWithoutSpans)
{
    CopyableNetwork net("W: M = m-out; A>M");
    const std::string before = dump(net.manager);
    long id = 0;
    EXPECT_FALSE(net.manager.CopyRouteObject(net["M"], net["A"], id));
    EXPECT_EQ(dump(net.manager), before);
}

TEST(CopyRoutes, ASpanWithoutAreaRecordEndsTheCopyWithTheSpansBelowItMade)
{
    CopyableNetwork net("W: M = a-b-c-d");
    net.manager.DeleteSpanAreaset(net["a-b"]);
    long id = -5;
    EXPECT_FALSE(net.manager.CopyRouteObject(net["M"], 0, id));
    net.NameNew();
    EXPECT_EQ(net.Shape(), "W: M = a-b b-c c-d c'-d' b'-c'") << "they stay in the source's route";
    EXPECT_EQ(net.AllNodes(), "a b c d c' d' b' a'");
    EXPECT_EQ(id, -5);
}

TEST(CopyRoutes, ARefusedRouteLeavesTheSpansInTheSourcesRoute)
{
    CopyableNetwork net("W: M = a-b");
    net.manager.LeaveIds(4); // two nodes, span, area record
    long id = 0;
    EXPECT_FALSE(net.manager.CopyRouteObject(net["M"], 0, id));
    net.NameNew();
    EXPECT_EQ(net.Shape(), "W: M = a-b a'-b'");
    EXPECT_EQ(id, 2147483547) << "the id is told";
}

// ---- CopyAllUpperRouteObject ----

// Both members do the same.
class CopyAllUpper : public testing::TestWithParam<bool> {
protected:
    bool Copy(Network& net, const char* route, long connectId, CList<long, long>& newIds) const
    {
        return GetParam() ? net.manager.CopyAllUpperRouteObjectSub(net[route], connectId, newIds)
                          : net.manager.CopyAllUpperRouteObject(net[route], connectId, newIds);
    }
};
INSTANTIATE_TEST_SUITE_P(CopyRoutes, CopyAllUpper, testing::Bool());

TEST_P(CopyAllUpper, TheWholeTreeUpstreamIsCopied)
{
    CopyableNetwork net("W: M = m-out; A>M = a-m; B>A = b-a; C>A = c-a; D>B = d-b");
    Ids copies;
    EXPECT_TRUE(Copy(net, "A", net["M"], copies));
    net.NameNew();
    EXPECT_EQ(net.Shape(), "W: M = m-out; A>M = a-m; B>A = b-a; C>A = c-a; D>B = d-b; "
                           "A'>M = a'-m; B'>A' = b'-a'; D'>B' = d'-b'; C'>A' = c'-a'");
}

TEST_P(CopyAllUpper, EachRouteIsListedBeforeItsTributaries)
{
    CopyableNetwork net("W: M = m-out; A>M = a-m; B>A = b-a; C>A = c-a; D>B = d-b; E>C = e-c");
    Ids copies = net.List("W");
    EXPECT_TRUE(Copy(net, "A", 0, copies));
    net.NameNew();
    EXPECT_EQ(net.Names(copies), "W A' B' D' C' E'");
}

TEST_P(CopyAllUpper, TributariesFollowInFlowOrder)
{
    CopyableNetwork net("W: M = m-out; A>M = a-m; B>M = b-m; C>M = c-m");
    net.Set(L"floworder", {{"A", L"3"}, {"B", L"10"}, {"C", L"2"}});
    Ids copies;
    EXPECT_TRUE(Copy(net, "M", 0, copies));
    net.NameNew();
    EXPECT_EQ(net.Names(copies), "M' C' A' B'");
}

TEST_P(CopyAllUpper, ARouteWithoutTributariesIsCopiedAlone)
{
    CopyableNetwork net("W: M = m-out; A>M = a-m");
    Ids copies;
    EXPECT_TRUE(Copy(net, "A", 0, copies));
    net.NameNew();
    EXPECT_EQ(net.Names(copies), "A'");
}

TEST_P(CopyAllUpper, AFailedTributaryEndsTheCopyWithTheRoutesBeforeItListed)
{
    CopyableNetwork net("W: M = m-out; A>M = a-m; B>M = b-m; C>M = c-m");
    net.manager.DeleteSpanAreaset(net["b-m"]);
    Ids copies;
    EXPECT_FALSE(Copy(net, "M", 0, copies));
    net.NameNew();
    EXPECT_EQ(net.Names(copies), "M' A'");
    EXPECT_EQ(net.Shape(), "W: M = m-out; A>M = a-m; B>M = b-m; C>M = c-m; M' = m'-out'; A'>M' = a'-m'");
}

TEST_P(CopyAllUpper, AFailedStartListsNothing)
{
    CopyableNetwork net("W: M; A>M = a-m");
    Ids copies;
    EXPECT_FALSE(Copy(net, "M", 0, copies));
    EXPECT_TRUE(copies.IsEmpty());
}

TEST_P(CopyAllUpper, ACopyHungOntoItsSourceIsNotCopiedAgain)
{
    CopyableNetwork net("W: M = m-out; A>M = a-m");
    Ids copies;
    EXPECT_TRUE(Copy(net, "M", net["M"], copies));
    net.NameNew();
    EXPECT_EQ(net.Names(copies), "M' A'");
    EXPECT_EQ(net.Shape(), "W: M = m-out; A>M = a-m; M'>M = m'-m; A'>M' = a'-m'");
}

TEST_P(CopyAllUpper, ACopyHungFurtherUpstreamIsNotCopiedAgain)
{
    CopyableNetwork net("W: M = m-out; A>M = a-m");
    Ids copies;
    EXPECT_TRUE(Copy(net, "M", net["A"], copies));
    net.NameNew();
    EXPECT_EQ(net.Names(copies), "M' A'");
    EXPECT_EQ(net.Shape(), "W: M = m-out; A>M = a-m; M'>A = m'-a; A'>M' = a'-m'");
}

TEST_P(CopyAllUpper, ARingOfRoutesIsCopiedOnce)
{
    CopyableNetwork net("W: A>B = a-b; B>A = b-a");
    Ids copies;
    EXPECT_TRUE(Copy(net, "A", 0, copies));
    net.NameNew();
    EXPECT_EQ(net.Names(copies), "A' B'");
}

TEST_P(CopyAllUpper, AnAbortTakesTheCopiesBack)
{
    CopyableNetwork net("W: M = m-out; A>M = a-m");
    const std::string before = dump(net.manager);
    net.manager.BeginTransaction();
    Ids copies;
    EXPECT_TRUE(Copy(net, "M", 0, copies));
    net.manager.AbortTransaction();
    EXPECT_EQ(dump(net.manager), before);
}

} // namespace
