// Routes that grow or shrink: spans added at the lower end, put in below a span, and taken off the lower end.

#include "network/RecordsOfNetwork.h"
#include "support/Dump.h"

#include <gmock/gmock.h>

namespace {

using support::addNodeRecords;
using support::addSpanRecords;
using support::dump;
using support::Ids;
using support::Network;
using support::recordCounts;
using support::setDefaults;
using support::Spans;
using support::values;

// ---- AddSpan ----

TEST(RouteGrowth, AddedSpansKeepTheLowestNode)
{
    Network net("W: M = a-b");
    Ids added;
    EXPECT_TRUE(net.manager.AddSpan(net["M"], 2, added));
    net.NameNew();
    EXPECT_EQ(net.Shape(), "W: M = a-n1 n1-n2 n2-b");
    EXPECT_EQ(toVector(added), (std::vector<long>{net["n1"] + 1, net["n2"] + 1})) << "in downstream order";
    long lowest = 0;
    EXPECT_TRUE(net.manager.GetMostLowerNodeId(net["M"], lowest));
    EXPECT_EQ(net.NameOf(lowest), "b");
}

TEST(RouteGrowth, AddedSpansAreAppendedToTheList)
{
    Network net("W: M = a-b");
    Ids added = net.List("a M");
    EXPECT_TRUE(net.manager.AddSpan(net["M"], 1, added));
    EXPECT_EQ(net.Names(added), "a M #" + std::to_string(net.manager.GetCurrentObjectId() - 1));
}

TEST(RouteGrowth, AddedSpansComeBackAsObjectsToo)
{
    Network net("W: M = a-b-c");
    Spans added;
    added.AddTail(&net.Span("a-b"));
    EXPECT_TRUE(net.manager.AddSpan(net["M"], 2, added));
    net.NameNew();
    EXPECT_EQ(net.Shape(), "W: M = a-b b-n1 n1-n2 n2-c");
    ASSERT_EQ(added.GetCount(), 3);
    added.RemoveHead();
    for (const CSpan* span : added)
        EXPECT_EQ(span, net.manager.GetSpanObjectOriginal(span->GetId32())) << "live objects";
    EXPECT_EQ(added.GetHead()->GetId32(), net["n1"] + 1);
    EXPECT_EQ(added.GetTail()->GetId32(), net["n2"] + 1);
}

TEST(RouteGrowth, RoutesJoinedBelowStayJoined)
{
    Network net("W: M = m-out; A>M = a-m; N = n-out");
    Ids added;
    EXPECT_TRUE(net.manager.AddSpan(net["A"], 1, added));
    EXPECT_TRUE(net.manager.AddSpan(net["N"], 1, added));
    net.NameNew();
    EXPECT_EQ(net.Shape(), "W: M = m-out; A>M = a-n1 n1-m; N = n-n2 n2-out");
}

TEST(RouteGrowth, AddedSpansHaveAreaRecordsAndNoNumbers)
{
    Network net("W: M = a-b");
    net.manager.CreateProject(values({{L"defsv", L"style"}}));
    setDefaults(L"span", {{L"splength", L"30"}});
    Ids added;
    EXPECT_TRUE(net.manager.AddSpan(net["M"], 1, added));
    net.Name(added.GetHead(), "new");
    net.NameNew();
    EXPECT_EQ(net.Get(L"splength", "new"), L"30");
    for (const wchar_t* key : {L"order", L"spno", L"calcstylename"})
        EXPECT_EQ(net.Get(key, "new n1"), L"- -");
    EXPECT_EQ(net.manager.GetAreaSetDb().GetCount(), 1);
}

TEST(RouteGrowth, AddingNoSpansSucceeds)
{
    Network net("W: M = a-b");
    const std::string before = dump(net.manager);
    EXPECT_EQ(net.After("", [&](auto& out) { return net.manager.AddSpan(net["M"], 0, out); }), "true:");
    EXPECT_EQ(net.AfterFor<Spans>("", [&](auto& out) { return net.manager.AddSpan(net["M"], 0, out); }), "true:");
    EXPECT_EQ(dump(net.manager), before);
}

TEST(RouteGrowth, AddingToARouteWithoutSpansFailsEvenWithNothingToAdd)
{
    Network net("W: M");
    for (const unsigned count : {0u, 1u}) {
        EXPECT_EQ(net.After("", [&](auto& out) { return net.manager.AddSpan(net["M"], count, out); }), "false:");
        EXPECT_EQ(net.AfterFor<Spans>("", [&](auto& out) { return net.manager.AddSpan(net["M"], count, out); }),
                  "false:");
    }
    EXPECT_TRUE(net.manager.GetNodeDb().IsEmpty());
}

TEST(RouteGrowth, ARingCannotGrow)
{
    Network net("W: M = a-b-c-a");
    EXPECT_EQ(net.After("", [&](auto& out) { return net.manager.AddSpan(net["M"], 1, out); }), "false:");
    EXPECT_EQ(net.AllNodes(), "a b c");
}

TEST(RouteGrowth, AdditionThatFailsKeepsTheSpansMadeSoFar)
{
    Network net("W: M = a-b");
    net.manager.LeaveIds(4); // node, span, area record; node
    Ids added;
    EXPECT_FALSE(net.manager.AddSpan(net["M"], 2, added));
    net.NameNew();
    EXPECT_EQ(net.Shape(), "W: M = a-n1 n1-n2");
    EXPECT_EQ(added.GetCount(), 1);
}

// ---- InsertSpan ----

TEST(RouteGrowth, InsertedSpansFollowTheGivenOne)
{
    Network net("W: M = a-b-c");
    Ids inserted = net.List("M");
    EXPECT_TRUE(net.manager.InsertSpan(net["M"], net["a-b"], 2, inserted));
    net.NameNew();
    EXPECT_EQ(net.Shape(), "W: M = a-n1 b-c n1-n2 n2-b");
    EXPECT_EQ(toVector(inserted), (std::vector<long>{net["M"], net["n1"] + 1, net["n2"] + 1}));
}

TEST(RouteGrowth, InsertedSpansComeBackAsObjectsToo)
{
    Network net("W: M = a-b-c");
    Spans inserted;
    EXPECT_TRUE(net.manager.InsertSpan(net["M"], net["b-c"], 2, inserted));
    net.NameNew();
    EXPECT_EQ(net.Shape(), "W: M = a-b b-n1 n1-n2 n2-c");
    ASSERT_EQ(inserted.GetCount(), 2);
    EXPECT_EQ(inserted.GetHead(), net.manager.GetSpanObjectOriginal(net["n1"] + 1));
    EXPECT_EQ(inserted.GetTail(), net.manager.GetSpanObjectOriginal(net["n2"] + 1));
}

TEST(RouteGrowth, InsertionDoesNotLookAtTheRoute)
{
    Network net("W: M = a-b; N = c-b");
    Ids inserted;
    EXPECT_TRUE(net.manager.InsertSpan(net["N"], net["a-b"], 1, inserted));
    EXPECT_TRUE(net.manager.InsertSpan(-1, inserted.GetHead(), 1, inserted));
    net.NameNew();
    EXPECT_EQ(net.Shape(), "W: M = a-n1 n1-n2 n2-b; N = c-b");
}

TEST(RouteGrowth, InsertingNoSpansSucceeds)
{
    Network net("W: M = a-b");
    const std::string before = dump(net.manager);
    EXPECT_EQ(net.After("", [&](auto& out) { return net.manager.InsertSpan(net["M"], net["a-b"], 0, out); }), "true:");
    EXPECT_EQ(net.AfterFor<Spans>("", [&](auto& out) { return net.manager.InsertSpan(net["M"], net["a-b"], 0, out); }),
              "true:");
    EXPECT_EQ(dump(net.manager), before);
}

// ---- CreateMultiSpanNode ----

TEST(RouteGrowth, ManySpansAreAppendedAtTheLowerEnd)
{
    Network net("W: M = a-b-c");
    Ids spans = net.List("a-b");
    Ids nodes = net.List("a");
    EXPECT_TRUE(net.manager.CreateMultiSpanNode(net["M"], {}, 2, spans, nodes));
    net.NameNew();
    EXPECT_EQ(net.Shape(), "W: M = a-b b-n1 n1-n2 n2-c");
    EXPECT_EQ(toVector(spans), (std::vector<long>{net["a-b"], net["n1"] + 1, net["n2"] + 1}));
    EXPECT_EQ(net.Names(nodes), "a n1 n2");
}

TEST(RouteGrowth, ManySpansAreNumberedOn)
{
    Network net("W: M = a-b-c; A>M = d-a; V: X = x-y");
    net.manager.CreateProject(values({{L"defsv", L"sanitary"}}));
    net.Set(L"spno", {{"a-b", L"1"}, {"b-c", L"7"}});
    Ids spans;
    Ids nodes;
    EXPECT_TRUE(net.manager.CreateMultiSpanNode(net["M"], {}, 2, spans, nodes));
    net.Name(spans.GetHead(), "s1");
    net.Name(spans.GetTail(), "s2");
    net.NameNew();
    EXPECT_EQ(net.Get(L"spno", "s1 s2 b-c"), L"8 9 7") << "on from the lowest span's number";
    EXPECT_EQ(net.Get(L"order", "s1 s2 n1 n2"), L"4 5 4 5") << "on from the number of spans of the web";
    EXPECT_EQ(net.Get(L"calcstylename", "s1 s2 b-c"), L"sanitary sanitary -");
}

TEST(RouteGrowth, ALowestSpanWithoutNumberCountsAsNumberNought)
{
    Network net("W: M = a-b");
    Ids spans;
    Ids nodes;
    EXPECT_TRUE(net.manager.CreateMultiSpanNode(net["M"], {}, 1, spans, nodes));
    net.Name(spans.GetHead(), "new");
    EXPECT_EQ(net.Get(L"spno", "new a-b"), L"1 -");
}

TEST(RouteGrowth, EverySpanOfManyTakesTheCallersAttributesButItsOwnNumbers)
{
    Network net("W: M = a-b");
    Ids spans;
    Ids nodes;
    EXPECT_TRUE(net.manager.CreateMultiSpanNode(
        net["M"], values({{L"splength", L"5"}, {L"spno", L"50"}, {L"order", L"60"}}), 2, spans, nodes));
    net.Name(spans.GetHead(), "s1");
    net.Name(spans.GetTail(), "s2");
    EXPECT_EQ(net.Get(L"splength", "s1 s2"), L"5 5");
    EXPECT_EQ(net.Get(L"spno", "s1 s2"), L"1 2");
    EXPECT_EQ(net.Get(L"order", "s1 s2"), L"2 3");
    EXPECT_EQ(net.manager.GetAreaSetDb().GetCount(), 2);
}

TEST(RouteGrowth, FewerThanOneSpanSucceedsAndMakesNothing)
{
    Network net("W: M = a-b");
    const std::string before = dump(net.manager);
    Ids spans;
    Ids nodes;
    for (const int count : {0, -1})
        EXPECT_TRUE(net.manager.CreateMultiSpanNode(net["M"], {}, count, spans, nodes));
    EXPECT_EQ(dump(net.manager), before);
    EXPECT_TRUE(spans.IsEmpty() && nodes.IsEmpty());
}

TEST(RouteGrowth, ARouteWithoutSpansGetsNoneEvenWithNothingToMake)
{
    Network net("W: M");
    Ids spans;
    Ids nodes;
    EXPECT_FALSE(net.manager.CreateMultiSpanNode(net["M"], {}, 0, spans, nodes));
    EXPECT_FALSE(net.manager.CreateMultiSpanNode(net["M"], {}, 1, spans, nodes));
    EXPECT_TRUE(net.manager.GetNodeDb().IsEmpty());
}

TEST(RouteGrowth, ManySpansThatFailKeepThoseMadeSoFar)
{
    Network net("W: M = a-b");
    net.manager.LeaveIds(4); // node, span, area record; node
    Ids spans;
    Ids nodes;
    EXPECT_FALSE(net.manager.CreateMultiSpanNode(net["M"], {}, 2, spans, nodes));
    net.NameNew();
    EXPECT_EQ(net.Shape(), "W: M = a-n1 n1-n2");
    EXPECT_EQ(spans.GetCount(), 1);
    net.Name(spans.GetHead(), "s1");
    EXPECT_EQ(net.Get(L"spno", "s1"), L"1");
}

// ---- RemoveSpan ----

TEST(RouteGrowth, RemovedSpansLeaveTheLowestNodeToTheNextSpan)
{
    Network net("W: M = a-b-c-d");
    EXPECT_TRUE(net.manager.RemoveSpan(net["M"], 2));
    EXPECT_EQ(net.Shape(), "W: M = a-d");
    EXPECT_EQ(net.AllNodes(), "a d");
}

TEST(RouteGrowth, RemovedSpansAreHandedOverLowestFirst)
{
    Network net("W: M = a-b-c-d");
    Spans removed;
    removed.AddTail(&net.Span("a-b"));
    EXPECT_TRUE(net.manager.RemoveSpan(net["M"], 2, removed));
    EXPECT_EQ(net.Names(removed), "a-b c-d b-c");
    EXPECT_EQ(net.Shape(), "W: M = a-d");
}

TEST(RouteGrowth, RemovingAllSpansFailsAndRemovesNothing)
{
    Network net("W: M = a-b-c");
    const std::string before = dump(net.manager);
    EXPECT_FALSE(net.manager.RemoveSpan(net["M"], 2));
    EXPECT_EQ(net.AfterFor<Spans>("", [&](auto& out) { return net.manager.RemoveSpan(net["M"], 2, out); }), "false:");
    EXPECT_EQ(dump(net.manager), before);
}

TEST(RouteGrowth, RemovingMoreSpansThanThereAreFailsAndRemovesNothing)
{
    Network net("W: M = a-b-c");
    const std::string before = dump(net.manager);
    for (const unsigned count : {3u, 4000000000u}) {
        EXPECT_FALSE(net.manager.RemoveSpan(net["M"], count));
        EXPECT_EQ(net.AfterFor<Spans>("", [&](auto& out) { return net.manager.RemoveSpan(net["M"], count, out); }),
                  "false:");
    }
    EXPECT_EQ(dump(net.manager), before);
}

TEST(RouteGrowth, RemovingNoSpansSucceedsAndChangesNothing)
{
    Network net("W: M = a-b-c");
    const std::string before = dump(net.manager);
    EXPECT_TRUE(net.manager.RemoveSpan(net["M"], 0));
    EXPECT_EQ(net.AfterFor<Spans>("", [&](auto& out) { return net.manager.RemoveSpan(net["M"], 0, out); }), "true:");
    EXPECT_EQ(dump(net.manager), before);
}

TEST(RouteGrowth, NothingCanBeRemovedFromARouteWithoutSpansOrARing)
{
    Network net("W: M; R = a-b-c-a");
    EXPECT_FALSE(net.manager.RemoveSpan(net["M"], 0));
    EXPECT_FALSE(net.manager.RemoveSpan(net["R"], 1));
    EXPECT_EQ(net.Shape(), "W: M =; R = a-b b-c c-a");
}

TEST(RouteGrowth, ARemovedNodeTakesItsUnitsAndInterceptorsAlong)
{
    Network net("W: M = a-b-c");
    for (const char* node : {"a", "b", "c"})
        addNodeRecords(net, node);
    EXPECT_TRUE(net.manager.RemoveSpan(net["M"], 1));
    EXPECT_EQ(net.AllNodes(), "a c");
    EXPECT_EQ(recordCounts(net), "IcpInq 2, Calcfig 1, Drawfig 1, Sheetfig 1, Nodeunit 2");
    Ids ids;
    EXPECT_FALSE(net.manager.GetNodeunitIdList(net["b"], ids));
    EXPECT_FALSE(net.manager.GetIcpInqIdList(net["b"], ids));
}

TEST(RouteGrowth, WhatHangsOnARemovedSpanStaysInItsTables)
{
    Network net("W: M = a-b-c");
    addSpanRecords(net, "b-c");
    EXPECT_TRUE(net.manager.RemoveSpan(net["M"], 1));
    EXPECT_EQ(net.Shape(), "W: M = a-c");
    EXPECT_EQ(recordCounts(net), "AreaSet 1, Areatset 1, Calcfig 1, Drawfig 1, Sheetfig 1, Spdxfin 1, Drawbelttx 1");
}

TEST(RouteGrowth, AnAbortBringsRemovedSpansBack)
{
    Network net("W: M = a-b-c-d");
    const std::string before = dump(net.manager);
    net.manager.BeginTransaction();
    Spans removed;
    EXPECT_TRUE(net.manager.RemoveSpan(net["M"], 2, removed));
    net.manager.AbortTransaction();
    EXPECT_EQ(dump(net.manager), before);
}

TEST(RouteGrowth, ADanglingUpperNodeDoesNotKeepASpanFromGoing)
{
    Network net("W: M = m-a-b-out");
    for (CSpan* span : net.manager.GetSpanDb()) {
        if (static_cast<long>(span->GetUpperNodeId()) == net["a"]) span->SetUpperNodeId(999999);
        if (static_cast<long>(span->GetLowerNodeId()) == net["a"]) span->SetLowerNodeId(999999);
    }
    EXPECT_TRUE(net.manager.RemoveSpan(net["M"], 2));
    EXPECT_EQ(net.manager.GetSpanNumInRoute(net["M"]), 1);
}

TEST(RouteGrowth, OfABrokenChainNothingIsLeftToTakeTheLowestNode)
{
    Network net("W: M = m-a-b; N = x-y");
    for (CSpan* span : net.manager.GetSpanDb())
        span->SetRouteId(static_cast<unsigned long>(net["M"])); // x-y is off the chain: the walk has m-a twice
    EXPECT_FALSE(net.manager.RemoveSpan(net["M"], 2));
}

} // namespace
