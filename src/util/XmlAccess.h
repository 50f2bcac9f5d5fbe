// Questions to a tree that leave it as it is. The readers of the library ask
// here; the public members enter what they look for.
#ifndef VORLAN_UTIL_XMLACCESS_H
#define VORLAN_UTIL_XMLACCESS_H

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

    /// All attributes as they are written into a tag.
    static std::string AttributesXml(const CXmlElement& element);
};

} // namespace Vorlan

#endif // VORLAN_UTIL_XMLACCESS_H
