// The shapes of the object families: what each column of ObjectTypes.def declares in CObjectManager. The bodies
// stand once, in Families.cpp.
#pragma once

#include "framework/Collections.h"
#include "objects/Records.h"

// clang-format off

// ---- create: the new object starts with the defaults of its tag, then takes the given values. The first form gives
// false, the second null, when the table refuses the id or the tag has no defaults; in the latter case the object
// stays in its table without attributes. The id is used up in any case. `newId` may be null.
#define OBM_DECLARE_CREATE_None(T)
#define OBM_DECLARE_CREATE_ByHand(T)
#define OBM_DECLARE_CREATE_Plain(T) \
    bool Create##T(const CArray<CKeyValue, CKeyValue>& values, long* newId); \
    C##T* Create##T(const CArray<CKeyValue, CKeyValue>& values);
#define OBM_DECLARE_CREATE_Owner(T) \
    bool Create##T(long ownerId, const CArray<CKeyValue, CKeyValue>& values, long* newId); \
    C##T* Create##T(long ownerId, const CArray<CKeyValue, CKeyValue>& values);
#define OBM_DECLARE_CREATE_Kind(T) \
    bool Create##T(int disposalType, const CArray<CKeyValue, CKeyValue>& values, long* newId); \
    C##T* Create##T(int disposalType, const CArray<CKeyValue, CKeyValue>& values);
#define OBM_DECLARE_CREATE_TwoIds(T) \
    bool Create##T(long firstId, long secondId, const CArray<CKeyValue, CKeyValue>& values, long* newId); \
    C##T* Create##T(long firstId, long secondId, const CArray<CKeyValue, CKeyValue>& values);
// The last form gives the new id, 0 on failure.
#define OBM_DECLARE_CREATE_Map(T) \
    OBM_DECLARE_CREATE_Plain(T) \
    unsigned long Create##T(const CMapStringToString& values);

// ---- get: a copy that the caller owns; the live object, borrowed. Null for an unknown id.
#define OBM_DECLARE_GET_None(T)
#define OBM_DECLARE_GET_ByHand(T)
#define OBM_DECLARE_GET_Copy(T) C##T* Get##T##Object(long id) const;
#define OBM_DECLARE_GET_Live(T) C##T* Get##T##ObjectOriginal(long id) const;
#define OBM_DECLARE_GET_CopyLive(T) OBM_DECLARE_GET_Copy(T) OBM_DECLARE_GET_Live(T)

// ---- set: assigns to the live object with the id and keeps the given one until the next commit. An unknown id
// changes nothing, and the object stays the caller's.
#define OBM_DECLARE_SET_NoSet(T)
#define OBM_DECLARE_SET_Set(T) void Set##T##ObjectData(C##T* object);

// ---- ids: appended to `ids`, in table order or rising by the key "order"; true when there is at least one.
#define OBM_DECLARE_IDS_None(T)
#define OBM_DECLARE_IDS_ByHand(T)
#define OBM_DECLARE_IDS_All(T) bool Get##T##IdList(CList<long, long>& ids) const;
#define OBM_DECLARE_IDS_AllSorted(T) OBM_DECLARE_IDS_All(T)
#define OBM_DECLARE_IDS_AllSortIfAsked(T) bool Get##T##IdList(CList<long, long>& ids, bool sort) const;
#define OBM_DECLARE_IDS_Owner(T) bool Get##T##IdList(long ownerId, CList<long, long>& ids) const;
#define OBM_DECLARE_IDS_OwnerSorted(T) OBM_DECLARE_IDS_Owner(T)
#define OBM_DECLARE_IDS_AllAndOwnerSorted(T) OBM_DECLARE_IDS_All(T) OBM_DECLARE_IDS_Owner(T)

// ---- objects: live objects, appended to `objects` in table order; true when there is at least one.
#define OBM_DECLARE_OBJECTS_None(T)
#define OBM_DECLARE_OBJECTS_ByHand(T)
#define OBM_DECLARE_OBJECTS_List(T) bool Get##T##ObjectList(CTypedPtrList<CObList, C##T*>& objects) const;
#define OBM_DECLARE_OBJECTS_All(T) bool Get##T##ObjectListAll(CTypedPtrList<CObList, C##T*>& objects) const;
#define OBM_DECLARE_OBJECTS_Owner(T) \
    bool Get##T##ObjectList(long ownerId, CTypedPtrList<CObList, C##T*>& objects) const;
#define OBM_DECLARE_OBJECTS_OwnerAll(T) OBM_DECLARE_OBJECTS_Owner(T) OBM_DECLARE_OBJECTS_All(T)
#define OBM_DECLARE_OBJECTS_OwnerAndList(T) OBM_DECLARE_OBJECTS_Owner(T) OBM_DECLARE_OBJECTS_List(T)
#define OBM_DECLARE_OBJECTS_ListAndConst(T) \
    OBM_DECLARE_OBJECTS_List(T) \
    bool Get##T##ObjectList(CList<const C##T*, const C##T* const&>& objects) const;

// ---- del: false for an unknown id.
#define OBM_DECLARE_DELETE_ByHand(T)
#define OBM_DECLARE_DELETE_Simple(T) bool Delete##T##Object(long id);

// clang-format on
