// Runs a test program as a host runs that has set a locale of its own.
//
// PELGRIN_TEST_LOCALE=c:de_DE.UTF-8     set for the C library
// PELGRIN_TEST_LOCALE=cpp:de_DE.UTF-8   set for C++ streams as well, those that
//                                       exist included
//
// The locale must write a comma in numbers, and group digits in streams: what
// cannot be seen would prove nothing.
#include <array>
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <locale>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

namespace Vorlan::test {
namespace {

std::string PrintedOneAndAHalf()
{
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), "%.1f", 1.5);
    return text.data();
}

std::string StreamedMillion()
{
    std::ostringstream stream;
    stream << 1234567;
    return stream.str();
}

class TestLocale : public testing::Environment {
public:
    void SetUp() override
    {
        const char* const wanted = std::getenv("PELGRIN_TEST_LOCALE");
        if (wanted == nullptr) {
            ASSERT_EQ(PrintedOneAndAHalf(), "1.5");
            return;
        }
        const std::string text = wanted;
        const std::size_t colon = text.find(':');
        ASSERT_NE(colon, std::string::npos) << "PELGRIN_TEST_LOCALE=" << text;
        const std::string kind = text.substr(0, colon);
        const std::string name = text.substr(colon + 1);
        if (kind == "cpp") {
            std::locale::global(std::locale(name)); // throws where there is none
            std::cout.imbue(std::locale());
            std::cerr.imbue(std::locale());
            ASSERT_EQ(StreamedMillion(), "1.234.567") << "the locale does not group";
        } else {
            ASSERT_EQ(kind, "c") << "PELGRIN_TEST_LOCALE=" << text;
            ASSERT_NE(std::setlocale(LC_ALL, name.c_str()), nullptr) << "no locale " << name;
        }
        ASSERT_EQ(PrintedOneAndAHalf(), "1,5") << "the locale has no comma";
        std::setlocale(LC_MESSAGES, "C"); // what the system says is compared
    }
};

testing::Environment* const testLocale = testing::AddGlobalTestEnvironment(new TestLocale);

} // namespace
} // namespace Vorlan::test
