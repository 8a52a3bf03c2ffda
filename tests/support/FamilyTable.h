// The members of every object family as rows of function pointers, made from the type table.
#pragma once

#include "support/Store.h"

#include <ostream>

namespace support {

using IdList = CList<long, long>;

// The members of one family; null where the type has no such member. Links are handed in as far as Create takes them.
struct Family {
    const char* name;
    objectdata::OBJECTTYPE type;
    CObject* (*make)();
    obmgr::ObjectTable& (*table)(CObjectManager&);
    bool (*create)(CObjectManager&, long first, long second, const Values&, long*) = nullptr;
    CPipeObject* (*createObject)(CObjectManager&, long first, long second, const Values&) = nullptr;
    unsigned long (*createFromMap)(CObjectManager&, const CMapStringToString&) = nullptr;
    CPipeObject* (*copy)(const CObjectManager&, long) = nullptr;
    CPipeObject* (*live)(const CObjectManager&, long) = nullptr;
    void (*set)(CObjectManager&, CPipeObject*) = nullptr;
    bool (*ids)(const CObjectManager&, IdList&) = nullptr;
    bool (*ownedIds)(const CObjectManager&, long owner, IdList&) = nullptr;
    bool (*idsByOrder)(const CObjectManager&, IdList&) = nullptr;
    bool isSorted = false;
    // Object lists are handed on as the ids of their objects.
    bool (*objects)(const CObjectManager&, IdList&) = nullptr;
    bool (*ownedObjects)(const CObjectManager&, long owner, IdList&) = nullptr;
    bool (*constObjects)(const CObjectManager&, IdList&) = nullptr;
    bool (*remove)(CObjectManager&, long) = nullptr;
};

// In type order.
const std::vector<Family>& families();

// The families that have the member.
template <class Member> std::vector<const Family*> familiesWith(Member member)
{
    std::vector<const Family*> found;
    for (const Family& family : families())
        if (family.*member) found.push_back(&family);
    return found;
}

inline void PrintTo(const Family* family, std::ostream* stream)
{
    *stream << family->name;
}

} // namespace support
