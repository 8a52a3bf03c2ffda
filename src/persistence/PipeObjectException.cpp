#include "persistence/PipeObjectException.h"

#include "resources/Resources.h"

IMPLEMENT_DYNAMIC(CPipeObjectException, CException)

CPipeObjectException::~CPipeObjectException() = default;

void CPipeObjectException::SetText(unsigned id)
{
    if (id == 0)
        m_text.Empty();
    else
        m_text = obmgr::ResourceText(id);
}

bool CPipeObjectException::GetErrorMessage(CString& message) const
{
    message = m_text;
    return !m_text.IsEmpty();
}
