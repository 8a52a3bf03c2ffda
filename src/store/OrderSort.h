// The order of sorted id lists.
#pragma once

#include "store/ObjectTable.h"

#include <cstddef>
#include <vector>

namespace obmgr {

// The order into which the exchange sort brings the keys that the applications know: each place in turn is compared
// with every later one, and the two are swapped when it is greater. Equal keys come out as that leaves them. Gives the
// former places in their new order, in n log n steps.
RIVELTA_API std::vector<std::size_t> ExchangeSortOrder(const std::vector<long>& keys);

// Sorts by the integer key "order" of the objects.
void SortByOrder(const ObjectTable& table, std::vector<long>& ids);

// Rising by an integer key, equal ones in their order; ids that no object has are dropped.
void SortByNumber(const ObjectTable& table, const wchar_t* key, CList<long, long>& ids);

} // namespace obmgr
