// Label functions for the longitudinal drawings: which routes they show, how many pages there are, their scales.
#include "macro/LabelFunctions.h"

#include "macro/LabelText.h"
#include "resources/Resources.h"

#include <algorithm>
#include <set>

namespace kelmacro {

using namespace obmgr;

namespace {

CString RouteNumber(const CObjectManager* manager, const CSpan& span)
{
    const CRoute* const route = FindForLabel<CRoute>(manager, span.Links()[kRouteOfSpan]);
    return route ? route->GetSubAttribute(L"routenum") : CString();
}

// "1" or "1~2"; empty for a layout that shows no route.
CString RoutesOfLayout(const CObjectManager* manager, const CProfilelayout& layout)
{
    const CSpan* const start = FindForLabel<CSpan>(manager, layout.GetSubAttributeInt(L"ploutstspid", 0));
    const CSpan* const end = FindForLabel<CSpan>(manager, layout.GetSubAttributeInt(L"ploutendspid", 0));
    if (!start || !end || !FindForLabel<CRoute>(manager, start->Links()[kRouteOfSpan])) return CString();
    CString first = RouteNumber(manager, *start);
    if (start->Links()[kRouteOfSpan] == end->Links()[kRouteOfSpan]) return first;
    return first + ResourceText(IDS_LABEL_ROUTE_RANGE) + RouteNumber(manager, *end);
}

template <class Layouts> bool ShowRoutes(const CObjectManager* manager, const Layouts& layouts, CString& out)
{
    out.Empty();
    if (!manager) return false;
    for (const CProfilelayout* layout : layouts) {
        const CString routes = layout ? RoutesOfLayout(manager, *layout) : CString();
        if (routes.IsEmpty()) continue;
        if (!out.IsEmpty()) out += L",";
        out += routes;
    }
    return !out.IsEmpty();
}

template <class Layouts> bool ShowLastPage(const CObjectManager* manager, const Layouts& layouts, CString& out)
{
    out.Empty();
    if (!manager) return false;
    int last = 0;
    for (const CProfilelayout* layout : layouts)
        if (layout) last = std::max(last, layout->GetSubAttributeInt(L"ploutpage", 0));
    if (last > 0) out.Format(L"%d", last);
    return last > 0;
}

} // namespace

bool ResolveMcDrawnl(const CObjectManager* manager, const CArray<const CProfilelayout*>& layouts, CString& out)
{
    return ShowRoutes(manager, layouts, out);
}

bool ResolveMcDrawnl(const CObjectManager* manager, const CTypedPtrList<CObList, CProfilelayout*>& layouts,
                     CString& out)
{
    return ShowRoutes(manager, layouts, out);
}

bool ResolveMcDrawpageall(const CObjectManager* manager, long webId, CString& out)
{
    out.Empty();
    if (!manager || Id32(webId) == 0) return false;
    std::set<long> owners = {webId};
    // Layouts belong to an arrangement, and its areas tell the webs.
    if (FindForLabel<CWeb>(manager, webId))
        for (const CProfilearea* area : manager->GetProfileareaDb())
            if (area->GetSubAttributeInt(L"pareawebid", 0) == Id32(webId)) owners.insert(area->Links()[kOwner]);
    owners.erase(0);
    CList<long, long> ids;
    for (const long owner : owners)
        manager->GetProfilelayoutIdList(owner, ids);
    CArray<const CProfilelayout*> layouts;
    for (const long id : ids)
        layouts.Add(FindForLabel<CProfilelayout>(manager, id));
    return ShowLastPage(manager, layouts, out);
}

bool ResolveMcDrawpageall(const CObjectManager* manager, const CArray<const CProfilelayout*>& layouts, CString& out)
{
    return ShowLastPage(manager, layouts, out);
}

bool ResolveMcDrawpageall(const CObjectManager* manager, const CTypedPtrList<CObList, CProfilelayout*>& layouts,
                          CString& out)
{
    return ShowLastPage(manager, layouts, out);
}

bool ResolveMcDrawscale(const CObjectManager* manager, long drawformdatId, bool horizontal, CString& out)
{
    constexpr wchar_t kDigits[] = L"sclmkfig";
    out.Empty();
    const CDrawformdat* const format = FindForLabel<CDrawformdat>(manager, drawformdatId);
    if (!format) return false;
    int digits = format->GetSubAttributeInt(kDigits, 0);
    if (!format->IsSubAttribute(kDigits)) {
        const CObjectDataBase<CDrawfig>& drawfigs = manager->GetDrawfigDb();
        if (!drawfigs.IsEmpty()) digits = (*drawfigs.begin())->GetSubAttributeInt(kDigits, 0);
    }
    const wchar_t* const key = horizontal ? L"dfdxacale" : L"dfdyscale"; // the former as the data has it
    out = FormatDouble(format->GetSubAttributeDouble(key, 0.0), digits);
    return true;
}

bool ResolveMcDrawhscale(const CObjectManager* manager, long drawformdatId, CString& out)
{
    return ResolveMcDrawscale(manager, drawformdatId, true, out);
}

bool ResolveMcDrawvscale(const CObjectManager* manager, long drawformdatId, CString& out)
{
    return ResolveMcDrawscale(manager, drawformdatId, false, out);
}

} // namespace kelmacro
