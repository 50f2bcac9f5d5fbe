// Spectra as text, for tables of input and outcome and for comparisons.
#ifndef VORLAN_TESTS_SPECTRUMTEXT_H
#define VORLAN_TESTS_SPECTRUMTEXT_H

#include <cstdio>
#include <string>
#include <vector>

#include "DataStructures.h"
#include "support/CLocale.h"

namespace Vorlan::test {

/// "0x1.8p+1": every bit of a number, all NaNs alike.
inline std::string NumberText(double value, const char* format)
{
    if (value != value) {
        return "nan";
    }
    const CLocale plain;
    char text[512];
    std::snprintf(text, sizeof text, format, value);
    return text;
}

/// "title|500.25|2+|scan 7|rt 1.5|100:1 200:2", numbers in the given format. A
/// source that is set follows, without the folders before its last "/":
/// "|from run\\".
inline std::string Dump(const Spectrum& spectrum, const char* format = "%.10g")
{
    std::string text = spectrum.strTitle;
    text += "|" + NumberText(spectrum.dPrecursorMz, format) + "|" + std::to_string(spectrum.nCharge)
            + "+|scan " + std::to_string(spectrum.nScan) + "|rt "
            + NumberText(spectrum.dRetentionTime, format) + "|";
    for (std::size_t i = 0; i < spectrum.vPeaks.size(); ++i) {
        const Peak& peak = spectrum.vPeaks[i];
        text += (i == 0 ? "" : " ") + NumberText(peak.dMz, format) + ":"
                + NumberText(peak.dIntensity, format);
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
    return Dump(spectrum, "%a");
}

} // namespace Vorlan::test

#endif // VORLAN_TESTS_SPECTRUMTEXT_H
