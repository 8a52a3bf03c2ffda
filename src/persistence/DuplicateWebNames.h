// Webs that share a name after a read.
#pragma once

#include <unordered_set>

#include "framework/String.h"

class CObjectManager;
class CWeb;

namespace obmgr {

// The questions for new names after one read. A person may decline, and is asked again. When nobody seems to be there,
// or there are more questions than anybody answers, all webs that still share a name get the first free ones.
class WebRenaming {
public:
    explicit WebRenaming(const CObjectManager& manager);

    // Asks for a new name of the web and writes it.
    void Rename(CWeb& web);

private:
    void RenameAll();

    const CObjectManager& m_manager;
    std::unordered_set<CString> m_taken; // a hint for whoever answers; the manager's own check decides
    int m_questions = 0;
    int m_declined = 0; // in a row
};

} // namespace obmgr
