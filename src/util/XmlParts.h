// What the classes of the XML model are made of inside.
#ifndef VORLAN_UTIL_XMLPARTS_H
#define VORLAN_UTIL_XMLPARTS_H

#include <atomic>
#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>

#include "XmlDocument.h"

namespace Vorlan {

/// Counts the users of an object that goes with the last of them. A tree may be
/// taken apart on several threads, so counting is atomic.
template <typename Object>
class UserCount {
public:
    static Object* Join(Object* object)
    {
        if (object != nullptr) {
            object->users.fetch_add(1, std::memory_order_relaxed);
        }
        return object;
    }

    static void Leave(Object* object)
    {
        if (object != nullptr && object->users.fetch_sub(1, std::memory_order_acq_rel) == 1) {
            delete object;
        }
    }
};

/// A node's value. Only the parser shares one, among elements of one name.
struct CXmlNode::Value {
    explicit Value(std::string_view content) : text(content) {}

    std::string text;
    std::atomic<std::size_t> users{1};
};

/// The text that a tree was parsed from.
struct CXmlAttributes::Source {
    Source(std::unique_ptr<char[]> content) : text(std::move(content)) {}

    std::unique_ptr<char[]> text;
    std::atomic<std::size_t> users{1};
};

struct CXmlAttributes::Entries {
    std::map<std::string, std::string, std::less<>> values;
};

/// The parser's way into the classes.
class XmlBuilder {
public:
    using Value = CXmlNode::Value;
    using Source = CXmlAttributes::Source;

    static CXmlElement* NewElement(CXmlNode* parent, Value* name, Source& source,
                                   const char* attributes, const char* attributesEnd);
    static CXmlUnknown* NewUnknown(CXmlNode* parent, std::string_view markup);
    static CXmlElement::Nodes& NodesOf(CXmlElement& element) { return element.vNodes_; }
};

} // namespace Vorlan

#endif // VORLAN_UTIL_XMLPARTS_H
