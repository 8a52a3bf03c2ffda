// Catchment areas of spans, routes and webs, and the length along the slope.

#include "common/Numeric.h"
#include "network/Links.h"

#include <cmath>

namespace {

// With this "wbareasetflg" the area of a whole route stands on its uppermost span.
constexpr int kAreaOnTop = 0;

} // namespace

int CObjectManager::GetWbareasetflg(long spanId) const
{
    const long webId = GetWebIdFromSpan(m_Span.Find(spanId));
    const CWeb* const web = webId != 0 ? m_Web.Find(webId) : nullptr;
    return web ? web->GetSubAttributeInt(L"wbareasetflg", 0) : 0;
}

bool CObjectManager::GetSpanArea(long spanId, double& area) const
{
    area = 0.0;
    const CSpan* const span = m_Span.Find(spanId);
    if (!span) return false;
    if (span->GetSubAttributeBool(L"spnoarea", false)) return true;
    const std::vector<CAreaSet*> records = obmgr::LinkedTo(m_AreaSet, obmgr::kOwner, spanId);
    for (const CAreaSet* record : records)
        area += record->GetSubAttributeDouble(L"asarea", 0.0);
    return !records.empty();
}

bool CObjectManager::GetRouteArea(long routeId, double& area) const
{
    area = 0.0;
    CTypedPtrList<CObList, CSpan*> spans;
    if (!GetSortSpanInRoute(routeId, spans, false)) return false;
    const bool isOnTop = GetWbareasetflg(spans.GetHead()->GetId32()) == kAreaOnTop;
    bool hasArea = false;
    for (const CSpan* span : spans) {
        double own = 0.0;
        if (GetSpanArea(span->GetId32(), own)) hasArea = true;
        area += own;
        if (isOnTop) break;
    }
    return hasArea;
}

bool CObjectManager::GetWebArea(long webId, double& area) const
{
    bool hasArea = false;
    for (const CRoute* route : obmgr::LinkedTo(m_Route, obmgr::kWebOfRoute, webId)) {
        double own = 0.0;
        if (GetRouteArea(route->GetId32(), own)) hasArea = true;
        area += own;
    }
    return hasArea;
}

bool CObjectManager::GetRouteAreaT(long routeId, double& area, bool flag) const
{
    area = 0.0;
    const CRoute* const route = m_Route.Find(routeId);
    double own = 0.0;
    if (!route || !GetRouteArea(routeId, own)) return false;
    CArray<CRoute*> routes;
    CArray<CRoute*> upstream;
    GetRouteObjectArrayFromWeb(obmgr::WebOf(*route), routes);
    if (GetConnectRoute(routes, routeId, true, false, upstream) == 0) return !flag;
    bool hasArea = false;
    for (const CRoute* upper : upstream) {
        if (GetRouteArea(upper->GetId32(), own)) hasArea = true;
        area += own;
    }
    return hasArea;
}

bool CObjectManager::GetSpanSyakyori(unsigned long spanId, double& length) const
{
    length = 0.0;
    const CSpan* const span = m_Span.Find(obmgr::Id32(spanId));
    if (!span) return false;
    const double run = span->GetSubAttributeDouble(L"splength", 0.0);
    const double rise =
        span->GetSubAttributeDouble(L"lowercentinv", 0.0) - span->GetSubAttributeDouble(L"uppercentinv", 0.0);
    if (!orn_is_zero(run, 1e-5)) length = std::sqrt(run * run + rise * rise);
    return true;
}
