// From names to records: sections, calculation methods, routes by number, manhole classes; sums of area records.

#include "common/Id32.h"
#include "common/Text2Number.h"
#include "store/ObjectManager.h"
#include "store/SectionKinds.h"

#include <algorithm>
#include <vector>

namespace {

// The first object in list order whose key has the text, or null.
CPipeObject* FirstWithText(const obmgr::ObjectTable& table, const wchar_t* key, const CString& text)
{
    return table.FirstByText(key, text.View());
}

CString TagOf(objectdata::OBJECTTYPE type)
{
    const std::string_view tag = obmgr::RecordOf(type).tag;
    const std::wstring text(tag.begin(), tag.end());
    return CString(text.c_str());
}

// What differs between the area records of inflows and outflows.
struct AreaKeys {
    const wchar_t* number;
    const wchar_t* housesLeft;
    const wchar_t* housesRight;
    const wchar_t* area;
};
constexpr AreaKeys kInflowKeys{L"iasratiosetnum", L"iashousel", L"iashouser", L"iasarea"};
constexpr AreaKeys kOutflowKeys{L"oasratiosetnum", L"oashousel", L"oashouser", L"oasarea"};

void SumAreas(const obmgr::ObjectTable& table, const AreaKeys& keys, const CList<long, long>& ids,
              const CMapStringToString& commentOfNumber, double& houses, double& area, CStringArray& numbers,
              CStringArray& comments)
{
    for (const long id : ids) {
        const CPipeObject* const record = table.Find(id);
        if (!record) continue;
        houses +=
            record->GetSubAttributeDouble(keys.housesLeft, 0.0) + record->GetSubAttributeDouble(keys.housesRight, 0.0);
        area += record->GetSubAttributeDouble(keys.area, 0.0);
        const CString number = record->GetSubAttribute(keys.number);
        CString comment;
        commentOfNumber.Lookup(number, comment);
        numbers.Add(number);
        comments.Add(comment);
    }
}

// The comment of each runoff coefficient by its number; of equal numbers the last counts.
CMapStringToString CoefficientComments(const CObjectDataBase<CRaitoSet>& coefficients)
{
    CMapStringToString comments;
    for (const CRaitoSet* coefficient : coefficients)
        comments.SetAt(coefficient->GetSubAttribute(L"rtnumber"), coefficient->GetSubAttribute(L"rtscomment"));
    return comments;
}

} // namespace

bool CObjectManager::GetSectRecObject(const CString& name, const CString& tag, const CString& key,
                                      const CPipeSection* object, unsigned long& id, CString& type) const
{
    id = 0;
    type.Empty();
    if (!object || object->GetSubAttribute(key) != name) return false;
    type = tag;
    id = object->GetObjectId();
    return true;
}

unsigned long CObjectManager::GetSectRecId(const CString& name, CString& type, CPipeSection** object) const
{
    if (object) *object = nullptr;
    for (const obmgr::SectionKind& kind : obmgr::kSectionKinds) {
        // Each record that is compared empties it; without any section it stays.
        if (TableOf(kind.type).Count() > 0) type.Empty();
        CPipeObject* const found = FirstWithText(TableOf(kind.type), kind.nameKey, name);
        if (!found) continue;
        type = TagOf(kind.type);
        if (object) *object = static_cast<CPipeSection*>(found);
        return found->GetObjectId();
    }
    return 0;
}

bool CObjectManager::GetSectId(const CString& key, long& id) const
{
    for (const obmgr::SectionKind& kind : obmgr::kSectionKinds) {
        if (!FirstWithText(TableOf(kind.type), kind.sectionKey, key)) continue;
        // Every record with the key leads to the same section, so one per kind is enough to ask.
        const CPipeObject* const section = FirstWithText(m_Section.Untyped(), L"sekeyword", key);
        if (!section) return false;
        id = section->GetId32();
        return true;
    }
    return false;
}

long CObjectManager::GetSectionId(const CString& keyword) const
{
    const CPipeObject* const section = FirstWithText(m_Section.Untyped(), L"sekeyword", keyword);
    return section ? section->GetId32() : 0;
}

bool CObjectManager::GetSectType(long id, int& type) const
{
    for (const obmgr::SectionKind& kind : obmgr::kSectionKinds) {
        if (!TableOf(kind.type).Find(id)) continue;
        type = kind.sectType;
        return true;
    }
    return false;
}

bool CObjectManager::GetPipeInfo(const CString& name, double* height, double* width, double* topThick,
                                 double* bottomThick, double* base, CString& type) const
{
    for (double* output : {height, width, topThick, bottomThick, base})
        if (output) *output = 0.0;
    type.Empty();
    CPipeSection* section = nullptr;
    if (GetSectRecId(name, type, &section) == 0) return false;
    const auto kind = std::find_if(std::begin(obmgr::kSectionKinds), std::end(obmgr::kSectionKinds),
                                   [&](const obmgr::SectionKind& row) { return row.type == section->GetObjectType(); });
    const auto read = [&](double* output, const wchar_t* key) {
        if (output) *output = section->GetSubAttributeDouble(key, 0.0);
    };
    read(height, kind->height);
    read(width, kind->width);
    read(topThick, kind->topThick);
    read(bottomThick, kind->bottomThick);
    read(base, kind->base);
    return true;
}

bool CObjectManager::GetPipeSpec(CPipeSection::tagSPEC& spec) const
{
    CString kind;
    CPipeSection* section = nullptr;
    if (GetSectRecId(spec.name, kind, &section) == 0 || !section->LoadSpec(false)) return false;
    spec = section->GetSpec();
    return true;
}

long CObjectManager::GetFuncRecId(const CString& name, CString& tag) const
{
    for (const obmgr::MethodKind& kind : obmgr::kMethodKinds) {
        const CPipeObject* const method = FirstWithText(TableOf(kind.type), kind.nameKey, name);
        if (!method) continue;
        tag = TagOf(kind.type);
        return method->GetId32();
    }
    return 0;
}

long CObjectManager::GetRouteIdFromRouteNum(const CString& number, long web) const
{
    if (m_Route.IsEmpty()) return 0;
    if (web == 0) {
        const CProject* const project = GetProjectObjectOriginal();
        if (!project) return 0;
        web = project->GetSubAttributeInt(L"activweb", 0);
    }
    long routeId = 0;
    m_Route.Untyped().VisitByText(L"routenum", number.View(), [&](CPipeObject& object) {
        if (object.Links()[0] != obmgr::Id32(web)) return true;
        routeId = object.GetId32();
        return false;
    });
    return routeId;
}

CProfilearang* CObjectManager::GetProfilearangObjectFromName(const CString& name) const
{
    return static_cast<CProfilearang*>(FirstWithText(m_Profilearang.Untyped(), L"parangname", name));
}

bool CObjectManager::GetManHoleId(const CString& code, long& id) const
{
    const CPipeObject* const manhole = FirstWithText(m_ManHole.Untyped(), L"mhcode", code);
    if (manhole) id = manhole->GetId32();
    return manhole != nullptr;
}

void CObjectManager::GetSectGroupNameList(CStringArray& names) const
{
    for (const CSectGroup* group : m_SectGroup)
        names.Add(group->GetSubAttribute(L"sgname"));
}

bool CObjectManager::GetSumHouseAreaOfAreainq(unsigned long id, double& houses, double& area, CStringArray& numbers,
                                              CStringArray& comments) const
{
    houses = area = 0.0;
    numbers.RemoveAll();
    comments.RemoveAll();
    CList<long, long> ids;
    if (id == 0 || !GetInareasetIdList(static_cast<long>(id), ids)) return false;
    SortInareasetIdList(ids);
    SumAreas(m_Inareaset.Untyped(), kInflowKeys, ids, CoefficientComments(m_RaitoSet), houses, area, numbers, comments);
    return true;
}

bool CObjectManager::GetSumHouseAreaOfAreaoutq(unsigned long id, double& houses, double& area, CStringArray& numbers,
                                               CStringArray& comments) const
{
    houses = area = 0.0;
    numbers.RemoveAll();
    comments.RemoveAll();
    CList<long, long> ids;
    if (id == 0 || !GetOutareasetIdList(static_cast<long>(id), ids)) return false;
    SortOutareasetIdList(ids);
    SumAreas(m_Outareaset.Untyped(), kOutflowKeys, ids, CoefficientComments(m_RaitoSet), houses, area, numbers,
             comments);
    return true;
}

void CObjectManager::DrawFigureInitialize()
{
    using namespace objectdata;
    for (const auto type :
         {Drawformdat, Drawpendat, Drawfontdat, Drawbeltdat, Drawsecinfodat, Drawindxfdat, Drawintextdat}) {
        obmgr::ObjectTable& table = TableOf(type);
        table.ForEach([&](CPipeObject& object) { table.Remove(&object); });
    }
}
