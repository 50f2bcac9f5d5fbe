#include "util/TabTable.h"

#include <limits>

#include "support/Random.h"
#include "support/Support.h"
#include "util/ComposedPath.h"

namespace Vorlan {
namespace {

using std::string_view_literals::operator""sv;

// ---- TabHeader -------------------------------------------------------------

struct ColumnCase {
    const char* reason;
    std::string_view row;
    std::string name;
    int place;
};

const ColumnCase kColumnCases[] = {
    {"the first column is 0", "Charge\tSequence", "Charge", 0},
    {"the second column", "Charge\tSequence", "Sequence", 1},
    {"a column that is not there", "Charge\tSequence", "ObsMH", TabHeader::kMissing},
    {"case matters", "Charge", "charge", TabHeader::kMissing},
    {"cells are not trimmed", "Charge\t Charge", " Charge", 1},
    {"blanks are not forgiven", " Charge", "Charge", TabHeader::kMissing},
    {"part of a name", "Charge State", "Charge", TabHeader::kMissing},
    {"the first of two equal columns", "a\tb\tb", "b", 1},
    {"an empty row has no columns", "", "", TabHeader::kMissing},
    {"an empty cell is a column", "a\t", "", 1},
};

TEST(TabHeader, FindsColumnsByName)
{
    for (const ColumnCase& c : kColumnCases) {
        EXPECT_EQ(TabHeader(c.row).Find(c.name), c.place) << c.reason;
    }
}

// ---- TabRow ----------------------------------------------------------------

struct RowCase {
    const char* reason;
    std::string_view row;
    char separator;
    std::vector<std::string_view> cells;
};

const RowCase kRowCases[] = {
    {"an empty row has no cells", "", '\t', {}},
    {"one cell", "a", '\t', {"a"}},
    {"a separator makes two empty cells", "\t", '\t', {"", ""}},
    {"empty cells count", "a\t\tb\t", '\t', {"a", "", "b", ""}},
    {"nothing is trimmed", " a \t b\r", '\t', {" a ", " b\r"}},
    {"any separator", "a;b\tc", ';', {"a", "b\tc"}},
    {"a line feed is a character", "a\tb\n", '\t', {"a", "b\n"}},
    {"a NUL is a character", "a\0\tb"sv, '\t', {"a\0"sv, "b"}},
};

TEST(TabRow, SplitsIntoCells)
{
    TabRow row;
    for (const RowCase& c : kRowCases) {
        SCOPED_TRACE(c.reason);
        row.Split(c.row, c.separator);
        ASSERT_EQ(row.Size(), c.cells.size());
        for (std::size_t i = 0; i < c.cells.size(); ++i) {
            EXPECT_EQ(row.Cell(static_cast<int>(i)), c.cells[i]);
        }
    }
}

TEST(TabRow, CellsAreThoseOfASearchFromSeparatorToSeparator)
{
    test::Random random(41);
    TabRow former;
    const std::string_view letters[] = {"ab;;", ";", "abcdefghijk;", "a\xff\0\x3a;"sv};
    for (int i = 0; i < 4000; ++i) {
        const std::string text =
            random.Text(letters[i % 4], 1 + random.Below(random.OneIn(50) ? 5000 : 140));
        TabRow fresh; // has room for this row and no more
        TabRow& row = random.OneIn(2) ? fresh : former;
        row.Split(text, ';');
        std::size_t begin = 0;
        int cell = 0;
        for (std::size_t end = 0; end != std::string::npos; begin = end + 1, ++cell) {
            end = text.find(';', begin);
            ASSERT_EQ(row.Cell(cell), text.substr(begin, end - begin)) << text;
        }
        ASSERT_EQ(row.Size(), static_cast<std::size_t>(cell)) << text;
    }
}

TEST(TabRow, CellThatIsNotThereIsEmpty)
{
    TabRow row;
    EXPECT_EQ(row.Size(), 0U);
    EXPECT_EQ(row.Cell(0), "");
    row.Split("a\tb", '\t');
    EXPECT_EQ(row.Cell(2), "");
    EXPECT_EQ(row.Cell(TabHeader::kMissing), "");
    EXPECT_EQ(row.Cell(std::numeric_limits<int>::min()), "");
    EXPECT_EQ(row.Cell(std::numeric_limits<int>::max()), "");
}

TEST(TabRow, SplitForgetsTheRowBefore)
{
    TabRow row;
    row.Split("a\tb\tc", '\t');
    row.Split("d", '\t');
    EXPECT_EQ(row.Size(), 1U);
    EXPECT_EQ(row.Cell(0), "d");
    EXPECT_EQ(row.Cell(1), "");
    row.Split("", '\t');
    EXPECT_EQ(row.Size(), 0U);
}

TEST(TabRow, CellsAreViewsIntoTheRow)
{
    const std::string text = "ab\tcd";
    TabRow row;
    row.Split(text, '\t');
    EXPECT_EQ(row.Cell(0).data(), text.data());
    EXPECT_EQ(row.Cell(1).data(), text.data() + 3);
}

// ---- ComposedPath ----------------------------------------------------------

struct FolderCase {
    const char* reason;
    std::string folder;
    std::string composed;
};

const FolderCase kFolderCases[] = {
    {"a backslash is added", "data", "data\\"},
    {"one that is there stays", "data\\", "data\\"},
    {"several become one", "data\\\\\\", "data\\"},
    {"those inside stay", "a\\\\b", "a\\\\b\\"},
    {"a slash is no backslash", "data/", "data/\\"},
    {"an empty folder", "", "\\"},
    {"nothing but backslashes", "\\\\", "\\"},
    {"a blank is part of the name", "data \\", "data \\"},
};

TEST(ComposedPath, FolderEndsInOneBackslash)
{
    for (const FolderCase& c : kFolderCases) {
        EXPECT_EQ(WithOneBackslash(c.folder), c.composed) << c.reason;
    }
}

} // namespace
} // namespace Vorlan
