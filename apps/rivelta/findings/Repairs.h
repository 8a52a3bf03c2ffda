// What `rivelta check --fix` does.
#pragma once

#include "findings/Findings.h"

namespace obmgr::tool {

// Does the repairs of the findings, for the webs that were checked. What fails stays for the next check to tell.
void RunRepairs(CObjectManager& manager, const std::vector<Finding>& findings, const FindOptions& options);

// Those of `before` that a repair was for and that `after` no longer has.
std::vector<Finding> RepairedFindings(const std::vector<Finding>& before, const std::vector<Finding>& after);

} // namespace obmgr::tool
