// A small, forgiving XML model: reads a whole file into a tree, answers simple
// questions, writes a tree back.
//
//     CXmlDocument document;
//     document.ParseFile("search.pep.xml");
//     CXmlElement& root = document.cRoot();
//     for (CXmlNode* node : root.cNodes()) {
//         if (node->eType() == XML_ELEMENT && node->strValue() == "msms_run_summary") {
//             std::string& base = static_cast<CXmlElement*>(node)->strGetValue("base_name");
//             ...
//
// Contents
//   1. EXmlType, CXmlException
//   2. CXmlNode        kind, parent, value
//   3. CXmlText, CXmlUnknown
//   4. CXmlAttributes  names and values of one tag
//   5. CXmlElement     a tag with children; parsing, questions, writing
//   6. CXmlDocument    a whole file
//
// What the model keeps: elements and their attributes; comments, processing
// instructions, CDATA sections and DOCTYPE declarations as they stand. What it
// does not: character data between tags is dropped (B-27), entities stay as
// they are in both directions (B-88: "&gt;" is four characters), names may be
// anything ("umod:mod" is a plain text), nothing is validated.
//
// How it reads, where that differs from other parsers:
// - An element ends at the first "</" followed by its tag name: a prefix is
//   enough, and nesting is not counted (B-28). An element inside one of the
//   same name fails. A closing tag too many is an element (B-81).
// - A tag ends at the first ">", in an attribute value, too; when a "-" stands
//   before that one and the tag does not begin with "<!", at the next (B-29).
// - A comment ends at its first ">" (B-30).
// - Attribute values stand in double quotes; others are not seen (B-80).
//
// Cost. Time is close to linear in the length of the text, for any text; depth
// is not limited, and no step is recursive. Attributes stay in the text that
// was read until they are asked for: a tree takes two to three times the
// memory of a usual pepXML file, text included. The text lives as long as a
// node made from it.
//
// Ownership. An element owns its children. Copies are made member by member
// and share the children of their source (B-31): never copy an element with
// children and let both be destroyed.
//
// Failures are CXmlException; docs/errors.md lists the messages. std::bad_alloc
// may come from any member that allocates.
#ifndef VORLAN_XMLDOCUMENT_H
#define VORLAN_XMLDOCUMENT_H

#include <cstddef>
#include <exception>
#include <string>
#include <vector>

#include "VorlanExport.h"

namespace Vorlan {

// ===== 1. EXmlType, CXmlException ==========================================

/// The kind of a node. 2, 3 and 5 are reserved and never produced.
enum EXmlType : int {
    XML_UNKNOWN = 0, ///< comment, processing instruction, CDATA, DOCTYPE, other "<!...>"
    XML_ELEMENT = 1,
    XML_TEXT = 4,
    XML_DOCUMENT = 6
};

/// What the model throws. what() is the inherited one and tells nothing of the
/// case (B-32); szWhat() has the message.
class VORLAN_API CXmlException : public std::exception {
public:
    /// An exception that says message.
    explicit CXmlException(std::string message);
    /// Copies have texts of their own.
    CXmlException(const CXmlException& other);
    CXmlException& operator=(const CXmlException& other);

    ~CXmlException() override;

    /// Good as long as the exception. A message that quotes a text with a NUL
    /// reads only as far as that.
    const char* szWhat() const;

private:
    std::string strMessage_;
};

// ===== 2. CXmlNode =========================================================

class CXmlElement;

/// What all nodes have: kind, parent and value. The value is the tag name of
/// an element, the content of a text, and the whole markup from "<" to ">" of
/// an unknown node.
class VORLAN_API CXmlNode {
public:
    using EXmlType = Vorlan::EXmlType; ///< the kind under the name of the class

    /// A node of kind XML_UNKNOWN without a parent.
    CXmlNode();
    /// parent is stored, not owned; the node is not entered there.
    explicit CXmlNode(CXmlNode* parent);
    /// Copies kind, parent and value.
    CXmlNode(const CXmlNode& other);
    CXmlNode& operator=(const CXmlNode& other);

    virtual ~CXmlNode();

    /// Replaces the value and gives a reference to it, good until the value is
    /// replaced again or the node goes.
    std::string& operator=(std::string& value);
    std::string& operator=(const char* value);

    /// The kind of the node.
    EXmlType eType() const { return eType_; }
    /// The node that it was made for, or null.
    CXmlNode* pParent() const { return pParent_; }

    /// The value: tag name, text or markup. Good until the value changes.
    const std::string& strValue() const;

    /// Appends the characters [begin, end), or up to the NUL, to the value.
    /// Nothing happens where begin is not below end.
    void Parse(const char* begin, const char* end);
    void Parse(const char* text);

    /// The value as it stands.
    virtual std::string strToXml() const;

private:
    friend class CXmlText;
    friend class CXmlUnknown;
    friend class CXmlElement;
    friend class CXmlDocument;
    friend class XmlAccess;
    friend class XmlBuilder;
    struct Value; // a text, shared by elements of one name

    CXmlNode(EXmlType type, CXmlNode* parent);
    std::string& OwnValue_();
    void ShareValue_(Value* value);

    EXmlType eType_;
    bool bIsElement_ = false; ///< the object is a CXmlElement; never copied
    CXmlNode* pParent_;
    Value* pValue_ = nullptr; ///< null for an empty value
};

// ===== 3. CXmlText, CXmlUnknown ============================================

/// A text. Parsing makes none (B-27); CXmlElement::strText does.
class VORLAN_API CXmlText : public CXmlNode {
public:
    CXmlText();
    /// parent as for CXmlNode.
    explicit CXmlText(CXmlNode* parent);
    /// As CXmlNode, whose kind, parent and value they copy, or give a new value.
    using CXmlNode::operator=;
};

/// Markup that is kept as it stands.
class VORLAN_API CXmlUnknown : public CXmlNode {
public:
    CXmlUnknown();
    /// parent as for CXmlNode.
    explicit CXmlUnknown(CXmlNode* parent);
    /// As CXmlNode, whose kind, parent and value they copy, or give a new value.
    using CXmlNode::operator=;
};

// ===== 4. CXmlAttributes ===================================================

/// Attribute name -> value, one value for each name.
class VORLAN_API CXmlAttributes {
public:
    CXmlAttributes() = default;
    /// Copies have attributes of their own.
    CXmlAttributes(const CXmlAttributes& other);
    CXmlAttributes& operator=(const CXmlAttributes& other);

    ~CXmlAttributes();

    /// Adds what [begin, end) holds, again and again: a name, that is the text
    /// up to the next "=" without the blanks around it (it may be empty); then,
    /// behind anything else, a value between two double quotes, taken as it
    /// stands. A name that occurs again replaces the earlier value. Ends where
    /// a "=" or a quote is missing.
    void Parse(const char* begin, const char* end);

    /// The value of name. One that is not there is entered with an empty value
    /// first: looking adds an attribute (B-33). The reference is good until
    /// Clear, assignment or destruction.
    std::string& strGetValue(std::string name);

    /// The number of attributes.
    std::size_t tSize() const;
    /// Removes all attributes.
    void Clear();

    /// For each attribute, in the order of the names' bytes: a blank, the name,
    /// ="value". Nothing is escaped.
    std::string strToXml() const;

private:
    friend class XmlBuilder;
    friend class XmlAccess;
    struct Entries; // the attributes that were asked for
    struct Source;  // the text that was parsed

    void SetText_(Source* source, const char* begin, std::size_t length);
    Entries& OwnEntries_();
    void EnterText_();

    const char* pText_ = nullptr; ///< attributes not entered yet; in *pSource_
    std::size_t nLength_ = 0;
    Source* pSource_ = nullptr;
    Entries* pEntries_ = nullptr; ///< they stand before those of the text
};

// ===== 5. CXmlElement ======================================================

/// A tag with its attributes and children.
class VORLAN_API CXmlElement : public CXmlNode {
public:
    using Nodes = std::vector<CXmlNode*>; ///< children of all kinds
    using Iterator = Nodes::iterator;     ///< walks them

    CXmlElement();
    /// parent as for CXmlNode.
    explicit CXmlElement(CXmlNode* parent);
    CXmlElement(const CXmlElement& other);            ///< shares the children (B-31)
    CXmlElement& operator=(const CXmlElement& other); ///< former children are not deleted
    ~CXmlElement() override;
    /// As CXmlNode, whose kind, parent and value they copy, or give a new value.
    using CXmlNode::operator=;

    // ---- Parsing

    /// Parses the characters [begin, end) as the content of this element and
    /// appends the nodes to the children. The text is copied; it need not outlive
    /// the call. *end, which is no part of it, must be readable: the message of
    /// an unclosed tag quotes it (B-34). After a failure the nodes before it are
    /// there. Nothing happens where begin is not below end.
    /// \throws CXmlException; every message is in docs/errors.md.
    void Parse(const char* begin, const char* end);
    /// Up to the NUL.
    void Parse(const char* text);

    // ---- Attributes

    /// The value of an attribute of this element. One that is not there is
    /// entered with an empty value first (B-33).
    std::string& operator[](std::string name);
    std::string& strGetValue(std::string name);

    // ---- Children

    /// The child element with the tag name and the number index among them, counted
    /// from 0, or null. Walks the children: go through cNodes() once rather
    /// than asking for one number after the other.
    CXmlElement* pItem(std::string name, std::size_t index) const;

    /// The first child element with the tag name whose attribute key has this
    /// value, or null. Every candidate that lacks the attribute is given it
    /// with an empty value (B-33), which an empty value then matches.
    CXmlElement* pItemFromKV(std::string name, std::string key, std::string value) const;

    /// The number of child elements with this tag.
    std::size_t tCount(std::string name) const;

    /// The number of children of all kinds.
    std::size_t tCount() const;
    std::size_t tSize() const;

    /// The child with this number, all kinds counted, from 0.
    /// \throws CXmlException "Index of child node exceeds the range!"
    CXmlNode& cAt(std::size_t index) const;

    /// The children, in the order of the document. Whoever takes one out of
    /// the list owns it, whoever puts one in gives it away (allocated by new).
    Nodes& cNodes();
    const Nodes& cNodes() const;
    Iterator iterBegin();
    Iterator iterEnd();

    /// The value of the first child of kind XML_TEXT. When there is none, an
    /// empty one is entered in front of the children (B-82).
    std::string& strText();

    /// Appends a new element and gives it. Its tag name stays empty; name
    /// becomes its text, blanks and all (B-35).
    /// \throws CXmlException "Error: The tag of element is empty!"
    CXmlElement* pNewItem(std::string name);

    /// Removes the attributes and deletes the children. The value stays.
    void Clear();

    // ---- Writing

    /// A line feed and the element: its tag with the attributes, ending in "/>"
    /// when there are no children; else the children and, after another line
    /// feed, the closing tag. Nothing is indented or escaped.
    std::string strToXml() const override;

private:
    friend class CXmlDocument;
    friend class XmlBuilder;
    friend class XmlAccess;

    CXmlElement(EXmlType type, CXmlNode* parent);

    Nodes vNodes_;
    CXmlAttributes cAttributes_;
};

// ===== 6. CXmlDocument =====================================================

/// A whole file. Its children are the root element and what stands beside it.
class VORLAN_API CXmlDocument : public CXmlElement {
public:
    CXmlDocument();
    CXmlDocument(const CXmlDocument& other) = default;            ///< shares the children (B-31)
    CXmlDocument& operator=(const CXmlDocument& other) = default; ///< as CXmlElement's
    ~CXmlDocument() override;
    /// As CXmlNode, whose kind, parent and value they copy, or give a new value.
    using CXmlNode::operator=;

    /// Reads the file in text mode (one carriage return before a line feed and
    /// a UTF-8 byte order mark at the start are dropped), clears the document
    /// and parses. A file that cannot be opened leaves the document as it was;
    /// after any other failure the nodes before it are there.
    /// \throws CXmlException "Can not open file!", and those of Parse.
    void ParseFile(std::string path);

    /// Writes strToXml() into the file, which is emptied first. No declaration
    /// is added.
    /// \throws CXmlException "Can not write to file!" when the file cannot be
    ///         opened or written.
    void SaveFile(std::string path) const;

    /// The first child element.
    /// \throws CXmlException "Can not find root element!"
    CXmlElement& cRoot() const;
};

} // namespace Vorlan

#endif // VORLAN_XMLDOCUMENT_H
