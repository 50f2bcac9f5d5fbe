// The example data, and what the program finds in it.
#include <algorithm>
#include <random>
#include <sstream>

#include "HostProgram.h"

namespace pelgrin::test {
namespace {

using Vorlan::test::ReadFile;
using Vorlan::test::TempFolder;

const std::string kData = PELGRIN_EXAMPLES "/data";

Outcome AnnotateDemo(const std::string& table, const std::string& out)
{
    return RunPelgrin({"annotate", "--spectra", kData + "/demo.mgf", "--psms", table, "--tolerance",
                       "20ppm", "--mod", "Oxidation (M)=15.994915", "--mod",
                       "Carbamidomethyl (C)=57.021464", "--out", out});
}

nlohmann::json SummaryIn(const std::string& folder)
{
    return nlohmann::json::parse(ReadFile(folder + "/summary.json"));
}

/// The table with the residues of every sequence but its last in another
/// order, and without modifications.
std::string ShuffledTable()
{
    std::istringstream rows(ReadFile(kData + "/demo_psms.txt"));
    std::mt19937_64 chance(1);
    std::string table;
    std::string row;
    std::getline(rows, row);
    table = row + "\n";
    while (std::getline(rows, row)) {
        const std::size_t begin = row.find('\t', row.find('\t') + 1) + 1;
        const std::size_t end = row.find('\t', begin);
        for (std::size_t i = end - begin - 1; i > 1; --i) {
            std::swap(row[begin + i - 1], row[begin + chance() % i]);
        }
        table += row + "\n";
    }
    return table;
}

TEST(DemoData, IsWhatItsProgramMakes)
{
    const TempFolder folder;
    ASSERT_EQ(RunProgram({PELGRIN_DEMO_MAKER, folder.Path()}).status, 0);
    for (const char* const name : {"/demo.mgf", "/demo_psms.txt", "/demo.fasta"}) {
        EXPECT_TRUE(ReadFile(folder.Path() + name) == ReadFile(kData + name))
            << name << " differs: run make_demo_data examples/data";
    }
}

TEST(DemoData, IsAnnotatedButForTheThreeRowsWithoutSpectrum)
{
    const TempFolder folder;
    const Outcome outcome = AnnotateDemo(kData + "/demo_psms.txt", folder.Path());
    EXPECT_EQ(outcome.status, 3) << outcome.err;
    const nlohmann::json summary = SummaryIn(folder.Path());
    ExpectCountsAddUp(summary);
    EXPECT_EQ(summary["spectra"]["total"], 300);
    EXPECT_EQ(summary["spectra"]["names_in_index"], 1200);
    EXPECT_EQ(summary["records"]["read"], 278);
    EXPECT_EQ(summary["records"]["annotated"], 275);
    EXPECT_EQ(summary["records"]["not_joined"]["spectrum_name_unknown"], 2);
    EXPECT_EQ(summary["records"]["not_joined"]["dataset_not_given"], 1);
    EXPECT_EQ(ReadFile(folder.PathOf("results.txt")), ReadFile(kData + "/demo_psms.txt"));
}

TEST(DemoData, HoldsFarMoreIonsOfItsPeptidesThanOfShuffledOnes)
{
    const TempFolder folder;
    AnnotateDemo(kData + "/demo_psms.txt", folder.PathOf("right"));
    AnnotateDemo(folder.Write("shuffled.txt", ShuffledTable()), folder.PathOf("shuffled"));
    const nlohmann::json right = SummaryIn(folder.PathOf("right"));
    const nlohmann::json shuffled = SummaryIn(folder.PathOf("shuffled"));
    EXPECT_EQ(shuffled["records"]["annotated"], 275);
    EXPECT_GT(right["bonds"]["share"].get<double>(), 0.8);
    EXPECT_GT(right["ions"]["share"].get<double>(), 0.6);
    EXPECT_LT(shuffled["ions"]["share"].get<double>(), 0.12);
    EXPECT_GT(right["ions"]["series"]["b"]["shift"]["share"].get<double>(), 0.2);
    EXPECT_GT(right["ions"]["series"]["y"]["shift"]["share"].get<double>(), 0.2);
}

TEST(DemoData, ItsParameterFileFindsWhatTheCommandLineFinds)
{
    const TempFolder folder;
    AnnotateDemo(kData + "/demo_psms.txt", folder.PathOf("annotate"));
    std::string ini = ReadFile(kData + "/demo.ini");
    const std::size_t output = ini.find("\noutput = build/demo\n");
    ASSERT_NE(output, std::string::npos);
    ini.replace(output, std::string::npos, "\noutput = " + folder.PathOf("run") + "\n");
    Setting setting;
    setting.folder = PELGRIN_EXAMPLES "/..";
    const Outcome outcome = RunPelgrin({"run", folder.Write("demo.ini", ini)}, setting);
    EXPECT_EQ(outcome.status, 3) << outcome.err;
    ExpectCountsAddUp(SummaryIn(folder.PathOf("run")));
    for (const char* const name : {"annotations.tsv", "results.txt", "matched.mgf"}) {
        EXPECT_TRUE(ReadFile(folder.PathOf("run/" + std::string(name)))
                    == ReadFile(folder.PathOf("annotate/" + std::string(name))))
            << name;
    }
}

TEST(DemoData, ItsScriptEndsWellAndShowsTheReport)
{
    const TempFolder folder;
    const std::string build =
        std::filesystem::path(PELGRIN_PROGRAM).parent_path().parent_path().parent_path().string();
    const Outcome outcome =
        RunProgram({"/bin/sh", PELGRIN_EXAMPLES "/demo.sh", build, folder.PathOf("out")});
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_THAT(outcome.out, testing::HasSubstr("    pelgrin run "));
    EXPECT_THAT(outcome.out, testing::HasSubstr("joined           275"));
    EXPECT_THAT(outcome.out, testing::HasSubstr("\nModified sites "));
    const std::string proteins = ReadFile(folder.PathOf("out/proteins.tsv"));
    EXPECT_THAT(proteins, testing::HasSubstr("\nDEMO7\t"));
    EXPECT_THAT(proteins, testing::Not(testing::HasSubstr("\nOTHER")));
    EXPECT_EQ(ReadFile(folder.PathOf("out/results.txt")), ReadFile(kData + "/demo_psms.txt"));
    EXPECT_THAT(outcome.out, testing::HasSubstr("are there on purpose"));
    EXPECT_EQ(RunProgram({"/bin/sh", PELGRIN_EXAMPLES "/demo.sh", folder.Path(), "x"}).status, 1);
}

} // namespace
} // namespace pelgrin::test
