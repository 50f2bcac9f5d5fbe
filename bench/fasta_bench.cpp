// FASTA: a whole database loaded, beside OpenMS' FASTAFile and the limit, a read of
// the file and a scan of its letters; the memory for it; and the protein of a match,
// asked for in the order of a search and in no order.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <fcntl.h>
#include <unistd.h>

#include <OpenMS/FORMAT/FASTAFile.h>
#include <benchmark/benchmark.h>

#include "FastaProteinDB.h"
#include "support/Claims.h"
#include "support/Inputs.h"
#include "support/OwnProcess.h"
#include "support/Proteins.h"

namespace {

constexpr std::size_t kFullSize = 200000; // proteins, about 110 MB
constexpr std::size_t kQueries = 500000;

// ---- The input --------------------------------------------------------------

struct Input {
    bench::TemporaryFolder folder;
    std::string path = folder.File("proteins.fasta");
    std::size_t proteins = bench::Scaled(kFullSize);
    std::uint64_t residues = bench::WriteProteins(path, proteins);
    std::uint64_t bytes = std::filesystem::file_size(path);
};

/// Made by the first benchmark that needs it.
const Input& TheInput()
{
    static const Input input;
    return input;
}

/// Sets the rate, and reports an error where the work was not done.
void Conclude(benchmark::State& state, bool isDone)
{
    if (!isDone) {
        state.SkipWithError("not everything was found");
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(TheInput().bytes));
}

// ---- Loading ----------------------------------------------------------------

using Database = std::unique_ptr<Vorlan::CFastaProteinDB>;
using Entries = std::vector<OpenMS::FASTAFile::FASTAEntry>;

void LoadOurs(const std::string& path, Database& database)
{
    database = std::make_unique<Vorlan::CFastaProteinDB>();
    database->SetDBPath(path);
    database->ReadFromFile();
}

void LoadOpenMS(const std::string& path, Entries& entries)
{
    OpenMS::FASTAFile::load(path, entries);
}

bool IsWhole(const Database& database)
{
    return database->GetEntryNum() == TheInput().proteins
           && database->cProteinString().size() == TheInput().residues + TheInput().proteins;
}

bool IsWhole(const Entries& entries)
{
    std::uint64_t residues = 0;
    for (const auto& entry : entries) {
        residues += entry.sequence.size();
    }
    return entries.size() == TheInput().proteins && residues == TheInput().residues;
}

template <typename All>
void Load(benchmark::State& state, void (*load)(const std::string&, All&))
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
    Conclude(state, isWhole);
}

/// The limit: new memory for the file, not filled before, one read of the whole file
/// into it, and one pass that counts the bytes from A to Z, those of the headers
/// among them. It looks for no line and keeps no text.
void ReadAndScan(benchmark::State& state)
{
    const Input& input = TheInput();
    std::uint64_t letters = 0;
    for (auto _ : state) {
        std::unique_ptr<char[]> text(new char[input.bytes]);
        const int descriptor = ::open(input.path.c_str(), O_RDONLY);
        const ssize_t got = ::read(descriptor, text.get(), input.bytes);
        ::close(descriptor);
        letters = 0;
        const char* const end = text.get() + std::max<ssize_t>(got, 0);
        for (const char* at = text.get(); at != end; ++at) {
            letters += *at >= 'A' && *at <= 'Z' ? 1 : 0;
        }
        benchmark::DoNotOptimize(letters);
        state.PauseTiming();
        bench::LetGo(text);
        state.ResumeTiming();
    }
    Conclude(state, letters > input.residues);
}

/// The limit for who keeps what a database keeps: the residues twice, in new memory of
/// two arrays, from one pass over blocks of the file. It makes no entry, no text of its
/// own for a protein, and looks at no header.
class TwoCopies {
public:
    explicit TwoCopies(std::uint64_t bytes) : first_(new char[bytes]), second_(new char[bytes]) {}

    void Take(const char* text, std::size_t size)
    {
        for (const char* const end = text + size; text < end;) {
            inHeader_ = atLineStart_ ? *text == '>' : inHeader_;
            const void* const feed = std::memchr(text, '\n', static_cast<std::size_t>(end - text));
            const char* const stop = feed == nullptr ? end : static_cast<const char*>(feed);
            if (!inHeader_) {
                const auto length = static_cast<std::size_t>(stop - text);
                std::memcpy(first_.get() + residues_, text, length);
                std::memcpy(second_.get() + residues_, text, length);
                residues_ += length;
            }
            atLineStart_ = feed != nullptr;
            text = atLineStart_ ? stop + 1 : end;
        }
    }

    std::uint64_t Residues() const { return residues_; }

private:
    std::unique_ptr<char[]> first_, second_;
    std::uint64_t residues_ = 0;
    bool atLineStart_ = true;
    bool inHeader_ = false;
};

void ReadAndCopyTwice(benchmark::State& state)
{
    constexpr std::size_t blockSize = std::size_t{256} * 1024;
    const Input& input = TheInput();
    std::uint64_t residues = 0;
    for (auto _ : state) {
        auto copies = std::make_unique<TwoCopies>(input.bytes);
        const std::unique_ptr<char[]> block(new char[blockSize]);
        const int descriptor = ::open(input.path.c_str(), O_RDONLY);
        for (ssize_t got = 1; got > 0;) {
            got = ::read(descriptor, block.get(), blockSize);
            copies->Take(block.get(), static_cast<std::size_t>(std::max<ssize_t>(got, 0)));
        }
        ::close(descriptor);
        residues = copies->Residues();
        state.PauseTiming();
        bench::LetGo(copies);
        state.ResumeTiming();
    }
    Conclude(state, residues == input.residues);
}

// ---- Memory -----------------------------------------------------------------

constexpr char kGrowthOption[] = "--print-growth-by-loading";

/// Growth of the resident set at its highest. Only a process that has done nothing
/// before can tell.
template <typename All>
int PrintGrowth(const char* path, void (*load)(const std::string&, All&))
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

// ---- Queries ----------------------------------------------------------------

struct Match {
    std::string peptide;
    std::uint64_t endPos;
    std::size_t protein;
    std::uint64_t start; ///< in the protein
};

/// A database, loaded once, with matches of 8 to 25 residues in two orders.
struct Queries {
    Database database;
    std::vector<Match> ascending, shuffled;

    Queries()
    {
        LoadOurs(TheInput().path, database);
        AddMatches(EndPositions());
        shuffled = ascending;
        bench::Random(13).Shuffle(shuffled);
    }

private:
    /// Peptides of random places, as (position of the last residue, length).
    std::vector<std::pair<std::uint64_t, std::size_t>> EndPositions() const
    {
        bench::Random random(12);
        const std::string& all = database->cProteinString();
        std::vector<std::pair<std::uint64_t, std::size_t>> ends;
        while (ends.size() < bench::Scaled(kQueries)) {
            const std::size_t length = random.Between(8, 25);
            const std::size_t begin = random.Between(0, all.size() - length);
            if (all.substr(begin, length).find(';') == std::string::npos) {
                ends.emplace_back(begin + length - 1, length);
            }
        }
        std::sort(ends.begin(), ends.end());
        return ends;
    }

    void AddMatches(const std::vector<std::pair<std::uint64_t, std::size_t>>& ends)
    {
        const auto& proteins = database->cProteins();
        std::size_t protein = 0;
        std::uint64_t proteinStart = 0;
        for (const auto& [endPos, length] : ends) {
            for (; endPos > proteinStart + proteins[protein].strSequence.size(); ++protein) {
                proteinStart += proteins[protein].strSequence.size() + 1;
            }
            const std::uint64_t begin = endPos - length + 1;
            ascending.push_back({database->cProteinString().substr(begin, length), endPos, protein,
                                 begin - proteinStart});
        }
    }
};

const Queries& TheQueries()
{
    static const Queries queries;
    return queries;
}

/// Takes all matches in order, and reports an error where one is not told to lie where
/// it does.
template <typename Ask>
void AskForAll(benchmark::State& state, const std::vector<Match>& matches, Ask ask)
{
    std::uint64_t right = 0;
    for (auto _ : state) {
        right = 0;
        Vorlan::CProtein protein;
        for (const Match& match : matches) {
            right += ask(match, protein) == match.start ? 1 : 0;
        }
    }
    if (right != matches.size()) {
        state.SkipWithError("a match is told to lie elsewhere");
    }
    state.counters["each"] = static_cast<double>(matches.size());
}

void QueryOurs(benchmark::State& state, std::vector<Match> Queries::*order)
{
    const Queries& queries = TheQueries();
    AskForAll(state, queries.*order, [&](const Match& match, Vorlan::CProtein& protein) {
        std::uint64_t start = 0;
        queries.database->Query(match.peptide, match.endPos, protein, start);
        return start;
    });
}

/// The limit of such an interface: the copies of the peptide, which goes in by value,
/// and of the protein, which is known here.
void OnlyCopies(benchmark::State& state, std::vector<Match> Queries::*order)
{
    const Queries& queries = TheQueries();
    AskForAll(state, queries.*order, [&](const Match& match, Vorlan::CProtein& protein) {
        std::string peptide = match.peptide;
        benchmark::DoNotOptimize(peptide.data());
        protein = queries.database->cProteins()[match.protein];
        return match.start;
    });
}

// ---- What is wanted ---------------------------------------------------------

std::vector<bench::Claim> Claims()
{
    using bench::Claim;
    const std::string queries = std::to_string(bench::Scaled(kQueries));
    return {
        {"FASTA: load", "Load", "OpenMS FASTAFile", "Load/OpenMS", Claim::TimesFaster, 3.0},
        {"FASTA: load", "Load", "read and scan", "Load/ReadAndScan", Claim::TimesTheTime, 1.2},
        {"FASTA: load", "Load", "read and copy twice", "Load/ReadAndCopyTwice", Claim::TimesTheTime,
         Claim::kNothingWanted},
        {"FASTA: memory for loading, at its highest", "Memory", "OpenMS FASTAFile", "Memory/OpenMS",
         Claim::Megabytes, Claim::kNothingWanted},
        {"FASTA: one query, ascending", "Query", "in random order", "Query/Random",
         Claim::NanosecondsEach, 50.0},
        {"FASTA: " + queries + " queries, ascending", "Query", "the copies alone", "Query/Copies",
         Claim::TimesTheTime, Claim::kNothingWanted},
        {"FASTA: " + queries + " queries, random order", "Query/Random", "the copies alone",
         "Query/RandomCopies", Claim::TimesTheTime, Claim::kNothingWanted},
    };
}

template <typename Function, typename... Arguments>
void Register(const char* name, int repetitions, Function function, Arguments... arguments)
{
    benchmark::RegisterBenchmark(name, function, arguments...)
        ->Unit(benchmark::kMillisecond)
        ->Iterations(1)
        ->Repetitions(repetitions);
}

} // namespace

int main(int argc, char** argv)
{
    if (argc == 4 && std::strcmp(argv[1], kGrowthOption) == 0) {
        return std::strcmp(argv[2], "ours") == 0 ? PrintGrowth<Database>(argv[3], LoadOurs)
                                                 : PrintGrowth<Entries>(argv[3], LoadOpenMS);
    }
    Register("Load", 5, Load<Database>, LoadOurs);
    Register("Load/OpenMS", 5, Load<Entries>, LoadOpenMS);
    Register("Load/ReadAndScan", 5, ReadAndScan);
    Register("Load/ReadAndCopyTwice", 5, ReadAndCopyTwice);
    Register("Memory", 1, Memory, "ours");
    Register("Memory/OpenMS", 1, Memory, "OpenMS");
    Register("Query", 5, QueryOurs, &Queries::ascending);
    Register("Query/Copies", 5, OnlyCopies, &Queries::ascending);
    Register("Query/Random", 5, QueryOurs, &Queries::shuffled);
    Register("Query/RandomCopies", 5, OnlyCopies, &Queries::shuffled);
    return bench::Run(argc, argv, Claims());
}
