#include "util/WholeFile.h"

#include "support/Random.h"
#include "support/Support.h"

namespace Vorlan {
namespace {

using std::string_literals::operator""s;
using test::TempFolder;

std::string TextOf(const WholeFile& file)
{
    return {file.text.get(), file.size};
}

struct WholeFileCase {
    const char* reason;
    std::string bytes;
    std::string text;
};

const WholeFileCase kWholeFileCases[] = {
    {"an empty file", "", ""},
    {"any bytes", "a\0\xFF\n\v"s, "a\0\xFF\n\v"s},
    {"a carriage return before a line feed goes", "a\r\nb\r\n", "a\nb\n"},
    {"only one goes", "\r\r\n", "\r\n"},
    {"others stay", "\ra\n\rb\r", "\ra\n\rb\r"},
    {"several in a row", "\r\n\r\n\r\r", "\n\n\r\r"},
    {"a byte order mark at the start goes", "\xEF\xBB\xBF\r\n", "\n"},
    {"only one of them goes", "\xEF\xBB\xBF\xEF\xBB\xBF", "\xEF\xBB\xBF"},
    {"a part of a mark stays", "\xEF\xBB", "\xEF\xBB"},
    {"one elsewhere stays", "a\xEF\xBB\xBF", "a\xEF\xBB\xBF"},
    {"a mark behind a carriage return", "\r\n\xEF\xBB\xBF", "\n\xEF\xBB\xBF"},
};

TEST(WholeFile, IsReadInTextMode)
{
    const TempFolder folder;
    for (const WholeFileCase& c : kWholeFileCases) {
        WholeFile file;
        ASSERT_TRUE(file.Read(folder.Write("file", c.bytes))) << c.reason;
        EXPECT_EQ(TextOf(file), c.text) << c.reason;
    }
}

TEST(WholeFile, HasRoomForOneMoreCharacter)
{
    const TempFolder folder;
    WholeFile file;
    ASSERT_TRUE(file.Read(folder.Write("file", "abc")));
    file.text[file.size] = '\n';
    EXPECT_EQ(std::string(file.text.get(), 4), "abc\n");
}

// Memory is asked for in parts of 16 MiB.
TEST(WholeFile, FilesOfWholePartsAreReadToTheirEnd)
{
    const TempFolder folder;
    constexpr std::size_t kPart = 16 * 1024 * 1024;
    for (const std::size_t size : {kPart - 1, kPart, kPart + 1, 2 * kPart}) {
        std::string bytes(size, 'x');
        bytes[size / 2] = 'y';
        bytes.back() = 'z';
        WholeFile file;
        ASSERT_TRUE(file.Read(folder.Write("file", bytes)));
        EXPECT_TRUE(TextOf(file) == bytes) << size;
    }
}

TEST(WholeFile, LargeFileAgreesWithAPlainWalk)
{
    test::Random random(1);
    const std::string bytes = random.Text("ab\r\n", 300000);
    std::string expected;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (bytes[i] != '\r' || i + 1 == bytes.size() || bytes[i + 1] != '\n') {
            expected += bytes[i];
        }
    }
    const TempFolder folder;
    WholeFile file;
    ASSERT_TRUE(file.Read(folder.Write("file", bytes)));
    EXPECT_EQ(TextOf(file), expected);
}

// The system tells 0 as the size of such a file.
TEST(WholeFile, FileThatHoldsMoreThanItsSizeTells)
{
    const std::string path = "/proc/self/maps";
    if (!std::filesystem::exists(path)) {
        GTEST_SKIP() << "no " << path;
    }
    WholeFile file;
    ASSERT_TRUE(file.Read(path));
    EXPECT_GT(file.size, 4096U);
    EXPECT_EQ(file.text[file.size - 1], '\n');
}

TEST(WholeFile, ReadingAgainReplacesTheText)
{
    const TempFolder folder;
    WholeFile file;
    ASSERT_TRUE(file.Read(folder.Write("first", "a long text")));
    ASSERT_TRUE(file.Read(folder.Write("second", "b")));
    EXPECT_EQ(TextOf(file), "b");
}

// A device may have no end.
TEST(WholeFile, DevicesAreNotRead)
{
    WholeFile file;
    EXPECT_FALSE(file.Read("/dev/zero"));
    EXPECT_FALSE(file.Read("/dev/null"));
}

TEST(WholeFile, WhatCannotBeOpenedIsNotRead)
{
    const TempFolder folder;
    WholeFile file;
    EXPECT_FALSE(file.Read(folder.PathOf("missing")));
    EXPECT_FALSE(file.Read(folder.Path()));
    EXPECT_FALSE(file.Read(""));
}

} // namespace
} // namespace Vorlan
