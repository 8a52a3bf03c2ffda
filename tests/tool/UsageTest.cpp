// How the tool is called: help, version, wrong usage, languages, what its exit codes say.
#include "tool/ToolRunner.h"

using testing::Test;

namespace {

const std::vector<std::string> kCommands = {"info", "list", "show", "tree", "trace", "edit", "convert"};

class ToolUsage : public Test {
protected:
    ToolUsage() { WriteBytes(m_file, SmallDesign()); }

    ToolFolder m_folder;
    const std::string m_file = m_folder / "design.xml";
};

} // namespace

TEST_F(ToolUsage, VersionIsToldOnStandardOutput)
{
    const ToolResult result = RunTool({"--version"});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.out.rfind("rivelta ", 0), 0u) << result.out;
    EXPECT_EQ(result.err, "");
}

TEST_F(ToolUsage, HelpNamesEveryCommand)
{
    for (const std::vector<std::string>& arguments :
         {std::vector<std::string>{"help"}, {"--help"}, {"-h"}, {"help", "help"}, {"help", "--lang", "en"}}) {
        const ToolResult result = RunTool(arguments);
        EXPECT_EQ(result.exitCode, 0);
        for (const std::string& command : kCommands)
            EXPECT_NE(result.out.find("\n  " + command + " "), std::string::npos) << result.out;
    }
}

TEST_F(ToolUsage, HelpOfACommandShowsAnExampleInBothWaysOfAsking)
{
    for (const std::string& command : kCommands) {
        const ToolResult result = RunTool({"help", command});
        EXPECT_EQ(result.exitCode, 0);
        EXPECT_NE(result.out.find("Usage: rivelta " + command + " "), std::string::npos) << result.out;
        EXPECT_NE(result.out.find("Example:\n  rivelta " + command + " "), std::string::npos) << result.out;
        EXPECT_EQ(RunTool({command, "--help"}).out, result.out);
    }
}

TEST_F(ToolUsage, HelpIsInTheChosenLanguage)
{
    EXPECT_NE(RunTool({"help", "info", "--lang", "ja"}).out.find("使い方: rivelta info"), std::string::npos);
    EXPECT_NE(RunTool({"info", "--lang=ja", "--help"}).out.find("例:\n  rivelta info"), std::string::npos);
}

TEST_F(ToolUsage, LanguageIsTheSystemsUnlessOneIsChosen)
{
    const auto messageWith = [&](std::map<std::string, std::string> environment, std::vector<std::string> arguments) {
        ToolCall call;
        call.arguments = std::move(arguments);
        call.environment = std::move(environment);
        return RunTool(call).err;
    };
    const std::string english = "rivelta: 'x' is no object id; ids are whole numbers\n";
    const std::string japanese = "rivelta: 'x' は ID ではありません。ID は整数です\n";
    EXPECT_EQ(messageWith({}, {"show", m_file, "x"}), english);
    EXPECT_EQ(messageWith({{"LANG", "ja_JP.UTF-8"}}, {"show", m_file, "x"}), japanese);
    EXPECT_EQ(messageWith({{"LANG", "ja_JP.UTF-8"}}, {"show", "--lang", "en", m_file, "x"}), english);
    EXPECT_EQ(messageWith({{"LC_ALL", "de_DE.UTF-8"}, {"LANG", "ja_JP.UTF-8"}}, {"show", m_file, "x"}), english);
    EXPECT_EQ(messageWith({}, {"--lang", "ja", "show", m_file, "x"}), japanese);
}

TEST_F(ToolUsage, MessagesOfTheLibraryAreInTheChosenLanguageToo)
{
    WriteBytes(m_file, SmallDesignWith("<node id=\"abc\"/>"));
    EXPECT_TRUE(RunTool({"info", m_file, "--lang", "en"}).Tells("data is illegal"));
    EXPECT_TRUE(RunTool({"info", m_file, "--lang", "ja"}).Tells("データが不正です"));
}

TEST_F(ToolUsage, WrongUsageEndsWithCode2AndSaysWhatIsWrong)
{
    const struct {
        std::vector<std::string> arguments;
        std::string message;
    } cases[] = {
        {{}, "no command given"},
        {{"inof"}, "there is no command 'inof'\nrivelta: did you mean info?"},
        {{"help", "xyzzy"}, "there is no command 'xyzzy'"},
        {{"info"}, "missing: FILE"},
        {{"list", m_file}, "missing: TYPE"},
        {{"show", m_file}, "missing: ID"},
        {{"convert", m_file}, "missing: OUT"},
        {{"tree"}, "missing: FILE"},
        {{"edit", m_file}, "missing: --script"},
        {{"edit", "-", "--script", "-"}, "cannot both be - (standard input)"},
        {{"edit", m_file, "--script", m_file, "-o", "-", "--json"}, "--json cannot be combined"},
        {{"trace", m_file, "--down"}, "give either --from SPAN or --node NODE"},
        {{"trace", m_file, "--from", "10", "--node", "2", "--down"}, "give either --from SPAN or --node NODE"},
        {{"trace", m_file, "--from", "10"}, "give either --up or --down"},
        {{"trace", m_file, "--from", "10", "--up", "--down"}, "give either --up or --down"},
        {{"trace", m_file, "--from", "main", "--down"}, "'main' is no object id"},
        {{"trace", m_file, "--from", "9999", "--down"}, "there is no 'span' record with ID=9999"},
        {{"trace", m_file, "--from", "2", "--down"}, "there is no 'span' record with ID=2; 'rivelta list"},
        {{"trace", m_file, "--node", "10", "--up"}, "there is no 'node' record with ID=10"},
        {{"tree", m_file, "--web", "本待"}, "there is no web '本待'\ndid you mean 本町?"},
        {{"tree", m_file, "--web", "99"}, "shows the webs"},
        {{"info", m_file, "more"}, "not understood: more"},
        {{"info", m_file, "--colour"}, "not understood: --colour"},
        {{"info", m_file, "--lang", "fr"}, "--lang"},
        {{"convert", m_file, m_folder / "out.xml", "--dataver", "15"}, "--dataver"},
        {{"convert", m_file, m_folder / "out.xml", "--dataver", "x"}, "--dataver"},
        {{"convert", m_file, "-", "--json"}, "--json cannot be combined"},
        {{"list", m_file, "spam"}, "there is no record type 'spam'\ndid you mean span"},
        {{"list", m_file, "rout"}, "did you mean route"},
        {{"list", m_file, "zzzzzzzz"}, "'rivelta info FILE' names the types"},
        {{"list", m_file, "span", "--where", "routeid"}, "--where routeid: write KEY=VALUE"},
        {{"show", m_file, "12a"}, "'12a' is no object id"},
        {{"show", m_file, "9999"}, m_file + ": there is no object with ID=9999"},
    };
    for (const auto& test : cases) {
        const ToolResult result = RunTool(test.arguments);
        EXPECT_EQ(result.exitCode, 2) << result.err;
        EXPECT_TRUE(result.Tells(test.message)) << test.message << "\n" << result.err;
        EXPECT_EQ(result.out, "");
    }
    EXPECT_EQ(m_folder.Names(), std::vector<std::string>{"design.xml"});
}

TEST_F(ToolUsage, WrongUsageIsToldBeforeTheFileIsRead)
{
    EXPECT_EQ(RunTool({"list", m_folder / "nofile", "spam"}).exitCode, 2);
    EXPECT_EQ(RunTool({"show", m_folder / "nofile", "x"}).exitCode, 2);
}

TEST_F(ToolUsage, InputThatCannotBeReadEndsWithCode3AndNamesTheFile)
{
    const std::string script = m_folder / "script.json";
    WriteBytes(script, R"({"operations": []})");
    WriteBytes(m_folder / "empty", "");
    WriteBytes(m_folder / "cut", SmallDesign().substr(0, 700));
    WriteBytes(m_folder / "noise", std::string(500, '\xA7'));
    WriteBytes(m_folder / "double", SmallDesignWith("<node id=\"2\"/>"));
    WriteBytes(m_folder / "tag", SmallDesignWith("<spanx id=\"77\"/>"));
    WriteBytes(m_folder / "icp", SmallDesignWith("<icpinq id=\"78\" icnodeid=\"2\"/>"));
    const struct {
        std::string file;
        std::string message;
    } cases[] = {
        {"absent", "cannot be opened: No such file"},
        {"", "is a folder"},
        {"empty", "could not be read"},
        {"cut", "is damaged at this place"},
        {"noise", "could not be read"},
        {"double", "node ID=2 data is illegal.\nCorrect or remove this record"},
        {"tag", "spanx ID=77 data is illegal.\n'spanx' is no record type"},
        {"icp",
         "icpinq ID=78 data is illegal.\nRecords 'icpinq' are written by a save but no file with them can be read"},
    };
    for (const auto& test : cases)
        for (const std::string& command : kCommands) {
            const std::string file = m_folder / test.file;
            std::vector<std::string> arguments = {command, file};
            if (command == "list") arguments.emplace_back("span");
            if (command == "show") arguments.emplace_back("10");
            if (command == "trace") arguments.insert(arguments.end(), {"--from", "10", "--up"});
            if (command == "edit") arguments.insert(arguments.end(), {"--script", script, "-o", m_folder / "out.xml"});
            if (command == "convert") arguments.emplace_back(m_folder / "out.xml");
            const ToolResult result = RunTool(arguments);
            EXPECT_EQ(result.exitCode, 3) << test.file << " " << command;
            EXPECT_TRUE(result.Tells("rivelta: " + file + ": ")) << result.err;
            EXPECT_TRUE(result.Tells(test.message)) << test.message << "\n" << result.err;
            EXPECT_EQ(result.out, "");
        }
    EXPECT_FALSE(std::filesystem::exists(m_folder / "out.xml"));
}

TEST_F(ToolUsage, FileWithoutTheRightToReadIsToldOf)
{
    std::filesystem::permissions(m_file, std::filesystem::perms::none);
    ToolCall call;
    call.arguments = {"info", m_file};
    call.asNobody = true;
    const ToolResult result = RunTool(call);
    if (result.exitCode == 126 || result.exitCode == 127) GTEST_SKIP() << "others may not run the tool here";
    EXPECT_EQ(result.exitCode, 3);
    EXPECT_TRUE(result.Tells("Permission denied")) << result.err;
}

TEST_F(ToolUsage, ControlCharactersOfAFileDoNotReachTheTerminalThroughMessages)
{
    const ToolResult result = RunTool({"list", m_file, "\x1b[31mred"});
    EXPECT_EQ(result.exitCode, 2);
    EXPECT_EQ(result.err.find('\x1b'), std::string::npos);
    EXPECT_TRUE(result.Tells("\\x1b[31mred"));
}

TEST_F(ToolUsage, GivenDefaultAttributesMustBeReadable)
{
    WriteBytes(m_folder / "defaults.xml", "no xml");
    const ToolResult result = RunTool({"info", m_file, "--defaults", m_folder / "defaults.xml"});
    EXPECT_EQ(result.exitCode, 3);
    EXPECT_TRUE(result.Tells(m_folder / "defaults.xml")) << result.err;
    EXPECT_EQ(RunTool({"info", m_file, "--defaults", m_folder / "absent.xml"}).exitCode, 3);
    EXPECT_EQ(RunTool({"info", m_file, "--defaults", RIVELTA_SOURCE_DIR "/samples/default_attributes.xml"}).exitCode,
              0);
}

TEST_F(ToolUsage, FullDeviceBehindStandardOutputIsCode4)
{
    for (const std::vector<std::string>& arguments : {std::vector<std::string>{"info", m_file},
                                                      {"list", m_file, "node"},
                                                      {"show", m_file, "10"},
                                                      {"list", m_file, "node", "--json"},
                                                      {"tree", m_file},
                                                      {"trace", m_file, "--from", "10", "--down"},
                                                      {"check", m_file},
                                                      {"update", m_file, "-"},
                                                      {"convert", m_file, "-"},
                                                      {"help"},
                                                      {"--version"}}) {
        ToolCall call;
        call.arguments = arguments;
        call.output = "/dev/full";
        const ToolResult result = RunTool(call);
        EXPECT_EQ(result.exitCode, 4) << arguments.front();
        EXPECT_TRUE(result.Tells("standard output: could not be written: No space left")) << result.err;
    }
}

TEST_F(ToolUsage, ClosedPipeBehindStandardOutputIsCode4WithoutAMessage)
{
    WriteBytes(m_file, NodesDesign(3000));
    for (const std::vector<std::string>& arguments : {std::vector<std::string>{"list", m_file, "node"},
                                                      {"list", m_file, "node", "--json"},
                                                      {"convert", m_file, "-"}}) {
        ToolCall call;
        call.arguments = arguments;
        call.outputIsClosedPipe = true;
        const ToolResult result = RunTool(call);
        EXPECT_EQ(result.exitCode, 4) << result.signal;
        EXPECT_EQ(result.err, "");
    }
}

TEST_F(ToolUsage, InputMayComeFromStandardInput)
{
    ToolCall call;
    call.arguments = {"info", "-", "--json"};
    call.input = SmallDesign();
    const ToolResult result = RunTool(call);
    EXPECT_EQ(result.exitCode, 0) << result.err;
    EXPECT_EQ(result.Json()["file"], "standard input");
    EXPECT_EQ(result.Json()["objects"], 12);

    call.input = "no xml";
    const ToolResult refused = RunTool(call);
    EXPECT_EQ(refused.exitCode, 3);
    EXPECT_TRUE(refused.Tells("rivelta: standard input: could not be read")) << refused.err;
}

TEST_F(ToolUsage, ProgressIsNotDrawnWithoutATerminal)
{
    WriteBytes(m_file, NodesDesign(8000));
    ASSERT_GT(std::filesystem::file_size(m_file), 1'000'001u);
    EXPECT_EQ(RunTool({"info", m_file}).err, "");
}

TEST_F(ToolUsage, ProgressIsDrawnOnATerminalForALargeFileOnly)
{
    EXPECT_EQ(RunToolOnTerminal({"convert", m_file, m_folder / "small.xml"}, 80).out.find("%"), std::string::npos);
    WriteBytes(m_file, NodesDesign(8000));
    EXPECT_NE(RunToolOnTerminal({"convert", m_file, m_folder / "large.xml"}, 80).out.find("%"), std::string::npos);
}
