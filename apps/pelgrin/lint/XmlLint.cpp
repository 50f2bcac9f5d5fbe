#include "lint/XmlLint.h"

#include <algorithm>

#include <fmt/format.h>

#include "common/Words.h"
#include "lint/LineFlaws.h"

namespace pelgrin {

namespace {

/// Open elements and characters of their names up to which the walk follows.
constexpr std::size_t kMostOpen = 1000;
constexpr std::size_t kMostLength = std::size_t{64} * 1024;

bool EndsWith(std::string_view text, std::string_view end)
{
    return text.size() >= end.size() && text.substr(text.size() - end.size()) == end;
}

bool IsInsideQuotes(std::string_view text, std::size_t place)
{
    const std::string_view front = text.substr(0, place);
    return std::count(front.begin(), front.end(), '"') % 2 != 0;
}

} // namespace

bool HasSingleQuotes(std::string_view tag)
{
    for (std::size_t equals = tag.find('='); equals != std::string_view::npos;) {
        const std::size_t quote = tag.find_first_not_of(" \t\r\n", equals + 1);
        if (quote == std::string_view::npos || tag[quote] == '\'') {
            return quote != std::string_view::npos;
        }
        const std::size_t end =
            tag[quote] == '"' ? tag.find('"', quote + 1) : equals; // else it has no value
        equals = end == std::string_view::npos ? end : tag.find('=', end + 1);
    }
    return false;
}

void XmlLint::Take(const XmlTags& tags)
{
    if (isLost_) {
        return;
    }
    line_ = tags.Line();
    const std::string_view text = tags.Text();
    switch (text.front()) {
    case '!': TakeDeclaration(text); break;
    case '?': break;
    case '/': TakeEnd(text.substr(1)); break;
    default: TakeStart(text); break;
    }
}

void XmlLint::Finish(const XmlTags& tags)
{
    if (isLost_) {
        return;
    }
    line_ = tags.Line();
    if (!tags.Text().empty()) {
        Add(Rule::XmlBroken, fmt::format("the file ends inside the tag {}; expected \">\"",
                                         Shown("<" + std::string(tags.Text().substr(0, 200)))));
    } else if (!open_.empty()) {
        line_ = open_.back().line;
        Add(Rule::XmlBroken, fmt::format("the element {} does not end; expected </{}>",
                                         open_.back().name, open_.back().name));
    }
}

void XmlLint::TakeDeclaration(std::string_view text)
{
    if (BeginsWith(text, "!--")) {
        if (!EndsWith(text, "-->") || text.size() < 6) {
            Add(Rule::XmlComment, fmt::format("the comment ends here: {}; expected no \">\" in it",
                                              Shown("<" + std::string(text.substr(0, 200)))));
        }
    } else if (text.find("DOCTYPE") != std::string_view::npos && !EndsWith(text, "]>")) {
        Lose(Rule::XmlDoctype, "goes on to the next \"]>\"; expected no DOCTYPE");
    } else if (text.find("CDAT") != std::string_view::npos && !EndsWith(text, "]]>")) {
        isLost_ = true; // to "]]>", behind any tags
    }
}

void XmlLint::TakeStart(std::string_view text)
{
    const std::size_t arrow = text.find("->");
    if (arrow != std::string_view::npos && !IsInsideQuotes(text, arrow)) {
        Add(Rule::XmlArrow, fmt::format("{} goes on to the next \">\"; expected no \"-\" in front",
                                        Shown("<" + std::string(text.substr(0, arrow + 2)))));
    } else if (IsInsideQuotes(text, text.size())) {
        Add(Rule::XmlTagCut, fmt::format("the tag ends inside an attribute: {}; expected &gt;",
                                         Shown("<" + std::string(text))));
    }
    if (EndsWith(text, "/>")) {
        return;
    }
    open_.push_back({std::string(text.substr(0, text.find_first_of(" \t\r\n>/"))), line_});
    openLength_ += open_.back().name.size();
    isLost_ = open_.size() > kMostOpen || openLength_ > kMostLength;
}

/// text is what stands behind "</".
void XmlLint::TakeEnd(std::string_view text)
{
    const std::string_view name = text.substr(0, text.find_first_of(" \t\r\n>"));
    if (open_.empty() || !BeginsWith(text, open_.back().name)) {
        Lose(Rule::XmlBroken,
             fmt::format("</{}> ends nothing; expected {}", name,
                         open_.empty() ? "no further tag" : "</" + open_.back().name + ">"));
        return;
    }
    const auto outer = std::find_if(open_.begin(), open_.end() - 1,
                                    [&](const Open& open) { return BeginsWith(text, open.name); });
    if (outer->name != name || outer != open_.end() - 1) {
        Lose(Rule::XmlNameBegins,
             fmt::format("</{}> ends the element {} of line {}; expected names that do not begin "
                         "alike",
                         name, outer->name, outer->line));
        return;
    }
    openLength_ -= open_.back().name.size();
    open_.pop_back();
}

void XmlLint::Lose(Rule rule, std::string what)
{
    Add(rule, std::move(what));
    isLost_ = true;
}

} // namespace pelgrin
