// The quicksort around the middle entry whose order of equal keys the applications know.
#pragma once

#include <utility>
#include <vector>

namespace obmgr {

// Sorts the places `low` to `high`, rising. The pivot is the key at (low + high) / 2, taken once; both ends move
// towards each other and swap what stands on the wrong side, equal keys included. The part before is sorted first.
// Ranges wait on a list of our own: their number may follow the data.
template <class KeyAt, class Swap> void MiddleQuicksort(long low, long high, KeyAt&& keyAt, Swap&& swap)
{
    std::vector<std::pair<long, long>> ranges{{low, high}};
    while (!ranges.empty()) {
        const auto [first, last] = ranges.back();
        ranges.pop_back();
        const auto pivot = keyAt((first + last) / 2);
        long i = first;
        long j = last;
        for (;;) {
            while (keyAt(i) < pivot)
                ++i;
            while (pivot < keyAt(j))
                --j;
            if (i >= j) break;
            swap(i, j);
            ++i;
            --j;
        }
        if (j + 1 < last) ranges.emplace_back(j + 1, last);
        if (first < i - 1) ranges.emplace_back(first, i - 1);
    }
}

} // namespace obmgr
