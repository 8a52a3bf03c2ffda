#include "persistence/DuplicateWebNames.h"

#include <cstddef>
#include <string_view>
#include <unordered_map>
#include <unordered_set>

#include "persistence/DuplicateWebDlg.h"
#include "store/ObjectManager.h"

namespace obmgr {
namespace {

constexpr wchar_t kWebName[] = L"webname";
constexpr int kMostDeclined = 100;

} // namespace

void RenameDuplicateWeb(const CObjectManager& manager, CWeb& web, int& declined)
{
    std::unordered_set<CString> names;
    for (const CWeb* other : manager.GetWebDb())
        names.insert(other->GetSubAttribute(kWebName));
    const auto isTaken = [&names](const CString& name) { return names.contains(name); };

    CDuplicateWebDlg dialog;
    dialog.SetAppRootKey(manager.GetRegKey());
    dialog.SetName(web.GetSubAttribute(kWebName));
    dialog.SetIsTaken(isTaken);
    if (dialog.DoModal() == IDOK) {
        web.WriteSubAttribute(kWebName, dialog.GetName());
        declined = 0;
    } else if (++declined >= kMostDeclined || IsCancelRequested()) {
        web.WriteSubAttribute(kWebName, FirstFreeName(dialog.GetName(), isTaken));
        declined = 0;
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
