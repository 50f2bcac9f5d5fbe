// DTA: a folder of small files, read all at once and one by one, beside OpenMS'
// DTAFile and two limits: the system calls for every file alone, and with a plain
// parser behind them.
#include <charconv>
#include <filesystem>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

#include <fcntl.h>
#include <unistd.h>

#include <OpenMS/FORMAT/DTAFile.h>
#include <OpenMS/KERNEL/MSSpectrum.h>
#include <benchmark/benchmark.h>

#include "SpectraIO.h"
#include "support/Claims.h"
#include "support/Inputs.h"

namespace {

using Vorlan::Peak;
using Vorlan::Spectrum;

constexpr std::size_t kFullSize = 20000; // files, about 60 MB
constexpr std::size_t kPeaks = 150;      // in each of them

// ---- The input --------------------------------------------------------------

class Input {
public:
    Input()
    {
        bench::Random random(11);
        for (std::size_t i = 0; i < bench::Scaled(kFullSize); ++i) {
            AddFile(random, std::to_string(i + 1));
        }
    }

    const std::string& Folder() const { return folder_.Path(); }
    const std::vector<std::string>& Names() const { return names_; }
    const std::vector<std::string>& Paths() const { return paths_; }
    std::uint64_t Bytes() const { return bytes_; }

private:
    void AddFile(bench::Random& random, const std::string& scan)
    {
        const std::string charge = std::to_string(random.Between(2, 4));
        std::string text;
        bench::AppendDecimal(text, random.Between(700000000, 3500000000), 6);
        text += ' ' + charge + '\n';
        bench::AppendPeaks(text, random, kPeaks);
        names_.push_back("run01." + scan + '.' + scan + '.' + charge + ".dta");
        paths_.push_back(folder_.File(names_.back()));
        std::ofstream(paths_.back(), std::ios::binary) << text;
        bytes_ += text.size();
    }

    bench::TemporaryFolder folder_;
    std::vector<std::string> names_;
    std::vector<std::string> paths_;
    std::uint64_t bytes_ = 0;
};

/// Made by the first benchmark that needs it.
const Input& TheInput()
{
    static const Input input;
    return input;
}

/// Sets the rate, and reports an error where the work was not done.
void Conclude(benchmark::State& state, std::uint64_t found, std::uint64_t expected)
{
    if (found != expected) {
        state.SkipWithError("not everything was found");
    }
    state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(TheInput().Bytes()));
}

std::uint64_t AllPeaks()
{
    return kPeaks * TheInput().Names().size();
}

std::size_t SizeOf(const Spectrum& spectrum)
{
    return spectrum.vPeaks.size();
}

std::size_t SizeOf(const OpenMS::MSSpectrum& spectrum)
{
    return spectrum.size();
}

// ---- All at once ------------------------------------------------------------

void LoadAllOurs(std::vector<Spectrum>& spectra)
{
    Vorlan::DtaIO reader;
    reader.InitLoad(TheInput().Folder());
    reader.tLoadAllSpectra(spectra);
}

/// The names are known to it.
void LoadAllOpenMS(std::vector<OpenMS::MSSpectrum>& spectra)
{
    for (const std::string& path : TheInput().Paths()) {
        OpenMS::DTAFile().load(path, spectra.emplace_back());
    }
}

template <typename Spectra>
void LoadAll(benchmark::State& state, void (*load)(Spectra&))
{
    TheInput();
    std::uint64_t peaks = 0;
    for (auto _ : state) {
        Spectra spectra;
        load(spectra);
        state.PauseTiming(); // Letting go is not measured, on no side.
        peaks = 0;
        for (const auto& spectrum : spectra) {
            peaks += SizeOf(spectrum);
        }
        bench::LetGo(spectra);
        state.ResumeTiming();
    }
    Conclude(state, peaks, AllPeaks());
}

// ---- One by one -------------------------------------------------------------

void OneByOneOurs(benchmark::State& state)
{
    const Input& input = TheInput();
    std::uint64_t peaks = 0;
    for (auto _ : state) {
        peaks = 0;
        Vorlan::DtaIO reader;
        reader.InitLoad(input.Folder());
        std::vector<Spectrum> spectra;
        for (const std::string& name : input.Names()) {
            spectra.clear();
            reader.bLoadOneSpectrum(name, spectra);
            peaks += SizeOf(spectra.back());
        }
    }
    Conclude(state, peaks, AllPeaks());
}

/// Into one spectrum, over and over.
void OneByOneOpenMS(benchmark::State& state)
{
    const Input& input = TheInput();
    std::uint64_t peaks = 0;
    for (auto _ : state) {
        peaks = 0;
        OpenMS::MSSpectrum spectrum;
        for (const std::string& path : input.Paths()) {
            OpenMS::DTAFile().load(path, spectrum);
            peaks += SizeOf(spectrum);
        }
    }
    Conclude(state, peaks, AllPeaks());
}

/// Opens a file, reads it to its end and closes it, in three or more calls of the
/// system. The file is not larger than block; gives its size.
std::size_t ReadFile(const std::string& path, std::vector<char>& block)
{
    std::size_t size = 0;
    const int descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    for (ssize_t got = 0;
         (got = ::read(descriptor, block.data() + size, block.size() - size)) > 0;) {
        size += static_cast<std::size_t>(got);
    }
    ::close(descriptor);
    return size;
}

constexpr std::size_t kBlockSize = std::size_t{64} * 1024;

/// The limit: no byte is looked at.
void SystemCalls(benchmark::State& state)
{
    const Input& input = TheInput();
    std::vector<char> block(kBlockSize);
    std::uint64_t bytes = 0;
    for (auto _ : state) {
        bytes = 0;
        for (const std::string& path : input.Paths()) {
            bytes += ReadFile(path, block);
        }
    }
    Conclude(state, bytes, input.Bytes());
}

/// The first number of text, which moves behind it and one character more.
template <typename Number>
Number TakeNumber(std::string_view& text)
{
    Number value{};
    const char* const stop = std::from_chars(text.data(), text.data() + text.size(), value).ptr;
    text.remove_prefix(static_cast<std::size_t>(stop - text.data()));
    text.remove_prefix(text.empty() ? 0 : 1);
    return value;
}

/// A plain parser of what this program generates; it checks nothing.
void ParseText(std::string_view text, Spectrum& spectrum)
{
    constexpr double proton = 1.00727646677;
    const double mh = TakeNumber<double>(text);
    spectrum.nCharge = TakeNumber<std::uint64_t>(text);
    spectrum.dPrecursorMz = (mh - proton) / static_cast<double>(spectrum.nCharge) + proton;
    spectrum.vPeaks.reserve(256);
    while (!text.empty()) {
        Peak& peak = spectrum.vPeaks.emplace_back();
        peak.dMz = TakeNumber<double>(text);
        peak.dIntensity = TakeNumber<double>(text);
    }
}

/// The same calls, and the records that we make. The paths are known to it.
void OneByOnePlain(benchmark::State& state)
{
    const Input& input = TheInput();
    std::vector<char> block(kBlockSize);
    std::uint64_t peaks = 0;
    for (auto _ : state) {
        peaks = 0;
        std::vector<Spectrum> spectra;
        for (std::size_t i = 0; i < input.Paths().size(); ++i) {
            spectra.clear();
            Spectrum& spectrum = spectra.emplace_back();
            spectrum.strSource = input.Folder();
            spectrum.strTitle = input.Names()[i];
            ParseText({block.data(), ReadFile(input.Paths()[i], block)}, spectrum);
            peaks += SizeOf(spectrum);
        }
    }
    Conclude(state, peaks, AllPeaks());
}

// ---- What is wanted ---------------------------------------------------------

std::vector<bench::Claim> Claims()
{
    using bench::Claim;
    return {
        {"DTA: load a folder", "All", "OpenMS DTAFile", "All/OpenMS", Claim::TimesFaster, 1.5},
        {"DTA: load one by one", "OneByOne", "OpenMS DTAFile", "OneByOne/OpenMS",
         Claim::TimesFaster, 1.5},
        {"DTA: load one by one", "OneByOne", "open, read, close", "OneByOne/SystemCalls",
         Claim::TimesTheTime, Claim::kNothingWanted},
        {"DTA: load one by one", "OneByOne", "open, read, parse, close", "OneByOne/Plain",
         Claim::TimesTheTime, 1.2},
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
    Register("All", LoadAll<std::vector<Spectrum>>, LoadAllOurs);
    Register("All/OpenMS", LoadAll<std::vector<OpenMS::MSSpectrum>>, LoadAllOpenMS);
    Register("OneByOne", OneByOneOurs);
    Register("OneByOne/OpenMS", OneByOneOpenMS);
    Register("OneByOne/SystemCalls", SystemCalls);
    Register("OneByOne/Plain", OneByOnePlain);
    return bench::Run(argc, argv, Claims());
}
