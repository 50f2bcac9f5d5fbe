// Depth and length are not limited, and no step is recursive.
#include "support/Support.h"
#include "util/XmlText.h"

namespace Vorlan {
namespace {

using test::MessageOf;
using test::Parsed;
using test::Repeat;

/// t1000000 and on: no name begins with another.
std::string NameOf(std::size_t number)
{
    return "t" + std::to_string(1000000 + number);
}

/// Elements inside each other.
std::string NestedText(std::size_t depth)
{
    std::string text;
    for (std::size_t i = 0; i < depth; ++i) {
        text += "<" + NameOf(i) + ">";
    }
    for (std::size_t i = depth; i-- > 0;) {
        text += "</" + NameOf(i) + ">";
    }
    return text;
}

/// Follows the first children; gives how many there are.
std::size_t DepthOf(CXmlElement& top)
{
    std::size_t depth = 0;
    for (CXmlElement* element = &top; element->tCount() > 0; ++depth) {
        element = &static_cast<CXmlElement&>(element->cAt(0));
        EXPECT_EQ(element->strValue(), NameOf(depth));
    }
    return depth;
}

TEST(XmlDepth, ManyElementsInsideEachOther)
{
    constexpr std::size_t kDepth = 100000;
    // The second begins with what only the careful way of parsing understands.
    for (const char* const first : {"", "<!-- </ -->"}) {
        Parsed parsed(NestedText(kDepth) + first);
        ASSERT_EQ(parsed.Message(), "");
        EXPECT_EQ(DepthOf(parsed.document), kDepth);
        const std::string written = parsed.document.strToXml();
        parsed.document.Clear();
        Parsed again(written);
        EXPECT_EQ(DepthOf(again.document), kDepth);
    }
}

TEST(XmlDepth, ManyElementsInsideEachOtherAroundAFailure)
{
    constexpr std::size_t kDepth = 100000;
    std::string text = NestedText(kDepth);
    text.insert(text.find("</"), "<open>");
    Parsed parsed(text);
    EXPECT_EQ(parsed.Message(), "<open>Can not find </element>");
    parsed.document.cNodes().push_back(new CXmlText);
    EXPECT_EQ(parsed.document.tCount(), 2U);
}

TEST(XmlDepth, ManyOpenElements)
{
    constexpr std::size_t kMany = 1000000;
    std::string text;
    for (std::size_t i = 0; i < kMany; ++i) {
        text += "<" + NameOf(i) + ">";
    }
    EXPECT_EQ(Parsed(text).Message(), "<t1000000>Can not find </element>");
    EXPECT_EQ(Parsed(Repeat("<a>", kMany)).Message(), "<a>Can not find </element>");
    EXPECT_EQ(Parsed(Repeat("<", kMany) + ">").Message().size(), kMany + 24);
    EXPECT_EQ(Parsed(Repeat("<a", kMany)).Message().size(), 2 * kMany + 17);
}

TEST(XmlDepth, DeepTreeOfTheHostIsWrittenAndDeleted)
{
    constexpr std::size_t kDepth = 1000000;
    CXmlElement top;
    CXmlElement* element = &top;
    for (std::size_t i = 0; i < kDepth; ++i) {
        element->cNodes().push_back(new CXmlElement(element));
        element = static_cast<CXmlElement*>(element->cNodes()[0]);
        *element = "a";
    }
    EXPECT_EQ(top.strToXml().size(), 9 * kDepth + 3);
    top.Clear();
    EXPECT_EQ(top.tCount(), 0U);
}

TEST(XmlDepth, ManyBrothers)
{
    constexpr std::size_t kMany = 300000;
    Parsed parsed("<p>" + Repeat("<a x=\"1\"></a>", kMany) + "</p><!-- </p -->");
    EXPECT_EQ(parsed.Message(), "");
    EXPECT_EQ(parsed.Child(0).tCount("a"), kMany);
}

// Every element would read the whole text for its closing tag, which is not
// there or far away.
TEST(XmlDepth, ClosingTagsFarAway)
{
    constexpr std::size_t kMany = 50000;
    std::string text = "<? </ ?>";
    for (std::size_t i = 0; i < kMany; ++i) {
        text += "<" + NameOf(i) + "><" + NameOf(kMany + i) + "/>";
    }
    for (std::size_t i = kMany; i-- > 0;) {
        text += "</" + NameOf(i) + "x ><b/>";
    }
    Parsed parsed(text);
    EXPECT_EQ(parsed.Message(), "");
    EXPECT_EQ(parsed.document.tCount(), 3U);
    EXPECT_EQ(parsed.Child(1).strValue(), NameOf(0));
    EXPECT_EQ(parsed.Child(2).strValue(), "b");
}

// It is sorted among the others once; nobody reads it with every search.
TEST(XmlDepth, LongWordAmongTheClosingTags)
{
    constexpr std::size_t kMany = 150000;
    const auto name = [](std::size_t i) { return (i % 2 == 0 ? "a" : "z") + NameOf(i); };
    std::string text = "<? </ ?>";
    std::string ends;
    for (std::size_t i = 0; i < kMany; ++i) {
        text += "<" + name(i) + ">";
        ends += "</" + name(kMany - 1 - i) + ">";
    }
    Parsed parsed(text + "<!-- </m" + std::string(20 * kMany, 'x') + " -->" + ends);
    EXPECT_EQ(parsed.Message(), "");
    EXPECT_EQ(parsed.Child(1).strValue(), "a" + NameOf(0));
}

TEST(XmlDepth, ManyAttributes)
{
    std::string tag = "<e";
    for (std::size_t i = 0; i < 100000; ++i) {
        tag += " " + NameOf(i) + "=\"" + std::to_string(i) + "\"";
    }
    Parsed parsed(tag + "/>");
    EXPECT_EQ(parsed.Child(0)[NameOf(99999)], "99999");
    EXPECT_EQ(parsed.Child(0)[NameOf(0)], "0");
    EXPECT_EQ(parsed.Child(0).strToXml(), "\n" + tag + "/>");
}

TEST(XmlDepth, LongNamesAndTexts)
{
    const std::string name(1000000, 'n');
    Parsed parsed("<" + name + ">" + name + "</" + name + "><" + name + " x=\"" + name + "\"/>");
    EXPECT_EQ(parsed.Child(0).strValue(), name);
    EXPECT_EQ(parsed.Child(1)["x"], name);
    parsed.Child(0).strText() = name;
    EXPECT_EQ(parsed.document.strToXml().size(), 5 * name.size() + 16);
}

} // namespace
} // namespace Vorlan
