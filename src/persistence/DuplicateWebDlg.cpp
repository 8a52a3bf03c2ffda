#include "persistence/DuplicateWebDlg.h"

#include "resources/Resources.h"

namespace {

constexpr unsigned kDialogId = 1000;

} // namespace

CDuplicateWebDlg::CDuplicateWebDlg(void* parent) : CResizeDialog(kDialogId, parent) {}

CDuplicateWebDlg::~CDuplicateWebDlg() = default;

int CDuplicateWebDlg::DoModal()
{
    SetDialogName(L"CDuplicateWebDlg");
    m_openingName = m_name;
    const obmgr::NameQuestion question{obmgr::ResourceText(IDS_DUPLICATE_WEB_TITLE),
                                       obmgr::ResourceText(IDS_DUPLICATE_WEB_MESSAGE),
                                       obmgr::ResourceText(IDS_DUPLICATE_WEB_PROMPT),
                                       obmgr::ResourceText(IDS_DUPLICATE_WEB_OK),
                                       m_name,
                                       m_isTaken};
    const auto answer = obmgr::CurrentUserInterface().AskNewName(question);
    if (!answer || !EnablesOk(*answer)) return IDCANCEL;
    m_name = *answer;
    return IDOK;
}
