// CResizeDialog: the base of the library's dialogs. Without windows there is nothing to resize; what is left is the
// name under which an application keeps a dialog's size, and the question that DoModal asks.
#pragma once

#include "common/Export.h"
#include "control/UserInterface.h"

class RIVELTA_API CResizeDialog {
public:
    explicit CResizeDialog(unsigned dialogId = 0, void* parent = nullptr);
    virtual ~CResizeDialog();

    void SetAppRootKey(const CString& key) { m_appRootKey = key; }
    const CString& GetAppRootKey() const { return m_appRootKey; }
    void SetDialogName(const CString& name) { m_dialogName = name; }
    const CString& GetDialogName() const { return m_dialogName; }
    unsigned GetDialogId() const { return m_dialogId; }

    // IDOK or IDCANCEL. A derived dialog asks the current user interface; the base has nothing to ask and agrees.
    virtual int DoModal();

private:
    unsigned m_dialogId;
    CString m_appRootKey;
    CString m_dialogName;
};
