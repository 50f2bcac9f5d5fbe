#include "util/XmlParser.h"

#include <string>
#include <string_view>
#include <vector>

#include "util/XmlClosingTags.h"
#include "util/XmlMarkup.h"
#include "util/XmlNames.h"
#include "util/XmlParts.h"
#include "util/XmlScanner.h"

namespace Vorlan {

namespace {

using Nodes = CXmlElement::Nodes;
using Source = Lender<XmlBuilder::Source>;

[[noreturn]] void NoTagEnd(const char* tag, const char* end, const char& guard)
{
    // Deliberate: B-34. The character behind the text belongs to the message.
    constexpr std::string_view kMissing = "Can not find '>'";
    std::string message;
    message.reserve(static_cast<std::size_t>(end - tag) + 1 + kMissing.size());
    message.append(tag, end).append(1, guard).append(kMissing);
    throw CXmlException(message);
}

// ---- The quick way -------------------------------------------------------

/// Makes the tree of what the scanner tells. Its nodes belong to nothing until
/// they are handed over.
class TreeBuilder {
public:
    TreeBuilder(CXmlElement& top, Source& source) : top_(top), source_(source) {}
    TreeBuilder(const TreeBuilder&) = delete;
    TreeBuilder& operator=(const TreeBuilder&) = delete;
    ~TreeBuilder()
    {
        for (CXmlNode* node : loose_) {
            delete node;
        }
    }

    void Begin(std::string_view name, const char* attributes, const char* attributesEnd)
    {
        CXmlNode*& place = loose_.emplace_back(nullptr);
        CXmlElement* const element =
            XmlBuilder::NewElement(Parent(), names_.Of(name), source_, attributes, attributesEnd);
        place = element;
        open_.push_back({element, loose_.size()});
    }

    void End()
    {
        const Open& open = open_.back();
        if (open.firstChild < loose_.size()) {
            const auto first = loose_.begin() + static_cast<std::ptrdiff_t>(open.firstChild);
            XmlBuilder::NodesOf(*open.element).assign(first, loose_.end());
            loose_.resize(open.firstChild);
        }
        open_.pop_back();
    }

    void Unknown(std::string_view markup)
    {
        CXmlNode*& place = loose_.emplace_back(nullptr);
        place = XmlBuilder::NewUnknown(Parent(), markup);
    }

    void HandOver()
    {
        Nodes& children = XmlBuilder::NodesOf(top_);
        children.insert(children.end(), loose_.begin(), loose_.end());
        loose_.clear();
    }

private:
    CXmlElement* Parent() const { return open_.empty() ? &top_ : open_.back().element; }

    struct Open {
        CXmlElement* element;
        std::size_t firstChild; ///< where its children begin among the loose nodes
    };

    CXmlElement& top_;
    Source& source_;
    XmlNames names_;
    std::vector<Open> open_;
    Nodes loose_; ///< children of open elements, in order
};

/// False, and nothing has happened, when the careful way is needed.
bool ParseQuickly(CXmlElement& top, Source& source, std::size_t size)
{
    const char* const begin = source.Get().text.get();
    TreeBuilder builder(top, source);
    XmlScanner<TreeBuilder> scanner(builder);
    if (scanner.Read(begin, begin + size, true) == nullptr) {
        return false;
    }
    builder.HandOver();
    return true;
}

// ---- The careful way -----------------------------------------------------

class CarefulParser {
public:
    CarefulParser(CXmlElement& top, Source& source, std::size_t size, const char& guard)
        : source_(source), begin_(source.Get().text.get()), end_(begin_ + size), guard_(guard),
          closingTags_(xml::View(begin_, end_)), open_{{&top, end_, nullptr}}
    {
    }

    void Parse()
    {
        const char* p = begin_;
        for (;;) {
            if (const char* const lt = xml::Find('<', p, open_.back().end)) {
                p = TakeMarkup(lt);
            } else if (open_.size() > 1) {
                p = EndElement();
            } else {
                break;
            }
        }
    }

private:
    /// An element whose content is being read. The top one is the caller's.
    struct Open {
        CXmlElement* element;
        const char* end; ///< of its content
        const char* lt;  ///< where its tag begins
    };

    /// The message ends with the character at end, which belongs to the text
    /// unless it is the end of all.
    const char& CharacterAt(const char* end) const { return end == end_ ? guard_ : *end; }

    const char* TakeMarkup(const char* lt)
    {
        const char* const end = open_.back().end;
        const char* const gt = xml::EndOfMarkup(lt, end);
        if (gt == nullptr) {
            NoTagEnd(lt, end, CharacterAt(end));
        }
        if (lt[1] == '!') {
            bool isData = false;
            const char* const last = xml::EndOfDeclaration(lt, gt, end, isData);
            if (last == nullptr) {
                throw CXmlException(isData ? "Can not find \"]]>\""
                                           : "DOCTYPE can not find \"]>\"");
            }
            return Keep(lt, last);
        }
        return lt[1] == '?' ? Keep(lt, gt) : BeginElement(lt, gt);
    }

    void Append(std::unique_ptr<CXmlNode> node)
    {
        XmlBuilder::NodesOf(*open_.back().element).push_back(node.get());
        static_cast<void>(node.release());
    }

    const char* Keep(const char* lt, const char* last)
    {
        Append(std::unique_ptr<CXmlNode>(
            XmlBuilder::NewUnknown(open_.back().element, xml::View(lt, last + 1))));
        return last + 1;
    }

    const char* BeginElement(const char* lt, const char* gt)
    {
        const xml::StartTag tag(lt, gt); // Deliberate: B-81. "</" begins one, too.
        CXmlElement* const element = XmlBuilder::NewElement(
            open_.back().element, names_.Of(tag.name), source_, tag.attributes, tag.attributesEnd);
        Append(std::unique_ptr<CXmlNode>(element));
        if (tag.isClosed) {
            return gt + 1;
        }
        const std::size_t closing = closingTags_.Find(
            static_cast<std::size_t>(gt + 1 - begin_),
            static_cast<std::size_t>(open_.back().end - begin_), tag.name); // Deliberate: B-28
        if (closing == XmlClosingTags::kNone) {
            throw CXmlException(std::string(lt, gt + 1) + "Can not find </element>");
        }
        open_.push_back({element, begin_ + closing, lt});
        return gt + 1;
    }

    const char* EndElement()
    {
        const Open done = open_.back();
        open_.pop_back();
        const char* const end = open_.back().end;
        const char* const gt = xml::Find('>', done.end, end);
        if (gt == nullptr) {
            NoTagEnd(done.lt, end, CharacterAt(end));
        }
        return gt + 1;
    }

    Source& source_;
    const char* const begin_;
    const char* const end_;
    const char& guard_;
    XmlClosingTags closingTags_;
    XmlNames names_;
    std::vector<Open> open_;
};

} // namespace

CXmlElement* XmlBuilder::NewElement(CXmlNode* parent, Lender<Value>* name, Lender<Source>& source,
                                    const char* attributes, const char* attributesEnd)
{
    auto* const element = new CXmlElement(parent);
    element->pValue_ = name == nullptr ? nullptr : name->Lend();
    while (attributes < attributesEnd
           && (*attributes == ' ' || *attributes == '\t' || *attributes == '\n'
               || *attributes == '\r')) {
        ++attributes;
    }
    if (attributes < attributesEnd) {
        element->cAttributes_.SetText_(source.Lend(), attributes,
                                       static_cast<std::size_t>(attributesEnd - attributes));
    }
    return element;
}

CXmlUnknown* XmlBuilder::NewUnknown(CXmlNode* parent, std::string_view markup)
{
    auto unknown = std::make_unique<CXmlUnknown>(parent);
    unknown->OwnValue_().assign(markup);
    return unknown.release();
}

void ParseXmlContent(CXmlElement& element, std::unique_ptr<char[]> text, std::size_t size,
                     const char& guard)
{
    // The nodes that refer to the text keep it; without any it goes with this.
    Source source(std::make_unique<XmlBuilder::Source>(std::move(text)));
    if (!ParseQuickly(element, source, size)) {
        CarefulParser(element, source, size, guard).Parse();
    }
}

} // namespace Vorlan
