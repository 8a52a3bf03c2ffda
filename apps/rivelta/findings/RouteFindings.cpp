// What is wrong with routes: rings, joints, chains of spans.
#include "Objects.h"
#include "common/Text2Number.h"
#include "findings/Finders.h"

#include <algorithm>
#include <set>
#include <utility>

namespace obmgr::tool {

namespace {

// A ring is told of once, at its first route in the file.
void findRings(const FindContext& context, Findings& findings)
{
    const auto& routes = context.manager.GetRouteDb();
    std::unordered_map<const CRoute*, const CRoute*> startOfWalk;
    for (const CRoute* const start : routes) {
        std::vector<const CRoute*> way;
        const CRoute* route = start;
        while (route && startOfWalk.emplace(route, start).second) {
            way.push_back(route);
            route = ConnectId(*route) == 0 ? nullptr : routes.Find(ConnectId(*route));
        }
        if (!route || startOfWalk[route] != start) continue;
        const auto ring = std::find(way.begin(), way.end(), route);
        const auto first = std::min_element(
            ring, way.end(), [&](const CRoute* a, const CRoute* b) { return routes.Untyped().IsBefore(*a, *b); });
        std::rotate(ring, first, way.end());
        std::vector<std::string> ids;
        for (auto at = ring; at != way.end(); ++at)
            ids.push_back(std::to_string((*at)->GetId32()));
        ids.push_back(ids.front());
        findings.Add(FindingKind::RouteRing, **ring, "route " + Listed(ids, " -> "));
    }
}

void findAtJoint(const FindContext& context, const CRoute& route, const CRoute& connect, Findings& findings)
{
    const std::string number = ValueOf(connect, "routenum");
    if (const std::string kept = ValueOf(route, "connectnum"); kept != number)
        findings.Add(FindingKind::RouteNumberStale, route,
                     fmt::format("{} -> \"{}\"", Quoted("connectnum", kept), number));
    if (WebId(route) != WebId(connect)) {
        findings.Add(FindingKind::RouteToOtherWeb, route,
                     fmt::format("webid={}, connectid={}: webid={}", WebId(route), connect.GetId32(), WebId(connect)));
        return;
    }
    const RouteShape* const shape = context.net.ShapeOf(route.GetId32());
    const RouteShape* const below = context.net.ShapeOf(connect.GetId32());
    if (!shape || !below || !shape->isChain || !below->isChain || shape->bottom == below->top) return;
    findings.Add(FindingKind::RouteNotJoined, route,
                 fmt::format("node {}; route {}: node {}", shape->bottom, connect.GetId32(), below->top));
}

void findInSpansOf(const RouteShape& shape, const CRoute& route, Findings& findings)
{
    if (!shape.isChain) {
        if (!shape.spans.empty())
            findings.Add(FindingKind::RouteNoChain, route, fmt::format("{} x span", shape.spans.size()));
        return;
    }
    for (std::size_t i = 0; i < shape.spans.size(); ++i) {
        const std::string number = ValueOf(*shape.spans[i], "spno");
        if (ToLong(number) == static_cast<long>(i) + 1) continue;
        findings.Add(FindingKind::SpanNumbersOff, route,
                     fmt::format("span {}: {} -> {}", shape.spans[i]->GetId32(), Quoted("spno", number), i + 1));
        return;
    }
}

} // namespace

void FindInRoutes(const FindContext& context, Findings& findings)
{
    findRings(context, findings);
    const auto& routes = context.manager.GetRouteDb();
    std::set<std::pair<std::int32_t, std::int32_t>> leftNodes; // with their webs
    for (const CSpan* const span : context.manager.GetSpanDb())
        if (const CRoute* const route = routes.Find(RouteId(*span)); route && !IsToItself(*span))
            leftNodes.emplace(WebId(*route), UpperNode(*span));
    for (const CRoute* const route : routes) {
        const RouteShape* const shape = context.net.ShapeOf(route->GetId32());
        if (shape)
            findInSpansOf(*shape, *route, findings);
        else
            findings.Add(FindingKind::RouteWithoutSpans, *route, {});
        if (ConnectId(*route) == 0) {
            if (shape && shape->isChain && leftNodes.contains({WebId(*route), shape->bottom}))
                findings.Add(
                    FindingKind::RouteEndsInside, *route,
                    fmt::format("node {}: span {}", shape->bottom, context.net.From(shape->bottom).first->GetId32()));
        } else if (const CRoute* const connect = routes.Find(ConnectId(*route)); connect && connect != route) {
            findAtJoint(context, *route, *connect, findings);
        }
    }
}

} // namespace obmgr::tool
