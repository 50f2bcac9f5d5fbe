// Numbers are the same whatever locale the host has set.
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <locale>
#include <sstream>

#include "support/Support.h"
#include "util/Numbers.h"
#include "util/RandomNumbers.h"
#include "util/SlowNumbers.h"

namespace Vorlan {
namespace {

using test::Random;
using test::SameBits;

/// A text with all that is read from it.
struct Read {
    std::string text;
    test::ScannedOne one;
    test::ScannedTwo two;
    double plain = 0.0;
};

std::vector<std::string> Texts()
{
    std::vector<std::string> texts = {"1.5",     "1,5",      "1.5 2.5", "1,5 2,5",
                                      "1.234,5", "1,234.5",  "1e5,5",   "0x1.8p1",
                                      "0x1,8p1", "-1.5e-3x", ".5",      ",5"};
    Random random(31);
    for (int i = 0; i < 20000; ++i) {
        texts.push_back(test::RandomNumberLine(random));
        texts.push_back(random.Text("0123456789.,e- ", random.Below(12)));
    }
    return texts;
}

/// Read by the C library in its "C" locale.
std::vector<Read> ReadByTheCLibrary()
{
    std::vector<Read> all;
    for (const std::string& text : Texts()) {
        all.push_back({text, test::SlowScanDouble(text), test::SlowScanTwoDoubles(text),
                       test::SlowToDouble(text)});
    }
    return all;
}

/// As the host prints it.
std::string OneAndAHalf()
{
    char text[8];
    std::snprintf(text, sizeof text, "%.1f", 1.5);
    return text;
}

void ExpectRead(const std::vector<Read>& all)
{
    for (const Read& read : all) {
        test::ScannedOne one;
        one.isRead = numbers::ScanDouble(read.text, one.value);
        ASSERT_EQ(one.isRead, read.one.isRead) << read.text;
        ASSERT_TRUE(SameBits(one.value, read.one.value)) << read.text << ": " << one.value;
        ASSERT_TRUE(SameBits(numbers::ToDouble(read.text), read.plain)) << read.text;
        test::ScannedTwo two;
        numbers::ScanTwoDoubles(read.text, two.first, two.second);
        ASSERT_TRUE(SameBits(two.first, read.two.first)) << read.text << ": " << two.first;
        ASSERT_TRUE(SameBits(two.second, read.two.second)) << read.text << ": " << two.second;
    }
}

void ExpectWritten()
{
    std::string text;
    numbers::AppendFixed6(text, 1234567.25);
    numbers::AppendScientific5(text, -1234567.25);
    numbers::AppendGeneral(text, 1234.5);
    EXPECT_EQ(text, "1234567.250000-1.23457e+061234.5");
    EXPECT_EQ(numbers::ToInt("1234567"), 1234567);
    EXPECT_EQ(numbers::ToInt("1.234"), 1);
}

TEST(NumbersLocale, CLibraryLocaleWithACommaChangesNothing)
{
    const std::vector<Read> all = ReadByTheCLibrary();
    const char* const set = std::setlocale(LC_NUMERIC, "de_DE.UTF-8");
    if (set == nullptr) {
        GTEST_SKIP() << "no locale with a comma: install de_DE.UTF-8";
    }
    ASSERT_EQ(OneAndAHalf(), "1,5");
    ExpectRead(all);
    ExpectWritten();
    EXPECT_EQ(OneAndAHalf(), "1,5") << "the host's locale was changed";
    EXPECT_EQ(std::atof("1,5"), 1.5) << "the host's locale was changed";
    std::setlocale(LC_NUMERIC, "C");
}

/// Writes a comma for the point and groups the digits by three.
class Grouping : public std::numpunct<char> {
protected:
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

TEST(NumbersLocale, StreamLocaleWithGroupingChangesNothing)
{
    const std::vector<Read> all = ReadByTheCLibrary();
    const std::locale former =
        std::locale::global(std::locale(std::locale::classic(), new Grouping));
    std::ostringstream host;
    host << 1234.5;
    EXPECT_EQ(host.str(), "1.234,5");
    ExpectRead(all);
    ExpectWritten();
    std::locale::global(former);
}

} // namespace
} // namespace Vorlan
