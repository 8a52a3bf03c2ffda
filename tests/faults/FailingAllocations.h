// Allocation failures on demand: this binary replaces the global operator new.
#pragma once

#include <cstddef>

namespace faults {

// While it lives, the allocation with the number `first` (from 0) fails, and every later one too when `sticky`.
class FailingAllocations {
public:
    FailingAllocations(std::size_t first, bool sticky);
    ~FailingAllocations();
    FailingAllocations(const FailingAllocations&) = delete;
    FailingAllocations& operator=(const FailingAllocations&) = delete;

    static bool HasFailed();
};

} // namespace faults
