// Reading entries one at a time, and the steps of that.
#include <fstream>
#include <string>

#include "proteindb/FastaProbe.h"
#include "support/Printed.h"

namespace Vorlan::test {
namespace {

using std::string_literals::operator""s;

const char* const kNoHeader = "FASTA Format error!One Protein Entry must start with char '>'!\n";

/// A stream over a file with that text.
class TextStream {
public:
    explicit TextStream(const std::string& text)
        : stream(folder_.Write("a.fasta", text), std::ios::in | std::ios::binary)
    {
    }

private:
    TempFolder folder_;

public:
    std::ifstream stream;
};

/// The next entry, or "none". What is printed must be told.
std::string NextEntry(std::ifstream& stream, const std::string& told = "")
{
    CProtein protein("old", "old", "OLD");
    bool isRead = false;
    const Printed printed =
        PrintedBy([&] { isRead = CFastaParser::ReadOnePrteinEntry(protein, stream); });
    EXPECT_EQ(printed.out, told);
    EXPECT_EQ(printed.err, "");
    if (!isRead) {
        EXPECT_EQ(Dump(protein), "||") << "three empty texts";
        return "none";
    }
    return Dump(protein);
}

// ---- GetEntryNum -----------------------------------------------------------

struct CountCase {
    const char* reason;
    std::string text;
    std::uint64_t entries;
};

const CountCase kCounts[] = {
    {"an empty file", "", 0},
    {"two entries", ">A\nK\n>B\nC\n", 2},
    {"headers in a row", ">A\n>B\n>C\n", 3},
    {"the last header without a line end", ">A\nK\n>", 2},
    {"a blank in front of it is no header", " >A\n>B\n", 1},
    {"one within a line is none", ">A>B\nK>C\n", 1},
    {"a first line that is none", "K\n>A\n", 1},
    {"no header", "AAA\n\nCCC", 0},
    {"blank lines", "\n\n>A\n\n", 1},
    {"carriage returns before line feeds", ">A\r\nK\r\n>B\r\n", 2},
    {"carriage returns alone end no line", ">A\rK\r>B\r", 1},
    {"a byte order mark", "\xEF\xBB\xBF>A\n>B\n", 2},
    {"a byte order mark on another line", ">A\n\xEF\xBB\xBF>B\n", 1},
    {"a NUL in front", "\0>A\n>B\n"s, 1},
};

TEST(FastaParser, GetEntryNumCountsHeaders)
{
    for (const CountCase& c : kCounts) {
        TextStream text(c.text);
        EXPECT_EQ(CFastaParser::GetEntryNum(text.stream), c.entries) << c.reason;
    }
}

TEST(FastaParser, GetEntryNumCountsFromTheStartAndGoesBackToIt)
{
    TextStream text(">A\nK\n>B\nC\n");
    EXPECT_EQ(NextEntry(text.stream), "A||K");
    EXPECT_EQ(CFastaParser::GetEntryNum(text.stream), 2u);
    EXPECT_TRUE(text.stream.good());
    EXPECT_EQ(text.stream.tellg(), std::ifstream::pos_type(0));
    EXPECT_EQ(NextEntry(text.stream), "A||K");
    EXPECT_EQ(NextEntry(text.stream), "B||C");
    EXPECT_EQ(NextEntry(text.stream), "none");
    EXPECT_EQ(CFastaParser::GetEntryNum(text.stream), 2u) << "behind the end";
    EXPECT_TRUE(text.stream.good());
    EXPECT_EQ(NextEntry(text.stream), "A||K");
}

TEST(FastaParser, GetEntryNumTellsOfAStreamThatIsNotOpen)
{
    std::ifstream stream;
    std::uint64_t number = 7;
    const Printed printed = PrintedBy([&] { number = CFastaParser::GetEntryNum(stream); });
    EXPECT_EQ(printed.err, "Can not open file!\n");
    EXPECT_EQ(printed.out, "");
    EXPECT_EQ(number, 0u);
}

TEST(FastaParser, GetEntryNumPrintsNothingOtherwise)
{
    TextStream text("no header");
    const Printed printed = PrintedBy([&] { CFastaParser::GetEntryNum(text.stream); });
    EXPECT_EQ(printed.out + printed.err, "");
}

// ---- ReadOnePrteinEntry ----------------------------------------------------

TEST(FastaParser, EntriesComeOneByOne)
{
    TextStream text(">P1 first one\nAAA\nCC\n\n>P2\n>P3 third\nK");
    EXPECT_EQ(NextEntry(text.stream), "P1|first one|AAACC");
    EXPECT_EQ(NextEntry(text.stream), "P2||");
    EXPECT_EQ(NextEntry(text.stream), "P3|third|K");
    EXPECT_EQ(NextEntry(text.stream), "none");
    EXPECT_EQ(NextEntry(text.stream), "none");
}

TEST(FastaParser, AStreamThatIsNotOpenGivesNothingAndSaysNothing)
{
    std::ifstream stream;
    EXPECT_EQ(NextEntry(stream), "none");
    std::ifstream missing("/no/such.fasta");
    EXPECT_EQ(NextEntry(missing), "none");
}

TEST(FastaParser, AnEmptyFileIsAtItsEnd)
{
    TextStream text("");
    EXPECT_EQ(NextEntry(text.stream), "none");
}

TEST(FastaParser, ALineThatIsNoHeaderIsReadAndTold)
{
    TextStream text("AAA\n\n>P1 x\nK\n");
    EXPECT_EQ(NextEntry(text.stream, kNoHeader), "none");
    EXPECT_EQ(NextEntry(text.stream, kNoHeader), "none") << "the empty line";
    EXPECT_EQ(NextEntry(text.stream), "P1|x|K");
    EXPECT_EQ(NextEntry(text.stream), "none");
}

TEST(FastaParser, CarriageReturnsAtTheEndOfAHeaderAreDropped)
{
    TextStream text(">P1 x\r\nAAA\r\n>P2\r\r\nCC\r\n>P3 y \r\n\r\n>\r\n");
    EXPECT_EQ(NextEntry(text.stream), "P1|x|AAA");
    EXPECT_EQ(NextEntry(text.stream), "P2||CC");
    EXPECT_EQ(NextEntry(text.stream), "P3|y |");
    EXPECT_EQ(NextEntry(text.stream), "||");
}

TEST(FastaParser, AByteOrderMarkIsPassedOver)
{
    TextStream text("\xEF\xBB\xBF>P1\nAAA\n");
    EXPECT_EQ(NextEntry(text.stream), "P1||AAA");
    TextStream alone("\xEF\xBB\xBF");
    EXPECT_EQ(NextEntry(alone.stream, kNoHeader), "none") << "a line, and no header";
    TextStream later(">P1\nK\n\xEF\xBB\xBF>P2\nK\n");
    EXPECT_EQ(NextEntry(later.stream), "P1||KPK") << "only at the start";
    TextStream cut("\xEF\xBB>P1\nAAA\n");
    EXPECT_EQ(NextEntry(cut.stream, kNoHeader), "none");
}

// ---- The steps -------------------------------------------------------------

struct HeaderCase {
    const char* reason;
    std::string header;
    std::string accession;
    std::string description;
};

const HeaderCase kHeaders[] = {
    {"accession and description", ">P1 a protein", "P1", "a protein"},
    {"no blank: all of it is accession", ">sp|P02769|ALBU_BOVIN", "sp|P02769|ALBU_BOVIN", ""},
    {"a tab does not end it", ">P1\tProtein", "P1\tProtein", ""},
    {"a tab, then a blank", ">P1\tx y", "P1\tx", "y"},
    {"two blanks", ">P1  x", "P1", " x"},
    {"a blank at the end", ">P1 ", "P1", ""},
    {"a blank directly behind the sign", "> x", "", "x"},
    {"the sign alone", ">", "", ""},
    {"the sign and a blank", "> ", "", ""},
    {"a second sign", ">>P1 >x", ">P1", ">x"},
    {"an empty header", "", "", ""},
    {"bytes above 127", ">\xC3\x84 \xFF", "\xC3\x84", "\xFF"},
    {"NULs", ">P\0 1 x\0y"s, "P\0"s, "1 x\0y"s},
    {"what a description loses the accession keeps", ">a<b&c\x01 d<e&f\x01g", "a<b&c\x01",
     "d e f g"},
    {"a carriage return within", ">P1\rx y\rz", "P1\rx", "y\rz"},
};

TEST(FastaParser, B75_OnlyABlankEndsTheAccession)
{
    for (const HeaderCase& c : kHeaders) {
        CProtein protein("old", "old", "OLD");
        CFastaParser::ReadEntryAC(protein, c.header);
        EXPECT_EQ(protein.strAccession, c.accession) << c.reason;
        EXPECT_EQ(protein.strDescription, "old") << c.reason;
        EXPECT_EQ(protein.strSequence, "OLD") << c.reason;
    }
}

TEST(FastaParser, B77_TheDescriptionStandsBehindTheBlankAndLosesThreeCharacters)
{
    for (const HeaderCase& c : kHeaders) {
        CProtein protein("old", "old", "OLD");
        CFastaParser::ReadEntryDE(protein, c.header);
        EXPECT_EQ(protein.strDescription, c.description) << c.reason;
        EXPECT_EQ(protein.strAccession, "old") << c.reason;
        EXPECT_EQ(protein.strSequence, "OLD") << c.reason;
    }
}

struct SequenceCase {
    const char* reason;
    std::string lines;
    std::string sequence;
};

const SequenceCase kSequences[] = {
    {"several lines", "AAA\nCC\n", "AAACC"},
    {"no line end", "AAA", "AAA"},
    {"nothing", "", ""},
    {"blank lines", "\n\nAAA\n\nCC\n\n", "AAACC"},
    {"up to the next header", "AAA\n>P2\nCC\n", "AAA"},
    {"at a header", ">P2\nCC\n", ""},
    {"a sign within a line is dropped", "A>A\n >C\n", "AAC"},
    {"a stop", "MKV*\n", "MKV"},
    {"lower-case letters", "mkv*\n", ""},
    {"both cases", "MkVl\n", "MV"},
    {"letters that are no amino acids", "ABJOUXZ\n", "ABJOUXZ"},
    {"digits, blanks, hyphens", "  1 AAA-C 5\n", "AAAC"},
    {"the neighbours of A to Z", "@AZ[`az{\n", "AZ"},
    {"carriage returns", "AAA\r\nC\rC\r\r\n", "AAACC"},
    {"NULs and bytes above 127", "A\0C\xC3\x84\xFFK\n"s, "ACK"},
};

TEST(FastaParser, B76_TheSequenceIsCapitalLettersOnly)
{
    for (const SequenceCase& c : kSequences) {
        TextStream text(c.lines);
        CProtein protein("old", "old", "OLD");
        CFastaParser::ReadEntrySQ(protein, text.stream);
        EXPECT_EQ(Dump(protein), "old|old|OLD" + c.sequence) << c.reason << ": it appends";
        TextStream again(c.lines);
        std::string sequence = "S";
        CFastaParser::_ReadEntrySQ(sequence, again.stream);
        EXPECT_EQ(sequence, "S" + c.sequence) << c.reason;
    }
}

TEST(FastaParser, TheSequenceStopsInFrontOfTheHeader)
{
    TextStream text("AAA\n>P2\nCC\n");
    std::string sequence;
    CFastaParser::_ReadEntrySQ(sequence, text.stream);
    EXPECT_EQ(text.stream.peek(), '>');
    EXPECT_EQ(NextEntry(text.stream), "P2||CC");
}

TEST(FastaParser, AStreamThatIsNotOpenHasNoSequence)
{
    std::ifstream stream;
    CProtein protein("a", "b", "C");
    CFastaParser::ReadEntrySQ(protein, stream);
    EXPECT_EQ(Dump(protein), "a|b|C");
}

TEST(FastaParser, B77_ChangeInvalidCharMakesBlanksOfThree)
{
    std::string text = "\x01 a<b>c&d\x02\"'<<&\x01";
    CFastaParser::ChangeInvalidChar(text);
    EXPECT_EQ(text, "  a b>c d\x02\"'    ");
    std::string empty;
    CFastaParser::ChangeInvalidChar(empty);
    EXPECT_EQ(empty, "");
}

TEST(FastaParser, ChangeCharMakesBlanksOfOne)
{
    for (const auto& [text, ch, changed] :
         std::vector<std::tuple<std::string, char, std::string>>{{"abcabc", 'b', "a ca c"},
                                                                 {"bbb", 'b', "   "},
                                                                 {"abc", 'x', "abc"},
                                                                 {"", 'b', ""},
                                                                 {"a\0b\0"s, '\0', "a b "},
                                                                 {"a\xFF", '\xFF', "a "}}) {
        std::string actual = text;
        CFastaParser::_ChangeChar(actual, ch);
        EXPECT_EQ(actual, changed);
    }
}

TEST(FastaParser, ChangeCharOfABlankChangesNothing)
{
    std::string text = " a b ";
    CFastaParser::_ChangeChar(text, ' ');
    EXPECT_EQ(text, " a b ");
}

TEST(FastaParser, LinesOfSeveralMegabytes)
{
    const std::string residues = Repeat("ACDEFGHIK", 500000);
    TextStream text(">" + std::string(3000000, 'x') + " " + std::string(3000000, '<') + "\n"
                    + residues + "\n>P2\n");
    CProtein protein;
    ASSERT_TRUE(CFastaParser::ReadOnePrteinEntry(protein, text.stream));
    EXPECT_TRUE(protein.strAccession == std::string(3000000, 'x'));
    EXPECT_TRUE(protein.strDescription == std::string(3000000, ' '));
    EXPECT_TRUE(protein.strSequence == residues);
    EXPECT_EQ(NextEntry(text.stream), "P2||");
}

} // namespace
} // namespace Vorlan::test
