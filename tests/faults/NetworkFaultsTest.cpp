// Edits of the network when memory runs out: for every allocation of an edit in a transaction, once alone and once with
// all later ones, std::bad_alloc comes out or the edit completes, and the abort brings the design back. Nothing leaks
// (the sanitizer watches).

#include "faults/FailingAllocations.h"
#include "support/Dump.h"
#include "support/Networks.h"

#include <gmock/gmock.h>

#include <new>

namespace {

using faults::FailingAllocations;
using support::Ids;
using support::Network;

struct Edit {
    const char* name;
    void (*run)(Network& net);
};

void PrintTo(const Edit& edit, std::ostream* stream)
{
    *stream << edit.name;
}

const Edit kEdits[] = {
    {"CreateRouteSpanNodeAtTheFlowEnd",
     [](Network& net) {
         CSpan* span = nullptr;
         net.manager.CreateRouteSpanNode(net["W"], 0, {}, span);
     }},
    {"CreateRouteSpanNodeOnARoute",
     [](Network& net) {
         CSpan* span = nullptr;
         net.manager.CreateRouteSpanNode(net["W"], net["A"], {}, span);
     }},
    {"CreateMultiSpanNode",
     [](Network& net) {
         Ids spans;
         Ids nodes;
         net.manager.CreateMultiSpanNode(net["M"], {}, 3, spans, nodes);
     }},
    {"RemoveSpan", [](Network& net) { net.manager.RemoveSpan(net["M"], 1); }},
    {"ConnectSpan", [](Network& net) { net.manager.ConnectSpan(net["m-x"], net["x-out"]); }},
    {"DeleteSpanObject", [](Network& net) { net.manager.DeleteSpanObject(net["a-m"], false); }},
    {"DeleteRouteObjectListAll", [](Network& net) { net.manager.DeleteRouteObjectListAll(net["W"], net.List("A B")); }},
    {"DeleteWebObject", [](Network& net) { net.manager.DeleteWebObject(net["W"]); }},
    {"ConnectRoute", [](Network& net) { net.manager.ConnectRoute(net["B"], net["M"]); }},
    {"ReSetFlowEndNode",
     [](Network& net) {
         Ids routes;
         net.manager.ReSetFlowEndNode(net["B"], L"a name that is longer than any short text", routes);
     }},
    {"ReSetFlowEndNodeByNode",
     [](Network& net) {
         Ids rewired;
         Ids reversed;
         net.manager.ReSetFlowEndNodeByNode(net["B"], net["b"], L"end", rewired, reversed);
     }},
    {"CopyAllUpperRouteObject",
     [](Network& net) {
         Ids copies;
         net.manager.CopyAllUpperRouteObject(net["M"], 0, copies);
     }},
    {"CopyWebObject",
     [](Network& net) {
         long id = 0;
         net.manager.CopyWebObject(net["W"], id);
     }},
    {"SortRouteBranchUpper",
     [](Network& net) {
         Ids sorted;
         net.manager.SortRouteBranchUpper(net.List("M A B C"), sorted);
     }},
    {"SetSpanMaxExtend", [](Network& net) { net.manager.SetSpanMaxExtend(net["W"]); }},
};

class NetworkFaults : public testing::TestWithParam<Edit> {
protected:
    static constexpr const char* kDesign = "W: M = m-x-out; A>M = a-m; B>A = b-a; C>M = c-m; V: X = x1-y1";
    static constexpr std::size_t kMostAllocations = 20'000;
};
INSTANTIATE_TEST_SUITE_P(Edits, NetworkFaults, testing::ValuesIn(kEdits),
                         [](const auto& row) { return row.param.name; });

TEST_P(NetworkFaults, TheAbortBringsTheDesignBack)
{
    for (const bool sticky : {false, true}) {
        std::size_t allocation = 0;
        std::size_t thrown = 0;
        for (bool failed = true; failed; ++allocation) {
            SCOPED_TRACE("allocation " + std::to_string(allocation) + (sticky ? " and all later ones" : ""));
            ASSERT_LT(allocation, kMostAllocations);
            Network net(kDesign);
            net.AddAreas();
            const std::string before = support::dump(net.manager);
            const long last = net.manager.GetCurrentObjectId();
            net.manager.BeginTransaction();
            {
                const FailingAllocations failing(allocation, sticky);
                try {
                    GetParam().run(net);
                } catch (const std::bad_alloc&) {
                    ++thrown;
                }
                failed = FailingAllocations::HasFailed();
            }
            support::expectWhole(net.manager, L"routenum");
            {
                const FailingAllocations none(0, true); // an abort needs no memory
                net.manager.AbortTransaction();
            }
            ASSERT_EQ(support::dump(net.manager), before);
            ASSERT_EQ(net.manager.GetCurrentObjectId(), last);
            support::expectWhole(net.manager, L"routenum");
            if (HasFatalFailure()) return;
        }
        EXPECT_GT(thrown, 0u);
    }
}

TEST_P(NetworkFaults, AFailedEditWorksAfterTheAbort)
{
    std::string expected;
    {
        Network net(kDesign);
        net.AddAreas();
        GetParam().run(net);
        expected = support::dump(net.manager);
    }
    Network net(kDesign);
    net.AddAreas();
    net.manager.BeginTransaction();
    {
        const FailingAllocations failing(5, true);
        EXPECT_THROW(GetParam().run(net), std::bad_alloc);
    }
    net.manager.AbortTransaction();
    GetParam().run(net);
    EXPECT_EQ(support::dump(net.manager), expected);
}

} // namespace
