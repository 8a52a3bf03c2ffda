// Ways through the tree of routes: down to the outlet, up a main line, the ends of a set, meeting points of two webs.

#include "network/RouteForest.h"

#include <cmath>

using obmgr::ConnectOf;
using obmgr::Id32;

void CObjectManager::GetConnectRouteLowerAll(long routeId, const CList<long, long>& candidates,
                                             CList<long, long>& out) const
{
    if (Id32(routeId) == 0) return;
    const obmgr::IdSet inList = obmgr::IdSet::Of(candidates);
    const std::vector<std::int32_t> way = obmgr::FollowLine(Id32(routeId), [&](std::int32_t id) {
        const CRoute* const route = m_Route.Find(id);
        const std::int32_t below = route ? ConnectOf(*route) : 0;
        return inList.Contains(below) ? below : 0;
    });
    for (std::size_t i = 1; i < way.size(); ++i)
        out.AddTail(way[i]);
}

bool CObjectManager::GetRouteIdListFromTo(long fromRouteId, long toRouteId, long webId, CList<long, long>& out) const
{
    if (Id32(fromRouteId) == Id32(toRouteId)) {
        out.AddTail(fromRouteId);
        return true;
    }
    CList<long, long> routes;
    if (!GetRouteIdList(webId, routes)) return false;
    CList<long, long> way;
    way.AddTail(fromRouteId);
    GetConnectRouteLowerAll(fromRouteId, routes, way);
    const auto isEnd = [&](long id) { return Id32(id) == Id32(toRouteId); };
    const auto end = std::find_if(way.begin(), way.end(), isEnd);
    if (end == way.end()) return false;
    for (auto at = way.begin(); at != end; ++at)
        out.AddTail(*at);
    out.AddTail(toRouteId);
    return true;
}

bool CObjectManager::GetLowRouteId(const CList<long, long>& routeIds, CList<long, long>& out) const
{
    if (routeIds.IsEmpty()) return false;
    const obmgr::IdSet inSet = obmgr::IdSet::Of(routeIds);
    CList<long, long> lowest;
    for (const long id : routeIds) {
        const CRoute* const route = m_Route.Find(id);
        if (route && !inSet.Contains(ConnectOf(*route))) lowest.AddTail(id);
    }
    SortFlowOrder(lowest);
    obmgr::AppendAll(out, lowest);
    return true;
}

bool CObjectManager::GetUpperRouteId(const CList<long, long>& routeIds, CList<long, long>& out) const
{
    bool hasRoute = false;
    obmgr::IdSet connected;
    for (const long id : routeIds)
        if (const CRoute* const route = m_Route.Find(id)) {
            hasRoute = true;
            connected.Insert(ConnectOf(*route));
        }
    if (!hasRoute) return false;
    std::vector<long> heads; // the two lists may be one
    for (const long id : routeIds)
        if (!connected.Contains(Id32(id))) heads.push_back(id);
    obmgr::AppendAll(out, heads);
    return true;
}

void CObjectManager::GetUpperRouteObjectList(long routeId, CList<long, long>& out) const
{
    const CRoute* const route = m_Route.Find(routeId);
    long lowestSpan = 0;
    if (!route || !GetLastSpanFromRoute(routeId, lowestSpan)) return;
    CList<long, long> spans;
    GetUpperSpanObjectList(obmgr::WebOf(*route), lowestSpan, spans);
    obmgr::IdSet listed = obmgr::IdSet::Of(out);
    for (const long id : spans) {
        const std::int32_t other = obmgr::RouteOf(*m_Span.Find(id));
        if (other != Id32(routeId) && listed.Insert(other)) out.AddTail(other);
    }
}

bool CObjectManager::FollowGreatest(long webId, const wchar_t* key, CList<long, long>& out) const
{
    CList<long, long> routes;
    if (!GetRouteIdList(webId, routes)) return false;
    const obmgr::RouteForest forest(m_Route, routes);
    bool isSound = true;
    const std::vector<std::int32_t> line = obmgr::FollowLine(std::int32_t{0}, [&](std::int32_t id) {
        CList<long, long> tributaries;
        forest.ForTributaries(id, [&](std::int32_t tributary) { tributaries.AddTail(tributary); });
        SortFlowOrder(tributaries);
        std::int32_t best = 0;
        double greatest = 0.0;
        for (const long tributary : tributaries) {
            long lowestSpan = 0;
            isSound = isSound && GetLastSpanFromRoute(tributary, lowestSpan);
            if (!isSound) return 0;
            const double value = m_Span.Find(lowestSpan)->GetSubAttributeDouble(key, 0.0);
            if (best != 0 && !(value > greatest)) continue;
            best = Id32(tributary);
            greatest = value;
        }
        return best;
    });
    for (std::size_t i = 1; i < line.size(); ++i)
        out.AddTail(line[i]);
    return isSound;
}

bool CObjectManager::GetRouteBySphst(long webId, CList<long, long>& out) const
{
    return FollowGreatest(webId, L"sphst", out);
}

bool CObjectManager::GetRouteBySphdt(long webId, CList<long, long>& out) const
{
    return FollowGreatest(webId, L"sphfdt", out);
}

bool CObjectManager::GetOverlapRouteFromWebs(long webId, const CList<long, long>& nodeIds, CList<long, long>& outSpans,
                                             CList<long, long>& outNodes) const
{
    const std::vector<long> nodes(nodeIds.begin(), nodeIds.end()); // may be the list that is emptied now
    outNodes.RemoveAll();
    CTypedPtrList<CObList, CSpan*> spans;
    if (!GetSpanFromWeb(webId, spans)) return false;
    const obmgr::IdSet given = obmgr::IdSet::Of(nodes);

    // The starts of the spans by their x, so that a node looks at its neighbours only.
    struct Start {
        double x;
        std::size_t order;
        const CSpan* span;
    };
    std::vector<Start> starts;
    const auto xOf = [](const CNode& node) { return node.GetSubAttributeDouble(L"cx", 0.0); };
    for (const CSpan* span : spans) {
        if (given.Contains(obmgr::UpperNodeOf(*span))) continue;
        const CNode* const start = m_Node.Find(obmgr::UpperNodeOf(*span));
        if (start && !std::isnan(xOf(*start))) starts.push_back({xOf(*start), starts.size(), span});
    }
    std::sort(starts.begin(), starts.end(), [](const Start& a, const Start& b) { return a.x < b.x; });

    std::vector<long> found;
    for (const long nodeId : nodes) {
        const CNode* const node = m_Node.Find(nodeId);
        if (!node) continue;
        constexpr double kReach = 1e-9; // farther than what counts as the same place
        const double x = xOf(*node);
        std::vector<Start> near;
        auto at = std::lower_bound(starts.begin(), starts.end(), x - kReach,
                                   [](const Start& start, double value) { return start.x < value; });
        for (; at != starts.end() && at->x <= x + kReach; ++at)
            if (IsEqualCoordNode(nodeId, obmgr::UpperNodeOf(*at->span))) near.push_back(*at);
        std::sort(near.begin(), near.end(), [](const Start& a, const Start& b) { return a.order < b.order; });
        for (const Start& start : near) {
            found.push_back(start.span->GetId32());
            outNodes.AddTail(nodeId);
        }
    }
    obmgr::AppendAll(outSpans, found);
    return !found.empty();
}

bool CObjectManager::GetMostUpperNode(long webId, CList<long, long>& nodeIds) const
{
    CList<long, long> routes;
    CList<long, long> heads;
    if (!GetRouteIdList(webId, routes) || !GetUpperRouteId(routes, heads)) return false;
    std::vector<long> tops;
    for (const long head : heads) {
        long node = 0;
        if (!GetMostUpperNodeId(head, node)) return false;
        tops.push_back(node);
    }
    obmgr::AppendAll(nodeIds, tops);
    return true;
}

bool CObjectManager::GetMostUpperRouteByNode(long webId, CList<long, long>& routeIds) const
{
    for (const auto entry : SpansOfWeb(webId)) {
        const auto& span = static_cast<const CSpan&>(*m_Span.Untyped().At(entry.position));
        if (!obmgr::IsLinkedTo(m_Span, obmgr::kLowerNode, obmgr::UpperNodeOf(span)))
            routeIds.AddTail(obmgr::RouteOf(span));
    }
    return !routeIds.IsEmpty();
}
