// Number text against the C library, which the process runs in its "C" locale.
//
// The input is the text; its first eight bytes are also a double to be written.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <string>

#include "FuzzSupport.h"
#include "util/Numbers.h"

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
    const auto value = fuzz::Bytes(data, size).Raw<double>();
    CompareWriting(numbers::AppendFixed6, "%.6f", value);
    CompareWriting(numbers::AppendScientific5, "%.5e", value);
    CompareWriting(numbers::AppendGeneral, "%g", value);
    return 0;
}
