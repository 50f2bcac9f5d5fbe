// One MGF record, read and written.
#ifndef VORLAN_SPECTRA_MGFRECORD_H
#define VORLAN_SPECTRA_MGFRECORD_H

#include <ostream>

#include "DataStructures.h"
#include "util/LineReader.h"

namespace Vorlan::mgf {

/// Reads the record whose lines follow "BEGIN IONS" from where input stands,
/// up to the first line behind its peaks that begins with 'E', or the end.
///
/// Header lines set precursor m/z, charge, retention time and scan number; what
/// they do not set, or set with an unreadable number, keeps its value. The
/// peaks are replaced, in file order. peak is scratch.
void ReadRecord(LineReader& input, Spectrum& spectrum, Peak& peak);

/// Writes one record; flushes after "BEGIN IONS" and "END IONS".
void WriteRecord(std::ostream& output, const Spectrum& spectrum);

} // namespace Vorlan::mgf

#endif // VORLAN_SPECTRA_MGFRECORD_H
