// Copies of nodes, spans and their area records.

#include "network/RecordsOfNetwork.h"
#include "support/Dump.h"

#include <gmock/gmock.h>

namespace {

using support::addNodeRecords;
using support::addSpanRecords;
using support::dropDefaults;
using support::dump;
using support::Ids;
using support::Network;
using support::recordCounts;
using support::setDefaults;
using support::values;

constexpr long kRefusedId = 2147483547;

std::wstring Attributes(const CPipeObject& object)
{
    CMapStringToString map;
    object.GetSubAttribute(map);
    std::wstring text;
    for (const auto& [key, value] : map)
        text += std::wstring(key.View()) + L'=' + std::wstring(value.View()) + L' ';
    return text;
}

// The attributes of a span's area records, in table order.
std::vector<std::wstring> AreasOf(const Network& net, long spanId)
{
    std::vector<std::wstring> areas;
    for (const CAreaSet* area : net.manager.GetAreaSetDb())
        if (static_cast<long>(area->GetSpanId()) == spanId) areas.push_back(Attributes(*area));
    return areas;
}

// ---- CopyNodeObject ----

TEST(CopySpans, ACopiedNodeHasANewIdAndTheSameAttributes)
{
    Network net("W: M = a-b");
    net.Set(L"cx", {{"a", L"1.5"}});
    net.Set(L"mholeno", {{"a", L"7"}});
    net.Node("a").SetStatus(3);
    const long last = net.manager.GetCurrentObjectId();
    long id = 0;
    EXPECT_TRUE(net.manager.CopyNodeObject(net["a"], id));
    EXPECT_EQ(id, last + 1);
    EXPECT_EQ(net.manager.GetCurrentObjectId(), last + 1);
    const CNode* const copy = net.manager.GetNodeObjectOriginal(id);
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(Attributes(*copy), L"cx=1.5 mholeno=7 ");
    EXPECT_EQ(copy->GetStatus(), 3);
}

TEST(CopySpans, ACopiedNodeOwesNothingToTheDefaults)
{
    Network net("W: M = a-b");
    setDefaults(L"node", {{L"cx", L"9"}});
    long id = 0;
    EXPECT_TRUE(net.manager.CopyNodeObject(net["a"], id));
    EXPECT_EQ(Attributes(*net.manager.GetNodeObjectOriginal(id)), L"");
    dropDefaults(L"node");
    EXPECT_TRUE(net.manager.CopyNodeObject(net["a"], id));
}

TEST(CopySpans, WhatHangsOnANodeIsNotCopied)
{
    Network net("W: M = a-b");
    addNodeRecords(net, "a");
    long id = 0;
    EXPECT_TRUE(net.manager.CopyNodeObject(net["a"], id));
    EXPECT_EQ(recordCounts(net), "IcpInq 1, Calcfig 1, Drawfig 1, Sheetfig 1, Nodeunit 1");
}

TEST(CopySpans, ARefusedCopyUsesItsIdUpAndTellsIt)
{
    Network net("W: M = a-b");
    net.manager.LeaveIds(0);
    const std::string before = dump(net.manager);
    long id = 0;
    EXPECT_FALSE(net.manager.CopyNodeObject(net["a"], id));
    EXPECT_EQ(id, kRefusedId);
    EXPECT_EQ(net.manager.GetCurrentObjectId(), kRefusedId);
    EXPECT_EQ(dump(net.manager), before);
}

// ---- CopyAreaInqObject ----

TEST(CopySpans, AnAreaInflowIsNeverCopied)
{
    Network net("W: M = a-b");
    const long inflow = net.manager.CreateAreaInq(net["M"], {})->GetId32();
    const std::string before = dump(net.manager);
    const long last = net.manager.GetCurrentObjectId();
    long id = -5;
    EXPECT_TRUE(net.manager.CopyAreaInqObject(inflow, id));
    EXPECT_EQ(id, -5);
    EXPECT_EQ(dump(net.manager), before);
    EXPECT_EQ(net.manager.GetCurrentObjectId(), last);
}

// ---- CopySpanObject ----

TEST(CopySpans, WithoutLowerNodeBothNodesAreCopied)
{
    Network net("W: M = a-b");
    net.AddAreas();
    net.MarkNodes();
    long id = 0;
    EXPECT_TRUE(net.manager.CopySpanObject(net["a-b"], 0, id));
    net.NameNew();
    EXPECT_EQ(net.Shape(), "W: M = a-b a'-b'");
    EXPECT_EQ(net.AllNodes(), "a b a' b'") << "the upper node first";
    EXPECT_EQ(id, net["b'"] + 1);
}

TEST(CopySpans, AGivenLowerNodeIsUsedAsItIs)
{
    Network net("W: M = a-b-c");
    net.AddAreas();
    net.MarkNodes();
    long id = 0;
    EXPECT_TRUE(net.manager.CopySpanObject(net["a-b"], net["c"], id));
    net.NameNew();
    EXPECT_EQ(net.Shape(), "W: M = a-b b-c a'-c");
    EXPECT_EQ(net.AllNodes(), "a b c a'");
}

TEST(CopySpans, AGivenLowerNodeIsNotChecked)
{
    Network net("W: M = a-b");
    net.AddAreas();
    long id = 0;
    EXPECT_TRUE(net.manager.CopySpanObject(net["a-b"], 987654, id));
    EXPECT_EQ(net.manager.GetSpanObjectOriginal(id)->GetLowerNodeId(), 987654u);
    EXPECT_EQ(net.manager.GetNodeDb().GetCount(), 3);
}

TEST(CopySpans, ACopiedSpanHasTheSameAttributesAndRoute)
{
    Network net("W: M = a-b");
    net.AddAreas();
    net.Set(L"spno", {{"a-b", L"1"}});
    net.Set(L"order", {{"a-b", L"12"}});
    net.Set(L"splength", {{"a-b", L"30.5"}});
    long id = 0;
    EXPECT_TRUE(net.manager.CopySpanObject(net["a-b"], net["b"], id));
    const CSpan* const copy = net.manager.GetSpanObjectOriginal(id);
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(Attributes(*copy), L"spno=1 order=12 splength=30.5 ");
    EXPECT_EQ(copy->GetRouteId(), net.Span("a-b").GetRouteId());
    EXPECT_EQ(net.Ends("a-b"), "a-b");
}

TEST(CopySpans, AllAreaRecordsOfASpanAreCopied)
{
    Network net("W: M = a-b-c");
    net.manager.CreateAreaSet(net["a-b"], values({{L"asratiosetnum", L"1"}, {L"asarea", L"0.5"}}));
    net.manager.CreateAreaSet(net["b-c"], values({{L"asarea", L"9"}}));
    net.manager.CreateAreaSet(net["a-b"], values({{L"asratiosetnum", L"2"}}));
    net.manager.CreateAreaSet(net["a-b"], {});
    long id = 0;
    EXPECT_TRUE(net.manager.CopySpanObject(net["a-b"], 0, id));
    EXPECT_EQ(AreasOf(net, id), AreasOf(net, net["a-b"]));
    EXPECT_EQ(AreasOf(net, id).size(), 3u);
    EXPECT_EQ(net.manager.GetAreaSetDb().GetCount(), 7);
}

TEST(CopySpans, OnlyAreaRecordsComeAlongWithASpan)
{
    Network net("W: M = a-b");
    addSpanRecords(net, "a-b");
    long id = 0;
    EXPECT_TRUE(net.manager.CopySpanObject(net["a-b"], 0, id));
    EXPECT_EQ(recordCounts(net), "AreaSet 2, Areatset 1, Calcfig 1, Drawfig 1, Sheetfig 1, Spdxfin 1, Drawbelttx 1");
}

TEST(CopySpans, ASpanWithoutAreaRecordIsNotCopiedButItsNodesAre)
{
    Network net("W: M = a-b");
    net.MarkNodes();
    long id = 0;
    EXPECT_FALSE(net.manager.CopySpanObject(net["a-b"], 0, id));
    net.NameNew();
    EXPECT_EQ(net.Shape(), "W: M = a-b");
    EXPECT_EQ(net.AllNodes(), "a b a' b'");
    EXPECT_EQ(id, net["b'"] + 1) << "the id is told";
    EXPECT_EQ(net.manager.GetCurrentObjectId(), id);
}

TEST(CopySpans, AFailedNodeCopyLeavesTheSourceSpan)
{
    for (const long ids : {0L, 1L}) {
        Network net("W: M = a-b");
        net.AddAreas();
        net.MarkNodes();
        net.manager.LeaveIds(ids);
        long id = -5;
        EXPECT_FALSE(net.manager.CopySpanObject(net["a-b"], 0, id));
        net.NameNew();
        EXPECT_EQ(net.Shape(), "W: M = a-b");
        EXPECT_EQ(net.AllNodes(), ids == 0 ? "a b" : "a b a'");
        EXPECT_EQ(net.manager.GetAreaSetDb().GetCount(), 1);
        EXPECT_EQ(id, -5);
    }
}

TEST(CopySpans, AFailedAreaRecordLeavesTheCopyOutOfTheTable)
{
    Network net("W: M = a-b");
    net.AddAreas();
    net.manager.CreateAreaSet(net["a-b"], {});
    net.manager.LeaveIds(4); // two nodes, the span, one area record
    long id = 0;
    EXPECT_FALSE(net.manager.CopySpanObject(net["a-b"], 0, id));
    EXPECT_EQ(id, kRefusedId - 2);
    EXPECT_EQ(net.manager.GetSpanObjectOriginal(id), nullptr);
    EXPECT_EQ(net.manager.GetNodeDb().GetCount(), 4);
    EXPECT_EQ(AreasOf(net, id).size(), 1u) << "the area record made before stays";
}

TEST(CopySpans, AnAbortTakesACopyBack)
{
    Network net("W: M = a-b");
    net.AddAreas();
    const std::string before = dump(net.manager);
    const long last = net.manager.GetCurrentObjectId();
    net.manager.BeginTransaction();
    long id = 0;
    EXPECT_TRUE(net.manager.CopySpanObject(net["a-b"], 0, id));
    net.manager.AbortTransaction();
    EXPECT_EQ(dump(net.manager), before);
    EXPECT_EQ(net.manager.GetCurrentObjectId(), last);
}

// ---- CopyAreasetObjectFromSpan ----

TEST(CopySpans, AreaRecordsAreCopiedBehindThoseOfTheTarget)
{
    Network net("W: M = a-b-c");
    net.manager.CreateAreaSet(net["b-c"], values({{L"asname", L"own"}}));
    net.manager.CreateAreaSet(net["a-b"], values({{L"asname", L"1"}, {L"asarea", L"2"}}));
    net.manager.CreateAreaSet(net["a-b"], values({{L"asname", L"2"}}));
    EXPECT_TRUE(net.manager.CopyAreasetObjectFromSpan(net["a-b"], net["b-c"]));
    EXPECT_THAT(AreasOf(net, net["b-c"]), testing::ElementsAre(L"asname=own ", L"asname=1 asarea=2 ", L"asname=2 "));
    EXPECT_EQ(AreasOf(net, net["a-b"]).size(), 2u);
}

TEST(CopySpans, ACopiedAreaRecordHasTheSourcesAttributesAndNoDefaults)
{
    Network net("W: M = a-b-c");
    net.manager.CreateAreaSet(net["a-b"], values({{L"asname", L"1"}}));
    setDefaults(L"areaset", {{L"asarea", L"7"}});
    EXPECT_TRUE(net.manager.CopyAreasetObjectFromSpan(net["a-b"], net["b-c"]));
    EXPECT_THAT(AreasOf(net, net["b-c"]), testing::ElementsAre(L"asname=1 "));
}

TEST(CopySpans, WithoutAreaRecordsThereIsNothingToCopy)
{
    Network net("W: M = a-b-c");
    net.manager.CreateAreaSet(net["b-c"], {});
    const std::string before = dump(net.manager);
    EXPECT_FALSE(net.manager.CopyAreasetObjectFromSpan(net["a-b"], net["b-c"]));
    EXPECT_EQ(dump(net.manager), before);
}

TEST(CopySpans, TheTargetOfAreaRecordsIsNotChecked)
{
    Network net("W: M = a-b");
    net.AddAreas();
    EXPECT_TRUE(net.manager.CopyAreasetObjectFromSpan(net["a-b"], 987654));
    EXPECT_EQ(AreasOf(net, 987654).size(), 1u);
}

TEST(CopySpans, AreaRecordsCanBeCopiedWithinOneSpan)
{
    Network net("W: M = a-b");
    net.AddAreas();
    EXPECT_TRUE(net.manager.CopyAreasetObjectFromSpan(net["a-b"], net["a-b"]));
    EXPECT_EQ(AreasOf(net, net["a-b"]).size(), 2u);
}

TEST(CopySpans, AnAreaRecordWithoutDefaultsEndsTheCopy)
{
    Network net("W: M = a-b-c");
    for (int i = 0; i < 2; ++i)
        net.manager.CreateAreaSet(net["a-b"], values({{L"asname", L"1"}}));
    dropDefaults(L"areaset");
    EXPECT_FALSE(net.manager.CopyAreasetObjectFromSpan(net["a-b"], net["b-c"]));
    EXPECT_THAT(AreasOf(net, net["b-c"]), testing::ElementsAre(L"")) << "the failed record stays without attributes";
}

} // namespace
