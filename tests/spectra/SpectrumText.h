// Spectra as text, for tables of input and outcome and for comparisons.
#ifndef VORLAN_TESTS_SPECTRUMTEXT_H
#define VORLAN_TESTS_SPECTRUMTEXT_H

#include <charconv>
#include <cmath>
#include <cstdio>
#include <string>
#include <vector>

#include "DataStructures.h"
#include "support/CLocale.h"

namespace Vorlan::test {

/// "500.25", "nan" of either sign.
inline std::string ShortNumber(double value)
{
    if (std::isnan(value)) {
        return "nan";
    }
    const CLocale plain;
    char text[32];
    std::snprintf(text, sizeof text, "%.10g", value);
    return text;
}

/// "1.f44p+8": every bit of a number, but all NaNs alike.
inline std::string ExactNumber(double value)
{
    if (std::isnan(value)) {
        return "nan";
    }
    char text[32];
    return {text, std::to_chars(text, text + sizeof text, value, std::chars_format::hex).ptr};
}

/// "title|500.25|2+|scan 7|rt 1.5|100:1 200:2", numbers as they are asked for. A
/// source that is set follows, without the folders before its last "/":
/// "|from run\\".
inline std::string Dump(const Spectrum& spectrum, std::string (*number)(double) = ShortNumber)
{
    std::string text = spectrum.strTitle;
    text += "|" + number(spectrum.dPrecursorMz) + "|" + std::to_string(spectrum.nCharge) + "+|scan "
            + std::to_string(spectrum.nScan) + "|rt " + number(spectrum.dRetentionTime) + "|";
    for (std::size_t i = 0; i < spectrum.vPeaks.size(); ++i) {
        const Peak& peak = spectrum.vPeaks[i];
        text += (i == 0 ? "" : " ") + number(peak.dMz) + ":" + number(peak.dIntensity);
        text += peak.vMatchRes.empty() ? "" : " with matches";
    }
    if (!spectrum.strSource.empty()) {
        text += "|from " + spectrum.strSource.substr(spectrum.strSource.rfind('/') + 1);
    }
    if (spectrum.nSpecFlag != 1 || !spectrum.vHashTable.empty()) {
        text += "|fields set that no reader sets";
    }
    return text;
}

inline std::vector<std::string> Dump(const std::vector<Spectrum>& spectra)
{
    std::vector<std::string> texts;
    for (const Spectrum& spectrum : spectra) {
        texts.push_back(Dump(spectrum));
    }
    return texts;
}

/// Every field to the last bit.
inline std::string ExactDump(const Spectrum& spectrum)
{
    return Dump(spectrum, ExactNumber);
}

} // namespace Vorlan::test

#endif // VORLAN_TESTS_SPECTRUMTEXT_H
