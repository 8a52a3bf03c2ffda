// Deleting what hangs on a route: crossing points, ground lines, laterals, inflows and outflows.

#include "network/Links.h"

bool CObjectManager::DeleteRouteRecords(obmgr::ObjectTable& table, long routeId)
{
    std::vector<CPipeObject*> records;
    table.VisitByLink(obmgr::kOwner, obmgr::Id32(routeId), [&](CPipeObject& record) {
        records.push_back(&record);
        return true;
    });
    return table.RemoveAll(records);
}

bool CObjectManager::DeleteCrossingPoints(long routeId, bool keepCrossings)
{
    CList<long, long> points;
    GetIntPosIdList(routeId, points);
    for (const long id : points) {
        CIntPos* const point = m_IntPos.Find(id);
        if (!point) continue;
        const std::size_t other = point->Links()[0] == obmgr::Id32(routeId) ? 1 : 0;
        CInters* const crossing = keepCrossings ? nullptr : m_Inters.Find(point->Links()[other]);
        if (crossing && !m_Inters.Remove(crossing)) return false;
        if (!m_IntPos.Remove(point)) return false;
    }
    return true;
}

// CAreaOutq records stay behind: settled so.
bool CObjectManager::DeleteRecordsOfRoute(long routeId, bool keepCrossings)
{
    return DeleteCrossingPoints(routeId, keepCrossings) && DeleteGlchangeByRoute(routeId) &&
           DeleteLateralByRoute(routeId) && DeleteVjointByRoute(routeId) && DeleteAreaInqByRoute(routeId) &&
           DeleteFixInqByRoute(routeId) && DeleteMountInqByRoute(routeId) && DeleteOutqByRoute(routeId);
}

bool CObjectManager::DeleteIntersAndPointByRoute(long routeId)
{
    return DeleteCrossingPoints(routeId, false);
}

bool CObjectManager::DeleteIntersAndPointByRouteForQ7Export(long routeId)
{
    return DeleteCrossingPoints(routeId, true);
}

bool CObjectManager::DeleteGlchangeByRoute(long routeId)
{
    return DeleteRouteRecords(m_GlChange.Untyped(), routeId);
}

bool CObjectManager::DeleteLateralByRoute(long routeId)
{
    return DeleteRouteRecords(m_Lateral.Untyped(), routeId);
}

bool CObjectManager::DeleteVjointByRoute(long routeId)
{
    return DeleteRouteRecords(m_Vjoint.Untyped(), routeId);
}

bool CObjectManager::DeleteAreaInqByRoute(long routeId)
{
    for (const CAreaInq* inflow : obmgr::LinkedTo(m_AreaInq, obmgr::kOwner, routeId))
        DeleteAreaInqInareaset(inflow->GetId32());
    return DeleteRouteRecords(m_AreaInq.Untyped(), routeId);
}

bool CObjectManager::DeleteAreaOutqByRoute(long routeId)
{
    for (const CAreaOutq* outflow : obmgr::LinkedTo(m_AreaOutq, obmgr::kOwner, routeId))
        DeleteAreaOutqOutareaset(outflow->GetId32());
    return DeleteRouteRecords(m_AreaOutq.Untyped(), routeId);
}

bool CObjectManager::DeleteFixInqByRoute(long routeId)
{
    return DeleteRouteRecords(m_FixInq.Untyped(), routeId);
}

bool CObjectManager::DeleteMountInqByRoute(long routeId)
{
    return DeleteRouteRecords(m_MountInq.Untyped(), routeId);
}

bool CObjectManager::DeleteOutqByRoute(long routeId)
{
    return DeleteRouteRecords(m_Outq.Untyped(), routeId);
}
