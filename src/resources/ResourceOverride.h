// The guard under which library code loads its texts on an application's call.
#pragma once

#include "common/Export.h"
#include "resources/Resources.h"

// Makes the texts of this library the current ones for its scope; the previous handle comes back on every path out.
// Guards nest. The handle is process wide: only one thread at a time may stand inside guards.
class RIVELTA_API CObmgerResourceOverride { // name as published
public:
    CObmgerResourceOverride();
    virtual ~CObmgerResourceOverride();
    CObmgerResourceOverride(const CObmgerResourceOverride&) = delete;
    CObmgerResourceOverride& operator=(const CObmgerResourceOverride&) = delete;

private:
    obmgr::ResourceHandle m_previous;
};
