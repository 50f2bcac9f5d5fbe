// The attributes of a tag. Those that nobody asked for stay in the text that
// was parsed; those that were asked for are entered beside it and stand before
// those of the text.
#include <algorithm>
#include <map>
#include <string_view>
#include <utility>

#include "XmlDocument.h"
#include "util/XmlAccess.h"
#include "util/XmlAttributeText.h"
#include "util/XmlParts.h"

namespace Vorlan {

namespace {

/// A text up to this length is searched again for every name. A longer one is
/// entered at once, so that asking for all of its names takes linear time.
constexpr std::size_t kLongText = 4096;

/// The value that a name has in a text: its last one.
bool FindInText(std::string_view text, std::string_view name, std::string_view& value)
{
    bool found = false;
    XmlAttributeText attributes(text);
    while (attributes.Next()) {
        if (attributes.Name() == name) {
            value = attributes.Value();
            found = true;
        }
    }
    return found;
}

} // namespace

CXmlAttributes::CXmlAttributes(const CXmlAttributes& other)
    : pText_(other.pText_), nLength_(other.nLength_)
{
    if (other.pEntries_ != nullptr) {
        pEntries_ = new Entries(*other.pEntries_);
    }
    pSource_ = UserCount<Source>::Join(other.pSource_);
}

CXmlAttributes& CXmlAttributes::operator=(const CXmlAttributes& other)
{
    CXmlAttributes copy(other);
    std::swap(pText_, copy.pText_);
    std::swap(nLength_, copy.nLength_);
    std::swap(pSource_, copy.pSource_);
    std::swap(pEntries_, copy.pEntries_);
    return *this;
}

CXmlAttributes::~CXmlAttributes()
{
    Clear();
}

void CXmlAttributes::Parse(const char* begin, const char* end)
{
    if (begin >= end) {
        return;
    }
    const std::string text(begin, end); // which may lie in a value that goes
    XmlAttributeText attributes(text);
    while (attributes.Next()) {
        OwnEntries_().values.insert_or_assign(std::string(attributes.Name()),
                                              std::string(attributes.Value()));
    }
}

std::string& CXmlAttributes::strGetValue(std::string name)
{
    if (nLength_ > kLongText) {
        EnterText_();
    }
    auto& values = OwnEntries_().values;
    const auto place = values.lower_bound(name);
    if (place != values.end() && place->first == name) {
        return place->second;
    }
    std::string_view value;
    FindInText({pText_, nLength_}, name, value);
    // Deliberate: B-33. A name that is not there is entered, too.
    return values.emplace_hint(place, std::move(name), value)->second;
}

std::size_t CXmlAttributes::tSize() const
{
    if (nLength_ == 0) {
        return pEntries_ == nullptr ? 0 : pEntries_->values.size();
    }
    CXmlAttributes all(*this);
    all.EnterText_();
    return all.pEntries_->values.size();
}

void CXmlAttributes::Clear()
{
    UserCount<Source>::Leave(pSource_);
    delete pEntries_;
    pSource_ = nullptr;
    pEntries_ = nullptr;
    pText_ = nullptr;
    nLength_ = 0;
}

std::string CXmlAttributes::strToXml() const
{
    std::map<std::string_view, std::string_view> all;
    XmlAttributeText attributes({pText_, nLength_});
    while (attributes.Next()) {
        all.insert_or_assign(attributes.Name(), attributes.Value());
    }
    if (pEntries_ != nullptr) {
        for (const auto& [name, value] : pEntries_->values) {
            all.insert_or_assign(name, value);
        }
    }
    std::string xml;
    for (const auto& [name, value] : all) { // Deliberate: B-88. Nothing is escaped.
        xml.append(" ").append(name).append("=\"").append(value).append("\"");
    }
    return xml;
}

/// Takes a use of source over. For attributes without text.
void CXmlAttributes::SetText_(Source* source, const char* begin, std::size_t length)
{
    pSource_ = source;
    pText_ = begin;
    nLength_ = length;
}

CXmlAttributes::Entries& CXmlAttributes::OwnEntries_()
{
    if (pEntries_ == nullptr) {
        pEntries_ = new Entries;
    }
    return *pEntries_;
}

/// Enters what the text holds and was not entered yet, and lets the text go.
void CXmlAttributes::EnterText_()
{
    Entries ofText;
    XmlAttributeText attributes({pText_, nLength_});
    while (attributes.Next()) {
        ofText.values.insert_or_assign(std::string(attributes.Name()),
                                       std::string(attributes.Value()));
    }
    OwnEntries_().values.merge(ofText.values); // keeps what is there
    UserCount<Source>::Leave(pSource_);
    pSource_ = nullptr;
    pText_ = nullptr;
    nLength_ = 0;
}

bool XmlAccess::FindAttribute(const CXmlElement& element, std::string_view name,
                              std::string_view& value)
{
    const CXmlAttributes& attributes = element.cAttributes_;
    if (attributes.pEntries_ != nullptr) {
        const auto entry = attributes.pEntries_->values.find(name);
        if (entry != attributes.pEntries_->values.end()) {
            value = entry->second;
            return true;
        }
    }
    return FindInText({attributes.pText_, attributes.nLength_}, name, value);
}

std::string_view XmlAccess::AttributeText(const CXmlElement& element)
{
    return {element.cAttributes_.pText_, element.cAttributes_.nLength_};
}

void XmlAccess::FindAttributes(const CXmlElement& element, const std::string_view* names,
                               std::size_t count, std::string_view* values)
{
    const CXmlAttributes& attributes = element.cAttributes_;
    XmlAttributeText text({attributes.pText_, attributes.nLength_});
    while (text.Next()) {
        const std::string_view* const name = std::find(names, names + count, text.Name());
        if (name != names + count) {
            values[name - names] = text.Value();
        }
    }
    if (attributes.pEntries_ == nullptr) {
        return;
    }
    for (std::size_t i = 0; i < count; ++i) {
        const auto entry = attributes.pEntries_->values.find(names[i]);
        if (entry != attributes.pEntries_->values.end()) {
            values[i] = entry->second;
        }
    }
}

} // namespace Vorlan
