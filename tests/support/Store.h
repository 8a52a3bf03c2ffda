// What tests of the store share: default attributes for every tag, lists as vectors, seeds.
#pragma once

#include "store/ObDefManager.h"
#include "store/ObjectManager.h"

#include <cstdlib>
#include <string>
#include <vector>

namespace support {

using Values = CArray<CKeyValue, CKeyValue>;

// While it lives, the process's default attribute table has an entry, without attributes, for every tag.
class DefaultsForAllTags {
public:
    DefaultsForAllTags()
    {
        auto* const manager = new CObDefManager;
        for (const obmgr::RecordInfo& row : obmgr::Records())
            manager->GetDefList().AddTail(
                new CObDefault(row.type, std::wstring(row.tag.begin(), row.tag.end()).c_str()));
        CObjectManager::ReSetDefManager(manager);
    }
    ~DefaultsForAllTags() { CObjectManager::ReSetDefManager(nullptr); }
    DefaultsForAllTags(const DefaultsForAllTags&) = delete;
    DefaultsForAllTags& operator=(const DefaultsForAllTags&) = delete;
};

// Opens the protected members.
class OpenManager : public CObjectManager {
public:
    using CObjectManager::GetConnectRouteSortOrder;
    using CObjectManager::GetDefFunctionName;
    using CObjectManager::GetDistancePtPt;
    using CObjectManager::GetLastSpanFromRoute;
    using CObjectManager::GetMaxObjectId;
    using CObjectManager::IsIdContain;
    using CObjectManager::IssueObjectId;
    using CObjectManager::ReverseSpanInRoute;
    using CObjectManager::SetObjectId;
    using CObjectManager::SetUpperRouteObject;

    // From here on only `count` more objects can be made: the tables refuse the ids behind.
    void LeaveIds(long count) { SetObjectId(2147483546 - count); }
};

// The pairs of a Create call: values({{L"order", L"1"}}).
inline Values values(std::initializer_list<std::pair<const wchar_t*, const wchar_t*>> pairs)
{
    Values result;
    for (const auto& [key, value] : pairs)
        result.Add(CKeyValue(key, value));
    return result;
}

// While DefaultsForAllTags lives: new objects of the tag get these attributes; cannot be made.
inline void setDefaults(const wchar_t* tag, std::initializer_list<std::pair<const wchar_t*, const wchar_t*>> pairs)
{
    CMapStringToString map;
    for (const auto& [key, value] : pairs)
        map.SetAt(key, value);
    obmgr::GetObDefManager()->SetDefValue(tag, map);
}

inline void dropDefaults(const wchar_t* tag)
{
    CObDefaultPtrList& entries = obmgr::GetObDefManager()->GetDefList();
    for (POSITION position = entries.GetHeadPosition(); position;) {
        const POSITION present = position;
        CObDefault* const entry = entries.GetNext(position);
        if (!entry->Is(tag)) continue;
        entries.RemoveAt(present);
        delete entry;
    }
}

inline std::vector<long> toVector(const CList<long, long>& list)
{
    return {list.begin(), list.end()};
}

// The list that a call fills: idsOf([&](auto& ids) { return manager.GetWebIdList(ids); }). Checks the result, too.
template <class Fill> std::vector<long> idsOf(Fill&& fill)
{
    CList<long, long> list;
    const bool any = fill(list);
    std::vector<long> result = toVector(list);
    if (any == result.empty()) result.push_back(-999999); // the bool does not fit the list: no test expects this id
    return result;
}

// The seed of a randomised test; RIVELTA_SEED replays one.
inline unsigned testSeed(unsigned usual)
{
    const char* const text = std::getenv("RIVELTA_SEED");
    return text ? static_cast<unsigned>(std::strtoul(text, nullptr, 10)) : usual;
}

} // namespace support
