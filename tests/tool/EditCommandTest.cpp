// rivelta edit: what scripts do, what is refused before anything runs, and that a failure leaves no trace.
#include "tool/ToolRunner.h"

#include <algorithm>

using nlohmann::json;

namespace {

// Two webs. West: the trunk T = a-b, b-c, c-out and the routes A and B, which flow into its top. East: E = e-f.
const char* const kDesign = R"(<?xml version="1.0" encoding="UTF-8"?>
<pipedata>
<profile><dataver contents="13"/></profile>
<project id="1"><prjname contents="P"/></project>
<node id="2"><mholeno contents="a"/></node>
<node id="3"><mholeno contents="b"/></node>
<node id="4"><mholeno contents="c"/></node>
<node id="5"><mholeno contents="out"/></node>
<node id="6"><mholeno contents="x"/></node>
<node id="7"><mholeno contents="y"/></node>
<node id="8"><mholeno contents="e"/></node>
<node id="9"><mholeno contents="f"/></node>
<span id="10" uppernode="2" lowernode="3" routeid="20"><spno contents="1"/><splength contents="10"/></span>
<span id="11" uppernode="3" lowernode="4" routeid="20"><spno contents="2"/><splength contents="20"/></span>
<span id="12" uppernode="4" lowernode="5" routeid="20"><spno contents="3"/><splength contents="30"/></span>
<span id="13" uppernode="6" lowernode="2" routeid="21"><spno contents="1"/><splength contents="5"/></span>
<span id="14" uppernode="7" lowernode="2" routeid="22"><spno contents="1"/><splength contents="6"/></span>
<span id="15" uppernode="8" lowernode="9" routeid="23"><spno contents="1"/><splength contents="7"/></span>
<route id="20" webid="30" connectid="0"><routenum contents="T"/><rtstate contents="1"/></route>
<route id="21" webid="30" connectid="20"><routenum contents="A"/></route>
<route id="22" webid="30" connectid="20"><routenum contents="B"/></route>
<route id="23" webid="31" connectid="0"><routenum contents="E"/></route>
<web id="30" disposaltype="0"><webname contents="West"/></web>
<web id="31" disposaltype="2"><webname contents="East"/></web>
<areaset id="40" asspanid="10"/><areaset id="41" asspanid="11"/><areaset id="42" asspanid="12"/>
<areaset id="43" asspanid="13"/><areaset id="44" asspanid="14"/><areaset id="45" asspanid="15"/>
</pipedata>
)";

class ToolEdit : public testing::Test {
protected:
    ToolEdit() { WriteBytes(m_file, kDesign); }

    ToolResult Edit(const std::string& operations, std::vector<std::string> options = {})
    {
        return EditWith("{\"operations\": [" + operations + "]}", std::move(options));
    }
    ToolResult EditWith(const std::string& script, std::vector<std::string> options = {})
    {
        WriteBytes(m_script, script);
        std::vector<std::string> arguments = {
            "edit",   m_file, "--script", m_script, "--defaults", RIVELTA_SOURCE_DIR "/samples/default_attributes.xml",
            "--lang", "en"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        return RunTool(arguments);
    }
    // The results of the last operation; the design is changed.
    json ResultsOf(const std::string& operations)
    {
        const ToolResult result = Edit(operations, {"--json"});
        EXPECT_EQ(result.exitCode, 0) << operations << "\n" << result.err;
        return result.exitCode == 0 ? result.Json()["operations"].back()["results"] : json();
    }
    // The records of a type as {"id": {...}}.
    json RecordsOf(const std::string& tag)
    {
        const ToolResult result = RunTool({"list", m_file, tag, "--json"});
        EXPECT_EQ(result.exitCode, 0) << result.err;
        json records = json::object();
        const json rows = result.Json();
        for (const json& row : rows)
            records[std::to_string(row["id"].get<long>())] = row;
        return records;
    }
    json Record(const std::string& tag, const json& id) { return RecordsOf(tag)[std::to_string(id.get<long>())]; }
    // "2-3 3-4": the nodes of a route's spans, from the top down.
    std::string WayOf(int route)
    {
        std::map<long, long> below;
        const json spans = RecordsOf("span");
        for (const json& span : spans)
            if (span["routeid"] == route) below[span["uppernode"].get<long>()] = span["lowernode"].get<long>();
        long node = 0;
        for (const auto& [upper, lower] : below)
            if (std::none_of(below.begin(), below.end(), [u = upper](const auto& s) { return s.second == u; }))
                node = upper;
        std::string way = std::to_string(node);
        for (std::size_t i = 0; i < below.size(); ++i) {
            node = below[node];
            way += "-" + std::to_string(node);
        }
        return way;
    }

    ToolFolder m_folder;
    const std::string m_file = m_folder / "design.xml";
    const std::string m_script = m_folder / "script.json";
};

} // namespace

TEST_F(ToolEdit, BuildsARouteAndNamesWhatItMade)
{
    const ToolResult result = Edit(R"(
        {"op": "create_route", "web": "West", "connect": 21, "values": {"routenum": "新"}, "as": "r"},
        {"op": "create_spans", "route": "$r", "count": 2, "values": {"splength": "25"}, "as": "more"},
        {"op": "set", "object": "$r.span", "values": {"splength": "15"}},
        {"op": "set", "object": "$more.spans[1]", "values": {"spname": "last"}})",
                                   {"--json"});
    ASSERT_EQ(result.exitCode, 0) << result.err;
    const json operations = result.Json()["operations"];
    EXPECT_EQ(operations[0]["as"], "r");
    const json& made = operations[0]["results"];
    EXPECT_EQ(Record("route", made["route"])["connectid"], 21);
    EXPECT_EQ(Record("route", made["route"])["routenum"], "新");
    EXPECT_EQ(Record("span", made["span"])["splength"], "15");
    EXPECT_EQ(Record("span", made["span"])["uppernode"], made["node"]);
    const json& spans = operations[1]["results"]["spans"];
    ASSERT_EQ(spans.size(), 2u);
    EXPECT_EQ(Record("span", spans[1])["spname"], "last");
    EXPECT_EQ(Record("span", spans[1])["spno"], "3");
    EXPECT_EQ(Record("span", spans[1])["lowernode"], 6);
    EXPECT_EQ(operations[1]["results"]["nodes"].size(), 2u);
}

TEST_F(ToolEdit, CreatesProjectAndWeb)
{
    const json web = ResultsOf(R"({"op": "create_web", "disposaltype": 4, "values": {"webname": "New"}})");
    EXPECT_EQ(Record("web", web["web"])["disposaltype"], 4);
    EXPECT_EQ(Record("web", web["web"])["webname"], "New");
    WriteBytes(m_file, "<pipedata/>");
    const json project = ResultsOf(R"({"op": "create_project", "values": {"prjname": "N"}})");
    EXPECT_EQ(Record("project", project["project"])["prjname"], "N");
}

TEST_F(ToolEdit, CreatesASpanNodeAboveOrBelow)
{
    const json below = ResultsOf(R"({"op": "create_span_node", "span": 11, "below": true})");
    EXPECT_EQ(Record("span", below["span"])["uppernode"], below["node"]);
    EXPECT_EQ(Record("span", below["span"])["lowernode"], 4);
    const json above = ResultsOf(R"({"op": "create_span_node", "span": 10, "below": false})");
    EXPECT_EQ(Record("span", above["span"])["lowernode"], 2);
}

TEST_F(ToolEdit, AddsInsertsDividesAndRemovesSpans)
{
    const json added = ResultsOf(R"({"op": "add_spans", "route": 23, "count": 2})");
    EXPECT_EQ(Record("span", added["spans"][1])["lowernode"], 9);
    const json inserted = ResultsOf(R"({"op": "insert_spans", "span": 13, "count": 1})");
    EXPECT_EQ(Record("span", inserted["spans"][0])["lowernode"], 2);
    const json divided = ResultsOf(R"({"op": "divide_span", "span": 14, "parts": 3})");
    EXPECT_EQ(divided["spans"].size(), 3u);
    EXPECT_EQ(divided["spans"][0], 14);
    ResultsOf(R"({"op": "remove_spans", "route": 20, "count": 2})");
    EXPECT_EQ(WayOf(20), "2-5");
}

TEST_F(ToolEdit, SetsAndRemovesValues)
{
    ResultsOf(R"({"op": "set", "object": 12, "values": {"splength": null, "spname": "名", "spno": "9"}})");
    EXPECT_EQ(Record("span", 12), json::parse(R"({"id": 12, "uppernode": 4, "lowernode": 5, "routeid": 20,
                                                  "spno": "9", "spname": "名"})"));
    ResultsOf(R"({"op": "set", "object": 31, "values": {"webname": "Far East"}})");
    EXPECT_EQ(Record("web", 31)["webname"], "Far East");
}

TEST_F(ToolEdit, DeletesSpans)
{
    ResultsOf(R"({"op": "delete_span", "span": 11})");
    EXPECT_EQ(WayOf(20), "2-4-5");
    ResultsOf(R"({"op": "delete_span", "span": 15, "leave_route": true})");
    EXPECT_TRUE(RecordsOf("route").contains("23"));
    ResultsOf(R"({"op": "delete_span", "span": 13})");
    EXPECT_FALSE(RecordsOf("route").contains("21"));
    ResultsOf(R"({"op": "delete_span_only", "span": 12})");
    EXPECT_EQ(WayOf(20), "2-4");
}

TEST_F(ToolEdit, DeletesRoutesAndWebs)
{
    ResultsOf(R"({"op": "delete_route", "route": 21})");
    EXPECT_EQ(RecordsOf("route").size(), 3u);
    ResultsOf(R"({"op": "set", "object": 30, "values": {"wbendrname": "River"}},
                 {"op": "delete_route_connect_end", "route": 20})");
    EXPECT_EQ(Record("route", 22)["connectid"], 0);
    EXPECT_EQ(Record("route", 22)["connectnum"], "River");
    ResultsOf(R"({"op": "delete_upstream", "route": 22})");
    EXPECT_FALSE(RecordsOf("route").contains("22"));
    ResultsOf(R"({"op": "delete_web", "web": "East"})");
    EXPECT_EQ(RecordsOf("web").size(), 1u);
    EXPECT_TRUE(RecordsOf("span").empty());
}

TEST_F(ToolEdit, ConnectsRoutesAndUpdatesTheirNumbers)
{
    ResultsOf(R"({"op": "connect", "route": 22, "connect": 21},
                 {"op": "set", "object": 21, "values": {"rtstate": "1"}},
                 {"op": "update_connect_numbers", "web": 30})");
    EXPECT_EQ(Record("route", 22)["connectid"], 21);
    EXPECT_EQ(Record("route", 22)["connectnum"], "A");
    EXPECT_EQ(Record("span", 14)["lowernode"], 6);
    ResultsOf(R"({"op": "connect", "route": 22, "connect": 0})");
    EXPECT_EQ(Record("span", 14)["lowernode"], 5);
}

TEST_F(ToolEdit, JoinsSpans)
{
    ResultsOf(R"({"op": "connect_spans", "first": 10, "second": 11})");
    EXPECT_EQ(WayOf(20), "2-4-5");
    EXPECT_EQ(std::stod(Record("span", 10)["splength"].get<std::string>()), 30.0);
}

TEST_F(ToolEdit, MovesTheOutletToTheTopOfARoute)
{
    ResultsOf(R"({"op": "move_outlet", "route": 21, "name": "Lake"})");
    EXPECT_EQ(WayOf(21), "2-6");
    EXPECT_EQ(WayOf(20), "5-4-3-2");
    EXPECT_EQ(Record("route", 21)["connectnum"], "Lake");
    EXPECT_EQ(Record("route", 20)["connectid"], 21);
    EXPECT_EQ(Record("route", 22)["connectid"], 21);
}

TEST_F(ToolEdit, MovesTheOutletToEitherEndOfARoute)
{
    const json moved = ResultsOf(R"({"op": "move_outlet_to_node", "route": 21, "node": 2, "name": "Lake"})");
    EXPECT_EQ(moved["reversed"], json::parse("[20]"));
    EXPECT_EQ(moved["rewired"], json::parse("[21, 20, 22]"));
    EXPECT_EQ(WayOf(21), "6-2");
    EXPECT_EQ(WayOf(20), "5-4-3-2");
}

TEST_F(ToolEdit, CopiesRoutesDistrictsAndWebs)
{
    const json route = ResultsOf(R"({"op": "copy_route", "route": 22, "connect": 21})");
    EXPECT_EQ(Record("route", route["route"])["connectid"], 21);
    const json district = ResultsOf(R"({"op": "copy_upstream", "route": 21, "connect": 22})");
    ASSERT_EQ(district["routes"].size(), 2u);
    EXPECT_EQ(Record("route", district["routes"][1])["connectid"], district["routes"][0]);
    const json web = ResultsOf(R"({"op": "copy_web", "web": "East", "as": "w"},
                                  {"op": "set", "object": "$w", "values": {"webname": "Second East"}},
                                  {"op": "copy_web", "web": "$w"})");
    EXPECT_EQ(RecordsOf("web").size(), 4u);
    EXPECT_EQ(Record("web", web["web"])["webname"], "Second East");
}

TEST_F(ToolEdit, FailingOperationLeavesTheFileAsItWas)
{
    const struct {
        const char* operation;
        const char* reason;
    } cases[] = {
        {R"({"op": "create_project"})", "there is a project already, ID=1"},
        {R"({"op": "remove_spans", "route": 21, "count": 1})", "route ID=21 has 1 span(s), and one has to stay"},
        {R"({"op": "create_route", "web": "East", "connect": 20})", "route ID=20 belongs to another web"},
        {R"({"op": "connect", "route": 20, "connect": 21})", "route ID=20 would flow into itself"},
        {R"({"op": "connect", "route": 20, "connect": 20})", "route ID=20 would flow into itself"},
        {R"({"op": "connect", "route": 21, "connect": 23})", "route ID=23 belongs to another web"},
        {R"({"op": "connect_spans", "first": 11, "second": 10})", "span ID=10 does not follow span ID=11"},
        {R"({"op": "connect_spans", "first": 13, "second": 10})", "span ID=10 does not follow span ID=13"},
        {R"({"op": "move_outlet", "route": 21, "name": "B"})", "a route of the web has the number 'B'"},
        {R"({"op": "move_outlet_to_node", "route": 20, "node": 3, "name": "L"})", "node ID=3 is no end of route ID=20"},
        {R"({"op": "delete_span", "span": 15, "leave_route": true}, {"op": "delete_route", "route": 23})",
         "route ID=23 has no spans"},
        {R"({"op": "delete_span", "span": 15, "leave_route": true}, {"op": "delete_web", "web": 31})",
         "route ID=23 has no spans"},
        {R"({"op": "delete_span", "span": 15, "leave_route": true}, {"op": "copy_web", "web": 31})",
         "route ID=23 has no spans"},
        {R"({"op": "delete_span", "span": 15, "leave_route": true}, {"op": "delete_upstream", "route": 23})",
         "web ID=31 has no flow end"},
        {R"({"op": "delete_span", "span": 15}, {"op": "divide_span", "span": 15, "parts": 2})",
         "span: the object with ID=15 is no longer there"},
        {R"({"op": "delete_web", "web": 31}, {"op": "set", "object": 23, "values": {}})",
         "object: the object with ID=23 is no longer there"},
        {R"({"op": "add_spans", "route": 20, "count": 2, "as": "a"}, {"op": "delete_span", "span": "$a.spans[2]"})",
         "span: the list has 2 entries only"},
    };
    for (const auto& test : cases) {
        WriteBytes(m_file, kDesign);
        const std::string change = R"({"op": "set", "object": 30, "values": {"webname": "Changed"}}, )";
        const ToolResult result = Edit(change + test.operation);
        EXPECT_EQ(result.exitCode, 1) << test.operation;
        EXPECT_TRUE(result.Tells(test.reason)) << test.reason << "\n" << result.err;
        EXPECT_TRUE(result.Tells("Nothing was written.")) << result.err;
        EXPECT_EQ(result.out, "");
        EXPECT_EQ(ReadBytes(m_file), kDesign) << test.operation;
    }
    EXPECT_TRUE(Edit(R"({"op": "create_web", "disposaltype": 0}, {"op": "create_project"})")
                    .Tells(m_file + ": operations[1] (create_project) failed: "));
}

TEST_F(ToolEdit, RouteWithoutAnAreaRecordCannotBeCopied)
{
    std::string design = kDesign;
    design.erase(design.find("<areaset id=\"45\""), std::string("<areaset id=\"45\" asspanid=\"15\"/>").size());
    WriteBytes(m_file, design);
    const ToolResult result = Edit(R"({"op": "copy_route", "route": 23})");
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_TRUE(result.Tells("span ID=15 has no area record")) << result.err;
}

TEST_F(ToolEdit, OutletCannotBeMovedInARingOfRoutes)
{
    std::string design = kDesign;
    design.replace(design.find("<route id=\"20\" webid=\"30\" connectid=\"0\">"), 40,
                   "<route id=\"20\" webid=\"30\" connectid=\"21\">");
    WriteBytes(m_file, design);
    const ToolResult result = Edit(R"({"op": "move_outlet", "route": 22, "name": "Lake"})");
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_TRUE(result.Tells("the way down from route ID=22 does not reach the flow end")) << result.err;
}

TEST_F(ToolEdit, FaultyScriptIsRefusedWithThePathOfEachFault)
{
    const struct {
        const char* operation; // the second one; the first names web "w" and list "s"
        const char* message;
    } cases[] = {
        {R"(7)", "operations[2]: must be an object {...}"},
        {R"({})", "operations[2].op: is missing"},
        {R"({"op": 7})", "operations[2].op: must be a text"},
        {R"({"op": "create_rout"})",
         "operations[2].op: there is no operation 'create_rout'\ndid you mean create_route"},
        {R"({"op": "paint"})", "operations[2].op: there is no operation 'paint'\n'rivelta help edit' names all."},
        {R"({"op": "create_route"})", "operations[2].web: is missing"},
        {R"({"op": "create_route", "web": "Nest"})", "operations[2].web: there is no web 'Nest'\ndid you mean West"},
        {R"({"op": "create_route", "web": 20})", "operations[2].web: wants a 'web', but this is a 'route'"},
        {R"({"op": "create_route", "web": true})", "operations[2].web: must be an id, the name of a web or \"$NAME\""},
        {R"({"op": "create_route", "web": "$v"})", "operations[2].web: no operation before this one is named 'v'"},
        {R"({"op": "create_route", "web": 30, "connect": "$w"})",
         "operations[2].connect: wants a 'route', but this is a 'web'"},
        {R"({"op": "create_route", "web": 30, "connect": -1})", "operations[2].connect: must be an id, 0 or"},
        {R"({"op": "create_route", "web": 30, "conect": 20})",
         "operations[2].conect: is no field of 'create_route'\ndid you mean connect"},
        {R"({"op": "create_route", "web": 30, "values": []})", "operations[2].values: must be an object {...}"},
        {R"({"op": "create_route", "web": 30, "values": {"routenum": 7}})",
         "operations[2].values.routenum: must be a text"},
        {R"({"op": "create_route", "web": 30, "values": {"routenum": null}})",
         "operations[2].values.routenum: must be a text"},
        {R"({"op": "create_route", "web": 30, "values": {"a b": "x"}})", "operations[2].values.a b: cannot be a key"},
        {R"({"op": "create_route", "web": 30, "values": {"a": "\u0000"}})",
         "operations[2].values.a: holds a control character"},
        {R"({"op": "set", "object": 30, "values": {"a": 1}})",
         "operations[2].values.a: must be a text, or null to remove the key"},
        {R"({"op": "set", "object": 999, "values": {}})", "operations[2].object: there is no object with ID=999"},
        {R"({"op": "set", "object": 0, "values": {}})", "operations[2].object: must be an id"},
        {R"({"op": "divide_span", "span": 20, "parts": 2})",
         "operations[2].span: wants a 'span', but this is a 'route'"},
        {R"({"op": "divide_span", "span": 4294967306, "parts": 2})", "operations[2].span: must be an id"},
        {R"({"op": "divide_span", "span": 10, "parts": 0})", "operations[2].parts: must be a whole number from 1"},
        {R"({"op": "divide_span", "span": 10, "parts": 2.5})", "operations[2].parts: must be a whole number from 1"},
        {R"({"op": "divide_span", "span": 10, "parts": 18446744073709551615})", "operations[2].parts: must be a whole"},
        {R"({"op": "divide_span", "span": "$s.nodes[0]", "parts": 2})", "wants a 'span', but this is a 'node'"},
        {R"({"op": "divide_span", "span": "$s.pipes", "parts": 2})", "'s' has no result 'pipes', only spans, nodes"},
        {R"({"op": "divide_span", "span": "$w.web[0]", "parts": 2})",
         "operations[2].span: the result 'web' is no list"},
        {R"({"op": "divide_span", "span": "$s.spans[x]", "parts": 2})", "operations[2].span: must be an id"},
        {R"({"op": "divide_span", "span": "$s.spans[1", "parts": 2})", "operations[2].span: must be an id"},
        {R"({"op": "create_span_node", "span": 10, "below": 1})", "operations[2].below: must be true or false"},
        {R"({"op": "create_web", "disposaltype": 6})", "operations[2].disposaltype: must be a disposal type, 0 to 5"},
        {R"({"op": "create_web", "disposaltype": 1, "as": "w"})", "operations[2].as: 'w' stands twice"},
        {R"({"op": "create_web", "disposaltype": 1, "as": "2x"})", "operations[2].as: must be a name"},
        {R"({"op": "delete_web", "web": 30, "as": "d"})", "operations[2].as: 'delete_web' makes nothing"},
        {R"({"op": "move_outlet", "route": 21, "name": 5})", "operations[2].name: must be a text"},
    };
    for (const auto& test : cases) {
        const ToolResult result = Edit(std::string(R"({"op": "create_web", "disposaltype": 0, "as": "w"},
            {"op": "create_spans", "route": 20, "count": 2, "as": "s"}, )") +
                                       test.operation);
        EXPECT_EQ(result.exitCode, 2) << test.operation << "\n" << result.err;
        EXPECT_TRUE(result.Tells(m_script + ": ")) << result.err;
        EXPECT_TRUE(result.Tells(test.message)) << test.message << "\n" << result.err;
        EXPECT_TRUE(result.Tells("Nothing was run.")) << result.err;
        EXPECT_EQ(result.out, "");
    }
    EXPECT_EQ(ReadBytes(m_file), kDesign);
}

TEST_F(ToolEdit, AllFaultsAreToldAtOnce)
{
    const ToolResult result = Edit(R"({"op": "x"}, {"op": "create_route", "web": "none", "size": 1})");
    EXPECT_EQ(result.exitCode, 2);
    for (const char* const path : {"operations[0].op: ", "operations[1].web: ", "operations[1].size: "})
        EXPECT_TRUE(result.Tells(path)) << result.err;
    std::string many = "7";
    for (int i = 1; i < 100; ++i)
        many += ", 7";
    EXPECT_TRUE(Edit(many).Tells("80 more fault(s)"));
}

TEST_F(ToolEdit, OuterFormOfTheScriptIsCheckedToo)
{
    EXPECT_TRUE(EditWith("[]").Tells("must be an object {...}"));
    EXPECT_TRUE(EditWith("{}").Tells("operations: is missing"));
    EXPECT_TRUE(EditWith(R"({"operations": {}})").Tells("operations: must be a list [...]"));
    EXPECT_TRUE(EditWith(R"({"operations": [], "more": 1})").Tells("more: is no field"));
    EXPECT_EQ(EditWith("{}").exitCode, 2);
}

TEST_F(ToolEdit, NameThatTwoWebsHaveIsAmbiguous)
{
    std::string design = kDesign;
    design.replace(design.find("\"East\""), 6, "\"West\"");
    WriteBytes(m_file, design);
    const ToolResult result = Edit(R"({"op": "delete_web", "web": "West"})");
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_TRUE(result.Tells("operations[0].web: 2 webs have the name 'West'; give an id")) << result.err;
    EXPECT_EQ(Edit(R"({"op": "delete_web", "web": 31})").exitCode, 0);
}

TEST_F(ToolEdit, CreatingNeedsDefaultAttributes)
{
    WriteBytes(m_folder / "defaults.xml", "<root><web/></root>");
    WriteBytes(m_script, R"({"operations": [{"op": "create_route", "web": 30}]})");
    const ToolResult result = RunTool({"edit", m_file, "--script", m_script, "--lang", "en"});
    if (result.exitCode == 0) GTEST_SKIP() << "the tool has installed defaults";
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_TRUE(result.Tells("operations[0]: needs the default attributes of 'route'")) << result.err;
}

TEST_F(ToolEdit, ScriptThatIsNoJsonIsUnreadableInput)
{
    const struct {
        std::string script;
        const char* message;
    } cases[] = {
        {"", "is no JSON at line 1, column 1"},
        {"{\"operations\": [\n  {\"op\": }]}", "is no JSON at line 2, column 10"},
        {"{\"operations\": [1e999]}", "could not be read: number overflow"},
        {"{\"operations\": [\"\xFF\"]}", "is no JSON at line 1"},
        {std::string(200'000, '['), "is no JSON at line 1"},
        {R"({"operations": [{"op": "a", "op": "b"}]})", "operations[0].op: stands twice"},
        {R"({"operations": [], "operations": []})", "operations: stands twice"},
    };
    for (const auto& test : cases) {
        const ToolResult result = EditWith(test.script);
        EXPECT_EQ(result.exitCode, 3) << result.err;
        EXPECT_TRUE(result.Tells(m_script + ": ")) << result.err;
        EXPECT_TRUE(result.Tells(test.message)) << test.message << "\n" << result.err;
    }
    EXPECT_EQ(RunTool({"edit", m_file, "--script", m_folder / "none.json"}).exitCode, 3);
    EXPECT_TRUE(RunTool({"edit", m_file, "--script", m_folder.Path().string(), "--lang", "en"}).Tells("is a folder"));
}

TEST_F(ToolEdit, ScriptOfManyLevelsIsRefusedWithoutADeepStack)
{
    const std::string deep = std::string(200'000, '[') + std::string(200'000, ']');
    const ToolResult result = EditWith("{\"operations\": " + deep + "}");
    EXPECT_EQ(result.signal, 0);
    EXPECT_EQ(result.exitCode, 2);
}

TEST_F(ToolEdit, DryRunTellsWhatWouldBeMadeAndWritesNothing)
{
    const std::string operation = R"({"op": "copy_upstream", "route": 20})";
    const json dry = Edit(operation, {"--dry-run", "--json", "-o", m_folder / "out.xml"}).Json();
    EXPECT_EQ(dry["output"], nullptr);
    EXPECT_EQ(ReadBytes(m_file), kDesign);
    EXPECT_EQ(m_folder.Names(), (std::vector<std::string>{"design.xml", "script.json"}));
    const json wet = Edit(operation, {"--json"}).Json();
    EXPECT_EQ(dry["operations"], wet["operations"]);
    EXPECT_EQ(dry["objects"], wet["objects"]);
    WriteBytes(m_file, kDesign);
    EXPECT_NE(Edit(operation, {"--dry-run"}).out.find("1 operation(s) can be done; nothing was written"),
              std::string::npos);
}

TEST_F(ToolEdit, WritesToTheGivenFileAndLeavesTheInputAlone)
{
    const std::string out = m_folder / "out.xml";
    const ToolResult result = Edit(R"({"op": "add_spans", "route": 23, "count": 2})", {"-o", out});
    EXPECT_EQ(result.out, "operations[0] add_spans: spans 47 50\n" + out +
                              ": 1 operation(s) done, 33 records written in data version 13\n");
    EXPECT_EQ(ReadBytes(m_file), kDesign);
    EXPECT_EQ(RunTool({"list", out, "span", "--json"}).Json().size(), 8u);

    const ToolResult piped = Edit(R"({"op": "add_spans", "route": 23, "count": 2})", {"-o", "-"});
    EXPECT_EQ(piped.out, ReadBytes(out));
}

TEST_F(ToolEdit, FileThatCannotBeWrittenIsCode4)
{
    const ToolResult result = Edit("", {"-o", m_folder / "none/out.xml"});
    EXPECT_EQ(result.exitCode, 4);
    EXPECT_EQ(ReadBytes(m_file), kDesign);
}

TEST_F(ToolEdit, ScriptOrDesignMayComeFromStandardInput)
{
    ToolCall call;
    call.arguments = {"edit", m_file, "--script", "-", "--json"};
    call.input = R"({"operations": [{"op": "delete_web", "web": "East"}]})";
    EXPECT_EQ(RunTool(call).exitCode, 0);
    EXPECT_EQ(RecordsOf("web").size(), 1u);

    WriteBytes(m_script, call.input);
    call.arguments = {"edit", "-", "--script", m_script};
    call.input = kDesign;
    const ToolResult result = RunTool(call);
    EXPECT_EQ(result.exitCode, 0) << result.err;
    EXPECT_EQ(result.out, ReadBytes(m_file));
}

TEST_F(ToolEdit, WithoutOperationsItWritesTheDesignAnew)
{
    EXPECT_EQ(Edit("").exitCode, 0);
    const std::string once = ReadBytes(m_file);
    EXPECT_EQ(Edit("").exitCode, 0);
    EXPECT_EQ(ReadBytes(m_file), once);
}

TEST_F(ToolEdit, HelpNamesEveryOperationWithItsFieldsAndResults)
{
    const std::string help = RunTool({"help", "edit", "--lang", "en"}).out;
    for (const char* const line :
         {"\n  create_route web=WEB [connect=ROUTE|0] [values=VALUES] -> route, span, node\n",
          "\n  create_spans route=ROUTE count=1... [values=VALUES] -> spans, nodes\n",
          "\n  delete_span span=SPAN [leave_route=true|false]\n", "\n  set object=OBJECT values=VALUES\n",
          "\n  move_outlet_to_node route=ROUTE node=NODE name=TEXT -> rewired, reversed\n"})
        EXPECT_NE(help.find(line), std::string::npos) << line << help;
    EXPECT_NE(help.find("{\"operations\": ["), std::string::npos) << help;
}
