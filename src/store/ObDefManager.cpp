#include "store/ObDefManager.h"

#include "framework/Exception.h"
#include "resources/LibraryStart.h"
#include "store/ObjectManager.h"

#include <memory>

IMPLEMENT_DYNCREATE(CObDefManager, CObject)

namespace {

std::unique_ptr<CObDefManager>& GlobalManager()
{
    static auto* const manager = new std::unique_ptr<CObDefManager>;
    return *manager;
}

bool LookUpDefault(const CString& tag, const wchar_t* key, CString& value)
{
    CMapStringToString values;
    return GlobalManager() && GlobalManager()->GetDefValue(tag, values) && values.Lookup(key, value);
}

} // namespace

void obmgr::CreateGlobalDefManager()
{
    GlobalManager() = std::make_unique<CObDefManager>();
    SetDefaultValueLookup(LookUpDefault);
}

void obmgr::DestroyGlobalDefManager()
{
    SetDefaultValueLookup(nullptr);
    GlobalManager().reset();
}

CObDefManager* obmgr::GetObDefManager()
{
    EnsureLibraryStarted();
    return GlobalManager().get();
}

void CObjectManager::ReSetDefManager(CObDefManager* manager)
{
    obmgr::EnsureLibraryStarted();
    if (!manager) manager = new CObDefManager;
    if (manager != GlobalManager().get()) GlobalManager().reset(manager);
}

CObDefManager::~CObDefManager()
{
    ClearDEFLIST();
}

CObDefault* CObDefManager::FindFirst(const CString& name) const
{
    for (POSITION position = m_listDef.GetHeadPosition(); position;) {
        CObDefault* const entry = m_listDef.GetNext(position);
        if (entry && entry->Is(name)) return entry;
    }
    return nullptr;
}

bool CObDefManager::GetDefValue(const CString& name, CMapStringToString& values) const
{
    values.RemoveAll();
    const CObDefault* const entry = FindFirst(name);
    if (!entry) return false;
    for (const auto& [key, value] : entry->GetSubattribute())
        values.SetAt(key, value);
    return true;
}

bool CObDefManager::SetDefValue(const CString& name, const CMapStringToString& values)
{
    CObDefault* const entry = FindFirst(name);
    if (entry && &entry->GetSubattribute() != &values) entry->GetSubattribute().RemoveAll();
    return UpdateDefValue(name, values);
}

bool CObDefManager::UpdateDefValue(const CString& name, const CMapStringToString& values)
{
    CObDefault* const entry = FindFirst(name);
    m_bEdit = entry != nullptr;
    if (!entry || &entry->GetSubattribute() == &values) return m_bEdit;
    for (const auto& [key, value] : values)
        entry->GetSubattribute().SetAt(key, value);
    return true;
}

bool CObDefManager::GetDefValueAll(const CString& name, CTypedPtrList<CObList, CObDefault*>& list) const
{
    list.RemoveAll();
    for (POSITION position = m_listDef.GetHeadPosition(); position;) {
        CObDefault* const entry = m_listDef.GetNext(position);
        if (entry && entry->Is(name)) list.AddTail(entry);
    }
    return !list.IsEmpty();
}

void CObDefManager::SetDefList(const CTypedPtrList<CObList, CObDefault*>& list)
{
    if (&list == &m_listDef) return;
    ClearDEFLIST();
    CopyCObDefaultPtrList(list, m_listDef);
}

void CObDefManager::ClearDEFLIST()
{
    ClearCObDefaultPtrList(m_listDef);
}

bool CObjectManager::GetDefValue(unsigned long penId, const CString& name, CMapStringToString& values) const
{
    if (penId != 0) {
        if (const CDrawpendat* const pen = GetDrawpendatObjectOriginal(static_cast<long>(penId))) {
            pen->GetSubAttribute(values);
            return true;
        }
    }
    return obmgr::GetObDefManager()->GetDefValue(name, values);
}

CString CObjectManager::GetDefFunctionName(int kind) const
{
    static constexpr const wchar_t* kKeys[] = {L"defsv",    L"defrural", L"defqr",
                                               L"defcombi", L"defsvvac", L"defruralvac"};
    const CProject* const project = GetProjectObjectOriginal();
    if (!project) AfxThrowInvalidArgException();
    if (kind < 0 || kind >= static_cast<int>(std::size(kKeys))) return CString();
    return project->GetSubAttribute(kKeys[kind]);
}
