// Levels of crossings and laterals, the dimensions of sections, and what a crossing point lies on.

#include "integrity/RecordsOnRoutes.h"

#include <gmock/gmock.h>

namespace {

using support::Network;
using support::number;
using support::text;
using support::values;

using Pairs = std::initializer_list<std::pair<const wchar_t*, const wchar_t*>>;

// ---- get_sectinfo ----

struct SectionInfo {
    bool isKnown = false;
    long id = -1;
    CString kind = L"before";
    double outerWidth = -1, upperHeight = -1, bottomThickness = -1, innerHeight = -1, topThickness = -1,
           bottomThickness2 = -1;

    std::vector<double> Sizes() const
    {
        return {outerWidth, upperHeight, bottomThickness, innerHeight, topThickness, bottomThickness2};
    }
};

SectionInfo InfoOf(const CObjectManager& manager, const wchar_t* name)
{
    SectionInfo info;
    info.isKnown =
        manager.get_sectinfo(name, info.id, info.kind, info.outerWidth, info.upperHeight, info.bottomThickness,
                             info.innerHeight, info.topThickness, info.bottomThickness2);
    return info;
}

// Two sections of each kind, the sizes all different; binary fractions.
class SectionInfos : public testing::Test {
protected:
    Network m_net;
    CObjectManager& m_manager = m_net.manager;

    void Expect(const wchar_t* name, const CPipeObject& section, const wchar_t* kind, std::vector<double> sizes)
    {
        const SectionInfo info = InfoOf(m_manager, name);
        EXPECT_TRUE(info.isKnown);
        EXPECT_EQ(info.id, section.GetId32());
        EXPECT_EQ(info.kind, kind);
        EXPECT_EQ(info.Sizes(), sizes);
    }
};

TEST_F(SectionInfos, APipeIsAsHighAsWide)
{
    const auto& section =
        *m_manager.CreatePipe(values({{L"pename", L"P"}, {L"pedia", L"0.5"}, {L"pethick", L"0.0625"}}));
    Expect(L"P", section, L"pipe", {0.625, 0.5625, 0.0625, 0.5, 0.0625, 0.0625});
}

TEST_F(SectionInfos, AClosedBoxHasATopAndABottom)
{
    const auto& section = *m_manager.CreateCbox(values(
        {{L"cbname", L"C"}, {L"cbwidth", L"3"}, {L"cbheight", L"2"}, {L"cbbthick", L"0.5"}, {L"cbtthick", L"0.25"}}));
    Expect(L"C", section, L"cbox", {3.5, 2.25, 0.5, 2.0, 0.25, 0.5});
}

TEST_F(SectionInfos, AnOpenBoxIsMeasuredAtItsBottom)
{
    const auto& section = *m_manager.CreateObox(values({{L"obname", L"O"},
                                                        {L"obbwidth", L"3"},
                                                        {L"obtwidth", L"7"},
                                                        {L"obheight", L"2"},
                                                        {L"obbthick", L"0.5"},
                                                        {L"obtthick", L"0.25"}}));
    Expect(L"O", section, L"obox", {3.5, 2.25, 0.5, 2.0, 0.25, 0.5});
}

TEST_F(SectionInfos, AUShapeIsMeasuredAtItsBottom)
{
    const auto& section = *m_manager.CreateUbox(values({{L"ubname", L"U"},
                                                        {L"ubbwidth", L"1"},
                                                        {L"ubtwidth", L"7"},
                                                        {L"ubheight", L"1.5"},
                                                        {L"ubbthick", L"0.125"},
                                                        {L"ubtthick", L"0.0625"}}));
    Expect(L"U", section, L"ubox", {1.125, 1.5625, 0.125, 1.5, 0.0625, 0.125});
}

TEST_F(SectionInfos, AnEggIsTakenForAPipe)
{
    const auto& section = *m_manager.CreateEgg(values({{L"egname", L"E"}, {L"egdia", L"1"}, {L"egthick", L"0.125"}}));
    Expect(L"E", section, L"egg", {1.25, 1.125, 0.125, 1.0, 0.125, 0.125});
}

TEST_F(SectionInfos, SizesThatAreNotThereAreZero)
{
    const auto& section = *m_manager.CreateCbox(values({{L"cbname", L"C"}, {L"cbtthick", L"0.25"}}));
    Expect(L"C", section, L"cbox", {0.5, 0.25, 0, 0, 0.25, 0});
}

TEST_F(SectionInfos, OfEqualNamesTheFirstKindInLookUpOrderCounts)
{
    m_manager.CreateEgg(values({{L"egname", L"X"}, {L"egdia", L"1"}}));
    const auto& box = *m_manager.CreateObox(values({{L"obname", L"X"}, {L"obheight", L"2"}}));
    Expect(L"X", box, L"obox", {0, 2, 0, 2, 0, 0});
}

TEST_F(SectionInfos, AnUnknownNameGivesFalseAndZeros)
{
    m_manager.CreatePipe(values({{L"pename", L"P"}, {L"pedia", L"0.5"}}));
    for (const wchar_t* name : {L"p", L"", static_cast<const wchar_t*>(nullptr)}) {
        const SectionInfo info = InfoOf(m_manager, name);
        EXPECT_FALSE(info.isKnown);
        EXPECT_EQ(info.id, 0);
        EXPECT_EQ(info.Sizes(), std::vector<double>(6, 0.0));
    }
}

// ---- the levels ----

class Levels : public testing::Test {
protected:
    Network m_net{"W: R = a-b; V: T = e-f"};
    CObjectManager& m_manager = m_net.manager;
    long m_box = 0;

    // 10 m long; planned ground from 100 to 110, existing from 90 to 100.
    void SetUp() override
    {
        m_net.Set(L"splength", {{"a-b", L"10"}, {"e-f", L"10"}});
        m_net.Set(L"newgl", {{"a-b", L"100"}});
        m_net.Set(L"oldgl", {{"a-b", L"90"}});
        m_net.Set(L"ndnewgl", {{"b", L"110"}});
        m_net.Set(L"ndoldgl", {{"b", L"100"}});
        const CCbox* const box = m_manager.CreateCbox(values({{L"cbname", L"C"},
                                                              {L"cbwidth", L"3"},
                                                              {L"cbheight", L"2"},
                                                              {L"cbbthick", L"0.5"},
                                                              {L"cbtthick", L"0.25"}}));
        m_box = box->GetId32();
    }
    // A point 4 m from the upper end of span a-b.
    CIntPos& Point(long first, long second, Pairs entered)
    {
        CIntPos& point = *m_manager.CreateIntPos(first, second, values(entered));
        point.WriteSubAttributeInt(L"ipspanid", static_cast<int>(m_net["a-b"]));
        point.WriteSubAttribute(L"ipdist", L"4");
        return point;
    }
    CIntPos& PointWith(CInters& crossing, Pairs entered) { return Point(m_net["R"], crossing.GetId32(), entered); }
    CInters& Crossing(Pairs entered) { return *m_manager.CreateInters(values(entered)); }
    CLateral& Lateral(Pairs entered)
    {
        CLateral& lateral = *m_manager.CreateLateral(m_net["R"], values(entered));
        lateral.WriteSubAttributeInt(L"laspanid", static_cast<int>(m_net["a-b"]));
        lateral.WriteSubAttribute(L"ladist", L"4");
        return lateral;
    }
    bool Update(const CIntPos& point) { return m_manager.update_IntPosLevel(point.GetId32()); }
    bool Update(const CLateral& lateral) { return m_manager.update_LateralLevel(lateral.GetId32()); }
    double LevelOf(const CIntPos& point)
    {
        EXPECT_TRUE(Update(point));
        return number(point, L"ipinv");
    }
    double LevelOf(const CLateral& lateral)
    {
        EXPECT_TRUE(Update(lateral));
        return number(lateral, L"laelev");
    }
    // 0.5 m high.
    CInters& Circle() { return Crossing({{L"shape", L"1"}, {L"inwidth", L"0.5"}, {L"itcol", L"1"}}); }
};

using CrossingLevels = Levels;
using LateralLevels = Levels;

TEST_F(CrossingLevels, ACircleIsAsHighAsWide)
{
    CInters& crossing = Crossing({{L"shape", L"1"}, {L"inwidth", L"0.6"}, {L"itcol", L"1"}});
    EXPECT_DOUBLE_EQ(LevelOf(PointWith(crossing, {{L"iphilevel", L"2"}, {L"ipinhi", L"10"}})), 9.7);
    EXPECT_EQ(text(crossing, L"itwidth"), L"0.6000000000000");
    EXPECT_EQ(text(crossing, L"itheight"), L"0.6000000000000");
    EXPECT_EQ(text(crossing, L"itsecrecid"), L"0");
}

TEST_F(CrossingLevels, ASquareIsAsHighAsWide)
{
    CInters& crossing = Crossing(
        {{L"shape", L"2"}, {L"inwidth", L"0.5"}, {L"inheight", L"9"}, {L"itsecrecid", L"7"}, {L"itcol", L"1"}});
    EXPECT_DOUBLE_EQ(LevelOf(PointWith(crossing, {{L"iphilevel", L"1"}, {L"ipinhi", L"10"}})), 9.5);
    EXPECT_EQ(number(crossing, L"itwidth"), 0.5);
    EXPECT_EQ(number(crossing, L"itheight"), 0.5);
    EXPECT_EQ(text(crossing, L"itsecrecid"), L"0");
}

TEST_F(CrossingLevels, ARectangleHasTheEnteredWidthAndHeight)
{
    CInters& crossing = Crossing({{L"shape", L"3"}, {L"inwidth", L"2"}, {L"inheight", L"1.5"}, {L"itcol", L"1"}});
    EXPECT_DOUBLE_EQ(LevelOf(PointWith(crossing, {{L"iphilevel", L"1"}, {L"ipinhi", L"10"}})), 8.5);
    EXPECT_EQ(number(crossing, L"itwidth"), 2.0);
    EXPECT_EQ(number(crossing, L"itheight"), 1.5);
    EXPECT_EQ(text(crossing, L"itsecrecid"), L"0");
}

TEST_F(CrossingLevels, ASectionIsMeasuredOutside)
{
    CInters& crossing = Crossing({{L"inwidth", L"C"}, {L"itcol", L"1"}});
    EXPECT_TRUE(Update(PointWith(crossing, {})));
    EXPECT_EQ(number(crossing, L"itwidth"), 3.5);
    EXPECT_EQ(number(crossing, L"itheight"), 2.75);
    EXPECT_EQ(crossing.GetSubAttributeInt(L"itsecrecid", 0), m_box);
}

TEST_F(CrossingLevels, ASectionsTopAndBottomLevelsAreInside)
{
    CInters& crossing = Crossing({{L"inwidth", L"C"}, {L"itcol", L"1"}}); // 2.75 high, 0.25 on top, 0.5 below
    EXPECT_DOUBLE_EQ(LevelOf(PointWith(crossing, {{L"iphilevel", L"1"}, {L"ipinhi", L"20"}})), 17.5);
    EXPECT_DOUBLE_EQ(LevelOf(PointWith(crossing, {{L"iphilevel", L"2"}, {L"ipinhi", L"20"}})), 18.625);
    EXPECT_DOUBLE_EQ(LevelOf(PointWith(crossing, {{L"iphilevel", L"3"}, {L"ipinhi", L"20"}})), 19.5);
}

TEST_F(CrossingLevels, ABodyWithoutSectionHasNoWalls)
{
    EXPECT_DOUBLE_EQ(LevelOf(PointWith(Circle(), {{L"iphilevel", L"1"}, {L"ipinhi", L"20"}})), 19.5);
    EXPECT_DOUBLE_EQ(LevelOf(PointWith(Circle(), {{L"iphilevel", L"3"}, {L"ipinhi", L"20"}})), 20.0);
}

TEST_F(CrossingLevels, ACoveringGoesDownFromTheGroundToTheTop)
{
    EXPECT_DOUBLE_EQ(LevelOf(PointWith(Circle(), {{L"iphilevel", L"0"}, {L"ipinhi", L"2"}})), 101.5); // 104 - .5 - 2
    EXPECT_DOUBLE_EQ(LevelOf(PointWith(Circle(), {{L"iphilevel", L"4"}, {L"ipinhi", L"2"}})), 91.5);  // 94 - .5 - 2
    CInters& section = Crossing({{L"inwidth", L"C"}, {L"itcol", L"1"}});
    EXPECT_DOUBLE_EQ(LevelOf(PointWith(section, {{L"ipinhi", L"2"}})), 99.25); // 104 - 2.75 - 2
}

TEST_F(CrossingLevels, ACoveringIsMeasuredAtThePointOrAtAnEndOfTheSpan)
{
    const std::pair<const wchar_t*, double> bases[] = {
        {L"0", 103.5}, {L"1", 99.5}, {L"2", 109.5}, {L"3", -0.5}, {L"-1", -0.5}};
    for (const auto& [base, level] : bases)
        EXPECT_DOUBLE_EQ(LevelOf(PointWith(Circle(), {{L"defbase", base}})), level);
}

TEST_F(CrossingLevels, ThePlaceOfTheCoveringIsReadFromTheCrossingWhereThePointHasNone)
{
    CInters& crossing = Circle();
    crossing.WriteSubAttribute(L"defbase", L"2");
    EXPECT_DOUBLE_EQ(LevelOf(PointWith(crossing, {})), 109.5);
    EXPECT_DOUBLE_EQ(LevelOf(PointWith(crossing, {{L"defbase", L"1"}})), 99.5);
}

TEST_F(CrossingLevels, AllGroundChangesCountForACovering)
{
    CGlChange& relative = *m_manager.CreateGlChange(m_net["R"], values({{L"gldist", L"4"}, {L"glelev", L"200"}}));
    relative.WriteSubAttributeInt(L"glspanid", static_cast<int>(m_net["a-b"]));
    EXPECT_DOUBLE_EQ(LevelOf(PointWith(Circle(), {})), 199.5);
}

TEST_F(CrossingLevels, AnyOtherHeightStandardIsLevelZero)
{
    for (const wchar_t* standard : {L"5", L"-1"})
        EXPECT_EQ(LevelOf(PointWith(Circle(), {{L"iphilevel", standard}, {L"ipinhi", L"7"}})), 0.0);
}

TEST_F(CrossingLevels, StackedPipesMultiplyTheHeightInTheLevelOnly)
{
    CInters& crossing = Crossing({{L"shape", L"1"}, {L"inwidth", L"0.5"}, {L"itcol", L"2"}});
    EXPECT_DOUBLE_EQ(LevelOf(PointWith(crossing, {{L"iphilevel", L"1"}, {L"ipinhi", L"20"}})), 19.0);
    EXPECT_DOUBLE_EQ(LevelOf(PointWith(crossing, {{L"iphilevel", L"2"}, {L"ipinhi", L"20"}})), 19.5);
    EXPECT_DOUBLE_EQ(LevelOf(PointWith(crossing, {{L"ipinhi", L"1"}})), 102.0);
    EXPECT_EQ(number(crossing, L"itheight"), 0.5);
}

TEST_F(CrossingLevels, AnUnknownShapeHasNoSize)
{
    CInters& crossing = Crossing({{L"shape", L"5"}, {L"inwidth", L"C"}, {L"itwidth", L"8"}, {L"itcol", L"1"}});
    EXPECT_DOUBLE_EQ(LevelOf(PointWith(crossing, {{L"iphilevel", L"1"}, {L"ipinhi", L"20"}})), 20.0);
    EXPECT_EQ(text(crossing, L"itsecrecid"), L"0");
    EXPECT_EQ(number(crossing, L"itwidth"), 0.0);
    EXPECT_EQ(number(crossing, L"itheight"), 0.0);
}

TEST_F(CrossingLevels, ShapeFourKeepsTheSizeThatIsWritten)
{
    CInters& crossing =
        Crossing({{L"shape", L"4"}, {L"inwidth", L"C"}, {L"itwidth", L"8"}, {L"itheight", L"9"}, {L"itcol", L"1"}});
    EXPECT_DOUBLE_EQ(LevelOf(PointWith(crossing, {{L"iphilevel", L"3"}, {L"ipinhi", L"20"}})), 20.0);
    EXPECT_EQ(text(crossing, L"itsecrecid"), L"0");
    EXPECT_EQ(text(crossing, L"itwidth"), L"8");
    EXPECT_EQ(text(crossing, L"itheight"), L"9");
}

TEST_F(CrossingLevels, ASpanOfAnotherWebIsMeasuredByItsSection)
{
    m_net.Set(L"spsecrecname", {{"e-f", L"C"}});
    const auto levelBy = [&](const wchar_t* standard) {
        return LevelOf(Point(m_net["R"], m_net["e-f"], {{L"iphilevel", standard}, {L"ipinhi", L"20"}}));
    };
    EXPECT_DOUBLE_EQ(levelBy(L"0"), 81.25); // 104 - 2.75 - 20
    EXPECT_DOUBLE_EQ(levelBy(L"1"), 17.5);
    EXPECT_DOUBLE_EQ(levelBy(L"2"), 18.625);
    EXPECT_DOUBLE_EQ(levelBy(L"3"), 19.5);
    EXPECT_DOUBLE_EQ(levelBy(L"4"), 71.25);
    EXPECT_EQ(m_net.Get(L"itwidth", "e-f"), L"-");
    EXPECT_EQ(m_net.Get(L"itsecrecid", "e-f"), L"-");
}

TEST_F(CrossingLevels, TheCrossingMayBeTheFirstId)
{
    CInters& crossing = Circle();
    const CIntPos& point = Point(crossing.GetId32(), m_net["R"], {{L"iphilevel", L"3"}, {L"ipinhi", L"20"}});
    EXPECT_DOUBLE_EQ(LevelOf(point), 20.0);
    EXPECT_EQ(number(crossing, L"itwidth"), 0.5);
}

TEST_F(CrossingLevels, ACrossedSpanIsTheSecondIdOnly)
{
    m_net.Set(L"spsecrecname", {{"e-f", L"C"}});
    const CIntPos& point = Point(m_net["e-f"], m_net["R"], {{L"ipinv", L"7"}});
    EXPECT_FALSE(Update(point));
    EXPECT_EQ(text(point, L"ipinv"), L"7");
}

TEST_F(CrossingLevels, WithoutPointSpanOrCrossingNothingIsWritten)
{
    for (const long unknown : {0L, -1L, 99999L, m_net["R"]})
        EXPECT_FALSE(m_manager.update_IntPosLevel(unknown));
    CInters& crossing = Circle();
    CIntPos& onNoSpan = PointWith(crossing, {});
    for (const wchar_t* span : {L"0", L"99999"}) {
        onNoSpan.WriteSubAttribute(L"ipspanid", span);
        EXPECT_FALSE(Update(onNoSpan));
    }
    EXPECT_FALSE(Update(Point(m_net["R"], 99999, {})));
    EXPECT_FALSE(Update(Point(99999, m_net["R"], {})));
    EXPECT_FALSE(Update(Point(99999, crossing.GetId32(), {})));
    EXPECT_EQ(text(onNoSpan, L"ipinv"), L"-");
    EXPECT_EQ(text(crossing, L"itwidth"), L"-");
}

TEST_F(CrossingLevels, WithoutASectionNothingIsWritten)
{
    for (const wchar_t* name : {L"", L"unknown"}) {
        CInters& crossing = Crossing({{L"shape", L"0"}, {L"inwidth", name}, {L"itsecrecid", L"7"}});
        const CIntPos& point = PointWith(crossing, {});
        EXPECT_FALSE(Update(point));
        EXPECT_EQ(text(point, L"ipinv"), L"-");
        EXPECT_EQ(text(crossing, L"itsecrecid"), L"7");
        EXPECT_EQ(text(crossing, L"itwidth"), L"-");
        m_net.Set(L"spsecrecname", {{"e-f", name}});
        EXPECT_FALSE(Update(Point(m_net["R"], m_net["e-f"], {})));
    }
}

// A section without a name is found by the empty name, but no crossing has it.
TEST_F(CrossingLevels, AnEmptySectionNameIsNoSection)
{
    m_manager.CreatePipe(values({{L"pedia", L"1"}}));
    EXPECT_FALSE(Update(PointWith(Crossing({{L"inwidth", L""}}), {})));
    m_net.Set(L"spsecrecname", {{"e-f", L""}});
    EXPECT_FALSE(Update(Point(m_net["R"], m_net["e-f"], {})));
    EXPECT_FALSE(Update(Lateral({{L"lasecrecname", L""}})));
}

TEST_F(CrossingLevels, AreSetWithThePlaceWhenAskedFor)
{
    CInters& crossing = Circle();
    const CIntPos& on = *m_manager.CreateIntPos(
        m_net["R"], crossing.GetId32(),
        values({{L"ipspannum", L"1"}, {L"ipindist", L"4"}, {L"iphilevel", L"3"}, {L"ipinhi", L"20"}}));
    const CIntPos& off = *m_manager.CreateIntPos(
        m_net["R"], crossing.GetId32(),
        values({{L"ipspannum", L"2"}, {L"ipindist", L"4"}, {L"iphilevel", L"3"}, {L"ipinhi", L"20"}}));
    EXPECT_TRUE(m_manager.update_IntPos(m_net["W"], false));
    EXPECT_EQ(text(on, L"ipinv"), L"-");
    EXPECT_TRUE(m_manager.update_IntPos(m_net["W"], true));
    EXPECT_EQ(text(on, L"ipinv"), L"20.0000000000000");
    EXPECT_EQ(text(off, L"ipspanid"), L"0");
    EXPECT_EQ(text(off, L"ipinv"), L"-");
}

TEST_F(CrossingLevels, ThatCannotBeSetDoNotStopThePlacing)
{
    const CIntPos& noCrossing = *m_manager.CreateIntPos(m_net["R"], 99999, values({{L"ipindist", L"4"}}));
    const CIntPos& circle =
        *m_manager.CreateIntPos(m_net["R"], Circle().GetId32(), values({{L"ipindist", L"4"}, {L"iphilevel", L"3"}}));
    EXPECT_TRUE(m_manager.update_IntPos(m_net["W"], true));
    EXPECT_EQ(number(noCrossing, L"ipdist"), 4.0);
    EXPECT_EQ(number(circle, L"ipinv"), 0.0);
}

// ---- laterals ----

TEST_F(LateralLevels, FollowTheHeightStandard)
{
    const auto levelBy = [&](const wchar_t* standard) {
        return LevelOf(Lateral({{L"lasecrecname", L"C"}, {L"lahilevel", standard}, {L"lainhi", L"20"}}));
    };
    EXPECT_DOUBLE_EQ(levelBy(L"0"), 81.25); // 104 - 2.25 - 0.5 - 20
    EXPECT_DOUBLE_EQ(levelBy(L"1"), 20.0);
    EXPECT_DOUBLE_EQ(levelBy(L"2"), 19.5);
    EXPECT_EQ(levelBy(L"3"), 0.0);
    EXPECT_EQ(levelBy(L"-1"), 0.0);
}

TEST_F(LateralLevels, TheSizeIsWrittenFromTheSection)
{
    const CLateral& lateral = Lateral({{L"lasecrecname", L"C"}});
    EXPECT_TRUE(Update(lateral));
    EXPECT_EQ(text(lateral, L"lawidth"), L"3.5000000000000");
    EXPECT_EQ(text(lateral, L"laheight"), L"2.7500000000000");
}

TEST_F(LateralLevels, WithoutSectionSpanOrLateralNothingIsWritten)
{
    for (const long unknown : {0L, -1L, 99999L, m_net["R"]})
        EXPECT_FALSE(m_manager.update_LateralLevel(unknown));
    CLateral& offTheRoute = Lateral({{L"lasecrecname", L"C"}, {L"lahilevel", L"1"}});
    offTheRoute.WriteSubAttribute(L"laspanid", L"0");
    for (const CLateral* lateral : {&Lateral({}), &Lateral({{L"lasecrecname", L"unknown"}}), &offTheRoute}) {
        EXPECT_FALSE(Update(*lateral));
        EXPECT_EQ(text(*lateral, L"lawidth"), L"-");
        EXPECT_EQ(text(*lateral, L"laelev"), L"-");
    }
}

TEST_F(LateralLevels, AreSetWithThePlaceWhenAskedFor)
{
    const CLateral& lateral = *m_manager.CreateLateral(
        m_net["R"], values({{L"laindist", L"6"}, {L"ladistdir", L"1"}, {L"lasecrecname", L"C"}, {L"lainhi", L"1"}}));
    EXPECT_TRUE(m_manager.update_Lateral(m_net["W"], false));
    EXPECT_EQ(number(lateral, L"ladist"), 4.0);
    EXPECT_EQ(text(lateral, L"laelev"), L"-");
    EXPECT_TRUE(m_manager.update_Lateral(m_net["W"], true));
    EXPECT_DOUBLE_EQ(number(lateral, L"laelev"), 100.25); // 104 - 2.75 - 1
}

} // namespace
