// rivelta check: what each code stands for, what --fix repairs, and what comes out of real networks.
#include "tool/SoundDesign.h"
#include "tool/ToolRunner.h"

#include <algorithm>
#include <fstream>
#include <map>
#include <set>
#include <sstream>

using nlohmann::json;

namespace {

const std::string kDefaults = RIVELTA_SOURCE_DIR "/samples/default_attributes.xml";

class ToolCheck : public testing::Test {
protected:
    // Checks the design that `bytes` are.
    ToolResult Check(const std::string& bytes, std::vector<std::string> options = {})
    {
        WriteBytes(m_file, bytes);
        return CheckAgain(std::move(options));
    }
    ToolResult CheckAgain(std::vector<std::string> options = {})
    {
        std::vector<std::string> arguments = {"check", m_file, "--defaults", kDefaults, "--lang", "en"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        return RunTool(arguments);
    }

    ToolFolder m_folder;
    const std::string m_file = m_folder / "design.xml";
};

// "R003 span 4, S001 node 5": what was found, in its order.
std::string shortForm(const json& findings)
{
    std::string text;
    for (const json& finding : findings)
        text += (text.empty() ? "" : ", ") + finding["code"].get<std::string>() + " " +
                finding["tag"].get<std::string>() + " " + std::to_string(finding["id"].get<int>());
    return text;
}

std::string node(int id)
{
    return "<node id=\"" + std::to_string(id) + "\"/>";
}

std::string span(int id, int upper, int lower, int route)
{
    std::ostringstream text;
    text << "<span id=\"" << id << "\" uppernode=\"" << upper << "\" lowernode=\"" << lower << "\" routeid=\"" << route
         << "\"><spno contents=\"1\"/></span>";
    return text.str();
}

// Routes that flow into the trunk get its number.
std::string route(int id, int web, int connect)
{
    std::ostringstream text;
    text << "<route id=\"" << id << "\" webid=\"" << web << "\" connectid=\"" << connect << "\"><routenum contents=\"R"
         << id << "\"/><connectnum contents=\"" << (connect == 20 ? "T" : "end") << "\"/></route>";
    return text.str();
}

std::string web(int id, const std::string& name = "East")
{
    return "<web id=\"" + std::to_string(id) + "\" disposaltype=\"0\"><webname contents=\"" + name + "\"/></web>";
}

struct Case {
    std::string name;
    std::vector<Change> changes;
    std::string records;
    std::string findings;
};

const std::vector<Case> kCases = {
    {"a route flows into itself", {{"connectid=\"20\"", "connectid=\"21\""}}, "", "R001 route 21"},
    {"a ring of two routes",
     {{"connectid=\"20\"", "connectid=\"60\""}, {"\"T\"/></route>\n<web", "\"R60\"/></route>\n<web"}},
     node(7) + span(61, 7, 6, 60) +
         "<route id=\"60\" webid=\"30\" connectid=\"21\"><routenum contents=\"R60\"/>"
         "<connectnum contents=\"A\"/></route>",
     "R001 route 21, R002 route 21"},
    {"a route ends half-way down another", {}, node(7) + span(60, 7, 3, 61) + route(61, 30, 20), "R002 route 61"},
    {"a stale connect number", {{"<connectnum contents=\"T\"/>", "<connectnum contents=\"X\"/>"}}, "", "R003 route 21"},
    {"a route flows into another web", {}, node(7) + span(60, 7, 2, 61) + route(61, 62, 20) + web(62), "R004 route 61"},
    {"a route ends inside its web", {}, node(7) + span(60, 7, 3, 61) + route(61, 30, 0), "R005 route 61"},
    {"a route without spans", {}, route(60, 30, 0), "R006 route 60"},
    {"a route that branches", {}, node(7) + span(60, 7, 2, 21), "R007 route 21"},
    {"a route with a gap", {}, node(7) + node(8) + span(60, 7, 8, 21), "R007 route 21, W001 web 30"},
    {"span numbers out of order", {{"<spno contents=\"2\"/>", "<spno contents=\"5\"/>"}}, "", "R008 route 20"},
    {"a loop of spans",
     {},
     span(60, 4, 2, 61) + route(61, 30, 20),
     "S001 span 10, S001 span 11, S001 span 60, N001 node 4"},
    {"a span from a node to itself", {}, span(60, 6, 6, 21), "S002 span 60"},
    {"a span that rises",
     {{"<lowercentinv contents=\"11.1\"/>", "<lowercentinv contents=\"11.3\"/>"}},
     "",
     "S003 span 13"},
    {"a span without length", {{"<splength contents=\"5\"/>", "<splength contents=\"0\"/>"}}, "", "S004 span 13"},
    {"two spans leave a node", {}, span(60, 2, 5, 61) + route(61, 30, 0), "N001 node 2"},
    {"a node without spans", {}, node(7), "N002 node 7"},
    {"two flow ends", {}, node(7) + node(8) + span(60, 7, 8, 61) + route(61, 30, 0), "W001 web 30"},
    {"no flow end", {}, node(7) + span(60, 7, 7, 61) + route(61, 62, 0) + web(62), "S002 span 60, W002 web 62"},
    {"a web without routes", {}, web(60), "W003 web 60"},
    {"a link to nothing", {}, "<nodeunit id=\"60\" nunode=\"99\"/>", "L001 nodeunit 60"},
    {"a link of 0", {}, "<nodeunit id=\"60\" nunode=\"0\"/>", "L002 nodeunit 60"},
    {"a link to a wrong type", {}, "<nodeunit id=\"60\" nunode=\"20\"/>", "L003 nodeunit 60"},
    {"a key to nothing", {{"<svspid contents=\"10\"/>", "<svspid contents=\"99\"/>"}}, "", "L004 secvalve 55"},
    {"a key that is no id", {{"<svspid contents=\"10\"/>", "<svspid contents=\"ten\"/>"}}, "", "L004 secvalve 55"},
    {"a place on a span that is gone",
     {{"<laspanid contents=\"10\"/>", "<laspanid contents=\"99\"/>"}},
     "",
     "L004 lateral 53"},
    {"a key to a wrong type", {{"<svspid contents=\"10\"/>", "<svspid contents=\"2\"/>"}}, "", "L005 secvalve 55"},
    {"one id twice", {}, "<launit id=\"20\"/>", "L006 launit 20"},
    {"a negative id", {}, "<launit id=\"-3\"/>", "L006 launit -3"},
    {"manhole codes", {{"<mhcode contents=\"2\"/>", "<mhcode contents=\"1\"/>"}}, "", "D001 manhole 41"},
    {"section keys", {}, "<section id=\"60\" setype=\"1\"><sekeyword contents=\"VU\"/></section>", "D002 section 60"},
    {"section groups", {}, "<secgroup id=\"60\"><sgname contents=\"G\"/></secgroup>", "D003 secgroup 60"},
    {"a section group without a name", {}, "<secgroup id=\"60\"/>", "D004 secgroup 60"},
    {"records of a section group",
     {},
     "<secgrouprec id=\"60\"><srsecgroupname contents=\"G\"/><srsectionkey contents=\"VU\"/><srstsecname "
     "contents=\"VU200\"/><order contents=\"2\"/></secgrouprec>",
     "D005 secgrouprec 60"},
    {"section names over two kinds", {}, "<egg id=\"60\"><egname contents=\"VU200\"/></egg>", "D006 egg 60"},
    {"web names", {}, web(60, "West") + route(61, 60, 0) + node(7) + node(8) + span(62, 7, 8, 61), "D007 web 60"},
    {"route numbers", {{"<routenum contents=\"A\"/>", "<routenum contents=\"T\"/>"}}, "", "D008 route 21"},
    {"the section of a span",
     {{"<spsecrecname contents=\"VU200\"/>", "<spsecrecname contents=\"VU9\"/>"}},
     "",
     "C001 span 10"},
    {"the section of a lateral",
     {{"<lasecrecname contents=\"VU200\"/>", "<lasecrecname contents=\"VU9\"/>"}},
     "",
     "C001 lateral 53"},
    {"the section of a crossing",
     {{"<shape contents=\"1\"/><inwidth contents=\"0.5\"/>", "<shape contents=\"0\"/><inwidth contents=\"VU9\"/>"}},
     "",
     "C001 inters 52"},
    {"an invert above the ground", {{"<newgl contents=\"13.1\"/>", "<newgl contents=\"11\"/>"}}, "", "G001 span 13"},
    {"a crown above the ground", {{"<newgl contents=\"13.1\"/>", "<newgl contents=\"11.3\"/>"}}, "", "G002 span 13"},
    {"a crown above the ground at the flow end",
     {{"out\"/><ndnewgl contents=\"13\"/>", "out\"/><ndnewgl contents=\"11\"/>"}},
     "",
     "G002 span 12"},
    {"a span number beyond the route",
     {{"<fxspannum contents=\"2\"/>", "<fxspannum contents=\"4\"/>"}},
     "",
     "P001 fixinq 47"},
    {"a distance beyond the span",
     {{"<svdist contents=\"1\"/>", "<svdist contents=\"10.5\"/>"}},
     "",
     "P002 secvalve 55"},
    {"a distance beyond the route",
     {{"<glindist contents=\"15\"/>", "<glindist contents=\"61\"/>"},
      {"<glspanid contents=\"11\"/>", "<glspanid contents=\"0\"/>"}},
     "",
     "P002 glchange 50"},
    {"a stale place", {{"<gldist contents=\"5\"/>", "<gldist contents=\"6\"/>"}}, "", "P003 glchange 50"},
    {"a stale level", {{"<laelev contents=\"11.4\"/>", "<laelev contents=\"11.5\"/>"}}, "", "P003 lateral 53"},
    {"stale dimensions of a crossing",
     {{"<itheight contents=\"0.5\"/>", "<itheight contents=\"0.6\"/>"}},
     "",
     "P003 inters 52"},
    {"a misspelt key", {{"<mholeno contents=\"x\"/>", "<mholenu contents=\"x\"/>"}}, "", "K001 node 6"},
};

} // namespace

TEST_F(ToolCheck, ASoundDesignGivesNothing)
{
    const ToolResult result = Check(SoundDesign());
    EXPECT_EQ(result.exitCode, 0) << result.err;
    EXPECT_EQ(result.out, "0 error(s), 0 warning(s), 0 note(s)\n");
    EXPECT_EQ(result.err, "");
}

TEST_F(ToolCheck, EachFaultGivesItsCode)
{
    for (const Case& row : kCases) {
        const ToolResult result = Check(SoundDesignWith(row.changes, row.records), {"--json"});
        const json report = result.Json();
        EXPECT_EQ(shortForm(report["findings"]), row.findings) << row.name << "\n" << report.dump(2);
        EXPECT_EQ(result.exitCode, report["counts"]["errors"] > 0 ? 1 : 0) << row.name;
    }
}

TEST_F(ToolCheck, EveryCodeHasAFaultThatGivesIt)
{
    std::set<std::string> shown;
    for (const Case& row : kCases) {
        std::istringstream words(row.findings);
        for (std::string code, tag, id; words >> code >> tag >> id;)
            shown.insert(code);
    }
    std::set<std::string> all;
    for (const json& row : RunTool({"check", "--codes", "--json"}).Json())
        EXPECT_TRUE(all.insert(row["code"].get<std::string>()).second) << row["code"] << " stands twice";
    EXPECT_EQ(shown, all);
}

TEST_F(ToolCheck, TellsTheFindingsToAPerson)
{
    const ToolResult result =
        Check(SoundDesignWith({{"<connectnum contents=\"T\"/>", "<connectnum contents=\"X\"/>"}}, route(60, 30, 0)));
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.out, "R006 error  route 60 \"R60\": has no spans\n"
                          "R003 warning  route 21 \"A\": has a connect number that is not the number of its connect "
                          "route (connectnum=\"X\" -> \"T\")\n"
                          "1 error(s), 1 warning(s), 0 note(s)\n"
                          "--fix can repair 1 of them.\n");
}

TEST_F(ToolCheck, TellsTheFindingsInJapanese)
{
    WriteBytes(m_file, SoundDesignWith(route(60, 30, 0)));
    const ToolResult result = RunTool({"check", m_file, "--lang", "ja"});
    EXPECT_EQ(result.out, "R006 エラー  route 60 \"R60\": スパンがありません\nエラー 1 件、警告 0 件、注意 0 件\n");
}

TEST_F(ToolCheck, JsonHasTheseFields)
{
    const json report =
        Check(SoundDesignWith({{"<gldist contents=\"5\"/>", "<gldist contents=\"6\"/>"}}), {"--json"}).Json();
    const json finding = {{"code", "P003"},
                          {"severity", "warning"},
                          {"tag", "glchange"},
                          {"id", 50},
                          {"name", ""},
                          {"message", "has a place or level that is not the one that was entered (gldist=6 -> "
                                      "5.0000000000000)"},
                          {"repair", "placement"}};
    EXPECT_EQ(report, (json{{"file", m_file},
                            {"findings", json::array({finding})},
                            {"counts", {{"errors", 0}, {"warnings", 1}, {"notes", 0}}}}));
}

TEST_F(ToolCheck, TheFileStaysAsItIsWithoutFix)
{
    const std::string bytes = SoundDesignWith(node(7));
    Check(bytes);
    EXPECT_EQ(ReadBytes(m_file), bytes);
}

TEST_F(ToolCheck, RingsAreToldFromTheirFirstRoute)
{
    const std::string ring = route(60, 30, 61) + route(61, 30, 62) + route(62, 30, 60) + route(63, 30, 62);
    const json findings = Check(SoundDesignWith(ring), {"--json"}).Json()["findings"];
    std::vector<std::string> rings;
    for (const json& finding : findings)
        if (finding["code"] == "R001") rings.push_back(finding["message"]);
    EXPECT_EQ(rings, std::vector<std::string>{"flows into itself, over a ring of connect routes (route 60 -> 61 -> 62 "
                                              "-> 60)"});
}

TEST_F(ToolCheck, VacuumSewersMayRise)
{
    const Change rises = {"<lowercentinv contents=\"11.1\"/>", "<lowercentinv contents=\"11.3\"/>"};
    EXPECT_EQ(Check(SoundDesignWith({rises, {"disposaltype=\"0\"", "disposaltype=\"4\""}})).out,
              "0 error(s), 0 warning(s), 0 note(s)\n");
}

TEST_F(ToolCheck, UnknownKeysAreToldOfOnceWithTheirNumber)
{
    const std::string two = "<launit id=\"60\"><lucolor contents=\"1\"/></launit>"
                            "<launit id=\"61\"><lucolor contents=\"2\"/></launit>";
    const json findings = Check(SoundDesignWith(two), {"--json"}).Json()["findings"];
    ASSERT_EQ(findings.size(), 1u);
    EXPECT_EQ(findings[0]["id"], 60);
    EXPECT_EQ(findings[0]["message"], "has a key that records of its type do not start with (\"lucolor\", 2 x launit)");
}

TEST_F(ToolCheck, WebNarrowsTheCheckToWhatBelongsToIt)
{
    const std::string east = web(62) + route(61, 62, 0) + node(8) + node(9) + span(60, 8, 9, 61) +
                             "<lateral id=\"63\" larouteid=\"61\"><laspanid contents=\"60\"/><laspannum "
                             "contents=\"7\"/></lateral>";
    const std::string design = SoundDesignWith({{"<mhcode contents=\"2\"/>", "<mhcode contents=\"1\"/>"},
                                                {"<svdist contents=\"1\"/>", "<svdist contents=\"99\"/>"},
                                                {"<spno contents=\"2\"/>", "<spno contents=\"5\"/>"}},
                                               east + node(7));
    EXPECT_EQ(shortForm(Check(design, {"--json"}).Json()["findings"]),
              "D001 manhole 41, R008 route 20, N002 node 7, P001 lateral 63, P002 secvalve 55, P003 lateral 63");
    EXPECT_EQ(shortForm(CheckAgain({"--json", "--web", "West"}).Json()["findings"]), "R008 route 20, P002 secvalve 55");
    EXPECT_EQ(shortForm(CheckAgain({"--json", "--web", "62"}).Json()["findings"]), "P001 lateral 63, P003 lateral 63");
    const ToolResult unknown = CheckAgain({"--web", "Wset"});
    EXPECT_EQ(unknown.exitCode, 2);
    EXPECT_TRUE(unknown.Tells("did you mean West?")) << unknown.err;
}

namespace {

// A fault of each kind that can be repaired, and one that cannot.
std::string repairableDesign()
{
    return SoundDesignWith({{"<connectnum contents=\"T\"/>", "<connectnum contents=\"X\"/>"},
                            {"<gldist contents=\"5\"/>", "<gldist contents=\"6\"/>"},
                            {"<laspanid contents=\"10\"/>", "<laspanid contents=\"99\"/>"}},
                           node(7) + node(8) + "<nodeunit id=\"60\" nunode=\"8\"/>" +
                               "<secgroup id=\"61\"><sgname contents=\"G\"/></secgroup><secgroup id=\"62\"/>"
                               "<secgrouprec id=\"63\"><srsecgroupname contents=\"G\"/><srsectionkey contents=\"VU\"/>"
                               "<srstsecname contents=\"VU200\"/></secgrouprec>" +
                               route(64, 30, 0));
}

const char* const kRepaired = "D003 secgroup 61, R003 route 21, N002 node 7, L004 lateral 53, D004 secgroup 62, "
                              "D005 secgrouprec 63, P003 glchange 50";
const char* const kRemaining = "R006 route 64, N002 node 8";

} // namespace

TEST_F(ToolCheck, FixRepairsWhatCanBeRepairedAndTellsTheRest)
{
    const std::string before = repairableDesign();
    const std::string out = m_folder / "mended.xml";
    const ToolResult result = Check(before, {"--fix", "-o", out, "--json"});
    EXPECT_EQ(result.exitCode, 1) << result.err;
    const json report = result.Json();
    EXPECT_EQ(shortForm(report["repaired"]), kRepaired);
    EXPECT_EQ(shortForm(report["findings"]), kRemaining);
    EXPECT_EQ(report["output"], out);
    EXPECT_EQ(report["counts"], json::parse(R"({"errors": 1, "warnings": 1, "notes": 0})"));
    EXPECT_EQ(ReadBytes(m_file), before);

    const ToolResult again = RunTool({"check", out, "--defaults", kDefaults, "--json", "--lang", "en"});
    EXPECT_EQ(again.Json()["findings"], report["findings"]);
    const auto valueOf = [&](const char* tag, int id, const char* key) {
        for (const json& row : RunTool({"list", out, tag, "--json"}).Json())
            if (row["id"] == id) return row[key].dump();
        return std::string("no record");
    };
    EXPECT_EQ(valueOf("route", 21, "connectnum"), "\"T\"");
    EXPECT_EQ(valueOf("glchange", 50, "gldist"), "\"5.0000000000000\"");
    EXPECT_EQ(valueOf("lateral", 53, "laspanid"), "\"10\"");
    EXPECT_EQ(valueOf("node", 7, "id"), "no record");
    EXPECT_EQ(valueOf("secgroup", 45, "sgname"), "\"G\"");
}

TEST_F(ToolCheck, FixWritesIntoTheFileWhenThereIsNoOther)
{
    const ToolResult result = Check(SoundDesignWith(node(7)), {"--fix"});
    EXPECT_EQ(result.exitCode, 0) << result.err;
    EXPECT_EQ(result.out, "repaired, deletes the node, unless something else refers to it: "
                          "N002 warning  node 7: is touched by no span\n"
                          "1 finding(s) repaired. Written to " +
                              m_file + ".\n0 error(s), 0 warning(s), 0 note(s)\n");
    EXPECT_EQ(CheckAgain().out, "0 error(s), 0 warning(s), 0 note(s)\n");
}

TEST_F(ToolCheck, FixLeavesAFileAloneInWhichNothingCanBeRepaired)
{
    const std::string bytes = SoundDesignWith(route(60, 30, 0));
    const ToolResult result = Check(bytes, {"--fix", "--json"});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.Json()["output"], nullptr);
    EXPECT_EQ(result.Json()["repaired"], json::array());
    EXPECT_EQ(ReadBytes(m_file), bytes);
    EXPECT_EQ(m_folder.Names(), std::vector<std::string>{"design.xml"});
}

TEST_F(ToolCheck, FixOfOneWebLeavesTheOthersAlone)
{
    const std::string east = web(62) + route(61, 62, 0) + node(7) + node(8) + node(9) + span(60, 7, 8, 61) +
                             span(63, 9, 7, 64) + route(64, 62, 61);
    const std::string design =
        SoundDesignWith({{"<connectnum contents=\"T\"/>", "<connectnum contents=\"X\"/>"}}, east);
    const json report = Check(design, {"--fix", "--web", "East", "--json"}).Json();
    EXPECT_EQ(shortForm(report["repaired"]), "R003 route 64");
    EXPECT_EQ(shortForm(CheckAgain({"--json"}).Json()["findings"]), "R003 route 21");
}

TEST_F(ToolCheck, AFailedWriteIsCode4AndLeavesTheFile)
{
    const std::string bytes = SoundDesignWith(node(7));
    const ToolResult result = Check(bytes, {"--fix", "-o", m_folder / "no/such/folder.xml"});
    EXPECT_EQ(result.exitCode, 4);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(ReadBytes(m_file), bytes);
}

TEST_F(ToolCheck, FixToStandardOutputIsTheFileAlone)
{
    const ToolResult result = Check(SoundDesignWith(node(7)), {"--fix", "-o", "-"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.out.rfind("<?xml", 0), 0u);
    EXPECT_TRUE(result.Tells("1 finding(s) repaired.")) << result.err;
    EXPECT_EQ(CheckAgain({"--fix", "-o", "-", "--json"}).exitCode, 2);
}

TEST_F(ToolCheck, WrongUsageIsCode2)
{
    WriteBytes(m_file, SoundDesign());
    EXPECT_EQ(RunTool({"check"}).exitCode, 2);
    EXPECT_TRUE(RunTool({"check", "--lang", "en"}).Tells("missing: FILE"));
    EXPECT_EQ(CheckAgain({"-o", m_folder / "x.xml"}).exitCode, 2);
    EXPECT_EQ(RunTool({"check", m_folder / "none.xml"}).exitCode, 3);
}

TEST_F(ToolCheck, ThePageOfTheCodesIsWhatTheToolShows)
{
    EXPECT_EQ(ReadBytes(RIVELTA_SOURCE_DIR "/docs/check-codes.md"), RunTool({"check", "--codes", "--lang", "en"}).out)
        << "write it anew with: rivelta check --codes --lang en > docs/check-codes.md";
}

TEST_F(ToolCheck, CodesAreToldInBothLanguages)
{
    const json english = RunTool({"check", "--codes", "--json", "--lang", "en"}).Json();
    const json japanese = RunTool({"check", "--codes", "--json", "--lang", "ja"}).Json();
    ASSERT_EQ(english.size(), japanese.size());
    EXPECT_EQ(english[2]["code"], "R003");
    EXPECT_EQ(english[2]["severity"], "warning");
    EXPECT_EQ(english[2]["meaning"], "has a connect number that is not the number of its connect route");
    EXPECT_EQ(english[2]["repair"], "connectNumber");
    EXPECT_EQ(english[2]["repairMeaning"], "writes the number of the connect route");
    EXPECT_EQ(english[0]["repair"], nullptr);
    for (std::size_t i = 0; i < english.size(); ++i) {
        EXPECT_EQ(english[i]["code"], japanese[i]["code"]);
        EXPECT_EQ(english[i]["repair"], japanese[i]["repair"]);
        EXPECT_NE(english[i]["meaning"], japanese[i]["meaning"]);
    }
}

TEST_F(ToolCheck, ProgressIsDrawnOnATerminalForALargeFile)
{
    WriteBytes(m_file, NodesDesign(8000));
    EXPECT_NE(RunToolOnTerminal({"check", m_file, "--lang", "en"}, 80).out.find("Checking the design"),
              std::string::npos);
}

TEST_F(ToolCheck, LongChainsAreCheckedAndMendedInOneGo)
{
    // Each route flows into the one before it; every connect number is stale. The spans are one chain of nodes.
    constexpr int kRoutes = 50'000;
    std::ostringstream text;
    text << "<pipedata><web id=\"1\" disposaltype=\"0\"><webname contents=\"W\"/></web><node id=\"2\"/>";
    for (int i = 1; i <= kRoutes; ++i) {
        const int routeId = 1'000'000 + i;
        text << "<node id=\"" << i + 2 << "\"/>" << span(2'000'000 + i, i + 2, i + 1, routeId) << "<route id=\""
             << routeId << "\" webid=\"1\" connectid=\"" << (i == 1 ? 0 : routeId - 1) << "\"><routenum contents=\""
             << i << "\"/></route>";
    }
    const json report = Check(text.str() + "</pipedata>", {"--fix", "--json"}).Json();
    EXPECT_EQ(report["repaired"].size(), static_cast<std::size_t>(kRoutes - 1));
    EXPECT_EQ(report["findings"], json::array());
}

TEST(ToolCheckOfTheSample, TheTownHasNoFault)
{
    const ToolResult result =
        RunTool({"check", RIVELTA_SOURCE_DIR "/samples/mizuho.xml", "--defaults", kDefaults, "--lang", "en"});
    EXPECT_EQ(result.out, "0 error(s), 0 warning(s), 0 note(s)\n");
    EXPECT_EQ(result.exitCode, 0);
}

namespace {

// The net of a file, as its records tell it.
struct RealNet {
    explicit RealNet(const std::string& file)
    {
        std::map<int, int> webOfRoute;
        for (const json& row : RunTool({"list", file, "route", "--columns", "id,webid", "--json"}).Json())
            webOfRoute[row["id"]] = row["webid"];
        std::map<int, std::set<int>> upper;
        std::map<int, std::set<int>> lower;
        for (const json& row :
             RunTool({"list", file, "span", "--columns", "uppernode,lowernode,routeid", "--json"}).Json()) {
            const int web = webOfRoute.at(row["routeid"]);
            const int from = row["uppernode"];
            const int to = row["lowernode"];
            ++leaving[from];
            upper[web].insert(from);
            lower[web].insert(to);
            spans.emplace_back(from, to);
        }
        for (const auto& [web, ends] : lower) {
            std::vector<int> flowEnds;
            std::set_difference(ends.begin(), ends.end(), upper[web].begin(), upper[web].end(),
                                std::back_inserter(flowEnds));
            if (flowEnds.size() > 1) ++websWithSeveralEnds;
        }
    }

    std::size_t NodesThatSplit() const
    {
        return static_cast<std::size_t>(
            std::count_if(leaving.begin(), leaving.end(), [](const auto& entry) { return entry.second > 1; }));
    }
    // Spans that stay when those without a follower or a predecessor are taken away again and again.
    std::size_t SpansOnLoops() const
    {
        std::vector<std::pair<int, int>> left = spans;
        for (std::size_t before = 0; before != left.size();) {
            before = left.size();
            std::set<int> from;
            std::set<int> to;
            for (const auto& [upper, lower] : left) {
                from.insert(upper);
                to.insert(lower);
            }
            left.erase(std::remove_if(
                           left.begin(), left.end(),
                           [&](const auto& span) { return !to.contains(span.first) || !from.contains(span.second); }),
                       left.end());
        }
        return left.size();
    }

    std::map<int, int> leaving; // spans by node
    std::vector<std::pair<int, int>> spans;
    std::size_t websWithSeveralEnds = 0;
};

} // namespace

TEST(ToolCheckOfRealNetworks, FindsTheirSplitsLoopsAndFlowEndsAndNoOtherErrors)
{
    const std::string folder = RIVELTA_SOURCE_DIR "/../shared/data/";
    std::size_t count = 0;
    for (const char* const name : {"bellinge_small", "orificio", "orificio_v13", "frazioni", "nhieu_loc", "washington",
                                   "washington_v13", "nodes1138", "nodes1138_v13", "nodes1870"}) {
        const std::string file = folder + name + ".xml";
        if (!std::filesystem::exists(file)) continue;
        ++count;
        const ToolResult result = RunTool({"check", file, "--defaults", kDefaults, "--json"});
        const json report = result.Json();
        std::map<std::string, std::size_t> errors;
        for (const json& finding : report["findings"])
            if (finding["severity"] == "error") ++errors[finding["code"]];
        std::map<std::string, std::size_t> expected;
        const RealNet net(file);
        if (net.NodesThatSplit() > 0) expected["N001"] = net.NodesThatSplit();
        if (net.SpansOnLoops() > 0) expected["S001"] = net.SpansOnLoops();
        if (net.websWithSeveralEnds > 0) expected["W001"] = net.websWithSeveralEnds;
        EXPECT_EQ(errors, expected) << name;
        EXPECT_EQ(result.exitCode, expected.empty() ? 0 : 1) << name;
        EXPECT_EQ(expected.empty(), name == std::string("bellinge_small"));
    }
    if (count == 0) GTEST_SKIP() << "no designs beside the checkout";
}
