// Children: questions, changes, copies, lifetimes, and writing.
#include <array>
#include <memory>

#include "support/Support.h"
#include "util/XmlAccess.h"
#include "util/XmlText.h"

namespace Vorlan {
namespace {

using test::Dump;
using test::MessageOf;
using test::Parsed;

const char* const kMods = "<!--1--><mod title=\"a\"/><mods/><mod/>x<mod title=\"c\"/><?2?>";

// ---- Questions -------------------------------------------------------------

TEST(CXmlElement, ItemsAreCountedAmongThoseOfOneTag)
{
    Parsed parsed(kMods);
    const CXmlDocument& document = parsed.document;
    EXPECT_EQ(document.pItem("mod", 0), &document.cAt(1));
    EXPECT_EQ(document.pItem("mod", 1), &document.cAt(3));
    EXPECT_EQ(document.pItem("mod", 2), &document.cAt(4));
    EXPECT_EQ(document.pItem("mod", 3), nullptr);
    EXPECT_EQ(document.pItem("mod", static_cast<std::size_t>(-1)), nullptr);
    EXPECT_EQ(document.pItem("mods", 0), &document.cAt(2));
    EXPECT_EQ(document.pItem("mo", 0), nullptr);
    EXPECT_EQ(document.pItem("Mod", 0), nullptr);
    EXPECT_EQ(document.pItem("<!--1-->", 0), nullptr) << "only elements count";
    EXPECT_EQ(document.tCount("mod"), 3U);
    EXPECT_EQ(document.tCount("mods"), 1U);
    EXPECT_EQ(document.tCount(""), 0U);
    EXPECT_EQ(document.tCount("<?2?>"), 0U);
}

TEST(CXmlElement, ChildrenOfAllKindsAreCounted)
{
    Parsed parsed(kMods);
    EXPECT_EQ(parsed.document.tCount(), 6U);
    EXPECT_EQ(parsed.document.tSize(), 6U);
    EXPECT_EQ(parsed.Child(1).tCount(), 0U);
    parsed.document.strText();
    EXPECT_EQ(parsed.document.tCount(), 7U);
}

TEST(CXmlElement, OnlyChildrenAreAskedNotTheirs)
{
    Parsed parsed("<a><mod/></a>");
    EXPECT_EQ(parsed.document.tCount("mod"), 0U);
    EXPECT_EQ(parsed.document.pItem("mod", 0), nullptr);
    EXPECT_EQ(parsed.document.pItemFromKV("mod", "x", ""), nullptr);
}

TEST(CXmlElement, ElementsWithoutANameAreFound)
{
    Parsed parsed("<a/></>< x=\"1\"/>");
    EXPECT_EQ(parsed.document.tCount(""), 2U);
    EXPECT_EQ(parsed.document.pItem("", 1), &parsed.document.cAt(2));
    EXPECT_EQ(parsed.document.pItemFromKV("", "x", "1"), &parsed.document.cAt(2));
}

TEST(CXmlElement, ChildIsFoundByTheValueOfAnAttribute)
{
    Parsed parsed("<b t=\"x\"/><mod t=\"X\"/><mod t=\"x\" n=\"1\"/><mod t=\"x\" n=\"2\"/>");
    const CXmlDocument& document = parsed.document;
    EXPECT_EQ(document.pItemFromKV("mod", "t", "x"), &document.cAt(2));
    EXPECT_EQ(document.pItemFromKV("mod", "n", "2"), &document.cAt(3));
    EXPECT_EQ(document.pItemFromKV("mod", "t", "xx"), nullptr);
    EXPECT_EQ(document.pItemFromKV("none", "t", "x"), nullptr);
}

TEST(CXmlElement, B33_EveryCandidateThatLacksTheAttributeIsGivenIt)
{
    Parsed parsed(kMods);
    EXPECT_EQ(parsed.document.pItemFromKV("mod", "title", "b"), nullptr);
    EXPECT_EQ(Dump(parsed.document),
              "'<!--1-->' mod title=\"a\"() mods() mod title=\"\"() mod title=\"c\"() '<?2?>'");
}

TEST(CXmlElement, B33_EmptyValueMatchesACandidateThatLacksTheAttribute)
{
    Parsed parsed(kMods);
    EXPECT_EQ(parsed.document.pItemFromKV("mod", "x", ""), &parsed.document.cAt(1));
    // Those behind the one that was found were not looked at.
    EXPECT_EQ(Dump(parsed.document), "'<!--1-->' mod title=\"a\" x=\"\"() mods() mod() "
                                     "mod title=\"c\"() '<?2?>'");
}

TEST(CXmlElement, ChildBehindTheLastIsAnError)
{
    Parsed parsed("<a/>text<!--1-->");
    EXPECT_EQ(parsed.document.cAt(0).strValue(), "a");
    EXPECT_EQ(parsed.document.cAt(1).strValue(), "<!--1-->");
    const std::string message = "Index of child node exceeds the range!";
    EXPECT_EQ(MessageOf([&] { parsed.document.cAt(2); }), message);
    EXPECT_EQ(MessageOf([&] { parsed.document.cAt(static_cast<std::size_t>(-1)); }), message);
    EXPECT_EQ(MessageOf([&] { parsed.Child(0).cAt(0); }), message);
}

TEST(CXmlElement, IteratorsGoThroughTheChildren)
{
    Parsed parsed("<a/><b/><c/>");
    std::string names;
    for (auto it = parsed.document.iterBegin(); it != parsed.document.iterEnd(); ++it) {
        names += (*it)->strValue();
    }
    EXPECT_EQ(names, "abc");
    EXPECT_EQ(&*parsed.document.iterBegin(), parsed.document.cNodes().data());
    EXPECT_EQ(&static_cast<const CXmlDocument&>(parsed.document).cNodes(),
              &parsed.document.cNodes());
}

// ---- Texts and new elements ------------------------------------------------

TEST(CXmlElement, B82_TextIsEnteredInFrontOfTheChildren)
{
    Parsed parsed("<r>hello<b/>world</r>");
    CXmlElement& r = parsed.Child(0);
    ASSERT_EQ(Dump(r), "b()");
    std::string& text = r.strText();
    EXPECT_EQ(text, "");
    EXPECT_EQ(Dump(r), "\"\" b()");
    EXPECT_EQ(r.cAt(0).eType(), XML_TEXT);
    EXPECT_EQ(r.cAt(0).pParent(), &r);
    text = "hello";
    EXPECT_EQ(&r.strText(), &text);
    EXPECT_EQ(Dump(r), "\"hello\" b()");
    EXPECT_EQ(r.strToXml(), "\n<r>hello\n<b/>\n</r>");
}

TEST(CXmlElement, TextThatIsThereIsTaken)
{
    Parsed parsed("<a/>");
    auto* const text = new CXmlText(&parsed.document);
    *text = "x";
    parsed.document.cNodes().push_back(text);
    parsed.document.cNodes().push_back(new CXmlText);
    EXPECT_EQ(&parsed.document.strText(), &text->strValue());
    EXPECT_EQ(Dump(parsed.document), "a() \"x\" \"\"");
}

TEST(CXmlElement, B35_NewItemKeepsItsNameAsText)
{
    CXmlElement parent;
    parent.Parse("<b/>");
    CXmlElement* const item = parent.pNewItem(" a\t");
    ASSERT_EQ(item, &parent.cAt(1));
    EXPECT_EQ(item->eType(), XML_ELEMENT);
    EXPECT_EQ(item->pParent(), &parent);
    EXPECT_EQ(item->strValue(), "");
    EXPECT_EQ(item->strText(), " a\t");
    EXPECT_EQ(item->tCount(), 1U);
    EXPECT_EQ(item->strToXml(), "\n<> a\t\n</>");
}

TEST(CXmlElement, B35_NameOfBlanksPasses)
{
    CXmlElement parent;
    EXPECT_EQ(parent.pNewItem(" \t\n\r")->strText(), " \t\n\r");
    EXPECT_EQ(parent.pNewItem("   ")->strText(), "   ");
}

TEST(CXmlElement, NewItemWithoutANameIsAnError)
{
    CXmlElement parent;
    EXPECT_EQ(MessageOf([&] { parent.pNewItem(""); }), "Error: The tag of element is empty!");
    EXPECT_EQ(parent.tCount(), 0U);
}

TEST(CXmlElement, ClearRemovesAttributesAndChildrenOnly)
{
    Parsed parsed("<p><a x=\"1\"><b/><!--1--></a></p>");
    CXmlElement& a = static_cast<CXmlElement&>(parsed.Child(0).cAt(0));
    a.Clear();
    EXPECT_EQ(Dump(parsed.document), "p(a())");
    EXPECT_EQ(a.pParent(), &parsed.document.cAt(0));
    a.Clear();
    a.Parse("<c/>");
    EXPECT_EQ(Dump(parsed.document), "p(a(c()))");
}

/// Counts how many of it there are.
class CountedNode : public CXmlNode {
public:
    CountedNode() { ++alive; }
    ~CountedNode() override { --alive; }
    std::string strToXml() const override { return "counted"; }

    static int alive;
};

int CountedNode::alive = 0;

TEST(CXmlElement, ChildrenAreDeletedThroughTheirDestructor)
{
    {
        CXmlElement element;
        element.Parse("<a/>");
        element.cNodes().push_back(new CountedNode);
        auto* const inner = new CXmlElement(&element);
        element.cNodes().push_back(inner);
        inner->cNodes().push_back(new CountedNode);
        inner->cNodes().push_back(new CountedNode);
        EXPECT_EQ(CountedNode::alive, 3);
        inner->Clear();
        EXPECT_EQ(CountedNode::alive, 1);
    }
    EXPECT_EQ(CountedNode::alive, 0);
}

// ---- Copies and lifetimes --------------------------------------------------

TEST(CXmlElement, B31_CopiesShareTheirChildren)
{
    Parsed parsed("<a x=\"1\"><b/></a>");
    CXmlElement& source = parsed.Child(0);
    CXmlElement copy(source);
    ASSERT_EQ(copy.tCount(), 1U);
    EXPECT_EQ(&copy.cAt(0), &source.cAt(0));
    EXPECT_EQ(copy.cAt(0).pParent(), &source);
    EXPECT_EQ(copy.strToXml(), source.strToXml());
    copy.cNodes().clear(); // or both would delete them
    EXPECT_EQ(source.tCount(), 1U) << "the lists themselves are independent";
}

TEST(CXmlElement, B31_AssignmentSharesThemAndLeavesTheFormerOnes)
{
    Parsed parsed("<a x=\"1\"><b/></a>");
    CXmlElement target;
    target.Parse("<former/>");
    const std::unique_ptr<CXmlNode> former(&target.cAt(0));
    target = parsed.Child(0);
    EXPECT_EQ(&target.cAt(0), &parsed.Child(0).cAt(0));
    EXPECT_EQ(target.pParent(), &parsed.document);
    EXPECT_EQ(target["x"], "1");
    EXPECT_EQ(former->strValue(), "former") << "was not deleted";
    target.cNodes().clear();
}

TEST(CXmlElement, B31_DocumentsShareThem)
{
    Parsed parsed("<a/>");
    CXmlDocument copy(parsed.document);
    EXPECT_EQ(copy.eType(), XML_DOCUMENT);
    EXPECT_EQ(&copy.cRoot(), &parsed.document.cRoot());
    copy.cNodes().clear();
    copy = parsed.document;
    EXPECT_EQ(&copy.cRoot(), &parsed.document.cRoot());
    copy.cNodes().clear();
}

TEST(CXmlElement, CopiesOfLeavesAreIndependent)
{
    CXmlElement copy;
    {
        Parsed parsed("<leaf x=\"1\"/>");
        copy = parsed.Child(0);
        CXmlElement other(copy);
        other = "other";
        other["x"] = "2";
        parsed.Child(0)["x"] = "3";
    }
    EXPECT_EQ(copy.strToXml(), "\n<leaf x=\"1\"/>");
}

TEST(CXmlElement, NodesTakenOutOutliveTheirDocument)
{
    std::unique_ptr<CXmlElement> element;
    std::unique_ptr<CXmlNode> comment;
    {
        Parsed parsed("<a x=\"1\"><b y=\"2\"/></a><!--1--><c/>");
        element.reset(&parsed.Child(0));
        comment.reset(&parsed.document.cAt(1));
        auto& nodes = parsed.document.cNodes();
        nodes.erase(nodes.begin(), nodes.begin() + 2);
        EXPECT_EQ(parsed.document.strToXml(), "\n<c/>");
    }
    EXPECT_EQ(comment->strValue(), "<!--1-->");
    EXPECT_EQ(element->strGetValue("x"), "1");
    EXPECT_EQ(element->strToXml(), "\n<a x=\"1\">\n<b y=\"2\"/>\n</a>");
    element->Clear();
    EXPECT_EQ(element->strValue(), "a");
}

TEST(CXmlElement, NodesMoveToAnotherDocument)
{
    CXmlDocument target;
    {
        Parsed parsed("<a x=\"1\"/><b/>");
        target.cNodes().swap(parsed.document.cNodes());
        EXPECT_EQ(parsed.document.tCount(), 0U);
    }
    EXPECT_EQ(target.strToXml(), "\n<a x=\"1\"/>\n<b/>");
}

TEST(CXmlElement, TextThatWasParsedMayGoAtOnce)
{
    CXmlElement element;
    {
        std::string text = "<name x=\"value\"><!--1--></name>";
        element.Parse(text.data(), text.data() + text.size());
        text.assign(text.size(), '#');
    }
    EXPECT_EQ(element.strToXml(), "\n<>\n<name x=\"value\"><!--1-->\n</name>\n</>");
    EXPECT_EQ(element.pItem("name", 0)->strGetValue("x"), "value");
}

// ---- Writing ---------------------------------------------------------------

TEST(CXmlElement, EveryElementBeginsALineOfItsOwn)
{
    Parsed parsed("<a b=\"1\" a=\"2\"><!--x--><b/>text<c><d y=\"&lt;\"/></c></a>");
    EXPECT_EQ(parsed.Child(0).strToXml(), "\n<a a=\"2\" b=\"1\"><!--x-->\n<b/>\n<c>\n"
                                          "<d y=\"&lt;\"/>\n</c>\n</a>");
}

TEST(CXmlElement, OpenAndClosedTagsWithoutContentAreWrittenAlike)
{
    Parsed parsed("<a></a><b/><c>text</c>");
    EXPECT_EQ(parsed.document.strToXml(), "\n<a/>\n<b/>\n<c/>");
}

TEST(CXmlElement, ElementOfAnotherKindWritesItsChildrenOnly)
{
    CXmlElement parent;
    auto* const element = new CXmlElement;
    element->Parse("<a/><b/>");
    (*element)["x"] = "1";
    const CXmlText text;
    static_cast<CXmlNode&>(*element) = text;
    ASSERT_EQ(element->eType(), XML_TEXT);
    EXPECT_EQ(element->strToXml(), "\n<a/>\n<b/>");
    parent = "p";
    parent.cNodes().push_back(element);
    EXPECT_EQ(parent.strToXml(), "\n<p>\n<a/>\n<b/>\n</p>");
}

TEST(CXmlElement, OtherClassesWriteThemselves)
{
    class Loud : public CXmlElement {
    public:
        std::string strToXml() const override { return "loud"; }
    };
    CXmlElement element;
    element = "e";
    element.cNodes().push_back(new CountedNode);
    element.cNodes().push_back(new Loud);
    auto* const document = new CXmlDocument;
    document->Parse("<a/>");
    element.cNodes().push_back(document);
    EXPECT_EQ(element.strToXml(), "\n<e>countedloud\n<a/>\n</e>");
    EXPECT_EQ(element.tCount("a"), 0U);
}

// ---- The library's own questions ------------------------------------------

TEST(XmlAccess, QuestionsLeaveTheTreeAsItIs)
{
    Parsed parsed("<a x=\"1\" x=\"2\"/><!--1--><b/><a y=\"3\"/>");
    CXmlElement& first = parsed.Child(0);
    EXPECT_EQ(XmlAccess::FirstChild(parsed.document, "a"), &first);
    EXPECT_EQ(XmlAccess::FirstChild(parsed.document, "c"), nullptr);
    EXPECT_EQ(XmlAccess::Attribute(first, "x"), "2");
    EXPECT_EQ(XmlAccess::Attribute(first, "z"), "");
    std::string_view value = "before";
    EXPECT_FALSE(XmlAccess::FindAttribute(first, "z", value));
    EXPECT_EQ(value, "before");
    EXPECT_EQ(XmlAccess::AttributesXml(first), " x=\"2\"");
    EXPECT_EQ(Dump(parsed.document), "a x=\"2\"() '<!--1-->' b() a y=\"3\"()");
}

TEST(XmlAccess, EnteredValuesCountBeforeTheText)
{
    Parsed parsed("<a x=\"1\"/>");
    parsed.Child(0)["x"] = "2";
    parsed.Child(0)["z"];
    std::string_view value = "before";
    EXPECT_EQ(XmlAccess::Attribute(parsed.Child(0), "x"), "2");
    EXPECT_TRUE(XmlAccess::FindAttribute(parsed.Child(0), "z", value));
    EXPECT_EQ(value, "");
}

TEST(XmlAccess, SeveralValuesAtOnceWhereSomeAreEntered)
{
    Parsed parsed("<a x=\"1\" y=\"2\"/>");
    parsed.Child(0)["x"] = "3";
    const std::array<std::string_view, 3> names = {"y", "x", "z"};
    EXPECT_THAT(XmlAccess::Attributes(parsed.Child(0), names), testing::ElementsAre("2", "3", ""));
}

TEST(XmlAccess, OnlyElementsAreTakenForElements)
{
    CXmlElement element;
    CXmlText text;
    CXmlDocument document;
    CXmlNode copy(element); // of its kind, not of its class
    EXPECT_EQ(copy.eType(), XML_ELEMENT);
    EXPECT_EQ(XmlAccess::ElementOf(&element), &element);
    EXPECT_EQ(XmlAccess::ElementOf(&text), nullptr);
    EXPECT_EQ(XmlAccess::ElementOf(&document), nullptr);
    EXPECT_EQ(XmlAccess::ElementOf(&copy), nullptr);
    EXPECT_EQ(XmlAccess::ElementOf(nullptr), nullptr);
}

} // namespace
} // namespace Vorlan
