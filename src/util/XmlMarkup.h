// Where markup ends, and what a start tag holds.
#ifndef VORLAN_UTIL_XMLMARKUP_H
#define VORLAN_UTIL_XMLMARKUP_H

#include <cstddef>
#include <cstring>
#include <string_view>

#include "util/XmlNames.h"

namespace Vorlan::xml {

inline std::string_view View(const char* begin, const char* end)
{
    return {begin, static_cast<std::size_t>(end - begin)};
}

/// The first c in [begin, end), or null.
inline const char* Find(char c, const char* begin, const char* end)
{
    return begin < end ? static_cast<const char*>(
               std::memchr(begin, c, static_cast<std::size_t>(end - begin)))
                       : nullptr;
}

/// Where text begins in [begin, end), or null.
inline const char* Find(std::string_view text, const char* begin, const char* end)
{
    const std::size_t place = View(begin, end).find(text);
    return place == std::string_view::npos ? nullptr : begin + place;
}

/// The ">" that ends the markup which begins at lt, or null.
inline const char* EndOfMarkup(const char* lt, const char* end)
{
    const char* const gt = Find('>', lt, end);
    const bool dash = gt != nullptr && gt[-1] == '-' && lt[1] != '!';
    return dash ? Find('>', gt + 1, end) : gt; // Deliberate: B-29
}

/// Where a CDATA section or DOCTYPE ends whose markup, up to its first ">", is
/// [lt, gt]: the last character, gt for any other markup, null when the end is
/// missing. isData tells which.
inline const char* EndOfDeclaration(const char* lt, const char* gt, const char* end, bool& isData)
{
    isData = false;
    const std::string_view markup = View(lt, gt + 1);
    if (markup.substr(2, 2) == "--") {
        return gt; // Deliberate: B-30
    }
    if (const char* const data = Find("CDAT", lt, gt + 1)) {
        isData = true;
        const char* const last = Find("]]>", data, end);
        return last == nullptr ? nullptr : last + 2;
    }
    if (const char* const type = Find("DOCTYPE", lt, gt + 1)) {
        const char* const last = Find("]>", type, end); // Deliberate: B-36
        return last == nullptr ? nullptr : last + 1;
    }
    return gt;
}

/// A start tag, taken apart.
struct StartTag {
    StartTag(const char* lt, const char* gt)
        : name(View(lt + 1, EndOfXmlName(lt + 1, gt))), isClosed(gt[-1] == '/'),
          attributes(name.data() + name.size()), attributesEnd(isClosed ? gt - 1 : gt)
    {
    }

    std::string_view name;
    bool isClosed; ///< by a "/" of its own
    const char* attributes;
    const char* attributesEnd;
};

} // namespace Vorlan::xml

#endif // VORLAN_UTIL_XMLMARKUP_H
