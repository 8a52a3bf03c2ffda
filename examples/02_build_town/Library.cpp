// What the town draws on: the project, manhole classes, pipe sections, calculation methods, works and codes.
#include "Keys.h"
#include "Town.h"

namespace town {
namespace {

// "No." on from the name: the order of a list.
template <class... Names> void AddNamed(const wchar_t* key, const auto& create, const Names&... names)
{
    long order = 0;
    (create(Keys().Text(key, names).Number(L"order", ++order)), ...);
}

void MakeProject(CObjectManager& design)
{
    design.CreateProject(Keys()
                             .Text(L"prjname", L"瑞穂町公共下水道実施設計")
                             .Text(L"cityname", L"瑞穂町")
                             .Text(L"company", L"みずほ設計㈱")
                             .Text(L"defsv", kSanitaryMethod)
                             .Text(L"defqr", kStormMethod)
                             .Text(L"defsvvac", kVacuumMethod));
}

void MakeManholes(CObjectManager& design)
{
    struct Class {
        const wchar_t* code;
        const wchar_t* name;
        double width;
    };
    static constexpr Class kClasses[] = {
        {L"0", L"小型マンホール", 0.3}, {L"1", L"1号マンホール", 0.9}, {L"2", L"2号マンホール", 1.2},
        {L"3", L"3号マンホール", 1.5},  {L"OF", L"吐口", 1.0},
    };
    long order = 0;
    for (const Class& manhole : kClasses)
        design.CreateManHole(Keys()
                                 .Text(L"mhcode", manhole.code)
                                 .Text(L"mhname", manhole.name)
                                 .Text(L"mhmaker", L"日本人孔工業")
                                 .Real(L"mhwidth", manhole.width)
                                 .Number(L"order", ++order));
    order = 0;
    for (const auto& [code, name] : {std::pair(L"T14", L"鋳鉄蓋 T-14"), std::pair(L"T25", L"鋳鉄蓋 T-25")})
        design.CreateManholecapcode(Keys().Text(L"mcccode", code).Text(L"mccname", name).Number(L"order", ++order));
}

void MakeSection(CObjectManager& design, const Section& section, long order)
{
    Keys keys;
    keys.Number(L"order", order);
    switch (section.shape) {
    case Shape::Pipe:
        design.CreatePipe(keys.Text(L"pename", section.name)
                              .Text(L"pesectionkey", section.key)
                              .Real(L"pedia", section.width)
                              .Real(L"pedia2", section.width)
                              .Real(L"pethick", section.wall));
        break;
    case Shape::Egg:
        design.CreateEgg(keys.Text(L"egname", section.name)
                             .Text(L"egsectionkey", section.key)
                             .Real(L"egdia", section.height)
                             .Real(L"egdia2", section.width)
                             .Real(L"egthick", section.wall));
        break;
    case Shape::Box:
        design.CreateCbox(keys.Text(L"cbname", section.name)
                              .Text(L"cbsectionkey", section.key)
                              .Real(L"cbwidth", section.width)
                              .Real(L"cbheight", section.height)
                              .Real(L"cbbthick", section.wall)
                              .Real(L"cbtthick", section.wall));
        break;
    case Shape::OpenBox:
        design.CreateObox(keys.Text(L"obname", section.name)
                              .Text(L"obsectionkey", section.key)
                              .Real(L"obbwidth", section.width)
                              .Real(L"obtwidth", section.topWidth)
                              .Real(L"obheight", section.height)
                              .Real(L"obbthick", section.wall)
                              .Real(L"obtthick", section.wall));
        break;
    case Shape::Ditch:
        design.CreateUbox(keys.Text(L"ubname", section.name)
                              .Text(L"ubsectionkey", section.key)
                              .Real(L"ubbwidth", section.width)
                              .Real(L"ubtwidth", section.topWidth)
                              .Real(L"ubheight", section.height)
                              .Real(L"ubbthick", section.wall)
                              .Real(L"ubtthick", section.wall));
        break;
    }
}

void MakeSections(CObjectManager& design)
{
    struct PipeClass {
        const wchar_t* key;
        const wchar_t* name;
        const wchar_t* mark;
        const wchar_t* planText;
    };
    static constexpr PipeClass kClasses[] = {
        {L"VU", L"硬質塩化ビニル管", L"○", L"VUφ[M:DIAMM]"},
        {L"HP", L"ヒューム管", L"○", L"HPφ[M:DIAMM]"},
        {L"PE", L"ポリエチレン管", L"○", L"PEφ[M:DIAMM]"},
        {L"EGG", L"卵形管", L"卵", L"卵[M:DIAMM]"},
        {L"BOX", L"ボックスカルバート", L"□", L"□[M:WIDMM]×[M:HEIMM]"},
        {L"OPEN", L"開渠", L"凵", L"[M:BWIDMM]/[M:TWIDMM]×[M:HEIMM]"},
        {L"UDITCH", L"U型側溝", L"U", L"U[M:TWIDMM]×[M:HEIMM]"},
    };
    long order = 0;
    for (const PipeClass& pipeClass : kClasses)
        design.CreateSection(0, Keys()
                                    .Text(L"sekeyword", pipeClass.key)
                                    .Text(L"sename", pipeClass.name)
                                    .Text(L"sedrawmk", pipeClass.mark)
                                    .Text(L"seplanetext", pipeClass.planText)
                                    .Number(L"order", ++order));
    for (int i = 0; i < kSectionCount; ++i)
        MakeSection(design, kSections[i], i + 1);

    struct Group {
        const wchar_t* name;
        const wchar_t* key;
        const wchar_t* first;
        const wchar_t* last;
    };
    static constexpr Group kGroups[] = {
        {L"汚水標準", L"VU", L"VUφ150", L"VUφ250"},          {L"汚水標準", L"HP", L"HPφ300", L"HPφ350"},
        {L"雨水標準", L"HP", L"HPφ500", L"HPφ800"},          {L"雨水標準", L"EGG", L"卵形600×900", L"卵形600×900"},
        {L"雨水標準", L"BOX", L"□1000×1000", L"□1500×1200"}, {L"真空標準", L"PE", L"PEφ75", L"PEφ150"},
    };
    AddNamed(
        L"sgname", [&](const Keys& keys) { design.CreateSectGroup(keys); }, L"汚水標準", L"雨水標準", L"真空標準");
    order = 0;
    for (const Group& group : kGroups)
        design.CreateSectGroupRec(Keys()
                                      .Text(L"srsecgroupname", group.name)
                                      .Text(L"srsectionkey", group.key)
                                      .Text(L"srstsecname", group.first)
                                      .Text(L"srendsecname", group.last)
                                      .Number(L"order", ++order));
}

// Sanitary, agricultural and combined methods are named; storm methods may have steps by area or time of their own.
void MakeMethods(CObjectManager& design)
{
    static constexpr const wchar_t* kGround[] = {L"住居系", L"商業系", L"工業系", L"緑地・公園"};
    static constexpr double kRunoff[] = {0.55, 0.8, 0.65, 0.25};
    for (int i = 0; i < 4; ++i)
        design.CreateRaitoSet(Keys()
                                  .Number(L"rtnumber", i + 1)
                                  .Text(L"rtscomment", kGround[i])
                                  .Real(L"rtratio", kRunoff[i])
                                  .Number(L"order", i + 1));
    AddNamed(
        L"saname", [&](const Keys& keys) { design.CreateSvperarea(keys); }, kSanitaryMethod, kVacuumMethod);
    AddNamed(
        L"spname", [&](const Keys& keys) { design.CreateSvperpopula(keys); }, L"汚水人口原単位");
    AddNamed(
        L"syname", [&](const Keys& keys) { design.CreateSvyokohama(keys); }, L"処理人口式");
    AddNamed(
        L"rrname", [&](const Keys& keys) { design.CreateRural(keys); }, L"農集汚水原単位", L"農集真空原単位");
    AddNamed(
        L"qrname", [&](const Keys& keys) { design.CreateQrrational(keys); }, kStormMethod, L"合理式（10年確率）");
    AddNamed(
        L"qename", [&](const Keys& keys) { design.CreateQrexperiment(keys); }, L"実験式（町独自）");
    AddNamed(
        L"qlname", [&](const Keys& keys) { design.CreateQrline(keys); }, L"直線式");
    AddNamed(
        L"qvname", [&](const Keys& keys) { design.CreateQrriver(keys); }, L"瑞穂川河川式");
    AddNamed(
        L"qmname", [&](const Keys& keys) { design.CreateQrmulti(keys); }, L"面積別組合せ");
    design.CreateCombi(Keys().Text(L"csname", L"合流式").Text(L"cssv", kSanitaryMethod).Text(L"csqr", kStormMethod));
    for (long step = 1; step <= 3; ++step) {
        design.CreateQrmultidat(Keys()
                                    .Text(L"qmdqrmultiname", L"面積別組合せ")
                                    .Number(L"qmdarea", step * 10)
                                    .Text(L"qmdmethodname", step == 3 ? L"実験式（町独自）" : kStormMethod)
                                    .Number(L"order", step));
        design.CreateAreasupve(Keys()
                                   .Text(L"avqrname", kStormMethod)
                                   .Number(L"avarea", step * 5)
                                   .Real(L"avve", 0.8 + 0.2 * static_cast<double>(step))
                                   .Number(L"order", step));
        design.CreateQrrivertime(Keys()
                                     .Text(L"qtqrname", L"瑞穂川河川式")
                                     .Number(L"qtarea", step * 50)
                                     .Number(L"qttime", 5 + step * 5)
                                     .Number(L"order", step));
    }
}

// Earthworks, house connections and the codes that quantities are taken off by.
void MakeWorks(CObjectManager& design)
{
    AddNamed(
        L"ecname", [&](const Keys& keys) { design.CreateExecution(keys); }, L"開削工", L"推進工");
    AddNamed(
        L"ername", [&](const Keys& keys) { design.CreateRetain(keys); }, L"軽量鋼矢板", L"鋼矢板Ⅱ型");
    AddNamed(
        L"tbname", [&](const Keys& keys) { design.CreateTimber(keys); }, L"木製支保工", L"水圧式支保工");
    AddNamed(
        L"fdname", [&](const Keys& keys) { design.CreateFoundation(keys); }, L"砂基礎", L"砕石基礎",
        L"コンクリート基礎");
    AddNamed(
        L"lucode", [&](const Keys& keys) { design.CreateLaunit(keys); }, L"取付A", L"取付B");
    AddNamed(
        L"vucode", [&](const Keys& keys) { design.CreateVacunit(keys); }, L"真空弁ユニット40", L"真空弁ユニット75");
    AddNamed(
        L"abcode2", [&](const Keys& keys) { design.CreateAttBox(keys); }, L"公-1", L"公-2");
    AddNamed(
        L"abcodevu2", [&](const Keys& keys) { design.CreateAttBoxvu(keys); }, L"真-1", L"真-2");
    AddNamed(
        L"pmkcode", [&](const Keys& keys) { design.CreatePpMark(keys); }, L"KM-1", L"BM-2", L"KM-3");
    AddNamed(
        L"rccode", [&](const Keys& keys) { design.CreateRoadcode(keys); }, L"町道4m", L"町道6m", L"県道9m");
    AddNamed(
        L"accode", [&](const Keys& keys) { design.CreateAspcode(keys); }, L"表層5cm", L"表層5cm+基層5cm");
    AddNamed(
        L"exname", [&](const Keys& keys) { design.CreateExec(keys); }, L"第1工区", L"第2工区");
    AddNamed(
        L"erpname", [&](const Keys& keys) { design.CreateExecreport(keys); }, L"管路土工数量計算書");
}

} // namespace

void MakeLibrary(CObjectManager& design)
{
    MakeProject(design);
    MakeManholes(design);
    MakeSections(design);
    MakeMethods(design);
    MakeWorks(design);
}

} // namespace town
