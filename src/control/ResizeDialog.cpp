#include "control/ResizeDialog.h"

CResizeDialog::CResizeDialog(unsigned dialogId, [[maybe_unused]] void* parent) : m_dialogId(dialogId) {}

CResizeDialog::~CResizeDialog() = default;

int CResizeDialog::DoModal()
{
    return IDOK;
}
