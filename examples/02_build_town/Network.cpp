// The net: webs with their nodes, routes and spans, and the areas that drain to the spans.
#include "Keys.h"
#include "Town.h"

#include <string>

namespace town {
namespace {

CString NumberText(long number)
{
    CString text;
    text.Format(L"%d", number);
    return text;
}

// Every manhole bears the number of the span that leaves it, "汚12-3"; where the water ends it has a name.
void MakeNodes(CObjectManager& design, Plan& plan)
{
    std::vector<const Span*> leaving(plan.nodes.size());
    for (const Span& span : plan.spans)
        leaving[static_cast<std::size_t>(span.upper)] = &span;
    std::vector<long> order(plan.webs.size());
    CList<long, long> capIds;
    design.GetManholecapcodeIdList(capIds);

    for (std::size_t i = 0; i < plan.nodes.size(); ++i) {
        Node& node = plan.nodes[i];
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
        design.CreateNode(Keys()
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
                              .Number(L"order", order[static_cast<std::size_t>(node.web)]),
                          &node.id);
    }
}

void MakeWebsAndRoutes(CObjectManager& design, Plan& plan)
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
        // A route names the one that it joins, and so comes after it.
        for (const int r : web.routes) {
            Route& route = plan.routes[static_cast<std::size_t>(r)];
            const Route* const joined = route.joins < 0 ? nullptr : &plan.routes[static_cast<std::size_t>(route.joins)];
            design.CreateRoute(web.id, joined ? joined->id : 0,
                               Keys()
                                   .Text(L"routenum", NumberText(route.number))
                                   .Number(L"rttype", route.isMain ? 0 : 1)
                                   .Number(L"rtstate", 1)
                                   .Text(L"connectnum", joined ? NumberText(joined->number) : CString(web.end))
                                   .Number(L"floworder", route.flowOrder)
                                   .Text(L"rtcomment", route.isMain ? L"幹線" : L"")
                                   .Number(L"order", route.number),
                               &route.id);
        }
        design.GetWebObjectOriginal(web.id)->WriteSubAttributeInt(
            L"webcurrentrouteid", static_cast<int>(plan.routes[static_cast<std::size_t>(web.routes.front())].id));
    }
    CProject* const project = design.GetProjectObjectOriginal();
    project->WriteSubAttributeInt(L"activweb", static_cast<int>(plan.webs.front().id));
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

void MakeSpans(CObjectManager& design, Plan& plan)
{
    for (const Web& web : plan.webs) {
        long order = 0;
        for (const int r : web.routes) {
            const Route& route = plan.routes[static_cast<std::size_t>(r)];
            for (const int s : route.spans) {
                Span& span = plan.spans[static_cast<std::size_t>(s)];
                const Node& upper = plan.Upper(span);
                const Node& lower = plan.Lower(span);
                design.CreateSpan(upper.id, lower.id, route.id,
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
                                      .Number(L"order", ++order),
                                  &span.id);
                FillArea(design, span, web.disposalType);
            }
        }
    }
}

} // namespace

void MakeNetwork(CObjectManager& design, Plan& plan)
{
    MakeNodes(design, plan);
    MakeWebsAndRoutes(design, plan);
    MakeSpans(design, plan);
}

} // namespace town
