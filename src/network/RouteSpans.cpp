// The order of spans along a route, worked out from the nodes, and the ends of a route.

#include "network/IdMap.h"
#include "network/RouteChain.h"

using obmgr::LowerNodeOf;
using obmgr::UpperNodeOf;

namespace obmgr {

namespace {

// The first `from` node, in span order, that is no `to` node of the route.
template <class From, class To> bool FindEnd(const std::vector<CSpan*>& spans, From&& from, To&& to, std::int32_t& node)
{
    IdSet others(spans.size());
    for (const CSpan* span : spans)
        others.Insert(to(*span));
    for (const CSpan* span : spans) {
        if (others.Contains(from(*span))) continue;
        node = from(*span);
        return true;
    }
    return false;
}

// Of spans with one node the later counts.
template <class NodeOf> IdMap<CSpan*> ByNode(const std::vector<CSpan*>& spans, NodeOf&& nodeOf)
{
    IdMap<CSpan*> map(spans.size());
    for (CSpan* span : spans)
        map[nodeOf(*span)] = span;
    return map;
}

// From `node` on, a step a span. Where no span goes on the one before is taken again, or null when there is none.
template <class From, class To>
std::vector<CSpan*> Walk(const std::vector<CSpan*>& spans, std::int32_t node, From&& from, To&& to, bool& isWhole)
{
    const IdMap<CSpan*> byNode = ByNode(spans, from);
    std::vector<CSpan*> walk;
    walk.reserve(spans.size());
    CSpan* current = nullptr;
    isWhole = true;
    for (std::size_t i = 0; i < spans.size(); ++i) {
        CSpan* const* const found = byNode.Find(node);
        if (found)
            current = *found;
        else
            isWhole = false;
        walk.push_back(current);
        node = to(*current);
    }
    return walk;
}

} // namespace

bool LowestNode(const std::vector<CSpan*>& spans, std::int32_t& node)
{
    return FindEnd(spans, LowerNodeOf, UpperNodeOf, node);
}

bool UppermostNode(const std::vector<CSpan*>& spans, std::int32_t& node)
{
    return FindEnd(spans, UpperNodeOf, LowerNodeOf, node);
}

std::vector<CSpan*> WalkUp(const std::vector<CSpan*>& spans)
{
    std::int32_t node = 0;
    bool isWhole = false;
    if (!LowestNode(spans, node)) return {};
    return Walk(spans, node, LowerNodeOf, UpperNodeOf, isWhole);
}

} // namespace obmgr

using obmgr::WalkUp;

namespace {

std::vector<CSpan*> SpansOf(const CObjectDataBase<CSpan>& spans, long routeId)
{
    return obmgr::LinkedTo(spans, obmgr::kRouteOfSpan, routeId);
}

// Appended as the walk goes, or put at the head one by one.
template <class List, class Value>
void PutInto(List& list, const std::vector<CSpan*>& walk, bool atTail, Value&& valueOf)
{
    for (CSpan* span : walk) {
        if (atTail)
            list.AddTail(valueOf(span));
        else
            list.AddHead(valueOf(span));
    }
}

} // namespace

bool CObjectManager::GetMostLowerNodeId(long routeId, long& nodeId) const
{
    std::int32_t node = 0;
    if (!obmgr::LowestNode(SpansOf(m_Span, routeId), node)) return false;
    nodeId = node;
    return true;
}

bool CObjectManager::GetMostUpperNodeId(long routeId, long& nodeId) const
{
    std::int32_t node = 0;
    if (!obmgr::UppermostNode(SpansOf(m_Span, routeId), node)) return false;
    nodeId = node;
    return true;
}

bool CObjectManager::GetLastSpanFromRoute(long routeId, long& spanId) const
{
    const std::vector<CSpan*> spans = SpansOf(m_Span, routeId);
    std::int32_t node = 0;
    if (!obmgr::LowestNode(spans, node)) return false;
    const auto endsThere = [&](const CSpan* span) { return LowerNodeOf(*span) == node; };
    spanId = (*std::find_if(spans.begin(), spans.end(), endsThere))->GetId32();
    return true;
}

bool CObjectManager::GetSortSpanInRoute(long routeId, CList<long, long>& spanIds, bool lowestFirst) const
{
    const std::vector<CSpan*> walk = WalkUp(SpansOf(m_Span, routeId));
    PutInto(spanIds, walk, lowestFirst, [](const CSpan* span) { return span->GetId32(); });
    return !walk.empty();
}

bool CObjectManager::GetSortSpanInRoute(long routeId, CTypedPtrList<CObList, CSpan*>& spans, bool lowestFirst) const
{
    const std::vector<CSpan*> walk = WalkUp(SpansOf(m_Span, routeId));
    PutInto(spans, walk, lowestFirst, [](CSpan* span) { return span; });
    return !walk.empty();
}

bool CObjectManager::GetSortSpanInRoute(long routeId, CList<const CSpan*>& spans, bool lowestFirst) const
{
    const std::vector<CSpan*> all = SpansOf(m_Span, routeId);
    std::int32_t node = 0;
    if (!(lowestFirst ? obmgr::LowestNode(all, node) : obmgr::UppermostNode(all, node))) return false;
    bool isWhole = false;
    const std::vector<CSpan*> walk = lowestFirst ? obmgr::Walk(all, node, LowerNodeOf, UpperNodeOf, isWhole)
                                                 : obmgr::Walk(all, node, UpperNodeOf, LowerNodeOf, isWhole);
    if (!isWhole) return false;
    obmgr::AppendAll(spans, walk);
    return true;
}

bool CObjectManager::GetSortUpNodeInRoute(long routeId, CList<long, long>& nodeIds) const
{
    const std::vector<CSpan*> spans = SpansOf(m_Span, routeId);
    std::int32_t node = 0;
    if (!obmgr::UppermostNode(spans, node)) return false;
    bool isWhole = false;
    const std::vector<CSpan*> walk = obmgr::Walk(spans, node, UpperNodeOf, LowerNodeOf, isWhole);
    nodeIds.AddTail(node);
    for (std::size_t i = 0; i + 1 < walk.size(); ++i)
        nodeIds.AddTail(LowerNodeOf(*walk[i]));
    return true;
}

bool CObjectManager::GetSortSpanNodeInRoute(long routeId, CTypedPtrList<CObList, CSpan*>& spans,
                                            CTypedPtrList<CObList, CNode*>& nodes) const
{
    const std::vector<CSpan*> walk = WalkUp(SpansOf(m_Span, routeId));
    if (walk.empty()) return false;
    const std::int32_t lowest = LowerNodeOf(*walk.front());
    const auto isLowest = [&](const CNode* node) { return node->GetId32() == lowest; };
    CNode* const lowestNode = m_Node.Find(lowest);
    if (lowestNode && std::none_of(nodes.begin(), nodes.end(), isLowest)) nodes.AddTail(lowestNode);
    for (CSpan* span : walk) {
        spans.AddTail(span);
        if (CNode* const upper = m_Node.Find(UpperNodeOf(*span))) nodes.AddTail(upper);
    }
    return true;
}

bool CObjectManager::GetSpanObjectListFromRoute(long routeId, bool lowestFirst, CList<const CSpan*>& spans,
                                                bool sorted) const
{
    if (sorted) return GetSortSpanInRoute(routeId, spans, lowestFirst);
    const std::vector<CSpan*> all = SpansOf(m_Span, routeId);
    obmgr::AppendAll(spans, all);
    return !all.empty();
}

bool CObjectManager::GetSpanObjectListFromRoute(long routeId, bool lowestFirst, CTypedPtrList<CObList, CSpan*>& spans,
                                                bool sorted) const
{
    CList<const CSpan*> found;
    if (!GetSpanObjectListFromRoute(routeId, lowestFirst, found, sorted)) return false;
    for (const CSpan* span : found)
        spans.AddTail(const_cast<CSpan*>(span));
    return true;
}

int CObjectManager::GetSpanNumInRoute(long routeId) const
{
    return static_cast<int>(m_Span.Untyped().CountByLink(obmgr::kRouteOfSpan, obmgr::Id32(routeId)));
}

bool CObjectManager::GetRouteLength(long routeId, double& length) const
{
    length = 0.0;
    const std::vector<CSpan*> spans = SpansOf(m_Span, routeId);
    for (const CSpan* span : spans)
        length += span->GetSubAttributeDouble(L"splength", 0.0);
    return !spans.empty();
}

bool CObjectManager::IsFirstSpanAndGetSecondSpan(long spanId, long& secondSpanId) const
{
    const CSpan* const span = m_Span.Find(spanId);
    if (!span) return false;
    const std::vector<CSpan*> walk = WalkUp(SpansOf(m_Span, obmgr::RouteOf(*span)));
    if (walk.empty() || walk.back()->GetId32() != span->GetId32()) return false;
    if (walk.size() > 1) secondSpanId = walk[walk.size() - 2]->GetId32();
    return true;
}
