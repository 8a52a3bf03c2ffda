// Hanging routes elsewhere, and what follows a route's place: connect numbers, manhole numbers, its direction.

#include "network/RouteChain.h"

using obmgr::Id32;
using obmgr::LowerNodeOf;
using obmgr::UpperNodeOf;

bool CObjectManager::ConnectRoute(long routeId, long connectId)
{
    CRoute* const route = m_Route.Find(routeId);
    if (!route) return false;
    long end = 0;
    const bool isAtFlowEnd = Id32(connectId) == 0;
    // A web without a flow end leaves the spans as they are.
    if (!isAtFlowEnd || GetFlowEndNodeId(obmgr::WebOf(*route), end)) {
        CTypedPtrList<CObList, CSpan*> spans;
        if (!GetSortSpanInRoute(routeId, spans, true)) return false;
        CSpan& lowest = *spans.GetHead();
        if (!isAtFlowEnd || LowerNodeOf(lowest) != end) DeleteNodeObject(LowerNodeOf(lowest));
        if (!isAtFlowEnd && !GetMostUpperNodeId(connectId, end)) return false;
        lowest.SetLowerNodeId(static_cast<unsigned long>(end));
    }
    route->SetConnectId(static_cast<unsigned long>(connectId));
    return true;
}

bool CObjectManager::ChangeConnectRoute(long routeId, long connectId, [[maybe_unused]] long oldWebId, long newWebId)
{
    CRoute* const route = m_Route.Find(routeId);
    if (!route || !HangRoute(*route, connectId, newWebId)) return false;
    SetUpperRouteObject(routeId, newWebId);
    return true;
}

bool CObjectManager::HangRoute(CRoute& route, long connectId, long newWebId)
{
    route.SetConnectId(static_cast<unsigned long>(connectId));
    CTypedPtrList<CObList, CSpan*> spans;
    if (!GetSortSpanInRoute(route.GetId32(), spans, true)) return false;
    CSpan& lowest = *spans.GetHead();
    long end = 0;
    if (Id32(connectId) != 0) {
        if (!GetSortSpanInRoute(connectId, spans, true)) return false;
        end = UpperNodeOf(*spans.GetTail());
    } else if (obmgr::IsLinkedTo(m_Route, obmgr::kWebOfRoute, newWebId)) {
        if (!GetFlowEndNodeId(newWebId, end)) return false;
    } else if (!CreateNode(CArray<CKeyValue, CKeyValue>(), &end)) {
        return false;
    }
    // The node that the route ended at stays, also when no span touches it any more: callers rely on it.
    lowest.SetLowerNodeId(static_cast<unsigned long>(end));
    route.SetWebId(static_cast<unsigned long>(newWebId));
    return true;
}

void CObjectManager::UpdateConnectRouteNum(long webId)
{
    for (CRoute* route : obmgr::LinkedTo(m_Route, obmgr::kWebOfRoute, webId)) {
        if (obmgr::ConnectOf(*route) == 0) continue;
        const CRoute* const below = m_Route.Find(obmgr::ConnectOf(*route));
        if (below && below->GetSubAttributeInt(L"rtstate", 0) == 1)
            route->WriteSubAttribute(L"connectnum", below->GetSubAttribute(L"routenum"));
    }
}

void CObjectManager::ReverseSpanInRoute(long routeId)
{
    for (CSpan* span : obmgr::LinkedTo(m_Span, obmgr::kRouteOfSpan, routeId)) {
        const unsigned long upper = span->GetUpperNodeId();
        span->SetUpperNodeId(span->GetLowerNodeId());
        span->SetLowerNodeId(upper);
        if (!span->GetSubAttribute(L"csx").IsEmpty()) {
            constexpr const wchar_t* kEnds[][2] = {{L"csx", L"cex"}, {L"csy", L"cey"}, {L"csz", L"cez"}};
            for (const auto& [startKey, endKey] : kEnds) {
                const CString start = span->GetSubAttribute(startKey);
                span->WriteSubAttribute(startKey, span->GetSubAttribute(endKey));
                span->WriteSubAttribute(endKey, start);
            }
        }
        // Seen from the other end an arc bends to the other side.
        if (!span->GetSubAttribute(L"spradt").IsEmpty() && span->GetSubAttributeDouble(L"spradt", 0.0) > 0)
            span->WriteSubAttribute(L"sparcdir", span->GetSubAttributeInt(L"sparcdir", 0) != 0 ? L"0" : L"1");
    }
    CTypedPtrList<CObList, CSpan*> spans;
    if (!GetSortSpanInRoute(routeId, spans, false)) return;
    int number = 0;
    for (CSpan* span : spans)
        span->WriteSubAttributeInt(L"spno", ++number);
}

void CObjectManager::UpdateManHoleNumSameRouteNum(long routeId, CStringArray& oldNumbers, CStringArray& newNumbers,
                                                  bool lowestFirst)
{
    const CRoute* const route = m_Route.Find(routeId);
    CTypedPtrList<CObList, CSpan*> spans;
    if (!route || !GetSortSpanInRoute(routeId, spans, lowestFirst)) return;
    const CString routeNumber = route->GetSubAttribute(L"routenum");
    int number = 0;
    for (const CSpan* span : spans) {
        ++number;
        CNode* const node = m_Node.Find(UpperNodeOf(*span));
        if (!node) continue;
        CString text;
        text.Format(L"%s-%d", routeNumber, number);
        oldNumbers.Add(node->GetSubAttribute(L"mholeno"));
        node->WriteSubAttribute(L"mholeno", text);
        newNumbers.Add(text);
    }
}

void CObjectManager::ReverseIdList(CList<long, long>& ids) const
{
    const std::vector<long> values(ids.begin(), ids.end());
    ids.RemoveAll();
    for (const long id : values)
        ids.AddHead(id);
}
