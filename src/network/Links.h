// Reading the tables by the link ids of spans and routes, for the sources of the network. Not installed.
#pragma once

#include "common/Id32.h"
#include "store/ObjectManager.h"

#include <algorithm>
#include <unordered_set>
#include <vector>

namespace obmgr {

inline std::int32_t UpperNodeOf(const CSpan& span)
{
    return span.Links()[kUpperNode];
}
inline std::int32_t LowerNodeOf(const CSpan& span)
{
    return span.Links()[kLowerNode];
}
inline std::int32_t RouteOf(const CSpan& span)
{
    return span.Links()[kRouteOfSpan];
}
inline std::int32_t WebOf(const CRoute& route)
{
    return route.Links()[kWebOfRoute];
}
inline std::int32_t ConnectOf(const CRoute& route)
{
    return route.Links()[kConnect];
}

// Starts to bring an object from memory, so that the waits for several overlap.
template <class T> void FetchAhead(const T* object)
{
    if (!object) return;
    __builtin_prefetch(object);
    __builtin_prefetch(reinterpret_cast<const char*>(object + 1) - 1); // the links stand at its end
}

// The objects with a link id, in table order.
template <class T> std::vector<T*> LinkedTo(const CObjectDataBase<T>& table, int link, long id)
{
    const auto entries = table.Untyped().EntriesByLink(link, Id32(id));
    std::vector<T*> objects;
    objects.reserve(entries.size());
    for (const auto entry : entries) {
        objects.push_back(static_cast<T*>(table.Untyped().At(entry.position)));
        FetchAhead(objects.back());
    }
    return objects;
}
template <class T> T* FirstLinkedTo(const CObjectDataBase<T>& table, int link, long id)
{
    return static_cast<T*>(table.Untyped().FirstByLink(link, Id32(id)));
}
template <class T> bool IsLinkedTo(const CObjectDataBase<T>& table, int link, long id)
{
    return !table.Untyped().EntriesByLink(link, Id32(id)).empty();
}

// Any number of lists of positions as one in table order, each position once.
inline void SortIntoTableOrder(std::vector<PositionMap::Entry>& entries)
{
    std::sort(entries.begin(), entries.end(), [](auto a, auto b) { return a.position < b.position; });
    const auto isSame = [](auto a, auto b) { return a.position == b.position; };
    entries.erase(std::unique(entries.begin(), entries.end(), isSame), entries.end());
}

template <class List, class Ids> void AppendAll(List& list, const Ids& values)
{
    for (const auto& value : values)
        list.AddTail(value);
}

// Follows one successor at a time from `start`, which comes first, until there is none or one comes round again.
template <class T, class Next> std::vector<T> FollowLine(T start, Next&& next)
{
    std::vector<T> line{start};
    std::size_t mark = 0; // on a loop the line comes back to a place that moves on by powers of two
    for (T at = next(start); at != T{}; at = next(at)) {
        line.push_back(at);
        if (at == line[mark]) {
            std::unordered_set<T> seen;
            line.erase(std::find_if(line.begin(), line.end(), [&](T value) { return !seen.insert(value).second; }),
                       line.end());
            break;
        }
        if (line.size() >= 2 * (mark + 1)) mark = line.size() - 1;
    }
    return line;
}

} // namespace obmgr
