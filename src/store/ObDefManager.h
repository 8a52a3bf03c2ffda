// CObDefManager: the default attributes that new records start with, by tag. One table serves all managers of the
// process; nothing locks it.
#pragma once

#include "objects/ObDefault.h"

class RIVELTA_API CObDefManager : public CObject {
    DECLARE_DYNCREATE(CObDefManager)

public:
    CObDefManager() = default;
    CObDefManager(const CObDefManager&) = delete;
    CObDefManager& operator=(const CObDefManager&) = delete;
    ~CObDefManager() override;

    // The first entry of the tag; `values` is emptied in any case. False when there is none.
    bool GetDefValue(const CString& name, CMapStringToString& values) const;
    // Replaces the values of the first entry of the tag. No entry is ever added: without one the result is false, and
    // the edit flag is cleared with it even if earlier changes are unsaved.
    bool SetDefValue(const CString& name, const CMapStringToString& values);
    // The same, but keeps keys that `values` does not hold.
    bool UpdateDefValue(const CString& name, const CMapStringToString& values);
    // Every entry of the tag, after emptying `list`; the entries stay the manager's.
    bool GetDefValueAll(const CString& name, CTypedPtrList<CObList, CObDefault*>& list) const;
    CTypedPtrList<CObList, CObDefault*>& GetDefList() { return m_listDef; }
    // Replaces the entries by copies of those in `list`.
    void SetDefList(const CTypedPtrList<CObList, CObDefault*>& list);
    // Whether there are changes that no file has.
    bool IsEdit() const { return m_bEdit; }
    void SetEditFlg(bool edit) { m_bEdit = edit; }
    void ClearDEFLIST();

    // ---- The definition file (persistence/DefaultAttributeFile.cpp) ----
    // Appends the entries of the file. False with a text in `error`; what was read until then stays.
    bool ReadDefFile(const CString& path, CString& error);
    // 0 nothing to save, 1 parser exception, 2 document exception, 3 completed (the normal end, with a text in
    // `error` that callers pay no heed to), 4 no document implementation, 5 out of memory.
    int SaveDefFile(const CString& path, const CString& version, CString& error);

private:
    CObDefault* FindFirst(const CString& name) const;

    CTypedPtrList<CObList, CObDefault*> m_listDef{10}; // owned
    bool m_bEdit = false;
};

namespace obmgr {

// The table of the process. Null only outside the library's life.
RIVELTA_API CObDefManager* GetObDefManager();

} // namespace obmgr
