// The process's current directory, with wide paths.
#pragma once

#include <optional>

#include "common/Export.h"
#include "framework/String.h"

namespace obmgr {

struct RIVELTA_API CurrentDirectory {
    // None when the current directory has been deleted.
    static std::optional<CString> Get();
    // False when it cannot be entered.
    static bool Set(const CString& path);
};

// The path from the root, made with the current directory and no look at the disk; as it stands when that is gone.
RIVELTA_API CString AbsolutePath(const CString& path);

// Puts the current directory of its construction back when it ends, even if that was renamed in the meantime.
class RIVELTA_API CurrentDirectoryGuard {
public:
    CurrentDirectoryGuard() noexcept;
    ~CurrentDirectoryGuard();
    CurrentDirectoryGuard(const CurrentDirectoryGuard&) = delete;
    CurrentDirectoryGuard& operator=(const CurrentDirectoryGuard&) = delete;

    // Puts it back now; false when that failed. Later calls and the destructor do nothing.
    bool Restore() noexcept;
    // Leaves the directory as it is.
    void Release() noexcept;

private:
    int m_descriptor;
};

} // namespace obmgr
