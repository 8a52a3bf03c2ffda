// What a command of the tool is, and what all of them share. A new command is a file of its own, a factory in
// Commands.h and a line in Commands.cpp.
#pragma once

#include <memory>
#include <optional>
#include <string>

namespace CLI {
class App;
}

namespace obmgr::tool {

// FaultsFound is also the end of an edit one of whose operations failed.
enum class ExitCode : int { Done = 0, FaultsFound = 1, WrongUsage = 2, InputUnreadable = 3, OutputUnwritable = 4 };

// Options that every command has.
struct CommonOptions {
    bool json = false;
    std::string language;                // "ja", "en", or empty for the system's
    std::optional<std::string> defaults; // file of default attributes
};

class Command {
public:
    Command() = default;
    Command(const Command&) = delete;
    Command& operator=(const Command&) = delete;
    virtual ~Command() = default;

    virtual const char* Name() const = 0;
    // One line for the list of commands.
    virtual std::string Summary() const = 0;
    virtual std::string Description() const = 0;
    // A command line that works.
    virtual const char* Example() const = 0;
    virtual void AddOptions(CLI::App& app) = 0;
    // Runs after the options were read. Failures of standard output are raised as OutputFailure.
    virtual ExitCode Run(const CommonOptions& common) = 0;
};

} // namespace obmgr::tool
