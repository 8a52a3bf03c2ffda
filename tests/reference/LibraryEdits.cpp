#include "reference/LibraryEdits.h"

namespace reference {
namespace {

// A result by pointer, null if the caller's is.
class PassedPointer {
public:
    explicit PassedPointer(int* given) : m_id(given), m_value(given ? *given : 0) {}
    ~PassedPointer()
    {
        if (m_id) *m_id = static_cast<int>(m_value);
    }
    PassedPointer(const PassedPointer&) = delete;
    PassedPointer& operator=(const PassedPointer&) = delete;
    long* Get() { return m_id ? &m_value : nullptr; }

private:
    int* m_id;
    long m_value;
};

std::vector<std::wstring> Texts(const CStringArray& array)
{
    std::vector<std::wstring> texts;
    for (const CString& text : array)
        texts.emplace_back(text.View());
    return texts;
}

CStringArray ToArray(const std::vector<std::wstring>& texts)
{
    CStringArray array;
    for (const std::wstring& text : texts)
        array.Add(text.c_str());
    return array;
}

// Through the form with objects every other time: by the number of spans asked for.
template <class WithIds, class WithSpans>
bool ByIdsOrObjects(unsigned count, Ids& spanIds, WithIds&& withIds, WithSpans&& withSpans)
{
    if (count % 2 == 0) {
        PassedList list(spanIds);
        return withIds(list.Get());
    }
    Objects spans;
    const bool done = WithObjects<CTypedPtrList<CObList, CSpan*>>(spans, withSpans);
    for (const CPipeObject* const span : spans)
        spanIds.push_back(span->GetId32());
    return done;
}

} // namespace

// ---- construction ----

bool CreateSpanNode(OpenNetwork& library, int spanId, const Values& values, int* newSpanId, bool below)
{
    PassedPointer span(newSpanId);
    return library.CreateSpanNode(spanId, ToValues(values), span.Get(), below);
}

bool CreateSpanNode(OpenNetwork& library, int spanId, const Values& values, int* newSpanId, int* newNodeId, bool below)
{
    PassedPointer span(newSpanId);
    PassedPointer node(newNodeId);
    return library.CreateSpanNode(spanId, ToValues(values), span.Get(), node.Get(), below);
}

CRoute* CreateRouteSpanNode(OpenNetwork& library, int webId, int connectId, const Values& values, CSpan*& span)
{
    return library.CreateRouteSpanNode(webId, connectId, ToValues(values), span);
}

bool CreateMultiSpanNode(OpenNetwork& library, int routeId, const Values& values, int count, Ids& spanIds, Ids& nodeIds)
{
    PassedList spans(spanIds);
    PassedList nodes(nodeIds);
    return library.CreateMultiSpanNode(routeId, ToValues(values), count, spans.Get(), nodes.Get());
}

bool AddSpan(OpenNetwork& library, int routeId, unsigned count, Ids& spanIds)
{
    const auto add = [&](auto& list) { return library.AddSpan(routeId, count, list); };
    return ByIdsOrObjects(count, spanIds, add, add);
}

bool InsertSpan(OpenNetwork& library, int routeId, int spanId, unsigned count, Ids& spanIds)
{
    const auto insert = [&](auto& list) { return library.InsertSpan(routeId, spanId, count, list); };
    return ByIdsOrObjects(count, spanIds, insert, insert);
}

bool DivideSpan(OpenNetwork& library, int spanId, unsigned parts, Ids& spanIds)
{
    PassedList list(spanIds);
    return library.DivideSpan(spanId, parts, list.Get());
}

bool RemoveSpan(OpenNetwork& library, int routeId, unsigned count, Objects& removed)
{
    return WithObjects<CTypedPtrList<CObList, CSpan*>>(
        removed, [&](auto& list) { return library.RemoveSpan(routeId, count, list); });
}

// ---- rewiring, flow ends ----

bool ConnectRoute(OpenNetwork& library, int routeId, int connectId)
{
    return library.ConnectRoute(routeId, connectId);
}

bool ChangeConnectRoute(OpenNetwork& library, int routeId, int connectId, int oldWebId, int newWebId)
{
    return library.ChangeConnectRoute(routeId, connectId, oldWebId, newWebId);
}

void UpdateConnectRouteNum(OpenNetwork& library, int webId)
{
    library.UpdateConnectRouteNum(webId);
}

void ReverseSpanInRoute(OpenNetwork& library, int routeId)
{
    library.ReverseSpanInRoute(routeId);
}

void SetUpperRouteObject(OpenNetwork& library, int routeId, int webId)
{
    library.SetUpperRouteObject(routeId, webId);
}

void UpdateManHoleNumSameRouteNum(OpenNetwork& library, int routeId, std::vector<std::wstring>& oldNumbers,
                                  std::vector<std::wstring>& newNumbers, bool lowestFirst)
{
    CStringArray before = ToArray(oldNumbers);
    CStringArray after = ToArray(newNumbers);
    library.UpdateManHoleNumSameRouteNum(routeId, before, after, lowestFirst);
    oldNumbers = Texts(before);
    newNumbers = Texts(after);
}

bool ReSetFlowEndNode(OpenNetwork& library, int routeId, const std::wstring& name)
{
    CList<long, long> unused;
    unused.AddTail(routeId);
    return library.ReSetFlowEndNode(routeId, ToCString(name), unused) && unused.GetSize() == 1;
}

bool ReSetFlowEndNodeByNode(OpenNetwork& library, int routeId, int nodeId, const std::wstring& name, Ids& rewired,
                            Ids& reversed)
{
    PassedList all(rewired);
    PassedList turned(reversed);
    return library.ReSetFlowEndNodeByNode(routeId, nodeId, ToCString(name), all.Get(), turned.Get());
}

void ReSetRouteSortOrder(OpenNetwork& library, int webId, int connectId)
{
    library.ReSetRouteSortOrder(webId, connectId);
}

bool ReleaseDivideNode(OpenNetwork& library, int ownerId, Ids& nodeIds)
{
    PassedList list(nodeIds);
    return library.ReleaseDivideNode(ownerId, list.Get());
}

// ---- deletion and copying ----

bool ConnectSpan(OpenNetwork& library, int firstSpanId, int secondSpanId)
{
    return library.ConnectSpan(firstSpanId, secondSpanId);
}

bool DeleteRouteObjectListAll(OpenNetwork& library, int webId, const Ids& routeIds)
{
    PassedList list(routeIds);
    return library.DeleteRouteObjectListAll(webId, list.Get());
}

bool CopyNodeObject(OpenNetwork& library, int nodeId, int& newId)
{
    PassedId id(newId);
    return library.CopyNodeObject(nodeId, id.Get());
}

bool CopySpanObject(OpenNetwork& library, int spanId, int lowerNodeId, int& newId)
{
    PassedId id(newId);
    return library.CopySpanObject(spanId, lowerNodeId, id.Get());
}

bool CopyAreasetObjectFromSpan(OpenNetwork& library, int fromSpanId, int toSpanId)
{
    return library.CopyAreasetObjectFromSpan(fromSpanId, toSpanId);
}

bool CopyRouteObject(OpenNetwork& library, int routeId, int connectId, int& newId)
{
    PassedId id(newId);
    return library.CopyRouteObject(routeId, connectId, id.Get());
}

bool CopyAllUpperRouteObject(OpenNetwork& library, int routeId, int connectId, Ids& newIds)
{
    PassedList list(newIds);
    return library.CopyAllUpperRouteObject(routeId, connectId, list.Get());
}

bool CopyWebObject(OpenNetwork& library, int webId, int& newId)
{
    PassedId id(newId);
    return library.CopyWebObject(webId, id.Get());
}

} // namespace reference
