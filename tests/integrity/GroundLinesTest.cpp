// The ground level at a point of a span, levels filled in along a stretch, and lengths along a route.

#include "integrity/RecordsOnRoutes.h"

#include <gmock/gmock.h>

#include <cmath>
#include <random>

namespace {

using support::ConstSpans;
using support::Ids;
using support::Network;
using support::text;
using support::values;

using Pairs = std::initializer_list<std::pair<const wchar_t*, const wchar_t*>>;

// ---- get_PosGl ----

class GroundLevels : public testing::Test {
protected:
    Network m_net{"W: R = a-b-c; S = d-b"};

    void SetUp() override
    {
        m_net.Set(L"splength", {{"a-b", L"10"}, {"b-c", L"20"}, {"d-b", L"10"}});
        m_net.Set(L"newgl", {{"a-b", L"100"}, {"b-c", L"110"}, {"d-b", L"130"}});
        m_net.Set(L"oldgl", {{"a-b", L"90"}, {"b-c", L"94"}, {"d-b", L"91"}});
        m_net.Set(L"ndnewgl", {{"b", L"500"}, {"c", L"120"}});
        m_net.Set(L"ndoldgl", {{"b", L"600"}, {"c", L"98"}});
    }
    double At(const char* span, double distance, int type = 0, int mode = 0)
    {
        return m_net.manager.get_PosGl(m_net[span], type, distance, mode);
    }
    // A ground change as it stands after placing.
    void Change(const char* span, double distance, double level, Pairs more = {})
    {
        CGlChange& record = *m_net.manager.CreateGlChange(m_net["R"], values(more));
        record.WriteSubAttributeInt(L"glspanid", static_cast<int>(m_net[span]));
        record.WriteSubAttributeDouble(L"gldist", distance);
        record.WriteSubAttributeDouble(L"glelev", level);
    }
};

TEST_F(GroundLevels, BetweenTwoSpansTheLineRunsToTheStartOfTheLowerSpan)
{
    EXPECT_DOUBLE_EQ(At("a-b", 5), 105.0);
    EXPECT_DOUBLE_EQ(At("a-b", 10), 110.0);
    EXPECT_DOUBLE_EQ(At("a-b", 5, 1), 92.0);
}

TEST_F(GroundLevels, TheLowerSpanMayBelongToAnotherRoute)
{
    EXPECT_DOUBLE_EQ(At("d-b", 5), 120.0);
}

TEST_F(GroundLevels, OnTheLastSpanTheLineRunsToTheLowerNode)
{
    EXPECT_DOUBLE_EQ(At("b-c", 10), 115.0);
    EXPECT_DOUBLE_EQ(At("b-c", 10, 1), 96.0);
}

TEST_F(GroundLevels, WithoutALowerNodeTheLineRunsToZero)
{
    m_net.Span("b-c").SetLowerNodeId(99999);
    EXPECT_DOUBLE_EQ(At("b-c", 10), 55.0);
}

TEST_F(GroundLevels, EveryTypeButOneIsThePlannedLine)
{
    for (const int type : {0, 2, 3, -1})
        EXPECT_DOUBLE_EQ(At("a-b", 5, type), 105.0) << type;
}

TEST_F(GroundLevels, AtTheStartTheLevelIsTheSpansOwnWhateverTheRecordsSay)
{
    Change("a-b", 0, 300);
    Change("a-b", 1, 400);
    for (const int mode : {0, 1, 2})
        EXPECT_DOUBLE_EQ(At("a-b", 0, 0, mode), 100.0) << mode;
}

TEST_F(GroundLevels, TheNearestRecordOnEachSideCounts)
{
    Change("a-b", 2, 200);
    Change("a-b", 4, 104);
    Change("a-b", 8, 108.8);
    Change("a-b", 9, 900);
    EXPECT_DOUBLE_EQ(At("a-b", 6, 0, 2), 106.4);
    EXPECT_DOUBLE_EQ(At("a-b", 1, 0, 2), 150.0);
    EXPECT_DOUBLE_EQ(At("a-b", 9.5, 0, 2), 505.0);
}

TEST_F(GroundLevels, ARecordExactlyAtThePointGivesItsLevel)
{
    Change("a-b", 4, 123);
    EXPECT_DOUBLE_EQ(At("a-b", 4, 0, 2), 123.0);
}

TEST_F(GroundLevels, RecordsBeyondTheSpanDoNotCount)
{
    Change("a-b", 10, 999);
    Change("a-b", 12, 999);
    Change("a-b", -1, 999);
    EXPECT_DOUBLE_EQ(At("a-b", 5, 0, 2), 105.0);
}

TEST_F(GroundLevels, ModeZeroGoesByTheEndsOnly)
{
    Change("a-b", 4, 200, {{L"glhilevel", L"1"}});
    EXPECT_DOUBLE_EQ(At("a-b", 4, 0, 0), 104.0);
    EXPECT_DOUBLE_EQ(At("a-b", 4, 0, 1), 200.0);
    EXPECT_DOUBLE_EQ(At("a-b", 4, 0, 2), 200.0);
}

TEST_F(GroundLevels, ModeOneLeavesOutRelativeHeights)
{
    Change("a-b", 4, 200, {{L"glhilevel", L"0"}});
    EXPECT_DOUBLE_EQ(At("a-b", 4, 0, 1), 104.0);
    EXPECT_DOUBLE_EQ(At("a-b", 4, 0, 2), 200.0);
    EXPECT_DOUBLE_EQ(At("a-b", 4, 0, -7), 200.0);
}

TEST_F(GroundLevels, RecordsCountForTheirOwnLineAndThoseOfBothForEach)
{
    Change("a-b", 4, 200, {{L"gltype", L"1"}});
    Change("a-b", 6, 300, {{L"gltype", L"2"}});
    EXPECT_DOUBLE_EQ(At("a-b", 4, 1, 2), 200.0);
    EXPECT_DOUBLE_EQ(At("a-b", 3, 0, 2), 200.0); // 100 to 300 over 6 m
    EXPECT_DOUBLE_EQ(At("a-b", 6, 1, 2), 300.0);
    EXPECT_DOUBLE_EQ(At("a-b", 3, 2, 2), 200.0);
}

TEST_F(GroundLevels, RecordsOfAnotherSpanDoNotCount)
{
    Change("b-c", 4, 200);
    EXPECT_DOUBLE_EQ(At("a-b", 4, 0, 2), 104.0);
}

TEST_F(GroundLevels, TheLineGoesOnBeyondTheEnds)
{
    EXPECT_DOUBLE_EQ(At("a-b", 12), 112.0);
    EXPECT_DOUBLE_EQ(At("a-b", -2), 100.0);
}

TEST_F(GroundLevels, ASpanWithoutLengthHasItsOwnLevel)
{
    m_net.Set(L"splength", {{"a-b", L"0"}});
    EXPECT_DOUBLE_EQ(At("a-b", 5), 100.0);
}

TEST_F(GroundLevels, LevelsAreRoundedToMillimetres)
{
    const std::pair<const wchar_t*, double> cases[] = {{L"12.3456", 12.346}, {L"12.3449", 12.345}, {L"12.3451", 12.345},
                                                       {L"-1.2344", -1.234}, {L"-1.2346", -1.235}, {L"0", 0.0}};
    for (const auto& [level, rounded] : cases) {
        m_net.Set(L"newgl", {{"a-b", level}});
        EXPECT_DOUBLE_EQ(At("a-b", 0), rounded) << std::string(level, level + std::wcslen(level));
    }
}

TEST_F(GroundLevels, AnUnknownSpanIsAtZero)
{
    for (const long unknown : {0L, -1L, 99999L, m_net["R"]})
        EXPECT_EQ(m_net.manager.get_PosGl(unknown, 0, 5, 2), 0.0);
}

// Ground points of a span as a line: the level at each distance by a walk over the sorted points.
TEST_F(GroundLevels, AgreesWithAPlainLineOnRandomRecords)
{
    const unsigned seed = support::testSeed(11);
    std::mt19937 random(seed);
    std::map<double, double> points{{0.0, 100.0}, {10.0, 110.0}};
    for (int i = 0; i < 12; ++i) {
        const double distance = static_cast<double>(random() % 79 + 1) / 8.0;
        const double level = static_cast<double>(random() % 2000) / 8.0;
        if (!points.emplace(distance, level).second) continue;
        Change("a-b", distance, level);
    }
    for (double distance = 0.0625; distance < 10.0; distance += 0.0625) {
        const auto right = points.lower_bound(distance);
        const auto left = std::prev(right);
        const double share = (distance - left->first) / (right->first - left->first);
        EXPECT_NEAR(At("a-b", distance, 0, 2), left->second + share * (right->second - left->second), 0.000501)
            << "seed " << seed << " at " << distance;
    }
}

// ---- SupplementGl ----

class Supplement : public testing::Test {
protected:
    Network m_net{"W: R = a-b-c-d"};

    void SetUp() override
    {
        m_net.Set(L"splength", {{"a-b", L"10"}, {"b-c", L"30"}, {"c-d", L"60"}});
        m_net.Set(L"newgl", {{"a-b", L"100"}, {"c-d", L"108"}});
        m_net.Set(L"oldgl", {{"a-b", L"90"}, {"c-d", L"98"}});
        m_net.Set(L"ndnewgl", {{"d", L"200"}});
        m_net.Set(L"ndoldgl", {{"d", L"40"}});
    }
    bool Fill(const char* spans, const char* node = nullptr)
    {
        Ids ids = m_net.List(spans);
        long nodeId = node ? m_net[node] : 0;
        return m_net.manager.SupplementGl(ids, node ? &nodeId : nullptr);
    }
};

TEST_F(Supplement, RunsStraightToTheNode)
{
    EXPECT_TRUE(Fill("a-b b-c c-d", "d"));
    EXPECT_EQ(m_net.Get(L"newgl", "a-b b-c c-d"), L"   100.000000    110.000000    140.000000");
    EXPECT_EQ(m_net.Get(L"oldgl", "a-b b-c c-d"), L"    90.000000     85.000000     70.000000");
}

TEST_F(Supplement, WithoutANodeTheLastSpanOnlyGivesTheEndLevel)
{
    EXPECT_TRUE(Fill("a-b b-c c-d"));
    EXPECT_EQ(m_net.Get(L"newgl", "a-b b-c c-d"), L"   100.000000    102.000000 108"); // 8 m over 40 m
    EXPECT_EQ(m_net.Get(L"oldgl", "a-b b-c c-d"), L"    90.000000     92.000000 98");
}

TEST_F(Supplement, ASingleSpanNeedsANode)
{
    EXPECT_FALSE(Fill("a-b"));
    EXPECT_EQ(m_net.Get(L"newgl", "a-b"), L"100");
    EXPECT_TRUE(Fill("a-b", "d"));
    EXPECT_EQ(m_net.Get(L"newgl", "a-b"), L"   100.000000");
}

TEST_F(Supplement, AStretchWithoutLengthIsRefused)
{
    m_net.Set(L"splength", {{"a-b", L"0"}, {"b-c", L"0.00000000001"}});
    EXPECT_FALSE(Fill("a-b b-c c-d"));
    EXPECT_EQ(m_net.Get(L"newgl", "a-b b-c"), L"100 -");
}

TEST_F(Supplement, LevelsAreWrittenWithSixDecimalsToThirteenCharacters)
{
    m_net.Set(L"newgl", {{"a-b", L"-1234567.12345678"}});
    EXPECT_TRUE(Fill("a-b", "d"));
    EXPECT_EQ(m_net.Get(L"newgl", "a-b"), L"-1234567.123457");
    m_net.Set(L"newgl", {{"a-b", L"0"}});
    EXPECT_TRUE(Fill("a-b", "d"));
    EXPECT_EQ(m_net.Get(L"newgl", "a-b"), L"     0.000000");
}

TEST_F(Supplement, AnEmptyListIsAnInvalidArgument)
{
    EXPECT_THROW(Fill("", "d"), CInvalidArgException);
    EXPECT_THROW(Fill(""), CInvalidArgException);
}

TEST_F(Supplement, WithUnknownIdsNothingIsWritten)
{
    Ids spans = m_net.List("a-b b-c c-d");
    long unknown = 99999;
    EXPECT_FALSE(m_net.manager.SupplementGl(spans, &unknown));
    spans.AddTail(unknown);
    EXPECT_FALSE(m_net.manager.SupplementGl(spans, nullptr));
    EXPECT_EQ(m_net.Get(L"newgl", "a-b b-c c-d"), L"100 - 108");
}

// ---- GetSpanFromDistAndDir ----

class SpanFromDistance : public testing::Test {
protected:
    Network m_net{"W: R = b-c, a-b, c-d; S = e-f-e; T"};

    void SetUp() override { m_net.Set(L"splength", {{"a-b", L"4"}, {"b-c", L"8"}, {"c-d", L"16"}}); }

    std::string Found(double distance, int direction, ConstSpans* spans = nullptr, const char* route = "R")
    {
        unsigned long found = 0;
        const bool isOn = m_net.manager.GetSpanFromDistAndDir(static_cast<unsigned long>(m_net[route]), distance,
                                                              direction, &found, spans, nullptr);
        return (isOn ? "true: " : "false: ") + m_net.NameOf(static_cast<long>(found));
    }
};

TEST_F(SpanFromDistance, IsTheFirstThatReachesTheDistance)
{
    EXPECT_EQ(Found(3, 0), "true: a-b");
    EXPECT_EQ(Found(4, 0), "true: a-b");
    EXPECT_EQ(Found(4.5, 0), "true: b-c");
    EXPECT_EQ(Found(28, 0), "true: c-d");
}

TEST_F(SpanFromDistance, RunsUpwardsForAnyOtherDirection)
{
    EXPECT_EQ(Found(16, 1), "true: c-d");
    EXPECT_EQ(Found(17, 1), "true: b-c");
    EXPECT_EQ(Found(28, -1), "true: a-b");
}

TEST_F(SpanFromDistance, DistanceZeroIsTheFirstSpanOfTheSequence)
{
    EXPECT_EQ(Found(0, 0), "true: a-b");
    EXPECT_EQ(Found(0, 1), "true: c-d");
    EXPECT_EQ(Found(-5, 0), "true: a-b");
}

TEST_F(SpanFromDistance, BeyondTheRouteIsTheLastSpanOfTheSequenceAndFalse)
{
    EXPECT_EQ(Found(28.5, 0), "false: c-d");
    EXPECT_EQ(Found(28.5, 1), "false: a-b");
    EXPECT_EQ(Found(std::nan(""), 0), "false: c-d");
    EXPECT_EQ(Found(HUGE_VAL, 0), "false: c-d");
}

TEST_F(SpanFromDistance, GivenSpansStandForThoseOfTheRoute)
{
    ConstSpans spans;
    for (const char* name : {"b-c", "c-d"})
        spans.AddTail(&m_net.Span(name));
    EXPECT_EQ(Found(3, 0, &spans), "true: b-c");
    EXPECT_EQ(Found(3, 1, &spans), "true: c-d");
    EXPECT_EQ(Found(20, 1, &spans), "true: b-c");
    EXPECT_EQ(Found(25, 1, &spans), "false: b-c");
    EXPECT_EQ(m_net.Names(spans), "b-c c-d");
}

TEST_F(SpanFromDistance, WithoutSpansIsAnInvalidArgument)
{
    ConstSpans none;
    EXPECT_THROW(Found(3, 0, &none), CInvalidArgException);
    EXPECT_THROW(Found(3, 0, nullptr, "S"), CInvalidArgException); // a ring has no order
    EXPECT_THROW(Found(3, 1, nullptr, "T"), CInvalidArgException);
    EXPECT_THROW(Found(3, 0, nullptr, "W"), CInvalidArgException); // no route at all
}

TEST_F(SpanFromDistance, TheResultMayBeLeftOut)
{
    const auto route = static_cast<unsigned long>(m_net["R"]);
    EXPECT_TRUE(m_net.manager.GetSpanFromDistAndDir(route, 3, 0, nullptr, nullptr, nullptr));
}

// ---- SpanEqualityLength ----

class EqualLengths : public testing::Test {
protected:
    Network m_net{"W: R = c-d, a-b, b-c; S = e-f-e; T"};
};

TEST_F(EqualLengths, AreWholeMetresAndTheLastSpanTakesTheRest)
{
    m_net.Set(L"splength", {{"a-b", L"10.5"}, {"b-c", L"10.5"}, {"c-d", L"10"}});
    EXPECT_TRUE(m_net.manager.SpanEqualityLength(m_net["R"]));
    EXPECT_EQ(m_net.Get(L"splength", "a-b b-c c-d"), L"    10.000000     10.000000     11.000000");
}

TEST_F(EqualLengths, AreCutTowardsZero)
{
    m_net.Set(L"splength", {{"a-b", L"-10.5"}, {"b-c", L"0"}, {"c-d", L"0"}});
    EXPECT_TRUE(m_net.manager.SpanEqualityLength(m_net["R"]));
    EXPECT_EQ(m_net.Get(L"splength", "a-b b-c c-d"), L"    -3.000000     -3.000000     -4.500000");
}

TEST_F(EqualLengths, OfAShortRouteGoToTheLastSpanAlone)
{
    m_net.Set(L"splength", {{"a-b", L"0.5"}, {"b-c", L"0.25"}, {"c-d", L"1"}});
    EXPECT_TRUE(m_net.manager.SpanEqualityLength(m_net["R"]));
    EXPECT_EQ(m_net.Get(L"splength", "a-b b-c c-d"), L"     0.000000      0.000000      1.750000");
}

TEST_F(EqualLengths, NeedAnOrderOfSpans)
{
    for (const char* route : {"S", "T", "W"})
        EXPECT_FALSE(m_net.manager.SpanEqualityLength(m_net[route])) << route;
    EXPECT_FALSE(m_net.manager.SpanEqualityLength(0));
    EXPECT_EQ(m_net.Get(L"splength", "e-f f-e"), L"- -");
}

} // namespace
