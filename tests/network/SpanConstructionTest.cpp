// New spans at a span, and spans cut into pieces. Routes that grow or shrink at their end: RouteGrowthTest.cpp.

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
using testing::ElementsAre;

// The span ids of all area records.
std::string SpansOfAreas(const Network& net)
{
    std::vector<long> ids;
    for (const CAreaSet* area : net.manager.GetAreaSetDb())
        ids.push_back(static_cast<long>(area->GetSpanId()));
    return net.Names(ids);
}

// ---- CreateSpan ----

TEST(SpanConstruction, ASpanBetweenUnknownNodesIsMade)
{
    Network net;
    long id = 0;
    EXPECT_TRUE(net.manager.CreateSpan(70, 71, 72, {}, &id));
    const CSpan* const span = net.manager.GetSpanObjectOriginal(id);
    ASSERT_NE(span, nullptr);
    EXPECT_EQ(span->GetUpperNodeId(), 70u);
    EXPECT_EQ(span->GetLowerNodeId(), 71u);
    EXPECT_EQ(span->GetRouteId(), 72u);
    EXPECT_TRUE(net.manager.GetNodeDb().IsEmpty());
}

TEST(SpanConstruction, ASpanComesWithOneAreaRecordWithoutAttributesOfItsOwn)
{
    Network net("W: M = a-b");
    setDefaults(L"areaset", {{L"asarea", L"7"}});
    CSpan* const span = net.manager.CreateSpan(net["a"], net["b"], net["M"], values({{L"splength", L"3"}}));
    ASSERT_NE(span, nullptr);
    EXPECT_EQ(span->GetSubAttribute(L"splength"), L"3");
    ASSERT_EQ(net.manager.GetAreaSetDb().GetCount(), 1);
    const CAreaSet* const area = net.manager.GetAreaSetObjectOriginal(span->GetId32() + 1);
    ASSERT_NE(area, nullptr);
    EXPECT_EQ(area->GetSpanId(), span->GetObjectId());
    EXPECT_EQ(area->GetSubAttribute(L"asarea"), L"7");
}

TEST(SpanConstruction, ASpanCanBeMadeWithoutAreaRecord)
{
    Network net("W: M = a-b");
    long id = 0;
    EXPECT_TRUE(net.manager.CreateSpanNoarea(net["a"], net["b"], net["M"], {}, &id));
    EXPECT_EQ(net.manager.CreateSpanNoarea(net["a"], net["b"], net["M"], {})->GetId32(), id + 1);
    EXPECT_TRUE(net.manager.GetAreaSetDb().IsEmpty());
}

TEST(SpanConstruction, ASpanWhoseAreaRecordIsRefusedStaysAndItsIdIsTold)
{
    Network net("W: M = a-b");
    net.manager.LeaveIds(1);
    long id = 0;
    EXPECT_FALSE(net.manager.CreateSpan(net["a"], net["b"], net["M"], {}, &id));
    EXPECT_EQ(id, 2147483546);
    EXPECT_NE(net.manager.GetSpanObjectOriginal(id), nullptr);
    EXPECT_TRUE(net.manager.GetAreaSetDb().IsEmpty());
}

TEST(SpanConstruction, ARefusedSpanUsesItsIdUpAndTellsNone)
{
    Network net("W: M = a-b");
    net.manager.LeaveIds(0);
    long id = -5;
    EXPECT_FALSE(net.manager.CreateSpan(net["a"], net["b"], net["M"], {}, &id));
    EXPECT_EQ(id, -5);
    EXPECT_EQ(net.manager.CreateSpan(net["a"], net["b"], net["M"], {}), nullptr);
    EXPECT_EQ(net.manager.CreateSpanNoarea(net["a"], net["b"], net["M"], {}), nullptr);
    EXPECT_EQ(net.manager.GetCurrentObjectId(), 2147483549);
    EXPECT_EQ(net.Shape(), "W: M = a-b");
}

TEST(SpanConstruction, ASpanWithoutDefaultsFailsButStaysWithoutAttributes)
{
    Network net("W: M = a-b");
    dropDefaults(L"span");
    long id = -5;
    EXPECT_FALSE(net.manager.CreateSpanNoarea(net["b"], net["a"], net["M"], values({{L"splength", L"3"}}), &id));
    EXPECT_EQ(id, -5);
    EXPECT_EQ(net.Shape(), "W: M = a-b b-a");
    EXPECT_FALSE(net.manager.GetSpanObjectOriginal(net.manager.GetCurrentObjectId())->IsSubAttribute(L"splength"));
}

// ---- CreateSpanNode without numbers ----

TEST(SpanConstruction, ASpanBelowAnotherStartsAtANewNodeBetweenThem)
{
    Network net("W: M = a-b-c");
    long id = 0;
    EXPECT_TRUE(net.manager.CreateSpanNode(net["a-b"], {}, &id, true));
    net.NameNew();
    EXPECT_EQ(net.Shape(), "W: M = a-n1 b-c n1-b");
    EXPECT_EQ(id, net["n1"] + 1);
    EXPECT_EQ(SpansOfAreas(net), net.NameOf(id)) << "one area record, of the new span";
}

TEST(SpanConstruction, ASpanAboveAnotherEndsAtItsUpperNodeAndLeavesItAlone)
{
    Network net("W: M = a-b-c");
    long id = 0;
    EXPECT_TRUE(net.manager.CreateSpanNode(net["a-b"], {}, &id, false));
    net.NameNew();
    EXPECT_EQ(net.Shape(), "W: M = a-b b-c n1-a");
    EXPECT_EQ(net.manager.GetSpanObjectOriginal(id)->GetLowerNodeId(), static_cast<unsigned long>(net["a"]));
}

TEST(SpanConstruction, ASpanAboveAMiddleSpanMakesAFork)
{
    Network net("W: M = a-b-c");
    EXPECT_TRUE(net.manager.CreateSpanNode(net["b-c"], {}, nullptr, false));
    net.NameNew();
    EXPECT_EQ(net.Shape(), "W: M = a-b b-c n1-b");
}

TEST(SpanConstruction, TheNewSpanTakesTheCallersAttributesOverTheDefaults)
{
    Network net("W: M = a-b");
    setDefaults(L"span", {{L"splength", L"30"}, {L"spradt", L"0"}});
    long id = 0;
    EXPECT_TRUE(net.manager.CreateSpanNode(net["a-b"], values({{L"splength", L"5"}}), &id, true));
    net.Name(id, "new");
    EXPECT_EQ(net.Get(L"splength", "new a-b"), L"5 -");
    EXPECT_EQ(net.Get(L"spradt", "new"), L"0");
}

TEST(SpanConstruction, TheShortFormNumbersNothing)
{
    Network net("W: M = a-b");
    net.manager.CreateProject(values({{L"defsv", L"style"}}));
    long id = 0;
    EXPECT_TRUE(net.manager.CreateSpanNode(net["a-b"], {}, &id, true));
    net.Name(id, "new");
    net.NameNew();
    EXPECT_EQ(net.Get(L"order", "new n1 a-b"), L"- - -");
    EXPECT_EQ(net.Get(L"calcstylename", "new"), L"-");
    EXPECT_EQ(net.Get(L"spno", "new"), L"-");
}

TEST(SpanConstruction, ARefusedNodeLeavesTheSpanAlone)
{
    Network net("W: M = a-b");
    const std::string before = dump(net.manager);
    net.manager.LeaveIds(0);
    long id = -5;
    EXPECT_FALSE(net.manager.CreateSpanNode(net["a-b"], {}, &id, true));
    EXPECT_EQ(id, -5);
    EXPECT_EQ(dump(net.manager), before);
}

TEST(SpanConstruction, ARefusedSpanLeavesTheUpperOneAtTheNewNode)
{
    Network net("W: M = a-b");
    net.manager.LeaveIds(1);
    long id = -5;
    EXPECT_FALSE(net.manager.CreateSpanNode(net["a-b"], {}, &id, true));
    EXPECT_EQ(id, -5);
    net.NameNew();
    EXPECT_EQ(net.Shape(), "W: M = a-n1");
}

TEST(SpanConstruction, AMissingAreaRecordFailsWithTheNewSpanInPlace)
{
    Network net("W: M = a-b");
    dropDefaults(L"areaset");
    long id = -5;
    EXPECT_FALSE(net.manager.CreateSpanNode(net["a-b"], {}, &id, true));
    net.NameNew();
    EXPECT_EQ(net.Shape(), "W: M = a-n1 n1-b");
    EXPECT_EQ(id, net["n1"] + 1) << "the span is told";
}

TEST(SpanConstruction, ANodeWithoutDefaultsFailsBeforeTheSpanIsTouched)
{
    Network net("W: M = a-b");
    dropDefaults(L"node");
    EXPECT_FALSE(net.manager.CreateSpanNode(net["a-b"], {}, nullptr, true));
    EXPECT_EQ(net.Shape(), "W: M = a-b");
    EXPECT_EQ(net.manager.GetNodeDb().GetCount(), 3) << "the node stays in its table";
}

// ---- CreateSpanNode with numbers ----

TEST(SpanConstruction, TheLongFormTellsSpanAndNode)
{
    Network net("W: M = a-b-c");
    long span = 0;
    long node = 0;
    EXPECT_TRUE(net.manager.CreateSpanNode(net["a-b"], {}, &span, &node, true));
    net.Name(node, "n");
    EXPECT_EQ(net.Shape(), "W: M = a-n b-c n-b");
    EXPECT_EQ(span, node + 1);
    EXPECT_EQ(SpansOfAreas(net), net.NameOf(span));
}

TEST(SpanConstruction, TheLongFormAboveLeavesTheSpanAlone)
{
    Network net("W: M = a-b");
    long span = 0;
    long node = 0;
    EXPECT_TRUE(net.manager.CreateSpanNode(net["a-b"], {}, &span, &node, false));
    net.Name(node, "n");
    EXPECT_EQ(net.Shape(), "W: M = a-b n-a");
    EXPECT_EQ(net.NameOf(static_cast<long>(net.manager.GetSpanObjectOriginal(span)->GetUpperNodeId())), "n");
}

TEST(SpanConstruction, TheLongFormNumbersSpanAndNodeBehindTheSpansOfTheWeb)
{
    Network net("W: M = a-b-c; N = d-c; V: X = x-y");
    net.manager.CreateSpanNoarea(net["a"], net["b"], 0, {}); // of no web
    long span = 0;
    long node = 0;
    EXPECT_TRUE(net.manager.CreateSpanNode(net["a-b"], values({{L"order", L"77"}}), &span, &node, true));
    net.Name(span, "span");
    net.Name(node, "node");
    EXPECT_EQ(net.Get(L"order", "span node"), L"4 4");
    EXPECT_EQ(net.Get(L"order", "a-b b-c a"), L"- - -");
    EXPECT_EQ(net.Get(L"spno", "span"), L"-") << "the place in the route is the caller's";
}

TEST(SpanConstruction, TheStyleIsTheDefaultOfTheWebsDisposalType)
{
    const wchar_t* const styles[] = {L"sanitary", L"rural", L"storm", L"combined", L"vacuum", L"rural vacuum"};
    for (int type = 0; type < 6; ++type) {
        Network net;
        net.manager.CreateProject(values({{L"defsv", styles[0]},
                                          {L"defrural", styles[1]},
                                          {L"defqr", styles[2]},
                                          {L"defcombi", styles[3]},
                                          {L"defsvvac", styles[4]},
                                          {L"defruralvac", styles[5]}}));
        net.AddWeb("W", type);
        net.Add("W: M = a-b");
        long span = 0;
        EXPECT_TRUE(net.manager.CreateSpanNode(net["a-b"], {}, &span, nullptr, true));
        EXPECT_EQ(net.manager.GetSpanObjectOriginal(span)->GetSubAttribute(L"calcstylename"), styles[type]);
    }
}

TEST(SpanConstruction, WithoutProjectTheStyleIsLeftAsItCame)
{
    Network net("W: M = a-b");
    long span = 0;
    EXPECT_TRUE(net.manager.CreateSpanNode(net["a-b"], values({{L"calcstylename", L"mine"}}), &span, nullptr, true));
    net.Name(span, "span");
    EXPECT_EQ(net.Get(L"calcstylename", "span"), L"mine");
    EXPECT_EQ(net.Get(L"order", "span"), L"2");
}

TEST(SpanConstruction, TheNodeIsToldAndNumberedEvenWhenTheSpanFails)
{
    Network net("W: M = a-b");
    net.manager.LeaveIds(1);
    long span = -5;
    long node = -5;
    EXPECT_FALSE(net.manager.CreateSpanNode(net["a-b"], {}, &span, &node, true));
    EXPECT_EQ(span, -5);
    ASSERT_EQ(node, 2147483546);
    net.Name(node, "n");
    EXPECT_EQ(net.Get(L"order", "n"), L"2");
    EXPECT_EQ(net.Shape(), "W: M = a-n");
}

// ---- DivideSpan ----

TEST(SpanConstruction, ADividedSpanBecomesALineOfPieces)
{
    Network net("W: M = a-b-c");
    Ids pieces;
    EXPECT_TRUE(net.manager.DivideSpan(net["a-b"], 3, pieces));
    net.NameNew();
    EXPECT_EQ(net.Shape(), "W: M = a-n1 b-c n1-n2 n2-b");
    EXPECT_EQ(net.Get(L"planesetflg", "n1 n2 a"), L"0 0 -");
}

TEST(SpanConstruction, ThePiecesAreListedDownstreamBehindTheSpan)
{
    Network net("W: M = a-b");
    Ids pieces = net.List("M");
    EXPECT_TRUE(net.manager.DivideSpan(net["a-b"], 3, pieces));
    net.NameNew();
    const std::vector<long> ids = toVector(pieces);
    EXPECT_THAT(ids, ElementsAre(net["M"], net["a-b"], net["n1"] + 1, net["n2"] + 1));
    EXPECT_EQ(SpansOfAreas(net), net.Names({ids[2], ids[3]})) << "an area record for each new piece";
}

TEST(SpanConstruction, TheFirstPieceKeepsItsLengthAndTheOthersGetTheDefault)
{
    Network net("W: M = a-b");
    setDefaults(L"span", {{L"splength", L"30"}});
    net.Set(L"splength", {{"a-b", L"12.5"}});
    Ids pieces;
    EXPECT_TRUE(net.manager.DivideSpan(net["a-b"], 3, pieces));
    std::vector<CString> lengths;
    for (const long id : pieces)
        lengths.push_back(net.manager.GetSpanObjectOriginal(id)->GetSubAttribute(L"splength"));
    EXPECT_THAT(lengths, ElementsAre(L"12.5", L"30", L"30"));
}

TEST(SpanConstruction, DividingIntoOnePartListsTheSpanAndMakesNothing)
{
    Network net("W: M = a-b");
    const std::string before = dump(net.manager);
    const long last = net.manager.GetCurrentObjectId();
    EXPECT_EQ(net.After("", [&](auto& out) { return net.manager.DivideSpan(net["a-b"], 1, out); }), "true: a-b");
    EXPECT_EQ(dump(net.manager), before);
    EXPECT_EQ(net.manager.GetCurrentObjectId(), last);
}

TEST(SpanConstruction, DividingIntoNoPartsFailsAndMakesNothing)
{
    Network net("W: M = a-b");
    const std::string before = dump(net.manager);
    Ids pieces;
    EXPECT_FALSE(net.manager.DivideSpan(net["a-b"], 0, pieces));
    EXPECT_EQ(dump(net.manager), before);
}

TEST(SpanConstruction, PiecesAreNotNumbered)
{
    Network net("W: M = a-b");
    net.manager.CreateProject(values({{L"defsv", L"style"}}));
    Ids pieces;
    EXPECT_TRUE(net.manager.DivideSpan(net["a-b"], 2, pieces));
    const CSpan* const piece = net.manager.GetSpanObjectOriginal(pieces.GetTail());
    EXPECT_FALSE(piece->IsSubAttribute(L"order"));
    EXPECT_FALSE(piece->IsSubAttribute(L"spno"));
    EXPECT_FALSE(piece->IsSubAttribute(L"calcstylename"));
}

TEST(SpanConstruction, ADivisionThatFailsKeepsThePiecesMadeSoFar)
{
    Network net("W: M = a-b");
    net.manager.LeaveIds(4); // node, span, area record; node
    Ids pieces;
    EXPECT_FALSE(net.manager.DivideSpan(net["a-b"], 3, pieces));
    net.NameNew();
    EXPECT_EQ(net.Shape(), "W: M = a-n1 n1-n2");
    EXPECT_EQ(pieces.GetCount(), 2);
}

} // namespace
