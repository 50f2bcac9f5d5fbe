// Round trips, and the plain twins of reader and writer over random matches.
#include <random>
#include <string>
#include <vector>

#include "pepident/MatchText.h"
#include "pepident/PlainNativeTable.h"
#include "pepident/RandomMatches.h"

namespace Vorlan::test {
namespace {

// OpenMS' toDouble may miss the nearest double by its last bit, so values are
// compared as they are written.
TEST(NativeTableTwin, WhatIsWrittenReadsBack)
{
    std::mt19937 random(17);
    const std::vector<PeptideIdentification> matches = RandomMatches(random, 5000);
    const Reading reading = ReadNativeText(NativeTextOf(matches));
    EXPECT_EQ(reading.thrown, Thrown());
    ASSERT_EQ(reading.matches.size(), matches.size());
    for (std::size_t i = 0; i < matches.size(); ++i) {
        ASSERT_EQ(Dump(reading.matches[i], "%.6f"), Dump(matches[i], "%.6f"));
    }
    EXPECT_EQ(NativeTextOf(reading.matches), NativeTextOf(matches));
}

TEST(NativeTableTwin, WritersAgreeOnRandomMatches)
{
    std::mt19937 random(18);
    const TempFolder folder;
    for (int round = 0; round < 20; ++round) {
        const std::vector<PeptideIdentification> matches = RandomOddMatches(random, 250);
        ASSERT_EQ(NativeTextOf(folder, matches), PlainNativeText(matches)) << "round " << round;
    }
}

TEST(NativeTableTwin, ReadersAgreeOnRandomMatches)
{
    std::mt19937 random(19);
    const TempFolder folder;
    for (int round = 0; round < 500; ++round) {
        std::vector<PeptideIdentification> matches = RandomOddMatches(random, 10);
        for (PeptideIdentification& match : matches) {
            match.nCharge %= 1000;
            match.dObsMH = 0.25 * static_cast<double>(random() % 100000);
        }
        const std::string text = NativeTextOf(folder, matches);
        const Reading reading = ReadNativeText(folder, text);
        ASSERT_EQ(reading.thrown, Thrown()) << text;
        ASSERT_EQ(Dump(reading.matches), Dump(PlainNativeMatches(text))) << text;
    }
}

/// Swaps, drops and doubles bytes of the rows.
std::string Spoiled(std::string text, std::mt19937& random)
{
    static const std::string bytes = "\t\t;;\r\n 0179.-+eEx(N";
    for (std::size_t times = 1 + random() % 4; times > 0; --times) {
        const std::size_t place =
            kNativeHeader.size() + random() % (text.size() - kNativeHeader.size());
        switch (random() % 3) {
        case 0: text[place] = bytes[random() % bytes.size()]; break;
        case 1: text.insert(place, 1, bytes[random() % bytes.size()]); break;
        default: text.erase(place, 1); break;
        }
    }
    return text;
}

TEST(NativeTableTwin, ReadersAgreeOnSpoiledTables)
{
    std::mt19937 random(20);
    const TempFolder folder;
    std::size_t failures = 0;
    for (int round = 0; round < 5000; ++round) {
        const std::string text = Spoiled(NativeTextOf(folder, RandomMatches(random, 3)), random);
        std::vector<PeptideIdentification> expected;
        const Thrown twinThrown = ThrownBy([&] { expected = PlainNativeMatches(text); });
        const Reading reading = ReadNativeText(folder, text);
        ASSERT_EQ(reading.thrown.name, twinThrown.name) << text;
        ASSERT_EQ(reading.thrown.message, twinThrown.message) << text;
        if (twinThrown == Thrown()) {
            ASSERT_EQ(Dump(reading.matches), Dump(expected)) << text;
        }
        failures += twinThrown == Thrown() ? 0 : 1;
    }
    EXPECT_GT(failures, 100u);
    EXPECT_LT(failures, 4900u);
}

} // namespace
} // namespace Vorlan::test
