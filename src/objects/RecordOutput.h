// Writing of records: the element of one object, and the lines that say why an object could not be written.
// The frame around the records is written by the manager.
#pragma once

#include "common/Export.h"
#include "framework/Collections.h"

// The lines gathered by failing writes of this thread since the last clearing.
RIVELTA_API void ClearFileOutErrorString();
// Appends the lines to `errors` after emptying it.
RIVELTA_API void GetFileOutErrorString(CStringArray& errors);
