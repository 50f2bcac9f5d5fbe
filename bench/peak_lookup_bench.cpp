// The peak look-up: GetHitPeak beside MSSpectrum::findHighestInWindow, and
// CreateHashTable on peaks that are sorted already beside peaks that are not.
#include <string>
#include <vector>

#include <OpenMS/KERNEL/MSSpectrum.h>
#include <benchmark/benchmark.h>

#include "DataStructures.h"
#include "support/Claims.h"
#include "support/Inputs.h"

namespace {

using Vorlan::Peak;
using Vorlan::Spectrum;
using Vorlan::TolType;

constexpr std::size_t kSpectra = 64;
constexpr std::size_t kPeaks = 400;
constexpr std::size_t kQueries = 256; // for each spectrum

double UnitsToMz(std::uint64_t units)
{
    return static_cast<double>(units) / 1e5;
}

std::uint64_t RandomUnits(bench::Random& random)
{
    return random.Between(10000000, 200000000); // 100 to 2000 Th
}

struct Input {
    std::vector<Spectrum> unsorted, sorted, ours; ///< ours: sorted, with its table
    std::vector<OpenMS::MSSpectrum> openMS;
    std::vector<std::vector<double>> queries; ///< for each spectrum, m/z in no order

    Input()
    {
        bench::Random random(3);
        for (std::size_t i = 0; i < kSpectra; ++i) {
            AddSpectrum(random);
            AddQueries(random);
        }
    }

private:
    void AddSpectrum(bench::Random& random)
    {
        Spectrum spectrum;
        OpenMS::MSSpectrum twin;
        for (std::size_t i = 0; i < kPeaks; ++i) {
            Peak peak;
            peak.dMz = UnitsToMz(RandomUnits(random));
            peak.dIntensity = static_cast<double>(random.Between(10, 1000000));
            spectrum.vPeaks.push_back(peak);
            twin.push_back({peak.dMz, static_cast<float>(peak.dIntensity)});
        }
        twin.sortByPosition();
        openMS.push_back(twin);
        unsorted.push_back(spectrum);
        spectrum.sortByMz();
        sorted.push_back(spectrum);
        spectrum.CreateHashTable();
        ours.push_back(spectrum);
    }

    /// One half near peaks, the other half anywhere.
    void AddQueries(bench::Random& random)
    {
        std::vector<double>& list = queries.emplace_back();
        for (std::size_t i = 0; i < kQueries; ++i) {
            const Peak& peak = sorted.back().vPeaks[random.Between(0, kPeaks - 1)];
            list.push_back(i % 2 == 0
                               ? peak.dMz * (1.0 + 1e-6 * UnitsToMz(random.Between(0, 1000000)))
                               : UnitsToMz(RandomUnits(random)));
        }
        random.Shuffle(list);
    }
};

const Input& TheInput()
{
    static const Input input;
    return input;
}

/// The mean over all queries becomes the time of one "item".
void ConcludeQueries(benchmark::State& state, std::uint64_t hits)
{
    state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kSpectra * kQueries));
    state.counters["each"] = static_cast<double>(kSpectra * kQueries);
    state.counters["hits"] = static_cast<double>(hits);
}

void FindOurs(benchmark::State& state, double tolerance, TolType::ETolType type)
{
    std::vector<Spectrum> spectra = TheInput().ours;
    std::uint64_t hits = 0;
    for (auto _ : state) {
        hits = 0;
        for (std::size_t i = 0; i < kSpectra; ++i) {
            for (const double mz : TheInput().queries[i]) {
                Peak theo;
                theo.dMz = mz;
                hits += spectra[i].GetHitPeak(theo, tolerance, type, true) >= 0;
            }
        }
        benchmark::DoNotOptimize(hits);
    }
    ConcludeQueries(state, hits);
}

void FindOpenMS(benchmark::State& state, double tolerance, TolType::ETolType type)
{
    std::uint64_t hits = 0;
    for (auto _ : state) {
        hits = 0;
        for (std::size_t i = 0; i < kSpectra; ++i) {
            for (const double mz : TheInput().queries[i]) {
                const double window = type == TolType::Da ? tolerance : tolerance * mz / 1e6;
                hits += TheInput().openMS[i].findHighestInWindow(mz, window, window) >= 0;
            }
        }
        benchmark::DoNotOptimize(hits);
    }
    ConcludeQueries(state, hits);
}

void CreateTables(benchmark::State& state, const std::vector<Spectrum>& originals)
{
    std::vector<Spectrum> spectra;
    for (auto _ : state) {
        state.PauseTiming();
        spectra = originals;
        state.ResumeTiming();
        for (Spectrum& spectrum : spectra) {
            spectrum.CreateHashTable();
        }
    }
}

void TablesOfSorted(benchmark::State& state)
{
    CreateTables(state, TheInput().sorted);
}

void TablesOfUnsorted(benchmark::State& state)
{
    CreateTables(state, TheInput().unsorted);
}

template <typename Function, typename... Arguments>
void Register(const char* name, Function function, Arguments... arguments)
{
    benchmark::RegisterBenchmark(name, function, arguments...)
        ->Unit(benchmark::kMicrosecond)
        ->MinTime(0.2)
        ->Repetitions(9);
}

std::vector<bench::Claim> Claims()
{
    using bench::Claim;
    const std::string queries = std::to_string(kSpectra * kQueries);
    const std::string tables = std::to_string(kSpectra);
    return {
        {"peaks: " + queries + " look-ups, 20 ppm", "Find20ppm", "OpenMS", "Find20ppm/OpenMS",
         Claim::TimesFaster, 4.0},
        {"peaks: " + queries + " look-ups, 0.5 Da", "FindHalfDa", "OpenMS", "FindHalfDa/OpenMS",
         Claim::TimesFaster, 4.0},
        {"peaks: one look-up, 20 ppm", "Find20ppm", "OpenMS", "Find20ppm/OpenMS",
         Claim::NanosecondsEach, 40.0},
        {"peaks: one look-up, 0.5 Da", "FindHalfDa", "OpenMS", "FindHalfDa/OpenMS",
         Claim::NanosecondsEach, 40.0},
        {"peaks: " + tables + " tables, peaks sorted", "Table/Sorted", "unsorted", "Table/Unsorted",
         Claim::TimesTheTime, 1.0 / 3},
    };
}

} // namespace

int main(int argc, char** argv)
{
    Register("Find20ppm", FindOurs, 20.0, TolType::Ppm);
    Register("Find20ppm/OpenMS", FindOpenMS, 20.0, TolType::Ppm);
    Register("FindHalfDa", FindOurs, 0.5, TolType::Da);
    Register("FindHalfDa/OpenMS", FindOpenMS, 0.5, TolType::Da);
    Register("Table/Sorted", TablesOfSorted);
    Register("Table/Unsorted", TablesOfUnsorted);
    return bench::Run(argc, argv, Claims());
}
