// The network against the plain-scan model: random designs, sound and damaged, through random edits; every result and
// list of the queries, and every record after each edit.
//
// A failure prints its seed and the shortest script of edits found that still fails. RIVELTA_SEED replays one seed;
// RIVELTA_ROUNDS sets the number of designs, each with the next seed; RIVELTA_TRACE=1 prints each step before it runs,
// for those that end the process.

#include "framework/Exception.h"
#include "reference/LibrarySide.h"
#include "reference/NetworkEdits.h"
#include "reference/NetworkSorts.h"
#include "reference/RandomNetworks.h"
#include "support/FamilyTable.h"

#include <gmock/gmock.h>

#include <cstdlib>
#include <iostream>
#include <optional>

namespace {

using namespace reference;

struct Profile {
    const char* name;
    bool sharedIds; // records with one id; edits of the network are defined for ids that are unique
    int damage;
    int webs;
    int routes; // at most, a web
    int edits;
    int rounds;
};

void PrintTo(const Profile& profile, std::ostream* stream)
{
    *stream << profile.name;
}

std::vector<StepKind> AllEdits(const Profile& profile)
{
    std::vector<StepKind> edits = BaseEdits(profile.damage, profile.sharedIds);
    if (profile.sharedIds) return edits;
    for (const auto& kinds : {NetworkEdits(), SortEdits()})
        edits.insert(edits.end(), kinds.begin(), kinds.end());
    return edits;
}

std::vector<StepKind> AllQueries()
{
    std::vector<StepKind> queries;
    for (const auto& kinds : {SpanQueries(), WebQueries(), RouteQueries(), SortQueries()})
        queries.insert(queries.end(), kinds.begin(), kinds.end());
    return queries;
}

using Difference = std::optional<std::string>;

std::string Describe(const StepKind& kind, const Step& step)
{
    std::string text = std::string(kind.name) + "(";
    for (std::size_t i = 0; i < step.args.numbers.size(); ++i) {
        const int number = step.args.numbers[i];
        text += i == 0 && kind.startsWithType ? std::string(obmgr::RecordOf(static_cast<Type>(number)).tag) + ": "
                                              : std::to_string(number) + " ";
    }
    for (const std::wstring& part : step.args.texts)
        text += '"' + obmgr::ToUtf8(part) + "\" ";
    return text + ")";
}

// One design on both sides.
class Session {
public:
    Session() : m_model(static_cast<std::size_t>(obmgr::kTypeCount)), m_network(m_model) { InstallDefaults({}); }
    ~Session() { CObjectManager::ReSetDefManager(nullptr); }
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    const Network& Design() const { return m_network; }
    int LastId() const { return m_model.lastId; }

    // Runs a step on both; a query leaves the id counter alone.
    Difference Run(const StepKind& kind, const Step& step)
    {
        if (std::getenv("RIVELTA_TRACE")) std::cerr << Describe(kind, step) << std::endl;
        m_library.SetObjectId(step.lastId);
        m_model.lastId = step.lastId;
        Outcome library;
        Outcome model;
        try {
            kind.applyToLibrary(m_library, step.args, library);
        } catch (const CInvalidArgException&) {
            library.Add(L"raised");
        }
        try {
            kind.applyToModel(m_network, step.args, model);
        } catch (const Raised&) {
            model.Add(L"raised");
        }
        if (library == model) return {};
        return Describe(kind, step) + "\n  library: " + library.Text() + "\n  model:   " + model.Text();
    }

    Difference CompareRecords() const
    {
        if (m_library.GetCurrentObjectId() != m_model.lastId)
            return "last id: library " + std::to_string(m_library.GetCurrentObjectId()) + ", model " +
                   std::to_string(m_model.lastId);
        for (const obmgr::RecordInfo& row : obmgr::Records()) {
            const obmgr::ObjectTable& table = m_library.TableOf(row.type);
            const Table& expected = m_model[row.type];
            if (table.Count() == 0 && expected.live.empty() && expected.retired.empty()) continue;
            const std::string where = "table " + std::string(row.tag) + ": ";
            if (table.Count() != expected.live.size() || table.RetiredCount() != expected.retired.size())
                return where + "library " + std::to_string(table.Count()) + " live, " +
                       std::to_string(table.RetiredCount()) + " retired; model " +
                       std::to_string(expected.live.size()) + ", " + std::to_string(expected.retired.size());
            Outcome library;
            Outcome model;
            Difference difference;
            std::size_t place = 0;
            table.ForEach([&](const CPipeObject& object) {
                if (difference) return;
                const Record& record = *expected.live[place++];
                if (IsEqual(object, record)) return;
                library.AddContents(object);
                model.AddContents(record);
                difference = where + "\n  library: " + library.Text() + "\n  model:   " + model.Text();
            });
            if (difference) return difference;
        }
        return {};
    }

private:
    static bool IsEqual(const CPipeObject& object, const Record& record)
    {
        if (object.GetId32() != record.id) return false;
        if (!std::equal(object.Links().begin(), object.Links().end(), record.links.begin(), record.links.end()))
            return false;
        CMapStringToString values;
        object.GetSubAttribute(values);
        if (static_cast<std::size_t>(values.GetCount()) != record.attributes.size()) return false;
        std::size_t at = 0;
        for (const auto& [key, value] : values) {
            const auto& [expectedKey, expectedValue] = record.attributes[at++];
            if (key.View() != expectedKey || value.View() != expectedValue) return false;
        }
        return true;
    }

    mutable OpenNetwork m_library;
    Model m_model;
    Network m_network;
};

// A script of edits, and the query that failed after it, if it was one.
struct Script {
    std::vector<Step> edits;
    std::optional<Step> query;
};

struct Kinds {
    std::vector<StepKind> edits;
    std::vector<StepKind> queries;
};

Difference Replay(const Kinds& kinds, const Script& script)
{
    Session session;
    for (const Step& step : script.edits)
        if (const Difference difference = session.Run(kinds.edits[step.kind], step)) return difference;
    if (const Difference difference = session.CompareRecords()) return difference;
    if (!script.query) return {};
    Step query = *script.query;
    query.lastId = session.LastId();
    return session.Run(kinds.queries[query.kind], query);
}

// Leaves out steps, and attributes of added records, as long as the script still fails.
Script Shorten(const Kinds& kinds, Script script)
{
    for (std::size_t part = std::max<std::size_t>(1, script.edits.size() / 2);; part /= 2) {
        bool isShorter = true;
        while (isShorter) {
            isShorter = false;
            for (std::size_t from = 0; from < script.edits.size();) {
                Script shorter = script;
                const auto begin = shorter.edits.begin() + static_cast<std::ptrdiff_t>(from);
                const std::size_t count = std::min(part, script.edits.size() - from);
                shorter.edits.erase(begin, begin + static_cast<std::ptrdiff_t>(count));
                if (Replay(kinds, shorter)) {
                    script = std::move(shorter);
                    isShorter = true;
                } else {
                    from += part;
                }
            }
        }
        if (part == 1) break;
    }
    for (Step& step : script.edits) {
        for (std::size_t at = 0; step.kind == kAddRecord && at < step.args.texts.size();) {
            const std::vector<std::wstring> before = step.args.texts;
            const auto begin = step.args.texts.begin() + static_cast<std::ptrdiff_t>(at);
            step.args.texts.erase(begin, begin + 2);
            if (Replay(kinds, script)) continue;
            step.args.texts = before;
            at += 2;
        }
    }
    return script;
}

std::string Report(const Kinds& kinds, const Script& script)
{
    const Script shortest = Shorten(kinds, script);
    std::string text = "script of " + std::to_string(shortest.edits.size()) + " edits:\n";
    for (const Step& step : shortest.edits)
        text += "  " + Describe(kinds.edits[step.kind], step) + "\n";
    return text + Replay(kinds, shortest).value_or("(does not fail again)");
}

class RandomRun {
public:
    RandomRun(unsigned seed, const Kinds& kinds) : m_random(seed), m_kinds(kinds) {}

    // Empty, or what is different and the script that leads there.
    std::string Run(int webs, int routes, int edits)
    {
        for (const Step& step : RandomDesign(m_random, webs, routes)) {
            if (!Edit(step)) return Failed();
        }
        for (int edit = 0; edit < edits; ++edit) {
            if (!Edit(RandomStep(m_kinds.edits, PickKind(m_kinds.edits)))) return Failed();
            if (!CompareRecords()) return Failed();
            for (int query = 0; query < 8; ++query)
                if (!Ask(PickKind(m_kinds.queries))) return Failed();
            if (edit % 50 != 49) continue;
            for (std::size_t kind = 0; kind < m_kinds.queries.size(); ++kind)
                if (!Ask(kind)) return Failed();
        }
        return {};
    }

    long Operations() const { return m_operations; }

private:
    std::size_t PickKind(const std::vector<StepKind>& kinds)
    {
        int sum = 0;
        for (const StepKind& kind : kinds)
            sum += kind.weight;
        int at = static_cast<int>(m_random() % static_cast<unsigned>(sum));
        std::size_t picked = 0;
        while (at >= kinds[picked].weight)
            at -= kinds[picked++].weight;
        return picked;
    }

    Step RandomStep(const std::vector<StepKind>& kinds, std::size_t kind)
    {
        Choice choice(m_random, m_session.Design());
        return {kind, kinds[kind].choose(choice), m_session.LastId()};
    }

    bool Edit(const Step& given)
    {
        Step step = given;
        step.lastId = m_session.LastId();
        m_script.edits.push_back(step);
        ++m_operations;
        return !m_session.Run(m_kinds.edits[step.kind], step);
    }

    bool CompareRecords() { return !m_session.CompareRecords(); }

    bool Ask(std::size_t kind)
    {
        const Step query = RandomStep(m_kinds.queries, kind);
        ++m_operations;
        if (!m_session.Run(m_kinds.queries[kind], query)) return true;
        m_script.query = query;
        return false;
    }

    std::string Failed() const { return Report(m_kinds, m_script); }

    std::mt19937 m_random;
    const Kinds& m_kinds;
    Session m_session;
    Script m_script;
    long m_operations = 0;
};

int Rounds(int usual)
{
    const char* const text = std::getenv("RIVELTA_ROUNDS");
    if (text) return std::atoi(text);
    return std::getenv("RIVELTA_SEED") ? 1 : usual;
}

class NetworkAgainstModel : public testing::TestWithParam<Profile> {};

TEST_P(NetworkAgainstModel, EveryQueryAndEveryRecordIsTheSame)
{
    const Profile& profile = GetParam();
    const Kinds kinds{AllEdits(profile), AllQueries()};
    const unsigned first = support::testSeed(2000);
    long operations = 0;
    for (int round = 0; round < Rounds(profile.rounds); ++round) {
        const unsigned seed = first + static_cast<unsigned>(round);
        RandomRun run(seed, kinds);
        const std::string failure = run.Run(profile.webs, profile.routes, profile.edits);
        operations += run.Operations();
        if (!failure.empty()) FAIL() << "RIVELTA_SEED=" << seed << ", " << failure;
    }
    RecordProperty("operations", std::to_string(operations));
    std::cout << operations << " operations on both sides\n";
}

INSTANTIATE_TEST_SUITE_P(Designs, NetworkAgainstModel,
                         testing::Values(Profile{"SoundNetworks", false, 0, 2, 6, 150, 8},
                                         Profile{"DamagedNetworks", false, 1, 2, 4, 200, 8},
                                         Profile{"WildNetworks", false, 4, 2, 2, 200, 10},
                                         Profile{"SharedIds", true, 1, 2, 4, 200, 8}),
                         [](const auto& row) { return row.param.name; });

} // namespace
