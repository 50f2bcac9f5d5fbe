// Nodes without children, and the exception.
#include <type_traits>

#include "support/Slots.h"
#include "support/Support.h"
#include "util/XmlText.h"

namespace Vorlan {
namespace {

using std::string_literals::operator""s;

static_assert(std::has_virtual_destructor_v<CXmlNode> && !std::is_polymorphic_v<CXmlAttributes>);
static_assert(std::is_base_of_v<CXmlNode, CXmlText> && std::is_base_of_v<CXmlNode, CXmlUnknown>);
static_assert(std::is_base_of_v<CXmlNode, CXmlElement>);
static_assert(std::is_base_of_v<CXmlElement, CXmlDocument>);
static_assert(std::is_base_of_v<std::exception, CXmlException>);
static_assert(std::is_same_v<decltype(&CXmlAttributes::strGetValue),
                             std::string& (CXmlAttributes::*)(std::string)>);

TEST(CXmlException, SzWhatGivesTheMessage)
{
    const CXmlException e("Can not open file!");
    EXPECT_STREQ(e.szWhat(), "Can not open file!");
}

TEST(CXmlException, SzWhatReadsAsFarAsANul)
{
    EXPECT_STREQ(CXmlException("a\0b"s).szWhat(), "a");
}

TEST(CXmlException, CopiesOutliveTheirSource)
{
    CXmlException kept("former");
    {
        const CXmlException e(std::string(100, 'x'));
        const CXmlException copy(e);
        kept = copy;
    }
    EXPECT_EQ(kept.szWhat(), std::string(100, 'x'));
}

TEST(CXmlException, B32_WhatIsTheInheritedOne)
{
    const CXmlException e("message");
    const std::exception& base = e;
    EXPECT_STREQ(e.what(), std::exception().what());
    EXPECT_STREQ(base.what(), std::exception().what());
}

TEST(EXmlType, NumbersAreThePublishedOnes)
{
    EXPECT_EQ(static_cast<int>(XML_UNKNOWN), 0);
    EXPECT_EQ(static_cast<int>(XML_ELEMENT), 1);
    EXPECT_EQ(static_cast<int>(XML_TEXT), 4);
    EXPECT_EQ(static_cast<int>(XML_DOCUMENT), 6);
    EXPECT_EQ(sizeof(EXmlType), 4U);
    EXPECT_TRUE((std::is_same_v<CXmlNode::EXmlType, EXmlType>));
}

TEST(CXmlNode, KindsAndParentsOfNewNodes)
{
    CXmlElement parent;
    EXPECT_EQ(CXmlText().eType(), XML_TEXT);
    EXPECT_EQ(CXmlUnknown().eType(), XML_UNKNOWN);
    EXPECT_EQ(CXmlElement().eType(), XML_ELEMENT);
    EXPECT_EQ(CXmlDocument().eType(), XML_DOCUMENT);
    EXPECT_EQ(CXmlText(&parent).eType(), XML_TEXT);
    EXPECT_EQ(CXmlUnknown(&parent).eType(), XML_UNKNOWN);
    EXPECT_EQ(CXmlElement(&parent).eType(), XML_ELEMENT);
    for (const CXmlNode* const node : std::initializer_list<const CXmlNode*>{
             new CXmlNode, new CXmlText, new CXmlUnknown, new CXmlElement, new CXmlDocument}) {
        EXPECT_EQ(node->pParent(), nullptr);
        EXPECT_EQ(node->strValue(), "");
        delete node; // through the virtual destructor
    }
    EXPECT_EQ(CXmlNode(&parent).pParent(), &parent);
    EXPECT_EQ(CXmlText(&parent).pParent(), &parent);
    EXPECT_EQ(CXmlUnknown(&parent).pParent(), &parent);
    EXPECT_EQ(CXmlElement(&parent).pParent(), &parent);
    EXPECT_EQ(parent.tCount(), 0U) << "a parent that is stored does not learn of it";
}

TEST(CXmlNode, AssignedTextBecomesTheValue)
{
    CXmlText node;
    std::string text = "a\0b"s;
    std::string& first = node = text;
    EXPECT_EQ(first, "a\0b"s);
    EXPECT_EQ(&first, &node.strValue());
    EXPECT_NE(&first, &text);
    std::string& second = node = "c";
    EXPECT_EQ(node.strValue(), "c");
    second += "d";
    EXPECT_EQ(node.strValue(), "cd");
    EXPECT_EQ(text, "a\0b"s);
}

TEST(CXmlNode, EveryClassTakesATextAsItsValue)
{
    CXmlNode node;
    CXmlUnknown unknown;
    CXmlElement element;
    CXmlDocument document;
    EXPECT_EQ(node = "n", "n");
    EXPECT_EQ(unknown = "u", "u");
    EXPECT_EQ(element = "e", "e");
    EXPECT_EQ(document = "d", "d");
    EXPECT_EQ(element.strToXml(), "\n<e/>");
}

TEST(CXmlNode, OwnValueCanBeAssignedAgain)
{
    CXmlText node;
    std::string& value = node = "a text that is too long to stand inside of a string";
    const std::string copy = value;
    node = value;
    EXPECT_EQ(node.strValue(), copy);
    node = node.strValue().c_str() + 2;
    EXPECT_EQ(node.strValue(), copy.substr(2));
}

TEST(CXmlNode, ParseAppendsToTheValue)
{
    CXmlUnknown node;
    const std::string text = "<a\0b>"s;
    node.Parse(text.data(), text.data() + text.size());
    node.Parse("&lt;");
    node.Parse("");
    node.Parse(text.data(), text.data());
    node.Parse(text.data() + 3, text.data());
    EXPECT_EQ(node.strValue(), "<a\0b>&lt;"s);
    EXPECT_EQ(node.strToXml(), node.strValue());
}

TEST(CXmlNode, OnlyDestructionAndWritingAreVirtual)
{
    CXmlElement element;
    CXmlNode& node = element;
    node.Parse("<a/>");
    EXPECT_EQ(element.tCount(), 0U);
    EXPECT_EQ(element.strValue(), "<a/>");
    node = "b";
    EXPECT_EQ(node.strToXml(), "\n<b/>");
    EXPECT_EQ(test::SlotOf(&CXmlNode::strToXml), 2U) << "behind the destructor";
    EXPECT_EQ(test::SlotOf(&CXmlElement::strToXml), 2U) << "in its place";
}

TEST(CXmlNode, RangeThatEndsBeforeItBeginsIsNothing)
{
    const std::string text = "<a x=\"1\"/>";
    const char* const begin = text.data() + text.size();
    CXmlElement element;
    element.CXmlNode::Parse(begin, text.data());
    EXPECT_EQ(element.strValue(), "");
    element = "b";
    element.CXmlNode::Parse(begin, text.data());
    element.Parse(begin, text.data());
    EXPECT_EQ(element.strToXml(), "\n<b/>");
}

TEST(CXmlNode, CopiesHaveAValueOfTheirOwn)
{
    CXmlElement parent;
    CXmlText source(&parent);
    source = "a";
    CXmlText copy(source);
    source = "b";
    EXPECT_EQ(copy.strValue(), "a");
    EXPECT_EQ(copy.pParent(), &parent);
    const CXmlNode& same = copy = source;
    EXPECT_EQ(same.strValue(), "b");
    copy = "c";
    EXPECT_EQ(source.strValue(), "b");
    source = static_cast<const CXmlText&>(source);
    EXPECT_EQ(source.strValue(), "b");
}

TEST(CXmlNode, CopyTakesKindAndParentToo)
{
    CXmlElement parent;
    CXmlUnknown unknown(&parent);
    CXmlNode node;
    const CXmlText text;
    node = static_cast<const CXmlNode&>(text);
    EXPECT_EQ(node.eType(), XML_TEXT);
    node = static_cast<const CXmlNode&>(unknown);
    EXPECT_EQ(node.eType(), XML_UNKNOWN);
    EXPECT_EQ(node.pParent(), &parent);
}

TEST(CXmlNode, ChangingOneTagNameLeavesThoseOfTheSameName)
{
    test::Parsed parsed("<a/><a/><a/>");
    parsed.Child(1) = "b";
    parsed.Child(2).CXmlNode::Parse("c");
    EXPECT_EQ(test::Dump(parsed.document), "a() b() ac()");
}

TEST(CXmlNode, EmptyTagNameCanBeChanged)
{
    test::Parsed parsed("</>");
    parsed.Child(0) = "b";
    EXPECT_EQ(test::Dump(parsed.document), "b()");
}

} // namespace
} // namespace Vorlan
