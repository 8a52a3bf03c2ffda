// The ports to the person at the program: progress, messages, and the question for a new name.
// An application installs its own; without one the terminal serves, and nothing ever waits for an answer that nobody
// can give.
#pragma once

#include <functional>
#include <memory>
#include <optional>

#include "common/Export.h"
#include "framework/String.h"

// Message types and answers of the interface.
inline constexpr unsigned MB_OK = 0x00;
inline constexpr unsigned MB_OKCANCEL = 0x01;
inline constexpr unsigned MB_YESNO = 0x04;
inline constexpr unsigned MB_ICONSTOP = 0x10;
inline constexpr unsigned MB_ICONEXCLAMATION = 0x30;
inline constexpr unsigned MB_ICONINFORMATION = 0x40;
inline constexpr int IDOK = 1;
inline constexpr int IDCANCEL = 2;
inline constexpr int IDYES = 6;
inline constexpr int IDNO = 7;

namespace obmgr {

// A progress display; it closes when it is destroyed.
struct RIVELTA_API ProgressView {
    virtual ~ProgressView();
    virtual void SetTitle(const CString& title) = 0;
    virtual void SetRange(int lower, int upper) = 0;
    virtual void SetPos(int position) = 0;
    // Lets the person's input through; the one way in which other code may run during a long operation.
    virtual void Pump() = 0;
    // False when the person has cancelled.
    virtual bool IsContinue() = 0;
};

// What to ask when a name is taken.
struct RIVELTA_API NameQuestion {
    CString title;
    CString explanation;
    CString prompt;
    CString button;
    CString currentName;
    std::function<bool(const CString&)> isTaken; // empty: no name is taken
};

struct RIVELTA_API UserInterface {
    virtual ~UserInterface();
    // May be null: then there is no display, and nothing is cancelled but by RequestCancel.
    virtual std::unique_ptr<ProgressView> OpenProgress() = 0;
    // The answer: IDOK, IDCANCEL, IDYES, IDNO.
    virtual int ShowMessage(const CString& text, unsigned type) = 0;
    // None when the person declines.
    virtual std::optional<CString> AskNewName(const NameQuestion& question) = 0;
};

// The installed interface, or the terminal.
RIVELTA_API UserInterface& CurrentUserInterface();

// Installs an interface for the whole process and gives the one before; null stands for the terminal. The caller keeps
// it alive until it has installed another.
RIVELTA_API UserInterface* InstallUserInterface(UserInterface* userInterface);

// The first of "name(2)", "name(3)"... that is not taken, or the name itself when that is free.
RIVELTA_API CString FirstFreeName(const CString& name, const std::function<bool(const CString&)>& isTaken);

// A wish to cancel whatever long operation runs. Safe to call in a signal handler and on any thread.
RIVELTA_API void RequestCancel() noexcept;
RIVELTA_API void ResetCancel() noexcept;
RIVELTA_API bool IsCancelRequested() noexcept;

} // namespace obmgr
