// Tag names.
#ifndef VORLAN_UTIL_XMLNAMES_H
#define VORLAN_UTIL_XMLNAMES_H

#include <array>
#include <cstddef>
#include <string_view>
#include <unordered_map>

#include "util/XmlParts.h"

namespace Vorlan {

/// By character: it ends a tag name.
inline constexpr std::array<bool, 256> kEndsXmlName = [] {
    std::array<bool, 256> ends{};
    for (const char c : {'\n', '\r', '\t', ' ', '/', '>'}) {
        ends[static_cast<unsigned char>(c)] = true;
    }
    return ends;
}();

/// The first of the characters that end a tag name in [begin, end), else end.
inline const char* EndOfXmlName(const char* begin, const char* end)
{
    while (begin < end && !kEndsXmlName[static_cast<unsigned char>(*begin)]) {
        ++begin;
    }
    return begin;
}

/// One value for every tag name of a text, shared by its elements.
class XmlNames {
public:
    using Name = Lender<XmlBuilder::Value>;

    /// Null for the empty name. Good as long as this.
    Name* Of(std::string_view name);

private:
    std::unordered_map<std::string_view, Name> names_; ///< keys look into the values
    std::array<Name*, 64> recent_{};                   ///< a name is often the one before
};

} // namespace Vorlan

#endif // VORLAN_UTIL_XMLNAMES_H
