// Random FASTA texts: mostly well formed, with every kind of mistake thrown in.
#ifndef VORLAN_TESTS_RANDOMFASTA_H
#define VORLAN_TESTS_RANDOMFASTA_H

#include <algorithm>
#include <string>

#include "support/Random.h"

namespace Vorlan::test {

inline std::string RandomResidues(Random& random, std::size_t length)
{
    return random.Text("ACDEFGHIKLMNPQRSTVWY", length);
}

inline std::string RandomFastaHeader(Random& random)
{
    std::string header = ">" + random.Text("PQ01234>|_", random.Below(7));
    header += random.OneIn(4) ? "" : " " + random.Text("ab <&>\t=\x01\r@", random.Below(12));
    return header;
}

inline std::string RandomFastaLine(Random& random)
{
    switch (random.Below(12)) {
    case 0: return random.OneIn(2) ? "" : " >A";
    case 1: return random.Text("ACKacz*-1 \t\r@\xC3\xA4\xFF>;[`Z{", random.Below(20));
    default: return RandomResidues(random, random.OneIn(3) ? random.Below(40) : 8);
    }
}

/// A text of some hundred bytes.
inline std::string RandomFasta(Random& random)
{
    const std::string lineEnd = random.OneIn(4) ? "\r\n" : random.OneIn(15) ? "\r\r\n" : "\n";
    std::string text = random.OneIn(10) ? "\xEF\xBB\xBF" : "";
    text += random.OneIn(10) ? RandomFastaLine(random) + lineEnd : "";
    for (std::size_t entries = random.Below(6); entries > 0; --entries) {
        text += RandomFastaHeader(random);
        for (std::size_t lines = random.Below(4); lines > 0; --lines) {
            text += lineEnd + RandomFastaLine(random);
        }
        text += entries > 1 || random.OneIn(2) ? lineEnd : "";
    }
    std::replace(text.begin(), text.end(), '@', '\0');
    if (!text.empty() && random.OneIn(6)) {
        text.resize(random.Below(text.size()));
    }
    return text;
}

} // namespace Vorlan::test

#endif // VORLAN_TESTS_RANDOMFASTA_H
