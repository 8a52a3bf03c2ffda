#include "tool/ToolRunner.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <sstream>

#include <fcntl.h>
#include <pty.h>
#include <sched.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr unsigned kNobody = 65534;

std::vector<char*> pointersTo(std::vector<std::string>& texts)
{
    std::vector<char*> pointers;
    for (std::string& text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);
    return pointers;
}

std::vector<std::string> commandLine(const std::vector<std::string>& arguments)
{
    std::vector<std::string> line = {RIVELTA_TOOL_PATH};
    line.insert(line.end(), arguments.begin(), arguments.end());
    return line;
}

std::vector<std::string> environmentWith(const std::map<std::string, std::string>& additions)
{
    std::vector<std::string> result;
    for (char** entry = environ; *entry; ++entry) {
        const std::string text = *entry;
        const bool isLanguage =
            text.rfind("LC_", 0) == 0 || text.rfind("LANG", 0) == 0 || text.rfind("RIVELTA_LANG", 0) == 0;
        if (!isLanguage) result.push_back(text);
    }
    for (const auto& [name, value] : additions)
        result.push_back(name + "=" + value);
    return result;
}

std::string contentOf(std::FILE* file)
{
    std::string bytes;
    std::rewind(file);
    char block[4096];
    while (const std::size_t count = std::fread(block, 1, sizeof block, file))
        bytes.append(block, count);
    return bytes;
}

ToolResult resultOf(int status)
{
    ToolResult result;
    if (WIFEXITED(status)) result.exitCode = WEXITSTATUS(status);
    if (WIFSIGNALED(status)) result.signal = WTERMSIG(status);
    return result;
}

} // namespace

ToolFolder::ToolFolder()
{
    std::string pattern = (std::filesystem::temp_directory_path() / "rivelta-tool-XXXXXX").string();
    if (!mkdtemp(pattern.data())) throw std::runtime_error("no temporary folder");
    m_path = pattern;
    chmod(pattern.c_str(), 0755);
}

ToolFolder::~ToolFolder()
{
    std::error_code ignored;
    for (const auto& entry : std::filesystem::directory_iterator(m_path, ignored))
        if (entry.is_directory(ignored) && !entry.is_symlink(ignored)) chmod(entry.path().c_str(), 0755);
    std::filesystem::remove_all(m_path, ignored);
}

std::vector<std::string> ToolFolder::Names() const
{
    std::vector<std::string> names;
    for (const auto& entry : std::filesystem::directory_iterator(m_path))
        names.push_back(entry.path().filename().string());
    std::sort(names.begin(), names.end());
    return names;
}

nlohmann::json ToolResult::Json() const
{
    return nlohmann::json::parse(out);
}

ToolProcess::ToolProcess(const ToolCall& call) : m_out(std::tmpfile()), m_err(std::tmpfile())
{
    std::FILE* const input = std::tmpfile();
    std::fwrite(call.input.data(), 1, call.input.size(), input);
    std::rewind(input);
    std::vector<std::string> line = commandLine(call.arguments);
    std::vector<std::string> environment = environmentWith(call.environment);
    const std::vector<char*> arguments = pointersTo(line);
    const std::vector<char*> variables = pointersTo(environment);

    int pipeEnds[2] = {-1, -1};
    if (call.outputIsClosedPipe && pipe(pipeEnds) == 0) close(pipeEnds[0]);

    m_id = fork();
    if (m_id == 0) {
        // Only calls that a child of a threaded process may make.
        int out = fileno(m_out);
        if (!call.output.empty()) out = open(call.output.c_str(), O_WRONLY | O_CREAT, 0666);
        if (call.outputIsClosedPipe) out = pipeEnds[1];
        dup2(fileno(input), STDIN_FILENO);
        dup2(out, STDOUT_FILENO);
        dup2(fileno(m_err), STDERR_FILENO);
        if (call.asNobody && geteuid() == 0 && (setgid(kNobody) != 0 || setuid(kNobody) != 0)) _exit(126);
        execve(arguments[0], arguments.data(), variables.data());
        _exit(127);
    }
    std::fclose(input);
    if (pipeEnds[1] >= 0) close(pipeEnds[1]);
}

ToolProcess::~ToolProcess()
{
    if (!m_hasEnded) {
        kill(m_id, SIGKILL);
        waitpid(m_id, &m_status, 0);
    }
    std::fclose(m_out);
    std::fclose(m_err);
}

bool ToolProcess::HasEnded()
{
    if (!m_hasEnded) m_hasEnded = waitpid(m_id, &m_status, WNOHANG) == m_id;
    return m_hasEnded;
}

bool ToolProcess::Handles(int signal) const
{
    std::ifstream status("/proc/" + std::to_string(m_id) + "/status");
    for (std::string line; std::getline(status, line);)
        if (line.rfind("SigCgt:", 0) == 0) return (std::stoull(line.substr(7), nullptr, 16) >> (signal - 1)) & 1;
    return false;
}

void ToolProcess::Send(int signal) const
{
    kill(m_id, signal);
}

bool ToolProcess::WaitUntil(const std::function<bool()>& condition)
{
    while (!condition()) {
        if (HasEnded()) return false;
        sched_yield();
    }
    return true;
}

ToolResult ToolProcess::Wait()
{
    if (!m_hasEnded) waitpid(m_id, &m_status, 0);
    m_hasEnded = true;
    ToolResult result = resultOf(m_status);
    result.out = contentOf(m_out);
    result.err = contentOf(m_err);
    return result;
}

ToolResult RunTool(const ToolCall& call)
{
    return ToolProcess(call).Wait();
}

ToolResult RunTool(std::vector<std::string> arguments)
{
    ToolCall call;
    call.arguments = std::move(arguments);
    return RunTool(call);
}

ToolResult RunToolOnTerminal(std::vector<std::string> arguments, int columns)
{
    winsize size = {};
    size.ws_col = static_cast<unsigned short>(columns);
    size.ws_row = 24;
    std::vector<std::string> line = commandLine(arguments);
    std::vector<std::string> environment = environmentWith({});
    const std::vector<char*> pointers = pointersTo(line);
    const std::vector<char*> variables = pointersTo(environment);
    int terminal = -1;
    const pid_t id = forkpty(&terminal, nullptr, nullptr, &size);
    if (id == 0) {
        execve(pointers[0], pointers.data(), variables.data());
        _exit(127);
    }
    std::string out;
    char block[4096];
    for (;;) {
        // A terminal whose last user has gone ends with an input error.
        const ssize_t count = read(terminal, block, sizeof block);
        if (count < 0 && errno == EINTR) continue;
        if (count <= 0) break;
        out.append(block, static_cast<std::size_t>(count));
    }
    close(terminal);
    int status = 0;
    waitpid(id, &status, 0);
    ToolResult result = resultOf(status);
    result.out = std::move(out);
    return result;
}

std::string ReadBytes(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    EXPECT_TRUE(file.is_open()) << path;
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

void WriteBytes(const std::string& path, const std::string& bytes)
{
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    ASSERT_TRUE(file.flush()) << path;
}

std::string SmallDesignWith(const std::string& records)
{
    std::string design = R"(<?xml version="1.0" encoding="UTF-8"?>
<pipedata>
<profile><version contents="1.00"/><appname contents="test"/><intention contents="0"/><dataver contents="13"/></profile>
<project id="1"><prjname contents="本町地区"/><activweb contents="30"/></project>
<node id="2"><mholeno contents="A-1"/><cx contents="0.0000000000000"/></node>
<node id="3"><mholeno contents="A-2"/></node>
<node id="4"><mholeno contents="B-1"/><ndcommentf contents="波〜線 &#x1F6B0; 髙&#10;&lt;&amp;&quot;"/></node>
<span id="10" uppernode="2" lowernode="3" routeid="20"><spno contents="1"/><splength contents="12.5"/></span>
<span id="11" uppernode="4" lowernode="3" routeid="21"><spno contents="1"/><splength contents="7.25"/><spname contents="枝管"/></span>
<route id="20" webid="30" connectid="0"><routenum contents="1"/></route>
<route id="21" webid="30" connectid="20"><routenum contents="2"/></route>
<web id="30" disposaltype="2"><webname contents="本町"/></web>
<pipe id="40"><pename contents="HPφ250"/></pipe>
<geometry id="60" gmobjid="10"><gmkind contents="2"/></geometry>
<usedarea id="50" ppdispotype="3"><uaname contents="住居"/></usedarea>
PLACE</pipedata>
)";
    design.replace(design.find("PLACE"), 5, records);
    return design;
}

std::string SmallDesign()
{
    return SmallDesignWith("");
}

std::string NodesDesign(int count)
{
    std::ostringstream text;
    text << "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<pipedata>\n<profile><dataver contents=\"13\"/></profile>\n";
    for (int id = 1; id <= count; ++id)
        text << "<node id=\"" << id << "\"><mholeno contents=\"N-" << id << "\"/><cx contents=\"" << id
             << ".0000000000000\"/><cy contents=\"-" << id << ".2500000000000\"/><cz contents=\"12.5000000000000\"/>"
             << "<ndcommentf contents=\"a node among many others, with a comment of some length\"/></node>\n";
    text << "</pipedata>\n";
    return text.str();
}
