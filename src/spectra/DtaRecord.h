// One DTA file, read.
#ifndef VORLAN_SPECTRA_DTARECORD_H
#define VORLAN_SPECTRA_DTARECORD_H

#include "DataStructures.h"
#include "util/LineReader.h"

namespace Vorlan::dta {

/// Reads the spectrum of the file at whose start input stands: precursor MH (Da)
/// and charge from the first line, then m/z (Th) and intensity, a peak a line, up
/// to the first empty line or the end.
///
/// Numbers are those that a stream would extract. Those that cannot be read keep
/// the value of the line before, 0 at first. Sets dPrecursorMz (Th), nCharge and
/// vPeaks, in file order. peak is scratch.
void ReadRecord(LineReader& input, Spectrum& spectrum, Peak& peak);

} // namespace Vorlan::dta

#endif // VORLAN_SPECTRA_DTARECORD_H
