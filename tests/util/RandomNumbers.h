// Random texts that are numbers, nearly numbers, or the bytes of numbers.
#ifndef VORLAN_TESTS_RANDOMNUMBERS_H
#define VORLAN_TESTS_RANDOMNUMBERS_H

#include <string>

#include "support/Random.h"

namespace Vorlan::test {

inline std::string RandomDigits(Random& random, std::size_t least)
{
    const std::size_t most = random.OneIn(8) ? 40 : random.OneIn(3) ? 20 : 6;
    return random.Text("0123456789", least + random.Below(most));
}

/// Made by the grammar of decimals, with all that it allows.
inline std::string RandomNumber(Random& random)
{
    std::string text = random.OneIn(6) ? random.Text("+-", 1) : "";
    text += RandomDigits(random, random.OneIn(10) ? 0 : 1);
    if (!random.OneIn(3)) {
        text += "." + RandomDigits(random, random.OneIn(10) ? 0 : 1);
    }
    if (random.OneIn(3)) {
        text += random.Text("eE", 1);
        text += random.OneIn(2) ? random.Text("+-", 1) : "";
        text += random.Text("0123456789", random.OneIn(20) ? random.Below(6) : 1 + random.Below(3));
    }
    return text;
}

/// A line of a peak list, or nearly one.
inline std::string RandomNumberLine(Random& random)
{
    std::string text = random.OneIn(8) ? random.Text(" \t\v\n", 1 + random.Below(3)) : "";
    text += RandomNumber(random);
    text += random.OneIn(10) ? random.Text(" \t\r\v,;x", random.Below(3))
                             : random.Text(" \t", 1 + random.Below(3));
    text += RandomNumber(random);
    return text + (random.OneIn(3) ? random.Text(" \t\rx1", 1 + random.Below(2)) : "");
}

/// The bytes that numbers are made of, in any order.
inline std::string RandomNumberBytes(Random& random)
{
    return random.Text("0123456789.eE+-xinfa \t\r", random.Below(16));
}

} // namespace Vorlan::test

#endif // VORLAN_TESTS_RANDOMNUMBERS_H
