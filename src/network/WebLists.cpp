// The spans, routes and nodes of a whole web, and their numbers.

#include "network/IdMap.h"
#include "network/RouteChain.h"

using obmgr::Id32;
using obmgr::LowerNodeOf;
using obmgr::UpperNodeOf;

namespace {

using Entries = std::vector<obmgr::PositionMap::Entry>;

// The first span, in table order, that has no live route; null when all have one.
const CSpan* FirstWithoutRoute(obmgr::TouchedIds& touched, const CObjectDataBase<CRoute>& routes,
                               const CObjectDataBase<CSpan>& spans)
{
    const CSpan* first = nullptr;
    const auto isMissing = [&](std::int32_t id) {
        return !routes.Find(id) && obmgr::IsLinkedTo(spans, obmgr::kRouteOfSpan, id);
    };
    for (const std::int32_t id : touched.Where(isMissing)) {
        const CSpan* const span = obmgr::FirstLinkedTo(spans, obmgr::kRouteOfSpan, id);
        if (!first || spans.Untyped().IsBefore(*span, *first)) first = span;
    }
    return first;
}

} // namespace

// The routes of the web that spans may name: of routes with one id the first is the one that is meant.
template <class Use> void CObjectManager::ForMeantRoutes(long webId, Use&& use) const
{
    obmgr::IdSet done;
    for (const CRoute* route : obmgr::LinkedTo(m_Route, obmgr::kWebOfRoute, webId)) {
        const bool isMeant = !m_Route.Untyped().HasSharedIds() || m_Route.Find(route->GetId32()) == route;
        if (isMeant && done.Insert(route->GetId32())) use(route->GetId32());
    }
}

std::vector<obmgr::PositionMap::Entry> CObjectManager::SpansOfWeb(long webId) const
{
    Entries found;
    ForMeantRoutes(webId, [&](std::int32_t id) {
        const auto entries = m_Span.Untyped().EntriesByLink(obmgr::kRouteOfSpan, id);
        found.insert(found.end(), entries.begin(), entries.end());
    });
    obmgr::SortIntoTableOrder(found);
    return found;
}

bool CObjectManager::CollectSpanFromWeb(long webId, std::vector<obmgr::PositionMap::Entry>& found) const
{
    found = SpansOfWeb(webId);
    const CSpan* const end = FirstWithoutRoute(m_touchedRoutes, m_Route, m_Span);
    if (!end) return true;
    const auto isBehind = [&](const obmgr::PositionMap::Entry& entry) {
        return !m_Span.Untyped().IsBefore(*m_Span.Untyped().At(entry.position), *end);
    };
    found.erase(std::find_if(found.begin(), found.end(), isBehind), found.end());
    return false;
}

bool CObjectManager::GetSpanFromWeb(long webId, CList<long, long>& spanIds) const
{
    Entries found;
    const bool isWhole = CollectSpanFromWeb(webId, found);
    for (const auto entry : found)
        spanIds.AddTail(entry.id);
    return isWhole && !spanIds.IsEmpty();
}

bool CObjectManager::GetSpanFromWeb(long webId, CTypedPtrList<CObList, CSpan*>& spans) const
{
    Entries found;
    const bool isWhole = CollectSpanFromWeb(webId, found);
    for (const auto entry : found)
        spans.AddTail(static_cast<CSpan*>(m_Span.Untyped().At(entry.position)));
    return isWhole && !spans.IsEmpty();
}

bool CObjectManager::GetNodeIdList(long webId, CList<long, long>& nodeIds) const
{
    CTypedPtrList<CObList, CSpan*> spans;
    if (!GetSpanFromWeb(webId, spans)) return false;
    for (const CSpan* span : spans)
        nodeIds.AddTail(UpperNodeOf(*span));
    obmgr::IdSet listed = obmgr::IdSet::Of(nodeIds);
    for (const CSpan* span : spans)
        if (listed.Insert(LowerNodeOf(*span))) nodeIds.AddTail(LowerNodeOf(*span));
    return true;
}

bool CObjectManager::GetRouteObjectListFromWeb(long webId, CTypedPtrList<CObList, CRoute*>& routes, bool rising,
                                               bool sorted) const
{
    CTypedPtrList<CObList, CRoute*> found;
    obmgr::AppendAll(found, obmgr::LinkedTo(m_Route, obmgr::kWebOfRoute, webId));
    if (sorted) SortOrderRoute(found, -1, -1);
    for (CRoute* route : found) {
        if (sorted && !rising)
            routes.AddHead(route);
        else
            routes.AddTail(route);
    }
    return !found.IsEmpty();
}

// Route after route from its lowest end. False when there is none and when a walk fails.
template <class Routes, class Use> bool CObjectManager::WalkRoutes(const Routes& routes, Use&& use) const
{
    for (const CRoute* route : routes) {
        const std::vector<CSpan*> walk = obmgr::WalkUp(obmgr::LinkedTo(m_Span, obmgr::kRouteOfSpan, route->GetId32()));
        if (walk.empty()) return false;
        use(walk);
    }
    return !routes.IsEmpty();
}

bool CObjectManager::GetSpanObjectListFromWeb(long webId, CTypedPtrList<CObList, CSpan*>& spans) const
{
    CTypedPtrList<CObList, CRoute*> routes;
    GetRouteObjectListFromWeb(webId, routes, true, true);
    std::vector<CSpan*> found;
    const auto append = [&](const std::vector<CSpan*>& walk) { found.insert(found.end(), walk.begin(), walk.end()); };
    if (!WalkRoutes(routes, append)) return false;
    obmgr::AppendAll(spans, found);
    return true;
}

bool CObjectManager::GetSpanObjectListFromWebCopy(long webId, CTypedPtrList<CObList, CSpan*>& spans) const
{
    CTypedPtrList<CObList, CRoute*> routes;
    GetConnectRouteSortOrder(webId, 0, routes);
    std::vector<CSpan*> found;
    const auto append = [&](const std::vector<CSpan*>& walk) { found.insert(found.end(), walk.begin(), walk.end()); };
    if (!WalkRoutes(routes, append)) return false;
    for (const CSpan* span : found)
        spans.AddTail(new CSpan(*span));
    return true;
}

bool CObjectManager::GetNodeObjectListFromWeb(long webId, CTypedPtrList<CObList, CNode*>& nodes, bool sorted) const
{
    std::vector<std::int32_t> ids;
    obmgr::IdSet listed;
    if (sorted) {
        CTypedPtrList<CObList, CRoute*> routes;
        GetConnectRouteSortOrder(webId, 0, routes);
        const auto appendNodes = [&](const std::vector<CSpan*>& walk) {
            if (listed.Insert(LowerNodeOf(*walk.front()))) ids.push_back(LowerNodeOf(*walk.front()));
            for (const CSpan* span : walk) {
                ids.push_back(UpperNodeOf(*span));
                listed.Insert(UpperNodeOf(*span));
            }
        };
        if (!WalkRoutes(routes, appendNodes)) return false;
    } else {
        const std::vector<CRoute*> routes = obmgr::LinkedTo(m_Route, obmgr::kWebOfRoute, webId);
        if (routes.empty()) return false;
        for (const CRoute* route : routes)
            for (const CSpan* span : obmgr::LinkedTo(m_Span, obmgr::kRouteOfSpan, route->GetId32()))
                for (const std::int32_t id : {UpperNodeOf(*span), LowerNodeOf(*span)})
                    if (listed.Insert(id)) ids.push_back(id);
    }
    // A pass of its own, so that the waits for the nodes' places overlap.
    for (const std::int32_t id : ids)
        if (CNode* const node = m_Node.Find(id)) nodes.AddTail(node);
    return true;
}

bool CObjectManager::CreateMapLowNodeSpan(long webId,
                                          CMap<long, long&, CList<long, long>*, CList<long, long>*>& spansByNode) const
{
    const std::vector<CRoute*> routes = obmgr::LinkedTo(m_Route, obmgr::kWebOfRoute, webId);
    if (routes.empty()) return false;
    if (!m_Span.IsEmpty()) spansByNode.InitHashTable(static_cast<unsigned>(m_Span.GetCount()));
    for (const CRoute* route : routes)
        for (const CSpan* span : obmgr::LinkedTo(m_Span, obmgr::kRouteOfSpan, route->GetId32())) {
            long node = LowerNodeOf(*span);
            CList<long, long>* list = nullptr;
            if (!spansByNode.Lookup(node, list)) {
                list = new CList<long, long>;
                spansByNode.SetAt(node, list);
            }
            list->AddTail(span->GetId32());
        }
    return !spansByNode.IsEmpty();
}

void CObjectManager::GetSpanFormProject(CList<long, long>& spanIds) const
{
    for (const CSpan* span : m_Span)
        spanIds.AddTail(span->GetId32());
}

int CObjectManager::GetSpanNumInWeb(long webId) const
{
    std::size_t count = 0;
    ForMeantRoutes(webId, [&](std::int32_t id) { count += m_Span.Untyped().CountByLink(obmgr::kRouteOfSpan, id); });
    return static_cast<int>(count);
}

int CObjectManager::GetRouteNumInWeb(long webId) const
{
    return static_cast<int>(m_Route.Untyped().CountByLink(obmgr::kWebOfRoute, Id32(webId)));
}

int CObjectManager::GetRouteObjectArrayFromWeb(long webId, CArray<CRoute*>& routes) const
{
    routes.RemoveAll();
    for (CRoute* route : obmgr::LinkedTo(m_Route, obmgr::kWebOfRoute, webId))
        routes.Add(route);
    return static_cast<int>(routes.GetSize());
}

int CObjectManager::GetRouteObjectArrayFromWeb(long webId, CArray<const CRoute*>& routes) const
{
    routes.RemoveAll();
    for (const CRoute* route : obmgr::LinkedTo(m_Route, obmgr::kWebOfRoute, webId))
        routes.Add(route);
    return static_cast<int>(routes.GetSize());
}

int CObjectManager::GetSpanObjectArrayFromRoute(long routeId, CArray<CSpan*>& spans) const
{
    spans.RemoveAll();
    for (CSpan* span : obmgr::LinkedTo(m_Span, obmgr::kRouteOfSpan, routeId))
        spans.Add(span);
    return static_cast<int>(spans.GetSize());
}
