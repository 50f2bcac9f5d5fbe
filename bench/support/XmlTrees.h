// The trees of four XML libraries, ours among them, behind one shape: parse a
// file, walk its elements, ask for attributes, write it back, let it go.
//
// Every tree has
//   Element                       a handle, null for none
//   bool Parse(path)              false when the library refuses the document
//   bool Save(path)
//   void LetGo()                  destroys the tree
//   Element Root()
//   ForEachChild(element, take)   take(child) for the child elements, in order
//   Name(element)                 as a std::string
//   Is(element, name)
//   Value(element, name)          of an attribute, as a view
//   ForEachAttribute(element, take)  take(name, value), both std::string
// (the last one not for ours: the model lists attributes by writing them).
#ifndef PELGRIN_BENCH_XML_TREES_H
#define PELGRIN_BENCH_XML_TREES_H

#include <cstddef>
#include <cstring>
#include <map>
#include <memory>
#include <string>
#include <string_view>

#include <libxml/parser.h>
#include <libxml/tree.h>
#include <pugixml.hpp>
#include <xercesc/dom/DOM.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>
#include <xercesc/sax/HandlerBase.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLUni.hpp>

#include "XmlDocument.h"

namespace bench {

/// A name as bytes and as the characters of Xerces.
struct XmlName {
    const char* text;
    const char16_t* wide;
};

#define PELGRIN_BENCH_XML_NAME(text)                                                               \
    ::bench::XmlName                                                                               \
    {                                                                                              \
        text, u##text                                                                              \
    }

// ---- Ours --------------------------------------------------------------------

class OurTree {
public:
    using Element = Vorlan::CXmlElement*;
    static constexpr const char* kName = "ours";

    bool Parse(const std::string& path)
    {
        document_ = std::make_unique<Vorlan::CXmlDocument>();
        try {
            document_->ParseFile(path);
        } catch (const Vorlan::CXmlException&) {
            return false;
        }
        return true;
    }

    bool Save(const std::string& path)
    {
        document_->SaveFile(path);
        return true;
    }

    void LetGo() { document_.reset(); }
    Element Root() { return &document_->cRoot(); }

    template <typename Take>
    static void ForEachChild(Element element, Take take)
    {
        for (Vorlan::CXmlNode* const node : element->cNodes()) {
            if (node->eType() == Vorlan::XML_ELEMENT) {
                take(static_cast<Element>(node));
            }
        }
    }

    static bool Is(Element element, const XmlName& name)
    {
        return element->strValue() == name.text;
    }

    static std::string_view Value(Element element, const XmlName& name)
    {
        return element->strGetValue(name.text);
    }

private:
    std::unique_ptr<Vorlan::CXmlDocument> document_;
};

// ---- Xerces ------------------------------------------------------------------

/// The DOM, not validating, with the scanner that knows neither DTD nor schema:
/// its quickest way.
class XercesTree {
public:
    using Element = xercesc::DOMElement*;
    static constexpr const char* kName = "Xerces' DOM";

    XercesTree() { xercesc::XMLPlatformUtils::Initialize(); }
    XercesTree(const XercesTree&) = delete;
    XercesTree& operator=(const XercesTree&) = delete;
    ~XercesTree()
    {
        LetGo();
        xercesc::XMLPlatformUtils::Terminate();
    }

    bool Parse(const std::string& path)
    {
        xercesc::HandlerBase throwing;
        parser_ = std::make_unique<xercesc::XercesDOMParser>();
        parser_->useScanner(xercesc::XMLUni::fgWFXMLScanner);
        parser_->setValidationScheme(xercesc::XercesDOMParser::Val_Never);
        parser_->setDoNamespaces(false);
        parser_->setDoSchema(false);
        parser_->setLoadExternalDTD(false);
        parser_->setCreateEntityReferenceNodes(false);
        parser_->setErrorHandler(&throwing);
        try {
            parser_->parse(path.c_str());
        } catch (const xercesc::XMLException&) {
            return false;
        } catch (const xercesc::SAXException&) {
            return false;
        }
        parser_->setErrorHandler(nullptr);
        return true;
    }

    void LetGo() { parser_.reset(); }
    Element Root() { return parser_->getDocument()->getDocumentElement(); }

    template <typename Take>
    static void ForEachChild(Element element, Take take)
    {
        for (Element child = element->getFirstElementChild(); child != nullptr;
             child = child->getNextElementSibling()) {
            take(child);
        }
    }

    static std::string Name(Element element) { return Narrow(element->getTagName()); }

    static bool Is(Element element, const XmlName& name)
    {
        return xercesc::XMLString::equals(element->getTagName(), name.wide);
    }

    static std::u16string_view Value(Element element, const XmlName& name)
    {
        return element->getAttribute(name.wide);
    }

    template <typename Take>
    static void ForEachAttribute(Element element, Take take)
    {
        const xercesc::DOMNamedNodeMap* const attributes = element->getAttributes();
        for (XMLSize_t i = 0; i < attributes->getLength(); ++i) {
            const xercesc::DOMNode* const attribute = attributes->item(i);
            take(Narrow(attribute->getNodeName()), Narrow(attribute->getNodeValue()));
        }
    }

private:
    /// The inputs are ASCII.
    static std::string Narrow(std::u16string_view text) { return {text.begin(), text.end()}; }

    std::unique_ptr<xercesc::XercesDOMParser> parser_;
};

// ---- libxml2 -----------------------------------------------------------------

class LibXml2Tree {
public:
    using Element = xmlNode*;
    static constexpr const char* kName = "libxml2";

    LibXml2Tree() = default;
    LibXml2Tree(const LibXml2Tree&) = delete;
    LibXml2Tree& operator=(const LibXml2Tree&) = delete;
    ~LibXml2Tree() { LetGo(); }

    bool Parse(const std::string& path)
    {
        document_ = xmlReadFile(path.c_str(), nullptr,
                                XML_PARSE_HUGE | XML_PARSE_NOBLANKS | XML_PARSE_NOERROR
                                    | XML_PARSE_NOWARNING | XML_PARSE_NONET | XML_PARSE_COMPACT);
        return document_ != nullptr;
    }

    bool Save(const std::string& path) { return xmlSaveFile(path.c_str(), document_) >= 0; }

    void LetGo()
    {
        xmlFreeDoc(document_);
        document_ = nullptr;
    }

    Element Root() { return xmlDocGetRootElement(document_); }

    template <typename Take>
    static void ForEachChild(Element element, Take take)
    {
        for (Element child = xmlFirstElementChild(element); child != nullptr;
             child = xmlNextElementSibling(child)) {
            take(child);
        }
    }

    static std::string Name(Element element) { return Text(element->name); }

    static bool Is(Element element, const XmlName& name)
    {
        return std::strcmp(Text(element->name), name.text) == 0;
    }

    /// Without the copy that xmlGetProp would make.
    static std::string_view Value(Element element, const XmlName& name)
    {
        const xmlAttr* const attribute =
            xmlHasProp(element, reinterpret_cast<const xmlChar*>(name.text));
        return attribute == nullptr || attribute->children == nullptr
                   ? std::string_view()
                   : Text(attribute->children->content);
    }

    template <typename Take>
    static void ForEachAttribute(Element element, Take take)
    {
        for (const xmlAttr* attribute = element->properties; attribute != nullptr;
             attribute = attribute->next) {
            const char* const value =
                attribute->children == nullptr ? "" : Text(attribute->children->content);
            take(std::string(Text(attribute->name)), std::string(value));
        }
    }

private:
    static const char* Text(const xmlChar* text) { return reinterpret_cast<const char*>(text); }

    xmlDoc* document_ = nullptr;
};

// ---- pugixml -----------------------------------------------------------------

class PugiTree {
public:
    using Element = pugi::xml_node;
    static constexpr const char* kName = "pugixml";

    bool Parse(const std::string& path)
    {
        document_ = std::make_unique<pugi::xml_document>();
        constexpr unsigned asOurs = pugi::parse_default | pugi::parse_comments | pugi::parse_pi
                                    | pugi::parse_declaration | pugi::parse_doctype;
        return static_cast<bool>(document_->load_file(path.c_str(), asOurs));
    }

    /// Indented by depth, deep documents would take the square of their size.
    bool Save(const std::string& path)
    {
        return document_->save_file(path.c_str(), "", pugi::format_raw);
    }

    void LetGo() { document_.reset(); }
    Element Root() { return document_->document_element(); }

    template <typename Take>
    static void ForEachChild(Element element, Take take)
    {
        for (const Element child : element.children()) {
            if (child.type() == pugi::node_element) {
                take(child);
            }
        }
    }

    static std::string Name(Element element) { return element.name(); }

    static bool Is(Element element, const XmlName& name)
    {
        return std::strcmp(element.name(), name.text) == 0;
    }

    static std::string_view Value(Element element, const XmlName& name)
    {
        return element.attribute(name.text).value();
    }

    template <typename Take>
    static void ForEachAttribute(Element element, Take take)
    {
        for (const pugi::xml_attribute attribute : element.attributes()) {
            take(std::string(attribute.name()), std::string(attribute.value()));
        }
    }

private:
    std::unique_ptr<pugi::xml_document> document_;
};

// ---- What all say in the same words --------------------------------------------

inline std::string Escaped(const std::string& text)
{
    std::string escaped;
    for (const char c : text) {
        switch (c) {
        case '&': escaped += "&amp;"; break;
        case '<': escaped += "&lt;"; break;
        case '>': escaped += "&gt;"; break;
        case '"': escaped += "&quot;"; break;
        default: escaped += c;
        }
    }
    return escaped;
}

/// Appends an element with its attributes and child elements as
/// CXmlElement::strToXml writes them.
template <typename Tree>
void AppendDescription(std::string& xml, typename Tree::Element element)
{
    std::map<std::string, std::string> attributes;
    Tree::ForEachAttribute(element,
                           [&attributes](const std::string& name, const std::string& value) {
                               attributes[name] = Escaped(value);
                           });
    xml.append("\n<").append(Tree::Name(element));
    for (const auto& [name, value] : attributes) {
        xml.append(" ").append(name).append("=\"").append(value).append("\"");
    }
    const std::size_t tagEnd = xml.append(">").size();
    Tree::ForEachChild(
        element, [&xml](typename Tree::Element child) { AppendDescription<Tree>(xml, child); });
    if (xml.size() == tagEnd) {
        xml.insert(tagEnd - 1, "/");
    } else {
        xml.append("\n</").append(Tree::Name(element)).append(">");
    }
}

} // namespace bench

#endif // PELGRIN_BENCH_XML_TREES_H
