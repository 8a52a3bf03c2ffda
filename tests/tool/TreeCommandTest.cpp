// rivelta tree: that every route of a file appears once, in its place.
#include "tool/ToolRunner.h"

#include <fstream>
#include <set>
#include <sstream>

using nlohmann::json;

namespace {

// A web with a trunk (20), tributaries whose flow order is not that of the file, and all that can be wrong: a route
// that flows into none (50), with one on it (51), a ring of two (60, 61) with one on it (62), one that flows into
// another web (70), one whose web is not there (80).
std::string damagedDesign()
{
    std::string records = "<web id=\"31\" disposaltype=\"0\"><webname contents=\"東\"/></web>";
    const auto route = [&records](int id, int web, int connect, int flowOrder) {
        const std::string number = std::to_string(id);
        records += "<route id=\"" + number + "\" webid=\"" + std::to_string(web) + "\" connectid=\"" +
                   std::to_string(connect) + "\"><routenum contents=\"R" + number + "\"/><floworder contents=\"" +
                   std::to_string(flowOrder) + "\"/></route>";
    };
    route(22, 30, 20, 3); // beside 21, which has no flow order
    route(23, 30, 20, 2);
    route(24, 30, 23, 1);
    route(50, 30, 999, 1);
    route(51, 30, 50, 1);
    route(61, 30, 60, 1);
    route(60, 30, 61, 1);
    route(62, 30, 60, 1);
    route(70, 30, 90, 1);
    route(90, 31, 0, 1);
    route(80, 77, 0, 1);
    return SmallDesignWith(records);
}

class ToolTree : public testing::Test {
protected:
    ToolTree() { WriteBytes(m_file, damagedDesign()); }

    ToolResult Tree(std::vector<std::string> options = {}, const std::string& locale = "C.UTF-8")
    {
        ToolCall call;
        call.arguments = {"tree", m_file, "--lang", "en"};
        call.arguments.insert(call.arguments.end(), options.begin(), options.end());
        call.environment = {{"LC_ALL", locale}};
        const ToolResult result = RunTool(call);
        EXPECT_EQ(result.exitCode, 0) << result.err;
        EXPECT_EQ(result.err, "");
        return result;
    }

    ToolFolder m_folder;
    const std::string m_file = m_folder / "design.xml";
};

// "20/0 23/1": the ids of a tree with their levels.
std::string levelsOf(const json& tree)
{
    std::string text = tree["root"].get<std::string>() + ":";
    for (const json& route : tree["routes"])
        text += " " + std::to_string(route["id"].get<int>()) + "/" + std::to_string(route["level"].get<int>());
    return text;
}

} // namespace

TEST_F(ToolTree, ShowsEachRouteOnceBelowTheOneItFlowsInto)
{
    EXPECT_EQ(Tree().out, "web 30 \"本町\"  (Storm)\n"
                          "flow end: node 3 \"A-2\"\n"
                          "└─ 1  ID=20  12.50 m  1 span(s)\n"
                          "   ├─ 2  ID=21  7.25 m  1 span(s)\n"
                          "   ├─ R23  ID=23  0.00 m  0 span(s)\n"
                          "   │  └─ R24  ID=24  0.00 m  0 span(s)\n"
                          "   └─ R22  ID=22  0.00 m  0 span(s)\n"
                          "Routes that do not reach the flow end:\n"
                          "flows into route ID=999, which is not there\n"
                          "└─ R50  ID=50  0.00 m  0 span(s)\n"
                          "   └─ R51  ID=51  0.00 m  0 span(s)\n"
                          "flows into route ID=90 of another web\n"
                          "└─ R70  ID=70  0.00 m  0 span(s)\n"
                          "flows into itself in a ring\n"
                          "└─ R61  ID=61  0.00 m  0 span(s)\n"
                          "   └─ R60  ID=60  0.00 m  0 span(s)\n"
                          "      └─ R62  ID=62  0.00 m  0 span(s)\n"
                          "11 route(s), 2 span(s), 19.75 m\n"
                          "\n"
                          "web 31 \"東\"  (Sanitary)\n"
                          "flow end: (none)\n"
                          "└─ R90  ID=90  0.00 m  0 span(s)\n"
                          "1 route(s), 0 span(s), 0.00 m\n"
                          "\n"
                          "Routes whose web is not there:\n"
                          "   R80  ID=80  0.00 m  0 span(s)\n"
                          "\n"
                          "All webs: 13 route(s), 2 span(s), 19.75 m\n");
}

TEST_F(ToolTree, DrawsWithPlainLettersWhereTheEncodingHasNoOthers)
{
    const std::string out = Tree({"--web", "30"}, "C").out;
    EXPECT_NE(out.find("   |- R23  ID=23"), std::string::npos) << out;
    EXPECT_NE(out.find("   |  `- R24  ID=24"), std::string::npos) << out;
}

TEST_F(ToolTree, ShowsOneWebByNameOrId)
{
    const std::string byName = Tree({"--web", "東"}).out;
    EXPECT_EQ(byName, Tree({"--web", "31"}).out);
    EXPECT_EQ(byName, "web 31 \"東\"  (Sanitary)\n"
                      "flow end: (none)\n"
                      "└─ R90  ID=90  0.00 m  0 span(s)\n"
                      "1 route(s), 0 span(s), 0.00 m\n"
                      "\n");
}

TEST_F(ToolTree, AsJsonTellsTheSame)
{
    const json tree = Tree({"--json"}).Json();
    ASSERT_EQ(tree["webs"].size(), 2u);
    const json& web = tree["webs"][0];
    EXPECT_EQ(web["flowEnds"], json::parse(R"([{"tag": "node", "id": 3, "name": "A-2"}])"));
    ASSERT_EQ(web["trees"].size(), 4u);
    EXPECT_EQ(levelsOf(web["trees"][0]), "flowEnd: 20/0 21/1 23/1 24/2 22/1");
    EXPECT_EQ(levelsOf(web["trees"][1]), "nowhere: 50/0 51/1");
    EXPECT_EQ(levelsOf(web["trees"][2]), "otherWeb: 70/0");
    EXPECT_EQ(levelsOf(web["trees"][3]), "ring: 61/0 60/1 62/2");
    EXPECT_EQ(web["trees"][0]["routes"][1], json::parse(R"({"id": 21, "name": "2", "level": 1, "webid": 30,
                                                            "connectid": 20, "spans": 1, "length": 7.25})"));
    EXPECT_EQ(web["total"], (json{{"routes", 11}, {"spans", 2}, {"length", 19.75}}));
    EXPECT_EQ(tree["outsideWebs"][0]["id"], 80);
    EXPECT_EQ(tree["total"], (json{{"routes", 13}, {"spans", 2}, {"length", 19.75}}));
}

TEST_F(ToolTree, RouteThatFlowsIntoItselfIsARing)
{
    WriteBytes(m_file, SmallDesignWith("<route id=\"40\" webid=\"30\" connectid=\"40\"/>"));
    const json tree = Tree({"--json"}).Json();
    EXPECT_EQ(levelsOf(tree["webs"][0]["trees"].back()), "ring: 40/0");
    EXPECT_EQ(tree["total"]["routes"], 3);
}

TEST_F(ToolTree, VeryLongChainsOfRoutesAreShownInShortLines)
{
    constexpr int kRoutes = 200'000;
    std::ostringstream text;
    text << "<pipedata><web id=\"1\" disposaltype=\"0\"/>";
    for (int id = 2; id < kRoutes + 2; ++id)
        text << "<route id=\"" << id << "\" webid=\"1\" connectid=\"" << (id == 2 ? 0 : id - 1) << "\"/>";
    WriteBytes(m_file, text.str() + "</pipedata>");
    const std::string out = Tree({}, "C").out;
    EXPECT_NE(out.find("`- (level 200000)   ID=200001"), std::string::npos);
    EXPECT_NE(out.find("All webs: 200000 route(s)"), std::string::npos);
    EXPECT_LT(out.size(), std::size_t{kRoutes} * 250);
    EXPECT_NE(Tree({"--json"}).out.find("\"level\": 199999,"), std::string::npos);
}

namespace {

struct FileCounts {
    std::string name;
    int spans;
    int webs;
    int routes;
};

// The rows of the table of counts: | `name.xml` | nodes | conduits | other links | outfalls | pieces | webs | routes |
std::vector<FileCounts> countsIn(const std::string& readme)
{
    std::vector<FileCounts> rows;
    std::ifstream file(readme);
    for (std::string line; std::getline(file, line);) {
        if (line.rfind("| `", 0) != 0 || line.find(".xml`") == std::string::npos) continue;
        std::vector<std::string> cells;
        std::istringstream stream(line.substr(1));
        for (std::string cell; std::getline(stream, cell, '|');)
            cells.push_back(cell);
        const std::string name = cells[0].substr(2, cells[0].rfind('`') - 2);
        rows.push_back({name, std::stoi(cells[2]) + std::stoi(cells[3]), std::stoi(cells[6]), std::stoi(cells[7])});
    }
    return rows;
}

} // namespace

TEST(ToolTreeOfRealNetworks, CountsAreThoseOfTheirTable)
{
    const std::string folder = RIVELTA_SOURCE_DIR "/../shared/data/";
    const auto rows = countsIn(folder + "README.md");
    if (rows.empty()) GTEST_SKIP() << "no designs beside the checkout";
    for (const FileCounts& row : rows) {
        const ToolResult result = RunTool({"tree", folder + row.name, "--json"});
        ASSERT_EQ(result.exitCode, 0) << row.name << result.err;
        const json tree = result.Json();
        EXPECT_EQ(tree["webs"].size(), static_cast<std::size_t>(row.webs)) << row.name;
        EXPECT_EQ(tree["total"]["routes"], row.routes) << row.name;
        EXPECT_EQ(tree["total"]["spans"], row.spans) << row.name;
        std::set<int> ids;
        int listed = 0;
        for (const json& web : tree["webs"])
            for (const json& branch : web["trees"])
                for (const json& route : branch["routes"]) {
                    ids.insert(route["id"].get<int>());
                    ++listed;
                }
        EXPECT_EQ(listed, row.routes) << row.name;
        EXPECT_EQ(ids.size(), static_cast<std::size_t>(row.routes)) << row.name;
    }
}
