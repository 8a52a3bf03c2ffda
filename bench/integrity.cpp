// Checks and placing of records, as the dialogs of an editor and `rivelta check` ask for them. Peers: the strong
// components of a graph library over a prepared graph, and loading the same file.

#include "Files.h"
#include "Memory.h"
#include "NetworkCity.h"
#include "control/UserInterface.h"

#ifdef RIVELTA_BENCH_BOOST_GRAPH
#include <boost/graph/adjacency_list.hpp>
#include <boost/graph/strong_components.hpp>
#endif
#include <malloc.h>

#include <fcntl.h>
#include <filesystem>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unordered_map>

namespace {

using bench::NetworkCity;
using bench::Round;
using Ids = CList<long, long>;

constexpr long kCheckedSpans[] = {100'000, 1'000'000};

// The checks ask whether to go on, but nothing is shown.
class SilentInterface final : public obmgr::UserInterface {
public:
    std::unique_ptr<obmgr::ProgressView> OpenProgress() override { return nullptr; }
    int ShowMessage(const CString&, unsigned) override { return IDOK; }
    std::optional<CString> AskNewName(const obmgr::NameQuestion&) override { return std::nullopt; }
};

// Constructors take ids unsigned.
template <class T, class... Link> T& AddRecord(CObjectManager& manager, long id, Link... links)
{
    T* const object = new T(static_cast<unsigned long>(id), static_cast<unsigned long>(links)...);
    manager.TableOf(object->GetObjectType()).Add(id, object);
    return *object;
}

// ---- loops of spans: one web of all spans ----

struct WebOfAll {
    std::unique_ptr<CObjectManager> manager;
    long id = 0;
};

// As a file has it: nodes are met from the flow end upwards.
WebOfAll CityInOneWeb(long spans)
{
    constexpr long kSpansOfRoute = 20;
    WebOfAll web;
    web.manager = std::make_unique<bench::OpenCity>(bench::Shape{kSpansOfRoute, spans / kSpansOfRoute}, spans);
    web.id = bench::ShuffledIds(web.manager->GetWebDb()).front();
    return web;
}

// The worst numbering: one line, whose middle span is made first and then those around it. Each pass of the check
// takes the two ends only.
WebOfAll LineNumberedInwards(long spans)
{
    WebOfAll web;
    web.manager = std::make_unique<CObjectManager>();
    web.id = 1;
    const long route = 2;
    AddRecord<CWeb>(*web.manager, web.id);
    AddRecord<CRoute>(*web.manager, route, web.id, 0);
    const long firstNode = route + 1; // those of the line follow
    for (long place = 0; place <= spans; ++place)
        AddRecord<CNode>(*web.manager, firstNode + place);
    long lastId = firstNode + spans;
    const auto addSpan = [&](long place) {
        AddRecord<CSpan>(*web.manager, ++lastId, firstNode + place, firstNode + place + 1, route);
    };
    for (long up = spans / 2, down = up + 1; up >= 0 || down < spans; --up, ++down) {
        if (up >= 0) addSpan(up);
        if (down < spans) addSpan(down);
    }
    return web;
}

using MakeWeb = WebOfAll (*)(long spans);

// Only the web last asked for is kept.
const WebOfAll& Kept(MakeWeb make, long spans)
{
    static WebOfAll web;
    static std::pair<MakeWeb, long> key;
    if (key != std::pair(make, spans)) {
        web = {};
        web = make(bench::Size(spans));
        key = {make, spans};
    }
    return web;
}

void CheckLoops(benchmark::State& state, const WebOfAll& web)
{
    const auto check = [&] {
        Ids loops;
        return web.manager->CheckSpanLoop(web.id, loops);
    };
    check(); // builds the indexes
    malloc_trim(0);
    const double before = bench::StatusBytes("VmRSS");
    bench::ResetPeak();
    check();
    const double extra = bench::StatusBytes("VmHWM") - before;
    for (auto _ : state)
        if (check() != 0) state.SkipWithError("a tree has no loop");
    state.counters["bytes"] = extra / static_cast<double>(web.manager->GetSpanDb().GetCount());
}

#ifdef RIVELTA_BENCH_BOOST_GRAPH
void StrongComponents(benchmark::State& state, const WebOfAll& web)
{
    using Graph = boost::adjacency_list<boost::vecS, boost::vecS, boost::directedS>;
    std::unordered_map<long, std::size_t> vertexOf; // in the order in which the spans name the nodes
    const auto vertex = [&](long node) { return vertexOf.try_emplace(node, vertexOf.size()).first->second; };
    std::vector<std::pair<std::size_t, std::size_t>> edges;
    for (const CSpan* span : web.manager->GetSpanDb()) {
        const std::size_t lower = vertex(span->Links()[1]);
        edges.emplace_back(vertex(span->Links()[0]), lower);
    }
    const Graph graph(edges.begin(), edges.end(), vertexOf.size());
    std::vector<std::size_t> component(vertexOf.size());
    const auto componentMap =
        boost::make_iterator_property_map(component.begin(), boost::get(boost::vertex_index, graph));
    for (auto _ : state)
        if (boost::strong_components(graph, componentMap) != vertexOf.size()) state.SkipWithError("a tree has no loop");
}
#endif

// ---- whole cities: routes, and the records along them ----

constexpr int kCrossingsOfRoute = 5;

// Default attributes of what is added to the city.
void InstallDefaults()
{
    auto* const defaults = new CObDefManager;
    const auto add = [defaults](objectdata::OBJECTTYPE type, const wchar_t* tag,
                                std::initializer_list<std::pair<const wchar_t*, const wchar_t*>> values) {
        auto* const entry = new CObDefault(type, tag);
        for (const auto& [key, value] : values)
            entry->GetSubattribute().SetAt(key, value);
        defaults->GetDefList().AddTail(entry);
    };
    add(objectdata::Pipe, L"pipe", {{L"pethick", L"0.0280000000000"}});
    add(objectdata::Inters, L"inters", {{L"inwidth", L"HPφ250"}, {L"itcol", L"1"}, {L"defbase", L"0"}});
    // Distances along the whole route.
    add(objectdata::IntPos, L"intpos",
        {{L"ipspannum", L"0"}, {L"iphilevel", L"0"}, {L"ipinhi", L"1.2000000000000"}, {L"defbase", L"0"}});
    CObjectManager::ReSetDefManager(defaults);
}

// The sections that the city names; along each route crossing points of one body, whose distances are entered from both
// ends of the route; and each fifth ground change is relative to the line through the others.
void AddCrossings(CObjectManager& manager)
{
    for (const auto& [name, diameter] : {std::pair(L"HPφ250", 0.25), std::pair(L"VUφ150", 0.15)}) {
        CPipe* const pipe = manager.CreatePipe({});
        pipe->WriteSubAttribute(L"pename", name);
        pipe->WriteSubAttributeDouble(L"pedia", diameter);
    }
    for (const CRoute* route : manager.GetRouteDb()) {
        const long body = manager.CreateInters({})->GetId32();
        for (int i = 0; i < kCrossingsOfRoute; ++i) {
            CIntPos* const point = manager.CreateIntPos(route->GetId32(), body, {});
            point->WriteSubAttributeDouble(L"ipindist", 15.0 + 75.0 * i);
            point->WriteSubAttribute(L"ipdistdir", i % 2 == 0 ? L"0" : L"1");
        }
    }
    int place = 0;
    for (CGlChange* change : manager.GetGlChangeDb())
        if (place++ % 5 == 0) {
            change->WriteSubAttribute(L"glhilevel", L"0");
            change->WriteSubAttribute(L"glinhi", L"0.1000000000000");
        }
}

NetworkCity& CityWithCrossings(long size)
{
    NetworkCity& city = NetworkCity::Of(size);
    if (city.manager.GetIntPosDb().IsEmpty()) AddCrossings(city.manager);
    return city;
}

// A step is a connect id; each is walked once.
void CheckRoutes(benchmark::State& state, CObjectManager& manager)
{
    Ids routes;
    std::ptrdiff_t steps = 0;
    for (const CRoute* route : manager.GetRouteDb()) {
        routes.AddTail(route->GetId32());
        if (route->Links()[1] != 0) ++steps;
    }
    Ids pairs;
    Ids changed;
    manager.GetAbnormalRoute(routes, pairs, changed); // builds the indexes
    std::ptrdiff_t walked = 0;
    for (auto _ : state) {
        if (manager.GetAbnormalRoute(routes, pairs, changed) != 0) state.SkipWithError("the city is sound");
        walked += steps;
    }
    bench::CountEntries(state, walked);
}

using Update = bool (CObjectManager::*)(long webId, bool setLevel);

struct PlacedKind {
    const char* name;
    Update update;
    objectdata::OBJECTTYPE type;
};

constexpr PlacedKind kPlacedKinds[] = {
    {"IntPos", &CObjectManager::update_IntPos, objectdata::IntPos},
    {"Lateral", &CObjectManager::update_Lateral, objectdata::Lateral},
    {"GlChange", &CObjectManager::update_GlChange, objectdata::GlChange},
};

// Web after web. What was placed before is placed anew: so it is after each edit in an editor.
void UpdateWebs(benchmark::State& state, NetworkCity& city, const PlacedKind& kind, bool setLevel,
                const std::vector<long>& webs)
{
    for (const long web : webs)
        (city.manager.*kind.update)(web, setLevel);
    const auto recordsOfWeb = // webs are as large as one another
        static_cast<std::ptrdiff_t>(city.manager.TableOf(kind.type).Count() / city.webs.size());
    Round<long> round(webs);
    std::ptrdiff_t records = 0;
    for (auto _ : state) {
        if (!(city.manager.*kind.update)(round.Next(), setLevel)) state.SkipWithError("a route has no order of spans");
        records += recordsOfWeb;
    }
    bench::CountEntries(state, records);
}

// ---- the tool ----

constexpr long kToolSpans = 100'000;

// The city's file with all records placed; made at the first use.
std::filesystem::path CityFile()
{
    const std::filesystem::path path = bench::Folder::Get().File("city.xml");
    if (!std::filesystem::exists(path)) {
        NetworkCity& city = CityWithCrossings(kToolSpans);
        for (const PlacedKind& kind : {kPlacedKinds[2], kPlacedKinds[0], kPlacedKinds[1]}) // levels rest on the ground
            for (const long web : city.webs)
                (city.manager.*kind.update)(web, true);
        if (!bench::Save(city.manager, path)) std::abort();
    }
    return path;
}

void Load(benchmark::State& state)
{
    const CString path(CityFile().wstring().c_str());
    for (auto _ : state)
        bench::TimeOnly(state, [&] {
            CObjectManager manager;
            CString error;
            if (!manager.CreatePipeObjectFromFile(path, error, false)) state.SkipWithError("load failed");
        });
}

// The processor time of `rivelta <command> FILE`, the program that stands beside this one, from its start to its end.
void RunTool(benchmark::State& state, const char* command)
{
    const std::filesystem::path tool = std::filesystem::read_symlink("/proc/self/exe").parent_path().append("rivelta");
    const std::filesystem::path file = CityFile();
    const char* const arguments[] = {tool.c_str(), command, file.c_str(), nullptr};
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    for (const int output : {STDOUT_FILENO, STDERR_FILENO})
        posix_spawn_file_actions_addopen(&actions, output, "/dev/null", O_WRONLY, 0);
    for (auto _ : state) {
        pid_t process = 0;
        int status = 0;
        rusage usage{};
        const bool isRun =
            posix_spawn(&process, tool.c_str(), &actions, nullptr, const_cast<char* const*>(arguments), environ) == 0 &&
            wait4(process, &status, 0, &usage) == process;
        // 1: there are faults.
        if (!isRun || !WIFEXITED(status) || WEXITSTATUS(status) > 1) state.SkipWithError("the tool does not run");
        const auto seconds = [](const timeval& time) {
            return static_cast<double>(time.tv_sec) + 1e-6 * static_cast<double>(time.tv_usec);
        };
        state.SetIterationTime(seconds(usage.ru_utime) + seconds(usage.ru_stime));
    }
    posix_spawn_file_actions_destroy(&actions);
}

// ---- registration: size by size, because only one city is kept ----

struct Numbering {
    const char* name;
    MakeWeb make;
    double limit; // times the strong components
};

constexpr Numbering kNumberings[] = {{"file order", CityInOneWeb, 10.0},
                                     {"numbered inwards", LineNumberedInwards, 30.0}};

std::string NameOfUpdate(const PlacedKind& kind, bool setLevel)
{
    return std::string(kind.name) + (setLevel ? "/placed and levelled" : "/placed");
}

void RegisterUpdates(long size)
{
    for (const PlacedKind& kind : kPlacedKinds)
        for (const bool setLevel : {false, true}) {
            const std::string name = NameOfUpdate(kind, setLevel);
            bench::Register(bench::Sized(name, size), [=](benchmark::State& state) {
                NetworkCity& city = CityWithCrossings(size);
                UpdateWebs(state, city, kind, setLevel, city.webs);
            })->Unit(benchmark::kMicrosecond);
            bench::Register(bench::Sized(name + "/one web", size), [=](benchmark::State& state) {
                NetworkCity& city = CityWithCrossings(size);
                UpdateWebs(state, city, kind, setLevel, {city.webs.front()});
            })->Unit(benchmark::kMicrosecond);
        }
}

void RegisterAll()
{
    for (const Numbering& numbering : kNumberings)
        for (const long size : kCheckedSpans) {
            const auto add = [&](const std::string& check, auto run) {
                bench::Register(bench::Sized(check + "/" + numbering.name, size), [=](benchmark::State& state) {
                    run(state, Kept(numbering.make, size));
                })->Unit(benchmark::kMillisecond);
            };
            add("CheckSpanLoop", CheckLoops);
#ifdef RIVELTA_BENCH_BOOST_GRAPH
            add("StrongComponents", StrongComponents);
#endif
        }
    for (const long size : bench::kSpans) {
        bench::Register(bench::Sized("GetAbnormalRoute", size), [=](benchmark::State& state) {
            CheckRoutes(state, CityWithCrossings(size).manager);
        })->Unit(benchmark::kMicrosecond);
        RegisterUpdates(size);
    }
    const auto timesItself = [](benchmark::internal::Benchmark* registered) {
        registered->UseManualTime()->Unit(benchmark::kMillisecond)->Repetitions(3)->ReportAggregatesOnly();
    };
    timesItself(bench::Register("Load", Load));
    for (const char* const command : {"info", "check"})
        timesItself(bench::Register(std::string("rivelta ") + command,
                                    [=](benchmark::State& state) { RunTool(state, command); }));
}

std::vector<bench::Ratio> Ratios()
{
    std::vector<bench::Ratio> ratios;
    for (const long size : kCheckedSpans)
        for (const Numbering& numbering : kNumberings) {
            const std::string of = bench::Sized(std::string("/") + numbering.name, size);
            ratios.push_back({"loops" + of + " / strong components", "CheckSpanLoop" + of, "StrongComponents" + of,
                              numbering.limit});
            ratios.push_back({"loops" + of + ", bytes a span", "CheckSpanLoop" + of + ":bytes", "1", 100.0});
        }
    for (const long size : bench::kSpans) {
        const std::string name = bench::Sized("GetAbnormalRoute", size);
        ratios.push_back({name + ", µs a step", name + ":entry", "1 µs in s", 1.0});
    }
    for (const PlacedKind& kind : kPlacedKinds)
        for (const bool setLevel : {false, true})
            for (const char* const where : {"", "/one web"}) {
                const std::string name = NameOfUpdate(kind, setLevel) + where;
                for (const long size : bench::kSpans)
                    ratios.push_back({bench::Sized(name, size) + ", µs a record", bench::Sized(name, size) + ":entry",
                                      "1 µs in s", 2.0});
                ratios.push_back({name + ", 1M / 10k", name + "/1M:entry", name + "/10k:entry", 1.5});
            }
    ratios.push_back({"rivelta check / load", "rivelta check", "Load", 2.0});
    ratios.push_back({"rivelta check / rivelta info", "rivelta check", "rivelta info", 2.0});
    return ratios;
}

} // namespace

int main(int argc, char** argv)
{
    const CObjectManager startsTheParser;
    SilentInterface nothingShown;
    obmgr::InstallUserInterface(&nothingShown);
    InstallDefaults();
    bench::Figures::Put("1", 1);
    bench::Figures::Put("1 µs in s", 1e-6);
    RegisterAll();
    const int result = bench::Run(argc, argv, Ratios(), bench::Clock::Processor);
    obmgr::InstallUserInterface(nullptr);
    return result;
}
