// The routes of a web as trees, each route once, however damaged the web is.
#pragma once

#include "store/ObjectManager.h"

#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace obmgr::tool {

struct RouteTree {
    // Where the routes at the root of the tree flow: to the flow end, or nowhere, and why.
    enum class Root { FlowEnd, Ring, Nowhere, OtherWeb };
    // A route stands before what flows into it.
    struct Row {
        const CRoute* route;
        std::size_t level; // 0 at the root
        bool isLast;       // of the routes that flow into the same one
    };

    Root root;
    std::vector<Row> rows;
};

class RouteTrees {
public:
    RouteTrees(const CObjectManager& manager, const CWeb& web);

    // The tree of the flow end first, be it empty, then those that do not reach it, in the order of the file.
    const std::vector<RouteTree>& Trees() const { return m_trees; }

private:
    using Routes = std::vector<CRoute*>;

    void SortSiblings(const CObjectManager& manager, Routes& siblings) const;
    void Grow(RouteTree::Root root, const Routes& roots);
    Routes NotYetListed(const Routes& routes) const;
    CRoute* FirstOfRing(const CObjectManager& manager, CRoute* start) const;

    Routes m_routes; // in the order of the file
    std::unordered_map<std::int32_t, CRoute*> m_byId;
    std::unordered_map<std::int32_t, Routes> m_byConnectId;
    std::unordered_set<const CRoute*> m_listed;
    std::vector<RouteTree> m_trees;
};

} // namespace obmgr::tool
