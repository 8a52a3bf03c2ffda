// Ways down by connect ids: rings, routes that do not meet, stale numbers; and the literal walks against the library.

#include "integrity/LiteralChecks.h"
#include "integrity/ProgressLog.h"
#include "resources/Resources.h"
#include "support/Dump.h"
#include "support/Networks.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <map>
#include <random>

namespace {

using integrity::ProgressLog;
using support::Ids;
using support::Network;

// ---- CheckLoopRoute ----

TEST(LoopOfRoutes, IsNotOnAWayThatEnds)
{
    const Network net("W: M = m-out; A>M = a-m; B>A = b-a");
    for (const char* route : {"M", "A", "B"})
        EXPECT_TRUE(net.manager.CheckLoopRoute(net[route])) << route;
}

TEST(LoopOfRoutes, IsARouteThatConnectsToItself)
{
    const Network net("W: M>M = m-out");
    EXPECT_FALSE(net.manager.CheckLoopRoute(net["M"]));
}

TEST(LoopOfRoutes, IsFoundOnItAndAboveIt)
{
    const Network net("W: A>B = a-b; B>C = b-c; C>A = c-a; T>A = t-a; U>T = u-t");
    for (const char* route : {"A", "B", "C", "T", "U"})
        EXPECT_FALSE(net.manager.CheckLoopRoute(net[route])) << route;
}

TEST(LoopOfRoutes, IsNotWhereAConnectRouteIsMissing)
{
    Network net("W: A>B = a-b; B = b-c");
    net.manager.GetRouteDb().Remove(&net.Route("B"));
    EXPECT_TRUE(net.manager.CheckLoopRoute(net["A"]));
}

TEST(LoopOfRoutes, CannotBeDeniedForARouteThatDoesNotExist)
{
    const Network net("W: M = m-out");
    for (const long id : {0L, -1L, 4711L, net["W"]})
        EXPECT_FALSE(net.manager.CheckLoopRoute(id)) << id;
}

// ---- GetAbnormalRoute ----

class AbnormalRoutes : public testing::Test {
protected:
    AbnormalRoutes() { EXPECT_TRUE(obmgr::SetResourceLanguage(obmgr::ResourceLanguage::English)); }

    // The routes write the number of the one that they flow into.
    static void Settle(Network& net)
    {
        for (CRoute* route : net.manager.GetRouteDb())
            if (const CRoute* const connect =
                    net.manager.GetRouteObjectOriginal(static_cast<long>(route->GetConnectId())))
                route->WriteSubAttribute(L"connectnum", connect->GetSubAttribute(L"routenum"));
    }
    // "-3 (A M) A": the code, the pair, the changed routes. Both lists held something before.
    static std::string Check(Network& net, const Ids& routes)
    {
        Ids pairs{1};
        Ids changed{2};
        const int code = net.manager.GetAbnormalRoute(routes, pairs, changed);
        std::string text = std::to_string(code);
        if (!pairs.IsEmpty()) text += " (" + net.Names(pairs) + ")";
        return changed.IsEmpty() ? text : text + ' ' + net.Names(changed);
    }
    static std::string Check(Network& net, const char* routes) { return Check(net, net.List(routes)); }

    ProgressLog m_log;
};

TEST_F(AbnormalRoutes, AreNoneInATreeWithTheRightNumbers)
{
    Network net("W: M = m-x-out; A>M = a-m; B>M = b-y-m; C>B = c-b");
    Settle(net);
    const std::string before = support::dump(net.manager);
    EXPECT_EQ(Check(net, "C M A B"), "0");
    EXPECT_EQ(support::dump(net.manager), before);
}

TEST_F(AbnormalRoutes, AreMendedWhereAConnectNumberIsStale)
{
    Network net("W: M = m-x-out; A>M = a-m; B>M = b-y-m; C>B = c-b");
    Settle(net);
    net.Set(L"connectnum", {{"B", L"old"}});
    EXPECT_EQ(Check(net, "M A C B"), "-2 B");
    EXPECT_EQ(net.Get(L"connectnum", "A B C M"), L"M M B -");
    EXPECT_EQ(Check(net, "M A C B"), "0") << "nothing is left";
}

TEST_F(AbnormalRoutes, AreMendedInTheOrderOfTheWalks)
{
    Network net("W: M = m-out; A>M = a-m; B>A = b-a; C>B = c-b");
    EXPECT_EQ(Check(net, "A C"), "-2 A C B");
    EXPECT_EQ(net.Get(L"connectnum", "A B C"), L"M A B");
}

TEST_F(AbnormalRoutes, AreMendedBelowALoopThatIsFoundThen)
{
    Network net("W: A>B = a-b; B>C = b-c; C>A = c-a; T>A = t-a");
    Settle(net);
    net.Set(L"connectnum", {{"B", L"old"}});
    EXPECT_EQ(Check(net, "T"), "-1 (C A) B");
    EXPECT_EQ(net.Get(L"connectnum", "B"), L"C");
}

TEST_F(AbnormalRoutes, AreALoopOfOneRoute)
{
    Network net("W: M>M = m-out");
    EXPECT_EQ(Check(net, "M"), "-1 (M M)");
    EXPECT_EQ(net.Get(L"connectnum", "M"), L"-") << "found before the numbers are compared";
}

TEST_F(AbnormalRoutes, DoNotMeetWhereTheLowestSpanEndsASpanAboveTheTopOfTheConnectRoute)
{
    Network net("W: M = m-out; X = x-m; A>M = a-x");
    Settle(net);
    EXPECT_EQ(Check(net, "A"), "-3 (A M)");
}

TEST_F(AbnormalRoutes, DoNotMeetBelowTheTopOfTheConnectRoute)
{
    Network net("W: M = m-x-out; A>M = a-x");
    Settle(net);
    EXPECT_EQ(Check(net, "A"), "-3 (A M)");
}

TEST_F(AbnormalRoutes, DoNotMeetWhereNoSpanGoesOn)
{
    Network net("W: M = m-out; A>M = a-y");
    Settle(net);
    EXPECT_EQ(Check(net, "A"), "-3 (A M)");
}

TEST_F(AbnormalRoutes, DoNotMeetWhereAnotherSpanGoesOnFirst)
{
    Network net("W: S = m-s; M = m-out; A>M = a-m");
    Settle(net);
    EXPECT_EQ(Check(net, "A"), "-3 (A M)");
}

TEST_F(AbnormalRoutes, HaveNoOrderOfSpansWhereTheseFormARing)
{
    Network net("W: M = m-n-m; A>M = a-m; B>A = b-c-b");
    Settle(net);
    EXPECT_EQ(Check(net, "A"), "-3 (A M)");
    net.Route("A").SetConnectId(0);
    EXPECT_EQ(Check(net, "B"), "-3 (B A)");
    EXPECT_EQ(Check(net, "M A"), "0") << "a route that flows into none is not looked at";
}

TEST_F(AbnormalRoutes, HaveNoOrderOfSpansWithoutAny)
{
    Network net("W: M; A>M = a-m");
    Settle(net);
    EXPECT_EQ(Check(net, "A"), "-3 (A M)");
}

TEST_F(AbnormalRoutes, FlowIntoNothingWhereTheConnectRouteIsMissing)
{
    Network net("W: M = m-out; A>M = a-m; B>A = b-a");
    net.manager.GetRouteDb().Remove(&net.Route("M"));
    EXPECT_EQ(Check(net, "B"), "-3 (A M) B") << "the pair names the id that leads nowhere";
}

TEST_F(AbnormalRoutes, AreRoutesOfTwoWebs)
{
    Network net("W: M = m-out; V: A>M = a-m");
    EXPECT_EQ(Check(net, "A"), "-4 (A M) A") << "the number is put right before the webs are compared";
}

TEST_F(AbnormalRoutes, EndTheCheckAtTheFirstFault)
{
    Network net("W: M = m-out; A>M = a-m; B>B = b-m; C>C = c-m");
    EXPECT_EQ(Check(net, "M A C B"), "-1 (C C) A");
}

TEST_F(AbnormalRoutes, AreNoneInAnEmptyList)
{
    Network net("W: M>M = m-out");
    EXPECT_EQ(Check(net, ""), "0");
    EXPECT_EQ(m_log.Calls(), "open 0..0 [Checking the integrity of Route ...] close");
}

TEST_F(AbnormalRoutes, AreNotTheIdsThatNoRouteHas)
{
    Network net("W: M = m-out; A>M = a-m");
    EXPECT_EQ(Check(net, Ids{0, -1, 4711, net["W"]}), "0");
    EXPECT_EQ(Check(net, Ids{4711, net["A"], 4711}), "-2 A");
}

TEST_F(AbnormalRoutes, MayBeAskedForWithTheListThatGetsTheAnswer)
{
    Network net("W: M = m-out; A>M = a-m; B>M = b-m");
    Ids changed = net.List("M B A");
    Ids pairs;
    EXPECT_EQ(net.manager.GetAbnormalRoute(changed, pairs, changed), -2);
    EXPECT_EQ(net.Names(changed), "B A");
}

TEST_F(AbnormalRoutes, ComeBackWithTheTransaction)
{
    Network net("W: M = m-out; A>M = a-m");
    net.manager.BeginTransaction();
    EXPECT_EQ(Check(net, "A"), "-2 A");
    net.manager.AbortTransaction();
    EXPECT_EQ(net.Get(L"connectnum", "A"), L"-");
}

// ---- the dialog ----

TEST_F(AbnormalRoutes, AreCountedByTheRoutesFinishedBefore)
{
    Network net("W: M = m-out; A>M = a-m; B>M = b-m");
    Settle(net);
    EXPECT_EQ(Check(net, "A B M"), "0");
    EXPECT_EQ(m_log.Calls(), "open 0..3 [Checking the integrity of Route ...] 0 pump 1 pump 2 pump close");
    EXPECT_EQ(m_log.questions, 3);
}

TEST_F(AbnormalRoutes, StayMendedWhenTheUserCancels)
{
    Network net("W: M = m-out; A>M = a-m; B>M = b-m; C>M = c-m");
    m_log.cancelAt = 2;
    EXPECT_EQ(Check(net, "A B C"), "1 A B");
    EXPECT_EQ(net.Get(L"connectnum", "A B C"), L"M M -");
    EXPECT_EQ(m_log.questions, 2);
}

TEST_F(AbnormalRoutes, AreAnnouncedInTheLanguageOfTheLibraryAndTheHandleComesBack)
{
    ASSERT_TRUE(obmgr::SetResourceLanguage(obmgr::ResourceLanguage::Japanese));
    struct : obmgr::ResourceSource {
        const wchar_t* Find(unsigned) const override { return L"the application's"; }
    } application;
    AfxSetResourceHandle(&application);
    Network net("W: M = m-out; L>L = l-m");
    for (const char* routes : {"", "M", "L"}) {
        ProgressLog log;
        Check(net, routes);
        EXPECT_EQ(log.textsInUse, obmgr::LibraryResourceHandle());
        EXPECT_EQ(log.events[2].text, L"路線の整合性をチェックしています...");
        EXPECT_EQ(AfxGetResourceHandle(), &application);
    }
    AfxSetResourceHandle(nullptr);
}

TEST_F(AbnormalRoutes, AreFoundAnewAfterInputChangedTheDesign)
{
    Network net("W: M = m-out; A>M = a-m; B>A = b-a");
    Settle(net);
    m_log.onPump = [&] {
        net.Set(L"routenum", {{"M", L"new"}});
        m_log.onPump = nullptr;
    };
    EXPECT_EQ(Check(net, "A B"), "-2 A") << "A is walked again for B";
    EXPECT_EQ(net.Get(L"connectnum", "A"), L"new");
}

// ---- against the literal walks ----

// Trees of routes that meet at their tops, in two webs; then faults, more or fewer of them.
void addRandomRoutes(Network& net, std::mt19937& random)
{
    const auto upTo = [&](int limit) { return static_cast<int>(random() % static_cast<unsigned>(limit)); };
    auto& manager = net.manager;
    const long webs[] = {net["W"], net["V"]};
    std::vector<CRoute*> routes;
    std::map<long, long> topOf;
    std::vector<CSpan*> spans;
    const auto addNode = [&] { return manager.CreateNode({})->GetId32(); };
    const auto writeNumber = [](CRoute& route, const wchar_t* key, int number) {
        route.WriteSubAttribute(key, (L"R" + std::to_wstring(number)).c_str());
    };
    for (int left = 1 + upTo(14); left > 0; --left) {
        const CRoute* const connect = routes.empty() || upTo(6) == 0
                                          ? nullptr
                                          : routes[static_cast<std::size_t>(upTo(static_cast<int>(routes.size())))];
        const long web = connect ? static_cast<long>(connect->GetWebId()) : webs[upTo(2)];
        CRoute* const route = manager.CreateRoute(web, connect ? connect->GetId32() : 0, {});
        writeNumber(*route, L"routenum", upTo(20));
        if (connect && upTo(4) > 0) route->WriteSubAttribute(L"connectnum", connect->GetSubAttribute(L"routenum"));
        long lower = connect ? topOf[connect->GetId32()] : addNode();
        for (int length = 1 + upTo(3); length > 0; --length) {
            const long upper = addNode();
            spans.push_back(manager.CreateSpanNoarea(upper, lower, route->GetId32(), {}));
            lower = upper;
        }
        topOf[route->GetId32()] = lower;
        routes.push_back(route);
    }
    const auto anyOf = [&](const auto& objects) {
        return objects[static_cast<std::size_t>(upTo(static_cast<int>(objects.size())))];
    };
    for (int faults = upTo(3) == 0 ? upTo(6) : upTo(2); faults > 0; --faults)
        switch (upTo(8)) {
        case 0: anyOf(routes)->SetConnectId(static_cast<unsigned long>(anyOf(routes)->GetId32())); break;
        case 1: anyOf(routes)->SetConnectId(4711); break;
        case 2: anyOf(routes)->SetWebId(static_cast<unsigned long>(webs[upTo(2)])); break;
        case 3: anyOf(spans)->SetLowerNodeId(anyOf(spans)->GetUpperNodeId()); break;
        case 4: anyOf(spans)->SetUpperNodeId(anyOf(spans)->GetUpperNodeId()); break;
        case 5: anyOf(spans)->SetRouteId(static_cast<unsigned long>(anyOf(routes)->GetId32())); break;
        case 6: anyOf(routes)->SetObjectId(static_cast<unsigned long>(anyOf(routes)->GetId32())); break;
        default: anyOf(spans)->SetObjectId(static_cast<unsigned long>(anyOf(spans)->GetId32()));
        }
}

Ids randomList(const Network& net, std::mt19937& random)
{
    std::vector<long> ids;
    for (const CRoute* route : net.manager.GetRouteDb())
        for (int times = random() % 8 == 0 ? 2 : random() % 6 > 0; times > 0; --times)
            ids.push_back(route->GetId32());
    if (random() % 5 == 0) ids.push_back(4711);
    std::shuffle(ids.begin(), ids.end(), random);
    return Ids(ids);
}

// What other code does while input is let through.
void editAtRandom(Network& net, std::mt19937& random)
{
    std::vector<CRoute*> routes;
    for (CRoute* route : net.manager.GetRouteDb())
        routes.push_back(route);
    std::vector<CSpan*> spans;
    for (CSpan* span : net.manager.GetSpanDb())
        spans.push_back(span);
    const auto anyOf = [&](const auto& objects) { return objects[random() % objects.size()]; };
    if (routes.empty() || spans.empty()) return;
    switch (random() % 8) {
    case 0: anyOf(routes)->WriteSubAttribute(L"connectnum", L"old"); break;
    case 1: anyOf(routes)->WriteSubAttribute(L"routenum", L"new"); break;
    case 2: anyOf(routes)->SetConnectId(static_cast<unsigned long>(anyOf(routes)->GetId32())); break;
    case 3: net.manager.GetSpanDb().Remove(anyOf(spans)); break;
    case 4: net.manager.GetRouteDb().Remove(anyOf(routes)); break;
    case 5: anyOf(spans)->SetLowerNodeId(anyOf(spans)->GetUpperNodeId()); break;
    default: break;
    }
}

struct Outcome {
    int code = 0;
    std::vector<long> pairs;
    std::vector<long> changed;
    std::string design;
    std::vector<ProgressLog::Event> events;

    bool operator==(const Outcome&) const = default;
};

// On a design that is made anew from the seed.
template <class Call> Outcome run(unsigned seed, bool isEdited, int cancelAt, Call&& call)
{
    std::mt19937 random(seed);
    Network net("W:; V:");
    addRandomRoutes(net, random);
    const Ids list = randomList(net, random);
    ProgressLog log;
    log.cancelAt = cancelAt;
    if (isEdited) log.onPump = [&] { editAtRandom(net, random); };
    Outcome outcome;
    Ids pairs;
    Ids changed;
    outcome.code = call(net.manager, list, pairs, changed);
    outcome.pairs = toVector(pairs);
    outcome.changed = toVector(changed);
    outcome.design = support::dump(net.manager);
    outcome.events = log.events;
    return outcome;
}

TEST_F(AbnormalRoutes, AgreeWithWalksToTheEndWhateverTheDesignTheCancelAndTheInput)
{
    const unsigned first = support::testSeed(3103);
    std::map<int, int> codes;
    for (unsigned seed = first; seed < first + 3000; ++seed) {
        const bool isEdited = seed % 4 == 0;
        const int cancelAt = seed % 7 == 0 ? 1 + static_cast<int>(seed / 7 % 10) : 1000;
        const Outcome library =
            run(seed, isEdited, cancelAt, [](auto& manager, auto& list, auto& pairs, auto& changed) {
                return manager.GetAbnormalRoute(list, pairs, changed);
            });
        const Outcome literal = run(seed, isEdited, cancelAt, integrity::literalGetAbnormalRoute);
        ASSERT_EQ(library.code, literal.code) << "RIVELTA_SEED=" << seed;
        ASSERT_EQ(library.pairs, literal.pairs) << "RIVELTA_SEED=" << seed;
        ASSERT_EQ(library.changed, literal.changed) << "RIVELTA_SEED=" << seed;
        ASSERT_EQ(library.design, literal.design) << "RIVELTA_SEED=" << seed;
        ASSERT_TRUE(library.events == literal.events) << "RIVELTA_SEED=" << seed;
        ++codes[library.code];
    }
    for (const int code : {0, 1, -1, -2, -3, -4})
        EXPECT_GT(codes[code], 20) << "code " << code << " hardly tried";
}

// ---- size ----

// A line of routes of a span each, the lowest first; the last flows into nothing.
void addLine(Network& net, int count, std::vector<long>& routes)
{
    auto& manager = net.manager;
    long lower = manager.CreateNode({})->GetId32();
    long connect = 0;
    for (int i = 0; i < count; ++i) {
        const long upper = manager.CreateNode({})->GetId32();
        connect = manager.CreateRoute(net["W"], connect, {})->GetId32();
        manager.CreateSpanNoarea(upper, lower, connect, {});
        lower = upper;
        routes.push_back(connect);
    }
}

TEST_F(AbnormalRoutes, OfALineOfAHundredThousandAreFoundFromAnyEnd)
{
    constexpr int kRoutes = 100'000;
    Network net("W:");
    std::vector<long> routes;
    addLine(net, kRoutes, routes);
    net.manager.GetRouteObjectOriginal(routes.front())->WriteSubAttribute(L"routenum", L"1");
    Ids pairs;
    Ids changed;
    EXPECT_EQ(net.manager.GetAbnormalRoute(Ids(routes), pairs, changed), -2);
    EXPECT_EQ(toVector(changed), std::vector<long>{routes[1]});
    std::reverse(routes.begin(), routes.end());
    EXPECT_EQ(net.manager.GetAbnormalRoute(Ids(routes), pairs, changed), 0);
    EXPECT_EQ(m_log.questions, 2 * kRoutes);
    EXPECT_TRUE(net.manager.CheckLoopRoute(routes.front()));
}

TEST_F(AbnormalRoutes, OfARingOfAHundredThousandAreFound)
{
    constexpr int kRoutes = 100'000;
    Network net("W:");
    std::vector<long> routes;
    addLine(net, kRoutes, routes);
    net.manager.GetRouteObjectOriginal(routes.front())->SetConnectId(static_cast<unsigned long>(routes.back()));
    CSpan* lowest = nullptr;
    const CSpan* uppermost = nullptr;
    for (CSpan* span : net.manager.GetSpanDb()) {
        if (!lowest) lowest = span;
        uppermost = span;
    }
    lowest->SetLowerNodeId(uppermost->GetUpperNodeId());
    Ids pairs;
    Ids changed;
    EXPECT_EQ(net.manager.GetAbnormalRoute(Ids(routes), pairs, changed), -1);
    EXPECT_EQ(toVector(pairs), (std::vector<long>{routes[1], routes[0]}));
    EXPECT_FALSE(net.manager.CheckLoopRoute(routes.front()));
}

TEST_F(AbnormalRoutes, OfManyRoutesIntoALongOneAreFound)
{
    Network net("W:");
    auto& manager = net.manager;
    const long main = manager.CreateRoute(net["W"], 0, {})->GetId32();
    long top = manager.CreateNode({})->GetId32();
    for (int i = 0; i < 20'000; ++i) {
        const long upper = manager.CreateNode({})->GetId32();
        manager.CreateSpanNoarea(upper, top, main, {});
        top = upper;
    }
    std::vector<long> routes;
    for (int i = 0; i < 20'000; ++i) {
        routes.push_back(manager.CreateRoute(net["W"], main, {})->GetId32());
        manager.CreateSpanNoarea(manager.CreateNode({})->GetId32(), top, routes.back(), {});
    }
    Ids pairs;
    Ids changed;
    EXPECT_EQ(manager.GetAbnormalRoute(Ids(routes), pairs, changed), 0);
}

} // namespace
