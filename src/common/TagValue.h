// CTagValueInt: an integer key with what belongs to it, for sorting.
#pragma once

#include "common/Export.h"
#include "framework/Array.h"
#include "framework/String.h"

// The tag and the extra data are the caller's; the extra data is borrowed.
class RIVELTA_API CTagValueInt {
public:
    CTagValueInt() = default;
    explicit CTagValueInt(int value, void* extra = nullptr) : m_nValue(value), m_pExtra(extra) {}
    CTagValueInt(const CString& tag, int value, void* extra = nullptr) : m_strTag(tag), m_nValue(value), m_pExtra(extra)
    {
    }

    // Negative, 0 or positive, by the value alone.
    int Compare(const CTagValueInt& other) const noexcept
    {
        return (m_nValue > other.m_nValue) - (m_nValue < other.m_nValue);
    }

    CString m_strTag;
    int m_nValue = 0;
    void* m_pExtra = nullptr;
};

using CTagValueIntArray = CArray<CTagValueInt, const CTagValueInt&>;

// Ascending by value; entries of one value keep their order.
RIVELTA_API void SortCTagValueIntArray(CTagValueIntArray& entries);
