// Routes by what they flow into, and the walk up such a tree. For the sources of the network.
#pragma once

#include "network/IdMap.h"
#include "network/Links.h"

#include <algorithm>
#include <cstdint>
#include <vector>

namespace obmgr {

// Walks up a tree from `start`, which is not visited itself. `children(id, push)` pushes what flows into a route, in
// order; `enter` is called before, `leave` after all that flows into a visited one. A route on the present way from
// the start is passed over, so that the walk ends on a ring. Takes no stack for the depth of the tree.
template <class Item, class IdOf, class Children, class Enter, class Leave>
void WalkUpstream(std::int32_t start, IdOf&& idOf, Children&& children, Enter&& enter, Leave&& leave)
{
    constexpr std::int32_t kArriving = -1;
    struct Step {
        Item item;
        std::int32_t leaves; // number of the way's route that ends here, or kArriving
    };
    std::vector<Step> steps;
    IdMap<std::int32_t> numberOf; // of each id met, from 1
    std::vector<bool> isOnWay{false};
    const auto numberFor = [&](std::int32_t id) {
        std::int32_t& number = numberOf[id];
        if (number == 0) {
            number = static_cast<std::int32_t>(isOnWay.size());
            isOnWay.push_back(false);
        }
        return static_cast<std::size_t>(number);
    };
    const auto pushChildren = [&](std::int32_t id) {
        const auto from = static_cast<std::ptrdiff_t>(steps.size());
        children(id, [&](Item item) { steps.push_back({item, kArriving}); });
        std::reverse(steps.begin() + from, steps.end());
    };
    isOnWay[numberFor(start)] = true;
    pushChildren(start);
    while (!steps.empty()) {
        const Step step = steps.back();
        steps.pop_back();
        if (step.leaves != kArriving) {
            isOnWay[static_cast<std::size_t>(step.leaves)] = false;
            leave(step.item);
            continue;
        }
        const std::int32_t id = idOf(step.item);
        const std::size_t number = numberFor(id);
        if (isOnWay[number]) continue;
        isOnWay[number] = true;
        enter(step.item);
        steps.push_back({step.item, static_cast<std::int32_t>(number)});
        pushChildren(id);
    }
}

// The ids of a list by the connect id of their routes, each group in the order of the list. Ids that no route has are
// left out.
class RouteForest {
public:
    RouteForest(const CObjectDataBase<CRoute>& routes, const CList<long, long>& candidates)
        : m_groups(static_cast<std::size_t>(candidates.GetCount()))
    {
        // A pass for each wait for memory, so that the waits for many routes overlap.
        std::vector<const CRoute*> found;
        found.reserve(static_cast<std::size_t>(candidates.GetCount()));
        for (const long id : candidates)
            if (const CRoute* const route = routes.Find(id)) found.push_back(route);
        std::vector<std::int32_t> connectIds;
        connectIds.reserve(found.size());
        m_entries.reserve(found.size());
        for (const CRoute* route : found) {
            m_entries.push_back({route->GetId32(), kEnd});
            connectIds.push_back(ConnectOf(*route));
        }
        for (std::size_t i = 0; i < m_entries.size(); ++i) {
            Group& group = m_groups[connectIds[i]];
            const auto index = static_cast<std::int32_t>(i);
            (group.last == kEnd ? group.first : m_entries[static_cast<std::size_t>(group.last)].next) = index;
            group.last = index;
        }
    }

    template <class Use> void ForTributaries(std::int32_t routeId, Use&& use) const
    {
        for (std::int32_t at = FirstTributary(routeId); at != kEnd;) {
            const Entry& entry = m_entries[static_cast<std::size_t>(at)];
            use(entry.id);
            at = entry.next;
        }
    }

    // The walk up from `start`: `enter` is called before, `leave` after all that flows into a visited route. A route
    // flows into one other: so only the start can come round, and it is passed over.
    template <class Enter, class Leave> void Walk(std::int32_t start, Enter&& enter, Leave&& leave) const
    {
        std::vector<std::int32_t> way;
        std::int32_t at = FirstTributary(start);
        for (;;) {
            if (at == kEnd) {
                if (way.empty()) return;
                const Entry& done = m_entries[static_cast<std::size_t>(way.back())];
                way.pop_back();
                leave(done.id);
                at = done.next;
                continue;
            }
            const Entry& entry = m_entries[static_cast<std::size_t>(at)];
            if (entry.id == start) {
                at = entry.next;
                continue;
            }
            enter(entry.id);
            way.push_back(at);
            at = FirstTributary(entry.id);
        }
    }

private:
    static constexpr std::int32_t kEnd = -1;
    struct Entry {
        std::int32_t id;
        std::int32_t next; // the next one of the group, or kEnd
    };
    struct Group {
        std::int32_t first = kEnd;
        std::int32_t last = kEnd;
    };

    std::int32_t FirstTributary(std::int32_t routeId) const
    {
        const Group* const group = m_groups.Find(routeId);
        return group ? group->first : kEnd;
    }

    std::vector<Entry> m_entries;
    IdMap<Group> m_groups;
};

} // namespace obmgr
