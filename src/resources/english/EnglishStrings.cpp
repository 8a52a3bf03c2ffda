// The module ORNObmgrENU: the English column of the texts, loaded by the library when the language asks for it.
#include "common/Export.h"
#include "resources/StringTable.h"

#include <iterator>

namespace {

constexpr obmgr::StringRow kRows[] = {
#define OBM_STRING(name, number, english, japanese) {number, L"" english},
#include "resources/Strings.def"
};

constexpr obmgr::StringTable kEnglish{obmgr::kStringTableVersion, static_cast<std::uint32_t>(std::size(kRows)), kRows};

} // namespace

extern "C" RIVELTA_API const obmgr::StringTable* ORNObmgrENU_GetStringTable(std::uint32_t version)
{
    return version == obmgr::kStringTableVersion ? &kEnglish : nullptr;
}
