// Sorts of routes and records at growing sizes. The branch sorts have a bound in time; the exchange sorts stand next to
// the exchange of each position with each later one that they are defined by.

#include "NetworkCity.h"

#include <map>
#include <tuple>

namespace {

using Ids = CList<long, long>;

// ---- branch sorts of one web ----

constexpr long kRoutes[] = {1250, 2500, 5000, 10'000};

struct TreeOfRoutes {
    // Only the tree last asked for is kept.
    static TreeOfRoutes& Of(bench::Tree tree, long routes)
    {
        static std::unique_ptr<TreeOfRoutes> kept;
        if (!kept || kept->tree != tree || kept->routes != routes) {
            kept.reset();
            kept.reset(new TreeOfRoutes(tree, routes));
        }
        return *kept;
    }

    const bench::Tree tree;
    const long routes;
    bench::OpenCity manager;
    Ids ids;

private:
    TreeOfRoutes(bench::Tree kind, long count)
        : tree(kind), routes(count), manager({kSpansOfRoute, count, kind}, kSpansOfRoute * bench::Size(count))
    {
        manager.GetRouteIdList((*manager.GetWebDb().begin())->GetId32(), ids);
    }
    static constexpr long kSpansOfRoute = 20;
};

using BranchSort = bool (CObjectManager::*)(const Ids& in, Ids& out) const;

void SortBranches(benchmark::State& state, BranchSort sort, bench::Tree tree, long routes)
{
    const TreeOfRoutes& web = TreeOfRoutes::Of(tree, routes);
    std::ptrdiff_t results = 0;
    for (auto _ : state) {
        Ids out;
        (web.manager.*sort)(web.ids, out);
        if (out.GetCount() != web.ids.GetCount()) state.SkipWithError("routes are missing");
        results += out.GetCount();
    }
    bench::CountEntries(state, results);
}

// ---- sorts by a number ----

constexpr long kRecords[] = {2000, 16'000};

// Routes and outflows in an order of their own, each number about four times; spans by level.
struct Records {
    static Records& Of(long count)
    {
        static std::map<long, std::unique_ptr<Records>> kept;
        auto& records = kept[count];
        if (!records) records.reset(new Records(bench::Size(count)));
        return *records;
    }

    CObjectManager manager;
    Ids routes, outflows, spans;

private:
    explicit Records(long count)
    {
        std::mt19937 random(1);
        const auto number = [&] { return static_cast<int>(random() % static_cast<unsigned>(count / 4 + 1)); };
        for (long id = 1; id <= count; ++id) {
            auto* const route = new CRoute(static_cast<unsigned long>(id), 0, 0);
            route->WriteSubAttributeInt(L"floworder", number());
            route->WriteSubAttributeInt(L"order", number());
            manager.GetRouteDb().Add(id, route);
            routes.AddTail(id);
        }
        for (long id = count + 1; id <= 2 * count; ++id) {
            auto* const outflow = new COutq(static_cast<unsigned long>(id), 1);
            outflow->WriteSubAttributeInt(L"order", number());
            manager.GetOutqDb().Add(id, outflow);
            outflows.AddTail(id);
        }
        for (long id = 2 * count + 1; id <= 3 * count; ++id) {
            auto* const span = new CSpan(static_cast<unsigned long>(id), 0, 0, 1);
            span->WriteSubAttributeDouble(L"lowercentinv", 0.001 * number());
            manager.GetSpanDb().Add(id, span);
            spans.AddTail(id);
        }
    }
};

struct NumberSort {
    const char* name;
    Ids Records::*ids;
    void (*sort)(const CObjectManager& manager, Ids& ids);
    // Whether the first one is behind the second one, as the definition compares them.
    bool (*isBehind)(const CObjectManager& manager, long first, long second);
};

int OrderOfOutflow(const CObjectManager& manager, long id)
{
    return manager.GetOutqObjectOriginal(id)->GetSubAttributeInt(L"order", 0);
}

int FlowOrder(const CObjectManager& manager, long id)
{
    return manager.GetRouteObjectOriginal(id)->GetSubAttributeInt(L"floworder", 0);
}

double Level(const CObjectManager& manager, long id)
{
    return manager.GetSpanObjectOriginal(id)->GetSubAttributeDouble(L"lowercentinv", 0.0);
}

const NumberSort kNumberSorts[] = {
    {"SortOrderOutq", &Records::outflows, [](const CObjectManager& m, Ids& ids) { m.SortOrderOutq(ids); },
     [](const CObjectManager& m, long a, long b) { return OrderOfOutflow(m, a) > OrderOfOutflow(m, b); }},
    {"SortFlowOrder", &Records::routes, [](const CObjectManager& m, Ids& ids) { m.SortFlowOrder(ids); },
     [](const CObjectManager& m, long a, long b) { return FlowOrder(m, a) > FlowOrder(m, b); }},
    {"SortOrderSpanLowercentinv", &Records::spans,
     [](const CObjectManager& m, Ids& ids) { m.SortOrderSpanLowercentinv(ids); },
     [](const CObjectManager& m, long a, long b) { return Level(m, b) - Level(m, a) > 1e-5; }},
};

// The definition itself.
template <class IsBehind> void Exchange(std::vector<long>& ids, IsBehind&& isBehind)
{
    for (std::size_t p = 0; p < ids.size(); ++p)
        for (std::size_t q = p + 1; q < ids.size(); ++q)
            if (isBehind(ids[p], ids[q])) std::swap(ids[p], ids[q]);
}

void SortByNumber(benchmark::State& state, const NumberSort& sort, long count)
{
    Records& records = Records::Of(count);
    Ids& unsorted = records.*sort.ids;
    Ids ids;
    const auto refill = [&] {
        ids.RemoveAll();
        ids.AddTail(&unsorted);
    };
    if (count == kRecords[0]) {
        refill();
        sort.sort(records.manager, ids);
        std::vector<long> expected(unsorted.begin(), unsorted.end());
        Exchange(expected, [&](long a, long b) { return sort.isBehind(records.manager, a, b); });
        if (!std::equal(ids.begin(), ids.end(), expected.begin(), expected.end()))
            state.SkipWithError("another order than the definition's");
    }
    for (auto _ : state) {
        refill();
        bench::TimeOnly(state, [&] { sort.sort(records.manager, ids); });
    }
}

void ExchangeByNumber(benchmark::State& state, const NumberSort& sort, long count)
{
    Records& records = Records::Of(count);
    const Ids& unsorted = records.*sort.ids;
    for (auto _ : state) {
        std::vector<long> ids(unsorted.begin(), unsorted.end());
        bench::TimeOnly(state,
                        [&] { Exchange(ids, [&](long a, long b) { return sort.isBehind(records.manager, a, b); }); });
    }
}

// A floor for any exchange: the numbers stand beside the ids.
void ExchangeOfPrepared(benchmark::State& state, long count)
{
    Records& records = Records::Of(count);
    struct Entry {
        int order;
        long id;
    };
    std::vector<Entry> unsorted;
    for (const long id : records.outflows)
        unsorted.push_back({OrderOfOutflow(records.manager, id), id});
    for (auto _ : state) {
        std::vector<Entry> entries = unsorted;
        bench::TimeOnly(state, [&] {
            for (std::size_t p = 0; p < entries.size(); ++p)
                for (std::size_t q = p + 1; q < entries.size(); ++q)
                    if (entries[p].order > entries[q].order) std::swap(entries[p], entries[q]);
        });
    }
}

void SortOrderRoute(benchmark::State& state, long count)
{
    Records& records = Records::Of(count);
    Ids ids;
    for (auto _ : state) {
        ids.RemoveAll();
        ids.AddTail(&records.routes);
        bench::TimeOnly(state, [&] { records.manager.SortOrderRoute(ids, -1, -1); });
    }
}

// ---- registration ----

const std::tuple<const char*, BranchSort> kBranchSorts[] = {
    {"SortRouteBranchUpper", &CObjectManager::SortRouteBranchUpper},
    {"SortRouteBranchLower", &CObjectManager::SortRouteBranchLower},
    {"SortRouteMaxExtendUpper", &CObjectManager::SortRouteMaxExtendUpper},
    {"SortRouteMaxExtendLower", &CObjectManager::SortRouteMaxExtendLower},
};
const std::tuple<const char*, bench::Tree> kTrees[] = {{"bushy", bench::Tree::Bushy}, {"comb", bench::Tree::Comb}};

std::string Name(const std::string& work, const std::string& of, long size)
{
    return work + "/" + of + (of.empty() ? "" : "/") + std::to_string(size);
}

void RegisterAll()
{
    // Tree by tree, because only one is kept.
    for (const auto& [treeName, tree] : kTrees)
        for (const long routes : kRoutes)
            for (const auto& [sortName, sort] : kBranchSorts)
                bench::Register(Name(sortName, treeName, routes), [=, sort = sort, tree = tree](auto& state) {
                    SortBranches(state, sort, tree, routes);
                });
    for (const long count : kRecords) {
        for (const NumberSort& sort : kNumberSorts) {
            bench::Register(Name(sort.name, "", count), [=, &sort](auto& state) {
                SortByNumber(state, sort, count);
            })->UseManualTime();
            if (count == kRecords[0])
                bench::Register(Name(sort.name, "exchange", count), [=, &sort](auto& state) {
                    ExchangeByNumber(state, sort, count);
                })->UseManualTime();
        }
        bench::Register(Name("SortOrderRoute", "", count), [=](auto& state) {
            SortOrderRoute(state, count);
        })->UseManualTime();
    }
    bench::Register(Name("ExchangeOfPrepared", "", kRecords[0]), [](auto& state) {
        ExchangeOfPrepared(state, kRecords[0]);
    })->UseManualTime();
}

std::vector<bench::Ratio> Ratios()
{
    std::vector<bench::Ratio> ratios;
    for (const auto& [treeName, tree] : kTrees)
        for (const auto& [sortName, sort] : kBranchSorts) {
            const std::string what = std::string(sortName) + ", " + treeName;
            ratios.push_back({what + ", 5,000 routes, ms", Name(sortName, treeName, 5000), "1 ms", 50.0});
            // Eight times the routes; n log n would be 10.3.
            ratios.push_back({what + ", 10,000 / 1,250 routes", Name(sortName, treeName, 10'000),
                              Name(sortName, treeName, 1250), 10.5});
        }
    for (const NumberSort& sort : kNumberSorts) {
        const std::string what = sort.name;
        ratios.push_back({what + ", 2,000 / exchange", Name(what, "", 2000), Name(what, "exchange", 2000), 1.0});
        ratios.push_back({what + ", 2,000 / prepared exchange", Name(what, "", 2000), "ExchangeOfPrepared/2000", 1.0});
        // Eight times the records; n log n would be 10.2.
        ratios.push_back({what + ", 16,000 / 2,000", Name(what, "", 16'000), Name(what, "", 2000), 10.5});
    }
    ratios.push_back({"SortOrderRoute, 16,000 / 2,000", "SortOrderRoute/16000", "SortOrderRoute/2000", 10.5});
    return ratios;
}

} // namespace

int main(int argc, char** argv)
{
    bench::Figures::Put("1 ms", 1e6);
    RegisterAll();
    return bench::Run(argc, argv, Ratios(), bench::Clock::Processor);
}
