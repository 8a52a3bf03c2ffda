// Runs the built tool as a person's shell would, and what its tests share.
#pragma once

#include <filesystem>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <sys/types.h>

// A folder that goes with the test. Others may enter it, so that the tool can be run as somebody else.
class ToolFolder {
public:
    ToolFolder();
    ~ToolFolder();
    ToolFolder(const ToolFolder&) = delete;
    ToolFolder& operator=(const ToolFolder&) = delete;

    std::string operator/(const std::string& name) const { return (m_path / name).string(); }
    const std::filesystem::path& Path() const { return m_path; }
    // Names of what is in it, sorted.
    std::vector<std::string> Names() const;

private:
    std::filesystem::path m_path;
};

struct ToolResult {
    int exitCode = -1; // -1 when a signal ended it
    int signal = 0;
    std::string out;
    std::string err;

    nlohmann::json Json() const;
    bool Tells(const std::string& text) const { return err.find(text) != std::string::npos; }
};

struct ToolCall {
    std::vector<std::string> arguments;
    std::string input;               // standard input
    std::string output;              // file or device for standard output; empty: kept in the result
    bool outputIsClosedPipe = false; // standard output is a pipe whose reader has gone
    std::map<std::string, std::string> environment = {}; // on top of one without any language
    bool asNobody = false;                               // without rights, when the test runs with all of them
};

// A running tool.
class ToolProcess {
public:
    explicit ToolProcess(const ToolCall& call);
    ~ToolProcess();
    ToolProcess(const ToolProcess&) = delete;
    ToolProcess& operator=(const ToolProcess&) = delete;

    pid_t Id() const { return m_id; }
    bool HasEnded();
    // Whether it has taken over the signal.
    bool Handles(int signal) const;
    void Send(int signal) const;
    // Goes round until the condition holds; false when the process ended before.
    bool WaitUntil(const std::function<bool()>& condition);
    ToolResult Wait();

private:
    std::FILE* m_out;
    std::FILE* m_err;
    pid_t m_id = -1;
    bool m_hasEnded = false;
    int m_status = 0;
};

ToolResult RunTool(const ToolCall& call);
ToolResult RunTool(std::vector<std::string> arguments);
// The tool with its standard output on a terminal of so many columns; its messages are in `out`, too.
ToolResult RunToolOnTerminal(std::vector<std::string> arguments, int columns);

std::string ReadBytes(const std::string& path);
void WriteBytes(const std::string& path, const std::string& bytes);

// A small design in data version 13, as UTF-8: two routes, three nodes, map data, and values that are hard to write.
std::string SmallDesign();
// SmallDesign with its "PLACE" replaced by further records.
std::string SmallDesignWith(const std::string& records);
// A design of so many nodes, some hundred bytes each.
std::string NodesDesign(int count);
