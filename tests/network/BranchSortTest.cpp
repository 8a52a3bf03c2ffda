// Orders of routes that follow the tree from the longest line outward, and their steps.

#include "support/Networks.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <memory>

namespace {

using support::Ids;
using support::Network;

using Chains = CObjectManager::SortBranches;
using Sort = bool (CObjectManager::*)(const CList<long, long>&, CList<long, long>&) const;

constexpr Sort kSorts[] = {&CObjectManager::SortRouteBranchUpper, &CObjectManager::SortRouteBranchLower,
                           &CObjectManager::SortRouteMaxExtendUpper, &CObjectManager::SortRouteMaxExtendLower};

std::string Sorted(const Network& net, Sort sort, const char* routes, const char* before = "")
{
    const Ids in = net.List(routes);
    const std::string told = net.After(before, [&](auto& out) { return (net.manager.*sort)(in, out); });
    EXPECT_EQ(net.Names(in), routes) << "the input stays";
    return told;
}

// M ends at the flow end, A flows into M, B and C into A. The longest line, B A M, is 180 m, the other one 160 m.
class BranchSort : public testing::Test {
protected:
    Network m_net{"W: M = m1-m2-o; A>M = a-m1; B>A = b-a; C>A = c2-a, c1-c2; V: X = x-y"};

    void SetUp() override
    {
        m_net.Set(L"splength", {{"m1-m2", L"60"}, {"m2-o", L"40"}, {"a-m1", L"50"}, {"b-a", L"30"}});
        m_net.Set(L"splength", {{"c1-c2", L"4"}, {"c2-a", L"6"}, {"x-y", L"7"}});
    }
    std::string Sorted(Sort sort, const char* routes = "M A B C", const char* before = "") const
    {
        return ::Sorted(m_net, sort, routes, before);
    }
};

TEST_F(BranchSort, UpperListsEachTributaryLineBeforeTheRouteThatItJoins)
{
    EXPECT_EQ(Sorted(&CObjectManager::SortRouteBranchUpper), "true: B C A M");
}

TEST_F(BranchSort, LowerIsTheReverse)
{
    EXPECT_EQ(Sorted(&CObjectManager::SortRouteBranchLower), "true: M A C B");
}

TEST_F(BranchSort, MaxExtendUpperListsEachLineDownToItsEndBeforeTheNext)
{
    EXPECT_EQ(Sorted(&CObjectManager::SortRouteMaxExtendUpper), "true: B A M C");
}

TEST_F(BranchSort, MaxExtendLowerListsTheLongestLineFromTheBottomUp)
{
    EXPECT_EQ(Sorted(&CObjectManager::SortRouteMaxExtendLower), "true: M A B C");
}

TEST_F(BranchSort, TheResultStandsBehindWhatTheListHeld)
{
    EXPECT_EQ(Sorted(&CObjectManager::SortRouteBranchUpper, "M A B C", "X"), "true: X B C A M");
    EXPECT_EQ(Sorted(&CObjectManager::SortRouteMaxExtendUpper, "M A B C", "X"), "true: X B A M C");
    EXPECT_EQ(Sorted(&CObjectManager::SortRouteMaxExtendLower, "M A B C", "X"), "true: X M A B C");
}

TEST_F(BranchSort, BranchLowerTurnsTheWholeListRound)
{
    EXPECT_EQ(Sorted(&CObjectManager::SortRouteBranchLower, "M A B C", "X"), "true: M A C B X");
}

TEST_F(BranchSort, ARouteThatTheListHeldIsNotListedAgain)
{
    EXPECT_EQ(Sorted(&CObjectManager::SortRouteBranchUpper, "M A B C", "A"), "true: A B C M");
    EXPECT_EQ(Sorted(&CObjectManager::SortRouteMaxExtendUpper, "M A B C", "A"), "true: A B M C");
}

TEST_F(BranchSort, TheOrderOfTheInputDoesNotMatterBetweenLinesOfDifferentLength)
{
    EXPECT_EQ(Sorted(&CObjectManager::SortRouteBranchUpper, "C B A M"), "true: B C A M");
    EXPECT_EQ(Sorted(&CObjectManager::SortRouteMaxExtendLower, "C M B A"), "true: M A B C");
}

TEST_F(BranchSort, RoutesOutsideTheSetDoNotExist)
{
    EXPECT_EQ(Sorted(&CObjectManager::SortRouteBranchUpper, "B C M"), "true: M B C");
    EXPECT_EQ(Sorted(&CObjectManager::SortRouteMaxExtendUpper, "A C"), "true: C A");
}

TEST_F(BranchSort, OneRouteIsItsOwnOrder)
{
    for (const Sort sort : kSorts) {
        EXPECT_EQ(Sorted(sort, "M"), "true: M");
        EXPECT_EQ(Sorted(sort, "B"), "true: B");
    }
}

TEST_F(BranchSort, AnEmptySetIsFalse)
{
    for (const Sort sort : kSorts)
        EXPECT_EQ(Sorted(sort, "", "X"), "false: X");
}

TEST_F(BranchSort, ARouteWithoutSpansMakesItFalse)
{
    m_net.Add("W: E>M");
    for (const Sort sort : kSorts)
        EXPECT_EQ(Sorted(sort, "M A B C E", "X"), "false: X");
}

TEST_F(BranchSort, ARouteWithoutSpansBelowMakesItFalseAsWell)
{
    m_net.Add("W: E; F>E = f-g");
    for (const Sort sort : kSorts)
        EXPECT_EQ(Sorted(sort, "M A B C E F", "X"), "false: X");
}

TEST_F(BranchSort, ARingOfRoutesHasNoLinesAndIsTrue)
{
    const Network ring("W: P>Q = p-q; Q>P = q-p");
    for (const Sort sort : kSorts)
        EXPECT_EQ(::Sorted(ring, sort, "P Q"), "true:");
}

// A 30, B 20 and C 10 all flow into M; D 25 into A; N stands alone, longer than all.
class ForkedSort : public testing::Test {
protected:
    Network m_net{"W: M = m-o; A>M = a-m; B>M = b-m; C>M = c-m; D>A = d-a; N = n-p"};

    void SetUp() override
    {
        m_net.Set(L"splength", {{"m-o", L"5"}, {"a-m", L"30"}, {"b-m", L"20"}, {"c-m", L"10"}, {"d-a", L"25"}});
        m_net.Set(L"splength", {{"n-p", L"500"}});
    }
};

TEST_F(ForkedSort, SeveralLinesThatJoinOneRouteComeLongestFirst)
{
    // Lines: N 500, D A M 60, B M 25, C M 15.
    EXPECT_EQ(Sorted(m_net, kSorts[0], "M A B C D N"), "true: N D A B C M");
    EXPECT_EQ(Sorted(m_net, kSorts[1], "M A B C D N"), "true: M C B A D N");
    EXPECT_EQ(Sorted(m_net, kSorts[2], "M A B C D N"), "true: N D A M B C");
    EXPECT_EQ(Sorted(m_net, kSorts[3], "M A B C D N"), "true: N M A D B C");
}

TEST(EqualLines, StandAsTheQuicksortLeavesThem)
{
    // Two and three lines of one length stay in the order of their head routes, four do not.
    const Network net("W: A = a-o; B = b-o; C = c-o; D = d-o");
    EXPECT_EQ(Sorted(net, kSorts[0], "A B"), "true: A B");
    EXPECT_EQ(Sorted(net, kSorts[0], "A B C"), "true: A B C");
    EXPECT_EQ(Sorted(net, kSorts[0], "A B C D"), "true: B A D C");
    EXPECT_EQ(Sorted(net, kSorts[2], "D C B A"), "true: C D A B");
}

// ---- the running distance ----

constexpr const char* kAllSpans = "b-a a-m1 m1-m2 m2-o c1-c2 c2-a";

TEST_F(BranchSort, TheRunningDistanceGoesDownTheLongestLineAndStartsAgainOnABranch)
{
    EXPECT_TRUE(m_net.manager.SetSpanMaxExtend(m_net["W"]));
    EXPECT_EQ(m_net.Get(L"splent", kAllSpans), L"30.0000000000000 80.0000000000000 140.0000000000000 "
                                               L"180.0000000000000 4.0000000000000 10.0000000000000");
    EXPECT_EQ(m_net.Get(L"splent", "x-y"), L"-");
}

TEST_F(BranchSort, LinesThatTheLongestOneDoesNotMeetKeepTheirDistance)
{
    m_net.Add("W: N = n-p");
    m_net.Set(L"splength", {{"n-p", L"20"}});
    m_net.Set(L"splent", {{"n-p", L"old"}, {"b-a", L"old"}});
    EXPECT_TRUE(m_net.manager.SetSpanMaxExtend(m_net["W"]));
    EXPECT_EQ(m_net.Get(L"splent", "n-p b-a"), L"old 30.0000000000000");
}

TEST_F(BranchSort, AWebWithoutRoutesHasNoRunningDistance)
{
    m_net.Add("E:");
    EXPECT_FALSE(m_net.manager.SetSpanMaxExtend(m_net["E"]));
    EXPECT_FALSE(m_net.manager.SetSpanMaxExtend(0));
}

TEST_F(BranchSort, ARouteWithoutSpansLeavesAllDistancesAsTheyWere)
{
    m_net.Add("W: E>M");
    EXPECT_FALSE(m_net.manager.SetSpanMaxExtend(m_net["W"]));
    EXPECT_EQ(m_net.Get(L"splent", kAllSpans), L"- - - - - -");
}

TEST_F(BranchSort, ARouteThatIsARingStopsTheRunningDistance)
{
    m_net.Add("V: R = r-s-r");
    m_net.Set(L"splength", {{"r-s", L"100"}});
    EXPECT_FALSE(m_net.manager.SetSpanMaxExtend(m_net["V"]));
    EXPECT_EQ(m_net.Get(L"splent", "r-s s-r x-y"), L"- - -");
}

TEST_F(BranchSort, ASpanWithoutALengthAddsNothing)
{
    m_net.Add("V: Y>X = z-x");
    EXPECT_TRUE(m_net.manager.SetSpanMaxExtend(m_net["V"]));
    EXPECT_EQ(m_net.Get(L"splent", "z-x x-y"), L"0.0000000000000 7.0000000000000");
}

// ---- the steps, over chains of one's own ----

class BranchSteps : public testing::Test {
protected:
    Network m_net{"W: A = a-o; B = b-o; C = c-o; D = d-o; E = e-o; F = f-o"};
    std::vector<std::unique_ptr<tagSortBranch>> m_owned;
    Chains m_chains;

    tagSortBranch* Add(const char* routes, double length = 0)
    {
        m_owned.push_back(std::make_unique<tagSortBranch>());
        tagSortBranch* const chain = m_owned.back().get();
        for (const long id : m_net.List(routes))
            chain->routeIds.AddTail(id);
        chain->length = length;
        m_chains.AddTail(chain);
        return chain;
    }
    // "A+B C": two chains.
    std::string Left() const
    {
        std::string result;
        for (const tagSortBranch* chain : m_chains) {
            std::string names = m_net.Names(chain->routeIds);
            std::replace(names.begin(), names.end(), ' ', '+');
            result += (result.empty() ? "" : " ") + names;
        }
        return result;
    }
};

TEST_F(BranchSteps, ShortSortsByRisingLength)
{
    Add("A", 3);
    Add("B", 1);
    Add("C", 2);
    m_net.manager.SortRouteLengthForBuranchSortShort(m_chains);
    EXPECT_EQ(Left(), "B C A");
}

TEST_F(BranchSteps, LongSortsByFallingLength)
{
    Add("A", 3);
    Add("B", 1);
    Add("C", 2);
    Add("D", 5);
    m_net.manager.SortRouteLengthForBuranchSortLong(m_chains);
    EXPECT_EQ(Left(), "D A C B");
}

TEST_F(BranchSteps, EqualLengthsAreTurnedRoundByTheQuicksort)
{
    for (const char* name : {"A", "B", "C", "D"})
        Add(name, 7);
    m_net.manager.SortRouteLengthForBuranchSortShort(m_chains);
    EXPECT_EQ(Left(), "C D A B");
}

TEST_F(BranchSteps, LongPutsTheSortedChainsBackTurnedRound)
{
    for (const char* name : {"A", "B", "C", "D"})
        Add(name, 7);
    m_net.manager.SortRouteLengthForBuranchSortLong(m_chains);
    EXPECT_EQ(Left(), "B A D C");
}

TEST_F(BranchSteps, APartOfTheChainsIsSorted)
{
    Add("A", 9);
    Add("B", 3);
    Add("C", 2);
    Add("D", 1);
    m_net.manager.SortRouteLength(m_chains, 1, 2);
    EXPECT_EQ(Left(), "A C B D");
    m_net.manager.SortRouteLength(m_chains, -1, -1);
    EXPECT_EQ(Left(), "D C B A");
}

TEST_F(BranchSteps, NoChainsAreSortedToNone)
{
    m_net.manager.SortRouteLength(m_chains, -1, -1);
    m_net.manager.SortRouteLengthForBuranchSortShort(m_chains);
    m_net.manager.SortRouteLengthForBuranchSortLong(m_chains);
    EXPECT_TRUE(m_chains.IsEmpty());
}

TEST_F(BranchSteps, TheBranchPointIsTheFirstChainWithTheRoute)
{
    Add("A B");
    tagSortBranch* const second = Add("C D");
    Add("E D");
    EXPECT_EQ(m_net.manager.GetBuranchPoint(m_net["D"], m_chains), second);
    EXPECT_EQ(m_net.manager.GetBuranchPoint(m_net["F"], m_chains), nullptr);
    EXPECT_EQ(Left(), "A+B C+D E+D");
}

TEST_F(BranchSteps, TheReverseBranchPointWantsANewRouteBehindTheRoute)
{
    tagSortBranch* const chain = Add("A B C");
    Add("A B");
    Add("A D");
    tagSortBranch* const free = Add("A E");
    Add("A F");
    const Ids out = m_net.List("D");
    EXPECT_EQ(m_net.manager.GetAndRemoveBuranchPoint(m_net["A"], m_chains, chain, out), free);
    EXPECT_EQ(Left(), "A+B+C A+B A+D A+E A+F") << "nothing is removed";
}

TEST_F(BranchSteps, TheReverseBranchPointIsNotWhereAChainEnds)
{
    tagSortBranch* const chain = Add("A B");
    Add("F A");
    EXPECT_EQ(m_net.manager.GetAndRemoveBuranchPoint(m_net["A"], m_chains, chain, Ids()), nullptr);
    EXPECT_EQ(m_net.manager.GetAndRemoveBuranchPoint(m_net["E"], m_chains, chain, Ids()), nullptr);
}

TEST_F(BranchSteps, BranchSortTakesTheChainAndWhatJoinsItFirst)
{
    tagSortBranch* const chain = Add("A B C");
    Add("D B C");
    Add("E C");
    Add("F");
    EXPECT_EQ(m_net.After("", [&](CList<long, long>& out) { m_net.manager.RunBuranchSort(chain, m_chains, out); }),
              "A D B E C");
    EXPECT_EQ(Left(), "F");
}

TEST_F(BranchSteps, BranchSortTakesChainsThroughOneRouteFromWithinEachOther)
{
    tagSortBranch* const chain = Add("A B");
    Add("C B");
    Add("D B");
    EXPECT_EQ(m_net.After("", [&](CList<long, long>& out) { m_net.manager.RunBuranchSort(chain, m_chains, out); }),
              "A C D B");
    EXPECT_TRUE(m_chains.IsEmpty());
}

TEST_F(BranchSteps, MaxExtendGoesOnWithTheFirstChainThatBranchesOff)
{
    tagSortBranch* const chain = Add("A B C");
    Add("D C");
    Add("E B C");
    Add("F");
    EXPECT_EQ(m_net.After("", [&](CList<long, long>& out) { m_net.manager.RunBuranchMaxExtend(chain, m_chains, out); }),
              "A B C E D");
    EXPECT_EQ(Left(), "F");
}

TEST_F(BranchSteps, TheOnlyChainIsListedWhole)
{
    tagSortBranch* const chain = Add("A B");
    EXPECT_EQ(m_net.After("", [&](CList<long, long>& out) { m_net.manager.RunBuranchMaxExtend(chain, m_chains, out); }),
              "A B");
    EXPECT_TRUE(m_chains.IsEmpty());
}

TEST_F(BranchSteps, AnEmptyChainIsTakenOutAndDoesNothing)
{
    tagSortBranch* const chain = Add("");
    tagSortBranch* const second = Add("");
    Add("A");
    Ids out;
    m_net.manager.RunBuranchMaxExtend(chain, m_chains, out);
    EXPECT_TRUE(m_net.manager.RunSetSplent(second, m_chains, out));
    EXPECT_TRUE(out.IsEmpty());
    EXPECT_EQ(Left(), "A");
}

TEST_F(BranchSteps, TheReverseStepListsTheChainAndThenItsBranches)
{
    tagSortBranch* const chain = Add("A B C");
    Add("A D");
    Add("A B E");
    Add("F");
    EXPECT_EQ(
        m_net.After("", [&](CList<long, long>& out) { m_net.manager.RunBuranchExtendReverse(chain, m_chains, out); }),
        "A B C D E");
    EXPECT_EQ(Left(), "F");
}

TEST_F(BranchSteps, TheReverseStepMayReachAChainThatIsGone)
{
    tagSortBranch* const chain = Add("A B");
    m_chains.RemoveAll();
    EXPECT_EQ(
        m_net.After("A", [&](CList<long, long>& out) { m_net.manager.RunBuranchExtendReverse(chain, m_chains, out); }),
        "A B");
}

TEST_F(BranchSteps, TheDistanceStepLeavesRoutesOutThatAreDone)
{
    m_net.Set(L"splength", {{"a-o", L"1"}, {"b-o", L"2"}, {"c-o", L"4"}, {"d-o", L"8"}});
    tagSortBranch* const chain = Add("A B C");
    Add("D C");
    Add("E");
    EXPECT_EQ(m_net.After("B", [&](auto& done) { return m_net.manager.RunSetSplent(chain, m_chains, done); }),
              "true: B A C D");
    EXPECT_EQ(m_net.Get(L"splent", "a-o b-o c-o d-o e-o"), L"1.0000000000000 - 5.0000000000000 8.0000000000000 -");
    EXPECT_EQ(Left(), "E");
}

TEST_F(BranchSteps, TheDistanceStepIgnoresTheResultOfTheNextChain)
{
    m_net.Add("W: R = r-s-r");
    tagSortBranch* const chain = Add("A");
    Add("R A");
    Add("F");
    Ids done;
    EXPECT_TRUE(m_net.manager.RunSetSplent(chain, m_chains, done));
    tagSortBranch* const failing = Add("R B");
    EXPECT_FALSE(m_net.manager.RunSetSplent(failing, m_chains, done));
    EXPECT_EQ(m_net.Names(done), "A");
}

// Lengths are added up along the line as it stands: from below 0.3+0.2+0.1 is a little less than 0.3+0.1+0.2, from
// above the two lines are equal.
TEST(LineLengths, FromBelowAreAddedUpFromBelow)
{
    Network net("W: M = m-out; A>M = a-m; B>M = b-m; H>A = h-a; I>B = i-b");
    const auto setLength = [&](const char* route, const wchar_t* length) {
        for (CSpan* span : net.manager.GetSpanDb())
            if (static_cast<long>(span->GetRouteId()) == net[route]) span->WriteSubAttribute(L"splength", length);
    };
    setLength("M", L"0.3");
    setLength("A", L"0.2");
    setLength("B", L"0.1");
    setLength("H", L"0.1");
    setLength("I", L"0.2");
    Ids out;
    EXPECT_TRUE(net.manager.SortRouteMaxExtendLower(net.List("M A B H I"), out));
    EXPECT_EQ(net.Names(out), "M B I A H");
}

} // namespace
