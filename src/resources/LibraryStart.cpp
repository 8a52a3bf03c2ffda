#include "resources/LibraryStart.h"

#include "control/DlgProgress.h"
#include "framework/String.h"
#include "persistence/PipeObjectException.h"
#include "resources/Resources.h"

#include <mutex>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLException.hpp>

namespace obmgr {

constinit std::atomic<bool> g_libraryRuns{false};

namespace {

// Guarded by StateLock. Plain numbers, so that they outlive every static object of the process.
constinit int g_starts = 0;
constinit bool g_processEnds = false;
constinit bool g_changing = false; // a start or stop is under way in the thread that holds the lock

// Recursive: what start and stop call may be entry points themselves. Never destroyed, for the same reason as above.
std::recursive_mutex& StateLock()
{
    static auto* const lock = new std::recursive_mutex;
    return *lock;
}

void InitializeXerces()
{
    xercesc::XMLPlatformUtils::Initialize();
}

// The parser's 16-bit text as wide text.
CString FromXmlText(const XMLCh* text)
{
    std::wstring wide;
    for (; text != nullptr && *text != 0; ++text) {
        const char32_t unit = *text;
        const char32_t next = text[1];
        if (unit >= 0xD800 && unit < 0xDC00 && next >= 0xDC00 && next < 0xE000) {
            wide += static_cast<wchar_t>(0x10000 + ((unit - 0xD800) << 10) + (next - 0xDC00));
            ++text;
        } else {
            wide += static_cast<wchar_t>(unit);
        }
    }
    return CString(std::move(wide));
}

struct ChangeScope {
    ChangeScope() { g_changing = true; }
    ~ChangeScope() { g_changing = false; }
};

// Counts as a start of its own, which ends with the process.
struct ProcessReference {
    ~ProcessReference()
    {
        StopLibrary();
        g_processEnds = true;
    }
};

} // namespace

bool StartXmlParser(void (*initialize)())
{
    try {
        initialize();
        return true;
    } catch (const xercesc::XMLException& failure) {
        const CString message = FromXmlText(failure.getMessage());
        AfxMessageBox(message, MB_ICONSTOP);
        AfxMessageBox(message);
        return false;
    }
}

bool StartLibrary()
{
    const std::lock_guard lock(StateLock());
    if (g_processEnds) return false;
    if (g_starts == 0 && !g_changing) {
        const ChangeScope starting;
        CurrentResourceLanguage(); // the language is chosen here, unless a text was asked for earlier
        if (!StartXmlParser(InitializeXerces)) return false;
        try {
            CreateGlobalDefManager();
        } catch (...) {
            xercesc::XMLPlatformUtils::Terminate();
            throw;
        }
        g_libraryRuns.store(true, std::memory_order_release);
    }
    ++g_starts;
    return true;
}

void StopLibrary()
{
    const std::lock_guard lock(StateLock());
    if (g_starts == 0 || --g_starts > 0) return;
    const ChangeScope stopping;
    g_libraryRuns.store(false, std::memory_order_release);
    DestroyGlobalDefManager();
    xercesc::XMLPlatformUtils::Terminate();
    ForgetResourceLanguage();
}

void StartLibraryForProcess()
{
    const std::lock_guard lock(StateLock());
    if (g_changing || g_starts > 0) return;
    if (g_processEnds) {
        // For static objects that outlive the stop. The parser stays down: its own libraries may be gone by now.
        const ChangeScope starting;
        CreateGlobalDefManager();
        g_libraryRuns.store(true, std::memory_order_release);
        return;
    }
    if (!StartLibrary()) throw new CPipeObjectException(IDS_FATAL_ERROR);
    static const ProcessReference untilTheProcessEnds;
}

} // namespace obmgr
