#include "files/PeakLine.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <string>

#include "common/Words.h"

namespace pelgrin {

namespace {

constexpr std::string_view kBlanks = " \t\r";
constexpr std::string_view kGap = " \t";

bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

/// What text is as a whole.
enum class Word { Finite, Infinite, NoNumber };

Word WordOf(std::string_view text, Numbers numbers)
{
    std::size_t i = text.size() > 1 && (text[0] == '+' || text[0] == '-') ? 1 : 0;
    std::size_t digits = 0;
    bool hasPoint = false;
    for (; i < text.size() && (IsDigit(text[i]) || (text[i] == '.' && !hasPoint)); ++i) {
        hasPoint = hasPoint || text[i] == '.';
        digits += IsDigit(text[i]) ? 1 : 0;
    }
    if (i == text.size()) {
        return digits > 0 ? Word::Finite : Word::NoNumber; // nearly every one
    }
    const std::string whole(text);
    char* end = nullptr;
    const double value = std::strtod(whole.c_str(), &end);
    const bool isDecimal =
        std::isfinite(value) && whole.find_first_not_of("0123456789.+-eE") == std::string::npos;
    if (end != whole.c_str() + whole.size() || (!isDecimal && numbers == Numbers::OfStream)) {
        return Word::NoNumber;
    }
    return std::isfinite(value) ? Word::Finite : Word::Infinite;
}

bool HasComma(std::string_view text)
{
    const std::size_t comma = text.find(',');
    return comma != std::string_view::npos && comma > 0 && IsDigit(text[comma - 1]);
}

/// Takes what stands before the next blank.
std::string_view TakeWord(std::string_view& text)
{
    const std::string_view word =
        text.substr(0, std::min(text.find_first_of(kWhiteSpace), text.size()));
    text.remove_prefix(word.size());
    return word;
}

/// Takes what stands between the two numbers. sscanf is told to pass over blanks and
/// tabs, of which there must be one; then a number passes over any white space.
void TakeGap(std::string_view& text, Numbers numbers)
{
    const bool isGap =
        numbers == Numbers::OfStream || kGap.find(text.substr(0, 1)) != std::string_view::npos;
    text.remove_prefix(isGap ? std::min(text.find_first_not_of(kWhiteSpace), text.size())
                             : text.size());
}

} // namespace

PeakLine PeakLineOf(std::string_view text, Numbers numbers)
{
    text.remove_prefix(std::min(text.find_first_not_of(kWhiteSpace), text.size()));
    const std::string_view mz = TakeWord(text);
    TakeGap(text, numbers);
    const std::string_view intensity = TakeWord(text);
    if (HasComma(mz) || HasComma(intensity)) {
        return PeakLine::Comma;
    }
    const Word first = WordOf(mz, numbers);
    const Word second = WordOf(intensity, numbers);
    if (first == Word::NoNumber || second == Word::NoNumber) {
        return PeakLine::NoPeak;
    }
    const bool isFinite = first == Word::Finite && second == Word::Finite;
    return isFinite ? PeakLine::Peak : PeakLine::Infinite;
}

std::string_view WithoutReturns(std::string_view text)
{
    return text.substr(0, text.find_last_not_of('\r') + 1);
}

std::string_view Trimmed(std::string_view text)
{
    return WithoutBlanks(text, kBlanks);
}

} // namespace pelgrin
