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

    static void Leave(Object* object, std::size_t users = 1)
    {
        if (object != nullptr
            && object->users.fetch_sub(users, std::memory_order_acq_rel) == users) {
            delete object;
        }
    }
};

/// Hands an object out to many users without counting each of them atomically:
/// counts a great many at first and takes back those that did not come.
template <typename Object>
class Lender {
public:
    /// Takes over object, which has no users yet.
    explicit Lender(std::unique_ptr<Object> object) : object_(object.release())
    {
        object_->users.store(kMany, std::memory_order_relaxed);
    }
    ~Lender() { UserCount<Object>::Leave(object_, kMany - lent_); }
    Lender(const Lender&) = delete;
    Lender& operator=(const Lender&) = delete;

    /// The object, for one more user that will leave it.
    Object* Lend()
    {
        ++lent_;
        return object_;
    }

    const Object& Get() const { return *object_; }

private:
    static constexpr std::size_t kMany = ~std::size_t{0} / 2;

    Object* object_;
    std::size_t lent_ = 0;
};

/// A node's value. Only the parser shares one, among elements of one name.
struct CXmlNode::Value {
    explicit Value(std::string_view content) : text(content) {}

    std::string text;
    std::atomic<std::size_t> users{1};
};

/// The text that a tree was parsed from.
struct CXmlAttributes::Source {
    explicit Source(std::unique_ptr<char[]> content) : text(std::move(content)) {}

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

    /// name is null for an empty one.
    static CXmlElement* NewElement(CXmlNode* parent, Lender<Value>* name, Lender<Source>& source,
                                   const char* attributes, const char* attributesEnd);
    static CXmlUnknown* NewUnknown(CXmlNode* parent, std::string_view markup);
    static CXmlElement::Nodes& NodesOf(CXmlElement& element) { return element.vNodes_; }
};

} // namespace Vorlan

#endif // VORLAN_UTIL_XMLPARTS_H
