// Every real result file: what it holds, what is read, and what is lost by class,
// as it came and when it was prepared.
#include <algorithm>
#include <filesystem>
#include <fstream>

#include <fmt/format.h>

#include "HostProgram.h"
#include "files/FileKind.h"

namespace pelgrin::test {
namespace {

namespace fs = std::filesystem;
using Vorlan::PepIdentType;
using Vorlan::test::ReadFile;
using Vorlan::test::RealDataFolder;
using Vorlan::test::TempFolder;

using Format = PepIdentType::EPepIdentType;

const std::vector<std::string> kModifications = {"Carbamidomethyl (C)=57.021464",
                                                 "Oxidation (M)=15.994915",
                                                 "Acetyl (Protein N-term)=42.010565",
                                                 "Phospho (STY)=79.966331",
                                                 "TMTpro (K)=304.207146",
                                                 "TMTpro (N-term)=304.207146",
                                                 "TMT6plex (K)=229.162932",
                                                 "TMT6plex (N-term)=229.162932",
                                                 "Carboxymethyl (C)=58.005479",
                                                 "Deamidated (NQ)=0.984016",
                                                 "Gln->pyro-Glu (Any N-term Q)=-17.026549"};

/// Counted without any code of the host.
std::uint64_t PlainlyHeldIn(Format format, const std::string& path)
{
    const bool isXml =
        format == PepIdentType::CometPepXml || format == PepIdentType::MsFraggerPepXml;
    std::ifstream file(path, std::ios::binary);
    std::string line;
    std::uint64_t held = 0;
    for (std::uint64_t number = 1; std::getline(file, line); ++number) {
        if (!isXml && format != PepIdentType::Pfind28Txt) {
            held += number > 1 && line.find_first_not_of("\r") != std::string::npos ? 1 : 0;
            continue;
        }
        const std::string key = isXml ? "<search_hit " : "[Spectrum";
        for (std::size_t hit = line.find(key); hit != std::string::npos;
             hit = line.find(key, hit + 1)) {
            ++held;
        }
    }
    return held;
}

/// "1707 held, 589 read; 1118 further_hit, 35 further_protein" or how it is refused.
std::string Converted(Format format, const std::string& path)
{
    const TempFolder folder;
    std::vector<std::string> arguments = {"convert",
                                          "--format",
                                          PepIdentType::typeToName(format),
                                          "--in",
                                          path,
                                          "--out",
                                          folder.PathOf("table.txt"),
                                          "--ledger",
                                          folder.PathOf("ledger.json")};
    for (const std::string& modification : kModifications) {
        arguments.insert(arguments.end(), {"--mod", modification});
    }
    const Outcome outcome = RunPelgrin(arguments);
    if (outcome.status == 1) {
        const std::size_t error = outcome.err.rfind("error: ");
        const std::size_t name = outcome.err.find(':', error + 7);
        return fmt::format("{} held, refused", PlainlyHeldIn(format, path))
               + outcome.err.substr(name, outcome.err.find('\n', name) - name).substr(0, 70);
    }
    const nlohmann::json page =
        nlohmann::json::parse(ReadFile(folder.PathOf("ledger.json")))["pages"]["matches"];
    EXPECT_EQ(page["held"], PlainlyHeldIn(format, path)) << path;
    std::uint64_t sum = page["kept"];
    std::string classes;
    for (const auto& [key, one] : page["classes"].items()) {
        sum += one["in_sum"] ? one["count"].get<std::uint64_t>() : 0;
        classes += fmt::format("{} {} {}", classes.empty() ? ";" : ",",
                               one["count"].get<std::uint64_t>(), key);
    }
    EXPECT_EQ(page["held"], sum) << path;
    const std::string table = ReadFile(folder.PathOf("table.txt"));
    EXPECT_EQ(page["kept"].get<std::int64_t>(), std::count(table.begin(), table.end(), '\n') - 1)
        << path;
    return fmt::format("{} held, {} read{}", page["held"].get<std::uint64_t>(),
                       page["kept"].get<std::uint64_t>(), classes);
}

/// The result files below the folder, by path.
std::map<std::string, Format> Results(const std::string& folder)
{
    std::map<std::string, Format> results;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        const std::string path = entry.path().string();
        if (!entry.is_regular_file() || entry.path().extension() == ".dta") {
            continue;
        }
        if (const auto format = FormatOf(KindOf(path), path)) {
            results[fs::relative(path, folder).string()] = *format;
        }
    }
    return results;
}

/// "path: as it came" and, where that differs, "path: prepared: ...".
std::vector<std::string> TableOfResults()
{
    std::vector<std::string> table;
    for (const auto& [name, format] : Results(RealDataFolder())) {
        const std::string path = RealDataFolder() + "/" + name;
        const std::string asItCame = Converted(format, path);
        table.push_back(name + ": " + asItCame);
        const TempFolder folder;
        const Outcome outcome = RunPelgrin({"prepare", "--out", folder.PathOf("ready"), path});
        if (outcome.status == 1) {
            table.push_back("  not prepared");
            continue;
        }
        for (const auto& [ready, readyFormat] : Results(folder.PathOf("ready"))) {
            const std::string prepared =
                Converted(readyFormat, folder.PathOf("ready") + "/" + ready);
            if (prepared != asItCame) {
                table.push_back("  prepared " + ready + ": " + prepared);
            }
        }
    }
    return table;
}

/// What each file holds and how much of it is read; counts of matches.
const char* const kExpected[] = {
    "comet/F13_set/closed/F13.pep.xml: 1707 held, 589 read; 1118 further_hit, 35 further_protein, "
    "795 query_without_hit",
    "comet/F13_set/open/F13.pep.xml: 1384 held, 1384 read; 120 further_protein",
    "comet/Jurkat_set/closed/PV_Jurk_Promega50_IAP_minwash.pep.xml: 1999 held, 1999 read; 238 "
    "further_protein",
    "comet/Jurkat_set/open/PV_Jurk_Promega50_IAP_minwash.pep.xml: 1999 held, 1999 read; 202 "
    "further_protein",
    "comet/LakeTrout_2016.pep.xml: 3 held, 2 read; 1 further_hit, 5 further_protein",
    "comet/PRG2012_set/201208-378803-cm.pep.xml: 843 held, 174 read; 669 further_hit, 42 "
    "query_without_hit",
    "comet/x00530_phospho_head.pepXML: 182 held, 182 read; 118 further_protein",
    "maxquant/BSA_2.0.3.0/msms.txt: 16 held, 16 read",
    "maxquant/BSA_2.0.3.0_derived_header/msms.txt: 16 held, 16 read",
    "maxquant/HCT116_set/msms_sample.txt: 400 held, refused: cannot be opened: No such file or "
    "directory",
    "  prepared msms_sample.txt: 400 held, 400 read",
    "maxquant/HeLa_1000rows/msms.txt: 1000 held, refused: cannot be opened: No such file or "
    "directory",
    "  prepared msms.txt: 1000 held, 1000 read",
    "maxquant/SILAC_phospho_older/msms.txt: 1036 held, refused: cannot be opened: No such file or "
    "directory",
    "  prepared msms.txt: 1036 held, 1036 read",
    "msfragger/closed/HLA_MSFragger3.7.pepXML: 4 held, 4 read",
    "msfragger/closed/TMT18_MSFragger3.8.pepXML: 3 held, 3 read; 5 further_protein",
    "msfragger/closed/spectra_MSFragger3.0.pepXML: 3 held, 3 read",
    "msfragger/open/q02261_open.part1.pep.xml: 32 held, 32 read; 50 further_protein",
    "msgfplus/QC_Mam_19_01_delimited_msgfplus_excerpt.tsv: 999 held, 999 read",
    "msgfplus/QC_Mam_19_01_msgfplus_excerpt.tsv: 999 held, 999 read",
    "msgfplus/QC_Shew_13_05b_msgfplus.tsv: 18798 held, 18798 read",
    "msgfplus/TMT_set/few_spectra.tsv: 150 held, 150 read",
    "msgfplus/test_prepost.tsv: 2 held, 2 read",
    "msgfplus/test_unrolled.tsv: 3 held, 3 read",
    "pfind28/pFind_qry.proteins.part1.txt: 1000 held, 0 read; 689 other_layout, 311 "
    "without_candidate",
    "pfind3/pFind-Filtered.spectra: 6 held, 6 read",
    "sequest/PD_mascot_TMT_brackets.txt: 753 held, refused:1: expected a column named \"Sequence\" "
    "in the header line",
    "  not prepared",
    "sequest/TMT_PSMs_Rfriendly.txt: 500 held, refused:1: expected a column named \"Deltam/z "
    "[Da]\" in the header line",
    "  prepared TMT_PSMs_Rfriendly.txt: 500 held, 500 read",
    "sequest/TMT_PSMs_derived_header.txt: 5000 held, 5000 read"};

TEST(RealLedger, AddsUpForEveryResultAsItCameAndPrepared)
{
    PELGRIN_NEEDS_REAL_DATA();
    EXPECT_THAT(TableOfResults(), testing::ElementsAreArray(kExpected));
}

// ---- Spectra --------------------------------------------------------------------

/// "2 held, 1 kept; 1 spectrum_behind_mark" of an MGF file.
std::string Opened(const std::string& path)
{
    const TempFolder folder;
    const Outcome outcome = RunPelgrin({"annotate", "--spectra", path, "--psms",
                                        folder.Write("psms.txt", TableOf({Row()})), "--tolerance",
                                        "1Da", "--out", folder.PathOf("out")});
    EXPECT_EQ(outcome.status, 3) << outcome.err; // the record meets nothing
    const nlohmann::json page =
        nlohmann::json::parse(ReadFile(folder.PathOf("out/ledger.json")))["pages"]["spectra"];
    std::uint64_t sum = page["kept"];
    std::string classes;
    for (const auto& [key, one] : page["classes"].items()) {
        sum += one["count"].get<std::uint64_t>();
        classes += fmt::format("{} {} {}", classes.empty() ? ";" : ",",
                               one["count"].get<std::uint64_t>(), key);
    }
    EXPECT_EQ(page["held"], sum) << path;
    const std::string text = ReadFile(path);
    std::uint64_t held = 0;
    for (std::size_t hit = text.find("BEGIN IONS"); hit != std::string::npos;
         hit = text.find("BEGIN IONS", hit + 1)) {
        ++held;
    }
    EXPECT_EQ(page["held"], held) << path;
    return fmt::format("{} held, {} kept{}", page["held"].get<std::uint64_t>(),
                       page["kept"].get<std::uint64_t>(), classes);
}

std::vector<std::string> TableOfSpectra()
{
    std::vector<std::string> table;
    std::vector<std::string> names;
    for (const auto& entry : fs::recursive_directory_iterator(RealDataFolder())) {
        if (entry.path().extension() == ".mgf") {
            names.push_back(fs::relative(entry.path(), RealDataFolder()).string());
        }
    }
    std::sort(names.begin(), names.end());
    for (const std::string& name : names) {
        const std::string path = RealDataFolder() + "/" + name;
        const std::string asItCame = Opened(path);
        table.push_back(name + ": " + asItCame);
        const TempFolder folder;
        RunPelgrin({"prepare", "--out", folder.PathOf("ready"), path});
        const std::string prepared =
            Opened(folder.PathOf("ready/" + fs::path(name).filename().string()));
        if (prepared != asItCame) {
            table.push_back("  prepared: " + prepared);
        }
    }
    return table;
}

const char* const kExpectedSpectra[] = {
    "comet/F13_set/F13.mgf: 1406 held, 1406 kept",
    "comet/Jurkat_set/PV_Jurk_Promega50_IAP_minwash.mgf: 2000 held, 2000 kept",
    "maxquant/HCT116_set/B001981_Ap_CMB-89_GevaertLab_ShotGun_HCT116_1.mgf: 100 held, 100 kept",
    "maxquant/HCT116_set/B001991_Ap_CMB-89_GevaertLab_ShotGun_HCT116_2.mgf: 98 held, 98 kept",
    "maxquant/HCT116_set/B002003_Ap_CMB-89_GevaertLab_ShotGun_HCT116_3.mgf: 100 held, 100 kept",
    "maxquant/HCT116_set/B002005_Ap_CMB-89_GevaertLab_ShotGun_HCT116_4.mgf: 100 held, 100 kept",
    "mgf/Bruker_Cmpd_crlf.mgf: 21 held, 21 kept",
    "mgf/MascotDistiller_1.mgf: 78 held, 78 kept",
    "mgf/OpenMS_Ecoli_MS2_small.mgf: 139 held, 139 kept",
    "mgf/ProteinPilot.mgf: 1 held, 1 kept",
    "mgf/ThermoRawFileParser_really_small.mgf: 34 held, 34 kept",
    "mgf/ThermoRaw_withEmptySpectra_BOM.mgf: 2 held, 1 kept; 1 spectrum_behind_mark",
    "  prepared: 1 held, 1 kept",
    "mgf/Thermo_iTRAQ_COM_header.mgf: 4 held, 4 kept",
    "mgf/crux_good3.mgf: 3 held, 3 kept",
    "mgf/msconvert_SmallCalibratibleYeast.mgf: 118 held, 118 kept",
    "mgf/msconvert_tpp_small.mgf: 34 held, 34 kept",
    "mgf/pParse_BSA_DSSO.part1.mgf: 300 held, 300 kept",
    "mgf/tab_separated_peaks.mgf: 2 held, 2 kept"};

TEST(RealLedger, AddsUpForAllSpectraAsTheyCameAndPrepared)
{
    PELGRIN_NEEDS_REAL_DATA();
    EXPECT_THAT(TableOfSpectra(), testing::ElementsAreArray(kExpectedSpectra));
}

} // namespace
} // namespace pelgrin::test
