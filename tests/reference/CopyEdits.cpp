// Copying parts of the network, from one node up to a whole web.

#include "reference/NetworkEdits.h"

namespace reference {
namespace {

// A copy under the next id, which the caller learns even when the table refuses it. Not in its table yet.
RecordPtr CopyUnderNextId(Network& net, const Record& source, int& newId)
{
    const RecordPtr copy = std::make_shared<Record>(source);
    newId = ++net.Base().lastId;
    copy->id = newId;
    return copy;
}

Record* CopyRecord(Network& net, Type type, const Record& source, int& newId)
{
    const RecordPtr copy = CopyUnderNextId(net, source, newId);
    return net[type].Add(newId, copy) ? copy.get() : nullptr;
}

// `routes` are those that may be copied: none of them was made by this copying.
bool CopyUpper(Network& net, const Ids& routes, int routeId, int connectId, Ids way, Ids& newIds)
{
    int newId = 0;
    if (!CopyRouteObject(net, routeId, connectId, newId)) return false;
    newIds.push_back(newId);
    way.push_back(routeId);
    Ids tributaries;
    net.GetNextRouteId(routeId, routes, tributaries);
    for (const int id : tributaries)
        if (!Contains(way, id) && !CopyUpper(net, routes, id, newId, way, newIds)) return false;
    return true;
}

} // namespace

bool CopyNodeObject(Network& net, int nodeId, int& newId)
{
    const Record* const node = net.Node(nodeId);
    return node && CopyRecord(net, objectdata::Node, *node, newId);
}

bool CopySpanObject(Network& net, int spanId, int lowerNodeId, int& newId)
{
    Record* const span = net.Span(spanId);
    if (!span) return false;
    int upper = 0;
    if (!CopyNodeObject(net, UpperNode(*span), upper)) return false;
    int lower = lowerNodeId;
    if (lowerNodeId == 0 && !CopyNodeObject(net, LowerNode(*span), lower)) return false;
    const RecordPtr copy = CopyUnderNextId(net, *span, newId);
    if (!CopyAreasetObjectFromSpan(net, spanId, newId)) return false;
    UpperNode(*copy) = upper;
    LowerNode(*copy) = lower;
    return net[objectdata::Span].Add(newId, copy);
}

bool CopyAreasetObjectFromSpan(Network& net, int fromSpanId, int toSpanId)
{
    const Ids areas = Network::IdsOf(net.Linked(objectdata::AreaSet, 0, fromSpanId));
    if (areas.empty()) return false;
    for (const int id : areas) {
        const auto attributes = net.Find(objectdata::AreaSet, id)->attributes;
        Record* const copy = net.Create(objectdata::AreaSet, {toSpanId});
        if (!copy) return false;
        copy->attributes = attributes;
    }
    return true;
}

bool CopyRouteObject(Network& net, int routeId, int connectId, int& newId)
{
    const Record* const route = net.Route(routeId);
    if (!route) return false;
    Ids spans;
    if (!net.GetSortSpanInRoute(routeId, spans, true)) return false;
    int lower = 0;
    if (connectId != 0 && !net.GetMostUpperNodeId(connectId, lower)) return false;
    Ids newSpans;
    for (const int id : spans) {
        int newSpan = 0;
        if (!CopySpanObject(net, id, lower, newSpan)) return false;
        newSpans.push_back(newSpan);
        lower = UpperNode(*net.Span(newSpan));
    }
    Record* const copy = CopyRecord(net, objectdata::Route, *route, newId);
    if (!copy) return false;
    ConnectOf(*copy) = connectId;
    for (const int id : newSpans)
        RouteOf(*net.Span(id)) = newId;
    return true;
}

bool CopyAllUpperRouteObject(Network& net, int routeId, int connectId, Ids& newIds)
{
    return CopyUpper(net, Network::IdsOf(net.All(objectdata::Route)), routeId, connectId, {}, newIds);
}

bool CopyWebObject(Network& net, int webId, int& newId)
{
    const Record* const web = net.Web(webId);
    if (!web) return false;
    if (!CopyRecord(net, objectdata::Web, *web, newId)) return false;
    const Records routes = net.RoutesOf(webId);
    if (routes.empty()) return true;

    std::vector<std::pair<int, int>> newIdOf;
    Ids work;
    for (Record* route : routes) {
        int copy = 0;
        if (!CopyRouteObject(net, route->id, ConnectOf(*route), copy)) return false;
        newIdOf.emplace_back(route->id, copy);
        work.insert(ConnectOf(*route) == 0 ? work.begin() : work.end(), copy);
    }
    for (const int id : work) {
        int connect = ConnectOf(*net.Route(id));
        if (connect != 0) {
            int mapped = 0;
            for (const auto& [source, copy] : newIdOf)
                if (source == connect) mapped = copy;
            if (mapped == 0) return false;
            connect = mapped;
        }
        if (!ChangeConnectRoute(net, id, connect, webId, newId)) return false;
    }
    for (const Record* node : net.All(objectdata::Node)) {
        Ids touching;
        if (!net.GetConnectALlSpanToNode(node->id, touching) && !DeleteNodeObject(net, node->id)) return false;
    }
    for (const Type type : {objectdata::Calcfig, objectdata::Drawfig, objectdata::Sheetfig, objectdata::DivideSpanRec,
                            objectdata::SubSecRec}) {
        for (const int id : Network::IdsOf(net.Linked(type, 0, webId))) {
            int copyId = 0;
            Record* const copy = CopyRecord(net, type, *net.Find(type, id), copyId);
            if (!copy) return false;
            OwnerOf(*copy) = newId;
        }
    }
    return true;
}

} // namespace reference
