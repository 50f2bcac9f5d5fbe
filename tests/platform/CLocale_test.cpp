#include "platform/CLocale.h"

#include <clocale>
#include <cstdio>

#include "support/Support.h"

namespace Vorlan {
namespace {

TEST(CLocale, ScanGivesHowManyNumbersWereRead)
{
    double first = -1.0;
    double second = -2.0;
    EXPECT_EQ(platform::ScanDoubleInCLocale("1.5", first), 1);
    EXPECT_EQ(first, 1.5);
    EXPECT_EQ(platform::ScanDoubleInCLocale("x", first), 0);
    EXPECT_EQ(platform::ScanDoubleInCLocale("", first), EOF);
    EXPECT_EQ(first, 1.5);
    EXPECT_EQ(platform::ScanTwoDoublesInCLocale("3 x", first, second), 1);
    EXPECT_EQ(first, 3.0);
    EXPECT_EQ(second, -2.0);
    EXPECT_EQ(platform::ScanTwoDoublesInCLocale("4 5", first, second), 2);
    EXPECT_EQ(first, 4.0);
    EXPECT_EQ(second, 5.0);
}

TEST(CLocale, ToDoubleReadsAsAtof)
{
    EXPECT_EQ(platform::ToDoubleInCLocale(" 1.5x"), 1.5);
    EXPECT_EQ(platform::ToDoubleInCLocale("0x1p4"), 16.0);
    EXPECT_EQ(platform::ToDoubleInCLocale("x"), 0.0);
    EXPECT_EQ(platform::ToDoubleInCLocale(""), 0.0);
}

TEST(CLocale, ScanLeavesTheHostsLocaleAsItIs)
{
    const char* const set = std::setlocale(LC_ALL, "de_DE.UTF-8");
    if (set == nullptr) {
        GTEST_SKIP() << "no locale with a comma: install de_DE.UTF-8";
    }
    double value = 0.0;
    EXPECT_EQ(platform::ScanDoubleInCLocale("1.5,5", value), 1);
    EXPECT_EQ(value, 1.5);
    EXPECT_EQ(platform::ToDoubleInCLocale("2.5,5"), 2.5);
    EXPECT_EQ(std::sscanf("1,5", "%lf", &value), 1);
    EXPECT_EQ(value, 1.5);
    EXPECT_STREQ(std::setlocale(LC_ALL, nullptr), "de_DE.UTF-8");
    std::setlocale(LC_ALL, "C");
}

} // namespace
} // namespace Vorlan
