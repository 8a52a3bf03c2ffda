// The bodies of the object families, once each; the type table makes the members.

#include "store/FamilyBodies.h"
#include "store/OrderSort.h"

namespace {

using Objects = std::vector<CPipeObject*>;

Objects AllOf(const obmgr::ObjectTable& table)
{
    Objects found;
    found.reserve(table.Count());
    table.ForEach([&](CPipeObject& object) { found.push_back(&object); });
    return found;
}

constexpr int kOwnerLink = 0;

Objects OwnedBy(const obmgr::ObjectTable& table, long ownerId)
{
    Objects found;
    table.VisitByLink(kOwnerLink, obmgr::Id32(ownerId), [&](CPipeObject& object) {
        found.push_back(&object);
        return true;
    });
    return found;
}

bool AppendOwnedIds(const obmgr::ObjectTable& table, long ownerId, bool byOrder, CList<long, long>& ids)
{
    if (byOrder) return obmgr::AppendIds(table, OwnedBy(table, ownerId), true, ids);
    const auto before = ids.GetCount();
    table.AppendIdsByLink(kOwnerLink, obmgr::Id32(ownerId), ids);
    return ids.GetCount() > before;
}

template <class T, class List> bool AppendObjects(const Objects& found, List& objects)
{
    for (CPipeObject* object : found)
        objects.AddTail(static_cast<T*>(object));
    return !found.empty();
}

template <class T> T* CopyOf(const CObjectDataBase<T>& table, long id)
{
    const T* const live = table.Find(id);
    return live ? new T(*live) : nullptr;
}

// The data moves, not the object, so that pointers to the live one stay good.
template <class T> void SetData(CObjectDataBase<T>& table, T* object)
{
    if (!object) return;
    T* const live = table.Find(object->GetId32());
    if (!live || live == object) return;
    table.Untyped().MakeRoomForRetired(1);
    *live = *object;
    table.Untyped().Retire(object);
}

} // namespace

bool obmgr::AppendIds(const ObjectTable& table, const std::vector<CPipeObject*>& found, bool byOrder,
                      CList<long, long>& ids)
{
    std::vector<long> result;
    result.reserve(found.size());
    for (const CPipeObject* object : found)
        result.push_back(object->GetId32());
    if (byOrder) SortByOrder(table, result);
    for (const long id : result)
        ids.AddTail(id);
    return !result.empty();
}

// clang-format off

#define OBM_DEFINE_CREATE_None(T)
#define OBM_DEFINE_CREATE_ByHand(T)
#define OBM_DEFINE_CREATE_Plain(T) \
    bool CObjectManager::Create##T(const CArray<CKeyValue, CKeyValue>& values, long* newId) \
    { return obmgr::GiveId(CreateIn(m_##T, values), newId); } \
    C##T* CObjectManager::Create##T(const CArray<CKeyValue, CKeyValue>& values) { return CreateIn(m_##T, values); }
#define OBM_DEFINE_CREATE_Owner(T) \
    bool CObjectManager::Create##T(long ownerId, const CArray<CKeyValue, CKeyValue>& values, long* newId) \
    { return obmgr::GiveId(CreateIn(m_##T, values, ownerId), newId); } \
    C##T* CObjectManager::Create##T(long ownerId, const CArray<CKeyValue, CKeyValue>& values) \
    { return CreateIn(m_##T, values, ownerId); }
#define OBM_DEFINE_CREATE_Kind(T) \
    bool CObjectManager::Create##T(int disposalType, const CArray<CKeyValue, CKeyValue>& values, long* newId) \
    { return obmgr::GiveId(CreateIn(m_##T, values, disposalType), newId); } \
    C##T* CObjectManager::Create##T(int disposalType, const CArray<CKeyValue, CKeyValue>& values) \
    { return CreateIn(m_##T, values, disposalType); }
#define OBM_DEFINE_CREATE_TwoIds(T) \
    bool CObjectManager::Create##T(long firstId, long secondId, const CArray<CKeyValue, CKeyValue>& values, long* newId) \
    { return obmgr::GiveId(CreateIn(m_##T, values, firstId, secondId), newId); } \
    C##T* CObjectManager::Create##T(long firstId, long secondId, const CArray<CKeyValue, CKeyValue>& values) \
    { return CreateIn(m_##T, values, firstId, secondId); }
#define OBM_DEFINE_CREATE_Map(T) \
    OBM_DEFINE_CREATE_Plain(T) \
    unsigned long CObjectManager::Create##T(const CMapStringToString& values) { return CreateFromMap(m_##T, values); }

#define OBM_DEFINE_GET_None(T)
#define OBM_DEFINE_GET_ByHand(T)
#define OBM_DEFINE_GET_Copy(T) \
    C##T* CObjectManager::Get##T##Object(long id) const { return CopyOf(m_##T, id); }
#define OBM_DEFINE_GET_Live(T) \
    C##T* CObjectManager::Get##T##ObjectOriginal(long id) const { return m_##T.Find(id); }
#define OBM_DEFINE_GET_CopyLive(T) OBM_DEFINE_GET_Copy(T) OBM_DEFINE_GET_Live(T)

#define OBM_DEFINE_SET_NoSet(T)
#define OBM_DEFINE_SET_Set(T) \
    void CObjectManager::Set##T##ObjectData(C##T* object) { SetData(m_##T, object); }

#define OBM_DEFINE_ALL_IDS(T, sorted) \
    bool CObjectManager::Get##T##IdList(CList<long, long>& ids) const \
    { return obmgr::AppendIds(m_##T.Untyped(), AllOf(m_##T.Untyped()), sorted, ids); }
#define OBM_DEFINE_OWNED_IDS(T, sorted) \
    bool CObjectManager::Get##T##IdList(long ownerId, CList<long, long>& ids) const \
    { return AppendOwnedIds(m_##T.Untyped(), ownerId, sorted, ids); }
#define OBM_DEFINE_IDS_None(T)
#define OBM_DEFINE_IDS_ByHand(T)
#define OBM_DEFINE_IDS_All(T) OBM_DEFINE_ALL_IDS(T, false)
#define OBM_DEFINE_IDS_AllSorted(T) OBM_DEFINE_ALL_IDS(T, true)
#define OBM_DEFINE_IDS_AllSortIfAsked(T) \
    bool CObjectManager::Get##T##IdList(CList<long, long>& ids, bool sort) const \
    { return obmgr::AppendIds(m_##T.Untyped(), AllOf(m_##T.Untyped()), sort, ids); }
#define OBM_DEFINE_IDS_Owner(T) OBM_DEFINE_OWNED_IDS(T, false)
#define OBM_DEFINE_IDS_OwnerSorted(T) OBM_DEFINE_OWNED_IDS(T, true)
#define OBM_DEFINE_IDS_AllAndOwnerSorted(T) OBM_DEFINE_ALL_IDS(T, true) OBM_DEFINE_OWNED_IDS(T, true)

#define OBM_DEFINE_OBJECTS_None(T)
#define OBM_DEFINE_OBJECTS_ByHand(T)
#define OBM_DEFINE_OBJECTS_List(T) \
    bool CObjectManager::Get##T##ObjectList(CTypedPtrList<CObList, C##T*>& objects) const \
    { return AppendObjects<C##T>(AllOf(m_##T.Untyped()), objects); }
#define OBM_DEFINE_OBJECTS_All(T) \
    bool CObjectManager::Get##T##ObjectListAll(CTypedPtrList<CObList, C##T*>& objects) const \
    { return AppendObjects<C##T>(AllOf(m_##T.Untyped()), objects); }
#define OBM_DEFINE_OBJECTS_Owner(T) \
    bool CObjectManager::Get##T##ObjectList(long ownerId, CTypedPtrList<CObList, C##T*>& objects) const \
    { return AppendObjects<C##T>(OwnedBy(m_##T.Untyped(), ownerId), objects); }
#define OBM_DEFINE_OBJECTS_OwnerAll(T) OBM_DEFINE_OBJECTS_Owner(T) OBM_DEFINE_OBJECTS_All(T)
#define OBM_DEFINE_OBJECTS_OwnerAndList(T) OBM_DEFINE_OBJECTS_Owner(T) OBM_DEFINE_OBJECTS_List(T)
#define OBM_DEFINE_OBJECTS_ListAndConst(T) \
    OBM_DEFINE_OBJECTS_List(T) \
    bool CObjectManager::Get##T##ObjectList(CList<const C##T*, const C##T* const&>& objects) const \
    { return AppendObjects<const C##T>(AllOf(m_##T.Untyped()), objects); }

#define OBM_DEFINE_DELETE_ByHand(T)
#define OBM_DEFINE_DELETE_Simple(T) \
    bool CObjectManager::Delete##T##Object(long id) { return m_##T.Remove(m_##T.Find(id)); }

#define OBM_RECORD(T, tag, owner, create, get, set, ids, objects, del, ...) \
    OBM_DEFINE_CREATE_##create(T) \
    OBM_DEFINE_GET_##get(T) \
    OBM_DEFINE_SET_##set(T) \
    OBM_DEFINE_IDS_##ids(T) \
    OBM_DEFINE_OBJECTS_##objects(T) \
    OBM_DEFINE_DELETE_##del(T)
#include "objects/ObjectTypes.def"

// clang-format on
