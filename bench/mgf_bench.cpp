// MGF: the index, loading everything once, loading by name in random order.
//
// Beside us stand OpenMS' loader and two limits: a bare line scan of the same
// bytes, and a plain parser that has the bytes in memory already.
#include <algorithm>
#include <charconv>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <fcntl.h>
#include <unistd.h>

#include <OpenMS/FORMAT/MascotGenericFile.h>
#include <OpenMS/KERNEL/MSExperiment.h>
#include <benchmark/benchmark.h>

#include "SpectraIO.h"
#include "support/Claims.h"
#include "support/Inputs.h"
#include "support/OwnProcess.h"

namespace {

using Vorlan::Peak;
using Vorlan::Spectrum;

constexpr std::size_t kFullSize = 300000; // spectra, about 1 GB
constexpr std::size_t kPeaks = 150;       // in each of them

// ---- The input --------------------------------------------------------------

std::string TitleOf(std::size_t scan)
{
    const std::string number = std::to_string(scan);
    return "run01." + number + '.' + number
           + ".2 File:\"run01.raw\", NativeID:\"controllerType=0 controllerNumber=1 scan=" + number
           + '"';
}

void AppendRecord(std::string& text, const std::string& title, bench::Random& random)
{
    text.append("BEGIN IONS\nTITLE=").append(title).append("\nRTINSECONDS=");
    bench::AppendDecimal(text, random.Between(10000, 72000000), 4);
    text.append("\nPEPMASS=");
    bench::AppendDecimal(text, random.Between(400000000, 1200000000), 6);
    text += ' ';
    bench::AppendDecimal(text, random.Between(10000000, 99999999999), 4);
    text.append("\nCHARGE=").append(std::to_string(random.Between(2, 4))).append("+\n");
    bench::AppendPeaks(text, random, kPeaks);
    text.append("END IONS\n");
}

class Input {
public:
    Input() : path_(folder_.File("run01.mgf"))
    {
        bench::Random random(1);
        std::ofstream file(path_, std::ios::binary);
        std::string text;
        for (std::size_t i = 0; i < bench::Scaled(kFullSize); ++i) {
            titles_.push_back(TitleOf(i + 1));
            text.clear();
            AppendRecord(text, titles_.back(), random);
            file.write(text.data(), static_cast<std::streamsize>(text.size()));
        }
        file.close();
        bytes_ = std::filesystem::file_size(path_);
    }

    const std::string& Path() const { return path_; }
    const std::vector<std::string>& Titles() const { return titles_; }
    std::uint64_t Bytes() const { return bytes_; }

    /// The fourth name of a spectrum fills its scan number up to five digits:
    /// from scan 10000 on it is the third one again.
    std::uint64_t Names() const
    {
        return 3 * titles_.size() + std::min<std::size_t>(titles_.size(), 9999);
    }

private:
    bench::TemporaryFolder folder_;
    std::string path_;
    std::vector<std::string> titles_; ///< in file order
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

// ---- Index ------------------------------------------------------------------

void IndexOurs(benchmark::State& state)
{
    const std::string& path = TheInput().Path();
    std::uint64_t names = 0;
    for (auto _ : state) {
        auto reader = std::make_unique<Vorlan::MgfIO>();
        reader->InitLoad(path);
        state.PauseTiming(); // Letting go is not measured, on no side.
        names = reader->tGetInputSpecNumber();
        bench::LetGo(reader);
        state.ResumeTiming();
    }
    Conclude(state, names, TheInput().Names());
}

void LineScan(benchmark::State& state)
{
    const std::string& path = TheInput().Path();
    std::vector<char> block(std::size_t{256} * 1024);
    std::uint64_t lines = 0;
    for (auto _ : state) {
        lines = 0;
        const int descriptor = ::open(path.c_str(), O_RDONLY);
        for (ssize_t got = 0; (got = ::read(descriptor, block.data(), block.size())) > 0;) {
            const char* const end = block.data() + got;
            for (const char* p = block.data(); p < end; ++lines) {
                const void* const feed = std::memchr(p, '\n', static_cast<std::size_t>(end - p));
                if (feed == nullptr) {
                    break;
                }
                p = static_cast<const char*>(feed) + 1;
            }
        }
        ::close(descriptor);
    }
    constexpr std::size_t headerLines = 6; // "BEGIN IONS", four values, "END IONS"
    Conclude(state, lines, TheInput().Titles().size() * (kPeaks + headerLines));
}

/// OpenMS has no index: whoever wants one spectrum loads the file.
void LoadOpenMS(benchmark::State& state)
{
    const std::string& path = TheInput().Path();
    std::uint64_t number = 0;
    for (auto _ : state) {
        OpenMS::PeakMap spectra;
        OpenMS::MascotGenericFile().load(path, spectra);
        state.PauseTiming();
        number = spectra.size();
        bench::LetGo(spectra);
        state.ResumeTiming();
    }
    Conclude(state, number, TheInput().Titles().size());
}

// ---- Memory -----------------------------------------------------------------

constexpr char kGrowthOption[] = "--print-growth-by-index";

/// Growth of the resident set by InitLoad, while the index stands and at the
/// highest. Only a process that has done nothing before can tell.
int PrintGrowthByIndex(const char* path)
{
    const double before = bench::ResidentMegabytes();
    Vorlan::MgfIO reader;
    reader.InitLoad(path);
    std::printf("%f %f\n", bench::ResidentMegabytes() - before,
                bench::PeakResidentMegabytes() - before);
    return reader.tGetInputSpecNumber() > 0 ? 0 : 1;
}

void IndexMemory(benchmark::State& state)
{
    double standing = 0.0;
    double highest = 0.0;
    for (auto _ : state) {
        const auto child = bench::RunMyself({kGrowthOption, TheInput().Path()});
        const int numbers = std::sscanf(child.output.c_str(), "%lf %lf", &standing, &highest);
        if (child.status != 0 || numbers != 2) {
            state.SkipWithError("the measuring process failed");
        }
    }
    state.counters["MB"] = highest;
    state.counters["standing_MB"] = standing;
}

// ---- Load all, and by name --------------------------------------------------

constexpr std::size_t kKept = 1000; // spectra kept before the vector is cleared

/// Loads titles one by one and gives the number of peaks met.
std::uint64_t LoadByName(Vorlan::MgfIO& reader, const std::vector<std::string>& titles)
{
    std::uint64_t peaks = 0;
    std::vector<Spectrum> spectra;
    for (const std::string& title : titles) {
        if (spectra.size() == kKept) {
            spectra.clear();
        }
        reader.bLoadOneSpectrum(title, spectra);
        peaks += spectra.back().Size();
    }
    return peaks;
}

/// From the path to the last spectrum, the index included.
void LoadOurs(benchmark::State& state)
{
    const Input& input = TheInput();
    std::uint64_t peaks = 0;
    for (auto _ : state) {
        Vorlan::MgfIO reader;
        reader.InitLoad(input.Path());
        peaks = LoadByName(reader, input.Titles());
    }
    Conclude(state, peaks, kPeaks * input.Titles().size());
}

/// With the index made before; order is what titles are put into.
void ByNameOurs(benchmark::State& state, void (*order)(std::vector<std::string>&))
{
    std::vector<std::string> titles = TheInput().Titles();
    order(titles);
    Vorlan::MgfIO reader;
    reader.InitLoad(TheInput().Path());
    std::uint64_t peaks = 0;
    for (auto _ : state) {
        peaks = LoadByName(reader, titles);
    }
    Conclude(state, peaks, kPeaks * titles.size());
}

void InFileOrder(std::vector<std::string>& /*titles*/) {}

void InRandomOrder(std::vector<std::string>& titles)
{
    bench::Random(2).Shuffle(titles);
}

/// The first number of text, which moves behind it and one character more.
double TakeNumber(std::string_view& text)
{
    double value = 0.0;
    const char* const end = text.data() + text.size();
    const char* const stop = std::from_chars(text.data(), end, value).ptr;
    text.remove_prefix(static_cast<std::size_t>(stop - text.data()));
    text.remove_prefix(text.empty() ? 0 : 1);
    return value;
}

void ParseLine(std::string_view line, Spectrum& spectrum)
{
    const auto behind = [&line](std::size_t length) { return line.substr(length); };
    if (line.front() >= '0' && line.front() <= '9') {
        Peak& peak = spectrum.vPeaks.emplace_back();
        peak.dMz = TakeNumber(line);
        peak.dIntensity = TakeNumber(line);
    } else if (line.compare(0, 6, "TITLE=") == 0) {
        spectrum.strTitle = std::string(behind(6));
    } else if (line.compare(0, 8, "PEPMASS=") == 0) {
        std::string_view text = behind(8);
        spectrum.dPrecursorMz = TakeNumber(text);
    } else if (line.compare(0, 7, "CHARGE=") == 0) {
        std::string_view text = behind(7);
        spectrum.nCharge = static_cast<std::uint64_t>(TakeNumber(text));
    } else if (line.compare(0, 12, "RTINSECONDS=") == 0) {
        std::string_view text = behind(12);
        spectrum.dRetentionTime = TakeNumber(text);
    }
}

/// A plain parser of what this program generates; it checks nothing. Gives
/// the number of peaks.
std::uint64_t ParseAll(std::string_view text)
{
    std::uint64_t peaks = 0;
    std::vector<Spectrum> spectra;
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t end = text.find('\n', begin);
        const std::string_view line = text.substr(begin, end - begin);
        begin = end + 1;
        if (line == "BEGIN IONS") {
            if (spectra.size() == kKept) {
                spectra.clear();
            }
            spectra.emplace_back().vPeaks.reserve(256);
        } else if (line == "END IONS") {
            peaks += spectra.back().Size();
        } else {
            ParseLine(line, spectra.back());
        }
    }
    return peaks;
}

void ParseInMemory(benchmark::State& state)
{
    const Input& input = TheInput();
    std::string text(input.Bytes(), '\0');
    std::ifstream file(input.Path(), std::ios::binary);
    file.read(text.data(), static_cast<std::streamsize>(text.size()));
    std::uint64_t peaks = 0;
    for (auto _ : state) {
        peaks = ParseAll(text);
    }
    Conclude(state, peaks, kPeaks * input.Titles().size());
}

// ---- What is wanted ---------------------------------------------------------

std::vector<bench::Claim> Claims()
{
    using bench::Claim;
    return {
        {"MGF: index the file", "Index", "line scan", "Index/LineScan", Claim::TimesTheTime, 2.5},
        {"MGF: index the file", "Index", "OpenMS loads it", "Load/OpenMS", Claim::TimesFaster,
         10.0},
        {"MGF: memory for the index, at its highest", "Index/Memory", "", "", Claim::Megabytes,
         130.0 * bench::Scale()},
        {"MGF: load all, index included", "Load", "OpenMS", "Load/OpenMS", Claim::TimesFaster,
         10.0},
        {"MGF: load all, indexed before", "LoadIndexed", "OpenMS", "Load/OpenMS",
         Claim::TimesFaster, 6.0},
        {"MGF: by name, random order", "ByName", "parse in memory", "ByName/ParseInMemory",
         Claim::TimesTheTime, 1.5},
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
    if (argc == 3 && std::strcmp(argv[1], kGrowthOption) == 0) {
        return PrintGrowthByIndex(argv[2]);
    }
    Register("Index", 3, IndexOurs);
    Register("Index/LineScan", 3, LineScan);
    Register("Index/Memory", 1, IndexMemory);
    Register("Load", 3, LoadOurs);
    Register("Load/OpenMS", 3, LoadOpenMS);
    Register("LoadIndexed", 3, ByNameOurs, InFileOrder);
    Register("ByName", 3, ByNameOurs, InRandomOrder);
    Register("ByName/ParseInMemory", 3, ParseInMemory);
    return bench::Run(argc, argv, Claims());
}
