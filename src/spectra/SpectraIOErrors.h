// Every exception of the unit SpectraIO.
#ifndef VORLAN_SPECTRA_ERRORS_H
#define VORLAN_SPECTRA_ERRORS_H

#include <string>

#include <OpenMS/CONCEPT/Exception.h>

namespace Vorlan::errors {

inline constexpr char kSpectraIO[] = "SpectraIO";

/// The line number is fixed: hosts know it.
[[noreturn]] inline void UnknownDataset(const std::string& datasetName)
{
    throw OpenMS::Exception::FileNotFound(kSpectraIO, 626, "DatasetIOPool::bLoadOneSpectrum",
                                          datasetName);
}

} // namespace Vorlan::errors

#endif // VORLAN_SPECTRA_ERRORS_H
