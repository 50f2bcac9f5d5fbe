#include "util/XmlParser.h"

#include <algorithm>
#include <cstring>
#include <string>
#include <string_view>
#include <vector>

#include "util/XmlClosingTags.h"
#include "util/XmlNames.h"
#include "util/XmlParts.h"

namespace Vorlan {

namespace {

using Nodes = CXmlElement::Nodes;
using Source = Lender<XmlBuilder::Source>;

std::string_view View(const char* begin, const char* end)
{
    return {begin, static_cast<std::size_t>(end - begin)};
}

const char* Find(char c, const char* begin, const char* end)
{
    return begin < end ? static_cast<const char*>(
               std::memchr(begin, c, static_cast<std::size_t>(end - begin)))
                       : nullptr;
}

/// Where text begins in [begin, end), or null.
const char* Find(std::string_view text, const char* begin, const char* end)
{
    const std::size_t place = View(begin, end).find(text);
    return place == std::string_view::npos ? nullptr : begin + place;
}

[[noreturn]] void NoTagEnd(const char* tag, const char* end, const char& guard)
{
    // Deliberate: B-34. The character behind the text belongs to the message.
    constexpr std::string_view kMissing = "Can not find '>'";
    std::string message;
    message.reserve(static_cast<std::size_t>(end - tag) + 1 + kMissing.size());
    message.append(tag, end).append(1, guard).append(kMissing);
    throw CXmlException(message);
}

/// The ">" that ends the markup which begins at lt, or null.
const char* EndOfMarkup(const char* lt, const char* end)
{
    const char* const gt = Find('>', lt, end);
    const bool dash = gt != nullptr && gt[-1] == '-' && lt[1] != '!';
    return dash ? Find('>', gt + 1, end) : gt; // Deliberate: B-29
}

/// Where a CDATA section or DOCTYPE ends whose markup, up to its first ">", is
/// [lt, gt]: the last character, gt for any other markup, null when the end is
/// missing. isData tells which.
const char* EndOfDeclaration(const char* lt, const char* gt, const char* end, bool& isData)
{
    isData = false;
    const std::string_view markup = View(lt, gt + 1);
    if (markup.substr(2, 2) == "--") {
        return gt; // Deliberate: B-30
    }
    if (const char* const data = Find("CDAT", lt, gt + 1)) {
        isData = true;
        const char* const last = Find("]]>", data, end);
        return last == nullptr ? nullptr : last + 2;
    }
    if (const char* const type = Find("DOCTYPE", lt, gt + 1)) {
        const char* const last = Find("]>", type, end); // Deliberate: B-36
        return last == nullptr ? nullptr : last + 1;
    }
    return gt;
}

/// A start tag, taken apart.
struct StartTag {
    StartTag(const char* lt, const char* gt)
        : name(View(lt + 1, EndOfXmlName(lt + 1, gt))), isClosed(gt[-1] == '/'),
          attributes(name.data() + name.size()), attributesEnd(isClosed ? gt - 1 : gt)
    {
    }

    std::string_view name;
    bool isClosed; ///< by a "/" of its own
    const char* attributes;
    const char* attributesEnd;
};

// ---- The quick way -------------------------------------------------------

/// Nodes that nothing owns yet.
struct LooseNodes {
    Nodes nodes;

    LooseNodes() = default;
    LooseNodes(const LooseNodes&) = delete;
    LooseNodes& operator=(const LooseNodes&) = delete;
    ~LooseNodes()
    {
        for (CXmlNode* node : nodes) {
            delete node;
        }
    }
};

/// Reads the text once. Every "</" that it passes is checked against the names
/// of all open elements, so an element ends where the careful way ends it.
class QuickParser {
public:
    QuickParser(CXmlElement& top, Source& source, std::size_t size)
        : top_(top), source_(source), end_(source.Get().text.get() + size), mayCompare_(16 * size)
    {
    }

    /// False, and nothing has happened, when the careful way is needed.
    bool Parse()
    {
        const char* p = source_.Get().text.get();
        // Deliberate: B-27. What stands in front of a "<" makes no node.
        for (const char* lt = LookFrom(p); lt < end_; lt = NextMark(p)) {
            const char next = lt + 1 < end_ ? lt[1] : '\0';
            if (next == '/') {
                p = EndElement(lt);
            } else if (next == '!' || next == '?') {
                p = Keep(lt);
            } else {
                p = BeginElement(lt);
            }
            if (p == nullptr) {
                return false;
            }
        }
        if (!open_.empty()) {
            return false;
        }
        Nodes& children = XmlBuilder::NodesOf(top_);
        children.insert(children.end(), loose_.nodes.begin(), loose_.nodes.end());
        loose_.nodes.clear();
        return true;
    }

private:
    // Each gives the place behind what it read, or null when it gives up.

    const char* BeginElement(const char* lt)
    {
        const char* const gt = EndOfMarkup(lt, end_);
        if (gt == nullptr || HasClosing(lt + 1, gt)) {
            return nullptr;
        }
        const StartTag tag(lt, gt);
        if (tag.name.empty()) {
            return nullptr;
        }
        CXmlNode*& place = loose_.nodes.emplace_back(nullptr);
        CXmlElement* const element = XmlBuilder::NewElement(Parent(), names_.Of(tag.name), source_,
                                                            tag.attributes, tag.attributesEnd);
        place = element;
        if (!tag.isClosed) {
            open_.push_back({element, tag.name, loose_.nodes.size()});
            openLength_ += tag.name.size();
        }
        return gt + 1;
    }

    const char* EndElement(const char* lt)
    {
        const char* const gt = Find('>', lt, end_);
        if (gt == nullptr || HasClosing(lt + 2, gt) || !EndsInnermost(View(lt + 2, end_))) {
            return nullptr;
        }
        const Open& open = open_.back();
        const auto first = loose_.nodes.begin() + static_cast<std::ptrdiff_t>(open.firstChild);
        XmlBuilder::NodesOf(*open.element).assign(first, loose_.nodes.end());
        loose_.nodes.resize(open.firstChild);
        openLength_ -= open.name.size();
        open_.pop_back();
        return gt + 1;
    }

    const char* Keep(const char* lt)
    {
        const char* last = EndOfMarkup(lt, end_);
        if (last != nullptr && lt[1] == '!') {
            bool isData = false;
            last = EndOfDeclaration(lt, last, end_, isData);
        }
        if (last == nullptr || HasClosing(lt + 1, last)) {
            return nullptr;
        }
        CXmlNode*& place = loose_.nodes.emplace_back(nullptr);
        place = XmlBuilder::NewUnknown(Parent(), View(lt, last + 1));
        return last + 1;
    }

    CXmlElement* Parent() const { return open_.empty() ? &top_ : open_.back().element; }

    /// The first "<" at or behind p, or the end. p does not go back. Remembers
    /// it: looking for closing tags in one markup finds where the next begins.
    const char* NextMark(const char* p) { return mark_ < p ? LookFrom(p) : mark_; }

    const char* LookFrom(const char* p)
    {
        const char* const lt = Find('<', p, end_);
        return mark_ = lt == nullptr ? end_ : lt;
    }

    /// A closing tag begins in [begin, end), inside of other markup.
    bool HasClosing(const char* begin, const char* end)
    {
        for (const char* lt = NextMark(begin); lt < end; lt = NextMark(lt + 1)) {
            if (lt[1] == '/') {
                return true;
            }
        }
        return false;
    }

    /// The name of the innermost open element begins text, and no other does.
    bool EndsInnermost(std::string_view text)
    {
        const auto begins = [text](const Open& open) {
            return text.compare(0, open.name.size(), open.name) == 0;
        };
        if (open_.empty() || openLength_ > mayCompare_ || !begins(open_.back())) {
            return false;
        }
        mayCompare_ -= openLength_;
        return std::none_of(open_.begin(), open_.end() - 1, begins);
    }

    struct Open {
        CXmlElement* element;
        std::string_view name;
        std::size_t firstChild; ///< where its children begin among the loose nodes
    };

    CXmlElement& top_;
    Source& source_;
    const char* const end_;
    const char* mark_ = nullptr; ///< the "<" that NextMark gave last
    std::size_t mayCompare_;     ///< characters; deep documents take the careful way
    XmlNames names_;
    std::vector<Open> open_;
    std::size_t openLength_ = 0; ///< of the names of all open elements
    LooseNodes loose_;           ///< children of open elements, in order
};

// ---- The careful way -----------------------------------------------------

class CarefulParser {
public:
    CarefulParser(CXmlElement& top, Source& source, std::size_t size, const char& guard)
        : source_(source), begin_(source.Get().text.get()), end_(begin_ + size), guard_(guard),
          closingTags_(View(begin_, end_)), open_{{&top, end_, nullptr}}
    {
    }

    void Parse()
    {
        const char* p = begin_;
        for (;;) {
            if (const char* const lt = Find('<', p, open_.back().end)) {
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
        const char* const gt = EndOfMarkup(lt, end);
        if (gt == nullptr) {
            NoTagEnd(lt, end, CharacterAt(end));
        }
        if (lt[1] == '!') {
            bool isData = false;
            const char* const last = EndOfDeclaration(lt, gt, end, isData);
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
        node.release();
    }

    const char* Keep(const char* lt, const char* last)
    {
        Append(std::unique_ptr<CXmlNode>(
            XmlBuilder::NewUnknown(open_.back().element, View(lt, last + 1))));
        return last + 1;
    }

    const char* BeginElement(const char* lt, const char* gt)
    {
        const StartTag tag(lt, gt);
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
        const char* const gt = Find('>', done.end, end);
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
    if (!QuickParser(element, source, size).Parse()) {
        CarefulParser(element, source, size, guard).Parse();
    }
}

} // namespace Vorlan
