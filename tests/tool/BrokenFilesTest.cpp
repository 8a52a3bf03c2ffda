// The files of tests/data/broken: what the check finds in each, and how the other commands get through them.
// Beside NAME.xml stands NAME.findings.txt: "R001 route 20", a line for each finding, in the order of the report.
#include "tool/ToolRunner.h"

#include <algorithm>
#include <set>
#include <sstream>

using nlohmann::json;
namespace fs = std::filesystem;

namespace {

const std::string kFolder = RIVELTA_SOURCE_DIR "/tests/data/broken/";
const std::string kDefaults = RIVELTA_SOURCE_DIR "/samples/default_attributes.xml";

// The names of the files that end so, without the ending, sorted.
std::set<std::string> namesEndingWith(const std::string& ending)
{
    std::set<std::string> names;
    for (const auto& entry : fs::directory_iterator(kFolder))
        if (const std::string name = entry.path().filename().string(); name.ends_with(ending))
            names.insert(name.substr(0, name.size() - ending.size()));
    return names;
}

std::set<std::string> brokenFiles()
{
    const std::set<std::string> names = namesEndingWith(".xml");
    EXPECT_GE(names.size(), 20u);
    return names;
}

std::string expectedFindings(const std::string& name)
{
    return ReadBytes(kFolder + name + ".findings.txt");
}

std::string linesOf(const json& findings)
{
    std::string text;
    for (const json& finding : findings)
        text += finding["code"].get<std::string>() + " " + finding["tag"].get<std::string>() + " " +
                std::to_string(finding["id"].get<int>()) + "\n";
    return text;
}

ToolResult check(const std::string& file, const std::vector<std::string>& options = {})
{
    std::vector<std::string> arguments = {"check", file, "--defaults", kDefaults, "--lang", "en", "--json"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    return RunTool(arguments);
}

json rowsOf(const std::string& file, const std::string& tag, const std::string& columns)
{
    const ToolResult result = RunTool({"list", file, tag, "--columns", columns, "--json"});
    EXPECT_EQ(result.exitCode, 0) << result.err;
    return result.Json();
}

struct SpanEnds {
    int id;
    int upper;
    int lower;

    bool operator==(const SpanEnds&) const = default;
};

std::vector<SpanEnds> spansOf(const std::string& file)
{
    std::vector<SpanEnds> spans;
    for (const json& row : rowsOf(file, "span", "id,uppernode,lowernode"))
        spans.push_back({row["id"], row["uppernode"], row["lowernode"]});
    return spans;
}

using Ids = std::vector<int>;

// From span to span, always the first of the file, until there is none or one that was there before.
Ids plainWayDown(const std::vector<SpanEnds>& spans, const SpanEnds& start)
{
    Ids way;
    for (auto at = std::find(spans.begin(), spans.end(), start);
         at != spans.end() && std::find(way.begin(), way.end(), at->id) == way.end();) {
        way.push_back(at->id);
        const int node = at->lower;
        at = std::find_if(spans.begin(), spans.end(), [&](const SpanEnds& span) { return span.upper == node; });
    }
    return way;
}

// The span and all whose water reaches it, sorted.
Ids plainDrainage(const std::vector<SpanEnds>& spans, const SpanEnds& start)
{
    std::set<int> ids = {start.id};
    std::set<int> nodes = {start.upper};
    for (std::size_t before = 0; before != ids.size();) {
        before = ids.size();
        for (const SpanEnds& span : spans)
            if (nodes.contains(span.lower)) {
                ids.insert(span.id);
                nodes.insert(span.upper);
            }
    }
    return {ids.begin(), ids.end()};
}

Ids tracedIds(const std::string& file, int span, const std::string& direction)
{
    const ToolResult result = RunTool({"trace", file, "--from", std::to_string(span), direction, "--json"});
    EXPECT_EQ(result.exitCode, 0) << result.err;
    Ids ids;
    const json trace = result.Json();
    for (const json& row : trace["spans"])
        ids.push_back(row["id"]);
    return ids;
}

class ToolOnBrokenFiles : public testing::Test {
protected:
    ToolFolder m_folder;
    const std::string m_out = m_folder / "out.xml";
};

} // namespace

TEST(BrokenFiles, EachHasItsFindingsBesideIt)
{
    EXPECT_EQ(brokenFiles(), namesEndingWith(".findings.txt"));
}

TEST(BrokenFiles, ShowEveryCode)
{
    std::set<std::string> shown;
    for (const std::string& name : brokenFiles()) {
        std::istringstream lines(expectedFindings(name));
        for (std::string code, tag, id; lines >> code >> tag >> id;)
            shown.insert(code);
    }
    std::set<std::string> all;
    for (const json& row : RunTool({"check", "--codes", "--json"}).Json())
        all.insert(row["code"].get<std::string>());
    EXPECT_EQ(shown, all);
}

TEST_F(ToolOnBrokenFiles, CheckFindsWhatStandsBesideThem)
{
    for (const std::string& name : brokenFiles()) {
        const ToolResult result = check(kFolder + name + ".xml");
        const json report = result.Json();
        EXPECT_EQ(linesOf(report["findings"]), expectedFindings(name)) << name << "\n" << report.dump(2);
        EXPECT_EQ(result.exitCode, report["counts"]["errors"] > 0 ? 1 : 0) << name << result.err;
    }
}

TEST_F(ToolOnBrokenFiles, FixLeavesWhatItTells)
{
    for (const std::string& name : brokenFiles()) {
        SCOPED_TRACE(name);
        const std::string file = kFolder + name + ".xml";
        const std::string out = m_folder / (name + ".xml");
        const json before = check(file).Json()["findings"];
        const ToolResult result = check(file, {"--fix", "-o", out});
        const json report = result.Json();
        const auto canBeRepaired = [](const json& finding) { return !finding["repair"].is_null(); };
        EXPECT_EQ(report["repaired"].size(),
                  static_cast<std::size_t>(std::count_if(before.begin(), before.end(), canBeRepaired)));
        EXPECT_EQ(result.exitCode, report["counts"]["errors"] > 0 ? 1 : 0) << result.err;
        EXPECT_EQ(check(out).Json()["findings"], report["findings"]);
    }
}

TEST_F(ToolOnBrokenFiles, ConvertKeepsTheirFaults)
{
    for (const std::string& name : brokenFiles())
        for (const char* const dataver : {"13", "14"}) {
            const ToolResult result = RunTool({"convert", kFolder + name + ".xml", m_out, "--dataver", dataver});
            ASSERT_EQ(result.exitCode, 0) << name << result.err;
            EXPECT_EQ(linesOf(check(m_out).Json()["findings"]), expectedFindings(name)) << name << " " << dataver;
        }
}

TEST_F(ToolOnBrokenFiles, TreeShowsEachRouteOnce)
{
    for (const std::string& name : brokenFiles()) {
        const std::string file = kFolder + name + ".xml";
        const ToolResult result = RunTool({"tree", file, "--json"});
        ASSERT_EQ(result.exitCode, 0) << name << result.err;
        const json tree = result.Json();
        std::multiset<int> shown;
        for (const json& web : tree["webs"])
            for (const json& branch : web["trees"])
                for (const json& route : branch["routes"])
                    shown.insert(route["id"].get<int>());
        for (const json& route : tree["outsideWebs"])
            shown.insert(route["id"].get<int>());
        std::multiset<int> all;
        for (const json& row : rowsOf(file, "route", "id"))
            all.insert(row["id"].get<int>());
        EXPECT_EQ(shown, all) << name;
        EXPECT_EQ(RunTool({"tree", file, "--lang", "ja"}).exitCode, 0) << name;
    }
}

TEST_F(ToolOnBrokenFiles, TraceEndsFromEverySpanBothWays)
{
    for (const std::string& name : brokenFiles()) {
        const std::string file = kFolder + name + ".xml";
        const std::vector<SpanEnds> spans = spansOf(file);
        ASSERT_FALSE(spans.empty()) << name;
        for (const SpanEnds& span : spans) {
            SCOPED_TRACE(name + " from " + std::to_string(span.id));
            EXPECT_EQ(tracedIds(file, span.id, "--down"), plainWayDown(spans, span));
            Ids up = tracedIds(file, span.id, "--up");
            std::sort(up.begin(), up.end());
            EXPECT_EQ(up, plainDrainage(spans, span));
        }
    }
}

TEST_F(ToolOnBrokenFiles, TraceRefusesNodesThatAreNotThere)
{
    for (const char* const name : {"links_empty_and_negative", "dangling_links", "links_of_other_type"})
        for (const char* const node : {"-3", "0", "99", "40", "x"})
            EXPECT_EQ(RunTool({"trace", kFolder + name + ".xml", std::string("--node=") + node, "--up"}).exitCode, 2)
                << name << " " << node;
}

TEST_F(ToolOnBrokenFiles, UpdatePlacesAllThatCanBePlacedAndWritesAllOrNothing)
{
    for (const std::string& name : brokenFiles()) {
        SCOPED_TRACE(name);
        const std::string out = m_folder / (name + ".xml");
        const ToolResult result = RunTool({"update", kFolder + name + ".xml", out, "--lang", "en", "--json"});
        if (name == "records_without_place") {
            EXPECT_EQ(result.exitCode, 1);
            EXPECT_TRUE(result.Tells("not all 'lateral' records can be placed")) << result.err;
            EXPECT_TRUE(result.Tells("not all 'vjoint' records can be placed")) << result.err;
            EXPECT_FALSE(fs::exists(out));
            continue;
        }
        ASSERT_EQ(result.exitCode, 0) << result.err;
        EXPECT_EQ(RunTool({"update", out, m_out, "--json"}).Json()["moves"], json::array());
    }
}

namespace {

constexpr int kMany = 100'000;
constexpr int kNode = 1'000'000;
constexpr int kSpan = 2'000'000;
constexpr int kRoute = 3'000'000;

std::string spanText(int id, int upper, int lower, int route)
{
    std::ostringstream text;
    text << "<span id=\"" << id << "\" uppernode=\"" << upper << "\" lowernode=\"" << lower << "\" routeid=\"" << route
         << "\"><spno contents=\"1\"/><splength contents=\"1\"/></span>";
    return text.str();
}

std::string routeText(int id, int connect)
{
    std::ostringstream text;
    text << "<route id=\"" << id << "\" webid=\"1\" connectid=\"" << connect << "\"><routenum contents=\"" << id
         << "\"/><connectnum contents=\"" << connect << "\"/></route>";
    return text.str();
}

std::string nodeText(int id)
{
    return "<node id=\"" + std::to_string(id) + "\"/>";
}

std::string designWith(const std::string& records)
{
    return "<pipedata><web id=\"1\" disposaltype=\"0\"><webname contents=\"W\"/></web>" + records + "</pipedata>";
}

class ToolOnLargeFaults : public testing::Test {
protected:
    ToolResult Run(const std::string& command, std::vector<std::string> options = {}) const
    {
        std::vector<std::string> arguments = {command, m_file, "--lang", "en"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        return RunTool(arguments);
    }
    static bool EndsWith(const ToolResult& result, const std::string& text) { return result.out.ends_with(text); }

    ToolFolder m_folder;
    const std::string m_file = m_folder / "design.xml";
};

} // namespace

TEST_F(ToolOnLargeFaults, ARingOfAHundredThousandRoutes)
{
    std::string records;
    for (int i = 0; i < kMany; ++i) {
        const int next = (i + 1) % kMany;
        records += nodeText(kNode + i) + spanText(kSpan + i, kNode + i, kNode + next, kRoute + i) +
                   routeText(kRoute + i, kRoute + next);
    }
    WriteBytes(m_file, designWith(records));

    const ToolResult findings = Run("check");
    EXPECT_EQ(findings.exitCode, 1) << findings.err;
    EXPECT_EQ(findings.out.find("R001 error  route 3000000 "), 0u);
    EXPECT_EQ(findings.out.find("R001", 1), std::string::npos) << "a ring is told of once";
    EXPECT_LT(findings.out.find('\n'), 300u) << "in a short line";
    EXPECT_TRUE(EndsWith(findings, "W002 error  web 1 \"W\": has spans but no flow end\n"
                                   "100002 error(s), 0 warning(s), 0 note(s)\n"));
    EXPECT_TRUE(EndsWith(Run("tree"), "All webs: 100000 route(s), 100000 span(s), 100000.00 m\n"));
    EXPECT_EQ(Run("update", {m_folder / "out.xml"}).exitCode, 0);
    EXPECT_TRUE(
        EndsWith(Run("trace", {"--from", "2000007", "--down"}),
                 "100000 span(s), 100000.00 m\nspan 2000006 goes on in span 2000007, which is listed already\n"));
    EXPECT_TRUE(EndsWith(Run("trace", {"--from", "2000007", "--up"}), "\n100000 span(s), 100000.00 m\n"));
}

TEST_F(ToolOnLargeFaults, AHundredThousandSpansThatLeaveANode)
{
    std::string records = nodeText(2) + routeText(5, 0);
    for (int i = 0; i < kMany; ++i)
        records += nodeText(kNode + i) + spanText(kSpan + i, 2, kNode + i, 5);
    WriteBytes(m_file, designWith(records));

    const json report = Run("check", {"--json", "--defaults", kDefaults}).Json();
    EXPECT_EQ(linesOf(report["findings"]), "R007 route 5\nN001 node 2\nW001 web 1\n");
    for (const json& finding : report["findings"])
        EXPECT_LT(finding["message"].get<std::string>().size(), 300u);
    EXPECT_TRUE(EndsWith(Run("tree"), "All webs: 1 route(s), 100000 span(s), 100000.00 m\n"));
    EXPECT_EQ(Run("trace", {"--node", "2", "--down", "--json"}).Json()["ends"].size(), std::size_t{kMany});
    EXPECT_EQ(Run("trace", {"--node", "2", "--up"}).out, "0 span(s), 0.00 m\n");
}

TEST_F(ToolOnLargeFaults, ManyParallelSpansAboveALongLine)
{
    constexpr int kCount = 20'000;
    std::string records = nodeText(2) + routeText(5, 0) + nodeText(kNode);
    for (int i = 0; i < kCount; ++i)
        records += spanText(kSpan + i, 2, kNode, 5) + nodeText(kNode + i + 1) +
                   spanText(kSpan + kCount + i, kNode + i, kNode + i + 1, 5);
    WriteBytes(m_file, designWith(records));

    EXPECT_EQ(linesOf(Run("check", {"--json", "--defaults", kDefaults}).Json()["findings"]),
              "R007 route 5\nN001 node 2\n");
    const json trace = Run("trace", {"--node", "2", "--down", "--json"}).Json();
    EXPECT_EQ(trace["count"], 2 * kCount);
    ASSERT_EQ(trace["ends"].size(), std::size_t{kCount});
    EXPECT_EQ(trace["ends"][0], json::parse(R"({"span": 2039999, "node": 1020000, "joins": null})"));
    EXPECT_EQ(trace["ends"][1], json::parse(R"({"span": 2000001, "node": 1000000, "joins": 2020000})"));
    EXPECT_EQ(Run("trace", {"--from", "2039999", "--up", "--json"}).Json()["count"], 2 * kCount);
}
