// What a FASTA file may hold, and what both ways of reading make of it.
#include <string>

#include "proteindb/FastaProbe.h"
#include "proteindb/PlainFasta.h"

namespace Vorlan::test {
namespace {

using std::string_literals::operator""s;

/// What a file with that text gives; both ways and the plain twin must agree.
FastaOutcome ReadText(const std::string& text)
{
    const TempFolder folder;
    const std::string path = folder.Write("a.fasta", text);
    const FastaOutcome outcome = ReadByDatabase(path);
    EXPECT_EQ(ReadByParser(path), outcome);
    EXPECT_EQ(ReadPlainly(text), outcome);
    return outcome;
}

struct ReadingCase {
    const char* reason;
    std::string text;
    std::vector<std::string> entries;
    std::string concatenation;
};

const ReadingCase kCases[] = {
    {"the example of the page",
     ">sp|P02769|ALBU_BOVIN Albumin OS=Bos taurus\nMKWVTF\nDEHVKL\n",
     {"sp|P02769|ALBU_BOVIN|Albumin OS=Bos taurus|MKWVTFDEHVKL"},
     "MKWVTFDEHVKL;"},
    {"two proteins", ">A\nAAA\n>B\nCC\n", {"A||AAA", "B||CC"}, "AAA;CC;"},
    {"lower-case letters and a stop", ">A\nmkv*\n>B\nMKV*\n", {"A||", "B||MKV"}, ";MKV;"},
    {"carriage returns before line feeds",
     ">A x\r\nAAA\r\nC\r\n>B\r\n",
     {"A|x|AAAC", "B||"},
     "AAAC;;"},
    {"several carriage returns", ">A x\r\r\r\nAAA\r\r\n", {"A|x|AAA"}, "AAA;"},
    {"carriage returns alone make one header", ">A x\rAAA\r>B\rCC\r", {"A|x\rAAA\r>B\rCC|"}, ";"},
    {"carriage returns alone behind a header", ">A\nAAA\rCC\r>B\r", {"A||AAACCB"}, "AAACCB;"},
    {"a header without residues", ">A\n>B\nK\n", {"A||", "B||K"}, ";K;"},
    {"several in a row", ">A\n>B\n>C\n\n>D\n", {"A||", "B||", "C||", "D||"}, ";;;;"},
    {"a header at the end", ">A\nK\n>B x", {"A||K", "B|x|"}, "K;;"},
    {"no line end at the end", ">A\nAAA\nCC", {"A||AAACC"}, "AAACC;"},
    {"a sign alone", ">", {"||"}, ";"},
    {"a sign alone and residues", ">\nAAA\n", {"||AAA"}, "AAA;"},
    {"an accession that is empty", "> x\nAAA\n", {"|x|AAA"}, "AAA;"},
    {"two blanks", ">A  x\n", {"A| x|"}, ";"},
    {"a tab does not end an accession", ">A\tx y\n", {"A\tx|y|"}, ";"},
    {"what descriptions lose", ">a<b&\x01 c<d&\x01>\nK\n", {"a<b&\x01|c d  >|K"}, "K;"},
    {"blank lines within and behind", ">A\n\nAAA\n\n\nCC\n\n", {"A||AAACC"}, "AAACC;"},
    {"blanks in front of a sign", ">A\n >B\nK\n", {"A||BK"}, "BK;"},
    {"NULs", ">A\0b c\0d\nA\0C\n\0>B\n"s, {"A\0b|c\0d|ACB"s}, "ACB;"},
    {"bytes above 127", ">\xC3\x84 \xFF\nA\xC3\x84K\xFF\n", {"\xC3\x84|\xFF|AK"}, "AK;"},
    {"a byte order mark", "\xEF\xBB\xBF>A\nK\n", {"A||K"}, "K;"},
    {"a byte order mark in front of the second", ">A\nK\n\xEF\xBB\xBF>B\n", {"A||KB"}, "KB;"},
    {"a semicolon in a sequence is dropped", ">A\nAA;CC\n", {"A||AACC"}, "AACC;"},
    {"digits and blanks", ">A\n   1 AAAAA CCCCC\n  11 K\n", {"A||AAAAACCCCCK"}, "AAAAACCCCCK;"},
    {"gaps", ">A\nAA--CC..\n", {"A||AACC"}, "AACC;"},
    {"two of one accession stay two", ">A\nK\n>A\nC\n", {"A||K", "A||C"}, "K;C;"},
    {"an empty file", "", {}, ""},
    {"blank lines only", "\n\n\n", {}, ""},
    {"text only", "AAA\nCC\n", {}, ""},
    {"a byte order mark only", "\xEF\xBB\xBF", {}, ""},
};

TEST(FastaReading, WhatAFileGives)
{
    for (const ReadingCase& c : kCases) {
        SCOPED_TRACE(c.reason);
        EXPECT_EQ(ReadText(c.text), (FastaOutcome{true, c.entries, c.concatenation}));
    }
}

TEST(FastaReading, AFirstLineThatIsNoHeaderFailsWhenALaterOneIs)
{
    for (const char* const text : {"\n>A\n", "AAA\n>A\nK\n", "\r\n>A\n", " >A\n>B\n",
                                   "\xEF\xBB\xBF\n>A\n", "\xEF\xBB\xBF\xEF\xBB\xBF>A\n>B\n"}) {
        EXPECT_EQ(ReadText(text), FastaOutcome()) << text;
    }
}

TEST(FastaReading, LinesOfSeveralMegabytes)
{
    const std::string name(2000000, 'N');
    const std::string residues = Repeat("ACDEFGHIK", 500000);
    const FastaOutcome outcome =
        ReadText(">" + name + " " + name + "\n" + residues + "\r\n" + residues + "\n>B\nK");
    ASSERT_EQ(outcome.entries.size(), 2u);
    EXPECT_TRUE(outcome.entries[0] == name + "|" + name + "|" + residues + residues);
    EXPECT_TRUE(outcome.concatenation == residues + residues + ";K;");
}

TEST(FastaReading, AHundredThousandEntries)
{
    std::string text;
    std::string concatenation;
    for (int i = 0; i < 100000; ++i) {
        text += ">P" + std::to_string(i) + "\n" + (i % 3 == 0 ? "" : "MK\n");
        concatenation += i % 3 == 0 ? ";" : "MK;";
    }
    const FastaOutcome outcome = ReadText(text);
    ASSERT_EQ(outcome.entries.size(), 100000u);
    EXPECT_EQ(outcome.entries[99999], "P99999||");
    EXPECT_EQ(outcome.entries[50000], "P50000||MK");
    EXPECT_TRUE(outcome.concatenation == concatenation);
}

TEST(FastaReading, AFileOfHeaderSignsOnly)
{
    const FastaOutcome outcome = ReadText(Repeat(">\n", 200000));
    EXPECT_EQ(outcome.entries.size(), 200000u);
    EXPECT_TRUE(outcome.concatenation == std::string(200000, ';'));
}

TEST(FastaReading, AFileOfLineFeedsOnly)
{
    EXPECT_EQ(ReadText(std::string(1000000, '\n')), (FastaOutcome{true, {}, ""}));
    EXPECT_EQ(ReadText(">A\n" + std::string(1000000, '\n') + "K"),
              (FastaOutcome{true, {"A||K"}, "K;"}));
}

} // namespace
} // namespace Vorlan::test
