// Lines around the limit of 81,919 characters. A line beyond it is no line at
// all, and nothing behind it is read.
#include <string>
#include <vector>

#include "spectra/MgfProbe.h"

namespace Vorlan::test {
namespace {

using testing::ElementsAre;

constexpr std::size_t kLongest = 81919;

std::string Filled(const std::string& begin, std::size_t length, char filler)
{
    return begin + std::string(length - begin.size(), filler);
}

std::vector<std::string> NamesOf(const MgfText& mgf)
{
    std::vector<std::string> names;
    for (const auto& entry : mgf.reader.Entries()) {
        names.push_back(entry.first);
    }
    return names;
}

/// A record "a", the line, a record "b".
std::string Between(const std::string& line)
{
    return "BEGIN IONS\nTITLE=a\n1 2\nEND IONS\n" + line + "\nBEGIN IONS\nTITLE=b\n3 4\nEND IONS\n";
}

TEST(MgfLineLimits, BetweenRecords)
{
    EXPECT_THAT(NamesOf(MgfText(Between(std::string(kLongest, '#')))), ElementsAre("a", "b"));
    EXPECT_THAT(NamesOf(MgfText(Between(std::string(kLongest + 1, '#')))), ElementsAre("a"));
    EXPECT_THAT(NamesOf(MgfText(Between(std::string(kLongest + 2, '#')))), ElementsAre("a"));
    EXPECT_THAT(NamesOf(MgfText(Between(std::string(500000, '#')))), ElementsAre("a"));
}

TEST(MgfLineLimits, CarriageReturnCounts)
{
    EXPECT_THAT(NamesOf(MgfText(Between(std::string(kLongest - 1, '#') + "\r"))),
                ElementsAre("a", "b"));
    EXPECT_THAT(NamesOf(MgfText(Between(std::string(kLongest, '#') + "\r"))), ElementsAre("a"));
}

TEST(MgfLineLimits, BeginLine)
{
    EXPECT_THAT(NamesOf(MgfText(Filled("BEGIN", kLongest, ' ') + "\nTITLE=t\n")), ElementsAre("t"));
    EXPECT_THAT(NamesOf(MgfText(Filled("BEGIN", kLongest + 1, ' ') + "\nTITLE=t\n")),
                ElementsAre());
}

TEST(MgfLineLimits, TitleLine)
{
    const std::string longest = Filled("TITLE=", kLongest, 'x');
    EXPECT_THAT(NamesOf(MgfText("BEGIN IONS\n" + longest + "\n")), ElementsAre(longest.substr(6)));
    EXPECT_THAT(NamesOf(MgfText("BEGIN IONS\n" + longest)), ElementsAre(longest.substr(6)));
    EXPECT_THAT(NamesOf(MgfText("BEGIN IONS\n" + longest + "x\nTITLE=t\n")), ElementsAre());
    EXPECT_THAT(NamesOf(MgfText("BEGIN IONS\n" + longest + "x")), ElementsAre());
}

TEST(MgfLineLimits, HeaderLine)
{
    const std::string begin = "BEGIN IONS\nTITLE=t\nCHARGE=2+\n";
    const std::string end = "SCANS=9\n1 2\nEND IONS\n";
    MgfText longest(begin + Filled("PEPMASS=5 ", kLongest, '7') + "\n" + end);
    EXPECT_THAT(longest.Rest(), ElementsAre("t|5|2+|scan 9|rt 0|1:2"));
    MgfText tooLong(begin + Filled("PEPMASS=5 ", kLongest + 1, '7') + "\n" + end);
    EXPECT_THAT(tooLong.Rest(), ElementsAre("t|0|2+|scan 0|rt 0|"));
}

TEST(MgfLineLimits, PeakLine)
{
    const std::string begin = "BEGIN IONS\nTITLE=t\n1 2\n";
    const std::string end = "5 6\nEND IONS\n";
    MgfText longest(begin + Filled("3 4 ", kLongest, '7') + "\n" + end);
    EXPECT_THAT(longest.Rest(), ElementsAre("t|0|0+|scan 0|rt 0|1:2 3:4 5:6"));
    MgfText tooLong(begin + Filled("3 4 ", kLongest + 1, '7') + "\n" + end);
    EXPECT_THAT(tooLong.Rest(), ElementsAre("t|0|0+|scan 0|rt 0|1:2"));
    MgfText firstTooLong("BEGIN IONS\nTITLE=t\n" + Filled("3 4 ", kLongest + 1, '7') + "\n" + end);
    EXPECT_THAT(firstTooLong.Rest(), ElementsAre("t|0|0+|scan 0|rt 0|"));
}

TEST(MgfLineLimits, AReaderGoesOnWithOtherNamesAfterAnOverlongLine)
{
    MgfText mgf("BEGIN IONS\nTITLE=a\n1 2\nEND IONS\nBEGIN IONS\nTITLE=b\n3 4\n"
                + std::string(kLongest + 1, '5') + "\n7 8\nEND IONS\n");
    EXPECT_EQ(mgf.Load("b"), "b|0|0+|scan 0|rt 0|3:4");
    EXPECT_EQ(mgf.Load("a"), "a|0|0+|scan 0|rt 0|1:2");
    EXPECT_EQ(mgf.Load("b"), "b|0|0+|scan 0|rt 0|3:4");
}

TEST(MgfLineLimits, AgreeWithThePlainTwinAroundTheLimitAndTheBlocks)
{
    for (const std::size_t length : {8191u, 8192u, 81917u, 81918u, 81919u, 81920u, 81921u, 81922u,
                                     163840u, 262143u, 262144u}) {
        for (const char* const begin : {"#", "TITLE=", "BEGIN", "9 ", "SCANS=4 "}) {
            const std::string line = Filled(begin, length, '1');
            MgfText inside("BEGIN IONS\nTITLE=a\n1 2\n" + line + "\n3 4\nEND IONS\n"
                           + Between(line));
            EXPECT_EQ(inside.Rest(), inside.AllOfThePlainTwin()) << begin << " " << length;
            MgfText last("BEGIN IONS\nTITLE=a\n1 2\n" + line);
            EXPECT_EQ(last.Rest(), last.AllOfThePlainTwin()) << begin << " " << length;
        }
    }
}

} // namespace
} // namespace Vorlan::test
