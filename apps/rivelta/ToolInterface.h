// What the library shows and asks while the tool runs.
#pragma once

#include "control/TerminalInterface.h"

#include <functional>

namespace obmgr::tool {

// Installed as long as it lives. Shows a progress bar if asked to and standard error is a terminal, asks nothing, and
// gives the first free name itself.
class ToolInterface final : public TerminalInterface {
public:
    // `beforeNaming` is called each time before a name is given.
    explicit ToolInterface(bool showsBar, std::function<void()> beforeNaming = {});
    ToolInterface(const ToolInterface&) = delete;
    ToolInterface& operator=(const ToolInterface&) = delete;
    ~ToolInterface() override;

    std::unique_ptr<ProgressView> OpenProgress() override;
    int ShowMessage(const CString& text, unsigned type) override;
    std::optional<CString> AskNewName(const NameQuestion& question) override;

private:
    bool m_showsBar;
    UserInterface* m_before;
    std::function<void()> m_beforeNaming;
};

// From now on ctrl-C (and a polite kill) cancels what runs; the second one ends the program at once. Writing into a
// closed pipe becomes an error of that write.
void InstallSignalHandlers();

} // namespace obmgr::tool
