#include "support/FailingMemory.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace {

std::atomic<std::ptrdiff_t> untilFailure = 0; ///< requests, the failing one included
constexpr std::size_t kAny = static_cast<std::size_t>(-1);
std::atomic<std::size_t> largest = kAny; ///< request that is granted
std::atomic<std::ptrdiff_t> blocksInUse = 0;

} // namespace

namespace Vorlan::test {

FailingMemory::FailingMemory(std::size_t number)
{
    untilFailure = static_cast<std::ptrdiff_t>(number);
}

FailingMemory::~FailingMemory()
{
    untilFailure = 0;
}

SmallMemory::SmallMemory(std::size_t granted)
{
    largest = granted;
}

SmallMemory::~SmallMemory()
{
    largest = kAny;
}

std::ptrdiff_t BlocksInUse()
{
    return blocksInUse;
}

} // namespace Vorlan::test

#if !PELGRIN_SANITIZED

// The other operators of the library end in these.

void* operator new(std::size_t size)
{
    const bool fails = size > largest || (untilFailure > 0 && --untilFailure == 0);
    void* const block = fails ? nullptr : std::malloc(size > 0 ? size : 1);
    if (block == nullptr) {
        throw std::bad_alloc();
    }
    ++blocksInUse;
    return block;
}

void operator delete(void* block) noexcept
{
    blocksInUse -= block != nullptr ? 1 : 0;
    std::free(block);
}

void operator delete(void* block, std::size_t) noexcept
{
    operator delete(block);
}

#endif
