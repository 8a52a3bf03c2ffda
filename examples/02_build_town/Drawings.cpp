// How the town is drawn and let out to contractors: drawing formats, layouts of sheets, work areas.
#include "Keys.h"
#include "Town.h"

namespace town {
namespace {

void MakeDrawingFormats(CObjectManager& design)
{
    design.CreateDrawformdat(Keys()
                                 .Text(L"dformname", L"標準縦断 A1")
                                 .Text(L"tltext", L"[M:PRJNAME] [M:WEBNAME] 縦断面図")
                                 .Number(L"order", 1));
    design.CreateDrawformdat(Keys()
                                 .Text(L"dformname", L"縮小縦断 A3")
                                 .Text(L"tltext", L"[M:WEBNAME] 縦断面図")
                                 .Number(L"dfdxacale", 1000)
                                 .Number(L"dfdyscale", 200)
                                 .Number(L"order", 2));
    long order = 0;
    for (const wchar_t* const band :
         {L"測点", L"単距離", L"追加距離", L"計画地盤高", L"現況地盤高", L"管底高", L"土被り"})
        design.CreateDrawbeltdat(Keys().Text(L"dbdname", band).Number(L"order", ++order));
    order = 0;
    for (const wchar_t* const info : {L"管情報（上段）", L"管情報（下段）"})
        design.CreateDrawsecinfodat(Keys().Text(L"dsiname", info).Number(L"order", ++order));
    for (long type = 1; type <= 14; ++type)
        design.CreateDrawfontdat(
            Keys().Number(L"dfttype", type).Text(L"dftname", type % 2 ? L"ゴシック" : L"明朝").Number(L"order", type));
    design.CreateDrawindxfdat(Keys().Text(L"didfile", L"方位記号.dxf"));
    design.CreateDrawintextdat(Keys().Text(L"ditext", L"この図面の高さは東京湾平均海面（T.P.）による。"));

    // One pen for each thing that a longitudinal section shows, all from the default pen.
    CMapStringToString values;
    CMap<int, int, int, int> pens;
    design.GetDefValue(0, L"drawpendat", values);
    design.CreateDrawpendat(CDrawpendat::kFirstType, CDrawpendat::kLastType, values, pens);
}

// The main line from its highest route down to the end of the net.
struct MainLine {
    const Route& top;
    const Route& bottom;
};

MainLine MainLineOf(const Plan& plan, const Web& web)
{
    const Route* top = nullptr;
    for (const int r : web.routes)
        if (const Route& route = plan.routes[static_cast<std::size_t>(r)]; route.isMain) top = &route;
    return {*top, plan.routes[static_cast<std::size_t>(web.routes.front())]};
}

void MakeLayouts(CObjectManager& design, const Plan& plan)
{
    long arrangement = 0;
    design.CreateProfilearang(Keys().Text(L"parangname", L"幹線縦断"), &arrangement);
    long sheets = 0;
    design.CreateSheetarang(Keys().Number(L"sarangtype", 0), &sheets);
    long order = 0;
    for (const Web& web : plan.webs) {
        const MainLine line = MainLineOf(plan, web);
        ++order;
        design.CreateProfilearea(arrangement, Keys()
                                                  .Number(L"pareawebid", web.id)
                                                  .Number(L"pareastrouteid", line.top.id)
                                                  .Number(L"pareaendrouteid", line.bottom.id)
                                                  .Number(L"order", order));
        design.CreateProfilelayout(arrangement, Keys()
                                                    .Number(L"ploutpage", order)
                                                    .Number(L"ploutstspid", plan.TopSpan(line.top).id)
                                                    .Number(L"ploutendspid", plan.LastSpan(line.bottom).id)
                                                    .Real(L"ploutstpos", 40)
                                                    .Number(L"order", order));
        design.CreateSheetarea(sheets, Keys()
                                           .Number(L"sareawebid", web.id)
                                           .Number(L"sareastrouteid", line.top.id)
                                           .Number(L"sareaendrouteid", line.bottom.id)
                                           .Number(L"order", order));
    }
}

// What hangs on a whole web: settings of the works, drawings that stand in its sections, notes in their bands.
void MakeWebSettings(CObjectManager& design, const Plan& plan)
{
    for (const Web& web : plan.webs) {
        const MainLine line = MainLineOf(plan, web);
        const long span = plan.TopSpan(line.bottom).id;
        design.CreateDivideSpanRec(web.id, Keys().Real(L"dsspanlen", web.disposalType == 4 ? 40 : 30));
        design.CreateSubSecRec(web.id, Keys().Real(L"sbdrop", 0.6).Text(L"sbsecname", L"VUφ200"));
        design.CreateRetainauto(web.id, Keys().Number(L"ranum", 1).Real(L"ralimit", 1.5));
        design.CreateTimberauto(web.id, Keys().Number(L"tanum", 1).Real(L"talimit", 1.5));
        design.CreateFounsecauto(web.id, Keys().Number(L"fsanum", 1));
        design.CreateFouncovauto(web.id, Keys().Number(L"fcanum", 2).Real(L"fcalimit", 1.2));
        design.CreateSpdxfin(web.id, Keys().Number(L"sdispanid", span).Text(L"sdifile", L"橋梁断面.dxf"));
        design.CreateDrawbelttx(web.id, Keys().Number(L"dbtspanid", span).Text(L"dbttext", L"県道横断 <要協議>"));
    }
}

// The trunk sewer is let out in two lots, spoil is carried between them.
void MakeWorkAreas(CObjectManager& design, const Plan& plan)
{
    CList<long, long> execIds;
    CList<long, long> roadIds;
    CList<long, long> pavementIds;
    design.GetExecIdList(execIds);
    design.GetRoadcodeIdList(roadIds);
    design.GetAspcodeIdList(pavementIds);
    for (const Web& web : plan.webs) {
        for (const int r : web.routes) {
            const Route& route = plan.routes[static_cast<std::size_t>(r)];
            if (!route.isMain) continue;
            for (const int s : route.spans) {
                const Span& span = plan.spans[static_cast<std::size_t>(s)];
                design.CreateExecdivide(route.number % 2 ? execIds.GetHead() : execIds.GetTail(),
                                        Keys()
                                            .Number(L"execwebid", web.id)
                                            .Number(L"execrouteid", route.id)
                                            .Number(L"execaspid", pavementIds.GetHead())
                                            .Number(L"execroadid", roadIds.GetTail())
                                            .Number(L"execspanid", span.id)
                                            .Number(L"execuppernodeid", plan.Upper(span).id)
                                            .Number(L"execlowernodeid", plan.Lower(span).id));
            }
        }
        const MainLine line = MainLineOf(plan, web);
        design.CreateLcarry(execIds.GetHead(), Keys()
                                                   .Number(L"lcrywebid", web.id)
                                                   .Number(L"lcryuprouteid", line.top.id)
                                                   .Number(L"lcrylorouteid", line.bottom.id));
    }
}

} // namespace

void MakeDrawings(CObjectManager& design, const Plan& plan)
{
    MakeDrawingFormats(design);
    MakeLayouts(design, plan);
    MakeWebSettings(design, plan);
    MakeWorkAreas(design, plan);
}

} // namespace town
