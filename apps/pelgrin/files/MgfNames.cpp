#include "files/MgfNames.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <limits>

#include <fmt/format.h>

#include "CStringProcess.h"

namespace pelgrin {

namespace {

struct KindTexts {
    const char* key;
    const char* text;
};

constexpr KindTexts kTexts[kNameKinds] = {
    {"title", "the whole title"},
    {"first_word", "the first word of the title"},
    {"dotted", "the dotted name"},
    {"scan", "the scan name"},
};

std::string_view TitleOf(std::string_view line)
{
    constexpr std::size_t kKey = 6; // "TITLE="
    const char* begin = line.data();
    const char* end = begin + line.size();
    Vorlan::CStringProcess::Trim(begin, end);
    const std::string_view trimmed(begin, static_cast<std::size_t>(end - begin));
    return trimmed.size() < kKey ? std::string_view() : trimmed.substr(kKey);
}

/// As atoi reads it.
std::int32_t NumberOf(std::string_view text)
{
    const long long value = std::strtoll(std::string(text).c_str(), nullptr, 10);
    return static_cast<std::int32_t>(std::clamp<long long>(
        value, std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::max()));
}

/// "run.1405.1405.2" is "run.01405.01405.2". Empty when the word has no dot.
std::string DottedOf(std::string_view word)
{
    const std::size_t lastDot = word.rfind('.');
    if (lastDot == std::string_view::npos) {
        return {};
    }
    const std::size_t numberDot =
        lastDot == 0 ? std::string_view::npos : word.rfind('.', lastDot - 1);
    const std::size_t numberBegin = numberDot == std::string_view::npos ? 0 : numberDot + 1;
    const std::size_t firstDot = word.find('.');
    const bool hasPiecesBetween = numberDot != std::string_view::npos && numberDot > firstDot;
    const std::size_t keptEnd = hasPiecesBetween ? word.rfind('.', numberDot - 1) : firstDot;
    const std::string number =
        fmt::format("{:05}", NumberOf(word.substr(numberBegin, lastDot - numberBegin)));
    return std::string(word.substr(0, keptEnd + 1)) + number + "." + number
           + std::string(word.substr(lastDot));
}

void Enter(MgfNames& names, NameKind kind, std::string_view name)
{
    names.names[static_cast<std::size_t>(kind)] = name;
    names.has[static_cast<std::size_t>(kind)] = true;
}

void EnterScan(MgfNames& names, std::string_view title)
{
    constexpr std::string_view kKey = "scan=";
    const std::size_t hit = title.find(kKey);
    if (hit == std::string_view::npos || hit + kKey.size() >= title.size()) {
        return;
    }
    const std::string_view behind = title.substr(hit + kKey.size());
    Enter(names, NameKind::Scan, behind.substr(0, behind.size() - 1));
    names.scanIsCut = behind.find_first_not_of("0123456789") == std::string_view::npos;
}

} // namespace

const char* KeyOf(NameKind kind)
{
    return kTexts[static_cast<std::size_t>(kind)].key;
}

const char* TextOf(NameKind kind)
{
    return kTexts[static_cast<std::size_t>(kind)].text;
}

MgfNames NamesOf(std::string_view titleLine)
{
    const std::string_view title = TitleOf(titleLine);
    MgfNames names;
    Enter(names, NameKind::Title, title);
    EnterScan(names, title);
    const std::size_t blank = title.find(' ');
    if (blank != std::string_view::npos) {
        Enter(names, NameKind::FirstWord, title.substr(0, blank));
    }
    const std::string dotted = DottedOf(title.substr(0, blank));
    if (!dotted.empty()) {
        Enter(names, NameKind::Dotted, dotted);
    }
    return names;
}

} // namespace pelgrin
