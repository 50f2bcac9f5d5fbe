// Reading and writing numbers gives what the C library gives, bit for bit.
#include <cstdlib>

#include "support/Random.h"
#include "support/Support.h"
#include "util/Numbers.h"
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
