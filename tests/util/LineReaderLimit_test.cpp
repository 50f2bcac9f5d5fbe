// The longest line has 81,919 characters.
#include "util/LineReader.h"

#include <algorithm>

#include "support/Support.h"

namespace Vorlan {
namespace {

using std::string_literals::operator""s;
using test::Repeat;
using test::TempFolder;

constexpr LineReader::Mode kText = LineReader::Mode::Text;
constexpr LineReader::Mode kBinary = LineReader::Mode::Binary;
constexpr std::size_t kMax = 81919;
static_assert(LineReader::kMaxLineLength == kMax);

struct LimitCase {
    const char* reason;
    LineReader::Mode mode;
    std::size_t length; ///< of the line of letters
    std::string end;    ///< what follows it
    std::string given;  ///< what is given behind the letters
    bool isTooLong;
};

const LimitCase kLimitCases[] = {
    {"the longest line", kText, kMax, "\n", "", false},
    {"the longest line", kBinary, kMax, "\n", "", false},
    {"the longest line, nothing behind it", kText, kMax, "", "", false},
    {"the longest line, nothing behind it", kBinary, kMax, "", "", false},
    {"the carriage return does not count", kText, kMax, "\r\n", "", false},
    {"the carriage return counts", kBinary, kMax, "\r\n", "", true},
    {"the carriage return counts, and fits", kBinary, kMax - 1, "\r\n", "\r", false},
    {"only one carriage return goes", kText, kMax, "\r\r\n", "", true},
    {"only one carriage return goes, the other fits", kText, kMax - 1, "\r\r\n", "\r", false},
    {"a carriage return without a line feed counts", kText, kMax, "\r", "", true},
    {"a carriage return without a line feed counts", kBinary, kMax, "\r", "", true},
    {"a carriage return before another text counts", kText, kMax, "\rx", "", true},
    {"one too many", kText, kMax + 1, "\n", "", true},
    {"one too many", kBinary, kMax + 1, "\n", "", true},
    {"one too many, with a carriage return", kText, kMax + 1, "\r\n", "", true},
    {"one too many, with a carriage return", kBinary, kMax + 1, "\r\n", "", true},
    {"one too many, nothing behind it", kText, kMax + 1, "", "", true},
    {"one too many, nothing behind it", kBinary, kMax + 1, "", "", true},
    {"two too many", kText, kMax + 2, "\n", "", true},
    {"two too many", kBinary, kMax + 2, "\n", "", true},
    {"two too many, nothing behind it", kText, kMax + 2, "", "", true},
    {"twice the longest", kText, 2 * kMax, "\n", "", true},
    {"a megabyte without an end", kText, 1 << 20, "", "", true},
    {"a megabyte without an end", kBinary, 1 << 20, "", "", true},
    {"a NUL cuts the text, not the length", kText, 3, "\0"s + std::string(kMax, 'y') + "\n", "",
     true},
    {"a NUL cuts the text, not the length", kBinary, 3, "\0"s + std::string(kMax - 4, 'y') + "\n",
     "", false},
};

/// The case's line behind before, and another line behind it.
void CheckLimit(const LimitCase& c, const std::string& before)
{
    const TempFolder folder;
    const std::string path =
        folder.Write("lines", before + std::string(c.length, 'x') + c.end
                                  + (c.end.empty() || c.end.back() != '\n' ? "" : "next\n"));
    LineReader reader;
    std::string_view line;
    ASSERT_TRUE(reader.Open(path, c.mode));
    reader.Seek(before.size());
    ASSERT_TRUE(reader.Next(line));
    EXPECT_TRUE(line == std::string(std::min(c.length, kMax), 'x') + c.given)
        << "length " << line.size();
    EXPECT_EQ(reader.Failed(), c.isTooLong);
    const bool hasNext = !c.isTooLong && !c.end.empty();
    EXPECT_EQ(reader.Next(line), hasNext);
    if (hasNext) {
        EXPECT_EQ(line, "next");
    }
    reader.Seek(before.size());
    EXPECT_FALSE(reader.Failed());
    EXPECT_EQ(reader.NextWhole(line), !c.isTooLong);
    EXPECT_EQ(reader.NextWhole(line), hasNext);
}

TEST(LineReaderLimit, LineHolds81919CharactersAndNoMore)
{
    for (const LimitCase& c : kLimitCases) {
        SCOPED_TRACE(testing::Message()
                     << c.reason << ", " << (c.mode == kText ? "text" : "binary"));
        CheckLimit(c, "");
        CheckLimit(c, "before\n");
    }
}

/// The case's line behind before, whole, and the other line behind it.
void CheckWhole(const LimitCase& c, const std::string& before)
{
    const bool hasFeed = !c.end.empty() && c.end.back() == '\n';
    const TempFolder folder;
    const std::string path = folder.Write("lines", before + std::string(c.length, 'x') + c.end
                                                       + (hasFeed ? "next\n" : ""));
    std::string whole = std::string(c.length, 'x') + c.end;
    whole.resize(whole.size() - (hasFeed ? 1 : 0));
    if (c.mode == kText && hasFeed && whole.back() == '\r') {
        whole.pop_back();
    }
    LineReader reader;
    std::string line;
    std::string_view next;
    ASSERT_TRUE(reader.Open(path, c.mode));
    reader.Seek(before.size());
    ASSERT_TRUE(reader.NextOfAnyLength(line));
    EXPECT_TRUE(line == whole) << "length " << line.size();
    EXPECT_FALSE(reader.Failed());
    ASSERT_EQ(reader.Next(next), hasFeed);
    EXPECT_EQ(next, hasFeed ? "next" : "");
    EXPECT_FALSE(reader.NextOfAnyLength(line));
    EXPECT_EQ(line, "");
    EXPECT_TRUE(reader.Failed());
}

TEST(LineReaderLimit, LineOfAnyLengthIsGivenWholeWithItsNuls)
{
    for (const LimitCase& c : kLimitCases) {
        SCOPED_TRACE(testing::Message()
                     << c.reason << ", " << (c.mode == kText ? "text" : "binary"));
        CheckWhole(c, "");
        CheckWhole(c, "before\n");
        CheckWhole(c, Repeat("1234567\n", 32767));
    }
    const TempFolder folder;
    LineReader reader;
    std::string line = "as before";
    EXPECT_FALSE(reader.NextOfAnyLength(line)) << "nothing is open";
    EXPECT_EQ(line, "");
    ASSERT_TRUE(reader.Open(folder.Write("empty lines", "\n\r\n"), kText));
    EXPECT_TRUE(reader.NextOfAnyLength(line));
    EXPECT_TRUE(reader.NextOfAnyLength(line));
    EXPECT_EQ(line, "");
    EXPECT_FALSE(reader.NextOfAnyLength(line));
}

TEST(LineReaderLimit, LineMayLieAnywhereInTheBuffer)
{
    // The buffer has 256 KiB: the line begins at, before and behind its edge,
    // and so that the edge lies between its last characters.
    constexpr std::size_t kBuffer = 256 * 1024;
    for (const std::size_t start :
         {kBuffer - kMax - 3, kBuffer - kMax - 2, kBuffer - kMax - 1, kBuffer - kMax,
          kBuffer - kMax + 1, kBuffer - 2, kBuffer - 1, kBuffer, kBuffer + 1}) {
        const std::string before =
            Repeat("1234567\n", (start - 1) / 8) + std::string((start - 1) % 8, 'z') + "\n";
        for (const LimitCase& c : kLimitCases) {
            SCOPED_TRACE(testing::Message() << c.reason << ", line begins at " << start);
            CheckLimit(c, before);
        }
    }
}

TEST(LineReaderLimit, AfterATooLongLineNothingComesUntilSeek)
{
    const TempFolder folder;
    LineReader reader;
    std::string_view line;
    ASSERT_TRUE(reader.Open(folder.Write("lines", std::string(kMax + 1, 'x') + "\nT1\n"), kBinary));
    ASSERT_TRUE(reader.Next(line));
    for (int i = 0; i < 3; ++i) {
        EXPECT_TRUE(reader.Failed());
        EXPECT_FALSE(reader.Next(line));
        EXPECT_FALSE(reader.NextWhole(line));
        EXPECT_FALSE(reader.NextBeginningWith('T', line));
    }
    reader.Seek(kMax + 2);
    EXPECT_FALSE(reader.Failed());
    EXPECT_TRUE(reader.NextBeginningWith('T', line));
    EXPECT_EQ(line, "T1");
}

TEST(LineReaderLimit, WantedLineBehindATooLongOneIsNotFound)
{
    const TempFolder folder;
    for (const std::size_t length : {kMax, kMax + 1, kMax + 2, 3 * kMax}) {
        LineReader reader;
        std::string_view line;
        ASSERT_TRUE(reader.Open(folder.Write("lines", "a\n" + std::string(length, 'x') + "\nT1\n"),
                                kBinary));
        EXPECT_EQ(reader.NextBeginningWith('T', line), length == kMax) << length;
        EXPECT_EQ(reader.Failed(), length != kMax) << length;
    }
}

TEST(LineReaderLimit, WantedLineBehindATooLongOneInsideTheBufferIsNotFound)
{
    // Far from the start of the file, blocks are large: for some of these
    // places the long line lies whole in the buffer when the search meets it.
    const TempFolder folder;
    for (std::size_t start = 512 * 1024; start < 768 * 1024; start += 32 * 1024) {
        for (const std::size_t length : {kMax, kMax + 1, kMax + 2}) {
            const std::string path = folder.Write(
                "lines", Repeat("1234567\n", start / 8) + std::string(length, 'x') + "\nT1\n");
            LineReader reader;
            std::string_view line;
            ASSERT_TRUE(reader.Open(path, kBinary));
            EXPECT_EQ(reader.NextBeginningWith('T', line), length == kMax) << start << length;
        }
    }
}

TEST(LineReaderLimit, WantedLineThatIsTooLongIsNotFound)
{
    const TempFolder folder;
    for (const std::size_t length : {kMax, kMax + 1}) {
        LineReader reader;
        std::string_view line;
        ASSERT_TRUE(
            reader.Open(folder.Write("lines", "a\n" + std::string(length, 'T') + "\n"), kBinary));
        EXPECT_EQ(reader.NextBeginningWith('T', line), length == kMax) << length;
    }
}

TEST(LineReaderLimit, ByteOrderMarkDoesNotCountInTextMode)
{
    const TempFolder folder;
    const std::string path = folder.Write("lines", "\xEF\xBB\xBF" + std::string(kMax, 'x') + "\n");
    std::string_view line;
    LineReader text;
    ASSERT_TRUE(text.Open(path, kText));
    EXPECT_TRUE(text.NextWhole(line));
    LineReader binary;
    ASSERT_TRUE(binary.Open(path, kBinary));
    EXPECT_FALSE(binary.NextWhole(line));
}

} // namespace
} // namespace Vorlan
