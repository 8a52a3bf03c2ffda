// The tree of routes from the outlet up: what flows into a route, directly and altogether.

#include "network/RouteForest.h"
#include "store/OrderSort.h"

using obmgr::ConnectOf;
using obmgr::Id32;

namespace {

const auto kItself = [](std::int32_t id) { return id; };
const auto kNothing = [](auto) {};

template <class Element> int AppendTributaries(const CArray<Element*>& routes, long routeId, CArray<Element*>& out)
{
    std::vector<Element*> found; // the two arrays may be one
    for (Element* const route : routes)
        if (route && ConnectOf(*route) == Id32(routeId)) found.push_back(route);
    for (Element* const route : found)
        out.Add(route);
    return static_cast<int>(found.size());
}

// Closes the gaps that taken entries have left; entries that were null before stay.
template <class Element> void CloseGaps(CArray<Element*>& routes, const std::vector<bool>& isTaken)
{
    std::ptrdiff_t kept = 0;
    for (std::ptrdiff_t i = 0; i < routes.GetSize(); ++i)
        if (!isTaken[static_cast<std::size_t>(i)]) routes[kept++] = routes[i];
    routes.SetSize(kept);
}

} // namespace

int CObjectManager::GetConnectRoute(long routeId, const CList<long, long>& candidates, CList<long, long>& out) const
{
    std::vector<long> found; // the two lists may be one
    for (const long id : candidates) {
        const CRoute* const route = m_Route.Find(id);
        if (route && ConnectOf(*route) == Id32(routeId)) found.push_back(id);
    }
    obmgr::AppendAll(out, found);
    return static_cast<int>(out.GetCount());
}

int CObjectManager::GetConnectRouteAll(long routeId, CList<long, long>& out) const
{
    m_Route.Untyped().AppendIdsByLink(obmgr::kConnect, Id32(routeId), out);
    return static_cast<int>(out.GetCount());
}

bool CObjectManager::GetNextRouteId(long routeId, const CList<long, long>& candidates, CList<long, long>& out) const
{
    CList<long, long> found;
    if (GetConnectRoute(routeId, candidates, found) == 0) return false;
    SortFlowOrder(found);
    obmgr::AppendAll(out, found);
    return true;
}

bool CObjectManager::GetNextRouteIdAll(long routeId, CList<long, long>& out) const
{
    CList<long, long> found;
    if (GetConnectRouteAll(routeId, found) == 0) return false;
    SortFlowOrder(found);
    obmgr::AppendAll(out, found);
    return true;
}

int CObjectManager::GetConnectRoute(const CArray<CRoute*>& routes, long routeId, CArray<CRoute*>& out) const
{
    return AppendTributaries(routes, routeId, out);
}

int CObjectManager::GetConnectRoute(const CArray<const CRoute*>& routes, long routeId, CArray<const CRoute*>& out) const
{
    return AppendTributaries(routes, routeId, out);
}

int CObjectManager::GetConnectRoute(CArray<CRoute*>& routes, long routeId, bool recursive, bool sort,
                                    CArray<CRoute*>& out) const
{
    return TakeConnected(routes, routeId, recursive, sort, out);
}

int CObjectManager::GetConnectRoute(CArray<const CRoute*>& routes, long routeId, bool recursive, bool sort,
                                    CArray<const CRoute*>& out) const
{
    return TakeConnected(routes, routeId, recursive, sort, out);
}

// A matched route leaves the input, so that each is listed once, on a ring too.
template <class Element>
int CObjectManager::TakeConnected(CArray<Element*>& routes, long routeId, bool recursive, bool sort,
                                  CArray<Element*>& out) const
{
    // Where the routes that flow into each stand in the array: the first place and, behind each place, the next one.
    constexpr std::ptrdiff_t kEnd = -1;
    const auto size = static_cast<std::size_t>(routes.GetSize());
    obmgr::IdMap<std::ptrdiff_t> firstPlusOne(size);
    std::vector<std::ptrdiff_t> next(size, kEnd);
    for (std::size_t i = 0; i < size; ++i) {
        const Element* const route = routes[static_cast<std::ptrdiff_t>(i)];
        if (!route) continue;
        std::ptrdiff_t& first = firstPlusOne[ConnectOf(*route)];
        next[i] = first - 1; // the last place of the array comes first
        first = static_cast<std::ptrdiff_t>(i) + 1;
    }
    std::vector<bool> isTaken(size);

    CArray<Element*> found;
    const auto take = [&](std::int32_t id) {
        CArray<Element*> taken;
        if (std::ptrdiff_t* const first = firstPlusOne.Find(id)) {
            for (std::ptrdiff_t i = *first - 1; i != kEnd; i = next[static_cast<std::size_t>(i)]) {
                taken.Add(routes[i]);
                isTaken[static_cast<std::size_t>(i)] = true;
            }
            *first = 0;
        }
        if (sort && !taken.IsEmpty()) sort_route_by_floworder(taken, 0, static_cast<long>(taken.GetUpperBound()));
        found.Append(taken);
        return taken;
    };
    std::vector<Element*> open; // whose tributaries are still to come, the next one last
    const auto takeAndOpen = [&](std::int32_t id) {
        const CArray<Element*> taken = take(id);
        if (recursive) open.insert(open.end(), taken.begin(), taken.end());
        return !taken.IsEmpty();
    };
    const bool hasAny = takeAndOpen(Id32(routeId));
    while (!open.empty()) {
        const Element* const route = open.back();
        open.pop_back();
        takeAndOpen(route->GetId32());
    }
    if (!hasAny) return 0;
    CloseGaps(routes, isTaken);
    out.Append(found); // last: the two arrays may be one
    return static_cast<int>(out.GetSize());
}

void CObjectManager::GetConnectRouteUpperAll(long routeId, const CList<long, long>& candidates,
                                             CList<long, long>& out) const
{
    const obmgr::RouteForest forest(m_Route, candidates);
    forest.Walk(Id32(routeId), kNothing, [&](std::int32_t id) { out.AddTail(id); });
}

void CObjectManager::GetConnectRouteUpperAll(
    long routeId, const CMap<long, long&, CList<long, long>*, CList<long, long>*>& candidatesByConnectId,
    CList<long, long>& out) const
{
    const auto children = [&](std::int32_t id, auto&& push) {
        long key = id;
        CList<long, long>* tributaries = nullptr;
        if (!candidatesByConnectId.Lookup(key, tributaries) || !tributaries) return;
        for (const long tributary : *tributaries)
            push(Id32(tributary));
    };
    obmgr::WalkUpstream<std::int32_t>(Id32(routeId), kItself, children, kNothing,
                                      [&](std::int32_t id) { out.AddTail(id); });
}

void CObjectManager::GetConnectRouteUpperAllByOrder(long routeId, const CList<long, long>& candidates,
                                                    CList<long, long>& out) const
{
    const obmgr::RouteForest forest(m_Route, candidates);
    std::vector<long> found; // the two lists may be one
    forest.Walk(
        Id32(routeId), [&](std::int32_t id) { found.push_back(id); }, kNothing);
    obmgr::AppendAll(out, found);
}

void CObjectManager::GetConnectRouteSortOrder(long webId, long routeId, CTypedPtrList<CObList, CRoute*>& routes) const
{
    const auto children = [&](std::int32_t id, auto&& push) {
        CTypedPtrList<CObList, CRoute*> tributaries;
        for (CRoute* route : obmgr::LinkedTo(m_Route, obmgr::kConnect, id))
            if (obmgr::WebOf(*route) == Id32(webId)) tributaries.AddTail(route);
        SortFlowOrder(tributaries);
        for (CRoute* route : tributaries)
            push(route);
    };
    obmgr::WalkUpstream<CRoute*>(
        Id32(routeId), [](const CRoute* route) { return route->GetId32(); }, children,
        [&](CRoute* route) { routes.AddTail(route); }, kNothing);
}

void CObjectManager::SetUpperRouteObject(long routeId, long webId)
{
    const auto children = [&](std::int32_t id, auto&& push) {
        for (CRoute* route : obmgr::LinkedTo(m_Route, obmgr::kConnect, id))
            push(route);
    };
    obmgr::WalkUpstream<CRoute*>(
        Id32(routeId), [](const CRoute* route) { return route->GetId32(); }, children,
        [&](CRoute* route) { route->SetWebId(static_cast<unsigned long>(webId)); }, kNothing);
}

void CObjectManager::ReSetRouteSortOrder(long webId, long connectId)
{
    const auto renumber = [&](std::int32_t id, auto&& push) {
        CTypedPtrList<CObList, CRoute*> group;
        for (CRoute* route : obmgr::LinkedTo(m_Route, obmgr::kConnect, id))
            if (obmgr::WebOf(*route) == Id32(webId)) group.AddTail(route);
        SortFlowOrder(group);
        // A single route gets 1, a group starts at 2: settled so.
        int number = group.GetCount() == 1 ? 1 : 2;
        for (CRoute* route : group) {
            route->WriteSubAttributeInt(L"floworder", number++);
            push(route);
        }
    };
    obmgr::WalkUpstream<CRoute*>(
        Id32(connectId), [](const CRoute* route) { return route->GetId32(); }, renumber, kNothing, kNothing);
}
