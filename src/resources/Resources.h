// Texts by number: the resource handle of the process, the texts of this library, and loading from either.
#pragma once

#include "common/Export.h"
#include "framework/String.h"

#include "resources/StringIds.h"

namespace obmgr {

// A table of texts. Applications derive from it to have their own texts found by number.
class ResourceSource {
public:
    // The text of `id`, or null when this source has none. The text must live as long as the source is installed.
    virtual const wchar_t* Find(unsigned id) const = 0;

protected:
    ~ResourceSource() = default;
};

// Borrowed: whoever installs a source keeps it alive. Null means none.
using ResourceHandle = const ResourceSource*;

enum class ResourceLanguage { Japanese, English };

// The texts of this library in the language chosen for the process. On a Japanese system, and whenever the module
// with the English texts cannot be loaded, these are the library's own Japanese texts, else the English ones. The
// choice is made once, at the library's start or at the first text asked for. The handle is the same in either
// language.
RIVELTA_API ResourceHandle LibraryResourceHandle();

// Makes the choice anew. False, with the language as it was, when English is asked for and its module cannot be loaded.
RIVELTA_API bool SetResourceLanguage(ResourceLanguage language);
RIVELTA_API ResourceLanguage CurrentResourceLanguage();

// Forgets the choice: the next text makes it again. Part of the library's stop.
void ForgetResourceLanguage();

// The text of `id` from the current handle or, when that has none, from this library; false and an empty text when
// neither knows the number.
RIVELTA_API bool LoadResourceString(unsigned id, CString& text);

// The text of `id` from this library, whatever handle is current; empty when there is none.
RIVELTA_API CString ResourceText(unsigned id);

// The library's text `id` with its "%s" replaced by `name` and its "%d" by `number`, in whichever order it has them:
// the two languages differ in that.
RIVELTA_API CString ResourceTextOf(unsigned id, const CString& name, long number);

} // namespace obmgr

// The current resource handle, process wide; null until something is installed.
RIVELTA_API obmgr::ResourceHandle AfxGetResourceHandle();
RIVELTA_API void AfxSetResourceHandle(obmgr::ResourceHandle handle);
