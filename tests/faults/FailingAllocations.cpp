#include "faults/FailingAllocations.h"

#include <cstdlib>
#include <new>

namespace {

// The tests of this binary run in one thread.
bool g_isArmed = false;
bool g_isSticky = false;
bool g_hasFailed = false;
std::size_t g_left = 0;

void* Allocate(std::size_t size) noexcept
{
    if (g_isArmed) {
        if (g_left > 0) {
            --g_left;
        } else if (!g_hasFailed || g_isSticky) {
            g_hasFailed = true;
            return nullptr;
        }
    }
    return std::malloc(size > 0 ? size : 1);
}

void* AllocateOrThrow(std::size_t size)
{
    void* const memory = Allocate(size);
    if (!memory) throw std::bad_alloc();
    return memory;
}

} // namespace

faults::FailingAllocations::FailingAllocations(std::size_t first, bool sticky)
{
    g_left = first;
    g_isSticky = sticky;
    g_hasFailed = false;
    g_isArmed = true;
}

faults::FailingAllocations::~FailingAllocations()
{
    g_isArmed = false;
}

bool faults::FailingAllocations::HasFailed()
{
    return g_hasFailed;
}

void* operator new(std::size_t size)
{
    return AllocateOrThrow(size);
}
void* operator new[](std::size_t size)
{
    return AllocateOrThrow(size);
}
void* operator new(std::size_t size, const std::nothrow_t&) noexcept
{
    return Allocate(size);
}
void* operator new[](std::size_t size, const std::nothrow_t&) noexcept
{
    return Allocate(size);
}
void operator delete(void* memory) noexcept
{
    std::free(memory);
}
void operator delete[](void* memory) noexcept
{
    std::free(memory);
}
void operator delete(void* memory, std::size_t) noexcept
{
    std::free(memory);
}
void operator delete[](void* memory, std::size_t) noexcept
{
    std::free(memory);
}
void operator delete(void* memory, const std::nothrow_t&) noexcept
{
    std::free(memory);
}
void operator delete[](void* memory, const std::nothrow_t&) noexcept
{
    std::free(memory);
}
