// Questions to a tree that leave it as it is. The readers of the library ask
// here; the public members enter what they look for.
#ifndef VORLAN_UTIL_XMLACCESS_H
#define VORLAN_UTIL_XMLACCESS_H

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include "XmlDocument.h"

namespace Vorlan {

class XmlAccess {
public:
    /// The node as an element, or null for another kind.
    static CXmlElement* ElementOf(CXmlNode* node);

    /// The first child element with this tag, or null.
    static CXmlElement* FirstChild(const CXmlElement& element, std::string_view name);

    /// The value of an attribute, empty when it is not there. Good until the
    /// attributes change.
    static std::string_view Attribute(const CXmlElement& element, std::string_view name);

    /// The same, and tells whether the attribute is there.
    static bool FindAttribute(const CXmlElement& element, std::string_view name,
                              std::string_view& value);

    /// The values of several attributes, found in one go; empty for those that
    /// are not there.
    template <std::size_t count>
    static std::array<std::string_view, count>
    Attributes(const CXmlElement& element, const std::array<std::string_view, count>& names)
    {
        std::array<std::string_view, count> values;
        FindAttributes(element, names.data(), count, values.data());
        return values;
    }

    /// The text that the attributes were parsed from; empty for attributes that
    /// were entered one by one. Good until they change.
    static std::string_view AttributeText(const CXmlElement& element);

    /// All attributes as they are written into a tag.
    static std::string AttributesXml(const CXmlElement& element);

private:
    static void FindAttributes(const CXmlElement& element, const std::string_view* names,
                               std::size_t count, std::string_view* values);
};

} // namespace Vorlan

#endif // VORLAN_UTIL_XMLACCESS_H
