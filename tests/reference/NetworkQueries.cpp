// Spans in their route, and the neighbours of spans and nodes.
#include "reference/Network.h"

#include <cfloat>
#include <cmath>

namespace reference {

using namespace objectdata;

namespace {

// The entry of the key that was set last.
Record* LastWith(const Records& spans, std::size_t link, int nodeId)
{
    Record* found = nullptr;
    for (Record* const span : spans)
        if (span->links[link] == nodeId) found = span;
    return found;
}

bool FirstNotAmong(const Records& spans, std::size_t link, std::size_t others, int& nodeId)
{
    for (const Record* const span : spans) {
        bool isAmong = false;
        for (const Record* const other : spans)
            isAmong = isAmong || other->links[others] == span->links[link];
        if (isAmong) continue;
        nodeId = span->links[link];
        return true;
    }
    return false;
}

// From the lowest node up, a step a span; a failed look-up takes the span before again.
Records WalkUp(const Records& spans, int lowestNodeId)
{
    Records walk;
    int node = lowestNodeId;
    for (std::size_t step = 0; step < spans.size(); ++step) {
        Record* const next = LastWith(spans, 1, node);
        walk.push_back(next ? next : walk.back());
        node = UpperNode(*walk.back());
    }
    return walk;
}

template <class T> void AddInOrder(const std::vector<T>& walk, bool atTail, std::vector<T>& list)
{
    for (const T& entry : walk)
        list.insert(atTail ? list.end() : list.begin(), entry);
}

} // namespace

// ---- order within a route ----

bool Network::GetMostLowerNodeId(int routeId, int& nodeId) const
{
    return FirstNotAmong(SpansOf(routeId), 1, 0, nodeId);
}

bool Network::GetMostUpperNodeId(int routeId, int& nodeId) const
{
    return FirstNotAmong(SpansOf(routeId), 0, 1, nodeId);
}

bool Network::GetLastSpanFromRoute(int routeId, int& spanId) const
{
    int node = 0;
    return GetMostLowerNodeId(routeId, node) && GetSpanConnectLowerNode(node, routeId, spanId);
}

bool Network::GetSortSpanInRoute(int routeId, Ids& spanIds, bool lowestFirst) const
{
    Records walk;
    if (!GetSortSpanInRoute(routeId, walk, true)) return false;
    AddInOrder(IdsOf(walk), lowestFirst, spanIds);
    return true;
}

bool Network::GetSortSpanInRoute(int routeId, Records& spans, bool lowestFirst) const
{
    int node = 0;
    if (!GetMostLowerNodeId(routeId, node)) return false;
    AddInOrder(WalkUp(SpansOf(routeId), node), lowestFirst, spans);
    return true;
}

bool Network::GetSortSpanInRouteStrict(int routeId, Records& spans, bool lowestFirst) const
{
    const Records all = SpansOf(routeId);
    int node = 0;
    if (!(lowestFirst ? GetMostLowerNodeId(routeId, node) : GetMostUpperNodeId(routeId, node))) return false;
    Records walk;
    for (std::size_t step = 0; step < all.size(); ++step) {
        Record* const next = LastWith(all, lowestFirst ? 1 : 0, node);
        if (!next) return false;
        walk.push_back(next);
        node = lowestFirst ? UpperNode(*next) : LowerNode(*next);
    }
    spans.insert(spans.end(), walk.begin(), walk.end());
    return true;
}

bool Network::GetSortUpNodeInRoute(int routeId, Ids& nodeIds) const
{
    const Records all = SpansOf(routeId);
    int node = 0;
    if (!GetMostUpperNodeId(routeId, node)) return false;
    nodeIds.push_back(node);
    for (std::size_t step = 1; step < all.size(); ++step) {
        Record* const next = LastWith(all, 0, node);
        if (next) node = LowerNode(*next);
        nodeIds.push_back(node);
    }
    return true;
}

bool Network::GetSortSpanNodeInRoute(int routeId, Records& spans, Records& nodes) const
{
    int lowest = 0;
    if (!GetMostLowerNodeId(routeId, lowest)) return false;
    bool isThere = false;
    for (const Record* const node : nodes)
        isThere = isThere || node->id == lowest;
    if (!isThere && Node(lowest)) nodes.push_back(Node(lowest));
    for (Record* const span : WalkUp(SpansOf(routeId), lowest)) {
        spans.push_back(span);
        if (Record* const node = Node(UpperNode(*span))) nodes.push_back(node);
    }
    return true;
}

bool Network::GetSpanObjectListFromRoute(int routeId, bool lowestFirst, Records& spans, bool sorted) const
{
    if (sorted) return GetSortSpanInRouteStrict(routeId, spans, lowestFirst);
    const Records all = SpansOf(routeId);
    spans.insert(spans.end(), all.begin(), all.end());
    return !all.empty();
}

int Network::GetSpanNumInRoute(int routeId) const
{
    return static_cast<int>(SpansOf(routeId).size());
}

bool Network::GetRouteLength(int routeId, double& length) const
{
    length = 0.0;
    const Records all = SpansOf(routeId);
    for (const Record* const span : all)
        length += Double(*span, L"splength");
    return !all.empty();
}

bool Network::IsFirstSpanAndGetSecondSpan(int spanId, int& secondSpanId) const
{
    Record* const span = Span(spanId);
    Ids fromTop;
    if (!span || !GetSortSpanInRoute(RouteOf(*span), fromTop, false)) return false;
    if (fromTop.front() != spanId) return false;
    if (fromTop.size() > 1) secondSpanId = fromTop[1];
    return true;
}

// ---- neighbours of a span ----

bool Network::GetLowerSpan(int spanId, int& lowerSpanId) const
{
    Record* const span = Span(spanId);
    if (!span) return false;
    const Records lower = Linked(objectdata::Span, 0, LowerNode(*span));
    if (lower.empty()) return false;
    lowerSpanId = lower.front()->id;
    return true;
}

void Network::GetLowerSpanObjectList(int spanId, Records& spans) const
{
    Records line;
    for (Record* span = Span(spanId); span;) {
        line.push_back(span);
        const Records below = Linked(objectdata::Span, 0, LowerNode(*span));
        span = below.empty() ? nullptr : below.front();
        for (const Record* const listed : line)
            if (listed == span) span = nullptr;
    }
    spans.insert(spans.end(), line.begin(), line.end());
}

void Network::GetLowerSpanObjectList(int spanId, Ids& spanIds) const
{
    Records line;
    GetLowerSpanObjectList(spanId, line);
    for (const Record* const span : line)
        spanIds.push_back(span->id);
}

bool Network::GetLowerSpanObjectList(int fromSpanId, int toSpanId, Ids& spanIds) const
{
    if (fromSpanId == toSpanId) {
        spanIds.push_back(fromSpanId);
        return true;
    }
    Ids line;
    GetLowerSpanObjectList(fromSpanId, line);
    Ids part;
    for (const int id : line) {
        part.push_back(id);
        if (id != toSpanId) continue;
        spanIds.insert(spanIds.end(), part.begin(), part.end());
        return true;
    }
    return false;
}

bool Network::GetFlowInSpanToSpan(int webId, int spanId, Ids& spanIds) const
{
    Records flowIn;
    GetFlowInSpanToSpan(spanId, flowIn);
    for (Record* const span : flowIn) {
        Record* const route = Route(RouteOf(*span));
        if (route && WebOf(*route) == webId) spanIds.push_back(span->id);
    }
    return !spanIds.empty();
}

int Network::GetFlowInSpanToSpan(int spanId, Records& spans) const
{
    spans.clear();
    Record* const span = Span(spanId);
    if (!span) return 0;
    spans = Linked(objectdata::Span, 1, UpperNode(*span));
    return static_cast<int>(spans.size());
}

int Network::GetUpperSpan(int spanId, bool sort, Ids& spanIds) const
{
    spanIds.clear();
    Records spans;
    GetFlowInSpanToSpan(spanId, spans);
    for (std::size_t p = 0; sort && p < spans.size(); ++p)
        for (std::size_t q = p + 1; q < spans.size(); ++q)
            if (CompareDouble(Double(*spans[q], L"lowercentinv"), Double(*spans[p], L"lowercentinv"), 1e-5) > 0)
                std::swap(spans[p], spans[q]);
    spanIds = IdsOf(spans);
    return static_cast<int>(spanIds.size());
}

void Network::GetUpperSpanObjectList(int webId, int spanId, Ids& spanIds) const
{
    Ids line = {spanId};
    for (;;) {
        Ids flowIn;
        if (!GetFlowInSpanToSpan(webId, line.back(), flowIn)) break;
        SortOrderSpanLowercentinv(flowIn);
        if (Contains(line, flowIn.front())) break;
        line.push_back(flowIn.front());
    }
    spanIds.insert(spanIds.end(), line.begin() + 1, line.end());
}

// ---- at a node ----

bool Network::GetConnectALlSpanToNode(int nodeId, Ids& spanIds) const
{
    bool any = false;
    for (Record* const span : All(objectdata::Span)) {
        if (UpperNode(*span) != nodeId && LowerNode(*span) != nodeId) continue;
        spanIds.push_back(span->id);
        any = true;
    }
    return any;
}

bool Network::GetSpanConnectUpperNode(int nodeId, int routeId, int& spanId) const
{
    for (Record* const span : SpansOf(routeId)) {
        if (UpperNode(*span) != nodeId) continue;
        spanId = span->id;
        return true;
    }
    return false;
}

bool Network::GetSpanConnectLowerNode(int nodeId, int routeId, int& spanId) const
{
    for (Record* const span : SpansOf(routeId)) {
        if (LowerNode(*span) != nodeId) continue;
        spanId = span->id;
        return true;
    }
    return false;
}

bool Network::GetSpanConnectUpperNode(int nodeId, const Ids& spanIds, int& spanId) const
{
    for (const int id : spanIds) {
        Record* const span = Span(id);
        if (!span || UpperNode(*span) != nodeId) continue;
        spanId = id;
        return true;
    }
    return false;
}

bool Network::GetSpanConnectLowerNode(int nodeId, const Ids& spanIds, int& spanId) const
{
    for (const int id : spanIds) {
        Record* const span = Span(id);
        if (!span || LowerNode(*span) != nodeId) continue;
        spanId = id;
        return true;
    }
    return false;
}

bool Network::GetFlowInSpanToNode(int nodeId, const Ids& spanIds, Ids& flowIn) const
{
    for (const int id : spanIds) {
        Record* const span = Span(id);
        if (span && LowerNode(*span) == nodeId) flowIn.push_back(id);
    }
    return !flowIn.empty();
}

bool Network::IsConnectSpanToNode(int nodeId, const Ids& spanIds) const
{
    for (const int id : spanIds) {
        Record* const span = Span(id);
        if (span && (UpperNode(*span) == nodeId || LowerNode(*span) == nodeId)) return true;
    }
    return false;
}

bool Network::GetAllLowerNodeFromSpan(const Ids& spanIds, Ids& nodeIds) const
{
    for (const int id : spanIds)
        if (Record* const span = Span(id)) nodeIds.push_back(LowerNode(*span));
    return true;
}

bool Network::GetAllUpperNodeFromSpan(const Ids& spanIds, Ids& nodeIds) const
{
    for (const int id : spanIds)
        if (Record* const span = Span(id)) nodeIds.push_back(UpperNode(*span));
    return true;
}

bool Network::IsEqualCoordNode(int nodeId, int otherNodeId) const
{
    const Record* const a = Node(nodeId);
    const Record* const b = Node(otherNodeId);
    if (!a || !b) return false;
    double sum = 0;
    for (const wchar_t* const key : {L"cx", L"cy", L"cz"}) {
        const double difference = Double(*a, key) - Double(*b, key);
        sum += difference * difference;
    }
    return std::sqrt(sum) < 1e-10;
}

int Network::GetIcpinqLowinvSpanID(int icpInqId) const
{
    const Record* const inflow = Find(IcpInq, icpInqId);
    if (!inflow) return 0;
    Ids touching;
    GetConnectALlSpanToNode(inflow->Has(L"icinnodeid") ? inflow->Int(L"icinnodeid") : inflow->links[0], touching);
    int best = 0;
    double lowest = DBL_MAX;
    for (const int id : touching) {
        const Record& span = *Span(id);
        if (span.Get(L"spsecrecname").empty() || !(Double(span, L"lowercentinv") < lowest)) continue;
        lowest = Double(span, L"lowercentinv");
        best = id;
    }
    return best;
}

bool Network::GetOverlapNodeFromOtherWebs(int webId, int nodeId, Ids& nodeIds) const
{
    const Ids webs = SortedByOrder((*this)[objectdata::Web], IdsOf(All(objectdata::Web)));
    if (webs.empty()) return false;
    Ids found;
    for (const int web : webs) {
        if (web == webId) continue;
        Ids routes;
        Ids low;
        if (!GetRouteIdList(web, routes) || !GetLowRouteId(routes, low)) return false;
        for (const int route : low) {
            int end = 0;
            if (!GetMostLowerNodeId(route, end)) return false;
            if (IsEqualCoordNode(nodeId, end)) found.push_back(end);
        }
    }
    nodeIds.insert(nodeIds.end(), found.begin(), found.end());
    return !found.empty();
}

} // namespace reference
