// CObDefault: the default attributes of one record type.
#pragma once

#include "common/Export.h"
#include "framework/Collections.h"
#include "framework/Object.h"
#include "framework/String.h"
#include "objects/ObjectTypes.h"

class RIVELTA_API CObDefault : public CObject {
    DECLARE_DYNAMIC(CObDefault)

public:
    CObDefault() = default;
    explicit CObDefault(objectdata::OBJECTTYPE type) : m_type(type) {}
    CObDefault(objectdata::OBJECTTYPE type, const CString& name) : m_type(type), m_name(name) {}
    CObDefault(const CObDefault&) = default;
    CObDefault& operator=(const CObDefault&) = default;

    objectdata::OBJECTTYPE GetType() const { return m_type; }
    // Whether this is the entry of the tag, compared exactly.
    bool Is(const CString& name) const { return m_name == name; }
    const CString& GetObjName() const { return m_name; }
    CMapStringToString& GetSubattribute() { return m_values; }
    const CMapStringToString& GetSubattribute() const { return m_values; }

private:
    objectdata::OBJECTTYPE m_type = objectdata::NoOwner;
    CString m_name;
    CMapStringToString m_values;
};

using CObDefaultPtrList = CTypedPtrList<CObList, CObDefault*>;

// Destroys the entries and empties the list.
RIVELTA_API void ClearCObDefaultPtrList(CTypedPtrList<CObList, CObDefault*>& list);
// Appends a copy of each entry of `from` to `to`.
RIVELTA_API void CopyCObDefaultPtrList(const CTypedPtrList<CObList, CObDefault*>& from,
                                       CTypedPtrList<CObList, CObDefault*>& to);

namespace obmgr {

// Where record classes find default values: the store installs the look-up in its default attribute table.
using DefaultValueLookup = bool (*)(const CString& tag, const wchar_t* key, CString& value);
RIVELTA_API void SetDefaultValueLookup(DefaultValueLookup lookup);
bool DefaultValueOf(OBJECTTYPE type, const wchar_t* key, CString& value);

} // namespace obmgr
