#include "util/XmlAttributeText.h"

namespace Vorlan {

bool XmlAttributeText::Next()
{
    constexpr std::size_t kNone = std::string_view::npos;
    // Deliberate: B-80. What stands in front of the double quote is passed over.
    const std::size_t equals = rest_.find('=');
    const std::size_t open = equals == kNone ? kNone : rest_.find('"', equals + 1);
    const std::size_t close = open == kNone ? kNone : rest_.find('"', open + 1);
    if (close == kNone) {
        return false;
    }
    name_ = XmlTrimmed(rest_.substr(0, equals));
    value_ = rest_.substr(open + 1, close - open - 1);
    rest_.remove_prefix(close + 1);
    return true;
}

} // namespace Vorlan
