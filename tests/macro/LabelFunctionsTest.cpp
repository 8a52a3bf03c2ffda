// The label functions for projects, webs, routes, spans, nodes and manholes.
#include "macro/MacroTokens.h"
#include "resources/Resources.h"
#include "resources/StringIds.h"

#include "macro/ShownLabel.h"
#include "support/Networks.h"

using namespace kelmacro;
using macros::kNoLabel;
using macros::shown;
using macros::shownBy;
using support::values;

namespace {

constexpr long kUnknown = 987654;

class LabelFunctions : public testing::Test {
protected:
    LabelFunctions()
    {
        drawfig.WriteSubAttribute(L"dfspanlenfig", L"1");
        drawfig.WriteSubAttribute(L"dfroutelenfig", L"3");
        drawfig.WriteSubAttribute(L"dfslfig", L"1");
        drawfig.WriteSubAttribute(L"dfslmode", L"2");
        drawfig.WriteSubAttribute(L"dfphfig", L"2");
        drawfig.WriteSubAttribute(L"dfpdepthfig", L"1");
        drawfig.WriteSubAttribute(L"dfmdepthfig", L"2");
        drawfig.WriteSubAttribute(L"dfmdepthmode", L"1");
        calcfig.WriteSubAttribute(L"cfpdepthfig", L"2");
    }

    // Whether the function refuses a null manager, the id 0, an id of nothing and one of another type; and its text.
    template <class... Rest>
    std::wstring Of(bool (*function)(const CObjectManager*, long, Rest...), long id, auto... arguments)
    {
        EXPECT_EQ(shown(function, nullptr, id, arguments...), kNoLabel);
        for (const long wrong : {0L, kUnknown, net["M"] == id ? net["W"] : net["M"]})
            EXPECT_EQ(shown(function, &net.manager, wrong, arguments...), kNoLabel) << wrong;
        return shown(function, &net.manager, id, arguments...);
    }
    // The same with a rounding record, which must be there.
    template <class... Rest>
    std::wstring Of(bool (*function)(const CObjectManager*, const CDrawfig*, long, Rest...), long id, auto... arguments)
    {
        const CDrawfig* const none = nullptr;
        EXPECT_EQ(shown(function, nullptr, &drawfig, id, arguments...), kNoLabel);
        EXPECT_EQ(shown(function, &net.manager, none, id, arguments...), kNoLabel);
        for (const long wrong : {0L, kUnknown, net["M"]})
            EXPECT_EQ(shown(function, &net.manager, &drawfig, wrong, arguments...), kNoLabel) << wrong;
        return shown(function, &net.manager, &drawfig, id, arguments...);
    }

    CManHole& AddManhole(const wchar_t* code, const wchar_t* name)
    {
        return *net.manager.CreateManHole(values({{L"mhcode", code}, {L"mhname", name}}));
    }

    support::Network net{"W: M = a-b-c; B>M = d-b"};
    CDrawfig drawfig;
    CCalcfig calcfig;
};

} // namespace

TEST_F(LabelFunctions, AttributesAreShownAsTheyAreStored)
{
    CObjectManager& manager = net.manager;
    struct Row {
        bool (*function)(const CObjectManager*, long, CString&);
        CPipeObject* object;
        const wchar_t* key;
    };
    CPipeObject* const project = manager.CreateProject({});
    CPipeObject* const unit = manager.CreateNodeunit(net["a"], {});
    CPipeObject* const layout = manager.CreateProfilelayout(0, {});
    const Row rows[] = {
        {ResolveMcPrjname, project, L"prjname"},
        {ResolveMcCityname, project, L"cityname"},
        {ResolveMcCompany, project, L"company"},
        {ResolveMcPersonname, &net.Web("W"), L"personname"},
        {ResolveMcAreaname1, &net.Web("W"), L"areaname1"},
        {ResolveMcAreaname2, &net.Web("W"), L"areaname2"},
        {ResolveMcSubareaname1, &net.Web("W"), L"subareaname1"},
        {ResolveMcSubareaname2, &net.Web("W"), L"subareaname2"},
        {ResolveMcSporder, &net.Span("a-b"), L"spno"},
        {ResolveMcMhcode, &net.Node("a"), L"manholecode"},
        {ResolveMcDrawpage, layout, L"ploutpage"},
        {ResolveMcNuname, unit, L"nuname"},
        {ResolveMcSvname, manager.CreateSecvalve({}), L"svname"},
        {ResolveMcOhname, manager.CreateOhaul({}), L"ohname"},
        {ResolveMcRcomment, &net.Route("M"), L"rtcomment"},
        {ResolveMcScomment, &net.Span("a-b"), L"spcommentf"},
        {ResolveMcNcomment, &net.Node("a"), L"ndcommentf"},
        {ResolveMcGlouttext, manager.CreateGlChange(net["M"], {}), L"glouttext"},
    };
    for (const Row& row : rows) {
        ASSERT_NE(row.object, nullptr) << CString(row.key).View().size();
        const long id = row.object->GetId32();
        EXPECT_EQ(Of(row.function, id), L"") << "without the attribute, row " << &row - rows;
        const std::wstring text = L" 007 " + std::wstring(row.key) + L"[M:SECDISP]";
        row.object->WriteSubAttribute(row.key, text.c_str());
        EXPECT_EQ(Of(row.function, id), text) << "row " << &row - rows;
    }
}

// ---- Webs ----
TEST_F(LabelFunctions, AWebWithoutAnOutflowNameShowsItsFlowEndName)
{
    EXPECT_EQ(Of(ResolveMcOutareaname, net["W"]), L"");
    net.Set(L"wbendrname", {{"W", L"end"}});
    EXPECT_EQ(Of(ResolveMcOutareaname, net["W"]), L"end");
    net.Set(L"outareaname", {{"W", L"river"}});
    EXPECT_EQ(Of(ResolveMcOutareaname, net["W"]), L"river");
}

TEST_F(LabelFunctions, DisposalTypesAreWordsOfTheLanguage)
{
    const wchar_t* const words[][2] = {
        {L"Sanitary", L"汚水"}, {L"Agricultural", L"農業集落排水"},  {L"Storm", L"雨水"},
        {L"Combined", L"合流"}, {L"Vacuum sanitary", L"真空式汚水"}, {L"Vacuum agricultural", L"真空式農業集落排水"}};
    for (int type = 0; type < 6; ++type) {
        net.Web("W").SetDisposalType(type);
        ASSERT_TRUE(obmgr::SetResourceLanguage(obmgr::ResourceLanguage::English));
        EXPECT_EQ(Of(ResolveMcDisposaltype, net["W"]), words[type][0]);
        ASSERT_TRUE(obmgr::SetResourceLanguage(obmgr::ResourceLanguage::Japanese));
        EXPECT_EQ(Of(ResolveMcDisposaltype, net["W"]), words[type][1]);
        EXPECT_EQ(obmgr::ResourceText(750 + static_cast<unsigned>(type)), words[type][1]);
    }
    ASSERT_TRUE(obmgr::SetResourceLanguage(obmgr::ResourceLanguage::English));
}

TEST_F(LabelFunctions, DisposalTypesOutsideTheListHaveNoWord)
{
    for (const int type : {-1, 6}) {
        net.Web("W").SetDisposalType(type);
        EXPECT_EQ(Of(ResolveMcDisposaltype, net["W"]), kNoLabel) << type;
    }
}

// ---- Routes ----
TEST_F(LabelFunctions, RouteNumbersComeBareOrWithTheirCodes)
{
    net.Set(L"routenum", {{"M", L"12"}});
    net.Set(L"subnum", {{"M", L"-3"}});
    net.Set(L"rttype", {{"M", L"01"}});
    net.Set(L"rtattrib", {{"M", L"2"}});
    struct Case {
        bool number, full;
        const wchar_t* text;
    };
    for (const Case& c : {Case{true, false, L"12"}, Case{false, false, L"-3"}, Case{true, true, L"[M:ROUTENUM]01212"},
                          Case{false, true, L"[M:ROUTENUM]012-3"}}) {
        const auto show = [&](const CObjectManager* manager, long id) {
            return shownBy([&](CString& out) { return ResolveMcRoutenum(manager, id, c.number, c.full, out); });
        };
        EXPECT_EQ(show(&net.manager, net["M"]), c.text);
        EXPECT_EQ(show(nullptr, net["M"]), kNoLabel);
        EXPECT_EQ(show(&net.manager, 0), kNoLabel);
        EXPECT_EQ(show(&net.manager, kUnknown), kNoLabel);
    }
}

TEST_F(LabelFunctions, OneSwitchOfARouteNumberIsForItsCodes)
{
    net.Set(L"routenum", {{"M", L"12"}});
    net.Set(L"subnum", {{"M", L"3"}});
    const auto show = [&](bool full) {
        return shownBy([&](CString& out) { return ResolveMcRoutenum(&net.manager, net["M"], full, out); });
    };
    EXPECT_EQ(show(false), L"12");
    EXPECT_EQ(show(true), L"[M:ROUTENUM]12");
    EXPECT_EQ(Of(ResolveMcSubnum, net["M"], false), L"3");
    EXPECT_EQ(Of(ResolveMcSubnum, net["M"], true), L"[M:ROUTENUM]3");
}

TEST_F(LabelFunctions, SpansShowTheFullNumberOfTheirRoute)
{
    net.Set(L"routenum", {{"B", L"7"}});
    net.Set(L"rttype", {{"B", L"1"}});
    net.Set(L"rtattrib", {{"B", L"0"}});
    const long span = net["d-b"];
    const CDrawfig* const none = nullptr;
    EXPECT_EQ(Of(ResolveMcInroutenum, span), L"[M:ROUTENUM]107");
    EXPECT_EQ(Of(ResolveMcUproutenumdrw, span), L"[M:ROUTENUM]107");
    EXPECT_EQ(shown(ResolveMcLowroutenum, &net.manager, &drawfig, span), L"[M:ROUTENUM]107");
    EXPECT_EQ(shown(ResolveMcLowroutenum, &net.manager, none, span), L"[M:ROUTENUM]107");
    EXPECT_EQ(shown(ResolveMcLowroutenum, &net.manager, &drawfig, 0L), kNoLabel);
    EXPECT_EQ(shown(ResolveMcLowroutenum, nullptr, &drawfig, span), kNoLabel);
    net.Span("d-b").SetRouteId(kUnknown);
    EXPECT_EQ(Of(ResolveMcInroutenum, span), kNoLabel);
}

// ---- Spans ----
TEST_F(LabelFunctions, SectionCodesComeBareOrBehindTheirToken)
{
    const long span = net["a-b"];
    net.Set(L"spsecrecname", {{"a-b", L"P300"}});
    EXPECT_EQ(Of(ResolveMcSecdisp, span, false), L"P300");
    EXPECT_EQ(Of(ResolveMcSecdisp, span, true), L"[M:SECDISP]P300");
    EXPECT_EQ(Of(ResolveMcUpsecdisp, span), L"[M:SECDISP]P300");
    const CDrawfig* const none = nullptr;
    EXPECT_EQ(shown(ResolveMcLowsecdisp, &net.manager, none, span), L"[M:SECDISP]P300");
    EXPECT_EQ(shown(ResolveMcLowsecdisp, &net.manager, none, kUnknown), kNoLabel);
    EXPECT_EQ(shown(ResolveMcLowsecdisp, nullptr, none, span), kNoLabel);
}

TEST_F(LabelFunctions, SlopeLengthsAreRoundedLikeSpanLengths)
{
    net.Set(L"splength", {{"a-b", L"3.06"}});
    net.Set(L"lowercentinv", {{"a-b", L"14.08"}});
    net.Set(L"uppercentinv", {{"a-b", L"10"}});
    EXPECT_EQ(Of(ResolveMcSlopedist, net["a-b"]), L"5.1"); // 3.06, 4.08, 5.10: not the 5.100 of route lengths
    net.Set(L"splength", {{"a-b", L"0"}});
    EXPECT_EQ(Of(ResolveMcSlopedist, net["a-b"]), L"0.0");
}

TEST_F(LabelFunctions, SlopesAreRoundedInTheirOwnMode)
{
    net.Set(L"spslant", {{"a-b", L"2.31"}});
    EXPECT_EQ(Of(ResolveMcSpslant, net["a-b"]), L"2.4");
}

TEST_F(LabelFunctions, PipeBottomHeightsAreThoseOfEitherEnd)
{
    const long span = net["a-b"];
    net.Set(L"uppercentinv", {{"a-b", L"12.345"}});
    net.Set(L"lowercentinv", {{"a-b", L"11.2"}});
    EXPECT_EQ(Of(ResolveMcUpperinv, span), L"12.35");
    EXPECT_EQ(Of(ResolveMcUpperinv2, span), L"+12.35");
    EXPECT_EQ(Of(ResolveMcLowerinv, span), L"11.20");
    EXPECT_EQ(Of(ResolveMcLowerinv2, span), L"+11.20");
    EXPECT_EQ(Of(ResolveMcInv, span, true, false), L"12.35");
    EXPECT_EQ(Of(ResolveMcInv, span, false, true), L"+11.20");
}

TEST_F(LabelFunctions, ASignedNegativeHeightKeepsBothSigns)
{
    net.Set(L"uppercentinv", {{"a-b", L"-1"}});
    EXPECT_EQ(Of(ResolveMcInv, net["a-b"], true, true), L"+-1.00");
    EXPECT_EQ(Of(ResolveMcUpperinv, net["a-b"]), L"-1.00");
}

TEST_F(LabelFunctions, BoresOfSpansAreWholeMillimetres)
{
    EXPECT_EQ(Of(ResolveMcSubsecfai, net["a-b"]), L"0");
    net.Set(L"subsecfai", {{"a-b", L"0.1506"}});
    EXPECT_EQ(Of(ResolveMcSubsecfai, net["a-b"]), L"151");
}

TEST_F(LabelFunctions, DepthsOfInflowsAreRoundedForTheCalculationFirst)
{
    // 2.345 is 2.35 for the calculation, and only so 2.4 for the drawing.
    net.Set(L"newgl", {{"a-b", L"12.345"}});
    net.Set(L"oldgl", {{"a-b", L"99"}});
    net.Set(L"lowercentinv", {{"a-b", L"10"}});
    net.Set(L"rtglmode", {{"M", L"1"}});
    for (const auto function : {ResolveMcInpipedepthmin, ResolveMcInpipedepthdrw}) {
        const CDrawfig* const fig = &drawfig;
        const CCalcfig* const calc = &calcfig;
        const CObjectManager* const manager = &net.manager;
        EXPECT_EQ(shown(function, manager, fig, calc, net["a-b"]), L"2.4");
        EXPECT_EQ(shown(function, manager, nullptr, calc, net["a-b"]), kNoLabel);
        EXPECT_EQ(shown(function, manager, fig, nullptr, net["a-b"]), kNoLabel);
        EXPECT_EQ(shown(function, nullptr, fig, calc, net["a-b"]), kNoLabel);
        EXPECT_EQ(shown(function, manager, fig, calc, 0L), kNoLabel);
        EXPECT_EQ(shown(function, manager, fig, calc, kUnknown), kNoLabel);
    }
}

TEST_F(LabelFunctions, StepsFallFromTheUpperSpanToTheSpan)
{
    net.Set(L"lowercentinv", {{"a-b", L"10.5"}});
    net.Set(L"uppercentinv", {{"b-c", L"10.245"}});
    for (const auto function : {ResolveMcStepmin, ResolveMcStepdrw}) {
        EXPECT_EQ(Of(function, net["b-c"], net["a-b"]), L"0.26"); // 0.255
        EXPECT_EQ(Of(function, net["b-c"], 0L), kNoLabel);
        EXPECT_EQ(Of(function, net["b-c"], kUnknown), kNoLabel);
    }
}

// ---- Nodes and manholes ----
TEST_F(LabelFunctions, ManholeNumbersComeBareOrBehindTheirToken)
{
    net.Set(L"mholeno", {{"a", L"No.5"}});
    EXPECT_EQ(Of(ResolveMcMholeno, net["a"], false), L"No.5");
    EXPECT_EQ(Of(ResolveMcMholeno, net["a"], true), L"[M:MHOLENO]No.5");
}

TEST_F(LabelFunctions, ManholesAreFoundByTheirCode)
{
    AddManhole(L"K1", L"first").WriteSubAttribute(L"mhmaker", L"one maker");
    AddManhole(L"K2", L"second").WriteSubAttribute(L"mhmaker", L"another");
    net.Set(L"manholecode", {{"a", L"K2"}, {"b", L"K9"}});
    EXPECT_EQ(Of(ResolveMcMhname, net["a"]), L"second");
    EXPECT_EQ(Of(ResolveMcMhmaker, net["a"]), L"another");
    EXPECT_EQ(Of(ResolveMcMhname, net["b"]), kNoLabel);
    EXPECT_EQ(Of(ResolveMcMhmaker, net["b"]), kNoLabel);
    EXPECT_EQ(Of(ResolveMcMhheightm, net["b"]), kNoLabel);
}

TEST_F(LabelFunctions, ManholeSizesComeInThreeUnits)
{
    CManHole& manhole = AddManhole(L"K1", L"first");
    manhole.WriteSubAttribute(L"mhheight", L"1.2346");
    manhole.WriteSubAttribute(L"mhwidth", L"0.9");
    net.Set(L"manholecode", {{"a", L"K1"}});
    const long node = net["a"];
    EXPECT_EQ(Of(ResolveMcMhheightm, node), L"1.235");
    EXPECT_EQ(Of(ResolveMcMhheightcm, node), L"123");
    EXPECT_EQ(Of(ResolveMcMhheightmm, node), L"1235");
    EXPECT_EQ(Of(ResolveMcMhwidthm, node), L"0.900");
    EXPECT_EQ(Of(ResolveMcMhwidthcm, node), L"90");
    EXPECT_EQ(Of(ResolveMcMhwidthmm, node), L"900");
    EXPECT_EQ(Of(ResolveMcMhHeightWidth, node, true, UNITMODE_METRE), L"1.235");
    EXPECT_EQ(Of(ResolveMcMhHeightWidth, node, false, static_cast<UNITMODE>(7)), L"900");
}

TEST_F(LabelFunctions, ManholeDepthsAreRoundedInMetresOnly)
{
    net.Set(L"mholedepth", {{"a", L"1.2397"}});
    const long node = net["a"];
    EXPECT_EQ(Of(ResolveMcMholedepth, node), L"1.23"); // cut off
    EXPECT_EQ(Of(ResolveMcMholedepthmm, node), L"1240");
    EXPECT_EQ(Of(ResolveMcMholedep, node, UNITMODE_METRE), L"1.23");
    EXPECT_EQ(Of(ResolveMcMholedep, node, UNITMODE_CENTIMETRE), L"124");
    EXPECT_EQ(Of(ResolveMcMholedep, node, static_cast<UNITMODE>(-1)), L"1240");
}

TEST_F(LabelFunctions, UnitsValvesAndOverhaulPlacesShowRoundedNumbers)
{
    CObjectManager& manager = net.manager;
    const CPipeObject& unit =
        *manager.CreateNodeunit(net["a"], values({{L"nuhi", L"-0.125"}, {L"nuangle", L"90.004"}}));
    EXPECT_EQ(Of(ResolveMcNuheight, unit.GetId32()), L"-0.13");
    EXPECT_EQ(Of(ResolveMcNuangle, unit.GetId32()), L"90.00");
    const CPipeObject& valve = *manager.CreateSecvalve(values({{L"svdist", L"12.3456"}}));
    EXPECT_EQ(Of(ResolveMcSvdist, valve.GetId32()), L"12.346");
    const CPipeObject& place = *manager.CreateOhaul(values({{L"ohdist", L"7"}}));
    EXPECT_EQ(Of(ResolveMcOhdist, place.GetId32()), L"7.000");
}

TEST_F(LabelFunctions, ARoundingRecordWithoutDigitsGivesWholeNumbers)
{
    net.Set(L"uppercentinv", {{"a-b", L"12.5"}});
    const CDrawfig empty;
    EXPECT_EQ(shown(ResolveMcUpperinv, &net.manager, &empty, net["a-b"]), L"13");
}

TEST(MacroTokens, TheSignTokenIsDescribedInBothLanguages)
{
    EXPECT_STREQ(kMacroAddPlusMinus, L"[M:ADDPLUSMINUS]");
    EXPECT_EQ(IDS_LABEL_ADD_SIGN, 900u);
    ASSERT_TRUE(obmgr::SetResourceLanguage(obmgr::ResourceLanguage::Japanese));
    EXPECT_EQ(obmgr::ResourceText(900), L"このマクロに続く数値マクロに符号を付けます。");
    ASSERT_TRUE(obmgr::SetResourceLanguage(obmgr::ResourceLanguage::English));
    EXPECT_EQ(obmgr::ResourceText(900), L"Add a sign to the numerical macro following this macro.");
}
