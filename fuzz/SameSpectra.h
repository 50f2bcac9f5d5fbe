// Comparing spectra, for the targets of the formats that hold them.
#ifndef PELGRIN_FUZZ_SAMESPECTRA_H
#define PELGRIN_FUZZ_SAMESPECTRA_H

#include <cstddef>

#include "DataStructures.h"
#include "FuzzSupport.h"

namespace Vorlan::fuzz {

inline void CheckSamePeaks(const Spectrum& seen, const Spectrum& expected, const char* rule)
{
    Check(seen.Size() == expected.Size(), rule);
    for (std::size_t i = 0; i < seen.vPeaks.size(); ++i) {
        Check(SameBits(seen.vPeaks[i].dMz, expected.vPeaks[i].dMz), rule);
        Check(SameBits(seen.vPeaks[i].dIntensity, expected.vPeaks[i].dIntensity), rule);
    }
}

/// All but the source, which is the reader's, not the file's.
inline void CheckSameSpectrum(const Spectrum& seen, const Spectrum& expected, const char* rule)
{
    CheckSame(seen.strTitle, expected.strTitle, rule);
    Check(SameBits(seen.dPrecursorMz, expected.dPrecursorMz), rule);
    Check(SameBits(seen.dRetentionTime, expected.dRetentionTime), rule);
    Check(seen.nCharge == expected.nCharge && seen.nScan == expected.nScan, rule);
    CheckSamePeaks(seen, expected, rule);
}

} // namespace Vorlan::fuzz

#endif // PELGRIN_FUZZ_SAMESPECTRA_H
