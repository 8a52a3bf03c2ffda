// The tree of routes.
#include "reference/Network.h"

namespace reference {

using namespace objectdata;

// ---- direct tributaries ----

int Network::GetConnectRoute(int routeId, const Ids& candidates, Ids& out) const
{
    for (const int id : candidates) {
        Record* const route = Route(id);
        if (route && ConnectOf(*route) == routeId) out.push_back(id);
    }
    return static_cast<int>(out.size());
}

int Network::GetConnectRouteAll(int routeId, Ids& out) const
{
    for (Record* const route : All(objectdata::Route))
        if (ConnectOf(*route) == routeId) out.push_back(route->id);
    return static_cast<int>(out.size());
}

bool Network::GetNextRouteId(int routeId, const Ids& candidates, Ids& out) const
{
    Ids found;
    GetConnectRoute(routeId, candidates, found);
    SortFlowOrder(found);
    out.insert(out.end(), found.begin(), found.end());
    return !found.empty();
}

bool Network::GetNextRouteIdAll(int routeId, Ids& out) const
{
    Ids found;
    GetConnectRouteAll(routeId, found);
    SortFlowOrder(found);
    out.insert(out.end(), found.begin(), found.end());
    return !found.empty();
}

int Network::GetConnectRoute(const Records& routes, int routeId, Records& out) const
{
    int count = 0;
    for (Record* const route : routes) {
        if (!route || ConnectOf(*route) != routeId) continue;
        out.push_back(route);
        ++count;
    }
    return count;
}

int Network::GetConnectRoute(Records& routes, int routeId, bool recursive, bool sort, Records& out) const
{
    Records moved;
    for (std::size_t at = routes.size(); at-- > 0;) {
        if (!routes[at] || ConnectOf(*routes[at]) != routeId) continue;
        moved.push_back(routes[at]);
        routes.erase(routes.begin() + static_cast<std::ptrdiff_t>(at));
    }
    if (moved.empty()) return 0;
    if (sort) SortRoutesByFlowOrder(moved, 0, static_cast<int>(moved.size()) - 1);
    out.insert(out.end(), moved.begin(), moved.end());
    for (std::size_t at = moved.size(); recursive && at-- > 0;)
        GetConnectRoute(routes, moved[at]->id, recursive, sort, out);
    return static_cast<int>(out.size());
}

// ---- everything upstream and downstream ----

void Network::GetConnectRouteUpperAll(int routeId, const Ids& candidates, Ids& out) const
{
    NodeMap byConnectId;
    for (const int id : candidates) {
        Record* const route = Route(id);
        if (!route) continue;
        Ids* list = nullptr;
        for (auto& [connectId, ids] : byConnectId)
            if (connectId == ConnectOf(*route)) list = &ids;
        if (!list) list = &byConnectId.emplace_back(ConnectOf(*route), Ids()).second;
        list->push_back(id);
    }
    GetConnectRouteUpperAll(routeId, byConnectId, out);
}

void Network::GetConnectRouteUpperAll(int routeId, const NodeMap& candidatesByConnectId, Ids& out) const
{
    Way way;
    UpperAll(routeId, candidatesByConnectId, way, out);
}

void Network::UpperAll(int routeId, const NodeMap& byConnectId, Way& way, Ids& out) const
{
    way.push_back(routeId);
    for (const auto& [connectId, ids] : byConnectId) {
        if (connectId != routeId) continue;
        for (const int id : ids) {
            if (Contains(way, id)) continue;
            UpperAll(id, byConnectId, way, out);
            out.push_back(id);
        }
    }
    way.pop_back();
}

void Network::GetConnectRouteUpperAllByOrder(int routeId, const Ids& candidates, Ids& out) const
{
    Way way;
    UpperAllByOrder(routeId, candidates, way, out);
}

void Network::UpperAllByOrder(int routeId, const Ids& candidates, Way& way, Ids& out) const
{
    way.push_back(routeId);
    for (const int id : candidates) {
        Record* const route = Route(id);
        if (!route || ConnectOf(*route) != routeId || Contains(way, id)) continue;
        out.push_back(id);
        UpperAllByOrder(id, candidates, way, out);
    }
    way.pop_back();
}

void Network::GetConnectRouteLowerAll(int routeId, const Ids& candidates, Ids& out) const
{
    Ids walk = {routeId};
    for (;;) {
        Record* const route = Route(walk.back());
        const int next = route ? ConnectOf(*route) : 0;
        if (routeId == 0 || next == 0 || !Contains(candidates, next) || Contains(walk, next)) break;
        walk.push_back(next);
    }
    out.insert(out.end(), walk.begin() + 1, walk.end());
}

void Network::GetConnectRouteSortOrder(int webId, int routeId, Records& routes) const
{
    Way way;
    SortOrder(webId, routeId, way, routes);
}

void Network::SortOrder(int webId, int routeId, Way& way, Records& routes) const
{
    way.push_back(routeId);
    Records tributaries;
    for (Record* const route : RoutesOf(webId))
        if (ConnectOf(*route) == routeId) tributaries.push_back(route);
    SortFlowOrder(tributaries);
    for (Record* const route : tributaries) {
        if (Contains(way, route->id)) continue;
        routes.push_back(route);
        SortOrder(webId, route->id, way, routes);
    }
    way.pop_back();
}

// ---- paths and sets ----

bool Network::GetRouteIdListFromTo(int fromRouteId, int toRouteId, int webId, Ids& out) const
{
    if (fromRouteId == toRouteId) {
        out.push_back(fromRouteId);
        return true;
    }
    Ids routes;
    if (!GetRouteIdList(webId, routes)) return false;
    Ids path = {fromRouteId};
    GetConnectRouteLowerAll(fromRouteId, routes, path);
    Ids part;
    for (const int id : path) {
        part.push_back(id);
        if (id != toRouteId) continue;
        out.insert(out.end(), part.begin(), part.end());
        return true;
    }
    return false;
}

bool Network::GetLowRouteId(const Ids& routeIds, Ids& out) const
{
    if (routeIds.empty()) return false;
    Ids low;
    for (const int id : routeIds) {
        Record* const route = Route(id);
        if (route && !Contains(routeIds, ConnectOf(*route))) low.push_back(id);
    }
    SortFlowOrder(low);
    out.insert(out.end(), low.begin(), low.end());
    return true;
}

bool Network::GetUpperRouteId(const Ids& routeIds, Ids& out) const
{
    Ids connectIds;
    for (const int id : routeIds)
        if (Record* const route = Route(id)) connectIds.push_back(ConnectOf(*route));
    if (connectIds.empty()) return false;
    for (const int id : routeIds)
        if (!Contains(connectIds, id)) out.push_back(id);
    return true;
}

void Network::GetUpperRouteObjectList(int routeId, Ids& out) const
{
    Record* const start = Route(routeId);
    int lowest = 0;
    if (!start || !GetLastSpanFromRoute(routeId, lowest)) return;
    Ids line;
    GetUpperSpanObjectList(WebOf(*start), lowest, line);
    for (const int id : line) {
        const int route = RouteOf(*Span(id));
        if (route != routeId && !Contains(out, route)) out.push_back(route);
    }
}

bool Network::RouteBy(const wchar_t* key, int webId, Ids& out) const
{
    Ids routes;
    if (!GetRouteIdList(webId, routes)) return false;
    Ids line = {0};
    for (;;) {
        Ids next;
        if (!GetNextRouteId(line.back(), routes, next)) return true;
        int best = 0; // 0 is no route, even when a route has this id
        double greatest = 0;
        for (const int id : next) {
            int lowest = 0;
            if (!GetLastSpanFromRoute(id, lowest)) return false;
            const double value = Double(*Span(lowest), key);
            if (best != 0 && !(value > greatest)) continue;
            best = id;
            greatest = value;
        }
        if (Contains(line, best)) return true;
        out.push_back(best);
        line.push_back(best);
    }
}

bool Network::GetRouteBySphst(int webId, Ids& out) const
{
    return RouteBy(L"sphst", webId, out);
}

bool Network::GetRouteBySphdt(int webId, Ids& out) const
{
    return RouteBy(L"sphfdt", webId, out);
}

bool Network::GetOverlapRouteFromWebs(int webId, const Ids& nodeIds, Ids& outSpans, Ids& outNodes) const
{
    outNodes.clear();
    Records spans;
    if (!GetSpanFromWeb(webId, spans)) return false;
    Ids found;
    for (const int node : nodeIds) {
        for (Record* const span : spans) {
            if (Contains(nodeIds, UpperNode(*span)) || !IsEqualCoordNode(node, UpperNode(*span))) continue;
            found.push_back(span->id);
            outNodes.push_back(node);
        }
    }
    outSpans.insert(outSpans.end(), found.begin(), found.end());
    return !found.empty();
}

bool Network::GetMostUpperNode(int webId, Ids& nodeIds) const
{
    Ids routes;
    Ids heads;
    if (!GetRouteIdList(webId, routes) || !GetUpperRouteId(routes, heads)) return false;
    Ids found;
    for (const int head : heads) {
        int node = 0;
        if (!GetMostUpperNodeId(head, node)) return false;
        found.push_back(node);
    }
    nodeIds.insert(nodeIds.end(), found.begin(), found.end());
    return true;
}

bool Network::GetMostUpperRouteByNode(int webId, Ids& routeIds) const
{
    Ids lower;
    for (Record* const span : All(objectdata::Span))
        lower.push_back(LowerNode(*span));
    for (Record* const span : All(objectdata::Span)) {
        if (Contains(lower, UpperNode(*span))) continue;
        Record* const route = Route(RouteOf(*span));
        if (route && WebOf(*route) == webId) routeIds.push_back(RouteOf(*span));
    }
    return !routeIds.empty();
}

int Network::GetRouteObjectArrayFromWeb(int webId, Records& routes) const
{
    routes = RoutesOf(webId);
    return static_cast<int>(routes.size());
}

int Network::GetSpanObjectArrayFromRoute(int routeId, Records& spans) const
{
    spans = SpansOf(routeId);
    return static_cast<int>(spans.size());
}

void Network::ReverseIdList(Ids& ids) const
{
    Ids reversed;
    for (const int id : ids)
        reversed.insert(reversed.begin(), id);
    ids = reversed;
}

} // namespace reference
