// A document told element by element, without making its tree.
#ifndef VORLAN_UTIL_XMLREADING_H
#define VORLAN_UTIL_XMLREADING_H

#include <string>
#include <string_view>

namespace Vorlan {

/// Is told what a document holds, in the order of the text. The texts are good
/// during the call; attributes is what XmlAttributeText takes.
class XmlListener {
public:
    virtual ~XmlListener() = default;
    virtual void Begin(std::string_view name, std::string_view attributes) = 0;
    virtual void End() = 0;     ///< of the element begun last
    virtual void Restart() = 0; ///< forget it all: it is told again from the start
};

/// Tells the elements that CXmlDocument::ParseFile would make of the file. A
/// usual document is read in one pass and never held as a whole. Throws
/// CXmlException as ParseFile, at the end of what was told; then nothing counts.
void ReadXmlFile(const std::string& path, XmlListener& listener);

} // namespace Vorlan

#endif // VORLAN_UTIL_XMLREADING_H
