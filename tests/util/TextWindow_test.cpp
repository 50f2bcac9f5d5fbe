#include "util/TextWindow.h"

#include <sys/stat.h>

#include "support/Random.h"
#include "support/Support.h"

namespace Vorlan {
namespace {

using test::TempFolder;

constexpr std::size_t kMiB = 1024 * 1024; // the window's first size

std::string Shown(const TextWindow& window)
{
    return {window.Begin(), window.End()};
}

/// The text of the file, seen through windows of which used(size) characters
/// are let go each time.
template <typename Used>
std::string ReadThrough(const std::string& path, Used used)
{
    TextWindow window;
    EXPECT_TRUE(window.Open(path));
    std::string text;
    std::size_t done = 0;
    while (window.More(done)) {
        done = used(static_cast<std::size_t>(window.End() - window.Begin()));
        text.append(window.Begin(), done);
    }
    return text + Shown(window);
}

std::string All(const std::string& path)
{
    return ReadThrough(path, [](std::size_t size) { return size; });
}

std::string None(const std::string& path)
{
    return ReadThrough(path, [](std::size_t) { return std::size_t{0}; });
}

std::string Plain(const std::string& bytes)
{
    std::string text;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (bytes[i] != '\r' || i + 1 == bytes.size() || bytes[i + 1] != '\n') {
            text += bytes[i];
        }
    }
    return text;
}

struct SmallFile {
    const char* reason;
    std::string bytes;
    std::string text;
};

const SmallFile kSmallFiles[] = {
    {"an empty file", "", ""},
    {"text", "<a>\n", "<a>\n"},
    {"carriage returns before line feeds go", "a\r\nb\r\n", "a\nb\n"},
    {"only one of them goes", "\r\r\n", "\r\n"},
    {"others stay, at the end too", "\ra\n\rb\r", "\ra\n\rb\r"},
    {"a byte order mark goes", "\xEF\xBB\xBF\r\n", "\n"},
    {"only one of them goes", "\xEF\xBB\xBF\xEF\xBB\xBF", "\xEF\xBB\xBF"},
    {"the mark alone", "\xEF\xBB\xBF", ""},
    {"a part of a mark stays", "\xEF\xBB", "\xEF\xBB"},
};

TEST(TextWindow, ASmallFileIsSeenAtOnce)
{
    const TempFolder folder;
    for (const SmallFile& row : kSmallFiles) {
        TextWindow window;
        ASSERT_TRUE(window.Open(folder.Write("file", row.bytes))) << row.reason;
        ASSERT_TRUE(window.More(0)) << row.reason;
        EXPECT_EQ(Shown(window), row.text) << row.reason;
        EXPECT_TRUE(window.IsLast()) << row.reason;
        EXPECT_FALSE(window.More(0)) << row.reason;
        EXPECT_EQ(Shown(window), row.text) << row.reason;
    }
}

TEST(TextWindow, WhatIsLetGoIsNotSeenAgain)
{
    const TempFolder folder;
    TextWindow window;
    ASSERT_TRUE(window.Open(folder.Write("file", "abcdef")));
    ASSERT_TRUE(window.More(0));
    EXPECT_FALSE(window.More(4));
    EXPECT_EQ(Shown(window), "ef");
}

// Whether something follows is found out with the window behind.
TEST(TextWindow, FilesAroundTheSizeOfTheWindow)
{
    const TempFolder folder;
    for (const std::size_t size : {kMiB - 1, kMiB, kMiB + 1, 2 * kMiB - 1, 2 * kMiB, 3 * kMiB}) {
        std::string bytes(size, 'x');
        bytes.front() = 'a';
        bytes.back() = 'z';
        const std::string path = folder.Write("file", bytes);
        EXPECT_TRUE(All(path) == bytes) << size;
        EXPECT_TRUE(None(path) == bytes) << size;
    }
}

TEST(TextWindow, LineEndsAcrossTheBorderOfTheWindow)
{
    const TempFolder folder;
    for (const std::string end : {"\r\n", "\r", "\r\r\n", "\n\r", "\r\r", "\r\n\r\n", "\rx"}) {
        for (std::size_t before = kMiB - 5; before <= kMiB + 1; ++before) {
            const std::string bytes = std::string(before, 'x') + end + "y";
            const std::string path = folder.Write("file", bytes);
            EXPECT_TRUE(All(path) == Plain(bytes)) << testing::PrintToString(end) << before;
            EXPECT_TRUE(None(path) == Plain(bytes)) << testing::PrintToString(end) << before;
        }
    }
}

TEST(TextWindow, ACarriageReturnThatEndsTheFileAtTheBorderStays)
{
    const TempFolder folder;
    for (const std::size_t size : {kMiB - 1, kMiB, kMiB + 1, 2 * kMiB}) {
        const std::string bytes = std::string(size - 1, 'x') + "\r";
        const std::string path = folder.Write("file", bytes);
        EXPECT_TRUE(All(path) == bytes) << size;
        EXPECT_TRUE(None(path) == bytes) << size;
    }
}

TEST(TextWindow, AMarkBehindTheFirstWindowStays)
{
    const TempFolder folder;
    const std::string bytes = std::string(kMiB, 'x') + "\xEF\xBB\xBFy";
    EXPECT_TRUE(All(folder.Write("file", bytes)) == bytes);
}

TEST(TextWindow, AnythingLetGoInAnyOrderAgreesWithAPlainWalk)
{
    test::Random random(1);
    const TempFolder folder;
    const std::string bytes = random.Text("ab\r\n", 5 * kMiB + 17);
    const std::string path = folder.Write("file", "\xEF\xBB\xBF" + bytes);
    const std::string expected = Plain(bytes);
    for (int round = 0; round < 5; ++round) {
        const std::string text =
            ReadThrough(path, [&random](std::size_t size) { return random.Below(size + 1); });
        EXPECT_TRUE(text == expected) << round;
    }
}

// One markup may be longer than any window.
TEST(TextWindow, GrowsWhenNothingIsLetGo)
{
    const TempFolder folder;
    const std::string bytes = "<a x=\"" + std::string(9 * kMiB, 'x') + "\"/>";
    TextWindow window;
    ASSERT_TRUE(window.Open(folder.Write("file", bytes)));
    std::size_t last = 0;
    while (window.More(0)) {
        const auto size = static_cast<std::size_t>(window.End() - window.Begin());
        EXPECT_GT(size, last);
        last = size;
    }
    EXPECT_TRUE(Shown(window) == bytes);
}

TEST(TextWindow, OnlyOrdinaryFilesAreOpened)
{
    const TempFolder folder;
    const std::string pipe = folder.PathOf("pipe");
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    for (const std::string& path :
         {folder.PathOf("missing"), folder.Path(), pipe, std::string("/dev/null"), std::string()}) {
        TextWindow window;
        EXPECT_FALSE(window.Open(path)) << path;
    }
}

// The system tells 0 as the size of such a file.
TEST(TextWindow, AFileThatHoldsMoreThanItsSizeTells)
{
    const std::string path = "/proc/self/maps";
    if (!std::filesystem::exists(path)) {
        GTEST_SKIP() << "no " << path;
    }
    EXPECT_GT(All(path).size(), 4096U);
}

} // namespace
} // namespace Vorlan
