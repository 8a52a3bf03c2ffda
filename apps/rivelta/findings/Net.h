// The net as the checks see it: worked out once, whatever is wrong with it.
#pragma once

#include "store/ObjectManager.h"

#include <cstddef>
#include <cstdint>
#include <unordered_map>
#include <vector>

namespace obmgr::tool {

// The ids in link fields of the records that make up the net.
inline std::int32_t UpperNode(const CSpan& span)
{
    return span.Links()[0];
}
inline std::int32_t LowerNode(const CSpan& span)
{
    return span.Links()[1];
}
inline std::int32_t RouteId(const CSpan& span)
{
    return span.Links()[2];
}
inline std::int32_t WebId(const CRoute& route)
{
    return route.Links()[0];
}
inline std::int32_t ConnectId(const CRoute& route)
{
    return route.Links()[1];
}
// Such a span has no direction; the checks of chains and junctions leave it out.
inline bool IsToItself(const CSpan& span)
{
    return UpperNode(span) == LowerNode(span);
}

struct RouteShape {
    // From the top down when they are one chain, else as in the file.
    std::vector<const CSpan*> spans;
    std::vector<const CSpan*> toThemselves;
    bool isChain = false;
    std::int32_t top = 0; // nodes; of a chain only
    std::int32_t bottom = 0;
    double length = 0.0; // metres, added up from the top down
};

double LengthOf(const CSpan& span);

struct Leaving {
    const CSpan* first = nullptr; // the one that carries the flow on
    std::size_t count = 0;
};

class Net {
public:
    explicit Net(const CObjectManager& manager);

    // Null for a route without spans.
    const RouteShape* ShapeOf(std::int32_t routeId) const;
    // The spans that start at a node, those from a node to itself not counted.
    Leaving From(std::int32_t nodeId) const;
    // Null when the way is broken.
    const CWeb* WebOf(const CSpan& span) const;

private:
    const CObjectManager& m_manager;
    std::unordered_map<std::int32_t, RouteShape> m_shapes; // by route
    std::unordered_map<std::int32_t, Leaving> m_leaving;   // by node
};

} // namespace obmgr::tool
