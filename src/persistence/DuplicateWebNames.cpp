#include "persistence/DuplicateWebNames.h"

#include <cstddef>
#include <string_view>
#include <unordered_map>

#include "persistence/DuplicateWebDlg.h"
#include "store/ObjectManager.h"

namespace obmgr {
namespace {

constexpr wchar_t kWebName[] = L"webname";
constexpr int kMostQuestions = 1000;
constexpr int kMostDeclined = 100;

} // namespace

WebRenaming::WebRenaming(const CObjectManager& manager) : m_manager(manager) {}

void WebRenaming::Rename(CWeb& web)
{
    if (m_questions++ == 0)
        for (const CWeb* other : m_manager.GetWebDb())
            m_taken.insert(other->GetSubAttribute(kWebName));

    CDuplicateWebDlg dialog;
    dialog.SetAppRootKey(m_manager.GetRegKey());
    dialog.SetName(web.GetSubAttribute(kWebName));
    dialog.SetIsTaken([this](const CString& name) { return m_taken.contains(name); });
    if (dialog.DoModal() == IDOK) {
        web.WriteSubAttribute(kWebName, dialog.GetName());
        m_taken.insert(dialog.GetName());
        m_declined = 0;
    } else {
        ++m_declined;
    }
    if (m_questions >= kMostQuestions || m_declined >= kMostDeclined || IsCancelRequested()) RenameAll();
}

void WebRenaming::RenameAll()
{
    m_taken.clear();
    for (const CWeb* web : m_manager.GetWebDb())
        m_taken.insert(web->GetSubAttribute(kWebName));
    std::unordered_set<CString> seen;
    std::unordered_map<CString, int> lastNumber;
    for (CWeb* const web : m_manager.GetWebDb()) {
        const CString name = web->GetSubAttribute(kWebName);
        if (seen.insert(name).second) continue;
        int& number = lastNumber.try_emplace(name, 1).first->second;
        CString free;
        do
            free.Format(L"%s(%d)", name, ++number);
        while (!m_taken.insert(free).second);
        web->WriteSubAttribute(kWebName, free);
    }
}

} // namespace obmgr

bool CObjectManager::CheckDuplicateWebName(CWeb** duplicate) const
{
    // The pair told of is the one whose first web stands first, with the first of the later webs of that name.
    std::unordered_map<std::string_view, std::size_t> firstOfName;
    const obmgr::KeyId key = obmgr::InternKey(obmgr::kWebName);
    CWeb* later = nullptr;
    std::size_t earliest = 0;
    std::size_t position = 0;
    for (CWeb* const web : m_Web) {
        const auto [known, isNew] = firstOfName.try_emplace(web->GetAttributes().Find(key), position);
        if (!isNew && (!later || known->second < earliest)) {
            earliest = known->second;
            later = web;
        }
        ++position;
    }
    if (!later) return true;
    if (duplicate) *duplicate = later;
    return false;
}
