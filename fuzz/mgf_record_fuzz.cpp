// MGF records: reading against sscanf, loading in any order, writing and
// reading back.
//
// The input is an MGF text (see Expanded). The process runs in the "C" locale.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <sstream>
#include <string>
#include <vector>

#include "CStringProcess.h"
#include "FuzzSupport.h"
#include "SameSpectra.h"
#include "SpectraIO.h"
#include "spectra/MgfRecord.h"
#include "util/LineReader.h"

namespace {

using namespace Vorlan;

// A record may reach to the end of the file (B-16), so that reading all of them
// costs records times bytes. A few are always read, more only up to this cost.
constexpr std::size_t kMostWork = std::size_t{32} * 1024;
constexpr std::size_t kFew = 4;

bool IsWorthReading(std::size_t records, std::size_t fileSize)
{
    return records < kFew || records * fileSize < kMostWork;
}

// ---- Reading --------------------------------------------------------------

/// The nearest 32-bit number.
std::int32_t Nearest(long long number)
{
    return static_cast<std::int32_t>(
        std::clamp<long long>(number, std::numeric_limits<std::int32_t>::min(),
                              std::numeric_limits<std::int32_t>::max()));
}

void PlainHeaderLine(const char* line, Spectrum& spectrum)
{
    long long number = 0;
    if (std::sscanf(line, "CHARGE=%lld", &number) == 1) {
        spectrum.nCharge = static_cast<std::uint64_t>(std::llabs(Nearest(number)));
    }
    if (std::sscanf(line, "SCANS=%lld", &number) == 1) {
        spectrum.nScan = Nearest(number);
    }
    std::sscanf(line, "PEPMASS=%lf", &spectrum.dPrecursorMz);
    std::sscanf(line, "RTINSECONDS=%lf", &spectrum.dRetentionTime);
}

/// One record through std::istream and sscanf.
void PlainRead(std::istream& input, Spectrum& spectrum)
{
    static char line[LineReader::kMaxLineLength + 1];
    const auto next = [&] { return static_cast<bool>(input.getline(line, sizeof line)); };
    bool hasLine = next();
    for (; hasLine && !(line[0] >= '0' && line[0] <= '9'); hasLine = next()) {
        PlainHeaderLine(line, spectrum);
    }
    spectrum.vPeaks.clear();
    Peak peak;
    for (; hasLine && line[0] != 'E'; hasLine = next()) {
        std::sscanf(line, "%lf%*[ \t]%lf", &peak.dMz, &peak.dIntensity);
        spectrum.vPeaks.push_back(peak);
    }
}

/// Reads a record behind every line that begins with 'B', in both ways.
void CompareReading(const std::string& path, const std::string& text)
{
    LineReader reader;
    reader.Open(path, LineReader::Mode::Binary);
    std::istringstream input(text);
    Spectrum seen;
    Spectrum expected;
    Peak scratch;
    std::size_t records = 0;
    for (std::size_t line = 0; line < text.size() && IsWorthReading(records, text.size());) {
        const std::size_t feed = text.find('\n', line);
        const std::size_t next = feed == std::string::npos ? text.size() : feed + 1;
        if (text[line] == 'B') {
            reader.Seek(next);
            mgf::ReadRecord(reader, seen, scratch);
            input.clear();
            input.seekg(static_cast<std::streamoff>(next));
            PlainRead(input, expected);
            fuzz::CheckSameSpectrum(seen, expected, "a record reads as through sscanf");
            ++records;
        }
        line = next;
    }
}

// ---- Loading --------------------------------------------------------------

/// Loads in the order of the names, then backwards and twice by name. Gives
/// the spectra of the first round.
std::vector<Spectrum> CompareLoading(MgfIO& reader, std::size_t size)
{
    std::vector<Spectrum> spectra;
    while (IsWorthReading(spectra.size(), size) && reader.bLoadNextSpectrum(spectra)) {
    }
    for (std::size_t i = spectra.size(); i-- > 0;) {
        std::vector<Spectrum> again;
        const bool isKnown = reader.bLoadOneSpectrum(spectra[i].strTitle, again)
                             && reader.bLoadOneSpectrum(spectra[i].strTitle, again);
        fuzz::Check(isKnown, "a name of the iteration can be loaded");
        // Header values may carry over from another record (B-10), but not any
        // more when the same record is read twice.
        fuzz::CheckSamePeaks(again[0], spectra[i], "peaks do not depend on the order");
        fuzz::CheckSameSpectrum(again[1], again[0], "loading twice gives the same");
    }
    return spectra;
}

// ---- Writing --------------------------------------------------------------

std::string Printed(double value)
{
    char text[64];
    std::snprintf(text, sizeof text, "%g", value);
    return text;
}

double SixDigits(double value)
{
    return std::strtod(Printed(value).c_str(), nullptr);
}

std::string PlainText(const Spectrum& spectrum)
{
    std::string text = "BEGIN IONS\nTITLE=" + spectrum.strTitle
                       + "\nPEPMASS=" + Printed(spectrum.dPrecursorMz)
                       + "\nCHARGE=" + std::to_string(spectrum.nCharge)
                       + "+\nRTINSECONDS=" + Printed(spectrum.dRetentionTime) + "\n";
    for (const Peak& peak : spectrum.vPeaks) {
        text += Printed(peak.dMz) + " " + Printed(peak.dIntensity) + "\n";
    }
    return text + "END IONS\n";
}

void CompareWriting(const fuzz::MemoryFile& file, std::vector<Spectrum>& spectra)
{
    MgfIO writer;
    writer.InitSave(file.Path());
    fuzz::Check(writer.tSaveSpectra(spectra, 0, spectra.size()) == spectra.size(),
                "all spectra are written");
    writer.EndSave();
    std::string expected;
    for (const Spectrum& spectrum : spectra) {
        expected += PlainText(spectrum);
    }
    fuzz::CheckSame(file.Read(), expected, "the text that is written");
}

/// What must be there after writing and reading: six digits of every number,
/// the title without blanks at its ends, no scan number. Peaks whose text does
/// not begin with a digit ("-1", "inf") are taken for header lines until one
/// does.
Spectrum AfterRoundTrip(const Spectrum& spectrum)
{
    Spectrum expected;
    std::string line = "TITLE=" + spectrum.strTitle;
    CStringProcess::Trim(line);
    expected.strTitle = line.substr(6);
    expected.dPrecursorMz = SixDigits(spectrum.dPrecursorMz);
    expected.dRetentionTime = SixDigits(spectrum.dRetentionTime);
    expected.nCharge = std::min<std::uint64_t>(spectrum.nCharge, 2147483647);
    for (const Peak& peak : spectrum.vPeaks) {
        const char first = Printed(peak.dMz).front();
        if (!expected.vPeaks.empty() || (first >= '0' && first <= '9')) {
            expected.vPeaks.push_back(peak);
            expected.vPeaks.back().dMz = SixDigits(peak.dMz);
            expected.vPeaks.back().dIntensity = SixDigits(peak.dIntensity);
        }
    }
    return expected;
}

void CompareRoundTrip(const fuzz::MemoryFile& file, Spectrum& spectrum)
{
    if (spectrum.strTitle.size() + 6 > LineReader::kMaxLineLength) {
        return; // its title line is too long to be read
    }
    MgfIO io;
    io.InitSave(file.Path());
    io.bSaveOneSpec(spectrum);
    io.EndSave();
    io.InitLoad(file.Path());
    const Spectrum expected = AfterRoundTrip(spectrum);
    std::vector<Spectrum> seen;
    fuzz::Check(io.bLoadOneSpectrum(expected.strTitle, seen), "a written title is found");
    fuzz::CheckSameSpectrum(seen[0], expected, "what survives writing and reading");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static fuzz::MemoryFile file;
    static fuzz::MemoryFile output;
    fuzz::SilenceConsole();
    const std::string text = fuzz::Expanded(fuzz::TextOf(data, size));
    file.Write(text);
    CompareReading(file.Path(), text);
    MgfIO reader;
    reader.InitLoad(file.Path());
    std::vector<Spectrum> spectra = CompareLoading(reader, text.size());
    if (!spectra.empty()) {
        CompareWriting(output, spectra);
        CompareRoundTrip(output, spectra.front());
        CompareRoundTrip(output, spectra.back());
    }
    return 0;
}
