// A stream's way with numbers, to compare ours with.
#ifndef VORLAN_TESTS_STREAMTWIN_H
#define VORLAN_TESTS_STREAMTWIN_H

#include <cstdint>
#include <locale>
#include <sstream>
#include <string>
#include <string_view>

#include "support/Random.h"

namespace Vorlan::test {

/// A number taken from the front of a text. On failure value is 0, whatever the
/// stream has made of it, and rest is empty.
template <typename Number>
struct Taken {
    bool isRead = false;
    Number value = 0;
    std::string rest = {};
};

template <typename Number>
Taken<Number> TakenByAStream(const std::string& text)
{
    std::istringstream stream(text);
    stream.imbue(std::locale::classic());
    Number value = 0;
    if (!(stream >> value)) {
        return {};
    }
    const std::string rest =
        stream.eof() ? "" : text.substr(static_cast<std::size_t>(stream.tellg()));
    return {true, value, rest};
}

/// The same by a function of ours; value must not be touched on failure.
template <typename Number, typename Take>
Taken<Number> TakenBy(Take take, const std::string& text)
{
    constexpr Number kUntaken = 77;
    std::string_view rest = text;
    Number value = kUntaken;
    if (!take(rest, value)) {
        return {false, value - kUntaken, ""};
    }
    return {true, value, std::string(rest)};
}

/// White space, numbers and what looks like them.
inline std::string RandomStreamText(Random& random)
{
    std::string text;
    const std::size_t pieces = 1 + random.Below(8);
    for (std::size_t i = 0; i < pieces; ++i) {
        switch (random.Below(8)) {
        case 0: text += random.Text(" \t\r\v\f\n", 1 + random.Below(2)); break;
        case 1: text += random.Text("+-.eExX,;@", 1); break;
        case 2: text += random.OneIn(4) ? "inf" : random.OneIn(3) ? "nan" : "0x"; break;
        case 3: text += random.Text("0123456789", random.OneIn(9) ? 25 : 2); break;
        case 4: text += "e" + random.Text("+-123", random.Below(4)); break;
        default: text += random.Text("0123456789.eE+-x \t\r\v\f", 1 + random.Below(5)); break;
        }
    }
    return text;
}

} // namespace Vorlan::test

#endif // VORLAN_TESTS_STREAMTWIN_H
