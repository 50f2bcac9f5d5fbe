// The slow twin of the XML model: the rules one after the other, recursion and
// std::map, every character read once for each element around it.
#ifndef VORLAN_TESTS_XMLTWIN_H
#define VORLAN_TESTS_XMLTWIN_H

#include <cstddef>
#include <list>
#include <map>
#include <string>

#include "XmlDocument.h"

namespace Vorlan::test {

struct TwinNode {
    EXmlType type = XML_DOCUMENT;
    std::string value = {};
    std::map<std::string, std::string> attributes = {};
    std::list<TwinNode> children = {};
};

/// Blanks as the model trims them.
inline std::string TwinTrimmed(const std::string& text)
{
    const char* const blanks = " \t\n\r";
    const std::size_t first = text.find_first_not_of(blanks);
    return first == std::string::npos
               ? std::string()
               : text.substr(first, text.find_last_not_of(blanks) + 1 - first);
}

inline void TwinParseAttributes(const std::string& range, std::map<std::string, std::string>& found)
{
    const std::string text = TwinTrimmed(range);
    std::size_t place = 0;
    while (place < text.size()) {
        const std::size_t equals = text.find('=', place);
        if (equals == std::string::npos) {
            return;
        }
        const std::size_t open = text.find('"', equals);
        if (open == std::string::npos) {
            return;
        }
        const std::size_t close = text.find('"', open + 1);
        if (close == std::string::npos) {
            return;
        }
        found[TwinTrimmed(text.substr(place, equals - place))] =
            text.substr(open + 1, close - open - 1);
        place = close + 1;
    }
}

/// Parses a text as the content of a node. Throws the message as std::string.
class XmlTwin {
public:
    /// guard is the character behind the text.
    XmlTwin(const std::string& text, char guard) : text_(text + guard) {}

    void Parse(TwinNode& top) { ParseContent(top, 0, text_.size() - 1); }

private:
    static constexpr std::size_t kNone = std::string::npos;

    /// Where what stands first, all of it in [from, end), or kNone.
    std::size_t Find(const std::string& what, std::size_t from, std::size_t end) const
    {
        const std::size_t place = text_.find(what, from);
        return place != kNone && place + what.size() <= end ? place : kNone;
    }

    [[noreturn]] void NoEnd(std::size_t from, std::size_t end) const
    {
        throw text_.substr(from, end + 1 - from) + "Can not find '>'";
    }

    void ParseContent(TwinNode& node, std::size_t begin, std::size_t end)
    {
        std::size_t place = begin;
        while (place < end) {
            const std::size_t lt = Find("<", place, end);
            if (lt == kNone) {
                return;
            }
            std::size_t gt = Find(">", lt, end);
            if (gt != kNone && text_[gt - 1] == '-' && text_[lt + 1] != '!') {
                gt = Find(">", gt + 1, end);
            }
            if (gt == kNone) {
                NoEnd(lt, end);
            }
            if (text_[lt + 1] == '!' || text_[lt + 1] == '?') {
                const std::size_t last = LastOfMarkup(lt, gt, end);
                node.children.push_back({XML_UNKNOWN, text_.substr(lt, last + 1 - lt)});
                place = last + 1;
            } else {
                place = ParseElement(node, lt, gt, end);
            }
        }
    }

    /// Where the markup ends that begins with "<!" or "<?".
    std::size_t LastOfMarkup(std::size_t lt, std::size_t gt, std::size_t end) const
    {
        const std::string markup = text_.substr(lt, gt + 1 - lt);
        if (markup[1] == '?' || markup.compare(0, 4, "<!--") == 0) {
            return gt;
        }
        if (markup.find("CDAT") != kNone) {
            const std::size_t last = Find("]]>", lt + markup.find("CDAT"), end);
            if (last == kNone) {
                throw std::string("Can not find \"]]>\"");
            }
            return last + 2;
        }
        if (markup.find("DOCTYPE") != kNone) {
            const std::size_t last = Find("]>", lt + markup.find("DOCTYPE"), end);
            if (last == kNone) {
                throw std::string("DOCTYPE can not find \"]>\"");
            }
            return last + 1;
        }
        return gt;
    }

    /// Gives the place behind the element.
    std::size_t ParseElement(TwinNode& node, std::size_t lt, std::size_t gt, std::size_t end)
    {
        const std::size_t nameEnd = text_.find_first_of("\n\r\t />", lt + 1);
        const std::string name = text_.substr(lt + 1, nameEnd - lt - 1);
        TwinNode& element = node.children.emplace_back();
        element.type = XML_ELEMENT;
        element.value = name;
        if (text_[gt - 1] == '/') {
            TwinParseAttributes(text_.substr(nameEnd, gt - 1 - nameEnd), element.attributes);
            return gt + 1;
        }
        TwinParseAttributes(text_.substr(nameEnd, gt - nameEnd), element.attributes);
        const std::size_t closing = Find("</" + name, gt + 1, end);
        if (closing == kNone) {
            throw text_.substr(lt, gt + 1 - lt) + "Can not find </element>";
        }
        ParseContent(element, gt + 1, closing);
        const std::size_t closingGt = Find(">", closing, end);
        if (closingGt == kNone) {
            NoEnd(lt, end);
        }
        return closingGt + 1;
    }

    std::string text_; ///< and the guard behind it
};

/// The message of the failure, empty without one. top keeps what was read.
inline std::string TwinParse(const std::string& text, char guard, TwinNode& top)
{
    try {
        XmlTwin(text, guard).Parse(top);
    } catch (const std::string& message) {
        return message;
    }
    return {};
}

inline std::string TwinXml(const TwinNode& node)
{
    if (node.type == XML_UNKNOWN) {
        return node.value;
    }
    std::string children;
    for (const TwinNode& child : node.children) {
        children += TwinXml(child);
    }
    if (node.type == XML_DOCUMENT) {
        return children;
    }
    std::string xml = "\n<" + node.value;
    for (const auto& [name, value] : node.attributes) {
        xml += " " + name + "=\"" + value + "\"";
    }
    return node.children.empty() ? xml + "/>" : xml + ">" + children + "\n</" + node.value + ">";
}

// ---- Comparing ------------------------------------------------------------

/// The tag alone, with its attributes. Asking for a name would enter it, and
/// names cannot be listed; a copy without children writes them.
inline std::string TagXml(const CXmlElement& element)
{
    CXmlElement copy(element);
    copy.cNodes().clear();
    return copy.strToXml();
}

inline const CXmlElement* AsElement(const CXmlNode& node)
{
    return node.eType() == XML_ELEMENT ? static_cast<const CXmlElement*>(&node) : nullptr;
}

/// The first difference between a node and its twin, empty without one: kind,
/// value, parent, attributes, children and their order.
inline std::string DifferenceOf(const CXmlNode& node, const CXmlNode* parent, const TwinNode& twin,
                                std::string place = "")
{
    place += "/" + twin.value;
    if (node.eType() != twin.type || node.strValue() != twin.value) {
        return place + ": a node of kind " + std::to_string(node.eType()) + " and value "
               + node.strValue();
    }
    if (node.pParent() != parent) {
        return place + ": another parent";
    }
    if (twin.type == XML_UNKNOWN) {
        return {};
    }
    const auto& element = static_cast<const CXmlElement&>(node);
    if (twin.type == XML_ELEMENT
        && TagXml(element) != TwinXml({twin.type, twin.value, twin.attributes, {}})) {
        return place + ": attributes" + TagXml(element);
    }
    if (element.tCount() != twin.children.size()) {
        return place + ": " + std::to_string(element.tCount()) + " children";
    }
    std::size_t number = 0;
    for (const TwinNode& child : twin.children) {
        const std::string difference = DifferenceOf(element.cAt(number++), &element, child, place);
        if (!difference.empty()) {
            return difference;
        }
    }
    return {};
}

/// Asks a tree for every attribute of its twin; the first wrong answer, or
/// nothing. The answers come from copies: the tree stays as it is.
inline std::string WrongAnswerOf(const CXmlElement& element, const TwinNode& twin)
{
    CXmlElement copy(element);
    copy.cNodes().clear();
    const std::string before = copy.strToXml();
    for (const auto& [name, value] : twin.attributes) {
        if (copy.strGetValue(name) != value) {
            return twin.value + ": " + name + " is " + copy.strGetValue(name);
        }
    }
    if (copy.strToXml() != before) {
        return twin.value + ": asking has changed the attributes";
    }
    std::size_t number = 0;
    for (const TwinNode& child : twin.children) {
        const CXmlElement* const next = AsElement(element.cAt(number++));
        const std::string wrong = next == nullptr ? "" : WrongAnswerOf(*next, child);
        if (!wrong.empty()) {
            return wrong;
        }
    }
    return {};
}

} // namespace Vorlan::test

#endif // VORLAN_TESTS_XMLTWIN_H
