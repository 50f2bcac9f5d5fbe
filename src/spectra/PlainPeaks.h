// Peak lines as most files have them, read in the memory of the line reader.
#ifndef VORLAN_SPECTRA_PLAINPEAKS_H
#define VORLAN_SPECTRA_PLAINPEAKS_H

#include <cstddef>
#include <string_view>
#include <vector>

#include "DataStructures.h"
#include "util/LineReader.h"
#include "util/PlainNumbers.h"

namespace Vorlan {

/// Takes the lines of m/z and intensity that come next, as long as they are plain
/// decimals and stand whole in the memory of input, and appends a peak for each. Any
/// other line is left to the caller, who reads this kind of line with the same
/// result. mz (Th) and intensity become those of the last line taken and stay
/// without one; so do those of peak, the scratch.
inline void TakePlainPeaks(LineReader& input, std::vector<Peak>& peaks, Peak& peak, double& mz,
                           double& intensity)
{
    if (!peak.vMatchRes.empty()) {
        return; // The caller copies the whole scratch.
    }
    const std::string_view ahead = input.Ahead();
    const char* line = ahead.data();
    const char* const end = line + ahead.size();
    double nextMz = 0.0;
    double nextIntensity = 0.0;
    while (static_cast<std::size_t>(end - line) >= numbers::kPlainLineReach) {
        const char* const next = numbers::TakePlainLine(line, nextMz, nextIntensity);
        if (next == nullptr) {
            break;
        }
        Peak& added = peaks.emplace_back();
        added.dMz = mz = nextMz;
        added.dIntensity = intensity = nextIntensity;
        line = next;
    }
    peak.dMz = mz;
    peak.dIntensity = intensity;
    input.Skip(static_cast<std::size_t>(line - ahead.data()));
}

} // namespace Vorlan

#endif // VORLAN_SPECTRA_PLAINPEAKS_H
