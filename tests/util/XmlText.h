// XML trees as texts that tests compare.
#ifndef VORLAN_TESTS_XMLTEXT_H
#define VORLAN_TESTS_XMLTEXT_H

#include <string>

#include "XmlDocument.h"
#include "support/XmlTwin.h"

namespace Vorlan::test {

/// The message of what a call throws, empty when nothing was thrown. Other
/// exceptions pass through.
template <typename Call>
std::string MessageOf(Call call)
{
    try {
        call();
    } catch (const CXmlException& e) {
        return e.szWhat();
    }
    return {};
}

/// The children of an element, separated by blanks: a(...) for an element with
/// its children, a x="1"() for one with an attribute, 'value' for other markup,
/// "value" for a text.
inline std::string Dump(const CXmlElement& element)
{
    std::string dump;
    for (const CXmlNode* const node : element.cNodes()) {
        dump += dump.empty() ? "" : " ";
        if (node->eType() == XML_ELEMENT) {
            const auto& child = static_cast<const CXmlElement&>(*node);
            const std::string tag = TagXml(child);
            dump += tag.substr(2, tag.size() - 4) + "(" + Dump(child) + ")";
        } else {
            const std::string quote = node->eType() == XML_TEXT ? "\"" : "'";
            dump += quote + node->strValue() + quote;
        }
    }
    return dump;
}

/// A document that was parsed from a text which is gone.
class Parsed {
public:
    explicit Parsed(const std::string& text, char guard = '\n')
    {
        const std::string behind = text + guard;
        message_ = MessageOf([&] { document.Parse(behind.data(), behind.data() + text.size()); });
    }

    const std::string& Message() const { return message_; }
    CXmlElement& Child(std::size_t index) { return static_cast<CXmlElement&>(document.cAt(index)); }

    CXmlDocument document;

private:
    std::string message_;
};

} // namespace Vorlan::test

#endif // VORLAN_TESTS_XMLTEXT_H
