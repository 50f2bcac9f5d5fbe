// Random documents: mostly in order, spoiled, made of loose tokens, and deep.
#ifndef VORLAN_TESTS_RANDOMXML_H
#define VORLAN_TESTS_RANDOMXML_H

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

#include "support/Random.h"

namespace Vorlan::test {

using std::string_view_literals::operator""sv;

template <std::size_t size>
std::string OneOf(Random& random, const std::string_view (&texts)[size])
{
    return std::string(texts[random.Below(size)]);
}

/// Names that begin alike, in any place.
inline std::string RandomXmlName(Random& random)
{
    constexpr std::string_view kNames[] = {"a",    "ab",    "b", "",    "ba",       "abc",
                                           "item", "items", "a", "a-b", "umod:mod", "i"};
    return OneOf(random, kNames);
}

inline std::string RandomXmlText(Random& random)
{
    return random.Text("abx =/-]&\"'\n\r\t ", random.Below(6));
}

inline std::string RandomXmlAttributes(Random& random)
{
    std::string text;
    for (std::size_t count = random.Below(4); count > 0; --count) {
        text += random.Text(" \t\n\r", 1 + random.Below(2)) + RandomXmlName(random);
        text += random.OneIn(8) ? RandomXmlText(random) : "";
        text += random.OneIn(4) ? " = " : "=";
        const char quote = random.OneIn(8) ? '\'' : '"';
        text += quote + random.Text("ab1./='& ", random.Below(5)) + quote;
    }
    return text + (random.OneIn(4) ? " " : "");
}

inline std::string RandomXmlMarkup(Random& random)
{
    const std::string inner = RandomXmlText(random);
    switch (random.Below(6)) {
    case 0: return "<!--" + inner + "-->";
    case 1: return "<?" + inner + "?>";
    case 2: return "<![CDATA[" + inner + (random.OneIn(2) ? "<b>" : "") + "]]>";
    case 3: return "<!DOCTYPE a [" + inner + (random.OneIn(2) ? "<!ENTITY x>" : "") + "]>";
    case 4: return "<!" + inner + ">";
    default: return inner;
    }
}

/// Content in order: names differ from level to level, mostly.
inline std::string RandomXmlContent(Random& random, std::size_t level)
{
    constexpr std::string_view kNames[][2] = {
        {"root", "run"}, {"item", "mod"}, {"a", "b"}, {"x1", "x2"}, {"umod:p", "s"}};
    std::string text;
    for (std::size_t count = random.Below(level == 0 ? 5 : 4); count > 0; --count) {
        if (level == 5 || random.OneIn(3)) {
            text += RandomXmlMarkup(random);
            continue;
        }
        const std::string name =
            random.OneIn(40) ? RandomXmlName(random) : OneOf(random, kNames[level]);
        text += "<" + name + RandomXmlAttributes(random);
        text +=
            random.OneIn(3) ? "/>" : ">" + RandomXmlContent(random, level + 1) + "</" + name + ">";
        text += random.OneIn(3) ? "\n" : "";
    }
    return text;
}

inline std::string RandomXmlToken(Random& random)
{
    constexpr std::string_view kTokens[] = {
        "</a",     "</ab>",     "</b>", "</",   "</item>",    "</items>", "<a>",         "<ab>",
        "<b>",     "<a/>",      "<>",   "</>",  "<item a=\"", "<items>",  "<!--",        "-->",
        "<!-->",   "<![CDATA[", "]]>",  "CDAT", "<!DOCTYPE",  "DOCTYPE",  "]>",          "->",
        "-",       "/>",        "<",    ">",    "=",          "\"",       "'",           "\0"sv,
        "\r\n",    "\n",        " ",    "\t",   "<?",         "?>",       "<!",          "!",
        "x=\"1\"", "/",         "a",    "b",    "]",          "<a b->",   "\xEF\xBB\xBF"};
    return OneOf(random, kTokens);
}

/// A few bytes or tokens taken out, doubled, swapped, put in.
inline std::string SpoiledXml(Random& random, std::string text)
{
    for (std::size_t times = 1 + random.Below(4); times > 0; --times) {
        const std::size_t place = random.Below(text.size() + 1);
        const std::size_t length = std::min(text.size() - place, 1 + random.Below(6));
        switch (random.Below(4)) {
        case 0: text.erase(place, length); break;
        case 1: text.insert(place, text.substr(place, length)); break;
        case 2:
            if (place < text.size()) {
                std::swap(text[place], text[random.Below(text.size())]);
            }
            break;
        default: text.insert(place, RandomXmlToken(random)); break;
        }
    }
    return text;
}

inline std::string RandomXmlTokens(Random& random)
{
    std::string text;
    for (std::size_t count = random.Below(30); count > 0; --count) {
        text += RandomXmlToken(random);
    }
    return text;
}

/// Whole and cut tags of few names: most closing tags end something.
inline std::string RandomXmlTags(Random& random)
{
    constexpr std::string_view kTags[] = {"<a>",  "<b>",   "<b>", "</a>", "</b>", "</a", "</b",
                                          "<c/>", "</bc>", ">",   "<",    "<!--", "-->", "<bc>"};
    std::string text;
    for (std::size_t count = 2 + random.Below(10); count > 0; --count) {
        text += OneOf(random, kTags);
    }
    return text;
}

/// Many elements inside each other, so that looking for the end of each reads
/// the text many times; behind a tag that looks closed inside of another.
inline std::string RandomDeepXml(Random& random)
{
    const std::size_t depth = 20 + random.Below(60);
    std::vector<std::string> names;
    for (std::size_t i = 0; i < depth; ++i) {
        names.push_back((random.OneIn(2) ? "n" : "m") + std::to_string(100 + i));
    }
    std::string text = "<?</?>";
    for (const std::string& name : names) {
        text += "<" + name + RandomXmlAttributes(random) + ">";
        text += random.OneIn(8) ? "<i></i >" : "";
    }
    for (std::size_t i = depth; i-- > 0;) {
        text += "</" + names[i] + (random.OneIn(8) ? "x>" : ">");
        text += random.OneIn(8) ? "<i>" + RandomXmlMarkup(random) + "</i>" : "";
    }
    return text;
}

} // namespace Vorlan::test

#endif // VORLAN_TESTS_RANDOMXML_H
