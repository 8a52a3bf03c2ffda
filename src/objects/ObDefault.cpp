#include "objects/ObDefault.h"

#include <atomic>
#include <memory>

IMPLEMENT_DYNAMIC(CObDefault, CObject)

void ClearCObDefaultPtrList(CTypedPtrList<CObList, CObDefault*>& list)
{
    while (!list.IsEmpty())
        delete list.RemoveHead();
}

void CopyCObDefaultPtrList(const CTypedPtrList<CObList, CObDefault*>& from, CTypedPtrList<CObList, CObDefault*>& to)
{
    for (POSITION position = from.GetHeadPosition(); position;) {
        const CObDefault* const entry = from.GetNext(position);
        if (!entry) continue;
        auto copy = std::make_unique<CObDefault>(*entry);
        to.AddTail(copy.get());
        static_cast<void>(copy.release());
    }
}

namespace {

std::atomic<obmgr::DefaultValueLookup> g_lookup{nullptr};

} // namespace

void obmgr::SetDefaultValueLookup(DefaultValueLookup lookup)
{
    g_lookup = lookup;
}

bool obmgr::DefaultValueOf(OBJECTTYPE type, const wchar_t* key, CString& value)
{
    const DefaultValueLookup lookup = g_lookup;
    if (!lookup || type < 0) return false;
    const std::string_view tag = RecordOf(type).tag;
    return lookup(CString(std::wstring_view(std::wstring(tag.begin(), tag.end()))), key, value);
}
