// The record types as data: numbers, tags, link fields, places in the file. Made from ObjectTypes.def; no other
// code lists the types.
#pragma once

#include "common/Export.h"

#include <array>
#include <cstdint>
#include <span>
#include <string_view>

class CString;

namespace objectdata {

// The number of each record type. Applications and the macro engine rely on the values.
enum OBJECTTYPE : int {
#define OBM_RECORD(T, ...) T,
#include "objects/ObjectTypes.def"
    kTypeCount,
    NoOwner = -1, // as an owner: the type has none
    Any = -2,     // as an owner or link target: the id may name an object of any type
};

// The type whose tag is `name`, compared exactly; -1 when no type has it.
RIVELTA_API OBJECTTYPE Name2Type(const CString& name);

} // namespace objectdata

namespace obmgr {

using objectdata::OBJECTTYPE;

inline constexpr int kTypeCount = objectdata::kTypeCount;

// What the reader does with a record of the type.
enum class Reader : std::uint8_t {
    Accepts, // adds it; a repeated id is an error
    Merges,  // adds it; a repeated id continues the record that has the id
    Refuses, // written by a save, yet not read back
};

// One numeric XML attribute after the id. A reference is moved when a file is appended to a design, a code is not.
struct LinkField {
    std::string_view name;
    bool isReference = false;
    OBJECTTYPE target = objectdata::NoOwner; // for references: the type that the id names, or Any
};

inline constexpr int kMaxLinks = 3;

struct LinkFields {
    std::array<LinkField, kMaxLinks> fields{};
    int count = 0;

    constexpr std::span<const LinkField> All() const { return {fields.data(), static_cast<std::size_t>(count)}; }
};

struct RecordInfo {
    OBJECTTYPE type;
    std::string_view tag;
    std::wstring_view className; // with the leading C
    OBJECTTYPE owner;
    LinkFields links;
    int save; // place in a full save, 0 when it is not part of one
    Reader reader;
    unsigned writeFailure; // string id of the message for a failed write of the table
};

// The rows in type order.
RIVELTA_API std::span<const RecordInfo> Records();
RIVELTA_API const RecordInfo& RecordOf(OBJECTTYPE type);
// Null when no type has the tag. The second form ignores the case of ASCII letters, as the file reader does.
RIVELTA_API const RecordInfo* FindByTag(std::string_view tag);
RIVELTA_API const RecordInfo* FindByTagIgnoringCase(std::u16string_view tag);

// The order in which the manager goes through its tables: type order, except that areaset comes before areaoutq
// and attboxvu comes after manholecapcode.
RIVELTA_API std::span<const OBJECTTYPE> CanonicalOrder();
// The types of a full save in file order, then (not part of it) the map data in type order.
RIVELTA_API std::span<const OBJECTTYPE> SaveOrder();
RIVELTA_API std::span<const OBJECTTYPE> MapDataOrder();

} // namespace obmgr
