// Spans joined into one, taken out of a line, and taken out with the gap left open.

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
using support::values;

// An area record of a span, told by its number.
void AddArea(Network& net, const char* span, const wchar_t* number)
{
    net.manager.CreateAreaSet(net[span], values({{L"asratiosetnum", number}}));
}

// The numbers of a span's area records, in table order.
std::wstring AreasOf(const Network& net, const char* span)
{
    std::wstring text;
    for (const CAreaSet* area : net.manager.GetAreaSetDb()) {
        if (static_cast<long>(area->GetSpanId()) != net[span]) continue;
        if (!text.empty()) text += L' ';
        text += area->GetSubAttribute(L"asratiosetnum").View();
    }
    return text;
}

// ---- DeleteNodeObject ----

TEST(SpanDeletion, ANodeIsDeletedWhoeverUsesIt)
{
    Network net("W: M = a-b-c");
    EXPECT_TRUE(net.manager.DeleteNodeObject(net["b"]));
    EXPECT_EQ(net.AllNodes(), "a c");
    EXPECT_EQ(net.Shape(), "W: M = a-b b-c") << "the spans keep its id";
}

// ---- ConnectSpan ----

TEST(SpanDeletion, JoinedSpansBecomeTheFirstOne)
{
    Network net("W: M = a-b-c-d");
    EXPECT_TRUE(net.manager.ConnectSpan(net["a-b"], net["b-c"]));
    EXPECT_EQ(net.Shape(), "W: M = a-c c-d");
    EXPECT_EQ(net.AllNodes(), "a c d");
    EXPECT_EQ(net.Ends("a-b"), "a-c");
}

TEST(SpanDeletion, LengthsOfJoinedSpansAreAddedWithThirteenDecimals)
{
    Network net("W: M = a-b-c-d");
    net.Set(L"splength", {{"a-b", L"0.1"}, {"b-c", L"0.2"}, {"c-d", L"8"}});
    EXPECT_TRUE(net.manager.ConnectSpan(net["a-b"], net["b-c"]));
    EXPECT_EQ(net.Get(L"splength", "a-b c-d"), L"0.3000000000000 8");
}

TEST(SpanDeletion, ASpanWithoutLengthAddsNothing)
{
    Network net("W: M = a-b-c-d");
    net.Set(L"splength", {{"b-c", L"2.5"}});
    EXPECT_TRUE(net.manager.ConnectSpan(net["a-b"], net["b-c"]));
    EXPECT_EQ(net.Get(L"splength", "a-b"), L"2.5000000000000");
    EXPECT_TRUE(net.manager.ConnectSpan(net["a-b"], net["c-d"]));
    EXPECT_EQ(net.Get(L"splength", "a-b"), L"2.5000000000000");
}

TEST(SpanDeletion, JoiningChangesNothingElseOfTheFirstSpan)
{
    Network net("W: M = a-b-c");
    net.Set(L"spno", {{"a-b", L"1"}, {"b-c", L"2"}});
    net.Set(L"lowercentinv", {{"a-b", L"10"}, {"b-c", L"9"}});
    EXPECT_TRUE(net.manager.ConnectSpan(net["a-b"], net["b-c"]));
    EXPECT_EQ(net.Get(L"spno", "a-b"), L"1");
    EXPECT_EQ(net.Get(L"lowercentinv", "a-b"), L"10");
}

TEST(SpanDeletion, ATributaryAtTheNodeBetweenGoesOnToTheLowerNode)
{
    Network net("W: M = a-b-c; T = t-b");
    EXPECT_TRUE(net.manager.ConnectSpan(net["a-b"], net["b-c"]));
    EXPECT_EQ(net.Shape(), "W: M = a-c; T = t-c");
    EXPECT_EQ(net.AllNodes(), "a c t");
}

TEST(SpanDeletion, SpansOfDifferentRoutesAreNotJoined)
{
    Network net("W: M = b-c; A>M = a-b");
    const std::string before = dump(net.manager);
    EXPECT_FALSE(net.manager.ConnectSpan(net["a-b"], net["b-c"]));
    EXPECT_EQ(dump(net.manager), before);
}

TEST(SpanDeletion, SpansThatAreNoNeighboursAreNotJoined)
{
    Network net("W: M = a-b-c-d");
    const std::string before = dump(net.manager);
    EXPECT_FALSE(net.manager.ConnectSpan(net["a-b"], net["c-d"]));
    EXPECT_FALSE(net.manager.ConnectSpan(net["a-b"], net["a-b"]));
    EXPECT_EQ(dump(net.manager), before);
}

TEST(SpanDeletion, SpansInTheWrongOrderAreNotJoined)
{
    Network net("W: M = a-b-c");
    const std::string before = dump(net.manager);
    EXPECT_FALSE(net.manager.ConnectSpan(net["b-c"], net["a-b"]));
    EXPECT_EQ(dump(net.manager), before);
}

TEST(SpanDeletion, AnAreaRecordThatTheFirstSpanLacksMovesToIt)
{
    for (const wchar_t* flag : {L"0", L"1"}) {
        Network net("W: M = a-b-c-d");
        net.Set(L"wbareasetflg", {{"W", flag}});
        AddArea(net, "a-b", L"1");
        AddArea(net, "b-c", L"2");
        AddArea(net, "c-d", L"3");
        EXPECT_TRUE(net.manager.ConnectSpan(net["a-b"], net["b-c"]));
        EXPECT_EQ(AreasOf(net, "a-b"), L"1 2");
        EXPECT_EQ(AreasOf(net, "c-d"), L"3");
        EXPECT_EQ(net.manager.GetAreaSetDb().GetCount(), 3);
    }
}

TEST(SpanDeletion, AreaRecordsOfTheSameNumberAreAddedUp)
{
    for (const wchar_t* flag : {L"0", L"1"}) {
        Network net("W: M = a-b-c-d");
        net.Set(L"wbareasetflg", {{"W", flag}});
        CAreaSet* const first = net.manager.CreateAreaSet(
            net["a-b"],
            values({{L"asratiosetnum", L"2"}, {L"asarea", L"1.5"}, {L"ashouser", L"3"}, {L"asname", L"x"}}));
        net.manager.CreateAreaSet(net["b-c"], values({{L"asratiosetnum", L"2"},
                                                      {L"asarea", L"0.25"},
                                                      {L"ashouser", L"4"},
                                                      {L"ashousel", L"5"},
                                                      {L"asname", L"y"}}));
        AddArea(net, "c-d", L"2");
        EXPECT_TRUE(net.manager.ConnectSpan(net["a-b"], net["b-c"]));
        EXPECT_EQ(net.manager.GetAreaSetDb().GetCount(), 2) << "the second span's record goes with it";
        EXPECT_EQ(first->GetSubAttribute(L"asarea"), L"1.7500000000000");
        EXPECT_EQ(first->GetSubAttribute(L"ashouser"), L"7.0000000000000");
        EXPECT_EQ(first->GetSubAttribute(L"ashousel"), L"5.0000000000000");
        EXPECT_EQ(first->GetSubAttribute(L"asname"), L"x");
        EXPECT_EQ(AreasOf(net, "c-d"), L"2");
    }
}

TEST(SpanDeletion, NumbersOfAreaRecordsAreComparedAsNumbers)
{
    Network net("W: M = a-b-c");
    AddArea(net, "a-b", L"02");
    AddArea(net, "b-c", L"2");
    EXPECT_TRUE(net.manager.ConnectSpan(net["a-b"], net["b-c"]));
    EXPECT_EQ(AreasOf(net, "a-b"), L"02");
}

TEST(SpanDeletion, OfSeveralAreaRecordsWithTheNumberTheFirstTakesTheSum)
{
    Network net("W: M = a-b-c");
    for (const char* span : {"a-b", "a-b", "b-c"})
        net.manager.CreateAreaSet(net[span], values({{L"asratiosetnum", L"2"}, {L"asarea", L"1"}}));
    EXPECT_TRUE(net.manager.ConnectSpan(net["a-b"], net["b-c"]));
    std::vector<double> areas;
    for (const CAreaSet* area : net.manager.GetAreaSetDb())
        areas.push_back(area->GetSubAttributeDouble(L"asarea", 0.0));
    EXPECT_THAT(areas, testing::ElementsAre(2.0, 1.0));
}

TEST(SpanDeletion, JoiningTakesTheOtherRecordsOfTheSecondSpanAlong)
{
    Network net("W: M = a-b-c");
    addSpanRecords(net, "a-b");
    addSpanRecords(net, "b-c");
    net.manager.CreateNodeunit(net["b"], {});
    EXPECT_TRUE(net.manager.ConnectSpan(net["a-b"], net["b-c"]));
    EXPECT_EQ(recordCounts(net), "AreaSet 1, Areatset 1, Calcfig 1, Drawfig 1, Sheetfig 1, Spdxfin 1, Drawbelttx 1");
    EXPECT_TRUE(net.manager.GetNodeunitDb().IsEmpty());
}

// ---- DeleteSpanObject ----

TEST(SpanDeletion, ADeletedMiddleSpanJoinsTheUpstreamSpanToItsLowerNode)
{
    Network net("W: M = a-b-c-d");
    net.Set(L"splength", {{"a-b", L"10"}, {"b-c", L"20"}});
    EXPECT_TRUE(net.manager.DeleteSpanObject(net["b-c"], false));
    EXPECT_EQ(net.Shape(), "W: M = a-c c-d");
    EXPECT_EQ(net.AllNodes(), "a c d");
    EXPECT_EQ(net.Get(L"splength", "a-b"), L"10");
}

TEST(SpanDeletion, ADeletedLowestSpanLeavesTheLowestNode)
{
    Network net("W: M = a-b-c");
    EXPECT_TRUE(net.manager.DeleteSpanObject(net["b-c"], false));
    EXPECT_EQ(net.Shape(), "W: M = a-c");
    EXPECT_EQ(net.AllNodes(), "a c");
}

TEST(SpanDeletion, ADeletedUppermostSpanHandsItsTributariesDown)
{
    Network net("W: M = a-b-c; A>M = x-a; B>M = y-a");
    EXPECT_TRUE(net.manager.DeleteSpanObject(net["a-b"], false));
    EXPECT_EQ(net.Shape(), "W: M = b-c; A>M = x-b; B>M = y-b");
    EXPECT_EQ(net.AllNodes(), "b c x y");
}

TEST(SpanDeletion, TheOnlySpanOfARouteTakesTheRouteAlong)
{
    Network net("W: M = m-out; A>M = a-m; B>A = b-a; C>A = c-a");
    net.Set(L"connectnum", {{"B", L"A"}});
    EXPECT_TRUE(net.manager.DeleteSpanObject(net["a-m"], false));
    EXPECT_EQ(net.Shape(), "W: M = m-out; B>M = b-m; C>M = c-m");
    EXPECT_EQ(net.AllNodes(), "m out b c");
    EXPECT_EQ(net.Get(L"connectnum", "B"), L"A");
}

TEST(SpanDeletion, TheOnlySpanLeavesTheRouteWhenToldSo)
{
    Network net("W: M = m-out; A>M = a-m; B>A = b-a");
    EXPECT_TRUE(net.manager.DeleteSpanObject(net["a-m"], true));
    EXPECT_EQ(net.Shape(), "W: M = m-out; A>M =; B>A = b-m");
}

TEST(SpanDeletion, TheOnlySpanOfAWebTakesBothNodesAlong)
{
    Network net("W: M = a-b");
    EXPECT_TRUE(net.manager.DeleteSpanObject(net["a-b"], false));
    EXPECT_EQ(net.Shape(), "W:");
    EXPECT_EQ(net.AllNodes(), "");
}

TEST(SpanDeletion, ALowerNodeThatAnotherSpanTouchesStays)
{
    for (const char* other : {"b-m", "m-x"}) {
        Network net(std::string("W: A = a-m; B = ") + other);
        EXPECT_TRUE(net.manager.DeleteSpanObject(net["a-m"], false));
        EXPECT_NE(net.manager.GetNodeObjectOriginal(net["m"]), nullptr) << other;
        EXPECT_EQ(net.Ends(other), other);
    }
}

TEST(SpanDeletion, DeletedNodesTakeTheirUnitsAndInterceptorsAlong)
{
    Network net("W: M = a-b-c");
    for (const char* node : {"a", "b", "c"})
        addNodeRecords(net, node);
    EXPECT_TRUE(net.manager.DeleteSpanObject(net["a-b"], false));
    EXPECT_EQ(recordCounts(net), "IcpInq 2, Calcfig 1, Drawfig 1, Sheetfig 1, Nodeunit 2");
    EXPECT_TRUE(net.manager.DeleteSpanObject(net["b-c"], false));
    EXPECT_EQ(recordCounts(net), "Calcfig 1, Drawfig 1, Sheetfig 1") << "the last span takes its lower node along, too";
}

TEST(SpanDeletion, ADeletedSpanTakesItsRecordsAlong)
{
    Network net("W: M = a-b-c-d");
    addSpanRecords(net, "a-b");
    addSpanRecords(net, "b-c");
    addSpanRecords(net, "c-d");
    EXPECT_TRUE(net.manager.DeleteSpanObject(net["b-c"], false));
    EXPECT_EQ(recordCounts(net), "AreaSet 2, Areatset 2, Calcfig 1, Drawfig 1, Sheetfig 1, Spdxfin 2, Drawbelttx 2");
    Ids ids;
    EXPECT_FALSE(net.manager.GetAreaSetIdList(net["b-c"], ids));
    EXPECT_FALSE(net.manager.GetAreatsetIdList(net["b-c"], ids));
    EXPECT_FALSE(net.manager.GetSpdxfinIdList(net["b-c"], ids));
    EXPECT_FALSE(net.manager.GetDrawbelttxIdList(net["b-c"], ids));
}

TEST(SpanDeletion, TheAreaOfARouteMovesDownFromItsUppermostSpan)
{
    for (const wchar_t* flag : {L"0", L""}) {
        Network net("W: M = a-b-c-d");
        net.Set(L"wbareasetflg", {{"W", flag}});
        AddArea(net, "a-b", L"1");
        AddArea(net, "b-c", L"2");
        AddArea(net, "a-b", L"3");
        AddArea(net, "c-d", L"4");
        EXPECT_TRUE(net.manager.DeleteSpanObject(net["a-b"], false));
        EXPECT_EQ(AreasOf(net, "b-c"), L"1 3") << "its former records are gone";
        EXPECT_EQ(AreasOf(net, "c-d"), L"4");
        EXPECT_EQ(net.manager.GetAreaSetDb().GetCount(), 3);
    }
}

TEST(SpanDeletion, TheAreaMovesDownWhateverTheTableOrder)
{
    Network net("W: M = c-d, b-c, a-b");
    AddArea(net, "a-b", L"1");
    AddArea(net, "b-c", L"2");
    EXPECT_TRUE(net.manager.DeleteSpanObject(net["a-b"], false));
    EXPECT_EQ(AreasOf(net, "b-c"), L"1");
    EXPECT_EQ(net.Shape(), "W: M = c-d b-c");
}

TEST(SpanDeletion, AnUppermostSpanWithoutAreaStillClearsTheSecondOne)
{
    Network net("W: M = a-b-c");
    AddArea(net, "b-c", L"2");
    EXPECT_TRUE(net.manager.DeleteSpanObject(net["a-b"], false));
    EXPECT_TRUE(net.manager.GetAreaSetDb().IsEmpty());
}

TEST(SpanDeletion, SecondAreaRecordsDoNotMoveDown)
{
    Network net("W: M = a-b-c");
    net.manager.CreateAreatset(net["a-b"], {});
    const long kept = net.manager.CreateAreatset(net["b-c"], {})->GetId32();
    EXPECT_TRUE(net.manager.DeleteSpanObject(net["a-b"], false));
    EXPECT_EQ(net.manager.GetAreatsetDb().GetCount(), 1);
    EXPECT_NE(net.manager.GetAreatsetObjectOriginal(kept), nullptr);
}

TEST(SpanDeletion, TheAreaOfALowerSpanIsNotKept)
{
    Network net("W: M = a-b-c-d");
    AddArea(net, "a-b", L"1");
    AddArea(net, "b-c", L"2");
    AddArea(net, "c-d", L"3");
    EXPECT_TRUE(net.manager.DeleteSpanObject(net["b-c"], false));
    EXPECT_EQ(AreasOf(net, "a-b"), L"1");
    EXPECT_EQ(AreasOf(net, "c-d"), L"3");
    EXPECT_EQ(net.manager.GetAreaSetDb().GetCount(), 2);
}

TEST(SpanDeletion, WithAreasOnEverySpanNoneMovesDown)
{
    Network net("W: M = a-b-c");
    net.Set(L"wbareasetflg", {{"W", L"1"}});
    AddArea(net, "a-b", L"1");
    AddArea(net, "b-c", L"2");
    EXPECT_TRUE(net.manager.DeleteSpanObject(net["a-b"], false));
    EXPECT_EQ(AreasOf(net, "b-c"), L"2");
    EXPECT_EQ(net.manager.GetAreaSetDb().GetCount(), 1);
}

TEST(SpanDeletion, AMissingUpperNodeFailsWithTheSpanGoneAndTheLineClosed)
{
    Network net("W: M = a-b-c-d");
    net.manager.DeleteNodeObject(net["b"]);
    EXPECT_FALSE(net.manager.DeleteSpanObject(net["b-c"], false));
    EXPECT_EQ(net.Shape(), "W: M = a-c c-d");
    EXPECT_EQ(net.AllNodes(), "a c d");
}

TEST(SpanDeletion, AnAbortBringsADeletedSpanBack)
{
    Network net("W: M = m-out; A>M = a-m; B>A = b-a");
    addSpanRecords(net, "a-m");
    const std::string before = dump(net.manager);
    net.manager.BeginTransaction();
    EXPECT_TRUE(net.manager.DeleteSpanObject(net["a-m"], false));
    EXPECT_NE(dump(net.manager), before);
    net.manager.AbortTransaction();
    EXPECT_EQ(dump(net.manager), before);
}

// ---- DeleteSpanObjectOnly ----

TEST(SpanDeletion, TheGapStaysOpenAndBothNodesGo)
{
    Network net("W: M = a-b-c-d");
    EXPECT_TRUE(net.manager.DeleteSpanObjectOnly(net["b-c"]));
    EXPECT_EQ(net.Shape(), "W: M = a-b c-d");
    EXPECT_EQ(net.AllNodes(), "a d") << "b, where a span ends, and c, where one starts, go all the same";
}

TEST(SpanDeletion, ALowerNodeStaysOnlyForASpanThatEndsThere)
{
    Network net("W: M = m-out; A>M = a-m; B>M = b-m");
    EXPECT_TRUE(net.manager.DeleteSpanObjectOnly(net["a-m"]));
    EXPECT_EQ(net.AllNodes(), "m out b");
    EXPECT_TRUE(net.manager.DeleteSpanObjectOnly(net["b-m"]));
    EXPECT_EQ(net.AllNodes(), "out") << "M starts there";
    EXPECT_EQ(net.Shape(), "W: M = m-out; A>M =; B>M =");
}

TEST(SpanDeletion, AnUpperNodeStaysOnlyForASpanThatStartsThere)
{
    Network net("W: M = a-b-c; N = b-d");
    EXPECT_TRUE(net.manager.DeleteSpanObjectOnly(net["b-c"]));
    EXPECT_EQ(net.AllNodes(), "a b d");
    EXPECT_TRUE(net.manager.DeleteSpanObjectOnly(net["b-d"]));
    EXPECT_EQ(net.AllNodes(), "a");
    EXPECT_EQ(net.Shape(), "W: M = a-b; N =");
}

TEST(SpanDeletion, TheRouteStaysWithoutSpans)
{
    Network net("W: M = a-b");
    EXPECT_TRUE(net.manager.DeleteSpanObjectOnly(net["a-b"]));
    EXPECT_EQ(net.Shape(), "W: M =");
    EXPECT_EQ(net.AllNodes(), "");
}

TEST(SpanDeletion, NoAreaMovesDownOverAGap)
{
    Network net("W: M = a-b-c");
    addSpanRecords(net, "a-b");
    addSpanRecords(net, "b-c");
    EXPECT_TRUE(net.manager.DeleteSpanObjectOnly(net["a-b"]));
    EXPECT_EQ(recordCounts(net), "AreaSet 1, Areatset 1, Calcfig 1, Drawfig 1, Sheetfig 1, Spdxfin 1, Drawbelttx 1");
    Ids ids;
    EXPECT_TRUE(net.manager.GetAreaSetIdList(net["b-c"], ids));
    EXPECT_TRUE(net.manager.GetAreatsetIdList(net["b-c"], ids));
    EXPECT_TRUE(net.manager.GetSpdxfinIdList(net["b-c"], ids));
    EXPECT_TRUE(net.manager.GetDrawbelttxIdList(net["b-c"], ids));
}

TEST(SpanDeletion, NodesThatAreMissingAnywayDoNotMatter)
{
    Network net("W: M = a-b-c");
    net.manager.DeleteNodeObject(net["a"]);
    net.manager.DeleteNodeObject(net["b"]);
    EXPECT_TRUE(net.manager.DeleteSpanObjectOnly(net["a-b"]));
    EXPECT_EQ(net.Shape(), "W: M = b-c");
    EXPECT_EQ(net.AllNodes(), "c");
}

} // namespace
