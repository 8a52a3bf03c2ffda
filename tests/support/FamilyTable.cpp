#include "support/FamilyTable.h"

namespace support {
namespace {

template <class List> bool toIds(bool result, const List& objects, IdList& ids)
{
    for (const auto* object : objects)
        ids.AddTail(object->GetId32());
    return result;
}

// clang-format off
#define OBM_CREATE_None(T)
#define OBM_CREATE_ByHand(T)
#define OBM_CREATE_WITH(T, ...) \
    f.create = [](CObjectManager& m, [[maybe_unused]] long first, [[maybe_unused]] long second, const Values& v, long* id) { return m.Create##T(__VA_ARGS__ __VA_OPT__(,) v, id); }; \
    f.createObject = [](CObjectManager& m, [[maybe_unused]] long first, [[maybe_unused]] long second, const Values& v) -> CPipeObject* { return m.Create##T(__VA_ARGS__ __VA_OPT__(,) v); };
#define OBM_CREATE_Plain(T) OBM_CREATE_WITH(T)
#define OBM_CREATE_Owner(T) OBM_CREATE_WITH(T, first)
#define OBM_CREATE_Kind(T) OBM_CREATE_WITH(T, static_cast<int>(first))
#define OBM_CREATE_TwoIds(T) OBM_CREATE_WITH(T, first, second)
#define OBM_CREATE_Map(T) OBM_CREATE_WITH(T) \
    f.createFromMap = [](CObjectManager& m, const CMapStringToString& v) { return m.Create##T(v); };

#define OBM_GET_None(T)
#define OBM_GET_ByHand(T) OBM_GET_CopyLive(T)
#define OBM_GET_Copy(T) f.copy = [](const CObjectManager& m, long id) -> CPipeObject* { return m.Get##T##Object(id); };
#define OBM_GET_Live(T) f.live = [](const CObjectManager& m, long id) -> CPipeObject* { return m.Get##T##ObjectOriginal(id); };
#define OBM_GET_CopyLive(T) OBM_GET_Copy(T) OBM_GET_Live(T)

#define OBM_SET_NoSet(T)
#define OBM_SET_Set(T) f.set = [](CObjectManager& m, CPipeObject* o) { m.Set##T##ObjectData(static_cast<C##T*>(o)); };

#define OBM_IDS_None(T)
#define OBM_IDS_ByHand(T)
#define OBM_IDS_All(T) f.ids = [](const CObjectManager& m, IdList& ids) { return m.Get##T##IdList(ids); };
#define OBM_IDS_AllSorted(T) OBM_IDS_All(T) f.isSorted = true;
#define OBM_IDS_Owner(T) f.ownedIds = [](const CObjectManager& m, long owner, IdList& ids) { return m.Get##T##IdList(owner, ids); };
#define OBM_IDS_OwnerSorted(T) OBM_IDS_Owner(T) f.isSorted = true;
#define OBM_IDS_AllAndOwnerSorted(T) OBM_IDS_All(T) OBM_IDS_OwnerSorted(T)
#define OBM_IDS_AllSortIfAsked(T) \
    f.ids = [](const CObjectManager& m, IdList& ids) { return m.Get##T##IdList(ids, false); }; \
    f.idsByOrder = [](const CObjectManager& m, IdList& ids) { return m.Get##T##IdList(ids, true); };

#define OBM_OBJECTS_OF(member, T, List, ...) \
    f.member = [](const CObjectManager& m, IdList& ids) { List list; const bool any = m.__VA_ARGS__; return toIds(any, list, ids); };
#define OBM_LIST(T) CTypedPtrList<CObList OBM_COMMA C##T*>
#define OBM_COMMA ,
#define OBM_OBJECTS_None(T)
#define OBM_OBJECTS_ByHand(T)
#define OBM_OBJECTS_List(T) OBM_OBJECTS_OF(objects, T, OBM_LIST(T), Get##T##ObjectList(list))
#define OBM_OBJECTS_All(T) OBM_OBJECTS_OF(objects, T, OBM_LIST(T), Get##T##ObjectListAll(list))
#define OBM_OBJECTS_Owner(T) \
    f.ownedObjects = [](const CObjectManager& m, long owner, IdList& ids) { \
        CTypedPtrList<CObList, C##T*> list; const bool any = m.Get##T##ObjectList(owner, list); return toIds(any, list, ids); };
#define OBM_OBJECTS_OwnerAll(T) OBM_OBJECTS_Owner(T) OBM_OBJECTS_All(T)
#define OBM_OBJECTS_OwnerAndList(T) OBM_OBJECTS_Owner(T) OBM_OBJECTS_List(T)
#define OBM_OBJECTS_ListAndConst(T) OBM_OBJECTS_List(T) \
    OBM_OBJECTS_OF(constObjects, T, CList<const C##T* OBM_COMMA const C##T* const&>, Get##T##ObjectList(list))

#define OBM_DELETE_ByHand(T)
#define OBM_DELETE_Simple(T) f.remove = [](CObjectManager& m, long id) { return m.Delete##T##Object(id); };
// clang-format on

std::vector<Family> makeFamilies()
{
    std::vector<Family> families;
#define OBM_RECORD(T, tag, owner, create, get, set, ids, objects, del, ...)                                            \
    {                                                                                                                  \
        Family f{"C" #T, objectdata::T, C##T::CreateObject,                                                            \
                 [](CObjectManager& m) -> obmgr::ObjectTable& { return m.Get##T##Db().Untyped(); }};                   \
        OBM_CREATE_##create(T) OBM_GET_##get(T) OBM_SET_##set(T) OBM_IDS_##ids(T);                                     \
        OBM_OBJECTS_##objects(T) OBM_DELETE_##del(T);                                                                  \
        families.push_back(f);                                                                                         \
    }
#include "objects/ObjectTypes.def"
    return families;
}

} // namespace

const std::vector<Family>& families()
{
    static const std::vector<Family> all = makeFamilies();
    return all;
}

} // namespace support
