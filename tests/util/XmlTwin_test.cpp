// The XML model makes the trees, the messages and the texts of its plain twin.
#include <map>

#include "support/Sanitized.h"
#include "support/Support.h"
#include "support/XmlTwin.h"
#include "util/RandomXml.h"

namespace Vorlan {
namespace {

using test::Random;
using test::TwinNode;

/// A tree and its twin, fed with the same texts.
class Pair {
public:
    /// guard is the character behind the text. Gives the message of both.
    std::string Parse(const std::string& text, char guard)
    {
        const std::string behind = text + guard;
        const std::string expected = test::TwinParse(text, guard, twin_);
        std::string seen;
        try {
            document_.Parse(behind.data(), behind.data() + text.size());
        } catch (const CXmlException& e) {
            seen = e.szWhat();
        }
        // A message reads as far as its first NUL.
        EXPECT_EQ(seen, expected.c_str()) << testing::PrintToString(behind);
        EXPECT_EQ(test::DifferenceOf(document_, nullptr, twin_), "")
            << testing::PrintToString(behind);
        EXPECT_EQ(document_.strToXml(), TwinXml(twin_)) << testing::PrintToString(behind);
        EXPECT_EQ(test::WrongAnswerOf(document_, twin_), "") << testing::PrintToString(behind);
        return expected;
    }

private:
    CXmlDocument document_;
    TwinNode twin_;
};

/// How a text ended, without the markup that the message quotes.
std::string KindOf(const std::string& message)
{
    const std::size_t place = message.find("Can not find '>'");
    const std::size_t other = message.find("Can not find </element>");
    return message.substr(place != std::string::npos   ? place
                          : other != std::string::npos ? other
                                                       : 0);
}

using Counts = std::map<std::string, int>;

/// Compares count texts and gives how often they ended in which way.
template <typename MakeText>
Counts Compare(std::uint64_t seed, int count, MakeText makeText)
{
    Random random(seed);
    Counts counts;
    for (int i = 0; i < count / test::kRandomShare && !testing::Test::HasFailure(); ++i) {
        const std::string text = makeText(random);
        Pair pair;
        ++counts[KindOf(pair.Parse(text, random.OneOf("\n>x<\"")))];
    }
    return counts;
}

/// The ways to end that the texts must have met, or they prove little.
void ExpectAllEnds(Counts counts, int least)
{
    EXPECT_EQ(counts.size(), 5U);
    for (const char* const end : {"", "Can not find '>'", "Can not find </element>",
                                  "Can not find \"]]>\"", "DOCTYPE can not find \"]>\""}) {
        EXPECT_GE(counts[end], least / test::kRandomShare) << end;
    }
}

TEST(XmlTwin, AgreesOnDocumentsInOrder)
{
    Counts counts =
        Compare(1, 40000, [](Random& random) { return test::RandomXmlContent(random, 0); });
    EXPECT_GE(counts[""], 20000 / test::kRandomShare);
}

TEST(XmlTwin, AgreesOnSpoiledDocuments)
{
    const Counts counts = Compare(2, 80000, [](Random& random) {
        return test::SpoiledXml(random, test::RandomXmlContent(random, 0));
    });
    ExpectAllEnds(counts, 200);
}

TEST(XmlTwin, AgreesOnLooseTokens)
{
    ExpectAllEnds(Compare(3, 80000, test::RandomXmlTokens), 200);
}

TEST(XmlTwin, AgreesOnLooseTags)
{
    Counts counts = Compare(11, 150000, test::RandomXmlTags);
    EXPECT_GE(counts[""], 5000 / test::kRandomShare);
    EXPECT_GE(counts["Can not find '>'"], 5000 / test::kRandomShare);
    EXPECT_GE(counts["Can not find </element>"], 5000 / test::kRandomShare);
}

TEST(XmlTwin, AgreesOnTheBytesOfMarkup)
{
    Counts counts = Compare(4, 80000, [](Random& random) {
        return random.Text("<<<>>>//--!?ab=\" \n", random.Below(24));
    });
    EXPECT_GE(counts[""], 200 / test::kRandomShare);
    EXPECT_GE(counts["Can not find '>'"], 200 / test::kRandomShare);
    EXPECT_GE(counts["Can not find </element>"], 200 / test::kRandomShare);
}

// So deep that the closing tags are found through their index.
TEST(XmlTwin, AgreesOnDeepDocuments)
{
    Counts counts = Compare(5, 1500, test::RandomDeepXml);
    EXPECT_EQ(counts[""], 1500 / test::kRandomShare);
}

TEST(XmlTwin, AgreesOnSpoiledDeepDocuments)
{
    Counts counts = Compare(6, 3000, [](Random& random) {
        return test::SpoiledXml(random, test::RandomDeepXml(random));
    });
    EXPECT_GE(counts[""], 300 / test::kRandomShare);
    EXPECT_GE(counts["Can not find </element>"], 300 / test::kRandomShare);
    EXPECT_GE(counts["Can not find '>'"], 30 / test::kRandomShare);
}

TEST(XmlTwin, AgreesWhenOneTextIsParsedBehindTheOther)
{
    Random random(7);
    for (int i = 0; i < 3000 && !HasFailure(); ++i) {
        Pair pair;
        for (int text = 0; text < 3; ++text) {
            pair.Parse(test::SpoiledXml(random, test::RandomXmlContent(random, 0)), '\n');
        }
    }
}

TEST(XmlTwin, ReadsBackWhatItWrites)
{
    Random random(8);
    int compared = 0;
    for (int i = 0; i < 20000 && !HasFailure(); ++i) {
        const std::string text = test::RandomXmlContent(random, 0);
        TwinNode twin;
        if (!TwinParse(text, '\n', twin).empty()) {
            continue;
        }
        CXmlDocument document;
        document.Parse(text.data(), text.data() + text.size());
        const std::string written = document.strToXml();
        TwinNode twinOfWritten;
        if (TwinParse(written, '\n', twinOfWritten).empty()) {
            CXmlDocument again;
            again.Parse(written.c_str());
            ASSERT_EQ(test::DifferenceOf(again, nullptr, twinOfWritten), "") << text;
            ++compared;
        }
    }
    EXPECT_GE(compared, 5000);
}

/// Whole tags, pieces of them, and the bytes they are made of.
std::string RandomAttributeText(Random& random)
{
    std::string text = test::RandomXmlAttributes(random) + test::RandomXmlAttributes(random);
    if (random.OneIn(2)) {
        text = test::SpoiledXml(random, text);
    }
    return random.OneIn(4) ? random.Text("ab=\"' \t\n\r<>/", random.Below(20)) : text;
}

std::string Xml(const std::map<std::string, std::string>& attributes)
{
    TwinNode element;
    element.type = XML_ELEMENT;
    element.attributes = attributes;
    const std::string xml = TwinXml(element);
    return xml.substr(2, xml.size() - 4);
}

TEST(XmlTwin, AgreesOnAttributes)
{
    Random random(9);
    for (int i = 0; i < 50000; ++i) {
        CXmlAttributes attributes;
        std::map<std::string, std::string> twin;
        for (std::size_t texts = 1 + random.Below(2); texts > 0; --texts) {
            const std::string text = RandomAttributeText(random);
            attributes.Parse(text.data(), text.data() + text.size());
            test::TwinParseAttributes(text, twin);
        }
        ASSERT_EQ(attributes.strToXml(), Xml(twin));
        ASSERT_EQ(attributes.tSize(), twin.size()) << attributes.strToXml();
        for (const auto& [name, value] : twin) {
            ASSERT_EQ(attributes.strGetValue(name), value) << name;
        }
        ASSERT_EQ(attributes.tSize(), twin.size());
    }
}

// Attributes that were parsed with their element stay in its text until they
// are asked for, some before and some after others were changed.
TEST(XmlTwin, AgreesOnAttributesAskedForAndChangedInAnyOrder)
{
    Random random(10);
    for (int i = 0; i < 20000 && !HasFailure(); ++i) {
        std::string inner = RandomAttributeText(random);
        inner.erase(std::remove(inner.begin(), inner.end(), '>'), inner.end());
        CXmlElement parent;
        const std::string text = "<e " + inner + " />";
        parent.Parse(text.data(), text.data() + text.size());
        auto& element = static_cast<CXmlElement&>(parent.cAt(0));
        std::map<std::string, std::string> twin;
        test::TwinParseAttributes(inner, twin);
        for (std::size_t steps = random.Below(6); steps > 0; --steps) {
            const std::string name = test::RandomXmlName(random);
            ASSERT_EQ(element[name], twin[name]) << text;
            if (random.OneIn(3)) {
                element.strGetValue(name) = twin[name] = random.Text("xyz", 2);
            }
        }
        ASSERT_EQ(element.strToXml(), "\n<e" + Xml(twin) + "/>") << text;
    }
}

} // namespace
} // namespace Vorlan
