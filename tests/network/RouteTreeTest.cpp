// Direct tributaries of a route, and everything upstream and downstream of it.

#include "support/Networks.h"

#include <gmock/gmock.h>

#include <memory>

namespace {

using support::Ids;
using support::Network;
using support::Routes;

using IdsByConnectId = CMap<long, long&, CList<long, long>*, CList<long, long>*>;

// B and C into A, A and D into M; X is another web's. Table order: B A X M D C.
class RouteTree : public testing::Test {
protected:
    Network m_net{"W: B>A; A>M; V: X; W: M; D>M; C>A"};
    support::OpenManager& m_manager = m_net.manager;

    // "A B": the routes of the list that a call over candidates works on.
    template <class Call> std::string Over(const char* candidates, const char* before, Call&& call) const
    {
        const Ids list = m_net.List(candidates);
        return m_net.After(before, [&](CList<long, long>& out) { return call(list, out); });
    }
    void MakeRing() { m_net.Route("M").SetConnectId(static_cast<unsigned long>(m_net["B"])); }
};

// ---- direct tributaries ----

using DirectTributaries = RouteTree;

TEST_F(DirectTributaries, OfAListStandInItsOrder)
{
    const auto call = [&](const char* route, const char* candidates, const char* before = "") {
        return Over(candidates, before,
                    [&](auto& list, auto& out) { return m_manager.GetConnectRoute(m_net[route], list, out); });
    };
    EXPECT_EQ(call("A", "M C X B"), "2: C B");
    EXPECT_EQ(call("M", "D B C"), "1: D");
    EXPECT_EQ(call("B", "M A B C D"), "0:");
}

TEST_F(DirectTributaries, AreNumberedWithWhatTheListHeldBefore)
{
    const auto call = [&](const char* route) {
        return Over("M A B C D", "X",
                    [&](auto& list, auto& out) { return m_manager.GetConnectRoute(m_net[route], list, out); });
    };
    EXPECT_EQ(call("A"), "3: X B C");
    EXPECT_EQ(call("B"), "1: X");
    EXPECT_EQ(m_net.After("X", [&](auto& out) { return m_manager.GetConnectRouteAll(m_net["A"], out); }), "3: X B C");
    EXPECT_EQ(m_net.After("X", [&](auto& out) { return m_manager.GetConnectRouteAll(m_net["B"], out); }), "1: X");
}

TEST_F(DirectTributaries, CandidatesThatNoLongerExistAreSkipped)
{
    const Ids list{0, -3, 9999, m_net["W"], m_net["B"]};
    EXPECT_EQ(m_net.After("", [&](auto& out) { return m_manager.GetConnectRoute(m_net["A"], list, out); }), "1: B");
    EXPECT_EQ(m_net.After("", [&](auto& out) { return m_manager.GetNextRouteId(m_net["A"], list, out); }), "true: B");
}

TEST_F(DirectTributaries, OfTheTableStandInItsOrder)
{
    EXPECT_EQ(m_net.After("", [&](auto& out) { return m_manager.GetConnectRouteAll(m_net["A"], out); }), "2: B C");
    EXPECT_EQ(m_net.After("", [&](auto& out) { return m_manager.GetConnectRouteAll(0, out); }), "2: X M");
    EXPECT_EQ(m_net.After("", [&](auto& out) { return m_manager.GetConnectRouteAll(9999, out); }), "0:");
}

TEST_F(DirectTributaries, OfTheFlowEndAreThoseWithConnectIdZero)
{
    EXPECT_EQ(Over("A M X", "", [&](auto& list, auto& out) { return m_manager.GetConnectRoute(0, list, out); }),
              "2: M X");
}

class NextRoutes : public testing::Test {
protected:
    Network m_net{"W: M; A>M; B>M; C>M; D>A; X"};
    support::OpenManager& m_manager = m_net.manager;

    std::string Next(const char* route, const char* candidates, const char* before = "") const
    {
        const Ids list = m_net.List(candidates);
        return m_net.After(before, [&](auto& out) { return m_manager.GetNextRouteId(m_net[route], list, out); });
    }
    std::string NextOfAll(const char* route, const char* before = "") const
    {
        return m_net.After(before, [&](auto& out) { return m_manager.GetNextRouteIdAll(m_net[route], out); });
    }
};

TEST_F(NextRoutes, RiseByFlowOrder)
{
    m_net.Set(L"floworder", {{"A", L"10"}, {"B", L"9"}, {"C", L"-1"}});
    EXPECT_EQ(Next("M", "A B C"), "true: C B A");
    EXPECT_EQ(Next("M", "D A B"), "true: B A");
    EXPECT_EQ(NextOfAll("M"), "true: C B A");
    EXPECT_EQ(NextOfAll("A"), "true: D");
}

TEST_F(NextRoutes, StandBehindWhatTheListHeldWhichIsNotSorted)
{
    m_net.Set(L"floworder", {{"A", L"3"}, {"B", L"2"}, {"C", L"1"}, {"X", L"9"}});
    EXPECT_EQ(Next("M", "A B", "X"), "true: X B A");
    EXPECT_EQ(NextOfAll("M", "X"), "true: X C B A");
}

TEST_F(NextRoutes, NoneIsFalseAndLeavesTheListAlone)
{
    EXPECT_EQ(Next("B", "A B C D", "X"), "false: X");
    EXPECT_EQ(Next("M", "D", "X"), "false: X");
    EXPECT_EQ(NextOfAll("B", "X"), "false: X");
}

TEST_F(NextRoutes, TwoOfOneFlowOrderKeepTheirOrder)
{
    m_net.Set(L"floworder", {{"A", L"2"}, {"B", L"2"}, {"C", L"3"}});
    EXPECT_EQ(Next("M", "B A C"), "true: B A C");
    EXPECT_EQ(NextOfAll("M"), "true: A B C");
}

TEST_F(NextRoutes, OfOneFlowOrderStandAsTheExchangeSortLeavesThem)
{
    m_net.Set(L"floworder", {{"A", L"2"}, {"B", L"2"}, {"C", L"1"}});
    EXPECT_EQ(Next("M", "A B C"), "true: C B A");
    EXPECT_EQ(NextOfAll("M"), "true: C B A");
}

TEST_F(NextRoutes, WithoutAFlowOrderCountAsZero)
{
    m_net.Set(L"floworder", {{"A", L"1"}, {"C", L"-1"}});
    EXPECT_EQ(Next("M", "A B C"), "true: C B A");
}

// ---- arrays ----

template <class Route> class TributariesOfArray : public RouteTree {
protected:
    CArray<Route*> Array(const char* routes) const
    {
        CArray<Route*> array;
        for (const long id : m_net.List(routes))
            array.Add(m_manager.GetRouteObjectOriginal(id));
        return array;
    }
    // "2: C B"
    std::string Told(int result, const CArray<Route*>& out) const
    {
        return std::to_string(result) + ": " + m_net.Names(out);
    }
    std::string Recursive(CArray<Route*>& routes, const char* route, bool recursive, bool sort,
                          const char* before = "") const
    {
        CArray<Route*> out = Array(before);
        const int result = m_manager.GetConnectRoute(routes, m_net[route], recursive, sort, out);
        return Told(result, out);
    }
};

using RouteClasses = testing::Types<CRoute, const CRoute>;
TYPED_TEST_SUITE(TributariesOfArray, RouteClasses);

TYPED_TEST(TributariesOfArray, AreAppendedInItsOrder)
{
    CArray<TypeParam*> routes = this->Array("C M B D");
    CArray<TypeParam*> out = this->Array("X");
    EXPECT_EQ(this->Told(this->m_manager.GetConnectRoute(routes, this->m_net["A"], out), out), "2: X C B");
    EXPECT_EQ(this->m_net.Names(routes), "C M B D");
    EXPECT_EQ(this->Told(this->m_manager.GetConnectRoute(routes, this->m_net["B"], out), out), "0: X C B");
}

TYPED_TEST(TributariesOfArray, NullEntriesAreSkipped)
{
    CArray<TypeParam*> routes = this->Array("C M B");
    TypeParam* const none = nullptr;
    routes.InsertAt(1, none);
    routes.Add(none);
    CArray<TypeParam*> out;
    EXPECT_EQ(this->Told(this->m_manager.GetConnectRoute(routes, this->m_net["A"], out), out), "2: C B");
}

TYPED_TEST(TributariesOfArray, AreTakenOutFromTheLastOn)
{
    CArray<TypeParam*> routes = this->Array("C M B D");
    EXPECT_EQ(this->Recursive(routes, "A", false, false, "X"), "3: X B C");
    EXPECT_EQ(this->m_net.Names(routes), "M D");
}

TYPED_TEST(TributariesOfArray, NoneLeavesBothArraysAlone)
{
    CArray<TypeParam*> routes = this->Array("C M B D");
    EXPECT_EQ(this->Recursive(routes, "B", true, true, "X"), "0: X");
    EXPECT_EQ(this->m_net.Names(routes), "C M B D");
}

TYPED_TEST(TributariesOfArray, AreSortedByFlowOrderWhenAsked)
{
    this->m_net.Set(L"floworder", {{"B", L"3"}, {"C", L"2"}});
    CArray<TypeParam*> routes = this->Array("C B");
    EXPECT_EQ(this->Recursive(routes, "A", false, true), "2: C B");
    EXPECT_TRUE(routes.IsEmpty());
}

TYPED_TEST(TributariesOfArray, OfTheNextLevelFollowAfterAllSiblingsOfTheLastSiblingFirst)
{
    this->m_net.Add("W: E>D; F>B");
    CArray<TypeParam*> routes = this->Array("A B C D E F M");
    EXPECT_EQ(this->Recursive(routes, "M", true, false), "6: D A C B F E");
    EXPECT_EQ(this->m_net.Names(routes), "M");
}

TYPED_TEST(TributariesOfArray, SortedTheSiblingWithTheHighestFlowOrderIsExpandedFirst)
{
    this->m_net.Add("W: E>D");
    this->m_net.Set(L"floworder", {{"A", L"1"}, {"D", L"2"}, {"B", L"6"}, {"C", L"5"}});
    CArray<TypeParam*> routes = this->Array("A B C D E");
    EXPECT_EQ(this->Recursive(routes, "M", true, true), "5: A D E C B");
    EXPECT_TRUE(routes.IsEmpty());
}

TYPED_TEST(TributariesOfArray, AreEachListedOnceOnARing)
{
    this->m_net.Add("W: P>Q; Q>R; R>P");
    CArray<TypeParam*> routes = this->Array("P Q R");
    EXPECT_EQ(this->Recursive(routes, "P", true, true), "3: R Q P");
    EXPECT_TRUE(routes.IsEmpty());
}

// ---- everything upstream, by flow order ----

TEST_F(RouteTree, SortOrderListsEachRouteBeforeItsTributaries)
{
    m_net.Set(L"floworder", {{"A", L"2"}, {"D", L"1"}, {"B", L"4"}, {"C", L"3"}});
    const auto sorted = [&](const char* web, long route) {
        return m_net.AfterFor<Routes>("X",
                                      [&](auto& out) { m_manager.GetConnectRouteSortOrder(m_net[web], route, out); });
    };
    EXPECT_EQ(sorted("W", 0), "X M D A C B");
    EXPECT_EQ(sorted("W", m_net["A"]), "X C B");
    EXPECT_EQ(sorted("W", m_net["B"]), "X");
    EXPECT_EQ(sorted("V", 0), "X X");
}

TEST_F(RouteTree, SortOrderLeavesRoutesOfOtherWebsOut)
{
    m_net.Route("X").SetConnectId(static_cast<unsigned long>(m_net["A"]));
    m_net.Add("W: Y>X");
    EXPECT_EQ(
        m_net.AfterFor<Routes>("", [&](auto& out) { m_manager.GetConnectRouteSortOrder(m_net["W"], m_net["A"], out); }),
        "B C");
}

TEST_F(RouteTree, SortOrderEndsOnARing)
{
    MakeRing();
    EXPECT_EQ(
        m_net.AfterFor<Routes>("", [&](auto& out) { m_manager.GetConnectRouteSortOrder(m_net["W"], m_net["A"], out); }),
        "B M D C");
}

// ---- everything upstream, of a list ----

class Upstream : public RouteTree {
protected:
    std::string Behind(const char* route, const char* candidates, const char* before = "") const
    {
        return Over(candidates, before,
                    [&](auto& list, auto& out) { m_manager.GetConnectRouteUpperAll(m_net[route], list, out); });
    }
    std::string ByOrder(const char* route, const char* candidates, const char* before = "") const
    {
        return Over(candidates, before,
                    [&](auto& list, auto& out) { m_manager.GetConnectRouteUpperAllByOrder(m_net[route], list, out); });
    }
};

TEST_F(Upstream, ARouteStandsBehindEverythingThatFlowsIntoIt)
{
    EXPECT_EQ(Behind("M", "M A B C D"), "B C A D");
    EXPECT_EQ(Behind("M", "D C B A M", "X"), "X D C B A");
    EXPECT_EQ(Behind("A", "M A B C D"), "B C");
}

TEST_F(Upstream, AHeadRouteHasNothing)
{
    EXPECT_EQ(Behind("B", "M A B C D", "X"), "X");
    EXPECT_EQ(ByOrder("B", "M A B C D", "X"), "X");
}

TEST_F(Upstream, RoutesOutsideTheListDoNotExist)
{
    EXPECT_EQ(Behind("M", "B C D"), "D");
    EXPECT_EQ(ByOrder("M", "B C D"), "D");
}

TEST_F(Upstream, FromTheFlowEndAllRoutesAreListed)
{
    EXPECT_EQ(Over("M A B C D", "", [&](auto& list, auto& out) { m_manager.GetConnectRouteUpperAll(0, list, out); }),
              "B C A D M");
    EXPECT_EQ(
        Over("M A B C D", "", [&](auto& list, auto& out) { m_manager.GetConnectRouteUpperAllByOrder(0, list, out); }),
        "M A B C D");
}

TEST_F(Upstream, CandidatesThatDoNotExistAreSkipped)
{
    const Ids list{0, 9999, m_net["W"], m_net["B"]};
    EXPECT_EQ(
        m_net.After("", [&](CList<long, long>& out) { m_manager.GetConnectRouteUpperAll(m_net["A"], list, out); }),
        "B");
    EXPECT_EQ(m_net.After(
                  "", [&](CList<long, long>& out) { m_manager.GetConnectRouteUpperAllByOrder(m_net["A"], list, out); }),
              "B");
}

TEST_F(Upstream, ByOrderARouteStandsBeforeWhatFlowsIntoItAndSiblingsAsInTheList)
{
    EXPECT_EQ(ByOrder("M", "M A B C D"), "A B C D");
    EXPECT_EQ(ByOrder("M", "D C B A M", "X"), "X D A C B");
}

TEST_F(Upstream, OnARingTheStartAndTheWayToItAreNotListedAgain)
{
    MakeRing();
    EXPECT_EQ(Behind("M", "M A B C D"), "B C A D");
    EXPECT_EQ(Behind("A", "M A B C D"), "D M B C");
    EXPECT_EQ(ByOrder("M", "M A B C D"), "A B C D");
    EXPECT_EQ(ByOrder("A", "M A B C D"), "B M D C");
}

class UpstreamByConnectId : public RouteTree {
protected:
    IdsByConnectId m_candidates;

    ~UpstreamByConnectId() override
    {
        for (auto& [id, list] : m_candidates)
            delete list;
    }
    void Add(const char* connect, const char* routes)
    {
        long id = m_net[connect];
        auto list = std::make_unique<CList<long, long>>();
        for (const long route : m_net.List(routes))
            list->AddTail(route);
        m_candidates[id] = list.release();
    }
    std::string Behind(const char* route) const
    {
        return m_net.After(
            "X", [&](CList<long, long>& out) { m_manager.GetConnectRouteUpperAll(m_net[route], m_candidates, out); });
    }
};

TEST_F(UpstreamByConnectId, TheMapIsFollowedInTheOrderOfItsLists)
{
    Add("M", "D A");
    Add("A", "C B");
    EXPECT_EQ(Behind("M"), "X D C B A");
    EXPECT_EQ(Behind("A"), "X C B");
    EXPECT_EQ(m_candidates.GetCount(), 2);
}

TEST_F(UpstreamByConnectId, AnAbsentKeyIsAHeadRoute)
{
    EXPECT_EQ(Behind("M"), "X");
    Add("M", "D A");
    EXPECT_EQ(Behind("M"), "X D A");
    EXPECT_EQ(Behind("B"), "X");
}

TEST_F(UpstreamByConnectId, ARingEnds)
{
    Add("M", "A");
    Add("A", "B");
    Add("B", "M");
    EXPECT_EQ(Behind("M"), "X B A");
}

// ---- downstream ----

class Downstream : public RouteTree {
protected:
    std::string Below(const char* route, const char* candidates, const char* before = "") const
    {
        return Over(candidates, before,
                    [&](auto& list, auto& out) { m_manager.GetConnectRouteLowerAll(m_net[route], list, out); });
    }
};

TEST_F(Downstream, TheRoutesOnTheWayDownWithoutTheRouteItself)
{
    EXPECT_EQ(Below("B", "M A B C D"), "A M");
    EXPECT_EQ(Below("B", "A M", "X"), "X A M");
    EXPECT_EQ(Below("M", "M A B C D"), "");
}

TEST_F(Downstream, TheWayStopsAtARouteOutsideTheList)
{
    EXPECT_EQ(Below("B", "M B C D"), "");
    EXPECT_EQ(Below("B", "A B C D"), "A");
}

TEST_F(Downstream, RouteZeroAndAnUnknownRouteHaveNoWay)
{
    const Ids list = m_net.List("M A B C D");
    Ids out = m_net.List("X");
    m_manager.GetConnectRouteLowerAll(0, list, out);
    m_manager.GetConnectRouteLowerAll(9999, list, out);
    m_manager.GetConnectRouteLowerAll(m_net["W"], list, out);
    EXPECT_EQ(m_net.Names(out), "X");
}

TEST_F(Downstream, TheWayEndsWhereItComesBackToTheStart)
{
    MakeRing();
    EXPECT_EQ(Below("A", "M A B C D"), "M B");
    m_net.Add("W: S");
    m_net.Route("S").SetConnectId(static_cast<unsigned long>(m_net["S"]));
    EXPECT_EQ(Below("S", "S"), "");
}

TEST_F(Downstream, TheWayEndsWhereItComesBackToARouteOfTheWay)
{
    MakeRing();
    EXPECT_EQ(Below("C", "M A B C D"), "A M B");
}

TEST_F(Downstream, ARouteThatTheListHeldBeforeDoesNotEndTheWay)
{
    EXPECT_EQ(Below("B", "M A B C D", "M"), "M A M");
}

} // namespace
