// Tables of numbers. Random texts and other locales stand in files of their
// own.
#include "util/Numbers.h"

#include <cmath>
#include <cstdlib>
#include <limits>

#include "support/CLocale.h"
#include "support/Support.h"
#include "util/SlowNumbers.h"

namespace Vorlan {
namespace {

using std::string_literals::operator""s;
using test::kUntouched;
using test::SameBits;

constexpr double kInf = std::numeric_limits<double>::infinity();
constexpr std::int32_t kIntMax = std::numeric_limits<std::int32_t>::max();
constexpr std::int32_t kIntMin = std::numeric_limits<std::int32_t>::min();

// ---- ReadPlain ---------------------------------------------------------------

struct PlainNumber {
    const char* reason;
    std::string text;
    bool isInt;
    bool isDouble;
};

const PlainNumber kPlainNumbers[] = {
    {"an integer", "405", true, true},
    {"a negative one", "-405", true, true},
    {"leading noughts", "007", true, true},
    {"a decimal", "405.25", false, true},
    {"no digit behind the point", "5.", false, true},
    {"nine digits", "999999999", true, true},
    {"ten digits", "1234567890", false, true},
    {"fifteen digits", "-123456789.012345", false, true},
    {"sixteen digits", "1234567890.123456", false, false},
    {"many noughts", "0000000000000001", false, false},
    {"nothing", "", false, false},
    {"a sign alone", "-", false, false},
    {"a plus sign", "+1", false, false},
    {"two signs", "--1", false, false},
    {"no digit before the point", ".5", false, false},
    {"two points", "1.2.3", false, false},
    {"an exponent", "1e5", false, false},
    {"a blank in front", " 1", false, false},
    {"a blank behind", "1 ", false, false},
    {"a NUL behind", "1\0"s, false, false},
    {"no number", "inf", false, false},
};

TEST(Numbers, PlainNumbersAreFewDigitsAndNothingElse)
{
    for (const PlainNumber& c : kPlainNumbers) {
        std::int32_t whole = 77;
        double value = kUntouched;
        EXPECT_EQ(numbers::ReadPlainInt(c.text, whole), c.isInt) << c.reason;
        EXPECT_EQ(whole, c.isInt ? std::atoi(c.text.c_str()) : 77) << c.reason;
        EXPECT_EQ(numbers::ReadPlainDouble(c.text, value), c.isDouble) << c.reason;
        const test::CLocale locale;
        EXPECT_EQ(value, c.isDouble ? std::atof(c.text.c_str()) : kUntouched) << c.reason;
    }
}

TEST(Numbers, PlainNumbersMayStandInALongerText)
{
    const std::string_view text = "12.5";
    std::int32_t whole = 0;
    double value = 0.0;
    EXPECT_TRUE(numbers::ReadPlainInt(text.substr(0, 2), whole));
    EXPECT_EQ(whole, 12);
    EXPECT_TRUE(numbers::ReadPlainDouble(text.substr(1, 2), value));
    EXPECT_EQ(value, 2.0);
}

// ---- ScanDouble ------------------------------------------------------------

struct DoubleCase {
    const char* reason;
    std::string text;
    bool isRead;
    double value;
};

const DoubleCase kDoubleCases[] = {
    {"an integer", "405", true, 405.0},
    {"a decimal", "405.25", true, 405.25},
    {"a decimal that no double is", "0.1", true, 0.1},
    {"a sign", "-1.5", true, -1.5},
    {"a plus sign", "+1", true, 1.0},
    {"minus nothing", "-0", true, -0.0},
    {"no digit before the point", ".5", true, 0.5},
    {"no digit behind the point", "5.", true, 5.0},
    {"leading zeros", "000001.5", true, 1.5},
    {"an exponent", "1e5", true, 1e5},
    {"a capital exponent", "1E5", true, 1e5},
    {"an exponent with a sign", "1e+05", true, 1e5},
    {"a negative exponent", "25e-1", true, 2.5},
    {"text behind it", "1.5abc", true, 1.5},
    {"a second point ends it", "1.2.3", true, 1.2},
    {"a comma ends it", "1,5", true, 1.0},
    {"a blank ends it", "1e5 2", true, 1e5},
    {"a carriage return ends it", "1.5\r", true, 1.5},
    {"a tab ends it", "1.5\t2", true, 1.5},
    {"a NUL ends it",
     "1.5\0"
     "9"s,
     true, 1.5},
    {"a NUL in the exponent's place", "1\0e5"s, true, 1.0},
    {"blanks before it", "  \t 1.5", true, 1.5},
    {"vertical tab and line feed before it", "\v\n\f\r1.5", true, 1.5},
    {"nineteen digits", "1234567890123456789", true, 1234567890123456789.0},
    {"twenty digits", "12345678901234567890", true, 12345678901234567890.0},
    {"2^53 + 1 goes to the even neighbour", "9007199254740993", true, 9007199254740992.0},
    {"2^53 + 1 and a hair", "9007199254740993.0000000001", true, 9007199254740994.0},
    {"halfway digits", "1.00000000000000011102230246251565404236316680908203125", true, 1.0},
    {"halfway digits and a hair", "1.00000000000000011102230246251565404236316680908203126", true,
     1.0000000000000002},
    {"a wrapped 64-bit mantissa", "18446744073709551616", true, 18446744073709551616.0},
    {"a wrapped mantissa that looks small", "18446744073709551617.5", true, 18446744073709551616.0},
    {"many zeros behind the point", "0.00000000000000000000000000001", true, 1e-29},
    {"zeros only", "0.000000000000000000000000000000", true, 0.0},
    {"the largest double", "1.7976931348623157e308", true, 1.7976931348623157e308},
    {"too large", "1e400", true, kInf},
    {"too large, negative", "-1e400", true, -kInf},
    {"a huge exponent", "1e999999999999999999999", true, kInf},
    {"too small", "1e-400", true, 0.0},
    {"too small, negative", "-1e-400", true, -0.0},
    {"the smallest normal number", "2.2250738585072014e-308", true, 2.2250738585072014e-308},
    {"the smallest denormal", "4.9406564584124654e-324", true, 4.9406564584124654e-324},
    {"a denormal", "1e-310", true, 1e-310},
    {"zero with a huge exponent", "0e99999999999", true, 0.0},
    {"infinity", "inf", true, kInf},
    {"infinity in full", "-InFiNiTy", true, -kInf},
    {"hexadecimal", "0x10", true, 16.0},
    {"hexadecimal with exponent", "0x1.8p1", true, 3.0},
    {"nothing", "", false, 0.0},
    {"blanks", " \t\r\n", false, 0.0},
    {"a sign only", "-", false, 0.0},
    {"a point only", ".", false, 0.0},
    {"two signs", "+-1", false, 0.0},
    {"a blank behind the sign", "- 1", false, 0.0},
    {"a letter", "e5", false, 0.0},
    {"a letter before it", "x1", false, 0.0},
    {"a NUL before it",
     "\0"
     "1"s,
     false, 0.0},
    {"a byte order mark",
     "\xEF\xBB\xBF"
     "1",
     false, 0.0},
    {"a no-break space",
     "\xA0"
     "1",
     false, 0.0},
};

TEST(Numbers, ScanDoubleReadsWhatTheCLibraryReads)
{
    for (const DoubleCase& c : kDoubleCases) {
        SCOPED_TRACE(testing::Message() << c.reason << ": " << c.text);
        double value = kUntouched;
        EXPECT_EQ(numbers::ScanDouble(c.text, value), c.isRead);
        const double expected = c.isRead ? c.value : kUntouched;
        EXPECT_TRUE(SameBits(value, expected)) << value << ", expected " << expected;
    }
}

/// The C library's outcome is the only one asked for: it is not the same for
/// every version of it.
const char* const kOddTexts[] = {
    "1e",     "1e+",     "1e+ 5", "1e 5",  "1ex",     "1.e",    "0x",   "0x.",   "0xg",  "0x1p",
    "0x1p+",  "0x.8",    "infx",  "infin", "infini",  "in",     "i",    "nan",   "-nan", "nan(",
    "nan(1)", "nan(ab)", "NAN()", "na",    "nanx",    "1e5e5",  "1e5.", "1e5.5", "1..",  ".e1",
    "1_000",  "1'000",   "0b11",  "1f",    "1.0L",    "1e0x10", "--1",  "1-",    "1+1",  "0x-1",
    "1e--5",  "1e-",     "1e+-5", "00x10", "1.5e3\v", "1.5\v2", "1\n2", "\r1",   "\f1",  "1\f",
};

TEST(Numbers, ScanDoubleDoesAsTheCLibraryDoesOnOddTexts)
{
    for (const char* const text : kOddTexts) {
        const test::ScannedOne slow = test::SlowScanDouble(text);
        double value = kUntouched;
        EXPECT_EQ(numbers::ScanDouble(text, value), slow.isRead) << text;
        EXPECT_TRUE(SameBits(value, slow.value)) << text << ": " << value;
    }
}

TEST(Numbers, ScanDoubleReadsPartOfALongerText)
{
    const std::string text = "12345";
    double value = kUntouched;
    EXPECT_TRUE(numbers::ScanDouble(std::string_view(text).substr(1, 2), value));
    EXPECT_EQ(value, 23.0);
    EXPECT_FALSE(numbers::ScanDouble(std::string_view(), value));
    EXPECT_EQ(value, 23.0);
}

TEST(Numbers, ScanDoubleReadsAMegabyteOfDigits)
{
    double value = kUntouched;
    EXPECT_TRUE(numbers::ScanDouble("0." + std::string(1 << 20, '0') + "1e1048578", value));
    EXPECT_EQ(value, 10.0);
    EXPECT_TRUE(numbers::ScanDouble(std::string(1 << 20, '9'), value));
    EXPECT_EQ(value, kInf);
}

// ---- ToDouble --------------------------------------------------------------

TEST(Numbers, ToDoubleReadsWhatScanDoubleReads)
{
    for (const DoubleCase& c : kDoubleCases) {
        if (c.isRead) {
            EXPECT_TRUE(SameBits(numbers::ToDouble(c.text), c.value)) << c.reason;
        }
    }
}

struct AtofCase {
    const char* reason;
    std::string text;
    double value;
};

// atof takes what it can of a text; sscanf fails on most of these.
const AtofCase kAtofCases[] = {
    {"nothing", "", 0.0},
    {"blanks", " \t\n", 0.0},
    {"a word", "Da", 0.0},
    {"a sign alone", "-", 0.0},
    {"a point alone", ".", 0.0},
    {"a point and an exponent", ".e1", 0.0},
    {"a NUL in front", "\0001"s, 0.0},
    {"an exponent without digits", "20e", 20.0},
    {"a unit that begins like an exponent", "20eV", 20.0},
    {"an exponent with nothing but a sign", "-20e+", -20.0},
    {"a unit behind it", "20ppm", 20.0},
    {"a comma", "1,5", 1.0},
    {"a hexadecimal number without digits", "0x", 0.0},
    {"a hexadecimal number without an exponent's digits", "0x10p", 16.0},
    {"a beginning of infinity", "infi", kInf},
};

TEST(Numbers, ToDoubleReadsAsAtof)
{
    for (const AtofCase& c : kAtofCases) {
        EXPECT_TRUE(SameBits(numbers::ToDouble(c.text), c.value))
            << c.reason << ": " << numbers::ToDouble(c.text);
        EXPECT_TRUE(SameBits(test::SlowToDouble(c.text), c.value)) << c.reason;
    }
}

TEST(Numbers, ToDoubleReadsPartOfALongerText)
{
    const std::string text = "12345";
    EXPECT_EQ(numbers::ToDouble(std::string_view(text).substr(1, 2)), 23.0);
    EXPECT_EQ(numbers::ToDouble(std::string_view()), 0.0);
}

// ---- ScanTwoDoubles --------------------------------------------------------

struct TwoCase {
    const char* reason;
    std::string text;
    double first;
    double second;
};

constexpr double kNo1 = test::ScannedTwo().first;
constexpr double kNo2 = test::ScannedTwo().second;

const TwoCase kTwoCases[] = {
    {"a blank between", "100.5 20", 100.5, 20.0},
    {"a tab between", "100.5\t20", 100.5, 20.0},
    {"several of both between", "100.5 \t  \t20", 100.5, 20.0},
    {"a carriage return at the end", "100.5 20\r", 100.5, 20.0},
    {"a third number", "100.5 20 1+", 100.5, 20.0},
    {"text behind", "100.5 20abc", 100.5, 20.0},
    {"blanks before", "  100.5 20", 100.5, 20.0},
    {"a vertical tab before", "\v100.5 20", 100.5, 20.0},
    {"signs", "-1 +2", -1.0, 2.0},
    {"exponents", "1e2 1E-1", 100.0, 0.1},
    {"hexadecimal", "0x10 0x20", 16.0, 32.0},
    {"infinity", "inf -inf", kInf, -kInf},
    {"too large", "1e400 1e-400", kInf, 0.0},
    {"points at the ends", "1. .5", 1.0, 0.5},
    {"one number", "100.5", 100.5, kNo2},
    {"one number and blanks", "100.5 \t", 100.5, kNo2},
    {"one number and a carriage return", "100.5\r", 100.5, kNo2},
    {"no blank between", "100.5;20", 100.5, kNo2},
    {"a sign between", "1-2", 1.0, kNo2},
    {"a vertical tab between", "1\v2", 1.0, kNo2},
    {"a carriage return between", "1\r2", 1.0, kNo2},
    {"a carriage return behind the blank", "1 \r2", 1.0, 2.0},
    {"a second that is no number", "1 x", 1.0, kNo2},
    {"a second that is half a number", "1 -", 1.0, kNo2},
    {"a NUL behind the first", "1\0 2"s, 1.0, kNo2},
    {"a NUL behind the gap",
     "1 \0"
     "2"s,
     1.0, kNo2},
    {"a NUL behind the second",
     "1 2\0"
     "3"s,
     1.0, 2.0},
    {"a first that is no number", "x 2", kNo1, kNo2},
    {"nothing", "", kNo1, kNo2},
    {"blanks only", " \t ", kNo1, kNo2},
    {"a NUL first",
     "\0"
     "1 2"s,
     kNo1, kNo2},
};

TEST(Numbers, ScanTwoDoublesReadsWhatTheCLibraryReads)
{
    for (const TwoCase& c : kTwoCases) {
        SCOPED_TRACE(c.reason);
        test::ScannedTwo scanned;
        numbers::ScanTwoDoubles(c.text, scanned.first, scanned.second);
        EXPECT_TRUE(SameBits(scanned.first, c.first)) << scanned.first;
        EXPECT_TRUE(SameBits(scanned.second, c.second)) << scanned.second;
    }
}

TEST(Numbers, ScanTwoDoublesDoesAsTheCLibraryDoesOnOddTexts)
{
    for (const char* const one : kOddTexts) {
        for (const char* const other : kOddTexts) {
            const std::string text = one + " "s + other;
            const test::ScannedTwo slow = test::SlowScanTwoDoubles(text);
            test::ScannedTwo scanned;
            numbers::ScanTwoDoubles(text, scanned.first, scanned.second);
            EXPECT_TRUE(SameBits(scanned.first, slow.first)) << text;
            EXPECT_TRUE(SameBits(scanned.second, slow.second)) << text;
        }
    }
}

// ---- ScanInt ---------------------------------------------------------------

struct IntCase {
    const char* reason;
    std::string text;
    bool isRead;
    std::int32_t value;
};

const IntCase kIntCases[] = {
    {"a number", "42", true, 42},
    {"a sign", "-42", true, -42},
    {"a plus sign", "+42", true, 42},
    {"minus nothing", "-0", true, 0},
    {"leading zeros are not octal", "010", true, 10},
    {"blanks before it", " \t\n\v\f\r42", true, 42},
    {"text behind it", "42abc", true, 42},
    {"a point ends it", "42.9", true, 42},
    {"an exponent ends it", "1e5", true, 1},
    {"no hexadecimal", "0x10", true, 0},
    {"a NUL ends it",
     "4\0"
     "2"s,
     true, 4},
    {"the largest", "2147483647", true, kIntMax},
    {"one too large", "2147483648", true, kIntMax},
    {"the smallest", "-2147483648", true, kIntMin},
    {"one too small", "-2147483649", true, kIntMin},
    {"beyond 64 bits", "99999999999999999999999", true, kIntMax},
    {"beyond 64 bits, negative", "-99999999999999999999999", true, kIntMin},
    {"2^32 does not become 0", "4294967296", true, kIntMax},
    {"2^64 does not become 0", "18446744073709551616", true, kIntMax},
    {"many leading zeros", std::string(100, '0') + "7", true, 7},
    {"nothing", "", false, 0},
    {"blanks", "  ", false, 0},
    {"a sign only", "-", false, 0},
    {"two signs", "--1", false, 0},
    {"a blank behind the sign", "- 1", false, 0},
    {"a letter", "a1", false, 0},
    {"a point", ".5", false, 0},
    {"a NUL before it",
     "\0"
     "1"s,
     false, 0},
    {"a no-break space before it",
     "\xA0"
     "1",
     false, 0},
};

TEST(Numbers, ScanIntStopsAtTheEndsOf32Bits)
{
    for (const IntCase& c : kIntCases) {
        SCOPED_TRACE(c.reason);
        std::int32_t value = -7;
        EXPECT_EQ(numbers::ScanInt(c.text, value), c.isRead);
        EXPECT_EQ(value, c.isRead ? c.value : -7);
        EXPECT_EQ(numbers::ToInt(c.text), c.isRead ? c.value : 0);
    }
}

// ---- Writing ---------------------------------------------------------------

struct PrintCase {
    const char* reason;
    double value;
    const char* fixed;
    const char* scientific;
    const char* general;
};

const PrintCase kPrintCases[] = {
    {"nothing", 0.0, "0.000000", "0.00000e+00", "0"},
    {"minus nothing", -0.0, "-0.000000", "-0.00000e+00", "-0"},
    {"an integer", 100.0, "100.000000", "1.00000e+02", "100"},
    {"a mass", 15.994915, "15.994915", "1.59949e+01", "15.9949"},
    {"six significant digits", 1234.56789, "1234.567890", "1.23457e+03", "1234.57"},
    {"general turns to the exponent", 1234567.0, "1234567.000000", "1.23457e+06", "1.23457e+06"},
    {"general before its exponent", 123456.0, "123456.000000", "1.23456e+05", "123456"},
    {"rounding makes a seventh digit", 999999.5, "999999.500000", "1.00000e+06", "1e+06"},
    {"small", 0.0001, "0.000100", "1.00000e-04", "0.0001"},
    {"general turns to the exponent below", 0.00001, "0.000010", "1.00000e-05", "1e-05"},
    {"smaller than six decimals", -1e-9, "-0.000000", "-1.00000e-09", "-1e-09"},
    {"halfway goes by the exact value", 0.0000005, "0.000000", "5.00000e-07", "5e-07"},
    {"three digits of exponent", 1e-300, "0.000000", "1.00000e-300", "1e-300"},
    {"infinity", kInf, "inf", "inf", "inf"},
    {"minus infinity", -kInf, "-inf", "-inf", "-inf"},
};

template <typename Append>
std::string Appended(Append append, double value)
{
    std::string text = "x\t";
    append(text, value);
    EXPECT_EQ(text.substr(0, 2), "x\t");
    return text.substr(2);
}

TEST(Numbers, AppendWritesAsTheCLibraryWrites)
{
    for (const PrintCase& c : kPrintCases) {
        SCOPED_TRACE(c.reason);
        EXPECT_EQ(Appended(numbers::AppendFixed6, c.value), c.fixed);
        EXPECT_EQ(Appended(numbers::AppendScientific5, c.value), c.scientific);
        EXPECT_EQ(Appended(numbers::AppendGeneral, c.value), c.general);
    }
}

TEST(Numbers, AppendWritesTheLongestNumberWhole)
{
    const double longest = -std::numeric_limits<double>::max();
    EXPECT_EQ(Appended(numbers::AppendFixed6, longest), test::SlowPrinted("%.6f", longest));
    EXPECT_EQ(Appended(numbers::AppendFixed6, longest).size(), 317U);
}

TEST(Numbers, AppendWritesNotANumberWithItsSign)
{
    for (const double value : {std::nan(""), std::copysign(std::nan(""), -1.0), std::nan("5")}) {
        EXPECT_EQ(Appended(numbers::AppendFixed6, value), test::SlowPrinted("%.6f", value));
        EXPECT_EQ(Appended(numbers::AppendScientific5, value), test::SlowPrinted("%.5e", value));
        EXPECT_EQ(Appended(numbers::AppendGeneral, value), test::SlowPrinted("%g", value));
    }
}

} // namespace
} // namespace Vorlan
