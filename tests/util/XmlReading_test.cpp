// A file is told as its tree would be walked, and fails as its tree fails.
#include "util/XmlReading.h"

#include "XmlDocument.h"
#include "support/Sanitized.h"
#include "support/Support.h"
#include "util/RandomXml.h"
#include "util/XmlScannerEvents.h"

namespace Vorlan {
namespace {

using test::Random;
using test::TempFolder;
using test::TwinEvents;
using test::XmlEvents;

class Listener : public XmlListener {
public:
    void Begin(std::string_view name, std::string_view attributes) override
    {
        events.push_back(test::BeginEvent(name, attributes));
    }
    void End() override { events.emplace_back("end"); }
    void Restart() override
    {
        events.clear();
        ++restarts;
    }

    XmlEvents events;
    int restarts = 0;
};

struct Reading {
    XmlEvents events;
    int restarts = 0;
    std::string failure;
};

Reading Read(const std::string& path)
{
    Listener listener;
    std::string failure;
    try {
        ReadXmlFile(path, listener);
    } catch (const CXmlException& e) {
        failure = e.szWhat();
    }
    return {listener.events, listener.restarts, failure};
}

std::string FailureOfTree(const std::string& path)
{
    try {
        CXmlDocument().ParseFile(path);
    } catch (const CXmlException& e) {
        return e.szWhat();
    }
    return {};
}

struct Counts {
    int quick = 0;   ///< read in one pass
    int careful = 0; ///< told again from the tree
    int failed = 0;
};

/// Text mode, as the twin is to see it.
std::string Plain(std::string text)
{
    if (text.compare(0, 3, "\xEF\xBB\xBF") == 0) {
        text.erase(0, 3);
    }
    for (std::size_t place = 0; (place = text.find("\r\n", place)) != std::string::npos;) {
        text.erase(place++, 1);
    }
    return text;
}

template <typename MakeText>
Counts Compare(std::uint64_t seed, int count, MakeText makeText)
{
    const TempFolder folder;
    Random random(seed);
    Counts counts;
    for (int i = 0; i < count / test::kRandomShare && !testing::Test::HasFailure(); ++i) {
        const std::string text = makeText(random);
        const std::string path = folder.Write("file.xml", text);
        const Reading reading = Read(path);
        const TwinEvents twin(Plain(text), false);
        EXPECT_EQ(reading.failure, twin.failure) << testing::PrintToString(text);
        EXPECT_EQ(reading.failure, FailureOfTree(path)) << testing::PrintToString(text);
        if (!reading.failure.empty()) {
            ++counts.failed;
            continue;
        }
        EXPECT_EQ(reading.events, twin.events) << testing::PrintToString(text);
        EXPECT_LE(reading.restarts, 1);
        ++(reading.restarts == 0 ? counts.quick : counts.careful);
    }
    return counts;
}

// ---- Against the twin -----------------------------------------------------

TEST(XmlReading, TellsDocumentsInOrderAsTheTwin)
{
    const Counts counts =
        Compare(1, 3000, [](Random& random) { return test::RandomXmlContent(random, 0); });
    EXPECT_GE(counts.quick, 2000 / test::kRandomShare);
    EXPECT_GE(counts.careful, 5 / test::kRandomShare);
}

TEST(XmlReading, TellsSpoiledDocumentsAsTheTwinOrFailsAlike)
{
    const Counts counts = Compare(2, 6000, [](Random& random) {
        return test::SpoiledXml(random, test::RandomXmlContent(random, 0));
    });
    EXPECT_GE(counts.quick, 200 / test::kRandomShare);
    EXPECT_GE(counts.careful, 100 / test::kRandomShare);
    EXPECT_GE(counts.failed, 1000 / test::kRandomShare);
}

TEST(XmlReading, TellsLooseTagsAsTheTwinOrFailsAlike)
{
    const Counts counts = Compare(3, 6000, test::RandomXmlTags);
    EXPECT_GE(counts.careful, 100 / test::kRandomShare);
    EXPECT_GE(counts.failed, 1000 / test::kRandomShare);
}

TEST(XmlReading, TellsLooseTokensAsTheTwinOrFailsAlike)
{
    const Counts counts = Compare(4, 6000, test::RandomXmlTokens);
    EXPECT_GE(counts.quick, 100 / test::kRandomShare);
    EXPECT_GE(counts.failed, 1000 / test::kRandomShare);
}

TEST(XmlReading, TellsDeepDocumentsAsTheTwin)
{
    const Counts counts = Compare(5, 300, [](Random& random) {
        const std::string text = test::RandomDeepXml(random);
        return random.OneIn(2) ? text : text.substr(6); // behind "<?</?>"
    });
    EXPECT_EQ(counts.quick + counts.careful, 300 / test::kRandomShare);
    EXPECT_GE(counts.careful, 100 / test::kRandomShare);
}

// ---- The two ways ---------------------------------------------------------

TEST(XmlReading, AUsualDocumentIsToldOnce)
{
    const TempFolder folder;
    const Reading reading = Read(folder.Write("f", "<?xml?>\n<a x=\"1\">\n<b/></a>\n"));
    EXPECT_EQ(reading.events, (XmlEvents{"begin a x=\"1\"", "begin b", "end", "end"}));
    EXPECT_EQ(reading.restarts, 0);
}

// "<a>" ends where "</a" stands first, so "<ab>" in it has no end.
TEST(XmlReading, B28_ANameThatBeginsAsAnOpenOneFailsAsItsTree)
{
    const TempFolder folder;
    const Reading reading = Read(folder.Write("f", "<a><ab>t</ab><c/></a>"));
    EXPECT_EQ(reading.failure, FailureOfTree(folder.PathOf("f")));
    EXPECT_EQ(reading.failure, "<ab>Can not find </element>");
}

TEST(XmlReading, WhatNeedsCareIsToldAgainFromTheStart)
{
    const TempFolder folder;
    const Reading reading = Read(folder.Write("f", "<r><x/><a><!-- </b> --></a></r>"));
    EXPECT_EQ(reading.failure, "");
    EXPECT_EQ(reading.events, (XmlEvents{"begin r", "begin x", "end", "begin a", "end", "end"}));
    EXPECT_EQ(reading.restarts, 1);
}

TEST(XmlReading, CarriageReturnsAndAMarkGo)
{
    const TempFolder folder;
    const Reading reading =
        Read(folder.Write("f", "\xEF\xBB\xBF<a\r\nx=\"1\r\n2\r3\">\r\n</a>\r\n"));
    EXPECT_EQ(reading.events, (XmlEvents{"begin a x=\"1\n2\r3\"", "end"}));
}

// ---- Large files ----------------------------------------------------------

/// Many elements, so that the parts of the file begin anywhere in them.
std::string ManyElements(std::size_t count, const std::string& lineEnd)
{
    std::string text = "<run>" + lineEnd;
    for (std::size_t i = 0; i < count; ++i) {
        text += "<query number=\"" + std::to_string(i) + "\"" + lineEnd + " text=\"<,\">" + lineEnd;
        text += "</query>" + lineEnd;
    }
    return text + "</run>" + lineEnd;
}

TEST(XmlReading, LargeFilesAreToldInOnePass)
{
    const TempFolder folder;
    for (const std::string lineEnd : {"\n", "\r\n"}) {
        // A blank more moves the borders of the parts to other places.
        for (std::size_t shift = 0; shift < 3; ++shift) {
            const std::string text = std::string(shift, ' ') + ManyElements(60000, lineEnd);
            ASSERT_GT(text.size(), 2U * 1024 * 1024);
            const Reading reading = Read(folder.Write("large.xml", text));
            EXPECT_EQ(reading.failure, "");
            EXPECT_EQ(reading.restarts, 0);
            ASSERT_EQ(reading.events.size(), 120002U);
            EXPECT_EQ(reading.events[1], "begin query number=\"0\" text=\"<,\"");
        }
    }
}

TEST(XmlReading, ALargeFileThatIsCutFailsAsItsTree)
{
    const TempFolder folder;
    const std::string text = ManyElements(60000, "\n");
    for (const std::size_t less : {1U, 7U, 8U, 30U}) {
        const std::string path = folder.Write("cut.xml", text.substr(0, text.size() - less));
        const Reading reading = Read(path);
        EXPECT_EQ(reading.failure, FailureOfTree(path)) << less;
        EXPECT_EQ(reading.failure.empty(), less == 1) << less;
    }
}

TEST(XmlReading, OneMarkupLargerThanAllPartsIsTold)
{
    const TempFolder folder;
    const std::string value(5U * 1024 * 1024, 'v');
    const Reading reading = Read(folder.Write("f", "<a x=\"" + value + "\"><b/></a>"));
    EXPECT_EQ(reading.restarts, 0);
    ASSERT_EQ(reading.events.size(), 4U);
    EXPECT_TRUE(reading.events[0] == "begin a x=\"" + value + "\"");
}

TEST(XmlReading, WhatCannotBeOpenedFailsAsItsTree)
{
    const TempFolder folder;
    for (const std::string& path : {folder.PathOf("missing"), folder.Path(), std::string()}) {
        const Reading reading = Read(path);
        EXPECT_EQ(reading.failure, "Can not open file!") << path;
        EXPECT_EQ(reading.events, XmlEvents()) << path;
    }
}

TEST(XmlReading, AnEmptyFileTellsNothing)
{
    const TempFolder folder;
    const Reading reading = Read(folder.Write("f", ""));
    EXPECT_EQ(reading.failure, "");
    EXPECT_EQ(reading.restarts, 0);
    EXPECT_EQ(reading.events, XmlEvents());
}

} // namespace
} // namespace Vorlan
