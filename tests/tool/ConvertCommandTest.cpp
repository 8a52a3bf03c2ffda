// rivelta convert: that nothing is lost, in what is written and in what was there before.
#include "tool/ToolRunner.h"

#include <csignal>
#include <cstdlib>

#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

class ToolConvert : public testing::Test {
protected:
    ToolConvert() { WriteBytes(m_file, SmallDesign()); }

    std::string Converted(const std::string& from, const std::string& name, std::vector<std::string> options = {})
    {
        std::vector<std::string> arguments = {"convert", from, m_folder / name};
        arguments.insert(arguments.end(), options.begin(), options.end());
        const ToolResult result = RunTool(arguments);
        EXPECT_EQ(result.exitCode, 0) << result.err;
        EXPECT_EQ(result.err, "");
        return m_folder / name;
    }

    // The temporary file that stands in for the output while it is written; empty when there is none.
    std::string WorkFile() const
    {
        for (const std::string& name : m_folder.Names())
            if (name != "design.xml" && name != "out.xml" && name != "whole.xml") return m_folder / name;
        return {};
    }

    ToolFolder m_folder;
    const std::string m_file = m_folder / "design.xml";
    const std::string m_out = m_folder / "out.xml";
};

mode_t modeOf(const std::string& path)
{
    struct stat status = {};
    EXPECT_EQ(stat(path.c_str(), &status), 0);
    return status.st_mode & 07777;
}

} // namespace

TEST_F(ToolConvert, KeepsTheVersionOfTheInputUnlessOneIsAskedFor)
{
    EXPECT_EQ(ReadBytes(Converted(m_file, "a.xml")).rfind("<?xml version = \"1.0\" encoding = \"SHIFT-JIS\"?>\n", 0),
              0u);
    const std::string fourteen = Converted(m_file, "b.xml", {"--dataver", "14"});
    EXPECT_EQ(ReadBytes(fourteen).substr(0, 4), std::string("\xFF\xFE<\0", 4));
    EXPECT_EQ(ReadBytes(Converted(fourteen, "c.xml")), ReadBytes(fourteen));
}

TEST_F(ToolConvert, ThereAndBackGivesTheSameBytes)
{
    const std::string a14 = Converted(m_file, "a14.xml", {"--dataver", "14"});
    const std::string a13 = Converted(a14, "a13.xml", {"--dataver", "13"});
    const std::string b14 = Converted(a13, "b14.xml", {"--dataver", "14"});
    const std::string b13 = Converted(b14, "b13.xml", {"--dataver", "13"});
    EXPECT_EQ(ReadBytes(a14), ReadBytes(b14));
    EXPECT_EQ(ReadBytes(a13), ReadBytes(b13));
    EXPECT_NE(ReadBytes(a13), ReadBytes(a14));
}

TEST_F(ToolConvert, KeepsEveryRecordAndValue)
{
    for (const char* const version : {"13", "14"}) {
        const std::string out = Converted(m_file, std::string("kept") + version, {"--dataver", version});
        for (const char* const tag : {"project", "node", "span", "route", "web", "pipe", "geometry", "usedarea"})
            EXPECT_EQ(RunTool({"list", out, tag, "--json"}).Json(), RunTool({"list", m_file, tag, "--json"}).Json())
                << tag << " " << version;
    }
}

TEST_F(ToolConvert, KeepsWebsOfOneName)
{
    WriteBytes(m_file, SmallDesignWith("<web id=\"31\" disposaltype=\"0\"><webname contents=\"本町\"/></web>"));
    const ToolResult result = RunTool({"convert", m_file, m_out});
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_TRUE(result.Tells("web ID=31")) << result.err;
    EXPECT_EQ(RunTool({"list", m_out, "web", "--json"}).Json(), RunTool({"list", m_file, "web", "--json"}).Json());
}

TEST_F(ToolConvert, TellsHowManyRecordsWereWritten)
{
    EXPECT_EQ(RunTool({"convert", m_file, m_out}).out, m_out + ": 12 records written in data version 13\n");
    const auto json = RunTool({"convert", m_file, m_out, "--dataver", "14", "--json"}).Json();
    EXPECT_EQ(json, (nlohmann::json{{"input", m_file}, {"output", m_out}, {"dataver", 14}, {"objects", 12}}));
}

TEST_F(ToolConvert, FileWithoutAVersionGetsTheOneOfItsForm)
{
    WriteBytes(m_file, "<pipedata><node id=\"1\"/></pipedata>");
    const ToolResult result = RunTool({"convert", m_file, m_out, "--json"});
    EXPECT_EQ(result.Json()["dataver"], 13);
    EXPECT_TRUE(result.Tells("does not tell its data version; 13 is taken")) << result.err;
    WriteBytes(m_file, "<pdroot><pipedata><node id=\"1\"/></pipedata></pdroot>");
    EXPECT_EQ(RunTool({"convert", m_file, m_out, "--json"}).Json()["dataver"], 14);
}

TEST_F(ToolConvert, InputAndOutputMayBeTheSameFile)
{
    const std::string apart = ReadBytes(Converted(m_file, "apart.xml", {"--dataver", "14"}));
    Converted(m_file, "design.xml", {"--dataver", "14"});
    EXPECT_EQ(ReadBytes(m_file), apart);
}

TEST_F(ToolConvert, RelativeNamesAreThoseOfTheFolderWhereItRuns)
{
    fs::create_directory(m_folder / "sub");
    const std::string command = "cd '" + m_folder.Path().string() +
                                "/sub' && '" RIVELTA_TOOL_PATH "' convert ../design.xml here.xml >/dev/null";
    EXPECT_EQ(std::system(command.c_str()), 0);
    EXPECT_TRUE(fs::exists(m_folder / "sub/here.xml"));
}

TEST_F(ToolConvert, NamesWithBlanksAndJapaneseLettersWork)
{
    const std::string from = m_folder / "設計 #1 %20?.xml";
    fs::rename(m_file, from);
    EXPECT_EQ(ReadBytes(Converted(from, "結果 & 写し.xml")), ReadBytes(Converted(from, "plain.xml")));
}

TEST_F(ToolConvert, StandardOutputGetsTheSameBytesAndNothingElse)
{
    const std::string expected = ReadBytes(Converted(m_file, "file.xml", {"--dataver", "14"}));
    ToolCall call;
    call.arguments = {"convert", "-", "-", "--dataver", "14"};
    call.input = SmallDesign();
    const ToolResult result = RunTool(call);
    EXPECT_EQ(result.exitCode, 0) << result.err;
    EXPECT_EQ(result.out, expected);
    EXPECT_EQ(result.err, "");
}

TEST_F(ToolConvert, PipeAsOutputGetsTheSameBytes)
{
    const std::string expected = ReadBytes(Converted(m_file, "file.xml"));
    const std::string fifo = m_folder / "fifo";
    ASSERT_EQ(mkfifo(fifo.c_str(), 0600), 0);
    ToolCall call;
    call.arguments = {"convert", m_file, fifo};
    ToolProcess process(call);
    EXPECT_EQ(ReadBytes(fifo), expected);
    EXPECT_EQ(process.Wait().exitCode, 0);
    struct stat status = {};
    ASSERT_EQ(lstat(fifo.c_str(), &status), 0);
    EXPECT_TRUE(S_ISFIFO(status.st_mode)) << "the pipe is still there";
}

TEST_F(ToolConvert, FullDeviceIsCode4)
{
    const ToolResult result = RunTool({"convert", m_file, "/dev/full"});
    EXPECT_EQ(result.exitCode, 4);
    EXPECT_TRUE(result.Tells("rivelta: /dev/full: could not be written: No space left")) << result.err;
}

TEST_F(ToolConvert, FolderAsOutputIsCode4)
{
    fs::create_directory(m_out);
    const ToolResult result = RunTool({"convert", m_file, m_out});
    EXPECT_EQ(result.exitCode, 4);
    EXPECT_TRUE(result.Tells("rivelta: " + m_out + ": could not be written")) << result.err;
    EXPECT_TRUE(fs::is_empty(m_out));
}

TEST_F(ToolConvert, MissingFolderIsCode4)
{
    const ToolResult result = RunTool({"convert", m_file, m_folder / "none/out.xml"});
    EXPECT_EQ(result.exitCode, 4);
    EXPECT_TRUE(result.Tells("none")) << result.err;
}

TEST_F(ToolConvert, FolderWithoutTheRightToWriteKeepsTheOldFile)
{
    fs::create_directory(m_folder / "locked");
    const std::string out = m_folder / "locked/out.xml";
    WriteBytes(out, "old");
    chmod(out.c_str(), 0666);
    chmod((m_folder / "locked").c_str(), 0555);
    ToolCall call;
    call.arguments = {"convert", m_file, out};
    call.asNobody = true;
    const ToolResult result = RunTool(call);
    if (result.exitCode == 126 || result.exitCode == 127) GTEST_SKIP() << "others may not run the tool here";
    EXPECT_EQ(result.exitCode, 4);
    EXPECT_TRUE(result.Tells("What was there before is unchanged")) << result.err;
    EXPECT_EQ(ReadBytes(out), "old");
}

TEST_F(ToolConvert, FileWithoutTheRightToWriteIsNotReplaced)
{
    fs::create_directory(m_folder / "open");
    chmod((m_folder / "open").c_str(), 0777);
    const std::string out = m_folder / "open/out.xml";
    WriteBytes(out, "old");
    chmod(out.c_str(), 0444);
    ToolCall call;
    call.arguments = {"convert", m_file, out};
    call.asNobody = true;
    const ToolResult result = RunTool(call);
    if (result.exitCode == 126 || result.exitCode == 127) GTEST_SKIP() << "others may not run the tool here";
    EXPECT_EQ(result.exitCode, 4) << result.err;
    EXPECT_EQ(ReadBytes(out), "old");
}

TEST_F(ToolConvert, SymbolicLinkStaysAndItsFileIsReplaced)
{
    WriteBytes(m_folder / "real.xml", "old");
    fs::create_symlink("real.xml", m_out);
    Converted(m_file, "out.xml");
    EXPECT_TRUE(fs::is_symlink(m_out));
    EXPECT_EQ(ReadBytes(m_folder / "real.xml"), ReadBytes(Converted(m_file, "plain.xml")));
}

TEST_F(ToolConvert, ModeBitsAreKept)
{
    for (const mode_t mode : {0600u, 0640u, 0664u, 0755u}) {
        WriteBytes(m_out, "old");
        chmod(m_out.c_str(), mode);
        Converted(m_file, "out.xml");
        EXPECT_EQ(modeOf(m_out), mode);
    }
}

TEST_F(ToolConvert, FailedReadingKeepsTheOldFile)
{
    WriteBytes(m_file, SmallDesign().substr(0, 900));
    WriteBytes(m_out, "old");
    EXPECT_EQ(RunTool({"convert", m_file, m_out}).exitCode, 3);
    EXPECT_EQ(ReadBytes(m_out), "old");
}

TEST_F(ToolConvert, ValueThatNoFileCanHoldIsToldWithItsRecordAndKeepsTheOldFile)
{
    std::string design = SmallDesignWith("<node id=\"77\"><mholeno contents=\"&#1;\"/></node>");
    design.replace(design.find("1.0"), 3, "1.1");
    WriteBytes(m_file, design);
    WriteBytes(m_out, "old");
    const ToolResult result = RunTool({"convert", m_file, m_out});
    EXPECT_EQ(result.exitCode, 4);
    EXPECT_TRUE(result.Tells("77")) << result.err;
    EXPECT_TRUE(result.Tells("Change them and try again")) << result.err;
    EXPECT_EQ(ReadBytes(m_out), "old");

    const ToolResult streamed = RunTool({"convert", m_file, "-"});
    EXPECT_EQ(streamed.exitCode, 4);
    EXPECT_EQ(streamed.out, "") << "no half a file";
}

TEST_F(ToolConvert, DiskThatFillsUpKeepsTheOldFileAndLeavesNothingBehind)
{
    WriteBytes(m_file, NodesDesign(3000));
    WriteBytes(m_out, "old");
    // A limit on the size of files, in blocks of 512 bytes, fails as a full disk does.
    const std::string command = "( ulimit -f 100; trap '' XFSZ; '" RIVELTA_TOOL_PATH "' convert '" + m_file + "' '" +
                                m_out + "' 2>'" + m_folder.Path().string() + "/whole.xml' )";
    const int status = std::system(command.c_str());
    EXPECT_EQ(WEXITSTATUS(status), 4);
    EXPECT_NE(ReadBytes(m_folder / "whole.xml").find("could not be written"), std::string::npos);
    EXPECT_EQ(ReadBytes(m_out), "old");
    EXPECT_EQ(WorkFile(), "");
}

TEST_F(ToolConvert, KillAtAnyMomentLeavesTheOldOrTheNewFile)
{
    WriteBytes(m_file, NodesDesign(8000));
    const std::string whole = ReadBytes(Converted(m_file, "whole.xml", {"--dataver", "14"}));
    constexpr unsigned kKills = 11;
    unsigned killed = 0;
    for (unsigned kill = 0; kill < kKills; ++kill) {
        WriteBytes(m_out, "old");
        ToolCall call;
        call.arguments = {"convert", m_file, m_out, "--dataver", "14"};
        ToolProcess process(call);
        // The last of them comes while the whole file is being put in its place.
        process.WaitUntil([&] {
            std::error_code error;
            const std::string work = WorkFile();
            const auto size = work.empty() ? 0 : fs::file_size(work, error);
            return !work.empty() && !error && size >= whole.size() * kill / (kKills - 1);
        });
        process.Send(SIGKILL);
        killed += process.Wait().signal == SIGKILL ? 1u : 0u;
        const std::string left = ReadBytes(m_out);
        EXPECT_TRUE(left == "old" || left == whole) << "kill " << kill << ": " << left.size() << " bytes";
        if (const std::string work = WorkFile(); !work.empty()) fs::remove(work);
    }
    EXPECT_GT(killed, 0u);
    // What a killed run left behind is in nobody's way.
    EXPECT_EQ(ReadBytes(Converted(m_file, "out.xml", {"--dataver", "14"})), whole);
}

TEST_F(ToolConvert, InterruptWhileReadingIsCode3AndKeepsTheOldFile)
{
    WriteBytes(m_file, NodesDesign(40000));
    for (const int signal : {SIGINT, SIGTERM}) {
        WriteBytes(m_out, "old");
        ToolCall call;
        call.arguments = {"convert", m_file, m_out};
        ToolProcess process(call);
        ASSERT_TRUE(process.WaitUntil([&] { return process.Handles(signal); }));
        process.Send(signal);
        const ToolResult result = process.Wait();
        EXPECT_EQ(result.exitCode, 3) << result.err << result.signal;
        EXPECT_TRUE(result.Tells("cancelled while reading")) << result.err;
        EXPECT_EQ(ReadBytes(m_out), "old");
        EXPECT_EQ(WorkFile(), "");
    }
}

TEST_F(ToolConvert, InterruptWhileWritingIsCode4KeepsTheOldFileAndLeavesNothingBehind)
{
    WriteBytes(m_file, NodesDesign(20000));
    const std::string whole = ReadBytes(Converted(m_file, "whole.xml"));
    // The tool may be done before the signal arrives: then the new file stands, and it is tried again.
    bool isCancelled = false;
    for (int attempt = 0; attempt < 20 && !isCancelled; ++attempt) {
        WriteBytes(m_out, "old");
        ToolCall call;
        call.arguments = {"convert", m_file, m_out};
        ToolProcess process(call);
        process.WaitUntil([&] { return !WorkFile().empty(); });
        process.Send(SIGINT);
        const ToolResult result = process.Wait();
        isCancelled = result.exitCode == 4;
        ASSERT_TRUE(isCancelled || result.exitCode == 0) << result.err;
        EXPECT_EQ(result.Tells("cancelled while writing"), isCancelled) << result.err;
        EXPECT_TRUE(ReadBytes(m_out) == (isCancelled ? "old" : whole));
        EXPECT_EQ(WorkFile(), "");
    }
    EXPECT_TRUE(isCancelled);
}

TEST_F(ToolConvert, InterruptThatTheCallerIgnoresStaysIgnored)
{
    const std::string command =
        "trap '' INT; '" RIVELTA_TOOL_PATH "' convert '" + m_file + "' '" + m_out + "' >/dev/null & wait $!";
    EXPECT_EQ(std::system(command.c_str()), 0);
    EXPECT_TRUE(fs::exists(m_out));
}

// Designs of real cities, when they lie beside the checkout.
TEST_F(ToolConvert, RealFilesAreToldOfConvertedAndConvertedAgainToTheSameBytes)
{
    const fs::path data = fs::path(RIVELTA_SOURCE_DIR) / "../shared/data";
    if (!fs::is_directory(data)) GTEST_SKIP() << "no designs beside the checkout";
    const fs::path checker = data / "../tools/check_pipedata.py";
    const bool canCheck = fs::exists(checker) && std::system("command -v python3 >/dev/null") == 0;
    int count = 0;
    for (const auto& entry : fs::directory_iterator(data)) {
        if (entry.path().extension() != ".xml") continue;
        ++count;
        const std::string file = entry.path().string();
        SCOPED_TRACE(file);
        const ToolResult info = RunTool({"info", file, "--json"});
        ASSERT_EQ(info.exitCode, 0) << info.err;
        EXPECT_GT(info.Json()["total"]["spans"], 0);
        const std::string first = Converted(file, "first.xml");
        const std::string second = Converted(first, "second.xml");
        EXPECT_TRUE(ReadBytes(first) == ReadBytes(second));
        if (canCheck) {
            const std::string command = "python3 '" + checker.string() + "' --allow-loops '" + first + "' >'" +
                                        (m_folder / "report") + "' 2>&1";
            EXPECT_EQ(std::system(command.c_str()), 0) << ReadBytes(m_folder / "report");
        }
    }
    EXPECT_GT(count, 0);
}
