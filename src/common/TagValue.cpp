#include "common/TagValue.h"

#include <algorithm>

void SortCTagValueIntArray(CTagValueIntArray& entries)
{
    std::stable_sort(entries.begin(), entries.end(),
                     [](const CTagValueInt& a, const CTagValueInt& b) { return a.Compare(b) < 0; });
}
