// The host program's search for peptides: one pass over a whole protein database
// for all of them, beside a search of its own for each with std::string::find.
#include <algorithm>
#include <cstdint>
#include <set>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include "FastaProteinDB.h"
#include "proteins/PeptideSearch.h"
#include "support/Claims.h"
#include "support/Inputs.h"
#include "support/OwnProcess.h"
#include "support/Proteins.h"

namespace {

constexpr std::size_t kFullSize = 200000; // proteins, about 90,000,000 residues
constexpr std::size_t kMostPeptides = 100000;
constexpr std::size_t kSample = 100; // peptides that are looked for in the plain way

// ---- The input --------------------------------------------------------------

bool IsCut(const std::string& residues, std::size_t i)
{
    return residues[i] == ';'
           || ((residues[i] == 'K' || residues[i] == 'R') && residues[i + 1] != 'P');
}

/// The tryptic peptide that holds residue i, or, on a ";", an empty text.
std::string PeptideAt(const std::string& residues, std::size_t i)
{
    std::size_t begin = i;
    while (begin > 0 && !IsCut(residues, begin - 1)) {
        --begin;
    }
    std::size_t last = i;
    while (!IsCut(residues, last)) {
        ++last;
    }
    last -= residues[last] == ';' && last > begin ? 1 : 0;
    return residues[i] == ';' ? std::string() : residues.substr(begin, last - begin + 1);
}

struct Input {
    Vorlan::CFastaProteinDB database;
    std::vector<std::string> peptides; ///< all different, 7 to 30 residues, in no order

    Input()
    {
        const bench::TemporaryFolder folder;
        const std::string path = folder.File("proteins.fasta");
        bench::WriteProteins(path, bench::Scaled(kFullSize));
        database.SetDBPath(path);
        database.ReadFromFile();
        AddPeptides();
    }

private:
    void AddPeptides()
    {
        bench::Random random(14);
        std::set<std::string> known;
        const std::string& residues = database.cProteinString();
        while (peptides.size() < bench::Scaled(kMostPeptides)) {
            const std::string peptide = PeptideAt(residues, random.Between(0, residues.size() - 1));
            if (peptide.size() >= 7 && peptide.size() <= 30 && known.insert(peptide).second) {
                peptides.push_back(peptide);
            }
        }
    }
};

/// Made by the first benchmark that needs it.
const Input& TheInput()
{
    static const Input input;
    return input;
}

std::vector<std::string> FirstPeptides(std::size_t count)
{
    const auto& all = TheInput().peptides;
    const auto end = static_cast<std::ptrdiff_t>(std::min(count, all.size()));
    return {all.begin(), all.begin() + end};
}

// ---- Both ways --------------------------------------------------------------

using Places = std::vector<std::uint32_t>; // how many, for each pattern

Places CountPlaces(const pelgrin::PeptideSearch& search)
{
    Places places(search.Patterns());
    search.FindAll(
        TheInput().database.cProteinString(),
        [&places](std::uint32_t pattern, std::size_t /*position*/) { ++places[pattern]; });
    return places;
}

/// One pass for the first peptides; every one stands somewhere.
void Search(benchmark::State& state, std::size_t count)
{
    const pelgrin::PeptideSearch search(FirstPeptides(bench::Scaled(count)));
    Places places;
    for (auto _ : state) {
        places = CountPlaces(search);
    }
    if (std::count(places.begin(), places.end(), 0u) > 0) {
        state.SkipWithError("not every peptide was found");
    }
    const auto letters = static_cast<double>(TheInput().database.cProteinString().size());
    state.counters["letters"] = letters;
    state.counters["s_per_letter"] = benchmark::Counter(
        letters, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void Build(benchmark::State& state)
{
    const std::vector<std::string> peptides = FirstPeptides(kMostPeptides);
    for (auto _ : state) {
        const pelgrin::PeptideSearch search(peptides);
        benchmark::DoNotOptimize(search.Patterns());
    }
}

std::uint32_t PlacesOf(const std::string& peptide)
{
    const std::string& residues = TheInput().database.cProteinString();
    std::uint32_t places = 0;
    for (std::size_t at = residues.find(peptide); at != std::string::npos;
         at = residues.find(peptide, at + 1)) {
        ++places;
    }
    return places;
}

struct SampleResult {
    double cpuSeconds = 0.0;
    bool isSame = true; ///< as many places as the search finds
};

SampleResult SearchSample()
{
    const std::vector<std::string> peptides = FirstPeptides(kSample);
    const pelgrin::PeptideSearch search(peptides);
    const Places places = CountPlaces(search);
    SampleResult result;
    const double before = bench::CpuSeconds();
    for (std::size_t i = 0; i < peptides.size(); ++i) {
        result.isSame = result.isSame && PlacesOf(peptides[i]) == places[search.PatternOf(i)];
    }
    result.cpuSeconds = bench::CpuSeconds() - before;
    return result;
}

/// The time for the sample, measured once, scaled to the number of peptides.
void PlainSearch(benchmark::State& state, std::size_t count)
{
    static SampleResult sample;
    for (auto _ : state) {
        if (sample.cpuSeconds == 0.0) {
            sample = SearchSample();
        }
    }
    if (!sample.isSame) {
        state.SkipWithError("the two ways differ");
    }
    const std::size_t searched = std::min(kSample, TheInput().peptides.size());
    const double scaled = sample.cpuSeconds * static_cast<double>(bench::Scaled(count))
                          / static_cast<double>(searched);
    state.counters["own_cpu_s"] = scaled;
    state.counters["own_wall_s"] = scaled;
}

// ---- What is wanted ---------------------------------------------------------

std::string NameOf(std::size_t count)
{
    return "Search" + std::to_string(count);
}

bench::Claim ClaimOf(std::size_t count)
{
    const std::string name = NameOf(count);
    return {"peptide search: " + std::to_string(bench::Scaled(count)) + " peptides",
            name,
            "one by one, from 100 of them",
            name + "/Plain",
            bench::Claim::TimesFaster,
            bench::Claim::kNothingWanted};
}

template <typename Function, typename... Arguments>
void Register(const std::string& name, int repetitions, Function function, Arguments... arguments)
{
    benchmark::RegisterBenchmark(name.c_str(), function, arguments...)
        ->Unit(benchmark::kMillisecond)
        ->Iterations(1)
        ->Repetitions(repetitions);
}

} // namespace

int main(int argc, char** argv)
{
    std::vector<bench::Claim> claims;
    for (const std::size_t count : {std::size_t{1000}, std::size_t{10000}, kMostPeptides}) {
        Register(NameOf(count), 3, Search, count);
        Register(NameOf(count) + "/Plain", 1, PlainSearch, count);
        claims.push_back(ClaimOf(count));
    }
    Register("Build", 3, Build);
    return bench::Run(argc, argv, claims);
}
