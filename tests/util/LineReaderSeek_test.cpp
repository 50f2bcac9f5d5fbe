// Offsets: where a line begins, and going back to it.
#include "util/LineReader.h"

#include <fstream>
#include <limits>

#include "support/Support.h"

namespace Vorlan {
namespace {

using std::string_literals::operator""s;
using test::TempFolder;

constexpr LineReader::Mode kText = LineReader::Mode::Text;
constexpr LineReader::Mode kBinary = LineReader::Mode::Binary;

/// A megabyte of lines of 16 bytes that tell their number.
std::string NumberedLines()
{
    std::string bytes;
    for (int i = 0; i < 65536; ++i) {
        const std::string number = std::to_string(i);
        bytes += "line " + std::string(10 - number.size(), '0') + number + "\n";
    }
    return bytes;
}

std::string NumberedLine(std::uint64_t offset)
{
    const std::string number = std::to_string(offset / 16);
    return ("line " + std::string(10 - number.size(), '0') + number).substr(offset % 16);
}

class LineReaderSeek : public testing::Test {
protected:
    void Open(const std::string& bytes, LineReader::Mode mode)
    {
        ASSERT_TRUE(reader_.Open(folder_.Write("lines", bytes), mode));
    }
    std::string Next()
    {
        std::string_view line;
        return reader_.Next(line) ? std::string(line) : "(none)";
    }

    TempFolder folder_;
    LineReader reader_;
};

TEST_F(LineReaderSeek, OffsetIsWhereTheNextLineBegins)
{
    Open("ab\r\n\nc", kText);
    EXPECT_EQ(reader_.Offset(), 0U);
    EXPECT_EQ(Next(), "ab");
    EXPECT_EQ(reader_.Offset(), 4U);
    EXPECT_EQ(Next(), "");
    EXPECT_EQ(reader_.Offset(), 5U);
    EXPECT_EQ(Next(), "c");
    EXPECT_EQ(reader_.Offset(), 6U);
    EXPECT_EQ(Next(), "(none)");
    EXPECT_EQ(reader_.Offset(), 6U);
}

TEST_F(LineReaderSeek, OffsetCountsTheByteOrderMark)
{
    Open("\xEF\xBB\xBF"
         "a\nb\n",
         kText);
    EXPECT_EQ(reader_.Offset(), 3U);
    EXPECT_EQ(Next(), "a");
    EXPECT_EQ(reader_.Offset(), 5U);
    reader_.Seek(3);
    EXPECT_EQ(Next(), "a");
    reader_.Seek(0);
    EXPECT_EQ(Next(), "\xEF\xBB\xBF"
                      "a");
}

TEST_F(LineReaderSeek, OffsetCountsWhatANulCuts)
{
    Open("ab\0cd\ne"s, kBinary);
    EXPECT_EQ(Next(), "ab");
    EXPECT_EQ(reader_.Offset(), 6U);
    EXPECT_EQ(Next(), "e");
}

struct SeekCase {
    const char* reason;
    std::uint64_t before; ///< a line is read there first
    std::uint64_t place;
};

constexpr std::uint64_t kSize = 65536 * 16;
constexpr std::uint64_t kBuffer = 256 * 1024;

const SeekCase kSeekCases[] = {
    {"to the start from the start", 0, 0},
    {"forward inside the first read", 0, 4096},
    {"back inside the first read", 4096, 0},
    {"into the middle of a line", 0, 16 * 100 + 7},
    {"onto a line feed", 0, 16 * 100 + 15},
    {"to the edge of the first read", 0, 8192},
    {"behind the edge of the first read", 0, 8193},
    {"far forward", 0, 16 * 50000},
    {"far back", 16 * 50000, 16},
    {"one buffer on", 0, kBuffer},
    {"one buffer and a byte on", 0, kBuffer + 1},
    {"one buffer back", 2 * kBuffer, kBuffer},
    {"a byte before the place read from", 16 * 50000, 16 * 50000 - 1},
    {"to the last line", 0, kSize - 16},
    {"to the last byte", 0, kSize - 1},
};

TEST_F(LineReaderSeek, ReadsOnFromAnyPlace)
{
    Open(NumberedLines(), kBinary);
    for (const SeekCase& c : kSeekCases) {
        SCOPED_TRACE(c.reason);
        reader_.Seek(c.before);
        EXPECT_EQ(Next(), NumberedLine(c.before));
        reader_.Seek(c.place);
        EXPECT_EQ(reader_.Offset(), c.place);
        EXPECT_EQ(Next(), NumberedLine(c.place));
        const std::uint64_t following = (c.place / 16 + 1) * 16;
        EXPECT_EQ(reader_.Offset(), following);
        EXPECT_EQ(Next(), following < kSize ? NumberedLine(following) : "(none)");
    }
}

TEST_F(LineReaderSeek, AfterAWholePassEveryPlaceIsThere)
{
    Open(NumberedLines(), kText);
    while (Next() != "(none)") {
    }
    for (std::uint64_t place = 0; place < kSize; place += 4099) {
        reader_.Seek(place);
        ASSERT_EQ(Next(), NumberedLine(place));
    }
    for (std::uint64_t place = kSize; place > 4099; place -= 4099) {
        reader_.Seek(place - 1);
        ASSERT_EQ(Next(), NumberedLine(place - 1));
    }
}

TEST_F(LineReaderSeek, PastTheEndIsNoLine)
{
    Open("a\nb", kBinary);
    for (const std::uint64_t place :
         {std::uint64_t{3}, std::uint64_t{4}, std::uint64_t{1} << 40, std::uint64_t{1} << 62,
          std::uint64_t{1} << 63, std::numeric_limits<std::uint64_t>::max()}) {
        reader_.Seek(place);
        EXPECT_FALSE(reader_.Failed()) << place;
        EXPECT_EQ(reader_.Offset(), place);
        EXPECT_EQ(Next(), "(none)") << place;
        EXPECT_TRUE(reader_.Failed()) << place;
        reader_.Seek(2);
        EXPECT_EQ(Next(), "b") << place;
    }
}

TEST_F(LineReaderSeek, MakesTheReaderGoodAgainBehindTheEnd)
{
    Open("a\n", kText);
    EXPECT_EQ(Next(), "a");
    EXPECT_EQ(Next(), "(none)");
    EXPECT_TRUE(reader_.Failed());
    reader_.Seek(0);
    EXPECT_FALSE(reader_.Failed());
    EXPECT_EQ(Next(), "a");
}

TEST_F(LineReaderSeek, FindsWhatTheFileHasGrownBy)
{
    Open("a\n", kBinary);
    EXPECT_EQ(Next(), "a");
    EXPECT_EQ(Next(), "(none)");
    std::ofstream(folder_.PathOf("lines"), std::ios::binary | std::ios::app) << "b\n";
    reader_.Seek(2);
    EXPECT_EQ(Next(), "b");
}

TEST_F(LineReaderSeek, AheadAreTheBytesBehindTheLineGivenLast)
{
    Open("a\r\nb\nc", kText);
    EXPECT_EQ(Next(), "a");
    EXPECT_EQ(reader_.Ahead(), "b\nc");
    reader_.Skip(2);
    EXPECT_EQ(reader_.Offset(), 5U);
    EXPECT_EQ(Next(), "c");
    EXPECT_EQ(reader_.Ahead(), "");
    EXPECT_EQ(Next(), "(none)");
}

TEST_F(LineReaderSeek, NothingIsAheadBehindAFailure)
{
    EXPECT_EQ(reader_.Ahead(), "") << "not open";
    Open(std::string(LineReader::kMaxLineLength + 1, 'x') + "\nb\n", kBinary);
    Next();
    EXPECT_TRUE(reader_.Failed());
    EXPECT_EQ(reader_.Ahead(), "") << "behind a line that is too long";
}

TEST_F(LineReaderSeek, EmptyFileStaysEmpty)
{
    Open("", kText);
    EXPECT_FALSE(reader_.Failed());
    reader_.Seek(0);
    EXPECT_EQ(Next(), "(none)");
}

TEST_F(LineReaderSeek, NulFarFromThePlaceIsStillFound)
{
    // Forth and back between a part with NULs and one without.
    Open("ab\0c\n"s + NumberedLines() + "de\0f\n"s, kBinary);
    for (int i = 0; i < 3; ++i) {
        reader_.Seek(0);
        EXPECT_EQ(Next(), "ab");
        EXPECT_EQ(Next(), NumberedLine(0));
        reader_.Seek(5 + kSize - 16);
        EXPECT_EQ(Next(), NumberedLine(kSize - 16));
        EXPECT_EQ(Next(), "de");
        EXPECT_EQ(Next(), "(none)");
        reader_.Seek(5 + kSize / 2);
        EXPECT_EQ(Next(), NumberedLine(kSize / 2));
    }
}

TEST_F(LineReaderSeek, LinesAcrossBufferEdgesAreWhole)
{
    // Lines of 1000 bytes: 256 KiB is no multiple of them.
    std::string bytes;
    for (int i = 0; i < 2000; ++i) {
        bytes += std::string(999, static_cast<char>('a' + i % 26)) + "\n";
    }
    Open(bytes, kText);
    for (int i = 0; i < 2000; ++i) {
        ASSERT_EQ(reader_.Offset(), static_cast<std::uint64_t>(1000 * i));
        ASSERT_EQ(Next(), std::string(999, static_cast<char>('a' + i % 26))) << i;
    }
    EXPECT_EQ(Next(), "(none)");
}

TEST_F(LineReaderSeek, CarriageReturnAndLineFeedMayLieOnBothSidesOfAnEdge)
{
    for (const std::size_t edge : {8192U, 8192U + 16384U, 256U * 1024U}) {
        for (std::size_t length = edge - 2; length <= edge + 1; ++length) {
            // Lines of 16 bytes up to the last one before the edge.
            const std::string last(length % 16 + 16, 'x');
            const std::string bytes =
                test::Repeat("012345678901234\n", length / 16 - 1) + last + "\r\ny\n";
            LineReader reader;
            std::string_view line;
            ASSERT_TRUE(reader.Open(folder_.Write("lines", bytes), kText));
            while (reader.Next(line) && line.front() == '0') {
            }
            EXPECT_EQ(line, last) << length;
            EXPECT_TRUE(reader.Next(line));
            EXPECT_EQ(line, "y") << length;
        }
    }
}

} // namespace
} // namespace Vorlan
