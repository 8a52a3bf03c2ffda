// Water that enters and leaves the nets beside what their own areas yield.
#include "Keys.h"
#include "Town.h"

namespace town {
namespace {

// From the town uphill, at the top of a route. Its areas are told by ground, as the coefficients are.
void AddAreaInflow(CObjectManager& design, const Plan& plan, const Route& route, long order)
{
    const Span& span = plan.TopSpan(route);
    long id = 0;
    design.CreateAreaInq(route.id,
                         Keys()
                             .Number(L"arspanid", span.id)
                             .Number(L"arspannum", span.number)
                             .Text(L"arsecrecname", kSections[span.section].name)
                             .Real(L"arinv", span.upperInvert)
                             .Real(L"arlength", 260)
                             .Real(L"ararrivetime", 8.5)
                             .Text(L"arouttext", L"区域外流入 [M:MHOLENO]")
                             .Number(L"order", order),
                         &id);
    for (const long ground : {2, 1})
        design.CreateInareaset(id, Keys()
                                       .Number(L"iasratiosetnum", ground)
                                       .Real(L"iasarea", 0.8 * static_cast<double>(ground))
                                       .Number(L"iashouser", 6)
                                       .Number(L"iashousel", 4));
}

// To a net that is not part of this design, at the lower end of a route.
void AddAreaOutflow(CObjectManager& design, const Plan& plan, const Route& route, long order)
{
    const Span& span = plan.LastSpan(route);
    long id = 0;
    design.CreateAreaOutq(route.id,
                          Keys()
                              .Number(L"aospanid", span.id)
                              .Number(L"aospannum", span.number)
                              .Text(L"aosecrec", kSections[span.section].name)
                              .Real(L"aoinv", span.lowerInvert)
                              .Text(L"aoouttext", L"区域外流出 [M:ROUTENUM]号線")
                              .Number(L"order", order),
                          &id);
    for (const long ground : {1, 4})
        design.CreateOutareaset(
            id, Keys().Number(L"oasratiosetnum", ground).Real(L"oasarea", 0.35).Number(L"oashousel", 2));
}

} // namespace

void MakeFlows(CObjectManager& design, const Plan& plan)
{
    long areaInflows = 0;
    long areaOutflows = 0;
    long fixed = 0;
    long mountain = 0;
    long outflows = 0;
    for (const Route& route : plan.routes) {
        const Span& top = plan.TopSpan(route);
        const bool isHead = route.spansAbove == static_cast<int>(route.spans.size());
        const bool isStorm = plan.WebOf(route).disposalType == 2;
        if (isHead && route.number % 4 == 0) AddAreaInflow(design, plan, route, ++areaInflows);
        if (isStorm && route.number % 6 == 5) AddAreaOutflow(design, plan, route, ++areaOutflows);
        if (!isStorm && route.number % 3 == 0) // works and schools
            design.CreateFixInq(route.id, Keys()
                                              .Number(L"fxspanid", top.id)
                                              .Number(L"fxspannum", top.number)
                                              .Real(L"fxinq", 0.002 * route.number)
                                              .Real(L"fxinv", top.upperInvert)
                                              .Text(L"fxsecrecname", kHousePipe.name)
                                              .Text(L"fxouttext", L"工場排水 Q=[M:FIXINQQR]")
                                              .Number(L"order", ++fixed));
        if (isStorm && isHead && route.number % 2 == 0)
            design.CreateMountInq(route.id, Keys()
                                                .Number(L"mtspanid", top.id)
                                                .Number(L"mtspannum", top.number)
                                                .Real(L"mtarea", 3.5)
                                                .Real(L"mtlength", 180)
                                                .Real(L"mtslant", 0.12)
                                                .Text(L"mtouttext", L"山地流入 [M:MOUNTINQAREA]ha")
                                                .Number(L"order", ++mountain));
        if (isStorm && route.isMain && !isHead)
            design.CreateOutq(route.id, Keys()
                                            .Number(L"oqspanid", top.id)
                                            .Number(L"oqspannum", top.number)
                                            .Text(L"oqsecrecname", L"HPφ500")
                                            .Real(L"oqoutq", 0.045)
                                            .Real(L"oqinv", top.upperInvert)
                                            .Text(L"oqouttext", L"雨水吐 [M:OUTQQR]")
                                            .Number(L"order", ++outflows));
    }
    // Area that drains to a span from elsewhere, beside what lies along it.
    for (const Span& span : plan.spans)
        if (span.number == 2 && span.route % 4 == 1)
            design.CreateAreatset(span.id, Keys().Real(L"atarea", 0.25).Number(L"atratiosetnum", 4));
}

} // namespace town
