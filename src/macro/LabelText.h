// What the label functions share: looking objects up and writing numbers. Not installed.
#pragma once

#include "common/Id32.h"
#include "common/Numeric.h"
#include "common/Text2Number.h"
#include "store/ObjectManager.h"

namespace obmgr {

// The live object, borrowed; null for a null manager and for the id 0.
template <class T> const T* FindForLabel(const CObjectManager* manager, long id)
{
    if (!manager || Id32(id) == 0) return nullptr;
    return static_cast<const T*>(manager->TableOf(RecordTraits<T>::type).Find(id));
}

// The keys of a rounding record for one kind of number.
struct RoundingKeys {
    const wchar_t* digits;
    const wchar_t* mode;
};
inline constexpr RoundingKeys kSpanLengthRounding{L"dfspanlenfig", L"dfspanlenmode"};
inline constexpr RoundingKeys kRouteLengthRounding{L"dfroutelenfig", L"dfroutelenmode"};
inline constexpr RoundingKeys kSlopeRounding{L"dfslfig", L"dfslmode"};
inline constexpr RoundingKeys kInvertRounding{L"dfphfig", L"dfphmode"};
inline constexpr RoundingKeys kPipeDepthRounding{L"dfpdepthfig", L"dfpdepthmode"};
inline constexpr RoundingKeys kManholeDepthRounding{L"dfmdepthfig", L"dfmdepthmode"};
inline constexpr RoundingKeys kCalculatedPipeDepthRounding{L"cfpdepthfig", L"cfpdepthmode"};

inline double Rounded(double value, const CPipeObject& record, const RoundingKeys& keys)
{
    return orn_round_double(value, record.GetSubAttributeInt(keys.digits, 0), record.GetSubAttributeInt(keys.mode, 0));
}

inline CString RoundedText(double value, const CPipeObject& record, const RoundingKeys& keys)
{
    return FormatDouble(Rounded(value, record, keys), record.GetSubAttributeInt(keys.digits, 0));
}

// Disposal types that collect by vacuum.
inline bool IsVacuumWeb(const CWeb& web)
{
    return web.GetDisposalType() == 4 || web.GetDisposalType() == 5;
}

} // namespace obmgr
