#include "spectra/SpectrumIndex.h"

#include <algorithm>
#include <map>
#include <random>
#include <string>
#include <vector>

#include "support/FailingMemory.h"
#include "support/Support.h"

namespace Vorlan::test {
namespace {

using Entries = std::vector<std::pair<std::string, std::uint64_t>>;

Entries EntriesOf(const SpectrumIndex& index)
{
    Entries entries;
    for (std::size_t i = 0; i < index.Size(); ++i) {
        entries.emplace_back(index.Name(i), index.Position(i));
    }
    return entries;
}

/// Adds the names at positions 1, 2, ... to index and to a map, where the
/// later one wins, and compares.
void ExpectAgreement(SpectrumIndex& index, const std::vector<std::string>& names)
{
    std::map<std::string, std::uint64_t> expected;
    std::uint64_t position = 0;
    for (const std::string& name : names) {
        index.Add(index.Keep(name), ++position);
        expected[name] = position;
    }
    index.Finish();
    ASSERT_EQ(EntriesOf(index), Entries(expected.begin(), expected.end()));
    std::size_t place = 0;
    for (const auto& entry : expected) {
        ASSERT_EQ(index.Find(entry.first), place++);
        ASSERT_EQ(index.Find(entry.first + "\x01") != SpectrumIndex::kNone,
                  expected.count(entry.first + "\x01") != 0);
    }
}

TEST(SpectrumIndex, KnowsNothingWhenEmpty)
{
    SpectrumIndex index;
    EXPECT_EQ(index.Size(), 0u);
    EXPECT_EQ(index.Find(""), SpectrumIndex::kNone);
    index.Finish();
    EXPECT_EQ(index.Size(), 0u);
    EXPECT_EQ(index.Find("a"), SpectrumIndex::kNone);
}

TEST(SpectrumIndex, OrdersByBytesWithoutSign)
{
    SpectrumIndex index;
    ExpectAgreement(index,
                    {"b", "\xFF", "a", "\x7F", "\x80", "", "B", "aa", "\x01", "a\x80", "a\x7F"});
    EXPECT_EQ(index.Name(0), "");
    EXPECT_EQ(index.Name(index.Size() - 1), "\xFF");
}

TEST(SpectrumIndex, LaterOfEqualNamesWins)
{
    SpectrumIndex index;
    ExpectAgreement(index, {"a", "b", "a", "b", "a", "", ""});
    EXPECT_EQ(EntriesOf(index), (Entries{{"", 7}, {"a", 5}, {"b", 4}}));
}

TEST(SpectrumIndex, EveryLengthAroundMultiplesOfEight)
{
    std::vector<std::string> names;
    for (std::size_t length = 33; length-- > 0;) {
        names.push_back(std::string(length, 'x'));
        names.push_back(std::string(length, 'x') + "\x01");
        names.push_back(std::string(length, '\xFF'));
    }
    SpectrumIndex index;
    ExpectAgreement(index, names);
}

TEST(SpectrumIndex, FindsNothingThatIsOnlyNear)
{
    SpectrumIndex index;
    ExpectAgreement(index, {"run.00012.00012.2", "run.00012.00012.3", "12345678"});
    for (const char* const name :
         {"", "run", "run.00012.00012.", "run.00012.00012.2x", "run.00012.00012.4", "1234567",
          "123456789", "RUN.00012.00012.2"}) {
        EXPECT_EQ(index.Find(name), SpectrumIndex::kNone) << name;
    }
    EXPECT_EQ(index.Find(std::string("12345678\0", 9)), SpectrumIndex::kNone);
}

TEST(SpectrumIndex, NamesMayBePartsOfOneText)
{
    SpectrumIndex index;
    const std::string_view text = index.Keep("run.5.5.2 scan=5");
    index.Add(text, 10);
    index.Add(text.substr(0, 9), 10);
    index.Add(text.substr(15), 10);
    index.Finish();
    EXPECT_EQ(EntriesOf(index), (Entries{{"5", 10}, {"run.5.5.2", 10}, {"run.5.5.2 scan=5", 10}}));
}

TEST(SpectrumIndex, LargestPositionIsKept)
{
    SpectrumIndex index;
    const std::uint64_t position = (std::uint64_t{1} << 46) - 1;
    index.Add(index.Keep("far"), position);
    index.Finish();
    EXPECT_EQ(index.Position(0), position);
}

TEST(SpectrumIndex, StartsAnewAfterClear)
{
    SpectrumIndex index;
    ExpectAgreement(index, {"a", "b", "c"});
    index.Clear();
    EXPECT_EQ(index.Size(), 0u);
    EXPECT_EQ(index.Find("a"), SpectrumIndex::kNone);
    ExpectAgreement(index, {"d", "a"});
    EXPECT_EQ(index.Find("b"), SpectrumIndex::kNone);
}

// Sorting eight characters at a time must neither nest once per eight of them
// nor take every name again for every other one.
TEST(SpectrumIndex, LongSharedBeginnings)
{
    constexpr std::size_t kLength = 60000;
    const std::string beginning(kLength, 'p');
    std::vector<std::string> names;
    for (int i = 300; i > 0; --i) {
        names.push_back(beginning + std::to_string(i * 7919 % 601));
    }
    SpectrumIndex index;
    ExpectAgreement(index, names);
}

TEST(SpectrumIndex, LongestTextsFillBlocks)
{
    std::vector<std::string> names;
    for (char c = 'z'; c >= 'a'; --c) {
        names.push_back(std::string(SpectrumIndex::kMaxText, c));
    }
    SpectrumIndex index;
    ExpectAgreement(index, names);
}

TEST(SpectrumIndex, ManyRepeats)
{
    std::vector<std::string> names;
    for (int i = 0; i < 50000; ++i) {
        names.push_back("title" + std::to_string(i % 3));
    }
    SpectrumIndex index;
    ExpectAgreement(index, names);
    EXPECT_EQ(index.Size(), 3u);
}

std::string RandomName(std::mt19937& random)
{
    static const std::vector<std::string> beginnings = {
        "", "run", "sample_01.", "12345678", "1234567812345678", std::string(64, 'q'), "\xFF\xFE"};
    std::string name = beginnings[random() % beginnings.size()];
    for (std::size_t length = random() % 18; length > 0; --length) {
        name += static_cast<char>(random() % 8 == 0 ? 1 + random() % 255 : 'a' + random() % 2);
    }
    return name;
}

TEST(SpectrumIndex, NothingIsLostWhereMemoryEnds)
{
    PELGRIN_NEEDS_FAILING_MEMORY();
    const std::ptrdiff_t before = BlocksInUse();
    std::size_t number = 1;
    for (bool failed = true; failed; ++number) {
        try {
            SpectrumIndex index;
            const FailingMemory memory(number);
            index.Keep("a");
            failed = false;
        } catch (const std::bad_alloc&) {
        }
        ASSERT_EQ(BlocksInUse(), before) << number;
    }
    EXPECT_GT(number, 3u);
}

TEST(SpectrumIndex, AgreesWithStdMap)
{
    std::mt19937 random(7);
    SpectrumIndex index;
    for (int round = 0; round < 300; ++round) {
        std::vector<std::string> names(random() % 400);
        std::generate(names.begin(), names.end(), [&random] { return RandomName(random); });
        if (round % 5 == 0) {
            std::sort(names.begin(), names.end());
        }
        index.Clear();
        ExpectAgreement(index, names);
        ASSERT_FALSE(HasFatalFailure()) << "round " << round;
    }
}

} // namespace
} // namespace Vorlan::test
