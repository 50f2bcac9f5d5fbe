// "pelgrin lint": its report, its JSON, its statuses, real files, any bytes.
#include <cstdlib>
#include <filesystem>
#include <map>

#include "HostProgram.h"
#include "LintRows.h"
#include "ResultTexts.h"
#include "common/Failure.h"
#include "lint/Lint.h"
#include "support/Random.h"

namespace pelgrin::test {
namespace {

using nlohmann::json;
using testing::HasSubstr;
using Vorlan::test::ReadFile;
using Vorlan::test::RealDataFolder;
using Vorlan::test::TempFolder;

const std::string kPlainMgf =
    "BEGIN IONS\nTITLE=a.1.1.2\nPEPMASS=500\nCHARGE=2+\n100 1\nEND IONS\n";

/// A record whose peaks have so many blank lines between them.
std::string MgfWithBlankLines(int count)
{
    std::string text = "BEGIN IONS\nTITLE=a.1.1.2\nPEPMASS=500\nCHARGE=2+\n100 1\n";
    for (int i = 0; i < count; ++i) {
        text += "\n";
    }
    return text + "200 2\nEND IONS\n";
}

// ---- The command -------------------------------------------------------------

TEST(Lint, NamesFileLineRuleAndSpectrumAndCountsTheRest)
{
    const TempFolder folder;
    folder.Write("a.mgf", MgfWithBlankLines(7));
    Setting setting;
    setting.folder = folder.Path();
    const Outcome outcome = RunPelgrin({"lint", "--examples", "2", "a.mgf"}, setting);
    EXPECT_EQ(outcome.status, 3) << outcome.err;
    EXPECT_EQ(outcome.err, "");
    EXPECT_EQ(outcome.out,
              "a.mgf:6: blank_peak_line: \"\"; expected m/z, a blank and an intensity (spectrum "
              "\"a.1.1.2\")\n"
              "a.mgf:7: blank_peak_line: \"\"; expected m/z, a blank and an intensity (spectrum "
              "\"a.1.1.2\")\n"
              "a.mgf: blank_peak_line: and 5 more\n"
              "\n"
              "Rule             Findings  Files  What happens\n"
              "blank_peak_line         7      1  a blank line inside the peaks repeats the peak "
              "before\n"
              "\n"
              "7 findings in 1 file\n");
}

TEST(Lint, TellsFiveExamplesOrAll)
{
    const TempFolder folder;
    const std::string path = folder.Write("a.mgf", MgfWithBlankLines(9));
    EXPECT_THAT(RunPelgrin({"lint", path}).out, HasSubstr("blank_peak_line: and 4 more\n"));
    const std::string all = RunPelgrin({"lint", "--all", path}).out;
    EXPECT_THAT(all, HasSubstr(path + ":14: blank_peak_line"));
    EXPECT_THAT(all, testing::Not(HasSubstr("more\n")));
    EXPECT_EQ(RunPelgrin({"lint", "--examples", "3000000000", path}).out, all);
}

TEST(Lint, SaysWhenNothingIsFound)
{
    const TempFolder folder;
    const std::string path = folder.Write("a.mgf", kPlainMgf);
    const Outcome outcome = RunPelgrin({"lint", path, path});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_EQ(outcome.out, "No findings in 2 files\n");
}

TEST(Lint, LeavesIgnoredRulesOut)
{
    const TempFolder folder;
    const std::string path = folder.Write("a.mgf", MgfWithBlankLines(1));
    EXPECT_EQ(RunPelgrin({"lint", "--ignore", "blank_peak_line", path}).status, 0);
    EXPECT_EQ(RunPelgrin({"lint", "--ignore", "no_peaks", path}).status, 3);
}

TEST(Lint, TellsTheOtherFilesWhenOneCannotBeRead)
{
    const TempFolder folder;
    const std::string good = folder.Write("a.mgf", MgfWithBlankLines(1));
    const Outcome outcome = RunPelgrin({"lint", folder.PathOf("missing.mgf"), good});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, HasSubstr(folder.PathOf("missing.mgf") + ": cannot be opened"));
    EXPECT_THAT(outcome.out, HasSubstr("1 finding in 1 file"));
}

TEST(Lint, CountsNoFileThatItCannotLookThrough)
{
    const TempFolder folder;
    const std::string missing = folder.PathOf("missing.mgf");
    const std::string words = folder.Write("words.txt", "just words\n");
    const std::string good = folder.Write("a.mgf", kPlainMgf);
    EXPECT_EQ(RunPelgrin({"lint", missing, words, good}).out, "No findings in 1 file\n");
    const json files =
        json::parse(RunPelgrin({"lint", "--json", missing, words, good}).out)["files"];
    ASSERT_EQ(files.size(), 3U);
    EXPECT_EQ(files[0]["path"], missing);
    EXPECT_THAT(files[0]["failure"], HasSubstr(missing + ": cannot be opened"));
    EXPECT_EQ(files[1]["path"], words);
    EXPECT_THAT(files[1]["failure"], HasSubstr("there are no rules for this kind of file"));
    EXPECT_EQ(files[2]["path"], good);
    EXPECT_FALSE(files[2].contains("failure"));
}

TEST(Lint, RefusesWhatItDoesNotUnderstand)
{
    const TempFolder folder;
    const std::string path = folder.Write("a.txt", "just words\n");
    struct Case {
        std::vector<std::string> arguments;
        int status;
        std::string text;
    };
    const std::vector<Case> cases = {
        {{"lint"}, 2, "FILE is required"},
        {{"lint", "--ignore", "no_rule", path}, 2, "--ignore no_rule: there is no such rule"},
        {{"lint", "--format", "abc", path}, 2, "abc"},
        {{"lint", "--examples", "x", path}, 2, "--examples"},
        {{"lint", "--examples", "-1", path}, 2, "--examples"},
        {{"lint", path}, 1, "there are no rules for this kind of file"},
    };
    for (const Case& c : cases) {
        const Outcome outcome = RunPelgrin(c.arguments);
        EXPECT_EQ(outcome.status, c.status) << c.text;
        EXPECT_THAT(outcome.err, HasSubstr(c.text));
    }
}

TEST(Lint, AFormatOverridesWhatTheFileShows)
{
    const TempFolder folder;
    const std::string path = folder.Write("a.txt", "a\tb\n1\t2\n");
    const Outcome outcome = RunPelgrin({"lint", "--format", "Calvex (.txt)", path});
    EXPECT_EQ(outcome.status, 3);
    EXPECT_THAT(outcome.out, HasSubstr("missing_column: expected a column \"Dataset Name\""));
}

/// Packs the file, and gives its new path.
std::string Packed(const std::string& path)
{
    EXPECT_EQ(RunProgram({"/bin/sh", "-c", "gzip " + path}).status, 0);
    return path + ".gz";
}

TEST(Lint, LooksIntoPackedFilesAndNamesThem)
{
    const TempFolder folder;
    const std::string path = Packed(folder.Write("a.mgf", MgfWithBlankLines(1)));
    const Outcome outcome = RunPelgrin({"lint", path});
    EXPECT_EQ(outcome.status, 3) << outcome.err;
    EXPECT_THAT(outcome.out, HasSubstr(path + ":6: blank_peak_line"));
}

TEST(Lint, NamesTheFilesOfAFolder)
{
    const TempFolder folder;
    folder.Write("a.dta", "1000.5 2\n100 1\n");
    folder.Write("b.dta", "1000.5 0\n100 1\n");
    const Outcome outcome = RunPelgrin({"lint", folder.Path()});
    EXPECT_EQ(outcome.status, 3) << outcome.err;
    EXPECT_THAT(outcome.out, HasSubstr(folder.Path() + "/b.dta:1: dta_precursor"));
    EXPECT_THAT(outcome.out, HasSubstr("1 finding in 1 file"));
}

TEST(Lint, TellsPeptidesOnceBesideTheirMatches)
{
    const TempFolder folder;
    const std::string matches = folder.Write("msms.txt", kMsmsHeader + MsmsRow());
    const std::string peptides = folder.Write("peptides.txt", kPeptidesHeader + PeptidesRow("1"));
    const Outcome outcome = RunPelgrin({"lint", matches, peptides});
    EXPECT_THAT(outcome.out,
                HasSubstr(peptides + ":2: maxquant_ids: MS/MS IDs: \"1\"; expected 0"));
    EXPECT_THAT(outcome.out, HasSubstr("1 finding in 1 file"));
    EXPECT_THAT(RunPelgrin({"lint", peptides}).out, HasSubstr("1 finding in 1 file"));
    EXPECT_EQ(RunPelgrin({"lint", peptides, matches}).out, outcome.out);
    Setting setting;
    setting.folder = folder.Path();
    EXPECT_THAT(RunPelgrin({"lint", peptides, "msms.txt"}, setting).out,
                HasSubstr("1 finding in 1 file"));
    folder.Write("peptides.txt", "hello world\n");
    const Outcome before = RunPelgrin({"lint", peptides, matches});
    const Outcome behind = RunPelgrin({"lint", matches, peptides});
    EXPECT_EQ(before.status, behind.status);
    EXPECT_EQ(before.out + before.err, behind.out + behind.err);
}

TEST(Lint, AFileMayBeItsOwnPeptides)
{
    const TempFolder folder;
    const std::string matches = folder.Write("peptides.txt", kMsmsHeader + MsmsRow());
    EXPECT_EQ(RunPelgrin({"lint", matches}).status, 3);
    EXPECT_EQ(RunPelgrin({"lint", matches, matches}).status, 3);
    const std::string peptides = folder.Write("peptides.txt", kPeptidesHeader + PeptidesRow("1"));
    const Outcome outcome = RunPelgrin({"lint", "--format", "MaxQuant", peptides});
    EXPECT_EQ(outcome.status, 3) << outcome.err;
    EXPECT_THAT(outcome.out, HasSubstr(" in 1 file\n"));
}

TEST(Lint, TellsPeptidesOnceHoweverTheirPathIsWritten)
{
    const TempFolder folder;
    std::filesystem::create_directory(folder.PathOf("sub"));
    folder.Write("msms.txt", kMsmsHeader + MsmsRow());
    folder.Write("peptides.txt", kPeptidesHeader + PeptidesRow("1"));
    Setting setting;
    setting.folder = folder.Path();
    for (const char* const place : {"", "./", ".//", "sub/../"}) {
        const std::string matches = std::string(place) + "msms.txt";
        const std::string peptides = "./" + std::string(place) + "peptides.txt";
        EXPECT_THAT(RunPelgrin({"lint", matches, peptides}, setting).out,
                    HasSubstr("1 finding in 1 file"))
            << place;
    }
}

TEST(Lint, TellsTheOthersWhenAFolderIsCalledAResult)
{
    const TempFolder folder;
    std::filesystem::create_directory(folder.PathOf("sub"));
    const std::string matches = folder.Write("msms.txt", kMsmsHeader + MsmsRow());
    const std::string peptides = folder.Write("peptides.txt", kPeptidesHeader + PeptidesRow("1"));
    const Outcome outcome =
        RunPelgrin({"lint", "--format", "MaxQuant", folder.PathOf("sub"), matches, peptides});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, HasSubstr(folder.PathOf("sub")));
    EXPECT_EQ(outcome.err.find("error:"), outcome.err.rfind("error:")) << outcome.err;
    EXPECT_THAT(outcome.out, HasSubstr(peptides + ":2: maxquant_ids"));
}

TEST(Lint, FindsPackedPeptidesBesidePackedMatches)
{
    const TempFolder folder;
    const std::string matches = Packed(folder.Write("msms.txt", kMsmsHeader + MsmsRow()));
    const std::string peptides =
        Packed(folder.Write("peptides.txt", kPeptidesHeader + PeptidesRow("1")));
    const Outcome outcome = RunPelgrin({"lint", matches, peptides});
    EXPECT_THAT(outcome.out,
                HasSubstr(peptides + ":2: maxquant_ids: MS/MS IDs: \"1\"; expected 0"));
    EXPECT_THAT(outcome.out, HasSubstr("1 finding in 1 file"));
    std::filesystem::remove(peptides);
    EXPECT_THAT(RunPelgrin({"lint", matches}).out, HasSubstr("maxquant_no_peptides"));
}

TEST(Lint, MessagesNameThePackedFile)
{
    const TempFolder folder;
    const std::string path = Packed(folder.Write("notes.txt", "nothing of interest\n"));
    EXPECT_THAT(RunPelgrin({"lint", path}).err,
                HasSubstr("error: " + path + ": there are no rules"));
}

TEST(Lint, JsonHoldsEveryCountAndTheExamples)
{
    const TempFolder folder;
    const std::string path = folder.Write("a.mgf", MgfWithBlankLines(7));
    const Outcome outcome = RunPelgrin({"lint", "--json", path});
    EXPECT_EQ(outcome.status, 3) << outcome.err;
    const json document = json::parse(outcome.out);
    EXPECT_EQ(document["findings"], 7);
    EXPECT_EQ(document["counts"], json({{"blank_peak_line", 7}}));
    const json& file = document["files"][0];
    EXPECT_EQ(file["path"], path);
    EXPECT_EQ(file["kind"], "mgf");
    const json& list = file["findings"]["blank_peak_line"];
    EXPECT_EQ(list["count"], 7);
    ASSERT_EQ(list["examples"].size(), 5U);
    EXPECT_EQ(list["examples"][0]["line"], 6);
    EXPECT_EQ(list["examples"][0]["subject"], "spectrum \"a.1.1.2\"");
}

TEST(Lint, JsonIsUtf8WhateverTheFileHolds)
{
    const TempFolder folder;
    const std::string path = folder.Write("a.mgf", "BEGIN IONS\nTITLE=\xFF\xE9\nEND IONS\n");
    const json document = json::parse(RunPelgrin({"lint", "--json", path}).out);
    EXPECT_EQ(document["counts"]["no_peaks"], 1);
}

// ---- The rules ---------------------------------------------------------------

TEST(Lint, ListsItsRules)
{
    const Outcome outcome = RunPelgrin({"lint", "--rules"});
    EXPECT_EQ(outcome.status, 0);
    const json rules = json::parse(RunPelgrin({"lint", "--rules", "--json"}).out)["rules"];
    ASSERT_EQ(rules.size(), kRules);
    const std::string behaviours = ReadFile(PELGRIN_DOCS "/behaviour.md");
    for (const json& rule : rules) {
        EXPECT_THAT(outcome.out, HasSubstr("\n" + rule["rule"].get<std::string>() + " "));
        const auto behaviour = rule["behaviour"].get<std::string>();
        if (!behaviour.empty()) {
            EXPECT_THAT(behaviours, HasSubstr("## " + behaviour + " ")) << rule["rule"];
        }
    }
}

TEST(LintDocs, ListTheRulesAsTheProgramDoes)
{
    const std::string page = ReadFile(PELGRIN_DOCS "/pelgrin-lint.md");
    std::size_t place = 0;
    for (std::size_t i = 0; i < kRules; ++i) {
        const RuleTexts& texts = TextsOf(static_cast<Rule>(i));
        const std::string row = std::string("\n| `") + texts.id + "` | " + texts.text + " | "
                                + texts.behaviour + (*texts.behaviour == '\0' ? "| " : " | ")
                                + texts.remedy + " |\n";
        const std::size_t next = page.find(row);
        ASSERT_NE(next, std::string::npos) << row;
        EXPECT_GE(next, place) << row;
        place = next;
    }
}

TEST(LintDocs, NameEveryOptionOfTheHelp)
{
    const std::string page = ReadFile(PELGRIN_DOCS "/pelgrin-lint.md");
    const std::string help = RunPelgrin({"lint", "--help"}).out;
    int options = 0;
    for (std::size_t hit = help.find("\n  --"); hit != std::string::npos;
         hit = help.find("\n  --", hit + 1)) {
        const std::string name = help.substr(hit + 3, help.find(' ', hit + 3) - hit - 3);
        EXPECT_THAT(page, HasSubstr("\n| `" + name)) << name;
        ++options;
    }
    EXPECT_EQ(options, 6);
}

TEST(LintDocs, ExampleShowsTheRealOutput)
{
    const std::string page = ReadFile(PELGRIN_DOCS "/pelgrin-lint.md");
    const auto blockBehind = [&](const std::string& line) {
        std::string block;
        std::size_t begin = page.find(line + "\n");
        EXPECT_NE(begin, std::string::npos) << line;
        begin += line.size() + 1;
        while (page.compare(begin, 4, "    ") == 0 || page[begin] == '\n') {
            const std::size_t end = page.find('\n', begin);
            block += page.substr(std::min(begin + 4, end), end - std::min(begin + 4, end)) + "\n";
            begin = end + 1;
        }
        while (block.size() > 1 && block.substr(block.size() - 2) == "\n\n") {
            block.pop_back();
        }
        return block;
    };
    const TempFolder folder;
    folder.Write("run01.mgf", blockBehind("    $ cat run01.mgf"));
    Setting setting;
    setting.folder = folder.Path();
    EXPECT_EQ(RunPelgrin({"lint", "run01.mgf"}, setting).out,
              blockBehind("    $ pelgrin lint run01.mgf"));
}

// ---- Real files --------------------------------------------------------------

std::string CountsOf(const std::string& path)
{
    Findings findings(0);
    LintFile(path, std::nullopt, findings);
    std::string text;
    for (const auto& [rule, list] : findings.Files().front().rules) {
        text += (text.empty() ? "" : " ") + std::string(TextsOf(rule).id) + "="
                + std::to_string(list.count);
    }
    return text;
}

TEST(Lint, FindsWhatRealFilesHold)
{
    PELGRIN_NEEDS_REAL_DATA();
    const std::vector<std::pair<std::string, std::string>> files = {
        {"mgf/Bruker_Cmpd_crlf.mgf", ""},
        {"mgf/MascotDistiller_1.mgf", "value_list=18"},
        {"mgf/OpenMS_Ecoli_MS2_small.mgf", "odd_scan=139 line_in_front=17"},
        {"mgf/ProteinPilot.mgf", "line_in_front=2"},
        {"mgf/ThermoRawFileParser_really_small.mgf", "shared_first_word=33 odd_scan=34"},
        {"mgf/ThermoRaw_withEmptySpectra_BOM.mgf", "byte_order_mark=1 cut_scan=1"},
        {"mgf/Thermo_iTRAQ_COM_header.mgf", "line_in_front=2"},
        {"mgf/crux_good3.mgf", ""},
        {"mgf/msconvert_SmallCalibratibleYeast.mgf", ""},
        {"mgf/msconvert_tpp_small.mgf", ""},
        {"mgf/pParse_BSA_DSSO.part1.mgf", ""},
        {"mgf/tab_separated_peaks.mgf", ""},
        {"comet/F13_set/F13.mgf", ""},
        {"comet/Jurkat_set/PV_Jurk_Promega50_IAP_minwash.mgf", ""},
        {"maxquant/HCT116_set/B001981_Ap_CMB-89_GevaertLab_ShotGun_HCT116_1.mgf", "no_pepmass=3"},
        {"maxquant/HCT116_set/B001991_Ap_CMB-89_GevaertLab_ShotGun_HCT116_2.mgf", "no_pepmass=2"},
        {"maxquant/HCT116_set/B002003_Ap_CMB-89_GevaertLab_ShotGun_HCT116_3.mgf", "no_pepmass=4"},
        {"maxquant/HCT116_set/B002005_Ap_CMB-89_GevaertLab_ShotGun_HCT116_4.mgf", "no_pepmass=1"},
        {"dta/20030428_4_29L_15", ""},
        {"fasta/Ecoli_K12_target_decoy.fasta", ""},
        {"fasta/Shewanella_oneidensis_crlf.fasta", ""},
        {"fasta/small-yeast_SGD.fasta", ""},
        {"fasta/yeast_first99_uniprot.fasta", ""},
        {"comet/F13_set/Homo-sapiens_td.fasta", ""},
        {"comet/PRG2012_set/cow.protein.PRG2012-subset.fasta", ""},
        {"comet/F13_set/closed/F13.pep.xml",
         "further_hit=1118 further_protein=35 query_without_hit=795 terminal_mass=1"},
        {"comet/F13_set/open/F13.pep.xml", "further_protein=120 terminal_mass=7"},
        {"comet/Jurkat_set/closed/PV_Jurk_Promega50_IAP_minwash.pep.xml",
         "further_protein=238 terminal_mass=9"},
        {"comet/Jurkat_set/open/PV_Jurk_Promega50_IAP_minwash.pep.xml",
         "further_protein=202 terminal_mass=9"},
        {"comet/PRG2012_set/201208-378803-cm.pep.xml", "further_hit=669 query_without_hit=42"},
        {"comet/LakeTrout_2016.pep.xml", "further_hit=1 further_protein=5"},
        {"comet/x00530_phospho_head.pepXML", "further_protein=118"},
        {"msfragger/open/q02261_open.part1.pep.xml", "further_protein=50"},
        {"msfragger/closed/HLA_MSFragger3.7.pepXML", ""},
        {"msfragger/closed/TMT18_MSFragger3.8.pepXML", "further_protein=5 terminal_mass=3"},
        {"msfragger/closed/spectra_MSFragger3.0.pepXML", ""},
        {"msgfplus/QC_Mam_19_01_delimited_msgfplus_excerpt.tsv", ""},
        {"msgfplus/QC_Mam_19_01_msgfplus_excerpt.tsv", ""},
        {"msgfplus/QC_Shew_13_05b_msgfplus.tsv", ""},
        {"msgfplus/test_prepost.tsv", "msgf_no_scan=1"},
        {"msgfplus/test_unrolled.tsv", "msgf_no_scan=1"},
        {"msgfplus/TMT_set/few_spectra.tsv", ""},
        {"maxquant/BSA_2.0.3.0/msms.txt", ""},
        {"maxquant/BSA_2.0.3.0/peptides.txt", ""},
        {"maxquant/HCT116_set/msms_sample.txt",
         "number_in_part=13 maxquant_decoy=200 maxquant_no_peptides=1"},
        {"maxquant/HeLa_1000rows/msms.txt",
         "number_in_part=35 maxquant_decoy=3 maxquant_no_peptides=1"},
        {"maxquant/SILAC_phospho_older/msms.txt", "maxquant_decoy=7 maxquant_no_peptides=1"},
        {"pfind3/pFind-Filtered.spectra", ""},
        {"pfind28/pFind_qry.proteins.part1.txt", "pfind28_place=689"},
        {"sequest/PD_mascot_TMT_brackets.txt", "missing_column=2"},
        {"sequest/TMT_PSMs_Rfriendly.txt", "missing_column=4"},
        {"sequest/TMT_PSMs_derived_header.txt", "sequest_blank=273"},
        {"mzml/tiny.pwiz.1.1.mzML", "not_parsed=1"},
        {"mzxml/pyteomics_test.mzXML", "not_parsed=1"},
    };
    for (const auto& [name, counts] : files) {
        EXPECT_EQ(CountsOf(RealDataFolder() + "/" + name), counts) << name;
    }
}

// ---- Any bytes ---------------------------------------------------------------

std::size_t FindingsIn(const std::string& text, FileKind kind, const TempFolder& folder)
{
    const std::string path = folder.Write("file", text);
    Findings findings(3);
    findings.Begin(path, kind);
    try {
        Lint(path, kind, findings);
    } catch (const Failure&) {
        // a file of this kind is refused, which is well
    }
    return findings.Total();
}

TEST(Lint, SurvivesEveryTruncationOfEveryRow)
{
    const TempFolder folder;
    for (const LintRow& row : AllLintRows()) {
        if (row.kind == FileKind::DtaFolder || row.text.size() > 2000) {
            continue;
        }
        for (std::size_t size = 0; size < row.text.size(); size += 3) {
            FindingsIn(row.text.substr(0, size), row.kind, folder);
        }
    }
}

TEST(Lint, SurvivesRandomBytesInEveryRow)
{
    const TempFolder folder;
    Vorlan::test::Random random(11);
    std::size_t found = 0;
    for (int round = 0; round < 3; ++round) {
        for (const LintRow& row : AllLintRows()) {
            if (row.kind == FileKind::DtaFolder) {
                continue;
            }
            std::string text = row.text;
            for (std::size_t changes = 1 + random.Below(6); changes > 0 && !text.empty();
                 --changes) {
                text[random.Below(text.size())] = random.OneIn(3)
                                                      ? static_cast<char>(random.Bits())
                                                      : random.OneOf("\t\n\r\"'<>=-/;,. 0\0");
            }
            found += FindingsIn(text, row.kind, folder);
        }
    }
    EXPECT_GT(found, 100U);
}

TEST(Lint, TakesDeepAndUnendedMarkupInItsStride)
{
    const TempFolder folder;
    std::string deep = "<msms_run_summary>";
    for (int i = 0; i < 20000; ++i) {
        deep += "<a>";
    }
    FindingsIn(deep, FileKind::PepXml, folder);
    FindingsIn("<msms_run_summary " + std::string(400000, '"'), FileKind::PepXml, folder);
    FindingsIn(std::string(300000, '<'), FileKind::PepXml, folder);
    std::string begins;
    for (int i = 0; i < 20000; ++i) {
        begins += "BEGIN IONS\n";
    }
    EXPECT_GT(FindingsIn(begins, FileKind::Mgf, folder), 20000U - 1);
}

} // namespace
} // namespace pelgrin::test
