// Tag names.
#ifndef VORLAN_UTIL_XMLNAMES_H
#define VORLAN_UTIL_XMLNAMES_H

#include <array>
#include <cstddef>
#include <string_view>
#include <unordered_map>

#include "util/XmlParts.h"

namespace Vorlan {

/// The first of the characters that end a tag name in [begin, end), else end.
inline const char* EndOfXmlName(const char* begin, const char* end)
{
    const auto endsName = [](char c) {
        return c == '\n' || c == '\r' || c == '\t' || c == ' ' || c == '/' || c == '>';
    };
    while (begin < end && !endsName(*begin)) {
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
