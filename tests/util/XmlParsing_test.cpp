// What a text becomes: nodes, messages, and what is left after a failure.
#include "support/Support.h"
#include "util/XmlText.h"

namespace Vorlan {
namespace {

using std::string_literals::operator""s;
using test::Dump;
using test::Parsed;

struct ParsingCase {
    const char* reason;
    std::string text;
    std::string dump;
    std::string message = {}; ///< of the failure, before which dump was read
};

void Expect(const ParsingCase& c)
{
    const Parsed parsed(c.text);
    EXPECT_EQ(parsed.Message(), c.message) << c.reason;
    EXPECT_EQ(Dump(parsed.document), c.dump) << c.reason;
}

template <std::size_t size>
void Expect(const ParsingCase (&cases)[size])
{
    for (const ParsingCase& c : cases) {
        Expect(c);
    }
}

TEST(XmlParsing, ElementsAndTheirNames)
{
    Expect({
        {"an empty text", "", ""},
        {"blanks", " \n\t\r", ""},
        {"an element without content", "<a/>", "a()"},
        {"an element that is empty", "<a></a>", "a()"},
        {"children", "<a><b/><c><d/></c></a>", "a(b() c(d()))"},
        {"several at the top", "<a/><b/><a/>", "a() b() a()"},
        {"a name ends at a blank", "<a />", "a()"},
        {"a name ends at a tab", "<a\t></a>", "a()"},
        {"a name ends at a line feed", "<a\n></a>", "a()"},
        {"a name ends at a carriage return", "<a\r></a>", "a()"},
        {"a name ends at a slash", "<a/b></a>", "a()"},
        {"a name with a colon", "<umod:mod></umod:mod>", "umod:mod()"},
        {"a name of any bytes", "<\xC3\xA4.\x7F'=\"\v/>", "\xC3\xA4.\x7F'=\"\v()"},
        {"a name with a NUL", "<a\0b></a\0b>"s, "a\0b()"s},
        {"an empty name ends at any closing tag", "<><b/></x>", "(b())"},
        {"an empty name behind a blank", "< a></ a>", "()"},
        {"nothing but a slash", "</>", "()"},
        {"a name that holds a lesser sign", "<a<b/>", "a<b()"},
        {"a slash in front of the greater sign counts", "<a b=\"/\"/>", "a b=\"/\"()"},
        {"a slash that is not the last character does not", "<a / ></a>", "a()"},
        {"a closing tag with blanks", "<a></a \n>", "a()"},
        {"a closing tag with anything", "<a></a b=\"1\"/-><c/>", "a() c()"},
        {"a closing tag across lines", "<a></a\n\n><b/>", "a() b()"},
    });
}

TEST(XmlParsing, B81_ClosingTagWithoutAnElementIsAnElementWithoutAName)
{
    Expect({
        {"alone", "</a>", "()", "</a>Can not find </element>"},
        {"with another behind it", "</a></b><c/>", "() c()"},
        {"with a blank", "< /a></b>", "()"},
        {"inside of another", "<r></x></y></r>", "r(())"},
        {"inside of another, without an end", "<r></x></r>", "r(())",
         "</x>Can not find </element>"},
    });
}

TEST(XmlParsing, B27_CharacterDataIsDropped)
{
    Expect({
        {"around and inside", "x<a>y<b/>z</a>w", "a(b())"},
        {"nothing but words", "words", ""},
        {"greater signs", "a > b", ""},
        {"entities", "<a>&lt;b/&gt;</a>", "a()"},
    });
}

TEST(XmlParsing, B28_ElementEndsAtTheFirstClosingTagThatBeginsWithItsName)
{
    Expect({
        {"inside of one of its name", "<a><a></a></a>", "a(a())", "<a>Can not find </element>"},
        {"the same with attributes", "<a><a x=\"1\" ></a></a>", "a(a x=\"1\"())",
         "<a x=\"1\" >Can not find </element>"},
        {"deeper", "<a><b><a/></b><c><a></a></c></a>", "a(b(a()) c())",
         "<c>Can not find </element>"},
        {"a longer name ends it", "<item><b/></items><c/>", "item(b()) c()"},
        {"a child with a longer name", "<a><ab></ab></a>", "a(ab())",
         "<ab>Can not find </element>"},
        {"a child with a shorter name", "<ab><a></a></ab>", "ab(a())"},
        {"a child that needs none", "<a><a/><ab/></a>", "a(a() ab())"},
        {"a closing tag in a comment", "<a><!-- </a> --></a>", "a()", "<!-- <Can not find '>'"},
        {"a closing tag in an attribute", "<a><b x=\"</a>\"/></a>", "a()",
         "<b x=\"<Can not find '>'"},
        {"a closing tag in a CDATA section", "<a><![CDATA[</a>]]></a>", "a()",
         "<![CDATA[<Can not find '>'"},
        {"no closing tag", "<x/><a><b/>", "x() a()", "<a>Can not find </element>"},
        {"case matters", "<a></A>", "a()", "<a>Can not find </element>"},
        {"a closing tag in front of it", "<b></b><b>", "b() b()", "<b>Can not find </element>"},
    });
}

TEST(XmlParsing, B29_DashTakesTheNextGreaterSign)
{
    Expect({
        {"in an attribute", "<a x=\"->\"/>", "a x=\"->\"()"},
        {"the name ends at the first one", "<a->x></a->", "a-()"},
        {"only once", "<a x=\"->->\"/></a>", "a()"},
        {"in a processing instruction", "<?a ->b?>", "'<?a ->b?>'"},
        {"nothing but a dash", "<->>", "-()", "<->>Can not find </element>"},
        {"there is no next one", "<b/><a->", "b()", "<a->\nCan not find '>'"},
        {"not behind an exclamation mark", "<!a -><b/>->", "'<!a ->' b()"},
        {"not in a closing tag", "<a></a-><b/>", "a() b()"},
    });
}

TEST(XmlParsing, B30_CommentEndsAtItsFirstGreaterSign)
{
    Expect({
        {"a usual one", "<!-- x --><a/>", "'<!-- x -->' a()"},
        {"with a greater sign", "<!-- x > y --><r/>", "'<!-- x >' r()"},
        {"with a tag", "<!-- <a/> --><r/>", "'<!-- <a/>' r()"},
        {"with the letters CDAT", "<!-- CDATA --><r/>", "'<!-- CDATA -->' r()"},
        {"with the letters DOCTYPE", "<!-- DOCTYPE --><r/>", "'<!-- DOCTYPE -->' r()"},
        {"the shortest", "<!--><r/>", "'<!-->' r()"},
        {"without an end", "<a/><!-- x ", "a()", "<!-- x \nCan not find '>'"},
    });
}

TEST(XmlParsing, OtherMarkupIsKeptAsItStands)
{
    Expect({
        {"the declaration", "<?xml version=\"1.0\"?>\n<root/>", "'<?xml version=\"1.0\"?>' root()"},
        {"a processing instruction ends at a greater sign", "<?a>b?><c/>", "'<?a>' c()"},
        {"a declaration", "<!ELEMENT a><c/>", "'<!ELEMENT a>' c()"},
        {"the shortest declaration", "<!><c/>", "'<!>' c()"},
        {"the shortest instruction", "<?><c/>", "'<?>' c()"},
        {"one dash is no comment", "<!-CDAT>]]><c/>", "'<!-CDAT>]]>' c()"},
        {"inside of elements", "<a><!--1--><b/><?2?></a>", "a('<!--1-->' b() '<?2?>')"},
    });
}

TEST(XmlParsing, CdataSectionEndsAtTwoBracketsAndAGreaterSign)
{
    Expect({
        {"with tags inside", "<![CDATA[a<b>]]><c/>", "'<![CDATA[a<b>]]>' c()"},
        {"with a bracket too many", "<![CDATA[]]]><c/>", "'<![CDATA[]]]>' c()"},
        {"the end is searched behind the letters", "<!]]CDAT>x]]>", "'<!]]CDAT>x]]>'"},
        {"four letters are enough", "<!xCDATx>y]]><c/>", "'<!xCDATx>y]]>' c()"},
        {"they count before DOCTYPE", "<!DOCTYPECDAT>]>]]>", "'<!DOCTYPECDAT>]>]]>'"},
        {"letters behind the greater sign do not", "<!x>CDAT]]>", "'<!x>'"},
        {"lower case does not", "<!cdata>]]>", "'<!cdata>'"},
        {"without an end", "<a/><![CDATA[x> ]] >", "a()", "Can not find \"]]>\""},
        {"the end lies behind the element", "<a><![CDATA[x></a>]]>", "a()", "Can not find \"]]>\""},
    });
}

TEST(XmlParsing, B36_DoctypeNeedsALaterBracketAndGreaterSign)
{
    Expect({
        {"with a subset", "<!DOCTYPE a [<!ENTITY b>]><c/>", "'<!DOCTYPE a [<!ENTITY b>]>' c()"},
        {"an empty subset", "<!DOCTYPE a[]><c/>", "'<!DOCTYPE a[]>' c()"},
        {"without a subset", "<b/><!DOCTYPE a><c/>", "b()", "DOCTYPE can not find \"]>\""},
        {"one that follows by chance", "<!DOCTYPE a><c x=\"]>\"/><d/>",
         "'<!DOCTYPE a><c x=\"]>' d()"},
        {"the end is searched behind the word", "<!]DOCTYPE>]>", "'<!]DOCTYPE>]>'"},
        {"the word anywhere in the markup", "<!aDOCTYPEb>]><c/>", "'<!aDOCTYPEb>]>' c()"},
        {"the word behind the greater sign", "<!a>DOCTYPE", "'<!a>'"},
        {"the end lies behind the element", "<a><!DOCTYPE a></a>]>", "a()",
         "DOCTYPE can not find \"]>\""},
    });
}

struct GuardCase {
    const char* reason;
    std::string text;
    std::string message;
};

// 'G' stands behind every text.
const GuardCase kGuardCases[] = {
    {"an unclosed tag", "<a/><b x=\"1\"", "<b x=\"1\"GCan not find '>'"},
    {"nothing but a lesser sign", "<", "<GCan not find '>'"},
    {"an unclosed comment", "<!-- ", "<!-- GCan not find '>'"},
    {"a tag cut by the closing tag around it", "<a><b </a>", "<b <Can not find '>'"},
    {"two levels down", "<a><b><c</b></a>", "<c<Can not find '>'"},
    {"an unclosed closing tag", "<b/><a>x</a ", "<a>x</a GCan not find '>'"},
    {"one cut by the closing tag around it", "<a><b></b</a>", "<b></b<Can not find '>'"},
    {"one cut by it, and another behind", "<a><b></b</a></a>", "<b></b<Can not find '>'"},
    {"errors inside come first", "<a><b></a", "<b>Can not find </element>"},
};

TEST(XmlParsing, B34_MessageHoldsTheCharacterBehindTheText)
{
    for (const GuardCase& c : kGuardCases) {
        EXPECT_EQ(Parsed(c.text, 'G').Message(), c.message) << c.reason;
    }
}

TEST(XmlParsing, B34_MessageOfATextUpToItsNulEndsThere)
{
    CXmlElement element;
    EXPECT_EQ(test::MessageOf([&] { element.Parse("<a"); }), "<a");
    // The text goes on behind the NUL, where szWhat does not reach.
    try {
        element.Parse("<a");
        FAIL();
    } catch (const CXmlException& e) {
        EXPECT_STREQ(e.szWhat() + 3, "Can not find '>'");
    }
}

TEST(XmlParsing, FailureLeavesWhatStoodBeforeIt)
{
    Expect({
        {"brothers and children", "<a/><!--1--><b><c/><d x=\"1\"><e/><f", "a() '<!--1-->' b()",
         "<b>Can not find </element>"},
        {"the open elements and what they have", "<b><c/><d x=\"1\"><e/><f></d></b>",
         "b(c() d x=\"1\"(e() f()))", "<f>Can not find </element>"},
        {"elements whose closing tag is cut", "<a><b/></a", "a(b())",
         "<a><b/></a\nCan not find '>'"},
    });
}

TEST(XmlParsing, OneTextAfterTheOtherIsAppended)
{
    CXmlElement element;
    element.Parse("<a/>");
    element.Parse("<b/><c/>");
    EXPECT_EQ(Dump(element), "a() b() c()");
}

TEST(XmlParsing, FailingTextIsAppendedAsFarAsItGoes)
{
    CXmlElement element;
    element.Parse("<a></a>");
    EXPECT_EQ(test::MessageOf([&] { element.Parse("<b/><c>"); }), "<c>Can not find </element>");
    element.Parse("<d/>");
    EXPECT_EQ(Dump(element), "a() b() c() d()");
}

TEST(XmlParsing, NodesKnowTheirParents)
{
    Parsed parsed("<a><b><!--1--></b></a>");
    CXmlElement& a = parsed.Child(0);
    CXmlNode& b = a.cAt(0);
    EXPECT_EQ(a.pParent(), &parsed.document);
    EXPECT_EQ(b.pParent(), &a);
    EXPECT_EQ(static_cast<CXmlElement&>(b).cAt(0).pParent(), &b);
}

TEST(XmlParsing, EmptyAndReversedRangesDoNothing)
{
    const char* const text = "<a/>";
    CXmlElement element;
    element.Parse(text, text);
    element.Parse(text + 4, text);
    element.Parse("");
    EXPECT_EQ(element.tCount(), 0U);
}

TEST(XmlParsing, RangeIsReadAndNothingBehindIt)
{
    const std::string text = "<a/><b/>";
    CXmlElement element;
    element.Parse(text.data(), text.data() + 4);
    EXPECT_EQ(Dump(element), "a()");
}

TEST(XmlParsing, ParsedIsTheContentOfTheElementNotItsAttributes)
{
    CXmlElement element;
    element = "top";
    element["x"] = "1";
    element.Parse("<a/>");
    EXPECT_EQ(element.strToXml(), "\n<top x=\"1\">\n<a/>\n</top>");
}

} // namespace
} // namespace Vorlan
