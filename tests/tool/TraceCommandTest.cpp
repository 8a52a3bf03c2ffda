// rivelta trace: the spans along the flow.
#include "tool/ToolRunner.h"

#include <sstream>

using nlohmann::json;

namespace {

struct SpanRow {
    int id;
    int upper;
    int lower;
    int route;
    double length;
};

// Nodes 1 to 19, routes 100 (the trunk), 101 and 102.
std::string designOf(const std::vector<SpanRow>& spans)
{
    std::ostringstream text;
    text << "<pipedata><web id=\"90\" disposaltype=\"0\"/>";
    for (int id = 1; id < 20; ++id)
        text << "<node id=\"" << id << "\"><mholeno contents=\"M" << id << "\"/></node>";
    for (int id = 100; id < 103; ++id)
        text << "<route id=\"" << id << "\" webid=\"90\" connectid=\"" << (id == 100 ? 0 : 100)
             << "\"><routenum contents=\"" << id - 99 << "\"/></route>";
    for (const SpanRow& span : spans)
        text << "<span id=\"" << span.id << "\" uppernode=\"" << span.upper << "\" lowernode=\"" << span.lower
             << "\" routeid=\"" << span.route << "\"><spno contents=\"" << span.id % 10 << "\"/><splength contents=\""
             << span.length << "\"/></span>";
    return text.str() + "</pipedata>";
}

//  1 --200-- 2 --201-- 3 --202-- 4        the trunk
//  5 --210-- 2    6 --211-- 7 --212-- 2   two routes that join it
std::string tree()
{
    return designOf({{200, 1, 2, 100, 10},
                     {201, 2, 3, 100, 20.5},
                     {202, 3, 4, 100, 30},
                     {212, 7, 2, 102, 2},
                     {210, 5, 2, 101, 5},
                     {211, 6, 7, 102, 1}});
}

class ToolTrace : public testing::Test {
protected:
    json Trace(const std::string& design, std::vector<std::string> options)
    {
        WriteBytes(m_file, design);
        std::vector<std::string> arguments = {"trace", m_file, "--json"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        const ToolResult result = RunTool(arguments);
        EXPECT_EQ(result.exitCode, 0) << result.err;
        return result.Json();
    }
    // The ids of the spans, in order.
    std::vector<int> IdsOf(const std::string& design, std::vector<std::string> options)
    {
        std::vector<int> ids;
        const json trace = Trace(design, std::move(options));
        for (const json& span : trace["spans"])
            ids.push_back(span["id"].get<int>());
        return ids;
    }

    ToolFolder m_folder;
    const std::string m_file = m_folder / "design.xml";
};

using Ids = std::vector<int>;

} // namespace

TEST_F(ToolTrace, DownListsTheSpansToTheFlowEnd)
{
    const json trace = Trace(tree(), {"--from", "211", "--down"});
    ASSERT_EQ(trace["spans"].size(), 4u);
    EXPECT_EQ(trace["spans"][0], json::parse(R"({"id": 211, "name": "1", "route": {"tag": "route", "id": 102,
        "name": "3"}, "uppernode": 6, "lowernode": 7, "length": 1.0, "distance": 1.0})"));
    EXPECT_EQ(trace["spans"][3]["id"], 202);
    EXPECT_EQ(trace["spans"][3]["distance"], 53.5);
    EXPECT_EQ(trace["count"], 4);
    EXPECT_EQ(trace["length"], 53.5);
    EXPECT_EQ(trace["start"], (json{{"tag", "span"}, {"id", 211}, {"name", "1"}}));
    EXPECT_EQ(trace["direction"], "down");
    EXPECT_EQ(trace["ends"], json::parse(R"([{"span": 202, "node": 4, "joins": null}])"));
}

TEST_F(ToolTrace, UpListsEverythingThatDrainsThereBranchByBranchInTheOrderOfTheFile)
{
    EXPECT_EQ(IdsOf(tree(), {"--from", "202", "--up"}), (Ids{202, 201, 200, 212, 211, 210}));
    const json trace = Trace(tree(), {"--from", "202", "--up"});
    EXPECT_EQ(trace["count"], 6);
    EXPECT_EQ(trace["length"], 68.5);
    EXPECT_EQ(trace["spans"][4]["distance"], 53.5);
    EXPECT_FALSE(trace.contains("ends"));
}

TEST_F(ToolTrace, NodeStartsWithTheSpansThatLeaveOrEnterIt)
{
    EXPECT_EQ(IdsOf(tree(), {"--node", "2", "--down"}), (Ids{201, 202}));
    EXPECT_EQ(IdsOf(tree(), {"--node", "2", "--up"}), (Ids{200, 212, 211, 210}));
    EXPECT_EQ(IdsOf(tree(), {"--node", "1", "--up"}), Ids{});
    EXPECT_EQ(IdsOf(tree(), {"--node", "4", "--down"}), Ids{});
}

TEST_F(ToolTrace, WaysThatMeetAreListedOnce)
{
    // Two spans leave node 1 and meet at node 4.
    const std::string design = designOf(
        {{200, 1, 2, 100, 1}, {201, 2, 4, 100, 1}, {210, 1, 3, 101, 1}, {211, 3, 4, 101, 1}, {202, 4, 5, 100, 1}});
    EXPECT_EQ(IdsOf(design, {"--node", "1", "--down"}), (Ids{200, 201, 202, 210, 211}));
    EXPECT_EQ(IdsOf(design, {"--from", "202", "--up"}), (Ids{202, 201, 200, 211, 210}));
    const json ends = Trace(design, {"--node", "1", "--down"})["ends"];
    EXPECT_EQ(ends,
              json::parse(R"([{"span": 202, "node": 5, "joins": null}, {"span": 211, "node": 4, "joins": 202}])"));
}

TEST_F(ToolTrace, LoopsEnd)
{
    const std::string ring = designOf({{200, 1, 2, 100, 1}, {201, 2, 3, 100, 1}, {202, 3, 1, 100, 1}});
    EXPECT_EQ(IdsOf(ring, {"--from", "201", "--down"}), (Ids{201, 202, 200}));
    EXPECT_EQ(IdsOf(ring, {"--from", "201", "--up"}), (Ids{201, 200, 202}));
    EXPECT_EQ(Trace(ring, {"--from", "201", "--down"})["ends"][0]["joins"], 201);
    const std::string self = designOf({{200, 1, 1, 100, 1}});
    EXPECT_EQ(IdsOf(self, {"--from", "200", "--down"}), Ids{200});
    EXPECT_EQ(IdsOf(self, {"--node", "1", "--up"}), Ids{200});
}

TEST_F(ToolTrace, ForPeopleIsATableWithATotal)
{
    WriteBytes(m_file, tree());
    EXPECT_EQ(RunTool({"trace", m_file, "--from", "210", "--down", "--lang", "en"}).out,
              " ID  NAME  ROUTE ID  ROUTE  FROM NODE  TO NODE  LENGTH (m)  DISTANCE (m)\n"
              "210     0       101      2          5        2        5.00          5.00\n"
              "201     1       100      1          2        3       20.50         25.50\n"
              "202     2       100      1          3        4       30.00         55.50\n"
              "3 span(s), 55.50 m\n"
              "span 202 ends at node 4 \"M4\", which no span leaves\n");
    EXPECT_EQ(RunTool({"trace", m_file, "--node", "1", "--up", "--lang", "en"}).out, "0 span(s), 0.00 m\n");
}

TEST_F(ToolTrace, SpanWithoutARouteOrNodesIsTracedAllTheSame)
{
    const json trace = Trace(designOf({{200, 0, 0, 999, 4}}), {"--from", "200", "--down"});
    EXPECT_EQ(trace["spans"][0]["route"], nullptr);
}

TEST_F(ToolTrace, LongLinesNeedNoDeepStack)
{
    constexpr int kSpans = 100'000;
    std::ostringstream text;
    text << "<pipedata>";
    for (int i = 0; i < kSpans; ++i)
        text << "<span id=\"" << kSpans + 10 + i << "\" uppernode=\"" << i + 1 << "\" lowernode=\"" << i + 2
             << "\" routeid=\"0\"/>";
    WriteBytes(m_file, text.str() + "</pipedata>");
    const std::string first = std::to_string(kSpans + 10);
    const std::string last = std::to_string(2 * kSpans + 9);
    for (const std::vector<std::string>& way : {std::vector<std::string>{last, "--up"}, {first, "--down"}}) {
        const ToolResult result = RunTool({"trace", m_file, "--lang", "en", "--from", way[0], way[1]});
        EXPECT_NE(result.out.find("\n100000 span(s), 0.00 m\n"), std::string::npos) << result.err;
    }
}
