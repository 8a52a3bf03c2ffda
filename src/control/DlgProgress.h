// CDlgProgress: the progress dialog of long operations, shown by the current user interface.
#pragma once

#include <memory>

#include "common/Export.h"
#include "control/UserInterface.h"

class RIVELTA_API CDlgProgress {
public:
    // `parent` is the window that it would stand before; ports have none.
    explicit CDlgProgress(void* parent = nullptr);
    ~CDlgProgress();
    CDlgProgress(const CDlgProgress&) = delete;
    CDlgProgress& operator=(const CDlgProgress&) = delete;

    // Opens the display, which the first other call does as well.
    bool Create();
    void SetRange(int lower, int upper);
    void SetPos(int position);
    void SetTitle(const CString& title);
    void SetWindowTitle(const CString& title) { SetTitle(title); }
    void SetWindowText(const CString& title) { SetTitle(title); }
    // Lets input through; the argument of the interface has no meaning here.
    void PeekAndPump(int count = 1);
    // False when the operation is to be cancelled.
    bool IsContinue();

private:
    obmgr::ProgressView* View();

    bool m_isOpen = false;
    std::unique_ptr<obmgr::ProgressView> m_view; // null also when the interface shows nothing
};

// Shows a message and gives the answer.
RIVELTA_API int AfxMessageBox(const wchar_t* text, unsigned type = MB_OK);
