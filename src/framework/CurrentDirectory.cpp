#include "framework/CurrentDirectory.h"

#include <cstdlib>
#include <memory>
#include <utility>

#include <fcntl.h>
#include <unistd.h>

#include "framework/FileName.h"

namespace obmgr {

std::optional<CString> CurrentDirectory::Get()
{
    struct Free {
        void operator()(char* text) const { std::free(text); }
    };
    const std::unique_ptr<char, Free> path(::getcwd(nullptr, 0)); // allocates what the path needs
    if (!path || *path != '/') return std::nullopt;
    return PathFromNative(path.get());
}

bool CurrentDirectory::Set(const CString& path)
{
    return ::chdir(NativePath(path).c_str()) == 0;
}

CString AbsolutePath(const CString& path)
{
    if (path.IsEmpty() || path[0] == L'/') return path;
    const auto directory = CurrentDirectory::Get();
    if (!directory) return path;
    return *directory == L"/" ? *directory + path : *directory + L"/" + path;
}

CurrentDirectoryGuard::CurrentDirectoryGuard() noexcept : m_descriptor(::open(".", O_PATH | O_DIRECTORY | O_CLOEXEC)) {}

CurrentDirectoryGuard::~CurrentDirectoryGuard()
{
    Restore();
}

bool CurrentDirectoryGuard::Restore() noexcept
{
    if (m_descriptor < 0) return false;
    const bool restored = ::fchdir(m_descriptor) == 0;
    Release();
    return restored;
}

void CurrentDirectoryGuard::Release() noexcept
{
    if (m_descriptor >= 0) ::close(std::exchange(m_descriptor, -1));
}

} // namespace obmgr
