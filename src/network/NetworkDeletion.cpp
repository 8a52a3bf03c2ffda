// Deleting spans, routes and webs. Each operation takes its own set of records along and relinks in its own way; the
// differences are meant, and so is what stays behind.

#include "network/IdMap.h"
#include "network/Links.h"

using obmgr::ConnectOf;
using obmgr::Id32;
using obmgr::LowerNodeOf;
using obmgr::UpperNodeOf;

namespace {

unsigned long AsLink(long id)
{
    return static_cast<unsigned long>(id);
}

// The first record with the number, or null.
CAreaSet* WithNumber(const std::vector<CAreaSet*>& records, int number)
{
    const auto found = std::find_if(records.begin(), records.end(), [&](const CAreaSet* record) {
        return record->GetSubAttributeInt(L"asratiosetnum", 0) == number;
    });
    return found == records.end() ? nullptr : *found;
}

void AddValue(CPipeObject& to, const CPipeObject& from, const wchar_t* key)
{
    to.WriteSubAttributeDouble(key, to.GetSubAttributeDouble(key, 0.0) + from.GetSubAttributeDouble(key, 0.0));
}

} // namespace

bool CObjectManager::ConnectSpan(long firstSpanId, long secondSpanId)
{
    CSpan* const first = m_Span.Find(firstSpanId);
    const CSpan* const second = m_Span.Find(secondSpanId);
    if (!first || !second || obmgr::RouteOf(*first) != obmgr::RouteOf(*second) ||
        LowerNodeOf(*first) != UpperNodeOf(*second))
        return false;
    first->SetLowerNodeId(second->GetLowerNodeId());
    AddValue(*first, *second, L"splength");
    const std::vector<CAreaSet*> kept = obmgr::LinkedTo(m_AreaSet, obmgr::kOwner, firstSpanId);
    for (CAreaSet* record : obmgr::LinkedTo(m_AreaSet, obmgr::kOwner, secondSpanId)) {
        CAreaSet* const same = WithNumber(kept, record->GetSubAttributeInt(L"asratiosetnum", 0));
        if (!same) {
            record->SetSpanId(first->GetObjectId());
            continue;
        }
        for (const wchar_t* key : {L"asarea", L"ashouser", L"ashousel"})
            AddValue(*same, *record, key);
    }
    return DeleteSpanObject(secondSpanId, false);
}

bool CObjectManager::DeleteSpanObject(long spanId, bool leaveRoute)
{
    CSpan* const span = m_Span.Find(spanId);
    if (!span) return false;
    const long upper = UpperNodeOf(*span);
    const long lower = LowerNodeOf(*span);
    const long routeId = obmgr::RouteOf(*span);

    constexpr int kAreaOnTop = 0;
    long second = 0;
    if (GetWbareasetflg(spanId) == kAreaOnTop && IsFirstSpanAndGetSecondSpan(spanId, second) && second != 0) {
        DeleteSpanAreaset(second);
        for (CAreaSet* record : obmgr::LinkedTo(m_AreaSet, obmgr::kOwner, spanId))
            record->SetSpanId(AsLink(second));
    }
    DeleteSpanAreaset(spanId);
    DeleteSpanAreatset(spanId);
    DeleteSpanDrawbelttx(spanId);
    DeleteSpanSpdxfin(spanId);
    if (!m_Span.Remove(span)) return false;
    for (CSpan* above : obmgr::LinkedTo(m_Span, obmgr::kLowerNode, upper))
        above->SetLowerNodeId(AsLink(lower));
    if (!DeleteNodeObject(upper)) return false;
    const bool isLowerUsed =
        obmgr::IsLinkedTo(m_Span, obmgr::kUpperNode, lower) || obmgr::IsLinkedTo(m_Span, obmgr::kLowerNode, lower);
    if (!isLowerUsed && !DeleteNodeObject(lower)) return false;
    if (leaveRoute || obmgr::IsLinkedTo(m_Span, obmgr::kRouteOfSpan, routeId)) return true;
    return DeleteRouteObject(routeId, true);
}

bool CObjectManager::DeleteSpanObjectOnly(long spanId)
{
    CSpan* const span = m_Span.Find(spanId);
    if (!span) return false;
    const long upper = UpperNodeOf(*span);
    const long lower = LowerNodeOf(*span);
    DeleteSpanAreaset(spanId);
    DeleteSpanAreatset(spanId);
    DeleteSpanDrawbelttx(spanId);
    DeleteSpanSpdxfin(spanId);
    if (!m_Span.Remove(span)) return false;
    if (m_Node.Find(lower) && !obmgr::IsLinkedTo(m_Span, obmgr::kLowerNode, lower)) DeleteNodeObject(lower);
    if (m_Node.Find(upper) && !obmgr::IsLinkedTo(m_Span, obmgr::kUpperNode, upper)) DeleteNodeObject(upper);
    return true;
}

// False without spans, and at the first that cannot go.
bool CObjectManager::DeleteSpansOfRoute(long routeId)
{
    CList<long, long> spans;
    if (!GetSpanIdList(routeId, spans)) return false;
    return std::all_of(spans.begin(), spans.end(), [&](long id) { return DeleteSpanObject(id, true); });
}

bool CObjectManager::DeleteRouteObject(long routeId, bool spansGone)
{
    CRoute* const route = m_Route.Find(routeId);
    if (!route || (!spansGone && !DeleteSpansOfRoute(routeId))) return false;
    for (CRoute* tributary : obmgr::LinkedTo(m_Route, obmgr::kConnect, routeId))
        if (obmgr::WebOf(*tributary) == obmgr::WebOf(*route)) tributary->SetConnectId(route->GetConnectId());
    return m_Route.Remove(route) && DeleteRecordsOfRoute(routeId, false);
}

bool CObjectManager::DeleteRouteObjectConnectEnd(long routeId)
{
    CRoute* const route = m_Route.Find(routeId);
    if (!route || !DeleteSpansOfRoute(routeId)) return false;
    const CWeb* const web = m_Web.Find(obmgr::WebOf(*route));
    const CString endName = web ? web->GetSubAttribute(L"wbendrname") : CString();
    for (CRoute* tributary : obmgr::LinkedTo(m_Route, obmgr::kConnect, routeId)) {
        if (obmgr::WebOf(*tributary) != obmgr::WebOf(*route)) continue;
        tributary->SetConnectId(0);
        tributary->WriteSubAttribute(L"connectnum", endName);
    }
    return m_Route.Remove(route) && DeleteRecordsOfRoute(routeId, false);
}

bool CObjectManager::DeleteRouteObjectUpperAll(long routeId, [[maybe_unused]] bool flag)
{
    const CRoute* const route = m_Route.Find(routeId);
    if (!route) return false;
    CList<long, long> routes;
    CList<long, long> list;
    GetRouteIdList(obmgr::WebOf(*route), routes);
    list.AddTail(routeId);
    GetConnectRouteUpperAll(routeId, routes, list);
    return DeleteRouteObjectListAll(obmgr::WebOf(*route), list);
}

bool CObjectManager::DeleteRouteObjectListAll(long webId, const CList<long, long>& routeIds)
{
    long flowEnd = 0;
    if (!GetFlowEndNodeId(webId, flowEnd)) return false;
    const std::vector<long> routes(routeIds.begin(), routeIds.end());
    std::vector<long> spanIds;
    for (const long routeId : routes)
        for (CSpan* span : obmgr::LinkedTo(m_Span, obmgr::kRouteOfSpan, routeId)) {
            if (!m_Span.Find(span->GetId32())) continue; // went with another of its id
            spanIds.push_back(span->GetId32());
            if (!m_Span.Remove(span)) return false;
        }
    for (const long spanId : spanIds) {
        DeleteSpanAreaset(spanId);
        DeleteSpanAreatset(spanId);
        DeleteSpanSpdxfin(spanId);
        DeleteSpanDrawbelttx(spanId);
    }
    for (const long routeId : routes)
        if (CRoute* const route = m_Route.Find(routeId)) m_Route.Remove(route);

    std::vector<std::int32_t> crossings;
    for (const long routeId : routes) {
        CList<long, long> points;
        GetIntPosIdList(routeId, points);
        for (const long id : points)
            if (CIntPos* const point = m_IntPos.Find(id)) {
                crossings.push_back(point->Links()[1]);
                m_IntPos.Remove(point);
            }
    }
    for (const std::int32_t id : crossings)
        if (CInters* const crossing = m_Inters.Find(id)) m_Inters.Remove(crossing);

    for (const auto deleteRecords : {&CObjectManager::DeleteGlchangeByRoute, &CObjectManager::DeleteLateralByRoute,
                                     &CObjectManager::DeleteVjointByRoute, &CObjectManager::DeleteAreaInqByRoute,
                                     &CObjectManager::DeleteAreaOutqByRoute, &CObjectManager::DeleteFixInqByRoute,
                                     &CObjectManager::DeleteMountInqByRoute, &CObjectManager::DeleteOutqByRoute})
        for (const long routeId : routes)
            (this->*deleteRecords)(routeId);
    return obmgr::IsLinkedTo(m_Route, obmgr::kWebOfRoute, webId) || DeleteNodeObject(flowEnd);
}

bool CObjectManager::DeleteWebObject(long webId)
{
    return DeleteWeb(webId, false);
}

bool CObjectManager::DeleteWebObjectForQ7Export(long webId)
{
    return DeleteWeb(webId, true);
}

bool CObjectManager::DeleteWeb(long webId, bool keepCrossings)
{
    long flowEnd = 0;
    if (!GetFlowEndNodeId(webId, flowEnd)) flowEnd = 0;
    CList<long, long> routes;
    GetRouteIdList(webId, routes);
    for (const long routeId : routes) {
        CList<long, long> spans;
        if (!GetSpanIdList(routeId, spans)) return false;
        for (const long spanId : spans) {
            CSpan* const span = m_Span.Find(spanId);
            if (!span || !DeleteNodeObject(UpperNodeOf(*span)) || !m_Span.Remove(span)) return false;
        }
        if (!m_Route.Remove(m_Route.Find(routeId)) || !DeleteRecordsOfRoute(routeId, keepCrossings)) return false;
    }
    if (flowEnd > 0 && !DeleteNodeObject(flowEnd)) return false;
    if (!m_Web.Remove(m_Web.Find(webId))) return false;
    CList<long, long> webs;
    GetWebIdList(webs);
    ReNumberOrderWeb(webs);
    return true;
}
