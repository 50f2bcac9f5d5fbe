// Modifications: loading Unimod from XML and looking up by mass, beside OpenMS'
// database of the same file.
#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <iostream>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include <OpenMS/CHEMISTRY/ModificationsDB.h>
#include <OpenMS/FORMAT/UnimodXMLFile.h>
#include <OpenMS/SYSTEM/File.h>
#include <benchmark/benchmark.h>

#include "ModificationDB.h"
#include "support/Claims.h"
#include "support/Inputs.h"
#include "support/OwnProcess.h"

namespace {

using Vorlan::CResidueModification;

constexpr auto kAnyTerm = CResidueModification::NUMBER_OF_TERM_SPECIFICITY;
constexpr std::size_t kMasses = 1024;

/// The class has one instance for a process; a derived one may be made again.
class Unimod : public Vorlan::CModificationsDBUnimod {
public:
    explicit Unimod(const std::string& path) : CModificationsDBUnimod(path) {}
};

/// The file that comes with OpenMS, or an empty text.
std::string UnimodPath()
{
    try {
        return OpenMS::File::find("CHEMISTRY/unimod.xml");
    } catch (const OpenMS::Exception::FileNotFound&) {
        return "";
    }
}

// ---- The databases ------------------------------------------------------------

/// All records in the order of the database, which is that of their addresses.
std::vector<const CResidueModification*> RecordsOf(const Unimod& database)
{
    std::vector<std::string> fullIds;
    database.searchModificationsByDiffMonoMass(fullIds, 0.0, 1e9, "", kAnyTerm);
    std::set<const CResidueModification*> all;
    for (const std::string& fullId : fullIds) {
        std::set<const CResidueModification*> found;
        database.searchModifications(found, fullId, "", kAnyTerm);
        all.insert(found.begin(), found.end());
    }
    return {all.begin(), all.end()};
}

struct Databases {
    std::unique_ptr<Unimod> ours;
    std::vector<const CResidueModification*> records; ///< of ours
    OpenMS::ModificationsDB* openMS;
    std::vector<double> masses; ///< to look up, Da

    Databases()
    {
        const bench::CoutToNull quiet;
        ours = std::make_unique<Unimod>(UnimodPath());
        records = RecordsOf(*ours);
        openMS = OpenMS::ModificationsDB::initializeModificationsDB(UnimodPath(), "", "");
        AddMasses();
    }

private:
    /// One half near modifications, the other half anywhere.
    void AddMasses()
    {
        bench::Random random(6);
        const auto units = [&random](std::uint64_t low, std::uint64_t high) {
            return static_cast<double>(random.Between(low, high)) / 1e5;
        };
        for (std::size_t i = 0; i < kMasses; ++i) {
            const CResidueModification& record = *records[random.Between(0, records.size() - 1)];
            masses.push_back(i % 2 == 0 ? record.getDiffMonoMass() + units(0, 500)
                                        : units(0, 70000000) - 100.0);
        }
        random.Shuffle(masses);
    }
};

const Databases& TheDatabases()
{
    static const Databases databases;
    return databases;
}

// ---- Loading --------------------------------------------------------------------

void Conclude(benchmark::State& state, std::size_t records)
{
    if (records != TheDatabases().records.size()) {
        state.SkipWithError("not every modification was read");
    }
    state.SetBytesProcessed(state.iterations()
                            * static_cast<std::int64_t>(std::filesystem::file_size(UnimodPath())));
}

void LoadOurs(benchmark::State& state)
{
    const std::string path = UnimodPath();
    const bench::CoutToNull quiet; // the origins
    std::size_t records = 0;
    for (auto _ : state) {
        auto database = std::make_unique<Unimod>(path);
        state.PauseTiming(); // Letting go is not measured, on no side.
        records = database->getNumberOfModifications();
        bench::LetGo(database);
        state.ResumeTiming();
    }
    Conclude(state, records);
}

/// The records without their names: the database of OpenMS can be made but once.
void LoadRecordsOpenMS(benchmark::State& state)
{
    const std::string path = UnimodPath();
    const bench::CoutToNull quiet;
    std::vector<OpenMS::ResidueModification*> records;
    std::size_t number = 0;
    for (auto _ : state) {
        OpenMS::UnimodXMLFile().load(path, records);
        state.PauseTiming();
        number = records.size();
        for (const OpenMS::ResidueModification* record : records) {
            delete record;
        }
        bench::LetGo(records);
        state.ResumeTiming();
    }
    Conclude(state, number);
}

constexpr char kLoadOption[] = "--time-of-the-database-of-openms";

/// Makes one database and prints the time for it.
int PrintTimeOfLoading(const std::string& whose)
{
    const std::string path = UnimodPath();
    const bench::CoutToNull quiet;
    const auto wall = std::chrono::steady_clock::now();
    const double cpu = bench::CpuSeconds();
    if (whose == "ours") {
        benchmark::DoNotOptimize(std::make_unique<Unimod>(path));
    } else {
        benchmark::DoNotOptimize(OpenMS::ModificationsDB::initializeModificationsDB(path, "", ""));
    }
    const double cpuSeconds = bench::CpuSeconds() - cpu;
    const std::chrono::duration<double> wallSeconds = std::chrono::steady_clock::now() - wall;
    std::printf("%f %f\n", cpuSeconds, wallSeconds.count());
    return 0;
}

/// The first load of a process of its own: OpenMS makes its database but once.
void LoadFirst(benchmark::State& state, const char* whose)
{
    double cpu = 0.0;
    double wall = 0.0;
    for (auto _ : state) {
        const auto child = bench::RunMyself({kLoadOption, whose});
        if (child.status != 0 || std::sscanf(child.output.c_str(), "%lf %lf", &cpu, &wall) != 2) {
            state.SkipWithError("the measuring process failed");
        }
    }
    state.counters["own_cpu_s"] = cpu;
    state.counters["own_wall_s"] = wall;
}

// ---- Looking up by mass -----------------------------------------------------------

void FindOurs(benchmark::State& state, double window)
{
    const Databases& databases = TheDatabases();
    std::vector<std::string> fullIds;
    for (auto _ : state) {
        for (const double mass : databases.masses) {
            databases.ours->searchModificationsByDiffMonoMass(fullIds, mass, window, "", kAnyTerm);
            benchmark::DoNotOptimize(fullIds.data());
        }
    }
    state.counters["each"] = static_cast<double>(databases.masses.size());
}

void FindOpenMS(benchmark::State& state, double window)
{
    const Databases& databases = TheDatabases();
    std::vector<OpenMS::String> fullIds;
    for (auto _ : state) {
        for (const double mass : databases.masses) {
            databases.openMS->searchModificationsByDiffMonoMass(fullIds, mass, window);
            benchmark::DoNotOptimize(fullIds.data());
        }
    }
    state.counters["each"] = static_cast<double>(databases.masses.size());
}

/// What a walk over all records finds, in their order.
std::vector<std::string> Walk(const Databases& databases, double mass, double window)
{
    std::vector<std::string> fullIds;
    for (const CResidueModification* const record : databases.records) {
        if (std::abs(record->getDiffMonoMass() - mass) <= window) {
            fullIds.push_back(record->getFullId());
        }
    }
    return fullIds;
}

/// OpenMS writes "N-term" for our "Any N-term". Where our site is "N-term", in
/// a record that may sit anywhere, it writes "X".
std::string InWordsOfOpenMS(const std::string& fullId)
{
    const std::size_t place = fullId.rfind('(') + 1;
    const std::string site = fullId.substr(place);
    if (site == "N-term)" || site == "C-term)") {
        return fullId.substr(0, place) + "X)";
    }
    return fullId.substr(0, place) + site.substr(site.compare(0, 4, "Any ") == 0 ? 4 : 0);
}

/// Compares what all three find for every mass.
bool AllFindTheSame(double window)
{
    const Databases& databases = TheDatabases();
    std::vector<std::string> ours;
    std::vector<OpenMS::String> openMS;
    for (const double mass : databases.masses) {
        databases.ours->searchModificationsByDiffMonoMass(ours, mass, window, "", kAnyTerm);
        databases.openMS->searchModificationsByDiffMonoMass(openMS, mass, window);
        const bool sameAsOpenMS = std::equal(
            ours.begin(), ours.end(), openMS.begin(), openMS.end(),
            [](const std::string& a, const OpenMS::String& b) { return InWordsOfOpenMS(a) == b; });
        if (ours != Walk(databases, mass, window) || !sameAsOpenMS) {
            std::cerr << "different modifications within " << window << " Da of " << mass << '\n';
            return false;
        }
    }
    return true;
}

// ---- What is wanted ---------------------------------------------------------

std::vector<bench::Claim> Claims()
{
    using bench::Claim;
    const std::string lookUps = "modifications: " + std::to_string(kMasses) + " masses, ";
    return {
        {"modifications: Unimod from XML", "LoadFirst/ours", "OpenMS", "LoadFirst/OpenMS",
         Claim::TimesFaster, 5.0},
        {"modifications: Unimod from XML", "LoadFirst/ours", "OpenMS", "LoadFirst/OpenMS",
         Claim::Milliseconds, 10.0},
        {"modifications: Unimod from XML, again", "Load", "OpenMS, records only",
         "Load/OpenMSRecords", Claim::TimesFaster, Claim::kNothingWanted},
        {lookUps + "0.01 Da", "Find10mDa", "OpenMS", "Find10mDa/OpenMS", Claim::TimesFaster, 20.0},
        {lookUps + "0.5 Da", "FindHalfDa", "OpenMS", "FindHalfDa/OpenMS", Claim::TimesFaster, 20.0},
        {"modifications: one look-up, 0.01 Da", "Find10mDa", "OpenMS", "Find10mDa/OpenMS",
         Claim::NanosecondsEach, 250.0},
        {"modifications: one look-up, 0.5 Da", "FindHalfDa", "OpenMS", "FindHalfDa/OpenMS",
         Claim::NanosecondsEach, 250.0},
    };
}

template <typename Function, typename... Arguments>
benchmark::internal::Benchmark* Register(const char* name, Function function,
                                         Arguments... arguments)
{
    return benchmark::RegisterBenchmark(name, function, arguments...)
        ->Unit(benchmark::kMillisecond)
        ->Repetitions(9);
}

} // namespace

int main(int argc, char** argv)
{
    if (UnimodPath().empty()) {
        std::cerr << "modifications: not measured, CHEMISTRY/unimod.xml of OpenMS is not there\n";
        return 0;
    }
    if (argc == 3 && std::string(argv[1]) == kLoadOption) {
        return PrintTimeOfLoading(argv[2]);
    }
    if (!AllFindTheSame(0.01) || !AllFindTheSame(0.5)) {
        return 1;
    }
    Register("LoadFirst/ours", LoadFirst, "ours")->Iterations(1);
    Register("LoadFirst/OpenMS", LoadFirst, "OpenMS")->Iterations(1);
    Register("Load", LoadOurs)->MinTime(0.1);
    Register("Load/OpenMSRecords", LoadRecordsOpenMS)->MinTime(0.1);
    Register("Find10mDa", FindOurs, 0.01)->MinTime(0.1);
    Register("Find10mDa/OpenMS", FindOpenMS, 0.01)->MinTime(0.1);
    Register("FindHalfDa", FindOurs, 0.5)->MinTime(0.1);
    Register("FindHalfDa/OpenMS", FindOpenMS, 0.5)->MinTime(0.1);
    return bench::Run(argc, argv, Claims());
}
