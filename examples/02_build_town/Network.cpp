// The net: webs with their routes, spans and nodes, and the areas that drain to the spans.
//
// Here the net takes shape before anything is known of it but what flows into what:
//   - CreateRouteSpanNode makes a route with one span, which flows into the top of another route or into the flow end;
//   - DivideSpan, CreateMultiSpanNode and AddSpan are three ways to give it more spans; each net uses another;
//   - CopyAllUpperRouteObject copies a district: a route and all that flows into it;
//   - ReSetFlowEndNode moves the outlet of a net to another place, and turns round what now flows the other way;
//   - no list says which spans a route has, in which order: GetSortSpanInRoute works it out from the nodes.
// Then the values of the plan are written into what was made.
#include "Keys.h"
#include "Town.h"

#include <algorithm>
#include <string>

namespace town {
namespace {

using Ids = CList<long, long>;

CString NumberText(long number)
{
    CString text;
    text.Format(L"%d", number);
    return text;
}

long IdOf(const CPipeObject& object)
{
    return static_cast<long>(object.GetObjectId());
}

void MakeWebs(CObjectManager& design, Plan& plan)
{
    long order = 0;
    for (Web& web : plan.webs) {
        CString part;
        part.Format(L"第%d分区", ++order);
        design.CreateWeb(web.disposalType,
                         Keys()
                             .Text(L"webname", web.name)
                             .Text(L"personname", L"瑞穂 太郎")
                             .Text(L"areaname1", L"瑞穂町")
                             .Text(L"areaname2", part)
                             .Text(L"outareaname", web.end)
                             .Text(L"wbendrname", web.end)
                             .Number(L"disposaltype", web.disposalType)
                             .Text(L"calcstylename", MethodOf(web.disposalType))
                             .Number(L"order", order),
                         &web.id);
    }
    design.GetProjectObjectOriginal()->WriteSubAttributeInt(L"activweb", static_cast<int>(plan.webs.front().id));
}

// A route with all its spans. `joined` is null at the flow end; the first route there makes the node of it.
bool LayRoute(CObjectManager& design, const Plan& plan, Route& route, const Route* joined)
{
    CSpan* top = nullptr;
    const CRoute* const record =
        design.CreateRouteSpanNode(plan.WebOf(route).id, joined ? joined->id : 0,
                                   Keys()
                                       .Text(L"routenum", NumberText(route.number))
                                       .Text(L"connectnum", joined ? NumberText(joined->number) : CString())
                                       .Number(L"floworder", route.flowOrder)
                                       .Number(L"order", route.number),
                                   top);
    if (!record) return false;
    route.id = IdOf(*record);
    const int count = static_cast<int>(route.spans.size());
    Ids spanIds;
    Ids nodeIds;
    switch (plan.WebOf(route).disposalType) {
    case 0: return design.DivideSpan(IdOf(*top), static_cast<unsigned>(count), spanIds);
    case 2: return design.CreateMultiSpanNode(route.id, Keys(), count - 1, spanIds, nodeIds);
    default: return design.AddSpan(route.id, static_cast<unsigned>(count - 1), spanIds);
    }
}

// The streets west of the main street are laid out like those east of it: numbers 4, 7, 8 like 3, 5, 6.
bool CopyDistrict(CObjectManager& design, Plan& plan, const Web& web)
{
    const auto numbered = [&](int number) -> Route& {
        return plan.routes[static_cast<std::size_t>(web.routes[static_cast<std::size_t>(number) - 1])];
    };
    Ids copies; // each route before what flows into it
    if (!design.CopyAllUpperRouteObject(numbered(3).id, numbered(1).id, copies) || copies.GetCount() != 3) return false;
    for (const int number : {4, 7, 8})
        numbered(number).id = copies.RemoveHead();
    return true;
}

bool IsCopied(const Route& route)
{
    return route.web == 0 && (route.number == 4 || route.number == 7 || route.number == 8);
}

// At first the storm water was to leave in the north, by the irrigation canal, where route 2 begins today: routes 1
// and 2 then ran the other way, and what ended at the top of one of them began where that one ended.
const Route* JoinedAtFirst(const Plan& plan, const Web& web, const Route& route)
{
    const Route* const lower = &plan.routes[static_cast<std::size_t>(web.routes[0])];
    const Route* const upper = &plan.routes[static_cast<std::size_t>(web.routes[1])];
    const Route* const joined = route.joins < 0 ? nullptr : &plan.routes[static_cast<std::size_t>(route.joins)];
    if (&route == lower) return upper;
    if (&route == upper || joined == upper) return nullptr;
    return joined == lower ? upper : joined;
}

// The river takes more water than the canal.
bool MoveOutletToRiver(CObjectManager& design, const Plan& plan, const Web& web)
{
    // An outlet and a route must not have one name: both stand in "connectnum".
    if (!design.CheckDuplicateFlowEndName(web.id, web.end)) return false;
    Ids unused;
    return design.ReSetFlowEndNode(plan.routes[static_cast<std::size_t>(web.routes[0])].id, web.end, unused);
}

bool LayRoutes(CObjectManager& design, Plan& plan)
{
    for (Web& web : plan.webs) {
        const bool endsElsewhere = web.disposalType == 2;
        std::vector<int> inOrder = web.routes; // a route comes after the one that it joins
        if (endsElsewhere) std::swap(inOrder[0], inOrder[1]);
        for (const int r : inOrder) {
            Route& route = plan.routes[static_cast<std::size_t>(r)];
            const Route* joined = route.joins < 0 ? nullptr : &plan.routes[static_cast<std::size_t>(route.joins)];
            if (endsElsewhere) joined = JoinedAtFirst(plan, web, route);
            if (!IsCopied(route) && !LayRoute(design, plan, route, joined)) return false;
        }
        if (web.disposalType == 0 && !CopyDistrict(design, plan, web)) return false;
        if (endsElsewhere && !MoveOutletToRiver(design, plan, web)) return false;
        design.GetWebObjectOriginal(web.id)->WriteSubAttributeInt(
            L"webcurrentrouteid", static_cast<int>(plan.routes[static_cast<std::size_t>(web.routes.front())].id));
    }
    return true;
}

// Notes in the plan which records its spans and nodes have become.
bool FindSpansAndNodes(const CObjectManager& design, Plan& plan)
{
    for (const Route& route : plan.routes) {
        CTypedPtrList<CObList, CSpan*> records; // from the top down
        if (!design.GetSortSpanInRoute(route.id, records, false)) return false;
        if (records.GetCount() != static_cast<std::ptrdiff_t>(route.spans.size())) return false;
        std::size_t i = 0;
        for (const CSpan* const record : records) {
            Span& span = plan.spans[static_cast<std::size_t>(route.spans[i++])];
            span.id = IdOf(*record);
            plan.nodes[static_cast<std::size_t>(span.upper)].id = static_cast<long>(record->GetUpperNodeId());
            plan.nodes[static_cast<std::size_t>(span.lower)].id = static_cast<long>(record->GetLowerNodeId());
        }
    }
    return true;
}

void DescribeRoutes(CObjectManager& design, const Plan& plan)
{
    for (const Route& route : plan.routes) {
        const Route* const joined = route.joins < 0 ? nullptr : &plan.routes[static_cast<std::size_t>(route.joins)];
        design.GetRouteObjectOriginal(route.id)->AddSubAttribute(
            Keys()
                .Text(L"routenum", NumberText(route.number))
                .Number(L"rttype", route.isMain ? 0 : 1)
                .Number(L"rtstate", 1)
                .Text(L"connectnum", joined ? NumberText(joined->number) : CString(plan.WebOf(route).end))
                .Number(L"floworder", route.flowOrder)
                .Text(L"rtcomment", route.isMain ? L"幹線" : L"")
                .Number(L"order", route.number));
    }
}

// Every manhole bears the number of the span that leaves it, "汚12-3"; where the water ends it has a name.
void DescribeNodes(CObjectManager& design, const Plan& plan)
{
    std::vector<const Span*> leaving(plan.nodes.size());
    for (const Span& span : plan.spans)
        leaving[static_cast<std::size_t>(span.upper)] = &span;
    std::vector<long> order(plan.webs.size());
    CList<long, long> capIds;
    design.GetManholecapcodeIdList(capIds);

    for (std::size_t i = 0; i < plan.nodes.size(); ++i) {
        const Node& node = plan.nodes[i];
        const Web& web = plan.webs[static_cast<std::size_t>(node.web)];
        CString name = web.end;
        CString code = L"OF";
        if (const Span* const span = leaving[i]) {
            name.Format(L"%s%d-%d", web.prefix, plan.RouteOf(*span).number, span->number);
            const double size = kSections[span->section].height;
            code = size <= 0.2 ? L"0" : size <= 0.45 ? L"1" : size <= 0.8 ? L"2" : L"3";
        }
        CString station;
        station.Format(L"No.%d", ++order[static_cast<std::size_t>(node.web)]);
        design.GetNodeObjectOriginal(node.id)->AddSubAttribute(
            Keys()
                .Text(L"mholeno", name)
                .Real(L"ndnewgl", node.ground)
                .Real(L"ndoldgl", node.oldGround)
                .Real(L"cx", node.x)
                .Real(L"cy", node.y)
                .Real(L"cz", node.ground)
                .Number(L"planesetflg", 1)
                .Text(L"manholecode", code)
                .Real(L"mholedepth", ToMillimetre(node.ground - node.bottom))
                .Real(L"oldmholedepth", ToMillimetre(node.oldGround - node.bottom))
                .Number(L"manholecapid", i % 3 == 0 ? capIds.GetTail() : capIds.GetHead())
                .Text(L"ndstationno", station)
                .Text(L"ndcommentf", code == L"3" ? L"特殊蓋" : L"")
                .Number(L"order", order[static_cast<std::size_t>(node.web)]));
    }
}

// A span comes with one area record, which is filled in here: what lies along the street drains to it.
void FillArea(CObjectManager& design, const Span& span, int disposalType)
{
    CTypedPtrList<CObList, CAreaSet*> areas;
    design.GetAreaSetObjectList(span.id, areas);
    CAreaSet* const area = areas.GetHead();
    area->WriteSubAttributeInt(L"asratiosetnum", 1 + (span.number + span.route) % 3);
    area->WriteSubAttributeDouble(L"asarea", std::round(span.length * 40) / 10000); // hectares: 40 m of depth
    if (disposalType == 2) return;                                                  // rain does not come from houses
    area->WriteSubAttributeInt(L"ashouser", 2 + span.number % 3);
    area->WriteSubAttributeInt(L"ashousel", 1 + span.route % 4);
}

void DescribeSpans(CObjectManager& design, const Plan& plan)
{
    for (const Web& web : plan.webs) {
        long order = 0;
        for (const int r : web.routes) {
            const Route& route = plan.routes[static_cast<std::size_t>(r)];
            for (const int s : route.spans) {
                const Span& span = plan.spans[static_cast<std::size_t>(s)];
                const Node& upper = plan.Upper(span);
                const Node& lower = plan.Lower(span);
                design.GetSpanObjectOriginal(span.id)->AddSubAttribute(
                    Keys()
                        .Number(L"spno", span.number)
                        .Real(L"splength", span.length)
                        .Real(L"spslant", (span.upperInvert - span.lowerInvert) / span.length * 1000)
                        .Real(L"uppercentinv", span.upperInvert)
                        .Real(L"lowercentinv", span.lowerInvert)
                        .Real(L"newgl", upper.ground)
                        .Real(L"oldgl", upper.oldGround)
                        .Text(L"spsecrecname", kSections[span.section].name)
                        .Text(L"calcstylename", MethodOf(web.disposalType))
                        .Real(L"spve", span.velocity)
                        .Real(L"spqu", span.capacity)
                        .Real(L"spqrall", span.flow)
                        .Real(web.disposalType == 2 ? L"rainqrall" : L"sewageqrall", span.flow)
                        .Text(L"spcommentf", route.isMain && span.number == 1 ? L"県道下" : L"")
                        .Real(L"csx", upper.x)
                        .Real(L"csy", upper.y)
                        .Real(L"csz", span.upperInvert)
                        .Real(L"cex", lower.x)
                        .Real(L"cey", lower.y)
                        .Real(L"cez", span.lowerInvert)
                        .Number(L"order", ++order));
                FillArea(design, span, web.disposalType);
            }
        }
    }
}

} // namespace

bool MakeNetwork(CObjectManager& design, Plan& plan)
{
    MakeWebs(design, plan);
    if (!LayRoutes(design, plan) || !FindSpansAndNodes(design, plan)) return false;
    DescribeRoutes(design, plan);
    DescribeNodes(design, plan);
    DescribeSpans(design, plan);
    return true;
}

} // namespace town
