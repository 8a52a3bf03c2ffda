// Queries of the network: within a route, from a span to its neighbours, upstream, downstream, whole webs. Peers: a
// depth-first search of a graph library over a prepared graph, and a chase through a plain vector.

#include "NetworkCity.h"

#ifdef RIVELTA_BENCH_BOOST_GRAPH
#include <boost/graph/adjacency_list.hpp>
#include <boost/graph/depth_first_search.hpp>
#endif

#include <unordered_map>

namespace {

using bench::NetworkCity;
using bench::Round;
using Ids = CList<long, long>;

// ---- queries whose answer is small, or a whole web: the number of results ----

using Ask = std::ptrdiff_t (*)(const CObjectManager&, long id);

std::ptrdiff_t SortSpanInRoute(const CObjectManager& manager, long route)
{
    Ids ids;
    manager.GetSortSpanInRoute(route, ids, true);
    return ids.GetCount();
}

std::ptrdiff_t MostLowerNodeId(const CObjectManager& manager, long route)
{
    long node = 0;
    return manager.GetMostLowerNodeId(route, node);
}

std::ptrdiff_t LowerSpan(const CObjectManager& manager, long span)
{
    long lower = 0;
    manager.GetLowerSpan(span, lower);
    return 1; // the end of the line is an answer too
}

std::ptrdiff_t FlowInSpanToSpan(const CObjectManager& manager, long span)
{
    CArray<const CSpan*> spans;
    return 1 + manager.GetFlowInSpanToSpan(span, spans); // so is a span without inflow
}

std::ptrdiff_t SpanFromWeb(const CObjectManager& manager, long web)
{
    Ids ids;
    manager.GetSpanFromWeb(web, ids);
    return ids.GetCount();
}

template <bool sorted> std::ptrdiff_t NodeObjectListFromWeb(const CObjectManager& manager, long web)
{
    CTypedPtrList<CObList, CNode*> nodes;
    manager.GetNodeObjectListFromWeb(web, nodes, sorted);
    return nodes.GetCount();
}

void RunQuery(benchmark::State& state, const CObjectManager& manager, Ask ask, const std::vector<long>& ids)
{
    Round<long> round(ids);
    ask(manager, ids.front()); // builds the indexes
    std::ptrdiff_t results = 0;
    for (auto _ : state)
        results += ask(manager, round.Next());
    bench::CountEntries(state, results);
}

// The routes or the spans of one web: the same amount of memory at every size.
template <class T> std::vector<long> IdsOfOneWeb(const NetworkCity& city, const std::vector<long>& ids)
{
    const long web = city.webs.front();
    const auto isOfWeb = [&](long id) {
        if constexpr (std::is_same_v<T, CSpan>)
            return city.manager.GetWebIdFromSpan(id) == web;
        else
            return city.manager.GetRouteObjectOriginal(id)->Links()[0] == web;
    };
    std::vector<long> found;
    std::copy_if(ids.begin(), ids.end(), std::back_inserter(found), isOfWeb);
    return found;
}

template <class T>
void RegisterQuery(const std::string& name, Ask ask, const std::vector<long> NetworkCity::*ids, long size)
{
    bench::Register(bench::Sized(name, size), [=](benchmark::State& state) {
        NetworkCity& city = NetworkCity::Of(size);
        RunQuery(state, city.manager, ask, city.*ids);
    });
    bench::Register(bench::Sized(name + "/one web", size), [=](benchmark::State& state) {
        NetworkCity& city = NetworkCity::Of(size);
        RunQuery(state, city.manager, ask, IdsOfOneWeb<T>(city, city.*ids));
    });
}

// ---- everything upstream of the route at the flow end ----

// What callers hold ready for a web: its routes, and the same by connect id.
struct WebRoutes {
    explicit WebRoutes(const CObjectManager& manager, long web)
    {
        manager.GetRouteIdList(web, ids);
        root = ids.GetHead();
        for (const long id : ids) {
            long connectId = manager.GetRouteObjectOriginal(id)->Links()[1];
            Ids*& list = byConnectId[connectId];
            if (!list) list = owned.emplace_back(std::make_unique<Ids>()).get();
            list->AddTail(id);
        }
    }
    long root;
    Ids ids;
    CMap<long, long&, Ids*, Ids*> byConnectId;
    std::vector<std::unique_ptr<Ids>> owned;
};

void OfList(const CObjectManager& manager, const WebRoutes& web, Ids& out)
{
    manager.GetConnectRouteUpperAll(web.root, web.ids, out);
}

void OfMap(const CObjectManager& manager, const WebRoutes& web, Ids& out)
{
    manager.GetConnectRouteUpperAll(web.root, web.byConnectId, out);
}

template <class Walk>
void RunUpstream(benchmark::State& state, const CObjectManager& manager, const std::vector<long>& webs, Walk&& walk)
{
    std::vector<std::unique_ptr<WebRoutes>> prepared;
    for (const long web : webs)
        prepared.push_back(std::make_unique<WebRoutes>(manager, web));
    Round<std::unique_ptr<WebRoutes>> round(prepared);
    std::ptrdiff_t results = 0;
    for (auto _ : state) {
        const WebRoutes& web = *round.Next();
        Ids out;
        walk(manager, web, out);
        if (out.GetCount() != web.ids.GetCount() - 1) state.SkipWithError("routes are missing");
        results += out.GetCount();
    }
    bench::CountEntries(state, results);
}

#ifdef RIVELTA_BENCH_BOOST_GRAPH
// The same routes as a graph with edges against the flow.
struct RouteGraph {
    using Graph = boost::adjacency_list<boost::vecS, boost::vecS, boost::directedS>;

    RouteGraph(const CObjectManager& manager, long web)
    {
        Ids list;
        manager.GetRouteIdList(web, list);
        std::unordered_map<long, std::size_t> vertexOf;
        for (const long id : list) {
            vertexOf.emplace(id, ids.size());
            ids.push_back(id);
        }
        std::vector<std::pair<std::size_t, std::size_t>> edges;
        for (const long id : list)
            if (const long below = manager.GetRouteObjectOriginal(id)->Links()[1]; below != 0)
                edges.emplace_back(vertexOf.at(below), vertexOf.at(id));
        graph = std::make_unique<Graph>(edges.begin(), edges.end(), ids.size());
        colors.resize(ids.size());
    }

    // Each route behind everything that flows into it, the start as well.
    std::vector<long> Upstream()
    {
        struct Collect : boost::default_dfs_visitor {
            const std::vector<long>* ids;
            std::vector<long>* out;
            void finish_vertex(std::size_t vertex, const Graph&) const { out->push_back((*ids)[vertex]); }
        };
        std::vector<long> out;
        Collect collect;
        collect.ids = &ids;
        collect.out = &out;
        std::fill(colors.begin(), colors.end(), boost::white_color);
        boost::depth_first_visit(
            *graph, 0, collect,
            boost::make_iterator_property_map(colors.begin(), boost::get(boost::vertex_index, *graph)));
        return out;
    }

    std::unique_ptr<Graph> graph;
    std::vector<long> ids; // by vertex; 0 is the route at the flow end
    std::vector<boost::default_color_type> colors;
};

void RunGraph(benchmark::State& state, const CObjectManager& manager, const std::vector<long>& webs)
{
    std::vector<std::unique_ptr<RouteGraph>> prepared;
    for (const long web : webs)
        prepared.push_back(std::make_unique<RouteGraph>(manager, web));
    Round<std::unique_ptr<RouteGraph>> round(prepared);
    std::ptrdiff_t results = 0;
    for (auto _ : state) {
        RouteGraph& web = *round.Next();
        const std::vector<long> out = web.Upstream();
        if (out.size() != web.ids.size()) state.SkipWithError("routes are missing");
        results += static_cast<std::ptrdiff_t>(out.size());
    }
    bench::CountEntries(state, results);
}
#endif

// One web of 5,000 routes, as bushy as it is large.
struct LargeWeb {
    static LargeWeb& Get()
    {
        static LargeWeb web;
        return web;
    }
    bench::OpenCity manager{{2, 5000, bench::Tree::Bushy}, 2 * bench::Size(5000)};
    std::vector<long> webs = bench::ShuffledIds(manager.GetWebDb());
};

// ---- down to the flow end ----

// The uppermost span of each web's main line.
std::vector<long> TopSpans(const CObjectManager& manager, const std::vector<long>& webs)
{
    std::vector<long> spans;
    for (const long web : webs) {
        Ids ids;
        manager.GetSortSpanInRoute(bench::TopRoute(manager, web), ids, true);
        spans.push_back(ids.GetTail());
    }
    return spans;
}

void Downstream(benchmark::State& state, const CObjectManager& manager, const std::vector<long>& webs)
{
    const std::vector<long> tops = TopSpans(manager, webs);
    long lower = 0;
    manager.GetLowerSpan(tops.front(), lower); // builds the index
    Round<long> round(tops);
    std::ptrdiff_t results = 0;
    for (auto _ : state) {
        Ids ids;
        manager.GetLowerSpanObjectList(round.Next(), ids);
        results += ids.GetCount();
    }
    bench::CountEntries(state, results);
}

// What the floor is: the next span stands in a vector, the ids go to another.
void ChaseInVector(benchmark::State& state, const CObjectManager& manager, const std::vector<long>& webs)
{
    std::vector<long> lowerOf;
    for (const CSpan* span : manager.GetSpanDb()) {
        const auto id = static_cast<std::size_t>(span->GetId32());
        if (lowerOf.size() <= id) lowerOf.resize(id + 1);
        manager.GetLowerSpan(span->GetId32(), lowerOf[id]);
    }
    const std::vector<long> tops = TopSpans(manager, webs);
    Round<long> round(tops);
    std::ptrdiff_t results = 0;
    for (auto _ : state) {
        std::vector<long> ids;
        for (long span = round.Next(); span != 0; span = lowerOf[static_cast<std::size_t>(span)])
            ids.push_back(span);
        benchmark::DoNotOptimize(ids.data());
        results += static_cast<std::ptrdiff_t>(ids.size());
    }
    bench::CountEntries(state, results);
}

// ---- registration: size by size, because only one city is kept ----

using OnWebs = void (*)(benchmark::State&, const CObjectManager&, const std::vector<long>& webs);

void RegisterOnWebs(const std::string& name, OnWebs run, long size)
{
    bench::Register(bench::Sized(name, size), [=](benchmark::State& state) {
        NetworkCity& city = NetworkCity::Of(size);
        run(state, city.manager, city.webs);
    });
}

template <Ask ask> void AskWebs(benchmark::State& state, const CObjectManager& manager, const std::vector<long>& webs)
{
    RunQuery(state, manager, ask, webs);
}

void RegisterAll()
{
    const std::pair<const char*, OnWebs> upstream[] = {
        {"UpstreamOfList", [](auto& state, auto& manager, auto& webs) { RunUpstream(state, manager, webs, OfList); }},
        {"UpstreamOfMap", [](auto& state, auto& manager, auto& webs) { RunUpstream(state, manager, webs, OfMap); }},
#ifdef RIVELTA_BENCH_BOOST_GRAPH
        {"DepthFirstSearch", RunGraph},
#endif
    };
    for (const long size : bench::kSpans) {
        RegisterQuery<CRoute>("SortSpanInRoute", SortSpanInRoute, &NetworkCity::routes, size);
        RegisterQuery<CRoute>("MostLowerNodeId", MostLowerNodeId, &NetworkCity::routes, size);
        RegisterQuery<CSpan>("LowerSpan", LowerSpan, &NetworkCity::spans, size);
        RegisterQuery<CSpan>("FlowInSpanToSpan", FlowInSpanToSpan, &NetworkCity::spans, size);
        for (const auto& [name, run] : upstream)
            RegisterOnWebs(name, run, size);
        RegisterOnWebs("Downstream", Downstream, size);
        RegisterOnWebs("ChaseInVector", ChaseInVector, size);
        RegisterOnWebs("SpanFromWeb", AskWebs<SpanFromWeb>, size);
        RegisterOnWebs("NodesFromWeb", AskWebs<NodeObjectListFromWeb<false>>, size);
        RegisterOnWebs("SortedNodesFromWeb", AskWebs<NodeObjectListFromWeb<true>>, size);
    }
    for (const auto& [name, run] : upstream)
        bench::Register(std::string(name) + "/5,000 routes", [run = run](benchmark::State& state) {
            run(state, LargeWeb::Get().manager, LargeWeb::Get().webs);
        });
}

std::vector<bench::Ratio> Ratios()
{
    std::vector<bench::Ratio> ratios;
    for (const std::string query : {"SortSpanInRoute", "MostLowerNodeId", "LowerSpan", "FlowInSpanToSpan"})
        for (const std::string& name : {query, query + "/one web"}) {
            for (const long size : bench::kSpans)
                ratios.push_back({bench::Sized(name, size) + ", µs", bench::Sized(name, size), "1 µs", 2.0});
            ratios.push_back({name + ", 1M / 10k", name + "/1M", name + "/10k", 1.5});
        }
    for (const std::string size : {"/10k", "/100k", "/1M", "/5,000 routes"})
        for (const std::string walk : {"UpstreamOfList", "UpstreamOfMap"})
            ratios.push_back({walk + size + " / depth-first search", walk + size, "DepthFirstSearch" + size, 3.0});
    for (const std::string size : {"/10k", "/100k", "/1M"}) {
        ratios.push_back(
            {"downstream" + size + " / chase in a vector", "Downstream" + size, "ChaseInVector" + size, 10.0});
        for (const std::string list : {"SpanFromWeb", "NodesFromWeb", "SortedNodesFromWeb"})
            ratios.push_back({list + size + ", ns an entry", list + size + ":entry", "1 ns in s", 100.0});
    }
    return ratios;
}

} // namespace

int main(int argc, char** argv)
{
    bench::InstallDefaults();
    bench::Figures::Put("1 µs", 1000);
    bench::Figures::Put("1 ns in s", 1e-9);
    RegisterAll();
    return bench::Run(argc, argv, Ratios(), bench::Clock::Processor);
}
