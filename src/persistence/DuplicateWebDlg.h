// The question for a new name when two webs of a design share one.
#pragma once

#include <functional>

#include "common/Export.h"
#include "control/ResizeDialog.h"
#include "framework/String.h"

class RIVELTA_API CDuplicateWebDlg : public CResizeDialog {
public:
    explicit CDuplicateWebDlg(void* parent = nullptr);
    ~CDuplicateWebDlg() override;

    // The text of the edit box: set before DoModal, read after it.
    const CString& GetName() const { return m_name; }
    void SetName(const CString& name) { m_name = name; }
    // Tells the interface which names would lead to the next question; any name is taken as an answer all the same.
    void SetIsTaken(std::function<bool(const CString&)> isTaken) { m_isTaken = std::move(isTaken); }

    // Asks the current user interface. IDOK only for an answer that enables OK; else the name stays as it was.
    int DoModal() override;

private:
    bool EnablesOk(const CString& answer) const { return !answer.IsEmpty() && answer != m_openingName; }

    CString m_name;
    CString m_openingName; // the name when the dialog opened
    std::function<bool(const CString&)> m_isTaken;
};
