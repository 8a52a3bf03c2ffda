// Deletes that reach into many tables: what goes, what is relinked, what stays.

#include "reference/NetworkEdits.h"

namespace reference {
namespace {

using namespace objectdata;

// A removal takes all records of the id: a walk over the table does not meet the later ones any more.
bool RemoveMet(Network& net, Type type, const Record& record)
{
    return !net.Find(type, record.id) || net.Remove(type, record.id);
}

// Whether the owner had any.
bool RemoveOwned(Network& net, Type type, int ownerId)
{
    const Records owned = net.Linked(type, 0, ownerId);
    for (const Record* record : owned)
        RemoveMet(net, type, *record);
    return !owned.empty();
}

// By a key that holds the span.
bool RemoveByKey(Network& net, Type type, const wchar_t* key, int spanId)
{
    for (const Record* record : net.All(type))
        if (record->Int(key) == spanId && !RemoveMet(net, type, *record)) return false;
    return true;
}

void CleanSpan(Network& net, int spanId)
{
    DeleteSpanAreaset(net, spanId);
    DeleteSpanAreatset(net, spanId);
    DeleteSpanDrawbelttx(net, spanId);
    DeleteSpanSpdxfin(net, spanId);
}

bool IsLowerNode(Network& net, int nodeId)
{
    return !net.Linked(objectdata::Span, 1, nodeId).empty();
}

bool IsUpperNode(Network& net, int nodeId)
{
    return !net.Linked(objectdata::Span, 0, nodeId).empty();
}

bool DeleteSpansOf(Network& net, int routeId)
{
    const Ids spans = Network::IdsOf(net.SpansOf(routeId));
    if (spans.empty()) return false;
    for (const int id : spans)
        if (!DeleteSpanObject(net, id, true)) return false;
    return true;
}

bool DeleteIntPos(Network& net, int routeId, bool withCrossing)
{
    for (const Record* position : net.All(IntPos)) {
        const int first = position->links[0];
        const int second = position->links[1];
        if (first != routeId && second != routeId) continue;
        const int other = first == routeId ? second : first;
        if (withCrossing && net.Find(Inters, other) && !net.Remove(Inters, other)) return false;
        if (!RemoveMet(net, IntPos, *position)) return false;
    }
    return true;
}

// The eight deletes that go with a route. CAreaOutq is not among them.
bool DeleteRecordsOf(Network& net, int routeId, bool withCrossings)
{
    if (!DeleteIntPos(net, routeId, withCrossings)) return false;
    for (const Type type : {GlChange, Lateral, Vjoint, AreaInq, FixInq, MountInq, Outq})
        if (!DeleteByRoute(net, type, routeId)) return false;
    return true;
}

bool DeleteUnitsOf(Network& net, int nodeId)
{
    for (const Record* unit : net.Linked(Nodeunit, 0, nodeId))
        if (!RemoveMet(net, Nodeunit, *unit)) return false;
    return true;
}

bool DeleteWeb(Network& net, int webId, bool withCrossings)
{
    int flowEnd = 0;
    if (!net.GetFlowEndNodeId(webId, flowEnd)) flowEnd = 0;
    for (const int routeId : Network::IdsOf(net.RoutesOf(webId))) {
        const Ids spans = Network::IdsOf(net.SpansOf(routeId));
        if (spans.empty()) return false;
        for (const int id : spans) {
            Record* const span = net.Span(id);
            if (!span || !DeleteNodeObject(net, UpperNode(*span))) return false;
            if (!net.Remove(objectdata::Span, id)) return false;
        }
        if (!net.Remove(objectdata::Route, routeId)) return false;
        if (!DeleteRecordsOf(net, routeId, withCrossings)) return false;
    }
    if (flowEnd > 0 && !DeleteNodeObject(net, flowEnd)) return false;
    if (!net.Remove(objectdata::Web, webId)) return false;
    int order = 0;
    for (const int id : SortedByOrder(net[objectdata::Web], Network::IdsOf(net.All(objectdata::Web))))
        net.Web(id)->Set(L"order", IntText(++order));
    return true;
}

} // namespace

bool DeleteNodeObject(Network& net, int nodeId)
{
    if (!DeleteUnitsOf(net, nodeId)) return false;
    if (!DeleteIcpInqByNode(net, nodeId)) return false;
    return net.Remove(objectdata::Node, nodeId);
}

bool DeleteIcpInqByNode(Network& net, int nodeId)
{
    for (const Record* inflow : net.Linked(IcpInq, 0, nodeId))
        if (!RemoveMet(net, IcpInq, *inflow)) return false;
    return true;
}

bool ConnectSpan(Network& net, int firstSpanId, int secondSpanId)
{
    Record* const first = net.Span(firstSpanId);
    Record* const second = net.Span(secondSpanId);
    if (!first || !second) return false;
    if (RouteOf(*first) != RouteOf(*second) || LowerNode(*first) != UpperNode(*second)) return false;
    LowerNode(*first) = LowerNode(*second);
    first->Set(L"splength", DoubleText(Double(*first, L"splength") + Double(*second, L"splength")));
    const Records areas = net.Linked(AreaSet, 0, firstSpanId);
    for (Record* moved : net.Linked(AreaSet, 0, secondSpanId)) {
        Record* same = nullptr;
        for (Record* area : areas)
            if (!same && area->Int(L"asratiosetnum") == moved->Int(L"asratiosetnum")) same = area;
        if (!same) {
            OwnerOf(*moved) = firstSpanId;
            continue;
        }
        for (const wchar_t* const key : {L"asarea", L"ashouser", L"ashousel"})
            same->Set(key, DoubleText(Double(*same, key) + Double(*moved, key)));
    }
    return DeleteSpanObject(net, secondSpanId, false);
}

bool DeleteSpanObject(Network& net, int spanId, bool leaveRoute)
{
    Record* const span = net.Span(spanId);
    if (!span) return false;
    const int upper = UpperNode(*span);
    const int lower = LowerNode(*span);
    const int route = RouteOf(*span);
    int second = 0;
    if (net.GetWbareasetflg(spanId) == 0 && net.IsFirstSpanAndGetSecondSpan(spanId, second) && second != 0) {
        DeleteSpanAreaset(net, second);
        for (Record* area : net.Linked(AreaSet, 0, spanId))
            OwnerOf(*area) = second;
    }
    CleanSpan(net, spanId);
    if (!net.Remove(objectdata::Span, spanId)) return false;
    for (Record* above : net.Linked(objectdata::Span, 1, upper))
        LowerNode(*above) = lower;
    if (!DeleteNodeObject(net, upper)) return false;
    if (!IsUpperNode(net, lower) && !IsLowerNode(net, lower) && !DeleteNodeObject(net, lower)) return false;
    if (leaveRoute || !net.SpansOf(route).empty()) return true;
    return DeleteRouteObject(net, route, true);
}

bool DeleteSpanObjectOnly(Network& net, int spanId)
{
    Record* const span = net.Span(spanId);
    if (!span) return false;
    const int lower = net.Node(LowerNode(*span)) ? LowerNode(*span) : 0;
    const int upper = net.Node(UpperNode(*span)) ? UpperNode(*span) : 0;
    CleanSpan(net, spanId);
    if (!net.Remove(objectdata::Span, spanId)) return false;
    if (lower != 0 && !IsLowerNode(net, lower)) DeleteNodeObject(net, lower);
    if (upper != 0 && !IsUpperNode(net, upper)) DeleteNodeObject(net, upper);
    return true;
}

bool DeleteRouteObject(Network& net, int routeId, bool spansGone)
{
    Record* const route = net.Route(routeId);
    if (!route) return false;
    if (!spansGone && !DeleteSpansOf(net, routeId)) return false;
    for (Record* tributary : net.RoutesOf(WebOf(*route)))
        if (ConnectOf(*tributary) == routeId) ConnectOf(*tributary) = ConnectOf(*route);
    if (!net.Remove(objectdata::Route, routeId)) return false;
    return DeleteRecordsOf(net, routeId, true);
}

bool DeleteRouteObjectConnectEnd(Network& net, int routeId)
{
    Record* const route = net.Route(routeId);
    if (!route) return false;
    if (!DeleteSpansOf(net, routeId)) return false;
    const Record* const web = net.Web(WebOf(*route));
    const std::wstring name = web ? web->Get(L"wbendrname") : L"";
    for (Record* tributary : net.RoutesOf(WebOf(*route))) {
        if (ConnectOf(*tributary) != routeId) continue;
        ConnectOf(*tributary) = 0;
        tributary->Set(L"connectnum", name);
    }
    if (!net.Remove(objectdata::Route, routeId)) return false;
    return DeleteRecordsOf(net, routeId, true);
}

bool DeleteRouteObjectUpperAll(Network& net, int routeId)
{
    Record* const route = net.Route(routeId);
    if (!route) return false;
    Ids all;
    net.GetRouteIdList(WebOf(*route), all);
    Ids doomed = {routeId};
    net.GetConnectRouteUpperAll(routeId, all, doomed);
    return DeleteRouteObjectListAll(net, WebOf(*route), doomed);
}

bool DeleteRouteObjectListAll(Network& net, int webId, const Ids& routeIds)
{
    int flowEnd = 0;
    if (!net.GetFlowEndNodeId(webId, flowEnd)) return false;
    Ids spans;
    for (Record* span : net.All(objectdata::Span)) {
        if (!Contains(routeIds, RouteOf(*span))) continue;
        spans.push_back(span->id);
        if (!net.Remove(objectdata::Span, span->id)) return false;
    }
    for (const Type type : {AreaSet, Areatset})
        for (Record* record : net.All(type))
            if (Contains(spans, OwnerOf(*record))) net.Remove(type, record->id);
    for (const Record* record : net.All(Spdxfin))
        if (Contains(spans, record->Int(L"sdispanid"))) net.Remove(Spdxfin, record->id);
    for (const Record* record : net.All(Drawbelttx))
        if (Contains(spans, record->Int(L"dbtspanid"))) net.Remove(Drawbelttx, record->id);
    for (const Record* route : net.All(objectdata::Route))
        if (Contains(routeIds, route->id)) net.Remove(objectdata::Route, route->id);
    Ids crossings;
    for (const Record* position : net.All(IntPos)) {
        if (!Contains(routeIds, position->links[0]) && !Contains(routeIds, position->links[1])) continue;
        crossings.push_back(position->links[1]);
        net.Remove(IntPos, position->id);
    }
    for (const Record* crossing : net.All(Inters))
        if (Contains(crossings, crossing->id)) net.Remove(Inters, crossing->id);
    for (const Type type : {GlChange, Lateral, Vjoint, AreaInq, AreaOutq, FixInq, MountInq, Outq}) {
        for (Record* record : net.All(type)) {
            if (!Contains(routeIds, OwnerOf(*record))) continue;
            if (type == AreaInq) DeleteAreaInqInareaset(net, record->id);
            if (type == AreaOutq) DeleteAreaOutqOutareaset(net, record->id);
            net.Remove(type, record->id);
        }
    }
    return net.GetRouteNumInWeb(webId) > 0 || DeleteNodeObject(net, flowEnd);
}

bool DeleteWebObject(Network& net, int webId)
{
    return DeleteWeb(net, webId, true);
}

bool DeleteWebObjectForQ7Export(Network& net, int webId)
{
    return DeleteWeb(net, webId, false);
}

bool DeleteIntersAndPointByRoute(Network& net, int routeId)
{
    return DeleteIntPos(net, routeId, true);
}

bool DeleteIntersAndPointByRouteForQ7Export(Network& net, int routeId)
{
    return DeleteIntPos(net, routeId, false);
}

bool DeleteByRoute(Network& net, Type type, int routeId)
{
    for (const Record* record : net.Linked(type, 0, routeId)) {
        if (type == AreaInq) DeleteAreaInqInareaset(net, record->id);
        if (type == AreaOutq) DeleteAreaOutqOutareaset(net, record->id);
        if (!RemoveMet(net, type, *record)) return false;
    }
    return true;
}

bool DeleteSpanAreaset(Network& net, int spanId)
{
    return RemoveOwned(net, AreaSet, spanId);
}

bool DeleteSpanAreatset(Network& net, int spanId)
{
    return RemoveOwned(net, Areatset, spanId);
}

bool DeleteSpanSpdxfin(Network& net, int spanId)
{
    return RemoveByKey(net, Spdxfin, L"sdispanid", spanId);
}

bool DeleteSpanDrawbelttx(Network& net, int spanId)
{
    return RemoveByKey(net, Drawbelttx, L"dbtspanid", spanId);
}

bool DeleteAreaInqInareaset(Network& net, int areaInqId)
{
    return RemoveOwned(net, Inareaset, areaInqId);
}

bool DeleteAreaOutqOutareaset(Network& net, int areaOutqId)
{
    return RemoveOwned(net, Outareaset, areaOutqId);
}

} // namespace reference
