#include "spectra/MgfRecord.h"

#include <cstdlib>
#include <string>
#include <string_view>

#include "spectra/PlainPeaks.h"
#include "util/Numbers.h"

namespace Vorlan::mgf {

namespace {

bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

/// Takes key off the front of line; false when it does not stand there.
bool TakeKey(std::string_view& line, std::string_view key)
{
    if (line.compare(0, key.size(), key) != 0) {
        return false;
    }
    line.remove_prefix(key.size());
    return true;
}

void ReadCharge(std::string_view text, std::uint64_t& charge)
{
    std::int32_t value = 0;
    if (numbers::ScanInt(text, value)) {
        charge = static_cast<std::uint64_t>(std::abs(static_cast<std::int64_t>(value)));
    }
}

void ReadHeaderLine(std::string_view line, Spectrum& spectrum)
{
    switch (FirstOf(line)) {
    case 'C':
        if (TakeKey(line, "CHARGE=")) {
            ReadCharge(line, spectrum.nCharge);
        }
        break;
    case 'P':
        if (TakeKey(line, "PEPMASS=")) {
            numbers::ScanDouble(line, spectrum.dPrecursorMz);
        }
        break;
    case 'R':
        if (TakeKey(line, "RTINSECONDS=")) {
            numbers::ScanDouble(line, spectrum.dRetentionTime);
        }
        break;
    case 'S':
        if (TakeKey(line, "SCANS=")) {
            numbers::ScanInt(line, spectrum.nScan);
        }
        break;
    default: break;
    }
}

/// "100.5 2" and a line feed.
void AppendPeak(std::string& text, const Peak& peak)
{
    numbers::AppendGeneral(text, peak.dMz);
    text += ' ';
    numbers::AppendGeneral(text, peak.dIntensity);
    text += '\n';
}

} // namespace

void ReadRecord(LineReader& input, Spectrum& spectrum, Peak& peak)
{
    // Deliberate: B-10, B-16. Values stay where no line sets them, and without
    // peaks of its own a record goes on into the next one.
    std::string_view line;
    bool hasLine = input.NextWhole(line);
    for (; hasLine && !IsDigit(FirstOf(line)); hasLine = input.NextWhole(line)) {
        ReadHeaderLine(line, spectrum);
    }
    spectrum.vPeaks.clear();
    double mz = 0.0;
    double intensity = 0.0;
    for (; hasLine && FirstOf(line) != 'E'; hasLine = input.NextWhole(line)) {
        // Deliberate: B-17. A number that cannot be read is the one before.
        numbers::ScanTwoDoubles(line, mz, intensity);
        peak.dMz = mz;
        peak.dIntensity = intensity;
        spectrum.vPeaks.push_back(peak);
        TakePlainPeaks(input, spectrum.vPeaks, peak, mz, intensity);
    }
}

void WriteRecord(std::ostream& output, const Spectrum& spectrum)
{
    output << "BEGIN IONS" << std::endl;
    // Deliberate: B-14. No "SCANS=" line, and six significant digits.
    std::string text = "TITLE=" + spectrum.strTitle + "\nPEPMASS=";
    numbers::AppendGeneral(text, spectrum.dPrecursorMz);
    text.append("\nCHARGE=").append(std::to_string(spectrum.nCharge)).append("+\nRTINSECONDS=");
    numbers::AppendGeneral(text, spectrum.dRetentionTime);
    text += '\n';
    for (const Peak& peak : spectrum.vPeaks) {
        AppendPeak(text, peak);
    }
    output << text << "END IONS" << std::endl;
}

} // namespace Vorlan::mgf
