// The family members whose shape is their own: projects, crossing points, lists by a key, pens by type.

#include "common/Id32.h"
#include "store/FamilyBodies.h"
#include "store/SectionKinds.h"

namespace {

using Objects = std::vector<CPipeObject*>;

Objects WithNumber(const obmgr::ObjectTable& table, const wchar_t* key, long number)
{
    Objects found;
    table.VisitByNumber(key, obmgr::Id32(number), [&](CPipeObject& object) {
        found.push_back(&object);
        return true;
    });
    return found;
}

Objects WithText(const obmgr::ObjectTable& table, const wchar_t* key, const CString& text)
{
    Objects found;
    table.VisitByText(key, text.View(), [&](CPipeObject& object) {
        found.push_back(&object);
        return true;
    });
    return found;
}

} // namespace

bool CObjectManager::GetProjectId(long& id) const
{
    const CProject* const project = GetProjectObjectOriginal();
    if (project) id = project->GetId32();
    return project != nullptr;
}

CProject* CObjectManager::GetProjectObject(long id) const
{
    const CProject* const live = m_Project.Find(id);
    return live ? new CProject(*live) : nullptr;
}

CProject* CObjectManager::GetProjectObjectOriginal(long id) const
{
    return m_Project.Find(id);
}

CProject* CObjectManager::GetProjectObjectOriginal() const
{
    return static_cast<CProject*>(m_Project.Untyped().First());
}

bool CObjectManager::GetRouteIdList(long webId, CList<long, long>& ids) const
{
    if (m_Route.IsEmpty()) return false;
    constexpr int kWebLink = 0;
    m_Route.Untyped().AppendIdsByLink(kWebLink, obmgr::Id32(webId), ids);
    return !ids.IsEmpty();
}

bool CObjectManager::GetSpanIdList(long routeId, CList<long, long>& ids) const
{
    if (m_Span.IsEmpty()) return false;
    constexpr int kRouteLink = 2;
    m_Span.Untyped().AppendIdsByLink(kRouteLink, obmgr::Id32(routeId), ids);
    return !ids.IsEmpty();
}

bool CObjectManager::GetIntPosIdList(long routeId, CList<long, long>& ids) const
{
    const obmgr::ObjectTable& table = m_IntPos.Untyped();
    const std::int32_t route = obmgr::Id32(routeId);
    Objects first;
    Objects second;
    table.VisitByLink(0, route, [&](CPipeObject& object) {
        first.push_back(&object);
        return true;
    });
    table.VisitByLink(1, route, [&](CPipeObject& object) {
        if (object.Links()[0] != route) second.push_back(&object);
        return true;
    });
    // Both lists are in table order; together they have to be as well.
    Objects found(first.size() + second.size());
    std::merge(first.begin(), first.end(), second.begin(), second.end(), found.begin(),
               [&](const CPipeObject* a, const CPipeObject* b) { return table.IsBefore(*a, *b); });
    return obmgr::AppendIds(table, found, false, ids);
}

bool CObjectManager::GetProfilelayoutObjectAll(CTypedPtrList<CObList, CProfilelayout*>& objects) const
{
    for (CProfilelayout* layout : m_Profilelayout)
        objects.AddTail(layout);
    return !m_Profilelayout.IsEmpty();
}

bool CObjectManager::GetSpdxfinIdList(long spanId, CList<long, long>& ids) const
{
    const obmgr::ObjectTable& table = m_Spdxfin.Untyped();
    return obmgr::AppendIds(table, WithNumber(table, L"sdispanid", spanId), false, ids);
}

bool CObjectManager::GetDrawbelttxIdList(long spanId, CList<long, long>& ids) const
{
    const obmgr::ObjectTable& table = m_Drawbelttx.Untyped();
    return obmgr::AppendIds(table, WithNumber(table, L"dbtspanid", spanId), false, ids);
}

bool CObjectManager::GetSecvalveIdList(long spanId, CList<long, long>& ids) const
{
    const obmgr::ObjectTable& table = m_Secvalve.Untyped();
    return obmgr::AppendIds(table, WithNumber(table, L"svspid", spanId), false, ids);
}

bool CObjectManager::GetOhaulIdList(long spanId, CList<long, long>& ids) const
{
    const obmgr::ObjectTable& table = m_Ohaul.Untyped();
    return obmgr::AppendIds(table, WithNumber(table, L"ohspid", spanId), false, ids);
}

bool CObjectManager::GetQrmultidatIdList(const CString& methodName, CList<long, long>& ids) const
{
    const obmgr::ObjectTable& table = m_Qrmultidat.Untyped();
    return obmgr::AppendIds(table, WithText(table, L"qmdqrmultiname", methodName), false, ids);
}

bool CObjectManager::GetAreasupveIdList(const CString& methodName, CList<long, long>& ids) const
{
    const obmgr::ObjectTable& table = m_Areasupve.Untyped();
    return obmgr::AppendIds(table, WithText(table, L"avqrname", methodName), false, ids);
}

bool CObjectManager::GetQrrivertimeIdList(const CString& methodName, CList<long, long>& ids) const
{
    const obmgr::ObjectTable& table = m_Qrrivertime.Untyped();
    return obmgr::AppendIds(table, WithText(table, L"qtqrname", methodName), false, ids);
}

bool CObjectManager::GetPipeIdListOfSection(long sectionId, int& type, CList<long, long>& ids) const
{
    const CSection* const section = m_Section.Find(sectionId);
    if (!section) return false;
    const CString keyword = section->GetSubAttribute(L"sekeyword");
    bool any = false;
    for (const obmgr::SectionKind& kind : obmgr::kSectionKinds) {
        const obmgr::ObjectTable& table = TableOf(kind.type);
        if (!obmgr::AppendIds(table, WithText(table, kind.sectionKey, keyword), false, ids)) continue;
        type = kind.sectType;
        any = true;
    }
    return any;
}

bool CObjectManager::GetSectGroupRecIdListOfSectGroup(long groupId, CList<long, long>& ids) const
{
    const CSectGroup* const group = m_SectGroup.Find(groupId);
    return group && GetSecgrouprecIdList(group->GetSubAttribute(L"sgname"), ids);
}

bool CObjectManager::GetSecgrouprecIdList(const CString& groupName, CList<long, long>& ids) const
{
    const obmgr::ObjectTable& table = m_SectGroupRec.Untyped();
    return obmgr::AppendIds(table, WithText(table, L"srsecgroupname", groupName), false, ids);
}

unsigned long CObjectManager::CreateDrawpendat(CDrawpendat::TYPE type, CMapStringToString& values)
{
    values.SetAt(L"dpdtype", obmgr::FormatInt(type));
    values.SetAt(L"order", obmgr::FormatInt(CDrawpendat::GetPentypeOrder(static_cast<unsigned>(type))));
    return CreateDrawpendat(values);
}

bool CObjectManager::CreateDrawpendat(CDrawpendat::TYPE first, CDrawpendat::TYPE last, CMapStringToString& values,
                                      CMap<int, int, int, int>& ids)
{
    bool any = false;
    for (int type = first; type <= static_cast<int>(last); ++type) {
        const unsigned long id = CreateDrawpendat(static_cast<CDrawpendat::TYPE>(type), values);
        ids.SetAt(type, static_cast<int>(id));
        any = any || id != 0;
    }
    return any;
}
