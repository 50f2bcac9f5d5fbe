// The lines of a text file, read in the plainest way.
#ifndef PELGRIN_FUZZ_PLAINLINES_H
#define PELGRIN_FUZZ_PLAINLINES_H

#include <sstream>
#include <string>
#include <vector>

#include "util/LineReader.h"

namespace Vorlan::fuzz {

enum class FirstLine { LikeAll, OfAnyLength };

/// Up to the first line that is too long; that one is cut. A first line of any
/// length stands whole, with its NULs.
inline std::vector<std::string> LinesOf(std::string text, FirstLine first = FirstLine::LikeAll)
{
    if (text.compare(0, 3, "\xEF\xBB\xBF") == 0) {
        text.erase(0, 3);
    }
    std::vector<std::string> lines;
    std::istringstream input(text);
    std::string line;
    bool isWhole = true;
    while (isWhole && std::getline(input, line)) {
        if (!input.eof() && !line.empty() && line.back() == '\r') {
            line.pop_back();
        }
        if (lines.empty() && first == FirstLine::OfAnyLength) {
            lines.push_back(line);
            continue;
        }
        isWhole = line.size() <= LineReader::kMaxLineLength;
        line.resize(isWhole ? line.size() : LineReader::kMaxLineLength);
        lines.emplace_back(line.c_str()); // a NUL ends it
    }
    return lines;
}

} // namespace Vorlan::fuzz

#endif // PELGRIN_FUZZ_PLAINLINES_H
