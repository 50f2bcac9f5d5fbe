// Walks the other tables of docs/errors.md: the XML model, messages, and ends
// of the process.
#include <fstream>
#include <functional>
#include <utility>

#include "CStringProcess.h"
#include "FastaProteinDB.h"
#include "InitFile.h"
#include "ModificationDB.h"
#include "PeptideIdentificationIO.h"
#include "SpectraIO.h"
#include "XmlDocument.h"
#include "docs/Page.h"
#include "support/Printed.h"
#include "support/ProcessEnd.h"
#include "support/Support.h"

namespace Vorlan {
namespace {

using test::Printed;
using test::PrintedBy;
using test::Row;

std::string Replaced(std::string text, const std::string& value, const std::string& placeholder)
{
    CStringProcess::replace_all(text, value, placeholder);
    return text;
}

/// One column of the rows under a heading, the first being number 1.
std::vector<std::string> Column(const std::string& heading, std::size_t column)
{
    std::vector<std::string> cells;
    for (const Row& row : test::RowsUnder("errors.md", heading)) {
        cells.push_back(test::WithoutTicks(row.at(column)));
    }
    return cells;
}

// ---- The XML model -------------------------------------------------------

std::string XmlMessage(const std::function<void()>& call)
{
    try {
        call();
    } catch (const CXmlException& error) {
        return error.szWhat();
    }
    return "nothing thrown";
}

std::string ParseMessage(const std::string& xml)
{
    return XmlMessage([&xml] { CXmlElement().Parse(xml.data(), xml.data() + xml.size()); });
}

TEST(ErrorMessages, EveryTextOfTheXmlModelIsListed)
{
    const std::string unended = "<root><tag x>";
    const std::string noEnd = XmlMessage([&unended] {
        CXmlElement().Parse(unended.data() + 6, unended.data() + unended.size() - 1);
    });
    const std::vector<std::string> provoked = {
        Replaced(noEnd, "<tag x>", "<rest of the text><character behind it>"),
        Replaced(ParseMessage("<a b=\"1\">"), "<a b=\"1\">", "<tag>"),
        ParseMessage("<![CDATA[x]>"),
        ParseMessage("<!DOCTYPE x><x/>"),
        XmlMessage([] { CXmlDocument().ParseFile("/no/file.xml"); }),
        XmlMessage([] { CXmlDocument().SaveFile("/no/file.xml"); }),
        XmlMessage([] { CXmlDocument().cRoot(); }),
        XmlMessage([] { CXmlElement().cAt(0); }),
        XmlMessage([] { CXmlElement().pNewItem(""); }),
    };
    EXPECT_EQ(Column("Exceptions of the XML model", 3), provoked);
}

TEST(ErrorMessages, AFileEndsALineBehindItsTextForTheXmlModel)
{
    const test::TempFolder folder;
    const std::string path = folder.Write("a.xml", "<a");
    EXPECT_EQ(XmlMessage([&path] { CXmlDocument().ParseFile(path); }), "<a\nCan not find '>'");
    EXPECT_EQ(ParseMessage("<a></a"), std::string("<a></a")) << "as far as the NUL behind it";
}

// ---- Messages ------------------------------------------------------------

/// Loads the file a.txt of folder; second: a second file beside it, or nothing.
template <typename Reader>
void LoadFrom(const std::string& folder, const std::string& second = "")
{
    PepIdentSource source(folder, "a.txt", PepIdentType::Unknown);
    source.strThird = folder;
    source.strFourth = second;
    Reader reader;
    reader.InitLoad(source);
    std::vector<PeptideIdentification> matches;
    reader.Load(matches);
}

void OpenFasta(const std::string& path)
{
    CFastaProteinDB database;
    database.SetDBPath(path);
    EXPECT_FALSE(database.OpenFile());
}

void LoadFasta(const std::string& path)
{
    CFastaProteinDB database;
    database.SetDBPath(path);
    EXPECT_FALSE(database.ReadFromFile());
}

void ReadFastaEntry(const std::string& path)
{
    std::ifstream stream(path);
    CProtein protein;
    EXPECT_FALSE(CFastaParser::ReadOnePrteinEntry(protein, stream));
}

void CountFastaEntriesOfNothing()
{
    std::ifstream stream;
    EXPECT_EQ(CFastaParser::GetEntryNum(stream), 0U);
}

const char kMsgfHeader[] = "#SpecFile\tScanNum\tPeptide\tCharge\tPrecursor\tPrecursorError(ppm)\t"
                           "SpecEValue\tProtein\n";
const char kMatchHeader[] =
    "Raw file\tSequence\tScan number\tCharge\tReverse\tScore\tMass Error [ppm]\tm/z\tProteins\t"
    "Retention time\tModifications\tModified sequence\n";

TEST(ErrorMessages, EveryMessageIsListedWithItsStream)
{
    std::vector<Row> provoked;
    const auto add = [&provoked](const std::function<void()>& call, const std::string& value,
                                 const std::string& placeholder) {
        const Printed printed = PrintedBy(call);
        if (!printed.out.empty()) {
            provoked.push_back({"standard output", Replaced(printed.out, value, placeholder)});
        }
        if (!printed.err.empty()) {
            provoked.push_back({"standard error", Replaced(printed.err, value, placeholder)});
        }
    };
    const test::TempFolder folder;
    std::vector<Spectrum> spectra;
    add([] { MgfIO().InitLoad("/no/file.mgf"); }, "/no/file.mgf", "<path>");
    add([&] { MgfIO().bLoadOneSpectrum("17", spectra); }, "17", "<name>");
    add([&] { DtaIO().bLoadOneSpectrum("/no/file.dta", spectra); }, "/no/file.dta", "<path>");
    add([] { OpenFasta(""); }, "", "");
    add([] { LoadFasta("/no/file.fasta"); }, "", ""); // OpenFile's message in front of its own
    const std::string fasta = folder.Write("a.fasta", "AAA\n>P\n");
    const std::string noHeader = PrintedBy([&] { ReadFastaEntry(fasta); }).out;
    add([&] { ReadFastaEntry(fasta); }, "", "");
    add([&] { LoadFasta(fasta); }, noHeader, ""); // behind the same message
    add(CountFastaEntriesOfNothing, "", "");
    add([] { EXPECT_ANY_THROW(InitFile().Load("/no/file.ini")); }, "/no/file.ini", "<path>");
    add([] { CModificationsDBUnimod::getInstance("/no/file.xml"); }, "Can not open file!",
        "<text of the CXmlException>");
    add([] { LoadFrom<CometPepXMLPepIdentIO>("/no/folder"); }, "Can not open file!",
        "<text of the CXmlException>");
    folder.Write("a.txt", kMsgfHeader);
    folder.Write("mods.txt", "C1?,K,opt,any,a\n");
    add([&] { LoadFrom<MSGFTSVPepIdentIO>(folder.Path(), "mods.txt"); }, "", "");

    std::vector<Row> listed;
    for (const Row& row : test::RowsUnder("errors.md", "Messages")) {
        const bool isOfSpectra = row.at(1).rfind("`MulSpecIO`", 0) == 0 || row.at(1) == "`DtaIO`";
        listed.push_back(
            {row.at(2), (isOfSpectra ? "\n" : "") + test::WithoutTicks(row.at(4)) + "\n"});
    }
    EXPECT_EQ(listed, provoked);
}

TEST(ErrorMessages, AMessageOfTheFastaDatabaseFollowsThatOfOpenFile)
{
    EXPECT_EQ(PrintedBy([] { LoadFasta(""); }).out, PrintedBy([] { OpenFasta(""); }).out);
    EXPECT_EQ(PrintedBy([] { LoadFasta("/no/file"); }).out,
              PrintedBy([] { OpenFasta("/no/file"); }).out);
    EXPECT_EQ(PrintedBy([] { OpenFasta("/no/file"); }).err, "");
}

TEST(ErrorMessages, AFileThatCannotBeWrittenIsToldLikeOneThatCannotBeRead)
{
    EXPECT_EQ(PrintedBy([] { MgfIO().InitSave("/no/file.mgf"); }).out,
              PrintedBy([] { MgfIO().InitLoad("/no/file.mgf"); }).out);
}

// ---- Ends of the process -------------------------------------------------

class DefaultTable : public CModificationsDBCalvexDefault {
public:
    explicit DefaultTable(const std::string& path) : CModificationsDBCalvexDefault(path) {}
};

/// A database of one record that has no term specificity.
class BrokenDatabase : public CModificationsDB {
public:
    BrokenDatabase()
    {
        CResidueModification record;
        record.setTermSpecificity(CResidueModification::NUMBER_OF_TERM_SPECIFICITY);
        addModifications_({record}, BY_ID);
    }
};

class ErrorMessagesDeathTest : public testing::Test {
protected:
    /// The row with this number ends the process as it says.
    void ExpectEnd(std::size_t number, const std::string& value, const std::string& placeholder,
                   const std::function<void()>& call) const
    {
        const Row row = Ends().at(number);
        std::string text =
            test::WithoutTicks(row.at(3)) + "\n" + test::WithoutTicks(row.at(4)) + "\n";
        text = Replaced(Replaced(text, "<tab>", "\t"), placeholder, value);
        EXPECT_EXIT(call(), testing::ExitedWithCode(1), testing::StrEq(text));
    }

    /// The same for a row of one text, which is told on standard output.
    static void ExpectEndOnOutput(std::size_t number, const std::string& value,
                                  const std::function<void()>& call)
    {
        const std::string text = test::WithoutTicks(Ends().at(number).at(3)) + "\n";
        test::ExpectEndOnOutput(call, Replaced(Replaced(text, "<tab>", "\t"), "<column>", value));
    }

    static std::vector<Row> Ends() { return test::RowsUnder("errors.md", "Ends of the process"); }

    const test::TempFolder folder_;
};

TEST_F(ErrorMessagesDeathTest, EveryEndIsTestedHere)
{
    EXPECT_THAT(Column("Ends of the process", 1),
                testing::ElementsAre(
                    "readers of modification tables (B-44)",
                    "readers of modification tables (B-44)", "CModificationsDB::writeToFile",
                    "MSGFTSVPepIdentIO::Load (B-66)", "MaxQuantTXTPepIdentIO::Load (B-66)",
                    "MaxQuantTXTPepIdentIO::Load (B-66)", "MaxQuantTXTPepIdentIO::Load (B-62)",
                    "Pfind3PepIdentIO::Load (B-66)"));
}

TEST_F(ErrorMessagesDeathTest, B44_AMissingColumn)
{
    const std::string path = folder_.Write("table.txt", "id\tfull_id\n");
    ExpectEnd(0, "unimod_accession", "<column>", [&] { DefaultTable table(path); });
    ExpectEnd(0, "unimod_accession", "<column>", [&] { CModificationsDBEngineCalvex table(path); });
}

TEST_F(ErrorMessagesDeathTest, B44_ALineOfOtherThanElevenFields)
{
    const std::string header =
        test::LinesOf(test::ReadFile(PELGRIN_EXAMPLES "/data/demo_modifications.txt")).at(0);
    const std::string path = folder_.Write("table.txt", header + "\n\na\tb\n");
    ExpectEnd(1, "3", "<line>", [&] { DefaultTable table(path); });
    ExpectEnd(1, "3", "<line>", [&] { CModificationsDBEngineCalvex table(path); });
}

TEST_F(ErrorMessagesDeathTest, B44_ALineThatLacksANamedColumn)
{
    const std::string header =
        test::LinesOf(test::ReadFile(PELGRIN_EXAMPLES "/data/demo_modifications.txt")).at(0);
    const std::string path =
        folder_.Write("table.txt", "more\t" + header + "\n1\t2\t3\t4\t5\t6\t7\t8\t9\t10\t11\n");
    ExpectEnd(1, "2", "<line>", [&] { CModificationsDBEngineCalvex table(path); });
}

TEST_F(ErrorMessagesDeathTest, B40_ARecordWithoutTermSpecificityIsWritten)
{
    ExpectEnd(2, "", "<>", [&] { BrokenDatabase().writeToFile(folder_.PathOf("dump.txt")); });
}

TEST_F(ErrorMessagesDeathTest, B66_AColumnOfAnEngineIsMissing)
{
    folder_.Write("a.txt", "#SpecFile\tScanNum\n");
    ExpectEndOnOutput(3, "Peptide", [&] { LoadFrom<MSGFTSVPepIdentIO>(folder_.Path()); });
    folder_.Write("a.txt", "Raw file\n");
    folder_.Write("peptides.txt", "Amino acid before\n");
    ExpectEndOnOutput(4, "Sequence", [&] { LoadFrom<MaxQuantTXTPepIdentIO>(folder_.Path()); });
    folder_.Write("a.txt", kMatchHeader);
    ExpectEndOnOutput(5, "Amino acid after",
                      [&] { LoadFrom<MaxQuantTXTPepIdentIO>(folder_.Path()); });
    folder_.Write("a.txt", "File_Name\tScan_No\n");
    ExpectEndOnOutput(7, "Sequence", [&] { LoadFrom<Pfind3PepIdentIO>(folder_.Path()); });
}

TEST_F(ErrorMessagesDeathTest, B66_APrecursorErrorHasNoUnit)
{
    folder_.Write("a.txt", "#SpecFile\tScanNum\tPeptide\tCharge\tPrecursor\tSpecEValue\tProtein\n");
    ExpectEndOnOutput(3, "PrecursorError", [&] { LoadFrom<MSGFTSVPepIdentIO>(folder_.Path()); });
}

TEST_F(ErrorMessagesDeathTest, B62_PeptidesListTheRowsInAnotherOrder)
{
    folder_.Write("a.txt", std::string(kMatchHeader) + test::Repeat("a\t", 11) + "a\n");
    folder_.Write("peptides.txt",
                  "Amino acid before\tAmino acid after\tProteins\tMS/MS IDs\nK\tR\tP\t1\n");
    ExpectEndOnOutput(6, "", [&] { LoadFrom<MaxQuantTXTPepIdentIO>(folder_.Path()); });
}

} // namespace
} // namespace Vorlan
