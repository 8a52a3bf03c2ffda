// Writing of whole tables.

#include "control/DlgProgress.h"
#include "framework/File.h"
#include "persistence/PipeObjectException.h"
#include "resources/StringIds.h"
#include "store/ObjectTable.h"

bool obmgr::ObjectTable::FileOutAll(CStdioFile& file, int* counter, CDlgProgress* progress, int dataver) const
{
    if (m_count == 0) return true;
    // Other code may add and remove objects whenever the dialog lets input through.
    const Walk walk(this);
    for (std::size_t position = NextPosition(0); position < m_live.size(); position = NextPosition(position + 1)) {
        if (counter && progress) {
            progress->SetPos(*counter);
            progress->PeekAndPump(1);
            ++*counter;
            if (!progress->IsContinue()) throw new CPipeObjectException(IDS_SAVE_CANCELLED);
        }
        const CPipeObject* const object = At(position);
        if (object && !object->FileOut(file, dataver, false)) return false;
    }
    return true;
}
