// The quick reader of FASTA texts: cut into parts anywhere, it gives what the plain
// twin gives of the whole.
#include "proteindb/FastaScanner.h"

#include <limits>
#include <optional>

#include "proteindb/FastaProbe.h"
#include "proteindb/PlainFasta.h"
#include "proteindb/RandomFasta.h"
#include "support/FailingMemory.h"

namespace Vorlan::test {
namespace {

using testing::ElementsAre;
using std::string_literals::operator""s;

/// A scanner with its lists.
class Scan {
public:
    explicit Scan(const std::vector<std::string_view>& parts, std::uint64_t fileSize = 0)
    {
        scanner_.Expect(fileSize);
        for (const std::string_view part : parts) {
            scanner_.Take(part);
        }
        scanner_.Finish();
    }

    FastaOutcome Outcome() const
    {
        if (scanner_.HasFalseStart()) {
            return {};
        }
        return {true, Dump(proteins_), concatenation_};
    }

    const std::vector<std::uint64_t>& Starts() const { return starts_; }

private:
    std::vector<CProtein> proteins_;
    std::vector<std::uint64_t> starts_;
    std::string concatenation_;
    FastaScanner scanner_{proteins_, starts_, concatenation_};
};

FastaOutcome ScanOf(const std::vector<std::string_view>& parts)
{
    return Scan(parts).Outcome();
}

FastaOutcome ScanByCharacters(std::string_view text)
{
    std::vector<std::string_view> parts;
    for (std::size_t i = 0; i < text.size(); ++i) {
        parts.push_back(text.substr(i, 1));
    }
    return ScanOf(parts);
}

const char* const kTwoEntries = ">P1 first one\r\nAAAK\r\nCC\r\n>P2\nMK\n";

TEST(FastaScanner, EntriesConcatenationAndStarts)
{
    const Scan scan({kTwoEntries});
    EXPECT_EQ(scan.Outcome(),
              (FastaOutcome{true, {"P1|first one|AAAKCC", "P2||MK"}, "AAAKCC;MK;"}));
    EXPECT_THAT(scan.Starts(), ElementsAre(0, 7));
}

TEST(FastaScanner, AppendsNothingForNothing)
{
    EXPECT_EQ(ScanOf({}), (FastaOutcome{true, {}, ""}));
    EXPECT_EQ(ScanOf({"", ""}), (FastaOutcome{true, {}, ""}));
}

TEST(FastaScanner, EmptyPartsChangeNothing)
{
    const std::string_view text = kTwoEntries;
    for (std::size_t cut = 0; cut <= text.size(); ++cut) {
        EXPECT_EQ(ScanOf({"", text.substr(0, cut), "", "", text.substr(cut), ""}),
                  ReadPlainly(kTwoEntries));
    }
}

TEST(FastaScanner, AFalseStartIsOneWithALaterHeader)
{
    struct {
        const char* text;
        bool isFalse;
    } const cases[] = {
        {"", false},         {"AAA\n", false},    {"\n\n", false},     {">A\n", false},
        {"AAA\n>A\n", true}, {"\n>A\nK\n", true}, {" >A\n>B\n", true}, {"A>B", false},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(ScanOf({c.text}) == FastaOutcome(), c.isFalse) << c.text;
    }
}

const std::string kHostile[] = {
    ">A B\r\nAC\r\n>B\r\n\r\n",
    ">\r\r\n\r>A\nK\r\r\r\n",
    "> \n>>\n> >\n>A  B\n",
    "\n>A\n",
    "\0>A\nK\n"s,
    ">A\0 B\nA\0C\n>"s,
    ">A\nAaC*D-E1F G\tH\n>B\nlower\n",
    ">A\n >B\nK>C\n",
    ">A\n\xC3\x84K\xFFZ[@`{AZ\n",
    "no header at all\nAAA",
    ">A\rAAA\r>B\rCCC\r",
    ">last header",
    ">A \x01<&b\nABCDEFGHIJKLMNOPQRSTUVWXYZABCDEFGHIJKLMNOPQRSTUVWXYZ\n",
    ">A\n\n\n\nK\n\n>B\n\n",
};

TEST(FastaScanner, CutAtEveryPlaceAndAtEveryTwo)
{
    for (const std::string& text : kHostile) {
        const FastaOutcome expected = ReadPlainly(text);
        const std::string_view view = text;
        EXPECT_EQ(ScanOf({view}), expected) << testing::PrintToString(text);
        EXPECT_EQ(ScanByCharacters(view), expected) << testing::PrintToString(text);
        for (std::size_t first = 0; first <= view.size(); ++first) {
            for (std::size_t second = first; second <= view.size(); ++second) {
                ASSERT_EQ(ScanOf({view.substr(0, first), view.substr(first, second - first),
                                  view.substr(second)}),
                          expected)
                    << testing::PrintToString(text) << " cut at " << first << " and " << second;
            }
        }
    }
}

TEST(FastaScanner, RandomTextsCutAtRandomPlaces)
{
    Random random(71);
    std::size_t entries = 0;
    for (int round = 0; round < 20000; ++round) {
        std::string text = RandomFasta(random);
        if (text.compare(0, 3, "\xEF\xBB\xBF") == 0) {
            text.erase(0, 3); // whoever reads the file drops it
        }
        const FastaOutcome expected = ReadPlainly(text);
        std::vector<std::string_view> parts;
        for (std::string_view rest = text; !rest.empty();) {
            const std::size_t size = std::min(rest.size(), 1 + random.Below(60));
            parts.push_back(rest.substr(0, size));
            rest.remove_prefix(size);
        }
        ASSERT_EQ(ScanOf({text}), expected) << testing::PrintToString(text);
        ASSERT_EQ(ScanOf(parts), expected) << testing::PrintToString(parts);
        entries += expected.entries.size();
    }
    EXPECT_GT(entries, 30000u) << "the random texts hold hardly any entries";
}

TEST(FastaScanner, B76_EveryByteAtEveryPlaceOfALine)
{
    for (int code = 0; code < 256; ++code) {
        const char byte = static_cast<char>(code);
        for (std::size_t length = 1; length <= 20; ++length) {
            for (std::size_t place = 0; place < length; ++place) {
                std::string line(length, 'Q');
                line[place] = byte;
                const std::string text = ">A\n" + line + "\nKK\n";
                ASSERT_EQ(ScanOf({text}), ReadPlainly(text)) << code << " at " << place;
            }
        }
    }
}

// A file with holes says more than any memory holds.
TEST(FastaScanner, TheSizeOfAFileAsksForNoMoreThanThereIs)
{
    if (kSanitized) {
        GTEST_SKIP() << "the sanitizer ends the process that asks for so much";
    }
    constexpr std::uint64_t kMost = std::numeric_limits<std::uint64_t>::max();
    for (const std::uint64_t size :
         {std::uint64_t{1} << 40, std::uint64_t{1} << 50, std::uint64_t{1} << 62, kMost}) {
        EXPECT_EQ(Scan({kTwoEntries}, size).Outcome(), ReadPlainly(kTwoEntries)) << size;
        EXPECT_EQ(Scan({}, size).Outcome(), (FastaOutcome{true, {}, ""})) << size;
    }
}

TEST(FastaScanner, RoomForManyMoreProteinsIsAWish)
{
    PELGRIN_NEEDS_FAILING_MEMORY();
    const std::string text = Repeat(">A\nK\n", 100);
    std::optional<Scan> scan;
    {
        const SmallMemory memory(200 * sizeof(CProtein));
        scan.emplace(std::vector<std::string_view>{text}, std::uint64_t{1} << 40);
    }
    EXPECT_EQ(scan->Outcome(), ReadPlainly(text));
}

TEST(FastaScanner, NothingBehindAPartIsRead)
{
    const std::string text = ">A\nAAAACCCCDDDDEEEEFFFF";
    for (std::size_t size = 0; size <= text.size(); ++size) {
        // Copied, so that a sanitizer sees its end.
        const std::vector<char> part(text.begin(),
                                     text.begin() + static_cast<std::ptrdiff_t>(size));
        EXPECT_EQ(ScanOf({{part.data(), part.size()}}), ReadPlainly(text.substr(0, size)));
    }
}

} // namespace
} // namespace Vorlan::test
