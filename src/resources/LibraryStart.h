// Start and stop of the library: its texts, the XML parser, the default attributes shared by all managers.
#pragma once

#include "common/Export.h"

#include <atomic>

namespace obmgr {

// Starts the library; false when the XML parser refuses, after the person has been told, and once the process ends.
// Calls are counted: each true needs one StopLibrary, and the last of them stops the library. Programs need not call
// either: see below.
RIVELTA_API bool StartLibrary();

// Takes back one StartLibrary. The last one destroys the default attributes and ends the library's use of the XML
// parser; a program that started the parser itself goes on using it. Without a start it does nothing.
RIVELTA_API void StopLibrary();

// Backing of EnsureLibraryStarted.
RIVELTA_API extern std::atomic<bool> g_libraryRuns;
RIVELTA_API void StartLibraryForProcess();

// Every entry point of the library calls this first: the constructor of CObjectManager, its static members, the
// default attribute manager. So the library runs before the first object lives, whichever static object that is, and
// it stops when the process ends, after the objects made since. Objects made later still, by static objects that end
// last, find empty default attributes but no parser. Raises CPipeObjectException when the start fails.
inline void EnsureLibraryStarted()
{
    if (!g_libraryRuns.load(std::memory_order_acquire)) StartLibraryForProcess();
}

// Runs `initialize`, the start of the XML parser; false when it raises an XMLException, whose message has then been
// shown twice.
RIVELTA_API bool StartXmlParser(void (*initialize)());

// The store's part of start and stop: one empty CObDefManager for the process. Destroying tolerates that there is
// none. They run inside the start and the stop, where EnsureLibraryStarted does nothing.
void CreateGlobalDefManager();
void DestroyGlobalDefManager();

} // namespace obmgr
