// rivelta info, list and show on a small design.
#include "tool/ToolRunner.h"

#include <sstream>

using nlohmann::json;

namespace {

class ToolLook : public testing::Test {
protected:
    ToolLook() { WriteBytes(m_file, SmallDesign()); }

    json JsonOf(std::vector<std::string> arguments)
    {
        arguments.emplace_back("--json");
        const ToolResult result = RunTool(arguments);
        EXPECT_EQ(result.exitCode, 0) << result.err;
        return result.Json();
    }

    ToolFolder m_folder;
    const std::string m_file = m_folder / "design.xml";
};

std::vector<std::string> linesOf(const std::string& text)
{
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        if (!line.empty() && line.back() == '\r') line.pop_back();
        lines.push_back(line);
    }
    return lines;
}

} // namespace

TEST_F(ToolLook, InfoTellsTheHeaderAndTheForm)
{
    const json info = JsonOf({"info", m_file});
    EXPECT_EQ(info["file"], m_file);
    EXPECT_EQ(info["size"], SmallDesign().size());
    EXPECT_EQ(info["dataver"], 13);
    EXPECT_EQ(info["encoding"], (json{{"declared", "UTF-8"}, {"detected", "UTF-8"}}));
    EXPECT_EQ(info["language"], "");
    EXPECT_EQ(info["profile"]["appname"], "test");
    EXPECT_EQ(info["profile"]["dataver"], "13");
}

TEST_F(ToolLook, InfoTellsTheEncodingOfEachForm)
{
    const auto formOf = [&](const std::string& bytes) {
        WriteBytes(m_folder / "form.xml", bytes);
        const json info = JsonOf({"info", m_folder / "form.xml"});
        return info["encoding"]["declared"].get<std::string>() + " " + info["encoding"]["detected"].get<std::string>() +
               " " + info["language"].get<std::string>();
    };
    const auto utf16 = [](const std::string& ascii, bool isBig) {
        std::string bytes = isBig ? "\xFE\xFF" : "\xFF\xFE";
        for (const char c : ascii) {
            if (isBig) bytes += '\0';
            bytes += c;
            if (!isBig) bytes += '\0';
        }
        return bytes;
    };
    const std::string body = "<pipedata><node id=\"1\"/></pipedata>";
    EXPECT_EQ(formOf(body), " UTF-8 ");
    EXPECT_EQ(formOf("\xEF\xBB\xBF" + body), " UTF-8 ");
    EXPECT_EQ(formOf("<?xml version='1.0' encoding='Shift_JIS'?>" + body), "Shift_JIS SHIFT_JIS ja");
    EXPECT_EQ(formOf("<?xml version=\"1.0\" encoding = \"EUC-KR\"?>" + body), "EUC-KR EUC-KR ko");
    const std::string declared = "<?xml version = \"1.0\" encoding = \"UTF-16\"?>";
    EXPECT_EQ(formOf(utf16(declared + body, false)), "UTF-16 UTF-16LE ");
    EXPECT_EQ(formOf(utf16(declared + body, true)), "UTF-16 UTF-16BE ");
    EXPECT_EQ(formOf(utf16("<?xml version = \"1.0\" encoding = \"EUC-KR\"?>" + body, false)), "EUC-KR UTF-16LE ko");
}

TEST_F(ToolLook, InfoCountsRecordsWebsRoutesSpansNodesAndLength)
{
    const json info = JsonOf({"info", m_file});
    EXPECT_EQ(info["objects"], 12);
    EXPECT_EQ(info["records"][0], (json{{"tag", "project"}, {"meaning", "Project"}, {"count", 1}}));
    EXPECT_EQ(info["records"][1], (json{{"tag", "node"}, {"meaning", "Node"}, {"count", 3}}));
    EXPECT_EQ(info["records"].back()["tag"], "usedarea");
    ASSERT_EQ(info["webs"].size(), 1u);
    EXPECT_EQ(info["webs"][0], (json{{"id", 30},
                                     {"name", "本町"},
                                     {"disposaltype", 2},
                                     {"disposal", "Storm"},
                                     {"routes", 2},
                                     {"spans", 2},
                                     {"nodes", 3},
                                     {"length", 19.75}}));
    EXPECT_EQ(info["total"], (json{{"routes", 2}, {"spans", 2}, {"nodes", 3}, {"length", 19.75}}));
}

TEST_F(ToolLook, InfoCountsWhatBelongsToNoWebApart)
{
    WriteBytes(m_file, SmallDesignWith("<span id=\"12\" uppernode=\"2\" lowernode=\"4\" routeid=\"99\">"
                                       "<splength contents=\"100\"/></span>"
                                       "<route id=\"22\" webid=\"0\" connectid=\"0\"/>"));
    const json info = JsonOf({"info", m_file});
    EXPECT_EQ(info["webs"][0]["length"], 19.75);
    EXPECT_EQ(info["outsideWebs"], (json{{"routes", 1}, {"spans", 1}, {"nodes", 2}, {"length", 100.0}}));
    EXPECT_EQ(info["total"]["length"], 119.75);
}

TEST_F(ToolLook, InfoForPeopleIsInBothLanguages)
{
    const ToolResult english = RunTool({"info", m_file, "--lang", "en"});
    EXPECT_EQ(english.exitCode, 0);
    EXPECT_NE(english.out.find("span      Span               2\n"), std::string::npos) << english.out;
    EXPECT_NE(english.out.find("30  本町   Storm          2      2      3       19.75\n"), std::string::npos)
        << english.out;
    const ToolResult japanese = RunTool({"info", m_file, "--lang", "ja"});
    EXPECT_NE(japanese.out.find("span      スパン           2\n"), std::string::npos) << japanese.out;
    EXPECT_NE(japanese.out.find("雨水"), std::string::npos) << japanese.out;
}

TEST_F(ToolLook, WebsOfOneNameKeepTheirNamesAndAreWarnedOf)
{
    WriteBytes(m_file, SmallDesignWith("<web id=\"31\" disposaltype=\"0\"><webname contents=\"本町\"/></web>"
                                       "<web id=\"32\" disposaltype=\"0\"/><web id=\"33\" disposaltype=\"0\"/>"));
    const ToolResult result = RunTool({"info", m_file, "--json"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.Json()["webs"][1]["name"], "本町");
    EXPECT_TRUE(result.Tells("web ID=31 has the name of another web, \"本町\"")) << result.err;
    EXPECT_TRUE(result.Tells("web ID=33 has the name of another web, \"\"")) << result.err;
    EXPECT_FALSE(JsonOf({"show", m_file, "33"})[0]["attributes"].contains("webname"));
}

TEST_F(ToolLook, ListHasIdLinksAndEveryKeyInTheOrderOfTheFile)
{
    const ToolResult result = RunTool({"list", m_file, "span"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.out, "id  uppernode  lowernode  routeid  spno  splength  spname\n"
                          "10          2          3       20     1      12.5\n"
                          "11          4          3       21     1      7.25  枝管\n");
}

TEST_F(ToolLook, ListAsJsonHasNumbersForIdsAndNoKeyThatARecordLacks)
{
    EXPECT_EQ(JsonOf({"list", m_file, "SPAN"}),
              json::parse(R"([{"id":10,"uppernode":2,"lowernode":3,"routeid":20,"spno":"1","splength":"12.5"},
        {"id":11,"uppernode":4,"lowernode":3,"routeid":21,"spno":"1","splength":"7.25","spname":"枝管"}])"));
}

TEST_F(ToolLook, ListOfATypeThatTheFileLacksIsEmpty)
{
    EXPECT_EQ(JsonOf({"list", m_file, "egg"}), json::array());
    EXPECT_EQ(RunTool({"list", m_file, "egg"}).out, "id\n");
}

TEST_F(ToolLook, ListIsNarrowedByEachWhere)
{
    const auto idsWhere = [&](std::vector<std::string> conditions) {
        std::vector<std::string> arguments = {"list", m_file, "node"};
        for (std::string& condition : conditions) {
            arguments.emplace_back("--where");
            arguments.push_back(std::move(condition));
        }
        std::vector<int> ids;
        for (const json& row : JsonOf(arguments))
            ids.push_back(row["id"]);
        return ids;
    };
    EXPECT_EQ(idsWhere({}), (std::vector<int>{2, 3, 4}));
    EXPECT_EQ(idsWhere({"mholeno=A-2"}), (std::vector<int>{3}));
    EXPECT_EQ(idsWhere({"mholeno!=A-2"}), (std::vector<int>{2, 4}));
    EXPECT_EQ(idsWhere({"id=4"}), (std::vector<int>{4}));
    EXPECT_EQ(idsWhere({"mholeno=A-1", "id=4"}), (std::vector<int>{}));
    EXPECT_EQ(idsWhere({"cx="}), (std::vector<int>{3, 4})) << "a missing key counts as empty";
    EXPECT_EQ(idsWhere({"cx!="}), (std::vector<int>{2}));
}

TEST_F(ToolLook, ListFiltersByLinkFields)
{
    const json rows = JsonOf({"list", m_file, "span", "--where", "routeid=21"});
    ASSERT_EQ(rows.size(), 1u);
    EXPECT_EQ(rows[0]["id"], 11);
}

TEST_F(ToolLook, ListShowsTheColumnsAskedForInTheirOrder)
{
    EXPECT_EQ(RunTool({"list", m_file, "span", "--columns", "splength,id,routeid"}).out,
              "splength  id  routeid\n    12.5  10       20\n    7.25  11       21\n");
}

TEST_F(ToolLook, KeyThatNoRecordHasIsWarnedOf)
{
    const ToolResult result = RunTool({"list", m_file, "span", "--columns", "id,splenght", "--where", "zzz="});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_TRUE(result.Tells("no 'span' record has the key 'splenght'\ndid you mean splength?")) << result.err;
    EXPECT_TRUE(result.Tells("no 'span' record has the key 'zzz'")) << result.err;
}

TEST_F(ToolLook, ControlCharactersOfValuesAreShownAsEscapes)
{
    const ToolResult result = RunTool({"list", m_file, "node", "--columns", "id,ndcommentf"});
    EXPECT_EQ(linesOf(result.out).size(), 4u) << result.out;
    EXPECT_NE(result.out.find("髙\\n<&\"\n"), std::string::npos) << result.out;
    EXPECT_EQ(JsonOf({"list", m_file, "node"})[2]["ndcommentf"], "波〜線 🚰 髙\n<&\"");
}

TEST_F(ToolLook, OnATerminalColumnsThatDoNotFitAreLeftOutAndNamed)
{
    const auto lines = linesOf(RunToolOnTerminal({"list", m_file, "span"}, 40).out);
    ASSERT_GE(lines.size(), 4u);
    EXPECT_EQ(lines[0], "id  uppernode  lowernode  routeid  spno");
    EXPECT_NE(lines[3].find("2 more column(s) do not fit: splength, spname"), std::string::npos) << lines[3];
}

TEST_F(ToolLook, OnATerminalWideCellsAreShortenedByTheirWidth)
{
    std::string wide;
    for (int i = 0; i < 30; ++i)
        wide += "漢";
    WriteBytes(m_file, SmallDesignWith("<node id=\"5\"><mholeno contents=\"" + wide + "\"/></node>"));
    const std::vector<std::string> arguments = {"list", m_file, "node", "--columns", "mholeno,id", "--where", "id=5"};
    EXPECT_NE(RunTool(arguments).out.find(wide), std::string::npos) << "whole where it is no terminal";
    std::string shortened;
    for (int i = 0; i < 19; ++i)
        shortened += "漢";
    EXPECT_EQ(linesOf(RunToolOnTerminal(arguments, 200).out)[1], shortened + "…   5");
}

TEST_F(ToolLook, ShowTellsLinksAttributesAndWhatRefersToIt)
{
    EXPECT_EQ(RunTool({"show", m_file, "20"}).out, "route 20 \"1\"  (Route)\n"
                                                   "Links:\n"
                                                   "  webid      30  -> web 30 \"本町\"\n"
                                                   "  connectid   0\n"
                                                   "Attributes:\n"
                                                   "  routenum  1\n"
                                                   "Referred to by:\n"
                                                   "  span 10 \"1\"   .routeid\n"
                                                   "  route 21 \"2\"  .connectid\n");
}

TEST_F(ToolLook, ShowAsJsonTellsTheSame)
{
    EXPECT_EQ(JsonOf({"show", m_file, "10"}), json::parse(R"([{
        "tag": "span", "id": 10, "name": "1", "meaning": "Span",
        "links": {"uppernode": {"value": 2, "target": {"tag": "node", "id": 2, "name": "A-1"}},
                  "lowernode": {"value": 3, "target": {"tag": "node", "id": 3, "name": "A-2"}},
                  "routeid": {"value": 20, "target": {"tag": "route", "id": 20, "name": "1"}}},
        "attributes": {"spno": "1", "splength": "12.5"},
        "referredBy": [{"tag": "geometry", "id": 60, "name": "", "field": "gmobjid"}]}])"));
}

TEST_F(ToolLook, ShowSaysWhichLinksLeadToNothing)
{
    WriteBytes(m_file, SmallDesignWith("<areaset id=\"70\" asspanid=\"999\"/>"));
    EXPECT_NE(RunTool({"show", m_file, "70"}).out.find("asspanid  999  -> leads to nothing"), std::string::npos);
    EXPECT_EQ(JsonOf({"show", m_file, "70"})[0]["links"]["asspanid"], (json{{"value", 999}, {"target", nullptr}}));
}

TEST_F(ToolLook, ShowGivesTheWordOfADisposalType)
{
    EXPECT_NE(RunTool({"show", m_file, "30"}).out.find("disposaltype  2  Storm"), std::string::npos);
    EXPECT_NE(RunTool({"show", m_file, "50", "--lang", "ja"}).out.find("ppdispotype  3  合流"), std::string::npos);
}

TEST_F(ToolLook, ShowGivesEveryObjectOfAnIdThatTwoTypesHave)
{
    WriteBytes(m_file, SmallDesignWith("<pipe id=\"10\"><pename contents=\"P\"/></pipe>"));
    const json objects = JsonOf({"show", m_file, "10"});
    ASSERT_EQ(objects.size(), 2u);
    EXPECT_EQ(objects[0]["tag"], "span");
    EXPECT_EQ(objects[1]["tag"], "pipe");
}
