// A few names beside a count.
#ifndef PELGRIN_EXAMPLES_H
#define PELGRIN_EXAMPLES_H

#include <algorithm>
#include <string>
#include <vector>

#include "common/Terminal.h"
#include "common/Words.h"

namespace pelgrin {

constexpr std::size_t kExamples = 5;

/// Keeps the first kExamples different ones.
inline void AddExample(const std::string& example, std::vector<std::string>& examples)
{
    if (examples.size() < kExamples
        && std::find(examples.begin(), examples.end(), example) == examples.end()) {
        examples.push_back(example);
    }
}

/// "P1, P2, P3": three of them, each cut and on one line.
inline std::string TextOf(const std::vector<std::string>& examples)
{
    std::string text;
    for (std::size_t i = 0; i < examples.size() && i < 3; ++i) {
        text += (i == 0 ? "" : ", ") + OneLine(Clip(examples[i], 40));
    }
    return text + (examples.size() > 3 ? ", ..." : "");
}

} // namespace pelgrin

#endif // PELGRIN_EXAMPLES_H
