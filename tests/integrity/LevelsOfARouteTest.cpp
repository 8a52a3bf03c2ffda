// One route with everything that stands on it, every level worked out by hand.

#include "integrity/RecordsOnRoutes.h"

#include <gmock/gmock.h>

namespace {

using support::Network;
using support::number;
using support::values;

using Pairs = std::initializer_list<std::pair<const wchar_t*, const wchar_t*>>;

// The route, from the top down; levels at the upper end of each span:
//
//     span     a-b   b-c   c-d   d-e   e-f   node f
//     length    10    20    30    40    50            150 in all
//     starts     0    10    30    60   100   150
//     planned  100   101   103   102   104   106
//     existing  99   100   102   101   103   104
//
// Sections: P300 is a pipe of 0.3 with walls of 0.05: 0.4 wide outside, 0.35 from the invert to the outer top, 0.05
// below. B2 is a closed box of 2 x 1 with 0.1 on top and 0.2 below: 2.2 wide, 1.1 and 0.2.
class LevelsOfARoute : public testing::Test {
protected:
    Network m_net{"W: R = d-e, a-b, c-d, e-f, b-c; V: T = x-y"};
    CObjectManager& m_manager = m_net.manager;
    long m_pipe = 0;

    void SetUp() override
    {
        m_net.Set(L"splength", {{"a-b", L"10"}, {"b-c", L"20"}, {"c-d", L"30"}, {"d-e", L"40"}, {"e-f", L"50"}});
        m_net.Set(L"newgl", {{"a-b", L"100"}, {"b-c", L"101"}, {"c-d", L"103"}, {"d-e", L"102"}, {"e-f", L"104"}});
        m_net.Set(L"oldgl", {{"a-b", L"99"}, {"b-c", L"100"}, {"c-d", L"102"}, {"d-e", L"101"}, {"e-f", L"103"}});
        m_net.Set(L"ndnewgl", {{"f", L"106"}});
        m_net.Set(L"ndoldgl", {{"f", L"104"}});
        m_pipe =
            m_manager.CreatePipe(values({{L"pename", L"P300"}, {L"pedia", L"0.3"}, {L"pethick", L"0.05"}}))->GetId32();
        m_manager.CreateCbox(values({{L"cbname", L"B2"},
                                     {L"cbwidth", L"2"},
                                     {L"cbheight", L"1"},
                                     {L"cbtthick", L"0.1"},
                                     {L"cbbthick", L"0.2"}}));
        m_net.Set(L"spsecrecname", {{"x-y", L"B2"}});
    }
    CGlChange& Change(Pairs entered) { return *m_manager.CreateGlChange(m_net["R"], values(entered)); }
    CIntPos& Point(long crossed, Pairs entered)
    {
        return *m_manager.CreateIntPos(m_net["R"], crossed, values(entered));
    }
    CLateral& Lateral(Pairs entered) { return *m_manager.CreateLateral(m_net["R"], values(entered)); }

    std::string SpanOf(const CPipeObject& record, const wchar_t* key)
    {
        return m_net.NameOf(record.GetSubAttributeInt(key, -1));
    }
    void ExpectOn(const char* span, double distance, double level, const CGlChange& record)
    {
        EXPECT_EQ(SpanOf(record, L"glspanid"), span);
        EXPECT_NEAR(number(record, L"gldist"), distance, 1e-9);
        EXPECT_NEAR(number(record, L"glelev"), level, 1e-9);
    }
    void ExpectOn(const char* span, double distance, double level, const CIntPos& point)
    {
        EXPECT_EQ(SpanOf(point, L"ipspanid"), span);
        EXPECT_NEAR(number(point, L"ipdist"), distance, 1e-9);
        EXPECT_NEAR(number(point, L"ipinv"), level, 1e-9);
    }
    void ExpectOn(const char* span, double distance, double level, const CLateral& lateral)
    {
        EXPECT_EQ(SpanOf(lateral, L"laspanid"), span);
        EXPECT_NEAR(number(lateral, L"ladist"), distance, 1e-9);
        EXPECT_NEAR(number(lateral, L"laelev"), level, 1e-9);
    }
};

TEST_F(LevelsOfARoute, AreThoseWorkedOutByHand)
{
    // 45 m down the route: c-d starts at 30, so 15 m down c-d. An elevation is taken over.
    const CGlChange& elevation = Change({{L"glindist", L"45"}, {L"glhilevel", L"1"}, {L"glinhi", L"104.5"}});
    // 20 m down c-d. Between the elevation (15, 104.5) and d-e's start (30, 102): 104.5 - 2.5 * 5/15 = 103.667;
    // 0.25 below it.
    const CGlChange& relative = Change({{L"glspannum", L"3"}, {L"glindist", L"20"}, {L"glinhi", L"0.25"}});
    // 70 m up from the end: e-f takes 50, the other 20 go into d-e: 40 - 20 = 20 m down d-e. On the planned line, as a
    // change of both lines: 102 + 2 * 20/40 = 103; 0.5 below it.
    const CGlChange& both =
        Change({{L"glindist", L"70"}, {L"gldistdir", L"1"}, {L"gltype", L"2"}, {L"glinhi", L"0.5"}});
    // 10 m up from the end of e-f: 40 m down. On the existing line: 103 + 1 * 40/50 = 103.8; 1 below it.
    const CGlChange& existing = Change(
        {{L"glspannum", L"5"}, {L"glindist", L"10"}, {L"gldistdir", L"1"}, {L"gltype", L"1"}, {L"glinhi", L"1"}});
    ASSERT_TRUE(m_manager.update_GlChange(m_net["W"], true));
    ExpectOn("c-d", 15, 104.5, elevation);
    ExpectOn("c-d", 20, 103.417, relative);
    ExpectOn("d-e", 20, 102.5, both);
    ExpectOn("e-f", 40, 102.8, existing);

    // A circle of 0.6, planned covering of 1.2, 24 m down c-d. Ground between (20, 103.417) and (30, 102):
    // 103.417 - 1.417 * 4/10 = 102.850; minus 0.6, minus 1.2.
    CInters& circle = *m_manager.CreateInters(values({{L"shape", L"1"}, {L"inwidth", L"0.6"}, {L"itcol", L"1"}}));
    const CIntPos& atCircle =
        Point(circle.GetId32(), {{L"ipspannum", L"3"}, {L"ipindist", L"24"}, {L"ipinhi", L"1.2"}});
    // Two rectangles of 1.5 on top of each other, existing covering of 1 at the end of d-e: 103 there, as nothing
    // stands between the change at 20 and e-f's start; minus 3, minus 1. 68 m down the route is 8 m down d-e.
    CInters& rectangle = *m_manager.CreateInters(
        values({{L"shape", L"3"}, {L"inwidth", L"2"}, {L"inheight", L"1.5"}, {L"itcol", L"2"}}));
    const CIntPos& atRectangle =
        Point(rectangle.GetId32(), {{L"ipindist", L"68"}, {L"iphilevel", L"4"}, {L"ipinhi", L"1"}, {L"defbase", L"2"}});
    // Three pipes P300, inner top at 98: 98 - 3 * 0.4 + 0.05. The whole length from above: the end of e-f.
    CInters& section = *m_manager.CreateInters(values({{L"shape", L"0"}, {L"inwidth", L"P300"}, {L"itcol", L"3"}}));
    const CIntPos& atSection =
        Point(section.GetId32(), {{L"ipindist", L"150"}, {L"iphilevel", L"1"}, {L"ipinhi", L"98"}});
    // The other web's span with its box B2, centre at 95: 95 - 1.3/2. 5 m up from the end of b-c.
    const CIntPos& atSpan = Point(
        m_net["x-y"],
        {{L"ipspannum", L"2"}, {L"ipindist", L"5"}, {L"ipdistdir", L"1"}, {L"iphilevel", L"2"}, {L"ipinhi", L"95"}});
    ASSERT_TRUE(m_manager.update_IntPos(m_net["W"], true));
    ExpectOn("c-d", 24, 101.05, atCircle);
    ExpectOn("d-e", 8, 99.0, atRectangle);
    ExpectOn("e-f", 50, 96.85, atSection);
    ExpectOn("b-c", 15, 94.35, atSpan);
    EXPECT_NEAR(number(circle, L"itheight"), 0.6, 1e-9);
    EXPECT_NEAR(number(rectangle, L"itwidth"), 2.0, 1e-9);
    EXPECT_NEAR(number(rectangle, L"itheight"), 1.5, 1e-9);
    EXPECT_NEAR(number(section, L"itwidth"), 0.4, 1e-9);
    EXPECT_NEAR(number(section, L"itheight"), 0.4, 1e-9);
    EXPECT_EQ(section.GetSubAttributeInt(L"itsecrecid", 0), m_pipe);

    // Covering of 1, 5 m down a-b: ground 100.5; minus 0.4, minus 1.
    const CLateral& covered = Lateral({{L"laindist", L"5"}, {L"lasecrecname", L"P300"}, {L"lainhi", L"1"}});
    // The outer bottom as it is entered; 150 m up from the end is the start of a-b.
    const CLateral& bottom = Lateral({{L"laindist", L"150"},
                                      {L"ladistdir", L"1"},
                                      {L"lasecrecname", L"P300"},
                                      {L"lahilevel", L"1"},
                                      {L"lainhi", L"97.3"}});
    // The invert, 0.05 above the outer bottom.
    const CLateral& invert = Lateral({{L"laspannum", L"4"},
                                      {L"laindist", L"40"},
                                      {L"lasecrecname", L"P300"},
                                      {L"lahilevel", L"2"},
                                      {L"lainhi", L"97.3"}});
    ASSERT_TRUE(m_manager.update_Lateral(m_net["W"], true));
    ExpectOn("a-b", 5, 99.1, covered);
    ExpectOn("a-b", 0, 97.3, bottom);
    ExpectOn("d-e", 40, 97.25, invert);
    EXPECT_NEAR(number(covered, L"lawidth"), 0.4, 1e-9);
    EXPECT_NEAR(number(covered, L"laheight"), 0.4, 1e-9);
}

} // namespace
