// Rewiring routes, and moving the flow end.

#include "reference/NetworkEdits.h"

#include <algorithm>

namespace reference {
namespace {

// What a route was connected to, and what its tributaries are to be connected to now; in the order of first setting.
using NewConnects = std::vector<std::pair<int, int>>;

void Set(NewConnects& map, int key, int value)
{
    for (auto& [known, old] : map) {
        if (known != key) continue;
        old = value;
        return;
    }
    map.emplace_back(key, value);
}

void Hang(Network& net, Record& route, int connectId, const std::wstring& endName)
{
    ConnectOf(route) = connectId;
    route.Set(L"connectnum", connectId == 0 ? endName : net.Route(connectId)->Get(L"routenum"));
    route.Set(L"rtstate", L"1");
}

void SetUpper(Network& net, int routeId, int webId, Ids way)
{
    way.push_back(routeId);
    for (Record* route : net.Linked(objectdata::Route, 1, routeId)) {
        if (Contains(way, route->id)) continue;
        WebOf(*route) = webId;
        SetUpper(net, route->id, webId, way);
    }
}

void ReSetOrder(Network& net, int webId, int connectId, Ids way)
{
    way.push_back(connectId);
    Records group;
    for (Record* route : net.RoutesOf(webId))
        if (ConnectOf(*route) == connectId) group.push_back(route);
    if (group.size() == 1) group.front()->Set(L"floworder", L"1");
    if (group.size() > 1) {
        net.SortFlowOrder(group);
        int number = 1;
        for (Record* route : group)
            route->Set(L"floworder", IntText(++number));
    }
    // A group is numbered whole; a route on the way from the start is only not followed.
    for (const Record* route : group)
        if (!Contains(way, route->id)) ReSetOrder(net, webId, route->id, way);
}

} // namespace

bool ConnectRoute(Network& net, int routeId, int connectId)
{
    Record* const route = net.Route(routeId);
    if (!route) return false;
    Records spans;
    if (connectId != 0) {
        if (!net.GetSortSpanInRoute(routeId, spans, true)) return false;
        DeleteNodeObject(net, LowerNode(*spans.front()));
        int top = 0;
        if (!net.GetMostUpperNodeId(connectId, top)) return false;
        LowerNode(*spans.front()) = top;
    } else {
        int flowEnd = 0;
        if (net.GetFlowEndNodeId(WebOf(*route), flowEnd)) {
            if (!net.GetSortSpanInRoute(routeId, spans, true)) return false;
            if (LowerNode(*spans.front()) != flowEnd) {
                DeleteNodeObject(net, LowerNode(*spans.front()));
                LowerNode(*spans.front()) = flowEnd;
            }
        }
    }
    ConnectOf(*route) = connectId;
    return true;
}

bool ChangeConnectRoute(Network& net, int routeId, int connectId, int, int newWebId)
{
    Record* const route = net.Route(routeId);
    if (!route) return false;
    ConnectOf(*route) = connectId;
    Records spans;
    if (!net.GetSortSpanInRoute(routeId, spans, true)) return false;
    Record& lowest = *spans.front();
    if (connectId != 0) {
        if (!net.GetSortSpanInRoute(connectId, spans, true)) return false;
        LowerNode(lowest) = UpperNode(*spans.back());
    } else {
        int node = 0;
        if (net.GetRouteNumInWeb(newWebId) > 0) {
            if (!net.GetFlowEndNodeId(newWebId, node)) return false;
        } else {
            if (!CreateNode(net, {}, &node)) return false;
        }
        LowerNode(lowest) = node;
    }
    WebOf(*route) = newWebId;
    SetUpperRouteObject(net, routeId, newWebId);
    Ids touching;
    if (!net.GetConnectALlSpanToNode(LowerNode(lowest), touching)) DeleteNodeObject(net, LowerNode(lowest));
    return true;
}

void UpdateConnectRouteNum(Network& net, int webId)
{
    for (Record* route : net.RoutesOf(webId)) {
        if (ConnectOf(*route) == 0) continue;
        const Record* const connect = net.Route(ConnectOf(*route));
        if (connect && connect->Int(L"rtstate") == 1) route->Set(L"connectnum", connect->Get(L"routenum"));
    }
}

void ReverseSpanInRoute(Network& net, int routeId)
{
    for (Record* span : net.SpansOf(routeId)) {
        std::swap(UpperNode(*span), LowerNode(*span));
        if (!span->Get(L"csx").empty()) {
            const std::pair<const wchar_t*, const wchar_t*> ends[] = {
                {L"csx", L"cex"}, {L"csy", L"cey"}, {L"csz", L"cez"}};
            for (const auto& [start, end] : ends) {
                const std::wstring kept = span->Get(start);
                span->Set(start, span->Get(end));
                span->Set(end, kept);
            }
        }
        if (!span->Get(L"spradt").empty() && Double(*span, L"spradt") > 0)
            span->Set(L"sparcdir", span->Int(L"sparcdir") != 0 ? L"0" : L"1");
    }
    Records spans;
    if (!net.GetSortSpanInRoute(routeId, spans, false)) return;
    int number = 0;
    for (Record* span : spans)
        span->Set(L"spno", IntText(++number));
}

void SetUpperRouteObject(Network& net, int routeId, int webId)
{
    SetUpper(net, routeId, webId, {});
}

void UpdateManHoleNumSameRouteNum(Network& net, int routeId, std::vector<std::wstring>& oldNumbers,
                                  std::vector<std::wstring>& newNumbers, bool lowestFirst)
{
    const Record* const route = net.Route(routeId);
    Records spans;
    if (!route || !net.GetSortSpanInRoute(routeId, spans, lowestFirst)) return;
    int number = 0;
    for (Record* span : spans) {
        ++number;
        Record* const node = net.Node(UpperNode(*span));
        if (!node) continue;
        oldNumbers.push_back(node->Get(L"mholeno"));
        node->Set(L"mholeno", route->Get(L"routenum") + L"-" + IntText(number));
        newNumbers.push_back(node->Get(L"mholeno"));
    }
}

bool ReSetFlowEndNode(Network& net, int routeId, const std::wstring& name)
{
    Record* const start = net.Route(routeId);
    if (!start) return false;
    if (ConnectOf(*start) == 0) return true;
    const int web = WebOf(*start);
    Ids all;
    if (!net.GetRouteIdList(web, all)) return false;
    Ids path = {routeId};
    net.GetConnectRouteLowerAll(routeId, all, path);
    int previous = 0;
    NewConnects connects;
    for (const int id : path) {
        Record& route = *net.Route(id);
        ReverseSpanInRoute(net, id);
        Set(connects, id, previous);
        if (ConnectOf(route) == 0) Set(connects, 0, id);
        Hang(net, route, previous, name);
        previous = id;
    }
    for (const auto& [key, value] : connects) {
        Ids tributaries;
        net.GetNextRouteId(key, all, tributaries);
        for (const int id : tributaries) {
            if (Contains(path, id)) continue;
            Hang(net, *net.Route(id), value, name);
            path.push_back(id);
        }
    }
    ReSetRouteSortOrder(net, web, 0);
    return true;
}

bool ReSetFlowEndNodeByNode(Network& net, int routeId, int nodeId, const std::wstring& name, Ids& rewired,
                            Ids& reversed)
{
    rewired.clear();
    reversed.clear();
    Record* const start = net.Route(routeId);
    if (!start) return false;
    const int web = WebOf(*start);
    Ids all;
    if (!net.GetRouteIdList(web, all)) return false;
    rewired.push_back(routeId);
    net.GetConnectRouteLowerAll(routeId, all, rewired);
    if (ConnectOf(*net.Route(rewired.back())) != 0) return false;
    int oldEnd = 0;
    if (!net.GetMostLowerNodeId(rewired.back(), oldEnd)) return false;
    if (ConnectOf(*start) == 0 && oldEnd == nodeId) return true;
    int previous = 0;
    NewConnects connects;
    for (const int id : rewired) {
        bool turn = true;
        if (id == routeId) {
            int lowest = 0;
            if (!net.GetMostLowerNodeId(id, lowest)) return false;
            turn = lowest != nodeId;
        }
        if (turn) {
            ReverseSpanInRoute(net, id);
            reversed.insert(reversed.begin(), id);
        }
        Record& route = *net.Route(id);
        Set(connects, id, previous);
        if (ConnectOf(route) == 0) Set(connects, 0, id);
        Hang(net, route, previous, name);
        previous = id;
    }
    for (const auto& [key, value] : connects) {
        Ids tributaries;
        net.GetNextRouteId(key, all, tributaries);
        for (const int id : tributaries) {
            if (Contains(rewired, id)) continue;
            if (key == 0) {
                int lowest = 0;
                if (!net.GetMostLowerNodeId(id, lowest)) return false;
                if (lowest != oldEnd) {
                    rewired.push_back(id);
                    continue;
                }
            }
            Hang(net, *net.Route(id), value, name);
            rewired.push_back(id);
        }
    }
    ReSetRouteSortOrder(net, web, 0);
    return true;
}

void ReSetRouteSortOrder(Network& net, int webId, int connectId)
{
    ReSetOrder(net, webId, connectId, {});
}

bool ReleaseDivideNode(Network& net, int ownerId, Ids& nodeIds)
{
    if (ownerId == 0) return !nodeIds.empty(); // nodes that belong to no group have 0, or no key
    for (Record* node : net.All(objectdata::Node)) {
        if (node->Int(L"divownerid") != ownerId) continue;
        node->Set(L"divno", L"0");
        node->Set(L"divownerid", L"0");
        nodeIds.push_back(node->id);
    }
    return !nodeIds.empty();
}

} // namespace reference
