// Walks and orders over the designs of real networks that may lie beside the checkout. Without them nothing is tested.

#include "support/Files.h"
#include "support/Networks.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <map>
#include <set>
#include <sstream>
#include <type_traits>

namespace {

namespace fs = std::filesystem;

using support::ConstSpans;
using support::Ids;
using support::toVector;

struct Counts {
    int nodes = 0, spans = 0, webs = 0, routes = 0;
};

fs::path DataFolder()
{
    return fs::path(RIVELTA_SOURCE_DIR) / "../shared/data";
}

// The files of the folder, by name; those that stand in the table of its README with their counts. A file of an older
// version, NAME_v13.xml, has the content of NAME.xml.
std::map<std::string, Counts> FilesWithCounts()
{
    std::map<std::string, Counts> files;
    if (!fs::is_directory(DataFolder())) return files;
    for (const auto& entry : fs::directory_iterator(DataFolder()))
        if (entry.path().extension() == ".xml") files[entry.path().filename().string()];
    std::istringstream readme(support::readBytes(DataFolder() / "README.md"));
    for (std::string line; std::getline(readme, line);) {
        if (line.rfind("| `", 0) != 0 || line.find(".xml`") == std::string::npos) continue;
        // | file | nodes | conduits | other links | outfalls | pieces | webs | routes | ...
        std::vector<std::string> cells;
        std::istringstream row(line);
        for (std::string cell; std::getline(row, cell, '|');)
            cells.push_back(cell);
        const std::string name = cells[1].substr(2, cells[1].rfind('`') - 2);
        const Counts counts{std::stoi(cells[2]), std::stoi(cells[3]) + std::stoi(cells[4]), std::stoi(cells[7]),
                            std::stoi(cells[8])};
        const std::string older = name.substr(0, name.rfind('.')) + "_v13.xml";
        for (const std::string& file : {name, older})
            if (files.contains(file)) files[file] = counts;
    }
    return files;
}

std::vector<std::string> FileNames()
{
    std::vector<std::string> names;
    for (const auto& [name, counts] : FilesWithCounts())
        names.push_back(name);
    return names;
}

template <class Call> std::vector<long> Listed(Call&& call)
{
    Ids list;
    if constexpr (std::is_void_v<std::invoke_result_t<Call, CList<long, long>&>>)
        call(list);
    else
        EXPECT_TRUE(call(list));
    return toVector(list);
}

std::set<long> AsSet(const std::vector<long>& ids)
{
    return {ids.begin(), ids.end()};
}

class RealNetworks : public testing::TestWithParam<std::string> {
protected:
    void SetUp() override
    {
        CString error;
        const CString path = support::toPath(fs::canonical(DataFolder() / GetParam()));
        ASSERT_TRUE(m_manager.CreatePipeObjectFromFile(path, error, false)) << error;
        m_webs = Listed([&](auto& out) { return m_manager.GetWebIdList(out); });
    }
    std::vector<long> RoutesOf(long web) const
    {
        return Listed([&](auto& out) { return m_manager.GetRouteIdList(web, out); });
    }
    std::vector<long> AllRoutes() const
    {
        std::vector<long> ids;
        for (const CRoute* route : m_manager.GetRouteDb())
            ids.push_back(route->GetId32());
        return ids;
    }
    long ConnectOf(long route) const
    {
        return static_cast<long>(m_manager.GetRouteObjectOriginal(route)->GetConnectId());
    }
    // Connect ids of all routes and ends of all spans.
    std::vector<std::array<long, 3>> Shape() const
    {
        std::vector<std::array<long, 3>> shape;
        for (const CRoute* route : m_manager.GetRouteDb())
            shape.push_back({route->GetId32(), static_cast<long>(route->GetConnectId()), 0});
        for (const CSpan* span : m_manager.GetSpanDb())
            shape.push_back({span->GetId32(), static_cast<long>(span->GetUpperNodeId()),
                             static_cast<long>(span->GetLowerNodeId())});
        return shape;
    }

    support::OpenManager m_manager;
    std::vector<long> m_webs;
};

TEST_P(RealNetworks, HaveTheNumbersThatTheirTableTells)
{
    const Counts counts = FilesWithCounts()[GetParam()];
    ASSERT_GT(counts.spans, 0) << "not in the table";
    EXPECT_EQ(m_manager.GetNodeDb().GetCount(), counts.nodes);
    EXPECT_EQ(m_manager.GetSpanDb().GetCount(), counts.spans);
    EXPECT_EQ(m_webs.size(), static_cast<std::size_t>(counts.webs));
    int routes = 0, spans = 0;
    for (const long web : m_webs) {
        routes += m_manager.GetRouteNumInWeb(web);
        spans += m_manager.GetSpanNumInWeb(web);
        EXPECT_EQ(Listed([&](auto& out) { return m_manager.GetSpanFromWeb(web, out); }).size(),
                  static_cast<std::size_t>(m_manager.GetSpanNumInWeb(web)));
    }
    EXPECT_EQ(routes, counts.routes);
    EXPECT_EQ(spans, counts.spans);
}

TEST_P(RealNetworks, EveryRouteIsSortedAlikeByAllForms)
{
    for (const long route : AllRoutes()) {
        SCOPED_TRACE(route);
        const std::vector<long> down =
            Listed([&](auto& out) { return m_manager.GetSortSpanInRoute(route, out, false); });
        std::vector<long> up = Listed([&](auto& out) { return m_manager.GetSortSpanInRoute(route, out, true); });
        std::reverse(up.begin(), up.end());
        EXPECT_EQ(down, up);
        ConstSpans strict;
        ASSERT_TRUE(m_manager.GetSortSpanInRoute(route, strict, false));
        EXPECT_EQ(down, support::idsOfObjects(strict));
        EXPECT_EQ(AsSet(down), AsSet(Listed([&](auto& out) { return m_manager.GetSpanIdList(route, out); })));
        long last = 0, second = 0;
        ASSERT_TRUE(m_manager.GetLastSpanFromRoute(route, last));
        EXPECT_EQ(last, down.back());
        EXPECT_TRUE(m_manager.IsFirstSpanAndGetSecondSpan(down.front(), second));
        if (down.size() > 1) {
            EXPECT_EQ(second, down[1]);
        }
    }
}

TEST_P(RealNetworks, EveryRouteEndsAtTheTopOfItsConnectRoute)
{
    for (const long route : AllRoutes()) {
        if (ConnectOf(route) == 0) continue;
        long end = 0, top = 0;
        ASSERT_TRUE(m_manager.GetMostLowerNodeId(route, end));
        ASSERT_TRUE(m_manager.GetMostUpperNodeId(ConnectOf(route), top));
        EXPECT_EQ(end, top) << route;
    }
}

TEST_P(RealNetworks, EveryWayDownReachesTheFlowEnd)
{
    for (const long web : m_webs) {
        const std::vector<long> routes = RoutesOf(web);
        const Ids all(routes);
        for (const long route : routes) {
            std::vector<long> way =
                Listed([&](CList<long, long>& out) { m_manager.GetConnectRouteLowerAll(route, all, out); });
            way.insert(way.begin(), route);
            ASSERT_EQ(ConnectOf(way.back()), 0) << route;
            EXPECT_EQ(way,
                      Listed([&](auto& out) { return m_manager.GetRouteIdListFromTo(route, way.back(), web, out); }));
        }
    }
}

TEST_P(RealNetworks, EveryLineOfSpansEnds)
{
    for (const CSpan* span : m_manager.GetSpanDb()) {
        const long id = span->GetId32();
        const std::vector<long> down =
            Listed([&](CList<long, long>& out) { m_manager.GetLowerSpanObjectList(id, out); });
        ASSERT_EQ(down.front(), id);
        EXPECT_EQ(AsSet(down).size(), down.size());
        const long web = m_manager.GetWebIdFromSpan(id);
        const std::vector<long> up =
            Listed([&](CList<long, long>& out) { m_manager.GetUpperSpanObjectList(web, id, out); });
        EXPECT_EQ(AsSet(up).size(), up.size());
        EXPECT_FALSE(AsSet(up).contains(id));
    }
}

TEST_P(RealNetworks, EveryWalkUpFromTheFlowEndFindsAllRoutesOfTheWebOnce)
{
    for (const long web : m_webs) {
        const std::vector<long> routes = RoutesOf(web);
        const Ids all(routes);
        const std::set<long> expected = AsSet(routes);
        const std::vector<long> behind =
            Listed([&](CList<long, long>& out) { m_manager.GetConnectRouteUpperAll(0, all, out); });
        const std::vector<long> before =
            Listed([&](CList<long, long>& out) { m_manager.GetConnectRouteUpperAllByOrder(0, all, out); });
        support::Routes sorted;
        m_manager.GetConnectRouteSortOrder(web, 0, sorted);
        for (const std::vector<long>& walk : {behind, before, support::idsOfObjects(sorted)}) {
            EXPECT_EQ(walk.size(), routes.size());
            EXPECT_EQ(AsSet(walk), expected);
        }
        CArray<CRoute*> array, taken;
        m_manager.GetRouteObjectArrayFromWeb(web, array);
        EXPECT_EQ(m_manager.GetConnectRoute(array, 0, true, true, taken), static_cast<int>(routes.size()));
        EXPECT_TRUE(array.IsEmpty());
        EXPECT_EQ(AsSet(support::idsOfObjects(taken)), expected);
    }
}

TEST_P(RealNetworks, EveryBranchSortIsAnOrderOfAllRoutesOfTheWeb)
{
    for (const long web : m_webs) {
        const std::vector<long> routes = RoutesOf(web);
        const Ids all(routes);
        const auto upper = Listed([&](auto& out) { return m_manager.SortRouteBranchUpper(all, out); });
        auto lower = Listed([&](auto& out) { return m_manager.SortRouteBranchLower(all, out); });
        std::reverse(lower.begin(), lower.end());
        EXPECT_EQ(upper, lower);
        const auto lines = Listed([&](auto& out) { return m_manager.SortRouteMaxExtendUpper(all, out); });
        const auto branches = Listed([&](auto& out) { return m_manager.SortRouteMaxExtendLower(all, out); });
        std::map<long, std::size_t> place;
        for (const std::vector<long>& order : {upper, lines, branches}) {
            EXPECT_EQ(order.size(), routes.size());
            EXPECT_EQ(AsSet(order), AsSet(routes));
        }
        for (std::size_t i = 0; i < upper.size(); ++i)
            place[upper[i]] = i;
        for (const long route : routes)
            if (ConnectOf(route) != 0) {
                EXPECT_LT(place[route], place[ConnectOf(route)]) << "upstream comes first";
            }
        EXPECT_EQ(lines.front(), upper.front()) << "both begin at the top of the longest line";
    }
}

TEST_P(RealNetworks, TheRunningDistanceOfEveryWebIsWritten)
{
    for (const long web : m_webs) {
        EXPECT_TRUE(m_manager.SetSpanMaxExtend(web));
        const Ids all(RoutesOf(web));
        const long top = Listed([&](auto& out) { return m_manager.SortRouteMaxExtendUpper(all, out); }).front();
        const long first = Listed([&](auto& out) { return m_manager.GetSortSpanInRoute(top, out, false); }).front();
        const CSpan* const span = m_manager.GetSpanObjectOriginal(first);
        EXPECT_NEAR(span->GetSubAttributeDouble(L"splent", -1), span->GetSubAttributeDouble(L"splength", 0), 1e-9);
    }
}

TEST_P(RealNetworks, TheirConnectNumbersAreRight)
{
    std::map<long, std::wstring> before;
    for (const long route : AllRoutes())
        before[route] = m_manager.GetRouteObjectOriginal(route)->GetSubAttribute(L"connectnum").View();
    for (const long web : m_webs)
        m_manager.UpdateConnectRouteNum(web);
    for (const auto& [route, number] : before)
        EXPECT_EQ(m_manager.GetRouteObjectOriginal(route)->GetSubAttribute(L"connectnum"), number.c_str());
}

TEST_P(RealNetworks, MovingTheOutletToAHeadRouteAndBackRestoresTheShape)
{
    const auto shape = Shape();
    for (const long web : m_webs) {
        const Ids all(RoutesOf(web));
        for (const long head : Listed([&](auto& out) { return m_manager.GetUpperRouteId(all, out); })) {
            std::vector<long> way =
                Listed([&](CList<long, long>& out) { m_manager.GetConnectRouteLowerAll(head, all, out); });
            if (way.empty()) continue;
            Ids unused;
            ASSERT_TRUE(m_manager.ReSetFlowEndNode(head, L"moved", unused));
            ASSERT_EQ(ConnectOf(head), 0);
            ASSERT_TRUE(m_manager.ReSetFlowEndNode(way.back(), L"back", unused));
        }
    }
    EXPECT_TRUE(Shape() == shape);
}

INSTANTIATE_TEST_SUITE_P(Files, RealNetworks, testing::ValuesIn(FileNames()),
                         [](const auto& tested) { return tested.param.substr(0, tested.param.rfind('.')); });
GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(RealNetworks);

} // namespace
