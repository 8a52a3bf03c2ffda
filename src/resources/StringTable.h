// One language's texts as a table: the library has the Japanese one, the module ORNObmgrENU the English one. Both
// sides of the module boundary share this layout, so it holds plain data only.
#pragma once

#include "common/Export.h"

#include <cstdint>

namespace obmgr {

struct StringRow {
    std::uint32_t id;
    const wchar_t* text;
};

struct StringTable {
    std::uint32_t version; // layout of this structure, kStringTableVersion
    std::uint32_t count;
    const StringRow* rows; // in rising order of id
};

// Raised whenever the layout above changes: a module of another version is not used.
inline constexpr std::uint32_t kStringTableVersion = 1;

// The one function that the module with the English texts exports: its table, or null when it cannot serve `version`.
using GetStringTableFunction = const StringTable* (*)(std::uint32_t version);
inline constexpr char kGetStringTableName[] = "ORNObmgrENU_GetStringTable";

// Whether ids rise from row to row: what FindString relies on, and what keeps a number from being given twice.
template <class Rows> constexpr bool IdsRise(const Rows& rows)
{
    std::uint32_t last = 0;
    for (const StringRow& row : rows) {
        if (row.id <= last) return false;
        last = row.id;
    }
    return true;
}

// The text of `id`, or null when the table has none.
RIVELTA_API const wchar_t* FindString(const StringTable& table, unsigned id);

// The library's own texts.
RIVELTA_API const StringTable& JapaneseStrings();

// The texts of the module ORNObmgrENU, or null when it cannot be loaded. The module is looked for in the folder that
// the environment variable RIVELTA_RESOURCE_DIR names, else beside the library, and stays loaded for ever.
RIVELTA_API const StringTable* LoadEnglishStrings();

} // namespace obmgr
