// Lists, numbers and areas of a whole web; from a record to its web; flow ends.
#include "reference/Network.h"

#include <cmath>

namespace reference {

using namespace objectdata;

bool Network::GetSpanFromWeb(int webId, Ids& spanIds) const
{
    for (Record* const span : All(objectdata::Span)) {
        Record* const route = Route(RouteOf(*span));
        if (!route) return false;
        if (WebOf(*route) == webId) spanIds.push_back(span->id);
    }
    return !spanIds.empty();
}

bool Network::GetSpanFromWeb(int webId, Records& spans) const
{
    for (Record* const span : All(objectdata::Span)) {
        Record* const route = Route(RouteOf(*span));
        if (!route) return false;
        if (WebOf(*route) == webId) spans.push_back(span);
    }
    return !spans.empty();
}

bool Network::GetRouteIdList(int webId, Ids& routeIds) const
{
    if (All(objectdata::Route).empty()) return false;
    for (const Record* const route : RoutesOf(webId))
        routeIds.push_back(route->id);
    return !routeIds.empty();
}

bool Network::GetSpanIdList(int routeId, Ids& spanIds) const
{
    if (All(objectdata::Span).empty()) return false;
    for (const Record* const span : SpansOf(routeId))
        spanIds.push_back(span->id);
    return !spanIds.empty();
}

bool Network::GetNodeIdList(int webId, Ids& nodeIds) const
{
    Records spans;
    if (!GetSpanFromWeb(webId, spans)) return false;
    Ids upper;
    for (Record* const span : spans)
        upper.push_back(UpperNode(*span));
    nodeIds.insert(nodeIds.end(), upper.begin(), upper.end());
    for (Record* const span : spans)
        if (!Contains(upper, LowerNode(*span)) && !Contains(nodeIds, LowerNode(*span)))
            nodeIds.push_back(LowerNode(*span));
    return true;
}

bool Network::GetRouteObjectListFromWeb(int webId, Records& routes, bool rising, bool sorted) const
{
    Records all = RoutesOf(webId);
    if (all.empty()) return false;
    if (sorted) SortOrderRoute(all);
    for (Record* const route : all)
        routes.insert(sorted && !rising ? routes.begin() : routes.end(), route);
    return true;
}

bool Network::GetSpanObjectListFromWeb(int webId, Records& spans) const
{
    Records routes;
    if (!GetRouteObjectListFromWeb(webId, routes, true, true)) return false;
    Records all;
    Records nodes;
    for (const Record* const route : routes)
        if (!GetSortSpanNodeInRoute(route->id, all, nodes)) return false;
    spans.insert(spans.end(), all.begin(), all.end());
    return true;
}

bool Network::GetSpanObjectListFromWebCopy(int webId, Records& spans) const
{
    Records routes;
    GetConnectRouteSortOrder(webId, 0, routes);
    if (routes.empty()) return false;
    Records all;
    Records nodes;
    for (const Record* const route : routes)
        if (!GetSortSpanNodeInRoute(route->id, all, nodes)) return false;
    spans.insert(spans.end(), all.begin(), all.end());
    return true;
}

bool Network::GetNodeObjectListFromWeb(int webId, Records& nodes, bool sorted) const
{
    Records found;
    if (sorted) {
        Records routes;
        GetConnectRouteSortOrder(webId, 0, routes);
        if (routes.empty()) return false;
        Records spans;
        for (const Record* const route : routes)
            if (!GetSortSpanNodeInRoute(route->id, spans, found)) return false;
    } else {
        const Records routes = RoutesOf(webId);
        if (routes.empty()) return false;
        Ids keys;
        for (const Record* const route : routes) {
            for (Record* const span : SpansOf(route->id)) {
                if (!Contains(keys, UpperNode(*span))) keys.push_back(UpperNode(*span));
                if (!Contains(keys, LowerNode(*span))) keys.push_back(LowerNode(*span));
            }
        }
        for (const int id : keys)
            if (Record* const node = Node(id)) found.push_back(node);
    }
    nodes.insert(nodes.end(), found.begin(), found.end());
    return true;
}

bool Network::CreateMapLowNodeSpan(int webId, NodeMap& spansByNode) const
{
    const Records routes = RoutesOf(webId);
    if (routes.empty()) return false;
    for (const Record* const route : routes) {
        for (Record* const span : SpansOf(route->id)) {
            Ids* list = nullptr;
            for (auto& [node, ids] : spansByNode)
                if (node == LowerNode(*span)) list = &ids;
            if (!list) list = &spansByNode.emplace_back(LowerNode(*span), Ids()).second;
            list->push_back(span->id);
        }
    }
    return !spansByNode.empty();
}

void Network::GetSpanFormProject(Ids& spanIds) const
{
    for (const Record* const span : All(objectdata::Span))
        spanIds.push_back(span->id);
}

int Network::GetSpanNumInWeb(int webId) const
{
    int count = 0;
    for (Record* const span : All(objectdata::Span)) {
        Record* const route = Route(RouteOf(*span));
        if (route && WebOf(*route) == webId) ++count;
    }
    return count;
}

int Network::GetRouteNumInWeb(int webId) const
{
    return static_cast<int>(RoutesOf(webId).size());
}

// ---- areas and slope length ----

int Network::GetWbareasetflg(int spanId) const
{
    Record* const span = Span(spanId);
    Record* const route = span ? Route(RouteOf(*span)) : nullptr;
    const Record* const web = route ? Web(WebOf(*route)) : nullptr;
    return web ? web->Int(L"wbareasetflg") : 0;
}

bool Network::GetSpanArea(int spanId, double& area) const
{
    area = 0.0;
    const Record* const span = Span(spanId);
    if (!span) return false;
    if (span->Int(L"spnoarea") != 0) return true;
    const Records areas = Linked(AreaSet, 0, spanId);
    for (const Record* const record : areas)
        area += Double(*record, L"asarea");
    return !areas.empty();
}

// Adds to `area`.
bool Network::RouteAreaOver(int routeId, double& area) const
{
    Ids fromTop;
    if (!GetSortSpanInRoute(routeId, fromTop, false)) return false;
    bool any = false;
    for (const int span : fromTop) {
        double spanArea = 0;
        any = GetSpanArea(span, spanArea) || any;
        area += spanArea;
        if (GetWbareasetflg(fromTop.front()) == 0) break;
    }
    return any;
}

bool Network::GetRouteArea(int routeId, double& area) const
{
    area = 0.0;
    return RouteAreaOver(routeId, area);
}

bool Network::GetWebArea(int webId, double& area) const
{
    bool any = false;
    for (const Record* const route : RoutesOf(webId))
        any = RouteAreaOver(route->id, area) || any;
    return any;
}

bool Network::GetRouteAreaT(int routeId, double& area, bool flag) const
{
    area = 0.0;
    double own = 0;
    Record* const route = Route(routeId);
    if (!route || !GetRouteArea(routeId, own)) return false;
    Records routes = RoutesOf(WebOf(*route));
    Records upstream;
    GetConnectRoute(routes, routeId, true, false, upstream);
    if (upstream.empty()) return !flag;
    bool any = false;
    for (const Record* const upper : upstream)
        any = RouteAreaOver(upper->id, area) || any;
    return any;
}

bool Network::GetSpanSyakyori(int spanId, double& length) const
{
    length = 0.0;
    const Record* const span = Span(spanId);
    if (!span) return false;
    const double flat = Double(*span, L"splength");
    if (CompareDouble(flat, 0, 1e-5) == 0) return true;
    const double drop = Double(*span, L"lowercentinv") - Double(*span, L"uppercentinv");
    length = std::sqrt(flat * flat + drop * drop);
    return true;
}

// ---- from a record to its web ----

int Network::GetWebIdFromSpan(int id) const
{
    Record* const span = Span(id);
    Record* const route = span ? Route(RouteOf(*span)) : nullptr;
    return route ? WebOf(*route) : 0;
}

int Network::GetWebIdFromNode(int id) const
{
    for (Record* const span : All(objectdata::Span)) {
        if (UpperNode(*span) != id && LowerNode(*span) != id) continue;
        Record* const route = Route(RouteOf(*span));
        return route ? WebOf(*route) : 0;
    }
    return 0;
}

int Network::GetWebIdFromIcpInq(int id) const
{
    Record* const inflow = Find(IcpInq, id);
    return inflow ? GetWebIdFromNode(OwnerOf(*inflow)) : 0;
}

int Network::GetWebIdFromAreaSet(int id) const
{
    Record* const area = Find(AreaSet, id);
    return area ? GetWebIdFromSpan(OwnerOf(*area)) : 0;
}

int Network::GetWebIdFromOutq(int id) const
{
    Record* const outflow = Find(Outq, id);
    Record* const route = outflow ? Route(OwnerOf(*outflow)) : nullptr;
    return route ? WebOf(*route) : 0;
}

int Network::GetWebIdFromInters(int id) const
{
    Record* const crossing = Find(Inters, id);
    if (!crossing) return 0;
    for (const int web : SortedByOrder((*this)[objectdata::Web], IdsOf(All(objectdata::Web)))) {
        Records crossings;
        GetObjectListFromWeb(Inters, web, crossings);
        for (const Record* const other : crossings)
            if (other == crossing) return web;
    }
    return 0;
}

int Network::GetWebIdFromLaunit(int id) const
{
    if (!Find(Launit, id)) return 0;
    for (Record* const lateral : All(Lateral)) {
        if (lateral->Int(L"launitid") != id) continue;
        Record* const route = Route(OwnerOf(*lateral));
        return route ? WebOf(*route) : 0;
    }
    return 0;
}

int Network::GetWebIdFromVacunit(int id) const
{
    if (!Find(Vacunit, id)) return 0;
    for (Record* const joint : All(Vjoint)) {
        if (joint->Int(L"vjinletid") != id) continue;
        Record* const route = Route(OwnerOf(*joint));
        return route ? WebOf(*route) : 0;
    }
    return 0;
}

int Network::GetWebIdFromSecvalve(int id) const
{
    const Record* const valve = Find(Secvalve, id);
    return valve ? GetWebIdFromSpan(valve->Int(L"svspid")) : 0;
}

int Network::GetWebIdFromOhaul(int id) const
{
    const Record* const haul = Find(Ohaul, id);
    return haul ? GetWebIdFromSpan(haul->Int(L"ohspid")) : 0;
}

int Network::GetWebIdFormName(const std::wstring& name) const
{
    for (const Record* const web : All(objectdata::Web))
        if (web->Get(L"webname") == name) return web->id;
    return 0;
}

// ---- flow ends ----

bool Network::GetFlowEndNodeId(int webId, int& nodeId) const
{
    Records spans;
    if (!GetSpanFromWeb(webId, spans)) return false;
    Ids upper;
    for (Record* const span : spans)
        upper.push_back(UpperNode(*span));
    for (Record* const span : spans) {
        if (Contains(upper, LowerNode(*span))) continue;
        nodeId = LowerNode(*span);
        return true;
    }
    return false;
}

bool Network::GetFlowEndNodeIdList(int webId, Ids& nodeIds) const
{
    Records spans;
    if (!GetSpanFromWeb(webId, spans)) return false;
    Ids upper;
    for (Record* const span : spans)
        upper.push_back(UpperNode(*span));
    for (Record* const span : spans)
        if (!Contains(upper, LowerNode(*span)) && !Contains(nodeIds, LowerNode(*span)))
            nodeIds.push_back(LowerNode(*span));
    return true;
}

bool Network::GetFlowEndFixedRoute(int webId, Ids& routeIds) const
{
    Records routes;
    if (!GetRouteObjectListFromWeb(webId, routes, true, true)) return true;
    bool any = false;
    for (Record* const route : routes) {
        if (ConnectOf(*route) != 0 || route->Int(L"rtstate") != 1) continue;
        routeIds.push_back(route->id);
        any = true;
    }
    return any;
}

bool Network::IsDivideNode(int nodeId, int& ownerId) const
{
    const Record* const node = Node(nodeId);
    const int kind = node ? node->Int(L"divno") : 0;
    if (kind == 1) ownerId = nodeId;
    if (kind == 2) ownerId = node->Int(L"divownerid");
    return kind == 1 || kind == 2;
}

bool Network::CheckDuplicateFlowEndName(int webId, const std::wstring& name) const
{
    for (const Record* const route : RoutesOf(webId))
        if (route->Get(L"routenum") == name) return false;
    return true;
}

} // namespace reference
