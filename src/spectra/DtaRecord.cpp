#include "spectra/DtaRecord.h"

#include <cstdint>
#include <string_view>

#include <OpenMS/CONCEPT/Constants.h>

#include "spectra/PlainPeaks.h"
#include "util/Numbers.h"

namespace Vorlan::dta {

namespace {

void ReadPrecursor(std::string_view line, Spectrum& spectrum)
{
    double mh = 0.0;
    std::uint64_t charge = 0;
    if (numbers::TakeDouble(line, mh)) {
        numbers::TakeUnsigned(line, charge);
    }
    const double proton = OpenMS::Constants::PROTON_MASS_U;
    // Deliberate: B-70. A charge of 0 divides as floating-point numbers do.
    spectrum.dPrecursorMz = (mh - proton) / static_cast<double>(charge) + proton;
    spectrum.nCharge = charge;
}

} // namespace

void ReadRecord(LineReader& input, Spectrum& spectrum, Peak& peak)
{
    std::string_view line;
    ReadPrecursor(input.Next(line) ? line : std::string_view(), spectrum);
    spectrum.vPeaks.clear();
    double mz = 0.0;
    double intensity = 0.0;
    // Deliberate: B-74. An empty line ends the peaks; one of blanks is a peak.
    while (input.Next(line) && !line.empty()) {
        // Deliberate: B-17. A number that cannot be read is the one before.
        numbers::TakeTwoDoubles(line, mz, intensity);
        peak.dMz = mz;
        peak.dIntensity = intensity;
        spectrum.vPeaks.push_back(peak);
        TakePlainPeaks(input, spectrum.vPeaks, peak, mz, intensity);
    }
}

} // namespace Vorlan::dta
