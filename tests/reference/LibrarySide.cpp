#include "reference/LibrarySide.h"

#include <stdexcept>

namespace reference {

using namespace objectdata;

namespace {

using ListMap = CMap<long, long&, CList<long, long>*, CList<long, long>*>;

// The library's map with lists of its own.
class OwnedMap {
public:
    explicit OwnedMap(const NodeMap& entries)
    {
        for (const auto& [key, ids] : entries) {
            auto list = std::make_unique<CList<long, long>>();
            ToList(ids, *list);
            long node = key;
            map.SetAt(node, list.release());
        }
    }
    ~OwnedMap()
    {
        for (POSITION at = map.GetStartPosition(); at;) {
            long key = 0;
            CList<long, long>* list = nullptr;
            map.GetNextAssoc(at, key, list);
            delete list;
        }
    }
    OwnedMap(const OwnedMap&) = delete;
    OwnedMap& operator=(const OwnedMap&) = delete;

    NodeMap Entries() const
    {
        NodeMap entries;
        for (POSITION at = map.GetStartPosition(); at;) {
            long key = 0;
            CList<long, long>* list = nullptr;
            map.GetNextAssoc(at, key, list);
            Ids& ids = entries.emplace_back(static_cast<int>(key), Ids()).second;
            for (const long id : *list)
                ids.push_back(static_cast<int>(id));
        }
        return entries;
    }

    ListMap map;
};

} // namespace

void LibrarySide::GetConnectRouteUpperAll(int routeId, const NodeMap& byConnectId, Ids& out)
{
    const OwnedMap candidates(byConnectId);
    PassedList list(out);
    m_library.GetConnectRouteUpperAll(routeId, candidates.map, list.Get());
}

bool LibrarySide::CreateMapLowNodeSpan(int webId, NodeMap& spansByNode)
{
    OwnedMap owned(spansByNode);
    const bool result = m_library.CreateMapLowNodeSpan(webId, owned.map);
    spansByNode = owned.Entries();
    return result;
}

bool LibrarySide::GetIdListFromWeb(Type type, int webId, Ids& ids)
{
    PassedList passed(ids);
    CList<long, long>& list = passed.Get();
    switch (type) {
    case AreaInq: return m_library.GetAreaInqIdListFromWeb(webId, list);
    case AreaOutq: return m_library.GetAreaOutqIdListFromWeb(webId, list);
    case FixInq: return m_library.GetFixInqIdListFromWeb(webId, list);
    case IcpInq: return m_library.GetIcpInqIdListFromWeb(webId, list);
    case MountInq: return m_library.GetMountInqIdListFromWeb(webId, list);
    case Outq: return m_library.GetOutqIdListFromWeb(webId, list);
    case GlChange: return m_library.GetGlChangeIdListFromWeb(webId, list);
    case Inters: return m_library.GetIntersIdListFromWeb(webId, list);
    case IntPos: return m_library.GetIntPosIdListFromWeb(webId, list);
    case Lateral: return m_library.GetLateralIdListFromWeb(webId, list);
    case Secvalve: return m_library.GetSecvalveIdListFromWeb(webId, list);
    case Ohaul: return m_library.GetOhaulIdListFromWeb(webId, list);
    default: throw std::logic_error("no such member");
    }
}

bool LibrarySide::GetObjectListFromWeb(Type type, int webId, Objects& objects)
{
    switch (type) {
#define OBM_OBJECTS(T)                                                                                                 \
    case T:                                                                                                            \
        return WithObjects<CTypedPtrList<CObList, C##T*>>(                                                             \
            objects, [&](auto& list) { return m_library.Get##T##ObjectListFromWeb(webId, list); });
        OBM_OBJECTS(AreaInq)
        OBM_OBJECTS(AreaOutq)
        OBM_OBJECTS(FixInq)
        OBM_OBJECTS(IcpInq)
        OBM_OBJECTS(MountInq)
        OBM_OBJECTS(Outq)
        OBM_OBJECTS(GlChange)
        OBM_OBJECTS(Inters)
        OBM_OBJECTS(IntPos)
        OBM_OBJECTS(Lateral)
        OBM_OBJECTS(Vjoint)
        OBM_OBJECTS(Secvalve)
        OBM_OBJECTS(Ohaul)
        OBM_OBJECTS(RaitoSet)
#undef OBM_OBJECTS
    default: throw std::logic_error("no such member");
    }
}

} // namespace reference
