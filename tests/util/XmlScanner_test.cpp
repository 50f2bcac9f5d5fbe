// The quick way tells what the plain twin finds, or gives up.
#include "util/XmlScanner.h"

#include <memory>

#include "support/Sanitized.h"
#include "support/Support.h"
#include "util/RandomXml.h"
#include "util/XmlScannerEvents.h"

namespace Vorlan {
namespace {

using test::Random;
using test::TwinEvents;
using test::XmlEvents;

class Recorder {
public:
    void Begin(std::string_view name, const char* attributes, const char* attributesEnd)
    {
        events.push_back(test::BeginEvent(name, xml::View(attributes, attributesEnd)));
    }
    void End() { events.emplace_back("end"); }
    void Unknown(std::string_view markup) { events.push_back("markup " + std::string(markup)); }

    XmlEvents events;
};

struct Scan {
    bool isRead = false; ///< else the scanner gave up
    XmlEvents events;
};

/// Hands the text over in parts of these sizes, the last size again and again.
/// Each part is a new piece of memory, so that reading beyond it is seen.
Scan ScanInParts(const std::string& text, const std::vector<std::size_t>& sizes)
{
    Recorder recorder;
    XmlScanner<Recorder> scanner(recorder);
    std::string rest;
    std::size_t place = 0;
    for (std::size_t part = 0;; ++part) {
        const std::size_t wanted = sizes[std::min(part, sizes.size() - 1)];
        const std::size_t size = std::min(wanted, text.size() - place);
        const bool isLast = place + size == text.size();
        const std::string fresh = text.substr(place, size);
        const std::size_t held = rest.size() + size;
        const std::unique_ptr<char[]> memory(new char[held]);
        std::copy(fresh.begin(), fresh.end(), std::copy(rest.begin(), rest.end(), memory.get()));
        place += size;
        const char* const begin = memory.get();
        const char* const end = begin + held;
        const char* const next = scanner.Read(begin, end, isLast);
        if (next == nullptr) {
            return {false, recorder.events};
        }
        if (isLast) {
            EXPECT_EQ(next, end) << testing::PrintToString(text);
            return {true, recorder.events};
        }
        rest.assign(next, end);
    }
}

Scan ScanWhole(const std::string& text)
{
    return ScanInParts(text, {text.size()});
}

/// Compares the whole scan with the twin; gives whether the scanner read it.
bool AgreesWithTwin(const std::string& text)
{
    const Scan scan = ScanWhole(text);
    if (scan.isRead) {
        const TwinEvents twin(text, true);
        EXPECT_EQ(twin.failure, "") << testing::PrintToString(text);
        EXPECT_EQ(scan.events, twin.events) << testing::PrintToString(text);
    }
    return scan.isRead;
}

template <typename MakeText>
int CountRead(std::uint64_t seed, int count, MakeText makeText)
{
    Random random(seed);
    int read = 0;
    for (int i = 0; i < count / test::kRandomShare && !testing::Test::HasFailure(); ++i) {
        read += AgreesWithTwin(makeText(random)) ? 1 : 0;
    }
    return read;
}

std::string RandomDocument(Random& random)
{
    return test::RandomXmlContent(random, 0);
}

std::string SpoiledDocument(Random& random)
{
    return test::SpoiledXml(random, test::RandomXmlContent(random, 0));
}

// ---- Whole texts ----------------------------------------------------------

TEST(XmlScanner, TellsWhatTheTwinFindsInDocumentsInOrder)
{
    EXPECT_GE(CountRead(1, 20000, RandomDocument), 15000 / test::kRandomShare);
}

TEST(XmlScanner, NeverReadsASpoiledDocumentOtherwiseThanTheTwin)
{
    const int read = CountRead(2, 40000, SpoiledDocument);
    EXPECT_GE(read, 1000 / test::kRandomShare);
    EXPECT_LE(read, 39000 / test::kRandomShare);
}

TEST(XmlScanner, NeverReadsLooseTokensOtherwiseThanTheTwin)
{
    EXPECT_GE(CountRead(3, 40000, test::RandomXmlTokens), 200 / test::kRandomShare);
}

TEST(XmlScanner, NeverReadsLooseTagsOtherwiseThanTheTwin)
{
    EXPECT_GE(CountRead(4, 100000, test::RandomXmlTags), 200 / test::kRandomShare);
}

TEST(XmlScanner, NeverReadsTheBytesOfMarkupOtherwiseThanTheTwin)
{
    const auto bytes = [](Random& random) {
        return random.Text("<<<>>>//--!?ab=\" \n", random.Below(24));
    };
    EXPECT_GE(CountRead(5, 40000, bytes), 200 / test::kRandomShare);
}

TEST(XmlScanner, NeverReadsDeepDocumentsOtherwiseThanTheTwin)
{
    CountRead(6, 500, [](Random& random) {
        const std::string text = test::RandomDeepXml(random).substr(6); // behind "<?</?>"
        return random.OneIn(2) ? text : test::SpoiledXml(random, text);
    });
}

struct GivenUp {
    const char* reason;
    std::string text;
};

const GivenUp kGivenUp[] = {
    {"an open element's name begins the name of a closing tag", "<a><ab></ab></a>"},
    {"so does that of the root", "<ms><x><msms></msms></x></ms>"},
    {"a closing tag of another element", "<a><b></a></b>"},
    {"a closing tag too many", "<a></a></a>"},
    {"a closing tag in an attribute", "<a x=\"</a\"></a>"},
    {"a closing tag in a comment", "<a><!-- </a --></a>"},
    {"a closing tag in data", "<a><![CDATA[</a>]]></a>"},
    {"a closing tag in a closing tag", "<a></a</a>"},
    {"a tag without a name", "<a>< b></a>"},
    {"an element without an end", "<a>"},
    {"a tag without an end", "<a></a><b"},
    {"a closing tag without an end", "<a></a"},
    {"data without an end", "<a><![CDATA[x></a>"},
    {"a DOCTYPE without an end", "<!DOCTYPE a [<x>"},
    {"the last character opens a tag", "<a></a><"},
};

TEST(XmlScanner, GivesUpWhatIsToBeReadWithCare)
{
    for (const GivenUp& row : kGivenUp) {
        EXPECT_FALSE(ScanWhole(row.text).isRead) << row.reason;
        for (std::size_t size = 1; size <= row.text.size(); ++size) {
            EXPECT_FALSE(ScanInParts(row.text, {size}).isRead) << row.reason << ", " << size;
        }
    }
}

struct Told {
    const char* reason;
    std::string text;
    XmlEvents events;
};

const Told kTold[] = {
    {"nothing", "", {}},
    {"text makes nothing", "a > b \" /", {}},
    {"an element", "<a></a>", {"begin a", "end"}},
    {"one that closes itself", "<a x=\"1\"/>", {"begin a x=\"1\"", "end"}},
    {"one in another", "<a>t<b/>t</a>", {"begin a", "begin b", "end", "end"}},
    {"a blank in a closing tag", "<a></a >", {"begin a", "end"}},
    {"a closing tag ends with more letters", "<a></ab>", {"begin a", "end"}},
    {"an attribute over two lines", "<a x=\"1\n2\"/>", {"begin a x=\"1\n2\"", "end"}},
    {"markup", "<?x?><!--c--><!D>", {"markup <?x?>", "markup <!--c-->", "markup <!D>"}},
    {"data with a tag", "<![CDATA[<b>]]>", {"markup <![CDATA[<b>]]>"}},
    {"the same name twice", "<a/><a/>", {"begin a", "end", "begin a", "end"}},
};

TEST(XmlScanner, TellsElementsAndMarkupInTheirOrder)
{
    for (const Told& row : kTold) {
        const Scan scan = ScanWhole(row.text);
        EXPECT_TRUE(scan.isRead) << row.reason;
        EXPECT_EQ(scan.events, row.events) << row.reason;
    }
}

// Comparing names is bounded, so that deep documents are not read in quadratic
// time: they take the careful way.
TEST(XmlScanner, GivesUpVeryDeepDocuments)
{
    std::string begin;
    std::string end;
    for (int i = 0; i < 20000; ++i) {
        const std::string name = "n" + std::to_string(100000 + i);
        begin += "<" + name + ">";
        end.insert(0, "</" + name + ">");
    }
    EXPECT_FALSE(ScanWhole(begin + end).isRead);
}

// ---- Parts ----------------------------------------------------------------

TEST(XmlScanner, PartsOfAnySizeAreReadAsTheWhole)
{
    Random random(7);
    int read = 0;
    for (int i = 0; i < 3000 && !HasFailure(); ++i) {
        const std::string text = random.OneIn(2) ? RandomDocument(random) : SpoiledDocument(random);
        const Scan whole = ScanWhole(text);
        read += whole.isRead ? 1 : 0;
        for (const std::size_t size : std::initializer_list<std::size_t>{1, 2, 3, 7, 16}) {
            const Scan parts = ScanInParts(text, {size});
            ASSERT_EQ(parts.isRead, whole.isRead) << size << testing::PrintToString(text);
            if (whole.isRead) {
                ASSERT_EQ(parts.events, whole.events) << size << testing::PrintToString(text);
            }
        }
    }
    EXPECT_GE(read, 1000);
}

TEST(XmlScanner, ACutAtAnyByteChangesNothing)
{
    Random random(8);
    int read = 0;
    for (int i = 0; i < 600 && !HasFailure(); ++i) {
        const std::string text = random.OneIn(3) ? SpoiledDocument(random) : RandomDocument(random);
        const Scan whole = ScanWhole(text);
        read += whole.isRead ? 1 : 0;
        for (std::size_t cut = 0; cut <= text.size(); ++cut) {
            const Scan parts = ScanInParts(text, {cut, text.size()});
            ASSERT_EQ(parts.isRead, whole.isRead) << cut << testing::PrintToString(text);
            if (whole.isRead) {
                ASSERT_EQ(parts.events, whole.events) << cut << testing::PrintToString(text);
            }
        }
    }
    EXPECT_GE(read, 300);
}

// Deep ones may be given up earlier: less may be compared until more was read.
TEST(XmlScanner, PartsOfDeepDocumentsAreReadAsTheWholeOrGivenUp)
{
    Random random(9);
    int read = 0;
    for (int i = 0; i < 300 && !HasFailure(); ++i) {
        const std::string text = test::RandomDeepXml(random).substr(6);
        const Scan whole = ScanWhole(text);
        const Scan parts = ScanInParts(text, {1 + random.Below(200)});
        if (parts.isRead) {
            ++read;
            ASSERT_TRUE(whole.isRead);
            ASSERT_EQ(parts.events, whole.events);
        }
    }
    EXPECT_GE(read, 20);
}

// What is told does not refer to a part that is gone.
TEST(XmlScanner, NamesOutliveTheirParts)
{
    const Scan scan = ScanInParts("<first a=\"1\"><second b=\"2\"></second></first>", {1});
    EXPECT_TRUE(scan.isRead);
    EXPECT_EQ(scan.events,
              (XmlEvents{"begin first a=\"1\"", "begin second b=\"2\"", "end", "end"}));
}

} // namespace
} // namespace Vorlan
