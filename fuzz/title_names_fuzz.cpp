// FindTitleNames against its rules, written out with copies of everything.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <string>
#include <string_view>
#include <vector>

#include "CStringProcess.h"
#include "FuzzSupport.h"
#include "spectra/TitleNames.h"

namespace {

using namespace Vorlan;

struct SlowNames {
    std::string title;
    bool hasScan = false;
    std::string scan;
    bool hasWord = false;
    std::string word;
    std::string dotted;
};

/// atoi and "%05d"; a number beyond 32 bits is the nearest one.
std::string FiveDigits(const std::string& piece)
{
    constexpr long long kLow = std::numeric_limits<std::int32_t>::min();
    constexpr long long kHigh = std::numeric_limits<std::int32_t>::max();
    char text[32];
    std::snprintf(text, sizeof text, "%05lld",
                  std::clamp(std::strtoll(piece.c_str(), nullptr, 10), kLow, kHigh));
    return text;
}

std::string SlowDotted(const std::string& word)
{
    const std::vector<std::string> pieces = CStringProcess::split(word, ".");
    const std::size_t n = pieces.size();
    if (n < 2) {
        return {};
    }
    std::string key = pieces[0] + ".";
    for (std::size_t i = 1; i + 4 <= n; ++i) {
        key += pieces[i] + ".";
    }
    const std::string number = FiveDigits(pieces[n - 2]);
    return key + number + "." + number + "." + pieces[n - 1];
}

SlowNames SlowFind(std::string line)
{
    SlowNames names;
    CStringProcess::Trim(line);
    names.title = line.size() < 6 ? "" : line.substr(6);
    const std::size_t scan = names.title.find("scan=");
    if (scan != std::string::npos && names.title.size() >= scan + 6) {
        names.hasScan = true;
        names.scan = names.title.substr(scan + 5, names.title.size() - scan - 6);
    }
    const std::size_t blank = names.title.find(' ');
    if (blank != std::string::npos) {
        names.hasWord = true;
        names.word = names.title.substr(0, blank);
    }
    names.dotted = SlowDotted(names.hasWord ? names.word : names.title);
    return names;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    // A line ends before its line feed and holds no NUL.
    const std::string_view input = fuzz::TextOf(data, size);
    const std::string line(input.substr(0, input.find_first_of(std::string_view("\n\0", 2))));
    TitleNames names;
    names.dotted = "of the title before";
    FindTitleNames(line, names);
    const SlowNames slow = SlowFind(line);
    fuzz::CheckSame(names.title, slow.title, "the title");
    fuzz::Check(names.scan.has_value() == slow.hasScan, "there is a scan name, or none");
    fuzz::CheckSame(names.scan.value_or(""), slow.scan, "the scan name");
    fuzz::Check(names.word.has_value() == slow.hasWord, "there is a first word, or none");
    fuzz::CheckSame(names.word.value_or(""), slow.word, "the first word");
    fuzz::CheckSame(names.dotted, slow.dotted, "the dotted name");
    return 0;
}
