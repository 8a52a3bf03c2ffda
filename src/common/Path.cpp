#include "common/Path.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cwchar>
#include <limits>
#include <string>

#include <sys/stat.h>
#include <unistd.h>

#include "framework/Exception.h"
#include "framework/FileName.h"

namespace {

constexpr std::wstring_view kSeparators = L"/\\";
constexpr std::wstring_view kDots = L"...";

CString describe(int osError, const CString& path)
{
    const CFileException failure(CFileException::OsErrorToException(osError), osError, path);
    CString text;
    failure.GetErrorMessage(text);
    return text;
}

} // namespace

long orn_get_filesize(const CString& path, CString& error)
{
    const std::string native = obmgr::NativePath(path);
    struct stat info = {};
    if (::stat(native.c_str(), &info) != 0) {
        error = describe(errno, path);
        return -1;
    }
    if (S_ISDIR(info.st_mode)) {
        error = describe(EISDIR, path);
        return -1;
    }
    if (::access(native.c_str(), R_OK) != 0) {
        error = describe(errno, path);
        return -1;
    }
    if (info.st_size == 0) error = L"The file is empty: " + path + L".";
    return static_cast<long>(std::min<off_t>(info.st_size, std::numeric_limits<std::int32_t>::max()));
}

void orn_abbreviate_name(wchar_t* buffer, int maxLength, int mode)
{
    if (!buffer) AfxThrowInvalidArgException();
    const std::wstring path = buffer;
    const std::size_t most = maxLength < 0 ? 0 : static_cast<std::size_t>(maxLength);
    if (path.size() <= most) return;

    const auto answer = [buffer](const std::wstring& text) {
        std::wmemcpy(buffer, text.c_str(), text.size() + 1); // never longer than what stood there
    };
    // The first part: a drive or root, if there is one, and the folder behind it.
    const std::size_t rootStart = path.size() > 1 && path[1] == L':' ? 2 : 0;
    const std::size_t rootEnd = std::min(path.find_first_not_of(kSeparators, rootStart), path.size());
    const std::size_t firstEnd = path.find_first_of(kSeparators, rootEnd);
    if (firstEnd != std::wstring::npos) {
        const std::wstring front = path.substr(0, firstEnd + 1).append(kDots);
        for (std::size_t cut = path.find_first_of(kSeparators, firstEnd + 1); cut != std::wstring::npos;
             cut = path.find_first_of(kSeparators, cut + 1)) {
            if (front.size() + (path.size() - cut) <= most) return answer(front + path.substr(cut));
        }
    }
    if (mode == 0) return answer(std::wstring());
    const std::wstring name = path.substr(path.find_last_of(kSeparators) + 1); // npos + 1 is the start
    if (name.size() <= most) return answer(name);
    if (most <= kDots.size()) return answer(name.substr(name.size() - most));
    answer(std::wstring(kDots) + name.substr(name.size() - (most - kDots.size())));
}

CString GetLongFileName(const CString& path)
{
    return path;
}
