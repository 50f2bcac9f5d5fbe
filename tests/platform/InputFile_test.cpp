#include "platform/InputFile.h"

#include <fstream>
#include <limits>

#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include "support/FailingMemory.h"
#include "support/OpenFiles.h"
#include "support/Support.h"

namespace Vorlan {
namespace {

using platform::InputFile;
using std::string_literals::operator""s;
using test::TempFolder;

std::string BytesAt(InputFile& file, std::uint64_t offset, std::size_t size)
{
    std::string bytes(size, '#');
    bytes.resize(file.ReadAt(offset, bytes.data(), size));
    return bytes;
}

struct ReadCase {
    const char* reason;
    std::uint64_t offset;
    std::size_t size;
    std::string bytes;
};

const ReadCase kReadCases[] = {
    {"from the start", 0, 3, "abc"},
    {"from the middle", 2, 3, "c\0d"s},
    {"nothing wanted", 2, 0, ""},
    {"the whole file", 0, 6, "abc\0de"s},
    {"more than there is", 0, 100, "abc\0de"s},
    {"less than wanted at the end", 4, 100, "de"},
    {"at the end", 6, 1, ""},
    {"past the end", 7, 1, ""},
    {"far past the end", std::uint64_t{1} << 62, 1, ""},
    {"where no offset can be", std::uint64_t{1} << 63, 1, ""},
    {"the last offset of all", std::numeric_limits<std::uint64_t>::max(), 1, ""},
    {"back to the start", 0, 1, "a"},
};

TEST(InputFile, ReadsAtAnyOffset)
{
    const TempFolder folder;
    InputFile file;
    ASSERT_TRUE(file.Open(folder.Write("file", "abc\0de"s)));
    for (const ReadCase& c : kReadCases) {
        EXPECT_EQ(BytesAt(file, c.offset, c.size), c.bytes) << c.reason;
    }
}

TEST(InputFile, ReadAtLeavesTheBufferBehindTheBytesAlone)
{
    const TempFolder folder;
    InputFile file;
    ASSERT_TRUE(file.Open(folder.Write("file", "ab")));
    std::string buffer = "######";
    EXPECT_EQ(file.ReadAt(1, buffer.data(), 6), 1U);
    EXPECT_EQ(buffer, "b#####");
}

TEST(InputFile, ReadsBeyondFourGigabytes)
{
    const TempFolder folder;
    const std::string path = folder.Write("file", "");
    constexpr std::uint64_t kFar = (std::uint64_t{1} << 32) + 5;
    // A file with a hole takes no space.
    ASSERT_EQ(::truncate(path.c_str(), static_cast<off_t>(kFar)), 0);
    std::ofstream(path, std::ios::binary | std::ios::app) << "end";
    InputFile file;
    ASSERT_TRUE(file.Open(path));
    EXPECT_EQ(BytesAt(file, kFar, 10), "end");
    EXPECT_EQ(BytesAt(file, kFar - 2, 3), "\0\0e"s);
}

TEST(InputFile, WhatCannotBeReadAtAnOffsetIsNotOpened)
{
    const TempFolder folder;
    const std::string pipe = folder.PathOf("pipe");
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    const std::string file = folder.Write("file", "a");
    std::filesystem::create_directory_symlink(folder.Path(), folder.PathOf("link"));
    std::filesystem::create_symlink("loop", folder.PathOf("loop"));
    struct {
        const char* reason;
        std::string path;
    } const cases[] = {
        {"an empty path", ""},
        {"a missing file", folder.PathOf("missing")},
        {"a folder", folder.Path()},
        {"a folder, composed", folder.Path() + "\\"},
        {"a link to a folder", folder.PathOf("link")},
        {"a link to itself", folder.PathOf("loop")},
        {"a pipe without a writer", pipe},
        {"a file taken for a folder", file + "\\x"},
        {"a NUL behind a file's path", file + '\0'},
        {"a path of nothing but a NUL", "\0"s},
        {"a path that is too long", folder.PathOf(std::string(10000, 'x'))},
    };
    for (const auto& c : cases) {
        InputFile input;
        EXPECT_FALSE(input.Open(c.path)) << c.reason;
        EXPECT_FALSE(input.IsOpen()) << c.reason;
    }
}

TEST(InputFile, PipeWithAWriterIsNotOpenedEither)
{
    const TempFolder folder;
    const std::string pipe = folder.PathOf("pipe");
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    // Opened for both, a pipe needs no other end.
    std::fstream writer(pipe, std::ios::in | std::ios::out);
    ASSERT_TRUE(writer.is_open());
    InputFile file;
    EXPECT_FALSE(file.Open(pipe));
}

/// A socket at a path, while it lives.
class Socket {
public:
    explicit Socket(const std::string& path)
    {
        sockaddr_un address = {};
        address.sun_family = AF_UNIX;
        EXPECT_LT(path.size(), sizeof(address.sun_path));
        path.copy(address.sun_path, path.size());
        EXPECT_EQ(::bind(socket_, reinterpret_cast<const sockaddr*>(&address), sizeof(address)), 0);
    }
    ~Socket() { ::close(socket_); }
    Socket(const Socket&) = delete;
    Socket& operator=(const Socket&) = delete;

private:
    int socket_ = ::socket(AF_UNIX, SOCK_STREAM, 0);
};

TEST(InputFile, SocketIsNotOpened)
{
    const TempFolder folder;
    const Socket socket(folder.PathOf("socket"));
    InputFile file;
    EXPECT_FALSE(file.Open(folder.PathOf("socket")));
}

TEST(InputFile, AnEntryThatCannotBeOpenedIsNotPassedOverForTheNextReadingOfThePath)
{
    const TempFolder folder;
    const Socket socket(folder.PathOf(R"(a\f)"));
    std::filesystem::create_directory(folder.PathOf("a"));
    folder.Write("a/f", "other");
    InputFile file;
    EXPECT_FALSE(file.Open(folder.PathOf(R"(a\f)")));
}

TEST(InputFile, NothingStaysOpenWhereMemoryEnds)
{
    PELGRIN_NEEDS_FAILING_MEMORY();
    const TempFolder folder;
    const std::string path = folder.Write("file", "abc");
    const std::ptrdiff_t before = test::OpenFileCount();
    InputFile file;
    std::size_t number = 1;
    for (bool failed = true; failed; ++number) {
        try {
            const test::FailingMemory memory(number);
            file.Open(path);
            failed = false;
        } catch (const std::bad_alloc&) {
            EXPECT_FALSE(file.IsOpen()) << number;
            EXPECT_EQ(test::OpenFileCount(), before) << number;
        }
    }
    EXPECT_GT(number, 2u);
    EXPECT_EQ(BytesAt(file, 0, 9), "abc");
}

TEST(InputFile, SizeIsThatOfTheOpenFile)
{
    const TempFolder folder;
    InputFile file;
    EXPECT_EQ(file.Size(), 0U) << "not open";
    ASSERT_TRUE(file.Open(folder.Write("file", "abc\0de"s)));
    EXPECT_EQ(file.Size(), 6U);
    BytesAt(file, 4, 10);
    EXPECT_EQ(file.Size(), 6U) << "reading changes nothing";
    ASSERT_TRUE(file.Open(folder.Write("empty", "")));
    EXPECT_EQ(file.Size(), 0U);
    ASSERT_EQ(::truncate(folder.PathOf("empty").c_str(), off_t{1} << 33), 0);
    EXPECT_EQ(file.Size(), std::uint64_t{1} << 33) << "as the file grows";
    file.Close();
    EXPECT_EQ(file.Size(), 0U) << "closed";
}

TEST(InputFile, SizeIsZeroWhereTheSystemDoesNotKnowIt)
{
    InputFile file;
    if (!file.Open("/proc/self/maps")) {
        GTEST_SKIP() << "no /proc/self/maps";
    }
    EXPECT_EQ(file.Size(), 0U);
    EXPECT_EQ(BytesAt(file, 0, 1).size(), 1U);
}

TEST(InputFile, OpenResolvesThePath)
{
    const TempFolder folder;
    folder.Write("file", "plain");
    folder.Write(R"(a\file)", "literal");
    InputFile file;
    ASSERT_TRUE(file.Open(folder.Path() + R"(\file)"));
    EXPECT_EQ(BytesAt(file, 0, 10), "plain");
    ASSERT_TRUE(file.Open(folder.PathOf(R"(a\file)")));
    EXPECT_EQ(BytesAt(file, 0, 10), "literal");
}

TEST(InputFile, OpenClosesTheFileBefore)
{
    const TempFolder folder;
    InputFile file;
    ASSERT_TRUE(file.Open(folder.Write("first", "1")));
    ASSERT_TRUE(file.Open(folder.Write("second", "2")));
    EXPECT_EQ(BytesAt(file, 0, 1), "2");
    EXPECT_FALSE(file.Open(folder.PathOf("missing")));
    EXPECT_FALSE(file.IsOpen());
}

TEST(InputFile, ClosedFileGivesNoBytes)
{
    const TempFolder folder;
    InputFile file;
    EXPECT_FALSE(file.IsOpen());
    EXPECT_EQ(BytesAt(file, 0, 1), "");
    ASSERT_TRUE(file.Open(folder.Write("file", "1")));
    file.Close();
    file.Close();
    EXPECT_FALSE(file.IsOpen());
    EXPECT_EQ(BytesAt(file, 0, 1), "");
}

TEST(InputFile, FilesArePutBack)
{
    const TempFolder folder;
    const std::string path = folder.Write("file", "1");
    rlimit former = {};
    ASSERT_EQ(::getrlimit(RLIMIT_NOFILE, &former), 0);
    const rlimit few = {100, former.rlim_max};
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &few), 0);
    int opened = 0;
    for (int i = 0; i < 300; ++i) {
        InputFile file;
        opened += file.Open(path) ? 1 : 0;
        InputFile failing;
        opened += failing.Open(folder.Path()) ? 1 : 0;
    }
    ::setrlimit(RLIMIT_NOFILE, &former);
    EXPECT_EQ(opened, 300);
}

} // namespace
} // namespace Vorlan
