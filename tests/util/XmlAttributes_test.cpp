#include "support/Support.h"
#include "util/XmlText.h"

namespace Vorlan {
namespace {

using std::string_literals::operator""s;

struct AttributesCase {
    const char* reason;
    std::string text;
    std::string xml;
    std::size_t size;
};

const AttributesCase kAttributesCases[] = {
    {"nothing", "", "", 0},
    {"blanks", " \t\n\r", "", 0},
    {"one", "x=\"1\"", " x=\"1\"", 1},
    {"blanks around the equals sign", "x \n=\t\"1\"", " x=\"1\"", 1},
    {"in the order of their names", "b=\"1\" a=\"2\"", " a=\"2\" b=\"1\"", 2},
    {"bytes are compared, not letters", "a=\"1\" B=\"2\" \xE4=\"3\" ab=\"4\"",
     " B=\"2\" a=\"1\" ab=\"4\" \xE4=\"3\"", 4},
    {"nothing between them", "a=\"1\"b=\"2\"", " a=\"1\" b=\"2\"", 2},
    {"a name that occurs again replaces the value", "a=\"1\" b=\"2\" a=\"3\"", " a=\"3\" b=\"2\"",
     2},
    {"a value as it stands", "a=\" &lt;>/='\n\"", " a=\" &lt;>/='\n\"", 1},
    {"an empty value", "a=\"\"", " a=\"\"", 1},
    {"a NUL in both", "a\0=\"\0\""s, " a\0=\"\0\""s, 1},
    {"single quotes are not seen", "a='1'", "", 0},
    {"single quotes in front of double ones", "a='1' b=\"2\"", " a=\"2\"", 1},
    {"anything in front of the value", "a=x=y\"1\"", " a=\"1\"", 1},
    {"an empty name", "=\"1\"", " =\"1\"", 1},
    {"a name of blanks is empty", "a=\"1\" \n=\"2\"", " =\"2\" a=\"1\"", 2},
    {"a name of several words", "x y=\"1\"", " x y=\"1\"", 1},
    {"a word without a value goes to the name", "x, 'z' y=\"1\"", " x, 'z' y=\"1\"", 1},
    {"quotes without an equals sign", "\"1\" a=\"2\"", " \"1\" a=\"2\"", 1},
    {"no equals sign", "a \"1\"", "", 0},
    {"no quote", "a=\"1\" b=2", " a=\"1\"", 1},
    {"no second quote", "a=\"1\" b=\"2", " a=\"1\"", 1},
    {"other blanks belong to the name", "\va\f=\"1\"", " \va\f=\"1\"", 1},
};

TEST(CXmlAttributes, TextsAndTheirAttributes)
{
    for (const AttributesCase& c : kAttributesCases) {
        CXmlAttributes attributes;
        attributes.Parse(c.text.data(), c.text.data() + c.text.size());
        EXPECT_EQ(attributes.strToXml(), c.xml) << c.reason;
        EXPECT_EQ(attributes.tSize(), c.size) << c.reason;
    }
}

// The attributes of a parsed element stay in the text until they are asked for.
TEST(CXmlAttributes, TagsAndTheirAttributes)
{
    for (const AttributesCase& c : kAttributesCases) {
        if (c.text.find('>') == std::string::npos) {
            test::Parsed parsed("<e " + c.text + " />");
            EXPECT_EQ(parsed.Child(0).strToXml(), "\n<e" + c.xml + "/>") << c.reason;
            test::Parsed open("<e\n" + c.text + "></e>");
            EXPECT_EQ(open.Child(0).strToXml(), "\n<e" + c.xml + "/>") << c.reason;
        }
    }
}

TEST(CXmlAttributes, B80_ValueIsTheNextTextInDoubleQuotes)
{
    test::Parsed parsed("<e x='1' y=\"2\" z=3 w=\"4\"/>");
    CXmlElement& element = parsed.Child(0);
    EXPECT_EQ(element.strToXml(), "\n<e x=\"2\" z=\"4\"/>");
    EXPECT_EQ(element["x"], "2");
    EXPECT_EQ(element["y"], "") << "its value went to the one before";
}

TEST(CXmlAttributes, B88_EntitiesStayInBothDirections)
{
    test::Parsed parsed("<e a=\"&quot;&gt;&#65;\"/>");
    CXmlElement& element = parsed.Child(0);
    EXPECT_EQ(element["a"], "&quot;&gt;&#65;");
    element["b"] = "<\"&";
    EXPECT_EQ(element.strToXml(), "\n<e a=\"&quot;&gt;&#65;\" b=\"<\"&\"/>");
}

TEST(CXmlAttributes, ParseAddsAndReplaces)
{
    const std::string first = "a=\"1\" b=\"2\"";
    const std::string second = "b=\"3\" c=\"4\"";
    CXmlAttributes attributes;
    attributes.Parse(first.data(), first.data() + first.size());
    attributes.Parse(second.data(), second.data() + second.size());
    attributes.Parse(second.data(), second.data());
    attributes.Parse(second.data() + 3, second.data());
    EXPECT_EQ(attributes.strToXml(), " a=\"1\" b=\"3\" c=\"4\"");
}

TEST(CXmlAttributes, ParsedTextMayLieInAValueThatGoes)
{
    // Values long enough for memory of their own.
    const std::string a(100, 'a');
    const std::string b(200, 'b');
    const std::string text = "a=\"" + a + "\" b=\"" + b + "\" c=\"" + a + "\" d=\"4\"";
    CXmlAttributes attributes;
    for (const char* const name : {"a", "b"}) {
        std::string& value = attributes.strGetValue(name);
        value = text;
        attributes.Parse(value.data(), value.data() + value.size());
        EXPECT_EQ(attributes.strToXml(), " " + text) << name;
    }
}

TEST(CXmlAttributes, B33_LookingForAnAttributeEntersIt)
{
    CXmlAttributes attributes;
    EXPECT_EQ(attributes.strGetValue("a"), "");
    EXPECT_EQ(attributes.tSize(), 1U);
    EXPECT_EQ(attributes.strToXml(), " a=\"\"");
    test::Parsed parsed("<e x=\"1\"/>");
    EXPECT_EQ(parsed.Child(0)["b"], "");
    EXPECT_EQ(parsed.Child(0).strGetValue("a"), "");
    EXPECT_EQ(parsed.Child(0).strToXml(), "\n<e a=\"\" b=\"\" x=\"1\"/>");
}

TEST(CXmlAttributes, ValuesCanBeChangedThroughTheReference)
{
    test::Parsed parsed("<e a=\"1\" b=\"2\"/>");
    CXmlElement& element = parsed.Child(0);
    std::string& a = element["a"];
    a += "x";
    EXPECT_EQ(&element.strGetValue("a"), &a);
    element["c"] = "\"";
    EXPECT_EQ(element.strToXml(), "\n<e a=\"1x\" b=\"2\" c=\"\"\"/>") << "nothing is escaped";
}

TEST(CXmlAttributes, ClearRemovesAll)
{
    const std::string text = "a=\"1\"";
    CXmlAttributes attributes;
    attributes.Clear();
    attributes.Parse(text.data(), text.data() + text.size());
    attributes.Clear();
    EXPECT_EQ(attributes.tSize(), 0U);
    EXPECT_EQ(attributes.strGetValue("a"), "");
}

TEST(CXmlAttributes, CopiesAreIndependent)
{
    const std::string text = "a=\"1\"";
    CXmlAttributes source;
    source.Parse(text.data(), text.data() + text.size());
    CXmlAttributes copy(source);
    source.strGetValue("a") = "2";
    EXPECT_EQ(copy.strToXml(), " a=\"1\"");
    copy = source;
    source.Clear();
    EXPECT_EQ(copy.strToXml(), " a=\"2\"");
    const CXmlAttributes& same = copy;
    copy = same;
    EXPECT_EQ(copy.strToXml(), " a=\"2\"");
    copy = CXmlAttributes();
    EXPECT_EQ(copy.tSize(), 0U);
}

TEST(CXmlAttributes, CopiesOfParsedElementsAreIndependent)
{
    CXmlElement kept;
    {
        test::Parsed parsed("<e a=\"1\" b=\"2\"/>");
        const CXmlElement copy(parsed.Child(0));
        parsed.Child(0)["a"] = "3";
        EXPECT_EQ(copy.strToXml(), "\n<e a=\"1\" b=\"2\"/>");
        kept = parsed.Child(0);
        parsed.Child(0)["b"] = "4";
    }
    EXPECT_EQ(kept.strToXml(), "\n<e a=\"3\" b=\"2\"/>");
    EXPECT_EQ(kept["b"], "2");
}

/// Attributes n0 to n<count - 1> with their numbers; every tenth occurs twice,
/// and its last value counts.
std::string ManyAttributes(int count)
{
    std::string text;
    for (int i = 0; i < count; i += 10) {
        text += " n" + std::to_string(i) + "=\"former\"";
    }
    for (int i = 0; i < count; ++i) {
        text += " n" + std::to_string(i) + "=\"" + std::to_string(i) + "\"";
    }
    return text;
}

// Around the length from which on all are entered with the first question.
TEST(CXmlAttributes, ManyAreAskedForOneAfterTheOther)
{
    for (const int count : {10, 200, 300, 350, 400, 5000}) {
        test::Parsed parsed("<e" + ManyAttributes(count) + "></e>");
        CXmlElement& element = parsed.Child(0);
        const std::string before = element.strToXml();
        element["n3"] = "3";
        std::vector<const std::string*> values;
        for (int i = count; i-- > 0;) {
            values.push_back(&element["n" + std::to_string(i)]);
            ASSERT_EQ(*values.back(), std::to_string(i)) << count;
        }
        EXPECT_EQ(element.strToXml(), before) << count;
        for (int i = 0; i < count; ++i) {
            ASSERT_EQ(values[static_cast<std::size_t>(i)],
                      &element.strGetValue("n" + std::to_string(count - 1 - i)));
        }
    }
}

TEST(CXmlAttributes, ChangedValueOfManyStandsBeforeTheText)
{
    for (const int count : {10, 5000}) {
        test::Parsed parsed("<e" + ManyAttributes(count) + "></e>");
        CXmlElement copy(parsed.Child(0));
        parsed.Child(0)["n5"] = "changed";
        EXPECT_EQ(parsed.Child(0)["n0"], "0");
        EXPECT_EQ(parsed.Child(0)["n5"], "changed");
        EXPECT_EQ(copy["n5"], "5");
    }
}

} // namespace
} // namespace Vorlan
