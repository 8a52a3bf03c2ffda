// The label functions for note texts and house connections.
#include "macro/ShownLabel.h"
#include "support/Networks.h"

using namespace kelmacro;
using macros::kNoLabel;
using macros::shown;
using support::values;

namespace {

constexpr long kUnknown = 987654;

struct NoteCase {
    objectdata::OBJECTTYPE type;
    const wchar_t* text;
    const wchar_t* section;
    bool (*byName)(const CObjectManager*, long, CString&); // null: a function of webs
    CPipeObject* (*add)(CObjectManager&, long routeId);
};

const NoteCase kNotes[] = {
    {static_cast<objectdata::OBJECTTYPE>(12), L"arouttext", L"arsecrecname", ResolveMcArouttext,
     [](CObjectManager& m, long route) -> CPipeObject* { return m.CreateAreaInq(route, {}); }},
    {static_cast<objectdata::OBJECTTYPE>(16), L"fxouttext", L"fxsecrecname", ResolveMcFxouttext,
     [](CObjectManager& m, long route) -> CPipeObject* { return m.CreateFixInq(route, {}); }},
    {static_cast<objectdata::OBJECTTYPE>(13), L"aoouttext", L"aosecrec", ResolveMcAoouttext,
     [](CObjectManager& m, long route) -> CPipeObject* { return m.CreateAreaOutq(route, {}); }},
    {static_cast<objectdata::OBJECTTYPE>(41), L"oqouttext", L"oqsecrecname", ResolveMcFoouttext,
     [](CObjectManager& m, long route) -> CPipeObject* { return m.CreateOutq(route, {}); }},
    {static_cast<objectdata::OBJECTTYPE>(21), L"laouttext", L"lasecrecname", nullptr,
     [](CObjectManager& m, long route) -> CPipeObject* { return m.CreateLateral(route, {}); }},
    {static_cast<objectdata::OBJECTTYPE>(83), L"vjouttext", L"vjsecrecname", nullptr,
     [](CObjectManager& m, long route) -> CPipeObject* { return m.CreateVjoint(route, {}); }},
};

class LabelRecords : public testing::Test {
protected:
    // A crossing point of route M with the thing of the id, and its note.
    CIntPos& AddPoint(long crossingId, const wchar_t* note)
    {
        return *manager.CreateIntPos(net["M"], crossingId, values({{L"ipouttext", note}}));
    }
    std::wstring Crossing(const CIntPos& point) { return shown(ResolveMcIpouttext, &manager, point.GetId32()); }
    std::wstring Number(long web, long id) { return shown(ResolveMcLaunitnum, &manager, web, id); }
    std::wstring Name(long web, long id) { return shown(ResolveMcLaunitname, &manager, web, id); }
    CLateral& AddLateral(long unitId)
    {
        const std::wstring unit = std::to_wstring(unitId);
        return *manager.CreateLateral(net["M"], values({{L"launitid", unit.c_str()}, {L"laindist", L"1.2345"}}));
    }
    CVjoint& AddJoint(long unitId)
    {
        const std::wstring unit = std::to_wstring(unitId);
        return *manager.CreateVjoint(net["M"], values({{L"vjinletid", unit.c_str()}, {L"vjindist", L"6.7895"}}));
    }

    support::Network net{"W: M = a-b-c"};
    CObjectManager& manager = net.manager;
};

} // namespace

// ---- Note texts ----
TEST_F(LabelRecords, TheSectionCodeStandsBehindItsToken)
{
    for (const NoteCase& c : kNotes) {
        CPipeObject& object = *c.add(manager, net["M"]);
        object.WriteSubAttribute(c.text, L"in [M:SECDISP], new");
        object.WriteSubAttribute(c.section, L"P300");
        const long id = object.GetId32();
        EXPECT_EQ(shown(ResolveMcOuttext, &manager, c.type, id), L"in [M:SECDISP]P300, new") << c.type;
        if (c.byName) {
            EXPECT_EQ(shown(c.byName, &manager, id), L"in [M:SECDISP]P300, new") << c.type;
        }
    }
}

TEST_F(LabelRecords, OnlyTheFirstTokenOfANoteGetsTheCode)
{
    for (const NoteCase& c : kNotes) {
        CPipeObject& object = *c.add(manager, net["M"]);
        object.WriteSubAttribute(c.text, L"[M:SECDISP]/[M:SECDISP]");
        object.WriteSubAttribute(c.section, L"A");
        EXPECT_EQ(shown(ResolveMcOuttext, &manager, c.type, object.GetId32()), L"[M:SECDISP]A/[M:SECDISP]") << c.type;
    }
}

TEST_F(LabelRecords, NotesWithoutTheTokenAreShownAsTheyAre)
{
    for (const NoteCase& c : kNotes) {
        CPipeObject& object = *c.add(manager, net["M"]);
        object.WriteSubAttribute(c.section, L"P300");
        EXPECT_EQ(shown(ResolveMcOuttext, &manager, c.type, object.GetId32()), L"") << c.type;
        object.WriteSubAttribute(c.text, L"[M:secdisp] [M:MHCODE]");
        EXPECT_EQ(shown(ResolveMcOuttext, &manager, c.type, object.GetId32()), L"[M:secdisp] [M:MHCODE]") << c.type;
    }
}

TEST_F(LabelRecords, MountainInflowsHaveNoSection)
{
    const CMountInq& inflow = *manager.CreateMountInq(
        net["M"], values({{L"mtouttext", L"a[M:SECDISP]b"}, {L"mtsecrecname", L"P300"}, {L"", L"x"}}));
    EXPECT_EQ(shown(ResolveMcMtouttext, &manager, inflow.GetId32()), L"a[M:SECDISP]b");
    EXPECT_EQ(shown(ResolveMcOuttext, &manager, static_cast<objectdata::OBJECTTYPE>(22), inflow.GetId32()),
              L"a[M:SECDISP]b");
}

TEST_F(LabelRecords, NotesOfOtherTypesAndUnknownObjectsAreRefused)
{
    for (const auto type :
         {objectdata::Span, objectdata::IntPos, objectdata::NoOwner, static_cast<objectdata::OBJECTTYPE>(999)})
        EXPECT_EQ(shown(ResolveMcOuttext, &manager, type, net["a-b"]), kNoLabel) << type;
    for (const NoteCase& c : kNotes) {
        const long id = c.add(manager, net["M"])->GetId32();
        EXPECT_EQ(shown(ResolveMcOuttext, nullptr, c.type, id), kNoLabel) << c.type;
        for (const long wrong : {0L, kUnknown, net["M"]}) {
            EXPECT_EQ(shown(ResolveMcOuttext, &manager, c.type, wrong), kNoLabel) << c.type;
            if (c.byName) {
                EXPECT_EQ(shown(c.byName, &manager, wrong), kNoLabel) << c.type;
            }
        }
    }
    EXPECT_EQ(shown(ResolveMcMtouttext, &manager, kUnknown), kNoLabel);
}

TEST_F(LabelRecords, ConnectionsOfVacuumWebsAreJoints)
{
    CLateral& lateral = AddLateral(0);
    lateral.WriteSubAttribute(L"laouttext", L"lateral");
    CVjoint& joint = AddJoint(0);
    joint.WriteSubAttribute(L"vjouttext", L"joint");
    const auto show = [&](const CPipeObject& object) {
        return shown(ResolveMcLaouttext, &manager, net["W"], static_cast<long>(object.GetId32()));
    };
    for (int type = 0; type < 6; ++type) {
        net.Web("W").SetDisposalType(type);
        EXPECT_EQ(show(lateral), type < 4 ? L"lateral" : kNoLabel) << type;
        EXPECT_EQ(show(joint), type < 4 ? kNoLabel : L"joint") << type;
    }
    EXPECT_EQ(shown(ResolveMcLaouttext, &manager, 0L, long{joint.GetId32()}), kNoLabel);
    EXPECT_EQ(shown(ResolveMcLaouttext, &manager, kUnknown, long{joint.GetId32()}), kNoLabel);
    EXPECT_EQ(shown(ResolveMcLaouttext, nullptr, net["W"], long{joint.GetId32()}), kNoLabel);
}

// ---- Crossing points ----
TEST_F(LabelRecords, ACrossingShowsTheNameOfItsSection)
{
    manager.CreateEgg(values({{L"egname", L"E90"}}));
    CInters& crossing = *manager.CreateInters(values({{L"inwidth", L"E90"}, {L"danmencode", L"other"}}));
    EXPECT_EQ(Crossing(AddPoint(crossing.GetId32(), L"<[M:SECDISP]>")), L"<[M:SECDISP]E90>");
    EXPECT_EQ(Crossing(AddPoint(crossing.GetId32(), L"[M:SECDISP][M:SECDISP]")), L"[M:SECDISP]E90[M:SECDISP]");
    EXPECT_EQ(Crossing(AddPoint(crossing.GetId32(), L"plain")), L"plain");
}

TEST_F(LabelRecords, ACrossingOfNoSectionShowsItsCode)
{
    CInters& crossing = *manager.CreateInters(values({{L"inwidth", L"0.4"}, {L"danmencode", L"GAS"}}));
    CIntPos& point = AddPoint(crossing.GetId32(), L"[M:SECDISP]!");
    point.WriteSubAttribute(L"danmencode", L"point");
    EXPECT_EQ(Crossing(point), L"[M:SECDISP]GAS!");
    crossing.WriteSubAttribute(L"danmencode", L"");
    EXPECT_EQ(Crossing(point), L"[M:SECDISP]point!");
    point.WriteSubAttribute(L"danmencode", L"");
    EXPECT_EQ(Crossing(point), L"[M:SECDISP]!");
}

TEST_F(LabelRecords, ACrossingSpanShowsItsSectionCode)
{
    net.Set(L"spsecrecname", {{"b-c", L"P200"}});
    EXPECT_EQ(Crossing(AddPoint(net["b-c"], L"[M:SECDISP]x")), L"[M:SECDISP]P200x");
    EXPECT_EQ(Crossing(AddPoint(kUnknown, L"[M:SECDISP]x")), L"[M:SECDISP]x");
    EXPECT_EQ(Crossing(AddPoint(0, L"[M:SECDISP]x")), L"[M:SECDISP]x");
}

TEST_F(LabelRecords, EitherEndOfACrossingPointCanBeTheRoute)
{
    net.Set(L"spsecrecname", {{"b-c", L"P200"}});
    CIntPos& point = *manager.CreateIntPos(net["b-c"], net["M"], values({{L"ipouttext", L"[M:SECDISP]"}}));
    EXPECT_EQ(Crossing(point), L"[M:SECDISP]P200");
}

TEST_F(LabelRecords, UnknownCrossingPointsAreRefused)
{
    const long id = AddPoint(0, L"text").GetId32();
    EXPECT_EQ(shown(ResolveMcIpouttext, nullptr, id), kNoLabel);
    for (const long wrong : {0L, kUnknown, net["M"]})
        EXPECT_EQ(shown(ResolveMcIpouttext, &manager, wrong), kNoLabel) << wrong;
}

// ---- House connections ----
TEST_F(LabelRecords, UnitsAreNumberedByTheKindOfTheWeb)
{
    const CLateral& lateral = AddLateral(manager.CreateLaunit(values({{L"lunum", L"L1"}}))->GetId32());
    const CVjoint& joint = AddJoint(manager.CreateVacunit(values({{L"vunum", L"V1"}}))->GetId32());
    EXPECT_EQ(Number(net["W"], lateral.GetId32()), L"L1");
    EXPECT_EQ(Number(net["W"], joint.GetId32()), kNoLabel);
    net.Web("W").SetDisposalType(4);
    EXPECT_EQ(Number(net["W"], lateral.GetId32()), kNoLabel);
    EXPECT_EQ(Number(net["W"], joint.GetId32()), L"V1");
    net.Web("W").SetDisposalType(5);
    EXPECT_EQ(Number(net["W"], joint.GetId32()), L"V1");
}

TEST_F(LabelRecords, ConnectionsWithoutAUnitHaveNoNumberAndNoName)
{
    for (const int type : {0, 4})
        for (const long unit : {0L, kUnknown, net["M"]}) {
            net.Web("W").SetDisposalType(type);
            const long id = type == 0 ? AddLateral(unit).GetId32() : AddJoint(unit).GetId32();
            EXPECT_EQ(Number(net["W"], id), kNoLabel) << unit;
            EXPECT_EQ(Name(net["W"], id), kNoLabel) << unit;
        }
}

TEST_F(LabelRecords, UnknownWebsAndConnectionsAreRefused)
{
    const long id = AddLateral(manager.CreateLaunit(values({{L"lunum", L"L1"}}))->GetId32()).GetId32();
    for (const auto function : {ResolveMcLaunitnum, ResolveMcLaunitname, ResolveMcLaouttext}) {
        EXPECT_EQ(shown(function, nullptr, net["W"], id), kNoLabel);
        for (const long wrong : {0L, kUnknown, net["M"]}) {
            EXPECT_EQ(shown(function, &manager, wrong, id), kNoLabel) << wrong;
            EXPECT_EQ(shown(function, &manager, net["W"], wrong), kNoLabel) << wrong;
        }
    }
}

TEST_F(LabelRecords, TheLastBoxWithTheCodeOfTheUnitNamesIt)
{
    const CLateral& lateral = AddLateral(manager.CreateLaunit(values({{L"lucode", L"7"}}))->GetId32());
    const CVjoint& joint = AddJoint(manager.CreateVacunit(values({{L"vucode", L"7"}}))->GetId32());
    EXPECT_EQ(Name(net["W"], lateral.GetId32()), kNoLabel);
    for (const wchar_t* name : {L"box", L"newer box"}) {
        manager.CreateAttBox(values({{L"abcode2", L"7"}, {L"abname", name}}));
        EXPECT_EQ(Name(net["W"], lateral.GetId32()), name);
    }
    manager.CreateAttBox(values({{L"abcode2", L"07"}, {L"abname", L"box of another code"}}));
    EXPECT_EQ(Name(net["W"], lateral.GetId32()), L"newer box");

    net.Web("W").SetDisposalType(5);
    EXPECT_EQ(Name(net["W"], joint.GetId32()), kNoLabel);
    for (const wchar_t* name : {L"vacuum box", L"newer vacuum box", L""}) {
        manager.CreateAttBoxvu(values({{L"abcodevu2", L"7"}, {L"abnamevu", name}}));
        EXPECT_EQ(Name(net["W"], joint.GetId32()), name);
    }
}

TEST_F(LabelRecords, DistancesOfConnectionsAreRoundedLikeRouteLengths)
{
    CDrawfig drawfig;
    drawfig.WriteSubAttribute(L"dfroutelenfig", L"3");
    const long lateral = AddLateral(0).GetId32();
    const long joint = AddJoint(0).GetId32();
    const auto show = [&](const CDrawfig* fig, long web, long id) {
        return shown(ResolveMcLadist, &manager, fig, web, id);
    };
    EXPECT_EQ(show(&drawfig, net["W"], lateral), L"1.235");
    EXPECT_EQ(show(&drawfig, net["W"], joint), kNoLabel);
    EXPECT_EQ(show(nullptr, net["W"], lateral), kNoLabel);
    EXPECT_EQ(show(&drawfig, 0, lateral), kNoLabel);
    EXPECT_EQ(show(&drawfig, net["W"], 0), kNoLabel);
    net.Web("W").SetDisposalType(4);
    EXPECT_EQ(show(&drawfig, net["W"], joint), L"6.790");
    EXPECT_EQ(shown(ResolveMcLadist, nullptr, &drawfig, net["W"], joint), kNoLabel);
}
