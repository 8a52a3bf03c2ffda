// Edits of the network, each in a transaction that is aborted outside of the time: deleting and copying a web, moving
// its flow end. Peer: an in-memory SQL database with indexes that deletes and copies the same rows.

#include "NetworkCity.h"

#ifdef RIVELTA_BENCH_SQLITE
#include <sqlite3.h>
#endif

namespace {

using bench::NetworkCity;
using bench::Round;

using Edit = bool (*)(CObjectManager& manager, long id);

bool DeleteWeb(CObjectManager& manager, long web)
{
    return manager.DeleteWebObject(web);
}

bool CopyWeb(CObjectManager& manager, long web)
{
    long copy = 0;
    return manager.CopyWebObject(web, copy);
}

bool MoveFlowEnd(CObjectManager& manager, long topRoute)
{
    CList<long, long> unused;
    return manager.ReSetFlowEndNode(topRoute, L"放流", unused);
}

// Undoes an edit. What it removed and the abort replaced goes with the next commit.
void Undo(CObjectManager& manager)
{
    manager.AbortTransaction();
    manager.BeginTransaction();
    manager.CommitTransaction();
}

// How many rows the edit makes, or takes away as a negative number; nothing of it stays.
int RowsOf(CObjectManager& manager, Edit edit, long id)
{
    const int before = manager.GetAllDataCount();
    manager.BeginTransaction();
    edit(manager, id);
    const int rows = manager.GetAllDataCount() - before;
    Undo(manager);
    return rows;
}

void RunEdit(benchmark::State& state, CObjectManager& manager, Edit edit, const std::vector<long>& ids)
{
    const int rows = RowsOf(manager, edit, ids.front()); // builds the indexes
    Round<long> round(ids);
    for (auto _ : state) {
        bool done = false;
        bench::TimeOnly(state, [&] {
            manager.BeginTransaction();
            done = edit(manager, round.Next());
        });
        Undo(manager);
        if (!done) state.SkipWithError("the edit failed");
    }
    state.counters["rows"] = rows;
}

#ifdef RIVELTA_BENCH_SQLITE
// The city as rows: ids and links indexed, attributes as JSON.
class SqlCity {
public:
    static SqlCity& Of(NetworkCity& city)
    {
        static std::unique_ptr<SqlCity> kept;
        if (!kept || kept->m_size != city.size) {
            kept.reset();
            kept = std::make_unique<SqlCity>(city);
        }
        return *kept;
    }

    explicit SqlCity(NetworkCity& city) : m_size(city.size)
    {
        sqlite3_open(":memory:", &m_db);
        Execute("begin");
        Load("web", {"disposaltype"}, city.manager.GetWebDb());
        Load("route", {"web", "connect"}, city.manager.GetRouteDb());
        Load("node", {}, city.manager.GetNodeDb());
        Load("span", {"upper", "lower", "route"}, city.manager.GetSpanDb());
        Load("areaset", {"span"}, city.manager.GetAreaSetDb());
        Load("glchange", {"route"}, city.manager.GetGlChangeDb());
        Load("lateral", {"route"}, city.manager.GetLateralDb());
        Execute("alter table web add column place integer");
        Execute("update web set place = json_extract(attributes, '$.order')");
        Execute("create index web_by_place on web(place)");
        Execute("commit");
    }
    ~SqlCity()
    {
        for (auto& [sql, statement] : m_statements)
            sqlite3_finalize(statement);
        sqlite3_close(m_db);
    }
    SqlCity(const SqlCity&) = delete;
    SqlCity& operator=(const SqlCity&) = delete;

    void Begin() { Execute("begin"); }
    void Rollback() { Execute("rollback"); }

    // Runs the statements with the web as ?1 and `offset` as ?2; the number of rows that they changed.
    int Run(const std::vector<std::string>& statements, long web, long offset)
    {
        int rows = 0;
        for (const std::string& sql : statements) {
            sqlite3_stmt*& statement = m_statements[sql];
            if (!statement && sqlite3_prepare_v2(m_db, sql.c_str(), -1, &statement, nullptr) != SQLITE_OK) std::abort();
            const int parameters = sqlite3_bind_parameter_count(statement);
            if (parameters > 0) sqlite3_bind_int64(statement, 1, web);
            if (parameters > 1) sqlite3_bind_int64(statement, 2, offset);
            if (sqlite3_step(statement) != SQLITE_DONE) std::abort();
            rows += sqlite3_changes(m_db);
            sqlite3_reset(statement);
        }
        return rows;
    }

private:
    void Execute(const std::string& sql)
    {
        if (sqlite3_exec(m_db, sql.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK) std::abort();
    }

    static std::string Json(const CPipeObject& object)
    {
        std::string text;
        for (const auto entry : object.GetAttributes())
            text.append(text.empty() ? "{\"" : ",\"")
                .append(obmgr::NameOfKey(entry.key).text)
                .append("\":\"")
                .append(entry.value)
                .append("\"");
        return text.append("}");
    }

    template <class T>
    void Load(const std::string& table, const std::vector<std::string>& links, const CObjectDataBase<T>& objects)
    {
        std::string columns = "id integer primary key";
        std::string places = "?";
        for (const std::string& link : links) {
            columns += ", " + link + " integer";
            places += ",?";
        }
        Execute("create table " + table + "(" + columns + ", attributes text)");
        sqlite3_stmt* insert = nullptr;
        sqlite3_prepare_v2(m_db, ("insert into " + table + " values(" + places + ",?)").c_str(), -1, &insert, nullptr);
        for (const T* object : objects) {
            int column = 0;
            sqlite3_bind_int64(insert, ++column, object->GetId32());
            for (const std::int32_t link : static_cast<const CPipeObject*>(object)->Links())
                sqlite3_bind_int64(insert, ++column, link);
            const std::string json = Json(*object);
            sqlite3_bind_text(insert, ++column, json.data(), static_cast<int>(json.size()), SQLITE_STATIC);
            if (sqlite3_step(insert) != SQLITE_DONE) std::abort();
            sqlite3_reset(insert);
        }
        sqlite3_finalize(insert);
        for (const std::string& link : links)
            Execute("create index " + table + "_by_" + link + " on " + table + "(" + link + ")");
    }

    long m_size;
    sqlite3* m_db = nullptr;
    std::map<std::string, sqlite3_stmt*> m_statements;
};

const std::string kRoutes = "(select id from route where web = ?1)";
const std::string kOwnSpans = " from span where route in " + kRoutes;
const std::string kNodes = "(select upper" + kOwnSpans + " union select lower" + kOwnSpans + ")";

// Area records stay, as with DeleteWebObject.
const std::vector<std::string> kDelete = {
    "delete from lateral where route in " + kRoutes,
    "delete from glchange where route in " + kRoutes,
    "delete from node where id in " + kNodes,
    "delete" + kOwnSpans,
    "delete from route where web = ?1",
    "delete from web where id = ?1",
};
const std::vector<std::string> kCloseGap = {
    "update web set place = place - 1 where place > (select place from web where id = ?1)",
};
// New ids are the old ones and ?2.
const std::vector<std::string> kCopy = {
    "insert into web select id + ?2, disposaltype, attributes, place from web where id = ?1",
    "insert into node select id + ?2, attributes from node where id in " + kNodes,
    "insert into areaset select id + ?2, span + ?2, attributes from areaset where span in (select id" + kOwnSpans + ")",
    "insert into span select id + ?2, upper + ?2, lower + ?2, route + ?2, attributes" + kOwnSpans,
    "insert into route select id + ?2, web + ?2, case connect when 0 then 0 else connect + ?2 end, attributes "
    "from route where web = ?1",
};
// The other half of CopyWebObject: nodes that no span touches go.
const std::vector<std::string> kSweep = {
    "delete from node where not exists (select 1 from span where upper = node.id) "
    "and not exists (select 1 from span where lower = node.id)",
};

// What `counted` changes must be as many rows as `edit` makes or takes away.
void RunSql(benchmark::State& state, NetworkCity& city, Edit edit, const std::vector<std::string>& first,
            const std::vector<std::string>& counted, const std::vector<std::string>& last)
{
    SqlCity& sql = SqlCity::Of(city);
    const long offset = city.manager.GetCurrentObjectId();
    const int expected = std::abs(RowsOf(city.manager, edit, city.webs.front()));
    Round<long> round(city.webs);
    bool isFirst = true;
    for (auto _ : state) {
        const long web = round.Next();
        int rows = 0;
        bench::TimeOnly(state, [&] {
            sql.Begin();
            sql.Run(first, web, offset);
            rows = sql.Run(counted, web, offset);
            sql.Run(last, web, offset);
        });
        sql.Rollback();
        if (std::exchange(isFirst, false) && rows != expected) state.SkipWithError("other rows than the edit's");
    }
    state.counters["rows"] = expected;
}
#endif

// Size by size, because only one city is kept.
void RegisterAll()
{
    for (const long size : bench::kSpans) {
        const auto add = [&](const std::string& name, auto body) {
            const auto run = [=](benchmark::State& state) { body(state, NetworkCity::Of(size)); };
            bench::Register(bench::Sized(name, size), run)->UseManualTime();
        };
        add("DeleteWeb", [](auto& state, auto& city) { RunEdit(state, city.manager, DeleteWeb, city.webs); });
        add("CopyWeb", [](auto& state, auto& city) { RunEdit(state, city.manager, CopyWeb, city.webs); });
        add("MoveFlowEnd", [](auto& state, auto& city) {
            std::vector<long> tops;
            for (const long web : city.webs)
                tops.push_back(bench::TopRoute(city.manager, web));
            RunEdit(state, city.manager, MoveFlowEnd, tops);
        });
#ifdef RIVELTA_BENCH_SQLITE
        add("DeleteInSql", [](auto& state, auto& city) { RunSql(state, city, DeleteWeb, kCloseGap, kDelete, {}); });
        add("CopyInSql", [](auto& state, auto& city) { RunSql(state, city, CopyWeb, {}, kCopy, {}); });
        add("CopyAndSweepInSql", [](auto& state, auto& city) { RunSql(state, city, CopyWeb, {}, kCopy, kSweep); });
#endif
    }
}

std::vector<bench::Ratio> Ratios()
{
    std::vector<bench::Ratio> ratios;
    for (const std::string size : {"/10k", "/100k", "/1M"}) {
        ratios.push_back({"delete a web / SQL" + size, "DeleteWeb" + size, "DeleteInSql" + size, 1.0});
        ratios.push_back({"copy a web / SQL" + size, "CopyWeb" + size, "CopyInSql" + size, 1.0});
        ratios.push_back({"copy a web / SQL, swept" + size, "CopyWeb" + size, "CopyAndSweepInSql" + size, 1.0});
    }
    for (const char* edit : {"DeleteWeb", "CopyWeb", "MoveFlowEnd"})
        ratios.push_back(
            {edit + std::string(", 1M / 10k"), edit + std::string("/1M"), edit + std::string("/10k"), 1.5});
    return ratios;
}

} // namespace

int main(int argc, char** argv)
{
    bench::InstallDefaults();
    RegisterAll();
    return bench::Run(argc, argv, Ratios(), bench::Clock::Processor);
}
