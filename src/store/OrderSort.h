// The order of sorted id lists.
#pragma once

#include "store/ObjectTable.h"

#include <vector>

namespace obmgr {

// Sorts by the integer key "order" of the objects. Ids of equal order come out as the exchange sort leaves them that
// the applications know: each place in turn is compared with every later one and swapped when it is greater.
void SortByOrder(const ObjectTable& table, std::vector<long>& ids);

} // namespace obmgr
