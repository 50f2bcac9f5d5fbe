#include "util/TextMode.h"

#include <string>

#include <gtest/gtest.h>

namespace Vorlan {
namespace {

std::string WithoutReturns(std::string text)
{
    text.resize(DropCarriageReturns(text.data(), text.size()));
    return text;
}

std::string WithoutMark(std::string text)
{
    text.resize(DropByteOrderMark(text.data(), text.size()));
    return text;
}

std::string PlainWithoutReturns(const std::string& text)
{
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\r' || i + 1 == text.size() || text[i + 1] != '\n') {
            result += text[i];
        }
    }
    return result;
}

TEST(TextMode, EveryShortTextLosesOneReturnBeforeEachFeed)
{
    constexpr char kLetters[] = {'a', '\r', '\n'};
    int count = 1;
    for (std::size_t length = 0; length <= 9; ++length, count *= 3) {
        for (int number = 0; number < count; ++number) {
            std::string text;
            for (int rest = number; text.size() < length; rest /= 3) {
                text += kLetters[rest % 3];
            }
            ASSERT_EQ(WithoutReturns(text), PlainWithoutReturns(text))
                << testing::PrintToString(text);
        }
    }
}

TEST(TextMode, OneMarkAtTheStartGoes)
{
    struct {
        const char* reason;
        std::string text;
        std::string rest;
    } const cases[] = {
        {"nothing", "", ""},
        {"the mark alone", "\xEF\xBB\xBF", ""},
        {"and text", "\xEF\xBB\xBF<a>", "<a>"},
        {"the first of two", "\xEF\xBB\xBF\xEF\xBB\xBF", "\xEF\xBB\xBF"},
        {"a part of it stays", "\xEF\xBB", "\xEF\xBB"},
        {"another byte", "\xEF\xBB\xBE", "\xEF\xBB\xBE"},
        {"behind a blank", " \xEF\xBB\xBF", " \xEF\xBB\xBF"},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(WithoutMark(c.text), c.rest) << c.reason;
    }
}

} // namespace
} // namespace Vorlan
