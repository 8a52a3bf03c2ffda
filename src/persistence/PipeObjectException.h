// The exception by which parser callbacks and writers end their work with a text for the caller.
#pragma once

#include "common/Export.h"
#include "framework/Exception.h"
#include "framework/String.h"

// Raised as a pointer, freed with Delete by whoever catches it. An empty text means a harmless early stop.
class RIVELTA_API CPipeObjectException : public CException {
    DECLARE_DYNAMIC(CPipeObjectException)

    CPipeObjectException() = default;
    explicit CPipeObjectException(unsigned id) { SetText(id); }
    explicit CPipeObjectException(const CString& text) : m_text(text) {}
    ~CPipeObjectException() override;

    // The library's text `id`; 0 empties the text.
    void SetText(unsigned id);
    void SetText(const CString& text) { m_text = text; }
    const CString& GetText() const { return m_text; }

    // False when the text is empty.
    bool GetErrorMessage(CString& message) const override;

private:
    CString m_text;
};
