// Number text against the C library, which the process runs in its "C" locale, and
// against streams.
//
// The input is the text; its first eight bytes are also a double to be written.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <string>
#include <vector>

#include "FuzzSupport.h"
#include "util/Numbers.h"
#include "util/PlainNumbers.h"
#include "util/StreamTwin.h"

namespace {

using namespace Vorlan;

// No number that is read: shows that a variable was left alone.
constexpr double kUntouched = -8.125e-77;

void CompareScanDouble(const std::string& text)
{
    double seen = kUntouched;
    double expected = kUntouched;
    const bool hasSeen = numbers::ScanDouble(text, seen);
    const bool hasExpected = std::sscanf(text.c_str(), "%lf", &expected) == 1;
    fuzz::Check(hasSeen == hasExpected, "ScanDouble reads what sscanf reads");
    fuzz::Check(fuzz::SameBits(seen, expected), "ScanDouble reads the same number");
}

void CompareScanTwoDoubles(const std::string& text)
{
    double seen[] = {kUntouched, kUntouched};
    double expected[] = {kUntouched, kUntouched};
    numbers::ScanTwoDoubles(text, seen[0], seen[1]);
    std::sscanf(text.c_str(), "%lf%*[ \t]%lf", &expected[0], &expected[1]);
    fuzz::Check(fuzz::SameBits(seen[0], expected[0]), "ScanTwoDoubles reads the same first number");
    fuzz::Check(fuzz::SameBits(seen[1], expected[1]),
                "ScanTwoDoubles reads the same second number");
}

void CompareScanInt(const std::string& text)
{
    constexpr long long kLow = std::numeric_limits<std::int32_t>::min();
    constexpr long long kHigh = std::numeric_limits<std::int32_t>::max();
    std::int32_t seen = 77;
    long long expected = 77;
    const bool hasSeen = numbers::ScanInt(text, seen);
    // glibc gives the nearest of 64 bits; "%d" would drop the upper ones.
    const bool hasExpected = std::sscanf(text.c_str(), "%lld", &expected) == 1;
    expected = std::clamp(expected, kLow, kHigh);
    fuzz::Check(hasSeen == hasExpected, "ScanInt reads what sscanf reads");
    fuzz::Check(seen == expected, "ScanInt reads the same number");
    fuzz::Check(numbers::ToInt(text) == (hasExpected ? expected : 0), "ToInt reads as atoi");
}

void CompareToDouble(const std::string& text)
{
    fuzz::Check(fuzz::SameBits(numbers::ToDouble(text), std::strtod(text.c_str(), nullptr)),
                "ToDouble reads as atof");
}

/// take against a stream: the number and what is left of the text.
template <typename Number, typename Take>
void CompareTaking(Take take, const std::string& text, const char* rule)
{
    const auto seen = test::TakenBy<Number>(take, text);
    const auto expected = test::TakenByAStream<Number>(text);
    // NOLINTNEXTLINE(bugprone-suspicious-memory-comparison): bits are meant
    const bool isSame = std::memcmp(&seen.value, &expected.value, sizeof(Number)) == 0;
    fuzz::Check(seen.isRead == expected.isRead && isSame, rule);
    fuzz::CheckSame(seen.rest, expected.rest, rule);
}

// ---- Quick ways ------------------------------------------------------------

/// A text that is plain is the number that everybody reads.
void CompareReadPlain(const std::string& text)
{
    std::int32_t whole = 77;
    if (numbers::ReadPlainInt(text, whole)) {
        std::int32_t expected = 0;
        fuzz::Check(numbers::ScanInt(text, expected) && whole == expected,
                    "ReadPlainInt reads the same number as ScanInt");
    } else {
        fuzz::Check(whole == 77, "ReadPlainInt leaves other numbers alone");
    }
    double value = kUntouched;
    if (numbers::ReadPlainDouble(text, value)) {
        double expected = 0.0;
        fuzz::Check(numbers::ScanDouble(text, expected) && fuzz::SameBits(value, expected),
                    "ReadPlainDouble reads the same number as ScanDouble");
    } else {
        fuzz::Check(fuzz::SameBits(value, kUntouched),
                    "ReadPlainDouble leaves other numbers alone");
    }
}

/// A line in memory that ends where TakePlainLine may look at last; sevens behind
/// a short text must not show.
void CompareTakePlainLine(const std::string& text)
{
    std::vector<char> reach(numbers::kPlainLineReach, '7');
    std::copy_n(text.begin(), std::min(text.size(), reach.size()), reach.begin());
    double seen[] = {kUntouched, kUntouched};
    const char* const next = numbers::TakePlainLine(reach.data(), seen[0], seen[1]);
    if (next == nullptr) {
        return;
    }
    const std::string line(reach.begin(), std::find(reach.begin(), reach.end(), '\n'));
    fuzz::Check(next == reach.data() + line.size() + 1, "TakePlainLine takes the whole line");
    double expected[] = {kUntouched, kUntouched};
    numbers::ScanTwoDoubles(line, expected[0], expected[1]);
    fuzz::Check(fuzz::SameBits(seen[0], expected[0]) && fuzz::SameBits(seen[1], expected[1]),
                "TakePlainLine reads the same numbers as ScanTwoDoubles");
}

// ---- Writing ---------------------------------------------------------------

template <typename Append>
void CompareWriting(Append append, const char* format, double value)
{
    char expected[512];
    std::snprintf(expected, sizeof expected, format, value);
    std::string seen;
    append(seen, value);
    fuzz::CheckSame(seen, expected, format);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const std::string text(fuzz::TextOf(data, size));
    CompareScanDouble(text);
    CompareScanTwoDoubles(text);
    CompareScanInt(text);
    CompareToDouble(text);
    CompareTaking<double>(numbers::TakeDouble, text, "TakeDouble takes what a stream takes");
    CompareTaking<std::uint64_t>(numbers::TakeUnsigned, text,
                                 "TakeUnsigned takes what a stream takes");
    CompareReadPlain(text);
    CompareTakePlainLine(text);
    CompareTakePlainLine(text + '\n');
    const auto value = fuzz::Bytes(data, size).Raw<double>();
    CompareWriting(numbers::AppendFixed6, "%.6f", value);
    CompareWriting(numbers::AppendScientific5, "%.5e", value);
    CompareWriting(numbers::AppendGeneral, "%g", value);
    return 0;
}
