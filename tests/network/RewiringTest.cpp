// Hanging routes onto others, turning them round, and what their numbers follow.

#include "support/Networks.h"

#include <gmock/gmock.h>

#include <string>

namespace {

using support::Ids;
using support::Network;

class Rewiring : public testing::Test {
protected:
    bool HasNode(const char* node) const { return m_net.manager.GetNodeObjectOriginal(m_net[node]) != nullptr; }
    std::string WebsOf(std::string_view routes) const
    {
        std::vector<long> webs;
        for (const long id : m_net.List(routes))
            webs.push_back(static_cast<long>(m_net.manager.GetRouteObjectOriginal(id)->GetWebId()));
        return m_net.Names(webs);
    }

    Network m_net;
    support::OpenManager& m_manager = m_net.manager;
};

// ---- ConnectRoute ----

class ConnectRoute : public Rewiring {
protected:
    void SetUp() override { m_net.Add("W: M = m-o; N = n1-n2-o; A>M = a2-m, a1-a2; T>A = t-a1; E"); }
    bool Connect(const char* route, const char* into) { return m_manager.ConnectRoute(m_net[route], m_net[into]); }
};

TEST_F(ConnectRoute, TheLowestNodeMovesToTheTopOfTheOtherRoute)
{
    m_net.Set(L"connectnum", {{"A", L"M"}});
    EXPECT_TRUE(Connect("A", "N"));
    EXPECT_EQ(m_net.Ends("a2-m a1-a2 t-a1"), "a2-n1 a1-a2 t-a1");
    EXPECT_EQ(m_net.Connects("A T M N"), "N A 0 0");
    EXPECT_EQ(m_net.Get(L"connectnum", "A"), L"M");
}

TEST_F(ConnectRoute, TheOldLowestNodeIsDeletedThoughOthersUseIt)
{
    EXPECT_TRUE(Connect("A", "N"));
    EXPECT_FALSE(HasNode("m"));
    EXPECT_EQ(m_net.Ends("m-o"), "m-o") << "the other span keeps the id of the lost node";
}

TEST_F(ConnectRoute, AnUnknownRouteOrOneWithoutSpansIsNotConnected)
{
    EXPECT_FALSE(m_manager.ConnectRoute(0, m_net["N"]));
    EXPECT_FALSE(m_manager.ConnectRoute(9999, 0));
    EXPECT_FALSE(Connect("E", "N"));
    EXPECT_FALSE(m_manager.ConnectRoute(m_net["E"], 0));
    EXPECT_EQ(m_net.Connects("E"), "0");
    EXPECT_TRUE(HasNode("o"));
}

TEST_F(ConnectRoute, WhenTheOtherRouteHasNoTopTheNodeIsGoneAlready)
{
    EXPECT_FALSE(Connect("A", "E"));
    EXPECT_FALSE(HasNode("m"));
    EXPECT_EQ(m_net.Connects("A"), "M");
    EXPECT_EQ(static_cast<long>(m_net.Span("a2-m").GetLowerNodeId()), m_net["m"]);
}

TEST_F(ConnectRoute, WithZeroTheRouteGoesToTheFlowEnd)
{
    EXPECT_TRUE(m_manager.ConnectRoute(m_net["A"], 0));
    EXPECT_EQ(m_net.Ends("a2-m a1-a2"), "a2-o a1-a2");
    EXPECT_EQ(m_net.Connects("A T"), "0 A");
    EXPECT_FALSE(HasNode("m"));
    EXPECT_TRUE(HasNode("o"));
}

TEST_F(ConnectRoute, ARouteThatEndsAtTheFlowEndKeepsItsSpans)
{
    m_net.Route("N").SetConnectId(static_cast<unsigned long>(m_net["M"]));
    EXPECT_TRUE(m_manager.ConnectRoute(m_net["N"], 0));
    EXPECT_EQ(m_net.Ends("n1-n2 n2-o"), "n1-n2 n2-o");
    EXPECT_EQ(m_net.Connects("N"), "0");
    EXPECT_TRUE(HasNode("o"));
}

TEST_F(ConnectRoute, WithoutAFlowEndTheSpansStay)
{
    m_net.Add("V: P>Q = p-q; Q>P = q-p");
    EXPECT_TRUE(m_manager.ConnectRoute(m_net["P"], 0));
    EXPECT_EQ(m_net.Ends("p-q q-p"), "p-q q-p");
    EXPECT_EQ(m_net.Connects("P Q"), "0 P");
    EXPECT_TRUE(HasNode("q"));
}

// ---- ChangeConnectRoute ----

class ChangeConnectRoute : public Rewiring {
protected:
    void SetUp() override
    {
        m_net.Add(
            "W: M = m-o; A>M = a2-m, a1-a2; T>A = t-a1; S>T; V: N = n2-p, n1-n2; Y>A; U: Q>R = q-r; R>Q = r-q; E:");
    }
    bool Change(const char* route, const char* into, const char* newWeb)
    {
        return m_manager.ChangeConnectRoute(m_net[route], into ? m_net[into] : 0, m_net["W"], m_net[newWeb]);
    }
};

TEST_F(ChangeConnectRoute, TheLowestNodeMovesToTheTopOfTheOtherRoute)
{
    m_net.Set(L"connectnum", {{"A", L"M"}});
    EXPECT_TRUE(Change("A", "N", "V"));
    EXPECT_EQ(m_net.Ends("a2-m a1-a2"), "a2-n1 a1-a2");
    EXPECT_EQ(m_net.Connects("A T"), "N A");
    EXPECT_EQ(m_net.Get(L"connectnum", "A"), L"M");
}

TEST_F(ChangeConnectRoute, EverythingUpstreamGoesToTheNewWebWhereverItWas)
{
    EXPECT_TRUE(Change("A", "N", "V"));
    EXPECT_EQ(WebsOf("A T S Y M"), "V V V V W");
}

TEST_F(ChangeConnectRoute, TheOldLowestNodeStays)
{
    EXPECT_TRUE(Change("A", "N", "V"));
    EXPECT_TRUE(HasNode("m"));
    EXPECT_TRUE(Change("M", nullptr, "V"));
    EXPECT_TRUE(HasNode("o"));
}

TEST_F(ChangeConnectRoute, TheOldWebIsNotUsed)
{
    EXPECT_TRUE(m_manager.ChangeConnectRoute(m_net["A"], m_net["N"], 0, m_net["V"]));
    EXPECT_EQ(WebsOf("A T"), "V V");
    EXPECT_EQ(m_net.Ends("a2-m"), "a2-n1");
}

TEST_F(ChangeConnectRoute, WithZeroTheRouteGoesToTheFlowEndOfTheNewWeb)
{
    EXPECT_TRUE(Change("A", nullptr, "V"));
    EXPECT_EQ(m_net.Ends("a2-m a1-a2"), "a2-p a1-a2");
    EXPECT_EQ(m_net.Connects("A"), "0");
    EXPECT_EQ(WebsOf("A T"), "V V");
}

TEST_F(ChangeConnectRoute, TheFirstRouteOfAWebMakesItsFlowEnd)
{
    const auto before = m_manager.GetNodeDb().GetCount();
    EXPECT_TRUE(Change("A", nullptr, "E"));
    EXPECT_EQ(m_manager.GetNodeDb().GetCount(), before + 1);
    const auto end = static_cast<long>(m_net.Span("a2-m").GetLowerNodeId());
    EXPECT_EQ(end, m_manager.GetCurrentObjectId());
    CMapStringToString attributes;
    m_manager.GetNodeObjectOriginal(end)->GetSubAttribute(attributes);
    EXPECT_TRUE(attributes.IsEmpty());
    EXPECT_EQ(WebsOf("A T S"), "E E E");
    long found = 0;
    EXPECT_TRUE(m_manager.GetFlowEndNodeId(m_net["E"], found));
    EXPECT_EQ(found, end);
}

TEST_F(ChangeConnectRoute, AWebWithRoutesAndNoFlowEndIsRefused)
{
    EXPECT_FALSE(Change("A", nullptr, "U"));
    EXPECT_EQ(m_net.Connects("A"), "0") << "the first step stands";
    EXPECT_EQ(m_net.Ends("a2-m"), "a2-m");
    EXPECT_EQ(WebsOf("A T"), "W W");
}

TEST_F(ChangeConnectRoute, ARouteWithoutSpansIsRefused)
{
    EXPECT_FALSE(Change("S", "N", "V"));
    EXPECT_EQ(m_net.Connects("S"), "N") << "the first step stands";
    EXPECT_EQ(WebsOf("S"), "W");
}

TEST_F(ChangeConnectRoute, AConnectRouteWithoutSpansIsRefused)
{
    EXPECT_FALSE(Change("A", "S", "V"));
    EXPECT_EQ(m_net.Ends("a2-m"), "a2-m");
    EXPECT_EQ(WebsOf("A T"), "W W");
}

TEST_F(ChangeConnectRoute, AnUnknownRouteIsRefused)
{
    EXPECT_FALSE(m_manager.ChangeConnectRoute(0, m_net["N"], m_net["W"], m_net["V"]));
    EXPECT_FALSE(m_manager.ChangeConnectRoute(m_net["W"], 0, m_net["W"], m_net["V"]));
    EXPECT_EQ(WebsOf("M A T S N"), "W W W W V");
}

// ---- carrying routes to a web ----

using UpperRoutes = Rewiring;

TEST_F(UpperRoutes, EverythingUpstreamGoesToTheWebButNotTheRouteItself)
{
    m_net.Add("W: M; A>M; B>A; D; V: X>B; Y");
    m_manager.SetUpperRouteObject(m_net["A"], m_net["V"]);
    EXPECT_EQ(WebsOf("M A B D X Y"), "W W V W V V");
}

TEST_F(UpperRoutes, AreNoneOfAHeadRoute)
{
    m_net.Add("W: M; A>M; V:");
    m_manager.SetUpperRouteObject(m_net["A"], m_net["V"]);
    EXPECT_EQ(WebsOf("M A"), "W W");
}

TEST_F(UpperRoutes, OnARingEndBeforeTheStart)
{
    m_net.Add("W: A>C; B>A; C>B; V:");
    m_manager.SetUpperRouteObject(m_net["A"], m_net["V"]);
    EXPECT_EQ(WebsOf("A B C"), "W V V");
}

// ---- numbers that follow ----

using ConnectNumbers = Rewiring;

TEST_F(ConnectNumbers, FollowTheConnectRouteWhoseDirectionIsSettled)
{
    m_net.Add("W: M; N; A>M; B>N; V: X>M");
    m_net.Set(L"routenum", {{"M", L"12-b"}});
    m_net.Set(L"rtstate", {{"M", L"1"}, {"N", L"2"}, {"A", L"0"}});
    m_net.Set(L"connectnum", {{"M", L"end"}, {"A", L"old"}, {"B", L"old"}, {"X", L"old"}});
    m_manager.UpdateConnectRouteNum(m_net["W"]);
    EXPECT_EQ(m_net.Get(L"connectnum", "M A B X"), L"end 12-b old old");
}

TEST_F(ConnectNumbers, AreNotTouchedWhereThereIsNoConnectRoute)
{
    m_net.Add("W: A; B");
    m_net.Route("A").SetConnectId(9999);
    m_net.Set(L"connectnum", {{"A", L"old"}});
    m_manager.UpdateConnectRouteNum(m_net["W"]);
    m_manager.UpdateConnectRouteNum(0);
    EXPECT_EQ(m_net.Get(L"connectnum", "A B"), L"old -");
}

// ---- turning a route round ----

using Reversal = Rewiring;

TEST_F(Reversal, TheSpansRunTheOtherWayAndAreNumberedFromTheNewTop)
{
    m_net.Add("W: R = b-c, a-b, c-d; S = s-t");
    m_net.Set(L"spno", {{"a-b", L"1"}, {"b-c", L"2"}, {"c-d", L"3"}, {"s-t", L"7"}});
    m_manager.ReverseSpanInRoute(m_net["R"]);
    EXPECT_EQ(m_net.Ends("a-b b-c c-d s-t"), "b-a c-b d-c s-t");
    EXPECT_EQ(m_net.Get(L"spno", "c-d b-c a-b s-t"), L"1 2 3 7");
    EXPECT_EQ(m_net.After("", [&](auto& out) { return m_manager.GetSortSpanInRoute(m_net["R"], out, false); }),
              "true: c-d b-c a-b");
}

TEST_F(Reversal, EndCoordinatesChangePlaces)
{
    m_net.Add("W: R = a-b");
    int value = 1;
    for (const wchar_t* key : {L"csx", L"csy", L"csz", L"cex", L"cey", L"cez"})
        m_net.Set(key, {{"a-b", std::to_wstring(value++).c_str()}});
    m_manager.ReverseSpanInRoute(m_net["R"]);
    std::wstring now;
    for (const wchar_t* key : {L"csx", L"csy", L"csz", L"cex", L"cey", L"cez"})
        now += m_net.Get(key, "a-b");
    EXPECT_EQ(now, L"456123");
}

TEST_F(Reversal, WithoutAStartCoordinateNoneChangePlaces)
{
    m_net.Add("W: R = a-b-c");
    m_net.Set(L"csx", {{"a-b", L""}});
    for (const wchar_t* key : {L"csy", L"csz", L"cex", L"cey", L"cez"})
        m_net.Set(key, {{"a-b", key}, {"b-c", key}});
    m_manager.ReverseSpanInRoute(m_net["R"]);
    for (const wchar_t* key : {L"csy", L"csz", L"cex", L"cey", L"cez"})
        EXPECT_EQ(m_net.Get(key, "a-b b-c"), std::wstring(key) + L' ' + key);
}

TEST_F(Reversal, ArcsChangeSides)
{
    struct Arc {
        const wchar_t *radius, *side, *turned;
    };
    const Arc arcs[] = {
        {L"12.5", L"0", L"1"}, {L"12.5", L"1", L"0"}, {L"12.5", L"2", L"0"}, {L"0.001", L"", L"1"},
        {L"0", L"1", L"1"},    {L"-3", L"1", L"1"},   {L"", L"1", L"1"},     {L"0.0", L"0", L"0"},
    };
    for (const Arc& arc : arcs) {
        Network net("W: R = a-b");
        net.Set(L"spradt", {{"a-b", arc.radius}});
        net.Set(L"sparcdir", {{"a-b", arc.side}});
        net.manager.ReverseSpanInRoute(net["R"]);
        EXPECT_EQ(net.Get(L"sparcdir", "a-b"), arc.turned) << "radius " << arc.radius << " side " << arc.side;
    }
}

TEST_F(Reversal, OtherValuesStay)
{
    m_net.Add("W: R = a-b-c");
    const wchar_t* const keys[] = {L"order", L"splength", L"uppercentinv", L"lowercentinv", L"sparcdir"};
    for (const wchar_t* key : keys)
        m_net.Set(key, {{"a-b", L"1"}, {"b-c", L"2"}});
    m_net.Set(L"connectnum", {{"R", L"end"}});
    m_manager.ReverseSpanInRoute(m_net["R"]);
    for (const wchar_t* key : keys)
        EXPECT_EQ(m_net.Get(key, "a-b b-c"), L"1 2") << key;
    EXPECT_EQ(m_net.Connects("R"), "0");
    EXPECT_EQ(m_net.Get(L"connectnum", "R"), L"end");
}

TEST_F(Reversal, ARingIsTurnedAndNotNumbered)
{
    m_net.Add("W: R = a-b-a; E");
    m_net.Set(L"spno", {{"a-b", L"8"}, {"b-a", L"9"}});
    m_manager.ReverseSpanInRoute(m_net["R"]);
    m_manager.ReverseSpanInRoute(m_net["E"]);
    m_manager.ReverseSpanInRoute(0);
    EXPECT_EQ(m_net.Ends("a-b b-a"), "b-a a-b");
    EXPECT_EQ(m_net.Get(L"spno", "a-b b-a"), L"8 9");
}

TEST_F(Reversal, TwiceIsWhatItWasApartFromNumbers)
{
    m_net.Add("W: R = a-b-c");
    for (const wchar_t* key : {L"csx", L"cex"})
        m_net.Set(key, {{"a-b", key}, {"b-c", key}});
    m_manager.ReverseSpanInRoute(m_net["R"]);
    m_manager.ReverseSpanInRoute(m_net["R"]);
    EXPECT_EQ(m_net.Ends("a-b b-c"), "a-b b-c");
    EXPECT_EQ(m_net.Get(L"csx", "a-b b-c"), L"csx csx");
    EXPECT_EQ(m_net.Get(L"spno", "a-b b-c"), L"1 2");
}

// ---- manhole numbers ----

class ManholeNumbers : public Rewiring {
protected:
    void SetUp() override
    {
        m_net.Add("W: R = b-c, a-b, c-d; S = s-t-s");
        m_net.Set(L"routenum", {{"R", L"12-b"}});
        m_net.Set(L"mholeno", {{"a", L"A"}, {"b", L"B"}, {"d", L"D"}, {"s", L"S"}});
        m_old.Add(L"before");
        m_new.Add(L"before");
    }
    static std::wstring Joined(const CStringArray& texts)
    {
        std::wstring result;
        for (const CString& text : texts)
            result += std::wstring(text.View()) + L',';
        return result;
    }

    CStringArray m_old, m_new;
};

TEST_F(ManholeNumbers, RunFromTheTopDown)
{
    m_manager.UpdateManHoleNumSameRouteNum(m_net["R"], m_old, m_new, false);
    EXPECT_EQ(m_net.Get(L"mholeno", "a b c d"), L"12-b-1 12-b-2 12-b-3 D");
    EXPECT_EQ(Joined(m_old), L"before,A,B,,");
    EXPECT_EQ(Joined(m_new), L"before,12-b-1,12-b-2,12-b-3,");
}

TEST_F(ManholeNumbers, RunFromTheLowestSpanUp)
{
    m_manager.UpdateManHoleNumSameRouteNum(m_net["R"], m_old, m_new, true);
    EXPECT_EQ(m_net.Get(L"mholeno", "a b c d"), L"12-b-3 12-b-2 12-b-1 D");
    EXPECT_EQ(Joined(m_old), L"before,,B,A,");
    EXPECT_EQ(Joined(m_new), L"before,12-b-1,12-b-2,12-b-3,");
}

TEST_F(ManholeNumbers, OfARingStay)
{
    m_manager.UpdateManHoleNumSameRouteNum(m_net["S"], m_old, m_new, false);
    m_manager.UpdateManHoleNumSameRouteNum(0, m_old, m_new, false);
    EXPECT_EQ(m_net.Get(L"mholeno", "s t"), L"S -");
    EXPECT_EQ(Joined(m_old), L"before,");
    EXPECT_EQ(Joined(m_new), L"before,");
}

// ---- lists ----

TEST_F(Rewiring, AnIdListIsTurnedRoundInPlace)
{
    Ids ids{1, 2, 3, 3};
    m_manager.ReverseIdList(ids);
    EXPECT_THAT(support::toVector(ids), testing::ElementsAre(3, 3, 2, 1));
    Ids none;
    m_manager.ReverseIdList(none);
    EXPECT_TRUE(none.IsEmpty());
}

} // namespace
