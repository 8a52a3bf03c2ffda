// What hangs on the routes, spans and nodes of a web, as id lists and object lists.

#include "network/IdMap.h"
#include "network/Links.h"
#include "store/FamilyBodies.h"

using obmgr::Id32;

namespace {

using Entries = std::vector<obmgr::PositionMap::Entry>;

// The records of a table that a link or a key leads to, gathered owner by owner.
class Gathered {
public:
    explicit Gathered(const obmgr::ObjectTable& table) : m_table(table) {}

    void AddLinked(int link, std::int32_t id)
    {
        const auto entries = m_table.EntriesByLink(link, id);
        m_found.insert(m_found.end(), entries.begin(), entries.end());
    }
    void AddNumbered(const wchar_t* key, std::int32_t number)
    {
        m_table.VisitByNumber(key, number, [&](CPipeObject& object) {
            m_objects.push_back(&object);
            return true;
        });
    }
    void Add(CPipeObject* object) { m_objects.push_back(object); }

    // All, in table order, each once.
    std::vector<CPipeObject*> InTableOrder()
    {
        obmgr::SortIntoTableOrder(m_found);
        for (const auto entry : m_found)
            m_objects.push_back(m_table.At(entry.position));
        std::sort(m_objects.begin(), m_objects.end(),
                  [&](const CPipeObject* a, const CPipeObject* b) { return m_table.IsBefore(*a, *b); });
        m_objects.erase(std::unique(m_objects.begin(), m_objects.end()), m_objects.end());
        return std::move(m_objects);
    }

private:
    const obmgr::ObjectTable& m_table;
    Entries m_found;
    std::vector<CPipeObject*> m_objects;
};

template <class T> bool AppendTo(CTypedPtrList<CObList, T*>& list, const std::vector<CPipeObject*>& objects)
{
    for (CPipeObject* object : objects)
        list.AddTail(static_cast<T*>(object));
    return !objects.empty();
}

} // namespace

std::vector<CPipeObject*> CObjectManager::OnRoutesOfWeb(const obmgr::ObjectTable& table, long webId) const
{
    Gathered records(table);
    for (const CRoute* route : obmgr::LinkedTo(m_Route, obmgr::kWebOfRoute, webId))
        records.AddLinked(obmgr::kOwner, route->GetId32());
    return records.InTableOrder();
}

std::vector<CPipeObject*> CObjectManager::PointsOfWeb(long webId) const
{
    Gathered points(m_IntPos.Untyped());
    for (const CRoute* route : obmgr::LinkedTo(m_Route, obmgr::kWebOfRoute, webId))
        for (const int link : {0, 1})
            points.AddLinked(link, route->GetId32());
    return points.InTableOrder();
}

std::vector<CPipeObject*> CObjectManager::CrossingsOfWeb(long webId) const
{
    Gathered crossings(m_Inters.Untyped());
    for (const CRoute* route : obmgr::LinkedTo(m_Route, obmgr::kWebOfRoute, webId))
        for (const int link : {0, 1})
            for (const CIntPos* point : obmgr::LinkedTo(m_IntPos, link, route->GetId32()))
                if (CInters* const crossing = m_Inters.Find(point->Links()[1 - static_cast<std::size_t>(link)]))
                    crossings.Add(crossing);
    return crossings.InTableOrder();
}

std::vector<CPipeObject*> CObjectManager::OnSpansOfWeb(const obmgr::ObjectTable& table, const wchar_t* key,
                                                       long webId) const
{
    Gathered records(table);
    if (table.Count() > 0)
        for (const CRoute* route : obmgr::LinkedTo(m_Route, obmgr::kWebOfRoute, webId))
            for (const auto entry : m_Span.Untyped().EntriesByLink(obmgr::kRouteOfSpan, route->GetId32()))
                records.AddNumbered(key, entry.id);
    return records.InTableOrder();
}

std::vector<CPipeObject*> CObjectManager::AtNodesOfWeb(long webId) const
{
    Gathered records(m_IcpInq.Untyped());
    if (!m_IcpInq.IsEmpty())
        for (const CRoute* route : obmgr::LinkedTo(m_Route, obmgr::kWebOfRoute, webId))
            for (const CSpan* span : obmgr::LinkedTo(m_Span, obmgr::kRouteOfSpan, route->GetId32()))
                for (const std::int32_t node : {obmgr::UpperNodeOf(*span), obmgr::LowerNodeOf(*span)})
                    records.AddLinked(obmgr::kOwner, node);
    return records.InTableOrder();
}

// clang-format off

#define OBM_ON_ROUTES_IDS(T, sorted) \
    bool CObjectManager::Get##T##IdListFromWeb(long webId, CList<long, long>& ids) const \
    { return obmgr::AppendIds(m_##T.Untyped(), OnRoutesOfWeb(m_##T.Untyped(), webId), sorted, ids); }
#define OBM_ON_ROUTES_OBJECTS(T) \
    bool CObjectManager::Get##T##ObjectListFromWeb(long webId, CTypedPtrList<CObList, C##T*>& objects) const \
    { return AppendTo(objects, OnRoutesOfWeb(m_##T.Untyped(), webId)); }

OBM_ON_ROUTES_IDS(AreaInq, true)
OBM_ON_ROUTES_IDS(AreaOutq, true)
OBM_ON_ROUTES_IDS(FixInq, true)
OBM_ON_ROUTES_IDS(MountInq, true)
OBM_ON_ROUTES_IDS(Outq, true)
OBM_ON_ROUTES_IDS(GlChange, false)
OBM_ON_ROUTES_IDS(Lateral, false)
OBM_ON_ROUTES_OBJECTS(AreaInq)
OBM_ON_ROUTES_OBJECTS(AreaOutq)
OBM_ON_ROUTES_OBJECTS(FixInq)
OBM_ON_ROUTES_OBJECTS(MountInq)
OBM_ON_ROUTES_OBJECTS(Outq)
OBM_ON_ROUTES_OBJECTS(GlChange)
OBM_ON_ROUTES_OBJECTS(Lateral)
OBM_ON_ROUTES_OBJECTS(Vjoint)

// clang-format on

bool CObjectManager::GetIcpInqIdListFromWeb(long webId, CList<long, long>& ids) const
{
    return obmgr::AppendIds(m_IcpInq.Untyped(), AtNodesOfWeb(webId), true, ids);
}

bool CObjectManager::GetIcpInqObjectListFromWeb(long webId, CTypedPtrList<CObList, CIcpInq*>& objects) const
{
    return AppendTo(objects, AtNodesOfWeb(webId));
}

bool CObjectManager::GetIcpInqIdListFromRoute(long routeId, CList<long, long>& ids) const
{
    Gathered records(m_IcpInq.Untyped());
    for (const CSpan* span : obmgr::LinkedTo(m_Span, obmgr::kRouteOfSpan, routeId))
        records.AddLinked(obmgr::kOwner, obmgr::UpperNodeOf(*span));
    return obmgr::AppendIds(m_IcpInq.Untyped(), records.InTableOrder(), true, ids);
}

bool CObjectManager::GetGlChangeIdListFromSpan(long spanId, CList<long, long>& ids) const
{
    Gathered records(m_GlChange.Untyped());
    records.AddNumbered(L"glspanid", Id32(spanId));
    return obmgr::AppendIds(m_GlChange.Untyped(), records.InTableOrder(), false, ids);
}

bool CObjectManager::GetIntPosIdListFromWeb(long webId, CList<long, long>& ids) const
{
    return obmgr::AppendIds(m_IntPos.Untyped(), PointsOfWeb(webId), false, ids);
}

bool CObjectManager::GetIntPosObjectListFromWeb(long webId, CTypedPtrList<CObList, CIntPos*>& objects) const
{
    return AppendTo(objects, PointsOfWeb(webId));
}

bool CObjectManager::GetIntersIdListFromWeb(long webId, CList<long, long>& ids) const
{
    return obmgr::AppendIds(m_Inters.Untyped(), CrossingsOfWeb(webId), false, ids);
}

bool CObjectManager::GetIntersObjectListFromWeb(long webId, CTypedPtrList<CObList, CInters*>& objects) const
{
    return AppendTo(objects, CrossingsOfWeb(webId));
}

bool CObjectManager::GetSecvalveIdListFromWeb(long webId, CList<long, long>& ids) const
{
    return obmgr::AppendIds(m_Secvalve.Untyped(), OnSpansOfWeb(m_Secvalve.Untyped(), L"svspid", webId), false, ids);
}

bool CObjectManager::GetSecvalveObjectListFromWeb(long webId, CTypedPtrList<CObList, CSecvalve*>& objects) const
{
    return AppendTo(objects, OnSpansOfWeb(m_Secvalve.Untyped(), L"svspid", webId));
}

bool CObjectManager::GetOhaulIdListFromWeb(long webId, CList<long, long>& ids) const
{
    return obmgr::AppendIds(m_Ohaul.Untyped(), OnSpansOfWeb(m_Ohaul.Untyped(), L"ohspid", webId), false, ids);
}

bool CObjectManager::GetOhaulObjectListFromWeb(long webId, CTypedPtrList<CObList, COhaul*>& objects) const
{
    return AppendTo(objects, OnSpansOfWeb(m_Ohaul.Untyped(), L"ohspid", webId));
}

bool CObjectManager::GetRaitoSetObjectListFromWeb(long webId, CTypedPtrList<CObList, CRaitoSet*>& objects) const
{
    Gathered coefficients(m_RaitoSet.Untyped());
    const auto addNamed = [&](const CPipeObject& record, const wchar_t* key) {
        m_RaitoSet.Untyped().VisitByText(L"rtnumber", record.GetSubAttribute(key).View(), [&](CPipeObject& object) {
            coefficients.Add(&object);
            return true;
        });
    };
    for (const CRoute* route : obmgr::LinkedTo(m_Route, obmgr::kWebOfRoute, webId)) {
        for (const auto span : m_Span.Untyped().EntriesByLink(obmgr::kRouteOfSpan, route->GetId32()))
            for (const CAreaSet* record : obmgr::LinkedTo(m_AreaSet, obmgr::kOwner, span.id))
                addNamed(*record, L"asratiosetnum");
        for (const CAreaInq* inflow : obmgr::LinkedTo(m_AreaInq, obmgr::kOwner, route->GetId32()))
            for (const CInareaset* record : obmgr::LinkedTo(m_Inareaset, obmgr::kOwner, inflow->GetId32()))
                addNamed(*record, L"iasratiosetnum");
        for (const CAreaOutq* outflow : obmgr::LinkedTo(m_AreaOutq, obmgr::kOwner, route->GetId32()))
            for (const COutareaset* record : obmgr::LinkedTo(m_Outareaset, obmgr::kOwner, outflow->GetId32()))
                addNamed(*record, L"oasratiosetnum");
    }
    return AppendTo(objects, coefficients.InTableOrder());
}
