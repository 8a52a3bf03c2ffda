#include "resources/Resources.h"

#include "framework/Language.h"
#include "resources/StringTable.h"

#include <atomic>

namespace obmgr {
namespace {

// The texts of this library in the language chosen. It needs no construction and no destruction, so that texts can
// be had before and after the life of any static object.
class LibraryTexts final : public ResourceSource {
public:
    const wchar_t* Find(unsigned id) const override
    {
        const StringTable& chosen = Table();
        const wchar_t* const text = FindString(chosen, id);
        // A module older than the library lacks the newest texts.
        return text != nullptr || &chosen == &JapaneseStrings() ? text : FindString(JapaneseStrings(), id);
    }

    const StringTable& Table() const
    {
        const StringTable* table = m_table.load(std::memory_order_acquire);
        if (table == nullptr) {
            const StringTable* const choice = Choose();
            if (m_table.compare_exchange_strong(table, choice)) table = choice;
        }
        return *table;
    }

    void Use(const StringTable* table) { m_table.store(table, std::memory_order_release); }

private:
    static const StringTable* Choose()
    {
        const StringTable* const english = SystemLanguage().Primary() == kJapanese ? nullptr : LoadEnglishStrings();
        return english != nullptr ? english : &JapaneseStrings();
    }

    mutable std::atomic<const StringTable*> m_table{nullptr};
};

constinit LibraryTexts g_libraryTexts;
constinit std::atomic<ResourceHandle> g_currentHandle{nullptr};

CString TextOrEmpty(const wchar_t* text)
{
    return text != nullptr ? CString(text) : CString();
}

} // namespace

ResourceHandle LibraryResourceHandle()
{
    return &g_libraryTexts;
}

bool SetResourceLanguage(ResourceLanguage language)
{
    const StringTable* const table = language == ResourceLanguage::Japanese ? &JapaneseStrings() : LoadEnglishStrings();
    if (table == nullptr) return false;
    g_libraryTexts.Use(table);
    return true;
}

ResourceLanguage CurrentResourceLanguage()
{
    return &g_libraryTexts.Table() == &JapaneseStrings() ? ResourceLanguage::Japanese : ResourceLanguage::English;
}

void ForgetResourceLanguage()
{
    g_libraryTexts.Use(nullptr);
}

bool LoadResourceString(unsigned id, CString& text)
{
    const ResourceHandle current = AfxGetResourceHandle();
    const wchar_t* found = current != nullptr ? current->Find(id) : nullptr;
    if (found == nullptr) found = g_libraryTexts.Find(id);
    text = TextOrEmpty(found);
    return found != nullptr;
}

CString ResourceText(unsigned id)
{
    return TextOrEmpty(g_libraryTexts.Find(id));
}

CString ResourceTextOf(unsigned id, const CString& name, long number)
{
    const CString pattern = ResourceText(id);
    CString text;
    if (pattern.Find(L"%s") < pattern.Find(L"%d"))
        text.Format(pattern, name, number);
    else
        text.Format(pattern, number, name);
    return text;
}

} // namespace obmgr

obmgr::ResourceHandle AfxGetResourceHandle()
{
    return obmgr::g_currentHandle.load(std::memory_order_acquire);
}

void AfxSetResourceHandle(obmgr::ResourceHandle handle)
{
    obmgr::g_currentHandle.store(handle, std::memory_order_release);
}
