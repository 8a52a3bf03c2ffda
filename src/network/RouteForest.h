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
    struct Step {
        Item item;
        bool isLeaving;
    };
    std::vector<Step> steps;
    IdMap<bool> isOnWay;
    const auto pushChildren = [&](std::int32_t id) {
        const auto from = static_cast<std::ptrdiff_t>(steps.size());
        children(id, [&](Item item) { steps.push_back({item, false}); });
        std::reverse(steps.begin() + from, steps.end());
    };
    isOnWay[start] = true;
    pushChildren(start);
    while (!steps.empty()) {
        const Step step = steps.back();
        steps.pop_back();
        const std::int32_t id = idOf(step.item);
        bool& isOn = isOnWay[id];
        if (step.isLeaving) {
            isOn = false;
            leave(step.item);
            continue;
        }
        if (isOn) continue;
        isOn = true;
        enter(step.item);
        steps.push_back({step.item, true});
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
        m_entries.reserve(static_cast<std::size_t>(candidates.GetCount()));
        for (const long id : candidates) {
            const CRoute* const route = routes.Find(id);
            if (!route) continue;
            const auto index = static_cast<std::int32_t>(m_entries.size());
            m_entries.push_back({Id32(id), kEnd});
            Group& group = m_groups[ConnectOf(*route)];
            (group.last == kEnd ? group.first : m_entries[static_cast<std::size_t>(group.last)].next) = index;
            group.last = index;
        }
    }

    template <class Use> void ForTributaries(std::int32_t routeId, Use&& use) const
    {
        const Group* const group = m_groups.Find(routeId);
        for (std::int32_t at = group ? group->first : kEnd; at != kEnd;) {
            const Entry& entry = m_entries[static_cast<std::size_t>(at)];
            use(entry.id);
            at = entry.next;
        }
    }

private:
    static constexpr std::int32_t kEnd = -1;
    struct Entry {
        std::int32_t id;
        std::int32_t next;
    };
    struct Group {
        std::int32_t first = kEnd;
        std::int32_t last = kEnd;
    };

    std::vector<Entry> m_entries;
    IdMap<Group> m_groups;
};

} // namespace obmgr
