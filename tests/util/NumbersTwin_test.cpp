// Reading and writing numbers gives what the C library gives, bit for bit.
#include <cstdlib>

#include "support/Random.h"
#include "support/Support.h"
#include "util/Numbers.h"
#include "util/PlainNumbers.h"
#include "util/RandomNumbers.h"
#include "util/SlowNumbers.h"

namespace Vorlan {
namespace {

using test::Random;
using test::SameBits;

void CompareToDouble(const std::string& text)
{
    const double slow = test::SlowToDouble(text);
    const double value = numbers::ToDouble(text);
    ASSERT_TRUE(SameBits(value, slow))
        << testing::PrintToString(text) << ": " << value << ", expected " << slow;
}

/// Every way to read doubles.
void CompareScans(const std::string& text)
{
    CompareToDouble(text);

    const test::ScannedOne slow = test::SlowScanDouble(text);
    test::ScannedOne one;
    one.isRead = numbers::ScanDouble(text, one.value);
    ASSERT_EQ(one.isRead, slow.isRead) << testing::PrintToString(text);
    ASSERT_TRUE(SameBits(one.value, slow.value))
        << testing::PrintToString(text) << ": " << one.value << ", expected " << slow.value;

    const test::ScannedTwo slowTwo = test::SlowScanTwoDoubles(text);
    test::ScannedTwo two;
    numbers::ScanTwoDoubles(text, two.first, two.second);
    ASSERT_TRUE(SameBits(two.first, slowTwo.first) && SameBits(two.second, slowTwo.second))
        << testing::PrintToString(text) << ": " << two.first << " and " << two.second
        << ", expected " << slowTwo.first << " and " << slowTwo.second;
}

template <typename MakeText>
void CompareManyScans(std::uint64_t seed, int count, MakeText makeText)
{
    Random random(seed);
    for (int i = 0; i < count; ++i) {
        CompareScans(makeText(random));
        if (testing::Test::HasFatalFailure()) {
            return;
        }
    }
}

TEST(NumbersTwin, ScansAgreeOnNumbers)
{
    CompareManyScans(21, 100000, test::RandomNumber);
}

TEST(NumbersTwin, ScansAgreeOnPeakLines)
{
    CompareManyScans(22, 100000, test::RandomNumberLine);
}

TEST(NumbersTwin, ScansAgreeOnTheBytesOfNumbers)
{
    CompareManyScans(23, 200000, test::RandomNumberBytes);
}

/// All exponents: bits taken as a double.
double RandomDouble(Random& random)
{
    return test::DoubleOfBits(random.Bits());
}

TEST(NumbersTwin, ScansAgreeOnDoublesWrittenWithAllTheirDigits)
{
    for (const char* const format : {"%.17g", "%.16e", "%.15g", "%.3f", "%a"}) {
        CompareManyScans(24, 20000, [format](Random& random) {
            return test::SlowPrinted(format, RandomDouble(random));
        });
    }
}

// ---- Plain lines ---------------------------------------------------------------

/// Whether line is plain, and when it is, the C library agrees on it.
bool PlainLineAgrees(const std::string& line, const std::string& lineEnd)
{
    // What stands behind a line must not show.
    const std::string text = line + lineEnd + std::string(numbers::kPlainLineReach, '7');
    test::ScannedTwo two;
    const char* const next = numbers::TakePlainLine(text.c_str(), two.first, two.second);
    if (next == nullptr) {
        return false;
    }
    const test::ScannedTwo slow = test::SlowScanTwoDoubles(line);
    EXPECT_TRUE(SameBits(two.first, slow.first) && SameBits(two.second, slow.second))
        << testing::PrintToString(text) << ": " << two.first << " and " << two.second
        << ", expected " << slow.first << " and " << slow.second;
    EXPECT_EQ(next - text.c_str(), static_cast<std::ptrdiff_t>(line.size() + lineEnd.size()))
        << testing::PrintToString(text);
    return true;
}

/// Digits of every length, and a point mostly.
std::string RandomPlainNumber(Random& random)
{
    const std::string whole = random.Text("0123456789", 1 + random.Below(9));
    return random.OneIn(4) ? whole : whole + '.' + random.Text("0123456789", 1 + random.Below(9));
}

TEST(NumbersTwin, PlainLinesAgreeWithScans)
{
    Random random(29);
    int plain = 0;
    for (int i = 0; i < 200000 && !testing::Test::HasFailure(); ++i) {
        const bool isUsual = i % 2 == 0;
        const std::string line =
            isUsual ? RandomPlainNumber(random) + random.OneOf(" \t") + RandomPlainNumber(random)
                    : test::RandomNumberLine(random);
        plain += PlainLineAgrees(line, random.OneIn(4) ? "\r\n" : "\n") ? 1 : 0;
    }
    EXPECT_TRUE(!numbers::kKnowsPlainLines || plain > 60000) << plain;
}

struct PlainCase {
    const char* reason;
    std::string line;
    bool isPlain;
};

const PlainCase kPlainCases[] = {
    {"as most lines are", "175.11895 2310.7", true},
    {"a tab", "175.11895\t2310.7", true},
    {"no points", "1405 2", true},
    {"noughts in front and behind", "0007.500 0", true},
    {"a carriage return of its own", "1 2\r", true},
    {"eight digits", "12345678.12345678 1", true},
    {"nine digits", "1.123456789 123456789", true},
    {"the largest integer that a double has without gaps", "9007199254740991 1", true},
    {"the one above it", "9007199254740992 1", false},
    {"seventeen digits, nearly all behind the point", "1.0000000000000000 1", false},
    {"seventeen digits before the point", "00000000000000001 1", false},
    {"no digit before the point", ".5 1", false},
    {"no digit behind it", "5. 1", false},
    {"an exponent", "1e2 1", false},
    {"a sign", "-1 1", false},
    {"two points", "1.2.3 1", false},
    {"a blank in front", " 1 2", false},
    {"two blanks", "1  2", false},
    {"a blank behind", "1 2 ", false},
    {"a third column", "1 2 3", false},
    {"one number", "1", false},
    {"one number and a blank", "1 ", false},
    {"no number", "END IONS", false},
    {"an empty line", "", false},
    {"a NUL", std::string("1 2\0", 4), false},
    {"more than 32 characters", "1234567890.12345 1234567890.12345", false},
};

TEST(NumbersTwin, PlainLinesAreTwoDecimalsAndNothingElse)
{
    for (const PlainCase& c : kPlainCases) {
        EXPECT_EQ(PlainLineAgrees(c.line, "\n"), c.isPlain && numbers::kKnowsPlainLines)
            << c.reason;
    }
}

template <typename Append>
void ComparePrints(std::uint64_t seed, const char* format, Append append)
{
    Random random(seed);
    for (int i = 0; i < 100000; ++i) {
        // Every other number of the size that masses and intensities have.
        const double value = i % 2 == 0 ? RandomDouble(random) : random.Between(-1.0, 1e7);
        std::string text;
        append(text, value);
        ASSERT_EQ(text, test::SlowPrinted(format, value));
    }
}

TEST(NumbersTwin, AppendFixed6Agrees)
{
    ComparePrints(25, "%.6f", numbers::AppendFixed6);
}

TEST(NumbersTwin, AppendScientific5Agrees)
{
    ComparePrints(26, "%.5e", numbers::AppendScientific5);
}

TEST(NumbersTwin, AppendGeneralAgrees)
{
    ComparePrints(27, "%g", numbers::AppendGeneral);
}

TEST(NumbersTwin, ScanIntAgreesInsideOf32Bits)
{
    Random random(28);
    for (int i = 0; i < 200000; ++i) {
        const std::string text = random.Text("0123456789+- \t\rx.", random.Below(9));
        int slow = -7;
        const bool isRead = std::sscanf(text.c_str(), "%d", &slow) == 1;
        std::int32_t value = -7;
        ASSERT_EQ(numbers::ScanInt(text, value), isRead) << testing::PrintToString(text);
        ASSERT_EQ(value, slow) << testing::PrintToString(text);
    }
}

} // namespace
} // namespace Vorlan
