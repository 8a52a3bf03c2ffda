// rivelta update: what it moves, what it tells, and that it writes all or nothing.
#include "tool/SoundDesign.h"
#include "tool/ToolRunner.h"

using nlohmann::json;

namespace {

class ToolUpdate : public testing::Test {
protected:
    ToolResult Update(const std::string& bytes, std::vector<std::string> options = {})
    {
        WriteBytes(m_file, bytes);
        std::vector<std::string> arguments = {"update", m_file, m_out, "--lang", "en"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        return RunTool(arguments);
    }

    ToolFolder m_folder;
    const std::string m_file = m_folder / "design.xml";
    const std::string m_out = m_folder / "out.xml";
};

// The ground change further down, the lateral entered from below, the joint beyond its span.
const std::vector<Change> kEntered = {{"<glindist contents=\"15\"/>", "<glindist contents=\"35\"/>"},
                                      {"<ladistdir contents=\"0\"/>", "<ladistdir contents=\"1\"/>"},
                                      {"<vjindist contents=\"2\"/>", "<vjindist contents=\"11\"/>"}};

} // namespace

TEST_F(ToolUpdate, NothingMovesInADesignThatIsPlaced)
{
    const ToolResult result = Update(SoundDesign());
    EXPECT_EQ(result.exitCode, 0) << result.err;
    EXPECT_EQ(result.out, m_out + ": 0 record(s) placed anew, 0 value(s) changed\n");
}

TEST_F(ToolUpdate, TellsEachValueThatMoved)
{
    const ToolResult result = Update(SoundDesignWith(kEntered));
    EXPECT_EQ(result.exitCode, 0) << result.err;
    EXPECT_EQ(result.out, "glchange 50: glspanid=11 -> 12\n"
                          "lateral 53: ladist=4 -> 6.0000000000000\n"
                          "vjoint 54: vjspid=10 -> 0\n"
                          "glchange: 1 record(s) changed\n"
                          "lateral: 1 record(s) changed\n"
                          "vjoint: 1 record(s) changed\n" +
                              m_out + ": 3 record(s) placed anew, 3 value(s) changed\n");
    EXPECT_EQ(RunTool({"update", m_out, m_folder / "again.xml", "--json"}).Json()["moves"], json::array());
}

TEST_F(ToolUpdate, AsJsonTellsTheSame)
{
    std::vector<Change> changes = kEntered;
    changes.push_back({"<ladist contents=\"4\"/>", ""});
    const json report = Update(SoundDesignWith(changes), {"--json"}).Json();
    EXPECT_EQ(report, json::parse(R"({
        "input": ")" + m_file + R"(", "output": ")" +
                                  m_out + R"(", "dataver": 13,
        "webs": [{"tag": "web", "id": 30, "name": "West"}],
        "moves": [
            {"tag": "glchange", "id": 50, "name": "", "key": "glspanid", "old": "11", "new": "12"},
            {"tag": "lateral", "id": 53, "name": "", "key": "ladist", "old": null, "new": "6.0000000000000"},
            {"tag": "vjoint", "id": 54, "name": "", "key": "vjspid", "old": "10", "new": "0"}],
        "moved": {"glchange": 1, "lateral": 1, "vjoint": 1}})"));
}

TEST_F(ToolUpdate, LevelsFollowTheGround)
{
    // Relative heights: the ground change 0.5 m below the straight line, the lateral 1 m below the ground.
    const ToolResult result = Update(SoundDesignWith({{"<glhilevel contents=\"1\"/><glinhi contents=\"12.8\"/>",
                                                       "<glhilevel contents=\"0\"/><glinhi contents=\"0.5\"/>"},
                                                      {"<lahilevel contents=\"1\"/><lainhi contents=\"11.4\"/>",
                                                       "<lahilevel contents=\"0\"/><lainhi contents=\"1\"/>"}}));
    EXPECT_EQ(result.exitCode, 0) << result.err;
    EXPECT_NE(result.out.find("glchange 50: glelev=12.8 -> 12.5000000000000\n"), std::string::npos) << result.out;
    // The ground of 13 m less the outer height of the section, 0.22 m, less 1 m.
    EXPECT_NE(result.out.find("lateral 53: laelev=11.4 -> 11.78000"), std::string::npos) << result.out;
}

TEST_F(ToolUpdate, WebNarrowsItToOne)
{
    const std::string east =
        R"(<web id="60" disposaltype="0"><webname contents="East"/></web><route id="61" webid="60" connectid="0"/>
           <node id="7"/><node id="8"/><span id="62" uppernode="7" lowernode="8" routeid="61"><splength contents="9"/>
           </span><vjoint id="63" vjrouteid="61"><vjspnum contents="1"/><vjindist contents="2"/></vjoint>)";
    const json report = Update(SoundDesignWith(kEntered, east), {"--web", "East", "--json"}).Json();
    EXPECT_EQ(report["moved"], json::parse(R"({"vjoint": 1})"));
    EXPECT_EQ(report["moves"][0], json::parse(R"({"tag": "vjoint", "id": 63, "name": "", "key": "vjspid", "old": null,
                                                   "new": "62"})"));
    EXPECT_EQ(Update(SoundDesign(), {"--web", "Nowhere"}).exitCode, 2);
}

TEST_F(ToolUpdate, NothingIsWrittenWhenARecordCannotBePlaced)
{
    for (const std::string& design :
         {SoundDesignWith({{"<laspannum contents=\"1\"/>", "<laspannum contents=\"-1\"/>"}}),
          SoundDesignWith(R"(<route id="60" webid="30" connectid="0"/><lateral id="61" larouteid="60"/>)")}) {
        const ToolResult result = Update(design);
        EXPECT_EQ(result.exitCode, 1);
        EXPECT_TRUE(result.Tells("web 30 \"West\": not all 'lateral' records can be placed; 'rivelta check"))
            << result.err;
        EXPECT_EQ(m_folder.Names(), std::vector<std::string>{"design.xml"});
    }
}

TEST_F(ToolUpdate, StandardOutputGetsTheFileAlone)
{
    WriteBytes(m_file, SoundDesignWith(kEntered));
    const ToolResult result = RunTool({"update", m_file, "-"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.out.rfind("<?xml", 0), 0u);
    EXPECT_EQ(RunTool({"update", m_file, "-", "--json"}).exitCode, 2);
}

TEST(ToolUpdateOfRealNetworks, WhatIsPlacedStaysInItsPlace)
{
    const ToolFolder folder;
    for (const char* const name : {"bellinge_small", "frazioni", "nhieu_loc", "nodes1138", "orificio", "washington"}) {
        const std::string file = std::string(RIVELTA_SOURCE_DIR "/../shared/data/") + name + ".xml";
        if (!std::filesystem::exists(file)) GTEST_SKIP() << "no designs beside the checkout";
        const ToolResult result = RunTool({"update", file, folder / "out.xml", "--json"});
        EXPECT_EQ(result.exitCode, 0) << name << result.err;
        EXPECT_EQ(result.Json()["moves"], json::array()) << name;
    }
}
