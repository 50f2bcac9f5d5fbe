// pepXML: matches out of a result file, beside OpenMS' PepXMLFile and beside pugixml,
// which only makes a tree of it; the memory for
// them; and a residue that no modifications explain, beside the plain way that
// stores every combination.
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>
#include <vector>

#include <OpenMS/CONCEPT/Exception.h>
#include <OpenMS/FORMAT/PepXMLFile.h>
#include <OpenMS/METADATA/PeptideIdentification.h>
#include <OpenMS/METADATA/ProteinIdentification.h>
#include <benchmark/benchmark.h>
#include <pugixml.hpp>

#include "PeptideIdentificationIO.h"
#include "support/Claims.h"
#include "support/Inputs.h"
#include "support/OwnProcess.h"
#include "support/SpecifiedMods.h"

namespace {

using Matches = std::vector<Vorlan::PeptideIdentification>;

constexpr std::size_t kFullSize = 200000; // matches

// ---- The input --------------------------------------------------------------

const std::vector<bench::SpecifiedMod> kMods = {{"Carbamidomethyl", 'C', 57.021464},
                                                {"Oxidation", 'M', 15.994915},
                                                {"Phospho", 'S', 79.966331},
                                                {"Phospho", 'T', 79.966331},
                                                {"Phospho", 'Y', 79.966331}};

constexpr char kHead[] =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
    "<msms_pipeline_analysis date=\"2026-11-20T10:00:00\" "
    "xmlns=\"http://regis-web.systemsbiology.net/pepXML\" summary_xml=\"run01.pep.xml\">\n"
    " <msms_run_summary base_name=\"/data/search/run01\" raw_data_type=\"raw\" "
    "raw_data=\".mzML\">\n"
    "  <sample_enzyme name=\"Trypsin\">\n"
    "   <specificity cut=\"KR\" no_cut=\"P\" sense=\"C\"/>\n"
    "  </sample_enzyme>\n"
    "  <search_summary base_name=\"/data/search/run01\" search_engine=\"Comet\" "
    "search_engine_version=\"2019.01\" precursor_mass_type=\"monoisotopic\" "
    "fragment_mass_type=\"monoisotopic\" search_id=\"1\">\n"
    "   <search_database local_path=\"human.fasta\" type=\"AA\"/>\n"
    "   <aminoacid_modification aminoacid=\"C\" massdiff=\"57.021464\" mass=\"160.030649\" "
    "variable=\"N\"/>\n"
    "   <aminoacid_modification aminoacid=\"M\" massdiff=\"15.994915\" mass=\"147.035400\" "
    "variable=\"Y\"/>\n"
    "  </search_summary>\n";
constexpr char kTail[] = " </msms_run_summary>\n</msms_pipeline_analysis>\n";

std::string Decimal(bench::Random& random, std::uint64_t low, std::uint64_t high,
                    std::size_t decimals)
{
    std::string text;
    bench::AppendDecimal(text, random.Between(low, high), decimals);
    return text;
}

/// Composes a result file of one hit a query, as Comet writes it.
class ResultText {
public:
    const std::string& NextQuery()
    {
        text_.clear();
        const std::string scan = std::to_string(++scan_);
        const std::string charge = std::to_string(random_.Between(2, 4));
        Open("  <spectrum_query",
             {{"spectrum", "run01." + scan + '.' + scan + '.' + charge},
              {"spectrumNativeID", "controllerType=0 controllerNumber=1 scan=" + scan},
              {"start_scan", scan},
              {"end_scan", scan},
              {"precursor_neutral_mass", Decimal(random_, 700000000, 3500000000, 6)},
              {"assumed_charge", charge},
              {"index", scan},
              {"retention_time_sec", Decimal(random_, 1000, 72000, 1)}},
             ">\n   <search_result>\n");
        AppendHit();
        text_.append("   </search_result>\n  </spectrum_query>\n");
        return text_;
    }

    std::size_t Modified() const { return modified_; }

private:
    using Attributes = std::vector<std::pair<const char*, std::string>>;

    void Open(const char* tag, const Attributes& attributes, const char* end)
    {
        text_.append(tag);
        for (const auto& [name, value] : attributes) {
            text_.append(" ").append(name).append("=\"").append(value).append("\"");
        }
        text_.append(end);
    }

    std::string Peptide()
    {
        std::string peptide(random_.Between(7, 25), 'A');
        for (char& residue : peptide) {
            residue = "ACDEFGHIKLMNPQRSTVWY"[random_.Between(0, 19)];
        }
        return peptide;
    }

    std::string Protein()
    {
        const std::string number = std::to_string(random_.Between(10000, 99999));
        return (random_.Between(0, 1) == 0 ? "sp|P" : "DECOY_sp|P") + number + "|GENE" + number
               + "_HUMAN";
    }

    void AppendHit()
    {
        const std::string peptide = Peptide();
        Open("    <search_hit",
             {{"hit_rank", "1"},
              {"peptide", peptide},
              {"peptide_prev_aa", "K"},
              {"peptide_next_aa", "A"},
              {"protein", Protein()},
              {"num_tot_proteins", "2"},
              {"num_matched_ions", std::to_string(random_.Between(0, 30))},
              {"tot_num_ions", std::to_string(2 * peptide.size() - 2)},
              {"calc_neutral_pep_mass", Decimal(random_, 700000000, 3500000000, 6)},
              {"massdiff", Decimal(random_, 0, 20000, 6)},
              {"num_tol_term", "2"},
              {"num_missed_cleavages", std::to_string(random_.Between(0, 2))},
              {"num_matched_peptides", std::to_string(random_.Between(100, 9000))}},
             ">\n");
        Open("     <alternative_protein", {{"protein", Protein()}}, "/>\n");
        AppendModifications(peptide);
        for (const char* const name :
             {"xcorr", "deltacn", "deltacnstar", "spscore", "sprank", "expect"}) {
            Open("     <search_score", {{"name", name}, {"value", Decimal(random_, 0, 999999, 3)}},
                 "/>\n");
        }
        text_.append("    </search_hit>\n");
    }

    /// Every C and M of the peptide.
    void AppendModifications(const std::string& peptide)
    {
        if (peptide.find_first_of("CM") == std::string::npos) {
            return;
        }
        Open("     <modification_info", {{"modified_peptide", peptide}}, ">\n");
        for (std::size_t i = 0; i < peptide.size(); ++i) {
            if (peptide[i] != 'C' && peptide[i] != 'M') {
                continue;
            }
            Open("      <mod_aminoacid_mass",
                 {{"position", std::to_string(i + 1)},
                  {"mass", peptide[i] == 'C' ? "160.030649" : "147.035400"}},
                 "/>\n");
            ++modified_;
        }
        text_.append("     </modification_info>\n");
    }

    bench::Random random_{6};
    std::size_t scan_ = 0;
    std::size_t modified_ = 0;
    std::string text_;
};

struct Input {
    bench::TemporaryFolder folder;
    std::string path = folder.File("run01.pep.xml");
    std::size_t matches = bench::Scaled(kFullSize);
    std::size_t modified = 0; ///< residues

    Input()
    {
        ResultText queries;
        std::ofstream file(path, std::ios::binary);
        file << kHead;
        for (std::size_t i = 0; i < matches; ++i) {
            file << queries.NextQuery();
        }
        file << kTail;
        modified = queries.Modified();
    }
};

/// Made by the first benchmark that needs it.
const Input& TheInput()
{
    static const Input input;
    return input;
}

// ---- Both sides -----------------------------------------------------------------

void LoadOurs(const std::string& path, Matches& matches)
{
    const std::filesystem::path file(path);
    Vorlan::CometPepXMLPepIdentIO reader;
    reader.InitLoad(Vorlan::PepIdentSource(file.parent_path().string(), file.filename().string(),
                                           Vorlan::PepIdentType::CometPepXml));
    reader.Load(matches);
    reader.EndLoad();
}

struct OfOpenMS {
    std::vector<OpenMS::ProteinIdentification> proteins;
    std::vector<OpenMS::PeptideIdentification> peptides;

    void swap(OfOpenMS& other)
    {
        proteins.swap(other.proteins);
        peptides.swap(other.peptides);
    }
};

void LoadOpenMS(const std::string& path, OfOpenMS& all)
{
    OpenMS::PepXMLFile().load(path, all.proteins, all.peptides);
}

/// Only the tree of the file, and no look at it.
void LoadTree(const std::string& path, pugi::xml_document& tree)
{
    tree.load_file(path.c_str());
}

bool IsWhole(const Matches& matches)
{
    std::size_t modified = 0;
    for (const auto& match : matches) {
        modified += match.vMods.size();
    }
    return matches.size() == TheInput().matches && modified == TheInput().modified;
}

bool IsWhole(const OfOpenMS& all)
{
    std::size_t hits = 0;
    for (const auto& peptide : all.peptides) {
        hits += peptide.getHits().size();
    }
    return hits == TheInput().matches;
}

bool IsWhole(const pugi::xml_document& tree)
{
    const pugi::xml_node run = tree.document_element().child("msms_run_summary");
    const auto queries = run.children("spectrum_query");
    return static_cast<std::size_t>(std::distance(queries.begin(), queries.end()))
           == TheInput().matches;
}

template <typename All, typename Load>
void Read(benchmark::State& state, Load load)
{
    const std::string& path = TheInput().path;
    bool isWhole = false;
    for (auto _ : state) {
        All all;
        load(path, all);
        state.PauseTiming(); // Letting go is not measured, on no side.
        isWhole = IsWhole(all);
        bench::LetGo(all);
        state.ResumeTiming();
    }
    const auto bytes = static_cast<std::int64_t>(std::filesystem::file_size(path));
    state.SetBytesProcessed(state.iterations() * bytes);
    if (!isWhole) {
        state.SkipWithError("the file was not read whole");
    }
}

// ---- Memory ---------------------------------------------------------------------

constexpr char kGrowthOption[] = "--print-growth-by-reading";

template <typename All, typename Load>
int PrintGrowth(const std::string& path, Load load)
{
    All all;
    const double before = bench::ResidentMegabytes();
    load(path, all);
    std::printf("%f\n", bench::PeakResidentMegabytes() - before);
    return 0;
}

void Memory(benchmark::State& state, const char* side)
{
    bench::OwnProcessResult child;
    for (auto _ : state) {
        child = bench::RunMyself({kGrowthOption, side, TheInput().path});
    }
    if (child.status != 0) {
        state.SkipWithError("the measuring process failed");
    }
    state.counters["MB"] = std::atof(child.output.c_str());
}

// ---- A residue that nothing explains ----------------------------------------------

constexpr char kPlainOption[] = "--print-seconds-of-plain-way";
constexpr double kUnexplained = 1234.5; // Da; inside what five of the masses can add up to

std::vector<bench::SpecifiedMod> TwentyMods()
{
    constexpr int kCount = 20;
    std::vector<bench::SpecifiedMod> mods;
    mods.reserve(kCount);
    for (int i = 0; i < kCount; ++i) {
        mods.push_back({"Mod" + std::to_string(i), 'K', 100.0 + 16.0 * i});
    }
    return mods;
}

void Unexplained(benchmark::State& state)
{
    Vorlan::MSFraggerPepXMLPepIdentIO reader;
    std::vector<Vorlan::IdentModification> result;
    bool isExplained = false;
    for (auto _ : state) {
        try {
            reader.getMod(result, kUnexplained, 6, 'K', 'R', 'A');
            isExplained = true;
        } catch (const OpenMS::Exception::ElementNotFound&) {
            benchmark::DoNotOptimize(result);
        }
    }
    if (isExplained) {
        state.SkipWithError("the mass was explained");
    }
}

/// Stores every combination, then looks through them.
int PrintPlainSeconds()
{
    std::vector<Vorlan::IdentModification> mods;
    for (const auto& mod : TwentyMods()) {
        mods.emplace_back(mod.name, mod.mass, std::string(1, mod.residue), "Anywhere", 0);
    }
    Vorlan::MSFraggerPepXMLPepIdentIO reader;
    const double before = bench::CpuSeconds();
    std::size_t near = 0;
    for (int k = 1; k <= 5; ++k) {
        std::vector<Vorlan::MSFraggerPepXMLPepIdentIO::Combination> combinations;
        reader.getModComb(combinations, mods, k);
        for (const auto& combination : combinations) {
            near += std::abs(kUnexplained - combination.first) < 0.05 ? 1 : 0;
        }
    }
    std::printf("%f %f\n", bench::CpuSeconds() - before, bench::PeakResidentMegabytes());
    return near == 0 ? 0 : 1;
}

void UnexplainedPlain(benchmark::State& state)
{
    bench::OwnProcessResult child;
    for (auto _ : state) {
        child = bench::RunMyself({kPlainOption});
    }
    double seconds = 0.0;
    double megabytes = 0.0;
    if (child.status != 0
        || std::sscanf(child.output.c_str(), "%lf %lf", &seconds, &megabytes) != 2) {
        state.SkipWithError("the measuring process failed");
    }
    state.counters["own_cpu_s"] = seconds;
    state.counters["own_wall_s"] = seconds;
    state.counters["MB"] = megabytes;
}

// ---- What is wanted ---------------------------------------------------------

std::vector<bench::Claim> Claims()
{
    using bench::Claim;
    const double most =
        250.0 * static_cast<double>(bench::Scaled(kFullSize)) / static_cast<double>(kFullSize);
    return {
        {"pepXML: read matches", "Read", "OpenMS PepXMLFile", "Read/OpenMS", Claim::TimesFaster,
         10.0},
        {"pepXML: read matches", "Read", "pugixml, its tree alone", "Read/pugixml",
         Claim::TimesTheTime, 1.0},
        {"pepXML: memory for reading, at its highest", "Memory", "OpenMS PepXMLFile",
         "Memory/OpenMS", Claim::Megabytes, most},
        {"pepXML: a residue that 20 modifications do not explain", "Unexplained",
         "every combination stored", "Unexplained/Plain", Claim::Milliseconds, 20.0},
        {"pepXML: the same, memory of the process", "Unexplained/Plain", "(the plain way only)", "",
         Claim::Megabytes, Claim::kNothingWanted},
    };
}

template <typename Function, typename... Arguments>
benchmark::internal::Benchmark* Register(const char* name, Function function,
                                         Arguments... arguments)
{
    return benchmark::RegisterBenchmark(name, function, arguments...)
        ->Unit(benchmark::kMillisecond)
        ->Repetitions(3);
}

} // namespace

int main(int argc, char** argv)
{
    const bench::TemporaryFolder folder;
    if (argc == 2 && std::strcmp(argv[1], kPlainOption) == 0) {
        return PrintPlainSeconds();
    }
    if (argc == 4 && std::strcmp(argv[1], kGrowthOption) == 0) {
        bench::Specify(kMods, folder.Path());
        return std::strcmp(argv[2], "ours") == 0 ? PrintGrowth<Matches>(argv[3], LoadOurs)
                                                 : PrintGrowth<OfOpenMS>(argv[3], LoadOpenMS);
    }
    // Both lists are specified: those of the file first, twenty for the K.
    std::vector<bench::SpecifiedMod> mods = kMods;
    for (const auto& mod : TwentyMods()) {
        mods.push_back(mod);
    }
    bench::Specify(mods, folder.Path());
    Register("Read", Read<Matches, decltype(&LoadOurs)>, &LoadOurs)->Iterations(1);
    Register("Read/OpenMS", Read<OfOpenMS, decltype(&LoadOpenMS)>, &LoadOpenMS)->Iterations(1);
    Register("Read/pugixml", Read<pugi::xml_document, decltype(&LoadTree)>, &LoadTree)
        ->Iterations(1);
    Register("Memory", Memory, "ours")->Iterations(1);
    Register("Memory/OpenMS", Memory, "OpenMS")->Iterations(1);
    Register("Unexplained", Unexplained);
    Register("Unexplained/Plain", UnexplainedPlain)->Iterations(1);
    return bench::Run(argc, argv, Claims());
}
