// The bodies of Create<T>, for the sources that define members of CObjectManager. Not installed.
#pragma once

#include "common/Id32.h"
#include "store/ObDefManager.h"
#include "store/ObjectManager.h"

#include <memory>

// Uses up an id, puts a new object into the table and fetches the defaults of its tag. When there are no defaults the
// result is null, yet the object stays in its table without attributes: callers rely on both.
template <class T, class... Link>
T* CObjectManager::AddNew(CObjectDataBase<T>& table, CMapStringToString& defaults, Link... links)
{
    using Id = std::conditional_t<std::is_same_v<T, CIcpInq>, long, unsigned long>;
    const long id = IssueObjectId();
    auto object = std::make_unique<T>(static_cast<Id>(id), static_cast<Link>(links)...);
    if (!table.Add(id, object.get())) return nullptr;
    T* const live = object.release();
    const std::string_view tag = obmgr::RecordOf(obmgr::RecordTraits<T>::type).tag;
    const std::wstring name(tag.begin(), tag.end());
    return obmgr::GetObDefManager()->GetDefValue(name.c_str(), defaults) ? live : nullptr;
}

template <class T, class... Link>
T* CObjectManager::CreateIn(CObjectDataBase<T>& table, const CArray<CKeyValue, CKeyValue>& values, Link... links)
{
    CMapStringToString defaults;
    T* const object = AddNew(table, defaults, links...);
    if (!object) return nullptr;
    object->SetSubAttribute(defaults);
    object->AddSubAttribute(values);
    return object;
}

template <class T>
unsigned long CObjectManager::CreateFromMap(CObjectDataBase<T>& table, const CMapStringToString& values)
{
    CMapStringToString attributes;
    T* const object = AddNew(table, attributes);
    if (!object) return 0;
    for (const auto& [key, value] : values)
        attributes.SetAt(key, value);
    object->SetSubAttribute(attributes);
    return object->GetObjectId();
}

namespace obmgr {

// True with the object's id in `newId`, which may be null; false and nothing written without an object.
inline bool GiveId(const CPipeObject* object, long* newId)
{
    if (object && newId) *newId = object->GetId32();
    return object != nullptr;
}

// Appends the ids of `found` to `ids`; true when there is one. With `byOrder` they rise by the integer key "order".
bool AppendIds(const ObjectTable& table, const std::vector<CPipeObject*>& found, bool byOrder, CList<long, long>& ids);

} // namespace obmgr
