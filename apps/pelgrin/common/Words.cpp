#include "common/Words.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>

namespace pelgrin {

std::string Lower(std::string_view text)
{
    std::string lower(text);
    for (char& c : lower) {
        if (c >= 'A' && c <= 'Z') {
            c = static_cast<char>(c - 'A' + 'a');
        }
    }
    return lower;
}

std::string_view WithoutBlanks(std::string_view text, std::string_view blanks)
{
    const std::size_t begin = text.find_first_not_of(blanks);
    if (begin == std::string_view::npos) {
        return {};
    }
    return text.substr(begin, text.find_last_not_of(blanks) - begin + 1);
}

bool BeginsWith(std::string_view text, std::string_view front)
{
    return text.substr(0, front.size()) == front;
}

std::string Clip(std::string_view text, std::size_t most)
{
    constexpr std::size_t kMostBehind = 3; // bytes behind the first one of a letter
    const auto goesOn = [&text](std::size_t i) {
        return (static_cast<unsigned char>(text[i]) & 0xC0U) == 0x80U;
    };
    std::size_t size = std::min(text.size(), most);
    while (size < text.size() && size > 0 && goesOn(size) && most - size < kMostBehind) {
        --size;
    }
    return std::string(text.substr(0, size));
}

std::optional<double> ParseNumber(std::string_view text)
{
    if (text.size() > 1 && text[0] == '+' && text[1] != '-') {
        text.remove_prefix(1);
    }
    double value = 0.0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, value);
    if (error != std::errc() || stop != end || !std::isfinite(value)) {
        return std::nullopt;
    }
    return value;
}

bool TakeNumber(std::string_view& text, double& value)
{
    text.remove_prefix(std::min(text.find_first_not_of(" \t\n\v\f\r"), text.size()));
    std::string_view digits = text;
    if (!digits.empty() && digits.front() == '+') {
        digits.remove_prefix(1);
    }
    const std::size_t first = digits.find_first_not_of('-');
    if (first == std::string_view::npos || (digits[first] != '.' && digits[first] < '0')
        || digits[first] > '9') {
        return false;
    }
    const auto [stop, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    text.remove_prefix(static_cast<std::size_t>(stop - text.data()));
    if (error == std::errc::result_out_of_range) {
        value = std::strtod(std::string(digits.data(), stop).c_str(), nullptr); // "1e-400" is 0
        return std::isfinite(value);
    }
    return error == std::errc() && (text.empty() || (text.front() | 0x20) != 'e');
}

std::string ShellWord(const std::string& text)
{
    constexpr std::string_view kPlain = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ"
                                        "0123456789_-./+,:=@%";
    if (!text.empty() && text.find_first_not_of(kPlain) == std::string::npos) {
        return text;
    }
    std::string word = "'";
    for (const char c : text) {
        word += c == '\'' ? "'\\''" : std::string(1, c);
    }
    return word + "'";
}

} // namespace pelgrin
