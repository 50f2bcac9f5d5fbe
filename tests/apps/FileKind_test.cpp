// What a file is, by its content: tiny texts, damaged ones, and the real files.
#include "files/FileKind.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "common/Failure.h"
#include "support/Random.h"
#include "support/Support.h"

namespace pelgrin::test {
namespace {

namespace fs = std::filesystem;
using Vorlan::PepIdentType;
using Vorlan::test::RealDataFolder;
using Vorlan::test::TempFolder;

FileKind KindOfText(const std::string& text)
{
    const TempFolder folder;
    return KindOf(folder.Write("file", text));
}

/// An ASCII text in UTF-16, least significant byte first, with its mark.
std::string Wide(const std::string& text)
{
    std::string wide = "\xFF\xFE";
    for (const char c : text) {
        wide += {c, '\0'};
    }
    return wide;
}

struct TextOfKind {
    const char* reason;
    std::string text;
    FileKind kind;
};

const std::string kMaxQuant =
    "Raw file\tScan number\tSequence\tCharge\tReverse\tScore\tMass error [ppm]\tm/z\t"
    "Proteins\tRetention time\tModifications\tModified sequence\n";

const std::vector<TextOfKind> kTexts = {
    {"an empty file is nothing", "", FileKind::Unknown},
    {"so is one of blanks", " \n\n", FileKind::Unknown},
    {"and prose", "Dear all,\nplease find it below.\n", FileKind::Unknown},
    {"a record of MGF", "BEGIN IONS\nTITLE=a\n1 1\nEND IONS\n", FileKind::Mgf},
    {"keys may stand before it", "COM=made\nCHARGE=2+\n\nBEGIN IONS\n", FileKind::Mgf},
    {"comments, too", "# MS.x = 1\n# y\nBEGIN IONS\n", FileKind::Mgf},
    {"a byte order mark hides nothing",
     "\xEF\xBB\xBF"
     "BEGIN IONS\n",
     FileKind::Mgf},
    {"lines may end in carriage returns", "BEGIN IONS\rTITLE=a\r1 1\rEND IONS\r", FileKind::Mgf},
    {"or be of two bytes a letter", Wide("BEGIN IONS\r\nTITLE=a\r\n"), FileKind::Mgf},
    {"a blank in front is a blank", "  BEGIN IONS\n", FileKind::Mgf},
    {"mass and charge, then peaks", "1148.77 2 \n191.29 7976.0\n", FileKind::Dta},
    {"peaks alone are no DTA", "191.29 7976.0\n199.11 2849.0\n", FileKind::Unknown},
    {"mass and charge alone are DTA", "1148.77 2", FileKind::Dta},
    {"a charge is whole", "1148.77 2.5\n191.29 7976.0\n", FileKind::Unknown},
    {"mzML in its index", "<?xml version=\"1.0\"?>\n<indexedmzML xmlns=\"x\">", FileKind::MzMl},
    {"mzML", "<mzML>", FileKind::MzMl},
    {"mzXML with a line end behind its name", "<?xml?>\n<mzXML\n xmlns=\"x\">", FileKind::MzXml},
    {"pepXML", "<?xml?>\n<?xsl?>\n <msms_pipeline_analysis date=\"\">", FileKind::PepXml},
    {"a comment is no element", "<!-- <mzML> --><unimod:unimod>", FileKind::Unimod},
    {"a comment without an end is none either", "<!-- <mzML> ", FileKind::OtherXml},
    {"Unimod with its prefix", "<?xml?>\n<umod:unimod xmlns:umod=\"x\">", FileKind::Unimod},
    {"XML of another kind", "<html><body>", FileKind::OtherXml},
    {"the native table", "Dataset Name\tSpectrum Name\tObsMH\tMass Shift\tMain Score\n",
     FileKind::NativeTable},
    {"annotations are none", "Dataset Name\tSpectrum Name\tSequence\tCharge\tIon\n",
     FileKind::OtherTable},
    {"MS-GF+ in another letter case", "#specfile\tSCANNUM\tSpecEvalue\n", FileKind::Msgf},
    {"what a reader of MaxQuant needs", kMaxQuant, FileKind::MaxQuantMatches},
    {"evidence.txt has too few of them",
     "Modified sequence\tRaw file\tMass error [ppm]\tMS/MS scan number\n", FileKind::OtherTable},
    {"peptides.txt", "Amino acid before\tAmino acid after\tProteins\tMS/MS IDs\n",
     FileKind::MaxQuantPeptides},
    {"pFind 3", "File_Name\tScan_No\tExp.MH+\tCharge\n", FileKind::PFind3},
    {"pFind 2.8", "[Meta]\nA=1\n[Search]\nInputPath=x\n[Spectrum1]\n", FileKind::PFind28},
    {"cells in quotes", "\"Spectrum File\"\t\"First Scan\"\t\"XCorr\"\r\n", FileKind::Sequest},
    {"proteins", ">P1 text\nGASK\n", FileKind::Fasta},
    {"the table of modifications", "full_id\tfull_name\tterm_spec\tdiff_mono_mass\n",
     FileKind::ModificationTable},
    {"the list of pFind 3", "@NUMBER_MODIFICATION=1\nname1=Ox[M] 1\n",
     FileKind::PFind3Modifications},
    {"the same without its number", "name1=Ox[M] 1\nOx[M]=M NORMAL 15.9 15.9 0 O(1)\n",
     FileKind::PFind3Modifications},
    {"parameters of a run", "[Search]\ndataset_number = 1\ndataset_filename_1 = a.mgf\n",
     FileKind::ParameterFile},
    {"one key alone is none", "dataset_number = 1\n", FileKind::Unknown},
    {"modifications of MS-GF+", "#x\nO1,M,opt,any,Oxidation # usual\n",
     FileKind::MsgfModifications},
    {"parameters of an engine", "# x\ndatabase_name = a\nnum_threads = 0\n",
     FileKind::EngineParameters},
    {"a table of another kind", "a\tb\n1\t2\n", FileKind::OtherTable},
    {"bytes are no table", std::string("a\tb\0\x01", 5), FileKind::Unknown},
};

TEST(FileKind, IsKnownByTheContent)
{
    for (const TextOfKind& row : kTexts) {
        EXPECT_STREQ(KeyOf(KindOfText(row.text)), KeyOf(row.kind)) << row.reason;
    }
}

TEST(FileKind, HasAKeyAndATextOfItsOwn)
{
    std::map<std::string, int> seen;
    for (std::size_t i = 0; i < kFileKinds; ++i) {
        EXPECT_EQ(++seen[KeyOf(static_cast<FileKind>(i))], 1);
        EXPECT_EQ(++seen[std::string("text ") + TextOf(static_cast<FileKind>(i))], 1);
    }
}

TEST(FileKind, OfAFolderIsThatOfItsFiles)
{
    const TempFolder folder;
    EXPECT_EQ(KindOf(folder.Path()), FileKind::Unknown);
    folder.Write("a.DTA", "");
    EXPECT_EQ(KindOf(folder.Path()), FileKind::DtaFolder);
}

TEST(FileKind, OfWhatCannotBeReadIsAFailure)
{
    const TempFolder folder;
    EXPECT_THROW(KindOf(folder.PathOf("none")), Failure);
}

TEST(FileKind, OfRandomAndCutBytesIsToldWithoutACrash)
{
    Vorlan::test::Random random(11);
    for (const TextOfKind& row : kTexts) {
        for (int i = 0; i < 20; ++i) {
            std::string text = row.text.substr(0, random.Below(row.text.size() + 1));
            for (std::size_t k = 0; k < 3 && !text.empty(); ++k) {
                text[random.Below(text.size())] = static_cast<char>(random.Below(256));
            }
            EXPECT_LT(static_cast<std::size_t>(KindOfText(text)), kFileKinds);
        }
    }
}

TEST(FileKind, TellsTheEngineOfAPepXmlFile)
{
    const auto format = [](const std::string& summary) {
        const TempFolder folder;
        const std::string path =
            folder.Write("a.xml", "<msms_pipeline_analysis><search_summary " + summary
                                      + "/><spectrum_query><search_summary search_engine=\"Z\"/>");
        return FormatOf(KindOf(path), path);
    };
    EXPECT_EQ(format("search_engine=\"Comet\""), PepIdentType::CometPepXml);
    EXPECT_EQ(format("x=\"y\""), PepIdentType::CometPepXml);
    EXPECT_EQ(format("search_engine=\"X! Tandem\" search_engine_version=\"MSFragger-3.8\""),
              PepIdentType::MsFraggerPepXml);
    EXPECT_EQ(format("search_engine=\"MSFragger\""), PepIdentType::MsFraggerPepXml);
    EXPECT_EQ(format("search_engine=\"X! Tandem\" search_engine_version=\"2017\""), std::nullopt);
    EXPECT_EQ(EngineOf("X! Tandem", "MSFragger.20151004").version, "20151004");
    EXPECT_EQ(EngineOf("COMET", "2016.01 rev. 3").name, "Comet");
}

/// Kinds of the real files, by the end of their paths; the first one counts.
const std::vector<std::pair<const char*, FileKind>> kRealKinds = {
    {".mgf", FileKind::Mgf},
    {".dta", FileKind::Dta},
    {".mzML", FileKind::MzMl},
    {".mzXML", FileKind::MzXml},
    {".pep.xml", FileKind::PepXml},
    {".pepXML", FileKind::PepXml},
    {".fasta", FileKind::Fasta},
    {".tsv", FileKind::Msgf},
    {".spectra", FileKind::PFind3},
    {"modification.ini", FileKind::PFind3Modifications},
    {"peptides.txt", FileKind::MaxQuantPeptides},
    {"msms.txt", FileKind::MaxQuantMatches},
    {"msms_sample.txt", FileKind::MaxQuantMatches},
    {"pFind_qry.proteins.part1.txt", FileKind::PFind28},
    {"TMT_PSMs_Rfriendly.txt", FileKind::Sequest},
    {"TMT_PSMs_derived_header.txt", FileKind::Sequest},
    {"PD_mascot_TMT_brackets.txt", FileKind::Sequest},
    {"closed/F13.txt", FileKind::OtherTable},
    {"open/F13.txt", FileKind::OtherTable},
    {"mods.txt", FileKind::MsgfModifications},
    {"Mods_msgfplus_repo.txt", FileKind::MsgfModifications},
    {"Mods_ms2rescore.txt", FileKind::MsgfModifications},
    {".params", FileKind::EngineParameters},
};

bool EndsIn(const std::string& text, const std::string& ending)
{
    return text.size() >= ending.size()
           && text.compare(text.size() - ending.size(), ending.size(), ending) == 0;
}

TEST(FileKind, OfEveryRealFileIsKnown)
{
    PELGRIN_NEEDS_REAL_DATA();
    int files = 0;
    for (const auto& entry : fs::recursive_directory_iterator(RealDataFolder())) {
        const std::string path = entry.path().string();
        if (!entry.is_regular_file() || EndsIn(path, "README.md")) {
            continue;
        }
        const auto row = std::find_if(kRealKinds.begin(), kRealKinds.end(),
                                      [&](const auto& kind) { return EndsIn(path, kind.first); });
        ASSERT_NE(row, kRealKinds.end()) << path;
        EXPECT_STREQ(KeyOf(KindOf(path)), KeyOf(row->second)) << path;
        ++files;
    }
    EXPECT_GE(files, 500);
    EXPECT_EQ(KindOf(RealDataFolder() + "/dta/20030428_4_29L_15"), FileKind::DtaFolder);
}

TEST(FileKind, OfRealPepXmlTellsItsFormat)
{
    PELGRIN_NEEDS_REAL_DATA();
    for (const auto& [file, format] : std::map<std::string, PepIdentType::EPepIdentType>{
             {"/msfragger/open/q02261_open.part1.pep.xml", PepIdentType::MsFraggerPepXml},
             {"/msfragger/closed/HLA_MSFragger3.7.pepXML", PepIdentType::MsFraggerPepXml},
             {"/comet/LakeTrout_2016.pep.xml", PepIdentType::CometPepXml},
             {"/comet/x00530_phospho_head.pepXML", PepIdentType::CometPepXml}}) {
        EXPECT_EQ(FormatOf(FileKind::PepXml, RealDataFolder() + file), format) << file;
    }
}

} // namespace
} // namespace pelgrin::test
