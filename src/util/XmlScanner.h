// The quick way through a document: once, from its start to its end.
//
// Every "</" that is passed is checked against the names of all open elements,
// so an element ends where the careful way of XmlParser ends it. What might be
// understood differently makes the scanner give up.
#ifndef VORLAN_UTIL_XMLSCANNER_H
#define VORLAN_UTIL_XMLSCANNER_H

#include <algorithm>
#include <cstddef>
#include <cstring>
#include <string_view>
#include <vector>

#include "util/XmlMarkup.h"
#include "util/XmlNames.h"

namespace Vorlan {

/// Tells a handler what a document holds, in the order of the text:
///
///     void Begin(std::string_view name, const char* attributes, const char* attributesEnd);
///     void End();                           // of the element begun last
///     void Unknown(std::string_view markup); // what begins with "<!" or "<?"
///
/// A tag that closes itself is a Begin and an End. The document may come in
/// parts: what of one is not read yet begins the next.
template <typename Handler>
class XmlScanner {
public:
    explicit XmlScanner(Handler& handler) : handler_(handler) {}

    /// Reads [begin, end) as far as its markup is whole; nothing follows when
    /// isLast. Gives the place where reading goes on, at end when all is read,
    /// or null when the careful way is needed.
    const char* Read(const char* begin, const char* end, bool isLast)
    {
        end_ = end;
        isLast_ = isLast;
        const auto size = static_cast<std::size_t>(end - begin);
        mayCompare_ += kComparesPerCharacter * size;
        const char* p = begin;
        // Deliberate: B-27. What stands in front of a "<" makes no node.
        for (const char* lt = LookFrom(p); lt < end_; lt = NextMark(p)) {
            isCut_ = false;
            p = ReadMarkup(lt);
            if (p == nullptr) {
                mayCompare_ -= isCut_ ? PartOf(lt, end) : 0;
                return isCut_ ? lt : nullptr;
            }
        }
        return !isLast || open_.empty() ? end : nullptr;
    }

private:
    /// Comparing names takes at most this many characters for each character
    /// of the text; deep documents take the careful way.
    static constexpr std::size_t kComparesPerCharacter = 16;

    /// What Read will grant again for characters that it has to see again, as
    /// far as it is not used up.
    std::size_t PartOf(const char* lt, const char* end) const
    {
        return std::min(mayCompare_, kComparesPerCharacter * static_cast<std::size_t>(end - lt));
    }

    // Each gives the place behind what it read, or null when it gives up.

    const char* ReadMarkup(const char* lt)
    {
        if (lt + 1 == end_ && !isLast_) {
            return Cut();
        }
        const char next = lt + 1 < end_ ? lt[1] : '\0';
        if (next == '/') {
            return EndElement(lt);
        }
        return next == '!' || next == '?' ? Keep(lt) : BeginElement(lt);
    }

    /// The end of a markup is missing: it may come with the next part.
    const char* Cut()
    {
        isCut_ = !isLast_;
        return nullptr;
    }

    const char* BeginElement(const char* lt)
    {
        const char* const gt = xml::EndOfMarkup(lt, end_);
        if (gt == nullptr) {
            return Cut();
        }
        if (HasClosing(lt + 1, gt)) {
            return nullptr;
        }
        const xml::StartTag tag(lt, gt);
        if (tag.name.empty()) {
            return nullptr;
        }
        handler_.Begin(tag.name, tag.attributes, tag.attributesEnd);
        if (tag.isClosed) {
            handler_.End();
        } else {
            open_.push_back(names_.Of(tag.name)->Get().text); // which outlives this part
            openLength_ += tag.name.size();
        }
        return gt + 1;
    }

    const char* EndElement(const char* lt)
    {
        const char* const gt = xml::Find('>', lt, end_);
        if (gt == nullptr) {
            return Cut();
        }
        if (HasClosing(lt + 2, gt) || !EndsInnermost(xml::View(lt + 2, gt))) {
            return nullptr;
        }
        handler_.End();
        openLength_ -= open_.back().size();
        open_.pop_back();
        return gt + 1;
    }

    const char* Keep(const char* lt)
    {
        const char* last = xml::EndOfMarkup(lt, end_);
        if (last != nullptr && lt[1] == '!') {
            bool isData = false;
            last = xml::EndOfDeclaration(lt, last, end_, isData);
        }
        if (last == nullptr) {
            return Cut();
        }
        if (HasClosing(lt + 1, last)) {
            return nullptr;
        }
        handler_.Unknown(xml::View(lt, last + 1));
        return last + 1;
    }

    /// The first "<" at or behind p, or the end. p does not go back. Remembers
    /// it: looking for closing tags in one markup finds where the next begins.
    const char* NextMark(const char* p) { return mark_ < p ? LookFrom(p) : mark_; }

    const char* LookFrom(const char* p)
    {
        const char* const lt = xml::Find('<', p, end_);
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
        const auto begins = [text](std::string_view name) {
            return name.size() <= text.size() && name.front() == text.front()
                   && std::memcmp(name.data(), text.data(), name.size()) == 0;
        };
        if (open_.empty() || openLength_ > mayCompare_ || !begins(open_.back())) {
            return false;
        }
        mayCompare_ -= openLength_;
        return std::none_of(open_.begin(), open_.end() - 1, begins);
    }

    Handler& handler_;
    const char* end_ = nullptr;
    bool isLast_ = true;
    bool isCut_ = false;                 ///< the markup at hand goes on in the next part
    const char* mark_ = nullptr;         ///< the "<" that NextMark gave last
    std::size_t mayCompare_ = 0;         ///< characters
    XmlNames names_;                     ///< of elements that were open
    std::vector<std::string_view> open_; ///< names of the open elements
    std::size_t openLength_ = 0;         ///< of these names
};

} // namespace Vorlan

#endif // VORLAN_UTIL_XMLSCANNER_H
