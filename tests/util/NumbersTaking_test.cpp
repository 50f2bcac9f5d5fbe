// Numbers taken from the front of a text as a stream extracts them: tables, and
// random texts against a stream.
#include <clocale>
#include <limits>

#include "support/Support.h"
#include "util/Numbers.h"
#include "util/RandomNumbers.h"
#include "util/SlowNumbers.h"
#include "util/StreamTwin.h"

namespace Vorlan {
namespace {

using std::string_literals::operator""s;
using test::Random;
using test::SameBits;
using test::Taken;

constexpr std::uint64_t kTop = std::numeric_limits<std::uint64_t>::max();

Taken<double> TakenDouble(const std::string& text)
{
    return test::TakenBy<double>(numbers::TakeDouble, text);
}

Taken<std::uint64_t> TakenUnsigned(const std::string& text)
{
    return test::TakenBy<std::uint64_t>(numbers::TakeUnsigned, text);
}

// ---- TakeDouble ------------------------------------------------------------

struct DoubleCase {
    const char* reason;
    std::string text;
    double value;
    std::string rest;
};

const DoubleCase kDoubles[] = {
    {"an integer", "405", 405.0, ""},
    {"a decimal", "405.25", 405.25, ""},
    {"a sign", "-1.5", -1.5, ""},
    {"a plus sign", "+1.5", 1.5, ""},
    {"minus nothing", "-0", -0.0, ""},
    {"no digit before the point", ".5", 0.5, ""},
    {"no digit behind the point", "5.", 5.0, ""},
    {"a point at its end, a number behind", "5. 7", 5.0, " 7"},
    {"an exponent", "1e5", 1e5, ""},
    {"a capital exponent with a sign", "1E-2", 1e-2, ""},
    {"leading zeros", "007.50", 7.5, ""},
    {"blanks before it go", " \t\r\n\v\f1.5", 1.5, ""},
    {"blanks behind it stay", "1.5 \t", 1.5, " \t"},
    {"a carriage return behind it stays", "1.5\r", 1.5, "\r"},
    {"a vertical tab ends it", "1.5\v2", 1.5, "\v2"},
    {"a comma ends it", "1,5", 1.0, ",5"},
    {"a second point ends it", "1.2.3", 1.2, ".3"},
    {"a letter ends it", "1.5abc", 1.5, "abc"},
    {"a sign ends it", "1-2", 1.0, "-2"},
    {"a second exponent's point ends it", "1e5.5", 1e5, ".5"},
    {"no hexadecimal", "0x10", 0.0, "x10"},
    {"no hexadecimal behind a sign", "-0x1p3", -0.0, "x1p3"},
    {"a NUL ends it", "1\0e5"s, 1.0, "\0e5"s},
    {"a hash ends it", "1e5#", 1e5, "#"},
    {"too small is zero", "1e-400", 0.0, ""},
    {"a denormal", "1e-310 x", 1e-310, " x"},
    {"the largest", "1.7976931348623157e308", 1.7976931348623157e308, ""},
    {"zero with a huge exponent", "0e99999999999", 0.0, ""},
    {"twenty digits", "12345678901234567890;", 12345678901234567890.0, ";"},
};

TEST(NumbersTaking, TakeDoubleGivesTheValueAndLeavesTheRest)
{
    for (const DoubleCase& c : kDoubles) {
        const Taken<double> taken = TakenDouble(c.text);
        EXPECT_TRUE(taken.isRead) << c.reason;
        EXPECT_TRUE(SameBits(taken.value, c.value)) << c.reason << ": " << taken.value;
        EXPECT_EQ(taken.rest, c.rest) << c.reason;
    }
}

struct FailingCase {
    const char* reason;
    std::string text;
};

const FailingCase kNoDoubles[] = {
    {"nothing", ""},
    {"blanks only", " \t\r\n\v\f"},
    {"a sign only", "-"},
    {"two signs", "+-1"},
    {"a blank behind the sign", "- 1"},
    {"a point only", "."},
    {"a point and an exponent", ".e5"},
    {"an exponent only", "e5"},
    {"an exponent without digits", "1e"},
    {"an exponent with a sign only", "1e+"},
    {"an exponent with a blank behind", "1e 5"},
    {"an exponent with a second one behind", "1ee5"},
    {"infinity", "inf"},
    {"infinity with a sign", "-Infinity"},
    {"not a number", "nan"},
    {"too large", "1e400"},
    {"too large, negative", "-1e400"},
    {"too large by its digits", std::string(400, '9')},
    {"a huge exponent", "1e99999999999999999999"},
    {"a letter", "x1"},
    {"a comma", ",5"},
    {"a NUL", "\0001"s},
    {"a byte order mark", "\xEF\xBB\xBF 1"},
    {"a no-break space", "\xA0 1"},
};

TEST(NumbersTaking, TakeDoubleLeavesTheValueWhenThereIsNone)
{
    for (const FailingCase& c : kNoDoubles) {
        const Taken<double> taken = TakenDouble(c.text);
        EXPECT_FALSE(taken.isRead) << c.reason;
        EXPECT_EQ(taken.value, 0.0) << c.reason << ": the variable was touched";
    }
}

TEST(NumbersTaking, TheTablesOfDoublesAreThoseOfAStream)
{
    for (const DoubleCase& c : kDoubles) {
        const Taken<double> slow = test::TakenByAStream<double>(c.text);
        EXPECT_TRUE(slow.isRead && SameBits(slow.value, c.value)) << c.reason << ": " << slow.value;
        EXPECT_EQ(slow.rest, c.rest) << c.reason;
    }
    for (const FailingCase& c : kNoDoubles) {
        EXPECT_FALSE(test::TakenByAStream<double>(c.text).isRead) << c.reason;
    }
}

TEST(NumbersTaking, TakeDoubleWalksAlongATextAndNotBehindIt)
{
    const std::string text = "1 2.5\t-3 4567";
    std::string_view rest = std::string_view(text).substr(0, text.size() - 2);
    std::vector<double> values;
    for (double value = 0.0; numbers::TakeDouble(rest, value);) {
        values.push_back(value);
    }
    EXPECT_THAT(values, testing::ElementsAre(1.0, 2.5, -3.0, 45.0));
    EXPECT_TRUE(rest.empty());
    double value = 8.0;
    std::string_view nothing;
    EXPECT_FALSE(numbers::TakeDouble(nothing, value));
    EXPECT_EQ(value, 8.0);
}

// ---- TakeUnsigned ----------------------------------------------------------

struct UnsignedCase {
    const char* reason;
    std::string text;
    std::uint64_t value;
    std::string rest;
};

const UnsignedCase kUnsigned[] = {
    {"a number", "42", 42, ""},
    {"zero", "0", 0, ""},
    {"a plus sign", "+42", 42, ""},
    {"minus one is the largest", "-1", kTop, ""},
    {"minus nothing", "-0", 0, ""},
    {"minus the largest is one", "-18446744073709551615", 1, ""},
    {"the largest", "18446744073709551615", kTop, ""},
    {"leading zeros are not octal", "010", 10, ""},
    {"many leading zeros", std::string(100, '0') + "7", 7, ""},
    {"blanks before it go", " \t\r\n\v\f42", 42, ""},
    {"a charge's sign stays", "2+", 2, "+"},
    {"a point ends it", "42.9", 42, ".9"},
    {"an exponent ends it", "1e5", 1, "e5"},
    {"a comma ends it", "1,000", 1, ",000"},
    {"no hexadecimal", "0x10", 0, "x10"},
    {"blanks behind it stay", "3 \r", 3, " \r"},
    {"a NUL ends it", "4\0 2"s, 4, "\0 2"s},
};

const FailingCase kNoUnsigned[] = {
    {"nothing", ""},
    {"blanks only", " \t\r\n\v\f"},
    {"a sign only", "-"},
    {"two signs", "--1"},
    {"a blank behind the sign", "+ 1"},
    {"a letter", "x1"},
    {"a point", ".5"},
    {"one too large", "18446744073709551616"},
    {"too large, wrapping to something small", "36893488147419103233"},
    {"too large, negative", "-18446744073709551616"},
    {"far too large", std::string(100, '9') + " 1"},
};

TEST(NumbersTaking, TakeUnsignedGivesTheValueAndLeavesTheRest)
{
    for (const UnsignedCase& c : kUnsigned) {
        for (const Taken<std::uint64_t>& taken :
             {TakenUnsigned(c.text), test::TakenByAStream<std::uint64_t>(c.text)}) {
            EXPECT_TRUE(taken.isRead) << c.reason;
            EXPECT_EQ(taken.value, c.value) << c.reason;
            EXPECT_EQ(taken.rest, c.rest) << c.reason;
        }
    }
}

TEST(NumbersTaking, TakeUnsignedLeavesTheValueWhenThereIsNone)
{
    for (const FailingCase& c : kNoUnsigned) {
        const Taken<std::uint64_t> taken = TakenUnsigned(c.text);
        EXPECT_FALSE(taken.isRead) << c.reason;
        EXPECT_EQ(taken.value, 0U) << c.reason << ": the variable was touched";
        EXPECT_FALSE(test::TakenByAStream<std::uint64_t>(c.text).isRead) << c.reason;
    }
}

// ---- TakeTwoDoubles --------------------------------------------------------

struct TwoCase {
    const char* reason;
    std::string text;
    double first;
    double second;
};

constexpr double kNo1 = test::ScannedTwo().first;
constexpr double kNo2 = test::ScannedTwo().second;

const TwoCase kTwo[] = {
    {"a blank between", "100.5 20", 100.5, 20.0},
    {"a tab between", "100.5\t20", 100.5, 20.0},
    {"a vertical tab between", "1\v2", 1.0, 2.0},
    {"a carriage return between", "1\r2", 1.0, 2.0},
    {"a sign between", "1-2", 1.0, -2.0},
    {"a point between", "1.5.25", 1.5, 0.25},
    {"more columns", "100.5 20 3 4", 100.5, 20.0},
    {"blanks before", " \t100.5 20", 100.5, 20.0},
    {"one number", "100.5", 100.5, kNo2},
    {"a comma between", "1,2", 1.0, kNo2},
    {"the second is none", "1 x", 1.0, kNo2},
    {"the second is too large", "1 1e400", 1.0, kNo2},
    {"the second is infinite", "1 inf", 1.0, kNo2},
    {"the first is none: the second is not read", "x 2", kNo1, kNo2},
    {"the first is too large: the second is not read", "1e400 2", kNo1, kNo2},
    {"the first has half an exponent: the second is not read", "1e 2", kNo1, kNo2},
    {"nothing", "", kNo1, kNo2},
    {"blanks", " \t\r", kNo1, kNo2},
};

TEST(NumbersTaking, TakeTwoDoublesLeavesWhatItCannotRead)
{
    for (const TwoCase& c : kTwo) {
        test::ScannedTwo taken;
        numbers::TakeTwoDoubles(c.text, taken.first, taken.second);
        EXPECT_TRUE(SameBits(taken.first, c.first)) << c.reason << ": " << taken.first;
        EXPECT_TRUE(SameBits(taken.second, c.second)) << c.reason << ": " << taken.second;
    }
}

// ---- Random texts against a stream -----------------------------------------

void CompareWithAStream(const std::string& text)
{
    SCOPED_TRACE(testing::PrintToString(text));
    const Taken<double> one = TakenDouble(text);
    const Taken<double> slow = test::TakenByAStream<double>(text);
    ASSERT_EQ(one.isRead, slow.isRead);
    ASSERT_TRUE(SameBits(one.value, slow.value)) << one.value << ", expected " << slow.value;
    ASSERT_EQ(one.rest, slow.rest);

    const Taken<std::uint64_t> whole = TakenUnsigned(text);
    const Taken<std::uint64_t> slowWhole = test::TakenByAStream<std::uint64_t>(text);
    ASSERT_EQ(whole.isRead, slowWhole.isRead);
    ASSERT_EQ(whole.value, slowWhole.value);
    ASSERT_EQ(whole.rest, slowWhole.rest);

    const Taken<double> slowSecond = test::TakenByAStream<double>(slow.rest);
    test::ScannedTwo two;
    numbers::TakeTwoDoubles(text, two.first, two.second);
    ASSERT_TRUE(SameBits(two.first, slow.isRead ? slow.value : kNo1)) << two.first;
    ASSERT_TRUE(SameBits(two.second, slowSecond.isRead ? slowSecond.value : kNo2)) << two.second;
}

/// Gives how many of the texts begin with a number.
template <typename MakeText>
int CompareMany(std::uint64_t seed, int count, MakeText makeText)
{
    Random random(seed);
    int numbers = 0;
    for (int i = 0; i < count && !testing::Test::HasFatalFailure(); ++i) {
        const std::string text = makeText(random);
        CompareWithAStream(text);
        numbers += TakenDouble(text).isRead ? 1 : 0;
    }
    return numbers;
}

TEST(NumbersTaking, AgreesWithAStreamOnRandomTexts)
{
    EXPECT_GT(CompareMany(41, 100000, test::RandomStreamText), 30000);
}

TEST(NumbersTaking, AgreesWithAStreamOnNumbersAndPeakLines)
{
    EXPECT_GT(CompareMany(42, 40000, test::RandomNumber), 30000);
    EXPECT_GT(CompareMany(43, 40000, test::RandomNumberLine), 30000);
    EXPECT_GT(CompareMany(44, 40000, test::RandomNumberBytes), 10000);
}

/// Writes a comma for the point and groups the digits by three.
class Grouping : public std::numpunct<char> {
protected:
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

TEST(NumbersTaking, LocalesOfTheHostChangeNothing)
{
    const std::locale former =
        std::locale::global(std::locale(std::locale::classic(), new Grouping));
    const bool hasComma = std::setlocale(LC_NUMERIC, "de_DE.UTF-8") != nullptr;
    const auto makeText = [](Random& random) {
        return random.OneIn(2) ? test::RandomNumberLine(random)
                               : random.Text("0123456789.,e- ", random.Below(12));
    };
    const int numbers = CompareMany(45, 40000, makeText);
    const Taken<double> taken = TakenDouble("1.234,5");
    std::setlocale(LC_NUMERIC, "C");
    std::locale::global(former);
    EXPECT_GT(numbers, 20000);
    EXPECT_EQ(taken.value, 1.234);
    EXPECT_EQ(taken.rest, ",5");
    if (!hasComma) {
        GTEST_SKIP() << "no locale with a comma: install de_DE.UTF-8";
    }
}

} // namespace
} // namespace Vorlan
