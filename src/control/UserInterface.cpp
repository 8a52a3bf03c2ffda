#include "control/UserInterface.h"

#include <atomic>

#include "control/TerminalInterface.h"

namespace obmgr {

namespace {

std::atomic<UserInterface*> installed{nullptr};

// Ends the search when `isTaken` says yes to everything; no design has as many names.
constexpr int kLastNumber = 10'000'000;

std::atomic<bool> cancelRequested{false};
static_assert(std::atomic<bool>::is_always_lock_free, "RequestCancel is called in signal handlers");

} // namespace

ProgressView::~ProgressView() = default;
UserInterface::~UserInterface() = default;

UserInterface& CurrentUserInterface()
{
    if (UserInterface* const current = installed.load()) return *current;
    static TerminalInterface terminal;
    return terminal;
}

UserInterface* InstallUserInterface(UserInterface* userInterface)
{
    return installed.exchange(userInterface);
}

CString FirstFreeName(const CString& name, const std::function<bool(const CString&)>& isTaken)
{
    CString candidate = name;
    for (int number = 2; number <= kLastNumber && isTaken && isTaken(candidate); ++number)
        candidate.Format(L"%s(%d)", name, number);
    return candidate;
}

void RequestCancel() noexcept
{
    cancelRequested.store(true, std::memory_order_relaxed);
}

void ResetCancel() noexcept
{
    cancelRequested.store(false, std::memory_order_relaxed);
}

bool IsCancelRequested() noexcept
{
    return cancelRequested.load(std::memory_order_relaxed);
}

} // namespace obmgr
