// The native result table: read and written, beside OpenMS' CsvFile with the
// same columns converted.
#include <cmath>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include <fcntl.h>
#include <unistd.h>

#include <OpenMS/FORMAT/CsvFile.h>
#include <benchmark/benchmark.h>

#include "PeptideIdentificationIO.h"
#include "support/Claims.h"
#include "support/Inputs.h"

namespace {

using OpenMS::String;
using OpenMS::StringList;
using Matches = std::vector<Vorlan::PeptideIdentification>;

constexpr std::size_t kFullSize = 1000000; // rows

// ---- The input --------------------------------------------------------------

double Decimal(bench::Random& random, std::uint64_t low, std::uint64_t high, double divisor)
{
    return static_cast<double>(random.Between(low, high)) / divisor;
}

std::string RandomSequence(bench::Random& random)
{
    std::string sequence(random.Between(7, 25), 'A');
    for (char& residue : sequence) {
        residue = "ACDEFGHIKLMNPQRSTVWY"[random.Between(0, 19)];
    }
    return sequence;
}

void AddModifications(Vorlan::PeptideIdentification& match, bench::Random& random)
{
    const std::uint64_t count = random.Between(0, 2);
    for (std::uint64_t i = 0; i < count; ++i) {
        Vorlan::IdentModification mod;
        mod.strName = i == 0 ? "Oxidation (M)" : "Carbamidomethyl (C)";
        mod.nPos = static_cast<std::int32_t>(random.Between(1, match.strSequence.size()));
        match.vMods.push_back(mod);
    }
    match.SortMod();
}

void AddEvidences(Vorlan::PeptideIdentification& match, bench::Random& random)
{
    const std::uint64_t count = random.Between(1, 3);
    for (std::uint64_t i = 0; i < count; ++i) {
        const std::string number = std::to_string(random.Between(10000, 99999));
        const auto start = static_cast<std::int32_t>(random.Between(1, 900));
        match.vEvidences.emplace_back("sp|P" + number + "|GENE" + number + "_HUMAN", start, 0, 'K',
                                      'A');
    }
}

Matches RandomMatches(std::size_t count)
{
    bench::Random random(4);
    Matches matches(count);
    for (std::size_t i = 0; i < count; ++i) {
        Vorlan::PeptideIdentification& match = matches[i];
        const std::string scan = std::to_string(10000 + i);
        match.strDatasetName = "run01.mgf";
        match.strSpectrumName = "run01." + scan + '.' + scan + ".2";
        match.strSequence = RandomSequence(random);
        match.nCharge = random.Between(2, 4);
        match.dObsMH = Decimal(random, 700000000, 3000000000, 1e6);
        match.dMassShift = Decimal(random, 0, 20000, 1e6) - 0.01;
        match.dMainScore = Decimal(random, 0, 999999999, 1e6);
        match.bHighScoreBetter = true;
        AddModifications(match, random);
        AddEvidences(match, random);
    }
    return matches;
}

void SaveOurs(const Matches& matches, const std::string& path)
{
    const bench::CoutToNull quiet; // the progress display
    Vorlan::TulkTXTPepIdentIO writer;
    writer.InitSave(path);
    writer.Save(matches);
    writer.EndSave();
}

struct Input {
    bench::TemporaryFolder folder;
    Matches matches = RandomMatches(bench::Scaled(kFullSize));

    Input() { SaveOurs(matches, folder.File("input.txt")); }
};

const Input& TheInput()
{
    static const Input input;
    return input;
}

/// Whether what was read has all rows, and the last one as it was written.
bool IsWhole(const Matches& matches)
{
    const Matches& expected = TheInput().matches;
    return matches.size() == expected.size()
           && matches.back().strSequence == expected.back().strSequence
           && matches.back().vMods.size() == expected.back().vMods.size()
           && matches.back().vEvidences.size() == expected.back().vEvidences.size()
           && std::abs(matches.back().dObsMH - expected.back().dObsMH) < 2e-6;
}

/// Sets the rate, and reports an error where the work was not done.
void ConcludeRead(benchmark::State& state, bool isWhole)
{
    const std::uint64_t bytes = std::filesystem::file_size(TheInput().folder.File("input.txt"));
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(bytes));
    if (!isWhole) {
        state.SkipWithError("the table was not read as it was written");
    }
}

// ---- Read -------------------------------------------------------------------

void ReadOurs(benchmark::State& state)
{
    const Vorlan::PepIdentSource source(TheInput().folder.Path(), "input.txt",
                                        Vorlan::PepIdentType::CalvexTxt);
    const bench::CoutToNull quiet;
    bool isWhole = false;
    for (auto _ : state) {
        Matches matches;
        auto reader = std::make_unique<Vorlan::TulkTXTPepIdentIO>();
        reader->InitLoad(source);
        reader->Load(matches);
        state.PauseTiming(); // Letting go is not measured, on no side.
        isWhole = IsWhole(matches);
        bench::LetGo(reader);
        bench::LetGo(matches);
        state.ResumeTiming();
    }
    ConcludeRead(state, isWhole);
}

/// A cell that holds a list.
StringList ListOf(const String& cell)
{
    StringList list;
    if (!cell.empty()) {
        cell.split(';', list);
    }
    return list;
}

void ConvertLists(const StringList& row, Vorlan::PeptideIdentification& match)
{
    const StringList names = ListOf(row[8]);
    const StringList places = ListOf(row[9]);
    for (std::size_t i = 0; i < names.size(); ++i) {
        Vorlan::IdentModification& mod = match.vMods.emplace_back();
        mod.strName = names[i];
        mod.nPos = places[i].toInt();
    }
    const StringList accessions = ListOf(row[10]);
    const StringList before = ListOf(row[11]);
    const StringList after = ListOf(row[12]);
    const StringList starts = ListOf(row[13]);
    for (std::size_t i = 0; i < accessions.size(); ++i) {
        match.vEvidences.emplace_back(accessions[i], starts[i].toInt(), 0, before[i][0],
                                      after[i][0]);
    }
}

/// The same record out of a row of OpenMS.
void Convert(const StringList& row, Vorlan::PeptideIdentification& match)
{
    match.strDatasetName = row[0];
    match.strSpectrumName = row[1];
    match.strSequence = row[2];
    match.nCharge = static_cast<std::uint64_t>(row[3].toInt());
    match.dObsMH = row[4].toDouble();
    match.dMassShift = row[5].toDouble();
    match.dMainScore = row[6].toDouble();
    match.bHighScoreBetter = row[7] == "1";
    ConvertLists(row, match);
}

void ReadOpenMS(benchmark::State& state)
{
    const std::string path = TheInput().folder.File("input.txt");
    bool isWhole = false;
    for (auto _ : state) {
        Matches matches;
        OpenMS::CsvFile file;
        file.load(path, '\t');
        StringList row;
        for (std::size_t i = 1; i < file.rowCount(); ++i) {
            file.getRow(i, row);
            Convert(row, matches.emplace_back());
        }
        state.PauseTiming();
        isWhole = IsWhole(matches);
        file.clear();
        bench::LetGo(matches);
        state.ResumeTiming();
    }
    ConcludeRead(state, isWhole);
}

// ---- Write ------------------------------------------------------------------

/// Whether a row ends with a flush depends on its proteins.
enum class Proteins { With, Without };

Matches MatchesToWrite(Proteins proteins)
{
    Matches matches = TheInput().matches;
    if (proteins == Proteins::Without) {
        for (auto& match : matches) {
            match.vEvidences.clear();
        }
    }
    return matches;
}

/// Sets the rate, and reports an error where the file is too small for the rows.
void ConcludeWrite(benchmark::State& state, const std::string& path)
{
    constexpr std::uint64_t leastRow = 70;
    const std::uint64_t bytes = std::filesystem::file_size(path);
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(bytes));
    if (bytes < leastRow * TheInput().matches.size()) {
        state.SkipWithError("the table was not written");
    }
}

void WriteOurs(benchmark::State& state, Proteins proteins)
{
    const Matches matches = MatchesToWrite(proteins);
    const std::string path = TheInput().folder.File("ours.txt");
    for (auto _ : state) {
        SaveOurs(matches, path);
    }
    ConcludeWrite(state, path);
}

/// The limit where every row is flushed: its text, ready made, in one write.
void WriteBare(benchmark::State& state)
{
    const std::string path = TheInput().folder.File("bare.txt");
    std::vector<std::string> rows;
    std::ifstream input(TheInput().folder.File("input.txt"));
    for (std::string row; std::getline(input, row);) {
        rows.push_back(row + '\n');
    }
    for (auto _ : state) {
        const int descriptor = ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
        for (const std::string& row : rows) {
            benchmark::DoNotOptimize(::write(descriptor, row.data(), row.size()));
        }
        ::close(descriptor);
    }
    ConcludeWrite(state, path);
}

/// Elements of a list as one cell.
template <typename Elements, typename TextOf>
String Joined(const Elements& elements, TextOf textOf)
{
    String cell;
    for (const auto& element : elements) {
        cell += (cell.empty() ? "" : ";") + textOf(element);
    }
    return cell;
}

StringList RowOf(const Vorlan::PeptideIdentification& match)
{
    const auto& mods = match.vMods;
    const auto& proteins = match.vEvidences;
    return {match.strDatasetName,
            match.strSpectrumName,
            match.strSequence,
            String(match.nCharge),
            String(match.dObsMH),
            String(match.dMassShift),
            String(match.dMainScore),
            match.bHighScoreBetter ? "1" : "0",
            Joined(mods, [](const auto& mod) { return mod.strName; }),
            Joined(mods, [](const auto& mod) { return String(mod.nPos); }),
            Joined(proteins, [](const auto& protein) { return protein.strProteinAccession; }),
            Joined(proteins, [](const auto& protein) { return String(protein.cBefore); }),
            Joined(proteins, [](const auto& protein) { return String(protein.cAfter); }),
            Joined(proteins, [](const auto& protein) { return String(protein.nStart); })};
}

void WriteOpenMS(benchmark::State& state, Proteins proteins)
{
    const Matches matches = MatchesToWrite(proteins);
    const std::string path = TheInput().folder.File("openms.txt");
    for (auto _ : state) {
        OpenMS::CsvFile file; // separates by commas; nothing else can be set
        for (const auto& match : matches) {
            file.addRow(RowOf(match));
        }
        file.store(path);
        state.PauseTiming();
        file.clear();
        ::malloc_trim(0);
        state.ResumeTiming();
    }
    ConcludeWrite(state, path);
}

// ---- What is wanted ---------------------------------------------------------

std::vector<bench::Claim> Claims()
{
    using bench::Claim;
    return {
        {"native table: read", "Read", "OpenMS CsvFile", "Read/OpenMS", Claim::TimesFaster, 3.0},
        {"native table: write, every row flushed", "Write", "OpenMS CsvFile", "Write/OpenMS",
         Claim::TimesFaster, 4.0},
        {"native table: write, every row flushed", "Write", "bare writes", "Write/Bare",
         Claim::TimesTheTime, 2.0},
        {"native table: write, no proteins, no flush", "WriteNoFlush", "OpenMS CsvFile",
         "WriteNoFlush/OpenMS", Claim::TimesFaster, 4.0},
    };
}

template <typename Function, typename... Arguments>
void Register(const char* name, Function function, Arguments... arguments)
{
    benchmark::RegisterBenchmark(name, function, arguments...)
        ->Unit(benchmark::kMillisecond)
        ->Iterations(1)
        ->Repetitions(5);
}

} // namespace

int main(int argc, char** argv)
{
    Register("Read", ReadOurs);
    Register("Read/OpenMS", ReadOpenMS);
    Register("Write", WriteOurs, Proteins::With);
    Register("Write/OpenMS", WriteOpenMS, Proteins::With);
    Register("Write/Bare", WriteBare);
    Register("WriteNoFlush", WriteOurs, Proteins::Without);
    Register("WriteNoFlush/OpenMS", WriteOpenMS, Proteins::Without);
    return bench::Run(argc, argv, Claims());
}
