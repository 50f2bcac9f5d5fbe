// The header of the native table: which columns it needs, in any order.
#include <algorithm>
#include <numeric>
#include <random>
#include <string>
#include <vector>

#include "CStringProcess.h"
#include "pepident/MatchText.h"
#include "pepident/RandomMatches.h"

namespace Vorlan::test {
namespace {

using testing::ElementsAre;
using Cells = std::vector<std::string>;

const Cells kRequired = {"Dataset Name",
                         "Spectrum Name",
                         "Sequence",
                         "Charge",
                         "ObsMH",
                         "Mass Shift",
                         "Main Score",
                         "High Score Better",
                         "Identified Mod Name",
                         "Identified Mod Position",
                         "Protein Access",
                         "Before AA",
                         "After AA"};
const Cells kRow = {"d", "s", "SEQ", "2", "1000.5", "0.25", "7.5", "1", "a", "4", "P1", "K", "A"};
const std::string kDump = "d|s|SEQ|2+|1000.5|0.25|7.5 high|a@4|K.P1.A@-1";

std::string Joined(const Cells& cells)
{
    std::string text;
    for (std::size_t i = 0; i < cells.size(); ++i) {
        text += (i == 0 ? "" : "\t") + cells[i];
    }
    return text + "\n";
}

Thrown MissingColumn(const std::string& column)
{
    return {"ElementNotFound", "PeptideIdentificationIO", kNativeLoad,
            "the element '" + column + "' could not be found"};
}

TEST(NativeTableColumns, ThirteenAreEnough)
{
    const Reading reading = ReadNativeText(Joined(kRequired) + Joined(kRow));
    EXPECT_EQ(reading.thrown, Thrown());
    EXPECT_THAT(Dump(reading.matches), ElementsAre(kDump));
}

TEST(NativeTableColumns, EachMissingOneIsNamed)
{
    for (std::size_t i = 0; i < kRequired.size(); ++i) {
        Cells header = kRequired;
        Cells row = kRow;
        header.erase(header.begin() + static_cast<std::ptrdiff_t>(i));
        row.erase(row.begin() + static_cast<std::ptrdiff_t>(i));
        const Reading reading = ReadNativeText(Joined(header) + Joined(row));
        EXPECT_EQ(reading.thrown, MissingColumn(kRequired[i]));
        EXPECT_TRUE(reading.matches.empty());
        EXPECT_EQ(reading.output, "");
    }
}

TEST(NativeTableColumns, OfSeveralMissingOnesTheFirstInTheOrderOfWritingIsNamed)
{
    for (std::size_t i = 0; i < kRequired.size(); ++i) {
        Cells header(kRequired.begin(), kRequired.begin() + static_cast<std::ptrdiff_t>(i));
        std::reverse(header.begin(), header.end());
        header.push_back("Protein Start Position");
        EXPECT_EQ(ReadNativeText(Joined(header)).thrown, MissingColumn(kRequired[i]));
    }
}

TEST(NativeTableColumns, AnEmptyHeaderLacksTheFirst)
{
    EXPECT_EQ(ReadNativeText("\n").thrown, MissingColumn("Dataset Name"));
    EXPECT_EQ(ReadNativeText("").thrown, MissingColumn("Dataset Name"));
    EXPECT_EQ(ReadNativeText("\n" + kNativeHeader).thrown, MissingColumn("Dataset Name"));
}

TEST(NativeTableColumns, NamesAreComparedExactly)
{
    for (const char* const name :
         {" Sequence", "Sequence ", "sequence", "SEQUENCE", "\"Sequence\""}) {
        Cells header = kRequired;
        header[2] = name;
        EXPECT_EQ(ReadNativeText(Joined(header) + Joined(kRow)).thrown, MissingColumn("Sequence"))
            << name;
    }
}

TEST(NativeTableColumns, TheFirstOfTwoEqualOnesCounts)
{
    Cells header = kRequired;
    Cells row = kRow;
    header.push_back("Sequence");
    row.push_back("OTHER");
    EXPECT_THAT(Dump(ReadNativeText(Joined(header) + Joined(row)).matches), ElementsAre(kDump));
}

TEST(NativeTableColumns, ByteOrderMarkAndCarriageReturnsAreNoPartOfThem)
{
    const Reading reading =
        ReadNativeText("\xEF\xBB\xBF" + CStringProcess::split(Joined(kRequired), "\n")[0] + "\r\n"
                       + CStringProcess::split(Joined(kRow), "\n")[0] + "\r\n");
    EXPECT_EQ(reading.thrown, Thrown());
    EXPECT_THAT(Dump(reading.matches), ElementsAre(kDump));
}

TEST(NativeTableColumns, AMarkElsewhereIsText)
{
    EXPECT_EQ(ReadNativeText("\xEF\xBB\xBF\xEF\xBB\xBF" + kNativeHeader).thrown,
              MissingColumn("Dataset Name"));
    EXPECT_EQ(ReadNativeText("\xFF\xFE" + kNativeHeader).thrown, MissingColumn("Dataset Name"));
}

/// The columns of a table in another order, with others in between.
class Shuffled {
public:
    Shuffled(std::mt19937& random, std::size_t columns) : random_(random), order_(columns)
    {
        std::iota(order_.begin(), order_.end(), std::size_t{0});
        std::shuffle(order_.begin(), order_.end(), random_);
        for (const std::size_t place : order_) {
            surplus_.push_back(place % 4 == 0);
        }
    }

    std::string Line(const std::string& line, const std::string& surplus) const
    {
        const Cells cells = CStringProcess::split(line, "\t");
        Cells result;
        for (std::size_t i = 0; i < order_.size(); ++i) {
            if (surplus_[i]) {
                result.push_back(surplus + std::to_string(i));
            }
            result.push_back(cells.at(order_[i]));
        }
        return Joined(result);
    }

private:
    std::mt19937& random_;
    std::vector<std::size_t> order_;
    std::vector<bool> surplus_;
};

TEST(NativeTableColumns, AnyOrderGivesTheSameMatches)
{
    std::mt19937 random(3);
    const TempFolder folder;
    for (int round = 0; round < 200; ++round) {
        const std::vector<PeptideIdentification> matches = RandomMatches(random, 10);
        const Cells lines = CStringProcess::split(NativeTextOf(folder, matches), "\n");
        ASSERT_EQ(lines.size(), matches.size() + 1);
        const Shuffled shuffled(random, 14);
        std::string text = shuffled.Line(lines[0], "Surplus ");
        for (std::size_t i = 1; i < lines.size(); ++i) {
            text += shuffled.Line(lines[i], "cell ");
        }
        const Reading reading = ReadNativeText(folder, text);
        ASSERT_EQ(reading.thrown, Thrown());
        ASSERT_EQ(Dump(reading.matches, "%.6f"), Dump(matches, "%.6f")) << text;
    }
}

} // namespace
} // namespace Vorlan::test
