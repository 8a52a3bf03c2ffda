// The numbers of the library's texts, made from Strings.def, which says what holds of them.
#pragma once

namespace obmgr {

enum StringId : unsigned {
#define OBM_STRING(name, number, english, japanese) name = number,
#include "resources/Strings.def"
};

} // namespace obmgr

// The suite's sources name them without a qualifier.
using enum obmgr::StringId;
