#include "platform/Memory.h"

#include <algorithm>
#include <cstddef>
#include <vector>

#include "support/Support.h"

namespace Vorlan {
namespace {

TEST(Memory, ProvidingPagesChangesNothing)
{
    std::vector<char> memory(300000, 'x');
    for (const std::size_t size :
         std::initializer_list<std::size_t>{0, 1, 4095, 4096, 4097, 8192, 299993}) {
        platform::ProvidePages(memory.data() + 7, size);
        EXPECT_EQ(std::count(memory.begin(), memory.end(), 'x'), 300000) << size;
    }
}

TEST(Memory, NothingIsProvidedOutside)
{
    platform::ProvidePages(nullptr, 0);
    std::vector<char> page(1, 'x');
    platform::ProvidePages(page.data(), 1);
    EXPECT_EQ(page[0], 'x');
}

} // namespace
} // namespace Vorlan
