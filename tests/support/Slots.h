// Where virtual members stand in the table of their class.
#ifndef VORLAN_TESTS_SLOTS_H
#define VORLAN_TESTS_SLOTS_H

#include <cstddef>
#include <cstring>

#include <gtest/gtest.h>

namespace Vorlan::test {

/// The place of a virtual member, counted from 0; a virtual destructor has two
/// places. A pointer to the member holds its offset in bytes plus 1.
template <typename Member>
std::size_t SlotOf(Member member)
{
    std::size_t offset = 0;
    std::memcpy(&offset, &member, sizeof offset);
    EXPECT_EQ(offset % sizeof(void*), 1u) << "not virtual";
    return offset / sizeof(void*);
}

} // namespace Vorlan::test

#endif // VORLAN_TESTS_SLOTS_H
