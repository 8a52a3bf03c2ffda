// Where records lie on their route: the same rules for ground changes, crossing points, laterals and vacuum joints.

#include "integrity/RecordsOnRoutes.h"

#include "common/Text2Number.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <functional>
#include <random>
#include <sstream>

namespace {

using support::Network;
using support::number;
using support::PlacedKind;
using support::text;
using support::Values;

struct Entered {
    int spanNumber;
    const wchar_t* distance;
    int direction = 0;
};

Values values(const PlacedKind& kind, const Entered& entered)
{
    Values result;
    result.Add(CKeyValue(kind.spanNumber, obmgr::FormatInt(entered.spanNumber)));
    result.Add(CKeyValue(kind.entered, entered.distance));
    if (kind.direction) result.Add(CKeyValue(kind.direction, obmgr::FormatInt(entered.direction)));
    return result;
}

class Placement : public testing::TestWithParam<PlacedKind> {
protected:
    const PlacedKind& m_kind = GetParam();

    bool Update(Network& net, const char* web) const { return (net.manager.*m_kind.update)(net[web], false); }

    CPipeObject& Add(Network& net, const char* route, const Entered& entered) const
    {
        return *m_kind.add(net.manager, net[route], values(m_kind, entered));
    }

    // A record on a route whose spans have these lengths, from the top down: "2: 1.5" on the second span, 1.5 m from
    // its upper end; "off" beside the route, which leaves the distance as it was.
    std::wstring Placed(const std::vector<const wchar_t*>& lengths, const Entered& entered) const
    {
        Network net;
        const long web = net.AddWeb("W");
        const long route = net.AddRoute("R", web, 0);
        std::vector<long> spans;
        net.AddNode("0");
        for (std::size_t i = 0; i < lengths.size(); ++i) {
            net.AddNode(std::to_string(i + 1));
            spans.push_back(net.AddSpan(std::to_string(i), std::to_string(i + 1), route));
            net.manager.GetSpanObjectOriginal(spans.back())->WriteSubAttribute(L"splength", lengths[i]);
        }
        CPipeObject& record = Add(net, "R", entered);
        record.WriteSubAttribute(m_kind.distance, L"before");
        EXPECT_TRUE(Update(net, "W"));
        const auto found = std::find(spans.begin(), spans.end(), record.GetSubAttributeInt(m_kind.span, -1));
        if (found != spans.end()) {
            std::wostringstream place;
            place << found - spans.begin() + 1 << L": " << number(record, m_kind.distance);
            return place.str();
        }
        return text(record, m_kind.span) == L"0" && text(record, m_kind.distance) == L"before"
                   ? L"off"
                   : L"neither on a span nor off the route";
    }

    // What is measured from the lower end, except for kinds that know the upper end only.
    const wchar_t* FromBelow(const wchar_t* place, const wchar_t* fromAbove) const
    {
        return m_kind.direction ? place : fromAbove;
    }
};

INSTANTIATE_TEST_SUITE_P(AllKinds, Placement, testing::ValuesIn(support::kPlacedKinds),
                         [](const auto& test) { return std::string(test.param.name); });

// ---- along the whole route ----

TEST_P(Placement, AlongTheRouteTheSpanIsFoundByTheDistance)
{
    EXPECT_EQ(Placed({L"4", L"8", L"16"}, {0, L"0"}), L"1: 0");
    EXPECT_EQ(Placed({L"4", L"8", L"16"}, {0, L"3.5"}), L"1: 3.5");
    EXPECT_EQ(Placed({L"4", L"8", L"16"}, {0, L"5"}), L"2: 1");
    EXPECT_EQ(Placed({L"4", L"8", L"16"}, {0, L"27.75"}), L"3: 15.75");
}

TEST_P(Placement, BetweenTwoSpansARecordStandsAtTheStartOfTheNextOne)
{
    EXPECT_EQ(Placed({L"4", L"8", L"16"}, {0, L"4"}), L"2: 0");
    EXPECT_EQ(Placed({L"4", L"8", L"16"}, {0, L"12"}), L"3: 0");
}

TEST_P(Placement, TheWholeLengthFromAboveIsTheEndOfTheLastSpanExceptForGroundChanges)
{
    EXPECT_EQ(Placed({L"4", L"8", L"16"}, {0, L"28"}), m_kind.endsAtZero ? L"3: 0" : L"3: 16");
    EXPECT_EQ(Placed({L"4"}, {0, L"4"}), m_kind.endsAtZero ? L"1: 0" : L"1: 4");
}

TEST_P(Placement, FromBelowTheSpanIsFoundFromTheLowerEndAndTheDistanceStillRunsFromTheUpper)
{
    EXPECT_EQ(Placed({L"4", L"8", L"16"}, {0, L"5", 1}), FromBelow(L"3: 11", L"2: 1"));
    EXPECT_EQ(Placed({L"4", L"8", L"16"}, {0, L"0", 1}), FromBelow(L"3: 16", L"1: 0"));
    EXPECT_EQ(Placed({L"4", L"8", L"16"}, {0, L"26", 1}), FromBelow(L"1: 2", L"3: 14"));
    EXPECT_EQ(Placed({L"4", L"8", L"16"}, {0, L"5", -3}), FromBelow(L"3: 11", L"2: 1"));
}

TEST_P(Placement, BetweenTwoSpansFromBelowARecordStandsAtTheEndOfTheUpperOne)
{
    EXPECT_EQ(Placed({L"4", L"8", L"16"}, {0, L"16", 1}), FromBelow(L"2: 8", L"3: 4"));
}

TEST_P(Placement, TheWholeLengthFromBelowIsTheStartOfTheFirstSpan)
{
    EXPECT_EQ(Placed({L"4", L"8", L"16"}, {0, L"28", 1}), FromBelow(L"1: 0", m_kind.endsAtZero ? L"3: 0" : L"3: 16"));
}

// 0.1 + 0.2 + 0.3 is a little more from the left than from the right: the walk up does not reach the whole length.
TEST_P(Placement, AWholeLengthThatTheWalkUpMissesByRoundingLeavesTheRecordWhereItWas)
{
    const wchar_t* const above = m_kind.endsAtZero ? L"3: 0" : L"3: 0.3";
    EXPECT_EQ(Placed({L"0.1", L"0.2", L"0.3"}, {0, L"0.6000000000000001", 1}),
              FromBelow(L"neither on a span nor off the route", above));
    EXPECT_EQ(Placed({L"0.3", L"0.2", L"0.1"}, {0, L"0.6", 1}),
              FromBelow(L"1: 0", m_kind.endsAtZero ? L"3: 0" : L"3: 0.1"));
}

TEST_P(Placement, BeyondTheRouteARecordGetsSpanZeroAndKeepsItsDistance)
{
    EXPECT_EQ(Placed({L"4", L"8", L"16"}, {0, L"28.001"}), L"off");
    EXPECT_EQ(Placed({L"4", L"8", L"16"}, {0, L"28.001", 1}), L"off");
}

TEST_P(Placement, ASpanWithoutLengthIsPassed)
{
    EXPECT_EQ(Placed({L"0", L"4", L"8"}, {0, L"0"}), L"2: 0");
    EXPECT_EQ(Placed({L"4", L"0", L"8"}, {0, L"4"}), L"3: 0");
    EXPECT_EQ(Placed({L"4", L"0", L"8"}, {0, L"8", 1}), FromBelow(L"1: 4", L"3: 4"));
}

TEST_P(Placement, ALastSpanWithoutLengthTakesARecordAtTheRoutesEnd)
{
    EXPECT_EQ(Placed({L"4", L"8", L"0"}, {0, L"12"}), L"3: 0");
    EXPECT_EQ(Placed({L"0", L"4", L"8"}, {0, L"12", 1}), FromBelow(L"1: 0", m_kind.endsAtZero ? L"3: 0" : L"3: 8"));
}

TEST_P(Placement, ARouteWithoutLengthHoldsRecordsAtZeroOnly)
{
    EXPECT_EQ(Placed({L"0", L"0"}, {0, L"0"}), L"2: 0");
    EXPECT_EQ(Placed({L"0", L"0"}, {0, L"0", 1}), FromBelow(L"1: 0", L"2: 0"));
    EXPECT_EQ(Placed({L"0", L"0"}, {0, L"0.5"}), L"off");
}

TEST_P(Placement, ANegativeDistanceStandsBeforeTheEndItIsMeasuredFrom)
{
    EXPECT_EQ(Placed({L"4", L"8"}, {0, L"-1"}), L"1: -1");
    EXPECT_EQ(Placed({L"4", L"8"}, {0, L"-1", 1}), FromBelow(L"2: 9", L"1: -1"));
    EXPECT_EQ(Placed({L"4", L"8"}, {2, L"-1"}), L"2: -1");
    EXPECT_EQ(Placed({L"4", L"8"}, {2, L"-1", 1}), FromBelow(L"2: 9", L"2: -1"));
}

TEST_P(Placement, DistancesThatAreNoNumberCountAsZeroAndEndlessOnesAreOffTheRoute)
{
    for (const wchar_t* distance : {L"", L"abc", L"nan", L"inf"})
        EXPECT_EQ(Placed({L"4", L"8"}, {0, distance}), L"1: 0") << distance;
    EXPECT_EQ(Placed({L"4", L"8"}, {0, L"1e999"}), L"off");
    EXPECT_EQ(Placed({L"4", L"8"}, {2, L"1e999"}), L"off");
    EXPECT_EQ(Placed({L"1e308", L"1e308"}, {0, L"1.5e308"}), L"2: 5e+307");
}

// ---- on a span by its number ----

TEST_P(Placement, ASpanNumberCountsFromOneInRouteOrder)
{
    EXPECT_EQ(Placed({L"4", L"8", L"16"}, {1, L"3"}), L"1: 3");
    EXPECT_EQ(Placed({L"4", L"8", L"16"}, {2, L"3"}), L"2: 3");
    EXPECT_EQ(Placed({L"4", L"8", L"16"}, {3, L"3"}), L"3: 3");
    EXPECT_EQ(Placed({L"4", L"8", L"16"}, {2, L"3", 1}), FromBelow(L"2: 5", L"2: 3"));
}

TEST_P(Placement, OnASpanTheWholeLengthIsItsEndForEveryKind)
{
    EXPECT_EQ(Placed({L"4", L"8", L"16"}, {2, L"8"}), L"2: 8");
    EXPECT_EQ(Placed({L"4", L"8", L"16"}, {2, L"8", 1}), FromBelow(L"2: 0", L"2: 8"));
    EXPECT_EQ(Placed({L"4", L"8", L"16"}, {3, L"16"}), L"3: 16");
}

TEST_P(Placement, BeyondItsSpanARecordIsOffTheRoute)
{
    EXPECT_EQ(Placed({L"4", L"8", L"16"}, {2, L"8.001"}), L"off");
    EXPECT_EQ(Placed({L"4", L"8", L"16"}, {2, L"8.001", 1}), L"off");
}

TEST_P(Placement, ASpanNumberAboveTheCountIsOffTheRoute)
{
    EXPECT_EQ(Placed({L"4", L"8", L"16"}, {4, L"3"}), L"off");
    EXPECT_EQ(Placed({L"4", L"8", L"16"}, {2147483647, L"0"}), L"off");
}

TEST_P(Placement, ANegativeSpanNumberIsAnInvalidArgument)
{
    Network net("W: R = a-b");
    Add(net, "R", {-1, L"0"});
    EXPECT_THROW(Update(net, "W"), CInvalidArgException);
}

// ---- routes and webs ----

TEST_P(Placement, WithoutARouteTheUpdateFails)
{
    Network empty;
    EXPECT_FALSE(std::invoke(m_kind.update, empty.manager, 1, true));
    Network net("W: R = a-b");
    net.AddWeb("V");
    EXPECT_FALSE(Update(net, "V"));
    for (const long unknown : {0L, -1L, 99999L, net["R"]})
        EXPECT_FALSE(std::invoke(m_kind.update, net.manager, unknown, true)) << unknown;
}

TEST_P(Placement, WithoutRecordsRoutesNeedNoSpans)
{
    Network net("W: R = a-b; S = c-d-c; T");
    EXPECT_TRUE(Update(net, "W"));
}

TEST_P(Placement, ARouteWithRecordsButNoOrderOfSpansStopsTheUpdate)
{
    for (const char* damaged : {"W: R = a-b; S = c-d-c; T = e-f", "W: R = a-b; S; T = e-f"}) {
        Network net(damaged);
        net.Set(L"splength", {{"a-b", L"4"}, {"e-f", L"4"}});
        const CPipeObject& before = Add(net, "R", {0, L"1"});
        const CPipeObject& on = Add(net, "S", {0, L"1"});
        const CPipeObject& behind = Add(net, "T", {0, L"1"});
        EXPECT_FALSE(Update(net, "W")) << damaged;
        EXPECT_EQ(before.GetSubAttributeInt(m_kind.span, 0), net["a-b"]);
        EXPECT_EQ(text(on, m_kind.span), L"-");
        EXPECT_EQ(text(behind, m_kind.span), L"-");
    }
}

TEST_P(Placement, OnlyTheRecordsOfTheWebArePlaced)
{
    Network net("W: R = a-b; S = c-d; V: T = e-f");
    net.Set(L"splength", {{"a-b", L"4"}, {"c-d", L"4"}, {"e-f", L"4"}});
    const CPipeObject& first = Add(net, "R", {0, L"1"});
    const CPipeObject& second = Add(net, "S", {1, L"2"});
    const CPipeObject& elsewhere = Add(net, "T", {0, L"3"});
    EXPECT_TRUE(Update(net, "W"));
    EXPECT_EQ(first.GetSubAttributeInt(m_kind.span, 0), net["a-b"]);
    EXPECT_EQ(second.GetSubAttributeInt(m_kind.span, 0), net["c-d"]);
    EXPECT_EQ(text(elsewhere, m_kind.span), L"-");
}

TEST_P(Placement, DistancesAreWrittenWithThirteenDecimals)
{
    Network net("W: R = a-b");
    net.Set(L"splength", {{"a-b", L"4"}});
    const CPipeObject& record = Add(net, "R", {0, L"1.5"});
    EXPECT_TRUE(Update(net, "W"));
    EXPECT_EQ(text(record, m_kind.distance), L"1.5000000000000");
}

TEST_P(Placement, ARecordThatComesBackOntoItsRouteIsPlacedAgain)
{
    Network net("W: R = a-b");
    net.Set(L"splength", {{"a-b", L"4"}});
    const CPipeObject& record = Add(net, "R", {0, L"6"});
    EXPECT_TRUE(Update(net, "W"));
    EXPECT_EQ(text(record, m_kind.span), L"0");
    net.Set(L"splength", {{"a-b", L"8"}});
    EXPECT_TRUE(Update(net, "W"));
    EXPECT_EQ(record.GetSubAttributeInt(m_kind.span, 0), net["a-b"]);
    EXPECT_EQ(number(record, m_kind.distance), 6.0);
}

TEST(PlacementOfCrossingPoints, TheRouteMayBeEitherOfTheTwoIds)
{
    Network net("W: R = a-b");
    net.Set(L"splength", {{"a-b", L"4"}});
    const long crossing = net.manager.CreateInters({})->GetId32();
    const CPipeObject& first = *net.manager.CreateIntPos(net["R"], crossing, support::values({{L"ipindist", L"1"}}));
    const CPipeObject& second = *net.manager.CreateIntPos(crossing, net["R"], support::values({{L"ipindist", L"3"}}));
    EXPECT_TRUE(net.manager.update_IntPos(net["W"], false));
    EXPECT_EQ(number(first, L"ipdist"), 1.0);
    EXPECT_EQ(number(second, L"ipdist"), 3.0);
}

TEST(PlacementOfVacuumJoints, TheFlagHasNoEffect)
{
    for (const bool flag : {false, true}) {
        Network net("W: R = a-b-c");
        net.Set(L"splength", {{"a-b", L"4"}, {"b-c", L"8"}});
        const CPipeObject& on =
            *net.manager.CreateVjoint(net["R"], support::values({{L"vjspnum", L"0"}, {L"vjindist", L"5"}}));
        const CPipeObject& off =
            *net.manager.CreateVjoint(net["R"], support::values({{L"vjspnum", L"0"}, {L"vjindist", L"13"}}));
        EXPECT_TRUE(net.manager.update_Vjoint(net["W"], flag));
        EXPECT_EQ(on.GetSubAttributeInt(L"vjspid", 0), net["b-c"]);
        EXPECT_EQ(number(on, L"vjdist"), 1.0);
        EXPECT_EQ(text(off, L"vjspid"), L"0");
    }
}

// ---- against a plain reference ----

struct ExpectedPlace {
    bool isOn = false;
    std::size_t span = 0;
    double distance = 0.0;
};

// Each case on its own, with running sums, as a reader of the rules would write them down.
ExpectedPlace Expected(const std::vector<double>& lengths, int spanNumber, double distance, bool isFromBelow,
                       bool endsAtZero)
{
    if (spanNumber > 0) {
        const auto i = static_cast<std::size_t>(spanNumber - 1);
        if (i >= lengths.size() || distance > lengths[i]) return {};
        return {true, i, isFromBelow ? lengths[i] - distance : distance};
    }
    double total = 0.0;
    for (const double length : lengths)
        total += length;
    if (distance > total) return {};
    ExpectedPlace place;
    double sum = 0.0;
    if (!isFromBelow) {
        for (std::size_t i = 0; i < lengths.size(); ++i) {
            if (sum + lengths[i] > distance) return {true, i, distance - sum};
            sum += lengths[i];
            if (sum == total) place = {true, i, endsAtZero ? distance - sum : lengths.back()};
        }
    } else {
        for (std::size_t i = lengths.size(); i-- > 0;) {
            if (sum + lengths[i] > distance) return {true, i, lengths[i] - (distance - sum)};
            sum += lengths[i];
            if (sum == total) place = {true, i, 0.0};
        }
    }
    return place;
}

// Lengths are whole eighths, so that sums are exact in both directions and records often meet span ends.
TEST_P(Placement, AgreesWithAPlainReferenceOnRandomRoutes)
{
    const unsigned seed = support::testSeed(20240);
    std::mt19937 random(seed);
    const auto below = [&](int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); };
    const auto eighths = [](int count) { return count / 8.0; };

    for (int round = 0; round < 60; ++round) {
        Network net;
        struct Line {
            long route;
            std::vector<long> spans;
            std::vector<double> lengths;
        };
        std::vector<Line> lines;
        for (const char* web : {"W", "V"})
            net.AddWeb(web);
        for (int r = 0; r < 3; ++r) {
            const std::string name(1, static_cast<char>('A' + r));
            Line line{net.AddRoute(name, net[r < 2 ? "W" : "V"], 0), {}, {}};
            const int count = 1 + below(7);
            std::vector<int> makingOrder(static_cast<std::size_t>(count));
            for (int i = 0; i < count; ++i) {
                makingOrder[static_cast<std::size_t>(i)] = i;
                line.lengths.push_back(below(5) == 0 ? 0.0 : eighths(below(24)));
            }
            std::shuffle(makingOrder.begin(), makingOrder.end(), random);
            for (int i = 0; i <= count; ++i)
                net.AddNode(name + std::to_string(i));
            line.spans.resize(static_cast<std::size_t>(count));
            for (const int i : makingOrder) {
                const auto place = static_cast<std::size_t>(i);
                line.spans[place] = net.AddSpan(name + std::to_string(i), name + std::to_string(i + 1), line.route);
                net.manager.GetSpanObjectOriginal(line.spans[place])
                    ->WriteSubAttributeDouble(L"splength", line.lengths[place]);
            }
            lines.push_back(line);
        }

        struct Sample {
            const CPipeObject* record;
            const Line* line;
            Entered entered;
            double distance;
        };
        std::vector<Sample> samples;
        for (int i = 0; i < 40; ++i) {
            const Line& line = lines[static_cast<std::size_t>(below(3))];
            double total = 0.0;
            for (const double length : line.lengths)
                total += length;
            const double distance = below(6) == 0 ? total : eighths(below(static_cast<int>(total * 8.0) + 8) - 4);
            const int spanNumber = below(2) == 0 ? 0 : below(static_cast<int>(line.spans.size()) + 3);
            const Entered entered{spanNumber, L"", below(2)};
            CPipeObject& record = *m_kind.add(net.manager, line.route, values(m_kind, entered));
            record.WriteSubAttributeDouble(m_kind.entered, distance);
            samples.push_back({&record, &line, entered, distance});
        }

        ASSERT_TRUE(Update(net, "W"));
        for (const Sample& sample : samples) {
            const bool isFromBelow = m_kind.direction && sample.entered.direction != 0;
            const ExpectedPlace expected = Expected(sample.line->lengths, sample.entered.spanNumber, sample.distance,
                                                    isFromBelow, m_kind.endsAtZero);
            std::wstring span = L"-";
            std::wstring distance = L"-";
            if (sample.line != &lines.back()) {
                span = expected.isOn ? std::to_wstring(sample.line->spans[expected.span]) : L"0";
                if (expected.isOn) distance = obmgr::FormatDouble(expected.distance, 13).View();
            }
            ASSERT_EQ(text(*sample.record, m_kind.span), span)
                << "seed " << seed << " round " << round << " number " << sample.entered.spanNumber << " distance "
                << sample.distance << (isFromBelow ? " from below" : " from above");
            ASSERT_EQ(text(*sample.record, m_kind.distance), distance) << "seed " << seed << " round " << round;
        }
    }
}

} // namespace
