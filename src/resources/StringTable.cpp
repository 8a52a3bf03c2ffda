#include "resources/StringTable.h"

#include <algorithm>
#include <iterator>

namespace obmgr {
namespace {

constexpr StringRow kRows[] = {
#define OBM_STRING(name, number, english, japanese) {number, L"" japanese},
#include "resources/Strings.def"
};
static_assert(IdsRise(kRows), "rows of Strings.def out of order, or a number used twice");

constexpr StringTable kJapanese{kStringTableVersion, static_cast<std::uint32_t>(std::size(kRows)), kRows};

} // namespace

const wchar_t* FindString(const StringTable& table, unsigned id)
{
    const StringRow* const end = table.rows + table.count;
    const StringRow* const row = std::lower_bound(
        table.rows, end, id, [](const StringRow& candidate, unsigned wanted) { return candidate.id < wanted; });
    return row != end && row->id == id ? row->text : nullptr;
}

const StringTable& JapaneseStrings()
{
    return kJapanese;
}

} // namespace obmgr
