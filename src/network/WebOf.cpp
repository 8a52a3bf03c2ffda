// From a record to the web of the route on which it hangs.

#include "network/IdMap.h"
#include "network/Links.h"

namespace {

long WebOfRoute(const CObjectDataBase<CRoute>& routes, long routeId)
{
    const CRoute* const route = routes.Find(routeId);
    return route ? obmgr::WebOf(*route) : 0;
}

// The web of the first record whose key names the unit.
template <class T>
long WebOfUnit(const CObjectDataBase<CRoute>& routes, const CObjectDataBase<T>& records, const wchar_t* key,
               const CPipeObject* unit)
{
    long webId = 0;
    if (unit)
        records.Untyped().VisitByNumber(key, unit->GetId32(), [&](CPipeObject& record) {
            webId = WebOfRoute(routes, record.Links()[obmgr::kOwner]);
            return false;
        });
    return webId;
}

} // namespace

long CObjectManager::GetWebIdFromSpan(const CSpan* span) const
{
    return span ? WebOfRoute(m_Route, obmgr::RouteOf(*span)) : 0;
}

long CObjectManager::GetWebIdFromNode(const CNode* node) const
{
    return node ? GetWebIdFromNode(node->GetId32()) : 0;
}

long CObjectManager::GetWebIdFromNode(long nodeId) const
{
    const CSpan* const starting = obmgr::FirstLinkedTo(m_Span, obmgr::kUpperNode, nodeId);
    const CSpan* const ending = obmgr::FirstLinkedTo(m_Span, obmgr::kLowerNode, nodeId);
    if (!starting || !ending) return GetWebIdFromSpan(starting ? starting : ending);
    return GetWebIdFromSpan(m_Span.Untyped().IsBefore(*ending, *starting) ? ending : starting);
}

long CObjectManager::GetWebIdFromIcpInq(const CIcpInq* inflow) const
{
    return inflow ? GetWebIdFromNode(inflow->Links()[obmgr::kOwner]) : 0;
}

long CObjectManager::GetWebIdFromAreaSet(const CAreaSet* area) const
{
    return area ? GetWebIdFromSpan(m_Span.Find(area->Links()[obmgr::kOwner])) : 0;
}

long CObjectManager::GetWebIdFromOutq(const COutq* outflow) const
{
    return outflow ? WebOfRoute(m_Route, outflow->Links()[obmgr::kOwner]) : 0;
}

long CObjectManager::GetWebIdFromInters(const CInters* crossing) const
{
    // Of the webs that the crossing has a point in the first in their list counts.
    if (!crossing || !m_Inters.Find(crossing->GetId32())) return 0;
    obmgr::IdSet webs;
    const auto addWebsOf = [&](std::int32_t routeId) {
        if (m_Route.Untyped().HasSharedIds()) {
            for (const CRoute* route : m_Route)
                if (route->GetId32() == routeId) webs.Insert(obmgr::WebOf(*route));
        } else if (const CRoute* const route = m_Route.Find(routeId)) {
            webs.Insert(obmgr::WebOf(*route));
        }
    };
    for (const int link : {0, 1})
        for (const CIntPos* point : obmgr::LinkedTo(m_IntPos, link, crossing->GetId32()))
            addWebsOf(point->Links()[1 - static_cast<std::size_t>(link)]);
    CList<long, long> all;
    GetWebIdList(all);
    for (const long id : all)
        if (webs.Contains(obmgr::Id32(id))) return id;
    return 0;
}

long CObjectManager::GetWebIdFromLaunit(const CLaunit* unit) const
{
    return WebOfUnit(m_Route, m_Lateral, L"launitid", unit);
}

long CObjectManager::GetWebIdFromVacunit(const CVacunit* unit) const
{
    return WebOfUnit(m_Route, m_Vjoint, L"vjinletid", unit);
}

long CObjectManager::GetWebIdFromSecvalve(const CSecvalve* valve) const
{
    return valve ? GetWebIdFromSpan(m_Span.Find(valve->GetSubAttributeInt(L"svspid", 0))) : 0;
}

long CObjectManager::GetWebIdFromOhaul(const COhaul* haul) const
{
    return haul ? GetWebIdFromSpan(m_Span.Find(haul->GetSubAttributeInt(L"ohspid", 0))) : 0;
}

long CObjectManager::GetWebIdFormName(const CString& name) const
{
    const CPipeObject* const web = m_Web.Untyped().FirstByText(L"webname", name.View());
    return web ? web->GetId32() : 0;
}
