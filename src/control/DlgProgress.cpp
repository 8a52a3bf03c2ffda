#include "control/DlgProgress.h"

CDlgProgress::CDlgProgress([[maybe_unused]] void* parent) {}

CDlgProgress::~CDlgProgress() = default;

bool CDlgProgress::Create()
{
    View();
    return true;
}

obmgr::ProgressView* CDlgProgress::View()
{
    if (!m_isOpen) {
        m_view = obmgr::CurrentUserInterface().OpenProgress();
        m_isOpen = true;
    }
    return m_view.get();
}

void CDlgProgress::SetRange(int lower, int upper)
{
    if (auto* const view = View()) view->SetRange(lower, upper);
}

void CDlgProgress::SetPos(int position)
{
    if (auto* const view = View()) view->SetPos(position);
}

void CDlgProgress::SetTitle(const CString& title)
{
    if (auto* const view = View()) view->SetTitle(title);
}

void CDlgProgress::PeekAndPump([[maybe_unused]] int count)
{
    if (auto* const view = View()) view->Pump();
}

bool CDlgProgress::IsContinue()
{
    auto* const view = View();
    return view ? view->IsContinue() : !obmgr::IsCancelRequested();
}

int AfxMessageBox(const wchar_t* text, unsigned type)
{
    return obmgr::CurrentUserInterface().ShowMessage(CString(text), type);
}
