// Copying parts of a network into new objects, from one node up to a whole web.

#include "network/RouteForest.h"

#include <memory>
#include <unordered_map>

using obmgr::Id32;
using obmgr::LowerNodeOf;
using obmgr::UpperNodeOf;

namespace {

const CArray<CKeyValue, CKeyValue> kNoValues;

unsigned long AsLink(long id)
{
    return static_cast<unsigned long>(id);
}

} // namespace

// The copy in its table under a new id; null when the table refuses it. The id is told and used up in any case.
template <class T> T* CObjectManager::CopyInto(CObjectDataBase<T>& table, const T& source, long& newId)
{
    auto copy = std::make_unique<T>(source);
    newId = IssueObjectId();
    copy->SetObjectId(AsLink(newId));
    return table.Add(newId, copy.get()) ? copy.release() : nullptr;
}

bool CObjectManager::CopyNodeObject(long nodeId, long& newId)
{
    const CNode* const node = m_Node.Find(nodeId);
    return node && CopyInto(m_Node, *node, newId);
}

bool CObjectManager::CopyAreaInqObject([[maybe_unused]] long id, [[maybe_unused]] long& newId)
{
    return true;
}

bool CObjectManager::CopySpanObject(long spanId, long lowerNodeId, long& newId)
{
    const CSpan* const span = m_Span.Find(spanId);
    long upper = 0;
    long lower = lowerNodeId;
    if (!span || !CopyNodeObject(UpperNodeOf(*span), upper)) return false;
    if (Id32(lowerNodeId) == 0 && !CopyNodeObject(LowerNodeOf(*span), lower)) return false;
    auto copy = std::make_unique<CSpan>(*span);
    newId = IssueObjectId();
    copy->SetObjectId(AsLink(newId));
    if (!CopyAreasetObjectFromSpan(spanId, newId)) return false;
    copy->SetUpperNodeId(AsLink(upper));
    copy->SetLowerNodeId(AsLink(lower));
    return m_Span.Add(newId, copy.get()) && copy.release();
}

bool CObjectManager::CopyAreasetObjectFromSpan(long fromSpanId, long toSpanId)
{
    CList<long, long> records;
    if (!GetAreaSetIdList(fromSpanId, records)) return false;
    for (const long id : records) {
        CMapStringToString values;
        m_AreaSet.Find(id)->GetSubAttribute(values);
        CAreaSet* const copy = CreateAreaSet(toSpanId, kNoValues);
        if (!copy) return false;
        copy->SetSubAttribute(values);
    }
    return true;
}

bool CObjectManager::CopyRouteObject(long routeId, long connectId, long& newId)
{
    const CRoute* const route = m_Route.Find(routeId);
    CList<long, long> spans;
    if (!route || !GetSortSpanInRoute(routeId, spans, true)) return false;
    long lower = 0;
    if (Id32(connectId) != 0 && !GetMostUpperNodeId(connectId, lower)) return false;
    std::vector<CSpan*> copies;
    for (const long spanId : spans) {
        long copyId = 0;
        if (!CopySpanObject(spanId, lower, copyId)) return false;
        copies.push_back(m_Span.Find(copyId));
        lower = UpperNodeOf(*copies.back());
    }
    CRoute* const copy = CopyInto(m_Route, *route, newId);
    if (!copy) return false;
    copy->SetConnectId(AsLink(connectId));
    for (CSpan* span : copies)
        span->SetRouteId(AsLink(newId));
    return true;
}

bool CObjectManager::CopyAllUpperRouteObject(long routeId, long connectId, CList<long, long>& newIds)
{
    return CopyAllUpperRouteObjectSub(routeId, connectId, newIds);
}

bool CObjectManager::CopyAllUpperRouteObjectSub(long routeId, long connectId, CList<long, long>& newIds)
{
    // What is to be copied is settled first: the copy may be hung onto a route that is copied itself.
    struct Source {
        std::int32_t id;
        std::size_t below; // the place, in the same list, of the route that it flows into
    };
    std::vector<Source> sources{{Id32(routeId), 0}};
    std::vector<std::size_t> way{0}; // places of the routes from the start to the present one
    const auto tributariesOf = [&](std::int32_t id, auto&& push) {
        CList<long, long> tributaries;
        GetNextRouteIdAll(id, tributaries);
        for (const long tributary : tributaries)
            push(Id32(tributary));
    };
    obmgr::WalkUpstream<std::int32_t>(
        Id32(routeId), [](std::int32_t id) { return id; }, tributariesOf,
        [&](std::int32_t id) {
            sources.push_back({id, way.back()});
            way.push_back(sources.size() - 1);
        },
        [&](std::int32_t) { way.pop_back(); });

    std::vector<long> copies;
    for (const Source& source : sources) {
        long copyId = 0;
        if (!CopyRouteObject(source.id, copies.empty() ? connectId : copies[source.below], copyId)) return false;
        copies.push_back(copyId);
        newIds.AddTail(copyId);
    }
    return true;
}

// The records of one type that belong to the web.
template <class T> bool CObjectManager::CopySettings(CObjectDataBase<T>& table, long webId, long newWebId)
{
    for (const T* record : obmgr::LinkedTo(table, obmgr::kOwner, webId)) {
        long newId = 0;
        T* const copy = CopyInto(table, *record, newId);
        if (!copy) return false;
        copy->SetOwnerId(AsLink(newWebId));
    }
    return true;
}

bool CObjectManager::CopyWebObject(long webId, long& newId)
{
    const CWeb* const web = m_Web.Find(webId);
    if (!web || !CopyInto(m_Web, *web, newId)) return false;
    const long newWebId = newId;
    CList<long, long> routes;
    // A web without routes comes without its settings: settled so.
    if (!GetRouteIdList(webId, routes)) return true;

    std::unordered_map<std::int32_t, long> copyOf;
    CList<long, long> copies; // those at the flow end first: the first of them makes the new one
    for (const long routeId : routes) {
        const CRoute* const route = m_Route.Find(routeId);
        const std::int32_t connectId = route ? obmgr::ConnectOf(*route) : 0;
        long copyId = 0;
        if (!CopyRouteObject(routeId, connectId, copyId)) return false;
        copyOf[Id32(routeId)] = copyId;
        if (connectId == 0)
            copies.AddHead(copyId);
        else
            copies.AddTail(copyId);
    }
    for (const long copyId : copies) {
        CRoute& copy = *m_Route.Find(copyId);
        long connectId = obmgr::ConnectOf(copy);
        if (connectId != 0) {
            const auto found = copyOf.find(Id32(connectId));
            if (found == copyOf.end()) return false;
            connectId = found->second;
        }
        // Nothing hangs on the copy yet but copies that have the new web already.
        if (!HangRoute(copy, connectId, newWebId)) return false;
    }

    // The copies have left nodes behind when they were hung elsewhere; any other node without spans goes as well.
    const auto isAlone = [&](std::int32_t id) {
        return m_Node.Find(id) && !obmgr::IsLinkedTo(m_Span, obmgr::kUpperNode, id) &&
               !obmgr::IsLinkedTo(m_Span, obmgr::kLowerNode, id);
    };
    const std::vector<std::int32_t> alone = m_touchedNodes.Where(isAlone);
    for (const std::int32_t id : alone)
        if (!DeleteNodeObject(id)) return false;

    return CopySettings(m_Calcfig, webId, newWebId) && CopySettings(m_Drawfig, webId, newWebId) &&
           CopySettings(m_Sheetfig, webId, newWebId) && CopySettings(m_DivideSpanRec, webId, newWebId) &&
           CopySettings(m_SubSecRec, webId, newWebId);
}
