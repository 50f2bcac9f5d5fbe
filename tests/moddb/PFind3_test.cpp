// Modification lists of pFind 3: one definition after the other, whole files.
#include "moddb/PFind3Modifications.h"

#include <string>
#include <vector>

#include "moddb/ModificationText.h"

namespace Vorlan::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const char kReader[] = "CModificationsDBEnginePFind3::readFromSearchEngineFile";
const std::string kAlphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZ";

std::string Invalid(int line, const std::string& message)
{
    return Error("InvalidParameter", line, kReader, message);
}

std::string NoEqualsSign(int line)
{
    return Invalid(1176, "There was expected to be (and only be) one \"=\" in line"
                             + std::to_string(line));
}

const std::string kTooFewItems = Invalid(1182, "There are no sufficient items after \"=\"");

std::string NoBracket(int sourceLine, int line)
{
    return Invalid(sourceLine, "There was expected to be \"mod[specificity]\" before \"=\" in line"
                                   + std::to_string(line));
}

std::string BadSpecificity(const std::string& item, int line)
{
    return Invalid(1228,
                   "Unexpected term specificity" + item + "in line " + std::to_string(line) + ".");
}

Records ReadListFrom(const std::string& path)
{
    return RecordsBy([&](Records& records) { ReadPFind3Modifications(path, records); });
}

Records ReadList(const std::string& text)
{
    const TempFolder folder;
    return ReadListFrom(folder.Write("modification.ini", text));
}

std::string ListError(const std::string& text)
{
    return ErrorOf([&] { ReadList(text); });
}

std::string Entry(const std::string& key, const std::string& sites = "S")
{
    return "name=" + key + " 0\n" + key + "=" + sites + " NORMAL 1.5 1.6 0 H(1)\n";
}

// ---- One definition -------------------------------------------------------

struct Definition {
    const char* reason;
    std::string text;
    std::string dump;
};

const std::vector<Definition> kDefinitions = {
    {"usual", "Phospho[S]=S NORMAL 79.966331 79.9799 0 H(1)",
     "Phospho|Phospho[S]|||0|S|15|0|79.966331|0|0"},
    {"neutral losses behind the masses are not read",
     "Phospho[T]=T NORMAL 79.966331 79.9799 1 97.976896 97.9952 H(1)",
     "Phospho|Phospho[T]|||0|T|15|0|79.966331|0|0"},
    {"any residue at the peptide's N-terminus",
     "Acetyl[AnyN-term]=ABCDEFGHIJKLMNOPQRSTUVWXYZ PEP_N 42.010565 42.036 0 0",
     "Acetyl|Acetyl[AnyN-term]|||2|N-term|15|0|42.010565|0|0"},
    {"at its C-terminus", "a[b]=" + kAlphabet + " PEP_C 1 2 0 x", "a|a[b]|||1|C-term|15|0|1|0|0"},
    {"at the protein's N-terminus", "a[b]=" + kAlphabet + " PRO_N 1 2 0 x",
     "a|a[b]|||4|N-term|15|0|1|0|0"},
    {"at its C-terminus", "a[b]=" + kAlphabet + " PRO_C 1 2 0 x", "a|a[b]|||3|C-term|15|0|1|0|0"},
    {"all residues that are no terminus", "a[b]=" + kAlphabet + " NORMAL 1 2 0 x",
     "a|a[b]|||0|" + kAlphabet + "|15|0|1|0|0"},
    {"one residue at a terminus", "Gln->pyro-Glu[AnyN-termQ]=Q PEP_N -17.026549 -17 0 x",
     "Gln->pyro-Glu|Gln->pyro-Glu[AnyN-termQ]|||2|Q|15|0|-17.026549|0|0"},
    {"not quite all residues", "a[b]=BCDEFGHIJKLMNOPQRSTUVWXYZ PRO_C 1 2 0 x",
     "a|a[b]|||3|BCDEFGHIJKLMNOPQRSTUVWXYZ|15|0|1|0|0"},
    {"no sites", "a[b]= NORMAL 1 2 0 x", "a|a[b]|||0||15|0|1|0|0"},
    {"an empty key before the bracket", "[b]=S NORMAL 1 2 0 x", "|[b]|||0|S|15|0|1|0|0"},
    {"up to the first bracket", "a[b][c]=S NORMAL 1 2 0 x", "a|a[b][c]|||0|S|15|0|1|0|0"},
    {"a bracket that is not closed", "a[b=S NORMAL 1 2 0 x", "a|a[b|||0|S|15|0|1|0|0"},
    {"round brackets in a name", "a(b)[c]=S NORMAL 1 2 0 x", "a(b)|a(b)[c]|||0|S|15|0|1|0|0"},
    {"two modifications", "A[S](B[T])=S NORMAL 1 2 0 x", "A(B)|A[S](B[T])|||0|S|15|0|1|0|0"},
    {"the second name ends at its first bracket, whatever it holds", "[](])[=S NORMAL 1 2 0 x",
     "(]))|[](])[|||0|S|15|0|1|0|0"},
    {"a mass that is no number", "a[b]=S NORMAL x 2 0 x", "a|a[b]|||0|S|15|0|0|0|0"},
    {"a mass with a rest", "a[b]=S NORMAL 1.5x 2 0 x", "a|a[b]|||0|S|15|0|1.5|0|0"},
    {"an empty mass", "a[b]=S NORMAL  2 0 x", "a|a[b]|||0|S|15|0|0|0|0"},
    {"empty items count", "a[b]=S NORMAL 1   ", "a|a[b]|||0|S|15|0|1|0|0"},
};

TEST(PFind3, Definitions)
{
    for (const Definition& row : kDefinitions) {
        EXPECT_EQ(Dump(PFind3ModificationOf(row.text, 7), "%.9g"), row.dump) << row.reason;
    }
}

TEST(PFind3, BadDefinitions)
{
    const std::vector<Definition> rows = {
        {"nothing", "", NoEqualsSign(7)},
        {"no equals sign", "Phospho[S] S NORMAL 1 2 0 x", NoEqualsSign(7)},
        {"two equals signs", "a=b[c]=S NORMAL 1 2 0 x", NoEqualsSign(7)},
        {"an equals sign in the formula", "a[b]=S NORMAL 1 2 0 x=", NoEqualsSign(7)},
        {"nothing behind the equals sign", "a[b]=", kTooFewItems},
        {"five items", "a[b]=S NORMAL 1 2 0", kTooFewItems},
        {"tabs do not separate", "a[b]=S\tNORMAL\t1\t2\t0\tx", kTooFewItems},
        {"too few items before anything in the key", "a=S NORMAL 1 2 0", kTooFewItems},
        {"no bracket in the key", "a=S NORMAL 1 2 0 x", NoBracket(1204, 7)},
        {"an empty key", "=S NORMAL 1 2 0 x", NoBracket(1204, 7)},
        {"a closing bracket only", "a]=S NORMAL 1 2 0 x", NoBracket(1204, 7)},
        {"one piece of two", "A[S])=S NORMAL 1 2 0 x", NoBracket(1194, 7)},
        {"three pieces", "A[S](B[T](C[Y])=S NORMAL 1 2 0 x", NoBracket(1194, 7)},
        {"no bracket in the first piece", "A](B[T])=S NORMAL 1 2 0 x", NoBracket(1194, 7)},
        {"no bracket in the second piece", "A[S](B])=S NORMAL 1 2 0 x", NoBracket(1194, 7)},
        {"no bracket before a bad specificity", "a=S x 1 2 0 x", NoBracket(1204, 7)},
        {"a specificity of its own", "a[b]=S PEP 1 2 0 x", BadSpecificity("PEP", 7)},
        {"lower case", "a[b]=S normal 1 2 0 x", BadSpecificity("normal", 7)},
        {"an empty specificity", "a[b]=S  1 2 0 x", BadSpecificity("", 7)},
        {"its display name", "a[b]=S Anywhere 1 2 0 x", BadSpecificity("Anywhere", 7)},
    };
    for (const Definition& row : rows) {
        EXPECT_EQ(ErrorOf([&] { PFind3ModificationOf(row.text, 7); }), row.dump) << row.reason;
    }
}

TEST(PFind3, B47_SeveralSiteLettersAreOneOrigin)
{
    const CResidueModification record =
        PFind3ModificationOf("Phospho[STY]=STY NORMAL 79.966331 79.9799 0 H(1)", 2);
    EXPECT_EQ(record.getOrigin(), "STY");
    EXPECT_EQ(record.getTermSpecificity(), CResidueModification::ANYWHERE);
}

// ---- Whole files ----------------------------------------------------------

TEST(PFind3, TheNumberOfModificationsIsNotOne)
{
    for (const std::string first :
         {"@NUMBER_MODIFICATION=2\n", "@NUMBER_MODIFICATION=x\n", "@NUMBER_MODIFICATION\n",
          "@NUMBER_MODIFICATION=\n", "@NUMBER_MODIFICATION=-1\n", "@NUMBER_MODIFICATION=2=3\n",
          "@NUMBER_MODIFICATION=99999999999999999999\n"}) {
        EXPECT_EQ(ReadList(first + Entry("a[b]") + Entry("c[d]")).size(), 2u) << first;
    }
}

TEST(PFind3, WithoutTheNumberTheFirstLineIsReadToo)
{
    EXPECT_THAT(FullIds(ReadList(Entry("a[b]") + Entry("c[d]"))), ElementsAre("a[b]", "c[d]"));
}

TEST(PFind3, LinesThatDoNotBeginWithNameArePassedOver)
{
    const std::string text = "\n; comment\n name=x\nName=x\nnam\na[b]=S NORMAL\n" + Entry("a[b]")
                             + "[section]\n" + Entry("c[d]") + "trailer";
    EXPECT_THAT(FullIds(ReadList(text)), ElementsAre("a[b]", "c[d]"));
}

TEST(PFind3, FourCharactersMakeANameLine)
{
    EXPECT_THAT(FullIds(ReadList("name\na[b]=S NORMAL 1 2 0 x\nnameless\nc[d]=S NORMAL 1 2 0 x")),
                ElementsAre("a[b]", "c[d]"));
}

TEST(PFind3, NothingToRead)
{
    for (const char* const text : {"", "\n", "@NUMBER_MODIFICATION=3\n", "a[b]=S NORMAL 1 2 0 x"}) {
        EXPECT_THAT(ReadList(text), IsEmpty()) << text;
    }
}

TEST(PFind3, CarriageReturnsAndByteOrderMark)
{
    const Records records = ReadList("\xEF\xBB\xBF@NUMBER_MODIFICATION=1\r\nname1=a[b] 1\r\n"
                                     "a[b]=S NORMAL 1 2 0 x\r\nname2=c[d]\r\r\n"
                                     "c[d]=S NORMAL 1 2 0 x\r\r\n");
    EXPECT_THAT(FullIds(records), ElementsAre("a[b]", "c[d]"));
}

TEST(PFind3, AByteOrderMarkWithoutTheNumberHidesNothing)
{
    EXPECT_THAT(FullIds(ReadList("\xEF\xBB\xBF" + Entry("a[b]") + Entry("c[d]"))),
                ElementsAre("a[b]", "c[d]"));
}

TEST(PFind3, AStrayCarriageReturnStaysInItsItem)
{
    const std::string text = "name\na[b]=S NORMAL\r 1 2 0 x\n";
    EXPECT_EQ(ListError(text), BadSpecificity("NORMAL\r", 2));
}

TEST(PFind3, TheLastLineNeedsNoLineFeed)
{
    std::string text = Entry("a[b]");
    text.pop_back();
    EXPECT_EQ(ReadList(text).size(), 1u);
}

TEST(PFind3, B46_MessagesNameLineTwoKPlusTwo)
{
    struct Row {
        const char* reason;
        std::string before;
        int line;
    };
    const std::string number = "@NUMBER_MODIFICATION=1\n";
    const std::vector<Row> rows = {
        {"the first definition, which is line 2", "", 2},
        {"behind the number, where it is line 3", number, 2},
        {"the second definition", Entry("a[b]"), 4},
        {"the third one behind the number", number + Entry("a[b]") + Entry("c[d]"), 6},
        {"a line that is passed over counts twice", "\n", 4},
        {"three of them", "x\n\n\n" + Entry("a[b]") + "\n", 12},
        {"a number that is not in the first line counts", "\n" + number, 6},
        {"so does a first line whose key ends in a blank", "@NUMBER_MODIFICATION =1\n", 4},
        {"and one with a longer key", "@NUMBER_MODIFICATIONS=1\n", 4},
        {"and one with a shorter key", "@NUMBER_MODIFICATIO=1\n", 4},
        {"and one in other letters", "@Number_Modification=1\n", 4},
        {"and one that begins with a blank", " @NUMBER_MODIFICATION=1\n", 4},
    };
    for (const Row& row : rows) {
        const std::string start = row.before + "name=x\n";
        EXPECT_EQ(ListError(start + "x\n"), NoEqualsSign(row.line)) << row.reason;
        EXPECT_EQ(ListError(start + "a=S NORMAL 1 2 0 x\n"), NoBracket(1204, row.line));
        EXPECT_EQ(ListError(start + "a])=S NORMAL 1 2 0 x\n"), NoBracket(1194, row.line));
        EXPECT_EQ(ListError(start + "a[b]=S x 1 2 0 x\n"), BadSpecificity("x", row.line));
        EXPECT_EQ(ListError(start + "a[b]=S\n"), kTooFewItems);
    }
}

TEST(PFind3, ANameAtTheEndHasNoDefinition)
{
    EXPECT_EQ(ListError(Entry("a[b]") + "name2"), NoEqualsSign(4));
    EXPECT_EQ(ListError(Entry("a[b]") + "name2\n"), NoEqualsSign(4));
    EXPECT_EQ(ListError("name1\n\n" + Entry("a[b]")), NoEqualsSign(2))
        << "the line behind a name is its definition, an empty one, too";
    EXPECT_EQ(ListError("name1\nname2\n"), NoEqualsSign(2));
}

TEST(PFind3, AnOverlongLineIsTheLast)
{
    const std::string filler(90000, 'x');
    EXPECT_THAT(ReadList(filler + "\n" + Entry("a[b]")), IsEmpty());
    EXPECT_THAT(FullIds(ReadList("name\na[b]=S NORMAL 1 2 0 " + filler + "\n" + Entry("c[d]"))),
                ElementsAre("a[b]"));
    EXPECT_EQ(ListError("name" + filler + "\na[b]=S NORMAL 1 2 0 x\n"), NoEqualsSign(2));
}

TEST(PFind3, WhatCannotBeReadIsToldWithThePath)
{
    const TempFolder folder;
    for (const std::string& path : {folder.PathOf("missing"), folder.Path(), std::string()}) {
        const std::string error = Error("FileNotReadable", 1141, kReader, NotReadableText(path));
        EXPECT_EQ(ErrorOf([&] { ReadListFrom(path); }), error);
        EXPECT_EQ(ErrorOf([&] { CModificationsDBEnginePFind3{path}; }), error);
    }
}

TEST(PFind3, RecordsAreAppendedAlsoInFrontOfADefect)
{
    const TempFolder folder;
    Records records = {MakeRecord("a", "M")};
    ReadPFind3Modifications(folder.Write("good", Entry("a[b]")), records);
    const std::string bad = folder.Write("bad", Entry("c[d]") + "name\nx\n" + Entry("e[f]"));
    EXPECT_EQ(ErrorOf([&] { ReadPFind3Modifications(bad, records); }), NoEqualsSign(4));
    EXPECT_THAT(FullIds(records), ElementsAre("a (M)", "a[b]", "c[d]"));
}

TEST(PFind3, ADefectPassesThroughTheDatabaseWhichKeepsTheRecordsBeforeIt)
{
    const TempFolder folder;
    const std::string good = folder.Write("good", Entry("a[b]"));
    const std::string bad = folder.Write("bad", Entry("c[d]") + "name\nx\n" + Entry("e[f]"));
    EXPECT_EQ(ErrorOf([&] { CModificationsDBEnginePFind3{bad}; }), NoEqualsSign(4));
    CModificationsDBEnginePFind3 database(good);
    EXPECT_EQ(ErrorOf([&] { database.readFromSearchEngineFile(bad); }), NoEqualsSign(4));
    EXPECT_EQ(database.getNumberOfModifications(), 2u);
    EXPECT_THAT(FullIds(Named(database, "c")), ElementsAre("c[d]"));
    EXPECT_THAT(WithMass(database, 1.5, 0.0), ElementsAre("a[b]", "c[d]"));
    EXPECT_EQ(ThrownBy([&] { Named(database, "e"); }).name, "ElementNotFound");
}

TEST(PFind3, B47_RecordsAreThereUnderTheirIdOnly)
{
    const TempFolder folder;
    const CModificationsDBEnginePFind3 database(
        folder.Write("m.ini", Entry("a[S]", "S") + Entry("a[T]", "T") + Entry("b[STY]", "STY")));
    EXPECT_EQ(database.getNumberOfModifications(), 3u);
    EXPECT_THAT(FullIds(Named(database, "a")), ElementsAre("a[S]", "a[T]"));
    EXPECT_EQ(ThrownBy([&] { Named(database, "a[S]"); }).name, "ElementNotFound");
    EXPECT_EQ(ThrownBy([&] { Named(database, ""); }).name, "ElementNotFound");
    EXPECT_THAT(FullIds(Named(database, "b", "STY")), ElementsAre("b[STY]"));
    EXPECT_THAT(Named(database, "b", "S"), IsEmpty());
    EXPECT_THAT(WithMass(database, 1.5, 0.0, "STY"), ElementsAre("b[STY]"));
    EXPECT_THAT(WithMass(database, 1.5, 0.0, "T"), ElementsAre("a[T]"));
}

TEST(PFind3, NothingIsPrinted)
{
    const TempFolder folder;
    const std::string path = folder.Write("m.ini", Entry("a[S]"));
    const Printed printed = PrintedBy([&] { CModificationsDBEnginePFind3{path}; });
    EXPECT_EQ(printed.out + printed.err, "");
}

} // namespace
} // namespace Vorlan::test
