// The records of one kind that hang on a route, deleted together.

#include "network/RecordsOfNetwork.h"
#include "support/Dump.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <map>
#include <sstream>

namespace {

using support::addRouteRecords;
using support::dump;
using support::Network;
using support::recordCounts;

struct Deletion {
    const char* name;
    bool (CObjectManager::*call)(long routeId);
    const char* gone; // of all records of a route, with those that go along
};

void PrintTo(const Deletion& deletion, std::ostream* stream)
{
    *stream << deletion.name;
}

// Every kind of record of a route.
constexpr const char* kKinds[] = {"AreaInq", "AreaOutq", "FixInq", "GlChange",  "Inters",     "IntPos",
                                  "Lateral", "MountInq", "Outq",   "Inareaset", "Outareaset", "Vjoint"};

class RouteRecordDeletion : public testing::TestWithParam<Deletion> {
protected:
    std::map<std::string, std::size_t> Counts() const
    {
        std::map<std::string, std::size_t> counts;
        for (const support::Family& family : support::families())
            if (std::find(std::begin(kKinds), std::end(kKinds), support::typeName(family)) != std::end(kKinds))
                counts[support::typeName(family)] = m_net.manager.TableOf(family.type).Count();
        return counts;
    }
    bool Delete(const char* route) { return (m_net.manager.*GetParam().call)(m_net[route]); }

    Network m_net{"W: M = m-out; A>M = a-m; B>M = b-m"};
};

TEST_P(RouteRecordDeletion, TakesTheRecordsOfTheRouteAndNoOthers)
{
    addRouteRecords(m_net, "A");
    addRouteRecords(m_net, "B");
    addRouteRecords(m_net, "A");
    auto expected = Counts();
    std::istringstream gone(GetParam().gone);
    for (std::string kind; gone >> kind;)
        expected[kind] -= 2;
    EXPECT_TRUE(Delete("A"));
    EXPECT_EQ(Counts(), expected);
    EXPECT_TRUE(Delete("A")) << "none to delete is no failure";
    EXPECT_EQ(Counts(), expected);
}

TEST_P(RouteRecordDeletion, IsUndoneByAnAbort)
{
    addRouteRecords(m_net, "A");
    const std::string before = dump(m_net.manager);
    m_net.manager.BeginTransaction();
    EXPECT_TRUE(Delete("A"));
    EXPECT_NE(dump(m_net.manager), before);
    m_net.manager.AbortTransaction();
    EXPECT_EQ(dump(m_net.manager), before);
}

INSTANTIATE_TEST_SUITE_P(
    Kinds, RouteRecordDeletion,
    testing::Values(Deletion{"Crossings", &CObjectManager::DeleteIntersAndPointByRoute, "Inters IntPos"},
                    Deletion{"CrossingPositions", &CObjectManager::DeleteIntersAndPointByRouteForQ7Export, "IntPos"},
                    Deletion{"GroundLevelChanges", &CObjectManager::DeleteGlchangeByRoute, "GlChange"},
                    Deletion{"Laterals", &CObjectManager::DeleteLateralByRoute, "Lateral"},
                    Deletion{"VacuumJoints", &CObjectManager::DeleteVjointByRoute, "Vjoint"},
                    Deletion{"AreaInflows", &CObjectManager::DeleteAreaInqByRoute, "AreaInq Inareaset"},
                    Deletion{"AreaOutflows", &CObjectManager::DeleteAreaOutqByRoute, "AreaOutq Outareaset"},
                    Deletion{"FixedInflows", &CObjectManager::DeleteFixInqByRoute, "FixInq"},
                    Deletion{"AmountInflows", &CObjectManager::DeleteMountInqByRoute, "MountInq"},
                    Deletion{"Outflows", &CObjectManager::DeleteOutqByRoute, "Outq"}),
    [](const auto& row) { return row.param.name; });

// ---- crossings ----

TEST(CrossingDeletion, ThePositionMayNameTheRouteFirstOrSecond)
{
    Network net("W: M = m-out");
    const long first = net.manager.CreateInters({})->GetId32();
    const long second = net.manager.CreateInters({})->GetId32();
    net.manager.CreateIntPos(net["M"], first, {});
    net.manager.CreateIntPos(second, net["M"], {});
    EXPECT_TRUE(net.manager.DeleteIntersAndPointByRoute(net["M"]));
    EXPECT_EQ(recordCounts(net), "Calcfig 1, Drawfig 1, Sheetfig 1");
}

TEST(CrossingDeletion, ThePositionsAloneGoWhereverTheyNameTheRoute)
{
    Network net("W: M = m-out");
    net.manager.CreateIntPos(net["M"], net.manager.CreateInters({})->GetId32(), {});
    net.manager.CreateIntPos(net.manager.CreateInters({})->GetId32(), net["M"], {});
    EXPECT_TRUE(net.manager.DeleteIntersAndPointByRouteForQ7Export(net["M"]));
    EXPECT_EQ(recordCounts(net), "Inters 2, Calcfig 1, Drawfig 1, Sheetfig 1");
}

TEST(CrossingDeletion, ACrossingWithTwoPositionsOnTheRouteGoesOnce)
{
    Network net("W: M = m-out");
    const long crossing = net.manager.CreateInters({})->GetId32();
    net.manager.CreateIntPos(net["M"], crossing, {});
    net.manager.CreateIntPos(crossing, net["M"], {});
    EXPECT_TRUE(net.manager.DeleteIntersAndPointByRoute(net["M"]));
    EXPECT_EQ(recordCounts(net), "Calcfig 1, Drawfig 1, Sheetfig 1");
}

TEST(CrossingDeletion, APositionOnSomethingElseGoesAlone)
{
    Network net("W: M = m-out; N = n-out");
    net.manager.CreateIntPos(net["M"], net["n-out"], {});
    net.manager.CreateIntPos(net["M"], 99999, {});
    EXPECT_TRUE(net.manager.DeleteIntersAndPointByRoute(net["M"]));
    EXPECT_TRUE(net.manager.GetIntPosDb().IsEmpty());
    EXPECT_NE(net.manager.GetSpanObjectOriginal(net["n-out"]), nullptr);
}

TEST(CrossingDeletion, ThePositionOfTheCrossingOnAnotherRouteStays)
{
    Network net("W: M = m-out; N = n-out");
    const long crossing = net.manager.CreateInters({})->GetId32();
    net.manager.CreateIntPos(net["M"], crossing, {});
    const long kept = net.manager.CreateIntPos(net["N"], crossing, {})->GetId32();
    EXPECT_TRUE(net.manager.DeleteIntersAndPointByRoute(net["M"]));
    EXPECT_TRUE(net.manager.GetIntersDb().IsEmpty());
    EXPECT_NE(net.manager.GetIntPosObjectOriginal(kept), nullptr);
}

} // namespace
