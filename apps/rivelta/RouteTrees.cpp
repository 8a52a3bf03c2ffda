#include "RouteTrees.h"

namespace obmgr::tool {

namespace {

constexpr int kWebLink = 0;
constexpr std::size_t kConnectLink = 1;

} // namespace

RouteTrees::RouteTrees(const CObjectManager& manager, const CWeb& web)
{
    manager.GetRouteDb().Untyped().VisitByLink(kWebLink, web.GetId32(), [this](CPipeObject& object) {
        CRoute& route = static_cast<CRoute&>(object);
        m_routes.push_back(&route);
        m_byId.emplace(route.GetId32(), &route);
        m_byConnectId[route.Links()[kConnectLink]].push_back(&route);
        return true;
    });
    for (auto& [connectId, siblings] : m_byConnectId)
        SortSiblings(manager, siblings);

    const auto atFlowEnd = m_byConnectId.find(0);
    Grow(RouteTree::Root::FlowEnd, atFlowEnd == m_byConnectId.end() ? Routes() : atFlowEnd->second);
    for (CRoute* const route : m_routes) {
        const std::int32_t connectId = route->Links()[kConnectLink];
        if (m_listed.count(route) || m_byId.count(connectId)) continue;
        Grow(manager.GetRouteDb().Find(connectId) ? RouteTree::Root::OtherWeb : RouteTree::Root::Nowhere, {route});
    }
    // What is left leads into a ring.
    for (CRoute* const route : m_routes)
        if (!m_listed.count(route)) Grow(RouteTree::Root::Ring, {FirstOfRing(manager, route)});
}

// As the library sorts the routes that flow into one.
void RouteTrees::SortSiblings(const CObjectManager& manager, Routes& siblings) const
{
    if (siblings.size() < 2) return;
    CTypedPtrList<CObList, CRoute*> list;
    for (CRoute* const route : siblings)
        list.AddTail(route);
    manager.SortFlowOrder(list);
    siblings.assign(list.begin(), list.end());
}

// Without recursion: a chain of routes may be as long as the file is large.
void RouteTrees::Grow(RouteTree::Root root, const Routes& roots)
{
    struct Level {
        Routes siblings;
        std::size_t next = 0;
    };
    RouteTree tree{root, {}};
    std::vector<Level> way;
    way.push_back({NotYetListed(roots)});
    while (!way.empty()) {
        Level& level = way.back();
        if (level.next == level.siblings.size()) {
            way.pop_back();
            continue;
        }
        const CRoute* const route = level.siblings[level.next++];
        if (!m_listed.insert(route).second) continue;
        tree.rows.push_back({route, way.size() - 1, level.next == level.siblings.size()});
        if (const auto tributaries = m_byConnectId.find(route->GetId32()); tributaries != m_byConnectId.end())
            way.push_back({NotYetListed(tributaries->second)});
    }
    m_trees.push_back(std::move(tree));
}

RouteTrees::Routes RouteTrees::NotYetListed(const Routes& routes) const
{
    Routes rest;
    for (CRoute* const route : routes)
        if (!m_listed.count(route)) rest.push_back(route);
    return rest;
}

// The route of the ring below `start` that comes first in the file.
CRoute* RouteTrees::FirstOfRing(const CObjectManager& manager, CRoute* start) const
{
    const auto below = [this](const CRoute* route) { return m_byId.at(route->Links()[kConnectLink]); };
    std::unordered_set<const CRoute*> seen;
    CRoute* onRing = start;
    while (seen.insert(onRing).second)
        onRing = below(onRing);
    CRoute* first = onRing;
    for (CRoute* route = below(onRing); route != onRing; route = below(route))
        if (manager.GetRouteDb().Untyped().IsBefore(*route, *first)) first = route;
    return first;
}

} // namespace obmgr::tool
