// The commands of the tool.
#pragma once

#include "Command.h"

#include <memory>
#include <vector>

namespace obmgr::tool {

std::unique_ptr<Command> MakeInfoCommand();
std::unique_ptr<Command> MakeListCommand();
std::unique_ptr<Command> MakeShowCommand();
std::unique_ptr<Command> MakeTreeCommand();
std::unique_ptr<Command> MakeTraceCommand();
std::unique_ptr<Command> MakeCheckCommand();
std::unique_ptr<Command> MakeEditCommand();
std::unique_ptr<Command> MakeUpdateCommand();
std::unique_ptr<Command> MakeConvertCommand();

// All of them, in the order in which the help names them.
std::vector<std::unique_ptr<Command>> AllCommands();

} // namespace obmgr::tool
