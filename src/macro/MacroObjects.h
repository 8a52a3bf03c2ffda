// The families whose objects labels can be about.
#pragma once

#include "objects/ObjectTypes.h"

namespace obmgr {

// Whether an item and an argument both find their object in the table of this type. Projects, sections and drawing
// settings have rules of their own.
constexpr bool IsLabelledType(OBJECTTYPE type)
{
    switch (type) {
    case objectdata::Web:
    case objectdata::Route:
    case objectdata::Span:
    case objectdata::Node:
    case objectdata::IntPos:
    case objectdata::Lateral:
    case objectdata::AreaInq:
    case objectdata::FixInq:
    case objectdata::MountInq:
    case objectdata::Outq: return true;
    default: return false;
    }
}

} // namespace obmgr
