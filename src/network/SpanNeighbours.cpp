// From a span or a node to what touches it: along the flow, against it, and at one node.

#include "common/Numeric.h"
#include "network/FallingLevels.h"
#include "network/Links.h"

#include <cmath>
#include <limits>
#include <numeric>
#include <tuple>
#include <utility>

using obmgr::Id32;
using obmgr::LowerNodeOf;
using obmgr::UpperNodeOf;

namespace {

using Spans = std::vector<CSpan*>;

// The one that carries the flow on, or null.
CSpan* Below(const CObjectDataBase<CSpan>& spans, const CSpan& span)
{
    return obmgr::FirstLinkedTo(spans, obmgr::kUpperNode, LowerNodeOf(span));
}

Spans LineBelow(const CObjectDataBase<CSpan>& spans, CSpan* start)
{
    // What lies in a line was mostly added in a run, up or down: so the walk can look ahead in the table.
    constexpr std::size_t kAhead = 8;
    const obmgr::ObjectTable& table = spans.Untyped();
    std::size_t position = 0;
    return obmgr::FollowLine(start, [&](const CSpan* span) -> CSpan* {
        const auto entries = table.EntriesByLink(obmgr::kUpperNode, LowerNodeOf(*span));
        if (entries.empty()) return nullptr;
        const std::size_t before = std::exchange(position, entries.front().position);
        obmgr::FetchAhead(static_cast<CSpan*>(table.At(position + kAhead * (position - before))));
        return static_cast<CSpan*>(table.At(position));
    });
}

double LowerInvertOf(const CSpan& span)
{
    return span.GetSubAttributeDouble(L"lowercentinv", 0.0);
}

} // namespace

bool CObjectManager::GetLowerSpan(long spanId, long& lowerSpanId) const
{
    const CSpan* const span = m_Span.Find(spanId);
    const CSpan* const below = span ? Below(m_Span, *span) : nullptr;
    if (below) lowerSpanId = below->GetId32();
    return below != nullptr;
}

void CObjectManager::GetLowerSpanObjectList(long spanId, CTypedPtrList<CObList, CSpan*>& spans) const
{
    CSpan* const start = m_Span.Find(spanId);
    if (!start) return;
    for (CSpan* span : LineBelow(m_Span, start))
        spans.AddTail(span == start ? start : new CSpan(*span));
}

void CObjectManager::GetLowerSpanObjectList(long spanId, CList<long, long>& spanIds) const
{
    CSpan* const start = m_Span.Find(spanId);
    if (!start) return;
    for (const CSpan* span : LineBelow(m_Span, start))
        spanIds.AddTail(span->GetId32());
}

bool CObjectManager::GetLowerSpanObjectList(long fromSpanId, long toSpanId, CList<long, long>& spanIds) const
{
    if (Id32(fromSpanId) == Id32(toSpanId)) {
        spanIds.AddTail(fromSpanId);
        return true;
    }
    CSpan* const start = m_Span.Find(fromSpanId);
    if (!start) return false;
    const Spans line = obmgr::FollowLine(
        start, [&](const CSpan* span) { return span->GetId32() == Id32(toSpanId) ? nullptr : Below(m_Span, *span); });
    if (line.back()->GetId32() != Id32(toSpanId)) return false;
    for (const CSpan* span : line)
        spanIds.AddTail(span->GetId32());
    return true;
}

bool CObjectManager::GetFlowInSpanToSpan(long webId, long spanId, CList<long, long>& spanIds) const
{
    if (const CSpan* const span = m_Span.Find(spanId))
        for (const CSpan* inflow : obmgr::LinkedTo(m_Span, obmgr::kLowerNode, UpperNodeOf(*span))) {
            const CRoute* const route = m_Route.Find(obmgr::RouteOf(*inflow));
            if (route && obmgr::WebOf(*route) == Id32(webId)) spanIds.AddTail(inflow->GetId32());
        }
    return !spanIds.IsEmpty();
}

int CObjectManager::GetFlowInSpanToSpan(long spanId, CArray<const CSpan*>& spans) const
{
    spans.RemoveAll();
    if (const CSpan* const span = m_Span.Find(spanId))
        for (const CSpan* inflow : obmgr::LinkedTo(m_Span, obmgr::kLowerNode, UpperNodeOf(*span)))
            spans.Add(inflow);
    return static_cast<int>(spans.GetSize());
}

int CObjectManager::GetUpperSpan(long spanId, bool sort, CList<long, long>& spanIds) const
{
    spanIds.RemoveAll();
    CArray<const CSpan*> inflows;
    GetFlowInSpanToSpan(spanId, inflows);
    std::vector<double> levels;
    for (const CSpan* inflow : inflows)
        levels.push_back(LowerInvertOf(*inflow));
    std::vector<std::size_t> order(levels.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    if (sort) order = obmgr::FallingLevels(levels);
    for (const std::size_t place : order)
        spanIds.AddTail(inflows[static_cast<std::ptrdiff_t>(place)]->GetId32());
    return static_cast<int>(spanIds.GetCount());
}

void CObjectManager::GetUpperSpanObjectList(long webId, long spanId, CList<long, long>& spanIds) const
{
    CSpan* const start = m_Span.Find(spanId);
    if (!start) return;
    const Spans line = obmgr::FollowLine(start, [&](const CSpan* span) {
        CList<long, long> inflows;
        GetFlowInSpanToSpan(webId, span->GetId32(), inflows);
        // What the sort by falling level would put first.
        CSpan* highest = nullptr;
        for (const long id : inflows) {
            CSpan* const inflow = m_Span.Find(id);
            if (!highest || orn_compare_double(LowerInvertOf(*inflow), LowerInvertOf(*highest), obmgr::kSameLevel) > 0)
                highest = inflow;
        }
        return highest;
    });
    for (std::size_t i = 1; i < line.size(); ++i)
        spanIds.AddTail(line[i]->GetId32());
}

bool CObjectManager::GetConnectALlSpanToNode(long nodeId, CList<long, long>& spanIds) const
{
    const auto starting = m_Span.Untyped().EntriesByLink(obmgr::kUpperNode, Id32(nodeId));
    std::vector<obmgr::PositionMap::Entry> entries(starting.begin(), starting.end());
    const auto ending = m_Span.Untyped().EntriesByLink(obmgr::kLowerNode, Id32(nodeId));
    entries.insert(entries.end(), ending.begin(), ending.end());
    obmgr::SortIntoTableOrder(entries);
    for (const auto entry : entries)
        spanIds.AddTail(entry.id);
    return !entries.empty();
}

namespace {

// The first span of the route with the node at one end, by the shorter of the two lists.
bool FirstOfRoute(const CObjectDataBase<CSpan>& spans, obmgr::SpanLink end, long nodeId, long routeId, long& spanId)
{
    const obmgr::ObjectTable& table = spans.Untyped();
    const bool byRoute = table.CountByLink(obmgr::kRouteOfSpan, Id32(routeId)) < table.CountByLink(end, Id32(nodeId));
    const auto [link, id, otherLink, other] = byRoute ? std::tuple(obmgr::kRouteOfSpan, routeId, end, nodeId)
                                                      : std::tuple(end, nodeId, obmgr::kRouteOfSpan, routeId);
    for (const CSpan* span : obmgr::LinkedTo(spans, link, id)) {
        if (span->Links()[static_cast<std::size_t>(otherLink)] != Id32(other)) continue;
        spanId = span->GetId32();
        return true;
    }
    return false;
}

template <class Fits>
bool FirstOfList(const CObjectDataBase<CSpan>& spans, const CList<long, long>& spanIds, Fits&& fits, long& spanId)
{
    for (const long id : spanIds) {
        const CSpan* const span = spans.Find(id);
        if (!span || !fits(*span)) continue;
        spanId = id;
        return true;
    }
    return false;
}

} // namespace

bool CObjectManager::GetSpanConnectUpperNode(long nodeId, long routeId, long& spanId) const
{
    return FirstOfRoute(m_Span, obmgr::kUpperNode, nodeId, routeId, spanId);
}

bool CObjectManager::GetSpanConnectLowerNode(long nodeId, long routeId, long& spanId) const
{
    return FirstOfRoute(m_Span, obmgr::kLowerNode, nodeId, routeId, spanId);
}

bool CObjectManager::GetSpanConnectUpperNode(long nodeId, const CList<long, long>& spanIds, long& spanId) const
{
    const auto starts = [&](const CSpan& span) { return UpperNodeOf(span) == Id32(nodeId); };
    return FirstOfList(m_Span, spanIds, starts, spanId);
}

bool CObjectManager::GetSpanConnectLowerNode(long nodeId, const CList<long, long>& spanIds, long& spanId) const
{
    const auto ends = [&](const CSpan& span) { return LowerNodeOf(span) == Id32(nodeId); };
    return FirstOfList(m_Span, spanIds, ends, spanId);
}

bool CObjectManager::GetFlowInSpanToNode(long nodeId, const CList<long, long>& spanIds, CList<long, long>& flowIn) const
{
    std::vector<long> found; // the two lists may be one
    for (const long id : spanIds) {
        const CSpan* const span = m_Span.Find(id);
        if (span && LowerNodeOf(*span) == Id32(nodeId)) found.push_back(id);
    }
    obmgr::AppendAll(flowIn, found);
    return !flowIn.IsEmpty();
}

bool CObjectManager::IsConnectSpanToNode(long nodeId, const CList<long, long>& spanIds) const
{
    return std::any_of(spanIds.begin(), spanIds.end(), [&](long id) {
        const CSpan* const span = m_Span.Find(id);
        return span && (UpperNodeOf(*span) == Id32(nodeId) || LowerNodeOf(*span) == Id32(nodeId));
    });
}

bool CObjectManager::GetAllLowerNodeFromSpan(const CList<long, long>& spanIds, CList<long, long>& nodeIds) const
{
    std::vector<long> nodes; // the two lists may be one
    for (const long id : spanIds)
        if (const CSpan* const span = m_Span.Find(id)) nodes.push_back(LowerNodeOf(*span));
    obmgr::AppendAll(nodeIds, nodes);
    return true;
}

bool CObjectManager::GetAllUpperNodeFromSpan(const CList<long, long>& spanIds, CList<long, long>& nodeIds) const
{
    std::vector<long> nodes; // the two lists may be one
    for (const long id : spanIds)
        if (const CSpan* const span = m_Span.Find(id)) nodes.push_back(UpperNodeOf(*span));
    obmgr::AppendAll(nodeIds, nodes);
    return true;
}

bool CObjectManager::IsEqualCoordNode(long nodeId, long otherNodeId) const
{
    const CNode* const a = m_Node.Find(nodeId);
    const CNode* const b = m_Node.Find(otherNodeId);
    if (!a || !b) return false;
    const auto read = [](const CNode& node, const wchar_t* key) { return node.GetSubAttributeDouble(key, 0.0); };
    return GetDistancePtPt(read(*a, L"cx"), read(*a, L"cy"), read(*a, L"cz"), read(*b, L"cx"), read(*b, L"cy"),
                           read(*b, L"cz")) < 1e-10;
}

long CObjectManager::GetIcpinqLowinvSpanID(long icpInqId) const
{
    const CIcpInq* const inflow = m_IcpInq.Find(icpInqId);
    if (!inflow) return 0;
    // The node stands in the attribute and, for a record that was not read from a file, in the link alone.
    CList<long, long> touching;
    GetConnectALlSpanToNode(inflow->GetSubAttributeInt(L"icinnodeid", inflow->Links()[obmgr::kOwner]), touching);
    double lowest = std::numeric_limits<double>::max();
    long lowestId = 0;
    for (const long id : touching) {
        const CSpan* const span = m_Span.Find(id);
        if (span->GetSubAttribute(L"spsecrecname").IsEmpty() || !(LowerInvertOf(*span) < lowest)) continue;
        lowest = LowerInvertOf(*span);
        lowestId = id;
    }
    return lowestId;
}

bool CObjectManager::GetOverlapNodeFromOtherWebs(long webId, long nodeId, CList<long, long>& nodeIds) const
{
    CList<long, long> webs;
    if (!GetWebIdList(webs)) return false;
    std::vector<long> found;
    for (const long other : webs) {
        if (Id32(other) == Id32(webId)) continue;
        CList<long, long> routes;
        CList<long, long> lowRoutes;
        if (!GetRouteIdList(other, routes) || !GetLowRouteId(routes, lowRoutes)) return false;
        for (const long route : lowRoutes) {
            long end = 0;
            if (!GetMostLowerNodeId(route, end)) return false;
            if (IsEqualCoordNode(nodeId, end)) found.push_back(end);
        }
    }
    obmgr::AppendAll(nodeIds, found);
    return !found.empty();
}
