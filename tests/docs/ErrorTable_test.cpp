// Walks the exceptions of docs/errors.md: every row is provoked and compared,
// and everything that can be provoked here has a row.
#include <functional>
#include <utility>

#include <OpenMS/CONCEPT/Exception.h>

#include "CStringProcess.h"
#include "InitFile.h"
#include "ModificationDB.h"
#include "PeptideIdentificationIO.h"
#include "SpectraIO.h"
#include "TulkParam.h"
#include "docs/Page.h"
#include "support/Support.h"

namespace Vorlan {
namespace {

using test::Row;

/// What differs, and how the page writes it.
using Placeholders = std::vector<std::pair<std::string, std::string>>;

/// What the calls throw, as the page has it: unit, class, line, label, text.
class Provoked {
public:
    /// An exception with a line of our sources, which the page leaves open.
    void Add(const std::function<void()>& call, const Placeholders& placeholders = {})
    {
        Add(0, call, placeholders);
    }

    /// An exception with a line that hosts know.
    void Add(int line, const std::function<void()>& call, const Placeholders& placeholders = {})
    {
        try {
            call();
        } catch (const OpenMS::Exception::BaseException& e) {
            std::string text = e.what();
            for (const auto& [value, placeholder] : placeholders) {
                CStringProcess::replace_all(text, value, placeholder);
            }
            const bool isFixed = line != 0;
            rows.push_back({e.getFile(), e.getName(), isFixed ? std::to_string(e.getLine()) : "",
                            e.getFunction(), text});
            EXPECT_GT(e.getLine(), 0) << text;
            if (isFixed) {
                EXPECT_EQ(e.getLine(), line) << text;
            }
            return;
        }
        rows.push_back({"nothing thrown"});
    }

    std::vector<Row> rows;
};

/// The rows of the page for one unit.
std::vector<Row> RowsOf(const std::string& unit)
{
    std::vector<Row> rows;
    for (Row& row : test::RowsUnder("errors.md", "Exceptions")) {
        if (row[0] == unit) {
            std::transform(row.begin(), row.end(), row.begin(), test::WithoutTicks);
            rows.push_back(row);
        }
    }
    return rows;
}

TEST(ErrorTable, EveryUnitIsTestedHere)
{
    std::vector<std::string> units;
    for (const Row& row : test::RowsUnder("errors.md", "Exceptions")) {
        if (units.empty() || units.back() != row[0]) {
            units.push_back(row[0]);
        }
    }
    EXPECT_THAT(units,
                testing::ElementsAre("InitFile", "DataStructures", "SpectraIO", "ModificationDB",
                                     "TulkParam", "PeptideIdentificationIO"));
}

// ---- InitFile ------------------------------------------------------------

TEST(ErrorTable, ListsEveryExceptionOfInitFile)
{
    const test::TempFolder folder;
    const std::string path = folder.Write("bad.ini", "[S]\na = 1 = 2\n");
    Provoked provoked;
    testing::internal::CaptureStdout();
    provoked.Add([] { InitFile().Load("/no/file.ini"); }, {{"/no/file.ini", "<path>"}});
    testing::internal::GetCapturedStdout();
    provoked.Add([&] { InitFile().Load(path); }, {{"2 \"a = 1 = 2\"", "<number> \"<line>\""}});
    provoked.Add([] { InitFile().Save("/no/file.ini"); }, {{"/no/file.ini", "<path>"}});
    EXPECT_EQ(RowsOf("InitFile"), provoked.rows);
}

// ---- DataStructures ------------------------------------------------------

Peak PeakWith(int ionType, int hitStatus)
{
    Peak::MatchRes match;
    match.eIonType = static_cast<Peak::EIonType>(ionType);
    match.eHitStatus = static_cast<Peak::EPeakHitStatus>(hitStatus);
    Peak peak;
    peak.addMatchRes(match);
    return peak;
}

TEST(ErrorTable, ListsEveryExceptionOfDataStructures)
{
    Provoked provoked;
    provoked.Add([] { PeptideIdentification().isTarget("REV_"); });
    provoked.Add([] { LocalizeResult::transStringToEModSite("s"); }, {{"'115'", "'<code>'"}});
    provoked.Add([] {
        LocalizeResult::transETermSpecificityToString(LocalizeResult::NUMBER_OF_TERM_SPECIFICITY);
    });
    provoked.Add([] { LocalizeResult::transStringToETermSpecificity("Any"); },
                 {{"of Any", "of <text>"}});
    Peak peak;
    const std::function<void()> beyondTheMatches[] = {
        [&] { peak.getIonTypeOf(7); },   [&] { peak.setIonTypeOf(Peak::B_ION, 7); },
        [&] { peak.getIonIndexOf(7); },  [&] { peak.setIonIndexOf(1, 7); },
        [&] { peak.getChargeOf(7); },    [&] { peak.setChargeOf(1, 7); },
        [&] { peak.getHitStatusOf(7); }, [&] { peak.setHitStatusOf(Peak::SHIFT, 7); },
        [&] { peak.getMatchResOf(7); },  [&] { peak.getHitStatusStringOf(7); },
    };
    for (const auto& call : beyondTheMatches) {
        provoked.Add(call, {{"7 (size = 0)", "<index> (size = <size>)"}});
    }
    provoked.Add([] { PeakWith(9, 1).getHitStatusStringOf(0); }, {{"'9'", "'<number>'"}});
    provoked.Add([] { PeakWith(2, 9).getHitStatusStringOf(0); }, {{"'9'", "'<number>'"}});
    EXPECT_EQ(RowsOf("DataStructures"), provoked.rows);
}

// ---- SpectraIO, PeptideIdentificationIO ----------------------------------

TEST(ErrorTable, ListsEveryExceptionOfSpectraIO)
{
    Provoked provoked;
    std::vector<Spectrum> spectra;
    provoked.Add(626, [&] { DatasetIOPool().bLoadOneSpectrum("a.mgf", "b", spectra); },
                 {{"a.mgf", "<dataset name>"}});
    EXPECT_EQ(RowsOf("SpectraIO"), provoked.rows);
}

/// Loads a file of no folder.
template <typename Reader>
void LoadNothing()
{
    Reader reader;
    reader.InitLoad(PepIdentSource("/no/folder", "psms.txt", reader.eGetType()));
    std::vector<PeptideIdentification> matches;
    reader.Load(matches);
}

/// Loads files of these texts, the second one when it has a text.
template <typename Reader>
void LoadText(const std::string& text, const std::string& second = "")
{
    const test::TempFolder folder;
    folder.Write("table.txt", text);
    PepIdentSource source(folder.Path(), "table.txt", PepIdentType::Unknown);
    if (!second.empty()) {
        folder.Write("second.txt", second);
        source.strThird = folder.Path();
        source.strFourth = "second.txt";
    }
    Reader reader;
    reader.InitLoad(source);
    std::vector<PeptideIdentification> matches;
    reader.Load(matches);
}

void ProvokeNativeTable(Provoked& provoked)
{
    provoked.Add([] { LoadNothing<TulkTXTPepIdentIO>(); }, {{"/no/folder\\psms.txt", "<path>"}});
    provoked.Add([] { LoadText<TulkTXTPepIdentIO>("Spectrum Name\n"); },
                 {{"Dataset Name", "<column>"}});
    provoked.Add(
        [] {
            TulkTXTPepIdentIO writer;
            writer.InitSave("/no/folder/out.txt");
            writer.Save({});
        },
        {{"/no/folder/out.txt", "<path>"}});
}

void ProvokePepXml(Provoked& provoked)
{
    provoked.Add([] {
        std::vector<IdentModification> mods;
        MSFraggerPepXMLPepIdentIO().getMod(mods, 1000.0, 1, 'K', 'R', 'A');
    });
    provoked.Add(
        [] {
            const IdentModification mod("a", 1.0, "K", "Somewhere", 0);
            MSFraggerPepXMLPepIdentIO().SatisfySpecificity(mod, 1, 'K', 'R', 'A');
        },
        {{"'Somewhere'", "'<position type>'"}});
}

void ProvokeEngineTables(Provoked& provoked)
{
    const Placeholders path = {{"/no/folder\\psms.txt", "<path>"}};
    provoked.Add([] { LoadNothing<MSGFTSVPepIdentIO>(); }, path);
    provoked.Add(534,
                 [] {
                     LoadText<MSGFTSVPepIdentIO>(
                         "#SpecFile\tScanNum\tPeptide\tCharge\tPrecursor\t"
                         "PrecursorError(ppm)\tSpecEValue\tProtein\n"
                         "a.mgf\t1\tPEP+1.5K\t2\t1\t1\t1\tP(pre=K,post=R)\n");
                 },
                 {{"'+1.5'", "'<mass>'"}});
    provoked.Add([] { LoadNothing<MaxQuantTXTPepIdentIO>(); }, path);
    provoked.Add(
        1011,
        [] {
            LoadText<MaxQuantTXTPepIdentIO>(
                "Raw file\tSequence\tScan number\tCharge\tReverse\tScore\tMass Error [ppm]\t"
                "m/z\tProteins\tRetention time\tModifications\tModified sequence\n"
                "a\tPEPK\t1\t2\t\t1\t1\t1\tP\t1\tOxidation (M)\t_PEP(no)K_\n",
                "Amino acid before\tAmino acid after\tProteins\tMS/MS IDs\nK\tR\tP\t0\n");
        },
        {{"'no'", "'<abbreviation>'"}});
    provoked.Add([] { LoadNothing<Pfind3PepIdentIO>(); }, path);
    provoked.Add([] { LoadNothing<PfindTXTPepIdentIO>(); }, path);
    provoked.Add([] { LoadNothing<SequestTXTPepIdentIO>(); }, path);
    provoked.Add([] { LoadText<SequestTXTPepIdentIO>("Sequence\n"); }, {{"Rank", "<column>"}});
}

TEST(ErrorTable, ListsEveryExceptionOfPeptideIdentificationIO)
{
    Provoked provoked;
    ProvokeNativeTable(provoked);
    ProvokePepXml(provoked);
    test::OutputOf([&] { ProvokeEngineTables(provoked); }); // the progress of some
    EXPECT_EQ(RowsOf("PeptideIdentificationIO"), provoked.rows);
}

// ---- ModificationDB ------------------------------------------------------

/// The default database from any path.
class DefaultTable : public CModificationsDBCalvexDefault {
public:
    explicit DefaultTable(const std::string& path) : CModificationsDBCalvexDefault(path) {}
};

void ReadPFind3Definition(const std::string& definition)
{
    const test::TempFolder folder;
    CModificationsDBEnginePFind3(folder.Write("modification.ini", "name1=x\n" + definition + "\n"));
}

void ProvokeQuestions(Provoked& provoked)
{
    constexpr auto kAny = CResidueModification::NUMBER_OF_TERM_SPECIFICITY;
    const CModificationsDBEngineCalvex database(PELGRIN_EXAMPLES "/data/demo_modifications.txt");
    provoked.Add(148, [] { CResidueModification().setTermSpecificity("N-term"); },
                 {{"'N-term'", "'<text>'"}});
    provoked.Add(177, [] {
        CResidueModification().getTermSpecificityName(
            static_cast<CResidueModification::TermSpecificity>(6));
    });
    provoked.Add(395, [&] { database.getModification("Phospho", "K", kAny); },
                 {{"'Phospho'", "'<name>'"}});
    provoked.Add(407, [&] { database.getModification("Nothing", "K", kAny); },
                 {{"'Nothing'", "'<name>'"}});
    provoked.Add(459, [&] { database.writeToFile("/no/dump.txt"); }, {{"/no/dump.txt", "<path>"}});
}

void ProvokePFind3(Provoked& provoked)
{
    const auto add = [&provoked](int line, const std::string& definition,
                                 const Placeholders& more = {{"line2", "line<line>"}}) {
        provoked.Add(
            line, [&] { ReadPFind3Definition(definition); }, more);
    };
    provoked.Add(1141, [] { CModificationsDBEnginePFind3("/no/file"); }, {{"/no/file", "<path>"}});
    add(1176, "A[K]");
    add(1182, "A[K]=K NORMAL 1 1 0");
    add(1194, "A[K](B])=K NORMAL 1 1 0 0");
    add(1204, "A=K NORMAL 1 1 0 0");
    add(1228, "A[K]=K NOWHERE 1 1 0 0", {{"NOWHERE", "<item>"}, {"line 2", "line <line>"}});
}

TEST(ErrorTable, ListsEveryExceptionOfModificationDB)
{
    Provoked provoked;
    ProvokeQuestions(provoked);
    const Placeholders path = {{"/no/file", "<path>"}};
    provoked.Add([] { DefaultTable("/no/file"); }, path);
    provoked.Add(913,
                 [] { CModificationsDBEngine::getInstance("/no/file", SearchEngineType::Mascot); },
                 {{"Mascot", "<engine>"}});
    provoked.Add([] { CModificationsDBEngineCalvex("/no/file"); }, path);
    ProvokePFind3(provoked);
    provoked.Add(
        1276, [] { CModificationsDBEngineMSFragger("/no/file"); }, path);
    EXPECT_EQ(RowsOf("ModificationDB"), provoked.rows);
}

// ---- TulkParam -----------------------------------------------------------

/// Reads the example file with one value changed, in the folder of the sources,
/// where its paths begin.
void ReadWith(const std::string& section, const std::string& key, const std::string& value)
{
    const test::TempFolder folder;
    const auto former = std::filesystem::current_path();
    std::filesystem::current_path(PELGRIN_EXAMPLES "/..");
    InitFile file;
    file.Load("examples/data/demo.ini");
    file.Set("Fdr", "decoy_tag", "REV_");
    file.Set("Fdr", "fdr_threshold", "0.01");
    file.Set("Annotation", "protein_database", "proteins.fasta");
    file.Set(section, key, value);
    file.Set("Fdr", "is_fdr_control", file.Get("Fdr", "fdr_method").empty() ? "0" : "1");
    file.Save(folder.PathOf("run.ini"));
    try {
        CTulkParam::readFromFile(folder.PathOf("run.ini"));
    } catch (...) {
        std::filesystem::current_path(former);
        throw;
    }
    std::filesystem::current_path(former);
}

TEST(ErrorTable, ListsEveryExceptionOfTulkParam)
{
    const Placeholders place = {
        {"\"fragment_tol\" in section \"Search\"", "\"<key>\" in section \"<section>\""}};
    Provoked provoked;
    provoked.Add([] { ReadWith("Search", "fragment_tol", ""); }, place);
    provoked.Add([] { ReadWith("Search", "fragment_tol", "0"); }, place);
    provoked.Add([] { ReadWith("Fdr", "fdr_method", "4"); });
    provoked.Add([] { ReadWith("Annotation", "is_annotated", "1"); });
    EXPECT_EQ(RowsOf("TulkParam"), provoked.rows);
}

} // namespace
} // namespace Vorlan
