#include "Commands.h"

namespace obmgr::tool {

std::vector<std::unique_ptr<Command>> AllCommands()
{
    using Factory = std::unique_ptr<Command> (*)();
    constexpr Factory factories[] = {MakeInfoCommand, MakeListCommand,   MakeShowCommand,
                                     MakeTreeCommand, MakeTraceCommand,  MakeCheckCommand,
                                     MakeEditCommand, MakeUpdateCommand, MakeConvertCommand};
    std::vector<std::unique_ptr<Command>> commands;
    for (const Factory make : factories)
        commands.push_back(make());
    return commands;
}

} // namespace obmgr::tool
