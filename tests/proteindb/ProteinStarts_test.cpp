// The two steps behind CFastaProteinDB::Query, with small bins.
#include "proteindb/ProteinStarts.h"

#include "support/Random.h"
#include "support/Support.h"

namespace Vorlan {
namespace {

using test::Random;
using Numbers = std::vector<std::uint64_t>;

struct BinCase {
    const char* reason;
    Numbers starts;
    std::uint64_t length;
    Numbers bins;
};

const BinCase kBinCases[] = {
    {"one short protein", {0}, 5, {0}},
    {"a length that fills a bin has one bin more", {0}, 10, {0, 0}},
    {"one protein over three bins", {0}, 25, {0, 0, 0}},
    {"a bin in which none begins has the next one", {0, 25}, 28, {0, 1, 1}},
    {"several in a bin: the first", {0, 3, 6, 12, 15}, 18, {0, 3}},
    {"one that begins a bin", {0, 10}, 15, {0, 1}},
    {"one that begins at the end of a bin", {0, 9}, 15, {0, 1}},
    {"behind the last one it is the last one", {0, 4}, 38, {0, 1, 1, 1}},
    {"all in one bin, the length in the next", {0, 1, 2}, 10, {0, 2}},
};

TEST(ProteinStarts, EveryBinHasTheFirstProteinThatBeginsInItOrBehindIt)
{
    for (const BinCase& c : kBinCases) {
        EXPECT_EQ(MakeBins(c.starts, c.length, 10), c.bins) << c.reason;
    }
}

struct WalkCase {
    const char* reason;
    std::uint64_t first;
    std::uint64_t endPos;
    std::uint64_t protein;
};

// Proteins begin at 0, 5, 6 and 20.
const WalkCase kWalkCases[] = {
    {"within the first", 0, 3, 0},
    {"forward over two", 0, 7, 2},
    {"forward to the last", 0, 100, 3},
    {"forward, as far as one begins before it", 0, 20, 2},
    {"forward from where it lies", 2, 19, 2},
    {"back by one", 3, 19, 2},
    {"back to the first", 3, 1, 0},
    {"back to one that begins there", 3, 6, 2},
    {"the one to begin with begins there", 1, 5, 1},
    {"the last one begins there", 3, 20, 3},
    {"at the very start", 0, 0, 0},
    {"back to the very start", 3, 0, 0},
};

TEST(ProteinStarts, TheWalkGoesForwardOrBackFromTheBin)
{
    const Numbers starts = {0, 5, 6, 20};
    for (const WalkCase& c : kWalkCases) {
        EXPECT_EQ(ProteinAt(starts, c.first, c.endPos), c.protein) << c.reason;
    }
}

TEST(ProteinStarts, B79_TheProteinThatBeginsThereIsPassedBy)
{
    const Numbers starts = {0, 5, 10};
    EXPECT_EQ(ProteinAt(starts, 0, 5), 0u) << "told to lie in the one before";
    EXPECT_EQ(ProteinAt(starts, 0, 6), 1u);
    EXPECT_EQ(ProteinAt(starts, 2, 10), 2u) << "the first of its bin is found";
}

Numbers RandomStarts(Random& random)
{
    Numbers starts = {0};
    for (std::size_t more = random.Below(30); more > 0; --more) {
        starts.push_back(starts.back() + 1 + random.Below(random.OneIn(5) ? 60 : 6));
    }
    return starts;
}

TEST(ProteinStarts, BinsOfRandomProteinsAreThoseOfALinearSearch)
{
    Random random(61);
    for (int round = 0; round < 3000; ++round) {
        const Numbers starts = RandomStarts(random);
        const std::uint64_t length = starts.back() + 1 + random.Below(40);
        const std::uint64_t width = 1 + random.Below(30);
        const Numbers bins = MakeBins(starts, length, width);
        ASSERT_EQ(bins.size(), length / width + 1);
        for (std::uint64_t bin = 0; bin < bins.size(); ++bin) {
            std::uint64_t expected = 0;
            while (expected + 1 < starts.size() && starts[expected] < bin * width) {
                ++expected;
            }
            ASSERT_EQ(bins[bin], expected) << testing::PrintToString(starts) << " by " << width;
        }
    }
}

TEST(ProteinStarts, TheWalkFromAnyProteinFindsWhatHoldsAPlaceBehindAStart)
{
    Random random(62);
    for (int round = 0; round < 500; ++round) {
        const Numbers starts = RandomStarts(random);
        for (std::uint64_t endPos = 0; endPos < starts.back() + 10; ++endPos) {
            std::uint64_t holding = starts.size() - 1;
            while (starts[holding] > endPos) {
                --holding;
            }
            for (std::uint64_t first = 0; starts[holding] != endPos && first < starts.size();
                 ++first) {
                ASSERT_EQ(ProteinAt(starts, first, endPos), holding)
                    << testing::PrintToString(starts) << " from " << first << " to " << endPos;
            }
        }
    }
}

} // namespace
} // namespace Vorlan
