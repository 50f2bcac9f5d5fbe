#include "spectra/TitleNames.h"

#include <cstdint>
#include <cstdlib>

#include "CStringProcess.h"
#include "util/Numbers.h"

namespace Vorlan {

namespace {

constexpr std::size_t kTitleKeyLength = 6; // "TITLE="

std::string_view TitleOf(std::string_view line)
{
    const char* begin = line.data();
    const char* end = begin + line.size();
    CStringProcess::Trim(begin, end);
    const std::string_view trimmed(begin, static_cast<std::size_t>(end - begin));
    return trimmed.size() < kTitleKeyLength ? std::string_view() : trimmed.substr(kTitleKeyLength);
}

std::optional<std::string_view> ScanOf(std::string_view title)
{
    constexpr std::string_view key = "scan=";
    const std::size_t hit = title.find(key);
    if (hit == std::string_view::npos || hit + key.size() + 1 > title.size()) {
        return std::nullopt;
    }
    // Deliberate: B-13. The last character goes, whatever it is.
    return title.substr(hit + key.size(), title.size() - hit - key.size() - 1);
}

std::optional<std::string_view> WordOf(std::string_view title)
{
    const std::size_t blank = title.find(' ');
    if (blank == std::string_view::npos) {
        return std::nullopt;
    }
    return title.substr(0, blank);
}

/// Appends value as printf("%05d") writes it.
void AppendFiveDigits(std::string& text, std::int32_t value)
{
    if (value < 0) {
        text += '-';
    }
    const std::string digits = std::to_string(std::abs(static_cast<std::int64_t>(value)));
    const std::size_t width = value < 0 ? 4 : 5;
    text.append(digits.size() < width ? width - digits.size() : 0, '0').append(digits);
}

void ComposeDotted(std::string_view word, std::string& dotted)
{
    dotted.clear();
    const std::size_t lastDot = word.rfind('.');
    if (lastDot == std::string_view::npos) {
        return;
    }
    // Deliberate: B-24. Piece n - 2 lies between the last two dots, piece n - 3
    // (left out) before it; what stands before that one stays as it is.
    const std::size_t numberDot =
        lastDot == 0 ? std::string_view::npos : word.rfind('.', lastDot - 1);
    const std::size_t numberBegin = numberDot == std::string_view::npos ? 0 : numberDot + 1;
    const std::string_view number = word.substr(numberBegin, lastDot - numberBegin);

    const std::size_t firstDot = word.find('.');
    std::size_t keptEnd = firstDot;
    if (numberDot != std::string_view::npos && numberDot > firstDot) {
        keptEnd = word.rfind('.', numberDot - 1);
    }
    dotted.append(word.substr(0, keptEnd + 1));
    const std::int32_t scan = numbers::ToInt(number);
    AppendFiveDigits(dotted, scan);
    dotted += '.';
    AppendFiveDigits(dotted, scan);
    dotted.append(word.substr(lastDot));
}

} // namespace

void FindTitleNames(std::string_view line, TitleNames& names)
{
    names.title = TitleOf(line);
    names.scan = ScanOf(names.title);
    names.word = WordOf(names.title);
    ComposeDotted(names.word.value_or(names.title), names.dotted);
}

} // namespace Vorlan
