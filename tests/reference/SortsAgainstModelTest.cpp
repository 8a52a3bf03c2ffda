// Every sort against its literal procedure: on many small lists with many equal keys, on damaged sets of routes, and
// on some long lists. The random scripts of NetworkAgainstModelTest.cpp run the sorts, too, but on few records.

#include "reference/BothSides.h"
#include "reference/LibraryEdits.h"
#include "reference/NetworkSorts.h"

#include <gmock/gmock.h>

#include <algorithm>

namespace {

using namespace objectdata;
using namespace reference;

class SortsAgainstModel : public testing::Test {
protected:
    int Pick(int count) { return static_cast<int>(m_random() % static_cast<unsigned>(count)); }

    // Few values, so that ties are common; some are no numbers.
    std::wstring Tied()
    {
        static constexpr const wchar_t* kValues[] = {L"0", L"1", L"1", L"2", L"3", L"-1", L"", L" 2", L"x", L"10"};
        return kValues[Pick(static_cast<int>(std::size(kValues)))];
    }
    std::wstring RouteNumber()
    {
        static constexpr const wchar_t* kParts[] = {L"A", L"B", L"1", L"2", L"10", L"01", L"-", L" ", L"a", L"+3"};
        std::wstring text;
        for (int left = Pick(4); left > 0; --left)
            text += kParts[Pick(static_cast<int>(std::size(kParts)))];
        return text;
    }

    void Shuffle(Ids& ids) { std::shuffle(ids.begin(), ids.end(), m_random); }

    // Routes of one web, each hung on an earlier one or on the flow end; the nearer `depth` is to 1 the longer the
    // lines. Each has a span, or now and then more or none.
    Ids AddTree(int count, double depth, bool withEmpty)
    {
        const int web = design.Add(Web, {0}, {{L"order", L"1"}});
        Ids routes;
        for (int i = 0; i < count; ++i) {
            int connect = 0;
            if (i > 0 && Pick(8) != 0) {
                const bool goesOn = static_cast<double>(Pick(1000)) < depth * 1000;
                connect = routes[static_cast<std::size_t>(goesOn ? i - 1 : Pick(i))];
            }
            const int route = design.Add(
                Route, {web, connect},
                {{L"routenum", RouteNumber()}, {L"order", Tied()}, {L"floworder", Tied()}, {L"rtstate", L"1"}});
            routes.push_back(route);
            if (withEmpty && Pick(12) == 0) continue;
            int lower = design.Add(Node, {});
            for (int spans = Pick(4) == 0 ? 2 : 1; spans > 0; --spans) {
                const int upper = design.Add(Node, {});
                design.Add(Span, {upper, lower, route}, {{L"splength", std::to_wstring(Pick(3))}});
                lower = upper;
            }
        }
        return routes;
    }

    // Rings, routes that flow into themselves or into what does not exist.
    void Damage(const Ids& routes)
    {
        for (int left = Pick(4); left > 0; --left) {
            const int route = routes[static_cast<std::size_t>(Pick(static_cast<int>(routes.size())))];
            const int connect =
                Pick(8) == 0 ? 9999999 : routes[static_cast<std::size_t>(Pick(static_cast<int>(routes.size())))];
            static_cast<CRoute*>(design.library.TableOf(Route).Find(route))
                ->SetConnectId(static_cast<unsigned long>(connect));
            ConnectOf(*design.network.Route(route)) = connect;
        }
    }

    static Args Lists(std::initializer_list<Ids> lists)
    {
        Args args;
        for (const Ids& ids : lists)
            Choice::Pack(args.numbers, ids);
        return args;
    }

    // The sorts that take a set of routes and append to a list.
    void CompareListSorts(const Ids& set, const Ids& before)
    {
        for (const StepKind& kind : m_queries) {
            const std::string_view name = kind.name;
            if (!name.starts_with("SortRoute") || name.find("Length") != std::string_view::npos) continue;
            ASSERT_EQ(design.Run(kind, Lists({set, before})), "");
        }
    }

    std::mt19937 m_random{support::testSeed(3000)};
    const std::vector<StepKind> m_queries = SortQueries();
    BothSides design;
};

TEST_F(SortsAgainstModel, RoutesOfTreesComeInTheSameOrder)
{
    for (int round = 0; round < 1500; ++round) {
        SCOPED_TRACE("round " + std::to_string(round));
        Ids routes = AddTree(1 + Pick(14), 0.3, round % 5 == 0);
        if (round % 3 == 2) Damage(routes);
        if (round % 2 == 0) Shuffle(routes);
        Ids set(routes.begin(), routes.begin() + 1 + Pick(static_cast<int>(routes.size())));
        if (round % 7 == 0) set.push_back(set.front());
        ASSERT_NO_FATAL_FAILURE(CompareListSorts(set, round % 4 == 0 ? Ids{5, routes.back(), 7} : Ids()));
        if (round % 10 == 9) design.Clear();
    }
}

TEST_F(SortsAgainstModel, DistancesAreWrittenAlike)
{
    const std::vector<StepKind> edits = SortEdits();
    for (int round = 0; round < 300; ++round) {
        SCOPED_TRACE("round " + std::to_string(round));
        const Ids routes = AddTree(1 + Pick(14), 0.3, round % 5 == 0);
        if (round % 3 == 2) Damage(routes);
        const int web = WebOf(*design.network.Route(routes.front()));
        ASSERT_EQ(design.Run(edits.front(), Args{{web}, {}}), "");
        ASSERT_EQ(design.CompareRecords(), "");
        design.Clear();
    }
}

TEST_F(SortsAgainstModel, ManyRoutesComeInTheSameOrder)
{
    for (const double depth : {0.0, 0.9, 0.99}) {
        Ids routes = AddTree(2000, depth, false);
        const int web = WebOf(*design.network.Route(routes.front()));
        ASSERT_EQ(design.Run(SortEdits().front(), Args{{web}, {}}), "");
        ASSERT_EQ(design.CompareRecords(), "");
        Shuffle(routes);
        for (const StepKind& kind : m_queries) {
            const std::string_view name = kind.name;
            if (!name.starts_with("SortRouteBranch") && !name.starts_with("SortRouteMaxExtend")) continue;
            ASSERT_EQ(design.Run(kind, Lists({routes, {}})), "");
        }
        design.Clear();
    }
}

TEST_F(SortsAgainstModel, StepsOverAnyChainsAreTheSame)
{
    AddTree(8, 0.3, false);
    for (int round = 0; round < 6000; ++round)
        for (const StepKind& kind : m_queries) {
            const std::string_view name = kind.name;
            if (name.find("Buranch") == std::string_view::npos && name != "SortRouteLength") continue;
            Choice choice(m_random, design.network);
            ASSERT_EQ(design.Run(kind, kind.choose(choice)), "") << "round " << round;
        }
}

// The types that some sort knows, with the key that it reads.
constexpr std::pair<objectdata::OBJECTTYPE, const wchar_t*> kSorted[] = {{Outq, L"order"},
                                                                         {AreaInq, L"order"},
                                                                         {AreaOutq, L"order"},
                                                                         {FixInq, L"order"},
                                                                         {IcpInq, L"order"},
                                                                         {MountInq, L"order"},
                                                                         {Web, L"order"},
                                                                         {Profilearea, L"order"},
                                                                         {Sheetarea, L"order"},
                                                                         {Profilelayout, L"order"},
                                                                         {Drawbeltdat, L"order"},
                                                                         {Drawsecinfodat, L"order"},
                                                                         {Span, L"lowercentinv"},
                                                                         {Route, L"order"},
                                                                         {Route, L"floworder"},
                                                                         {Inareaset, L"iasratiosetnum"},
                                                                         {Outareaset, L"oasratiosetnum"},
                                                                         {AreaSet, L"asratiosetnum"},
                                                                         {Drawbelttx, L"order"},
                                                                         {Execution, L"ecnum"},
                                                                         {Retain, L"ernum"},
                                                                         {Timber, L"tbnum"},
                                                                         {Foundation, L"fdnum"},
                                                                         {ManHole, L"order"},
                                                                         {Section, L"order"},
                                                                         {SectGroup, L"order"},
                                                                         {SectGroupRec, L"order"},
                                                                         {Pipe, L"order"},
                                                                         {Cbox, L"order"},
                                                                         {Obox, L"order"},
                                                                         {Ubox, L"order"},
                                                                         {Egg, L"order"}};

TEST_F(SortsAgainstModel, RecordsOfEveryKindComeInTheSameOrder)
{
    const std::vector<StepKind> edits = SortEdits();
    for (int round = 0; round < 60; ++round) {
        SCOPED_TRACE("round " + std::to_string(round));
        const bool isAlmostLevel = round % 2 == 0;
        for (const auto& [type, key] : kSorted) {
            const Ids links(static_cast<std::size_t>(obmgr::RecordOf(type).links.count), 1);
            for (int left = Pick(25); left > 0; --left) {
                // Levels that are equal from neighbour to neighbour only.
                const bool isLevel = type == Span && isAlmostLevel;
                design.Add(type, links,
                           {{key, isLevel ? L"1.0000" + std::to_wstring(Pick(60)) : Tied()}, {L"floworder", Tied()}});
            }
        }
        for (int times = 0; times < 8; ++times) {
            for (const StepKind& kind : m_queries) {
                Choice choice(m_random, design.network);
                ASSERT_EQ(design.Run(kind, kind.choose(choice)), "");
            }
            for (const StepKind& kind : edits) {
                Choice choice(m_random, design.network);
                ASSERT_EQ(design.Run(kind, kind.choose(choice)), "");
            }
        }
        ASSERT_EQ(design.CompareRecords(), "");
        design.Clear();
    }
}

// ---- long lists: the literal procedures over keys that are looked up once ----

class LongLists : public SortsAgainstModel {
protected:
    static constexpr int kLong = 2000;
    using Keyed = std::vector<std::pair<int, int>>; // id, key

    // Records of the type under keys of `different` values.
    Keyed AddRecords(objectdata::OBJECTTYPE type, const wchar_t* key, int different)
    {
        Keyed keyed;
        const Ids links(static_cast<std::size_t>(obmgr::RecordOf(type).links.count), 1);
        for (int i = 0; i < kLong; ++i) {
            const int value = Pick(different);
            keyed.emplace_back(design.Add(type, links, {{key, std::to_wstring(value)}}), value);
        }
        std::shuffle(keyed.begin(), keyed.end(), m_random);
        return keyed;
    }
    static Ids IdsOf(const Keyed& keyed)
    {
        Ids ids;
        for (const auto& entry : keyed)
            ids.push_back(entry.first);
        return ids;
    }
    template <class Sort> static Ids Sorted(const Keyed& keyed, Sort&& sort)
    {
        Ids ids = IdsOf(keyed);
        PassedList list(ids);
        sort(list.Get());
        return IdsOfList(list.Get());
    }
    static Ids IdsOfList(const CList<long, long>& list)
    {
        Ids ids;
        for (const long id : list)
            ids.push_back(static_cast<int>(id));
        return ids;
    }
};

bool IsGreater(const std::pair<int, int>& p, const std::pair<int, int>& q)
{
    return p.second > q.second;
}

TEST_F(LongLists, ExchangeSortLeavesEqualKeysWhereItAlwaysDid)
{
    for (const int different : {1, 2, 40, 100000}) {
        Keyed keyed = AddRecords(FixInq, L"order", different);
        const Ids result = Sorted(keyed, [&](auto& list) { design.library.SortOrderFixInq(list); });
        ExchangeSort(keyed, IsGreater);
        EXPECT_EQ(result, IdsOf(keyed)) << different;

        Keyed routes = AddRecords(Route, L"floworder", different);
        const Ids byFlow = Sorted(routes, [&](auto& list) { design.library.SortFlowOrder(list); });
        ExchangeSort(routes, IsGreater);
        EXPECT_EQ(byFlow, IdsOf(routes)) << different;
        design.Clear();
    }
}

TEST_F(LongLists, LevelsFallWithTheirTolerance)
{
    for (const int different : {3, 300}) {
        Ids ids;
        std::vector<std::pair<int, double>> keyed;
        for (int i = 0; i < kLong; ++i) {
            const double level = 2 + Pick(different) * 4e-6;
            keyed.emplace_back(design.Add(Span, {0, 0, 0}, {{L"lowercentinv", DoubleText(level)}}), 0.0);
            keyed.back().second = Double(*design.network.Span(keyed.back().first), L"lowercentinv");
        }
        std::shuffle(keyed.begin(), keyed.end(), m_random);
        CList<long, long> list;
        for (const auto& entry : keyed)
            list.AddTail(entry.first);
        design.library.SortOrderSpanLowercentinv(list);
        ExchangeSort(keyed, [](const auto& p, const auto& q) { return CompareDouble(q.second, p.second, 1e-5) > 0; });
        for (const auto& entry : keyed)
            ids.push_back(entry.first);
        EXPECT_EQ(IdsOfList(list), ids) << different;
        design.Clear();
    }
}

TEST_F(LongLists, MiddleQuicksortLeavesEqualKeysWhereItAlwaysDid)
{
    for (const int different : {1, 2, 40, 100000}) {
        Keyed keyed = AddRecords(Route, L"order", different);
        const Ids result = Sorted(keyed, [&](auto& list) { design.library.SortOrderRoute(list, -1, -1); });
        const auto key = [](const std::pair<int, int>& entry) { return entry.second; };
        MiddleQuicksort(keyed, -1, -1, key);
        EXPECT_EQ(result, IdsOf(keyed)) << different;
        const Ids part = Sorted(keyed, [&](auto& list) { design.library.SortOrderRoute(list, 100, 900); });
        MiddleQuicksort(keyed, 100, 900, key);
        EXPECT_EQ(part, IdsOf(keyed)) << different;
        design.Clear();
    }
}

TEST_F(LongLists, StableSortKeepsEqualKeys)
{
    for (const int different : {1, 2, 40, 100000}) {
        Keyed keyed = AddRecords(ManHole, L"order", different);
        const Ids result = Sorted(keyed, [&](auto& list) { design.library.SortManholeIDList(list); });
        StableSort(keyed);
        EXPECT_EQ(result, IdsOf(keyed)) << different;
        design.Clear();
    }
}

TEST_F(LongLists, RouteNumbersFallAsTheComparisonLetsThem)
{
    std::vector<std::pair<int, std::wstring>> keyed;
    for (int i = 0; i < kLong; ++i) {
        const std::wstring number = RouteNumber();
        keyed.emplace_back(design.Add(Route, {1, 0}, {{L"routenum", number}}), number);
    }
    std::shuffle(keyed.begin(), keyed.end(), m_random);
    CList<long, long> in;
    for (const auto& entry : keyed)
        in.AddTail(entry.first);
    const auto expect = [&](auto sort, auto isAfter) {
        CList<long, long> out;
        sort(out);
        auto expected = keyed;
        ExchangeSort(expected, isAfter);
        Ids ids;
        for (const auto& entry : expected)
            ids.push_back(entry.first);
        EXPECT_EQ(IdsOfList(out), ids);
    };
    expect([&](auto& out) { design.library.SortRouteRouteNumber(in, out); },
           [](const auto& p, const auto& q) { return p.second > q.second; });
    expect([&](auto& out) { design.library.SortRouteRouteNumberN3(in, out); },
           [](const auto& p, const auto& q) { return StrNumCmp(q.second.c_str(), p.second.c_str()) < 0; });
}

// ---- texts with numbers in them ----

TEST_F(SortsAgainstModel, TextsWithNumbersCompareAlike)
{
    static constexpr wchar_t kLetters[] = L"0129aAb -+.\t\u7BA1";
    const auto text = [&] {
        std::wstring result;
        for (int left = Pick(Pick(20) == 0 ? 25 : 7); left > 0; --left)
            result += kLetters[Pick(static_cast<int>(std::size(kLetters)) - 1)];
        return result;
    };
    for (int round = 0; round < 200000; ++round) {
        const std::wstring a = text();
        const std::wstring b = Pick(4) == 0 ? a + text() : text();
        ASSERT_EQ(CObjectManager::StrNumCmp(a.c_str(), b.c_str()), StrNumCmp(a.c_str(), b.c_str()))
            << testing::PrintToString(a) << " " << testing::PrintToString(b);
        ASSERT_EQ(CObjectManager::_fatoi(a.c_str()), Fatoi(a.c_str())) << testing::PrintToString(a);
        ASSERT_EQ(CObjectManager::SkipDigit(a.c_str()), SkipDigit(a.c_str())) << testing::PrintToString(a);
    }
}

} // namespace
