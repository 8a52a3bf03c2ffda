// Spans at the end of a route, between others and out of one.

#include "network/RouteChain.h"
#include "store/FamilyBodies.h"

namespace {

const CArray<CKeyValue, CKeyValue> kNoValues;

} // namespace

// The new span, with `node` between it and the given one. Null on failure; a span that lacks its area record then has
// told its id all the same.
CSpan* CObjectManager::CreateSpanTo(const CNode& node, CSpan& span, const CArray<CKeyValue, CKeyValue>& values,
                                    bool below, long* newId)
{
    long lower = obmgr::UpperNodeOf(span);
    if (below) {
        lower = obmgr::LowerNodeOf(span);
        span.SetLowerNodeId(node.GetObjectId());
    }
    long id = 0;
    const bool isComplete = CreateSpan(node.GetId32(), lower, obmgr::RouteOf(span), values, &id);
    if (newId && id != 0) *newId = id;
    return isComplete ? m_Span.Find(id) : nullptr;
}

// The same with a new node.
CSpan* CObjectManager::CreateSpanBeside(CSpan& span, const CArray<CKeyValue, CKeyValue>& values, bool below,
                                        long* newId)
{
    const CNode* const node = CreateNode(kNoValues);
    return node ? CreateSpanTo(*node, span, values, below, newId) : nullptr;
}

bool CObjectManager::CreateSpanNode(long spanId, const CArray<CKeyValue, CKeyValue>& values, long* newSpanId,
                                    bool below)
{
    CSpan* const span = m_Span.Find(spanId);
    return span && CreateSpanBeside(*span, values, below, newSpanId) != nullptr;
}

bool CObjectManager::CreateSpanNode(long spanId, const CArray<CKeyValue, CKeyValue>& values, long* newSpanId,
                                    long* newNodeId, bool below)
{
    CSpan* const span = m_Span.Find(spanId);
    if (!span) return false;
    const long webId = GetWebIdFromSpan(span);
    CSpan* const made = CreateNumberedSpan(*span, values, below, GetSpanNumInWeb(webId) + 1, newSpanId, newNodeId);
    if (made) WriteDefaultCalcStyle(*made, webId);
    return made != nullptr;
}

// With `number` as "order" of both. Null on failure.
CSpan* CObjectManager::CreateNumberedSpan(CSpan& span, const CArray<CKeyValue, CKeyValue>& values, bool below,
                                          int number, long* newSpanId, long* newNodeId)
{
    CNode* const node = CreateNode(kNoValues);
    if (!node) return nullptr;
    node->WriteSubAttributeInt(L"order", number);
    if (newNodeId) *newNodeId = node->GetId32();
    CSpan* const made = CreateSpanTo(*node, span, values, below, newSpanId);
    if (!made) return nullptr;
    made->WriteSubAttributeInt(L"order", number);
    return made;
}

bool CObjectManager::CreateMultiSpanNode(long routeId, const CArray<CKeyValue, CKeyValue>& values, int count,
                                         CList<long, long>& spanIds, CList<long, long>& nodeIds)
{
    long lowest = 0;
    if (!GetLastSpanFromRoute(routeId, lowest)) return false;
    CSpan* current = m_Span.Find(lowest);
    int place = current->GetSubAttributeInt(L"spno", 0);
    const CRoute* const route = m_Route.Find(routeId);
    const long webId = route ? obmgr::WebOf(*route) : 0;
    int number = GetSpanNumInWeb(webId);
    for (int i = 0; i < count; ++i) {
        long spanId = 0;
        long nodeId = 0;
        current = CreateNumberedSpan(*current, values, true, ++number, &spanId, &nodeId);
        if (!current) return false;
        WriteDefaultCalcStyle(*current, webId);
        place = obmgr::AddIds(place, 1); // the number in the data may be any
        current->WriteSubAttributeInt(L"spno", place);
        spanIds.AddTail(spanId);
        nodeIds.AddTail(nodeId);
    }
    return true;
}

// `count` spans below one another, from the given one on; `use` gets each.
template <class Use> bool CObjectManager::ExtendLine(CSpan* current, unsigned count, Use&& use)
{
    for (unsigned i = 0; i < count; ++i) {
        current = current ? CreateSpanBeside(*current, kNoValues, true, nullptr) : nullptr;
        if (!current) return false;
        use(current);
    }
    return true;
}

bool CObjectManager::AddSpan(long routeId, unsigned count, CList<long, long>& spanIds)
{
    long lowest = 0;
    return GetLastSpanFromRoute(routeId, lowest) && InsertSpan(routeId, lowest, count, spanIds);
}

bool CObjectManager::AddSpan(long routeId, unsigned count, CTypedPtrList<CObList, CSpan*>& spans)
{
    long lowest = 0;
    return GetLastSpanFromRoute(routeId, lowest) && InsertSpan(routeId, lowest, count, spans);
}

bool CObjectManager::InsertSpan([[maybe_unused]] long routeId, long spanId, unsigned count, CList<long, long>& spanIds)
{
    return ExtendLine(m_Span.Find(spanId), count, [&](const CSpan* span) { spanIds.AddTail(span->GetId32()); });
}

bool CObjectManager::InsertSpan([[maybe_unused]] long routeId, long spanId, unsigned count,
                                CTypedPtrList<CObList, CSpan*>& spans)
{
    return ExtendLine(m_Span.Find(spanId), count, [&](CSpan* span) { spans.AddTail(span); });
}

bool CObjectManager::DivideSpan(long spanId, unsigned parts, CList<long, long>& spanIds)
{
    CSpan* piece = m_Span.Find(spanId);
    if (!piece || parts == 0) return false;
    CArray<CKeyValue, CKeyValue> nodeValues;
    nodeValues.Add(CKeyValue(L"planesetflg", L"0"));
    spanIds.AddTail(spanId);
    for (unsigned i = 1; i < parts; ++i) {
        CNode* const node = CreateNode(nodeValues);
        if (!node) return false;
        piece = CreateSpanTo(*node, *piece, kNoValues, true, nullptr);
        if (!piece) return false;
        spanIds.AddTail(piece->GetId32());
    }
    return true;
}

bool CObjectManager::RemoveSpan(long routeId, unsigned count)
{
    CTypedPtrList<CObList, CSpan*> removed;
    return RemoveSpan(routeId, count, removed);
}

bool CObjectManager::RemoveSpan(long routeId, unsigned count, CTypedPtrList<CObList, CSpan*>& removed)
{
    const std::vector<CSpan*> walk = obmgr::WalkUp(obmgr::LinkedTo(m_Span, obmgr::kRouteOfSpan, routeId));
    if (walk.size() <= count) return false;
    const std::int32_t lowestNode = obmgr::LowerNodeOf(*walk.front());
    for (unsigned i = 0; i < count; ++i) {
        // A broken chain has a span twice, which then is gone already.
        CSpan* const span = m_Span.Find(walk[i]->GetId32());
        if (!span) return false;
        DeleteNodeObject(obmgr::UpperNodeOf(*span)); // a dangling node id does not keep the span
        m_Span.Remove(span);
        removed.AddTail(span);
    }
    CSpan* const next = m_Span.Find(walk[count]->GetId32());
    if (next) next->SetLowerNodeId(static_cast<unsigned long>(static_cast<long>(lowestNode)));
    return next != nullptr;
}
