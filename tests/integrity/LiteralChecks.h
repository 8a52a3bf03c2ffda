// The checks as they are defined: matrices, walks to the end, and each name against each later one. Never optimised.
#pragma once

#include "store/ObjectManager.h"

#include <string>
#include <vector>

namespace integrity {

int literalCheckSpanLoop(const CObjectManager& manager, long webId, CList<long, long>& out);

int literalGetAbnormalRoute(CObjectManager& manager, const CList<long, long>& routes, CList<long, long>& pairs,
                            CList<long, long>& changed);

// The first pair of equal names as places; false when all differ.
bool literalFirstPair(const std::vector<std::wstring>& names, std::size_t& first, std::size_t& second);

bool literalDuplicateCheckSecgroup(CObjectManager& manager, CStringArray& names);
bool literalDuplicateCheckSecgrouprec(CObjectManager& manager, CStringArray& names);

} // namespace integrity
