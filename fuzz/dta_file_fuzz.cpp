// One DTA file: reading against std::istream, line by line.
//
// The input is the text of a file (see Expanded). It is read, then another file,
// then it again: what stood in a file before must not show in the next one.
#include <cstdint>
#include <istream>
#include <locale>
#include <sstream>
#include <string>
#include <string_view>
#include <vector>

#include <OpenMS/CONCEPT/Constants.h>

#include "FuzzSupport.h"
#include "PlainLines.h"
#include "SameSpectra.h"
#include "SpectraIO.h"

namespace {

using namespace Vorlan;

constexpr char kOtherFile[] = "1006.5228 2\n175.11895 2310.7\n288.20301 1250.1\n";

/// value becomes the next number of input, and stays what it was without one.
template <typename Number>
void Take(std::istream& input, Number& value)
{
    Number next{};
    if (input >> next) {
        value = next;
    }
}

template <typename First, typename Second>
void TakeTwo(const std::string& line, First& first, Second& second)
{
    std::istringstream input(line);
    input.imbue(std::locale::classic());
    Take(input, first);
    Take(input, second);
}

/// The rules of docs/formats/dta.md.
Spectrum PlainSpectrum(const std::string& text)
{
    std::vector<std::string> lines = fuzz::LinesOf(text);
    lines.emplace_back(); // the end of the file ends the peaks as an empty line does
    Spectrum spectrum;
    double mh = 0.0;
    TakeTwo(lines[0], mh, spectrum.nCharge);
    const double proton = OpenMS::Constants::PROTON_MASS_U;
    spectrum.dPrecursorMz = (mh - proton) / static_cast<double>(spectrum.nCharge) + proton;
    Peak peak;
    peak.dMz = 0.0;
    peak.dIntensity = 0.0;
    for (std::size_t i = 1; i < lines.size() && !lines[i].empty(); ++i) {
        TakeTwo(lines[i], peak.dMz, peak.dIntensity);
        spectrum.vPeaks.push_back(peak);
    }
    return spectrum;
}

void CheckLoaded(DtaIO& reader, const fuzz::MemoryFile& file, Spectrum expected)
{
    std::vector<Spectrum> spectra(1);
    fuzz::Check(reader.bLoadOneSpectrum(file.Name(), spectra), "a file that is there is read");
    fuzz::Check(spectra.size() == 2, "one spectrum is appended");
    expected.strTitle = file.Name();
    fuzz::CheckSameSpectrum(spectra[1], expected, "a file reads as through std::istream");
    fuzz::CheckSame(spectra[1].strSource, file.Folder() + '\\', "the source is the folder");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static fuzz::MemoryFile file;
    static fuzz::MemoryFile other;
    fuzz::SilenceConsole();
    const std::string text = fuzz::Expanded(fuzz::TextOf(data, size));
    file.Write(text);
    other.Write(kOtherFile);
    const Spectrum expected = PlainSpectrum(text);
    DtaIO reader;
    reader.InitLoad(file.Folder());
    CheckLoaded(reader, file, expected);
    CheckLoaded(reader, other, PlainSpectrum(kOtherFile));
    CheckLoaded(reader, file, expected);
    return 0;
}
