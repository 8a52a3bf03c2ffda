// The store: finding an object, reading an attribute, lists by owner, transactions, adding and removing.
// Peers: std::unordered_map and an in-memory SQL database with indexes.

#include "City.h"
#include "Ratios.h"

#include <malloc.h>
#ifdef RIVELTA_BENCH_SQLITE
#include <sqlite3.h>
#endif

#include <memory>
#include <random>
#include <unordered_map>

namespace {

constexpr long kSizes[] = {10'000, 100'000, 1'000'000};
constexpr long kDesignSpans = 100'000; // about 355,000 objects

// Ids in an order that no cache guesses.
const std::vector<long>& Shuffled(long count)
{
    static std::unordered_map<long, std::vector<long>> kept;
    std::vector<long>& ids = kept[count];
    if (ids.empty()) {
        for (long i = 1; i <= count; ++i)
            ids.push_back(i);
        std::shuffle(ids.begin(), ids.end(), std::mt19937(1));
    }
    return ids;
}

// A design of spans with a handful of attributes; five ground line changes to each fifth of them as routes.
struct SpanDesign {
    explicit SpanDesign(long count)
    {
        for (long id = 1; id <= count; ++id) {
            auto* const span = new CSpan(static_cast<unsigned long>(id), 0, 0, 1);
            // Room first, then what is left over given back: as the reader does it.
            constexpr std::size_t kRoom = 128;
            span->ReserveAttributes(kRoom);
            span->WriteSubAttribute(L"spname", L"幹線1号");
            span->WriteSubAttributeInt(L"spno", static_cast<int>(id));
            span->WriteSubAttribute(L"splength", L"31.4159265358979");
            span->WriteSubAttribute(L"spsecrecname", L"HPφ250");
            span->WriteSubAttribute(L"calcstylename", L"汚水原単位法");
            span->ShrinkAttributes();
            manager.GetSpanDb().Add(id, span);
        }
        for (long id = 1; id <= count; ++id)
            manager.GetGlChangeDb().Add(count + id, new CGlChange(static_cast<unsigned long>(count + id),
                                                                  static_cast<unsigned long>((id - 1) / 5 + 1)));
    }
    CObjectManager manager;
};

SpanDesign& Design(long count)
{
    static std::unordered_map<long, std::unique_ptr<SpanDesign>> kept;
    auto& design = kept[count];
    if (!design) design = std::make_unique<SpanDesign>(count);
    return *design;
}

void FindObject(benchmark::State& state)
{
    const long count = bench::Size(state.range(0));
    const CObjectManager& manager = Design(count).manager;
    const auto& ids = Shuffled(count);
    std::size_t at = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(manager.GetSpanObjectOriginal(ids[at]));
        if (++at == ids.size()) at = 0;
    }
}

void FindInUnorderedMap(benchmark::State& state)
{
    const long count = bench::Size(state.range(0));
    const CObjectManager& manager = Design(count).manager;
    std::unordered_map<long, CSpan*> map;
    for (CSpan* span : manager.GetSpanDb())
        map.emplace(span->GetId32(), span);
    const auto& ids = Shuffled(count);
    std::size_t at = 0;
    for (auto _ : state) {
        benchmark::DoNotOptimize(map.find(ids[at])->second);
        if (++at == ids.size()) at = 0;
    }
}

void OwnedIds(benchmark::State& state)
{
    const long count = bench::Size(state.range(0));
    const CObjectManager& manager = Design(count).manager;
    const auto& routes = Shuffled(count / 5);
    std::size_t at = 0;
    for (auto _ : state) {
        CList<long, long> ids;
        benchmark::DoNotOptimize(manager.GetGlChangeIdList(routes[at], ids));
        if (++at == routes.size()) at = 0;
    }
}

template <class Read> void ReadAttribute(benchmark::State& state, Read&& read)
{
    const long count = bench::Size(state.range(0));
    const CObjectManager& manager = Design(count).manager;
    const auto& ids = Shuffled(count);
    std::size_t at = 0;
    for (auto _ : state) {
        read(*manager.GetSpanObjectOriginal(ids[at]));
        if (++at == ids.size()) at = 0;
    }
}

void AttributeText(benchmark::State& state)
{
    ReadAttribute(
        state, [](const CSpan& span) { benchmark::DoNotOptimize(span.GetSubAttribute(L"spsecrecname").GetLength()); });
}

void AttributeInt(benchmark::State& state)
{
    ReadAttribute(state, [](const CSpan& span) { benchmark::DoNotOptimize(span.GetSubAttributeInt(L"spno", 0)); });
}

void AttributeDouble(benchmark::State& state)
{
    ReadAttribute(state,
                  [](const CSpan& span) { benchmark::DoNotOptimize(span.GetSubAttributeDouble(L"splength", 0.0)); });
}

#ifdef RIVELTA_BENCH_SQLITE
// The same objects as rows: id and owner indexed, attributes as JSON.
class Sql {
public:
    explicit Sql(long count)
    {
        sqlite3_open(":memory:", &m_db);
        Execute("create table span(id integer primary key, attributes text)");
        Execute("create table glchange(id integer primary key, route integer)");
        Execute("begin");
        sqlite3_stmt* const span = Prepare("insert into span values(?, ?)");
        const std::string text =
            R"({"spname":"幹線1号","spno":"12","splength":"31.4159265358979","spsecrecname":"HPφ250","calcstylename":"汚水原単位法"})";
        for (long id = 1; id <= count; ++id) {
            sqlite3_bind_int64(span, 1, id);
            sqlite3_bind_text(span, 2, text.c_str(), -1, SQLITE_STATIC);
            sqlite3_step(span);
            sqlite3_reset(span);
        }
        sqlite3_finalize(span);
        sqlite3_stmt* const change = Prepare("insert into glchange values(?, ?)");
        for (long id = 1; id <= count; ++id) {
            sqlite3_bind_int64(change, 1, id);
            sqlite3_bind_int64(change, 2, (id - 1) / 5 + 1);
            sqlite3_step(change);
            sqlite3_reset(change);
        }
        sqlite3_finalize(change);
        Execute("create index byroute on glchange(route)");
        Execute("commit");
    }
    ~Sql() { sqlite3_close(m_db); }
    Sql(const Sql&) = delete;
    Sql& operator=(const Sql&) = delete;

    sqlite3_stmt* Prepare(const char* sql)
    {
        sqlite3_stmt* statement = nullptr;
        sqlite3_prepare_v2(m_db, sql, -1, &statement, nullptr);
        return statement;
    }

private:
    void Execute(const char* sql) { sqlite3_exec(m_db, sql, nullptr, nullptr, nullptr); }
    sqlite3* m_db = nullptr;
};

void RunSql(benchmark::State& state, long count, const char* query, long keys)
{
    Sql sql(count);
    sqlite3_stmt* const statement = sql.Prepare(query);
    const auto& ids = Shuffled(keys);
    std::size_t at = 0;
    for (auto _ : state) {
        sqlite3_bind_int64(statement, 1, ids[at]);
        while (sqlite3_step(statement) == SQLITE_ROW)
            benchmark::DoNotOptimize(sqlite3_column_int64(statement, 0));
        sqlite3_reset(statement);
        if (++at == ids.size()) at = 0;
    }
    sqlite3_finalize(statement);
}

void FindInSql(benchmark::State& state)
{
    const long count = bench::Size(state.range(0));
    RunSql(state, count, "select id, attributes from span where id = ?", count);
}

void OwnedIdsInSql(benchmark::State& state)
{
    const long count = bench::Size(state.range(0));
    RunSql(state, count, "select id from glchange where route = ? order by id", count / 5);
}

void AttributeInSql(benchmark::State& state)
{
    const long count = bench::Size(state.range(0));
    RunSql(state, count, "select json_extract(attributes, '$.splength') from span where id = ?", count);
}
#endif

// ---- transactions on a whole city ----

CObjectManager& WholeCity()
{
    static CObjectManager* const manager = [] {
        auto* const made = new CObjectManager;
        const auto before = mallinfo2();
        bench::MakeCity(*made, bench::Size(kDesignSpans));
        const auto after = mallinfo2();
        bench::Figures::Put("live heap",
                            static_cast<double>(after.uordblks + after.hblkhd - before.uordblks - before.hblkhd));
        bench::Figures::Put("objects", made->GetAllDataCount());
        return made;
    }();
    return *manager;
}

void BeginCommit(benchmark::State& state)
{
    CObjectManager& manager = WholeCity();
    for (auto _ : state) {
        manager.BeginTransaction();
        manager.CommitTransaction();
    }
    const auto before = mallinfo2();
    manager.BeginTransaction();
    const auto during = mallinfo2();
    manager.CommitTransaction();
    state.counters["bytes"] =
        static_cast<double>(during.uordblks + during.hblkhd) - static_cast<double>(before.uordblks + before.hblkhd);
}

void InnerBeginCommit(benchmark::State& state)
{
    CObjectManager& manager = WholeCity();
    manager.BeginTransaction();
    for (auto _ : state) {
        manager.BeginTransaction();
        manager.CommitTransaction();
    }
    manager.CommitTransaction();
}

void BeginEditAbort(benchmark::State& state)
{
    CObjectManager& manager = WholeCity();
    CList<long, long> ids;
    std::vector<long> spans;
    for (const CSpan* span : manager.GetSpanDb())
        spans.push_back(span->GetId32());
    const std::size_t step = std::max<std::size_t>(1, spans.size() / 100);
    for (auto _ : state) {
        manager.BeginTransaction();
        for (std::size_t i = 0; i < spans.size() && i < 100 * step; i += step)
            manager.GetSpanObjectOriginal(spans[i])->WriteSubAttribute(L"splength", L"12.5000000000000");
        manager.AbortTransaction();
    }
}

// What the floor is: a snapshot that copies every object's attributes as a map of strings.
void DeepCopy(benchmark::State& state)
{
    std::vector<std::map<std::string, std::string>> objects;
    CTypedPtrList<CObList, CPipeObject*> all;
    WholeCity().GetAllObject(all);
    for (const CPipeObject* object : all) {
        auto& values = objects.emplace_back();
        for (const auto entry : object->GetAttributes())
            values.emplace(obmgr::NameOfKey(entry.key).text, entry.value);
    }
    for (auto _ : state) {
        const auto copy = objects;
        benchmark::DoNotOptimize(copy.data());
    }
}

// ---- growth: the same work on tables of different size ----

constexpr int kBatch = 1000;

void AddRemove(benchmark::State& state)
{
    const long count = bench::Size(state.range(0));
    CObjectManager& manager = Design(count).manager;
    auto& table = manager.GetSpanDb();
    long id = 10 * count;
    for (auto _ : state) {
        manager.BeginTransaction();
        for (int i = 0; i < kBatch; ++i)
            table.Add(id + i, new CSpan(static_cast<unsigned long>(id + i)));
        for (int i = 0; i < kBatch; ++i)
            table.Remove(table.Find(id + i));
        manager.CommitTransaction();
    }
    state.SetItemsProcessed(state.iterations() * kBatch);
}

class OpenManager : public CObjectManager {
public:
    using CObjectManager::SetObjectId;
};

void CreateObject(benchmark::State& state)
{
    const long count = bench::Size(state.range(0));
    OpenManager manager;
    for (long id = 1; id <= count; ++id)
        manager.GetNodeDb().Add(id, new CNode(static_cast<unsigned long>(id)));
    manager.SetObjectId(count);
    CKeyValueArray values;
    for (auto _ : state) {
        for (int i = 0; i < kBatch; ++i)
            benchmark::DoNotOptimize(manager.CreateNode(values));
    }
    state.SetItemsProcessed(state.iterations() * kBatch);
}

} // namespace

BENCHMARK(FindObject)->Arg(kSizes[0])->Arg(kSizes[1])->Arg(kSizes[2]);
BENCHMARK(FindInUnorderedMap)->Arg(kSizes[0])->Arg(kSizes[1])->Arg(kSizes[2]);
BENCHMARK(OwnedIds)->Arg(kSizes[0])->Arg(kSizes[1])->Arg(kSizes[2]);
BENCHMARK(AttributeText)->Arg(kSizes[0])->Arg(kSizes[1]);
BENCHMARK(AttributeInt)->Arg(kSizes[0])->Arg(kSizes[1]);
BENCHMARK(AttributeDouble)->Arg(kSizes[0])->Arg(kSizes[1]);
#ifdef RIVELTA_BENCH_SQLITE
BENCHMARK(FindInSql)->Arg(kSizes[0])->Arg(kSizes[1])->Arg(kSizes[2]);
BENCHMARK(OwnedIdsInSql)->Arg(kSizes[0])->Arg(kSizes[1])->Arg(kSizes[2]);
BENCHMARK(AttributeInSql)->Arg(kSizes[0])->Arg(kSizes[1]);
#endif
// Before the city: what its copies leave behind would be tidied up in the middle of these.
BENCHMARK(AddRemove)->Arg(kSizes[0])->Arg(kSizes[2]);
BENCHMARK(CreateObject)->Arg(kSizes[0])->Arg(kSizes[2])->Iterations(50);
BENCHMARK(BeginCommit);
BENCHMARK(InnerBeginCommit);
BENCHMARK(BeginEditAbort);
BENCHMARK(DeepCopy)->Unit(benchmark::kNanosecond);

int main(int argc, char** argv)
{
    bench::InstallDefaults();
    return bench::Run(
        argc, argv,
        {
            {"find by id / unordered_map, 10k", "FindObject/10000", "FindInUnorderedMap/10000", 2.0},
            {"find by id / unordered_map, 100k", "FindObject/100000", "FindInUnorderedMap/100000", 2.0},
            {"find by id / unordered_map, 1M", "FindObject/1000000", "FindInUnorderedMap/1000000", 2.0},
            {"find by id / SQL, 10k", "FindObject/10000", "FindInSql/10000", 0.01},
            {"find by id / SQL, 100k", "FindObject/100000", "FindInSql/100000", 0.01},
            {"find by id / SQL, 1M", "FindObject/1000000", "FindInSql/1000000", 0.01},
            {"text attribute / SQL json_extract, 10k", "AttributeText/10000", "AttributeInSql/10000", 0.05},
            {"int attribute / SQL json_extract, 10k", "AttributeInt/10000", "AttributeInSql/10000", 0.05},
            {"double attribute / SQL json_extract, 10k", "AttributeDouble/10000", "AttributeInSql/10000", 0.05},
            {"text attribute / SQL json_extract, 100k", "AttributeText/100000", "AttributeInSql/100000", 0.05},
            {"int attribute / SQL json_extract, 100k", "AttributeInt/100000", "AttributeInSql/100000", 0.05},
            {"double attribute / SQL json_extract, 100k", "AttributeDouble/100000", "AttributeInSql/100000", 0.05},
            {"ids by owner / SQL with index, 10k", "OwnedIds/10000", "OwnedIdsInSql/10000", 0.2},
            {"ids by owner / SQL with index, 100k", "OwnedIds/100000", "OwnedIdsInSql/100000", 0.2},
            {"ids by owner / SQL with index, 1M", "OwnedIds/1000000", "OwnedIdsInSql/1000000", 0.2},
            {"begin and commit / deep copy of maps", "BeginCommit", "DeepCopy", 0.02},
            {"begin and commit, ns an object", "BeginCommit", "objects", 30.0},
            {"extra heap of begin / live heap", "BeginCommit:bytes", "live heap", 0.15},
            {"begin, 100 edits, abort / begin and commit", "BeginEditAbort", "BeginCommit", 2.0},
            {"begin, 100 edits, abort / deep copy of maps", "BeginEditAbort", "DeepCopy", 0.02},
            {"add and remove, 1M / 10k", "AddRemove/1000000", "AddRemove/10000", 1.5},
            {"create, 1M / 10k", "CreateObject/1000000", "CreateObject/10000", 1.5},
        });
}
