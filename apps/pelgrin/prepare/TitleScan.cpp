#include "prepare/TitleScan.h"

#include <algorithm>
#include <charconv>
#include <string>
#include <vector>

#include "common/Words.h"
#include "run/DottedName.h"

namespace pelgrin {

namespace {

using Number = std::optional<std::uint32_t>;

bool IsLetter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

/// The number behind the first word in lower case text, with signs between.
Number NumberBehind(std::string_view text, std::string_view word, std::string_view signs)
{
    for (std::size_t hit = text.find(word); hit != std::string_view::npos;
         hit = text.find(word, hit + 1)) {
        const bool begins = hit == 0 || !IsLetter(text[hit - 1]);
        std::size_t next = hit + word.size();
        const std::size_t digits = std::min(text.find_first_not_of(signs, next), text.size());
        if (begins && digits > next) {
            if (const Number number = LeadingNumber(text.substr(digits))) {
                return number;
            }
        }
    }
    return std::nullopt;
}

} // namespace

Number LeadingNumber(std::string_view text)
{
    text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    std::int32_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && number >= 0 && text.front() != '-'
               ? Number(static_cast<std::uint32_t>(number))
               : std::nullopt;
}

Number LeadingValue(std::string_view text)
{
    text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    const bool hasSign = text.size() > 1 && text[0] == '+' && text[1] >= '0' && text[1] <= '9';
    return LeadingNumber(text.substr(hasSign ? 1 : 0));
}

Number ScanOfDottedWord(std::string_view word)
{
    std::vector<std::string_view> pieces;
    for (std::size_t dot = word.find('.'); dot != std::string_view::npos; dot = word.find('.')) {
        pieces.push_back(word.substr(0, dot));
        word.remove_prefix(dot + 1);
    }
    pieces.push_back(word);
    // "run", twice the number, and perhaps charge, number and ending.
    for (std::size_t i = 1; i + 1 < pieces.size(); ++i) {
        const bool isPair = IsScanNumber(pieces[i]) && IsScanNumber(pieces[i + 1])
                            && WithoutZeros(pieces[i]) == WithoutZeros(pieces[i + 1]);
        if (isPair && pieces.size() - i <= 5) {
            return LeadingNumber(pieces[i]);
        }
    }
    return std::nullopt;
}

Number ScanOfTitle(std::string_view title)
{
    const std::string lower = Lower(title);
    constexpr std::string_view kKey = "scan=";
    const std::size_t key = lower.find(kKey);
    if (key != std::string::npos) {
        if (const Number scan = LeadingNumber(title.substr(key + kKey.size()))) {
            return scan;
        }
    }
    if (const Number scan = ScanOfDottedWord(title.substr(0, title.find(' ')))) {
        return scan;
    }
    const Number scan = NumberBehind(lower, "scan", " :#=");
    return scan ? scan : NumberBehind(lower, "scannumber", " :#=");
}

Number CountOfTitle(std::string_view title)
{
    const std::string lower = Lower(title);
    const Number compound = NumberBehind(lower, "cmpd", " :#=");
    return compound ? compound : NumberBehind(lower, "index", "=");
}

} // namespace pelgrin
