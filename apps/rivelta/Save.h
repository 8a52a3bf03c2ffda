// Writing a design for a command.
#pragma once

#include "store/ObjectManager.h"

#include <string>

namespace obmgr::tool {

// Writes the design whole, map data included. A file is replaced at once or, on any failure, left as it was; "-"
// (standard output), pipes and devices get the bytes when all of them are there. False after the reason was told on
// standard error; the exit code then is OutputUnwritable.
bool SaveTo(CObjectManager& manager, const std::string& path, int dataver);

} // namespace obmgr::tool
