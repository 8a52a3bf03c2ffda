// Names that stand twice: finding them, and clearing section groups and their records of them.

#include "network/Links.h"
#include "store/SectionKinds.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

namespace {

using Utf8 = std::string_view;

struct Pair {
    std::size_t first;
    std::size_t second;
};

// Of all pairs of equal keys the one whose first key stands first, and of those the one whose second does.
template <class Key> std::optional<Pair> FirstEqualPair(const std::vector<Key>& keys)
{
    std::optional<Pair> found;
    std::unordered_map<Key, std::size_t> firstWith;
    firstWith.reserve(keys.size());
    for (std::size_t i = 0; i < keys.size(); ++i) {
        const auto [first, isNew] = firstWith.try_emplace(keys[i], i);
        if (!isNew && (!found || first->second < found->first)) found = Pair{first->second, i};
    }
    return found;
}

// The later object of the first pair of equal values of the key, or null. An absent value is an empty one.
template <class T> const T* LaterOfEqual(const CObjectDataBase<T>& table, const char* key)
{
    const obmgr::KeyId field = obmgr::InternKey(key);
    std::vector<const T*> objects;
    std::vector<Utf8> values;
    for (const T* object : table) {
        objects.push_back(object);
        values.push_back(object->GetAttributes().Find(field));
    }
    const std::optional<Pair> pair = FirstEqualPair(values);
    return pair ? objects[pair->second] : nullptr;
}

bool GiveId(const CPipeObject* object, long& id)
{
    if (object) id = object->GetId32();
    return object != nullptr;
}

// The values by which two records of a section group are one.
using RecordKey = std::array<Utf8, 4>;

struct HashOfRecordKey {
    std::size_t operator()(const RecordKey& key) const
    {
        std::size_t hash = 0;
        for (const Utf8 value : key)
            hash = hash * 31 + std::hash<Utf8>()(value);
        return hash;
    }
};

// Texts, each once.
class Report {
public:
    explicit Report(CStringArray& names) : m_names(names) {}
    void Add(const CString& name)
    {
        if (m_reported.insert(std::wstring(name.View())).second) m_names.Add(name);
    }

private:
    CStringArray& m_names;
    std::unordered_set<std::wstring> m_reported;
};

} // namespace

bool CObjectManager::CheckManHoleCode(long& id) const
{
    return GiveId(LaterOfEqual(m_ManHole, "mhcode"), id);
}

bool CObjectManager::CheckSection(long& id) const
{
    return GiveId(LaterOfEqual(m_Section, "sekeyword"), id);
}

bool CObjectManager::CheckSectGroupName(long& id) const
{
    return GiveId(LaterOfEqual(m_SectGroup, "sgname"), id);
}

bool CObjectManager::CheckSectGroupName(long& id, CString& name) const
{
    name.Empty();
    const CSectGroup* const group = LaterOfEqual(m_SectGroup, "sgname");
    if (group) name = group->GetSubAttribute(L"sgname");
    return GiveId(group, id);
}

void CObjectManager::GetAllSectName(CList<tagSeekSect, const tagSeekSect&>& names) const
{
    for (const obmgr::SectionKind& kind : obmgr::kSectionKinds)
        TableOf(kind.type).ForEach([&](const CPipeObject& section) {
            names.AddTail(tagSeekSect{section.GetId32(), section.GetSubAttribute(kind.nameKey)});
        });
}

bool CObjectManager::CheckAllPipeName(long& id, long& otherId) const
{
    CList<tagSeekSect, const tagSeekSect&> sections;
    GetAllSectName(sections);
    std::vector<long> ids;
    std::vector<std::wstring_view> names;
    for (const tagSeekSect& section : sections) {
        ids.push_back(section.id);
        names.push_back(section.name.View());
    }
    const std::optional<Pair> pair = FirstEqualPair(names);
    if (!pair) return false;
    id = ids[pair->first];
    otherId = ids[pair->second];
    return true;
}

bool CObjectManager::IsUsedFunctionName(long webId, const CString& name) const
{
    CTypedPtrList<CObList, CSpan*> spans;
    return GetSpanObjectListFromWeb(webId, spans) && std::any_of(spans.begin(), spans.end(), [&](const CSpan* span) {
               return span->GetSubAttribute(L"calcstylename") == name;
           });
}

bool CObjectManager::DuplicateCheckSecgroup(CStringArray& names)
{
    names.RemoveAll();
    const obmgr::KeyId nameKey = obmgr::InternKey("sgname");
    std::vector<CPipeObject*> removed;
    std::unordered_set<Utf8> seen;
    Report report(names);
    for (CSectGroup* group : m_SectGroup) {
        const Utf8 name = group->GetAttributes().Find(nameKey);
        const bool isTwin = !seen.insert(name).second;
        // Groups without a name are reported like others when there are several, though none of them stays.
        if (isTwin) report.Add(group->GetSubAttribute(L"sgname"));
        if (isTwin || name.empty()) removed.push_back(group);
    }
    for (const CString& name : names) {
        CList<long, long> records;
        if (!GetSecgrouprecIdList(name, records)) continue;
        SortSectGroupRecIDList(records);
        ReNumberOrderSecgrouprec(records);
    }
    m_SectGroup.Untyped().RemoveAll(removed);
    return !removed.empty();
}

bool CObjectManager::DuplicateCheckSecgrouprec(CStringArray& names)
{
    names.RemoveAll();
    const std::array<obmgr::KeyId, 4> fields{obmgr::InternKey("srsecgroupname"), obmgr::InternKey("srsectionkey"),
                                             obmgr::InternKey("srstsecname"), obmgr::InternKey("srendsecname")};
    std::vector<CPipeObject*> removed;
    std::unordered_set<RecordKey, HashOfRecordKey> seen;
    Report report(names);
    for (CSectGroupRec* record : m_SectGroupRec) {
        // Compared value by value: joined into one text, a line feed inside a value could make two of them alike.
        RecordKey key;
        std::transform(fields.begin(), fields.end(), key.begin(),
                       [&](obmgr::KeyId field) { return record->GetAttributes().Find(field); });
        if (seen.insert(key).second) continue;
        removed.push_back(record);
        report.Add(record->GetSubAttribute(L"srsectionkey"));
    }
    m_SectGroupRec.Untyped().RemoveAll(removed);
    return !removed.empty();
}
