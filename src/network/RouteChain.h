// The spans of a route, in table order, as a chain. For the sources of the network.
#pragma once

#include "network/Links.h"

namespace obmgr {

// The first lower node that is no upper node of the spans; the mirror of it. False for a ring and without spans.
bool LowestNode(const std::vector<CSpan*>& spans, std::int32_t& node);
bool UppermostNode(const std::vector<CSpan*>& spans, std::int32_t& node);
// From the lowest node up, as many steps as there are spans; where the chain is broken the span before stands again.
// Empty without a lowest node.
std::vector<CSpan*> WalkUp(const std::vector<CSpan*>& spans);

} // namespace obmgr
