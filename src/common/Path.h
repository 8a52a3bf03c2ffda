// Helpers for file paths. Both "/" and "\" separate the parts of a path.
#pragma once

#include "common/Export.h"
#include "framework/String.h"

// The size of a file in bytes, held at 0x7FFFFFFF. -1 and a text in `error` when there is no readable file of that
// name; an empty file gives 0 and a text, too. `error` is left alone otherwise.
RIVELTA_API long orn_get_filesize(const CString& path, CString& error);

// Shortens the path in `buffer` in place to at most `maxLength` characters, the closing zero not counted: middle
// folders give way to "...", from the front. When even "first part/.../name" does not fit, mode 1 leaves the file
// name, its own front cut if needed, and mode 0 leaves nothing.
RIVELTA_API void orn_abbreviate_name(wchar_t* buffer, int maxLength, int mode);

// The long form of a path. File names have but one form here, so that this is the path itself.
RIVELTA_API CString GetLongFileName(const CString& path);
