// The titles of progress dialogs over files.
#pragma once

#include "framework/String.h"

namespace obmgr {

// The library's text `id` with the path, shortened to fit a title, in the place of its "%s".
CString ProgressTitle(unsigned id, const CString& path);

} // namespace obmgr
