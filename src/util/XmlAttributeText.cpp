#include "util/XmlAttributeText.h"

#include "util/XmlMarkup.h"

namespace Vorlan {

bool XmlAttributeText::Next()
{
    const char* const end = rest_.data() + rest_.size();
    const char* equals = rest_.data();
    while (equals < end && *equals != '=') { // names are short
        ++equals;
    }
    // Deliberate: B-80. What stands in front of the double quote is passed over.
    const char* open = equals < end ? equals + 1 : end;
    if (open < end && *open != '"') {
        open = xml::Find('"', open, end);
    }
    const char* const close =
        open == nullptr || open == end ? nullptr : xml::Find('"', open + 1, end);
    if (close == nullptr) {
        return false;
    }
    name_ = XmlTrimmed(xml::View(rest_.data(), equals));
    value_ = xml::View(open + 1, close);
    rest_ = xml::View(close + 1, end);
    return true;
}

} // namespace Vorlan
