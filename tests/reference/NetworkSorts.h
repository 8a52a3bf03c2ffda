// The orders of routes and records as their contract tells them: chains of routes as plain lists that are searched
// from the front, and the three ways of sorting written out, since equal keys fall as the way of sorting lets them.
//
// The steps for the random scripts are in NetworkSortKinds.cpp; SortsAgainstModelTest.cpp runs the sorts alone on many
// more lists.
#pragma once

#include "reference/Network.h"
#include "reference/NetworkScript.h"

#include <cstddef>
#include <deque>

namespace reference {

// ---- the three ways of sorting ----

// Each place in turn is compared with every later one, and swapped when `isAfter(its entry, the later entry)`.
template <class T, class IsAfter> void ExchangeSort(std::vector<T>& list, IsAfter&& isAfter)
{
    for (std::size_t p = 0; p < list.size(); ++p)
        for (std::size_t q = p + 1; q < list.size(); ++q)
            if (isAfter(list[p], list[q])) std::swap(list[p], list[q]);
}

// Negative bounds stand for the ends of the list.
template <class T, class Key> void MiddleQuicksort(std::vector<T>& list, int low, int high, const Key& key)
{
    if (list.empty()) return;
    const auto at = [&](int index) -> T& { return list.at(static_cast<std::size_t>(index)); };
    if (low < 0) low = 0;
    if (high < 0) high = static_cast<int>(list.size()) - 1;
    for (;;) {
        const auto pivot = key(at((low + high) / 2));
        int i = low;
        int j = high;
        for (;;) {
            while (key(at(i)) < pivot)
                ++i;
            while (key(at(j)) > pivot)
                --j;
            if (!(i < j)) break;
            std::swap(at(i), at(j));
            ++i;
            --j;
        }
        if (low < i - 1) MiddleQuicksort(list, low, i - 1, key);
        if (!(j + 1 < high)) return;
        low = j + 1;
    }
}

// Rising by the number, equal ones in their order: each goes behind the last one that is not greater.
void StableSort(std::vector<std::pair<int, int>>& idsAndKeys);

// ---- branch sorts ----

struct Chain {
    Ids routes;
    double length = 0.0;
};
using Chains = std::vector<const Chain*>;

const Chain* GetBuranchPoint(int routeId, const Chains& chains);
const Chain* GetAndRemoveBuranchPoint(int routeId, const Chains& chains, const Chain& chain, const Ids& out);
void SortRouteLength(Chains& chains, int low, int high);
void SortRouteLengthForBuranchSortLong(Chains& chains);
void SortRouteLengthForBuranchSortShort(Chains& chains);
void RunBuranchSort(const Chain& chain, Chains& chains, Ids& out);
void RunBuranchMaxExtend(const Chain& chain, Chains& chains, Ids& out);
void RunBuranchExtendReverse(const Chain& chain, Chains& chains, Ids& out);
bool RunSetSplent(Network& net, const Chain& chain, Chains& chains, Ids& done);

bool SortRouteBranchUpper(Network& net, const Ids& in, Ids& out);
bool SortRouteBranchLower(Network& net, const Ids& in, Ids& out);
bool SortRouteMaxExtendUpper(Network& net, const Ids& in, Ids& out);
bool SortRouteMaxExtendLower(Network& net, const Ids& in, Ids& out);
bool SetSpanMaxExtend(Network& net, int webId);

// ---- sorts by a key ----
void SortRouteRouteNumber(Network& net, const Ids& in, Ids& out);
void SortRouteRouteNumberN3(Network& net, const Ids& in, Ids& out);
void SortRouteInputNumber(Network& net, const Ids& in, Ids& out);
void SortOrderRoute(Network& net, Ids& routeIds, int low, int high);
void SortOrderRoute(Records& routes, int low, int high);
// SortOrder<T>: by "order" in the type's table.
void SortOrder(Network& net, Type type, Ids& ids);
void ReNumberOrderWeb(Network& net, Ids& ids);
void ReNumberOrderSecgrouprec(Network& net, const Ids& ids);
// Sort<T>IDList: the stable sort by a key of the type; ids without a record leave the list.
bool SortIdList(Network& net, Type type, const wchar_t* key, Ids& ids);
bool SortPipeIDList(Network& net, int pipeClass, Ids& ids, Ids& rest);

int StrNumCmp(const wchar_t* a, const wchar_t* b);
int Fatoi(const wchar_t* text); // _fatoi
const wchar_t* SkipDigit(const wchar_t* text);

// Every sort, and the edits among them, ready for the driver.
std::vector<StepKind> SortQueries();
std::vector<StepKind> SortEdits();

} // namespace reference
