// What a label function shows, as one text.
#pragma once

#include "macro/LabelFunctions.h"
#include "store/ObjectManager.h"

#include <gtest/gtest.h>
#include <string>

namespace macros {

inline const std::wstring kNoLabel = L"(false)";

// The text that `resolve` puts into its argument; "(false)" when it gives false. The argument comes with a text in it.
template <class Resolve> std::wstring shownBy(Resolve&& resolve)
{
    CString out = L"from before";
    const bool result = resolve(out);
    EXPECT_TRUE(result || out.IsEmpty()) << "a text was left behind";
    return result ? std::wstring(out.View()) : kNoLabel;
}

// shown(ResolveMcInv, arguments without the text...)
template <class... Parameters, class... Arguments>
std::wstring shown(bool (*function)(const CObjectManager*, Parameters...), const CObjectManager* manager,
                   const Arguments&... arguments)
{
    return shownBy([&](CString& out) { return function(manager, arguments..., out); });
}

} // namespace macros
