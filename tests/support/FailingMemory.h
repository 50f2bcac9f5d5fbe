// Memory that ends where a test wants it to.
//
// Only for programs that take the objects PelgrinFailingMemory. Nothing ends, and
// nothing is counted, in a build with the address sanitizer, which has operators of
// its own.
#ifndef VORLAN_TESTS_FAILINGMEMORY_H
#define VORLAN_TESTS_FAILINGMEMORY_H

#include <cstddef>

#include "support/Sanitized.h"

namespace Vorlan::test {

/// While it lives, one request for memory throws std::bad_alloc: the one with this
/// number, from 1, whoever makes it.
class FailingMemory {
public:
    explicit FailingMemory(std::size_t number);
    ~FailingMemory();
    FailingMemory(const FailingMemory&) = delete;
    FailingMemory& operator=(const FailingMemory&) = delete;
};

/// While it lives, every request for more bytes than these throws std::bad_alloc.
class SmallMemory {
public:
    explicit SmallMemory(std::size_t largest);
    ~SmallMemory();
    SmallMemory(const SmallMemory&) = delete;
    SmallMemory& operator=(const SmallMemory&) = delete;
};

/// The blocks of memory that were given and did not come back.
std::ptrdiff_t BlocksInUse();

} // namespace Vorlan::test

#define PELGRIN_NEEDS_FAILING_MEMORY()                                                             \
    if (Vorlan::test::kSanitized)                                                                  \
    GTEST_SKIP() << "the sanitizer has memory of its own"

#endif // VORLAN_TESTS_FAILINGMEMORY_H
