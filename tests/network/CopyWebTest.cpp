// Copies of whole webs.

#include "network/RecordsOfNetwork.h"
#include "support/Dump.h"

#include <gmock/gmock.h>

#include <sstream>

namespace {

using support::addRouteRecords;
using support::addSpanRecords;
using support::addWebRecords;
using support::dump;
using support::Network;
using support::recordCounts;
using support::values;

// A network whose webs can be copied: each span has an area record. Copies are named after their sources.
class CopyableNetwork : public Network {
public:
    explicit CopyableNetwork(std::string_view text) : Network(text)
    {
        AddAreas();
        MarkNodes();
    }
    bool Copy(const char* web)
    {
        long id = 0;
        const bool copied = manager.CopyWebObject((*this)[web], id);
        NameNew();
        return copied;
    }
    long FlowEnds(const char* web) const
    {
        support::Ids nodes;
        manager.GetFlowEndNodeIdList((*this)[web], nodes);
        return nodes.GetCount();
    }
};

TEST(CopyWeb, ACopiedTreeHasTheSameShape)
{
    CopyableNetwork net("W: M = m-x-out; A>M = a-y-m; B>A = b-a; C>M = c-m");
    EXPECT_TRUE(net.Copy("W"));
    EXPECT_EQ(net.Connects("M' A' B' C'"), "0 M' A' M'");
    EXPECT_EQ(net.Shape(), "W: M = m-x x-out; A>M = a-y y-m; B>A = b-a; C>M = c-m | "
                           "W': M' = x'-n1 m'-x'; A'>M' = y'-m' a'-y'; B'>A' = b'-a'; C'>M' = c'-m'");
}

TEST(CopyWeb, RoutesAtTheFlowEndShareANewFlowEnd)
{
    CopyableNetwork net("W: M = m-out; N = n-out; A>N = a-n");
    EXPECT_TRUE(net.Copy("W"));
    EXPECT_EQ(net.Shape(), "W: M = m-out; N = n-out; A>N = a-n | W': M' = m'-n1; N' = n'-n1; A'>N' = a'-n'");
    EXPECT_EQ(net.FlowEnds("W'"), 1);
}

TEST(CopyWeb, SeparateLinesMeetAtTheNewFlowEnd)
{
    CopyableNetwork net("W: M = a-b; N = c-d");
    EXPECT_TRUE(net.Copy("W"));
    EXPECT_EQ(net.Shape(), "W: M = a-b; N = c-d | W': M' = a'-n1; N' = c'-n1");
}

TEST(CopyWeb, ARouteMayStandBeforeItsConnectRoute)
{
    CopyableNetwork net("W: B>A = b-a; A>M = a-m; M = m-out");
    EXPECT_TRUE(net.Copy("W"));
    EXPECT_EQ(net.Shape(), "W: B>A = b-a; A>M = a-m; M = m-out | W': B'>A' = b'-a'; A'>M' = a'-m'; M' = m'-n1");
}

TEST(CopyWeb, TheNewFlowEndIsAFreshNode)
{
    CopyableNetwork net("W: M = m-out");
    net.Set(L"cx", {{"out", L"4"}, {"m", L"5"}});
    EXPECT_TRUE(net.Copy("W"));
    EXPECT_EQ(net.Get(L"cx", "m' n1"), L"5 -");
}

TEST(CopyWeb, NoNodesAreLeftOver)
{
    CopyableNetwork net("W: M = m-out; N = n-out; A>M = a-m");
    EXPECT_TRUE(net.Copy("W"));
    EXPECT_EQ(net.AllNodes(), "m out n a m' n' a' n1");
}

TEST(CopyWeb, TheSourceIsUnchanged)
{
    CopyableNetwork net("W: M = m-x-out; A>M = a-m; N = n-out");
    net.Set(L"connectnum", {{"A", L"M"}});
    addRouteRecords(net, "A");
    addWebRecords(net, "W");
    const std::string before = dump(net.manager);
    EXPECT_TRUE(net.Copy("W"));
    // The lines of the source stand in the new dump, whole and in their order.
    std::istringstream source(before);
    std::istringstream all(dump(net.manager));
    for (std::string line; std::getline(source, line);) {
        std::string found;
        while (found != line && std::getline(all, found)) {
        }
        EXPECT_EQ(found, line);
    }
}

TEST(CopyWeb, ANodeWithoutSpansIsFoundAfterItGotAnotherId)
{
    CopyableNetwork net("W: M = m-out");
    net.AddAreas();
    EXPECT_TRUE(net.Copy("W")); // from now on the manager knows which nodes to look at
    CNode* const alone = net.manager.CreateNode(values({}));
    const unsigned long id = alone->GetObjectId() + 1000;
    alone->SetObjectId(id);
    long copy = 0;
    EXPECT_TRUE(net.manager.CopyWebObject(net["W"], copy));
    EXPECT_EQ(net.manager.GetNodeObjectOriginal(static_cast<long>(id)), nullptr);
}

TEST(CopyWeb, ACopiedWebHasTheSameAttributesAndDisposalType)
{
    CopyableNetwork net("W: M = m-out");
    const long id = net.AddWeb("S", 2);
    net.Add("S: R = r-end");
    net.AddAreas();
    net.Set(L"order", {{"S", L"2"}});
    net.Set(L"wbendrname", {{"S", L"outfall"}});
    EXPECT_TRUE(net.Copy("S"));
    EXPECT_EQ(net.Get(L"webname", "S'"), L"S");
    EXPECT_EQ(net.Get(L"order", "S'"), L"2");
    EXPECT_EQ(net.Get(L"wbendrname", "S'"), L"outfall");
    EXPECT_EQ(net.Web("S'").GetDisposalType(), 2);
    EXPECT_NE(net["S'"], id);
}

TEST(CopyWeb, CopiedRoutesAndSpansHaveTheSameAttributes)
{
    CopyableNetwork net("W: M = m-out; A>M = a-m");
    net.Set(L"connectnum", {{"A", L"M"}});
    net.Set(L"order", {{"A", L"2"}, {"a-m", L"7"}});
    EXPECT_TRUE(net.Copy("W"));
    EXPECT_EQ(net.Get(L"connectnum", "A'"), L"M");
    EXPECT_EQ(net.Get(L"order", "A'"), L"2");
    support::Ids spans;
    EXPECT_TRUE(net.manager.GetSpanIdList(net["A'"], spans));
    EXPECT_EQ(net.manager.GetSpanObjectOriginal(spans.GetHead())->GetSubAttribute(L"order"), L"7");
}

TEST(CopyWeb, TheIdOfTheCopyIsTheNextOne)
{
    CopyableNetwork net("W: M = m-out");
    const long next = net.manager.GetNextObjectId();
    long id = 0;
    EXPECT_TRUE(net.manager.CopyWebObject(net["W"], id));
    EXPECT_EQ(id, next);
}

TEST(CopyWeb, AreaRecordsOfSpansAreCopied)
{
    CopyableNetwork net("W: M = m-x-out");
    net.manager.CreateAreaSet(net["m-x"], {});
    EXPECT_TRUE(net.Copy("W"));
    EXPECT_EQ(net.manager.GetAreaSetDb().GetCount(), 6);
}

TEST(CopyWeb, TheRecordsOfTheWebAreCopied)
{
    CopyableNetwork net("W: M = m-out; V: X = x-y");
    net.manager.CreateDivideSpanRec(net["W"], values({{L"k", L"divide 1"}}));
    net.manager.CreateDivideSpanRec(net["V"], {});
    net.manager.CreateDivideSpanRec(net["W"], values({{L"k", L"divide 2"}}));
    net.manager.CreateSubSecRec(net["W"], values({{L"k", L"section"}}));
    for (CCalcfig* record : net.manager.GetCalcfigDb())
        record->WriteSubAttribute(L"k", L"calc");
    for (CDrawfig* record : net.manager.GetDrawfigDb())
        record->WriteSubAttribute(L"k", L"draw");
    for (CSheetfig* record : net.manager.GetSheetfigDb())
        record->WriteSubAttribute(L"k", L"sheet");
    EXPECT_TRUE(net.Copy("W"));
    EXPECT_EQ(recordCounts(net), "AreaSet 3, DivideSpanRec 5, SubSecRec 2, Calcfig 3, Drawfig 3, Sheetfig 3");
    std::wstring found;
    long lastId = 0;
    const auto collect = [&](const auto& table) {
        for (const auto* record : table) {
            if (static_cast<long>(record->GetWebId()) != net["W'"]) continue;
            found += std::wstring(record->GetSubAttribute(L"k").View()) + L", ";
            EXPECT_GT(record->GetId32(), lastId) << "in this order";
            lastId = record->GetId32();
        }
    };
    collect(net.manager.GetCalcfigDb());
    collect(net.manager.GetDrawfigDb());
    collect(net.manager.GetSheetfigDb());
    collect(net.manager.GetDivideSpanRecDb());
    collect(net.manager.GetSubSecRecDb());
    EXPECT_EQ(found, L"calc, draw, sheet, divide 1, divide 2, section, ");
}

TEST(CopyWeb, AKindOfRecordThatTheWebLacksIsSkipped)
{
    CopyableNetwork net("W: M = m-out");
    net.manager.DeleteDrawfigObject(net["W"] + 2);
    net.manager.CreateSubSecRec(net["W"], {});
    ASSERT_EQ(recordCounts(net), "AreaSet 1, SubSecRec 1, Calcfig 1, Sheetfig 1");
    EXPECT_TRUE(net.Copy("W"));
    EXPECT_EQ(recordCounts(net), "AreaSet 2, SubSecRec 2, Calcfig 2, Sheetfig 2");
}

TEST(CopyWeb, WhatHangsOnRoutesAndSpansIsNotCopied)
{
    CopyableNetwork net("W: M = m-out");
    addRouteRecords(net, "M");
    addSpanRecords(net, "m-out");
    EXPECT_TRUE(net.Copy("W"));
    EXPECT_EQ(recordCounts(net),
              "AreaInq 1, AreaOutq 1, AreaSet 4, FixInq 1, GlChange 1, Inters 1, IntPos 1, Lateral 1, MountInq 1, "
              "Areatset 1, Outq 1, Calcfig 2, Drawfig 2, Sheetfig 2, Spdxfin 1, Drawbelttx 1, Inareaset 1, "
              "Outareaset 1, Vjoint 1");
}

TEST(CopyWeb, AWebWithoutRoutesIsCopiedAlone)
{
    CopyableNetwork net("W: ; V: X = x-y");
    addWebRecords(net, "W");
    net.AddNode("orphan");
    EXPECT_TRUE(net.Copy("W"));
    EXPECT_EQ(net.Shape(), "W: | V: X = x-y | W':");
    EXPECT_EQ(recordCounts(net), "AreaSet 1, DivideSpanRec 1, SubSecRec 1, Calcfig 2, Drawfig 2, Sheetfig 2")
        << "no settings for the copy";
    EXPECT_EQ(net.AllNodes(), "x y orphan") << "the sweep comes later";
}

TEST(CopyWeb, NodesWithoutSpansAreSweptFromTheWholeDesign)
{
    CopyableNetwork net("W: M = m-out; V: X = x-y");
    net.AddNode("orphan");
    support::addNodeRecords(net, "orphan");
    EXPECT_TRUE(net.Copy("W"));
    EXPECT_EQ(net.AllNodes(), "m out x y m' n1");
    EXPECT_TRUE(net.manager.GetNodeunitDb().IsEmpty());
    EXPECT_TRUE(net.manager.GetIcpInqDb().IsEmpty());
}

TEST(CopyWeb, OtherWebsAreLeftAlone)
{
    CopyableNetwork net("W: M = m-out; V: X = x-y; Y>X = z-x");
    EXPECT_TRUE(net.Copy("V"));
    EXPECT_EQ(net.Shape(), "W: M = m-out | V: X = x-y; Y>X = z-x | V': X' = x'-n1; Y'>X' = z'-x'");
}

TEST(CopyWeb, ACopyCanBeCopied)
{
    CopyableNetwork net("W: M = m-out; A>M = a-m");
    EXPECT_TRUE(net.Copy("W"));
    EXPECT_TRUE(net.Copy("W'"));
    EXPECT_EQ(net.Shape(), "W: M = m-out; A>M = a-m | W': M' = m'-n1; A'>M' = a'-m' | W'': M'' = m''-n2; A''>M'' = "
                           "a''-m''");
}

TEST(CopyWeb, ARingOfRoutesIsCopied)
{
    CopyableNetwork net("W: M = m-out; A>B = a-b; B>A = b-a");
    EXPECT_TRUE(net.Copy("W"));
    EXPECT_EQ(net.Connects("M' A' B'"), "0 B' A'");
    EXPECT_EQ(net.Shape(), "W: M = m-out; A>B = a-b; B>A = b-a | W': M' = m'-n1; A'>B' = a'-b'; B'>A' = b'-a'");
}

// ---- failures ----

TEST(CopyWeb, ARefusedWebIsToldAndNotMade)
{
    CopyableNetwork net("W: M = m-out");
    net.manager.LeaveIds(0);
    const std::string before = dump(net.manager);
    long id = 0;
    EXPECT_FALSE(net.manager.CopyWebObject(net["W"], id));
    EXPECT_EQ(id, 2147483547);
    EXPECT_EQ(dump(net.manager), before);
}

TEST(CopyWeb, ARouteThatCannotBeCopiedLeavesTheNewWebEmpty)
{
    CopyableNetwork net("W: M = m-out; A>M = a-m; B");
    EXPECT_FALSE(net.Copy("W"));
    EXPECT_EQ(net.Shape(), "W: M = m-out; A>M = a-m; B =; M' = m'-out'; A'>M = a'-m | W':")
        << "the routes copied so far stand in the source's web and tree";
}

TEST(CopyWeb, ASpanWithoutAreaRecordEndsTheCopy)
{
    CopyableNetwork net("W: M = m-out");
    net.manager.DeleteSpanAreaset(net["m-out"]);
    EXPECT_FALSE(net.Copy("W"));
    EXPECT_EQ(net.Shape(), "W: M = m-out | W':");
}

TEST(CopyWeb, ARouteThatFlowsIntoAnotherWebEndsTheCopy)
{
    CopyableNetwork net("V: X = x-y; W: A>X = a-x; M = m-out");
    EXPECT_FALSE(net.Copy("W"));
    EXPECT_EQ(net.Shape(), "V: X = x-y | W: A>X = a-x; M = m-out; A'>X = a'-x | W': M' = m'-n1")
        << "the route at the flow end comes first and has moved by then";
}

TEST(CopyWeb, AStaleConnectRouteEndsTheCopy)
{
    CopyableNetwork net("W: M = m-out; A>M = a-m");
    net.Route("A").SetConnectId(99999);
    EXPECT_FALSE(net.Copy("W"));
    EXPECT_EQ(net.Shape(), "W: M = m-out; A>#99999 = a-m; M' = m'-out' | W':");
}

TEST(CopyWeb, ARecordThatIsRefusedEndsTheCopyBehindTheRoutes)
{
    CopyableNetwork net("W: M = m-out");
    net.manager.LeaveIds(8); // web; two nodes, span, area record, route; flow end; calcfig
    EXPECT_FALSE(net.Copy("W"));
    EXPECT_EQ(net.Shape(), "W: M = m-out | W': M' = m'-n1");
    EXPECT_EQ(recordCounts(net), "AreaSet 2, Calcfig 2, Drawfig 1, Sheetfig 1");
}

TEST(CopyWeb, AnAbortTakesTheCopyBack)
{
    CopyableNetwork net("W: M = m-out; A>M = a-m; N = n-out");
    net.AddNode("orphan");
    addWebRecords(net, "W");
    const std::string before = dump(net.manager);
    const long last = net.manager.GetCurrentObjectId();
    net.manager.BeginTransaction();
    long id = 0;
    EXPECT_TRUE(net.manager.CopyWebObject(net["W"], id));
    net.manager.AbortTransaction();
    EXPECT_EQ(dump(net.manager), before);
    EXPECT_EQ(net.manager.GetCurrentObjectId(), last);
}

} // namespace
