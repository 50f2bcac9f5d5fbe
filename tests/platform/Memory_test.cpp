#include "platform/Memory.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
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

TEST(Memory, PagesAheadOfAListChangeNothing)
{
    std::string text("begin");
    text.reserve(std::size_t{9} << 20);
    const char* const place = text.data();
    platform::PagesAhead pages;
    for (const std::size_t more :
         std::initializer_list<std::size_t>{0, 1, 100, text.capacity(), 7}) {
        pages.Reach(text, more);
        EXPECT_EQ(text, "begin") << more;
        EXPECT_EQ(text.data(), place) << more;
    }
}

TEST(Memory, PagesAheadStayInTheRoomOfTheList)
{
    std::vector<std::uint64_t> nothing;
    platform::PagesAhead pages;
    pages.Reach(nothing, 1000);
    std::vector<std::uint64_t> list(100, 7); // far smaller than what is provided ahead
    for (int i = 0; i < 1000; ++i) {
        pages.Reach(list, 1);
        list.push_back(7);
    }
    EXPECT_EQ(list, std::vector<std::uint64_t>(1100, 7));
}

} // namespace
} // namespace Vorlan
