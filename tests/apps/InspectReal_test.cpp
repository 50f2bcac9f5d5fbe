// "pelgrin inspect" on the real files: what the readme of their folder tells.
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include "HostProgram.h"
#include "inspect/Inspect.h"

namespace pelgrin::test {
namespace {

using nlohmann::ordered_json;
using Vorlan::test::RealDataFolder;

struct RealFile {
    const char* path;
    /// What the document of the file holds, by JSON pointers.
    std::map<std::string, ordered_json> values;
};

void ExpectValues(const RealFile& file)
{
    SCOPED_TRACE(file.path);
    const ordered_json json = JsonOf(Inspect(RealDataFolder() + "/" + file.path));
    for (const auto& [pointer, value] : file.values) {
        const ordered_json::json_pointer place(pointer);
        EXPECT_EQ(json.contains(place) ? json.at(place) : ordered_json(), value) << pointer;
    }
}

TEST(InspectRealFiles, MgfOfEveryProgram)
{
    PELGRIN_NEEDS_REAL_DATA();
    for (const RealFile& file : std::vector<RealFile>{
             {"comet/F13_set/F13.mgf",
              {{"/records", 1406},
               {"/peak_lines", 138172},
               {"/titles/tpp", 1406},
               {"/record_keys/SCANS", 1406},
               {"/different_names", 5624},
               {"/spectra_read", 1406}}},
             {"mgf/msconvert_tpp_small.mgf",
              {{"/records", 34}, {"/record_keys/CHARGE", nullptr}, {"/different_names", 136}}},
             {"mgf/ThermoRawFileParser_really_small.mgf",
              {{"/titles/thermo_native_id", 34},
               {"/peak_lines", 4534},
               {"/different_names", 69},
               {"/shared_names", 1}}},
             {"mgf/MascotDistiller_1.mgf", {{"/titles/mascot_distiller", 78}, {"/records", 78}}},
             {"mgf/Bruker_Cmpd_crlf.mgf",
              {{"/titles/cmpd", 21},
               {"/line_ends/crlf", 6153},
               {"/line_ends/lf", nullptr},
               {"/different_names", 22}}},
             {"mgf/pParse_BSA_DSSO.part1.mgf",
              {{"/titles/pparse", 300}, {"/peak_lines", 75842}, {"/different_names", 600}}},
             {"mgf/ProteinPilot.mgf",
              {{"/titles/protein_pilot", 1}, {"/file_keys/CHARGE", 1}, {"/file_keys/COM", 1}}},
             {"mgf/OpenMS_Ecoli_MS2_small.mgf",
              {{"/titles/file_converter", 139},
               {"/record_keys/CHARGE", 139},
               {"/peak_lines", 36050},
               {"/different_names", 556}}},
             {"mgf/ThermoRaw_withEmptySpectra_BOM.mgf",
              {{"/encoding", "utf_8_with_mark"},
               {"/records", 2},
               {"/record_keys/TITLE", 2},
               {"/different_names", 3},
               {"/lost/behind_byte_order_mark/count", 1},
               {"/spectra_read", 1}}},
             {"mgf/Thermo_iTRAQ_COM_header.mgf",
              {{"/titles/dotted_with_charge", 4}, {"/file_keys/CHARGE", 1}}},
             {"maxquant/HCT116_set/B001991_Ap_CMB-89_GevaertLab_ShotGun_HCT116_2.mgf",
              {{"/titles/dotted", 98}, {"/peak_lines", 21110}, {"/names/scan", 0}}},
         }) {
        ExpectValues(file);
    }
}

TEST(InspectRealFiles, ResultsOfEveryEngine)
{
    PELGRIN_NEEDS_REAL_DATA();
    for (const RealFile& file : std::vector<RealFile>{
             {"comet/F13_set/closed/F13.pep.xml",
              {{"/engine", "Comet"},
               {"/version", "2019.01 rev. 5"},
               {"/run_count", 1},
               {"/runs/0/enzyme", "Trypsin"},
               {"/runs/0/modifications/2", "C +57.021464 fixed"},
               {"/queries", 1384},
               {"/hits", 1707},
               {"/records_read", 589},
               {"/passed_over/query_without_hit/count", 795}}},
             {"comet/PRG2012_set/201208-378803-cm.pep.xml",
              {{"/version", "2014.02 rev. 0"}, {"/queries", 216}, {"/decoy_fronts/XXX_", 448}}},
             {"msfragger/open/q02261_open.part1.pep.xml",
              {{"/engine", "MSFragger"},
               {"/version", "20151004"},
               {"/queries", 32},
               {"/hits", 32}}},
             {"msfragger/closed/TMT18_MSFragger3.8.pepXML",
              {{"/version", "3.8"}, {"/records_read", 3}, {"/decoy_fronts/rev_", 2}}},
             {"msgfplus/QC_Shew_13_05b_msgfplus.tsv",
              {{"/engine", "MS-GF+"}, {"/rows", 18798}, {"/records_read", 18798}}},
             {"maxquant/BSA_2.0.3.0/msms.txt",
              {{"/kind", "maxquant_matches"}, {"/rows", 16}, {"/records_read", 16}}},
             {"maxquant/HeLa_1000rows/msms.txt",
              {{"/rows", 1000},
               {"/rows_marked_as_decoys", 3},
               {"/missing_columns", ordered_json::array()},
               {"/records_read", nullptr}}},
             {"maxquant/SILAC_phospho_older/msms.txt",
              {{"/rows", 1036},
               {"/rows_marked_as_decoys", 7},
               {"/columns/64", "Phospho (STY) site IDs"}}},
             {"maxquant/BSA_2.0.3.0/peptides.txt",
              {{"/kind", "maxquant_peptides"}, {"/rows", 11}, {"/refusal", nullptr}}},
             {"pfind3/pFind-Filtered.spectra",
              {{"/engine", "pFind 3"}, {"/rows", 6}, {"/rows_marked_as_decoys", 0}}},
             {"pfind28/pFind_qry.proteins.part1.txt",
              {{"/sections", 1000},
               {"/sections_with_candidate", 689},
               {"/records_read", 0},
               {"/passed_over/without_candidate/count", 311},
               {"/lost/other_layout/count", 689}}},
             {"sequest/TMT_PSMs_derived_header.txt",
              {{"/rows", 5000},
               {"/records_read", 5000},
               {"/missing_columns", ordered_json::array()}}},
             {"sequest/TMT_PSMs_Rfriendly.txt",
              {{"/rows", 500}, {"/missing_columns/0", "\"Deltam/z [Da]\""}}},
             {"sequest/PD_mascot_TMT_brackets.txt",
              {{"/rows", 753}, {"/missing_columns", {"\"Sequence\"", "\"XCorr\""}}}},
             {"comet/F13_set/closed/F13.txt", {{"/kind", "other_table"}, {"/rows", 1708}}},
         }) {
        ExpectValues(file);
    }
}

TEST(InspectRealFiles, ProteinsModificationsAndTheRest)
{
    PELGRIN_NEEDS_REAL_DATA();
    for (const RealFile& file : std::vector<RealFile>{
             {"fasta/Ecoli_K12_target_decoy.fasta",
              {{"/entries", 8272}, {"/residues", 2633402}, {"/decoy_fronts/rev_", 4136}}},
             {"fasta/Shewanella_oneidensis_crlf.fasta",
              {{"/entries", 4316}, {"/residues", 1410448}, {"/line_ends/lf", nullptr}}},
             {"comet/F13_set/Homo-sapiens_td.fasta",
              {{"/entries", 1250},
               {"/header_styles/UniProt", 1250},
               {"/decoy_fronts/DECOY_", 625}}},
             {"comet/PRG2012_set/cow.protein.PRG2012-subset.fasta",
              {{"/header_styles/NCBI (gi)", 72}, {"/decoy_fronts", ordered_json::object()}}},
             {"pfind3/modification.ini", {{"/entries", 1616}, {"/declared_entries", 1616}}},
             {"msgfplus/TMT_set/mods.txt", {{"/entries", 4}, {"/entry_sorts/fixed", 3}}},
             {"msgfplus/Mods_msgfplus_repo.txt", {{"/entries", 1}}},
             {"msgfplus/Mods_ms2rescore.txt", {{"/entries", 2}}},
             {"comet/F13_set/open/comet.params", {{"/version", "2019.01 rev. 5"}}},
             {"msfragger/params/closed_fragger.params", {{"/version", "4.2"}}},
             {"mzml/Ecoli_MS2_small.mzML", {{"/spectra", 139}, {"/version", "1.1.0"}}},
             {"mzxml/DDA-10-scans-no-index.mzXML", {{"/spectra", 10}, {"/version", "3.2"}}},
             {"dta/20030428_4_29L_15",
              {{"/files", 480},
               {"/charges_in_names", {{"2", 215}, {"3", 212}, {"1", 53}}},
               {"/spectra_read", 480}}},
         }) {
        ExpectValues(file);
    }
}

TEST(InspectRealFiles, AllInOneCall)
{
    PELGRIN_NEEDS_REAL_DATA();
    std::vector<std::string> arguments = {"inspect", "--json"};
    for (const auto& entry : std::filesystem::recursive_directory_iterator(RealDataFolder())) {
        if (entry.is_regular_file() && entry.path().extension() != ".dta"
            && entry.path().extension() != ".md") {
            arguments.push_back(entry.path().string());
        }
    }
    const Outcome outcome = RunPelgrin(arguments);
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    const ordered_json files = ordered_json::parse(outcome.out)["files"];
    EXPECT_EQ(files.size(), arguments.size() - 2);
    for (const ordered_json& file : files) {
        EXPECT_NE(file["kind"], "unknown") << file["path"];
    }
}

} // namespace
} // namespace pelgrin::test
