#include "util/Console.h"

#include <cstdlib>
#include <iostream>
#include <sstream>

#include "support/Printed.h"

namespace Vorlan {
namespace {

using std::string_view_literals::operator""sv;

using test::Printed;
using test::PrintedBy;

TEST(Console, OutGoesToStandardOutputOnly)
{
    const Printed printed = PrintedBy([] { console::Print(console::Stream::Out, "1/2 (50%)"); });
    EXPECT_EQ(printed.out, "1/2 (50%)");
    EXPECT_EQ(printed.err, "");
}

TEST(Console, ErrGoesToStandardErrorOnly)
{
    const Printed printed = PrintedBy([] { console::Print(console::Stream::Err, "Error:\tx\n"); });
    EXPECT_EQ(printed.out, "");
    EXPECT_EQ(printed.err, "Error:\tx\n");
}

TEST(Console, TextIsWrittenByteForByte)
{
    const std::string_view text = "a\0b\b\r\n\xFF%s"sv;
    const Printed printed = PrintedBy([text] { console::Print(console::Stream::Out, text); });
    EXPECT_EQ(printed.out, text);
}

TEST(Console, NothingIsAddedToAnEmptyText)
{
    const Printed printed = PrintedBy([] { console::Print(console::Stream::Out, ""); });
    EXPECT_EQ(printed.out, "");
}

using ConsoleDeathTest = testing::Test;

TEST(ConsoleDeathTest, PrintAndExitPrintsOnStandardErrorAndEndsWithOne)
{
    EXPECT_EXIT(console::PrintAndExit(console::Stream::Err, "Error: x\n"),
                testing::ExitedWithCode(1), "^Error: x\n$");
    EXPECT_EXIT(console::PrintAndExit(console::Stream::Err, ""), testing::ExitedWithCode(1), "^$");
}

TEST(ConsoleDeathTest, PrintAndExitEndsAsTheCLibraryDoes)
{
    const auto end = [] {
        std::atexit([] { console::Print(console::Stream::Err, "at the end"); });
        std::cout.rdbuf(std::cerr.rdbuf());
        std::cout << "out, "; // is flushed at the end
        console::PrintAndExit(console::Stream::Err, "error, ");
    };
    EXPECT_EXIT(end(), testing::ExitedWithCode(1), "error, at the end");
}

/// Counts how often it was told to pass its text on.
class CountingBuffer : public std::stringbuf {
public:
    int Flushes() const { return flushes_; }

protected:
    int sync() override
    {
        ++flushes_;
        return 0;
    }

private:
    int flushes_ = 0;
};

TEST(Console, EveryTextIsFlushed)
{
    CountingBuffer buffer;
    std::streambuf* const former = std::cout.rdbuf(&buffer);
    console::Print(console::Stream::Out, "a");
    console::Print(console::Stream::Out, "b");
    std::cout.rdbuf(former);
    EXPECT_EQ(buffer.Flushes(), 2);
    EXPECT_EQ(buffer.str(), "ab");
}

TEST(Console, WidthAndFillOfTheHostChangeNothing)
{
    CountingBuffer buffer;
    std::streambuf* const former = std::cout.rdbuf(&buffer);
    std::cout.width(10);
    std::cout.fill('*');
    console::Print(console::Stream::Out, "a");
    std::cout.width(0);
    std::cout.fill(' ');
    std::cout.rdbuf(former);
    EXPECT_EQ(buffer.str(), "a");
}

} // namespace
} // namespace Vorlan
