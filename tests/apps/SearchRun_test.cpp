// The whole way: Comet searches invented spectra, pelgrin reads what it finds,
// and the example's own check compares that with the truth.
#include <cstdlib>
#include <filesystem>
#include <sstream>

#include "HostProgram.h"

namespace pelgrin::test {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using Vorlan::test::ReadFile;
using Vorlan::test::TempFolder;

const char* const kScript = PELGRIN_EXAMPLES "/search.sh";

std::string BuildFolder()
{
    using std::filesystem::path;
    return path(PELGRIN_PROGRAM).parent_path().parent_path().parent_path().string();
}

/// Comet may be missing on a developer's machine, but not where all is checked.
bool IsCometMissing()
{
    if (RunProgram({"/bin/sh", "-c", "command -v comet-ms"}).status == 0) {
        return false;
    }
    const char* const service = std::getenv("CI");
    EXPECT_TRUE(service == nullptr || std::string(service) != "true") << "comet-ms must be there";
    return true;
}

std::size_t CountOf(const std::string& part, const std::string& text)
{
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1)) {
        ++count;
    }
    return count;
}

/// FNV-1a, 64 bits.
std::uint64_t HashOf(const std::string& bytes)
{
    std::uint64_t hash = 14695981039346656037ULL;
    for (const char byte : bytes) {
        hash = (hash ^ static_cast<unsigned char>(byte)) * 1099511628211ULL;
    }
    return hash;
}

nlohmann::json SummaryOf(const TempFolder& folder, const std::string& search)
{
    return nlohmann::json::parse(ReadFile(folder.PathOf(search + "/result/summary.json")));
}

/// Every hit of Comet was read, and every one that FDR control left was joined
/// and annotated.
void ExpectNothingLost(const TempFolder& folder, const std::string& search)
{
    SCOPED_TRACE(search);
    const std::string pepXml = ReadFile(folder.PathOf(search + "/search.pep.xml"));
    const nlohmann::json summary = SummaryOf(folder, search);
    ExpectCountsAddUp(summary);
    const nlohmann::json& records = summary["records"];
    EXPECT_EQ(records["read"], CountOf("<search_hit ", pepXml));
    std::size_t left = records["read"];
    for (const auto& [reason, count] : records["fdr_control"].items()) {
        left -= count.is_number() && reason != "total" ? count.get<std::size_t>() : 0;
    }
    EXPECT_EQ(records["joined"]["total"], left);
    EXPECT_EQ(records["annotated"], left);
    EXPECT_GT(left, 350U);
}

Outcome CheckAgain(const TempFolder& folder, const std::string& search)
{
    Setting setting;
    setting.folder = folder.Path();
    return RunProgram({PELGRIN_SEARCH_CHECK, search}, setting);
}

std::string Replaced(std::string text, const std::string& from, const std::string& to)
{
    EXPECT_THAT(text, HasSubstr(from));
    for (std::size_t at = text.find(from); at != std::string::npos; at = text.find(from, at)) {
        text.replace(at, from.size(), to);
        at += to.size();
    }
    return text;
}

/// Without FDR control the decoys and the bad matches must come through, too.
void ExpectAllRightWithoutFdrControl(const TempFolder& folder)
{
    const std::string ini = ReadFile(folder.PathOf("closed.ini"));
    folder.Write("closed.ini", Replaced(ini, "is_fdr_control = 1", "is_fdr_control = 0"));
    Setting setting;
    setting.folder = folder.Path();
    const Outcome outcome = RunPelgrin({"run", "closed.ini"}, setting);
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    const nlohmann::json records = SummaryOf(folder, "closed")["records"];
    EXPECT_EQ(records["joined"]["total"], records["read"]);
    EXPECT_EQ(records["read"],
              CountOf("<search_hit ", ReadFile(folder.PathOf("closed/search.pep.xml"))));
    const Outcome checked = CheckAgain(folder, "closed");
    EXPECT_EQ(checked.status, 0) << checked.out;
}

/// A check that cannot fail would prove nothing.
void ExpectCheckToSee(const TempFolder& folder, const std::string& from, const std::string& to)
{
    const std::string path = "open/result/results.txt";
    const std::string results = ReadFile(folder.PathOf(path));
    folder.Write(path, Replaced(results, from, to));
    const Outcome outcome = CheckAgain(folder, "open");
    EXPECT_EQ(outcome.status, 1) << from;
    EXPECT_THAT(outcome.out, HasSubstr("NOT GOOD")) << from;
    folder.Write(path, results);
}

TEST(SearchRun, ComesOutAsTheTruthTells)
{
    if (IsCometMissing()) {
        GTEST_SKIP() << "no Comet: install the Debian package comet-ms";
    }
    const TempFolder folder;
    const Outcome outcome = RunProgram({"/bin/sh", kScript, BuildFolder(), folder.Path()});
    ASSERT_EQ(outcome.status, 0) << outcome.out << outcome.err;
    EXPECT_EQ(CountOf("\ngood: at least 95.0 % are wanted", outcome.out), 2U);
    EXPECT_THAT(outcome.out, AllOf(HasSubstr("Phospho (S)"), HasSubstr("Oxidation (M)"),
                                   HasSubstr("mass shifts of what it was not told")));
    for (const char* const search : {"closed", "open"}) {
        ExpectNothingLost(folder, search);
    }
    ExpectCheckToSee(folder, "Oxidation", "Phospho");
    ExpectCheckToSee(folder, "Carbamidomethyl\t5\t", "Carbamidomethyl\t4\t");
    ExpectCheckToSee(folder, "\t79.9", "\t80.9");
    ExpectCheckToSee(folder, "search.00", "search.01");
    ExpectAllRightWithoutFdrControl(folder);
}

TEST(SearchRun, ItsDataAreTheSameBytesEverywhere)
{
    const TempFolder folder;
    ASSERT_EQ(RunProgram({PELGRIN_SEARCH_MAKER, folder.Path()}).status, 0);
    EXPECT_EQ(HashOf(ReadFile(folder.PathOf("search.fasta"))), 1411001839873752207U);
    EXPECT_EQ(HashOf(ReadFile(folder.PathOf("search.mgf"))), 6026468980918344649U);
    EXPECT_EQ(HashOf(ReadFile(folder.PathOf("truth.tsv"))), 6630361045581963769U);
}

TEST(SearchRun, TheScriptTellsWhatIsMissing)
{
    const TempFolder folder;
    const Outcome outcome = RunProgram({"/bin/sh", kScript, folder.Path(), folder.PathOf("out")});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, HasSubstr("make_search_data is missing; build the target"));
    EXPECT_EQ(RunProgram({"/bin/sh", kScript}).status, 2);
    EXPECT_EQ(RunProgram({PELGRIN_SEARCH_CHECK}).status, 2);
    EXPECT_EQ(CheckAgain(folder, "open").status, 1);
}

} // namespace
} // namespace pelgrin::test
