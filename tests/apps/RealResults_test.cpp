// Real results of every engine: read, converted, joined with their spectra.
#include <algorithm>
#include <chrono>

#include "HostProgram.h"

namespace pelgrin::test {
namespace {

using testing::HasSubstr;
using testing::StartsWith;
using Vorlan::test::ReadFile;
using Vorlan::test::RealDataFolder;
using Vorlan::test::TempFolder;

using Arguments = std::vector<std::string>;

const Arguments kUsual = {"--mod", "Carbamidomethyl (C)=57.021464",
                          "--mod", "Oxidation (M)=15.994915",
                          "--mod", "Acetyl (Protein N-term)=42.010565"};

Arguments With(Arguments arguments, const Arguments& more)
{
    arguments.insert(arguments.end(), more.begin(), more.end());
    return arguments;
}

std::string PathOf(const std::string& name)
{
    return RealDataFolder() + "/" + name;
}

struct Result {
    const char* format;
    const char* file;
    Arguments more;
    int status;
    const char* report;     ///< how it begins, up to the path of the table
    Arguments classes = {}; ///< what of the closing table stands in it
};

Outcome Convert(const Result& result, const TempFolder& folder)
{
    return RunPelgrin(
        With({"convert", "--format", result.format, "--in", PathOf(result.file), "--out",
              folder.PathOf("table.txt"), "--allow", "further_hit,further_protein,lower_rank"},
             result.more));
}

/// The rows of a native table below its header.
std::size_t RowsOf(const std::string& table)
{
    return static_cast<std::size_t>(std::count(table.begin(), table.end(), '\n')) - 1;
}

void ExpectConverted(const std::vector<Result>& results)
{
    for (const Result& result : results) {
        SCOPED_TRACE(result.file);
        const TempFolder folder;
        const auto begin = std::chrono::steady_clock::now();
        const Outcome outcome = Convert(result, folder);
        const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - begin;
        testing::Test::RecordProperty(result.file, std::to_string(taken.count()) + " s");
        EXPECT_EQ(outcome.status, result.status) << outcome.err;
        EXPECT_THAT(outcome.out, StartsWith(result.report));
        for (const std::string& one : result.classes) {
            EXPECT_THAT(outcome.out, HasSubstr(one));
        }
        const std::string table = ReadFile(folder.PathOf("table.txt"));
        EXPECT_THAT(outcome.out,
                    HasSubstr(std::to_string(RowsOf(table)) + "   records to " + folder.Path()));
    }
}

TEST(RealResults, OfCometAreReadWhole)
{
    PELGRIN_NEEDS_REAL_DATA();
    const Arguments phospho = With(kUsual, {"--mod", "Phospho (STY)=79.966331"});
    ExpectConverted(
        {{"Comet (.pep.xml)",
          "comet/F13_set/closed/F13.pep.xml",
          kUsual,
          0,
          "Matches read       589\nWritten            589   records to ",
          {"matches                  1707       589 ", " 795  query_without_hit:",
           "allowed     1118  further_hit:", "allowed       35  further_protein:"}},
         {"Comet (.pep.xml)",
          "comet/F13_set/open/F13.pep.xml",
          kUsual,
          0,
          "Matches read      1384\n",
          {"allowed      120  further_protein:"}},
         {"Comet (.pep.xml)", "comet/Jurkat_set/closed/PV_Jurk_Promega50_IAP_minwash.pep.xml",
          phospho, 0, "Matches read      1999\n"},
         {"Comet (.pep.xml)", "comet/Jurkat_set/open/PV_Jurk_Promega50_IAP_minwash.pep.xml", kUsual,
          0, "Matches read      1999\n"},
         {"Comet (.pep.xml)",
          "comet/PRG2012_set/201208-378803-cm.pep.xml",
          {"--mod", "Carboxymethyl (C)=58.005479", "--mod", "Oxidation (M)=15.994915", "--mod",
           "Deamidated (NQ)=0.984016", "--mod", "Gln->pyro-Glu (Any N-term Q)=-17.026549"},
          0,
          "Matches read       174\n",
          {"no loss       42  query_without_hit:"}},
         {"Comet (.pep.xml)", "comet/x00530_phospho_head.pepXML", phospho, 0,
          "Matches read       182\n"},
         {"Comet (.pep.xml)",
          "comet/LakeTrout_2016.pep.xml",
          kUsual,
          0,
          "Matches read         2\n",
          {"allowed        1  further_hit:"}}});
}

TEST(RealResults, OfMsFraggerAreReadWhole)
{
    PELGRIN_NEEDS_REAL_DATA();
    ExpectConverted(
        {{"MSFragger (.pepXML)", "msfragger/open/q02261_open.part1.pep.xml", kUsual, 0,
          "Matches read        32\n"},
         {"MSFragger (.pepXML)", "msfragger/closed/HLA_MSFragger3.7.pepXML", kUsual, 0,
          "Matches read         4\n"},
         {"MSFragger (.pepXML)", "msfragger/closed/TMT18_MSFragger3.8.pepXML",
          With(kUsual, {"--mod", "TMTpro (K)=304.207146", "--mod", "TMTpro (N-term)=304.207146"}),
          0, "Matches read         3\n"},
         {"MSFragger (.pepXML)", "msfragger/closed/spectra_MSFragger3.0.pepXML", kUsual, 0,
          "Matches read         3\n"}});
}

TEST(RealResults, OfMsgfAreReadWhole)
{
    PELGRIN_NEEDS_REAL_DATA();
    ExpectConverted(
        {{"MSGF (.tsv)", "msgfplus/QC_Shew_13_05b_msgfplus.tsv", kUsual, 0,
          "Matches read     18798\nWritten          18798   records to "},
         {"MSGF (.tsv)", "msgfplus/QC_Mam_19_01_msgfplus_excerpt.tsv", kUsual, 0,
          "Matches read       999\n"},
         {"MSGF (.tsv)", "msgfplus/QC_Mam_19_01_delimited_msgfplus_excerpt.tsv", kUsual, 0,
          "Matches read       999\n"},
         {"MSGF (.tsv)", "msgfplus/test_prepost.tsv", kUsual, 0, "Matches read         2\n"},
         {"MSGF (.tsv)", "msgfplus/test_unrolled.tsv", kUsual, 0, "Matches read         3\n"},
         {"MSGF (.tsv)",
          "msgfplus/TMT_set/few_spectra.tsv",
          {"--second", PathOf("msgfplus/TMT_set/mods.txt")},
          0,
          "Matches read       150\n"}});
}

TEST(RealResults, OfMaxQuantPFindAndSequestAreReadWhole)
{
    PELGRIN_NEEDS_REAL_DATA();
    ExpectConverted(
        {{"MaxQuant", "maxquant/BSA_2.0.3.0/msms.txt", {}, 0, "Matches read        16\n"},
         {"MaxQuant",
          "maxquant/BSA_2.0.3.0_derived_header/msms.txt",
          {},
          0,
          "Matches read        16\n"},
         {"pFind 3 (.spectra)", "pfind3/pFind-Filtered.spectra", {}, 0, "Matches read         6\n"},
         {"Sequest (.txt)",
          "sequest/TMT_PSMs_derived_header.txt",
          {},
          0,
          "Matches read      5000\n"},
         {"pFind 2.8 (.txt)",
          "pfind28/pFind_qry.proteins.part1.txt",
          {},
          3,
          "Matches read         0\n",
          {"lost         689  other_layout:", "no loss      311  without_candidate:"}}});
}

TEST(RealResults, ThatDoNotFitAreRefusedWithTheReason)
{
    PELGRIN_NEEDS_REAL_DATA();
    for (const Result& result :
         {Result{"Sequest (.txt)",
                 "sequest/TMT_PSMs_Rfriendly.txt",
                 {},
                 1,
                 ":1: expected a column named \"Deltam/z [Da]\" in the header line\n"},
          Result{"Sequest (.txt)",
                 "sequest/PD_mascot_TMT_brackets.txt",
                 {},
                 1,
                 ":1: expected a column named \"Sequence\" in the header line\n"},
          Result{"MaxQuant",
                 "maxquant/HeLa_1000rows/msms.txt",
                 {},
                 1,
                 "peptides.txt: cannot be opened: No such file or directory\n"},
          Result{"MSGF (.tsv)",
                 "msgfplus/TMT_set/few_spectra.tsv",
                 {},
                 1,
                 ":2: spectrum \"10029\": the value '+229.163' was used but is not valid"}}) {
        SCOPED_TRACE(result.file);
        const TempFolder folder;
        ExpectRefusal(Convert(result, folder), result.status, result.report);
    }
}

TEST(RealResults, MatchesThatCannotBeReadAreLeftOutOneByOne)
{
    PELGRIN_NEEDS_REAL_DATA();
    const TempFolder folder;
    const Outcome outcome =
        Convert({"Comet (.pep.xml)", "comet/F13_set/open/F13.pep.xml", {}, 3, ""}, folder);
    EXPECT_EQ(outcome.status, 3);
    EXPECT_THAT(outcome.out, HasSubstr("lost         217  record_rejected:"));
    EXPECT_EQ(RowsOf(ReadFile(folder.PathOf("table.txt"))), 1384U - 217U);
    EXPECT_THAT(outcome.err,
                HasSubstr(":332: spectrum \"F13.01975.01975.2\": peptide \"INPPLMKR\", modified "
                          "residues M6 (147.035385): no sum of up to five of the given "
                          "modifications"));
}

// ---- Joined with their spectra -------------------------------------------------

nlohmann::json Annotated(const std::string& mgf, const std::string& result, const Arguments& mods)
{
    const TempFolder folder;
    const Outcome outcome =
        RunPelgrin(With({"annotate", "--spectra", PathOf(mgf), "--psms", PathOf(result), "--format",
                         "Comet (.pep.xml)", "--tolerance", "0.02Da", "--out", folder.PathOf("out"),
                         "--allow", "further_hit,further_protein"},
                        mods));
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    nlohmann::json summary = nlohmann::json::parse(ReadFile(folder.PathOf("out/summary.json")));
    ExpectCountsAddUp(summary);
    return summary;
}

TEST(RealResults, EveryMatchOfCometMeetsItsSpectrum)
{
    PELGRIN_NEEDS_REAL_DATA();
    const Arguments phospho = With(kUsual, {"--mod", "Phospho (STY)=79.966331"});
    const std::string f13 = "comet/F13_set/";
    const std::string jurkat = "comet/Jurkat_set/";
    const std::string run = "PV_Jurk_Promega50_IAP_minwash";
    struct Set {
        std::string mgf;
        std::string result;
        Arguments mods;
        std::size_t matches;
    };
    for (const Set& set :
         {Set{f13 + "F13.mgf", f13 + "closed/F13.pep.xml", kUsual, 589},
          Set{f13 + "F13.mgf", f13 + "open/F13.pep.xml", kUsual, 1384},
          Set{jurkat + run + ".mgf", jurkat + "closed/" + run + ".pep.xml", phospho, 1999},
          Set{jurkat + run + ".mgf", jurkat + "open/" + run + ".pep.xml", kUsual, 1999}}) {
        SCOPED_TRACE(set.result);
        const nlohmann::json records = Annotated(set.mgf, set.result, set.mods)["records"];
        EXPECT_EQ(records["read"], set.matches);
        EXPECT_EQ(records["joined"]["by_file_name_behind_separator"], set.matches);
        EXPECT_EQ(records["annotated"], set.matches);
    }
}

/// msms.txt of the HCT116 set came without peptides.txt: one that names every
/// row.
std::string PeptidesOf(const std::string& msms)
{
    std::string table = "Amino acid before\tAmino acid after\tProteins\tMS/MS IDs\n";
    for (std::size_t row = 0; row < RowsOf(msms); ++row) {
        table += "K\tA\tP1\t" + std::to_string(row) + "\n";
    }
    return table;
}

TEST(RealResults, EveryMatchOfMaxQuantMeetsItsSpectrumByItsScanNumber)
{
    PELGRIN_NEEDS_REAL_DATA();
    const TempFolder folder;
    const std::string set = PathOf("maxquant/HCT116_set/");
    const std::string peptides =
        folder.Write("peptides.txt", PeptidesOf(ReadFile(set + "msms_sample.txt")));
    Arguments arguments = {
        "annotate", "--format",    "MaxQuant", "--psms", set + "msms_sample.txt", "--second",
        peptides,   "--tolerance", "0.02Da",   "--out",  folder.PathOf("out"),    "--spectra"};
    for (const auto& entry : std::filesystem::directory_iterator(set)) {
        if (entry.path().extension() == ".mgf") {
            arguments.push_back(entry.path().string());
        }
    }
    const Outcome outcome = RunPelgrin(arguments);
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    const auto summary = nlohmann::json::parse(ReadFile(folder.PathOf("out/summary.json")));
    ExpectCountsAddUp(summary);
    EXPECT_EQ(summary["spectra"]["files"].size(), 4U);
    EXPECT_EQ(summary["records"]["joined"]["by_file_name"], 400);
    EXPECT_EQ(summary["records"]["joined_by_scan_in_title"], 400);
}

TEST(RealResults, MatchesOfTheJurkatSetExplainTheirSpectraBetterThanChanceDoes)
{
    PELGRIN_NEEDS_REAL_DATA();
    const std::string jurkat = "comet/Jurkat_set/";
    const std::string run = "PV_Jurk_Promega50_IAP_minwash";
    const Arguments phospho = With(kUsual, {"--mod", "Phospho (STY)=79.966331"});
    // The same matches with a phosphate of another mass.
    const Arguments wrong = With(kUsual, {"--mod", "Phospho (STY)=79.930000"});
    const std::string result = jurkat + "closed/" + run + ".pep.xml";
    const auto foundOf = [&](const Arguments& mods) {
        return Annotated(jurkat + run + ".mgf", result, mods)["ions"]["matched"].get<int>();
    };
    EXPECT_GT(foundOf(phospho), foundOf(wrong));
}

} // namespace
} // namespace pelgrin::test
