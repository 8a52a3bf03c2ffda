// Webs deleted with all their routes: what goes, what stays, and the two forms.

#include "network/RecordsOfNetwork.h"
#include "support/Dump.h"

#include <gmock/gmock.h>

namespace {

using support::addNodeRecords;
using support::addRouteRecords;
using support::addSpanRecords;
using support::addWebRecords;
using support::dump;
using support::Network;
using support::recordCounts;

// Both forms do the same but for the crossings.
struct Form {
    const char* name;
    bool (CObjectManager::*call)(long webId);
};

void PrintTo(const Form& form, std::ostream* stream)
{
    *stream << form.name;
}

class WebDeletion : public testing::TestWithParam<Form> {
protected:
    static bool Delete(Network& net, const char* web) { return (net.manager.*GetParam().call)(net[web]); }
};

INSTANTIATE_TEST_SUITE_P(Forms, WebDeletion,
                         testing::Values(Form{"Plain", &CObjectManager::DeleteWebObject},
                                         Form{"ForQ7Export", &CObjectManager::DeleteWebObjectForQ7Export}),
                         [](const auto& row) { return row.param.name; });

TEST_P(WebDeletion, RoutesSpansAndNodesGo)
{
    Network net("W: M = m-x-out; A>M = a-m; N = n-out; V: X = x1-y1");
    EXPECT_TRUE(Delete(net, "W"));
    EXPECT_EQ(net.Shape(), "V: X = x1-y1");
    EXPECT_EQ(net.AllNodes(), "x1 y1");
}

TEST_P(WebDeletion, TheRemainingWebsAreNumberedWithoutAGap)
{
    Network net("A: P = a-b; B: Q = c-d; C: R = e-f; D: S = g-h");
    net.Set(L"order", {{"A", L"4"}, {"B", L"2"}, {"C", L"3"}, {"D", L"1"}});
    EXPECT_TRUE(Delete(net, "B"));
    EXPECT_EQ(net.Get(L"order", "A C D"), L"3 2 1");
    EXPECT_TRUE(Delete(net, "D"));
    EXPECT_EQ(net.Get(L"order", "A C"), L"2 1");
}

TEST_P(WebDeletion, AWebWithoutRoutesIsDeleted)
{
    Network net("W: ; V: X = x-y");
    EXPECT_TRUE(Delete(net, "W"));
    EXPECT_EQ(net.Shape(), "V: X = x-y");
    EXPECT_EQ(net.Get(L"order", "V"), L"1");
}

TEST_P(WebDeletion, ARouteWithoutSpansEndsTheDeletion)
{
    Network net("W: A = a-out; B; C = c-out");
    net.Set(L"order", {{"W", L"7"}});
    EXPECT_FALSE(Delete(net, "W"));
    EXPECT_EQ(net.Shape(), "W: B =; C = c-out") << "the routes before it are gone";
    EXPECT_EQ(net.AllNodes(), "out c") << "the flow end stays";
    EXPECT_EQ(net.Get(L"order", "W"), L"7");
}

TEST_P(WebDeletion, AMissingNodeEndsTheDeletion)
{
    Network net("W: M = a-b-c");
    net.manager.DeleteNodeObject(net["b"]);
    EXPECT_FALSE(Delete(net, "W"));
    EXPECT_EQ(net.Shape(), "W: M = b-c");
}

TEST_P(WebDeletion, TwoSpansThatStartAtOneNodeEndTheDeletion)
{
    Network net("W: M = a-b-c, a-c");
    EXPECT_FALSE(Delete(net, "W"));
    EXPECT_EQ(net.Shape(), "W: M = a-c") << "the node went with the first of them";
    EXPECT_EQ(net.AllNodes(), "c");
}

TEST_P(WebDeletion, OfSeveralFlowEndsTheFirstGoesAndTheOthersStay)
{
    Network net("W: M = a-b; N = c-d");
    EXPECT_TRUE(Delete(net, "W"));
    EXPECT_EQ(net.Shape(), "");
    EXPECT_EQ(net.AllNodes(), "d");
}

TEST_P(WebDeletion, ARingIsDeletedWithoutFlowEnd)
{
    Network net("W: M = a-b-c-a");
    EXPECT_TRUE(Delete(net, "W"));
    EXPECT_EQ(net.Shape(), "");
    EXPECT_EQ(net.AllNodes(), "");
}

TEST_P(WebDeletion, NodesTakeTheirUnitsAndInterceptorsAlong)
{
    Network net("W: M = m-out; A>M = a-m; V: X = x-y");
    for (const char* node : {"m", "out", "a", "x"})
        addNodeRecords(net, node);
    EXPECT_TRUE(Delete(net, "W"));
    EXPECT_EQ(net.manager.GetNodeunitDb().GetCount(), 1);
    EXPECT_EQ(net.manager.GetIcpInqDb().GetCount(), 1);
    support::Ids ids;
    EXPECT_TRUE(net.manager.GetNodeunitIdList(net["x"], ids));
    EXPECT_TRUE(net.manager.GetIcpInqIdList(net["x"], ids));
}

TEST_P(WebDeletion, SpanRecordsStay)
{
    Network net("W: M = m-out");
    addSpanRecords(net, "m-out");
    EXPECT_TRUE(Delete(net, "W"));
    EXPECT_EQ(recordCounts(net), "AreaSet 1, Areatset 1, Calcfig 1, Drawfig 1, Sheetfig 1, Spdxfin 1, Drawbelttx 1");
}

TEST_P(WebDeletion, TheRecordsOfTheWebStay)
{
    Network net("W: M = m-out");
    addWebRecords(net, "W");
    EXPECT_TRUE(Delete(net, "W"));
    EXPECT_EQ(recordCounts(net), "DivideSpanRec 1, SubSecRec 1, Calcfig 1, Drawfig 1, Sheetfig 1");
}

TEST_P(WebDeletion, RouteRecordsOfOtherWebsStay)
{
    Network net("W: M = m-out; V: X = x-y");
    addRouteRecords(net, "X");
    const std::string before = recordCounts(net);
    EXPECT_TRUE(Delete(net, "W"));
    EXPECT_EQ(recordCounts(net), before);
}

TEST_P(WebDeletion, AnAbortBringsTheWebBack)
{
    Network net("W: M = m-out; A>M = a-m; V: X = x-y");
    addRouteRecords(net, "A");
    addSpanRecords(net, "a-m");
    addNodeRecords(net, "m");
    const std::string before = dump(net.manager);
    net.manager.BeginTransaction();
    EXPECT_TRUE(Delete(net, "W"));
    net.manager.AbortTransaction();
    EXPECT_EQ(dump(net.manager), before);
}

// ---- where the forms differ ----

TEST(WebDeletionForms, RouteRecordsGoButAreaOutflows)
{
    Network net("W: M = m-out; A>M = a-m");
    addRouteRecords(net, "M");
    addRouteRecords(net, "A");
    EXPECT_TRUE(net.manager.DeleteWebObject(net["W"]));
    EXPECT_EQ(recordCounts(net), "AreaOutq 2, Calcfig 1, Drawfig 1, Sheetfig 1, Outareaset 2");
}

TEST(WebDeletionForms, TheExportFormKeepsTheCrossingsAndDropsTheirPositions)
{
    Network net("W: M = m-out; A>M = a-m");
    addRouteRecords(net, "M");
    addRouteRecords(net, "A");
    EXPECT_TRUE(net.manager.DeleteWebObjectForQ7Export(net["W"]));
    EXPECT_EQ(recordCounts(net), "AreaOutq 2, Inters 2, Calcfig 1, Drawfig 1, Sheetfig 1, Outareaset 2");
}

TEST(WebDeletionForms, ThePlainFormLeavesFewerCrossings)
{
    const auto crossingsAfter = [](bool (CObjectManager::*form)(long)) {
        Network net("W: M = m-out; V: X = x-y");
        const long shared = net.manager.CreateInters({})->GetId32();
        net.manager.CreateIntPos(net["M"], shared, {});
        net.manager.CreateIntPos(net["X"], shared, {});
        net.manager.CreateIntPos(net["X"], net.manager.CreateInters({})->GetId32(), {});
        EXPECT_TRUE((net.manager.*form)(net["W"]));
        EXPECT_EQ(net.manager.GetIntPosDb().GetCount(), 2) << "positions on other routes stay";
        return net.manager.GetIntersDb().GetCount();
    };
    EXPECT_EQ(crossingsAfter(&CObjectManager::DeleteWebObject), 1);
    EXPECT_EQ(crossingsAfter(&CObjectManager::DeleteWebObjectForQ7Export), 2);
}

} // namespace
