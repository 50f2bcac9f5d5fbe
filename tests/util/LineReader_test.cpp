// Lines and their ends, and what can be opened. The limit, seeking and the
// comparison with slow twins stand in files of their own.
#include "util/LineReader.h"

#include <sys/stat.h>

#include "support/FailingMemory.h"
#include "support/Support.h"

namespace Vorlan {
namespace {

using std::string_literals::operator""s;
using test::TempFolder;
using Lines = std::vector<std::string>;

constexpr LineReader::Mode kText = LineReader::Mode::Text;
constexpr LineReader::Mode kBinary = LineReader::Mode::Binary;

Lines LinesOf(const std::string& bytes, LineReader::Mode mode)
{
    const TempFolder folder;
    LineReader reader;
    EXPECT_TRUE(reader.Open(folder.Write("lines", bytes), mode));
    Lines lines;
    std::string_view line;
    while (reader.Next(line)) {
        lines.emplace_back(line);
    }
    EXPECT_TRUE(reader.Failed());
    EXPECT_FALSE(reader.Next(line));
    EXPECT_EQ(reader.Offset(), bytes.size());
    return lines;
}

struct LinesCase {
    const char* reason;
    std::string bytes;
    Lines text;   ///< the lines in text mode
    Lines binary; ///< the lines in binary mode
};

const LinesCase kLinesCases[] = {
    {"an empty file has no line", "", {}, {}},
    {"a lone line feed is one empty line", "\n", {""}, {""}},
    {"nothing behind the last line feed", "a\nb\n", {"a", "b"}, {"a", "b"}},
    {"a last line without a line feed", "a\nb", {"a", "b"}, {"a", "b"}},
    {"empty lines count", "\n\na\n\n", {"", "", "a", ""}, {"", "", "a", ""}},
    {"blanks stay", " a \t\n", {" a \t"}, {" a \t"}},
    {"a carriage return before a line feed", "a\r\nb\r\n", {"a", "b"}, {"a\r", "b\r"}},
    {"only one carriage return goes", "a\r\r\n", {"a\r"}, {"a\r\r"}},
    {"a lone carriage return ends no line", "a\rb\n", {"a\rb"}, {"a\rb"}},
    {"a carriage return at the end of the file", "a\r", {"a\r"}, {"a\r"}},
    {"nothing but a carriage return", "\r", {"\r"}, {"\r"}},
    {"an empty line with a carriage return", "\r\n\r\n", {"", ""}, {"\r", "\r"}},
    {"a carriage return behind the line feed", "a\n\rb\n", {"a", "\rb"}, {"a", "\rb"}},
    {"a byte order mark",
     "\xEF\xBB\xBF"
     "a\n",
     {"a"},
     {"\xEF\xBB\xBF"
      "a"}},
    {"nothing but a byte order mark", "\xEF\xBB\xBF", {}, {"\xEF\xBB\xBF"}},
    {"an empty line behind a byte order mark", "\xEF\xBB\xBF\n", {""}, {"\xEF\xBB\xBF"}},
    {"the second of two byte order marks is text",
     "\xEF\xBB\xBF\xEF\xBB\xBF"
     "a",
     {"\xEF\xBB\xBF"
      "a"},
     {"\xEF\xBB\xBF\xEF\xBB\xBF"
      "a"}},
    {"a byte order mark further down is text",
     "a\n\xEF\xBB\xBF"
     "b",
     {"a", "\xEF\xBB\xBF"
           "b"},
     {"a", "\xEF\xBB\xBF"
           "b"}},
    {"two thirds of a byte order mark are text", "\xEF\xBB", {"\xEF\xBB"}, {"\xEF\xBB"}},
    {"another mark is text",
     "\xFF\xFE"
     "a",
     {"\xFF\xFE"
      "a"},
     {"\xFF\xFE"
      "a"}},
    {"a NUL cuts its line", "ab\0cd\nef\n"s, {"ab", "ef"}, {"ab", "ef"}},
    {"a NUL at the start of a line", "\0cd\nef"s, {"", "ef"}, {"", "ef"}},
    {"the first of two NULs cuts", "a\0b\0c\n"s, {"a"}, {"a"}},
    {"a NUL in the last line", "ab\ncd\0ef"s, {"ab", "cd"}, {"ab", "cd"}},
    {"a carriage return behind a NUL", "ab\0\r\n"s, {"ab"}, {"ab"}},
    {"a carriage return before a NUL is text", "ab\r\0\n"s, {"ab\r"}, {"ab\r"}},
    {"nothing but a NUL", "\0"s, {""}, {""}},
    {"a byte order mark and a NUL", "\xEF\xBB\xBF\0a\nb"s, {"", "b"}, {"\xEF\xBB\xBF", "b"}},
    {"vertical tab, form feed and 0x1A end nothing",
     "a\v\f\x1A"
     "b\n",
     {"a\v\f\x1A"
      "b"},
     {"a\v\f\x1A"
      "b"}},
    {"bytes above 127 stand", "\xC3\xA4\x85\xFF\n", {"\xC3\xA4\x85\xFF"}, {"\xC3\xA4\x85\xFF"}},
};

TEST(LineReader, GivesTheLinesOfAFile)
{
    for (const LinesCase& c : kLinesCases) {
        SCOPED_TRACE(c.reason);
        EXPECT_EQ(LinesOf(c.bytes, kText), c.text);
        EXPECT_EQ(LinesOf(c.bytes, kBinary), c.binary);
    }
}

TEST(LineReader, NextWholeGivesTheSameLines)
{
    const TempFolder folder;
    LineReader reader;
    ASSERT_TRUE(reader.Open(folder.Write("lines", "a\n\nb"), kBinary));
    std::string_view line;
    EXPECT_TRUE(reader.NextWhole(line));
    EXPECT_EQ(line, "a");
    EXPECT_TRUE(reader.NextWhole(line));
    EXPECT_EQ(line, "");
    EXPECT_TRUE(reader.NextWhole(line));
    EXPECT_EQ(line, "b");
    EXPECT_FALSE(reader.Failed());
    EXPECT_FALSE(reader.NextWhole(line));
    EXPECT_TRUE(reader.Failed());
}

TEST(LineReader, FirstOfAnEmptyLineIsNul)
{
    EXPECT_EQ(FirstOf(""), '\0');
    EXPECT_EQ(FirstOf("BEGIN"), 'B');
}

// ---- Opening ---------------------------------------------------------------

TEST(LineReader, UnopenedReaderHasFailed)
{
    LineReader reader;
    std::string_view line = "untouched";
    EXPECT_FALSE(reader.IsOpen());
    EXPECT_TRUE(reader.Failed());
    EXPECT_FALSE(reader.Next(line));
    EXPECT_FALSE(reader.NextWhole(line));
    EXPECT_FALSE(reader.NextBeginningWith('a', line));
    reader.Seek(0);
    EXPECT_TRUE(reader.Failed());
    EXPECT_FALSE(reader.Next(line));
    EXPECT_EQ(line, "untouched");
}

TEST(LineReader, WhatIsNoFileCannotBeOpened)
{
    const TempFolder folder;
    const std::string pipe = folder.PathOf("pipe");
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    const std::string file = folder.Write("file", "a\n");
    struct {
        const char* reason;
        std::string path;
    } const cases[] = {
        {"a folder", folder.Path()},
        {"a folder with a separator", folder.Path() + "/"},
        {"a missing file", folder.PathOf("missing")},
        {"a file in a missing folder", folder.PathOf("missing/file")},
        {"a file taken for a folder", file + "/file"},
        {"a pipe without a writer", pipe},
        {"a device without an end", "/dev/zero"},
        {"another one", "/dev/urandom"},
        {"a file's path with a NUL behind it", file + '\0'},
        {"a NUL inside", file + "\0x"s},
        {"an empty path", ""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.reason);
        LineReader reader;
        std::string_view line;
        EXPECT_FALSE(reader.Open(c.path, kText));
        EXPECT_FALSE(reader.IsOpen());
        EXPECT_TRUE(reader.Failed());
        EXPECT_FALSE(reader.Next(line));
        reader.Seek(0);
        EXPECT_TRUE(reader.Failed());
        EXPECT_TRUE(reader.Open(file, kText)) << "a failure is not for good";
        EXPECT_TRUE(reader.Next(line));
    }
}

TEST(LineReader, OpensAPathComposedWithBackslashes)
{
    const TempFolder folder;
    folder.Write("file", "a\n");
    LineReader reader;
    std::string_view line;
    EXPECT_TRUE(reader.Open(folder.Path() + "\\file", kText));
    EXPECT_TRUE(reader.Next(line));
    EXPECT_EQ(line, "a");
}

TEST(LineReader, OpenOnAnOpenReaderFailsAndStaysOnItsFile)
{
    const TempFolder folder;
    const std::string first = folder.Write("first", "a\nb\nc\n");
    const std::string second = folder.Write("second", "x\ny\n");
    LineReader reader;
    std::string_view line;
    ASSERT_TRUE(reader.Open(first, kText));
    ASSERT_TRUE(reader.Next(line));
    EXPECT_FALSE(reader.Open(second, kBinary));
    EXPECT_TRUE(reader.IsOpen());
    EXPECT_TRUE(reader.Failed());
    EXPECT_FALSE(reader.Next(line));
    reader.Seek(2);
    EXPECT_FALSE(reader.Failed());
    EXPECT_TRUE(reader.Next(line));
    EXPECT_EQ(line, "b");
}

TEST(LineReader, OpenOnAnOpenReaderKeepsItsMode)
{
    const TempFolder folder;
    const std::string path = folder.Write("file", "a\r\n");
    LineReader reader;
    std::string_view line;
    ASSERT_TRUE(reader.Open(path, kText));
    EXPECT_FALSE(reader.Open(path, kBinary));
    reader.Seek(0);
    EXPECT_TRUE(reader.Next(line));
    EXPECT_EQ(line, "a");
}

TEST(LineReader, ClosedReaderOpensAnotherFileAfresh)
{
    const TempFolder folder;
    LineReader reader;
    std::string_view line;
    ASSERT_TRUE(reader.Open(folder.Write("first", "ab\0c\nd\n"s), kBinary));
    ASSERT_TRUE(reader.Next(line));
    reader.Close();
    EXPECT_FALSE(reader.IsOpen());
    EXPECT_TRUE(reader.Failed());
    EXPECT_FALSE(reader.Next(line));
    reader.Seek(0);
    EXPECT_FALSE(reader.Next(line));
    ASSERT_TRUE(reader.Open(folder.Write("second", "x\r\n"), kText));
    EXPECT_EQ(reader.Offset(), 0U);
    EXPECT_TRUE(reader.Next(line));
    EXPECT_EQ(line, "x");
    EXPECT_FALSE(reader.Next(line));
}

TEST(LineReader, OpensAgainAfterMemoryHasEnded)
{
    PELGRIN_NEEDS_FAILING_MEMORY();
    const TempFolder folder;
    const std::string path = folder.Write("lines", "a\n");
    LineReader reader;
    std::size_t number = 1;
    for (bool failed = true; failed; ++number) {
        try {
            const test::FailingMemory memory(number);
            EXPECT_TRUE(reader.Open(path, kText)) << number;
            failed = false;
        } catch (const std::bad_alloc&) {
            EXPECT_FALSE(reader.IsOpen()) << number;
        }
    }
    EXPECT_GT(number, 2u);
}

} // namespace
} // namespace Vorlan
