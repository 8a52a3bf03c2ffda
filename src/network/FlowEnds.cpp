// The outlet of a web, moving it, and divide nodes.

#include "network/RouteForest.h"

using obmgr::ConnectOf;
using obmgr::Id32;
using obmgr::LowerNodeOf;

namespace {

// The lower nodes of the spans that are no upper node of them, in span order, until `use` says enough.
template <class Use> void ForFlowEnds(const CTypedPtrList<CObList, CSpan*>& spans, Use&& use)
{
    obmgr::IdSet upper(static_cast<std::size_t>(spans.GetCount()));
    for (const CSpan* span : spans)
        upper.Insert(obmgr::UpperNodeOf(*span));
    for (const CSpan* span : spans)
        if (!upper.Contains(LowerNodeOf(*span)) && !use(LowerNodeOf(*span))) return;
}

} // namespace

bool CObjectManager::GetFlowEndNodeId(long webId, long& nodeId) const
{
    CTypedPtrList<CObList, CSpan*> spans;
    if (!GetSpanFromWeb(webId, spans)) return false;
    bool isFound = false;
    ForFlowEnds(spans, [&](std::int32_t node) {
        nodeId = node;
        isFound = true;
        return false;
    });
    return isFound;
}

bool CObjectManager::GetFlowEndNodeIdList(long webId, CList<long, long>& nodeIds) const
{
    CTypedPtrList<CObList, CSpan*> spans;
    if (!GetSpanFromWeb(webId, spans)) return false;
    obmgr::IdSet listed = obmgr::IdSet::Of(nodeIds);
    ForFlowEnds(spans, [&](std::int32_t node) {
        if (listed.Insert(node)) nodeIds.AddTail(node);
        return true;
    });
    return true;
}

bool CObjectManager::GetFlowEndFixedRoute(long webId, CList<long, long>& routeIds) const
{
    CTypedPtrList<CObList, CRoute*> routes;
    // A web without routes gives true and one of whose routes none qualify false: callers rely on both.
    if (!GetRouteObjectListFromWeb(webId, routes, true, true)) return true;
    bool hasAny = false;
    for (const CRoute* route : routes) {
        if (ConnectOf(*route) != 0 || route->GetSubAttributeInt(L"rtstate", 0) != 1) continue;
        routeIds.AddTail(route->GetId32());
        hasAny = true;
    }
    return hasAny;
}

namespace {

// Hangs a route where the move of an outlet puts it, and marks its direction as settled.
void Settle(const CObjectDataBase<CRoute>& routes, CRoute& route, std::int32_t connectId, const CString& endName)
{
    route.SetConnectId(static_cast<unsigned long>(static_cast<long>(connectId)));
    const CRoute* const below = connectId == 0 ? nullptr : routes.Find(connectId);
    route.WriteSubAttribute(L"connectnum", below ? below->GetSubAttribute(L"routenum") : endName);
    route.WriteSubAttribute(L"rtstate", L"1");
}

// A route joins at the top of its connect route. When the outlet moves to the top of the first route of a path, what
// was the top of a path route becomes the top of the one before it; so whatever joined the former now joins the
// latter. Pairs of a route, 0 for the old flow end, and the route that takes over what joins it, 0 for the new one.
using Successors = std::vector<std::pair<std::int32_t, std::int32_t>>;

} // namespace

bool CObjectManager::ReSetFlowEndNode(long routeId, const CString& name, [[maybe_unused]] CList<long, long>& routeIds)
{
    const CRoute* const start = m_Route.Find(routeId);
    if (!start) return false;
    if (ConnectOf(*start) == 0) return true;
    const long webId = obmgr::WebOf(*start);
    CList<long, long> routes;
    if (!GetRouteIdList(webId, routes)) return false;
    CList<long, long> path;
    path.AddTail(start->GetId32());
    GetConnectRouteLowerAll(routeId, routes, path);

    const obmgr::RouteForest forest(m_Route, routes); // as it is now; what is not on the path changes at most once
    obmgr::IdSet done = obmgr::IdSet::Of(path);
    Successors successors;
    std::int32_t previous = 0;
    for (const long id : path) {
        CRoute* const route = m_Route.Find(id);
        if (!route) continue;
        ReverseSpanInRoute(id);
        const bool heldFlowEnd = ConnectOf(*route) == 0;
        successors.emplace_back(Id32(id), previous);
        if (heldFlowEnd) successors.emplace_back(0, Id32(id));
        Settle(m_Route, *route, previous, name);
        previous = Id32(id);
    }
    for (const auto& [key, successor] : successors)
        forest.ForTributaries(key, [&, to = successor](std::int32_t id) {
            if (done.Insert(id)) Settle(m_Route, *m_Route.Find(id), to, name);
        });
    ReSetRouteSortOrder(webId, 0);
    return true;
}

bool CObjectManager::ReSetFlowEndNodeByNode(long routeId, long nodeId, const CString& name, CList<long, long>& rewired,
                                            CList<long, long>& reversed)
{
    rewired.RemoveAll();
    reversed.RemoveAll();
    const CRoute* const start = m_Route.Find(routeId);
    if (!start) return false;
    const long webId = obmgr::WebOf(*start);
    CList<long, long> routes;
    if (!GetRouteIdList(webId, routes)) return false;
    rewired.AddTail(start->GetId32());
    GetConnectRouteLowerAll(routeId, routes, rewired);
    const CRoute* const end = m_Route.Find(rewired.GetTail());
    if (!end || ConnectOf(*end) != 0) return false;
    long flowEnd = 0;
    if (!GetMostLowerNodeId(end->GetId32(), flowEnd)) return false;
    if (ConnectOf(*start) == 0 && flowEnd == Id32(nodeId)) return true;

    obmgr::IdSet done = obmgr::IdSet::Of(rewired);
    Successors successors;
    std::int32_t previous = 0;
    const std::vector<long> path(rewired.begin(), rewired.end());
    for (const long id : path) {
        CRoute* const route = m_Route.Find(id);
        if (!route) continue;
        long lowest = 0;
        if (route == start && !GetMostLowerNodeId(id, lowest)) return false;
        if (route != start || lowest != Id32(nodeId)) {
            ReverseSpanInRoute(id);
            reversed.AddHead(id);
        }
        const bool heldFlowEnd = ConnectOf(*route) == 0;
        successors.emplace_back(Id32(id), previous);
        if (heldFlowEnd) successors.emplace_back(0, Id32(id));
        Settle(m_Route, *route, previous, name);
        previous = Id32(id);
    }
    for (const auto& [key, successor] : successors) {
        // As they are now, the path included: it is passed over, but equal ones fall differently with it.
        CList<long, long> tributaries;
        for (const CRoute* route : obmgr::LinkedTo(m_Route, obmgr::kConnect, key))
            if (obmgr::WebOf(*route) == webId) tributaries.AddTail(route->GetId32());
        SortFlowOrder(tributaries);
        for (const long id : tributaries) {
            if (!done.Insert(Id32(id))) continue;
            long lowest = 0;
            if (key == 0 && !GetMostLowerNodeId(id, lowest)) return false;
            rewired.AddTail(id);
            // What ends at another flow end of the web stays there.
            if (key != 0 || lowest == flowEnd) Settle(m_Route, *m_Route.Find(id), successor, name);
        }
    }
    ReSetRouteSortOrder(webId, 0);
    return true;
}

bool CObjectManager::IsDivideNode(long nodeId, long& ownerId) const
{
    const CNode* const node = m_Node.Find(nodeId);
    if (!node) return false;
    switch (node->GetSubAttributeInt(L"divno", 0)) {
    case 1: ownerId = node->GetId32(); return true;
    case 2: ownerId = node->GetSubAttributeInt(L"divownerid", 0); return true;
    default: return false;
    }
}

bool CObjectManager::ReleaseDivideNode(long ownerId, CList<long, long>& nodeIds)
{
    if (Id32(ownerId) == 0) return !nodeIds.IsEmpty(); // nodes that belong to no group have 0, or no key
    m_Node.Untyped().VisitByNumber(L"divownerid", ownerId, [&](CPipeObject& node) {
        node.WriteSubAttribute(L"divno", L"0");
        node.WriteSubAttribute(L"divownerid", L"0");
        nodeIds.AddTail(node.GetId32());
        return true;
    });
    return !nodeIds.IsEmpty();
}

bool CObjectManager::CheckDuplicateFlowEndName(long webId, const CString& name) const
{
    bool isFree = true;
    m_Route.Untyped().VisitByText(L"routenum", name.View(), [&](CPipeObject& route) {
        isFree = route.Links()[obmgr::kWebOfRoute] != Id32(webId);
        return isFree;
    });
    return isFree;
}
