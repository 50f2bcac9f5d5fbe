// Nodes without children, and the exception of the model.
#include <cstring>
#include <utility>

#include "XmlDocument.h"
#include "util/XmlParts.h"

namespace Vorlan {

// ---- CXmlException -------------------------------------------------------

CXmlException::CXmlException(std::string message) : strMessage_(std::move(message)) {}

CXmlException::CXmlException(const CXmlException& other) = default;
CXmlException& CXmlException::operator=(const CXmlException& other) = default;
CXmlException::~CXmlException() = default; // Deliberate: B-32. what() is not overridden.

const char* CXmlException::szWhat() const
{
    return strMessage_.c_str();
}

// ---- CXmlNode ------------------------------------------------------------

CXmlNode::CXmlNode() : CXmlNode(XML_UNKNOWN, nullptr) {}

CXmlNode::CXmlNode(CXmlNode* parent) : CXmlNode(XML_UNKNOWN, parent) {}

CXmlNode::CXmlNode(EXmlType type, CXmlNode* parent) : eType_(type), pParent_(parent) {}

CXmlNode::CXmlNode(const CXmlNode& other) : eType_(other.eType_), pParent_(other.pParent_)
{
    if (other.pValue_ != nullptr) {
        pValue_ = new Value(other.pValue_->text);
    }
}

CXmlNode& CXmlNode::operator=(const CXmlNode& other)
{
    if (this != &other) {
        Value* const value = other.pValue_ == nullptr ? nullptr : new Value(other.pValue_->text);
        UserCount<Value>::Leave(pValue_);
        pValue_ = value;
        eType_ = other.eType_;
        pParent_ = other.pParent_;
    }
    return *this;
}

CXmlNode::~CXmlNode()
{
    UserCount<Value>::Leave(pValue_);
}

std::string& CXmlNode::operator=(std::string& value)
{
    return OwnValue_() = value;
}

std::string& CXmlNode::operator=(const char* value)
{
    return OwnValue_() = value;
}

const std::string& CXmlNode::strValue() const
{
    static const std::string kEmpty;
    return pValue_ == nullptr ? kEmpty : pValue_->text;
}

void CXmlNode::Parse(const char* begin, const char* end)
{
    if (begin < end) {
        OwnValue_().append(begin, end);
    }
}

void CXmlNode::Parse(const char* text)
{
    Parse(text, text + std::strlen(text));
}

std::string CXmlNode::strToXml() const
{
    return strValue();
}

/// The value for writing: nobody else has it.
std::string& CXmlNode::OwnValue_()
{
    if (pValue_ == nullptr) {
        pValue_ = new Value({});
    } else if (pValue_->users.load(std::memory_order_acquire) > 1) {
        Value* const own = new Value(pValue_->text);
        UserCount<Value>::Leave(pValue_);
        pValue_ = own;
    }
    return pValue_->text;
}

// ---- CXmlText, CXmlUnknown -----------------------------------------------

CXmlText::CXmlText() : CXmlText(nullptr) {}

CXmlText::CXmlText(CXmlNode* parent) : CXmlNode(XML_TEXT, parent) {}

CXmlUnknown::CXmlUnknown() : CXmlUnknown(nullptr) {}

CXmlUnknown::CXmlUnknown(CXmlNode* parent) : CXmlNode(XML_UNKNOWN, parent) {}

} // namespace Vorlan
