#include "findings/Net.h"

#include "Objects.h"
#include "common/Text2Number.h"

#include <unordered_set>

namespace obmgr::tool {

namespace {

void findChain(RouteShape& shape)
{
    std::unordered_map<std::int32_t, const CSpan*> byUpper;
    std::unordered_set<std::int32_t> lowers;
    for (const CSpan* const span : shape.spans) {
        byUpper.emplace(UpperNode(*span), span);
        lowers.insert(LowerNode(*span));
    }
    if (byUpper.size() != shape.spans.size() || lowers.size() != shape.spans.size()) return; // it branches
    const CSpan* head = nullptr;
    for (const CSpan* const span : shape.spans) {
        if (lowers.contains(UpperNode(*span))) continue;
        if (head) return; // there is a gap
        head = span;
    }
    if (!head) return; // a ring
    std::vector<const CSpan*> chain;
    std::int32_t node = UpperNode(*head);
    for (auto next = byUpper.find(node); next != byUpper.end(); next = byUpper.find(node)) {
        chain.push_back(next->second);
        node = LowerNode(*next->second);
    }
    if (chain.size() != shape.spans.size()) return; // a ring beside it
    shape.spans = std::move(chain);
    shape.isChain = true;
    shape.top = UpperNode(*head);
    shape.bottom = node;
    for (const CSpan* const span : shape.spans)
        shape.length += LengthOf(*span);
}

} // namespace

double LengthOf(const CSpan& span)
{
    return ToDouble(ValueOf(span, "splength"));
}

Net::Net(const CObjectManager& manager) : m_manager(manager)
{
    for (const CSpan* const span : manager.GetSpanDb()) {
        RouteShape& shape = m_shapes[RouteId(*span)];
        if (IsToItself(*span)) {
            shape.toThemselves.push_back(span);
            continue;
        }
        shape.spans.push_back(span);
        Leaving& leaving = m_leaving[UpperNode(*span)];
        if (++leaving.count == 1) leaving.first = span;
    }
    for (auto& [routeId, shape] : m_shapes)
        findChain(shape);
}

const RouteShape* Net::ShapeOf(std::int32_t routeId) const
{
    const auto found = m_shapes.find(routeId);
    return found == m_shapes.end() ? nullptr : &found->second;
}

Leaving Net::From(std::int32_t nodeId) const
{
    const auto found = m_leaving.find(nodeId);
    return found == m_leaving.end() ? Leaving() : found->second;
}

const CWeb* Net::WebOf(const CSpan& span) const
{
    const CRoute* const route = m_manager.GetRouteDb().Find(RouteId(span));
    return route ? m_manager.GetWebDb().Find(WebId(*route)) : nullptr;
}

} // namespace obmgr::tool
