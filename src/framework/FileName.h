// Wide file names against the bytes of the names on disk, which are UTF-8.
// A byte that is no UTF-8 stands in the wide name as U+DC00 + byte, so that every name on disk can be named, and a
// path that came from the system leads back to the same file.
#pragma once

#include <string>
#include <string_view>

#include "common/Export.h"
#include "framework/String.h"

namespace obmgr {

RIVELTA_API std::string NativePath(std::wstring_view path);
inline std::string NativePath(const CString& path)
{
    return NativePath(path.View());
}
inline std::string NativePath(const wchar_t* path)
{
    return NativePath(path ? std::wstring_view(path) : std::wstring_view());
}
RIVELTA_API CString PathFromNative(std::string_view path);

} // namespace obmgr
