#include "persistence/ProgressTitle.h"

#include <array>
#include <cwchar>

#include "common/Path.h"
#include "resources/Resources.h"

namespace obmgr {

CString ProgressTitle(unsigned id, const CString& path)
{
    constexpr int kLongestPath = 260;
    constexpr int kLongestShown = 50;
    std::array<wchar_t, kLongestPath + 1> shown{};
    const CString cut = path.Left(kLongestPath);
    std::wmemcpy(shown.data(), cut.GetString(), static_cast<std::size_t>(cut.GetLength()));
    orn_abbreviate_name(shown.data(), kLongestShown, 1);
    CString title;
    title.Format(ResourceText(id), static_cast<const wchar_t*>(shown.data()));
    return title;
}

} // namespace obmgr
