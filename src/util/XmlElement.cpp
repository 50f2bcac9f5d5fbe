// Elements: their children, questions to them, writing and destruction.
// Nothing here is recursive: trees may be as deep as memory allows.
#include <algorithm>
#include <memory>
#include <string>
#include <string_view>
#include <typeinfo>
#include <utility>

#include "CStringProcess.h"
#include "XmlDocument.h"
#include "util/XmlAccess.h"
#include "util/XmlParser.h"
#include "util/XmlParts.h"

namespace Vorlan {

namespace {

/// node as an element with this tag, or null.
CXmlElement* ElementNamed(CXmlNode* node, std::string_view name)
{
    CXmlElement* const element = XmlAccess::ElementOf(node);
    return element != nullptr && element->strValue() == name ? element : nullptr;
}

} // namespace

// ---- XmlAccess -----------------------------------------------------------

CXmlElement* XmlAccess::ElementOf(CXmlNode* node)
{
    const bool is = node != nullptr && node->eType() == XML_ELEMENT && node->bIsElement_;
    return is ? static_cast<CXmlElement*>(node) : nullptr;
}

CXmlElement* XmlAccess::FirstChild(const CXmlElement& element, std::string_view name)
{
    for (CXmlNode* node : element.vNodes_) {
        if (CXmlElement* const child = ElementNamed(node, name)) {
            return child;
        }
    }
    return nullptr;
}

std::string_view XmlAccess::Attribute(const CXmlElement& element, std::string_view name)
{
    std::string_view value;
    FindAttribute(element, name, value);
    return value;
}

// ---- Construction and destruction ----------------------------------------

CXmlElement::CXmlElement() : CXmlElement(nullptr) {}

CXmlElement::CXmlElement(CXmlNode* parent) : CXmlElement(XML_ELEMENT, parent) {}

CXmlElement::CXmlElement(EXmlType type, CXmlNode* parent) : CXmlNode(type, parent)
{
    bIsElement_ = true;
}

// Deliberate: B-31. The children are shared, not cloned.
CXmlElement::CXmlElement(const CXmlElement& other)
    : CXmlNode(other), vNodes_(other.vNodes_), cAttributes_(other.cAttributes_)
{
    bIsElement_ = true;
}

CXmlElement& CXmlElement::operator=(const CXmlElement& other) = default;

CXmlElement::~CXmlElement()
{
    Clear();
}

/// Deletes the children, the deepest first. Goes down along the lists of
/// children and up along the parents, which it sets on its way: no stack, no
/// memory, no failure.
void CXmlElement::Clear()
{
    cAttributes_.Clear();
    CXmlElement* current = this;
    for (;;) {
        if (!current->vNodes_.empty()) {
            CXmlNode* const node = current->vNodes_.back();
            current->vNodes_.pop_back();
            if (node != nullptr && node->bIsElement_) {
                node->pParent_ = current;
                current = static_cast<CXmlElement*>(node);
            } else {
                delete node;
            }
        } else if (current == this) {
            break;
        } else {
            CXmlElement* const done = current;
            current = static_cast<CXmlElement*>(done->pParent_);
            delete done;
        }
    }
    Nodes().swap(vNodes_);
}

// ---- Parsing -------------------------------------------------------------

void CXmlElement::Parse(const char* begin, const char* end)
{
    if (begin >= end) {
        return;
    }
    const auto size = static_cast<std::size_t>(end - begin);
    std::unique_ptr<char[]> copy(new char[size]);
    std::copy(begin, end, copy.get());
    ParseXmlContent(*this, std::move(copy), size, *end);
}

void CXmlElement::Parse(const char* text)
{
    Parse(text, text + std::char_traits<char>::length(text));
}

// ---- Attributes ----------------------------------------------------------

std::string& CXmlElement::operator[](std::string name)
{
    return cAttributes_.strGetValue(std::move(name));
}

std::string& CXmlElement::strGetValue(std::string name)
{
    return cAttributes_.strGetValue(std::move(name));
}

// ---- Children ------------------------------------------------------------

CXmlElement* CXmlElement::pItem(std::string name, std::size_t index) const
{
    for (CXmlNode* node : vNodes_) {
        CXmlElement* const child = ElementNamed(node, name);
        if (child != nullptr && index-- == 0) {
            return child;
        }
    }
    return nullptr;
}

CXmlElement* CXmlElement::pItemFromKV(std::string name, std::string key, std::string value) const
{
    for (CXmlNode* node : vNodes_) {
        CXmlElement* const child = ElementNamed(node, name);
        // Deliberate: B-33. Looking enters the attribute.
        if (child != nullptr && child->cAttributes_.strGetValue(key) == value) {
            return child;
        }
    }
    return nullptr;
}

std::size_t CXmlElement::tCount(std::string name) const
{
    std::size_t count = 0;
    for (CXmlNode* node : vNodes_) {
        count += ElementNamed(node, name) != nullptr ? 1 : 0;
    }
    return count;
}

std::size_t CXmlElement::tCount() const
{
    return vNodes_.size();
}

std::size_t CXmlElement::tSize() const
{
    return vNodes_.size();
}

CXmlNode& CXmlElement::cAt(std::size_t index) const
{
    if (index >= vNodes_.size()) {
        throw CXmlException("Index of child node exceeds the range!");
    }
    return *vNodes_[index];
}

CXmlElement::Nodes& CXmlElement::cNodes()
{
    return vNodes_;
}

const CXmlElement::Nodes& CXmlElement::cNodes() const
{
    return vNodes_;
}

CXmlElement::Iterator CXmlElement::iterBegin()
{
    return vNodes_.begin();
}

CXmlElement::Iterator CXmlElement::iterEnd()
{
    return vNodes_.end();
}

std::string& CXmlElement::strText()
{
    for (CXmlNode* node : vNodes_) {
        if (node != nullptr && node->eType() == XML_TEXT) {
            return node->OwnValue_();
        }
    }
    auto text = std::make_unique<CXmlText>(this); // Deliberate: B-82
    std::string& value = text->OwnValue_();
    vNodes_.insert(vNodes_.begin(), text.get());
    static_cast<void>(text.release());
    return value;
}

CXmlElement* CXmlElement::pNewItem(std::string name)
{
    const std::string asGiven = name;
    CStringProcess::Trim(name);
    // Deliberate: B-35. The text as it was given counts, blanks and all, and it
    // becomes the text of the element, not its tag.
    if (asGiven.empty()) {
        throw CXmlException("Error: The tag of element is empty!");
    }
    auto item = std::make_unique<CXmlElement>(this);
    item->strText() = asGiven;
    vNodes_.push_back(item.get());
    return item.release();
}

// ---- Writing -------------------------------------------------------------

namespace {

/// Writes elements with an explicit stack. A class of the host's that writes
/// itself in its own way does so.
class XmlWriter {
public:
    std::string Write(const CXmlElement& element, const std::string& attributes)
    {
        Open(element, attributes);
        while (!open_.empty()) {
            auto& [current, next] = open_.back();
            if (next == current->cNodes().size()) {
                Close(*current);
                open_.pop_back();
            } else if (const CXmlNode* const node = current->cNodes()[next++]) {
                WriteNode(*node);
            }
        }
        return std::move(xml_);
    }

private:
    void WriteNode(const CXmlNode& node)
    {
        if (typeid(node) == typeid(CXmlElement)) {
            const auto& element = static_cast<const CXmlElement&>(node);
            Open(element, XmlAccess::AttributesXml(element));
        } else {
            xml_.append(node.strToXml());
        }
    }

    void Open(const CXmlElement& element, const std::string& attributes)
    {
        if (element.eType() == XML_ELEMENT) {
            xml_.append("\n<").append(element.strValue()).append(attributes);
            xml_.append(element.cNodes().empty() ? "/>" : ">");
        }
        if (!element.cNodes().empty()) {
            open_.push_back({&element, 0});
        }
    }

    void Close(const CXmlElement& element)
    {
        if (element.eType() == XML_ELEMENT) {
            xml_.append("\n</").append(element.strValue()).append(">");
        }
    }

    struct Place {
        const CXmlElement* element;
        std::size_t next; ///< the child to be written next
    };
    std::vector<Place> open_;
    std::string xml_;
};

} // namespace

std::string XmlAccess::AttributesXml(const CXmlElement& element)
{
    return element.cAttributes_.strToXml();
}

std::string CXmlElement::strToXml() const
{
    return XmlWriter().Write(*this, cAttributes_.strToXml());
}

} // namespace Vorlan
